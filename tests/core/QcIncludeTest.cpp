#include "document/QcInclude.h"

#include "ScriptTestSupport.h"
#include "document/Paths.h"

#include <gtest/gtest.h>

#include <filesystem>
#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace quarle {
namespace {

using testing::LinesOf;
using testing::Model;

TEST(QcInclude, LinesEndAtLfCrLfOrLoneCrAndALastLineNeedsNoEnd) {
    using Lines = std::vector<std::string_view>;
    EXPECT_EQ(SplitLines("a\r\nb\n\nc\rd"), (Lines{"a", "b", "", "c", "d"}));
    EXPECT_EQ(SplitLines(""), Lines{});
    EXPECT_EQ(SplitLines("x\r\n"), Lines{"x"});
    EXPECT_EQ(SplitLines("\r\r\n"), (Lines{"", ""}));
}

// An include is where an $include token stands, named with either
// separator, relative from beside the script, to any depth the compiler
// reads; quoted or not, and nowhere else.
TEST(QcInclude, AnIncludeIsReadWhereItsTokenStands) {
    Model l;
    l.Dir.Write("sub/inc.qci", "$gamma 2\n$include \"deeper.qci\"\n");
    l.Dir.Write("deeper.qci", "$sequence inner walk\n");
    l.Load(l.Paths() + "$include sub\\inc.qci\n$flags a$include // $include x\n"
                       "\"$include\" \"" + l.Dir / "sub/inc.qci" + "\"\n");
    EXPECT_TRUE(l.Host.Questions.empty());
    EXPECT_EQ(l.Doc->Gamma, 2.0f);
    EXPECT_EQ(l.Host.Animations, (std::vector<std::string>{"inner", "inner"}));
    ASSERT_TRUE(l.Doc->Layout);
    EXPECT_EQ(l.Doc->Layout->Includes.size(), 4u);
}

// An include whose records the user leaves alone is saved as its $include
// line, as written, however much it gave the forms; one the user changed
// something in is written into the script, and the save says so. An
// include goes with everything it includes in turn.
TEST(QcInclude, IncludesStayIncludesUntilTheUserChangesWhatTheyHold) {
    const auto shared = [](Model& model) {
        model.Dir.Write("shared/anims.qci", "$sequence idle walk fps 10\n$hbox 0 \"b\" 0 0 0 1 1 1\n"
                                            "$include \"shared/more.qci\"\n");
        model.Dir.Write("shared/more.qci", "$attachment 0 Bone1 1 2 3\n$sequence run walk\n");
    };
    Model m;
    shared(m);
    const std::string script = m.Paths() + "$body head \"head\"\n$include \"shared/anims.qci\"\n"
                                           "$sequence last walk\n";
    ASSERT_EQ(m.Load(script), ReadOutcome::Loaded);
    EXPECT_TRUE(m.Findings.empty());
    EXPECT_EQ(m.Written(), script);

    // A new animation goes behind the last; the includes stay.
    AnimRec& added = m.Doc->Anims[0][3];
    added.Name = added.SmdFile = "new";
    std::vector<std::string> writtenIn;
    std::ostringstream out;
    WriteQcScript(*m.Doc, out, '.', &writtenIn);
    EXPECT_EQ(out.str(), script + "$sequence \"new\" \"new\" fps 30 \n");
    EXPECT_TRUE(writtenIn.empty());

    // A change in the nested include writes both into the script.
    m.Doc->Attachments[0].X = 5.0f;
    out.str({});
    WriteQcScript(*m.Doc, out, '.', &writtenIn);
    EXPECT_EQ(writtenIn, (std::vector<std::string>{"$include \"shared/anims.qci\"",
                                                   "$include \"shared/more.qci\""}));
    EXPECT_EQ(LinesOf(out.str(), "$"),
              LinesOf(m.Paths(), "$") + "$body head \"head\"\n$sequence idle walk fps 10\n"
                                        "$hbox 0 \"b\" 0 0 0 1 1 1\n"
                                        "$attachment 0 \"Bone1\" 5 2 3\n$sequence run walk\n"
                                        "$sequence last walk\n$sequence \"new\" \"new\" fps 30 \n");
    EXPECT_EQ(testing::ReadFile(m.Dir / "shared/more.qci"),
              "$attachment 0 Bone1 1 2 3\n$sequence run walk\n");

    // An animation moved out of an include changes it; one it includes in
    // turn that keeps its records stays a line.
    Model k;
    shared(k);
    ASSERT_EQ(k.Load(k.Paths() + "$body head \"head\"\n$include \"shared/anims.qci\"\n"
                                 "$sequence last walk\n"),
              ReadOutcome::Loaded);
    std::swap(k.Doc->Anims[0][0], k.Doc->Anims[0][2]); // last, run, idle
    std::swap(k.Doc->Anims[0][0], k.Doc->Anims[0][1]); // run, last, idle
    writtenIn.clear();
    out.str({});
    WriteQcScript(*k.Doc, out, '.', &writtenIn);
    EXPECT_EQ(writtenIn, std::vector<std::string>{"$include \"shared/anims.qci\""});
    EXPECT_EQ(LinesOf(out.str(), "$"),
              LinesOf(k.Paths(), "$") + "$body head \"head\"\n$hbox 0 \"b\" 0 0 0 1 1 1\n"
                                        "$include \"shared/more.qci\"\n$sequence last walk\n"
                                        "$sequence idle walk fps 10\n");
}

// An include that stands where a directive wants its next word gives that
// word, as the compiler reads it: a group named so is still the group its
// sequences belong to, and a save leaves its line as it stands, with no
// group line of its own added.
TEST(QcInclude, AnIncludeCanGiveTheNameOfASequenceGroup) {
    Model l;
    l.Dir.Write("name.qci", "extras\n$hbox 0 \"b\" 0 0 0 1 1 1\n");
    const std::string script = l.Paths() + "$sequence a walk\n$sequencegroup $include \"name.qci\"\n"
                                           "$sequence b walk\n";
    ASSERT_EQ(l.Load(script), ReadOutcome::Loaded);
    EXPECT_EQ(l.Doc->Anims[1][0].Name, "b");
    EXPECT_EQ(l.Written(), script);
    AnimRec& added = l.Doc->Anims[1][1];
    added.Name = added.SmdFile = "c";
    EXPECT_EQ(l.Written(), script + "$sequence \"c\" \"c\" fps 30 \n");
}

// An include the compiler cannot read stays its line, and the load says
// why: a file that is not there (asked for first), one that includes itself
// or nests too deep, one that is no script, a folder or a pipe (named, and
// never waited on).
TEST(QcInclude, AnIncludeThatCannotBeReadStaysItsLine) {
    Model l;
    l.Host.KeepUnanswered = true;
    l.Dir.Write("self.qci", "$gamma 3\n$include \"self.qci\"\n");
    std::filesystem::create_directory(l.Dir / "folder.qci");
#ifndef _WIN32
    ASSERT_EQ(::mkfifo((l.Dir / "pipe.qci").c_str(), 0600), 0);
    const char* const pipeLine = "$include \"pipe.qci\"\n";
#else
    const char* const pipeLine = "";
#endif
    l.Dir.Write("binary.qci", std::string("$gamma\0 4", 9));
    for (int i = 0; i < 8; ++i) {
        l.Dir.Write("chain" + std::to_string(i) + ".qci",
                    "$include \"chain" + std::to_string(i + 1) + ".qci\"\n");
    }
    const std::string script = l.Paths() + "$include \"gone.qci\"\n$include \"self.qci\"\n"
                                           "$include \"binary.qci\"\n$include \"chain0.qci\"\n"
                                           "$include \"folder.qci\"\n" + pipeLine +
                               "$sequence walk walk\n";
    ASSERT_EQ(l.Load(script), ReadOutcome::Loaded);
    ASSERT_EQ(l.Host.Questions.size(), pipeLine[0] != 0 ? 3u : 2u);
    EXPECT_EQ(l.Host.Questions[0].What, FolderQuestion::IncludeFile);
    EXPECT_EQ(l.Doc->Gamma, 3.0f);
    EXPECT_EQ(l.Host.Animations, std::vector<std::string>{"walk"});
    EXPECT_EQ(l.Written(), script);
    std::vector<std::pair<FindingKind, int>> found;
    for (const LoadFinding& f : l.Findings) {
        found.emplace_back(f.Kind, f.Line);
    }
    std::vector<std::pair<FindingKind, int>> expected{{FindingKind::IncludeMissing, 3},
                                                      {FindingKind::IncludeTooDeep, 2},
                                                      {FindingKind::IncludeNotAScript, 5},
                                                      {FindingKind::IncludeTooDeep, 1},
                                                      {FindingKind::IncludeMissing, 7}};
    if (pipeLine[0] != 0) {
        expected.emplace_back(FindingKind::IncludeMissing, 8);
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(l.Findings[1].File, "self.qci");
    EXPECT_EQ(l.Findings[0].Unread.Failure, OpenFailure::None) << "not there: no more to say";
    EXPECT_EQ(l.Findings[4].Unread.Failure, OpenFailure::Folder);
    EXPECT_NE(FindingWarning(l.Findings[4]).find("folder.qci"), std::string::npos);
    if (pipeLine[0] != 0) {
        EXPECT_EQ(l.Findings[5].Unread.Failure, OpenFailure::Special);
    }
}

// One found only where the user pointed is named there by the save; a
// refusal ends the load in a new document.
TEST(QcInclude, AnIncludeFoundWhereTheUserPointsIsNamedThere) {
    Model l;
    l.Dir.Write("elsewhere/anims.qci", "$sequence walk walk\n");
    l.Host.Answer(l.Dir / "elsewhere");
    l.Load(l.Paths() + "$include \"anims.qci\"\n");
    EXPECT_EQ(LinesOf(l.Written(), "$include"),
              "$include \"" + paths::ToStyle("elsewhere/anims.qci") + "\"\n");
    ASSERT_EQ(l.Findings.size(), 1u);
    EXPECT_EQ(l.Findings[0].Kind, FindingKind::PathAnswered);

    Model k;
    k.Host.Answer("0");
    EXPECT_EQ(k.Load(k.Paths() + "$sequence a walk\n$include \"gone.qci\"\n$gamma 3\n"),
              ReadOutcome::Refused);
    EXPECT_EQ(k.Host.NewDocuments, 1);
    EXPECT_TRUE(k.Host.Animations.empty());
}

} // namespace
} // namespace quarle
