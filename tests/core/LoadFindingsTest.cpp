// What a load tells about a script from elsewhere: what is kept is no
// finding; one small script for each kind that is, with the lines it names,
// and the same document as a load that lists nothing. (Every other reader test lists the findings
// too, so the whole reader's behaviour is pinned with the list on.)
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
        // What the forms cannot show is kept and written back: no finding.
        {"$cliptotextures\n$hbox 0 \"b\" 0 0 0 1 1 1\n  lines under it go with it\n", {}},
        {"\t$scale 3\nstray\n  // note\n/*\ncomment text\n*/\n", {}},
        {"$sequence \"a\" \"walk\" {\n{ event 5001 0 }\n}\n", {}},
        {"$sequence \"a\" \"walk\" X fps 30 AX LX node 3 transition 1 2\n", {}},
        {"$sequence \"b\" \"walk\" ACT_IDLE loop\n$sequence \"c\" \"walk\" fps 30 walk2\n"
         "$sequence \"e\" \"walk\" \"walk2\" blend XR -45 45 ACT_IDLE 1 fps 30  LX\n"
         "$sequence \"a\" \"walk\" blend XR 0 1\n",
         {}},
        {"$body body \"head\" reverse\n$bodygroup arms\n{\nstudio \"arm\" reverse\n}\n", {}},
        {"$cdtexture \"<M>\"\n", {}},
        {testing::Repeat(0, 101, [](auto i) { return "$sequence s" + i + " walk\n"; }), {}},
        {"$body body \"arm\"\n$texrendermode \"x.bmp\" masked\n"
         "$texrendermode \"b.bmp\" fullbright\n$controller 0 \"b\" X 0 10\n"
         "$sequence \"a\" \"walk\" \"walk2\" blend Y 0 1\n",
         {}},
        // What is really changed.
        {"$cd \"<T>\"\n", {{Kind::PathReplaced, 1}}},
        {"$sequence \"a\" \"walk\" fps 29.97 frame 0 10\n", {{Kind::FractionRounded, 3}}},
        {"$body body \"arm\"\n"
         "$texturegroup skins\n{\n{ \"b.bmp\" \"y.bmp\" }\n{ \"c.bmp\" \"z.bmp\" }\n}\n",
         {{Kind::TextureNotInParts, 6}}},
        {"$body body \"arm\"\n$texturegroup skins\n{\n{ \"b.bmp\" \"c.bmp\" }\n"
         "{ \"b.bmp\" \"c.bmp\" }\n{ \"c.bmp\" \"b.bmp\" }\n}\n",
         {{Kind::TextureRowDropped, 7}}},
        {"$bodygroup arms\n{\nstudio arm\nBlank\n}\n", {{Kind::PartReadAsBlank, 5}}},
        {"$sequence \"a\" \"walk\" node { event 1 2 }\n"
         "$sequence \"b\" \"walk\" { event 5 6 } blend XR -45\n",
         {{Kind::OptionCutShort, 3}, {Kind::OptionCutShort, 4}}},
    };
    for (const auto& [body, expected] : table) {
        Model m;
        const std::string script =
            m.Paths() + Replaced(Replaced(body, "<M>", m.M()), "<T>", m.Dir / "tex");
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
                                                       "$sequence \"b\" \"walk\" fps 7.5\n");
    ASSERT_EQ(m.Load(m.Paths() + "$include \"" + include + "\"\n$sequence c walk fps 2.5\n"),
              ReadOutcome::Loaded);
    // First the include itself, whose sequences go into the script.
    ASSERT_FALSE(m.Findings.empty());
    EXPECT_EQ(m.Findings.front().Kind, Kind::IncludeMerged);
    m.Findings.erase(m.Findings.begin());
    EXPECT_EQ(
        m.Findings,
        (LoadFindings{{Kind::FractionRounded, include, 3, "$sequence \"b\" \"walk\" fps 7.5"},
                      {Kind::FractionRounded, m.Dir / "model.qc", 4, "$sequence c walk fps 2.5"}}));
    EXPECT_EQ(FindingWarning(m.Findings[0]),
              "warning: more.qc, line 3: $sequence \"b\" \"walk\" fps 7.5 (A fraction in a "
              "whole-number field is rounded)");
}

#ifndef _WIN32
// quarle-qc prints one warning a finding and keeps its exit status.
TEST(LoadFindings, RoundtripWarnsOfEachPlaceOnStandardError) {
    Model m;
    std::string script = "$cd \"" + m.Dir / "tex" + "\"\n" + m.Paths() +
                         "$cliptotextures\n$sequence \"s0\" \"walk\" fps 29.97 node 3\n";
    script += testing::Repeat(1, 129, [](auto i) { return "$sequence s" + i + " walk\n"; });
    const std::string in = m.Dir.Write("done.qc", script);
    const testing::ToolRun run =
        testing::RunTool({"roundtrip", in, m.Dir / "out.qc"}, m.Dir.Path());
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Err, "warning: done.qc, line 1: $cd \"" + m.Dir / "tex" +
                           "\" (A $cd or $cdtexture line is replaced by a later one)\n"
                           "warning: done.qc, line 5: $sequence \"s0\" \"walk\" fps 29.97 node 3 "
                           "(A fraction in a whole-number field is rounded)\n");
}
#endif

} // namespace
} // namespace quarle
