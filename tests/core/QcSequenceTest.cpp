#include <gtest/gtest.h>

#include <sstream>

#include "QcReaderTestSupport.h"

namespace quarle {
namespace {

using testing::Model;
using testing::ReadFile;
using testing::WithoutLine;

// Loads sequence lines (no folders needed) and returns the slot of group 0.
struct Sequences : Model {
    const AnimRec& Slot(int s, int g = 0) const { return Doc->Anims[g][s]; }
};

TEST(QcSequence, TheWritersPlainLinesAndOptionWords) {
    Sequences l;
    l.Load("$sequence \"a\" \"a\" fps 30 \n"
           "$sequence \"b\" \"b\" fps 30  LX\n"
           "$sequence \"c\" \"c\" FPS 24 Loop\n"
           "$sequence \"d\" \"d\" Fps 24 LOOP frame 2 20.5 origin 1.5 -2 3 LY lz\n"
           "$sequence \"e\" \"e\" rotate -90.5 scale 0.25 X AX AY AZR x\n"
           "$sequence \"f\" \"f\" ACT_ARM 1 LX\n");
    const AnimRec& a = l.Slot(0);
    EXPECT_EQ(a.Name, "a");
    EXPECT_EQ(a.SmdFile, "a");
    EXPECT_EQ(a.Fps, 30);
    EXPECT_EQ(a.Loop, 0);
    EXPECT_EQ(a.ActivityId, "");
    EXPECT_EQ(a.BlendOn, 0);
    EXPECT_EQ(a.LX, 0);
    EXPECT_EQ(a.EventCount, 0);

    EXPECT_EQ(l.Slot(1).LX, 1);
    EXPECT_EQ(l.Slot(1).ActivityId, "");
    EXPECT_EQ(l.Slot(2).Fps, 24);
    EXPECT_EQ(l.Slot(2).Loop, 1);

    const AnimRec& d = l.Slot(3);
    EXPECT_EQ(d.Fps, 24);
    EXPECT_EQ(d.FrameLimit, 1);
    EXPECT_EQ(d.FrameStart, 2);
    EXPECT_EQ(d.FrameEnd, 20); // halves to the even neighbour
    EXPECT_EQ(d.OriginOn, 1);
    EXPECT_EQ(d.OriginX, 2);
    EXPECT_EQ(d.OriginY, -2);
    EXPECT_EQ(d.OriginZ, 3);
    EXPECT_EQ(d.LY, 1);
    EXPECT_EQ(d.LZ, 1);
    EXPECT_EQ(d.LX, 0);

    const AnimRec& e = l.Slot(4);
    EXPECT_EQ(e.Rotate, -90.5f);
    EXPECT_EQ(e.Scale, 0.25f);
    EXPECT_EQ(e.Fps, 30);
    EXPECT_EQ(e.ActivityId, ""); // the dropped words start no activity
    EXPECT_EQ(e.BlendOn, 0);

    EXPECT_EQ(l.Slot(5).ActivityId, "ACT_ARM 1");
    EXPECT_EQ(l.Slot(5).LX, 1);
}

TEST(QcSequence, EventsOnTheLineAndOffIt) {
    Sequences l;
    l.Load("$sequence \"a\" \"a\" { event 5001 3 \"12\" } {event 5002 4 } { event 5003 5 }"
           " { event 5004 6 \"x y\" } { EVENT 1 2.5 \"a\" } fps 12\n"
           "$sequence \"b\" \"b\" fps 20\n"
           "{ event 1 2 }\n"
           "{\n event 3 4\n}\n");
    const AnimRec& a = l.Slot(0);
    ASSERT_EQ(a.EventCount, 5);
    EXPECT_EQ(a.Events[1].EventId, 5001);
    EXPECT_EQ(a.Events[1].Frame, 3);
    EXPECT_EQ(a.Events[1].Parameter, "12");
    EXPECT_EQ(a.Events[2].EventId, 5002); // "{event" is one word
    EXPECT_EQ(a.Events[2].Frame, 4);
    EXPECT_EQ(a.Events[2].Parameter, "");
    EXPECT_EQ(a.Events[3].EventId, 5003);
    EXPECT_EQ(a.Events[3].Parameter, ""); // closed in the parameter's place
    EXPECT_EQ(a.Events[4].Parameter, "x y");
    EXPECT_EQ(a.Events[5].Frame, 2);
    EXPECT_EQ(a.Fps, 12);
    EXPECT_EQ(l.Slot(1).EventCount, 0); // events on following lines are dropped
}

TEST(QcSequence, BlendsAndTheRuleOfThumb) {
    Sequences l;
    l.Load("$sequence \"walk\" \"walk\" \"walk2\" fps 24 blend XR -45 45\n"
           "$sequence \"walk\" \"walk\" \"Walk2\" fps 24\n"
           "$sequence \"look\" \"look\" blend zr -90 90.5\n"
           "$sequence \"look\" \"look\" blend QR 1 2\n"
           "$sequence \"aim\" \"aim\" 2aim fps 10\n"
           "$sequence \"run\" \"run\" _side Loop\n");
    const AnimRec& a = l.Slot(0);
    EXPECT_EQ(a.BlendFile, "walk2");
    EXPECT_EQ(a.BlendOn, 1);
    EXPECT_EQ(a.BlendAxis, 0.0f);
    EXPECT_EQ(a.BlendMin, -45.0f);
    EXPECT_EQ(a.BlendMax, 45.0f);
    EXPECT_EQ(a.Fps, 24);

    // A capital starts an activity, which swallows "fps"; 24 starts a new one.
    EXPECT_EQ(l.Slot(1).ActivityId, "24");
    EXPECT_EQ(l.Slot(1).Fps, 30);
    EXPECT_EQ(l.Slot(1).BlendOn, 0);

    EXPECT_EQ(l.Slot(2).BlendAxis, 2.0f);
    EXPECT_EQ(l.Slot(2).BlendMax, 90.5f);
    EXPECT_EQ(l.Slot(2).BlendOn, 0); // blend values without a second file
    EXPECT_EQ(l.Slot(3).BlendAxis, 0.0f);
    EXPECT_EQ(l.Slot(3).BlendMin, 1.0f);

    EXPECT_EQ(l.Slot(4).ActivityId, "10"); // "2aim fps", then 10 starts anew
    EXPECT_EQ(l.Slot(4).Fps, 30);
    EXPECT_EQ(l.Slot(5).ActivityId, "_side Loop");
    EXPECT_EQ(l.Slot(5).Loop, 0);
}

TEST(QcSequence, TokeniserQuirksInWholeLines) {
    Sequences l;
    l.Load("$sequence \"big walk\" \"walk 2\" fps 20\n"
           "$sequence \"three\" \"three\" fps 20   loop\n"
           "$sequence \"two\" \"two\" fps 20  loop\n"
           "$sequence \"tab\"\t\"tab\"\tfps 12\n"
           "$sequence\t\"tabword\" \"x\"\n"
           "$sequence \"q\" \"q\" fps \"24\"\n"
           "$sequence idle idle fps 8\n"
           "$sequence\n"
           "$sequence \"\" \"\"\n");
    EXPECT_EQ(l.Slot(0).Name, "big walk");
    EXPECT_EQ(l.Slot(0).SmdFile, "walk"); // the name behind a quoted one is cut at its blank
    EXPECT_EQ(l.Slot(0).ActivityId, "20");
    EXPECT_EQ(l.Slot(0).Fps, 30);
    EXPECT_EQ(l.Slot(1).ActivityId, " loop"); // three blanks: an empty token
    EXPECT_EQ(l.Slot(1).Loop, 0);
    EXPECT_EQ(l.Slot(2).Loop, 1);             // two blanks do no harm
    EXPECT_EQ(l.Slot(3).SmdFile, "\ttab");    // a tab stays in front of the next token
    EXPECT_EQ(l.Slot(3).Fps, 12);
    EXPECT_EQ(l.Slot(4).Name, "q"); // "$sequence\t..." is no $sequence
    EXPECT_EQ(l.Slot(4).Fps, 24);   // quotes come off before the number is read
    EXPECT_EQ(l.Slot(5).Name, "idle");
    EXPECT_EQ(l.Slot(5).Fps, 8);
    EXPECT_EQ(l.Slot(6).Name, "");
    EXPECT_EQ(l.Slot(6).SmdFile, "");
    EXPECT_EQ(l.Slot(7).Name, "");
    EXPECT_EQ(l.Host.Animations,
              (std::vector<std::string>{"big walk", "three", "two", "tab", "q", "idle", "", ""}));
    // Slots without a name are not written.
    EXPECT_EQ(l.Written().find("$sequence \"\""), std::string::npos);
}

TEST(QcSequence, GroupsNumberInScriptOrderAndOnlyGroupZeroFillsTheList) {
    Sequences l;
    l.Load("$sequence \"a\" \"a\"\n$sequencegroup legs\n$sequence \"b\" \"b\"\n"
           "$sequence \"c\" \"c\"\n$SequenceGroup\n$sequence \"d\" \"d\"\n");
    EXPECT_EQ(l.Host.Animations, std::vector<std::string>{"a"});
    EXPECT_EQ(l.Slot(0, 1).Name, "b");
    EXPECT_EQ(l.Slot(1, 1).Name, "c");
    EXPECT_EQ(l.Slot(0, 2).Name, "d");
}

TEST(QcSequence, ASlotIsReadFreshEvenWhereTheResetDoesNotReach) {
    Sequences l;
    // An earlier load left events above 10 and slots above 100 behind.
    l.Doc->Anims[0][0].Events[12].Parameter = "stale";
    l.Doc->Anims[0][101].Loop = 1;
    std::string script;
    for (int s = 0; s <= 101; ++s) {
        script += "$sequence \"s\" \"s\"";
        if (s == 0) {
            for (int e = 1; e <= 12; ++e) {
                script += " { event 1 1 }";
            }
        }
        script += "\n";
    }
    l.Load(script);
    EXPECT_EQ(l.Slot(0).Events[12].Parameter, "");
    EXPECT_EQ(l.Slot(101).Loop, 0);
}

// --- what a load followed by a save keeps and loses -------------------------

// A document with every directive and option of the dialect in use.
void FillEverything(Model& m) {
    Document& d = *m.Doc;
    d.ModelName = m.Dir / "robot.mdl";
    d.ModelPath = m.M();
    d.TexturePath = m.Dir / "tex";
    d.ModelScale = 1.5f;
    d.Gamma = 2.2f;
    d.ExternalTextures = 1;
    d.EyesOn = 1;
    d.EyeX = 1.0f;
    d.EyeY = -2.5f;
    d.EyeZ = 64.0f;
    d.Attachments[0] = {1, 1.5f, 0.0f, -2.0f};
    d.AttachmentBones[0] = "Bip01 R Hand";
    d.Attachments[2] = {1, 0.0f, 0.0f, 0.0f};
    d.AttachmentBones[2] = "Bone2";
    d.Controllers[1] = {1, 2.0f, -30.0f, 30.5f};
    d.ControllerBones[1] = "Bip01 Head";
    d.SequenceGroupSize = 64;

    d.BodyGroupCount = 3;
    d.BodyGroups[1].Name = "head";
    d.BodyGroups[1].PartCount = 1;
    d.BodyGroups[1].Parts[1] = "head";
    d.BodyGroups[1].Reverse[1] = -1; // lost: $body has no reverse
    d.BodyGroups[2].Name = "arms";
    d.BodyGroups[2].PartCount = 3;
    d.BodyGroups[2].Parts[1] = "arm";
    d.BodyGroups[2].Reverse[1] = -1;
    d.BodyGroups[2].Parts[2] = Blank;
    d.BodyGroups[2].Parts[3] = "leg";
    d.BodyGroups[3].Name = "none";

    // The scan of the parts gives a, b, c, d; the table must agree.
    d.TextureModes[2] = {"b.bmp", 1};
    d.TextureModes[4] = {"d.bmp", 2};
    d.TextureCount = 4;
    const char* base[] = {"a.bmp", "b.bmp", "c.bmp", "d.bmp"};
    for (int c = 1; c <= 4; ++c) {
        d.TextureVariations[1][c] = base[c - 1];
    }
    d.TextureVariations[2][2] = "b2.bmp";
    d.TextureVariations[4][1] = "a4.bmp";
    d.TextureVariations[4][4] = "d4.bmp";

    AnimRec& walk = d.Anims[0][0];
    walk.Name = "walk";
    walk.SmdFile = "walk";
    walk.BlendFile = "walk2";
    walk.BlendOn = 1;
    walk.Fps = 24;
    walk.Loop = 1;
    walk.FrameLimit = 1;
    walk.FrameStart = 0;
    walk.FrameEnd = 20;
    walk.OriginOn = 1;
    walk.OriginX = 1;
    walk.OriginY = -2;
    walk.OriginZ = 3;
    walk.Rotate = 90.0f;
    walk.ActivityId = "ACT_WALK 1";
    walk.LX = walk.LY = walk.LZ = 1;
    walk.Scale = 2.0f;
    walk.BlendAxis = 1.0f;
    walk.BlendMin = -45.0f;
    walk.BlendMax = 45.5f;
    walk.EventCount = 3;
    walk.Events[1] = {3, 5001, "12"};
    walk.Events[2] = {7, 5002, ""};
    walk.Events[3] = {9, 5004, "common/a b.wav"};
    AnimRec& idle = d.Anims[0][1];
    idle.Name = "idle";
    idle.SmdFile = "idle";
    idle.Rotate = 1.0f / 3.0f;
    d.Anims[0][2].Name = "plain";
    d.Anims[0][2].SmdFile = "plain";
    d.Anims[0][101].Name = "beyond"; // never written
    d.Anims[1][0].Name = "g1";
    d.Anims[1][0].SmdFile = "g1";
    d.Anims[1][0].Fps = 10;
    d.Anims[2][1].Name = "late"; // group 2 without slot 0
    d.Anims[2][1].SmdFile = "late";
}

TEST(QcSequence, AWrittenScriptReadsBackIntoTheSameScript) {
    Model m;
    FillEverything(m);
    const std::string first = m.Written();
    const std::string path = m.Dir.Write("robot.qc", first);

    Model again;
    EXPECT_EQ(again.LoadFile(path), ReadOutcome::Loaded);
    EXPECT_TRUE(again.Host.Questions.empty());
    EXPECT_TRUE(again.Host.Problems.empty());
    EXPECT_EQ(again.Written(), first);

    const Document& d = *again.Doc;
    EXPECT_EQ(d.ModelName, m.Dir / "robot.mdl");
    EXPECT_EQ(d.BodyGroups[1].Reverse[1], 0);  // a one-part group loses its reverse
    EXPECT_EQ(d.BodyGroups[2].Reverse[1], -1); // in a block it stays
    EXPECT_EQ(d.Anims[0][0].Events[3].Parameter, "common/a b.wav");
    EXPECT_EQ(d.Anims[0][0].BlendAxis, 1.0f);
    EXPECT_EQ(d.Anims[0][1].Rotate, 0.3333333f); // seven digits
    EXPECT_NE(d.Anims[0][1].Rotate, 1.0f / 3.0f);
    EXPECT_EQ(d.Anims[0][101].Name, "");
    // Rows 2 and 4 were written; they close up into rows 2 and 3.
    EXPECT_EQ(d.TextureVariations[3][1], "a4.bmp");
    EXPECT_EQ(d.TextureVariations[3][2], Blank);
    EXPECT_EQ(d.TextureVariations[4][1], Blank);
    // The group without slot 0 joined the group before it.
    EXPECT_EQ(d.Anims[1][1].Name, "late");
    EXPECT_EQ(d.Anims[2][1].Name, "");
    EXPECT_EQ(again.Host.Animations, (std::vector<std::string>{"walk", "idle", "plain"}));
}

TEST(QcSequence, ADecimalCommaIsCutOnTheNextLoad) {
    Model m;
    FillEverything(m);
    m.Doc->Anims[0][1].Rotate = 1.5f;
    std::ostringstream out;
    WriteQcScript(*m.Doc, out, ',');
    ASSERT_NE(out.str().find("rotate 1,5"), std::string::npos);

    Model again;
    again.LoadFile(m.Dir.Write("comma.qc", out.str()));
    const Document& d = *again.Doc;
    EXPECT_EQ(d.Anims[0][1].Rotate, 1.0f);
    EXPECT_EQ(d.EyeY, -2.0f);                // locale form
    EXPECT_EQ(d.Controllers[1].LimitMax, 30.0f);
    EXPECT_EQ(d.Anims[0][0].BlendMax, 45.0f);
    EXPECT_EQ(d.Attachments[0].X, 1.5f);     // point form
    EXPECT_EQ(d.ModelScale, 1.5f);
}

TEST(QcSequence, SlotsAndRowsBeyondTheWrittenRangeAreReadButNotWritten) {
    Model l;
    std::string script = l.Paths() + "$body head \"head\"\n$bodygroup arms\n{\nstudio \"arm\"\n"
                                     "studio \"leg\"\n}\n$texturegroup t\n{\n{ \"a.bmp\" }\n";
    for (int r = 2; r <= 12; ++r) {
        script += "{ \"r" + std::to_string(r) + ".bmp\" }\n";
    }
    script += "}\n";
    for (int s = 0; s <= 102; ++s) {
        script += "$sequence \"s" + std::to_string(s) + "\" \"s\"\n";
    }
    l.Load(script);
    EXPECT_EQ(l.Doc->Anims[0][102].Name, "s102");
    EXPECT_EQ(l.Doc->TextureVariations[12][1], "r12.bmp");
    const std::string written = l.Written();
    EXPECT_NE(written.find("\"s100\""), std::string::npos);
    EXPECT_EQ(written.find("\"s101\""), std::string::npos);
    EXPECT_NE(written.find("{ \"r10.bmp\""), std::string::npos);
    EXPECT_EQ(written.find("{ \"r11.bmp\""), std::string::npos);
}

TEST(QcSequence, AForeignScriptKeepsWhatTheDialectCanSay) {
    Model l;
    l.Host.KeepUnanswered = true;
    const std::string folder = std::string(QUARLE_TEST_DATA) + "/qc/wild";
    EXPECT_EQ(l.LoadFile(folder + "/wild.qc"), ReadOutcome::Loaded);
    EXPECT_TRUE(l.Host.Problems.empty());
    EXPECT_EQ(WithoutLine(l.Written(), 3), WithoutLine(ReadFile(folder + "/wild.expected.qc"), 3));

    const Document& d = *l.Doc;
    // Kept in the record although not written: blend values without a file.
    const AnimRec& look = d.Anims[0][6];
    ASSERT_EQ(look.Name, "look");
    EXPECT_EQ(look.BlendOn, 0);
    EXPECT_EQ(look.BlendAxis, 1.0f);
    EXPECT_EQ(look.BlendMin, -90.0f);
    // The folders stay as written, and the parts were found beside the script.
    EXPECT_EQ(d.ModelPath, ".\\");
    EXPECT_EQ(d.TextureCount, 5);
    ASSERT_GE(l.Host.Animations.size(), 3u);
    EXPECT_EQ(l.Host.Animations[0], "idle");
}

} // namespace
} // namespace quarle
