#include "document/QcWriter.h"

#if defined(__unix__) || defined(__APPLE__)
#include <csignal>
#include <sys/resource.h>
#endif

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace quarle {
namespace {

namespace fs = std::filesystem;

// Golden texts are written with \n here; the script has CR LF.
std::string Crlf(std::string_view text) {
    std::string result;
    for (char c : text) {
        if (c == '\n') {
            result += '\r';
        }
        result += c;
    }
    return result;
}

std::string Script(const Document& doc, char separator = '.') {
    std::ostringstream out;
    WriteQcScript(doc, out, separator);
    return out.str();
}

std::vector<std::string> Lines(const std::string& script) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end; (end = script.find("\r\n", start)) != std::string::npos;
         start = end + 2) {
        lines.push_back(script.substr(start, end - start));
    }
    EXPECT_EQ(start, script.size()) << "the script does not end in CR LF";
    return lines;
}

bool HasLine(const Document& doc, const std::string& line, char separator = '.') {
    const auto lines = Lines(Script(doc, separator));
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

std::string Head(std::string_view modelName) {
    return "// QC-File for Half-Life Model: \"" + std::string(modelName) +
           "\"\n// Createt with \"Quarle 0.8.4\"\n" + std::string(MakersNotice) + "\n\n";
}

std::unique_ptr<Document> Robot() {
    auto doc = std::make_unique<Document>();
    doc->ModelName = "c:\\m\\robot.mdl";
    doc->ModelPath = "c:\\m";
    doc->TexturePath = "c:\\m\\tex";
    doc->Gamma = 2.2f;
    doc->Attachments[0] = {1, 1.5f, 0.0f, 0.0f};
    doc->AttachmentBones[0] = "Bone1";
    doc->BodyGroupCount = 2;
    doc->BodyGroups[1].Name = "head";
    doc->BodyGroups[1].PartCount = 1;
    doc->BodyGroups[1].Parts[1] = "head";
    doc->BodyGroups[2].Name = "arms";
    doc->BodyGroups[2].PartCount = 2;
    doc->BodyGroups[2].Parts[1] = "arm";
    doc->BodyGroups[2].Reverse[1] = -1;
    doc->BodyGroups[2].Parts[2] = Blank;
    doc->TextureModes[2] = {"b.bmp", 1};
    doc->TextureCount = 2;
    doc->TextureVariations[1][1] = "a.bmp";
    doc->TextureVariations[1][2] = "b.bmp";
    doc->TextureVariations[2][1] = "c.bmp";
    AnimRec& idle = doc->Anims[0][0];
    idle.Name = "idle";
    idle.SmdFile = "idle";
    idle.Loop = 1;
    idle.ActivityId = "ACT_ARM 1";
    AnimRec& walk = doc->Anims[1][0];
    walk.Name = "walk";
    walk.SmdFile = "walk";
    walk.Fps = 24;
    return doc;
}

TEST(QcWriter, WholeScriptOfARobot) {
    // The last line ends in a blank: the empty activity keeps its place.
    const std::string expected = Head("c:\\m\\robot.mdl") + R"(// Pathdata
$modelname "c:\m\robot.mdl"
$cd "c:\m"
$cdtexture "c:\m\tex"

// Modelsettings
$gamma 2.2
$attachment 0 "Bone1" 1.5 0 0
$body head "head"
$bodygroup arms
{
studio "arm" reverse
blank
}
$texrendermode "b.bmp" masked

$texturegroup dummi
{
{ "a.bmp" "b.bmp" }
{ "c.bmp" "b.bmp" }
}

// Animations
$sequence "idle" "idle" fps 30 loop ACT_ARM 1

$sequencegroup seqgroup1
$sequence "walk" "walk" fps 24 
)";
    EXPECT_EQ(Script(*Robot()), Crlf(expected));
    // With a comma locale nothing changes: every number here is whole or in point form.
    EXPECT_EQ(Script(*Robot(), ','), Crlf(expected));
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

TEST(QcWriter, PointFormAndLocaleFormPerField) {
    auto doc = std::make_unique<Document>();
    doc->ModelScale = 2.5f;
    doc->Gamma = 1.5f;
    doc->EyesOn = 1;
    doc->EyeX = 0.5f;
    doc->EyeY = -1.25f;
    doc->EyeZ = 60.0f;
    doc->Attachments[3] = {1, 0.5f, -2.5f, 10.0f};
    doc->AttachmentBones[3] = "Bip01 R Hand";
    doc->Controllers[1] = {1, 2.0f, -22.5f, 45.5f};
    doc->ControllerBones[1] = "Bip01 Head";
    AnimRec& a = doc->Anims[0][0];
    a.Name = "swim";
    a.SmdFile = "swim";
    a.Rotate = 90.5f;
    a.Scale = 0.75f;
    a.BlendOn = 1;
    a.BlendFile = "swim2";
    a.BlendAxis = 1.0f;
    a.BlendMin = -0.5f;
    a.BlendMax = 0.5f;

    EXPECT_TRUE(HasLine(*doc, "$scale 2.5", ','));
    EXPECT_TRUE(HasLine(*doc, "$gamma 1.5", ','));
    EXPECT_TRUE(HasLine(*doc, "$eyeposition 0,5 -1,25 60", ','));
    EXPECT_TRUE(HasLine(*doc, "$attachment 3 \"Bip01 R Hand\" 0.5 -2.5 10", ','));
    EXPECT_TRUE(HasLine(*doc, "$controller 1 \"Bip01 Head\" ZR -22,5 45,5", ','));
    EXPECT_TRUE(HasLine(*doc,
                        "$sequence \"swim\" \"swim\" \"swim2\" fps 30 rotate 90,5  scale 0,75 "
                        "blend YR -0,5 0,5",
                        ','));
    // On a point locale both forms are the same text.
    EXPECT_TRUE(HasLine(*doc, "$eyeposition 0.5 -1.25 60", '.'));
    EXPECT_TRUE(HasLine(*doc, "$controller 1 \"Bip01 Head\" ZR -22.5 45.5", '.'));
    // The order of the model settings, with external textures.
    doc->ExternalTextures = 1;
    const std::string script = Script(*doc);
    const std::string settings = "// Modelsettings\r\n$scale 2.5\r\n$gamma 1.5\r\n"
                                 "$externaltextures\r\n$eyeposition 0.5 -1.25 60\r\n"
                                 "$attachment 3 \"Bip01 R Hand\" 0.5 -2.5 10\r\n"
                                 "$controller 1 \"Bip01 Head\" ZR -22.5 45.5\r\n"
                                 "$bodygroup body\r\n";
    EXPECT_NE(script.find(settings), std::string::npos) << script;
}

TEST(QcWriter, ExactComparesForScaleGammaRotate) {
    auto doc = std::make_unique<Document>();
    doc->ModelScale = 1.0000001f;
    EXPECT_TRUE(HasLine(*doc, "$scale 1"));
    doc->ModelScale = 1.0f;
    doc->Gamma = static_cast<f32>(1.8); // a 64-bit 1.8 narrowed is the same float
    const std::string script = Script(*doc);
    EXPECT_EQ(script.find("$scale"), std::string::npos);
    EXPECT_EQ(script.find("$gamma"), std::string::npos);
    doc->Gamma = 1.8000001f;
    EXPECT_TRUE(HasLine(*doc, "$gamma 1.8"));

    AnimRec& a = doc->Anims[0][0];
    a.Name = "idle";
    a.SmdFile = "idle";
    a.Rotate = -0.0f;
    a.Scale = 1.0f;
    EXPECT_TRUE(HasLine(*doc, "$sequence \"idle\" \"idle\" fps 30 "));
}

TEST(QcWriter, SequenceLinePieces) {
    auto doc = std::make_unique<Document>();
    AnimRec& a = doc->Anims[0][0];
    a.Name = "idle";
    a.SmdFile = "idle";
    a.LX = 1;
    EXPECT_TRUE(HasLine(*doc, "$sequence \"idle\" \"idle\" fps 30  LX"));

    AnimRec& w = doc->Anims[0][1];
    w.Name = "walk";
    w.SmdFile = "walk";
    w.BlendOn = 1;
    w.BlendFile = "walk2";
    w.Fps = 24;
    w.Loop = 1;
    w.FrameLimit = 1;
    w.FrameStart = 0;
    w.FrameEnd = 20;
    w.OriginOn = 1;
    w.OriginX = 1;
    w.OriginY = 2;
    w.OriginZ = 3;
    w.Rotate = 90.0f;
    w.ActivityId = "ACT_ARM 1";
    w.LX = 1;
    w.LY = 1;
    w.LZ = 1;
    w.Scale = 2.0f;
    w.BlendAxis = 0.0f;
    w.BlendMin = -45.0f;
    w.BlendMax = 45.0f;
    w.EventCount = 2;
    w.Events[1] = {3, 5001, "12"};
    w.Events[2] = {7, 5002, ""};
    EXPECT_TRUE(HasLine(*doc, "$sequence \"walk\" \"walk\" \"walk2\" fps 24 loop frame 0 20 "
                              "origin 1 2 3 rotate 90 ACT_ARM 1 LX LY LZ scale 2 blend XR -45 45 "
                              "{ event 5001 3 \"12\" } { event 5002 7 }"));

    // A blend file without BlendOn is not written; events beyond EventCount neither.
    w.BlendOn = 0;
    w.EventCount = 1;
    w.Events[2].Parameter = "x";
    EXPECT_TRUE(HasLine(*doc, "$sequence \"walk\" \"walk\" fps 24 loop frame 0 20 origin 1 2 3 "
                              "rotate 90 ACT_ARM 1 LX LY LZ scale 2 { event 5001 3 \"12\" }"));
    // Names are written as they stand, quotes and all.
    w.Name = "a\"b";
    w.SmdFile = "";
    EXPECT_NE(Script(*doc).find("$sequence \"a\"b\" \"\" fps 24"), std::string::npos);
}

TEST(QcWriter, SequenceGroupsAndSlots) {
    auto doc = std::make_unique<Document>();
    auto use = [&](int g, int s, const std::string& name) {
        doc->Anims[static_cast<std::size_t>(g)][static_cast<std::size_t>(s)].Name = name;
        doc->Anims[static_cast<std::size_t>(g)][static_cast<std::size_t>(s)].SmdFile = name;
    };
    use(0, 0, "a");
    use(0, 100, "b");
    use(0, 101, "never"); // beyond the written slots
    use(2, 3, "c");       // group 2 without slot 0: no seqgroup line of its own
    use(3, 0, "d");
    use(10, 0, "e");
    doc->SequenceGroupSize = 64;
    const std::string expected = R"(// Animations
$sequencegroupsize 64
$sequence "a" "a" fps 30 
$sequence "b" "b" fps 30 
$sequence "c" "c" fps 30 

$sequencegroup seqgroup3
$sequence "d" "d" fps 30 

$sequencegroup seqgroup10
$sequence "e" "e" fps 30 
)";
    const std::string script = Script(*doc);
    EXPECT_EQ(script.substr(script.find("// Animations")), Crlf(expected));
    doc->SequenceGroupSize = 0;
    EXPECT_EQ(Script(*doc).find("$sequencegroupsize"), std::string::npos);
}

TEST(QcWriter, BodyGroups) {
    auto doc = std::make_unique<Document>();
    doc->BodyGroupCount = 3;
    doc->BodyGroups[1] = {};
    doc->BodyGroups[1].Name = "solo";
    doc->BodyGroups[1].PartCount = 1;
    doc->BodyGroups[1].Parts[1] = "solo";
    doc->BodyGroups[1].Reverse[1] = -1; // lost in a $body line
    doc->BodyGroups[2].Name = "empty";
    doc->BodyGroups[2].PartCount = 1;
    doc->BodyGroups[2].Parts[1] = Blank;
    doc->BodyGroups[3].Name = "pair";
    doc->BodyGroups[3].PartCount = 2;
    doc->BodyGroups[3].Parts[1] = "solo";
    doc->BodyGroups[3].Reverse[1] = -1;
    doc->BodyGroups[3].Parts[2] = "other";
    const std::string script = Script(*doc);
    EXPECT_NE(script.find("\r\n$body solo \"solo\"\r\n$body empty \"<blank>\"\r\n"
                          "$bodygroup pair\r\n{\r\nstudio \"solo\" reverse\r\nstudio \"other\"\r\n}"
                          "\r\n\r\n// Animations"),
              std::string::npos)
        << script;

    // Counts past the tables write the tables' slots and no more.
    doc->BodyGroupCount = 255;
    doc->BodyGroups[3].PartCount = 255;
    const auto lines = Lines(Script(*doc));
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](const std::string& l) { return l.rfind("$body", 0) == 0; }),
              32);
}

TEST(QcWriter, RenderModesAndTextureGroup) {
    auto doc = std::make_unique<Document>();
    doc->TextureCount = 3;
    doc->TextureVariations[1][1] = "a.bmp";
    doc->TextureVariations[1][2] = "b.bmp";
    doc->TextureVariations[1][3] = "c.bmp";
    doc->TextureVariations[2][4] = "beyond.bmp"; // column past TextureCount: the row stays unused
    doc->TextureVariations[11][1] = "x.bmp";     // row past the written rows
    doc->TextureModes[11] = {"c.bmp", 2};        // slot past the written slots
    std::string script = Script(*doc);
    EXPECT_EQ(script.find("$texturegroup"), std::string::npos);
    EXPECT_EQ(script.find("a.bmp"), std::string::npos);
    EXPECT_EQ(script.find("$texrendermode"), std::string::npos);

    doc->TextureVariations[2][2] = "b2.bmp";
    doc->TextureVariations[4][1] = "a4.bmp";
    doc->TextureVariations[4][3] = "c4.bmp";
    doc->TextureModes[1] = {"a.bmp", 2};
    doc->TextureModes[3] = {"c.bmp", 1};
    doc->TextureModes[2] = {"b.bmp", 3};
    script = Script(*doc);
    const std::string expected = R"(}
$texrendermode "a.bmp" additive
$texrendermode "c.bmp" masked

$texturegroup dummi
{
{ "a.bmp" "b.bmp" "c.bmp" }
{ "a.bmp" "b2.bmp" "c.bmp" }
{ "a4.bmp" "b.bmp" "c4.bmp" }
}

// Animations
)";
    EXPECT_NE(script.find(Crlf(expected)), std::string::npos) << script;
    EXPECT_EQ(script.find(Blank), std::string::npos);
}

// Files: the old script stays whole whenever a write fails.
class QcWriterFile : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() /
                  ("quarle-writer-" +
                   std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }
    void TearDown() override {
        std::error_code ec;
        fs::permissions(folder_, fs::perms::owner_all, ec);
        for (const auto& entry : fs::directory_iterator(folder_, ec)) {
            fs::permissions(entry.path(), fs::perms::owner_all, ec);
        }
        fs::remove_all(folder_, ec);
    }
    static std::string Read(const fs::path& p) {
        std::ifstream in(p, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
    static void Put(const fs::path& p, const std::string& text) {
        std::ofstream(p, std::ios::binary) << text;
    }
    std::vector<std::string> Entries() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    fs::path folder_;
};

TEST_F(QcWriterFile, ReplacesTheOldScriptWholly) {
    const fs::path target = folder_ / "robot.qc";
    Put(target, std::string(100000, 'x')); // longer than the new script
    fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    const auto doc = Robot();
    const WriteResult result = WriteQcFile(*doc, target.string(), ',');
    ASSERT_TRUE(result.Ok) << result.Error;
    EXPECT_EQ(Read(target), Script(*doc, ','));
    EXPECT_EQ(Entries(), std::vector<std::string>{"robot.qc"});
    EXPECT_EQ(fs::status(target).permissions() & fs::perms::all,
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);

    // A new file in the folder.
    const WriteResult fresh = WriteQcFile(*doc, (folder_ / "new.qc").string(), '.');
    ASSERT_TRUE(fresh.Ok) << fresh.Error;
    EXPECT_EQ(Read(folder_ / "new.qc"), Script(*doc));
}

TEST_F(QcWriterFile, FailedWritesLeaveTheOldFileAndNoTemporary) {
    const auto doc = Robot();
    const std::string old = "// hand-written\r\n$cd \"c:\\old\"\r\n";

    // The folder is missing.
    WriteResult result = WriteQcFile(*doc, (folder_ / "gone" / "robot.qc").string(), '.');
    EXPECT_FALSE(result.Ok);
    EXPECT_NE(result.Error.find("gone"), std::string::npos) << result.Error;

    // The target is a folder.
    fs::create_directory(folder_ / "dir.qc");
    Put(folder_ / "dir.qc" / "inside.txt", old);
    result = WriteQcFile(*doc, (folder_ / "dir.qc").string(), '.');
    EXPECT_FALSE(result.Ok);
    EXPECT_FALSE(result.Error.empty());
    EXPECT_EQ(Read(folder_ / "dir.qc" / "inside.txt"), old);

    // The target is write-protected.
    Put(folder_ / "locked.qc", old);
    fs::permissions(folder_ / "locked.qc", fs::perms::owner_read);
    result = WriteQcFile(*doc, (folder_ / "locked.qc").string(), '.');
    EXPECT_FALSE(result.Ok);
    EXPECT_NE(result.Error.find("write-protected"), std::string::npos) << result.Error;
    EXPECT_EQ(Read(folder_ / "locked.qc"), old);

    // No name at all.
    EXPECT_FALSE(WriteQcFile(*doc, "", '.').Ok);

    EXPECT_EQ(Entries(), (std::vector<std::string>{"dir.qc", "locked.qc"}));
}

TEST_F(QcWriterFile, WriteProtectedFolder) {
    const fs::path target = folder_ / "robot.qc";
    const std::string old = "old script\r\n";
    Put(target, old);
    fs::permissions(folder_, fs::perms::owner_read | fs::perms::owner_exec);
    if (std::ofstream(folder_ / "probe").is_open()) {
        GTEST_SKIP() << "this user writes into write-protected folders";
    }
    const WriteResult result = WriteQcFile(*Robot(), target.string(), '.');
    EXPECT_FALSE(result.Ok);
    EXPECT_FALSE(result.Error.empty());
    EXPECT_EQ(Read(target), old);
    EXPECT_EQ(Entries(), std::vector<std::string>{"robot.qc"});
}

#if defined(__unix__) || defined(__APPLE__)
TEST_F(QcWriterFile, FullDiskIsNoticed) {
    const fs::path target = folder_ / "robot.qc";
    const std::string old = "old script\r\n";
    Put(target, old);
    // A file size limit makes every write past 64 bytes fail, as a full disk would.
    rlimit saved{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &saved), 0);
    rlimit small = saved;
    small.rlim_cur = 64;
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const WriteResult result = WriteQcFile(*Robot(), target.string(), '.');
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, oldHandler);

    EXPECT_FALSE(result.Ok);
    EXPECT_NE(result.Error.find("disk"), std::string::npos) << result.Error;
    EXPECT_EQ(Read(target), old);
    EXPECT_EQ(Entries(), std::vector<std::string>{"robot.qc"});
}
#endif

} // namespace
} // namespace quarle
