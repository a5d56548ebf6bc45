// The commands of the file menu and the compile button: open, save, save
// under a new name, compile, the viewer and the editor, and the four recent
// entries. The new document and the end of the program are the shell's
// (FrmMain.cpp). The handlers are wired; their work comes with the commands.
#include "ui/mainwindow/FrmMain.h"

#include <QAction>
#include <QPushButton>

namespace quarle::ui {

void FrmMain::ConnectFileCommands() {
    connect(MnuDateiOeffnen, &QAction::triggered, this, &FrmMain::MnuDateiOeffnen_Click);
    connect(MnuDateiSpeichern, &QAction::triggered, this, &FrmMain::MnuDateiSpeichern_Click);
    connect(MnuDateiSpeichernunter, &QAction::triggered, this,
            &FrmMain::MnuDateiSpeichernunter_Click);
    connect(MnuDateiComp, &QAction::triggered, this, &FrmMain::MnuDateiComp_Click);
    connect(CmdCompile, &QPushButton::clicked, this, &FrmMain::CmdCompile_Click);
    connect(MnuDateiView, &QAction::triggered, this, &FrmMain::MnuDateiView_Click);
    connect(MnuDateiViewCode, &QAction::triggered, this, &FrmMain::MnuDateiViewCode_Click);
    connect(MnuDateiLast1, &QAction::triggered, this, &FrmMain::MnuDateiLast1_Click);
    connect(MnuDateiLast2, &QAction::triggered, this, &FrmMain::MnuDateiLast2_Click);
    connect(MnuDateiLast3, &QAction::triggered, this, &FrmMain::MnuDateiLast3_Click);
    connect(MnuDateiLast4, &QAction::triggered, this, &FrmMain::MnuDateiLast4_Click);
}

void FrmMain::MnuDateiOeffnen_Click() {}

void FrmMain::MnuDateiSpeichern_Click() {}

void FrmMain::MnuDateiSpeichernunter_Click() {}

void FrmMain::MnuDateiComp_Click() {}

void FrmMain::CmdCompile_Click() {
    MnuDateiComp_Click();
}

void FrmMain::MnuDateiView_Click() {}

void FrmMain::MnuDateiViewCode_Click() {}

void FrmMain::MnuDateiLast_Click(int /*i*/) {}

} // namespace quarle::ui
