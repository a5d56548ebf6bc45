#include "ScriptTestSupport.h"
#include "document/Paths.h"
#include "document/QcInclude.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>

namespace quarle {
namespace {

using testing::FillEverything;
using testing::LinesOf;
using testing::Model;
using testing::ReadFile;
using testing::Script;
using testing::WithoutNotice;

TEST(QcSequence, OptionWordsEventsBlendsAndTokeniserQuirksInWholeLines) {
    const struct {
        const char* script;
        const char* written;
    } cases[] = {
        // The writer's own lines; option words in any case; whole numbers round
        // halves to the even neighbour; motion flags are kept in their order.
        {"$sequence \"a\" \"a\" fps 30 \n"
         "$sequence \"b\" \"b\" fps 30  LX\n"
         "$sequence \"c\" \"c\" FPS 24 Loop\n"
         "$sequence \"d\" \"d\" Fps 24 LOOP frame 2 20.5 origin 1.5 -2 3 LY lz\n"
         "$sequence \"e\" \"e\" rotate -90.5 scale 0.25 X AX AY AZR x\n"
         "$sequence \"f\" \"f\" ACT_ARM 1 LX\n",
         "$sequence \"a\" \"a\" fps 30 \n"
         "$sequence \"b\" \"b\" fps 30  LX\n"
         "$sequence \"c\" \"c\" fps 24 loop \n"
         "$sequence \"d\" \"d\" fps 24 loop frame 2 20 origin 2 -2 3  LY LZ\n"
         "$sequence \"e\" \"e\" fps 30 rotate -90.5  scale 0.25 X AX AY AZR x\n"
         "$sequence \"f\" \"f\" fps 30 ACT_ARM 1 LX\n"},
        // Events: "{event" is one word, a brace in the parameter's place closes
        // the event; braces that open after the line has ended are no longer
        // the sequence's.
        {"$sequence \"a\" \"a\" { event 5001 3 \"12\" } {event 5002 4 } { event 5003 5 }"
         " { event 5004 6 \"x y\" } { EVENT 1 2.5 \"a\" } fps 12\n"
         "$sequence \"b\" \"b\" fps 20\n{ event 1 2 }\n{\n event 3 4\n}\n",
         "$sequence \"a\" \"a\" fps 12  { event 5001 3 \"12\" } { event 5002 4 } { event 5003 5 }"
         " { event 5004 6 \"x y\" } { event 1 2 \"a\" }\n"
         "$sequence \"b\" \"b\" fps 20 \n"},
        // A further file is the blend's second only with blend; without, it is
        // kept where it stood, as a blend without a file is kept.
        {"$sequence \"walk\" \"walk\" \"walk2\" fps 24 blend XR -45 45\n"
         "$sequence \"walk\" \"walk\" \"Walk2\" fps 24\n"
         "$sequence \"look\" \"look\" blend zr -90 90.5\n"
         "$sequence \"aim\" \"aim\" 2aim fps 10\n"
         "$sequence \"run\" \"run\" _side Loop\n"
         "$sequence \"swim\" \"swim\" \"\xFC\" fps 24 blend XR -45 45\n",
         "$sequence \"walk\" \"walk\" \"walk2\" fps 24  blend XR -45 45\n"
         "$sequence \"walk\" \"walk\" \"Walk2\" fps 24 \n"
         "$sequence \"look\" \"look\" fps 30  blend zr -90 90.5\n"
         "$sequence \"aim\" \"aim\" 2aim fps 10 \n"
         "$sequence \"run\" \"run\" _side fps 30 loop \n"
         "$sequence \"swim\" \"swim\" \"\xFC\" fps 24  blend XR -45 45\n"},
        // The tokeniser: the name behind a quoted one is cut at its blank (the
        // rest is one more file), empty tokens are no options, a tab stays in
        // front of the next token, "$sequence\t" is no $sequence (and is kept),
        // quotes come off a number, slots without a name are not written.
        {"$sequence \"big walk\" \"walk 2\" fps 20\n"
         "$sequence \"three\" \"three\" fps 20   loop\n"
         "$sequence \"two\" \"two\" fps 20  loop\n"
         "$sequence \"tab\"\t\"tab\"\tfps 12\n"
         "$sequence\t\"tabword\" \"x\"\n"
         "$sequence \"q\" \"q\" fps \"24\"\n"
         "$sequence idle idle fps 8\n"
         "$sequence\n"
         "$sequence \"\" \"\"\n",
         "$sequence \"big walk\" \"walk\" 2\" fps 20 \n"
         "$sequence \"three\" \"three\" fps 20 loop \n"
         "$sequence \"two\" \"two\" fps 20 loop \n"
         "$sequence \"tab\"\t\"tab\" fps 12 \n"
         "$sequence\t\"tabword\" \"x\"\n"
         "$sequence \"q\" \"q\" fps 24 \n"
         "$sequence \"idle\" \"idle\" fps 8 \n"},
        // Groups number in script order and keep their names.
        {"$sequence \"a\" \"a\"\n$sequencegroup legs\n$sequence \"b\" \"b\"\n"
         "$sequence \"c\" \"c\"\n$SequenceGroup\n$sequence \"d\" \"d\"\n",
         "$sequence \"a\" \"a\" fps 30 \n$sequencegroup legs\n$sequence \"b\" \"b\" fps 30 \n"
         "$sequence \"c\" \"c\" fps 30 \n$sequencegroup seqgroup2\n$sequence \"d\" \"d\" fps 30 "
         "\n"},
    };
    for (const auto& c : cases) {
        Model l;
        l.Load(c.script);
        EXPECT_EQ(LinesOf(l.Written(), "$sequence"), c.written) << c.script;
    }

    Model blends;
    blends.Load(cases[2].script);
    const AnimRec& look = blends.Doc->Anims[0][2];
    EXPECT_EQ(look.BlendOn, 0); // blend values without a second file are kept, not written
    EXPECT_EQ(look.BlendAxis, 2.0f);
    EXPECT_EQ(look.BlendMax, 90.5f);
    Model quirks;
    quirks.Load(cases[3].script);
    EXPECT_EQ(quirks.Host.Animations,
              (std::vector<std::string>{"big walk", "three", "two", "tab", "q", "idle", "", ""}));
    Model groups; // only group 0 fills the list
    groups.Load(cases[4].script);
    EXPECT_EQ(groups.Host.Animations, std::vector<std::string>{"a"});
}

// --- what a load followed by a save keeps and loses -------------------------

TEST(QcSequence, AWrittenScriptReadsBackIntoTheSameScript) {
    Model m;
    FillEverything(*m.Doc, m.Dir / "robot.mdl", m.M(), m.Dir / "tex");
    const std::string first = m.Written();

    Model again;
    EXPECT_EQ(again.LoadFile(m.Dir.Write("robot.qc", first)), ReadOutcome::Loaded);
    EXPECT_TRUE(again.Host.Questions.empty());
    EXPECT_TRUE(again.Host.Problems.empty());
    EXPECT_TRUE(again.Findings.empty()) << again.Findings.front().Text;
    EXPECT_EQ(again.Written(), first);

    const Document& d = *again.Doc;
    EXPECT_EQ(d.BodyGroups[1].Reverse[1], -1);   // a one-part group keeps its reverse
    EXPECT_EQ(d.BodyGroups[2].Reverse[1], -1);   // in a block it stays
    EXPECT_EQ(d.Anims[0][1].Rotate, 0.3333333f); // seven digits
    EXPECT_NE(d.Anims[0][1].Rotate, 1.0f / 3.0f);
    // Rows 2 and 4 were written; they close up into rows 2 and 3.
    EXPECT_EQ(d.TextureVariations[3][1], "a4.bmp");
    EXPECT_EQ(d.TextureVariations[3][2], Blank);
    EXPECT_EQ(d.TextureVariations[4][1], Blank);
    // The group without slot 0 joined the group before it.
    EXPECT_EQ(d.Anims[1][1].Name, "late");
    EXPECT_EQ(d.Anims[2][1].Name, "");
    EXPECT_EQ(again.Host.Animations, (std::vector<std::string>{"walk", "idle", "plain"}));
}

// Whatever a load made of a script, its save reads back to the same bytes.
TEST(QcSequence, ASaveReadsBackToItsOwnBytes) {
    const struct {
        const char* what;
        std::string script; // behind the folders of the test's model
    } cases[] = {
        {"a model without a name", ""},
        {"a quoted texture name ending in a blank, behind another",
         "$body head \"head\"\n$body blank \"blank\"\n"
         "$texturegroup s {\n{ \"a.bmp\" \"e.bmp \" }\n{ \"a2.bmp\" \"e.bmp \" }\n}\n"},
        {"a texture group before a body",
         "$body head \"head\"\n$texturegroup s {\n{ \"a.bmp\" }\n{ \"a2.bmp\" }\n}\n"
         "$body arm \"arm\"\n"},
        {"a texture group before the bodies",
         "$sequence walk walk\n$texturegroup s {\n{ \"a.bmp\" }\n{ \"a2.bmp\" }\n}\n"
         "$body head \"head\"\n"},
        {"body group names with blanks",
         "$bodygroup legs {\nstudio \"leg\"\nblank\n}\n$bodygroup gun {\nstudio \"arm\"\n}\n"
         "$bodygroup big gun\n{\nstudio \"arm\"\n}\n$bodygroup \"quoted\"\n{\nstudio \"leg\"\n}\n"
         "$body \"brace {\" head\n$body \"named so\" reverse\n"},
        {"a part with blanks that a quote keeps in before reverse",
         "$bodygroup q\n{\nstudio \"\" armreverse\n}\n"},
        {"a sequence file behind a tab", "$sequence \"tab\"\t\"walk\"\tfps 12\n"},
        {"kept files and options with quotes",
         "$sequence \"w\" \"w\"  \"t1.x \"fps 12 { event 1008 2 }\n"
         "$sequence v \"v\"\t\"v2\" node \"a b\" transition \"c d\n"
         "$sequence u \"u\" \"\"x\"\n$sequence t \"t\" ACT_T \"\"x\"\n"
         "$sequence \"s\" s \"ACT_S w\"\n$sequence r r ACT_R\" \" 1\n"},
        {"a line behind a closed texture group",
         "$body head \"head\"\n$texturegroup s {\n{ \"a.bmp\" }\n{ \"a2.bmp\" }\n}\n"
         "$texrendermode \"a.bmp\" masked\n{ \"a3.bmp\" }\n"},
        {"lines behind a sequence without a name",
         "$body head \"head\"\n$sequence \"\"\n$hbox 0 \"b\" 0 0 0 1 1 1\n$sequence walk walk\n"},
        {"sequence files with blanks inside",
         "$sequence aim \"aim down\"\n$sequence b \"b c\" \"d e\" blend XR 0 1\n"},
        {"a texture group read while an earlier $cd held the parts",
         "$cd \".\"\n$body head \"head\"\n$texturegroup s {\n{ \"a.bmp\" }\n{ \"a2.bmp\" }\n}\n"
         "$cd \"m\"\n"},
        {"an option or a blend cut short before a brace, and by the end of its sequence",
         "$sequence w w node { event 1 2 }\n$sequence v v {\n{ event 3 4 } { node\n$flags 1\n"
         "$sequence u u { event 5 6 } blend XR -45\n"},
        {"a second blank behind a quoted value, which is no token",
         "$sequence t t blend XRe \"a\"  b\n"},
        {"a sequence group without a name, with a kept line", "$sequencegroup\n$flags 1\n"},
        {"a render mode of a later part", "$texrendermode b.bmp MASKED\n$body arm \"arm\"\n"},
        {"an include of kept lines behind a comment whose end a body group took",
         "/*\n$bodygroup\n*/\n$\n$include box.qci\n"},
        {"an include of kept lines that a save writes behind a texture group",
         "$body head \"head\"\n$texrendermode \"a.bmp\" masked\n$include box.qci\n"
         "$texturegroup s {\n{ \"a.bmp\" }\n{ \"a2.bmp\" }\n}\n"},
        {"an include of kept lines that a save writes behind a group left open",
         "$texturegroup s {\n{ \"a.bmp\"\n$scale 2\n$include box.qci\n"},
        {"groups beyond the last and sequences beyond the 101st, behind a body",
         testing::Repeat(0, 100, [](auto i) { return "$sequence s" + i + " walk\n"; }) +
             "$body head \"head\"\n$sequence late walk\n" +
             testing::Repeat(1, 9, [](auto) { return std::string("$sequencegroup\n"); }) +
             "$sequencegroup ten\n$body arm \"arm\"\n$sequencegroup eleven\n$sequence e e\n"},
        {"a sequence beyond the 101st behind one without a name",
         "$sequence \"\"\n" +
             testing::Repeat(1, 100, [](auto i) { return "$sequence s" + i + " walk\n"; }) +
             "$sequence late walk\n"},
    };
    for (const auto& c : cases) {
        Model l;
        l.Host.KeepUnanswered = true; // a part that is not where the $cd says
        l.Dir.Write("m/blank.smd", testing::Smd({"e.bmp "}));
        l.Dir.Write("m/reverse.smd", testing::Smd({}));
        l.Dir.Write("box.qci", "$hbox 0 \"b\" 0 0 0 1 1 1\n");
        ASSERT_EQ(l.Load(l.Paths() + c.script), ReadOutcome::Loaded) << c.what;
        const std::string first = l.Written();
        Model again;
        ASSERT_EQ(again.LoadFile(l.Dir.Write("again.qc", first)), ReadOutcome::Loaded) << c.what;
        EXPECT_TRUE(again.Host.Questions.empty()) << c.what;
        EXPECT_EQ(again.Written(), first) << c.what;
    }
}

TEST(QcSequence, ADecimalCommaIsCutOnTheNextLoad) {
    Model m;
    FillEverything(*m.Doc, m.Dir / "robot.mdl", m.M(), m.Dir / "tex");
    m.Doc->Anims[0][1].Rotate = 1.5f;
    Model again;
    again.LoadFile(m.Dir.Write("comma.qc", Script(*m.Doc, ',')));
    // Locale forms lose their fraction; point forms keep it.
    const std::string written = again.Written();
    EXPECT_EQ(LinesOf(written, "$eyeposition") + LinesOf(written, "$controller 1") +
                  LinesOf(written, "$attachment 0") + LinesOf(written, "$scale") +
                  LinesOf(written, "$sequence \"idle\""),
              "$eyeposition 1 -2 64\n"
              "$controller 1 \"Bip01 Head\" ZR -30 30\n"
              "$attachment 0 \"Bip01 R Hand\" 1.5 0 -2\n"
              "$scale 1.5\n"
              "$sequence \"idle\" \"idle\" fps 30 rotate 1  LX\n");
    EXPECT_EQ(again.Doc->Anims[0][0].BlendMax, 45.0f);
}

TEST(QcSequence, AForeignScriptKeepsWhatTheDialectCanSay) {
#ifdef _WIN32
    // The script's folders are POSIX paths here; on Windows a relative
    // folder is resolved against a drive path the expectations do not name.
    GTEST_SKIP() << "relative folders are compared as POSIX paths";
#endif
    Model l;
    l.Host.KeepUnanswered = true;
    const std::string folder = std::string(QUARLE_TEST_DATA) + "/qc/wild";
    EXPECT_EQ(l.LoadFile(folder + "/wild.qc"), ReadOutcome::Loaded);
    EXPECT_TRUE(l.Host.Problems.empty());
    EXPECT_EQ(WithoutNotice(l.Written()), WithoutNotice(ReadFile(folder + "/wild.expected.qc")));

    // Kept in the record although not written: blend values without a file.
    const AnimRec& look = l.Doc->Anims[0][6];
    ASSERT_EQ(look.Name, "look");
    EXPECT_EQ(look.BlendAxis, 1.0f);
    EXPECT_EQ(look.BlendMin, -90.0f);
    // The folders were found beside the script, and the parts in them.
    EXPECT_EQ(l.Doc->ModelPath, folder);
    EXPECT_EQ(l.Doc->TextureCount, 5);
}

// A script from elsewhere, opened and saved: every line the compiler reads
// comes back, each once, and relative folders found beside it ask nothing.
TEST(QcSequence, AScriptFromElsewhereSavesEveryLineTheCompilerReadsOnce) {
    const std::string keep = std::string(QUARLE_TEST_DATA) + "/qc/keep/decompiled.qc";
    const struct {
        std::string file; // a script of the test data, or
        std::string text; // one written beside the test's model folder
        std::vector<std::string> lines;
    } cases[] = {
        {keep,
         "",
         {"$modelname \".\\soldier.mdl\"",
          "$cd \".\"",
          "$cdtexture \".\\textures\"",
          "$cdtexture \".\\shared_textures\"",
          "$externaltextures",
          "$cliptotextures",
          "$body body \"body\"",
          "$bodygroup weapon",
          "studio \"gun\" reverse",
          "$body extra \"body\" reverse",
          "$flags 512",
          "$eyeposition 0 0 64",
          "$origin 0 0 36",
          "$attachment 0 \"Bip01 R Hand\" 10 0 2",
          "$controller 0 \"Bip01 Spine\" XR -30 30",
          "$controller 1 \"Bip01 Head\" X 0 10",
          "$hbox 3 \"Bip01 Pelvis\" -7.0 -5.0 -4.0 5.0 6.0 4.0",
          "$hbox 1 \"Bip01 Head\" -1.25 -6.0 -3.0 9.0 4.0 4.0",
          "$bbox 0.000000 0.000000 0.000000 0.000000 0.000000 0.000000",
          "$cbox 0.000000 0.000000 0.000000 0.000000 0.000000 0.000000",
          "$texrendermode \"chrome.bmp\" fullbright",
          "$texrendermode \"outside.bmp\" masked",
          "{ \"skin.bmp\" \"gun.bmp\" }",
          "{ \"skin10.bmp\" \"gun.bmp\" }",
          "{ \"skin12.bmp\" \"gun.bmp\" }",
          "$sequencegroupsize 64",
          "$sequence \"idle\" \"idle\" fps 15 loop ACT_IDLE 1",
          "$sequence \"walk\" \"walk\" fps 30 loop ACT_WALK 1 X { event 1004 3 "
          "\"common/npc_step1.wav\" } { event 1004 13 \"common/npc_step2.wav\" }",
          "$sequence \"run\" \"run\" fps 40 loop ACT_RUN 1 LX AX AY AZR node 2",
          "$sequence \"trans\" \"trans\" fps 30  transition 1 2",
          "$sequence \"back\" \"trans\" fps 30  rtransition 1 2",
          "$sequence \"aim\" \"aim_down\" \"aim_up\" fps 30  blend XR -45 45",
          "$sequence \"shoot\" \"shoot\" \"shoot_b\" fps 30  { event 5001 0 \"31\" }",
          "$sequence \"die\" \"die\" fps 24 ACT_DIESIMPLE 1 { event 2001 1 }",
          "$sequence \"crouch\" \"crouch\" fps 20 loop ACT_CROUCH 1 AZR",
          "$sequencegroup \"extras\"",
          "$sequence \"wave\" \"wave\" fps 12  { event 1008 2 }"}},
        {"",
         testing::Repeat(0, 101, [](auto i) { return "$sequence s" + i + " walk\n"; }) +
             "$sequence s102 walk fps 10 {\n{ event 1 2 }\n}\n$sequencegroup legs\n$origin 1 2 3\n",
         {"$sequence \"s100\" \"walk\" fps 30 ", "$sequence s101 walk",
          "$sequence s102 walk fps 10 {", "{ event 1 2 }", "$sequencegroup legs", "$origin 1 2 3"}},
    };
    for (const auto& c : cases) {
        Model m;
        // The data folder is copied, so that the saved script can stand in it.
        std::string script = m.Dir / "model.qc";
        if (c.file.empty()) {
            m.Dir.Write("model.qc", "$modelname \"" + m.Dir / "x.mdl\"\n" + m.Paths() + c.text);
        } else {
            std::filesystem::copy(paths::ToFsPath(paths::FolderOf(c.file)),
                                  paths::ToFsPath(m.Dir / "keep"),
                                  std::filesystem::copy_options::recursive);
            script = m.Dir / ("keep/" + paths::FileNameOf(c.file));
        }
        ASSERT_EQ(m.LoadFile(script), ReadOutcome::Loaded);
        EXPECT_TRUE(m.Host.Questions.empty());
        EXPECT_TRUE(m.Host.Problems.empty());
        // The sequences of anims.qci go into the script, and the load says so.
        std::vector<FindingKind> kinds;
        for (const LoadFinding& f : m.Findings) {
            kinds.push_back(f.Kind);
        }
        EXPECT_EQ(kinds, c.file.empty() ? std::vector<FindingKind>{}
                                        : std::vector{FindingKind::IncludeMerged});
        const std::string written = m.Written();
        std::map<std::string, int> count;
        for (std::string_view line : SplitLines(written)) {
            ++count[std::string(line)];
        }
        for (const std::string& line : c.lines) {
            EXPECT_EQ(count[line], 1) << line;
        }
        // Saved over the script, it reads back into itself.
        testing::WriteFile(script, written);
        ASSERT_EQ(m.LoadFile(script), ReadOutcome::Loaded);
        EXPECT_EQ(m.Written(), written);
    }
}

} // namespace
} // namespace quarle
