// The script's directives as the model compiler reads them, one table per
// family. Each row holds script lines and what the forms take from them,
// which is what the compiler reads; each row is also saved twice and read
// back: as loaded (the script's own bytes come back), and with every record
// written anew, which must read back into the same records.
#include "ScriptTestSupport.h"
#include "document/NumberText.h"

#include <gtest/gtest.h>
#include <sstream>

namespace quarle {
namespace {

using testing::Model;
using testing::Script;

struct Row {
    std::string Script; // behind the folders of the test's model
    std::string Held;   // what the forms hold of it
};

// Loads each row, compares what the forms hold, then saves it as loaded and
// written anew.
template <typename Describe> void CheckRows(const std::vector<Row>& rows, Describe describe) {
    for (const Row& row : rows) {
        Model m;
        m.Host.KeepUnanswered = true;
        m.Dir.Write("m/many.smd", testing::Smd({"t1.bmp", "t2.bmp", "t3.bmp", "t4.bmp", "t5.bmp",
                                                "t6.bmp", "t7.bmp", "t8.bmp", "t9.bmp", "t10.bmp",
                                                "t11.bmp", "t12.bmp"}));
        m.Dir.Write("m/blank.smd", testing::Smd({"e.bmp "}));
        const std::string script = m.Paths() + row.Script;
        ASSERT_EQ(m.Load(script), ReadOutcome::Loaded) << row.Script;
        EXPECT_EQ(describe(*m.Doc), row.Held) << row.Script;
        EXPECT_EQ(m.Written(), script) << row.Script;

        testing::WriteAllAnew(*m.Doc);
        const std::string anew = m.Written();
        Model again;
        again.Host.KeepUnanswered = true;
        again.Dir.Write("m/many.smd", testing::ReadFile(m.M() + "/many.smd"));
        ASSERT_EQ(again.LoadFile(m.Dir.Write("anew.qc", anew)), ReadOutcome::Loaded);
        EXPECT_EQ(describe(*again.Doc), row.Held) << "written anew:\n" << anew;
    }
}

std::string Number(f32 value) {
    return FloatToPointText(value);
}

// A sequence as the forms hold it: its name and files, and each field that
// differs from a fresh record.
std::string Held(const AnimRec& a) {
    std::ostringstream o;
    o << a.Name << '|' << a.SmdFile;
    if (a.BlendOn == 1) {
        o << '|' << a.BlendFile << " blend=" << a.BlendAxis << ',' << Number(a.BlendMin) << ','
          << Number(a.BlendMax);
    }
    if (a.Fps != 30) {
        o << " fps=" << a.Fps;
    }
    if (a.Loop == 1) {
        o << " loop";
    }
    if (a.FrameLimit == 1) {
        o << " frame=" << a.FrameStart << '-' << a.FrameEnd;
    }
    if (a.OriginOn == 1) {
        o << " origin=" << a.OriginX << ',' << a.OriginY << ',' << a.OriginZ;
    }
    if (a.Rotate != 0.0f) {
        o << " rotate=" << Number(a.Rotate);
    }
    if (a.Scale != 1.0f) {
        o << " scale=" << Number(a.Scale);
    }
    if (!a.ActivityId.empty()) {
        o << " act=" << a.ActivityId;
    }
    o << (a.LX == 1 ? " LX" : "") << (a.LY == 1 ? " LY" : "") << (a.LZ == 1 ? " LZ" : "");
    for (int e = 1; e <= a.EventCount; ++e) {
        o << " ev=" << a.Events[e].EventId << '@' << a.Events[e].Frame << '<'
          << a.Events[e].Parameter << '>';
    }
    for (const std::string& f : a.KeptFiles) {
        o << " file=" << f;
    }
    if (!a.KeptOptions.empty()) {
        o << " kept=";
        for (const std::string& t : a.KeptOptions) {
            o << '[' << t << ']';
        }
    }
    return o.str();
}

std::string Sequences(const Document& d) {
    std::string text;
    for (int g = 0; g <= limits::LastSequenceGroup; ++g) {
        for (int s = 0; s <= limits::LastWrittenAnimSlot; ++s) {
            const AnimRec& a = d.Anims[static_cast<std::size_t>(g)][static_cast<std::size_t>(s)];
            if (a.From.Read) {
                text += (text.empty() ? "" : " / ") + (g > 0 ? std::to_string(g) + ":" : "") + Held(a);
            }
        }
    }
    return text;
}

// Each row was checked once against the compiler: the frame rate, flags,
// activity and weight, frames, events with their options, blends and
// motion types of its model.
TEST(QcGrammar, SequenceOptions) {
    CheckRows(
        {
            // Numbers: fractions the compiler keeps (fps, origin, rotate,
            // scale) stand as written; whole-number fields cut them.
            {"$sequence idle walk fps 29.97 rotate 1.50 scale 0.5\n",
             "idle|walk rotate=1.5 scale=0.5"},
            {"$sequence idle walk frame 2.7 8 origin 1.5 0 -2\n",
             "idle|walk frame=2-8 origin=2,0,-2"},
            // An activity takes the next token as its weight, whatever it is.
            {"$sequence idle walk ACT_IDLE loop\n", "idle|walk act=ACT_IDLE loop"},
            {"$sequence idle walk act_walk 2 ACT_5 3\n", "idle|walk act=ACT_5 3"},
            // Option words in any case, some by their first letters.
            {"$sequence idle walk LOOPING Frames 0 5 FPS 12 lx Ly\n",
             "idle|walk fps=12 loop frame=0-5 LX LY"},
            // Events keep their options byte for byte; braces may span lines
            // and hold the files; an event needs no braces.
            {"$sequence idle walk { event 1004 2 \" x \" } { event 5001 3 }\n",
             "idle|walk ev=1004@2< x > ev=5001@3<>"},
            {"$sequence idle {\n walk fps 12 // note\n event 1 2\n}\n",
             "idle|walk fps=12 ev=1@2<>"},
            // A second file is the blend's with blend; without, it is kept,
            // and so is a blend without a second file.
            {"$sequence idle walk walk2 blend ZR -45 45.0\n", "idle|walk|walk2 blend=2,-45,45"},
            {"$sequence idle walk walk2 fps 24\n", "idle|walk fps=24 file=walk2"},
            {"$sequence idle walk blend XR -90 90\n", "idle|walk kept=[blend][XR][-90][90]"},
            // In braces, as a decompiler writes it: the axis stays before
            // the bounds when the sequence is written anew.
            {"$sequence \"aim\" {\n\t\"walk\"\n\t\"walk2\"\n\tblend XR -45 45\n\tfps 14\n\tloop\n}\n",
             "aim|walk|walk2 blend=0,-45,45 fps=14 loop"},
            // Motion types, nodes and transitions are kept in their order.
            {"$sequence idle walk X AX AZR node 3 transition 1 2 rtransition 2 1\n",
             "idle|walk kept=[X][AX][AZR][node][3][transition][1][2][rtransition][2][1]"},
            // A file named as an option word stands behind "animation";
            // names may be empty; a quoted name keeps its blanks.
            {"$sequence \"\" animation fps\n", "|fps"},
            {"$sequence \"the walk\" \"walk\" rotate 0 scale 1\n", "the walk|walk"},
        },
        Sequences);
}

std::string Bodies(const Document& d) {
    std::string text;
    for (int g = 1; g <= d.BodyGroupCount; ++g) {
        const BodyGroupRec& group = d.BodyGroups[static_cast<std::size_t>(g)];
        text += (g > 1 ? " / " : "") + group.Name + ":";
        for (int p = 1; p <= group.PartCount; ++p) {
            const auto i = static_cast<std::size_t>(p);
            text += " " + group.Parts[i] + (group.Reverse[i] != 0 ? "(reverse)" : "") +
                    (group.PartWords[i].empty() ? "" : "[" + group.PartWords[i] + "]");
        }
    }
    return text;
}

// Each row was checked once against the compiler: the body parts of its
// model, their sub-models, and which of them are reversed.
TEST(QcGrammar, BodyGroups) {
    CheckRows(
        {
            {"$body \"the head\" head scale 2\n", "the head: head[scale 2]"},
            // Parts up to a token that starts with '}', "studio" and "blank"
            // in any case; a name needs no quotes, reverse no lower case.
            {"$bodygroup arms\n{\nSTUDIO arm\nstudio leg Reverse\n}\n",
             "arms: arm leg(reverse)"},
            // A part before the brace counts, comments and directives inside
            // the block are passed over.
            {"$bodygroup arms studio arm\n{\n// note\nblank\n$body x leg\n}\n",
             "arms: arm <blank>"},
            // A brace on a part's line is a word of that part: the block goes on.
            {"$bodygroup arms\n{ studio arm }\nstudio leg\n}\n", "arms: arm[}] leg"},
            {"$bodygroup a{\n{\nstudio \"head\"\n}\n$bodygroup lone\n{ blank }\n",
             "a{: head / lone: <blank>"},
        },
        Bodies);
}

std::string Points(const Document& d) {
    std::string text;
    for (std::size_t i = 0; i < d.Attachments.size(); ++i) {
        const AttachmentRec& a = d.Attachments[i];
        if (a.Active == 1) {
            text += "att" + std::to_string(i) + "=" + d.AttachmentBones[i] + "," + Number(a.X) +
                    "," + Number(a.Y) + "," + Number(a.Z) + " ";
        }
    }
    for (std::size_t i = 0; i < d.Controllers.size(); ++i) {
        const ControllerRec& c = d.Controllers[i];
        if (c.Active == 1) {
            text += "ctl" + std::to_string(i) + "=" + d.ControllerBones[i] + "," +
                    Number(c.Axis) + "," + Number(c.LimitMin) + "," + Number(c.LimitMax) + " ";
        }
    }
    return text;
}

// Each row was checked once against the compiler: its model's attachments
// are in the script's order, its controllers too, with their numbers.
TEST(QcGrammar, AttachmentsAndControllers) {
    CheckRows(
        {
            // The forms show each by its number; the script's order stays,
            // and so do a second one of a number and one beyond 3.
            {"$attachment 1 Bone2 0 0 5.50\n$attachment 0 \"Bone1\" 1 2 3\n"
             "$attachment 0 Bone3 4 5 6\n$attachment 4 Bone1 1 1 1\n",
             "att0=Bone1,1,2,3 att1=Bone2,0,0,5.5 "},
            // The mouth, a number beyond 3, a moving controller, a second of
            // a number and one of a type the compiler passes over stay.
            {"$controller mouth Bone3 XR 0 30\n$controller 4 Bone3 ZR 0 30\n"
             "$controller 1 Bone2 yr -30 30.5\n$controller 2 Bone2 X 0 10\n"
             "$controller 1 Bone3 ZR 0 5\n$controller 3 Bone2 WR 1 2\n",
             "ctl1=Bone2,1,-30,30.5 "},
        },
        Points);
}

std::string Settings(const Document& d) {
    std::ostringstream o;
    o << "scale=" << Number(d.ModelScale) << " gamma=" << Number(d.Gamma)
      << " groupsize=" << d.SequenceGroupSize;
    if (d.EyesOn == 1) {
        o << " eye=" << Number(d.EyeX) << ',' << Number(d.EyeY) << ',' << Number(d.EyeZ);
    }
    if (d.ExternalTextures == 1) {
        o << " external";
    }
    return o.str();
}

// Each row was checked once against the compiler: its model's eye position,
// gamma, size, and the files it writes (the split by sequence group size).
TEST(QcGrammar, ModelSettings) {
    CheckRows(
        {
            // A number in quotes is a number; a token behind the value is
            // passed over; the last $gamma counts.
            {"$scale \"2\"\n$gamma 2 5\n$gamma 2.5\n", "scale=2 gamma=2.5 groupsize=0"},
            {"$eyeposition 1 -2.5 64\n$externaltextures\n",
             "scale=1 gamma=1.8 groupsize=0 eye=1,-2.5,64 external"},
            // A whole number cut as the compiler cuts it; 0 splits every
            // sequence into a file of its own, so it stays.
            {"$sequencegroupsize 63.5\n", "scale=1 gamma=1.8 groupsize=63"},
            {"$sequencegroupsize 0\n", "scale=1 gamma=1.8 groupsize=0"},
            // Directive words in another case are none: the compiler refuses
            // them, and they stay as they stand.
            {"$Scale 2\n$GAMMA 3\n", "scale=1 gamma=1.8 groupsize=0"},
        },
        Settings);
}

std::string Textures(const Document& d) {
    std::string text;
    for (int i = 1; i <= limits::LastWrittenTextureMode; ++i) {
        const TextureModeRec& mode = d.TextureModes[static_cast<std::size_t>(i)];
        if (mode.Mode != 0) {
            text += mode.Name + (mode.Mode == 1 ? " masked " : " additive ");
        }
    }
    for (int r = 2; r <= limits::LastTextureRow; ++r) {
        for (int c = 1; c <= d.TextureCount; ++c) {
            const std::string& cell =
                d.TextureVariations[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)];
            if (cell != Blank) {
                text += std::to_string(r) + ":" + d.TextureVariations[1][static_cast<std::size_t>(c)] +
                        "=" + cell + " ";
            }
        }
    }
    return text;
}

// Each row was checked once against the compiler: its model's textures in
// their order, their flags, and its skin families.
TEST(QcGrammar, TextureDirectives) {
    CheckRows(
        {
            // Texture names in any case; before the part that has it, a
            // render mode stays there (it puts the texture first).
            {"$texrendermode c.BMP masked\n$body arms arm\n$texrendermode \"B.bmp\" additive\n",
             "b.bmp additive c.bmp masked "},
            // Only the two mode words in lower case: the compiler refuses
            // another, and the line stays as it stands.
            {"$body arms arm\n$texrendermode b.bmp MASKED\n", ""},
            // A row equal to the first is a skin family of its own; rows end
            // at braces, not lines; the columns are the script's.
            {"$body arms arm\n$texturegroup skins\n{\n{ \"c.bmp\" b.bmp }\n"
             "{ c.bmp b.bmp }\n{ x.bmp\n y.bmp }\n}\n",
             "3:b.bmp=y.bmp 3:c.bmp=x.bmp "},
            // The first group is the one the compiler uses; the blank that
            // ends a part's texture line is no part of the name.
            {"$body b blank\n$texturegroup s\n{\n{ e.bmp }\n{ x.bmp }\n}\n"
             "$texturegroup t\n{\n{ e.bmp }\n{ y.bmp }\n}\n",
             "2:e.bmp =x.bmp "},
            // Columns beyond the ten textures the forms show are kept.
            {"$body many many\n$texturegroup s\n{\n{ t12.bmp t1.bmp }\n{ x.bmp y.bmp }\n}\n",
             "2:t1.bmp=y.bmp "},
        },
        Textures);
}

// A value the user did not change is written as the script had it: only
// the changed one is written in the writer's form.
TEST(QcGrammar, AChangedRecordKeepsTheScriptsTextOfEveryValueLeftAlone) {
    Model m;
    m.Load(m.Paths() + "$sequence idle walk fps 29.97 frame 2.7 8 origin 1.5 0 0 rotate 1.50 "
                       "ACT_IDLE loop { event 05001 2 }\n"
                       "$attachment 00 Bone1 1.50 0 0\n");
    AnimRec& idle = m.Doc->Anims[0][0];
    idle.Loop = 1;
    idle.FrameEnd = 9;
    m.Doc->Attachments[0].Y = 2.25f;
    EXPECT_EQ(testing::LinesOf(m.Written(), "$"),
              m.Paths() + "$sequence \"idle\" \"walk\" fps 29.97 loop frame 2.7 9 origin 1.5 0 0 "
                          "rotate 1.50 ACT_IDLE loop { event 05001 2 }\n"
                          "$attachment 00 \"Bone1\" 1.50 2.25 0\n");
}

} // namespace
} // namespace quarle
