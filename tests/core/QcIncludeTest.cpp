#include "document/QcInclude.h"

#include "ScriptTestSupport.h"

#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace quarle {
namespace {

using testing::Model;

struct Buffered {
    BufferResult Result;
    std::string Text;
};

Buffered Buffer(Model& l, const std::string& script) {
    std::ostringstream out;
    ProblemOnce report(l.Host);
    const BufferResult result = BufferQcFile(out, script, l.Dir.Path(), l.Host, report);
    return {result, out.str()};
}

TEST(QcInclude, LinesEndAtLfCrLfOrLoneCrAndALastLineNeedsNoEnd) {
    using Lines = std::vector<std::string_view>;
    EXPECT_EQ(SplitLines("a\r\nb\n\nc\rd"), (Lines{"a", "b", "", "c", "d"}));
    EXPECT_EQ(SplitLines(""), Lines{});
    EXPECT_EQ(SplitLines("x\r\n"), Lines{"x"});
    EXPECT_EQ(SplitLines("\r\r\n"), (Lines{"", ""}));
}

TEST(QcInclude, CopiesEveryLineButCommentsOfTheFirstColumn) {
    Model l;
    const auto script = l.Dir.Write("a.qc", "// head\n$cd \"x\" // behind\n\n  // indented\n"
                                            "/* banner */\n$scale 2");
    const Buffered b = Buffer(l, script);
    EXPECT_EQ(b.Result, BufferResult::Done);
    EXPECT_EQ(b.Text, "$cd \"x\" // behind\r\n\r\n  // indented\r\n/* banner */\r\n$scale 2\r\n");
    EXPECT_TRUE(l.Host.Questions.empty());
}

TEST(QcInclude, AnAbsoluteIncludeLandsInPlaceWithEitherSeparator) {
    Model l;
    const std::string inc = l.Dir.Write("sub/inc.qc", "// own comment\ninner\n");
    const std::string other = l.Dir.Write("sub/deeper.qc", "deepest\n");
    l.Dir.Write("sub/nest.qc", "$include \"" + other + "\"\n");
    std::string backslashed = inc;
    for (char& c : backslashed) {
        c = c == '/' ? '\\' : c;
    }
    const auto script =
        l.Dir.Write("a.qc", "one\n$include \"" + inc + "\"\ntwo\n$include " + backslashed +
                                "\n$include \"" + l.Dir / "sub/nest.qc" + "\"\nthree\n");
    const Buffered b = Buffer(l, script);
    EXPECT_EQ(b.Result, BufferResult::Done);
    EXPECT_EQ(b.Text, "one\r\ninner\r\ntwo\r\ninner\r\ndeepest\r\nthree\r\n");
    EXPECT_TRUE(l.Host.Questions.empty());
}

TEST(QcInclude, ARelativeIncludeIsTakenFromBesideTheScriptAndAskedForOnlyWhenMissing) {
#ifdef _WIN32
    // The script's folders are POSIX paths here; on Windows a relative
    // folder is resolved against a drive path the expectations do not name.
    GTEST_SKIP() << "relative folders are compared as POSIX paths";
#endif
    Model l;
    l.Dir.Write("inc.qc", "beside\n");
    l.Dir.Write("other/sub/inc.qc", "nested\n");
    l.Dir.Write("parts/inc.qc", "kept\n");
    const auto script = l.Dir.Write(
        "a.qc", "$include \"inc.qc\"\n$include sub/inc.qc\n$include \"parts\\inc.qc\"\n");
    l.Host.Answer(l.Dir / "other/sub");
    EXPECT_EQ(Buffer(l, script).Text, "beside\r\nnested\r\nkept\r\n");
    ASSERT_EQ(l.Host.Questions.size(), 1u);
    EXPECT_EQ(l.Host.Questions[0].Path, "sub/inc.qc");
    EXPECT_EQ(l.Host.Questions[0].Extra, "<IDS_INCLUDEFILE>");
    EXPECT_EQ(l.Host.Questions[0].What, FolderQuestion::IncludeFile);
}

TEST(QcInclude, CommentColumnDecidesAndIncludeAnywhereInALineCounts) {
    Model l;
    l.Dir.Write("inc.qc", "included\n");
    const auto script = l.Dir.Write("a.qc", "// $include \"inc.qc\"\n"
                                            " // $include \"inc.qc\"\n"
                                            "$cd \"c:\\$includes\\inc.qc\"\n");
    l.Host.Answer(l.Dir.Path());
    l.Host.Answer(l.Dir.Path());
    const Buffered b = Buffer(l, script);
    // The indented comment is an include of whatever stands behind its first
    // blank, which names no file; the $cd line includes inc.qc.
    ASSERT_EQ(l.Host.Questions.size(), 2u);
    EXPECT_NE(l.Host.Questions[0].Path.find("$include inc.qc"), std::string::npos);
    EXPECT_EQ(l.Host.ProblemsOf(ReadProblem::IncludeUnreadable), 1);
    EXPECT_EQ(b.Text, "included\r\n");
}

TEST(QcInclude, ARefusalEndsEveryLevelAndStartsANewDocument) {
    Model l;
    l.Dir.Write("inner.qc", "before\n$include \"nowhere.qc\"\nafter\n");
    const auto script =
        l.Dir.Write("a.qc", "first\n$include \"" + l.Dir / "inner.qc" + "\"\nlast\n");
    l.Host.Answer("0");
    const Buffered b = Buffer(l, script);
    EXPECT_EQ(b.Result, BufferResult::Refused);
    EXPECT_EQ(b.Text, "first\r\nbefore\r\n");
    EXPECT_EQ(l.Host.NewDocuments, 1);
}

TEST(QcInclude, LoopsDepthAndUnreadableIncludesAreSkippedWithOneMessageEach) {
    Model l;
    // a includes itself twice and b, which includes a again.
    const std::string a = l.Dir / "a.qc";
    const std::string b = l.Dir / "b.qc";
    l.Dir.Write("a.qc",
                "a1\n$include \"" + a + "\"\n$include \"" + b + "\"\n$include \"" + a + "\"\na2\n");
    l.Dir.Write("b.qc", "b1\n$include \"" + a + "\"\nb2\n");
    // A chain of 40 files, each including the next.
    for (int i = 0; i < 40; ++i) {
        l.Dir.Write("chain" + std::to_string(i) + ".qc", "c" + std::to_string(i) + "\n$include \"" +
                                                             l.Dir / "chain" +
                                                             std::to_string(i + 1) + ".qc\"\n");
    }
    std::filesystem::create_directory(l.Dir / "folder.qc");
    const auto top =
        l.Dir.Write("top.qc", "$include \"" + a + "\"\n$include \"" + l.Dir / "chain0.qc" +
                                  "\"\n$include \"" + l.Dir / "folder.qc" + "\"\nend\n");
    l.Host.Answer(l.Dir.Path()); // folder.qc is no file: asked, then unreadable
    const Buffered r = Buffer(l, top);
    EXPECT_EQ(r.Result, BufferResult::Done);
    EXPECT_EQ(l.Host.ProblemKinds(),
              (std::vector{ReadProblem::IncludeLoop, ReadProblem::IncludeTooDeep,
                           ReadProblem::IncludeUnreadable}));
    EXPECT_NE(r.Text.find("a1\r\nb1\r\nb2\r\na2\r\n"), std::string::npos);
    // top is level 0, so chain0 to chain31 are read and chain32 is refused.
    EXPECT_NE(r.Text.find("c31\r\n"), std::string::npos);
    EXPECT_EQ(r.Text.find("c32\r\n"), std::string::npos);
    EXPECT_TRUE(r.Text.ends_with("end\r\n"));
}

// An include whose lines are all kept as text stays its $include line, as
// the script wrote it; one that gave records is written into the script, and
// the load says so once. An include decides with all it includes in turn.
TEST(QcInclude, AnIncludeOfKeptLinesStaysItsLineAndAnyOtherIsWrittenIn) {
    const std::string hbox = "$hbox 0 \"b\" 0 0 0 1 1 1";
    const struct {
        const char* what;
        std::map<std::string, std::string> files;
        std::string script; // behind the folders of the test's model
        std::map<std::string, int> lines; // lines of the saved script, each so many times
        std::vector<LoadFinding> findings; // in model.qc
    } cases[] = {
        {"hitboxes, named relatively",
         {{"boxes/hit.qci", "$hbox 1 \"head\" -1 -1 -1 1 1 1\n\n  $hbox 2 \"arm\" 0 0 0 2 2 2\n"}},
         "$body head \"head\"\n$include \"boxes/hit.qci\"\n$sequence walk walk\n",
         {{"$include \"boxes/hit.qci\"", 1}, {"$hbox 1 \"head\" -1 -1 -1 1 1 1", 0}},
         {}},
        {"a sequence, included twice",
         {{"anims.qci", "$sequence idle walk fps 10\n" + hbox + "\n"}},
         "$include \"anims.qci\"\n$include \"anims.qci\"\n",
         {{"$include \"anims.qci\"", 0}, {hbox, 2}},
         {{FindingKind::IncludeMerged, "", 3, "$include \"anims.qci\""}}},
        {"hitboxes that include more",
         {{"outer.qci", hbox + "\n$include \"inner.qci\"\n"}, {"inner.qci", "$bbox 0 0 0 1 1 1\n"}},
         "$include \"outer.qci\"\n",
         {{"$include \"outer.qci\"", 1}, {hbox, 0}, {"$bbox 0 0 0 1 1 1", 0}},
         {}},
        {"hitboxes that include a sequence",
         {{"outer.qci", hbox + "\n$include \"seq.qci\"\n"}, {"seq.qci", "$sequence run walk\n"}},
         "$cliptotextures\n$include \"outer.qci\"\n",
         {{"$include \"outer.qci\"", 0}, {"$include \"seq.qci\"", 0}, {hbox, 1}},
         {{FindingKind::IncludeMerged, "", 4, "$include \"outer.qci\""}}},
    };
    for (const auto& c : cases) {
        Model m;
        for (const auto& [name, text] : c.files) {
            m.Dir.Write(name, text);
        }
        ASSERT_EQ(m.Load(m.Paths() + c.script), ReadOutcome::Loaded) << c.what;
        EXPECT_TRUE(m.Host.Questions.empty()) << c.what;
        std::vector<LoadFinding> findings = c.findings;
        for (LoadFinding& f : findings) {
            f.File = m.Dir / "model.qc";
        }
        EXPECT_EQ(m.Findings, findings) << c.what;
        const std::string written = m.Written();
        std::map<std::string, int> count;
        for (std::string_view line : SplitLines(written)) {
            ++count[std::string(line)];
        }
        for (const auto& [line, times] : c.lines) {
            EXPECT_EQ(count[line], times) << c.what << ": " << line;
        }
        // Saved over the script, it reads back to the same bytes, asking nothing.
        ASSERT_EQ(m.LoadFile(m.Dir.Write("model.qc", written)), ReadOutcome::Loaded) << c.what;
        EXPECT_TRUE(m.Host.Questions.empty()) << c.what;
        EXPECT_EQ(m.Written(), written) << c.what;
    }
}

} // namespace
} // namespace quarle
