// Starts a program and watches it: arguments and a working folder, no shell
// in between; the caller polls whether it has finished and with what status,
// and can end it. Ending it ends what it started as well (its whole process
// group on POSIX hosts), so a script stopped half-way leaves no compiler
// running.
#pragma once

#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <optional>

namespace quarle::platform {

enum class WindowStyle { Normal, Minimised };

class ProgramRun : public QObject {
    Q_OBJECT

public:
    explicit ProgramRun(QObject* parent = nullptr);
    // A run still going when the object goes is ended.
    ~ProgramRun() override;
    ProgramRun(const ProgramRun&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;

    // Starts program with arguments in workingFolder. The window style
    // matters only where programs get a console window of their own
    // (Windows). False, with ErrorText set, when it could not be started.
    bool Start(const QString& program, const QStringList& arguments, const QString& workingFolder,
               WindowStyle style = WindowStyle::Normal);

    bool Started() const { return started_; }
    // True once the program has ended (or was never started).
    bool Finished();
    // The exit status of a program that ended by itself; nullopt while it
    // runs, and after a crash or a Kill.
    std::optional<int> ExitStatus();
    // Ends the program and everything it started, and waits briefly for it.
    void Kill();
    QString ErrorText() const { return errorText_; }

private:
    QProcess process_;
    bool started_ = false;
    bool killed_ = false;
    QString errorText_;
};

} // namespace quarle::platform
