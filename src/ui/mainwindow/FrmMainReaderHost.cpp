#include "ui/mainwindow/FrmMainReaderHost.h"
#include "ui/common/Texts.h"

#include "document/Paths.h"
#include "localisation/Cp1252.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "ui/localisation/Messages.h"
#include "ui/mainwindow/AnimationsPage.h"
#include "ui/mainwindow/DialogFolder.h"
#include "ui/mainwindow/DocumentCommands.h"
#include "ui/mainwindow/ModelFilesPage.h"
#include "ui/mainwindow/ModelFolderList.h"

#include <QAction>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>

namespace quarle::ui {
namespace {

// A text of the language file.
QString Q(const std::string& s) {
    return QString::fromStdString(s);
}

} // namespace

std::string FrmMainReaderHost::Text(Ids key) {
    return state_.IdsTexts[static_cast<std::size_t>(key)];
}

std::string FrmMainReaderHost::NewDir(const std::string& oldDir, const std::string& extra,
                                      FolderQuestion /*what*/) {
    Pause();
    return NewDir(oldDir, extra);
}

bool FrmMainReaderHost::AskToLookFor(const std::string& missing, const std::string& extra) {
    const auto& ids = state_.IdsTexts;
    const QString message = Q(extra) + QStringLiteral(": ") +
                            Q(ids[IDS_MSGBOX_CANTFINDPATH_PART1]) + QStringLiteral(" \"") +
                            Doc(missing) + QStringLiteral("\" ") +
                            Q(ids[IDS_MSGBOX_CANTFINDPATH_PART2]);
    return services_.MsgBox(message, platform::Buttons::OkCancel, platform::Icon::Question,
                            Q(ids[IDS_MSGBOX_CANTFINDPATH_TITEL])) == platform::Answer::Ok;
}

std::string FrmMainReaderHost::NewDir(const std::string& oldDir, const std::string& extra) {
    if (!AskToLookFor(oldDir, extra)) {
        return "0";
    }
    const auto& ids = state_.IdsTexts;
    const std::optional<QString> folder =
        PickFolder(services_, state_.Doc, Q(ids[IDS_OPEN]), QString());
    if (!folder) {
        return "0";
    }
    // A folder the script's text cannot name is refused like a cancel.
    return TypedText(state_, services_, *folder).value_or("0");
}

std::string FrmMainReaderHost::PickPartFile(const std::string& missingFile,
                                            const std::string& extra,
                                            const std::string& modelPath) {
    Pause();
    // The same question as for a folder, but the pick is the part's own file.
    if (!AskToLookFor(missingFile, extra)) {
        return Refused;
    }
    const auto& ids = state_.IdsTexts;
    const std::optional<std::string> startIn = paths::Resolve(modelPath);
    const std::optional<platform::FilePick> pick = services_.ShowOpen(
        Q(ids[IDS_OPEN]), QStringLiteral("Model|*.smd"), startIn ? Doc(*startIn) : QString());
    if (!pick || pick->FileName.isEmpty()) {
        return Refused;
    }
    // A file the script's text cannot name is refused like a cancel.
    return TypedText(state_, services_, pick->FileName).value_or(Refused);
}

void FrmMainReaderHost::NewDocument() {
    commands_.NewDocument();
}

void FrmMainReaderHost::AddAnimation(const std::string& name) {
    c_.LstAnimations->addItem(Doc(name));
}

void FrmMainReaderHost::Problem(ReadProblem kind, const std::string& detail) {
    Pause();
    const bool loadEnds = kind == ReadProblem::ScriptUnreadable ||
                          kind == ReadProblem::WorkFileUnwritable ||
                          kind == ReadProblem::BinaryFile || kind == ReadProblem::Utf16Text;
    services_.MsgBox(Q(DescribeProblem(kind, Cp1252ToUtf8(detail), state_.MsgTexts)),
                     platform::Buttons::Ok,
                     loadEnds ? platform::Icon::Critical : platform::Icon::Exclamation,
                     Q(state_.IdsTexts[IDS_ERROR]));
}

void FrmMainReaderHost::FileProblem(ReadProblem kind, const OpenProblem& problem) {
    Pause();
    // The file and why it is not read, in the active language.
    services_.MsgBox(Q(DescribeProblem(kind, {}, state_.MsgTexts)) + QStringLiteral("\n\n") +
                         OpenProblemText(state_, problem),
                     platform::Buttons::Ok,
                     kind == ReadProblem::ScriptUnreadable ? platform::Icon::Critical
                                                           : platform::Icon::Exclamation,
                     Q(state_.IdsTexts[IDS_ERROR]));
}

void FrmMainReaderHost::BeginLoad(const std::string& script) {
    script_ = script;
    busy_ = false;
    started_ = services_.Milliseconds();
}

void FrmMainReaderHost::Pause() {
    if (busy_) {
        services_.EndProgress();
        services_.SetBusyCursor(false);
        busy_ = false;
    }
    started_ = services_.Milliseconds();
}

void FrmMainReaderHost::EndLoad() {
    Pause();
}

bool FrmMainReaderHost::Progress(std::size_t done, std::size_t total) {
    platform::Services& services = services_;
    if (!busy_) {
        if (services.Milliseconds() - started_ <= BusyAfterMs) {
            return true;
        }
        busy_ = true;
        services.SetBusyCursor(true);
    }
    const auto& texts = state_.MsgTexts;
    return services.ShowProgress(
        Q(texts[MSG_LOAD_PROGRESS_TITLE]),
        Q(FormatMessage(texts[MSG_LOAD_PROGRESS], {Cp1252ToUtf8(paths::FileNameOf(script_))})),
        static_cast<qint64>(done), static_cast<qint64>(total));
}

void FrmMainReaderHost::LoadFinished() {
    Pause();
    c_.FrmModelfiles->setEnabled(true);
    // The folder as it is spelt on the disk: scripts from Windows may write
    // it in other capitals.
    // A model tree may keep every file in subfolders. The list is read anew
    // also for the folder on show before: files may have gone or come since.
    const bool sameFolder = c_.TxtModelpath->text() == Doc(state_.Doc.ModelPath);
    if (const std::optional<std::string> folder = paths::Resolve(state_.Doc.ModelPath);
        folder && paths::FolderExists(*folder)) {
        folder_.SetFileListPath(Doc(*folder));
    }
    modelFiles_.Update();
    if (sameFolder && !c_.TxtModelpath->text().isEmpty()) {
        modelFiles_.RefillLstFiles();
    }
    c_.MnuWizardsAnimWiz->setEnabled(true);
    // The number of the group on show stays; the reader listed group 0, so
    // another group is listed anew, or the page would add to and delete from
    // another group than it shows. A box left empty stands for group 0.
    const std::optional<int> group = animations_.AnimGroup();
    if (!group) {
        c_.TxtAnimNr->setText(QStringLiteral("0"));
    } else if (*group != 0) {
        animations_.TxtAnimNr_Change();
    }
}

} // namespace quarle::ui
