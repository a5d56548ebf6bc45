#include "document/QcWriter.h"

#include "ScriptTestSupport.h"
#include "document/SafeWrite.h"

#if defined(__unix__) || defined(__APPLE__)
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace quarle {
namespace {

namespace fs = std::filesystem;
using testing::Crlf;
using testing::FillEverything;
using testing::FillRobot;
using testing::LinesOf;
using testing::ReadFile;
using testing::Script;
using testing::TempDir;

std::string Head(std::string_view modelName) {
    return "// QC-File for Half-Life Model: \"" + std::string(modelName) +
           "\"\n// Createt with \"Quarle 0.8.4\"\n" + std::string(MakersNotice) + "\n\n";
}

std::unique_ptr<Document> Robot() {
    auto doc = std::make_unique<Document>();
    FillRobot(*doc, "c:\\m", "c:\\m\\tex");
    return doc;
}

TEST(QcWriter, FreshDocumentWritesAnEmptyBodyGroup) {
    auto doc = std::make_unique<Document>();
    const std::string expected = Head("") + R"(// Pathdata
$modelname ""
$cd ""
$cdtexture ""

// Modelsettings
$bodygroup body
{
}

// Animations
)";
    EXPECT_EQ(Script(*doc), Crlf(expected));
}

TEST(QcWriter, EveryPieceInACommaLocale) {
    // Point form for $scale, $gamma and $attachment; the locale's comma elsewhere.
    auto doc = std::make_unique<Document>();
    FillEverything(*doc, "c:\\m\\robot.mdl", "c:\\m", "c:\\m\\tex");
    const std::string expected = Head("c:\\m\\robot.mdl") + R"(// Pathdata
$modelname "c:\m\robot.mdl"
$cd "c:\m"
$cdtexture "c:\m\tex"

// Modelsettings
$scale 1.5
$gamma 2.2
$externaltextures
$eyeposition 1 -2,5 64
$attachment 0 "Bip01 R Hand" 1.5 0 -2
$attachment 2 "Bone2" 0 0 0
$controller 1 "Bip01 Head" ZR -30 30,5
$controller 3 "Bone3" XR -1,5 0
$bodygroup head
{
studio "head" reverse
}
$bodygroup arms
{
studio "arm" reverse
blank
studio "leg"
}
$bodygroup none
{
}
$texrendermode "b.bmp" masked
$texrendermode "d.bmp" additive

$texturegroup dummi
{
{ "a.bmp" "b.bmp" "c.bmp" "d.bmp" }
{ "a.bmp" "b2.bmp" "c.bmp" "d.bmp" }
{ "a4.bmp" "b.bmp" "c.bmp" "d4.bmp" }
}

// Animations
$sequencegroupsize 64
$sequence "walk" "walk" "walk2" fps 24 loop frame 0 20 origin 1 -2 3 rotate 90 ACT_WALK 1 LX LY LZ scale 2 blend YR -45 45,5 { event 5001 3 "12" } { event 5002 7 } { event 5004 9 "common/a b.wav" }
$sequence "idle" "idle" fps 30 rotate 0,3333333  LX
$sequence "plain" "plain" fps 30 

$sequencegroup seqgroup1
$sequence "g1" "g1" fps 10 
$sequence "late" "late" fps 30 
)";
    EXPECT_EQ(Script(*doc, ','), Crlf(expected));
}

TEST(QcWriter, ExactComparesAndTheTablesEnds) {
    auto doc = std::make_unique<Document>();
    doc->ModelScale = 1.0000001f;
    doc->Gamma = static_cast<f32>(1.8); // a 64-bit 1.8 narrowed is the default float
    AnimRec& a = doc->Anims[0][0];
    a.Name = "a\"b"; // no quotes can hold it: written bare, as the compiler reads it back
    a.Rotate = -0.0f;
    a.Scale = 1.0f;
    EXPECT_EQ(LinesOf(Script(*doc), "$"), "$modelname \"\"\n$cd \"\"\n$cdtexture \"\"\n$scale 1\n"
                                          "$bodygroup body\n$sequence a\"b \"\" fps 30 \n");
    doc->ModelScale = 1.0f;
    doc->Gamma = 1.8000001f;
    EXPECT_EQ(LinesOf(Script(*doc), "$gamma"), "$gamma 1.8\n");
    // A group without a name: the compiler refuses a $bodygroup line
    // without a token.
    doc->BodyGroups[1].Name = "";
    EXPECT_EQ(LinesOf(Script(*doc), "$bodygroup"), "$bodygroup \"\"\n");
    doc->BodyGroups[1].Name = "body";

    // Textures whose variation rows are all blank up to TextureCount: no
    // $texturegroup, not even the base row.
    doc->TextureCount = 3;
    doc->TextureVariations[1] = {"", "a.bmp", "b.bmp", "c.bmp"};
    doc->TextureVariations[2][4] = "beyond.bmp";
    EXPECT_EQ(LinesOf(Script(*doc), "$texturegroup") + LinesOf(Script(*doc), "{ "), "");

    // A lone blank part stands in a block, as "blank" (on a $body line it
    // would name a file); a name with a blank is quoted; counts past the
    // tables write the tables' slots and no more.
    doc->BodyGroups[1].PartCount = 1;
    doc->BodyGroups[1].Parts[1] = Blank;
    doc->BodyGroups[1].Name = "the body";
    EXPECT_EQ(LinesOf(Script(*doc), "$body") + LinesOf(Script(*doc), "blank"),
              "$bodygroup \"the body\"\nblank\n");
    doc->BodyGroupCount = 255;
    doc->BodyGroups[2].PartCount = 255;
    auto count = [&](std::string_view prefix) {
        const std::string lines = LinesOf(Script(*doc), prefix);
        return std::count(lines.begin(), lines.end(), '\n');
    };
    EXPECT_EQ(count("$body"), 32);
    EXPECT_EQ(count("studio"), 16);
}

// Files: the old script stays whole whenever a write fails.
std::vector<std::string> Entries(const TempDir& dir) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(dir.Path())) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

TEST(QcWriterFile, ReplacesTheOldScriptWhollyAndKeepsItsPermissions) {
    TempDir dir;
    const std::string target = dir.Write("robot.qc", std::string(100000, 'x'));
    // As the host keeps them: Windows knows only whether a file is read-only.
    fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    const auto perms = fs::status(target).permissions() & fs::perms::all;
    const auto doc = Robot();
    const WriteResult result = WriteQcFile(*doc, target, ',');
    ASSERT_TRUE(result.Ok) << result.Error;
    EXPECT_EQ(ReadFile(target), Script(*doc, ','));
    EXPECT_EQ(fs::status(target).permissions() & fs::perms::all, perms);

    ASSERT_TRUE(WriteQcFile(*doc, dir / "new.qc", '.').Ok);
    EXPECT_EQ(ReadFile(dir / "new.qc"), Script(*doc));
    EXPECT_EQ(Entries(dir), (std::vector<std::string>{"new.qc", "robot.qc"}));
}

TEST(QcWriterFile, FailedWritesLeaveTheOldFileAndNoTemporary) {
    TempDir dir;
    const auto doc = Robot();
    const std::string old = "// hand-written\r\n$cd \"c:\\old\"\r\n";

    WriteResult result = WriteQcFile(*doc, dir / "gone/robot.qc", '.');
    EXPECT_FALSE(result.Ok);
    EXPECT_NE(result.Error.find("gone"), std::string::npos) << result.Error;

    dir.Write("dir.qc/inside.txt", old);
    EXPECT_FALSE(WriteQcFile(*doc, dir / "dir.qc", '.').Ok);
    EXPECT_EQ(ReadFile(dir / "dir.qc/inside.txt"), old);

    dir.Write("locked.qc", old);
    fs::permissions(dir / "locked.qc", fs::perms::owner_read);
    result = WriteQcFile(*doc, dir / "locked.qc", '.');
    EXPECT_NE(result.Error.find("write-protected"), std::string::npos) << result.Error;
    EXPECT_EQ(ReadFile(dir / "locked.qc"), old);

    EXPECT_FALSE(WriteQcFile(*doc, "", '.').Ok);

    dir.Write("full.qc", old);
#if defined(__unix__) || defined(__APPLE__)
    // A file size limit makes every write past 64 bytes fail, as a full disk would.
    rlimit saved{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &saved), 0);
    rlimit small = saved;
    small.rlim_cur = 64;
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    result = WriteQcFile(*doc, dir / "full.qc", '.');
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_NE(result.Error.find("disk"), std::string::npos) << result.Error;
    EXPECT_EQ(ReadFile(dir / "full.qc"), old);

    // A write-protected folder, for users that it stops (root is not one).
    fs::permissions(dir.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    if (std::ofstream(dir / "probe").is_open()) {
        fs::remove(dir / "probe");
    } else {
        EXPECT_FALSE(WriteQcFile(*doc, dir / "full.qc", '.').Ok);
        EXPECT_EQ(ReadFile(dir / "full.qc"), old);
    }
#endif
    EXPECT_EQ(Entries(dir), (std::vector<std::string>{"dir.qc", "full.qc", "locked.qc"}));
}

TEST(QcWriterFile, ASaveKilledBeforeItsRenameLeavesTheOldScriptAndTheNextSaveCleansUp) {
#if defined(__unix__) || defined(__APPLE__)
    TempDir dir;
    const std::string old = "// hand-written\r\n$cd \"c:\\old\"\r\n";
    const std::string target = dir.Write("robot.qc", old);
    const auto doc = Robot();
    // A save in a process of its own that is killed when all its bytes are
    // written, before they replace anything.
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        WriteFileSafely(target, [&](std::ostream& out) {
            WriteQcScript(*doc, out, '.');
            out.flush();
            raise(SIGKILL);
        });
        _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(ReadFile(target), old);
    EXPECT_EQ(Entries(dir).size(), 2u) << "the killed save's temporary file";

    ASSERT_TRUE(WriteQcFile(*doc, target, '.').Ok);
    EXPECT_EQ(ReadFile(target), Script(*doc));
    EXPECT_EQ(Entries(dir), std::vector<std::string>{"robot.qc"});
#else
    GTEST_SKIP() << "no fork here";
#endif
}

TEST(QcWriterFile, AWorkingFileOfAGivenNameIsWrittenOverThenRenamed) {
    // A language file's "temp.lng", left half written by a killed run.
    TempDir dir;
    dir.Write("temp.lng", std::string(5000, 'z'));
    const std::string target = dir.Write("english.lng", "old");
    SafeWriteOptions options;
    options.Temporary = fs::path("temp.lng");
    ASSERT_TRUE(WriteFileSafely(target, [](std::ostream& out) { out << "new"; }, options));
    EXPECT_EQ(ReadFile(target), "new");
    EXPECT_EQ(Entries(dir), std::vector<std::string>{"english.lng"});
}

} // namespace
} // namespace quarle
