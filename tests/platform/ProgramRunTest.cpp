#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include "platform/ProgramRun.h"

namespace quarle::platform {
namespace {

#ifndef Q_OS_WIN
TEST(ProgramRun, RunsInItsFolderAndTellsItsExitStatus) {
    QTemporaryDir dir;
    ProgramRun run;
    EXPECT_TRUE(run.Finished()) << "nothing started yet";
    ASSERT_TRUE(run.Start("/bin/sh", {"-c", "pwd > here.txt; exit 3"}, dir.path()));
    EXPECT_FALSE(run.Start("/bin/sh", {"-c", "true"}, dir.path())) << "one program per run";
    ASSERT_TRUE(QTest::qWaitFor([&] { return run.Finished(); }, 5000));
    EXPECT_EQ(run.ExitStatus(), 3);
    QFile here(QDir(dir.path()).filePath("here.txt"));
    ASSERT_TRUE(here.open(QIODevice::ReadOnly));
    EXPECT_EQ(QFileInfo(QString::fromUtf8(here.readAll()).trimmed()).canonicalFilePath(),
              QFileInfo(dir.path()).canonicalFilePath());
}

TEST(ProgramRun, ArgumentsReachTheProgramUntouched) {
    QTemporaryDir dir;
    ProgramRun run;
    const QString hostile = "a b; touch pwned $(touch pwned2) `touch pwned3` '\"";
    ASSERT_TRUE(run.Start("/bin/sh", {"-c", "printf %s \"$1\" > arg.txt", "sh", hostile},
                          dir.path()));
    ASSERT_TRUE(QTest::qWaitFor([&] { return run.Finished(); }, 5000));
    QFile arg(QDir(dir.path()).filePath("arg.txt"));
    ASSERT_TRUE(arg.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(arg.readAll()), hostile);
    EXPECT_FALSE(QFileInfo::exists(QDir(dir.path()).filePath("pwned")));
    EXPECT_FALSE(QFileInfo::exists(QDir(dir.path()).filePath("pwned2")));
}

TEST(ProgramRun, KillEndsWhatTheProgramStarted) {
    QTemporaryDir dir;
    ProgramRun run;
    ASSERT_TRUE(run.Start("/bin/sh", {"-c", "(sleep 0.6; touch late) & sleep 30"}, dir.path()));
    EXPECT_FALSE(run.Finished());
    EXPECT_EQ(run.ExitStatus(), std::nullopt) << "still running";
    run.Kill();
    EXPECT_TRUE(run.Finished());
    EXPECT_EQ(run.ExitStatus(), std::nullopt) << "a killed program has no status of its own";
    QTest::qWait(1000);
    EXPECT_FALSE(QFileInfo::exists(QDir(dir.path()).filePath("late")));
}
#endif

TEST(ProgramRun, MissingProgramIsReportedNotStarted) {
    QTemporaryDir dir;
    ProgramRun run;
    EXPECT_FALSE(run.Start(QDir(dir.path()).filePath("no-such-program"), {}, dir.path()));
    EXPECT_FALSE(run.Started());
    EXPECT_FALSE(run.ErrorText().isEmpty());
    EXPECT_TRUE(run.Finished());
}

} // namespace
} // namespace quarle::platform
