// Page "Modeldateien" of TabSmd, and what both pages share: the list of the
// folder's files and the buttons that add, delete and blank entries.
//
// Every action writes straight into BodyGroups. A part's Reverse flag travels
// with the part when parts move, so that a part never shows or writes the
// flag of another; a new part starts without the flag.
#include "document/Paths.h"
#include "platform/Cp1252Text.h"
#include "ui/common/LimitMessages.h"
#include "ui/dialogs/DlgName.h"
#include "ui/dialogs/DlgRenameGroup.h"
#include "ui/localisation/Messages.h"
#include "ui/mainwindow/FrmMain.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTabWidget>
#include <algorithm>
#include <vector>

namespace quarle::ui {
namespace {

constexpr int ModelFilesPage = 0;

std::size_t Slot(int i) {
    return static_cast<std::size_t>(i);
}

// The rows of a list that are selected, from the first to the last.
std::vector<int> SelectedRows(const QListWidget* list) {
    std::vector<int> rows;
    for (int i = 0; i < list->count(); ++i) {
        if (list->item(i)->isSelected()) {
            rows.push_back(i);
        }
    }
    return rows;
}

} // namespace

void FrmMain::ConnectModelFilesPage() {
    // The file list is sorted as the user reads names, without regard to
    // case ("Shoot" between "run" and "walk"); the refill sorts it so.
    LstFiles->setSortingEnabled(false);
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

// ---------------------------------------------------------------------------
// The files of the model folder, on both pages

void FrmMain::TabSmd_Click(int /*previousTab*/) {
    // Empty the list first and let it show empty, then read the folder anew:
    // files that appeared on the disk show up now.
    LstFiles->clear();
    QApplication::processEvents();
    FileListRefresh();
    RefillLstFiles();
}

void FrmMain::RefillLstFiles() {
    // Page 0 lists the meshes of the folder, page 1 the animations, each
    // without its extension. The kinds come from the cache, which reads only
    // the files that are new or changed since the last refill; a file that
    // cannot be read is listed on neither page.
    QStringList selected;
    for (const QListWidgetItem* item : LstFiles->selectedItems()) {
        selected.append(item->text());
    }
    const int scrolledBefore = LstFiles->verticalScrollBar()->value();
    LstFiles->clear();
    const bool meshes = TabSmd->currentIndex() == ModelFilesPage;
    const std::string& folder = state_.Doc.ModelPath;
    std::vector<std::string> seen;
    seen.reserve(static_cast<std::size_t>(FileList->count()));
    QStringList names;
    for (int i = 0; i < FileList->count(); ++i) {
        const QString file = FileList->item(i)->text();
        // A name the script's text cannot hold could never be written
        // into it: it is listed on neither page.
        const std::optional<std::string> name = platform::ToCp1252(file);
        if (!name) {
            continue;
        }
        seen.push_back(paths::Join(folder, *name));
        const SmdKind kind = modelFolderKinds_.KindOf(seen.back());
        if (kind != SmdKind::Unreadable && (kind == SmdKind::Reference) == meshes) {
            names.append(file.left(file.size() - 4));
        }
    }
    modelFolderKinds_.Keep(seen);
    std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
        const int blind = a.compare(b, Qt::CaseInsensitive);
        return blind != 0 ? blind < 0 : a < b;
    });
    // The entries still there keep their selection, and the list its place.
    LstFiles->addItems(names);
    for (int i = 0; i < LstFiles->count(); ++i) {
        if (selected.contains(LstFiles->item(i)->text())) {
            LstFiles->item(i)->setSelected(true);
        }
    }
    LstFiles->verticalScrollBar()->setValue(scrolledBefore);
}

void FrmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    // Back in the window, perhaps from the file manager: the list shows
    // what the folder holds now. Unchanged files are not read again.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() &&
        FrmModelfiles->isEnabled() && !fileListPath_.isEmpty()) {
        FileListRefresh();
        RefillLstFiles();
    }
}

void FrmMain::LstFiles_DblClick() {
    CmdAdd_Click();
}

void FrmMain::CmdAdd_Click() {
    if (TabSmd->currentIndex() == ModelFilesPage) {
        AddPartsFromFiles();
    } else {
        AddAnimationsFromFiles();
    }
}

void FrmMain::CmdDelAnimation_Click() {
    if (TabSmd->currentIndex() == ModelFilesPage) {
        DeleteSelectedParts();
    } else {
        DeleteSelectedAnimations();
    }
}

void FrmMain::CmdBlank_Click() {
    // On either page: an empty place in the group selected on page 0.
    const std::optional<int> k = SelectedBodyGroup();
    if (!k) {
        return;
    }
    BodyGroupRec& group = state_.Doc.BodyGroups[Slot(*k + 1)];
    if (group.PartCount >= limits::LastPart) {
        RefuseAtLimit(state_, services_, MSG_PARTS_FULL, limits::LastPart);
        return;
    }
    ++group.PartCount;
    group.Parts[group.PartCount] = Blank;
    group.Reverse[group.PartCount] = 0;
    LstParts->addItem(QString::fromLatin1(Blank));
}

// ---------------------------------------------------------------------------
// Body groups and their parts

std::optional<int> FrmMain::SelectedBodyGroup() const {
    const int k = CmbBodyGroup->currentIndex();
    if (k < 0 || k >= limits::LastBodyGroup) {
        return std::nullopt;
    }
    return k;
}

void FrmMain::AddPartsFromFiles() {
    const std::optional<int> k = SelectedBodyGroup();
    if (!k) {
        return;
    }
    BodyGroupRec& group = state_.Doc.BodyGroups[Slot(*k + 1)];
    // The selection in LstFiles stays.
    for (const int row : SelectedRows(LstFiles)) {
        if (group.PartCount >= limits::LastPart) {
            RefuseAtLimit(state_, services_, MSG_PARTS_FULL, limits::LastPart);
            return;
        }
        const QString text = LstFiles->item(row)->text();
        const std::optional<std::string> part = TypedText(state_, services_, text);
        if (!part) {
            continue;
        }
        ++group.PartCount;
        group.Parts[group.PartCount] = *part;
        group.Reverse[group.PartCount] = 0;
        LstParts->addItem(text);
    }
}

void FrmMain::DeleteSelectedParts() {
    const std::optional<int> k = SelectedBodyGroup();
    if (!k) {
        return;
    }
    BodyGroupRec& group = state_.Doc.BodyGroups[Slot(*k + 1)];
    const std::vector<int> rows = SelectedRows(LstParts);
    {
        // ChkReverse keeps what it shows; no part is selected afterwards, so
        // a click on it changes nothing.
        const QSignalBlocker block(LstParts);
        // From the last to the first, so that the rows still to come keep
        // their places.
        for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
            const int slot = *row + 1;
            const int last = std::min<int>(group.PartCount, limits::LastPart);
            if (slot <= last) {
                for (int s = slot; s < last; ++s) {
                    group.Parts[Slot(s)] = std::move(group.Parts[Slot(s + 1)]);
                    group.Reverse[Slot(s)] = group.Reverse[Slot(s + 1)];
                }
                group.Parts[Slot(last)].clear();
                group.Reverse[Slot(last)] = 0;
                --group.PartCount;
            }
            delete LstParts->takeItem(*row);
        }
        LstParts->clearSelection();
        LstParts->setCurrentRow(-1);
    }
}

void FrmMain::CmbBodyGroup_Click() {
    LstParts->clear();
    if (const std::optional<int> k = SelectedBodyGroup()) {
        const BodyGroupRec& group = state_.Doc.BodyGroups[Slot(*k + 1)];
        const int count = std::min<int>(group.PartCount, limits::LastPart);
        for (int p = 1; p <= count; ++p) {
            LstParts->addItem(platform::FromCp1252(group.Parts[Slot(p)]));
        }
    }
    CmdDel->setEnabled(true);
    CmdRename->setEnabled(true);
}

DlgName* FrmMain::OpenDlgName() const {
    return dlgName_;
}

void FrmMain::CmdNewGroup_Click() {
    // One dialog at a time; a second click brings the open one forward.
    if (dlgName_ == nullptr) {
        dlgName_ = new DlgName(state_, services_, CmbBodyGroup, this);
        connect(dlgName_, &DlgName::LocaliseRequested, this, &FrmMain::Localise);
    }
    dlgName_->show();
    dlgName_->raise();
    dlgName_->activateWindow();
}

void FrmMain::CmdDel_Click() {
    const std::optional<int> k = SelectedBodyGroup();
    if (!k) {
        return;
    }
    Document& doc = state_.Doc;
    // The groups behind the deleted one move up a slot, whole: name, parts
    // and flags. The slot that falls free ends empty.
    const int last = std::min(CmbBodyGroup->count(), limits::LastBodyGroup);
    for (int s = *k + 1; s < last; ++s) {
        doc.BodyGroups[Slot(s)] = std::move(doc.BodyGroups[Slot(s + 1)]);
    }
    doc.BodyGroups[Slot(last)] = BodyGroupRec{};
    if (doc.BodyGroupCount > 0) {
        --doc.BodyGroupCount;
    }
    {
        const QSignalBlocker block(CmbBodyGroup);
        CmbBodyGroup->removeItem(*k);
        CmbBodyGroup->setCurrentIndex(-1);
    }
    // No group is selected now: the parts list empties.
    CmbBodyGroup_Click();
}

void FrmMain::CmdRename_Click() {
    if (!SelectedBodyGroup()) {
        return; // nothing to show and nothing to change
    }
    DlgRenameGroup dialog(state_, services_, CmbBodyGroup, this);
    connect(&dialog, &DlgRenameGroup::LocaliseRequested, this, &FrmMain::Localise);
    dialog.exec();
}

void FrmMain::LstParts_Click() {
    const int row = LstParts->currentRow();
    const std::optional<int> k = SelectedBodyGroup();
    if (row < 0 || !k) {
        return;
    }
    const BodyGroupRec& group = state_.Doc.BodyGroups[Slot(*k + 1)];
    ChkReverseTag = QStringLiteral("1");
    ChkReverse->setChecked(false);
    ChkReverse->setEnabled(true);
    if (LstParts->item(row)->text() == QLatin1String(Blank)) {
        ChkReverse->setEnabled(false);
    } else if (row < limits::LastPart && group.Reverse[Slot(row + 1)] != 0) {
        ChkReverse->setChecked(true);
    }
    ChkReverseTag.clear();
}

void FrmMain::ChkReverse_Click() {
    if (!ChkReverseTag.isEmpty()) {
        return;
    }
    // Only a part that is selected takes the flag.
    const int row = LstParts->currentRow();
    const std::optional<int> k = SelectedBodyGroup();
    if (row < 0 || !k || !LstParts->item(row)->isSelected()) {
        return;
    }
    BodyGroupRec& group = state_.Doc.BodyGroups[Slot(*k + 1)];
    if (row >= group.PartCount || row >= limits::LastPart) {
        return;
    }
    group.Reverse[Slot(row + 1)] = ChkReverse->isChecked() ? i16{-1} : i16{0};
}

} // namespace quarle::ui
