// What a load tells about a script from elsewhere: one small script for each
// kind of finding, with the lines it names, and the same document as a load
// that lists nothing. (Every other reader test lists the findings too, so the
// whole reader's behaviour is pinned with the list on.)
#include "ScriptTestSupport.h"

#include <gtest/gtest.h>

namespace quarle {
namespace {

using testing::Model;
using Kind = FindingKind;
using Found = std::vector<std::pair<Kind, int>>;

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at)) {
        text.replace(at, what.size(), by);
        at += by.size();
    }
    return text;
}

TEST(LoadFindings, EachKindNamesItsLinesAndLeavesTheDocumentAsItWas) {
    // Behind the two lines of Model::Paths(), so the body starts at line 3.
    // <M> is the model folder.
    const std::vector<std::pair<std::string, Found>> table = {
        {"$cliptotextures\n$hbox 0 \"b\" 0 0 0 1 1 1\n  lines under it go with it\n",
         {{Kind::UnknownDirective, 3}, {Kind::UnknownDirective, 4}}},
        {"\t$scale 3\nstray\n  // note\n/*\ncomment text\n*/\n",
         {{Kind::LineNotRead, 3}, {Kind::LineNotRead, 4}}},
        {"$sequence \"a\" \"walk\"\n{ event 5001 0 }\n", {{Kind::LineAfterSequence, 4}}},
        {"$sequence \"a\" \"walk\" X fps 30 AX LX\n", {{Kind::MotionFlagDropped, 3}}},
        {"$sequence \"a\" \"walk\" node 3\n"
         "$sequence \"b\" \"walk\" ACT_IDLE loop\n"
         "$sequence \"c\" \"walk\" fps 30 walk2\n"
         "$sequence \"d\" \"walk\" \"walk2\" fps 30\n"
         "$sequence \"e\" \"walk\" \"walk2\" blend XR -45 45 ACT_IDLE 1 fps 30  LX\n",
         {{Kind::SequenceOptionMisread, 3},
          {Kind::SequenceOptionMisread, 4},
          {Kind::SequenceOptionMisread, 5},
          {Kind::SequenceOptionMisread, 6}}},
        {"$sequence \"a\" \"walk\" blend XR 0 1\n", {{Kind::BlendWithoutFile, 3}}},
        {"$body body \"head\" reverse\n", {{Kind::BodyWordsLost, 3}}},
        {"$bodygroup arms\n{\nstudio \"arm\" reverse\n}\n"
         "$bodygroup legs {\nstudio \"leg\" reverse\nblank\n}\n",
         {{Kind::BodyGroupReverseLost, 3}}},
        {"$cd \"<M>\"\n$cdtexture \"<M>\"\n", {{Kind::PathReplaced, 2}}},
        {testing::Repeat(0, 101, [](auto i) { return "$sequence s" + i + " walk\n"; }),
         {{Kind::SequenceNotWritten, 104}}},
        {"$sequence \"a\" \"walk\" fps 29.97 frame 0 10\n", {{Kind::FractionRounded, 3}}},
        {"$body body \"arm\"\n$texrendermode \"x.bmp\" masked\n"
         "$texturegroup skins\n{\n{ \"b.bmp\" \"y.bmp\" }\n{ \"c.bmp\" \"z.bmp\" }\n}\n",
         {{Kind::TextureNotInParts, 4}, {Kind::TextureNotInParts, 7}}},
        {"$body body \"arm\"\n$texrendermode \"b.bmp\" fullbright\n"
         "$texrendermode \"c.bmp\" additive\n",
         {{Kind::RenderModeChanged, 4}}},
        {"$body body \"arm\"\n$texturegroup skins\n{\n{ \"b.bmp\" \"c.bmp\" }\n"
         "{ \"b.bmp\" \"c.bmp\" }\n{ \"c.bmp\" \"b.bmp\" }\n}\n",
         {{Kind::TextureRowDropped, 7}}},
        {"$bodygroup arms\n{\nstudio arm\nBlank\n}\n", {{Kind::PartReadAsBlank, 5}}},
        {"$controller 0 \"b\" X 0 10\n$controller 1 \"b\" yr 0 10\n"
         "$sequence \"a\" \"walk\" \"walk2\" blend Y 0 1\n",
         {{Kind::AxisNotKept, 3}, {Kind::AxisNotKept, 5}}},
    };
    for (const auto& [body, expected] : table) {
        Model m;
        const std::string script = m.Paths() + Replaced(body, "<M>", m.M());
        ASSERT_EQ(m.Load(script), ReadOutcome::Loaded) << body;
        Found found;
        for (const LoadFinding& f : m.Findings) {
            found.emplace_back(f.Kind, f.Line);
            EXPECT_EQ(f.File, m.Dir / "model.qc");
        }
        EXPECT_EQ(found, expected) << body;

        const std::string written = m.Written();
        InitVars(*m.Doc);
        m.Doc->QcFile = m.Dir / "model.qc";
        m.Host.Animations.clear();
        ASSERT_EQ(ReadQcFile(*m.Doc, m.Host, m.Dir.Path()), ReadOutcome::Loaded);
        EXPECT_EQ(m.Written(), written) << body;
    }
}

TEST(LoadFindings, AnIncludeIsNamedByItsOwnLines) {
    Model m;
    const std::string include = m.Dir.Write("more.qc", "// two\n$sequence \"a\" \"walk\"\n"
                                                       "$origin 0 0 1\n");
    ASSERT_EQ(m.Load(m.Paths() + "$include \"" + include + "\"\n$flags 1\n"), ReadOutcome::Loaded);
    EXPECT_EQ(m.Findings,
              (LoadFindings{{Kind::UnknownDirective, include, 3, "$origin 0 0 1"},
                            {Kind::UnknownDirective, m.Dir / "model.qc", 4, "$flags 1"}}));
    EXPECT_EQ(FindingWarning(m.Findings[0]),
              "warning: more.qc, line 3: $origin 0 0 1 (A directive that Quarle does not know is "
              "left out)");
}

#ifndef _WIN32
// quarle-qc prints one warning a finding and keeps its exit status.
TEST(LoadFindings, RoundtripWarnsOfEachPlaceOnStandardError) {
    Model m;
    std::string script = "$cdtexture \"" + m.M() + "\"\n" + m.Paths() +
                         "$cliptotextures\n$sequence \"s0\" \"walk\" fps 30 node 3\n";
    script += testing::Repeat(1, 129, [](auto i) { return "$sequence s" + i + " walk\n"; });
    const std::string in = m.Dir.Write("done.qc", script);
    const testing::ToolRun run =
        testing::RunTool({"roundtrip", in, m.Dir / "out.qc"}, m.Dir.Path());
    EXPECT_EQ(run.Status, 0);
    std::string expected =
        "warning: done.qc, line 1: $cdtexture \"" + m.M() +
        "\" (A $cd or $cdtexture line is replaced by a later one)\n"
        "warning: done.qc, line 4: $cliptotextures (A directive that Quarle does not know is left "
        "out)\n"
        "warning: done.qc, line 5: $sequence \"s0\" \"walk\" fps 30 node 3 (A sequence option that "
        "Quarle does not know is read as a blend file or an activity)\n";
    expected += testing::Repeat(101, 129, [](auto i) {
        return "warning: done.qc, line " + std::to_string(std::stoi(i) + 5) + ": $sequence s" + i +
               " walk (A sequence beyond the 101st of its group is left out)\n";
    });
    EXPECT_EQ(run.Err, expected);
}
#endif

} // namespace
} // namespace quarle
