// Page "Animationsdateien" of TabSmd: the animations of one sequence group,
// the number of the group, and the name, activity and file of the animation
// on show. The handlers are wired; their work comes with the page.
#include "ui/mainwindow/FrmMain.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>

namespace quarle::ui {

void FrmMain::ConnectAnimationsPage() {
    connect(CmdAnimPfeill, &QPushButton::clicked, this, &FrmMain::CmdAnimPfeill_Click);
    connect(CmdAnimPfeilr, &QPushButton::clicked, this, &FrmMain::CmdAnimPfeilr_Click);
    connect(TxtAnimNr, &QLineEdit::textChanged, this, &FrmMain::TxtAnimNr_Change);
    connect(LstAnimations, &QListWidget::itemSelectionChanged, this, &FrmMain::LstAnimations_Click);
    connect(TxtAnimName, &QLineEdit::textChanged, this, &FrmMain::TxtAnimName_Change);
    connect(TxtAnimID, &QComboBox::editTextChanged, this, &FrmMain::TxtAnimID_Change);
    connect(VScrAnim, &QScrollBar::valueChanged, this, &FrmMain::VScrAnim_Change);
    connect(CmdAnimExt, &QPushButton::clicked, this, &FrmMain::CmdAnimExt_Click);
}

void FrmMain::CmdAnimPfeill_Click() {}

void FrmMain::CmdAnimPfeilr_Click() {}

void FrmMain::TxtAnimNr_Change() {}

void FrmMain::LstAnimations_Click() {}

void FrmMain::TxtAnimName_Change() {}

void FrmMain::TxtAnimID_Change() {}

void FrmMain::VScrAnim_Change() {}

void FrmMain::CmdAnimExt_Click() {}

} // namespace quarle::ui
