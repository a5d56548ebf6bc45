#include "platform/ProgramRun.h"

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <csignal>
#include <sys/types.h>
#include <unistd.h>
#endif

namespace quarle::platform {

ProgramRun::ProgramRun(QObject* parent) : QObject(parent) {
    // Nobody reads or types at a program started this way: no input, and
    // whatever it prints that it does not redirect itself is dropped.
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.setStandardOutputFile(QProcess::nullDevice());
    process_.setStandardErrorFile(QProcess::nullDevice());
}

ProgramRun::~ProgramRun() {
    if (started_ && process_.state() != QProcess::NotRunning) {
        Kill();
    }
}

bool ProgramRun::Start(const QString& program, const QStringList& arguments,
                       const QString& workingFolder, WindowStyle style) {
    if (started_) {
        errorText_ = QStringLiteral("A program is already running.");
        return false;
    }
    process_.setProgram(program);
    process_.setArguments(arguments);
    process_.setWorkingDirectory(workingFolder);
#ifdef Q_OS_WIN
    process_.setCreateProcessArgumentsModifier([style](QProcess::CreateProcessArguments* args) {
        args->flags |= CREATE_NEW_CONSOLE | CREATE_NEW_PROCESS_GROUP;
        if (style == WindowStyle::Minimised) {
            args->startupInfo->dwFlags |= STARTF_USESHOWWINDOW;
            args->startupInfo->wShowWindow = SW_SHOWMINIMIZED;
        }
    });
#else
    (void)style;
    // A group of its own, so Kill reaches whatever the program starts.
    process_.setChildProcessModifier([] { ::setpgid(0, 0); });
#endif
    process_.start();
    if (!process_.waitForStarted(10000)) {
        errorText_ = process_.errorString();
        process_.kill();
        process_.waitForFinished(1000);
        return false;
    }
    started_ = true;
    return true;
}

bool ProgramRun::Finished() {
    if (!started_) {
        return true;
    }
    if (process_.state() == QProcess::NotRunning) {
        return true;
    }
    // Lets QProcess notice an ended child without waiting for the event loop.
    return process_.waitForFinished(0) || process_.state() == QProcess::NotRunning;
}

std::optional<int> ProgramRun::ExitStatus() {
    if (!Finished() || !started_ || killed_ || process_.exitStatus() != QProcess::NormalExit) {
        return std::nullopt;
    }
    return process_.exitCode();
}

void ProgramRun::Kill() {
    if (!started_ || process_.state() == QProcess::NotRunning) {
        return;
    }
    killed_ = true;
#ifndef Q_OS_WIN
    const qint64 pid = process_.processId();
    if (pid > 0) {
        ::kill(-static_cast<pid_t>(pid), SIGKILL);
    }
#endif
    process_.kill();
    process_.waitForFinished(3000);
}

} // namespace quarle::platform
