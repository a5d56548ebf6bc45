#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "QcReaderTestSupport.h"

// The tool runs through a POSIX shell.
#ifndef _WIN32
#include <sys/wait.h>

namespace quarle {
namespace {

using testing::ReadFile;
using testing::Smd;
using testing::TempDir;
using testing::WithoutLine;

struct ToolRun {
    int Status = -1;
    std::string Err;
};

std::string Quoted(const std::string& s) {
    std::string q = "'";
    for (char c : s) {
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return q + "'";
}

// Runs quarle-qc roundtrip in folder cwd, with env in front (as "A=b ").
ToolRun Roundtrip(const TempDir& dir, const std::vector<std::string>& args, const std::string& env = "") {
    std::string command = "cd " + Quoted(dir.Path()) + " && " + env + Quoted(QUARLE_QC_TOOL) +
                          " roundtrip";
    for (const std::string& a : args) {
        command += " " + Quoted(a);
    }
    command += " 2>" + Quoted(dir / "stderr.txt");
    ToolRun run;
    const int raw = std::system(command.c_str());
    run.Status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    run.Err = ReadFile(dir / "stderr.txt");
    return run;
}

std::string Crlf(const std::string& lf) {
    std::string text;
    for (char c : lf) {
        text += c == '\n' ? std::string("\r\n") : std::string(1, c);
    }
    return text;
}

// The writer's example script, for a model folder m.
std::string Example(const std::string& m, const std::string& tex) {
    return Crlf("// QC-File for Half-Life Model: \"" + m + "\\robot.mdl\"\n"
                "// Createt with \"Quarle 0.8.4\"\n"
                "// the notice\n"
                "\n"
                "// Pathdata\n"
                "$modelname \"" + m + "\\robot.mdl\"\n"
                "$cd \"" + m + "\"\n"
                "$cdtexture \"" + tex + "\"\n"
                "\n"
                "// Modelsettings\n"
                "$gamma 2.2\n"
                "$attachment 0 \"Bone1\" 1.5 0 0\n"
                "$body head \"head\"\n"
                "$bodygroup arms\n"
                "{\n"
                "studio \"arm\" reverse\n"
                "blank\n"
                "}\n"
                "$texrendermode \"b.bmp\" masked\n"
                "\n"
                "$texturegroup dummi\n"
                "{\n"
                "{ \"a.bmp\" \"b.bmp\" }\n"
                "{ \"c.bmp\" \"b.bmp\" }\n"
                "}\n"
                "\n"
                "// Animations\n"
                "$sequence \"idle\" \"idle\" fps 30 loop ACT_ARM 1\n"
                "\n"
                "$sequencegroup seqgroup1\n"
                "$sequence \"walk\" \"walk\" fps 24 \n");
}

TEST(RoundtripCommand, TheWritersExampleComesBackAsItself) {
    TempDir dir;
    dir.Write("m/head.smd", Smd({"a.bmp"}));
    dir.Write("m/arm.smd", Smd({"b.bmp"}));
    dir.Write("m/tex/a.bmp", "BM");
    // Paths of this machine in the script; the model name keeps the backslash.
    const std::string in = dir.Write("in.qc", Example(dir / "m", dir / "m/tex"));
    const ToolRun run = Roundtrip(dir, {in, dir / "out.qc"});
    EXPECT_EQ(run.Status, 0) << run.Err;
    EXPECT_EQ(run.Err, "");
    const std::string out = ReadFile(dir / "out.qc");
    EXPECT_EQ(WithoutLine(out, 3), WithoutLine(ReadFile(in), 3));

    // The writer's own output is a fixed point, notice included.
    EXPECT_EQ(Roundtrip(dir, {dir / "out.qc", dir / "again.qc", "--missing=refuse"}).Status, 0);
    EXPECT_EQ(ReadFile(dir / "again.qc"), out);
    EXPECT_FALSE(std::filesystem::exists(dir / "loadbuffer.dat"));
}

TEST(RoundtripCommand, KeepsMissingFoldersAndPartsButNotTheirTextures) {
    TempDir dir;
    const std::string in = dir.Write("in.qc", Example("c:\\m", "c:\\m\\tex"));
    const ToolRun run = Roundtrip(dir, {in, dir / "out.qc", "--missing=keep"});
    EXPECT_EQ(run.Status, 0);
    // No part file to scan: the render mode and the texture group are lost.
    EXPECT_NE(run.Err.find("part file is missing"), std::string::npos) << run.Err;
    std::string expected = Example("c:\\m", "c:\\m\\tex");
    const std::size_t from = expected.find("$texrendermode");
    const std::size_t to = expected.find("\r\n// Animations");
    expected.erase(from, to - from);
    EXPECT_EQ(WithoutLine(ReadFile(dir / "out.qc"), 3), WithoutLine(expected, 3));
}

TEST(RoundtripCommand, AForeignScriptBecomesWhatTheDialectKeeps) {
    TempDir dir;
    const std::string wild = std::string(QUARLE_TEST_DATA) + "/qc/wild";
    const ToolRun run = Roundtrip(dir, {wild + "/wild.qc", dir / "out.qc"});
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Err, "");
    EXPECT_EQ(WithoutLine(ReadFile(dir / "out.qc"), 3),
              WithoutLine(ReadFile(wild + "/wild.expected.qc"), 3));
}

TEST(RoundtripCommand, RefusalsAndUnusableFilesGiveTheirExitStatus) {
    TempDir dir;
    const std::string wild = std::string(QUARLE_TEST_DATA) + "/qc/wild/wild.qc";
    ToolRun run = Roundtrip(dir, {wild, dir / "out.qc", "--missing=refuse"});
    EXPECT_EQ(run.Status, 3);
    EXPECT_NE(run.Err.find("refused"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(dir / "out.qc"));

    run = Roundtrip(dir, {dir / "missing.qc", dir / "out.qc"});
    EXPECT_EQ(run.Status, 2);
    EXPECT_NE(run.Err.find("cannot be opened"), std::string::npos);

    const std::string in = dir.Write("in.qc", "$gamma 2\n");
    EXPECT_EQ(Roundtrip(dir, {in, dir / "no/folder/out.qc"}).Status, 2);
    EXPECT_EQ(Roundtrip(dir, {in}).Status, 2);
    EXPECT_EQ(Roundtrip(dir, {in, dir / "out.qc", "--missing=ask"}).Status, 2);
    EXPECT_FALSE(std::filesystem::exists(dir / "out.qc"));
}

TEST(RoundtripCommand, NumbersTakeAPointWhateverTheLocaleSays) {
    TempDir dir;
    const std::string in = dir.Write("in.qc", "$eyeposition 1.5 0 0\n$gamma 2.5\n"
                                              "$sequence \"a\" \"a\" rotate 1.5 scale 0.5\n");
    const ToolRun run = Roundtrip(dir, {in, dir / "out.qc"},
                              "LC_ALL=de_DE.UTF-8 LC_NUMERIC=de_DE.UTF-8 LANG=de_DE.UTF-8 ");
    EXPECT_EQ(run.Status, 0);
    const std::string out = ReadFile(dir / "out.qc");
    EXPECT_NE(out.find("$eyeposition 1.5 0 0\r\n"), std::string::npos) << out;
    EXPECT_NE(out.find("$gamma 2.5\r\n"), std::string::npos);
    EXPECT_NE(out.find("rotate 1.5  scale 0.5\r\n"), std::string::npos);
}

} // namespace
} // namespace quarle
#endif
