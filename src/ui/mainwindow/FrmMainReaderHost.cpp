#include "ui/mainwindow/FrmMainReaderHost.h"

#include "document/Paths.h"
#include "localisation/Cp1252.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "ui/localisation/Messages.h"
#include "ui/mainwindow/FrmMain.h"

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

// A text of the document: a path or a name.
QString Doc(const std::string& s) {
    return platform::FromCp1252(s);
}

} // namespace

std::string FrmMainReaderHost::Text(Ids key) {
    return form_.state_.IdsTexts[static_cast<std::size_t>(key)];
}

std::string FrmMainReaderHost::NewDir(const std::string& oldDir, const std::string& extra,
                                      FolderQuestion /*what*/) {
    Pause();
    return form_.NewDir(oldDir, extra);
}

std::string FrmMainReaderHost::PickPartFile(const std::string& missingFile,
                                            const std::string& extra,
                                            const std::string& modelPath) {
    Pause();
    // The same question as for a folder, but the pick is the part's own file.
    const auto& ids = form_.state_.IdsTexts;
    const QString message = Q(extra) + QStringLiteral(": ") +
                            Q(ids[IDS_MSGBOX_CANTFINDPATH_PART1]) + QStringLiteral(" \"") +
                            Doc(missingFile) + QStringLiteral("\" ") +
                            Q(ids[IDS_MSGBOX_CANTFINDPATH_PART2]);
    const platform::Answer answer =
        form_.services_.MsgBox(message, platform::Buttons::OkCancel, platform::Icon::Question,
                               Q(ids[IDS_MSGBOX_CANTFINDPATH_TITEL]));
    if (answer != platform::Answer::Ok) {
        return Refused;
    }
    const std::optional<std::string> startIn = paths::Resolve(modelPath);
    const std::optional<platform::FilePick> pick = form_.services_.ShowOpen(
        Q(ids[IDS_OPEN]), QStringLiteral("Model|*.smd"), startIn ? Doc(*startIn) : QString());
    if (!pick || pick->FileName.isEmpty()) {
        return Refused;
    }
    // A file the script's text cannot name is refused like a cancel.
    return TypedText(form_.state_, form_.services_, pick->FileName).value_or(Refused);
}

void FrmMainReaderHost::NewDocument() {
    form_.NewDocument();
}

void FrmMainReaderHost::AddAnimation(const std::string& name) {
    form_.LstAnimations->addItem(Doc(name));
}

void FrmMainReaderHost::Problem(ReadProblem kind, const std::string& detail) {
    Pause();
    const bool loadEnds = kind == ReadProblem::ScriptUnreadable ||
                          kind == ReadProblem::WorkFileUnwritable ||
                          kind == ReadProblem::BinaryFile || kind == ReadProblem::Utf16Text;
    form_.services_.MsgBox(Q(DescribeProblem(kind, Cp1252ToUtf8(detail), form_.state_.MsgTexts)),
                           platform::Buttons::Ok,
                           loadEnds ? platform::Icon::Critical : platform::Icon::Exclamation,
                           Q(form_.state_.IdsTexts[IDS_ERROR]));
}

void FrmMainReaderHost::FileProblem(ReadProblem kind, const OpenProblem& problem) {
    Pause();
    // The file and why it is not read, in the active language.
    form_.services_.MsgBox(Q(DescribeProblem(kind, {}, form_.state_.MsgTexts)) +
                               QStringLiteral("\n\n") + OpenProblemText(form_.state_, problem),
                           platform::Buttons::Ok,
                           kind == ReadProblem::ScriptUnreadable ? platform::Icon::Critical
                                                                 : platform::Icon::Exclamation,
                           Q(form_.state_.IdsTexts[IDS_ERROR]));
}

void FrmMainReaderHost::BeginLoad(const std::string& script) {
    script_ = script;
    busy_ = false;
    started_ = form_.services_.Milliseconds();
}

void FrmMainReaderHost::Pause() {
    if (busy_) {
        form_.services_.EndProgress();
        form_.services_.SetBusyCursor(false);
        busy_ = false;
    }
    started_ = form_.services_.Milliseconds();
}

void FrmMainReaderHost::EndLoad() {
    Pause();
}

bool FrmMainReaderHost::Progress(std::size_t done, std::size_t total) {
    platform::Services& services = form_.services_;
    if (!busy_) {
        if (services.Milliseconds() - started_ <= BusyAfterMs) {
            return true;
        }
        busy_ = true;
        services.SetBusyCursor(true);
    }
    const auto& texts = form_.state_.MsgTexts;
    return services.ShowProgress(
        Q(texts[MSG_LOAD_PROGRESS_TITLE]),
        Q(FormatMessage(texts[MSG_LOAD_PROGRESS], {Cp1252ToUtf8(paths::FileNameOf(script_))})),
        static_cast<qint64>(done), static_cast<qint64>(total));
}

void FrmMainReaderHost::LoadFinished() {
    Pause();
    form_.FrmModelfiles->setEnabled(true);
    // The folder as it is spelt on the disk: scripts from Windows may write
    // it in other capitals.
    // A model tree may keep every file in subfolders. The list is read anew
    // also for the folder on show before: files may have gone or come since.
    const bool sameFolder = form_.TxtModelpath->text() == Doc(form_.state_.Doc.ModelPath);
    if (const std::optional<std::string> folder = paths::Resolve(form_.state_.Doc.ModelPath);
        folder && paths::FolderExists(*folder)) {
        form_.SetFileListPath(Doc(*folder));
    }
    form_.Update();
    if (sameFolder && !form_.TxtModelpath->text().isEmpty()) {
        form_.RefillLstFiles();
    }
    form_.MnuWizardsAnimWiz->setEnabled(true);
    // The number of the group on show stays; the reader listed group 0, so
    // another group is listed anew, or the page would add to and delete from
    // another group than it shows. A box left empty stands for group 0.
    const std::optional<int> group = form_.AnimGroup();
    if (!group) {
        form_.TxtAnimNr->setText(QStringLiteral("0"));
    } else if (*group != 0) {
        form_.TxtAnimNr_Change();
    }
}

} // namespace quarle::ui
