#include "ui/dialogs/DlgBindung.h"

#include "document/NumberText.h"
#include "document/Text.h"
#include "platform/Reflection.h"
#include "ui/common/NumberKeys.h"
#include "ui/localisation/Messages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace quarle::ui {

using platform::Control;

DlgBindung::DlgBindung(AppState& state, platform::Services& services, MainWindowAccess& /*main*/,
                       QWidget* parent)
    : SkeletonDialog(state, services, SkeletonVariant::Attachment, parent) {
    setObjectName(QStringLiteral("DlgBindung"));
    setWindowTitle(QStringLiteral("Bindungen"));
    setModal(true);

    CreateSkeletonControls();
    Label1 = Control(new QLabel(QStringLiteral("Bindungs-Nr.:"), this), QStringLiteral("Label1"));
    CmbBindung = CreateItemList(QStringLiteral("CmbBindung"), limits::LastAttachment,
                                QStringLiteral("Wähle eine Attachmentnummer aus"),
                                [this] { CmbBindung_Click(); });
    ChkBndgAktiv =
        Control(new QCheckBox(QStringLiteral("Bindung an"), this), QStringLiteral("ChkBndgAktiv"));
    ChkBndgAktiv->setToolTip(QStringLiteral("Ist Bindung aktiv?"));
    Label2 =
        Control(new QLabel(QStringLiteral("Knochen an Bndg.:"), this), QStringLiteral("Label2"));
    Label2->setToolTip(QStringLiteral("Knochen an dem die Bindung anhängt"));
    Frame1 =
        Control(new QGroupBox(QStringLiteral("Bindungspunkt"), this), QStringLiteral("Frame1"));
    Label3 = Control(new QLabel(QStringLiteral("X-Koordinate:"), Frame1), QStringLiteral("Label3"));
    TxtBindungX =
        Control(new QLineEdit(QStringLiteral("0"), Frame1), QStringLiteral("TxtBindungX"));
    TxtBindungX->setToolTip(
        QStringLiteral("Gibt die X-Koordinate der Bindung relativ zum Knochen an"));
    Label4 = Control(new QLabel(QStringLiteral("Y-Koordinate:"), Frame1), QStringLiteral("Label4"));
    TxtBindungY =
        Control(new QLineEdit(QStringLiteral("0"), Frame1), QStringLiteral("TxtBindungY"));
    TxtBindungY->setToolTip(
        QStringLiteral("Gibt die Y-Koordinate der Bindung relativ zum Knochen an"));
    Label5 = Control(new QLabel(QStringLiteral("Z-Koordinate:"), Frame1), QStringLiteral("Label5"));
    TxtBindungZ =
        Control(new QLineEdit(QStringLiteral("0"), Frame1), QStringLiteral("TxtBindungZ"));
    TxtBindungZ->setToolTip(
        QStringLiteral("Gibt die Z-Koordinate der Bindung relativ zum Knochen an"));
    CreateOKButton();
    CreateCmdLocalise();

    for (QLineEdit* box : {TxtBindungX, TxtBindungY, TxtBindungZ}) {
        box->setEnabled(false);
        FilterKeys(box, 3);
    }

    auto* point = new QGridLayout(Frame1);
    point->addWidget(Label3, 0, 0);
    point->addWidget(TxtBindungX, 0, 1);
    point->addWidget(Label4, 1, 0);
    point->addWidget(TxtBindungY, 1, 1);
    point->addWidget(Label5, 2, 0);
    point->addWidget(TxtBindungZ, 2, 1);
    LayOut(Label1, CmbBindung, ChkBndgAktiv, Label2, Frame1);

    connect(ChkBndgAktiv, &QCheckBox::toggled, this, &DlgBindung::ChkBndgAktiv_Click);
    connect(TxtBindungX, &QLineEdit::textChanged, this,
            [this](const QString& t) { TxtBindung_Change(0, t); });
    connect(TxtBindungY, &QLineEdit::textChanged, this,
            [this](const QString& t) { TxtBindung_Change(1, t); });
    connect(TxtBindungZ, &QLineEdit::textChanged, this,
            [this](const QString& t) { TxtBindung_Change(2, t); });
}

DlgBindung::~DlgBindung() = default;

void DlgBindung::Form_Load() {
    LoadLanguage();
    LoadSkeleton();
    CmbBindung->setCurrentIndex(0);
    CmbBindung_Click();
}

int DlgBindung::K() const {
    return ItemIndex(CmbBindung, limits::LastAttachment);
}

void DlgBindung::EnableItemControls(bool on) {
    for (QWidget* w :
         std::initializer_list<QWidget*>{TxtBindungX, TxtBindungY, TxtBindungZ, TxtBone}) {
        w->setEnabled(on);
    }
}

void DlgBindung::CmbBindung_Click() {
    const int k = K();
    if (k < 0) {
        return;
    }
    const Document& doc = state_.Doc;
    SetBoneText(doc.AttachmentBones[k], false);
    const AttachmentRec a = doc.Attachments[k];
    TxtBindungX->setText(QString::fromLatin1(FloatToPointText(a.X)));
    TxtBindungY->setText(QString::fromLatin1(FloatToPointText(a.Y)));
    TxtBindungZ->setText(QString::fromLatin1(FloatToPointText(a.Z)));
    ChkBndgAktiv->setChecked(a.Active == 1);
    if (!ChkBndgAktiv->isChecked()) {
        EnableItemControls(false);
        return;
    }
    EnableItemControls(true);
    if (SelectBoneEntry(doc.AttachmentBones[k])) {
        ShowBone();
    }
}

void DlgBindung::ChkBndgAktiv_Click() {
    const bool on = ChkBndgAktiv->isChecked();
    if (const int k = K(); k >= 0) {
        state_.Doc.Attachments[k].Active = on ? 1 : 0;
    }
    EnableItemControls(on);
}

void DlgBindung::TxtBindung_Change(int axis, const QString& text) {
    const int k = K();
    if (k < 0 || text.isEmpty()) {
        return;
    }
    AttachmentRec& a = state_.Doc.Attachments[k];
    const f32 value = ToF32(TextToNumber(text.toLatin1().toStdString()));
    (axis == 0 ? a.X : axis == 1 ? a.Y : a.Z) = value;
}

void DlgBindung::StoreBoneName(const QString& text) {
    const int k = K();
    if (k < 0) {
        return;
    }
    if (auto name = TypedText(state_, services_, text)) {
        state_.Doc.AttachmentBones[k] = std::move(*name);
    }
}

} // namespace quarle::ui
