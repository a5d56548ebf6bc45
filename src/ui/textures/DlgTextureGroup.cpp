#include "ui/textures/DlgTextureGroup.h"

#include "document/NumberText.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "platform/Twips.h"
#include "ui/localisation/Messages.h"
#include "ui/textures/ScrollPicture.h"
#include "ui/textures/TextureSupport.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <cmath>

namespace quarle::ui {

using platform::Control;

namespace {

QPushButton* ArrowButton(QWidget* parent, const char* icon) {
    auto* button = new QPushButton(parent);
    button->setIcon(QIcon(QStringLiteral(":/icons/%1.png").arg(QLatin1String(icon))));
    button->setIconSize(QSize(16, 16));
    button->setFixedSize(24, 24);
    button->setAutoDefault(false);
    return button;
}

constexpr int PreviewTwips = 4500; // the picture's viewport is 4200 twips, 280 pixels, square

} // namespace

DlgTextureGroup::DlgTextureGroup(AppState& state, platform::Services& services,
                                 MainWindowAccess& main, QWidget* parent)
    : LocalisedDialog(state, services, parent), main_(main) {
    setObjectName(QStringLiteral("DlgTextureGroup"));
    setWindowTitle(QStringLiteral("Texturvariationen"));
    setModal(true);

    LblTexturegroup =
        Control(new QLabel(QStringLiteral("Variation:"), this), QStringLiteral("LblTexturegroup"));
    TxtVarNr = Control(new QLineEdit(QStringLiteral("1"), this), QStringLiteral("TxtVarNr"));
    TxtVarNr->setFixedWidth(34);
    TxtVarNr->setAlignment(Qt::AlignCenter);
    LblTexturegroup->setBuddy(TxtVarNr);
    CmdVarPfeill = Control(ArrowButton(this, "arrow_left"), QStringLiteral("CmdVarPfeill"));
    CmdVarPfeilr = Control(ArrowButton(this, "arrow_right"), QStringLiteral("CmdVarPfeilr"));
    FrmVariation =
        Control(new QGroupBox(QStringLiteral("Variation"), this), QStringLiteral("FrmVariation"));
    LblTextur = Control(new QLabel(QStringLiteral("Zu \u00e4ndernde Textur:"), FrmVariation),
                        QStringLiteral("LblTextur"));
    LstTexture = Control(new QListWidget(FrmVariation), QStringLiteral("LstTexture"));
    LstTexture->setSelectionMode(QAbstractItemView::SingleSelection);
    LblTextur->setBuddy(LstTexture);
    ChkChangeTo = Control(new QCheckBox(QStringLiteral("\u00c4ndern zu:"), FrmVariation),
                          QStringLiteral("ChkChangeTo"));
    // Nothing to replace until a texture is chosen.
    ChkChangeTo->setEnabled(false);
    FileChangeTo = Control(new QListWidget(FrmVariation), QStringLiteral("FileChangeTo"));
    FileChangeTo->setSelectionMode(QAbstractItemView::SingleSelection);
    FileChangeTo->setEnabled(false);
    LblPreview =
        Control(new QLabel(QStringLiteral("Vorschau:"), this), QStringLiteral("LblPreview"));
    ScrPicPreview = Control(new ScrollPicture(this), QStringLiteral("ScrPicPreview"));
    ScrPicPreview->setFixedSize(platform::ToPixels(PreviewTwips), platform::ToPixels(PreviewTwips));
    OKButton = Control(new QPushButton(QStringLiteral("OK"), this), QStringLiteral("OKButton"));
    OKButton->setDefault(true);
    CreateCmdLocalise();

    auto* variation = new QHBoxLayout;
    variation->addWidget(LblTexturegroup);
    variation->addWidget(CmdVarPfeill);
    variation->addWidget(TxtVarNr);
    variation->addWidget(CmdVarPfeilr);
    variation->addStretch(1);
    auto* frame = new QVBoxLayout(FrmVariation);
    frame->addWidget(LblTextur);
    frame->addWidget(LstTexture, 2);
    frame->addWidget(ChkChangeTo);
    frame->addWidget(FileChangeTo, 3);
    auto* left = new QVBoxLayout;
    left->addLayout(variation);
    left->addWidget(FrmVariation, 1);
    auto* right = new QVBoxLayout;
    right->addWidget(LblPreview);
    right->addWidget(ScrPicPreview);
    right->addStretch(1);
    auto* columns = new QHBoxLayout;
    columns->addLayout(left, 1);
    columns->addSpacing(8);
    columns->addLayout(right);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(CmdLocalise);
    buttons->addStretch(1);
    buttons->addWidget(OKButton);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addLayout(buttons);
    FrmVariation->setMinimumWidth(230);

    connect(CmdVarPfeill, &QPushButton::clicked, this, &DlgTextureGroup::CmdVarPfeill_Click);
    connect(CmdVarPfeilr, &QPushButton::clicked, this, &DlgTextureGroup::CmdVarPfeilr_Click);
    connect(TxtVarNr, &QLineEdit::textChanged, this, &DlgTextureGroup::TxtVarNr_Change);
    // A box left without a number shows the variation still on show.
    connect(TxtVarNr, &QLineEdit::editingFinished, this, [this] {
        if (!StrictNumber(TxtVarNr->text().toStdString())) {
            TxtVarNr->setText(QString::number(variation_));
        }
    });
    connect(LstTexture, &QListWidget::itemSelectionChanged, this,
            &DlgTextureGroup::LstTexture_Click);
    connect(ChkChangeTo, &QCheckBox::toggled, this, &DlgTextureGroup::ChkChangeTo_Click);
    connect(FileChangeTo, &QListWidget::itemSelectionChanged, this,
            &DlgTextureGroup::FileChangeTo_Click);
    connect(OKButton, &QPushButton::clicked, this, &DlgTextureGroup::OKButton_Click);
}

DlgTextureGroup::~DlgTextureGroup() = default;

void DlgTextureGroup::Form_Load() {
    LoadLanguage(false);
    ScrPicPreview->Tag = QStringLiteral("0");
    FillFileChangeTo();

    // The textures of the meshes join those already known; opening again
    // adds only what is new.
    Document& doc = state_.Doc;
    int count = doc.TextureCount;
    CollectTextures(state_, services_, doc.TextureVariations[1], count);
    doc.TextureCount = static_cast<u8>(count);
    for (int i = 1; i <= doc.TextureCount; ++i) {
        LstTexture->addItem(
            platform::FromCp1252(doc.TextureVariations[1][static_cast<std::size_t>(i)]));
    }
}

void DlgTextureGroup::FillFileChangeTo() {
    FileChangeTo->clear();
    FileChangeTo->addItems(BitmapFiles(state_.Doc.TexturePath));
}

std::string& DlgTextureGroup::Cell() {
    const int column = LstTexture->currentRow() + 1;
    return state_.Doc.TextureVariations[static_cast<std::size_t>(variation_ + 1)]
                                       [static_cast<std::size_t>(column)];
}

void DlgTextureGroup::ShowBitmap(const QString& name) {
    // A bitmap that can't be read leaves the preview empty.
    ScrPicPreview->SetPicture(LoadBitmap(state_.Doc.TexturePath, name));
}

void DlgTextureGroup::CmdVarPfeill_Click() {
    if (variation_ > FirstVariation) {
        TxtVarNr->setText(QString::number(variation_ - 1));
    }
}

void DlgTextureGroup::CmdVarPfeilr_Click() {
    if (variation_ < LastVariation) {
        TxtVarNr->setText(QString::number(variation_ + 1));
    }
}

void DlgTextureGroup::TxtVarNr_Change() {
    const QString text = TxtVarNr->text();
    const std::optional<double> number = StrictNumber(text.toStdString());
    if (!number) {
        return; // while the box holds no number the variation on show stays
    }
    if (*number > LastVariation) {
        TxtVarNr->setText(QString::number(LastVariation));
        return;
    }
    if (*number < FirstVariation) {
        TxtVarNr->setText(QString::number(FirstVariation));
        return;
    }
    const int whole = static_cast<int>(std::lround(*number));
    if (text.trimmed() != QString::number(whole)) {
        TxtVarNr->setText(QString::number(whole)); // "2.0", " 3": the plain number
        return;
    }
    variation_ = whole;
    state_.Preview.TextureRow = whole + 1; // the 3D preview shows the variation on show
    // A change of variation shows the state of the first texture.
    if (LstTexture->count() == 0) {
        return;
    }
    if (LstTexture->currentRow() != 0 || !LstTexture->item(0)->isSelected()) {
        LstTexture->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
    } else {
        LstTexture_Click();
    }
}

void DlgTextureGroup::LstTexture_Click() {
    const int row = LstTexture->currentRow();
    if (row < 0 || !LstTexture->item(row)->isSelected()) {
        return;
    }
    const bool tookPreview = ScrPicPreview->Tag == QStringLiteral("0");
    if (tookPreview) {
        ScrPicPreview->Tag = QStringLiteral("1");
        ShowBitmap(LstTexture->item(row)->text());
    }
    ChkChangeTo->setEnabled(true);
    ChkChangeToTag = QStringLiteral("1");
    const std::string cell = Cell();
    if (cell == Blank) {
        ChkChangeTo->setChecked(false);
        FileChangeTo->setEnabled(false);
        FileChangeTo->clearSelection();
    } else {
        ChkChangeTo->setChecked(true);
        FileChangeTo->setEnabled(true);
        // The bitmap of the cell, if it is still in the folder; its click
        // writes the same name back.
        const QString name = platform::FromCp1252(cell);
        int found = -1;
        for (int i = 0; i < FileChangeTo->count(); ++i) {
            if (FileChangeTo->item(i)->text() == name) {
                found = i;
                break;
            }
        }
        if (found >= 0) {
            FileChangeTo->setCurrentRow(found, QItemSelectionModel::ClearAndSelect);
            FileChangeTo->scrollToItem(FileChangeTo->item(found));
        } else {
            FileChangeTo->clearSelection();
        }
    }
    ChkChangeToTag = QStringLiteral("0");
    if (ScrPicPreview->Tag == QStringLiteral("1")) {
        ScrPicPreview->Tag = QStringLiteral("0");
    }
}

void DlgTextureGroup::ChkChangeTo_Click() {
    if (ChkChangeToTag != QStringLiteral("0")) {
        return;
    }
    if (ChkChangeTo->isChecked()) {
        if (FileChangeTo->count() == 0) {
            services_.MsgBox(
                MessageText(state_, MSG_NO_BITMAPS, {platform::FromCp1252(state_.Doc.TexturePath)}),
                platform::Buttons::Ok, platform::Icon::Exclamation,
                QString::fromStdString(state_.IdsTexts[IDS_ERROR]));
            ChkChangeToTag = QStringLiteral("1");
            ChkChangeTo->setChecked(false);
            ChkChangeToTag = QStringLiteral("0");
            return;
        }
        FileChangeTo->setEnabled(true);
        // The first bitmap of the folder is the replacement until the user
        // picks another.
        if (FileChangeTo->currentRow() == 0 && FileChangeTo->item(0)->isSelected()) {
            FileChangeTo_Click();
        } else {
            FileChangeTo->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
        }
        FileChangeTo->scrollToTop();
    } else {
        FileChangeTo->setEnabled(false);
        FileChangeTo->clearSelection();
        Cell() = Blank;
    }
}

void DlgTextureGroup::FileChangeTo_Click() {
    const int row = FileChangeTo->currentRow();
    if (row < 0 || !FileChangeTo->item(row)->isSelected()) {
        return;
    }
    const QString name = FileChangeTo->item(row)->text();
    const bool tookPreview = ScrPicPreview->Tag == QStringLiteral("0");
    if (tookPreview) {
        ScrPicPreview->Tag = QStringLiteral("2");
        ShowBitmap(name);
    }
    // A file name the script's code page cannot hold is refused; the cell
    // keeps what it held.
    if (const std::optional<std::string> bytes = TypedText(state_, services_, name)) {
        Cell() = *bytes;
    }
    if (ScrPicPreview->Tag == QStringLiteral("2")) {
        ScrPicPreview->Tag = QStringLiteral("0");
    }
}

void DlgTextureGroup::OKButton_Click() {
    accept();
}

} // namespace quarle::ui
