#include "document/SmdScan.h"

#include "TestFiles.h"
#include "document/Text.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace quarle {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;

class SmdScan : public ::testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& bytes) {
        return dir_.Write(name, bytes);
    }

    testing::TempDir dir_; // a folder of this test's own, so parallel runs never collide
};

// The answers of the reference test for one file, by all three routes.
void ExpectReference(const std::string& path, bool expected) {
    int line = 1;
    EXPECT_EQ(FindFileValue(path, "triangles", line) != NoToken, expected);
    EXPECT_EQ(IsReferenceSmd(path), expected);
    EXPECT_EQ(ScanSmdFile(path).Reference, expected);
}

TEST_F(SmdScan, ReferenceTestLooksAtTheStartOfValuesOutsideComments) {
    const struct {
        const char* text;
        bool reference;
    } cases[] = {
        {"", false},
        {"triangles\n", true},
        {"Triangles\n", false}, // exact case
        {"triangles2\n", true}, // the start of the value
        {"   triangles\n", true},
        {"\ttriangles\n", true},
        {"x triangles\n", false},
        {"/*\ntriangles\n*/\n", false},
        {"/*\ntriangles\n*/\ntriangles\n", true},
        {"nodes /* bones\ntriangles\n", false}, // "/*" anywhere in a value
        {"/* a */\ntriangles\n", true},         // one value with both leaves the mark off
        {"/*\n*/ triangles\n", false},          // a value that starts with "*/"
        {"\"triangles\"\n", true},
        {"a,triangles\n", true},
        {"\"a,triangles\"\n", false}, // a comma inside quotes does not cut
        {"\"a\" x,triangles\n", true},
        {"nodes\r\ntriangles\r\n", true},
        {"nodes\rtriangles\r", true},
        {"nodes\ntriangles", true}, // no line end at the end of the file
        {"triangle\n", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        ExpectReference(Write("case.smd", c.text), c.reference);
    }
    ExpectReference(dir_ / "missing.smd", false);
}

TEST_F(SmdScan, FindFileValueCountsValuesAndReturnsTheTextBehindTheWord) {
    int line = 1;
    const std::string plain = Write("plain.smd", "nodes\r\ntriangles\r\n");
    EXPECT_EQ(FindFileValue(plain, "triangles", line), ""); // found, and not the sentinel
    EXPECT_EQ(line, 2);

    // Empty lines are values, a comma starts one more, CR LF and a lone CR end a line.
    const std::string counted =
        Write("counted.smd", "\n\na,b\r\nc\rkey\"x\" \"y\"\r\nkey2\nkey \"c:\\m\"");
    line = 1;
    EXPECT_EQ(FindFileValue(counted, "key", line), "x\" \"y"); // one quote cut at each end
    EXPECT_EQ(line, 6);
    line = 7;
    EXPECT_EQ(FindFileValue(counted, "key", line), "2");
    EXPECT_EQ(line, 7);
    line = 8;
    EXPECT_EQ(FindFileValue(counted, "key", line), " \"c:\\m"); // a quote cut only at the end
    EXPECT_EQ(line, 8);

    // A match in front of Line is passed over; no match leaves Line alone.
    const std::string twice = Write("twice.smd", "a\nb\ntriangles one\nc\nd\ntriangles two\n");
    line = 5;
    EXPECT_EQ(FindFileValue(twice, "triangles", line), " two");
    EXPECT_EQ(line, 6);
    line = 7;
    EXPECT_EQ(FindFileValue(twice, "triangles", line), NoToken);
    EXPECT_EQ(line, 7);
    line = 3;
    EXPECT_EQ(FindFileValue(dir_ / "missing.smd", "x", line), NoToken);
    EXPECT_EQ(line, 3);
    EXPECT_EQ(FindFileValue(twice, "a\nb", line), NoToken);

    // An empty word matches the first value at Line or later.
    line = 2;
    EXPECT_EQ(FindFileValue(twice, "", line), "b");
    EXPECT_EQ(line, 2);
}

// Frames from a file, by ScanSmdFrames from a start value and by ScanSmdFile.
std::optional<int> Frames(const std::string& path, i16 start = 99) {
    i16 frames = start;
    ScanSmdFrames(path, frames);
    const SmdFacts facts = ScanSmdFile(path);
    EXPECT_EQ(facts.HasTime ? facts.LastFrame : start, frames);
    if (!facts.HasTime) {
        return std::nullopt;
    }
    return frames;
}

TEST_F(SmdScan, LastTimeValueGivesTheFrameCount) {
    std::string run = "version 1\nskeleton\n";
    for (int i = 0; i <= 12; ++i) {
        run += "time " + std::to_string(i) + "\n  0 0.0 0.0 0.0 0.0 0.0 0.0\n";
    }
    EXPECT_EQ(Frames(Write("run.smd", run + "end\n")), 12);
    EXPECT_EQ(Frames(Write("empty.smd", "")), std::nullopt); // 99 stays
    EXPECT_EQ(Frames(Write("none.smd", "triangles\nskin.bmp\n")), std::nullopt);
    EXPECT_EQ(Frames(Write("case.smd", "TIME 3\nTime 7\n")), 7);
    EXPECT_EQ(Frames(Write("comment.smd", "time 1\n/*\ntime 3\n*/\n")), 3);
    EXPECT_EQ(Frames(Write("crlf.smd", "time 1\r\n  time 2")), 2);
    EXPECT_EQ(Frames(Write("values.smd", "a,time 4\n\"time 5\"\n\"a,time 6\"\n")), 5);
    // The number stands from the sixth character of the value on.
    EXPECT_EQ(Frames(Write("sixth.smd", "time12\n")), 2);
    EXPECT_EQ(Frames(Write("blanks.smd", "time   8 \n")), 8);
}

TEST_F(SmdScan, TimeValuesThatAreNoWholeI16AreRoundedClampedOrPassedOver) {
    EXPECT_EQ(Frames(Write("a.smd", "time 2.5\n")), 2); // halves to even
    EXPECT_EQ(Frames(Write("b.smd", "time 3.5\n")), 4);
    EXPECT_EQ(Frames(Write("c.smd", "time 2.50001\n")), 3);
    EXPECT_EQ(Frames(Write("d.smd", "time 6.49\n")), 6);
    EXPECT_EQ(Frames(Write("e.smd", "time -4\n")), -4);
    EXPECT_EQ(Frames(Write("f.smd", "time 40000\n")), 32767);
    EXPECT_EQ(Frames(Write("g.smd", "time -99999999999999999999\n")), -32768);
    EXPECT_EQ(Frames(Write("h.smd", "time .7\n")), 1);
    EXPECT_EQ(Frames(Write("i.smd", "time 12abc\n")), 12);
    // No digit: the line does not count and the earlier frame stands.
    EXPECT_EQ(Frames(Write("j.smd", "time 4\ntime abc\ntime\ntime -\ntime .\n")), 4);
    EXPECT_EQ(Frames(Write("k.smd", "time x\n")), std::nullopt);
}

TEST_F(SmdScan, BmpLinesAreCollectedOnceUnderTheFirstSpelling) {
    const std::string mesh =
        Write("mesh.smd", "triangles\r\nArm.bmp\r\n 0 1.0 2.0\r\nARM.BMP\r\nleg.Bmp\r\n"
                          "face.jpg\r\nskin.tga\r\nArm.bmp \r\nbmp\r\nleg.bmp");
    std::vector<std::string> names(11);
    int count = 0;
    EXPECT_TRUE(CollectBmpLines(mesh, names, count));
    EXPECT_EQ(count, 3);
    EXPECT_THAT(std::vector<std::string>(names.begin() + 1, names.begin() + 4),
                ElementsAre("Arm.bmp", "leg.Bmp", "Arm.bmp ")); // a closing blank stays
    EXPECT_THAT(ScanSmdFile(mesh).Textures, ElementsAre("Arm.bmp", "leg.Bmp", "Arm.bmp "));

    // The count carries on over parts, and names already there are not added again.
    // Case is cp1252's: "\xE4.bmp" and "\xC4.BMP" are one texture.
    const std::string second =
        Write("second.smd", "triangles\nLEG.BMP\nhead.bmp\n\xE4.bmp\n\xC4.BMP\n");
    EXPECT_TRUE(CollectBmpLines(second, names, count));
    EXPECT_EQ(count, 5);
    EXPECT_EQ(names[4], "head.bmp");
    EXPECT_EQ(names[5], "\xE4.bmp");

    // A full table drops the new name and says so.
    std::vector<std::string> small(3); // two slots
    count = 0;
    EXPECT_FALSE(CollectBmpLines(mesh, small, count));
    EXPECT_EQ(count, 2);
    EXPECT_THAT(small, ElementsAre("", "Arm.bmp", "leg.Bmp"));
    count = 0;
    EXPECT_FALSE(CollectBmpLines(mesh, std::span<std::string>(), count));
    EXPECT_EQ(count, 0);
}

TEST_F(SmdScan, ManyDistinctNamesScanInLinearTime) {
    // Every name twice, the second time in capitals: the names are told
    // apart by look-up, not by comparing each with all before it, which took
    // a minute for these.
    constexpr int Names = 40000;
    std::string text = "triangles\n";
    for (int n = 0; n < Names; ++n) {
        text += "tex" + std::to_string(n) + ".bmp\n0 0 0 0 0 0 1 0 0\n";
        text += "TEX" + std::to_string(n) + ".BMP\n";
    }
    const std::string mesh = Write("many.smd", text);
    const auto start = std::chrono::steady_clock::now();
    const SmdFacts facts = ScanSmdFile(mesh);
    std::vector<std::string> names(Names + 1);
    int count = 0;
    EXPECT_TRUE(CollectBmpLines(mesh, names, count));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    ASSERT_EQ(facts.Textures.size(), std::size_t{Names});
    EXPECT_EQ(facts.Textures.back(), "tex39999.bmp");
    EXPECT_EQ(count, Names);
    EXPECT_EQ(names[Names], "tex39999.bmp");
}

TEST_F(SmdScan, ScansFollowTheCaseFallbackOfPaths) {
    Write("Ref.SMD", "triangles\nSkin.BMP\ntime 3\n");
    const std::string named = dir_ / "ref.smd";
    if (fs::exists(named)) {
        GTEST_SKIP() << "the file system ignores case";
    }
    EXPECT_TRUE(IsReferenceSmd(named));
    EXPECT_EQ(Frames(named), 3);
    EXPECT_THAT(ScanSmdFile(named).Textures, ElementsAre("Skin.BMP"));
    EXPECT_TRUE(ScanSmdFile(named).Readable);
    EXPECT_FALSE(ScanSmdFile(dir_ / "other.smd").Readable);
}

TEST_F(SmdScan, HugeLinesDoNotStopTheScan) {
    // A line far longer than a read block, full of bytes the scans look for.
    std::string text(300 * 1024, 'b');
    text += "\r\ntime 5\r\n" + std::string(200 * 1024, 'x') + "\r\ntriangles\r\nskin.bmp\r\n";
    const std::string huge = Write("huge.smd", text);
    const SmdFacts facts = ScanSmdFile(huge);
    EXPECT_TRUE(facts.Reference);
    EXPECT_EQ(facts.LastFrame, 5);
    EXPECT_THAT(facts.Textures, ElementsAre("skin.bmp"));
    int line = 1;
    EXPECT_EQ(FindFileValue(huge, "triangles", line), "");
    EXPECT_EQ(line, 4);
}

TEST_F(SmdScan, LineEndsSplitAcrossReadBlocksCountOnce) {
    // A CR at each place around the usual block sizes, with its LF (or the
    // next line) behind the cut; the line numbers behind it must not move.
    for (const std::size_t block : {64 * 1024, 128 * 1024, 256 * 1024}) {
        for (std::size_t cr = block - 2; cr <= block + 1; ++cr) {
            for (const char* end : {"\r\n", "\r"}) {
                std::string text;
                int lines = 0;
                while (text.size() + 100 < cr) {
                    text += std::string(98, '7') + "\r\n";
                    ++lines;
                }
                text += std::string(cr - text.size(), '7') + end + "a\r\ntriangles\r\ntime 4\r\n";
                SCOPED_TRACE(::testing::Message() << "CR at " << cr << (end[1] ? " LF" : ""));
                const std::string path = Write("split.smd", text);
                int line = 1;
                EXPECT_EQ(FindFileValue(path, "triangles", line), "");
                EXPECT_EQ(line, lines + 3);
                EXPECT_EQ(Frames(path), 4);
            }
        }
    }
}

} // namespace
} // namespace quarle
