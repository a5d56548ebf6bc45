#include "ScriptedServices.h"

#include <gtest/gtest.h>

namespace quarle::test {

using platform::Answer;
using platform::FilePick;

ScriptedServices::ScriptedServices()
    : ProgramFolderPath(QStringLiteral(QUARLE_BINARY_DIR "/bin")) {
    Env.Language = QStringLiteral("de-DE");
}

ScriptedServices::~ScriptedServices() {
    VerifyAllUsed();
}

void ScriptedServices::QueueMsgBox(Answer answer) {
    msgBoxAnswers_.append(answer);
}

void ScriptedServices::QueueOpen(std::optional<FilePick> pick) {
    openAnswers_.append(std::move(pick));
}

void ScriptedServices::QueueSave(std::optional<FilePick> pick) {
    saveAnswers_.append(std::move(pick));
}

void ScriptedServices::QueueFolder(std::optional<QString> folder) {
    folderAnswers_.append(std::move(folder));
}

void ScriptedServices::VerifyAllUsed() {
    for (Answer answer : msgBoxAnswers_) {
        ADD_FAILURE() << "A message box answer was queued but never asked for (answer "
                      << static_cast<int>(answer) << ")";
    }
    for (const auto& pick : openAnswers_) {
        ADD_FAILURE() << "An Open dialog answer was queued but never asked for ("
                      << (pick ? pick->FileName.toStdString() : std::string("cancel")) << ")";
    }
    for (const auto& pick : saveAnswers_) {
        ADD_FAILURE() << "A Save dialog answer was queued but never asked for ("
                      << (pick ? pick->FileName.toStdString() : std::string("cancel")) << ")";
    }
    for (const auto& folder : folderAnswers_) {
        ADD_FAILURE() << "A folder chooser answer was queued but never asked for ("
                      << folder.value_or(QStringLiteral("cancel")).toStdString() << ")";
    }
    folderAnswers_.clear();
    msgBoxAnswers_.clear();
    openAnswers_.clear();
    saveAnswers_.clear();
}

Answer ScriptedServices::MsgBox(const QString& text, platform::Buttons buttons, platform::Icon icon,
                                const QString& title) {
    prompts_.append(Prompt{QStringLiteral("MsgBox"), text, title, buttons, icon, {}, {}});
    if (msgBoxAnswers_.isEmpty()) {
        ADD_FAILURE() << "Unexpected message box: \"" << text.toStdString() << "\" (title \""
                      << title.toStdString() << "\")";
        return Answer::Cancel;
    }
    return msgBoxAnswers_.takeFirst();
}

std::optional<FilePick> ScriptedServices::ShowOpen(const QString& title, const QString& filter,
                                                   const QString& initialDir) {
    prompts_.append(Prompt{QStringLiteral("Open"), title, title, platform::Buttons::Ok,
                           platform::Icon::None, filter, initialDir});
    if (openAnswers_.isEmpty()) {
        ADD_FAILURE() << "Unexpected Open dialog: \"" << title.toStdString() << "\" (filter \""
                      << filter.toStdString() << "\")";
        return std::nullopt;
    }
    return openAnswers_.takeFirst();
}

std::optional<FilePick> ScriptedServices::ShowSave(const QString& title, const QString& filter,
                                                   const QString& initialDir) {
    prompts_.append(Prompt{QStringLiteral("Save"), title, title, platform::Buttons::Ok,
                           platform::Icon::None, filter, initialDir});
    if (saveAnswers_.isEmpty()) {
        ADD_FAILURE() << "Unexpected Save dialog: \"" << title.toStdString() << "\" (filter \""
                      << filter.toStdString() << "\")";
        return std::nullopt;
    }
    return saveAnswers_.takeFirst();
}

bool ScriptedServices::StartProgram(const QString& program, const QStringList& arguments) {
    Starts.append(Started{program, arguments});
    return StartResult;
}

std::optional<QString> ScriptedServices::ShowFolder(const QString& title,
                                                   const QString& initialDir) {
    prompts_.append(Prompt{QStringLiteral("Folder"), title, title, platform::Buttons::Ok,
                           platform::Icon::None, {}, initialDir});
    if (folderAnswers_.isEmpty()) {
        ADD_FAILURE() << "Unexpected folder chooser: \"" << title.toStdString() << "\"";
        return std::nullopt;
    }
    return folderAnswers_.takeFirst();
}

bool ScriptedServices::ShowProgress(const QString& title, const QString& text, qint64, qint64) {
    if (!ProgressShown) {
        prompts_.append(Prompt{QStringLiteral("Progress"),
                               text,
                               title,
                               platform::Buttons::Ok,
                               platform::Icon::None,
                               {},
                               {}});
    }
    ProgressShown = true;
    return ++ProgressCalls != CancelProgressAt;
}

} // namespace quarle::test
