#include "compile/CompileFiles.h"

#include "../TestFiles.h"

#include <FakeCompiler.h>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

namespace quarle::compile {
namespace {

using quarle::testing::ReadFile;
using quarle::testing::TempDir;
using quarle::testing::WriteFile;

TEST(CompileScript, BatchAndPosixLines) {
    // The batch keeps the compiler bare and quotes the script; '%' is doubled.
    EXPECT_EQ(CompileScriptText(ScriptStyle::Batch, "c:\\100%\\studiomdl.exe", "c:\\m 1\\r.qc"),
              "c:\\100%%\\studiomdl.exe \"c:\\m 1\\r.qc\" >>compile.log 2>&1\r\n"
              "echo Fertig >fert.dat\r\n");
    // POSIX quotes both paths, runs an .exe through wine, and keeps the
    // status; the script's cp1252 name reaches the shell in UTF-8, and the
    // shell's own complaints land in the log.
    EXPECT_EQ(CompileScriptText(ScriptStyle::Posix, "/opt/hl/StudioMdl.EXE", "/m/it's $HOME.qc"),
              "wine '/opt/hl/StudioMdl.EXE' '/m/it'\\''s $HOME.qc' >>compile.log 2>&1\n"
              "echo Fertig $? >fert.dat\n");
    EXPECT_EQ(CompileScriptText(ScriptStyle::Posix, "/opt/exe", "/m/K\xF6rper.qc"),
              "'/opt/exe' '/m/K\xC3\xB6rper.qc' >>compile.log 2>&1\necho Fertig $? >fert.dat\n");
    EXPECT_EQ(LaunchForScript(ScriptStyle::Batch).Arguments,
              (std::vector<std::string>{"/c", "compile.bat"}));
    EXPECT_EQ(LaunchForScript(ScriptStyle::Posix).Program, "/bin/sh");
}

// The host's own script, started as the compile dialog starts it, runs the
// compiler on the script and leaves the log and the marker: a batch under
// cmd.exe on Windows, a shell script under /bin/sh elsewhere.
TEST(CompileScript, TheHostsScriptRunsTheCompilerAndLeavesLogAndMarker) {
    namespace fs = std::filesystem;
    TempDir dir;
    const std::string folder = fs::absolute(dir.Path()).make_preferred().string();
    const std::string compiler = fs::absolute(QUARLE_FAKE_COMPILER).make_preferred().string();
    const std::string qc = dir.Write("robot 1.qc", "$modelname \"robot.mdl\"\n$sequence \"idle\" \"idle\"\n// fake: say hello\n");
    const ScriptStyle style = HostScriptStyle();
    ASSERT_EQ(WriteCompileScript(folder, style, compiler, fs::path(qc).make_preferred().string()),
              "");
    const ScriptLaunch launch = LaunchForScript(style);
#ifdef _WIN32
    std::string command = "cd /d \"" + folder + "\" && " + launch.Program;
#else
    std::string command = "cd '" + folder + "' && " + launch.Program;
#endif
    for (const std::string& argument : launch.Arguments) {
        command += " " + argument;
    }
#ifdef _WIN32
    command = "\"" + command + "\"";
#endif
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
    const std::vector<std::string> log = ReadLines(dir / LogFileName);
    EXPECT_NE(std::find(log.begin(), log.end(), "hello"), log.end()) << ReadFile(dir / LogFileName);
    EXPECT_TRUE(fs::exists(dir / MarkerFileName));
    EXPECT_EQ(MarkerExitStatus(dir / MarkerFileName),
              style == ScriptStyle::Posix ? std::optional<int>(0) : std::nullopt);
}

TEST(CompileFiles, WorkingFilesReadBack) {
    TempDir dir;
    WriteFile(dir / "log", "one\r\ntwo\n\r\nlast");
    EXPECT_EQ(ReadLines(dir / "log"), (std::vector<std::string>{"one", "two", "", "last"}));

    WriteFile(dir / "m1", "Fertig 3\n");
    WriteFile(dir / "m2", "Fertig \r\n");
    EXPECT_EQ(MarkerExitStatus(dir / "m1"), 3);
    EXPECT_EQ(MarkerExitStatus(dir / "m2"), std::nullopt) << "the plain batch marker";
    EXPECT_EQ(MarkerExitStatus(dir / "missing"), std::nullopt);

    WriteFile(dir / "compile.log", "x");
    WriteFile(dir / "fert.dat", "x");
    EXPECT_EQ(DeleteRunFiles(dir.Path()), "");
    EXPECT_FALSE(std::filesystem::exists(dir / "compile.log"));
    EXPECT_FALSE(std::filesystem::exists(dir / "fert.dat"));
    EXPECT_EQ(DeleteRunFiles(dir.Path()), "") << "nothing to delete is no failure";

    EXPECT_EQ(WriteFileReplacing(dir / "log", "new"), "");
    EXPECT_EQ(ReadFile(dir / "log"), "new");
    EXPECT_NE(WriteFileReplacing(dir / "no folder/x", "new"), "");
    for (const auto& entry : std::filesystem::directory_iterator(dir.Path())) {
        EXPECT_EQ(entry.path().filename().string().find(".tmp"), std::string::npos)
            << "a temporary file was left behind: " << entry.path();
    }
}

TEST(CompileFiles, LogLinesThatReportProblems) {
    EXPECT_EQ(ClassifyLogLine("************ ERROR ************"), LogKind::Error);
    EXPECT_EQ(ClassifyLogLine("warning, Error: both"), LogKind::Error);
    EXPECT_EQ(ClassifyLogLine("WARNING: sequence idle has no frames"), LogKind::Warning);
    EXPECT_EQ(ClassifyLogLine("grabbing terrorist.smd"), LogKind::Plain);
    EXPECT_EQ(ClassifyLogLine("0 errors, 0 warnings"), LogKind::Plain);
}

TEST(CompileFiles, ModelStampsAndTheStatusLine) {
    TempDir dir;
    const std::string mdl = dir / "robot.mdl";
    const FileStamp none = StampOf(mdl);
    WriteFile(mdl, "IDST");
    const FileStamp first = StampOf(mdl);
    EXPECT_EQ(CompareStamps(none, first), ModelChange::Created);
    EXPECT_EQ(CompareStamps(first, StampOf(mdl)), ModelChange::Unchanged);
    WriteFile(mdl, "IDST2");
    EXPECT_EQ(CompareStamps(first, StampOf(mdl)), ModelChange::Rewritten);
    EXPECT_EQ(CompareStamps(first, none), ModelChange::NotWritten);

    RunOutcome o;
    o.End = RunEnd::Finished;
    o.LogWarnings = 1;
    o.Model = ModelChange::Unchanged;
    o.ModelPath = "/m/robot.mdl";
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
