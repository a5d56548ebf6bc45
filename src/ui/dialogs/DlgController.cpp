#include "ui/dialogs/DlgController.h"

#include "document/NumberText.h"
#include "document/Text.h"
#include "platform/Reflection.h"
#include "ui/common/NumberKeys.h"
#include "ui/dialogs/LimitsDial.h"
#include "ui/localisation/Messages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace quarle::ui {

namespace {

using platform::Control;

// A limit as the boxes hold it, shown in the user's separator: under a
// decimal comma "12,5" reads as 12.5, so a limit survives being shown and
// read back; a point is read in every locale.
double LimitValue(const QString& text) {
    return FieldNumber(NumberText(text));
}

} // namespace

DlgController::DlgController(AppState& state, platform::Services& services,
                             MainWindowAccess& /*main*/, QWidget* parent)
    : SkeletonDialog(state, services, SkeletonVariant::Controller, parent) {
    setObjectName(QStringLiteral("DlgController"));
    setWindowTitle(QStringLiteral("Controller"));
    setModal(true);

    CreateSkeletonControls();
    TxtBone->setToolTip(QStringLiteral("Listet die Knochen für das Modell auf"));
    Label1 = Control(new QLabel(QStringLiteral("Controller-Nr.:"), this), QStringLiteral("Label1"));
    CmbController = CreateItemList(QStringLiteral("CmbController"), limits::LastController,
                                   QStringLiteral("Wähle eine Controllernummer aus"),
                                   [this] { CmbController_Click(); });
    ChkCtrlAktiv = Control(new QCheckBox(QStringLiteral("Controller an"), this),
                           QStringLiteral("ChkCtrlAktiv"));
    ChkCtrlAktiv->setToolTip(QStringLiteral("Ist Controller aktiv?"));
    Label2 =
        Control(new QLabel(QStringLiteral("Knochen an Ctrl.:"), this), QStringLiteral("Label2"));
    Label2->setToolTip(QStringLiteral("Knochen an dem die Bindung anhängt"));
    FrameCtrl = Control(new QGroupBox(QStringLiteral("Controllereinstellungen"), this),
                        QStringLiteral("FrameCtrl"));
    FrameCtrl->setEnabled(false);
    const QString axisTip =
        QStringLiteral("Legt die Achse fest über die Half-Life die Kontrolle übernehmen kann");
    for (int i = 0; i < 3; ++i) {
        CtrlAchse[i] =
            Control(new QRadioButton(QStringLiteral("%1-Achse").arg(QChar(u'X' + i)), FrameCtrl),
                    QStringLiteral("CtrlAchse"), i);
        CtrlAchse[i]->setToolTip(axisTip);
    }
    CtrlAchse[0]->setChecked(true);
    Label3 =
        Control(new QLabel(QStringLiteral("Winkelgrenzen:"), FrameCtrl), QStringLiteral("Label3"));
    PicLimits = Control(new LimitsDial(FrameCtrl), QStringLiteral("PicLimits"));
    const QString limitTip = QStringLiteral(
        "Um wieviel Grad an der Achse gedreht werden kann (z.B. dass der Kopf nicht einmal um "
        "360 Grad gedreht werden kann)");
    Label4 = Control(new QLabel(QStringLiteral("Min:"), FrameCtrl), QStringLiteral("Label4"));
    Label4->setStyleSheet(QStringLiteral("color: rgb(255, 0, 0)"));
    TxtLimitMin =
        Control(new QLineEdit(QStringLiteral("0"), FrameCtrl), QStringLiteral("TxtLimitMin"));
    TxtLimitMin->setToolTip(limitTip);
    Label5 = Control(new QLabel(QStringLiteral("Max:"), FrameCtrl), QStringLiteral("Label5"));
    Label5->setStyleSheet(QStringLiteral("color: rgb(0, 0, 255)"));
    TxtLimitMax =
        Control(new QLineEdit(QStringLiteral("0"), FrameCtrl), QStringLiteral("TxtLimitMax"));
    TxtLimitMax->setToolTip(limitTip);
    FilterKeys(TxtLimitMax, 2);
    CreateOKButton();
    CreateCmdLocalise();

    auto* axes = new QHBoxLayout;
    for (QRadioButton* option : CtrlAchse) {
        axes->addWidget(option);
    }
    auto* limitBoxes = new QGridLayout;
    limitBoxes->addWidget(Label4, 0, 0);
    limitBoxes->addWidget(TxtLimitMin, 0, 1);
    limitBoxes->addWidget(Label5, 1, 0);
    limitBoxes->addWidget(TxtLimitMax, 1, 1);
    auto* dial = new QHBoxLayout;
    dial->addWidget(PicLimits);
    dial->addLayout(limitBoxes);
    auto* frame = new QVBoxLayout(FrameCtrl);
    frame->addLayout(axes);
    frame->addWidget(Label3);
    frame->addLayout(dial);
    LayOut(Label1, CmbController, ChkCtrlAktiv, Label2, FrameCtrl);

    connect(ChkCtrlAktiv, &QCheckBox::toggled, this, &DlgController::ChkCtrlAktiv_Click);
    for (int i = 0; i < 3; ++i) {
        connect(CtrlAchse[i], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on) {
                CtrlAchse_Click(i);
            }
        });
    }
    connect(TxtLimitMin, &QLineEdit::textChanged, this, &DlgController::TxtLimitMin_Change);
    connect(TxtLimitMax, &QLineEdit::textChanged, this, &DlgController::TxtLimitMax_Change);
    connect(PicLimits, &LimitsDial::MouseMove, this, &DlgController::PicLimits_MouseMove);
}

DlgController::~DlgController() = default;

// The list index is set while the bone list is still empty, and the click
// runs again once the skeleton is read.
void DlgController::Form_Load() {
    LoadLanguage();
    StartSkeleton(state_.Skeleton, variant_);
    CmbController->setCurrentIndex(0);
    CmbController_Click();
    ContinueSkeleton();
    Timer1->start();
    CmbController_Click();
}

int DlgController::K() const {
    return ItemIndex(CmbController, limits::LastController);
}

void DlgController::CmbController_Click() {
    const int k = K();
    if (k < 0) {
        return;
    }
    state_.Preview.Controller = k; // the 3D preview shows the controller on show
    const Document& doc = state_.Doc;
    const ControllerRec c = doc.Controllers[k];
    ChkCtrlAktiv->setChecked(c.Active == 1);
    FrameCtrl->setEnabled(ChkCtrlAktiv->isChecked());
    SetBoneText(doc.ControllerBones[k], true);
    // A foreign axis value shows as the nearest of the three options, and
    // the record takes that option even when it was on already, so that the
    // script writes the axis the dialog shows.
    const int axis =
        std::isfinite(c.Axis) ? int(std::clamp(std::nearbyint(c.Axis), 0.0f, 2.0f)) : 0;
    CtrlAchse[axis]->setChecked(true);
    CtrlAchse_Click(axis);
    TxtLimitMin->setText(QString::fromLatin1(FloatToText(c.LimitMin)));
    TxtLimitMax->setText(QString::fromLatin1(FloatToText(c.LimitMax)));
    SetBoneText(doc.ControllerBones[k], true);
    ShowBone();
}

void DlgController::ChkCtrlAktiv_Click() {
    const bool on = ChkCtrlAktiv->isChecked();
    if (const int k = K(); k >= 0) {
        state_.Doc.Controllers[k].Active = on ? 1 : 0;
    }
    FrameCtrl->setEnabled(on);
}

void DlgController::CtrlAchse_Click(int index) {
    if (const int k = K(); k >= 0) {
        state_.Doc.Controllers[k].Axis = f32(index);
    }
}

void DlgController::TxtLimitMin_Change(const QString& text) {
    if (text.isEmpty()) {
        return;
    }
    DrawLimits();
    if (const int k = K(); k >= 0) {
        state_.Doc.Controllers[k].LimitMin = ToF32(LimitValue(text));
    }
}

void DlgController::TxtLimitMax_Change(const QString& text) {
    if (text.isEmpty()) {
        return;
    }
    DrawLimits();
    if (const int k = K(); k >= 0) {
        state_.Doc.Controllers[k].LimitMax = ToF32(LimitValue(text));
    }
}

void DlgController::PicLimits_MouseMove(int button, int y) {
    const QString angle = QString::fromLatin1(FloatToText(f32(y) / 5));
    if (button == 1) {
        TxtLimitMin->setText(angle);
    } else if (button == 2) {
        TxtLimitMax->setText(angle);
    }
    DrawLimits();
}

// From the two texts, not from the record.
void DlgController::DrawLimits() {
    const f32 toRadians = 3.141592f / 180;
    PicLimits->SetHands(ToF32(LimitValue(TxtLimitMin->text())) * toRadians,
                        ToF32(LimitValue(TxtLimitMax->text())) * toRadians);
}

void DlgController::StoreBoneName(const QString& text) {
    const int k = K();
    if (k < 0) {
        return;
    }
    if (auto name = TypedText(state_, services_, text)) {
        state_.Doc.ControllerBones[k] = std::move(*name);
    }
}

} // namespace quarle::ui
