// Start and stop of the program, the refresh of the window from the
// document, the folder question of the script reader, the new document, the
// recent files and the two path fields.
#include "ui/mainwindow/FrmMain.h"

#include "document/InputFile.h"
#include "document/Paths.h"
#include "document/QcReader.h"
#include "document/SafeWrite.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "platform/Twips.h"
#include "ui/localisation/ApplyLanguage.h"
#include "ui/localisation/Messages.h"
#include "ui/mainwindow/ShellSettings.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <algorithm>

namespace quarle::ui {
namespace {

// A text of the language file.
QString Text(const std::string& s) {
    return QString::fromStdString(s);
}

// A text of the document.
QString Doc(const std::string& s) {
    return platform::FromCp1252(s);
}

} // namespace

// ---------------------------------------------------------------------------
// Start and stop

void FrmMain::Form_Load() {
    TmrAnim->start();

    // The mascot's frame chain: still frames, and two loops 6-7 and 8-9.
    std::fill(WizFrameSteps.begin(), WizFrameSteps.begin() + 256, i16{1});
    WizFrameSteps[6] = 2;
    WizFrameSteps[7] = -6;
    WizFrameSteps[8] = 2;
    WizFrameSteps[9] = -8;
    DisableWizard();
    SetWizardAnim(0);

    ToolSettings& tools = state_.Settings;
    const platform::HostEnvironment env = services_.Environment();
    ReadToolSettings(settings_, services_.ProgramFolder(), env, tools);
    const bool toolNotice = ToolNoticeDue(settings_, env, tools);
    // Missing programs only leave their commands disabled; they start so.
    if (CompilerOffered(Doc(tools.StudioMdlPath), env)) {
        CmdCompile->setEnabled(true);
    }
    if (ViewsInPreview(tools) || platform::ProgramExists(Doc(tools.ModelViewerPath))) {
        MnuDateiView->setEnabled(true);
    }
    ReadRecentFiles(settings_, tools);
    ShowRecentFiles();

    platform::SetWidthTwips(this, 7650);
    platform::SetWidthTwips(FrmModelfiles, 7215);
    platform::SetHeightTwips(this, 6420);
    platform::SetHeightTwips(FrmModelfiles, 4575);

    NewDocument();

    FillIdsNames(state_.IdsNames);
    ApplyLanguage(state_, services_, this);
    if (state_.LocalisationMode) {
        CmdLocalise->setVisible(true);
    }
    MarkSaved();

    RemoveLeftovers();

    // Settings that cannot be kept are said at once, not lost at the end.
    if (const std::error_code error = settings_.WriteError()) {
        services_.MsgBox(MessageText(state_, MSG_SETTINGS_UNWRITABLE,
                                     {QDir::toNativeSeparators(settings_.FileName()),
                                      Text(SystemReasonText(error, state_.MsgTexts))}),
                         platform::Buttons::Ok, platform::Icon::Exclamation, QString());
    }

    // A first start that found no compiler says so once, in the language
    // just applied, and offers the way to the paths.
    if (toolNotice) {
        WriteSetting(settings_, setting::ToolNotice, QStringLiteral("1"));
        settings_.Sync();
        const platform::Answer answer =
            services_.MsgBox(MessageText(state_, MSG_TOOLS_FIRST_START, {Doc(tools.StudioMdlPath)}),
                             platform::Buttons::YesNo, platform::Icon::Information, QString());
        if (answer == platform::Answer::Yes) {
            MnuEinstAllg_Click();
        }
    }
}

void FrmMain::RemoveLeftovers() {
    // A run that was killed may have left a save's temporary file beside a
    // script it worked on, and the working file of a load.
    for (const std::string& file : state_.Settings.RecentFiles) {
        if (file != EmptyRecentFile && !file.empty()) {
            RemoveWriteLeftovers(paths::ToFsPath(file));
        }
    }
    if (WorkFolder.isEmpty()) {
        QFile::remove(QDir(LoadWorkFolder()).filePath(QLatin1String(WorkFileName)));
    }
}

void FrmMain::Form_Unload() {
    if (stopped_) {
        return;
    }
    stopped_ = true;
    TmrAnim->stop();
    TmrPlayAnim->stop();
    WriteSettingsNow();
    // Files are opened and closed within each operation: none is open here.
    if (EndProcess) {
        EndProcess();
    }
}

void FrmMain::closeEvent(QCloseEvent* event) {
    // Unsaved changes are saved or let go first; Cancel keeps the program.
    if (!stopped_ && !SaveChangesFirst()) {
        event->ignore();
        return;
    }
    Form_Unload();
    event->accept();
}

void FrmMain::WriteSettingsNow() {
    WriteSettings(settings_, state_.Settings);
}

void FrmMain::MnuDateiBeenden_Click() {
    close();
}

// ---------------------------------------------------------------------------
// Document

void FrmMain::MnuDateiNeu_Click() {
    if (SaveChangesFirst()) {
        NewDocument();
    }
}

void FrmMain::NewDocument() {
    LstAnimations->clear();
    InitVars();
    MarkSaved();
}

void FrmMain::InitVars() {
    quarle::InitVars(state_.Doc);
    LstParts->clear();
    Update();
}

void FrmMain::Update() {
    const Document& doc = state_.Doc;
    TxtTexturepath->setText(Doc(doc.TexturePath));
    // A real change of the text runs TxtModelpath_Change before we go on.
    TxtModelpath->setText(Doc(doc.ModelPath));

    {
        const QSignalBlocker blockParts(LstParts);
        const QSignalBlocker blockGroups(CmbBodyGroup);
        LstParts->clear();
        CmbBodyGroup->clear();
        const int count = std::min<int>(doc.BodyGroupCount, limits::LastBodyGroup);
        for (int g = 1; g <= count; ++g) {
            CmbBodyGroup->addItem(Doc(doc.BodyGroups[static_cast<std::size_t>(g)].Name));
        }
        CmbBodyGroup->setCurrentIndex(-1);
    }
    // Selecting the first group shows its parts. Without a group there is
    // nothing to select.
    if (CmbBodyGroup->count() > 0) {
        CmbBodyGroup->setCurrentIndex(0);
    }
}

std::string FrmMain::NewDir(const std::string& oldDir, const std::string& extra) {
    const auto& ids = state_.IdsTexts;
    const QString message = Text(extra) + QStringLiteral(": ") +
                            Text(ids[IDS_MSGBOX_CANTFINDPATH_PART1]) + QStringLiteral(" \"") +
                            Doc(oldDir) + QStringLiteral("\" ") +
                            Text(ids[IDS_MSGBOX_CANTFINDPATH_PART2]);
    const platform::Answer answer =
        services_.MsgBox(message, platform::Buttons::OkCancel, platform::Icon::Question,
                         Text(ids[IDS_MSGBOX_CANTFINDPATH_TITEL]));
    if (answer != platform::Answer::Ok) {
        return "0";
    }
    const std::optional<QString> folder = PickFolder(Text(ids[IDS_OPEN]), QString());
    if (!folder) {
        return "0";
    }
    // A folder the script's text cannot name is refused like a cancel.
    return TypedText(state_, services_, *folder).value_or("0");
}

// ---------------------------------------------------------------------------
// Recent files

void FrmMain::PushRecentFile() {
    auto& recent = state_.Settings.RecentFiles;
    const std::string& file = state_.Doc.QcFile;
    if (std::find(recent.begin(), recent.end(), file) != recent.end()) {
        return;
    }
    std::move_backward(recent.begin(), recent.end() - 1, recent.end());
    recent[0] = file;
    ShowRecentFiles();
}

void FrmMain::ShowRecentFiles() {
    const auto entries = MnuDateiLast();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i]->setText(Doc(state_.Settings.RecentFiles[i]));
    }
}

// ---------------------------------------------------------------------------
// Paths

std::optional<QString> FrmMain::PickFolder(const QString& title, const QString& current) {
    // The chooser opens at the folder in use, else near the script.
    const QString start =
        !current.isEmpty() && QFileInfo(current).isDir() ? current : DialogFolder();
    const std::optional<QString> folder = services_.ShowFolder(title, start);
    if (!folder || folder->isEmpty()) {
        return std::nullopt;
    }
    return folder;
}

void FrmMain::CmdBrowseTexture_Click() {
    if (const std::optional<QString> folder =
            PickFolder(Text(state_.IdsTexts[IDS_TEXTUREPATH]), TxtTexturepath->text())) {
        SetTextureFolder(*folder);
    }
}

void FrmMain::CmdBrowseModel_Click() {
    if (const std::optional<QString> folder =
            PickFolder(Text(state_.IdsTexts[IDS_MODELFILEPATH]), TxtModelpath->text())) {
        SetModelFolder(*folder);
    }
}

bool FrmMain::SetTextureFolder(const QString& folder) {
    const std::optional<std::string> path = TypedText(state_, services_, folder);
    if (!path) {
        return false;
    }
    state_.Doc.TexturePath = *path;
    TxtTexturepath->setText(folder);
    ShowTextureFolderNote();
    return true;
}

bool FrmMain::SetModelFolder(const QString& folder) {
    const std::optional<std::string> path = TypedText(state_, services_, folder);
    if (!path) {
        return false;
    }
    state_.Doc.ModelPath = *path;
    TxtModelpath->setText(folder);
    // The same folder again leaves the text as it was; the frame and the
    // file list follow the choice all the same.
    if (!TxtModelpath->text().isEmpty()) {
        SetModelFolderKnown(true);
        SetFileListPath(TxtModelpath->text());
        RefillLstFiles();
    } else {
        SetModelFolderKnown(false);
    }
    return true;
}

void FrmMain::TxtPath_Commit(QLineEdit* field) {
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
        if (field == TxtTexturepath ? SetTextureFolder(folder) : SetModelFolder(folder)) {
            return;
        }
    }
    // Not a folder (or one the script cannot name): the field shows the
    // folder in use again.
    QApplication::beep();
    field->setText(Doc(field == TxtTexturepath ? state_.Doc.TexturePath : state_.Doc.ModelPath));
    field->setModified(false);
}

void FrmMain::ShowTextureFolderNote() {
    // A folder without bitmaps can be chosen (they may come later); the
    // field says that it holds none yet.
    const std::string& folder = state_.Doc.TexturePath;
    const bool empty =
        !folder.empty() && paths::FolderExists(folder) && paths::ListFiles(folder, ".bmp").empty();
    if (TxtTexturepathNote == nullptr) {
        TxtTexturepathNote = new QAction(style()->standardIcon(QStyle::SP_MessageBoxWarning),
                                         QString(), TxtTexturepath);
        TxtTexturepath->addAction(TxtTexturepathNote, QLineEdit::TrailingPosition);
    }
    TxtTexturepathNote->setToolTip(
        MessageText(state_, MSG_TEXTURE_FOLDER_EMPTY, {TxtTexturepath->text()}));
    TxtTexturepathNote->setVisible(empty);
}

void FrmMain::TxtModelpath_Change() {
    // A folder being typed counts once it is committed (TxtPath_Commit).
    if (TxtModelpath->isModified()) {
        return;
    }
    const QString folder = TxtModelpath->text();
    if (folder.isEmpty()) {
        // The files of the old folder stay listed.
        SetModelFolderKnown(false);
        return;
    }
    SetModelFolderKnown(true);
    SetFileListPath(folder);
    RefillLstFiles();
}

void FrmMain::TxtModelpath_KeyPress(int keyAscii) {
    // A folder being typed is taken by TxtPath_Commit right after.
    if (keyAscii == 13 && !TxtModelpath->isModified() && !TxtModelpath->text().isEmpty()) {
        SetFileListPath(TxtModelpath->text());
    }
}

void FrmMain::SetModelFolderKnown(bool known) {
    FrmModelfiles->setEnabled(known);
    MnuWizardsAnimWiz->setEnabled(known);
}

// ---------------------------------------------------------------------------
// The hidden file list

bool FrmMain::SetFileListPath(const QString& folder) {
    if (folder.isEmpty() || !QDir(folder).exists()) {
        return false;
    }
    fileListPath_ = folder;
    FileListRefresh();
    return true;
}

void FrmMain::FileListRefresh() {
    FileList->clear();
    if (fileListPath_.isEmpty()) {
        return;
    }
    // Scripts and models come from Windows, where "*.smd" matches any case.
    // Files in subfolders are listed by their names below the folder
    // ("meshes/body.smd"), as scripts name them.
    for (const std::string& name :
         paths::ListFilesBelow(platform::ToCp1252Marked(fileListPath_), ".smd")) {
        FileList->addItem(Doc(name));
    }
}

// ---------------------------------------------------------------------------
// Wiring of the controls handled here

void FrmMain::ConnectShell() {
    connect(CmdBrowseTexture, &QPushButton::clicked, this, &FrmMain::CmdBrowseTexture_Click);
    connect(CmdBrowseModel, &QPushButton::clicked, this, &FrmMain::CmdBrowseModel_Click);
    connect(TxtModelpath, &QLineEdit::textChanged, this, &FrmMain::TxtModelpath_Change);
    connect(TxtModelpath, &QLineEdit::returnPressed, this, [this] { TxtModelpath_KeyPress(13); });
    connect(TxtModelpath, &QLineEdit::editingFinished, this,
            [this] { TxtPath_Commit(TxtModelpath); });
    connect(TxtTexturepath, &QLineEdit::editingFinished, this,
            [this] { TxtPath_Commit(TxtTexturepath); });
    connect(MnuDateiNeu, &QAction::triggered, this, &FrmMain::MnuDateiNeu_Click);
    connect(MnuDateiBeenden, &QAction::triggered, this, &FrmMain::MnuDateiBeenden_Click);
    connect(CmdModeleinst, &QPushButton::clicked, this, &FrmMain::CmdModeleinst_Click);
    connect(MnuEinstModel, &QAction::triggered, this, &FrmMain::MnuEinstModel_Click);
    connect(MnuEinstAllg, &QAction::triggered, this, &FrmMain::MnuEinstAllg_Click);
    connect(MnuWizardsGrWiz, &QAction::triggered, this, &FrmMain::MnuWizardsGrWiz_Click);
    connect(MnuWizardsAnimWiz, &QAction::triggered, this, &FrmMain::MnuWizardsAnimWiz_Click);
    connect(MnuHilfeUeber, &QAction::triggered, this, &FrmMain::MnuHilfeUeber_Click);
    connect(CmdLocalise, &QPushButton::clicked, this, &FrmMain::CmdLocalise_Click);
}

} // namespace quarle::ui
