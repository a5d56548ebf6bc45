#include "ScriptTestSupport.h"

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
    EXPECT_EQ(ReadFile(l.Dir / "loadbuffer.dat"),
              "$cd \"" + l.M() + "\"\r\n$cdtexture \"" + l.Dir / "tex" + "\"\r\n$gamma 2\r\n");
    EXPECT_EQ(l.Doc->Gamma, 2.0f);
    EXPECT_EQ(l.Host.Finished, 1);
    EXPECT_EQ(l.Host.NewDocuments, 0);
    EXPECT_TRUE(l.Host.Questions.empty());
    EXPECT_TRUE(l.Host.Problems.empty());
}

TEST(QcReader, RelativeFoldersAreFoundBesideTheScriptAndWrittenRelativeAgain) {
    Model l;
    std::filesystem::create_directory(l.Dir / "empty");
    l.Host.Answer(l.M()); // the empty folder
    l.Load("$cd \"" + l.Dir / "empty" +
           "\"\n$cd .\n$modelname \".\\m\\x.mdl\"\n"
           "$cdtexture \".\\tex\"\n$cdtexture \"..\\shared\"\n$cdtexture m\n");
    ASSERT_EQ(l.Host.Questions.size(), 1u);
    EXPECT_EQ(l.Host.Questions[0].Extra, "<IDS_MODELPATH>");
    EXPECT_EQ(l.Doc->ModelPath, l.Dir.Path());
    EXPECT_EQ(l.Doc->TexturePath, l.Dir / "tex");
    // Saved beside the script, the folders are relative again, and the
    // further texture folders stand in their order.
    EXPECT_EQ(LinesOf(l.Written(), "$"), "$modelname \".\\m\\x.mdl\"\n$cd \".\"\n"
                                         "$cdtexture \".\\tex\"\n$cdtexture \"..\\shared\"\n"
                                         "$cdtexture m\n");
    // Saved elsewhere, they name the folders themselves.
    l.Doc->QcFile = l.Dir / "empty/moved.qc";
    EXPECT_EQ(LinesOf(l.Written(), "$c"), "$cd \"" + l.Dir.Path() + "\"\n$cdtexture \"" +
                                              l.Dir / "tex" +
                                              "\"\n$cdtexture \"..\\shared\"\n$cdtexture m\n");
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

TEST(QcReader, DirectiveWordsLineLogicAndNumbers) {
    Model l;
    l.Load("   $SCALE 2.5  \n"
           "\t$gamma 3\n"  // a tab in front: no directive
           "$gamma\t2.2\n" // a tab after the word: an unknown directive
           "$externaltextures\n"
           "$eyeposition 1.5 \"2\" -3\n"
           "$sequencegroupsize 64.5\n"
           "$origin 1 2 3\n"
           "$hbox 0 \"Bip01\" -1 -1 -1 1 1 1\n"
           "$bbox -16 -16 0 16 16 72\n"
           "$flags 0\n"
           "$cliptotextures\n"
           "$BODYGROUPX arms\n"
           "{\nstudio \"head\"\n}\n");
    // Quotes around a number read as 0, halves go to the even neighbour, and
    // with no body directive the group "body" of the reset is gone too.
    // Unknown directives are kept in their order, with their blocks.
    EXPECT_EQ(LinesOf(l.Written(), "$"), "$modelname \"\"\n$cd \"\"\n$cdtexture \"\"\n$scale 2.5\n"
                                         "$externaltextures\n$eyeposition 1.5 0 -3\n"
                                         "$gamma\t2.2\n$origin 1 2 3\n"
                                         "$hbox 0 \"Bip01\" -1 -1 -1 1 1 1\n"
                                         "$bbox -16 -16 0 16 16 72\n$flags 0\n$cliptotextures\n"
                                         "$BODYGROUPX arms\n$sequencegroupsize 64\n");
    EXPECT_NE(l.Written().find("$BODYGROUPX arms\r\n{\r\nstudio \"head\"\r\n}\r\n"),
              std::string::npos);
    EXPECT_TRUE(l.Host.Questions.empty());
}

TEST(QcReader, BodyGroupsAndTheirPartLines) {
    Model l;
    l.Host.Answer(l.M() + "/arm REVERSE.smd"); // keeps the part that has no file
    l.Load(l.Paths() + "$body head \"head\" reverse\n"
                       "$bodygroup arms\n"
                       "\n"
                       "{\n"
                       "studio \"arm\" reverse\n"
                       "blank\n"
                       "\n"
                       "STUDIO \"leg\"\n"
                       "studio arm\n"
                       "studio \"arm\" REVERSE\n"
                       "}\n"
                       "$bodygroup legs {\n"
                       "studio \"leg\" reverse }\n"
                       "studio \"head\"\n" // behind the block: kept as a line
                       "$bodygroup \"quoted\"\n"
                       "{ }\n"
                       "$bodygroup tail\n"
                       "{ studio \"arm\"\n"
                       "\tstudio \"leg\"}\n");
    // A $body keeps its words; a group of one reversed part stays a block;
    // "legs " is written without the blank that stood before its cut brace
    // (it would not read back), "quoted" keeps its quotes.
    EXPECT_EQ(LinesOf(l.Written(), "$b") + LinesOf(l.Written(), "studio") +
                  LinesOf(l.Written(), "blank"),
              "$body head \"head\" reverse\n"
              "$bodygroup arms\n"
              "$bodygroup legs\n"
              "$bodygroup \"quoted\"\n"
              "$bodygroup tail\n"
              "studio \"arm\" reverse\n"
              "studio \"leg\"\n" // the pattern ignores case
              "studio \"arm REVERSE\"\n"
              "studio \"leg\" reverse\n"
              "studio \"head\"\n"
              "studio \"arm\"\n"
              "studio \"leg\"\n"
              "blank\n"
              "blank\n"); // no quotes: no part
    const Document& d = *l.Doc;
    EXPECT_EQ(d.BodyGroups[2].Parts[4], Blank);
    EXPECT_EQ(d.BodyGroups[1].Reverse[1], 0);  // $body reads no reverse
    EXPECT_EQ(d.BodyGroups[3].Reverse[1], -1); // lost only in the writing
    // "arm REVERSE" has no file: the one question of the load.
    ASSERT_EQ(l.Host.Questions.size(), 1u);
    EXPECT_EQ(l.Host.Questions[0].Kind, "part");
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

TEST(QcReader, AttachmentsAndControllers) {
    Model l;
    l.Load("$attachment 0 \"Bip01 R Hand\" 10 0.5 -2\n"
           "$attachment 3 bone 1\n"
           "$attachment 4 \"Bone\" 1 2 3\n"
           "$attachment -1 \"Bone\" 1 2 3\n"
           "$controller 1 \"Bip01 Head\" yr -30 30.5\n"
           "$controller 2 bone ZR 1 2\n"
           "$controller 2 bone WR 5 6\n" // an axis the forms lack: kept as it stands
           "$controller 9 bone XR 1 2\n");
    const std::string written = l.Written();
    EXPECT_EQ(LinesOf(written, "$attachment"), "$attachment 0 \"Bip01 R Hand\" 10 0.5 -2\n"
                                               "$attachment 3 \"bone\" 1 0 0\n");
    EXPECT_EQ(LinesOf(written, "$controller"), "$controller 1 \"Bip01 Head\" YR -30 30.5\n"
                                               "$controller 2 \"bone\" ZR 1 2\n"
                                               "$controller 2 bone WR 5 6\n");
    EXPECT_EQ(l.Host.ProblemsOf(ReadProblem::AttachmentIndex), 1);
    EXPECT_EQ(l.Host.ProblemsOf(ReadProblem::ControllerIndex), 1);
    EXPECT_EQ(l.Host.Finished, 1);
}

TEST(QcReader, RenderModesMapOntoTheTexturesOfEveryPart) {
    // Before the part that has the texture, as behind it; a second mode of
    // the same texture is kept as its line.
    Model early;
    early.Load(early.Paths() + "$texrendermode \"a.bmp\" masked\n$body head \"head\"\n"
                               "$texrendermode \"a.bmp\" additive\n");
    EXPECT_EQ(LinesOf(early.Written(), "$texrendermode"),
              "$texrendermode \"a.bmp\" masked\n$texrendermode \"a.bmp\" additive\n");

    // Names match exactly; an empty name matches the first empty slot; what
    // the forms cannot hold (another mode, a texture the parts lack, a line
    // without a name) is kept behind the textures.
    Model l;
    l.Load(l.Paths() + "$body head \"head\"\n$bodygroup arms\n{\nstudio \"arm\"\nblank\n}\n"
                       "$texrendermode \"b.bmp\" MASKED\n"
                       "$texrendermode c.bmp chrome\n"
                       "$texrendermode \"B.BMP\" additive\n"
                       "$texrendermode \"zzz.bmp\" masked\n"
                       "$texrendermode\n"
                       "$texrendermode \"\" masked\n");
    EXPECT_EQ(LinesOf(l.Written(), "$texrendermode"),
              "$texrendermode \"b.bmp\" masked\n$texrendermode \"\" masked\n"
              "$texrendermode c.bmp chrome\n$texrendermode \"B.BMP\" additive\n"
              "$texrendermode \"zzz.bmp\" masked\n$texrendermode\n");
    EXPECT_EQ(l.Doc->TextureModes[1].Name, "a.bmp");
    EXPECT_EQ(l.Doc->TextureCount, 0); // render modes do not fill the base row
}

TEST(QcReader, TextureGroupsMapTheScriptsColumnsOntoTheScannedOnes) {
    Model l;
    l.Load(l.Paths() +
           "$body head \"head\"\n$bodygroup arms\n{\nstudio \"arm\"\nstudio \"leg\"\n}\n"
           "$texturegroup skins {\n"
           "{ \"c.bmp\" \"a.bmp\" \"b.bmp\" }\n"
           "\n"
           "{ \"c2.bmp\" \"a.bmp\" \"b2.bmp\" }\n"
           "{ \"c.bmp\" \"a.bmp\" \"b.bmp\" }\n"
           "{ \"c3.bmp\" \"a3.bmp\"\n"
           "\"b3.bmp\" }\n"
           "}\n"
           "$texturegroup again {\n"
           "}\n");
    // The base row is the scan (A.BMP of leg is a.bmp again); script row 2
    // is table row 2, a name equal to the base is no replacement, an all-base
    // row stays blank (and unwritten), and a row that goes on in the next line
    // makes two rows, the second starting at column 1.
    EXPECT_EQ(LinesOf(l.Written(), "{ \""), "{ \"a.bmp\" \"b.bmp\" \"c.bmp\" \"d.bmp\" }\n"
                                            "{ \"a.bmp\" \"b2.bmp\" \"c2.bmp\" \"d.bmp\" }\n"
                                            "{ \"a3.bmp\" \"b.bmp\" \"c3.bmp\" \"d.bmp\" }\n"
                                            "{ \"a.bmp\" \"b.bmp\" \"b3.bmp\" \"d.bmp\" }\n");
    EXPECT_EQ(l.Doc->TextureVariations[3][3], Blank);
}

TEST(QcReader, ATextureGroupMapsOntoTheTexturesOfEveryPartOrStaysAsItStands) {
    // Before the bodies, as a save writes it behind them.
    Model l;
    l.Load(l.Paths() + "$texturegroup skins\n{\n{ \"a.bmp\" }\n{ \"x.bmp\" }\n}\n"
                       "$body head \"head\"\n");
    EXPECT_EQ(l.Doc->TextureCount, 1);
    EXPECT_EQ(l.Doc->TextureVariations[2][1], "x.bmp");
    EXPECT_NE(l.Written().find("$texturegroup dummi\r\n{\r\n{ \"a.bmp\" }\r\n{ \"x.bmp\" }"),
              std::string::npos);
    // Parts without textures: nothing to map onto.
    Model bare;
    bare.Dir.Write("m/plain.smd", testing::Smd({}));
    bare.Load(bare.Paths() + "$texturegroup skins\n{\n{ \"a.bmp\" }\n{ \"x.bmp\" }\n}\n"
                             "$body plain \"plain\"\n");
    EXPECT_EQ(bare.Doc->TextureCount, 0);
    EXPECT_NE(bare.Written().find("$texturegroup skins\r\n{\r\n{ \"a.bmp\" }\r\n{ \"x.bmp\" }\r\n}"),
              std::string::npos);
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

TEST(QcReader, EveryTableLimitIsKeptAndReportedOncePerKind) {
    using P = ReadProblem;
    std::vector<std::string> many;
    for (int i = 1; i <= 12; ++i) {
        many.push_back("t" + std::to_string(i) + ".bmp");
    }
    Model l;
    EXPECT_EQ(
        l.Load(l.Paths() + Repeat(0, 33, [](auto i) { return "$body b" + i + " \"head\"\n"; }) +
               "$bodygroup over\n{\nstudio \"arm\"\n}\n" // a 33rd group: its block goes too
               "$sequence \"big\" \"big\" fps 40000 frame -40000 1.5 scale 1e39\n" +
               Repeat(0, 10,
                      [](auto i) { return "$sequencegroup g\n$sequence \"s" + i + "\" \"s\"\n"; }) +
               "$gamma 2\n"),
        ReadOutcome::Loaded);
    const Document& d = *l.Doc;
    EXPECT_EQ(d.BodyGroupCount, 32);
    EXPECT_EQ(d.BodyGroups[32].Name, "b31");
    EXPECT_EQ(LinesOf(l.Written(), "$sequence \"big"),
              "$sequence \"big\" \"big\" fps 32767 frame -32768 2  scale 3.402823E+38\n");
    EXPECT_EQ(d.Anims[10][0].Name, "s9");
    EXPECT_EQ(d.Gamma, 2.0f); // the load went on to the end
    EXPECT_EQ(l.Host.ProblemKinds(),
              (std::vector{P::TooManyBodyGroups, P::NumberOutOfRange, P::TooManySequenceGroups}));

    Model p;
    p.Dir.Write("m/many.smd", testing::Smd(many));
    EXPECT_EQ(p.Load(p.Paths() + "$bodygroup many\n{\n" +
                     Repeat(1, 18, [](auto) { return "studio \"head\"\n"; }) +
                     "studio \"many\"\n}\n$texturegroup t\n{\n{" +
                     Repeat(1, 12, [](auto i) { return " \"t" + i + ".bmp\""; }) + " }\n" +
                     Repeat(2, 102, [](auto i) { return "{ \"r" + i + ".bmp\" }\n"; }) +
                     "}\n$sequence \"ev\" \"ev\"" +
                     Repeat(1, 257, [](auto i) { return " { event " + i + " 1 }"; }) + "\n" +
                     Repeat(0, 514, [](auto) { return "$sequence \"s\" \"s\"\n"; })),
              ReadOutcome::Loaded);
    const Document& q = *p.Doc;
    EXPECT_EQ(q.BodyGroups[1].PartCount, 16); // "many" was the 19th: never scanned
    EXPECT_EQ(q.TextureCount, 1);
    EXPECT_EQ(q.Anims[0][0].EventCount, 255);
    EXPECT_EQ(q.Anims[0][0].Events[255].EventId, 255);
    EXPECT_EQ(q.Anims[0][512].Name, "s");
    EXPECT_EQ(p.Host.Animations.size(), 513u);
    EXPECT_EQ(q.TextureVariations[100][0], "r100.bmp");
    EXPECT_EQ(p.Host.ProblemKinds(),
              (std::vector{P::TooManyParts, P::TooManyEvents, P::TooManySequences,
                           P::TooManyTextureColumns, P::TooManyTextureRows}));

    // More than ten textures in the parts: the first ten are the columns.
    Model t;
    t.Dir.Write("m/many.smd", testing::Smd(many));
    t.Load(t.Paths() + "$body many \"many\"\n$texturegroup t\n{\n}\n");
    EXPECT_EQ(t.Doc->TextureCount, 10);
    EXPECT_EQ(t.Doc->TextureVariations[1][10], "t10.bmp");
    EXPECT_EQ(t.Host.ProblemKinds(), std::vector{P::TooManyTextures});
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

} // namespace
} // namespace quarle
