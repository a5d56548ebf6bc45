// What a load followed by a save does to a script: nothing but what the user
// changed, each change at its place, and new records where their kind stands.
#include "ScriptTestSupport.h"
#include "document/NumberText.h"
#include "document/Paths.h"
#include "document/SequenceNumbers.h"

#include <cctype>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>

namespace quarle {
namespace {

using testing::FillEverything;
using testing::LinesOf;
using testing::Model;
using testing::ReadFile;
using testing::Script;

// Everything the forms show, for comparing two loads.
std::string Forms(const Document& d) {
    Document copy = d;
    copy.Layout.reset();
    copy.QcFile.clear();
    for (auto& group : copy.Anims) {
        for (AnimRec& anim : group) {
            anim.From.Read.reset();
        }
    }
    for (BodyGroupRec& group : copy.BodyGroups) {
        group.From.Read.reset();
    }
    return Script(copy);
}

// The scripts of the test data, hand-written and decompiled: saved as
// loaded they are their own bytes; with every record written anew they
// read back into the same records.
TEST(QcLayout, ScriptsFromElsewhereSaveAsTheyStand) {
    for (const std::string name : {"wild/wild.qc", "keep/decompiled.qc"}) {
        Model m;
        m.Host.KeepUnanswered = true;
        const std::string data = std::string(QUARLE_TEST_DATA) + "/qc/" + name;
        std::filesystem::copy(paths::ToFsPath(paths::FolderOf(data)), paths::ToFsPath(m.Dir / "s"),
                              std::filesystem::copy_options::recursive);
        const std::string script = m.Dir / ("s/" + paths::FileNameOf(name));
        ASSERT_EQ(m.LoadFile(script), ReadOutcome::Loaded) << name;
        EXPECT_EQ(m.Written(), ReadFile(script)) << name;
        const std::string forms = Forms(*m.Doc);

        testing::WriteAllAnew(*m.Doc);
        Model again;
        again.Host.KeepUnanswered = true;
        ASSERT_EQ(again.LoadFile(m.Dir.Write("s/anew.qc", m.Written())), ReadOutcome::Loaded);
        EXPECT_EQ(Forms(*again.Doc), forms) << name;
    }
}

// A script the writer wrote comes back as itself, its head naming the
// model anew; a change writes the changed line as the writer writes it.
TEST(QcLayout, AWrittenScriptReadsBackIntoTheSameScript) {
    Model m;
    FillEverything(*m.Doc, m.Dir / "robot.mdl", m.M(), m.Dir / "tex");
    const std::string first = m.Written();

    Model again;
    EXPECT_EQ(again.LoadFile(m.Dir.Write("robot.qc", first)), ReadOutcome::Loaded);
    EXPECT_TRUE(again.Host.Questions.empty());
    EXPECT_TRUE(again.Host.Problems.empty());
    EXPECT_TRUE(again.Findings.empty());
    EXPECT_EQ(again.Written(), first);

    again.Doc->ModelName = m.Dir / "other.mdl";
    again.Doc->Anims[0][1].Fps = 12;
    m.Doc->ModelName = again.Doc->ModelName;
    m.Doc->Anims[0][1].Fps = 12;
    EXPECT_EQ(again.Written(), m.Written());
}

// New records go where their kind stands: settings before the first body
// or sequence, attachments and controllers among theirs by number, a body
// behind the body before it, render modes behind theirs, a texture group
// behind the bodies, an animation behind the one before it.
TEST(QcLayout, NewRecordsGoWhereTheirKindStands) {
    Model m;
    m.Load("// a hand-written model\n" + m.Paths() +
           "$attachment 0 Bone1 1 2 3\n$attachment 3 Bone3 1 2 3\n\n"
           "$body head head\n  $bodygroup arms\n{\nstudio arm\n}\n"
           "$texrendermode a.bmp masked\n\n$sequence idle walk\n"
           "$sequencegroup legs\n$sequence run walk ; fast\n");
    Document& d = *m.Doc;
    d.Gamma = 2.2f;
    d.Attachments[1] = {1, 0.5f, 0.0f, 0.0f};
    d.AttachmentBones[1] = "Bone2";
    d.Controllers[0] = {1, 2.0f, 0.0f, 30.0f};
    d.ControllerBones[0] = "Bone2";
    d.BodyGroupCount = 3;
    d.BodyGroups[3] = {.Name = "legs", .PartCount = 1, .Parts = {"", "leg"}};
    d.TextureModes[2].Mode = 2; // b.bmp, the second texture of the parts
    d.TextureCount = 2;
    d.TextureVariations[1][1] = "a.bmp";
    d.TextureVariations[1][2] = "b.bmp";
    d.TextureVariations[2][2] = "x.bmp";
    d.Anims[0][1].Name = d.Anims[0][1].SmdFile = "jump";
    d.Anims[2][0].Name = d.Anims[2][0].SmdFile = "swim";
    EXPECT_EQ(m.Written(), "// a hand-written model\n" + m.Paths() +
                               "$attachment 0 Bone1 1 2 3\n"
                               "$attachment 1 \"Bone2\" 0.5 0 0\n"
                               "$attachment 3 Bone3 1 2 3\n"
                               "$controller 0 \"Bone2\" ZR 0 30\n\n"
                               "$gamma 2.2\n"
                               "$body head head\n  $bodygroup arms\n{\nstudio arm\n}\n"
                               "$body legs \"leg\"\n"
                               "$texrendermode a.bmp masked\n"
                               "$texrendermode \"b.bmp\" additive\n"
                               "$texturegroup dummi\n{\n{ \"a.bmp\" \"b.bmp\" }\n"
                               "{ \"a.bmp\" \"x.bmp\" }\n}\n\n"
                               "$sequence idle walk\n"
                               "$sequence \"jump\" \"jump\" fps 30 \n"
                               "$sequencegroup legs\n$sequence run walk ; fast\n\n"
                               "$sequencegroup seqgroup2\n"
                               "$sequence \"swim\" \"swim\" fps 30 \n");
}

// A record the user deleted goes with its line; one moved stays where the
// records around it keep their places; what the forms do not show stays.
TEST(QcLayout, DeletedAndMovedRecordsLeaveTheRestInPlace) {
    Model m;
    m.Load(m.Paths() + "$body head head\n$scale 2\n$body arms arm\n$origin 0 0 8\n"
                       "$sequence a walk\n$sequence b walk\n$hbox 0 Bone1 0 0 0 1 1 1\n"
                       "$sequence c walk\n$attachment 0 Bone1 1 2 3\n");
    Document& d = *m.Doc;
    // The first body goes: the second keeps its $scale in front.
    d.BodyGroups[1] = d.BodyGroups[2];
    d.BodyGroups[2] = BodyGroupRec{};
    d.BodyGroupCount = 1;
    // c moves before b, then a goes; the attachment goes too.
    std::swap(d.Anims[0][1], d.Anims[0][2]);
    d.Anims[0][0] = d.Anims[0][1];
    d.Anims[0][1] = d.Anims[0][2];
    d.Anims[0][2] = AnimRec{};
    d.Attachments[0].Active = 0;
    EXPECT_EQ(m.Written(), m.Paths() + "$scale 2\n$body arms arm\n$origin 0 0 8\n"
                                       "$sequence c walk\n$sequence b walk\n"
                                       "$hbox 0 Bone1 0 0 0 1 1 1\n");
}

// A relative path of the script names the same place after a save into
// another folder: includes and folders are named anew there.
TEST(QcLayout, ASaveIntoAnotherFolderNamesTheScriptsFilesAnew) {
    Model m;
    m.Dir.Write("shared.qci", "$hbox 0 Bone1 0 0 0 1 1 1\n");
    m.Load("$cd m\n$include \"shared.qci\"\n$sequence walk walk\n");
    std::filesystem::create_directory(m.Dir / "copy");
    m.Doc->QcFile = m.Dir / "copy/model.qc";
    EXPECT_EQ(m.Written(), "$cd \"" + m.M() + "\"\n$include \"" + m.Dir / "shared.qci" +
                               "\"\n$sequence walk walk\n");
}

// Each numeric option of a sequence, whatever its row: read in any case,
// its number kept as the script wrote it while the value stands, written
// anew when changed, and a file of its name written behind "animation".
TEST(QcLayout, EveryNumericSequenceOptionTravelsThroughLoadAndSave) {
    for (std::size_t row = 0; row < SequenceNumberCount; ++row) {
        const SequenceNumber& option = SequenceNumbers[row];
        const std::string keyword(option.Keyword);
        std::string shouted = keyword;
        for (char& c : shouted) {
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        }
        SCOPED_TRACE(keyword);
        Model m;
        ASSERT_EQ(m.Load(m.Paths() + "$sequence a walk " + shouted + " 07\n"), ReadOutcome::Loaded);
        AnimRec& anim = m.Doc->Anims[0][0];
        EXPECT_EQ(SequenceNumberValue(anim, row), 7.0);
        EXPECT_EQ(anim.SmdFile, "walk");

        anim.Loop = 1; // the line is written anew, its number as written
        EXPECT_NE(LinesOf(m.Written(), "$sequence").find(" " + keyword + " 07"), std::string::npos);
        SetSequenceNumber(anim, row, 3);
        EXPECT_NE(LinesOf(m.Written(), "$sequence").find(" " + keyword + " 3"), std::string::npos);
        // Given with its default value, it stays (the compiler takes it over
        // the model's settings).
        const std::string fallback = FloatToPointText(static_cast<f32>(SequenceNumberDefault(row)));
        Model again;
        ASSERT_EQ(again.Load(again.Paths() + "$sequence a walk " + keyword + " " + fallback + "\n"),
                  ReadOutcome::Loaded);
        again.Doc->Anims[0][0].Loop = 1;
        EXPECT_NE(LinesOf(again.Written(), "$sequence").find(" " + keyword + " " + fallback),
                  std::string::npos);

        // A new record writes it only off its default, unless always.
        Model fresh;
        AnimRec& added = fresh.Doc->Anims[0][0];
        added.Name = "b";
        added.SmdFile = keyword; // a file that reads as the option word
        const std::string line = LinesOf(fresh.Written(), "$sequence");
        EXPECT_NE(line.find("animation \"" + keyword + "\""), std::string::npos) << line;
        EXPECT_EQ(line.find(" " + keyword + " ") != std::string::npos, option.Always) << line;
        ASSERT_EQ(fresh.Load(fresh.Paths() + line), ReadOutcome::Loaded);
        EXPECT_EQ(fresh.Doc->Anims[0][0].SmdFile, keyword);
    }
}

TEST(QcLayout, ADecimalCommaIsCutOnTheNextLoadAndTheScriptKept) {
    Model m;
    FillEverything(*m.Doc, m.Dir / "robot.mdl", m.M(), m.Dir / "tex");
    m.Doc->Anims[0][1].Rotate = 1.5f;
    const std::string comma = Script(*m.Doc, ',');
    Model again;
    again.LoadFile(m.Dir.Write("comma.qc", comma));
    // Locale forms lose their fraction, as the compiler reads them; point
    // forms keep it. The script stays as it was.
    EXPECT_EQ(again.Doc->Anims[0][1].Rotate, 1.0f);
    EXPECT_EQ(again.Doc->EyeY, -2.0f);
    EXPECT_EQ(again.Doc->Attachments[0].X, 1.5f);
    EXPECT_EQ(again.Written(), comma);
}

// A quote that closes on a later line makes the lines between one name to
// the compiler: the load names the line it opens on, and a record a save
// adds goes before that line or behind the one it closes on, where it reads
// back as a record.
TEST(QcLayout, ARecordAddedBesideAQuoteAcrossLinesReadsBack) {
    const std::string quote = "$hbox 0 \"Bone\n1\" 0 0 0 1 1 1";
    const auto newSequence = [](Document& d) {
        d.Anims[0][1] = d.Anims[0][0];
        d.Anims[0][0] = AnimRec{};
        d.Anims[0][0].Name = d.Anims[0][0].SmdFile = "jump";
    };
    const auto attachment = [](int slot) {
        return [slot](Document& d) {
            d.Attachments[static_cast<std::size_t>(slot)] = {1, 0.5f, 0.0f, 0.0f};
            d.AttachmentBones[static_cast<std::size_t>(slot)] = "Bone1";
        };
    };
    struct Row {
        const char* what;
        std::string script; // behind the folders
        std::string include;
        std::function<void(Document&)> change;
        std::string file; // of the finding
        int line;
    };
    const std::vector<Row> rows{
        {"before the first sequence, on its line", "$body head head\n" + quote + " $sequence a walk\n",
         "", newSequence, "model.qc", 4},
        {"behind the last sequence, on the line of the record before",
         "$body head head\n$sequence a walk\n$attachment 0 Bone1 1 2 3 " + quote + "\n", "",
         attachment(1), "model.qc", 5},
        {"in an include, on the line of the record after",
         "$body head head\n$include \"INC\"\n$sequence a walk\n",
         "$attachment 0 Bone1 1 2 3\n" + quote + " $attachment 2 Bone1 1 2 3\n", attachment(1),
         "inc.qci", 2},
    };
    for (const Row& row : rows) {
        Model m;
        std::string script = m.Paths() + row.script;
        if (!row.include.empty()) {
            script.replace(script.find("INC"), 3, m.Dir.Write("inc.qci", row.include));
        }
        ASSERT_EQ(m.Load(script), ReadOutcome::Loaded) << row.what;
        ASSERT_EQ(m.Findings.size(), 1u) << row.what;
        EXPECT_EQ(m.Findings[0].Kind, FindingKind::QuoteAcrossLines) << row.what;
        EXPECT_EQ(paths::FileNameOf(m.Findings[0].File), row.file) << row.what;
        EXPECT_EQ(m.Findings[0].Line, row.line) << row.what;
        EXPECT_TRUE(m.Findings[0].Text.ends_with(" 1 2 3 $hbox 0 \"Bone") ||
                    m.Findings[0].Text == "$hbox 0 \"Bone")
            << m.Findings[0].Text;
        EXPECT_EQ(m.Written(), script) << row.what;

        row.change(*m.Doc);
        Model again;
        ASSERT_EQ(again.LoadFile(m.Dir.Write("again.qc", m.Written())), ReadOutcome::Loaded)
            << row.what;
        EXPECT_EQ(Forms(*again.Doc), Forms(*m.Doc)) << row.what << "\n" << m.Written();
    }
}

// A number the script wrote in quotes (a blank, nothing) keeps its quotes
// when its sequence is written anew: bare, it would be no token, and the
// words behind it would move up into its place.
TEST(QcLayout, AQuotedNumberIsWrittenAnewInItsQuotes) {
    for (const std::string frame : {"\" \"", "\"\""}) {
        Model m;
        ASSERT_EQ(m.Load(m.Paths() + "$sequence a walk { event 5 " + frame + " opt }\n"),
                  ReadOutcome::Loaded);
        m.Doc->Anims[0][0].Fps = 12;
        Model again;
        ASSERT_EQ(again.LoadFile(m.Dir.Write("again.qc", m.Written())), ReadOutcome::Loaded);
        EXPECT_EQ(again.Doc->Anims[0][0].Events[1].Parameter, "opt") << m.Written();
        EXPECT_EQ(Forms(*again.Doc), Forms(*m.Doc)) << frame;
    }
}

} // namespace
} // namespace quarle
