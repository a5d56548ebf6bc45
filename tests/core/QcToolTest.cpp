// quarle-qc, run as the built tool: scan, roundtrip and check.
#include "ScriptTestSupport.h"

#include <FakeCompiler.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarle {
namespace {

using testing::FillRobot;
using testing::LinesOf;
using testing::ReadFile;
using testing::RunTool;
using testing::Script;
using testing::Smd;
using testing::TempDir;
using testing::ToolRun;

TEST(ScanCommand, ReportsKindLastFrameAndTexturesOfEachSmdFileInNameOrder) {
    ToolRun run = RunTool({"scan", QUARLE_TEST_DATA "/smd/model"});
    EXPECT_EQ(run.Status, 0) << run.Err;
    EXPECT_EQ(run.Out, "ref.smd reference 0 2\n"
                       "  Skin.bmp\n"
                       "  Arm.bmp\n"
                       "run.smd animation 12 0\n");
    EXPECT_EQ(run.Err, "");

    // Files in any case of .smd, folders left out, more textures than the
    // editor's tables hold.
    TempDir dir;
    std::filesystem::create_directory(dir / "folder.smd");
    dir.Write("b.SMD", "nodes\r\ntime 3\r\ntime 7");
    dir.Write("A.smd", "/*\r\ntriangles\r\n*/\r\n");
    dir.Write("c.smd", "");
    dir.Write("d.txt", "triangles\n");
    dir.Write("e.smd", "triangles\nx.bmp\nX.BMP\n" + std::string(11, 'y') + ".bmp\n");
    dir.Write("f.smd",
              testing::Repeat(0, 10, [](auto i) { return "triangles\nt" + i + ".bmp\n"; }));
    run = RunTool({"scan", dir.Path()});
    EXPECT_EQ(run.Status, 0) << run.Err;
    EXPECT_EQ(run.Out, "A.smd animation - 0\n"
                       "b.SMD animation 7 0\n"
                       "c.smd animation - 0\n"
                       "e.smd reference - 2\n"
                       "  x.bmp\n"
                       "  yyyyyyyyyyy.bmp\n"
                       "f.smd reference - 11\n" +
                           testing::Repeat(0, 10, [](auto i) { return "  t" + i + ".bmp\n"; }));

    // What is no readable folder.
    run = RunTool({"scan", QUARLE_TEST_DATA "/smd/no-such-folder"});
    EXPECT_EQ(run.Status, 2);
    EXPECT_EQ(run.Out, "");
    EXPECT_NE(run.Err.find("no-such-folder"), std::string::npos) << run.Err;
    EXPECT_EQ(RunTool({"scan", QUARLE_TEST_DATA "/smd/model/ref.smd"}).Status, 2);
    EXPECT_EQ(RunTool({"scan"}).Status, 2);
    EXPECT_EQ(RunTool({"scan", "a", "b"}).Status, 2);
}

// The writer's example script, for the folders m and tex.
std::string Example(const std::string& m, const std::string& tex) {
    auto doc = std::make_unique<Document>();
    FillRobot(*doc, m, tex);
    return Script(*doc);
}

TEST(RoundtripCommand, TheWritersExampleComesBackAsItself) {
    TempDir dir;
    dir.Write("m/head.smd", Smd({"a.bmp"}));
    dir.Write("m/arm.smd", Smd({"b.bmp"}));
    dir.Write("m/tex/a.bmp", "BM");
    // Paths of this machine in the script; the model name keeps its backslash.
    const std::string in = dir.Write("in.qc", Example(dir / "m", dir / "m/tex"));
    // Nothing is missing, so refusing every question changes nothing.
    const ToolRun run = RunTool({"roundtrip", in, dir / "out.qc", "--missing=refuse"}, dir.Path());
    EXPECT_EQ(run.Status, 0) << run.Err;
    EXPECT_EQ(run.Err, "");
    EXPECT_EQ(ReadFile(dir / "out.qc"), ReadFile(in));
    EXPECT_FALSE(std::filesystem::exists(dir / "loadbuffer.dat"));
}

TEST(RoundtripCommand, KeepsMissingFoldersPartsAndIncludes) {
    TempDir dir;
    // No part file to scan: the render mode and the texture group stay as
    // they stand. An include that cannot be read stays its line, named.
    const std::string script = Example("c:\\m", "c:\\m\\tex") + "$include \"gone.qci\"\r\n";
    const std::string in = dir.Write("in.qc", script);
    const ToolRun run = RunTool({"roundtrip", in, dir / "out.qc", "--missing=keep"}, dir.Path());
    EXPECT_EQ(run.Status, 0);
    EXPECT_NE(run.Err.find("part file is missing"), std::string::npos) << run.Err;
    EXPECT_NE(run.Err.find("warning: in.qc, line 32: $include \"gone.qci\" (An included file "
                           "cannot be opened"),
              std::string::npos)
        << run.Err;
    EXPECT_EQ(ReadFile(dir / "out.qc"), script);

    // Written over itself, the script is first kept beside it.
    const ToolRun over = RunTool({"roundtrip", in, in}, dir.Path());
    EXPECT_EQ(over.Status, 0);
    EXPECT_NE(over.Err.find("kept as " + in + ".orig\n"), std::string::npos) << over.Err;
    EXPECT_EQ(ReadFile(in + ".orig"), script);
    EXPECT_EQ(ReadFile(in), script);
}

// A file that is no script is refused with what it looks like, and nothing
// is written.
TEST(RoundtripCommand, ABinaryOrUtf16FileIsNoScript) {
    TempDir dir;
    const struct {
        std::string bytes;
        std::string error;
    } files[] = {
        {std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), "holds NUL bytes"},
        {std::string("\xFF\xFE$\0g\0", 6), "is UTF-16 text"},
        {"\xFE\xFF\0$\0g", "is UTF-16 text"},
    };
    for (const auto& file : files) {
        const std::string in = dir.Write("in.qc", file.bytes);
        const ToolRun run = RunTool({"roundtrip", in, dir / "out.qc"}, dir.Path());
        EXPECT_EQ(run.Status, 1);
        EXPECT_TRUE(run.Err.starts_with("error: " + in + ": The file " + file.error)) << run.Err;
        EXPECT_FALSE(std::filesystem::exists(dir / "out.qc"));
    }
}

TEST(RoundtripCommand, RefusalsAndUnusableFilesGiveTheirExitStatus) {
    TempDir dir;
    const std::string wild =
        std::filesystem::absolute(QUARLE_TEST_DATA "/qc/wild/wild.qc").make_preferred().string();
    const std::string out = dir / "out.qc";
    ToolRun run = RunTool({"roundtrip", wild, out, "--missing=refuse"}, dir.Path());
    EXPECT_EQ(run.Status, 3);
    EXPECT_NE(run.Err.find("refused"), std::string::npos);

    run = RunTool({"roundtrip", dir / "missing.qc", out}, dir.Path());
    EXPECT_EQ(run.Status, 2);
    EXPECT_NE(run.Err.find("cannot be opened"), std::string::npos);

    const std::string in = dir.Write("in.qc", "$gamma 2\n");
    EXPECT_EQ(RunTool({"roundtrip", in, dir / "no/folder/out.qc"}).Status, 2);
    EXPECT_EQ(RunTool({"roundtrip", in}).Status, 2);
    EXPECT_EQ(RunTool({"roundtrip", in, out, "--missing=ask"}).Status, 2);
    EXPECT_FALSE(std::filesystem::exists(out));
}

// check, skeleton and compile take one script and their own options; any
// other argument ends the run with the command's usage, before a file is read.
TEST(ScriptCommands, ArgumentsTheyDoNotTakeGiveTheUsage) {
    TempDir dir;
    const std::string in = dir.Write("in.qc", "$gamma 2\n");
    const std::vector<std::vector<std::string>> refused = {
        {"check"},
        {"check", in, "--language"},
        {"check", in, in},
        {"check", in, "--compiler", "studiomdl"},
        {"skeleton", in, "--for", "bone"},
        {"skeleton", in, "--for", "bone", "--for", "attachment"},
        {"skeleton", "--for", "controller"},
        {"compile", in, "--ignore-checks", "--studiomdl", "studiomdl"},
        {"compile", "--ignore-checks", in, "--compiler"},
    };
    for (const std::vector<std::string>& args : refused) {
        const ToolRun run = RunTool(args, dir.Path());
        EXPECT_EQ(run.Status, 2) << args.size();
        EXPECT_EQ(run.Err.rfind("usage: quarle-qc " + args[0], 0), 0u) << run.Err;
    }
}

TEST(RoundtripCommand, NumbersTakeAPointWhateverTheLocaleSays) {
    TempDir dir;
    const std::string in = dir.Write("in.qc", "$eyeposition 1.5 0 0\n$gamma 2.5\n"
                                              "$sequence \"a\" \"a\" rotate 1.5 scale 0.5\n");
    const ToolRun run = RunTool({"roundtrip", in, dir / "out.qc"}, dir.Path(),
                                "LC_ALL=de_DE.UTF-8 LC_NUMERIC=de_DE.UTF-8 LANG=de_DE.UTF-8 ");
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(ReadFile(dir / "out.qc"), ReadFile(in));
}

// quarle-qc check: the script loaded as the editor loads it, the rows printed
// in the texts of a language file, the verdict in the exit status.
class CheckCommand : public ::testing::Test {
protected:
    CheckCommand() {
        dir_.Write("robot_ref.smd", "version 1\nnodes\nend\ntriangles\nend\n");
        // A language file whose text of index i reads "text i".
        std::string lng =
            "Version = 0.8.4\r\nInfoForThis = Test\r\n\r\nGlobal Strings\r\nCount = 93\r\n";
        for (int i = 1; i <= 93; ++i) {
            lng += "S" + std::to_string(i) + " = text " + std::to_string(i) + "\r\n";
        }
        lng_ = dir_.Write("test.lng", lng);
    }

    std::string Qc(const std::string& body) {
        return dir_.Write("robot.qc", "$modelname \"" + dir_ / "robot.mdl" + "\"\r\n$cd \"" +
                                          dir_.Path() + "\"\r\n$cdtexture \"" + dir_.Path() +
                                          "\"\r\n" + body);
    }

    TempDir dir_;
    std::string lng_;
};

TEST_F(CheckCommand, ModelWithoutAnimationsPassesAndItsScriptStaysAsItWas) {
    const std::string qc = Qc("$body body \"robot_ref\"\r\n");
    const std::string before = ReadFile(qc);
    const ToolRun run = RunTool({"check", qc, "--language", lng_});
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Out, "warning: text 38\n"); // IDS_WARNING_IDLEANIMATION
    EXPECT_EQ(ReadFile(qc), before);
}

TEST_F(CheckCommand, ErrorsGiveStatusOneAndRowsInTheirOrder) {
    const std::string qc = Qc("$bodygroup arms\r\n{\r\nblank\r\n}\r\n"
                              "$sequence walk \"robot_ref\" fps 0 ACT_WALK\r\n");
    const ToolRun run = RunTool({"check", qc, "--language", lng_});
    EXPECT_EQ(run.Status, 1);
    // The only group holds a blank part: no reference; then the animation's
    // warning; then the saved script, where the compiler stops at the
    // activity without its weight.
    EXPECT_EQ(run.Out, "error: text 37\n"
                       "warning: text 44 walk text 45\n"
                       "error: robot.qc, line 8: The activity ACT_WALK has no weight behind it; the "
                       "compiler stops here.\n");

    const ToolRun compiler =
        RunTool({"check", qc, "--language", lng_, "--studiomdl", dir_ / "missing.exe"});
    EXPECT_EQ(compiler.Status, 1);
    EXPECT_EQ(compiler.Out.substr(0, compiler.Out.find('\n')), "error: text 29");

    // Usage errors and files that cannot be read.
    EXPECT_EQ(RunTool({"check"}).Status, 2);
    EXPECT_EQ(RunTool({"check", qc, "--bogus"}).Status, 2);
    EXPECT_EQ(RunTool({"check", qc, "--language", dir_ / "none.lng"}).Status, 2);
    EXPECT_EQ(RunTool({"check", dir_ / "none.qc", "--language", lng_}).Status, 2);
}

// quarle-qc compile: the checks, then the compiler in the script's folder on
// the script as it is on disk, started from another folder; the exit status
// says whether the model was written.
TEST(CompileCommand, ChecksThenTheCompilerInTheScriptsFolder) {
    TempDir dir;
    const std::string skeleton = "version 1\nnodes\n0 \"root\" -1\nend\n"
                                 "skeleton\ntime 0\n0 0 0 0 0 0 0\nend\n";
    dir.Write("src/meshes/robot_ref.smd", skeleton + "triangles\nend\n");
    dir.Write("src/meshes/walk.smd", skeleton);
    std::string lng =
        "Version = 0.8.4\r\nInfoForThis = Test\r\n\r\nGlobal Strings\r\nCount = 93\r\n";
    for (int i = 1; i <= 93; ++i) {
        lng += "S" + std::to_string(i) + " = text " + std::to_string(i) + "\r\n";
    }
    const std::string language = dir.Write("test.lng", lng);
    dir.Write("elsewhere/.keep", "");
    const std::string compiler = std::filesystem::absolute(QUARLE_FAKE_COMPILER).string();
    const std::string head = "$modelname \"robot.mdl\"\n$cd \"meshes\"\n$cdtexture \"meshes\"\n"
                             "$body body \"robot_ref\"\n";
    const std::string walk = "$sequence walk \"walk\"\n";
    struct Case {
        const char* Name;
        std::string Lines;
        std::vector<std::string> Options;
        int Status;
        std::vector<std::string> Rows; // rows that must stand in the output, in this order
    };
    const std::vector<Case> cases{
        {"relative paths",
         walk,
         {},
         0,
         {"text 24", "grabbing meshes/robot_ref.smd", "text 26 (0 text 27)"}},
        // Frames 5 to 2: an error of the checks (text 47), which stops the
        // run unless it is ignored.
        {"checks stop it",
         "$sequence walk \"walk\" frame 5 2\n",
         {},
         1,
         {"error: text 47 walk", "text 25", "text 26 (1 text 27)"}},
        {"checks ignored",
         "$sequence walk \"walk\" frame 5 2\n",
         {"--ignore-checks"},
         0,
         {"error: text 47 walk", "text 24", "text 26 (1 text 27)"}},
        {"the compiler refuses",
         walk + "// fake: say ************ ERROR ************\n// fake: say bad thing\n"
                "// fake: exit 1\n// fake: nomdl\n",
         {},
         1,
         {"error: ************ ERROR ************", "error: bad thing", "text 26 (1 text 27)"}},
        // No idle line is appended, so the compiler finds no sequence.
        {"no animation",
         "",
         {},
         1,
         {"warning: text 38", "error: ERROR: model has no sequences", "text 26 (1 text 27)"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        std::filesystem::remove(dir / "src/robot.mdl");
        const std::string qc = dir.Write("src/robot.qc", head + c.Lines);
        std::vector<std::string> args{"compile", qc,           "--compiler",
                                      compiler,  "--language", language};
        args.insert(args.end(), c.Options.begin(), c.Options.end());
        const ToolRun run = RunTool(args, dir / "elsewhere");
        EXPECT_EQ(run.Status, c.Status) << run.Out << run.Err;
        std::size_t at = 0;
        for (const std::string& row : c.Rows) {
            const std::size_t found = ("\n" + run.Out).find("\n" + row, at);
            EXPECT_NE(found, std::string::npos) << row << " in\n" << run.Out;
            at = found == std::string::npos ? at : found + 1;
        }
        EXPECT_EQ(std::filesystem::exists(dir / "src/robot.mdl"), c.Status == 0);
        EXPECT_EQ(ReadFile(qc), head + c.Lines) << "the script is compiled as it is";
    }
#ifndef _WIN32
    // Without --compiler, studiomdl on the search path.
    dir.Write("src/robot.qc", head + walk);
    std::filesystem::create_directories(dir / "bin");
    std::filesystem::copy_file(compiler, dir / "bin/studiomdl");
    const ToolRun found = RunTool({"compile", dir / "src/robot.qc", "--language", language},
                                  dir / "elsewhere", "PATH=" + dir / "bin" + ":\"$PATH\" ");
    EXPECT_EQ(found.Status, 0) << found.Out << found.Err;
#endif
    EXPECT_EQ(RunTool({"compile"}).Status, 2);
    EXPECT_EQ(RunTool({"compile", dir / "src/robot.qc", "--bogus"}).Status, 2);
}

} // namespace
} // namespace quarle
