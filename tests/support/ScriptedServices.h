// Services for headless tests: answers are queued first in, first out, every
// prompt is recorded, an unexpected prompt fails the test and answers Cancel
// (or nothing, for a file dialog), and answers left unused fail it too.
#pragma once

#include "platform/Services.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace quarle::test {

class ScriptedServices : public platform::Services {
public:
    struct Prompt {
        QString Kind; // "MsgBox", "Open", "Save", "Folder", "Progress"
        QString Text; // the message; for a file dialog its title, as in Title
        QString Title;
        platform::Buttons Buttons = platform::Buttons::Ok; // message boxes only
        platform::Icon Icon = platform::Icon::None;        // message boxes only
        QString Filter;                                    // file dialogs only
        QString InitialDir;                                // file dialogs only
    };
    struct Started {
        QString Program;
        QStringList Arguments;
    };

    ScriptedServices();
    ~ScriptedServices() override;
    ScriptedServices(const ScriptedServices&) = delete;
    ScriptedServices& operator=(const ScriptedServices&) = delete;

    void QueueMsgBox(platform::Answer answer);
    void QueueOpen(std::optional<platform::FilePick> pick); // nullopt: cancel
    void QueueSave(std::optional<platform::FilePick> pick); // nullopt: cancel
    void QueueFolder(std::optional<QString> folder);        // nullopt: cancel

    const QList<Prompt>& Prompts() const { return prompts_; }
    // Fails the test for every answer still queued, and drops them.
    void VerifyAllUsed();

    platform::Answer MsgBox(const QString& text, platform::Buttons buttons, platform::Icon icon,
                            const QString& title) override;
    std::optional<platform::FilePick> ShowOpen(const QString& title, const QString& filter,
                                               const QString& initialDir = {}) override;
    std::optional<platform::FilePick> ShowSave(const QString& title, const QString& filter,
                                               const QString& initialDir = {}) override;
    std::optional<QString> ShowFolder(const QString& title,
                                      const QString& initialDir = {}) override;
    bool StartProgram(const QString& program, const QStringList& arguments) override;
    QString ProgramFolder() override { return ProgramFolderPath; }
    QString UserDataFolder() override { return UserDataFolderPath; }
    bool CanWriteTo(const QString& folder) override {
        return !ReadOnlyFolders.contains(folder) && Services::CanWriteTo(folder);
    }
    platform::HostEnvironment Environment() override { return Env; }
    double Rnd() override { return NextRnd; }
    double Timer() override { return Now; }
    // The clock stands still unless a test lets it run: each reading moves
    // it on by ClockStep.
    qint64 Milliseconds() override { return Clock += ClockStep; }
    void SetBusyCursor(bool busy) override { BusyCursor = busy; }
    // Each call is recorded (Kind "Progress", Text the text); the call
    // numbered CancelProgressAt (from 1) answers as the Cancel button does.
    bool ShowProgress(const QString& title, const QString& text, qint64 done,
                      qint64 total) override;
    void EndProgress() override { ProgressShown = false; }

    QList<Started> Starts; // every StartProgram, as asked (no wine added)
    bool StartResult = true;
    QString ProgramFolderPath;   // QUARLE_BINARY_DIR "/bin", where the build copies data/
    QString UserDataFolderPath;  // none unless a test sets one
    QStringList ReadOnlyFolders; // folders that refuse new files, as a system folder would
    // No search path and no home unless a test sets them: nothing of the
    // machine running the tests is found. The user speaks German, the
    // language the forms are designed in, whatever the machine's locale.
    platform::HostEnvironment Env;
    double NextRnd = 0.0;
    double Now = 0.0;
    qint64 Clock = 0;
    qint64 ClockStep = 0;
    int CancelProgressAt = 0; // 0: never
    int ProgressCalls = 0;
    bool ProgressShown = false;
    bool BusyCursor = false;

private:
    QList<platform::Answer> msgBoxAnswers_;
    QList<std::optional<platform::FilePick>> openAnswers_;
    QList<std::optional<platform::FilePick>> saveAnswers_;
    QList<std::optional<QString>> folderAnswers_;
    QList<Prompt> prompts_;
};

} // namespace quarle::test
