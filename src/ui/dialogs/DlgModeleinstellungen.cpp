#include "ui/dialogs/DlgModeleinstellungen.h"

#include "document/NumberText.h"
#include "document/Text.h"
#include "platform/Reflection.h"
#include "ui/common/MainWindowAccess.h"
#include "ui/common/NumberKeys.h"
#include "ui/dialogs/DlgBindung.h"
#include "ui/dialogs/DlgController.h"
#include "ui/textures/DlgTextureGroup.h"
#include "ui/textures/DlgTexturemode.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace quarle::ui {

using platform::Control;

namespace {

QString Number(const std::string& text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QLineEdit* NumberBox(QWidget* form, const char* text, const char* name, int width) {
    auto* box = Control(new QLineEdit(QString::fromLatin1(text), form), QString::fromLatin1(name));
    box->setFixedWidth(width);
    return box;
}

QPushButton* Button(QWidget* form, const QString& caption, const char* name) {
    auto* button = Control(new QPushButton(caption, form), QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
}

} // namespace

DlgModeleinstellungen::DlgModeleinstellungen(AppState& state, platform::Services& services,
                                             MainWindowAccess& main, QWidget* parent)
    : LocalisedDialog(state, services, parent), main_(main) {
    setObjectName(QStringLiteral("DlgModeleinstellungen"));
    setWindowTitle(QStringLiteral("Modelleinstellungen"));

    Label2 = Control(new QLabel(QStringLiteral("Ma\u00dfstab:"), this), QStringLiteral("Label2"));
    Label2->setToolTip(QStringLiteral("($scale) - Erstellt das Modell in einem anderen Massstab"));
    TxtMassstab = NumberBox(this, "1", "TxtMassstab", 70);
    TxtMassstab->setToolTip(QStringLiteral(
        "Vergr\u00f6ssert oder verkleinert das Originalmodell (1=Originalgr\u00f6\u00dfe)"));
    ChkAugen = Control(new QCheckBox(QStringLiteral("Augen:"), this), QStringLiteral("ChkAugen"));
    ChkAugen->setToolTip(QStringLiteral("($eyeposition) - Position der Augen des Modells"));
    TxtAugenX = NumberBox(this, "X", "TxtAugenX", 70);
    TxtAugenX->setToolTip(QStringLiteral("X-Koordinate"));
    TxtAugenY = NumberBox(this, "Y", "TxtAugenY", 70);
    TxtAugenY->setToolTip(QStringLiteral("Y-Koordinate"));
    TxtAugenZ = NumberBox(this, "Z", "TxtAugenZ", 70);
    TxtAugenZ->setToolTip(QStringLiteral("Z-Koordinate"));
    for (QLineEdit* eye : {TxtAugenX, TxtAugenY, TxtAugenZ}) {
        eye->setEnabled(false);
    }
    Label1 =
        Control(new QLabel(QStringLiteral("Texturhelligkeit:"), this), QStringLiteral("Label1"));
    TxtGamma = NumberBox(this, "1.8", "TxtGamma", 70);
    TxtGamma->setToolTip(QStringLiteral("($gamma) - Legt die Helligkeit s\u00e4mtlicher Texturen "
                                        "des Modells fest - Standart ist 1.8"));
    ChkExtTex = Control(new QCheckBox(QStringLiteral("Speichere Texturen extra"), this),
                        QStringLiteral("ChkExtTex"));
    ChkExtTex->setToolTip(QStringLiteral("($externaltextures) - Die Texturen werden ausserhalb "
                                         "des Modells als extra Dateien gespeichert"));
    ChkSequenceGroupSize = Control(new QCheckBox(QStringLiteral("Split Modeldatei:"), this),
                                   QStringLiteral("ChkSequenceGroupSize"));
    TxtSequenceGroupSize = NumberBox(this, "64", "TxtSequenceGroupSize", 70);
    TxtSequenceGroupSize->setEnabled(false);
    LblKB = Control(new QLabel(QStringLiteral("KB"), this), QStringLiteral("LblKB"));
    CmdAttachment = Button(this, QStringLiteral("Attachments"), "CmdAttachment");
    CmdAttachment->setToolTip(QStringLiteral(
        "($attachment) - Gibt einen stellen am Modell an an denen Sprites, Munitionsh\u00fclsen "
        "oder sonstiges \"rauskommen\""));
    CmdController = Button(this, QStringLiteral("Controller"), "CmdController");
    CmdController->setToolTip(QStringLiteral(
        "($controller) - \u00dcbertr\u00e4gt die Kontrolle eines Bones an Half-Life (z.B. "
        "Drehung des Kopfes zum Gegner)"));
    CmdTextureGroup = Button(this, QStringLiteral("Alt. Texturen"), "CmdTextureGroup");
    CmdTexturemode = Button(this, QStringLiteral("Texturmodi"), "CmdTexturemode");
    for (QPushButton* gate : {CmdAttachment, CmdController, CmdTextureGroup, CmdTexturemode}) {
        gate->setEnabled(false);
    }
    OKButton = Button(this, QStringLiteral("OK"), "OKButton");
    OKButton->setDefault(true);
    CreateCmdLocalise();

    auto* values = new QGridLayout;
    values->setHorizontalSpacing(8);
    values->addWidget(Label2, 0, 0);
    values->addWidget(TxtMassstab, 0, 1);
    values->addWidget(ChkAugen, 1, 0);
    values->addWidget(TxtAugenX, 1, 1);
    values->addWidget(TxtAugenY, 1, 2);
    values->addWidget(TxtAugenZ, 1, 3);
    values->addWidget(Label1, 2, 0);
    values->addWidget(TxtGamma, 2, 1);
    values->addWidget(ChkExtTex, 3, 0, 1, 4);
    values->addWidget(ChkSequenceGroupSize, 4, 0);
    values->addWidget(TxtSequenceGroupSize, 4, 1);
    values->addWidget(LblKB, 4, 2);
    values->setColumnStretch(4, 1);
    values->setRowStretch(5, 1);
    auto* gates = new QVBoxLayout;
    for (QPushButton* gate : {CmdAttachment, CmdController, CmdTextureGroup, CmdTexturemode}) {
        gate->setMinimumWidth(110);
        gates->addWidget(gate);
    }
    gates->addStretch(1);
    auto* top = new QHBoxLayout;
    top->addLayout(values, 1);
    top->addSpacing(12);
    top->addLayout(gates);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(CmdLocalise);
    bottom->addStretch(1);
    bottom->addWidget(OKButton);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addSpacing(6);
    layout->addLayout(bottom);

    connect(TxtMassstab, &QLineEdit::textChanged, this, &DlgModeleinstellungen::TxtMassstab_Change);
    connect(TxtGamma, &QLineEdit::textChanged, this, &DlgModeleinstellungen::TxtGamma_Change);
    connect(TxtAugenX, &QLineEdit::textChanged, this, &DlgModeleinstellungen::TxtAugenX_Change);
    connect(TxtAugenY, &QLineEdit::textChanged, this, &DlgModeleinstellungen::TxtAugenY_Change);
    connect(TxtAugenZ, &QLineEdit::textChanged, this, &DlgModeleinstellungen::TxtAugenZ_Change);
    connect(TxtSequenceGroupSize, &QLineEdit::textChanged, this,
            &DlgModeleinstellungen::TxtSequenceGroupSize_Change);
    connect(ChkAugen, &QCheckBox::toggled, this, &DlgModeleinstellungen::ChkAugen_Click);
    connect(ChkExtTex, &QCheckBox::toggled, this, &DlgModeleinstellungen::ChkExtTex_Click);
    connect(ChkSequenceGroupSize, &QCheckBox::toggled, this,
            &DlgModeleinstellungen::ChkSequenceGroupSize_Click);
    connect(CmdAttachment, &QPushButton::clicked, this,
            &DlgModeleinstellungen::CmdAttachment_Click);
    connect(CmdController, &QPushButton::clicked, this,
            &DlgModeleinstellungen::CmdController_Click);
    connect(CmdTextureGroup, &QPushButton::clicked, this,
            &DlgModeleinstellungen::CmdTextureGroup_Click);
    connect(CmdTexturemode, &QPushButton::clicked, this,
            &DlgModeleinstellungen::CmdTexturemode_Click);
    connect(OKButton, &QPushButton::clicked, this, &DlgModeleinstellungen::OKButton_Click);
    FilterKeys(TxtMassstab, 1);
    FilterKeys(TxtGamma, 1);
    FilterKeys(TxtAugenX, 3);
    FilterKeys(TxtAugenY, 3);
    FilterKeys(TxtAugenZ, 3);
    FilterKeys(TxtSequenceGroupSize, 0);
}

DlgModeleinstellungen::~DlgModeleinstellungen() = default;

void DlgModeleinstellungen::Form_Load() {
    LoadLanguage();
    const Document& doc = state_.Doc;
    Tag = QStringLiteral("1");
    if (doc.SequenceGroupSize < 1) {
        ChkSequenceGroupSize->setChecked(false);
    } else {
        TxtSequenceGroupSize->setText(Number(IntToText(doc.SequenceGroupSize)));
        ChkSequenceGroupSize->setChecked(true);
    }
    TxtGamma->setText(Number(FloatToText(doc.Gamma)));
    TxtMassstab->setText(Number(FloatToText(doc.ModelScale)));
    ChkAugen->setChecked(doc.EyesOn == 1);
    ChkExtTex->setChecked(doc.ExternalTextures == 1);
    for (QLineEdit* eye : {TxtAugenX, TxtAugenY, TxtAugenZ}) {
        eye->setEnabled(doc.EyesOn == 1);
    }
    bool parts = false;
    for (int g = 0; g <= doc.BodyGroupCount && g <= limits::LastBodyGroup; ++g) {
        parts = parts || doc.BodyGroups[static_cast<std::size_t>(g)].PartCount != 0;
    }
    for (QPushButton* gate : {CmdAttachment, CmdController, CmdTextureGroup, CmdTexturemode}) {
        gate->setEnabled(parts);
    }
    Tag = QStringLiteral("0");
}

// The scale and the gamma read the number at the start of the text, the
// user's decimal separator taken as a point: "1,8" as the box opens on a
// decimal-comma system stays 1.8.
void DlgModeleinstellungen::TxtMassstab_Change() {
    if (!TxtMassstab->text().isEmpty() && Tag == QLatin1String("0")) {
        state_.Doc.ModelScale = ToF32(FieldNumber(NumberText(TxtMassstab->text())));
    }
}

void DlgModeleinstellungen::TxtGamma_Change() {
    if (!TxtGamma->text().isEmpty() && Tag == QLatin1String("0")) {
        state_.Doc.Gamma = ToF32(FieldNumber(NumberText(TxtGamma->text())));
    }
}

// The eye position takes only a whole number; a text on its way to one
// ("-", "1.") leaves the last number in the document.
namespace {
void StoreEye(const QLineEdit* box, f32& field) {
    if (box->text().isEmpty() || !box->isEnabled()) {
        return;
    }
    if (const std::optional<f32> value = StrictToF32(NumberText(box->text()))) {
        field = *value;
    }
}
} // namespace

void DlgModeleinstellungen::TxtAugenX_Change() {
    StoreEye(TxtAugenX, state_.Doc.EyeX);
}

void DlgModeleinstellungen::TxtAugenY_Change() {
    StoreEye(TxtAugenY, state_.Doc.EyeY);
}

void DlgModeleinstellungen::TxtAugenZ_Change() {
    StoreEye(TxtAugenZ, state_.Doc.EyeZ);
}

void DlgModeleinstellungen::TxtSequenceGroupSize_Change() {
    if (TxtSequenceGroupSize->text().isEmpty()) {
        return;
    }
    // Above 32767 there is no size to store: the last one stays.
    if (const std::optional<i16> size = StrictToI16(NumberText(TxtSequenceGroupSize->text()))) {
        state_.Doc.SequenceGroupSize = *size;
    }
}

void DlgModeleinstellungen::ChkAugen_Click() {
    Document& doc = state_.Doc;
    doc.EyesOn = ChkAugen->isChecked() ? 1 : 0;
    // The boxes store only while enabled: they are disabled before the
    // letters go in, and enabled only after the numbers are in.
    if (doc.EyesOn != 1) {
        TxtAugenZ->setEnabled(false);
        TxtAugenY->setEnabled(false);
        TxtAugenX->setEnabled(false);
        TxtAugenX->setText(QStringLiteral("X"));
        TxtAugenY->setText(QStringLiteral("Y"));
        TxtAugenZ->setText(QStringLiteral("Z"));
    } else {
        TxtAugenX->setText(Number(FloatToText(doc.EyeX)));
        TxtAugenY->setText(Number(FloatToText(doc.EyeY)));
        TxtAugenZ->setText(Number(FloatToText(doc.EyeZ)));
        TxtAugenX->setEnabled(true);
        TxtAugenY->setEnabled(true);
        TxtAugenZ->setEnabled(true);
    }
}

void DlgModeleinstellungen::ChkExtTex_Click() {
    state_.Doc.ExternalTextures = ChkExtTex->isChecked() ? 1 : 0;
}

void DlgModeleinstellungen::ChkSequenceGroupSize_Click() {
    if (ChkSequenceGroupSize->isChecked()) {
        TxtSequenceGroupSize->setEnabled(true);
        // An empty box or one above 32767 has no size: the last one stays.
        if (const std::optional<i16> size = StrictToI16(NumberText(TxtSequenceGroupSize->text()))) {
            state_.Doc.SequenceGroupSize = *size;
        }
    } else {
        TxtSequenceGroupSize->setEnabled(false);
        state_.Doc.SequenceGroupSize = 0;
    }
}

void DlgModeleinstellungen::ShowSubDialog(LocalisedDialog& dialog) {
    setEnabled(false);
    // A dialog opened on this one would be disabled with it; as a window of
    // its own it can be enabled again.
    dialog.setEnabled(true);
    ForwardLocalise(dialog);
    dialog.exec();
    setEnabled(true);
    activateWindow();
}

void DlgModeleinstellungen::CmdAttachment_Click() {
    DlgBindung dialog(state_, services_, main_, this);
    ShowSubDialog(dialog);
}

void DlgModeleinstellungen::CmdController_Click() {
    DlgController dialog(state_, services_, main_, this);
    ShowSubDialog(dialog);
}

void DlgModeleinstellungen::CmdTextureGroup_Click() {
    DlgTextureGroup dialog(state_, services_, main_, this);
    ShowSubDialog(dialog);
}

void DlgModeleinstellungen::CmdTexturemode_Click() {
    DlgTexturemode dialog(state_, services_, main_, this);
    ShowSubDialog(dialog);
}

void DlgModeleinstellungen::OKButton_Click() {
    close();
}

} // namespace quarle::ui
