#include "compile/CheckModelData.h"

#include "../TestFiles.h"
#include "localisation/GlobalStrings.h"

#include <gtest/gtest.h>
#include <memory>

namespace quarle::compile {

// Rows in failure messages as their kind and text.
void PrintTo(const CheckRow& row, std::ostream* out) {
    *out << (row.Kind == RowKind::Error     ? "E("
             : row.Kind == RowKind::Warning ? "W("
                                            : "I(")
         << row.Text << ")";
}

namespace {

using quarle::testing::ReadFile;
using quarle::testing::TempDir;
using quarle::testing::WriteFile;

CheckRow W(std::string text) {
    return {std::move(text), RowKind::Warning};
}
CheckRow E(std::string text) {
    return {std::move(text), RowKind::Error};
}
using Rows = std::vector<CheckRow>;

class CheckModelDataTest : public ::testing::Test {
protected:
    CheckModelDataTest() {
        WriteFile(compiler_, "#!/bin/sh\n");
        doc_->QcFile = dir_.Write("robot.qc", "$cd \"models\""); // no line end at the end
        doc_->ModelPath = "models";
        doc_->TexturePath = "textures";
        // Every text is its own key, so rows show which keys they were built from.
        for (std::size_t i = 0; i < texts_.size(); ++i) {
            texts_[i] = IdsKeyTable[i];
        }
        input_.StudioMdlPath = &compiler_;
        input_.Texts = &texts_;
        input_.AnimationRows = 1;
        input_.CheckFiles = false; // the checks of the document alone
    }

    // A model that passes every check.
    void MakeComplete() {
        doc_->BodyGroups[1].PartCount = 1;
        doc_->BodyGroups[1].Parts[1] = "robot_ref";
        doc_->Anims[0][0].Name = doc_->Anims[0][0].SmdFile = "idle";
    }

    CheckResult Run() { return CheckModelData(*doc_, input_); }

    // A group without parts is an error: the game divides by its number of
    // parts.
    static std::string EmptyGroup(const std::string& name) {
        return FormatMessage(EnglishMessageTexts()[MSG_CHECK_EMPTY_BODYGROUP], {name});
    }

    TempDir dir_;
    std::string compiler_ = dir_ / "studiomdl";
    IdsTextTable texts_;
    std::unique_ptr<Document> doc_ = std::make_unique<Document>();
    CheckInput input_;
};

TEST_F(CheckModelDataTest, ASavedFreshDocumentGetsChecksSixSevenEightAndTheIdleLine) {
    input_.AnimationRows = 0;
    const CheckResult fresh = Run();
    EXPECT_EQ(fresh.Rows, (Rows{E(EmptyGroup("body")), E("IDS_ERROR_NOREFERENCEMODEL"),
                                W("IDS_WARNING_IDLEANIMATION")}));
    EXPECT_EQ(fresh.ErrorCount, 2);
    EXPECT_EQ(ReadFile(doc_->QcFile), "$cd \"models\"\r\n$sequence idle \"\"\r\n");

    // A model with a part and no animations passes, with the part in the line.
    MakeComplete();
    doc_->QcFile = dir_.Write("part.qc", "$cd \"models\"\r\n");
    const CheckResult part = Run();
    EXPECT_EQ(part.Rows, Rows{W("IDS_WARNING_IDLEANIMATION")});
    EXPECT_EQ(part.ErrorCount, 0);
    EXPECT_EQ(ReadFile(doc_->QcFile), "$cd \"models\"\r\n$sequence idle \"robot_ref\"\r\n");

    // With animations on the list, and in a dry run, the script is left alone.
    const std::string before = ReadFile(doc_->QcFile);
    input_.AnimationRows = 2;
    EXPECT_TRUE(Run().Rows.empty());
    input_.AnimationRows = 0;
    input_.AppendIdleLine = false;
    EXPECT_EQ(Run().Rows, Rows{W("IDS_WARNING_IDLEANIMATION")});
    EXPECT_EQ(ReadFile(doc_->QcFile), before);

    // A script that cannot take the line: the compile must not go on.
    input_.AppendIdleLine = true;
    doc_->QcFile = dir_ / "gone.qc";
    const CheckResult gone = Run();
    ASSERT_EQ(gone.Rows.size(), 2u);
    EXPECT_EQ(gone.Rows[1].Kind, RowKind::Error);
    EXPECT_EQ(gone.ErrorCount, 1);
}

TEST_F(CheckModelDataTest, CompilerChecksFormOneChainAndFoldersFollow) {
    MakeComplete();
    std::string path;
    input_.StudioMdlPath = &path;
    EXPECT_EQ(Run().Rows, Rows{E("IDS_ERROR_STUDIOMDLPATH")});

    path = dir_ / "no such compiler" + "\xE4"; // cp1252, shown in the rows' UTF-8
    EXPECT_EQ(Run().Rows, (Rows{E("IDS_ERROR_STUDIOMDL"),
                                {"    " + dir_ / "no such compiler" + "\xC3\xA4",
                                 RowKind::Info}}))
        << "a missing file is named and not also tested for blanks";

    path = dir_ / "my studiomdl";
    WriteFile(path, "");
    const CheckResult blank = Run();
    EXPECT_EQ(blank.Rows, (Rows{W("IDS_WARNING_SPACES_PART1"), W("IDS_WARNING_SPACES_PART2")}));
    EXPECT_EQ(blank.ErrorCount, 0);

    input_.StudioMdlPath = nullptr; // a check of the script alone
    EXPECT_TRUE(Run().Rows.empty());

    // An empty texture folder takes the model folder, even an empty one.
    doc_->TexturePath = "";
    EXPECT_EQ(Run().Rows, Rows{W("IDS_WARNING_TEXTUREPATH")});
    EXPECT_EQ(doc_->TexturePath, "models");

    doc_->TexturePath = "";
    doc_->ModelPath = "";
    EXPECT_EQ(Run().Rows, (Rows{W("IDS_WARNING_TEXTUREPATH"), E("IDS_ERROR_MODELPATH")}));
    EXPECT_EQ(doc_->TexturePath, "");
}

TEST_F(CheckModelDataTest, BlankPartsFillAGroupButAreNoReference) {
    doc_->BodyGroupCount = 3;
    doc_->BodyGroups[1].PartCount = 2;
    doc_->BodyGroups[1].Parts[1] = Blank;
    doc_->BodyGroups[1].Parts[2] = Blank;
    doc_->BodyGroups[2].Name = "heads";
    doc_->BodyGroups[3].Name = "arms";
    doc_->BodyGroups[3].PartCount = 1;
    doc_->BodyGroups[3].Parts[1] = "";
    EXPECT_EQ(Run().Rows, (Rows{E(EmptyGroup("heads")), E("IDS_ERROR_NOREFERENCEMODEL")}));

    doc_->BodyGroups[3].Parts[1] = "arm_ref";
    EXPECT_EQ(Run().Rows, (Rows{E(EmptyGroup("heads"))}));

    // A count past the table is read up to the table's end, no further.
    doc_->BodyGroupCount = 200;
    EXPECT_EQ(Run().Rows.size(), 32u - 2u); // groups 2 and 4..32 have no parts
}

TEST_F(CheckModelDataTest, AnimationChecksInTheirOrderAndTheGroupWalk) {
    MakeComplete();
    AnimRec& a = doc_->Anims[0][1];
    a.SmdFile = "walk_smd";
    a.Fps = 0;
    a.ActivityId = "ACT_WALK"; // its weight is checked in the saved script
    a.FrameLimit = 1;
    a.FrameStart = 5;
    a.FrameEnd = 4;
    AnimRec& b = doc_->Anims[4][0];
    b.SmdFile = b.Name = "run";
    b.FrameLimit = 1;
    b.FrameStart = b.FrameEnd = 4;
    const CheckResult result = Run();
    EXPECT_EQ(result.Rows,
              (Rows{W(FormatMessage(EnglishMessageTexts()[MSG_CHECK_ANIMATION_NO_NAME], {"walk_smd"})),
                    W("IDS_WARNING_FPS_PART1  IDS_WARNING_FPS_PART2"),
                    E("IDS_ERROR_STARTFRAME_PART1 walk_smdIDS_ERROR_STARTFRAME_PART2")}));
    EXPECT_EQ(result.ErrorCount, 1) << "the compiler takes a sequence without a name";

    // Each group's walk stops at its first slot without a file; the last slot
    // of the last group is walked, slot 101 never.
    a = AnimRec{};
    a.SmdFile = a.Name = "walk";
    doc_->Anims[0][3].SmdFile = "hidden"; // behind the free slot 2
    for (int s = 0; s < 100; ++s) {
        doc_->Anims[10][s].SmdFile = doc_->Anims[10][s].Name = "a";
    }
    doc_->Anims[10][100].SmdFile = doc_->Anims[10][100].Name = "last";
    doc_->Anims[10][100].Fps = 0;
    doc_->Anims[10][101].SmdFile = "beyond";
    EXPECT_EQ(Run().Rows, Rows{W("IDS_WARNING_FPS_PART1 last IDS_WARNING_FPS_PART2")});
}

} // namespace
} // namespace quarle::compile
