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
using quarle::testing::Sep;
using quarle::testing::TempDir;
using quarle::testing::WriteFile;

TEST(CompileScript, BatchAndPosixLines) {
    // The batch goes to the script's folder, keeps the compiler bare and
    // quotes the rest; '%' is doubled.
    EXPECT_EQ(CompileScriptText(ScriptStyle::Batch, "c:\\100%\\studiomdl.exe", "c:\\m 1\\r.qc",
                                "c:\\work"),
              "pushd \"c:\\m 1\" 2>>\"c:\\work\\compile.log\" && c:\\100%%\\studiomdl.exe "
              "\"c:\\m 1\\r.qc\" >>\"c:\\work\\compile.log\" 2>&1\r\n"
              "echo Fertig >\"c:\\work\\fert.dat\"\r\n");
    EXPECT_EQ(CompileScriptText(ScriptStyle::Batch, "s.exe", "d:\\r.qc", "d:\\w").substr(0, 12),
              "pushd \"d:\\\" ")
        << "a drive's root, not its current folder";
    // POSIX quotes every path, runs an .exe through wine, and keeps the
    // status; the script's cp1252 name reaches the shell in UTF-8, and the
    // shell's own complaints land in the log.
    EXPECT_EQ(
        CompileScriptText(ScriptStyle::Posix, "/opt/hl/StudioMdl.EXE", "/m/it's $HOME.qc", "/w"),
        "cd '/m' 2>>'/w/compile.log' && wine '/opt/hl/StudioMdl.EXE' '/m/it'\\''s $HOME.qc' "
        ">>'/w/compile.log' 2>&1\n"
        "echo Fertig $? >'/w/fert.dat'\n");
    EXPECT_EQ(CompileScriptText(ScriptStyle::Posix, "/opt/exe", "/m/K\xF6rper.qc", "/w"),
              "cd '/m' 2>>'/w/compile.log' && '/opt/exe' '/m/K\xC3\xB6rper.qc' >>'/w/compile.log' "
              "2>&1\necho Fertig $? >'/w/fert.dat'\n");
    EXPECT_EQ(LaunchForScript(ScriptStyle::Batch).Arguments,
              (std::vector<std::string>{"/c", "compile.bat"}));
    EXPECT_EQ(LaunchForScript(ScriptStyle::Posix).Program, "/bin/sh");
}

// The host's own script, started as quarle-qc starts it, runs the compiler
// in the script's folder, where the script's relative paths point, and
// leaves the log and the marker in its own folder: a batch under cmd.exe on
// Windows, a shell script under /bin/sh elsewhere.
TEST(CompileScript, TheHostsScriptRunsTheCompilerInTheScriptsFolder) {
    namespace fs = std::filesystem;
    TempDir dir;
    const std::string work = fs::absolute(dir / "work 1").make_preferred().string();
    fs::create_directory(work);
    const std::string compiler = fs::absolute(QUARLE_FAKE_COMPILER).make_preferred().string();
    dir.Write("model 1/meshes/body.smd", "");
    const std::string qc =
        dir.Write("model 1/robot.qc", "$modelname \"robot.mdl\"\n$cd \"meshes\"\n"
                                      "$body body \"body\"\n"
                                      "$sequence \"idle\" \"body\"\n"
                                      "// fake: say hello\n");
    const ScriptStyle style = HostScriptStyle();
    ASSERT_EQ(WriteCompileScript(work, style, compiler, fs::absolute(qc).make_preferred().string()),
              "");
    ASSERT_TRUE(RunScriptAndWait(work, style));
    const std::vector<std::string> log = ReadLines(work + Sep + LogFileName);
    EXPECT_NE(std::find(log.begin(), log.end(), "hello"), log.end())
        << ReadFile(work + Sep + LogFileName);
    EXPECT_EQ(ReadFile(dir / "model 1/robot.mdl"), "IDST1");
    EXPECT_TRUE(fs::exists(work + Sep + MarkerFileName));
    EXPECT_EQ(MarkerExitStatus(work + Sep + MarkerFileName),
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
    // The reason behind the compiler's banner is an error too, counted
    // with its banner.
    const ClassifiedLog log =
        ClassifyLog({"grabbing terrorist.smd", "0 errors, 0 warnings",
                     "WARNING: sequence idle has no frames", "", "************ ERROR ************",
                     ".//meshes/body.smd doesn't exist", "*********ERROR!!!*************", "",
                     "invalid rendermode", "warning, Error: both", "after it"});
    const std::vector<LogKind> kinds{LogKind::Plain, LogKind::Plain, LogKind::Warning,
                                     LogKind::Plain, LogKind::Error, LogKind::Error,
                                     LogKind::Error, LogKind::Plain, LogKind::Error,
                                     LogKind::Error, LogKind::Plain};
    ASSERT_EQ(log.Lines.size(), kinds.size());
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        EXPECT_EQ(log.Lines[i].Kind, kinds[i]) << log.Lines[i].Text;
    }
    EXPECT_EQ(log.Errors, 3);
    EXPECT_EQ(log.Warnings, 1);
}

// Where the compiler, running in the script's folder, writes the model.
TEST(CompileFiles, TheModelFileIsWhereTheCompilerWritesIt) {
    TempDir dir;
    const std::string qc = dir.Write("m/robot.qc", "");
    const std::string m = std::filesystem::absolute(dir / "m").string();
    struct Case {
        std::string ModelName;
        std::string File;
    };
    const std::vector<Case> cases{
        {"robot.mdl", m + Sep + "robot.mdl"},
        {std::string("out") + Sep + "robot", m + Sep + "out" + Sep + "robot.mdl"},
        {"robot.v2", m + Sep + "robot.mdl"},
        {std::string("my.models") + Sep + "robot", m + Sep + "my.models" + Sep + "robot.mdl"},
        {"", m + Sep + "robot.mdl"},
        {dir / "x.mdl", dir / "x.mdl"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ModelFileOf(c.ModelName, qc), c.File) << c.ModelName;
    }
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
