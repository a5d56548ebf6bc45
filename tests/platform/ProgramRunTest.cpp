#include "platform/ProgramRun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace quarle::platform {
namespace {

#ifndef Q_OS_WIN
TEST(ProgramRun, RunsInItsFolderTellsItsStatusAndKillsWhatItStarted) {
    QTemporaryDir dir;
    ProgramRun run;
    ASSERT_TRUE(run.Start("/bin/sh", {"-c", "pwd > here.txt; exit 3"}, dir.path()));
    EXPECT_FALSE(run.Start("/bin/sh", {"-c", "true"}, dir.path())) << "one program per run";
    ASSERT_TRUE(QTest::qWaitFor([&] { return run.Finished(); }, 5000));
    EXPECT_EQ(run.ExitStatus(), 3);
    QFile here(QDir(dir.path()).filePath("here.txt"));
    ASSERT_TRUE(here.open(QIODevice::ReadOnly));
    EXPECT_EQ(QFileInfo(QString::fromUtf8(here.readAll()).trimmed()).canonicalFilePath(),
              QFileInfo(dir.path()).canonicalFilePath());

    ProgramRun group;
    ASSERT_TRUE(group.Start("/bin/sh", {"-c", "(sleep 0.6; touch late) & sleep 30"}, dir.path()));
    EXPECT_FALSE(group.Finished());
    group.Kill();
    EXPECT_TRUE(group.Finished());
    EXPECT_EQ(group.ExitStatus(), std::nullopt) << "a killed program has no status of its own";
    QTest::qWait(1000);
    EXPECT_FALSE(QFileInfo::exists(QDir(dir.path()).filePath("late")));
}
#endif

TEST(ProgramRun, MissingProgramIsReportedNotStarted) {
    QTemporaryDir dir;
    ProgramRun run;
    EXPECT_FALSE(run.Start(QDir(dir.path()).filePath("no-such-program"), {}, dir.path()));
    EXPECT_FALSE(run.ErrorText().isEmpty());
    EXPECT_TRUE(run.Finished());
}

} // namespace
} // namespace quarle::platform
