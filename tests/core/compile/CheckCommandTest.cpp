// quarle-qc check: a script loaded as the editor loads it, checked, the rows
// printed in the texts of a language file, the verdict in the exit status.
#include "CompileTestSupport.h"
#include "compile/CompileFiles.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>

namespace quarle::compile {
namespace {

using testing::ReadFile;
using testing::TempDir;
using testing::WriteFile;

#ifndef _WIN32
struct ToolRun {
    int Status = -1;
    std::string Out;
};

ToolRun RunTool(const std::string& arguments) {
    const std::string command = ShellQuote(QUARLE_QC_TOOL) + " check " + arguments + " 2>/dev/null";
    ToolRun run;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) {
        return run;
    }
    char buffer[512];
    while (std::fgets(buffer, sizeof buffer, pipe)) {
        run.Out += buffer;
    }
    const int status = pclose(pipe);
    run.Status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

// A language file whose text of index i reads "text i".
std::string LanguageFile(const TempDir& dir) {
    std::string lng =
        "Version = 0.8.4\r\nInfoForThis = Test\r\n\r\nGlobal Strings\r\nCount = 93\r\n";
    for (int i = 1; i <= 93; ++i) {
        lng += "S" + std::to_string(i) + " = text " + std::to_string(i) + "\r\n";
    }
    const std::string path = dir / "test.lng";
    WriteFile(path, lng);
    return path;
}

class CheckCommandTest : public ::testing::Test {
protected:
    CheckCommandTest() {
        WriteFile(dir_ / "robot_ref.smd", "version 1\nnodes\nend\ntriangles\nend\n");
        lng_ = LanguageFile(dir_);
    }

    std::string Script(const std::string& body) {
        const std::string qc = dir_ / "robot.qc";
        WriteFile(qc, "$modelname \"" + (dir_ / "robot.mdl") + "\"\r\n$cd \"" + dir_.Path() +
                          "\"\r\n$cdtexture \"" + dir_.Path() + "\"\r\n" + body);
        return qc;
    }

    TempDir dir_;
    std::string lng_;
};

TEST_F(CheckCommandTest, ModelWithoutAnimationsPassesAndItsScriptStaysAsItWas) {
    const std::string qc = Script("$body body \"robot_ref\"\r\n");
    const std::string before = ReadFile(qc);
    const ToolRun run = RunTool(ShellQuote(qc) + " --language " + ShellQuote(lng_));
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Out, "text 38\n"); // IDS_WARNING_IDLEANIMATION
    EXPECT_EQ(ReadFile(qc), before);
}

TEST_F(CheckCommandTest, ErrorsGiveStatusOneAndRowsInTheirOrder) {
    const std::string qc = Script("$bodygroup arms\r\n{\r\nblank\r\n}\r\n"
                                  "$sequence walk \"robot_ref\" fps 0 ACT_WALK\r\n");
    const ToolRun run = RunTool(ShellQuote(qc) + " --language " + ShellQuote(lng_));
    EXPECT_EQ(run.Status, 1);
    // The only group holds a blank part: no reference; then the animation's two warnings.
    EXPECT_EQ(run.Out, "text 37\n"
                       "text 44 walk text 45\n"
                       "text 46 walk\n");

    const ToolRun compiler = RunTool(ShellQuote(qc) + " --language " + ShellQuote(lng_) +
                                     " --studiomdl " + ShellQuote(dir_ / "missing.exe"));
    EXPECT_EQ(compiler.Status, 1);
    EXPECT_EQ(compiler.Out.substr(0, compiler.Out.find('\n')), "text 29");

    // Usage errors and files that cannot be read.
    EXPECT_EQ(RunTool("").Status, 2);
    EXPECT_EQ(RunTool(ShellQuote(qc) + " --bogus").Status, 2);
    EXPECT_EQ(RunTool(ShellQuote(qc) + " --language " + ShellQuote(dir_ / "none.lng")).Status, 2);
    EXPECT_EQ(RunTool(ShellQuote(dir_ / "none.qc") + " --language " + ShellQuote(lng_)).Status, 2);
}

#endif

} // namespace
} // namespace quarle::compile
