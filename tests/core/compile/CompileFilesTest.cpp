#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

#include "CompileTestSupport.h"
#include "FakeCompiler.h"
#include "compile/CompileFiles.h"

namespace quarle::compile {
namespace {

using testing::ReadFile;
using testing::TempDir;
using testing::WriteFile;

TEST(CompileScript, BatchKeepsTheCompilerBareAndQuotesTheScript) {
    EXPECT_EQ(CompileScriptText(ScriptStyle::Batch, "c:\\hl\\studiomdl.exe", "c:\\m 1\\robot.qc"),
              "c:\\hl\\studiomdl.exe \"c:\\m 1\\robot.qc\" >>compile.log\r\n"
              "echo Fertig >fert.dat\r\n");
    EXPECT_EQ(CompileScriptText(ScriptStyle::Batch, "c:\\100%\\s.exe", "c:\\%TEMP%\\r.qc"),
              "c:\\100%%\\s.exe \"c:\\%%TEMP%%\\r.qc\" >>compile.log\r\n"
              "echo Fertig >fert.dat\r\n");
    EXPECT_EQ(LaunchForScript(ScriptStyle::Batch).Program, "cmd.exe");
    EXPECT_EQ(LaunchForScript(ScriptStyle::Batch).Arguments,
              (std::vector<std::string>{"/c", "compile.bat"}));
}

TEST(CompileScript, PosixQuotesEveryPathAndRunsWindowsCompilersThroughWine) {
    EXPECT_EQ(ShellQuote("it's $HOME"), "'it'\\''s $HOME'");
    EXPECT_EQ(ShellQuote(""), "''");
    EXPECT_EQ(CompileScriptText(ScriptStyle::Posix, "/opt/hl/studiomdl", "/m/robot.qc"),
              "'/opt/hl/studiomdl' '/m/robot.qc' >>compile.log\n"
              "echo Fertig $? >fert.dat\n");
    EXPECT_EQ(CompileScriptText(ScriptStyle::Posix, "/opt/hl/StudioMdl.EXE", "/m/a b.qc"),
              "wine '/opt/hl/StudioMdl.EXE' '/m/a b.qc' >>compile.log\n"
              "echo Fertig $? >fert.dat\n");
    EXPECT_FALSE(IsWindowsExecutable("/opt/exe"));
    EXPECT_FALSE(IsWindowsExecutable("exe"));
    EXPECT_EQ(LaunchForScript(ScriptStyle::Posix).Program, "/bin/sh");
    EXPECT_EQ(LaunchForScript(ScriptStyle::Posix).Arguments,
              std::vector<std::string>{"compile.sh"});
}

#ifndef _WIN32
// Runs the written script as the dialog does: /bin/sh in the working folder.
int RunScript(const TempDir& dir) {
    const std::string command = "cd " + ShellQuote(dir.Path()) + " && /bin/sh compile.sh";
    return std::system(command.c_str());
}

TEST(CompileScript, HostileScriptPathNeitherBreaksTheLineNorRunsAnything) {
    TempDir dir;
    const std::string hostile = "a b'c\"d $(touch pwned1) `touch pwned2`; touch pwned3 & $HOME.qc";
    const std::string qc = dir / hostile;
    const std::string mdl = dir / "out.mdl";
    WriteFile(qc, "$modelname \"" + mdl + "\"\n$sequence idle \"ref\"\n");
    WriteFile(dir / "compile.log", "stale log\n");

    ASSERT_EQ(DeleteRunFiles(dir.Path()), "");
    ASSERT_EQ(WriteCompileScript(dir.Path(), ScriptStyle::Posix, QUARLE_FAKE_COMPILER, qc), "");
    ASSERT_EQ(RunScript(dir), 0);

    const std::vector<std::string> log = ReadLines(dir / "compile.log");
    ASSERT_GE(log.size(), 3u);
    EXPECT_EQ(log[0], "fake studiomdl 1.0");
    EXPECT_EQ(log[1], "arguments: 1");
    EXPECT_EQ(log[2], "qc: " + qc);
    for (const char* name : {"pwned1", "pwned2", "pwned3"}) {
        EXPECT_FALSE(std::filesystem::exists(dir / name)) << name;
    }
    EXPECT_EQ(MarkerExitStatus(dir / "fert.dat"), 0);
    EXPECT_EQ(ReadFile(mdl), "IDST1");
}

TEST(CompileScript, CompilerPathWithABlankRunsAndItsStatusReachesTheMarker) {
    TempDir dir;
    std::filesystem::create_directories(dir / "my tools");
    const std::string compiler = dir / "my tools/studiomdl";
    std::filesystem::copy_file(QUARLE_FAKE_COMPILER, compiler);
    const std::string qc = dir / "robot.qc";
    WriteFile(qc, "// fake: exit 3\n// fake: say WARNING: odd\n$sequence idle \"ref\"\n");

    ASSERT_EQ(WriteCompileScript(dir.Path(), ScriptStyle::Posix, compiler, qc), "");
    ASSERT_EQ(RunScript(dir), 0) << "the script itself ends well: its last line is the marker";
    EXPECT_EQ(MarkerExitStatus(dir / "fert.dat"), 3);
    const std::vector<std::string> log = ReadLines(dir / "compile.log");
    EXPECT_NE(std::find(log.begin(), log.end(), "WARNING: odd"), log.end());
}
#endif

TEST(CompileFiles, WorkingFilesReadBack) {
    TempDir dir;
    WriteFile(dir / "log", "one\r\ntwo\n\r\nlast");
    EXPECT_EQ(ReadLines(dir / "log"), (std::vector<std::string>{"one", "two", "", "last"}));
    EXPECT_TRUE(ReadLines(dir / "missing").empty());

    WriteFile(dir / "m1", "Fertig 3\n");
    WriteFile(dir / "m2", "Fertig \r\n");
    WriteFile(dir / "m3", "Fertig -1\r\n");
    EXPECT_EQ(MarkerExitStatus(dir / "m1"), 3);
    EXPECT_EQ(MarkerExitStatus(dir / "m2"), std::nullopt) << "the plain batch marker";
    EXPECT_EQ(MarkerExitStatus(dir / "m3"), -1);
    EXPECT_EQ(MarkerExitStatus(dir / "missing"), std::nullopt);

    WriteFile(dir / "compile.log", "x");
    WriteFile(dir / "fert.dat", "x");
    WriteFile(dir / "compile.sh", "x");
    EXPECT_EQ(DeleteRunFiles(dir.Path()), "");
    EXPECT_FALSE(std::filesystem::exists(dir / "compile.log"));
    EXPECT_FALSE(std::filesystem::exists(dir / "fert.dat"));
    EXPECT_TRUE(std::filesystem::exists(dir / "compile.sh"));
    EXPECT_EQ(DeleteRunFiles(dir.Path()), "") << "nothing to delete is no failure";

    EXPECT_EQ(WriteFileReplacing(dir / "compile.sh", "new"), "");
    EXPECT_EQ(ReadFile(dir / "compile.sh"), "new");
    EXPECT_NE(WriteFileReplacing(dir / "no folder/compile.sh", "new"), "");
    for (const auto& entry : std::filesystem::directory_iterator(dir.Path())) {
        EXPECT_EQ(entry.path().filename().string().find(".tmp"), std::string::npos)
            << "a temporary file was left behind: " << entry.path();
    }
}

TEST(CompileFiles, LogLinesThatReportProblems) {
    EXPECT_EQ(ClassifyLogLine("************ ERROR ************"), LogKind::Error);
    EXPECT_EQ(ClassifyLogLine("Error: can't find texture arm.bmp"), LogKind::Error);
    EXPECT_EQ(ClassifyLogLine("WARNING: sequence idle has no frames"), LogKind::Warning);
    EXPECT_EQ(ClassifyLogLine("warning, error: both"), LogKind::Error);
    EXPECT_EQ(ClassifyLogLine("grabbing terrorist.smd"), LogKind::Plain);
    EXPECT_EQ(ClassifyLogLine("0 errors, 0 warnings"), LogKind::Plain);
    EXPECT_EQ(ClassifyLogLine(""), LogKind::Plain);
}

TEST(CompileFiles, ModelStampsAndTheStatusLine) {
    TempDir dir;
    const std::string mdl = dir / "robot.mdl";
    const FileStamp none = StampOf(mdl);
    EXPECT_FALSE(none.Exists);
    EXPECT_EQ(CompareStamps(none, StampOf(mdl)), ModelChange::NotWritten);
    WriteFile(mdl, "IDST");
    const FileStamp first = StampOf(mdl);
    EXPECT_EQ(CompareStamps(none, first), ModelChange::Created);
    EXPECT_EQ(CompareStamps(first, StampOf(mdl)), ModelChange::Unchanged);
    WriteFile(mdl, "IDST2");
    EXPECT_EQ(CompareStamps(first, StampOf(mdl)), ModelChange::Rewritten);
    EXPECT_EQ(CompareStamps(first, none), ModelChange::NotWritten);

    RunOutcome o;
    o.CheckErrors = 2;
    EXPECT_EQ(DescribeOutcome(o), "Not compiled: the checks found 2 errors.");
    o = {};
    o.End = RunEnd::Finished;
    o.ExitStatus = 0;
    o.LogWarnings = 1;
    o.Model = ModelChange::Created;
    o.ModelPath = "/m/robot.mdl";
    EXPECT_EQ(DescribeOutcome(o), "Compiler finished with exit status 0; log: 0 errors, 1 warning; "
                                  "model written: /m/robot.mdl.");
    o.ExitStatus = std::nullopt;
    o.Model = ModelChange::Unchanged;
    EXPECT_EQ(DescribeOutcome(o), "Compiler finished (exit status not reported); log: 0 errors, "
                                  "1 warning; model not changed: /m/robot.mdl.");
    o.End = RunEnd::TimedOut;
    o.Seconds = 4.6;
    o.Model = ModelChange::NotWritten;
    EXPECT_EQ(DescribeOutcome(o), "Compile stopped: no result after 5 s; log: 0 errors, 1 warning; "
                                  "no model written.");
    o.End = RunEnd::Finished;
    o.ExitStatus = 127;
    EXPECT_EQ(DescribeOutcome(o).rfind("Compiler could not be run (exit status 127)", 0), 0u);
}

} // namespace
} // namespace quarle::compile
