// Page "Modeldateien" of TabSmd, and what both pages share: the list of the
// folder's files and the buttons that add, delete and blank entries.
//
// The body groups and the start need the group box: its click lists the
// parts of the chosen group. The editing of groups and parts comes with the
// page's own work.
#include "ui/mainwindow/FrmMain.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>

namespace quarle::ui {

void FrmMain::ConnectModelFilesPage() {
    connect(TabSmd, &QTabWidget::currentChanged, this, &FrmMain::TabSmd_Click);
    connect(LstFiles, &QListWidget::itemDoubleClicked, this, &FrmMain::LstFiles_DblClick);
    connect(CmdAdd, &QPushButton::clicked, this, &FrmMain::CmdAdd_Click);
    connect(CmdDelAnimation, &QPushButton::clicked, this, &FrmMain::CmdDelAnimation_Click);
    connect(CmdBlank, &QPushButton::clicked, this, &FrmMain::CmdBlank_Click);
    connect(CmbBodyGroup, &QComboBox::currentIndexChanged, this, &FrmMain::CmbBodyGroup_Click);
    connect(CmdNewGroup, &QPushButton::clicked, this, &FrmMain::CmdNewGroup_Click);
    connect(CmdDel, &QPushButton::clicked, this, &FrmMain::CmdDel_Click);
    connect(CmdRename, &QPushButton::clicked, this, &FrmMain::CmdRename_Click);
    connect(LstParts, &QListWidget::itemSelectionChanged, this, &FrmMain::LstParts_Click);
    connect(ChkReverse, &QCheckBox::clicked, this, &FrmMain::ChkReverse_Click);
}

void FrmMain::TabSmd_Click(int /*previousTab*/) {
    // Empty the list first and let it show empty, then read the folder anew:
    // files that appeared on the disk show up now.
    LstFiles->clear();
    QApplication::processEvents();
    FileListRefresh();
    RefillLstFiles();
}

void FrmMain::RefillLstFiles() {
    // For now every file of the folder is listed on both pages; telling
    // meshes from animations comes with the page's work.
    LstFiles->clear();
    for (int i = 0; i < FileList->count(); ++i) {
        const QString file = FileList->item(i)->text();
        LstFiles->addItem(file.left(file.size() - 4));
    }
}

void FrmMain::LstFiles_DblClick() {
    CmdAdd_Click();
}

void FrmMain::CmdAdd_Click() {}

void FrmMain::CmdDelAnimation_Click() {}

void FrmMain::CmdBlank_Click() {}

void FrmMain::CmbBodyGroup_Click() {
    LstParts->clear();
    const int index = CmbBodyGroup->currentIndex();
    if (index >= 0 && index < limits::LastBodyGroup) {
        const BodyGroupRec& group = state_.Doc.BodyGroups[static_cast<std::size_t>(index) + 1];
        const int count = std::min<int>(group.PartCount, limits::LastPart);
        for (int p = 1; p <= count; ++p) {
            LstParts->addItem(QString::fromStdString(group.Parts[static_cast<std::size_t>(p)]));
        }
    }
    CmdDel->setEnabled(true);
    CmdRename->setEnabled(true);
}

void FrmMain::CmdNewGroup_Click() {}

void FrmMain::CmdDel_Click() {}

void FrmMain::CmdRename_Click() {}

void FrmMain::LstParts_Click() {}

void FrmMain::ChkReverse_Click() {}

} // namespace quarle::ui
