#include "ui/dialogs/SkeletonView.h"

#include "document/NumberText.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "platform/Twips.h"
#include "ui/localisation/Messages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

namespace quarle::ui {

namespace {

using platform::Control;

const QColor ViewGrey(128, 128, 128);
const QColor BoneGrey(192, 192, 192); // palette colour 7
const QColor MarkRed(128, 0, 0);      // palette colour 4
constexpr double BoneRadius = 30;     // twips

QLineEdit* DisplayBox(QWidget* parent, const char* name) {
    auto* box = Control(new QLineEdit(parent), QString::fromLatin1(name));
    box->setEnabled(false);
    return box;
}

} // namespace

SkeletonDialog::SkeletonDialog(AppState& state, platform::Services& services,
                               SkeletonVariant variant, QWidget* parent)
    : LocalisedDialog(state, services, parent), variant_(variant) {}

void SkeletonDialog::CreateSkeletonControls() {
    Label6 =
        Control(new QLabel(QStringLiteral("Vorderansicht (X,Y)"), this), QStringLiteral("Label6"));
    PicXY = Control(new platform::TwipsPicture(ViewWidthTwips, ViewHeightTwips, ViewGrey, this),
                    QStringLiteral("PicXY"));
    Label7 =
        Control(new QLabel(QStringLiteral("Draufsicht (X,Z)"), this), QStringLiteral("Label7"));
    PicXZ = Control(new platform::TwipsPicture(ViewWidthTwips, ViewHeightTwips, ViewGrey, this),
                    QStringLiteral("PicXZ"));
    TxtBone = Control(new QComboBox(this), QStringLiteral("TxtBone"));
    TxtBone->setEditable(true);
    TxtBone->setInsertPolicy(QComboBox::NoInsert);
    TxtBone->setMinimumContentsLength(16);
    Frame2 = Control(new QGroupBox(QStringLiteral("Knocheninfos"), this), QStringLiteral("Frame2"));
    Label8 = Control(new QLabel(QStringLiteral("X:"), Frame2), QStringLiteral("Label8"));
    TxtBoneX = DisplayBox(Frame2, "TxtBoneX");
    Label9 = Control(new QLabel(QStringLiteral("Y:"), Frame2), QStringLiteral("Label9"));
    TxtBoneY = DisplayBox(Frame2, "TxtBoneY");
    Label10 = Control(new QLabel(QStringLiteral("Z:"), Frame2), QStringLiteral("Label10"));
    TxtBoneZ = DisplayBox(Frame2, "TxtBoneZ");
    Label11 = Control(new QLabel(QStringLiteral("Parent:"), Frame2), QStringLiteral("Label11"));
    TxtParent = DisplayBox(Frame2, "TxtParent");
    Timer1 = Control(new QTimer(this), QStringLiteral("Timer1"));
    Timer1->setInterval(100);
    Timer1->start();

    connect(Timer1, &QTimer::timeout, this, &SkeletonDialog::Timer1_Timer);
    connect(TxtBone, &QComboBox::activated, this, [this] { ShowBone(); });
    connect(TxtBone, &QComboBox::editTextChanged, this, &SkeletonDialog::TxtBone_Change);
}

QWidget* SkeletonDialog::SkeletonPanel() {
    auto* panel = new QWidget(this);
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(Label6, 0, 0);
    grid->addWidget(Label7, 0, 1);
    grid->addWidget(PicXY, 1, 0);
    grid->addWidget(PicXZ, 1, 1);

    auto* info = new QGridLayout(Frame2);
    info->addWidget(Label8, 0, 0);
    info->addWidget(TxtBoneX, 0, 1);
    info->addWidget(Label9, 0, 2);
    info->addWidget(TxtBoneY, 0, 3);
    info->addWidget(Label10, 0, 4);
    info->addWidget(TxtBoneZ, 0, 5);
    info->addWidget(Label11, 1, 0);
    info->addWidget(TxtParent, 1, 1, 1, 5);
    for (QLineEdit* box : {TxtBoneX, TxtBoneY, TxtBoneZ}) {
        box->setMinimumWidth(60);
    }
    grid->addWidget(Frame2, 2, 0, 1, 2);
    return panel;
}

QComboBox* SkeletonDialog::CreateItemList(const QString& name, int last, const QString& toolTip,
                                          std::function<void()> click) {
    auto* list = Control(new QComboBox(this), name);
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    // Typed text stays as typed: a completion would name an entry the user
    // did not type.
    list->setCompleter(nullptr);
    for (int i = 0; i <= last; ++i) {
        list->addItem(QStringLiteral("Bndg.-Nr.%1").arg(i));
    }
    list->setCurrentIndex(-1);
    list->setEditText(QStringLiteral("1"));
    list->setToolTip(toolTip);

    connect(list, &QComboBox::activated, this, [click] { click(); });
    // Only what the user types: a pick from the list sets the text as well,
    // and its own signal shows the record.
    connect(list->lineEdit(), &QLineEdit::textEdited, this, [list, click](const QString& text) {
        const int i = list->findText(text, Qt::MatchExactly);
        if (i < 0) {
            return;
        }
        if (i != list->currentIndex()) {
            const QSignalBlocker block(list);
            list->setCurrentIndex(i);
        }
        click();
    });
    return list;
}

int SkeletonDialog::ItemIndex(const QComboBox* list, int last) {
    const int k = list->currentIndex();
    if (k < 0 || k > last || list->itemText(k) != list->currentText()) {
        return -1;
    }
    return k;
}

void SkeletonDialog::CreateOKButton() {
    OKButton = Control(new QPushButton(QStringLiteral("OK"), this), QStringLiteral("OKButton"));
    OKButton->setDefault(true);
    connect(OKButton, &QPushButton::clicked, this, &SkeletonDialog::OKButton_Click);
}

void SkeletonDialog::OKButton_Click() {
    accept();
}

void SkeletonDialog::LayOut(QLabel* number, QComboBox* list, QCheckBox* active, QLabel* bone,
                            QGroupBox* frame) {
    auto* item = new QGridLayout;
    item->addWidget(number, 0, 0);
    item->addWidget(list, 0, 1);
    item->addWidget(active, 1, 0, 1, 2);
    item->addWidget(bone, 2, 0);
    item->addWidget(TxtBone, 2, 1);
    item->addWidget(frame, 3, 0, 1, 2);
    item->setRowStretch(4, 1);
    auto* top = new QHBoxLayout;
    top->addLayout(item);
    top->addSpacing(8);
    top->addWidget(SkeletonPanel());
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(CmdLocalise);
    buttons->addStretch(1);
    buttons->addWidget(OKButton);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void SkeletonDialog::LoadSkeleton() {
    StartSkeleton(state_.Skeleton, variant_);
    ContinueSkeleton();
}

void SkeletonDialog::ContinueSkeleton() {
    const SkeletonLoad load = quarle::ContinueSkeleton(state_.Skeleton, state_.Doc, variant_);
    // The dialog opens all the same, with the bones it could read: none.
    TellUnreadFile(state_, services_, load.Unread);
    // Filling the list must not select a bone nor write a name.
    const QSignalBlocker block(TxtBone);
    const QString text = TxtBone->currentText();
    TxtBone->clear();
    for (const int b : load.ListedBones) {
        TxtBone->addItem(platform::FromCp1252(state_.Skeleton.BoneNames[b]), b);
    }
    TxtBone->setCurrentIndex(-1);
    TxtBone->setEditText(text);
}

double SkeletonDialog::Screen(double scale, double value) const {
    return SkeletonScreen(state_.Skeleton, scale, value);
}

void SkeletonDialog::DrawSkeleton() {
    Timer1->stop();
    const SkeletonTables& t = state_.Skeleton;
    const double s = SkeletonScale(t, ViewWidthTwips);
    if (variant_ == SkeletonVariant::Attachment) {
        const double z0 = Screen(s, 0);
        const double e = (double(t.SkeletonMax) - t.SkeletonMin) * s;
        for (platform::TwipsPicture* view : {PicXY, PicXZ}) {
            view->Line(z0, 0, z0, e, MarkRed);
            view->Line(0, z0, e, z0, MarkRed);
        }
    }
    for (int b = 0; b <= LastBone; ++b) {
        if (t.BoneNames[b].empty()) {
            continue;
        }
        const BoneRec& bone = t.Bones[b];
        const double x = Screen(s, bone.X);
        PicXY->Circle(x, Screen(s, bone.Y), BoneRadius, BoneGrey);
        PicXZ->Circle(x, Screen(s, bone.Z), BoneRadius, BoneGrey);
        if (HasParent(bone)) {
            const BoneRec& parent = t.Bones[bone.Parent];
            const double px = Screen(s, parent.X);
            PicXY->Line(px, Screen(s, parent.Y), x, Screen(s, bone.Y), BoneGrey);
            PicXZ->Line(px, Screen(s, parent.Z), x, Screen(s, bone.Z), BoneGrey);
        }
    }
}

void SkeletonDialog::ShowBone() {
    DrawSkeleton();
    StoreBoneName(TxtBone->currentText());
    const int b = SelectedBone();
    if (b < 0) {
        return;
    }
    const SkeletonTables& t = state_.Skeleton;
    const BoneRec& bone = t.Bones[b];
    TxtBoneX->setText(QString::fromLatin1(FloatToText(bone.X)));
    TxtBoneY->setText(QString::fromLatin1(FloatToText(bone.Y)));
    TxtBoneZ->setText(QString::fromLatin1(FloatToText(bone.Z)));
    const double s = SkeletonScale(t, ViewWidthTwips);
    const double x = Screen(s, bone.X);
    PicXY->Circle(x, Screen(s, bone.Y), BoneRadius, MarkRed);
    PicXZ->Circle(x, Screen(s, bone.Z), BoneRadius, MarkRed);
    if (!HasParent(bone)) {
        TxtParent->setText(QString::fromStdString(state_.IdsTexts[IDS_NONE]));
        return;
    }
    const BoneRec& parent = t.Bones[bone.Parent];
    const double px = Screen(s, parent.X);
    PicXY->Line(px, Screen(s, parent.Y), x, Screen(s, bone.Y), MarkRed);
    PicXZ->Line(px, Screen(s, parent.Z), x, Screen(s, bone.Z), MarkRed);
    TxtParent->setText(platform::FromCp1252(t.BoneNames[bone.Parent]));
}

void SkeletonDialog::Timer1_Timer() {
    DrawSkeleton();
}

void SkeletonDialog::TxtBone_Change(const QString& text) {
    StoreBoneName(text);
}

int SkeletonDialog::SelectedBone() const {
    const int i = TxtBone->currentIndex();
    if (i < 0 || TxtBone->itemText(i) != TxtBone->currentText()) {
        return -1;
    }
    const int b = TxtBone->itemData(i).toInt();
    return b >= 0 && b <= LastBone ? b : -1;
}

void SkeletonDialog::SetBoneText(const std::string& name, bool selectEntry) {
    {
        const QSignalBlocker block(TxtBone);
        int found = -1;
        if (selectEntry) {
            for (int i = 0; i < TxtBone->count() && found < 0; ++i) {
                if (state_.Skeleton.BoneNames[TxtBone->itemData(i).toInt()] == name) {
                    found = i;
                }
            }
        }
        TxtBone->setCurrentIndex(found);
    }
    TxtBone->setEditText(platform::FromCp1252(name));
}

bool SkeletonDialog::SelectBoneEntry(const std::string& name) {
    for (int i = 0; i < TxtBone->count(); ++i) {
        if (state_.Skeleton.BoneNames[TxtBone->itemData(i).toInt()] == name) {
            TxtBone->setCurrentIndex(i);
            TxtBone->setEditText(TxtBone->itemText(i));
            return true;
        }
    }
    return false;
}

} // namespace quarle::ui
