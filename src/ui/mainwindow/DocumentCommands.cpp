// The commands of the file menu and the compile button: new, open, save, save
// under a new name, compile, the viewer and the editor, and the four recent
// entries; whether the document differs from what was last loaded or saved,
// the question before such changes would be lost, the title bar that names
// the script, and scripts dropped on the window or named on the command line.
// The end of the program is the shell's (FrmMain.cpp).
//
// The commands are thin: they decide the file name and hand over to the
// script reader, the script writer or the compile dialog. A command that
// replaces the document asks first about unsaved changes.
//
// The forms write into the document directly and tell nobody, so a change is
// found by comparison: the document is rendered as the writer would save it
// and compared with the rendering of the last load, save or new document.
// Only what a save would write counts; a selection or a page shown does not.
// The rendering takes a few milliseconds even on the largest scripts, and it
// runs only when asked (the questions) and shortly after the user's input
// (the title bar), never on a timer of its own.
#include "ui/mainwindow/DocumentCommands.h"
#include "ui/common/Texts.h"

#include "document/InputFile.h"
#include "document/Paths.h"
#include "document/QcReader.h"
#include "document/QcWriter.h"
#include "document/SafeWrite.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "ui/compile/DlgCompile.h"
#include "ui/localisation/Messages.h"
#include "ui/mainwindow/DialogFolder.h"
#include "ui/mainwindow/MainWindowShell.h"
#include "ui/mainwindow/ModelFilesPage.h"
#include "ui/mainwindow/ShellSettings.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QStandardPaths>
#include <QStringList>
#include <QTemporaryFile>
#include <algorithm>
#include <memory>
#include <sstream>

namespace quarle::ui {
namespace {

std::string Rendered(const Document& doc) {
    std::ostringstream out;
    WriteQcScript(doc, out, '.');
    return std::move(out).str();
}

QStringList ListRows(const QListWidget* list) {
    QStringList rows;
    for (int i = 0; i < list->count(); ++i) {
        rows.append(list->item(i)->text());
    }
    return rows;
}

// The two script dialogs share their filter: "QC-" and the word for file.
QString ScriptFilter(const QString& fileWord) {
    return QStringLiteral("QC-") + fileWord + QStringLiteral("|*.qc");
}

// The separator of the locale form of numbers in the script. The script is
// single-byte text, so a separator outside ASCII falls back to the point.
char UserDecimalSeparator() {
    const QString point = QLocale::system().decimalPoint();
    if (point.size() == 1 && point.front().unicode() > 0x20 && point.front().unicode() < 0x7f) {
        return static_cast<char>(point.front().unicode());
    }
    return '.';
}

Msg SaveFailureMessage(WriteFailure reason) {
    switch (reason) {
    case WriteFailure::NoName:
        return MSG_SAVE_NO_NAME;
    case WriteFailure::BrokenLink:
        return MSG_SAVE_BROKEN_LINK;
    case WriteFailure::NoFolder:
        return MSG_SAVE_NO_FOLDER;
    case WriteFailure::NotAFile:
        return MSG_SAVE_NOT_A_FILE;
    case WriteFailure::WriteProtected:
        return MSG_SAVE_WRITE_PROTECTED;
    case WriteFailure::NoTemporary:
        return MSG_SAVE_NO_TEMPORARY;
    case WriteFailure::FolderUnwritable:
        return MSG_SAVE_FOLDER_UNWRITABLE;
    case WriteFailure::Incomplete:
        return MSG_SAVE_INCOMPLETE;
    case WriteFailure::None:
    case WriteFailure::NotReplaced:
        break;
    }
    return MSG_SAVE_NOT_REPLACED;
}

} // namespace

DocumentCommands::DocumentCommands(AppState& state, platform::Services& services,
                                   MainWindowControls& controls, const QString& workFolder,
                                   ModelFolderList& folder, ModelFilesPage& modelFiles,
                                   AnimationsPage& animations, MainWindowShell& shell)
    : state_(state), services_(services), c_(controls), workFolder_(workFolder),
      modelFiles_(modelFiles), shell_(shell), loadReport_(state, services),
      readerHost_(state, services, controls, folder, modelFiles, animations, *this) {
    ConnectFileCommands();
}

DocumentCommands::~DocumentCommands() = default;

void DocumentCommands::ConnectFileCommands() {
    connect(c_.MnuDateiNeu, &QAction::triggered, this, &DocumentCommands::MnuDateiNeu_Click);
    connect(c_.MnuDateiOeffnen, &QAction::triggered, this,
            &DocumentCommands::MnuDateiOeffnen_Click);
    connect(c_.MnuDateiSpeichern, &QAction::triggered, this,
            &DocumentCommands::MnuDateiSpeichern_Click);
    connect(c_.MnuDateiSpeichernunter, &QAction::triggered, this,
            &DocumentCommands::MnuDateiSpeichernunter_Click);
    connect(c_.MnuDateiComp, &QAction::triggered, this, &DocumentCommands::MnuDateiComp_Click);
    connect(c_.CmdCompile, &QPushButton::clicked, this, &DocumentCommands::CmdCompile_Click);
    connect(c_.MnuDateiView, &QAction::triggered, this, &DocumentCommands::MnuDateiView_Click);
    connect(c_.MnuDateiViewCode, &QAction::triggered, this,
            &DocumentCommands::MnuDateiViewCode_Click);
    connect(c_.MnuDateiLast1, &QAction::triggered, this, &DocumentCommands::MnuDateiLast1_Click);
    connect(c_.MnuDateiLast2, &QAction::triggered, this, &DocumentCommands::MnuDateiLast2_Click);
    connect(c_.MnuDateiLast3, &QAction::triggered, this, &DocumentCommands::MnuDateiLast3_Click);
    connect(c_.MnuDateiLast4, &QAction::triggered, this, &DocumentCommands::MnuDateiLast4_Click);
}

QString DocumentCommands::IdsText(int key) const {
    return Text(state_.IdsTexts[static_cast<std::size_t>(key)]);
}

QString DocumentCommands::WorkingFolder() const {
    if (!workFolder_.isEmpty()) {
        return workFolder_;
    }
    // Started from a folder that cannot be written (a read-only medium, a
    // system folder): the working files go to a folder of the user's own.
    // A file is made there to find out: permission bits do not tell for
    // every user and file system.
    const QString current = QDir::currentPath();
    if (QTemporaryFile(QDir(current).filePath(QStringLiteral("quarle-XXXXXX"))).open()) {
        return current;
    }
    const QString own = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    if (own.isEmpty() || !QDir().mkpath(own)) {
        // Nothing better: the failure that follows names the folder.
        return current;
    }
    return own;
}

void DocumentCommands::RemoveLeftovers() {
    // A run that was killed may have left a save's temporary file beside a
    // script it worked on, and the working file of a load.
    for (const std::string& file : state_.Settings.RecentFiles) {
        if (file != EmptyRecentFile && !file.empty()) {
            RemoveWriteLeftovers(paths::ToFsPath(file));
        }
    }
    if (workFolder_.isEmpty()) {
        QFile::remove(QDir(LoadWorkFolder()).filePath(QLatin1String(WorkFileName)));
    }
}

// ---------------------------------------------------------------------------
// Open

void DocumentCommands::MnuDateiOeffnen_Click() {
    if (!SaveChangesFirst()) {
        return;
    }
    const std::optional<platform::FilePick> pick =
        services_.ShowOpen(IdsText(IDS_OPEN) + QStringLiteral("..."),
                           ScriptFilter(IdsText(IDS_FILE)), DialogFolder(state_.Doc));
    // A cancelled dialog, or one that reports no file, chose nothing.
    if (!pick || pick->FileName.isEmpty()) {
        return;
    }
    if (const std::optional<std::string> path = TypedText(state_, services_, pick->FileName)) {
        OpenQcFile(*path);
    }
}

QString DocumentCommands::LoadWorkFolder() const {
    if (!workFolder_.isEmpty()) {
        return workFolder_;
    }
    // The working file of a load lives only while the load runs: the user's
    // cache folder, not the folder the program was started in.
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    return !cache.isEmpty() && QDir().mkpath(cache) ? cache : WorkingFolder();
}

void DocumentCommands::OpenQcFile(const std::string& path) {
    // A load the user cancels leaves the document as it was.
    const auto before = std::make_unique<Document>(state_.Doc);
    const QStringList rowsBefore = ListRows(c_.LstAnimations);
    const int rowBefore = c_.LstAnimations->currentRow();
    const int groupBefore = c_.CmbBodyGroup->currentIndex();

    c_.LstAnimations->clear();
    InitVars();
    state_.Doc.QcFile = path;
    // A refused question or an unreadable script ends in a new document;
    // the host has said what went wrong.
    LoadFindings findings;
    bool noDirective = false;
    const QString work = LoadWorkFolder();
    readerHost_.BeginLoad(path);
    const ReadOutcome outcome = quarle::ReadQcFile(
        state_.Doc, readerHost_, platform::ToCp1252Marked(work), &findings, &noDirective);
    readerHost_.EndLoad();
    QFile::remove(QDir(work).filePath(QLatin1String(WorkFileName)));
    if (outcome == ReadOutcome::Cancelled) {
        state_.Doc = *before;
        c_.LstAnimations->clear();
        c_.LstAnimations->addItems(rowsBefore);
        modelFiles_.Update();
        c_.CmbBodyGroup->setCurrentIndex(groupBefore);
        c_.LstAnimations->setCurrentRow(rowBefore);
        return;
    }
    // The includes a save wrote into the script are told anew for the new one.
    loadReport_.ForgetIncludesReported();
    MarkSaved();
    // A file that is no script at all: its lines are not worth listing one
    // by one.
    if (noDirective) {
        loadReport_.ReportNoDirective();
    } else {
        loadReport_.ReportLoadFindings(findings);
    }
}

// ---------------------------------------------------------------------------
// Save

void DocumentCommands::MnuDateiSpeichern_Click() {
    SaveQcFile();
}

void DocumentCommands::MnuDateiSpeichernunter_Click() {
    SaveQcFileAs();
}

bool DocumentCommands::SaveQcFile() {
    if (state_.Doc.QcFile.empty()) {
        return SaveQcFileAs();
    }
    // Over the old file, without a question.
    return WriteQcFile();
}

bool DocumentCommands::SaveQcFileAs() {
    const std::optional<platform::FilePick> pick =
        services_.ShowSave(IdsText(IDS_SAVEAS) + QStringLiteral("..."),
                           ScriptFilter(IdsText(IDS_FILE)), DialogFolder(state_.Doc));
    if (!pick || pick->FileName.isEmpty()) {
        return false;
    }
    const std::optional<std::string> typed = TypedText(state_, services_, pick->FileName);
    if (!typed) {
        return false;
    }
    // The script names its model in double quotes and has no way to write
    // one inside them.
    if (typed->find('"') != std::string::npos) {
        services_.MsgBox(MessageText(state_, MSG_SAVE_NAME_QUOTE, {pick->FileName}),
                         platform::Buttons::Ok, platform::Icon::Exclamation, IdsText(IDS_ERROR));
        return false;
    }
    std::string path = *typed;
    // Only ".qc" in lower case counts: "robot.QC" becomes "robot.QC.qc".
    if (!path.ends_with(".qc")) {
        path += ".qc";
    }
    Document& doc = state_.Doc;
    const std::string oldQcFile = doc.QcFile;
    const std::string oldModelName = doc.ModelName;
    doc.QcFile = path;
    // The model lies beside the script under the same name; this replaces
    // a name the script's $modelname gave.
    doc.ModelName = path.substr(0, path.size() - 3) + ".mdl";
    if (!WriteQcFile()) {
        // The document stays with the file it had.
        doc.QcFile = oldQcFile;
        doc.ModelName = oldModelName;
        return false;
    }
    return true;
}

bool DocumentCommands::WriteQcFile() {
    if (!loadReport_.KeepOriginalBeforeSave()) {
        return false;
    }
    auto& recent = state_.Settings.RecentFiles;
    const auto recentBefore = recent;
    PushRecentFile();
    const WriteResult result =
        quarle::WriteQcFile(state_.Doc, state_.Doc.QcFile, UserDecimalSeparator());
    if (result.Ok) {
        MarkSaved();
        loadReport_.ReportIncludesWrittenIn(result.IncludesWrittenIn);
        return true;
    }
    // Nothing was written: the list does not take a file that is not there.
    if (recent != recentBefore) {
        recent = recentBefore;
        ShowRecentFiles();
    }
    // The reason names the file or the folder that failed; the script's
    // path is added when it does not.
    const QString file = Doc(state_.Doc.QcFile);
    const QString where = Doc(result.Where);
    QString reason = MessageText(state_, SaveFailureMessage(result.Reason), {where});
    if (!result.SystemReason.empty()) {
        reason +=
            QLatin1Char('\n') +
            MessageText(state_, MSG_SAVE_SYSTEM_REASON,
                        {QString::fromStdString(SystemReasonText(result.System, state_.MsgTexts))});
    }
    QStringList paragraphs{MessageText(state_, MSG_SAVE_FAILED), reason};
    if (!reason.contains(file)) {
        paragraphs << MessageText(state_, MSG_SAVE_SCRIPT, {file});
    }
    if (result.OldFileExisted) {
        paragraphs << MessageText(state_, MSG_SAVE_OLD_FILE_KEPT);
    }
    services_.MsgBox(paragraphs.join(QStringLiteral("\n\n")), platform::Buttons::Ok,
                     platform::Icon::Critical, IdsText(IDS_ERROR));
    return false;
}

// ---------------------------------------------------------------------------
// Compile

void DocumentCommands::MnuDateiComp_Click() {
    // The compile always works on a script written just before. A cancelled
    // save dialog or a failed write ends the command.
    if (!SaveQcFile() || state_.Doc.QcFile.empty()) {
        return;
    }
    CompileOptions options;
    options.WorkingFolder = WorkingFolder();
    DlgCompile dialog(state_, services_, c_.LstAnimations->count(), &shell_.Window(), options);
    connect(&dialog, &DlgCompile::LocaliseRequested, this,
            [this](QWidget* form) { shell_.Localise(form); });
    connect(&dialog, &DlgCompile::PreviewRequested, this,
            [this](const std::string& path) { shell_.ShowCompiledModel(path); });
    dialog.exec();
}

void DocumentCommands::CmdCompile_Click() {
    MnuDateiComp_Click();
}

// ---------------------------------------------------------------------------
// The viewer and the editor

void DocumentCommands::StartWithFile(const std::string& program, const std::string& file,
                                     Msg missing, Msg notStarted) {
    const QString programText = Doc(program);
    // A file found only in another case is handed over as it is on disk.
    const QString fileText = Doc(paths::Resolve(file).value_or(file));
    if (!platform::ProgramExists(programText)) {
        services_.MsgBox(MessageText(state_, missing) + QLatin1Char('\n') + programText +
                             QStringLiteral("\n\n") + MessageText(state_, MSG_CHOOSE_PROGRAM),
                         platform::Buttons::Ok, platform::Icon::Critical, IdsText(IDS_ERROR));
        return;
    }
    // The file's path is one argument, blanks and all; nothing is waited for.
    if (!services_.StartProgram(programText, {fileText})) {
        services_.MsgBox(MessageText(state_, notStarted) + QLatin1Char('\n') + programText,
                         platform::Buttons::Ok, platform::Icon::Critical, IdsText(IDS_ERROR));
    }
}

void DocumentCommands::MnuDateiView_Click() {
    const Document& doc = state_.Doc;
    // The model where the compiler writes it, a relative name taken from
    // the script's folder; a model that was never saved has none yet.
    auto model = [&doc] {
        return doc.QcFile.empty() ? doc.ModelName : compile::ModelFileOf(doc.ModelName, doc.QcFile);
    };
    if (model().empty() || !paths::FileExists(model())) {
        MnuDateiComp_Click();
    }
    // No model after the compile (refused, failed, cancelled): nothing more.
    if (!model().empty() && paths::FileExists(model()) && ViewsInPreview(state_.Settings)) {
        shell_.ShowCompiledModel(model());
    } else if (!model().empty() && paths::FileExists(model())) {
        StartWithFile(state_.Settings.ModelViewerPath, model(), MSG_VIEWER_MISSING,
                      MSG_VIEWER_NOT_STARTED);
    }
}

void DocumentCommands::MnuDateiViewCode_Click() {
    const Document& doc = state_.Doc;
    // An existing script is shown as last saved; it is not written here.
    if (doc.QcFile.empty() || !paths::FileExists(doc.QcFile)) {
        SaveQcFileAs();
    }
    if (!doc.QcFile.empty() && paths::FileExists(doc.QcFile)) {
        StartWithFile(state_.Settings.TextEditorPath, doc.QcFile, MSG_EDITOR_MISSING,
                      MSG_EDITOR_NOT_STARTED);
    }
}

// ---------------------------------------------------------------------------
// Document

void DocumentCommands::MnuDateiNeu_Click() {
    if (SaveChangesFirst()) {
        NewDocument();
    }
}

void DocumentCommands::NewDocument() {
    c_.LstAnimations->clear();
    InitVars();
    MarkSaved();
}

void DocumentCommands::InitVars() {
    quarle::InitVars(state_.Doc);
    c_.LstParts->clear();
    modelFiles_.Update();
}

// ---------------------------------------------------------------------------
// Changes and the question

void DocumentCommands::MarkSaved() {
    savedText_ = Rendered(state_.Doc);
    ShowTitle();
}

bool DocumentCommands::DocumentChanged() const {
    return Rendered(state_.Doc) != savedText_;
}

QString DocumentCommands::ScriptTitle() const {
    const std::string& file = state_.Doc.QcFile;
    return file.empty() ? MessageText(state_, MSG_UNTITLED)
                        : platform::FromCp1252(paths::FileNameOf(file));
}

void DocumentCommands::ShowTitle() {
    QWidget& window = shell_.Window();
    const QString title = ScriptTitle() + (DocumentChanged() ? QStringLiteral("*") : QString()) +
                          QStringLiteral(" \u2014 ") +
                          window.property(platform::CaptionProperty).toString();
    if (window.windowTitle() != title) {
        window.setWindowTitle(title);
    }
}

bool DocumentCommands::SaveChangesFirst() {
    if (!DocumentChanged()) {
        return true;
    }
    const platform::Answer answer =
        services_.MsgBox(MessageText(state_, MSG_UNSAVED_CHANGES, {ScriptTitle()}),
                         platform::Buttons::YesNoCancel, platform::Icon::Exclamation,
                         shell_.Window().property(platform::CaptionProperty).toString());
    switch (answer) {
    case platform::Answer::Yes:
        // A cancelled save dialog or a failed write keeps the document.
        return SaveQcFile();
    case platform::Answer::No:
        return true;
    default:
        return false;
    }
}

bool DocumentCommands::SessionEnding(bool mayAsk) {
    if (mayAsk && !SaveChangesFirst()) {
        return false;
    }
    // The process may end without a close of the window: the settings are
    // written now.
    shell_.WriteSettingsNow();
    return true;
}

// ---------------------------------------------------------------------------
// Scripts from the desktop

void DocumentCommands::OpenGivenScript(const QString& path) {
    const QString full = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    if (const std::optional<std::string> typed = TypedText(state_, services_, full)) {
        OpenQcFile(*typed);
    }
}

void DocumentCommands::OpenDroppedScript(const QString& path) {
    if (SaveChangesFirst()) {
        OpenGivenScript(path);
    }
}

// ---------------------------------------------------------------------------
// Recent files

void DocumentCommands::PushRecentFile() {
    auto& recent = state_.Settings.RecentFiles;
    const std::string& file = state_.Doc.QcFile;
    if (std::find(recent.begin(), recent.end(), file) != recent.end()) {
        return;
    }
    std::move_backward(recent.begin(), recent.end() - 1, recent.end());
    recent[0] = file;
    ShowRecentFiles();
}

void DocumentCommands::ShowRecentFiles() {
    const auto entries = c_.MnuDateiLast();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i]->setText(Doc(state_.Settings.RecentFiles[i]));
    }
}

// ---------------------------------------------------------------------------
// Recent entries

void DocumentCommands::MnuDateiLast_Click(int i) {
    auto& recent = state_.Settings.RecentFiles;
    const auto index = static_cast<std::size_t>(i);
    if (index >= recent.size()) {
        return;
    }
    // The entry's caption shows this text; it is what the click works with.
    const std::string file = recent[index];
    if (file == EmptyRecentFile) {
        return;
    }
    if (paths::FileExists(file)) {
        // The list keeps its order: only a save puts a file on top.
        if (SaveChangesFirst()) {
            OpenQcFile(file);
        }
        return;
    }
    services_.MsgBox(IdsText(IDS_CANTFINDFILE_PART1) + QLatin1Char(' ') + Doc(file) +
                         QLatin1Char(' ') + IdsText(IDS_CANTFINDFILE_PART2),
                     platform::Buttons::Ok, platform::Icon::Critical, IdsText(IDS_ERROR));
    // The other entries stay where they are, so a gap can stand between two.
    recent[index] = EmptyRecentFile;
    ShowRecentFiles();
}

} // namespace quarle::ui
