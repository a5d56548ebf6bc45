// Page "Modeldateien" of TabSmd, and what both pages share: the two path
// fields, the list of the folder's files and the buttons that add, delete and
// blank entries.
//
// Every action writes straight into BodyGroups. A part's Reverse flag travels
// with the part when parts move, so that a part never shows or writes the
// flag of another; a new part starts without the flag.
#include "ui/mainwindow/ModelFilesPage.h"
#include "ui/common/Texts.h"

#include "document/Paths.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "ui/common/LimitMessages.h"
#include "ui/dialogs/DlgName.h"
#include "ui/dialogs/DlgRenameGroup.h"
#include "ui/localisation/Messages.h"
#include "ui/mainwindow/AnimationsPage.h"
#include "ui/mainwindow/DialogFolder.h"
#include "ui/mainwindow/MainWindowShell.h"
#include "ui/mainwindow/ModelFolderList.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QTabWidget>
#include <algorithm>
#include <vector>

namespace quarle::ui {
namespace {

constexpr int MeshesTab = 0;

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

ModelFilesPage::ModelFilesPage(AppState& state, platform::Services& services,
                               MainWindowControls& controls, ModelFolderList& folder,
                               AnimationsPage& animations, MainWindowShell& shell)
    : state_(state), services_(services), c_(controls), folder_(folder), animations_(animations),
      shell_(shell) {
    ConnectModelFilesPage();
}

void ModelFilesPage::ConnectModelFilesPage() {
    connect(c_.CmdBrowseTexture, &QPushButton::clicked, this,
            &ModelFilesPage::CmdBrowseTexture_Click);
    connect(c_.CmdBrowseModel, &QPushButton::clicked, this, &ModelFilesPage::CmdBrowseModel_Click);
    connect(c_.TxtModelpath, &QLineEdit::textChanged, this, &ModelFilesPage::TxtModelpath_Change);
    connect(c_.TxtModelpath, &QLineEdit::returnPressed, this,
            [this] { TxtModelpath_KeyPress(13); });
    connect(c_.TxtModelpath, &QLineEdit::editingFinished, this,
            [this] { TxtPath_Commit(c_.TxtModelpath); });
    connect(c_.TxtTexturepath, &QLineEdit::editingFinished, this,
            [this] { TxtPath_Commit(c_.TxtTexturepath); });
    // The file list is sorted as the user reads names, without regard to
    // case ("Shoot" between "run" and "walk"); the refill sorts it so.
    c_.LstFiles->setSortingEnabled(false);
    connect(c_.TabSmd, &QTabWidget::currentChanged, this, &ModelFilesPage::TabSmd_Click);
    connect(c_.LstFiles, &QListWidget::itemDoubleClicked, this, &ModelFilesPage::LstFiles_DblClick);
    connect(c_.CmdAdd, &QPushButton::clicked, this, &ModelFilesPage::CmdAdd_Click);
    connect(c_.CmdDelAnimation, &QPushButton::clicked, this,
            &ModelFilesPage::CmdDelAnimation_Click);
    connect(c_.CmdBlank, &QPushButton::clicked, this, &ModelFilesPage::CmdBlank_Click);
    connect(c_.CmbBodyGroup, &QComboBox::currentIndexChanged, this,
            &ModelFilesPage::CmbBodyGroup_Click);
    connect(c_.CmdNewGroup, &QPushButton::clicked, this, &ModelFilesPage::CmdNewGroup_Click);
    connect(c_.CmdDel, &QPushButton::clicked, this, &ModelFilesPage::CmdDel_Click);
    connect(c_.CmdRename, &QPushButton::clicked, this, &ModelFilesPage::CmdRename_Click);
    connect(c_.LstParts, &QListWidget::itemSelectionChanged, this, &ModelFilesPage::LstParts_Click);
    connect(c_.ChkReverse, &QCheckBox::clicked, this, &ModelFilesPage::ChkReverse_Click);
}

// ---------------------------------------------------------------------------
// The document on show

void ModelFilesPage::Update() {
    const Document& doc = state_.Doc;
    c_.TxtTexturepath->setText(Doc(doc.TexturePath));
    // A real change of the text runs TxtModelpath_Change before we go on.
    c_.TxtModelpath->setText(Doc(doc.ModelPath));

    {
        const QSignalBlocker blockParts(c_.LstParts);
        const QSignalBlocker blockGroups(c_.CmbBodyGroup);
        c_.LstParts->clear();
        c_.CmbBodyGroup->clear();
        const int count = std::min<int>(doc.BodyGroupCount, limits::LastBodyGroup);
        for (int g = 1; g <= count; ++g) {
            c_.CmbBodyGroup->addItem(Doc(doc.BodyGroups[static_cast<std::size_t>(g)].Name));
        }
        c_.CmbBodyGroup->setCurrentIndex(-1);
    }
    // Selecting the first group shows its parts. Without a group there is
    // nothing to select.
    if (c_.CmbBodyGroup->count() > 0) {
        c_.CmbBodyGroup->setCurrentIndex(0);
    }
}

// ---------------------------------------------------------------------------
// The two path fields

void ModelFilesPage::CmdBrowseTexture_Click() {
    if (const std::optional<QString> folder =
            PickFolder(services_, state_.Doc, Text(state_.IdsTexts[IDS_TEXTUREPATH]),
                       c_.TxtTexturepath->text())) {
        SetTextureFolder(*folder);
    }
}

void ModelFilesPage::CmdBrowseModel_Click() {
    if (const std::optional<QString> folder =
            PickFolder(services_, state_.Doc, Text(state_.IdsTexts[IDS_MODELFILEPATH]),
                       c_.TxtModelpath->text())) {
        SetModelFolder(*folder);
    }
}

bool ModelFilesPage::SetTextureFolder(const QString& folder) {
    const std::optional<std::string> path = TypedText(state_, services_, folder);
    if (!path) {
        return false;
    }
    state_.Doc.TexturePath = *path;
    c_.TxtTexturepath->setText(folder);
    ShowTextureFolderNote();
    return true;
}

bool ModelFilesPage::SetModelFolder(const QString& folder) {
    const std::optional<std::string> path = TypedText(state_, services_, folder);
    if (!path) {
        return false;
    }
    state_.Doc.ModelPath = *path;
    c_.TxtModelpath->setText(folder);
    // The same folder again leaves the text as it was; the frame and the
    // file list follow the choice all the same.
    if (!c_.TxtModelpath->text().isEmpty()) {
        SetModelFolderKnown(true);
        folder_.SetFileListPath(c_.TxtModelpath->text());
        RefillLstFiles();
    } else {
        SetModelFolderKnown(false);
    }
    return true;
}

void ModelFilesPage::TxtPath_Commit(QLineEdit* field) {
    if (!field->isModified()) {
        return;
    }
    const QString typed = field->text().trimmed();
    const QFileInfo info(typed);
    if (!typed.isEmpty() && info.isDir()) {
        QString folder = QDir::toNativeSeparators(QDir::cleanPath(info.absoluteFilePath()));
        if (folder.size() > 1 &&
            (folder.endsWith(QLatin1Char('/')) || folder.endsWith(QLatin1Char('\\')))) {
            folder.chop(1);
        }
        field->setModified(false);
        if (field == c_.TxtTexturepath ? SetTextureFolder(folder) : SetModelFolder(folder)) {
            return;
        }
    }
    // Not a folder (or one the script cannot name): the field shows the
    // folder in use again.
    QApplication::beep();
    field->setText(Doc(field == c_.TxtTexturepath ? state_.Doc.TexturePath : state_.Doc.ModelPath));
    field->setModified(false);
}

void ModelFilesPage::ShowTextureFolderNote() {
    // A folder without bitmaps can be chosen (they may come later); the
    // field says that it holds none yet.
    const std::string& folder = state_.Doc.TexturePath;
    const bool empty =
        !folder.empty() && paths::FolderExists(folder) && paths::ListFiles(folder, ".bmp").empty();
    if (TxtTexturepathNote == nullptr) {
        TxtTexturepathNote =
            new QAction(shell_.Window().style()->standardIcon(QStyle::SP_MessageBoxWarning),
                        QString(), c_.TxtTexturepath);
        c_.TxtTexturepath->addAction(TxtTexturepathNote, QLineEdit::TrailingPosition);
    }
    TxtTexturepathNote->setToolTip(
        MessageText(state_, MSG_TEXTURE_FOLDER_EMPTY, {c_.TxtTexturepath->text()}));
    TxtTexturepathNote->setVisible(empty);
}

void ModelFilesPage::TxtModelpath_Change() {
    // A folder being typed counts once it is committed (TxtPath_Commit).
    if (c_.TxtModelpath->isModified()) {
        return;
    }
    const QString folder = c_.TxtModelpath->text();
    if (folder.isEmpty()) {
        // The files of the old folder stay listed.
        SetModelFolderKnown(false);
        return;
    }
    SetModelFolderKnown(true);
    folder_.SetFileListPath(folder);
    RefillLstFiles();
}

void ModelFilesPage::TxtModelpath_KeyPress(int keyAscii) {
    // A folder being typed is taken by TxtPath_Commit right after.
    if (keyAscii == 13 && !c_.TxtModelpath->isModified() && !c_.TxtModelpath->text().isEmpty()) {
        folder_.SetFileListPath(c_.TxtModelpath->text());
    }
}

void ModelFilesPage::SetModelFolderKnown(bool known) {
    c_.FrmModelfiles->setEnabled(known);
    c_.MnuWizardsAnimWiz->setEnabled(known);
}

// ---------------------------------------------------------------------------
// The files of the model folder, on both pages

void ModelFilesPage::TabSmd_Click(int /*previousTab*/) {
    // Empty the list first and let it show empty, then read the folder anew:
    // files that appeared on the disk show up now.
    c_.LstFiles->clear();
    QApplication::processEvents();
    folder_.FileListRefresh();
    RefillLstFiles();
}

void ModelFilesPage::RefillLstFiles() {
    // Page 0 lists the meshes of the folder, page 1 the animations, each
    // without its extension. The kinds come from the cache, which reads only
    // the files that are new or changed since the last refill; a file that
    // cannot be read is listed on neither page.
    QStringList selected;
    for (const QListWidgetItem* item : c_.LstFiles->selectedItems()) {
        selected.append(item->text());
    }
    const int scrolledBefore = c_.LstFiles->verticalScrollBar()->value();
    c_.LstFiles->clear();
    const bool meshes = c_.TabSmd->currentIndex() == MeshesTab;
    const std::string& folder = state_.Doc.ModelPath;
    std::vector<std::string> seen;
    seen.reserve(static_cast<std::size_t>(c_.FileList->count()));
    QStringList names;
    for (int i = 0; i < c_.FileList->count(); ++i) {
        const QString file = c_.FileList->item(i)->text();
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
    c_.LstFiles->addItems(names);
    for (int i = 0; i < c_.LstFiles->count(); ++i) {
        if (selected.contains(c_.LstFiles->item(i)->text())) {
            c_.LstFiles->item(i)->setSelected(true);
        }
    }
    c_.LstFiles->verticalScrollBar()->setValue(scrolledBefore);
}

void ModelFilesPage::LstFiles_DblClick() {
    CmdAdd_Click();
}

void ModelFilesPage::CmdAdd_Click() {
    if (c_.TabSmd->currentIndex() == MeshesTab) {
        AddPartsFromFiles();
    } else {
        animations_.AddAnimationsFromFiles();
    }
}

void ModelFilesPage::CmdDelAnimation_Click() {
    if (c_.TabSmd->currentIndex() == MeshesTab) {
        DeleteSelectedParts();
    } else {
        animations_.DeleteSelectedAnimations();
    }
}

void ModelFilesPage::CmdBlank_Click() {
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
    c_.LstParts->addItem(QString::fromLatin1(Blank));
}

// ---------------------------------------------------------------------------
// Body groups and their parts

std::optional<int> ModelFilesPage::SelectedBodyGroup() const {
    const int k = c_.CmbBodyGroup->currentIndex();
    if (k < 0 || k >= limits::LastBodyGroup) {
        return std::nullopt;
    }
    return k;
}

void ModelFilesPage::AddPartsFromFiles() {
    const std::optional<int> k = SelectedBodyGroup();
    if (!k) {
        return;
    }
    BodyGroupRec& group = state_.Doc.BodyGroups[Slot(*k + 1)];
    // The selection in LstFiles stays.
    for (const int row : SelectedRows(c_.LstFiles)) {
        if (group.PartCount >= limits::LastPart) {
            RefuseAtLimit(state_, services_, MSG_PARTS_FULL, limits::LastPart);
            return;
        }
        const QString text = c_.LstFiles->item(row)->text();
        const std::optional<std::string> part = TypedText(state_, services_, text);
        if (!part) {
            continue;
        }
        ++group.PartCount;
        group.Parts[group.PartCount] = *part;
        group.Reverse[group.PartCount] = 0;
        c_.LstParts->addItem(text);
    }
}

void ModelFilesPage::DeleteSelectedParts() {
    const std::optional<int> k = SelectedBodyGroup();
    if (!k) {
        return;
    }
    BodyGroupRec& group = state_.Doc.BodyGroups[Slot(*k + 1)];
    const std::vector<int> rows = SelectedRows(c_.LstParts);
    {
        // ChkReverse keeps what it shows; no part is selected afterwards, so
        // a click on it changes nothing.
        const QSignalBlocker block(c_.LstParts);
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
            delete c_.LstParts->takeItem(*row);
        }
        c_.LstParts->clearSelection();
        c_.LstParts->setCurrentRow(-1);
    }
}

void ModelFilesPage::CmbBodyGroup_Click() {
    c_.LstParts->clear();
    if (const std::optional<int> k = SelectedBodyGroup()) {
        const BodyGroupRec& group = state_.Doc.BodyGroups[Slot(*k + 1)];
        const int count = std::min<int>(group.PartCount, limits::LastPart);
        for (int p = 1; p <= count; ++p) {
            c_.LstParts->addItem(platform::FromCp1252(group.Parts[Slot(p)]));
        }
    }
    c_.CmdDel->setEnabled(true);
    c_.CmdRename->setEnabled(true);
}

DlgName* ModelFilesPage::OpenDlgName() const {
    return dlgName_;
}

void ModelFilesPage::CmdNewGroup_Click() {
    // One dialog at a time; a second click brings the open one forward.
    if (dlgName_ == nullptr) {
        dlgName_ = new DlgName(state_, services_, c_.CmbBodyGroup, &shell_.Window());
        connect(dlgName_, &DlgName::LocaliseRequested, this,
                [this](QWidget* form) { shell_.Localise(form); });
    }
    dlgName_->show();
    dlgName_->raise();
    dlgName_->activateWindow();
}

void ModelFilesPage::CmdDel_Click() {
    const std::optional<int> k = SelectedBodyGroup();
    if (!k) {
        return;
    }
    Document& doc = state_.Doc;
    // The groups behind the deleted one move up a slot, whole: name, parts
    // and flags. The slot that falls free ends empty.
    const int last = std::min(c_.CmbBodyGroup->count(), limits::LastBodyGroup);
    for (int s = *k + 1; s < last; ++s) {
        doc.BodyGroups[Slot(s)] = std::move(doc.BodyGroups[Slot(s + 1)]);
    }
    doc.BodyGroups[Slot(last)] = BodyGroupRec{};
    if (doc.BodyGroupCount > 0) {
        --doc.BodyGroupCount;
    }
    {
        const QSignalBlocker block(c_.CmbBodyGroup);
        c_.CmbBodyGroup->removeItem(*k);
        c_.CmbBodyGroup->setCurrentIndex(-1);
    }
    // No group is selected now: the parts list empties.
    CmbBodyGroup_Click();
}

void ModelFilesPage::CmdRename_Click() {
    if (!SelectedBodyGroup()) {
        return; // nothing to show and nothing to change
    }
    DlgRenameGroup dialog(state_, services_, c_.CmbBodyGroup, &shell_.Window());
    connect(&dialog, &DlgRenameGroup::LocaliseRequested, this,
            [this](QWidget* form) { shell_.Localise(form); });
    dialog.exec();
}

void ModelFilesPage::LstParts_Click() {
    const int row = c_.LstParts->currentRow();
    const std::optional<int> k = SelectedBodyGroup();
    if (row < 0 || !k) {
        return;
    }
    const BodyGroupRec& group = state_.Doc.BodyGroups[Slot(*k + 1)];
    ChkReverseTag = QStringLiteral("1");
    c_.ChkReverse->setChecked(false);
    c_.ChkReverse->setEnabled(true);
    if (c_.LstParts->item(row)->text() == QLatin1String(Blank)) {
        c_.ChkReverse->setEnabled(false);
    } else if (row < limits::LastPart && group.Reverse[Slot(row + 1)] != 0) {
        c_.ChkReverse->setChecked(true);
    }
    ChkReverseTag.clear();
}

void ModelFilesPage::ChkReverse_Click() {
    if (!ChkReverseTag.isEmpty()) {
        return;
    }
    // Only a part that is selected takes the flag.
    const int row = c_.LstParts->currentRow();
    const std::optional<int> k = SelectedBodyGroup();
    if (row < 0 || !k || !c_.LstParts->item(row)->isSelected()) {
        return;
    }
    BodyGroupRec& group = state_.Doc.BodyGroups[Slot(*k + 1)];
    if (row >= group.PartCount || row >= limits::LastPart) {
        return;
    }
    group.Reverse[Slot(row + 1)] = c_.ChkReverse->isChecked() ? i16{-1} : i16{0};
}

// ---------------------------------------------------------------------------
// What the preview, the dialogs and the wizards reach of the page

std::vector<int> ModelFilesPage::PreviewParts() const {
    std::vector<int> parts(state_.Doc.BodyGroupCount, 0);
    const std::optional<int> k = SelectedBodyGroup();
    const int row = c_.LstParts->currentRow();
    if (k && std::size_t(*k) < parts.size() && row >= 0 && c_.LstParts->item(row)->isSelected()) {
        parts[std::size_t(*k)] = row;
    }
    return parts;
}

QStringList ModelFilesPage::ModelFileNames() const {
    QStringList names;
    for (int i = 0; i < c_.LstFiles->count(); ++i) {
        names.append(c_.LstFiles->item(i)->text());
    }
    return names;
}

void ModelFilesPage::AppendPartRow(const QString& name) {
    c_.LstParts->addItem(name);
}

void ModelFilesPage::ShowPaths(const QString& texturePath, const QString& modelPath) {
    c_.TxtTexturepath->setText(texturePath);
    // The change of the box opens the model files and the animation wizard
    // and lists the folder's files.
    c_.TxtModelpath->setText(modelPath);
    folder_.SetFileListPath(modelPath);
}

} // namespace quarle::ui
