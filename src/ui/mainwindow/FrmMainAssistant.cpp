// The assistant: the mascot Quarle on the main window, its poses and its
// speech box. Parking the mascot and choosing a frame work now; the tips,
// the random poses and the frame loops come with the assistant itself.
#include "platform/Twips.h"
#include "ui/mainwindow/FrmMain.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace quarle::ui {

void FrmMain::ConnectAssistant() {
    connect(CmdNext, &QPushButton::clicked, this, &FrmMain::CmdNext_Click);
    connect(CmdWizBack, &QPushButton::clicked, this, &FrmMain::CmdWizBack_Click);
    connect(CmdEnd, &QPushButton::clicked, this, &FrmMain::CmdEnd_Click);
    connect(MnuWizardsWizAn, &QAction::triggered, this, &FrmMain::MnuWizardsWizAn_Click);
    connect(TmrAnim, &QTimer::timeout, this, &FrmMain::TmrAnim_Timer);
    connect(TmrPlayAnim, &QTimer::timeout, this, &FrmMain::TmrPlayAnim_Timer);
}

void FrmMain::ShowWizard(int /*x*/, int /*y*/, const QString& /*text*/) {}

void FrmMain::RefreshWizard() {}

void FrmMain::SetBusyWizard() {
    TmrAnim->setInterval(10000);
    TmrAnimTag = QStringLiteral("BUSY");
}

void FrmMain::SetIdleWizard() {
    SetWizardAnim(0);
    TmrAnimTag = QStringLiteral("0");
    TmrAnim->setInterval(500);
}

void FrmMain::MoveWizard(int x, int y) {
    platform::MoveTwips(PicWiz, x, y);
}

void FrmMain::SetWizardAnim(int anim) {
    TmrPlayAnim->stop();
    HideWizard();
    // Without the mascot's pictures there is nothing to show, and an empty
    // picture box on top of the pages would only catch their clicks.
    if (anim < 0 || anim >= ImgLstWizAnims.size()) {
        return;
    }
    const QPoint place = PicWiz->pos();
    PicWiz->setPixmap(ImgLstWizAnims[anim]);
    PicWiz->resize(ImgLstWizAnims[anim].size());
    PicWiz->move(place);
    PicWiz->setVisible(true);
    if (WizFrameSteps[static_cast<std::size_t>(anim)] > 1) {
        TmrPlayAnimTag = QString::number(anim);
        TmrPlayAnim->start();
    }
}

void FrmMain::HideWizard() {
    PicWiz->setVisible(false);
}

void FrmMain::DisableWizard() {
    MoveWizard(6000, 820);
    SetIdleWizard();
    MnuWizardsWizAn->setChecked(false);
    FrmWizSay->setVisible(false);
    TxtWizSayShadow->setVisible(false);
    TmrAnimTag = QStringLiteral("NEW");
}

void FrmMain::ShowText() {}

void FrmMain::MnuWizardsWizAn_Click() {
    // The menu entry checks itself on a click; the assistant decides.
    MnuWizardsWizAn->setChecked(false);
}

void FrmMain::CmdNext_Click() {}

void FrmMain::CmdWizBack_Click() {}

void FrmMain::CmdEnd_Click() {
    DisableWizard();
}

void FrmMain::PicWiz_Click() {
    ShowText();
}

void FrmMain::PicWizClose_Click() {}

void FrmMain::TmrAnim_Timer() {}

void FrmMain::TmrPlayAnim_Timer() {}

} // namespace quarle::ui
