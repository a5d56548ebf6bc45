// What forms ask of the desktop: message boxes, file dialogs, starting
// programs, the program's folder, random numbers and the clock. Forms call
// only this; QtServices is the real thing, tests hand in a scripted one.
#pragma once

#include "platform/ToolSearch.h"

#include <QPointer>
#include <QProgressDialog>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <memory>
#include <optional>

namespace quarle::platform {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel, AbortRetryIgnore };
enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Answer { Ok, Cancel, Yes, No, Retry, Abort, Ignore };

struct FilePick {
    QString FileName;  // full path
    QString FileTitle; // file name only
};

class Services {
public:
    virtual ~Services() = default;

    virtual Answer MsgBox(const QString& text, Buttons buttons, Icon icon,
                          const QString& title) = 0;
    // Filter as written in the forms: "Bitmap|*.bmp", pairs of description
    // and patterns separated by '|'. nullopt after a cancel.
    virtual std::optional<FilePick> ShowOpen(const QString& title, const QString& filter,
                                             const QString& initialDir = {}) = 0;
    virtual std::optional<FilePick> ShowSave(const QString& title, const QString& filter,
                                             const QString& initialDir = {}) = 0;
    // The platform's folder chooser: the chosen folder (native separators,
    // no closing one but at a root), nullopt after a cancel.
    virtual std::optional<QString> ShowFolder(const QString& title,
                                              const QString& initialDir = {}) = 0;
    // Starts a program without waiting and without a shell. On a non-Windows
    // host a program ending in ".exe" runs through wine. False when it could
    // not be started.
    virtual bool StartProgram(const QString& program, const QStringList& arguments) = 0;
    // The program's folder: where its language files and pictures stand
    // (DataFolderOf the executable's folder), no closing separator.
    virtual QString ProgramFolder() = 0;
    // The user's own data folder for this program (it may not exist yet), no
    // closing separator; empty when the platform has none.
    virtual QString UserDataFolder();
    // Whether a file can be made in the folder (tried, not guessed from the
    // permissions).
    virtual bool CanWriteTo(const QString& folder);
    // The search path, home and editor variables the tools are looked up
    // with (ToolSearch.h): the process's own.
    virtual HostEnvironment Environment();
    // Uniform in [0, 1).
    virtual double Rnd() = 0;
    // Seconds since midnight.
    virtual double Timer() = 0;
    // Milliseconds on a clock that never goes back: how long a task takes.
    virtual qint64 Milliseconds();

    // A long task: the busy cursor over the program's windows, or not.
    virtual void SetBusyCursor(bool busy);
    // A long task's progress window, modal, with a Cancel button: shown at
    // the first call with its title and text, then moved on; done of total
    // fills its bar. Pending events run, so the window answers. False once
    // the user cancelled. The default shows nothing and never cancels.
    virtual bool ShowProgress(const QString& title, const QString& text, qint64 done, qint64 total);
    // Closes the progress window, if one is shown.
    virtual void EndProgress();
};

// The folder of the program's data for an executable in executableFolder:
// the executable's own folder when it holds language files (a build folder,
// a portable copy, Windows), else "../share/quarle" beside it when that
// exists (an installed copy: bin/quarle with share/quarle), else the
// executable's folder all the same. Native separators, no closing one.
QString DataFolderOf(const QString& executableFolder);

// The program that runs Program on this host ("wine" for an .exe off
// Windows), and the arguments that go with it.
struct Launch {
    QString Program;
    QStringList Arguments;
};
Launch LaunchFor(const QString& program, const QStringList& arguments);

// A bare program name ("notepad.exe", "gedit") is looked up on the search
// path; a path is tested as it stands: it must name a file.
bool ProgramExists(const QString& program);

// A filter as the forms write it ("Bitmap|*.bmp", "*.*|*.*", patterns joined
// by ';') in the form of Qt's file dialogs ("Bitmap (*.bmp)"; filters joined
// by ";;"). "*.*" means every file, with or without an extension, so it
// becomes "*".
QString QtFileFilter(const QString& filter);

// The desktop itself: QMessageBox, QFileDialog, QProcess.
class QtServices : public Services {
public:
    // Dialogs are centred on dialogParent, or on the active window when it
    // is not set.
    explicit QtServices(QWidget* dialogParent = nullptr);

    void SetDialogParent(QWidget* parent) { dialogParent_ = parent; }

    Answer MsgBox(const QString& text, Buttons buttons, Icon icon, const QString& title) override;
    std::optional<FilePick> ShowOpen(const QString& title, const QString& filter,
                                     const QString& initialDir = {}) override;
    std::optional<FilePick> ShowSave(const QString& title, const QString& filter,
                                     const QString& initialDir = {}) override;
    std::optional<QString> ShowFolder(const QString& title,
                                      const QString& initialDir = {}) override;
    bool StartProgram(const QString& program, const QStringList& arguments) override;
    QString ProgramFolder() override;
    double Rnd() override;
    double Timer() override;
    void SetBusyCursor(bool busy) override;
    bool ShowProgress(const QString& title, const QString& text, qint64 done,
                      qint64 total) override;
    void EndProgress() override;

private:
    QWidget* Parent() const;
    std::optional<FilePick> ShowFileDialog(bool save, const QString& title, const QString& filter,
                                           const QString& initialDir);

    QPointer<QWidget> dialogParent_;
    QString programFolder_; // looked up once: the program does not move while it runs
    QRandomGenerator random_;
    std::unique_ptr<QProgressDialog> progress_;
    bool busy_ = false;
};

} // namespace quarle::platform
