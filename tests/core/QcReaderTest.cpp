#include "ScriptTestSupport.h"
#include "document/ScriptLayout.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace quarle {
namespace {

using testing::LinesOf;
using testing::Model;
using testing::ReadFile;
using testing::Repeat;
using testing::Script;
using testing::Sep;
using testing::Smd;

TEST(QcReader, TheWorkingFileHoldsTheFlattenedScriptAndStaysBehind) {
    Model l;
    l.Dir.Write("inc.qc", "$gamma 2\n");
    EXPECT_EQ(l.Load("// head\n" + l.Paths() + "$include \"" + l.Dir / "inc.qc" + "\"\n"),
              ReadOutcome::Loaded);
    EXPECT_EQ(ReadFile(l.Dir / "loadbuffer.dat"), "// head\n" + l.Paths() + "$gamma 2\n\n");
    EXPECT_EQ(l.Doc->Gamma, 2.0f);
    EXPECT_EQ(l.Host.Finished, 1);
    EXPECT_EQ(l.Host.NewDocuments, 0);
    EXPECT_TRUE(l.Host.Questions.empty());
    EXPECT_TRUE(l.Host.Problems.empty());
}

TEST(QcReader, RelativeFoldersAreFoundBesideTheScriptAndNamedAnewWhereTheScriptMoves) {
    Model l;
    const std::string script = "$modelname \".\\m\\x.mdl\"\n$cd .\n"
                               "$cdtexture \".\\tex\" \"..\\shared\"\n$cdtexture m\n";
    l.Load(script);
    EXPECT_TRUE(l.Host.Questions.empty());
    EXPECT_EQ(l.Doc->ModelPath, l.Dir.Path());
    EXPECT_EQ(l.Doc->TexturePath, l.Dir / "tex");
    EXPECT_EQ(l.Written(), script);
    // Saved elsewhere, they name the folders themselves; the further texture
    // folders stay as written.
    std::filesystem::create_directory(l.Dir / "elsewhere");
    l.Doc->QcFile = l.Dir / "elsewhere/moved.qc";
    EXPECT_EQ(LinesOf(l.Written(), "$c"), "$cd \"" + l.Dir.Path() + "\"\n$cdtexture \"" +
                                              l.Dir / "tex" + "\" \"..\\shared\"\n$cdtexture m\n");
}

TEST(QcReader, AFolderThatIsNotThereIsAskedForAndTheAnswerSaved) {
    Model l;
    std::filesystem::create_directory(l.Dir / "empty");
    l.Host.Answer(l.M()); // the empty folder
    l.Load("$cd \"" + l.Dir / "empty" + "\"\n$cd .\n");
    ASSERT_EQ(l.Host.Questions.size(), 1u);
    EXPECT_EQ(l.Host.Questions[0].Extra, "<IDS_MODELPATH>");
    EXPECT_EQ(l.Doc->ModelPath, l.M());
    // The second $cd, which the compiler refuses, stays as it stands.
    EXPECT_EQ(l.Written(), "$cd \"" + l.M() + "\"\n$cd .\n");
    ASSERT_EQ(l.Findings.size(), 2u);
    EXPECT_EQ(l.Findings[0].Kind, FindingKind::PathAnswered);
    EXPECT_EQ(l.Findings[0].Line, 1);
    EXPECT_EQ(l.Findings[1].Kind, FindingKind::CompilerRefuses);
    EXPECT_EQ(l.Findings[1].Line, 2);
}

// The compiler gives each sequence the $origin read last before it (the
// turn only where a line has one); the overlay of the compiled skeleton
// places the sequence by it.
TEST(QcReader, EachSequenceKeepsTheOriginInForceWhereItStands) {
    Model l;
    l.Load(l.Paths() + "$sequence a walk\n$origin 1 2.5 -3 // raised\n$sequence b walk\n"
                       "$origin 4 5 6 90\n$origin 7 8 9\n$sequence c walk\n");
    const std::vector<std::array<float, 4>> expected{
        {0, 0, 0, 0}, {1, 2.5f, -3, 0}, {7, 8, 9, 90}};
    for (std::size_t s = 0; s < expected.size(); ++s) {
        const AnimRec& anim = l.Doc->Anims[0][s];
        ASSERT_TRUE(anim.From.Read) << s;
        const DefaultOrigin& o = anim.From.Read->Origin;
        EXPECT_EQ((std::array<float, 4>{o.Offset[0], o.Offset[1], o.Offset[2], o.Degrees}),
                  expected[s])
            << anim.Name;
    }
    EXPECT_EQ(l.Doc->Layout->LastOrigin.Degrees, 90.0f);
}

TEST(QcReader, ModelNameGainsTheScriptsFolderOrAsksForAMissingOne) {
    Model l;
    l.Load("$modelname \"robot.mdl\"\n");
    EXPECT_EQ(l.Doc->ModelName, l.Dir / "robot.mdl");

    Model k;
    k.Host.Answer(k.M());
    k.Load("$modelname " + k.Dir / "nowhere/robot.mdl\n");
    ASSERT_EQ(k.Host.Questions.size(), 1u);
    EXPECT_EQ(k.Host.Questions[0].Path, k.Dir / "nowhere");
    EXPECT_EQ(k.Host.Questions[0].Extra, "<IDS_MODELNAME>");
    EXPECT_EQ(k.Doc->ModelName, k.M() + Sep + "robot.mdl");

    // An empty folder is enough for the model, which the compiler only
    // writes into; it stays relative to the script.
    Model e;
    std::filesystem::create_directories(e.Dir / "out");
    e.Load("$modelname \"out\\robot.mdl\"\n");
    EXPECT_TRUE(e.Host.Questions.empty());
    EXPECT_EQ(e.Doc->ModelName, e.Dir / "out" + Sep + "robot.mdl");
    EXPECT_EQ(LinesOf(e.Written(), "$m"), "$modelname \"out\\robot.mdl\"\n");

    // Kept as written, a Windows path keeps its backslashes.
    Model w;
    w.Host.KeepUnanswered = true;
    w.Load("$modelname \"c:\\m\\robot.mdl\"\n");
    EXPECT_EQ(w.Doc->ModelName, "c:\\m\\robot.mdl");
}

TEST(QcReader, ALoadFindsNothingOfAnEarlierOneWhereTheResetDoesNotReach) {
    // Body groups above 10: a second load of the same script writes the same.
    Model l;
    const std::string path =
        l.Dir.Write("twelve.qc", l.Paths() + Repeat(1, 12, [](auto g) {
                                     return "$bodygroup g" + g + "\n{\nstudio \"arm\"\nblank\n}\n";
                                 }));
    l.LoadFile(path);
    const std::string first = l.Written();
    l.LoadFile(path);
    EXPECT_EQ(l.Doc->BodyGroups[12].PartCount, 2);
    EXPECT_EQ(l.Written(), first);

    // Events above 10 and slots above 100 of a sequence slot.
    l.Doc->Anims[0][0].Events[12].Parameter = "stale";
    l.Doc->Anims[0][101].Loop = 1;
    l.Load("$sequence \"s\" \"s\"" + Repeat(1, 12, [](auto) { return " { event 1 1 }"; }) +
           Repeat(1, 101, [](auto) { return "\n$sequence \"s\" \"s\""; }));
    EXPECT_EQ(l.Doc->Anims[0][0].Events[12].Parameter, "");
    EXPECT_EQ(l.Doc->Anims[0][101].Loop, 0);
}

TEST(QcReader, AMissingPartIsPickedFromTheModelFolderOnly) {
    Model l;
    l.Dir.Write("elsewhere/gone.smd", Smd({}));
    l.Dir.Write("m/notes.txt", "");
    l.Host.Answer(l.M() + "/arm.smd");
    l.Host.Answer(l.Dir / "elsewhere/gone.smd");
    l.Host.Answer(l.M() + "/notes.txt");
    l.Host.Answer(l.M() + Sep + "./gone.smd"); // the file asked for: nothing changes
    l.Load(l.Paths() + "$body one \"gone\"\n$body two \"gone\"\n$body three \"gone\"\n"
                       "$body four \"./gone\"\n");
    ASSERT_EQ(l.Host.Questions.size(), 4u);
    EXPECT_EQ(l.Host.Questions[3].Path, l.M() + Sep + "./gone.smd");
    EXPECT_EQ(l.Doc->BodyGroups[4].Parts[1], "./gone");
    EXPECT_EQ(l.Host.Questions[0].Path, l.M() + Sep + "gone.smd");
    EXPECT_EQ(l.Host.Questions[0].Extra, "<IDS_REFERENCEMODEL>");
    EXPECT_EQ(l.Doc->BodyGroups[1].Parts[1], "arm");
    EXPECT_EQ(l.Doc->BodyGroups[2].Parts[1], "gone");
    EXPECT_EQ(l.Doc->BodyGroups[3].Parts[1], "gone");
    EXPECT_EQ(l.Host.ProblemsOf(ReadProblem::PartNotInModelPath), 1);
}

TEST(QcReader, ARefusedQuestionBreaksTheLoadOffIntoANewDocument) {
    Model l;
    l.Host.Answer("0");
    EXPECT_EQ(l.Load(l.Paths() + "$sequence \"a\" \"a\"\n$body head \"gone\"\n$gamma 3\n"),
              ReadOutcome::Refused);
    EXPECT_EQ(l.Host.NewDocuments, 1);
    EXPECT_EQ(l.Host.Finished, 0);
    EXPECT_TRUE(l.Host.Animations.empty());
    EXPECT_TRUE(l.Doc->QcFile.empty());
    // The folders read before the refusal stay: the reset leaves them.
    const std::string fresh = Script(*std::make_unique<Document>());
    EXPECT_EQ(l.Written().substr(l.Written().find("// Model")),
              fresh.substr(fresh.find("// Model")));

    Model k;
    k.Host.Answer("0");
    EXPECT_EQ(k.Load("$cd \"relative\"\n"), ReadOutcome::Refused);
    EXPECT_EQ(k.Host.NewDocuments, 1);
}

TEST(QcReader, APartFileThatIsGoneWhenTexturesAreScannedIsReported) {
    Model l;
    l.Host.KeepUnanswered = true;
    l.Load(l.Paths() + "$body gone \"gone\"\n$body head \"head\"\n$texturegroup t\n{\n}\n"
                       "$texrendermode \"a.bmp\" masked\n");
    EXPECT_EQ(l.Host.ProblemsOf(ReadProblem::PartFileMissing), 1);
    EXPECT_EQ(l.Doc->TextureCount, 1);
    EXPECT_EQ(l.Doc->TextureModes[1].Mode, 1);
}

// What the forms cannot hold whole stays as the script has it: the load
// goes on, and a save writes it back.
TEST(QcReader, WhatTheTablesCannotHoldStaysAsItStands) {
    std::vector<std::string> many;
    for (int i = 1; i <= 12; ++i) {
        many.push_back("t" + std::to_string(i) + ".bmp");
    }
    Model l;
    l.Dir.Write("m/many.smd", testing::Smd(many));
    const std::string script =
        l.Paths() + Repeat(0, 33, [](auto i) { return "$body b" + i + " \"head\"\n"; }) +
        "$bodygroup parts\n{\n" + Repeat(1, 17, [](auto) { return "studio \"arm\"\n"; }) + "}\n" +
        "$sequence \"big\" \"big\" fps 40000 frame -40000 1.5 scale 1e39\n" +
        Repeat(0, 9, [](auto i) { return "$sequencegroup g\n$sequence \"s" + i + "\" \"s\"\n"; }) +
        "$sequence \"ev\" \"ev\"" + Repeat(1, 256, [](auto i) { return " { event " + i + " 1 }"; }) +
        "\n" + Repeat(0, 101, [](auto i) { return "$sequence \"r" + i + "\" \"s\"\n"; }) +
        "$texturegroup t\n{\n{" + Repeat(1, 12, [](auto i) { return " \"t" + i + ".bmp\""; }) +
        " }\n" + Repeat(2, 102, [](auto i) { return "{ \"r" + i + ".bmp\" }\n"; }) + "}\n" +
        "$body many \"many\"\n$gamma 2\n";
    EXPECT_EQ(l.Load(script), ReadOutcome::Loaded);
    const Document& d = *l.Doc;
    EXPECT_EQ(d.BodyGroupCount, 32);
    EXPECT_EQ(d.BodyGroups[32].Name, "b31");
    EXPECT_EQ(d.Anims[0][0].Fps, 32767);
    EXPECT_EQ(d.Anims[0][0].FrameStart, -32768);
    EXPECT_EQ(d.Anims[10][0].Name, "s9");
    EXPECT_EQ(d.Anims[10][1].Name, "r0"); // the sequence of 256 events stays a line
    EXPECT_EQ(d.Anims[10][100].Name, "r99");
    EXPECT_EQ(d.Gamma, 2.0f); // the load went on to the end
    EXPECT_TRUE(l.Host.Problems.empty());
    EXPECT_EQ(l.Written(), script);
    // The texture group of more rows than the table's stays its lines.
    EXPECT_FALSE(d.Layout->TextureGroup);
}

TEST(QcReader, UnusableFilesEndTheLoadWithAMessage) {
    Model l;
    EXPECT_EQ(l.LoadFile(l.Dir / "missing.qc"), ReadOutcome::Unreadable);
    EXPECT_EQ(l.Host.ProblemsOf(ReadProblem::ScriptUnreadable), 1);
    EXPECT_EQ(l.Host.NewDocuments, 1);
    EXPECT_EQ(l.Host.Finished, 0);

    Model w;
    InitVars(*w.Doc);
    w.Doc->QcFile = w.Dir.Write("model.qc", "$gamma 2\n");
    EXPECT_EQ(ReadQcFile(*w.Doc, w.Host, w.Dir / "no/such/folder"), ReadOutcome::Unreadable);
    EXPECT_EQ(w.Host.ProblemsOf(ReadProblem::WorkFileUnwritable), 1);
    EXPECT_EQ(w.Doc->Gamma, DefaultGamma);
}

// A texture group reads words to the brace that closes it, a body group to
// the first closing brace; one whose braces never close it (one too many, or
// none) runs to the end of the script, and a line a save adds behind it would
// be a word of the block. The compiler reads past the end and crashes (it
// builds no model), so the load names the line that opens the block as the
// one it refuses.
TEST(QcReader, ABlockThatRunsToTheEndIsRefusedWhereItOpens) {
    struct Row {
        std::string block;
        bool runsToEnd;
    };
    const std::vector<Row> rows{
        {"$texturegroup skins\n{\n{ a.bmp }\n}\n", false},
        {"$texturegroup skins\n}\n{ a.bmp }\n$gamma 2\n", true},
        {"$texturegroup skins\n", true},
        {"$bodygroup arms\n{\nstudio \"head\"\n}\n", false},
        {"$bodygroup arms\n{\nstudio \"head\"\n$gamma 2\n", true},
    };
    for (const Row& row : rows) {
        Model l;
        const std::string head = l.Paths() + "$body head head\n";
        ASSERT_EQ(l.Load(head + row.block), ReadOutcome::Loaded) << row.block;
        ASSERT_TRUE(l.Doc->Layout) << row.block;
        EXPECT_EQ(l.Doc->Layout->CompilerStops, row.runsToEnd) << row.block;
        const auto named = std::find_if(l.Findings.begin(), l.Findings.end(), [](const LoadFinding& f) {
            return f.Kind == FindingKind::CompilerRefuses;
        });
        ASSERT_EQ(named != l.Findings.end(), row.runsToEnd) << row.block;
        if (row.runsToEnd) {
            EXPECT_EQ(named->Line, std::count(head.begin(), head.end(), '\n') + 1) << row.block;
            EXPECT_EQ(named->Text, row.block.substr(0, row.block.find('\n'))) << row.block;
        }
    }
}

} // namespace
} // namespace quarle
