#include "compile/CheckModelData.h"

#include "CompileTestSupport.h"

#include <gtest/gtest.h>
#include <memory>

namespace quarle::compile {
namespace {

using testing::KeyTexts;
using testing::ReadFile;
using testing::TempDir;
using testing::WriteFile;

CheckRow W(std::string text) {
    return {std::move(text), RowKind::Warning};
}
CheckRow E(std::string text) {
    return {std::move(text), RowKind::Error};
}

class CheckModelDataTest : public ::testing::Test {
protected:
    CheckModelDataTest() {
        WriteFile(compiler_, "#!/bin/sh\n");
        WriteFile(dir_ / "robot.qc", "$modelname \"robot.mdl\"\r\n");
        doc_->QcFile = dir_ / "robot.qc";
        doc_->ModelPath = "models";
        doc_->TexturePath = "textures";
        input_.StudioMdlPath = &compiler_;
        input_.Texts = &texts_;
        input_.AnimationRows = 1;
    }

    // A model that passes every check.
    void MakeComplete() {
        doc_->BodyGroups[1].PartCount = 1;
        doc_->BodyGroups[1].Parts[1] = "robot_ref";
        AnimRec& idle = doc_->Anims[0][0];
        idle.Name = "idle";
        idle.SmdFile = "idle";
    }

    CheckResult Run() { return CheckModelData(*doc_, input_); }

    TempDir dir_;
    std::string compiler_ = dir_ / "studiomdl";
    IdsTextTable texts_ = KeyTexts();
    std::unique_ptr<Document> doc_ = std::make_unique<Document>();
    CheckInput input_;
};

TEST_F(CheckModelDataTest, ModelWithoutAnimationsPassesWithTheIdleLineAdded) {
    MakeComplete();
    doc_->Anims[0][0] = AnimRec{};
    input_.AnimationRows = 0;
    WriteFile(doc_->QcFile, "$cd \"models\""); // no line end at the end
    const CheckResult result = Run();
    EXPECT_EQ(result.ErrorCount, 0);
    EXPECT_EQ(result.Rows, std::vector<CheckRow>{W("IDS_WARNING_IDLEANIMATION")});
    EXPECT_EQ(ReadFile(doc_->QcFile), "$cd \"models\"\r\n$sequence idle \"robot_ref\"\r\n");

    // With animations on the list the script is left alone.
    input_.AnimationRows = 2;
    const std::string before = ReadFile(doc_->QcFile);
    EXPECT_TRUE(Run().Rows.empty());
    EXPECT_EQ(ReadFile(doc_->QcFile), before);

    // A dry run shows the row and leaves the file too.
    input_.AnimationRows = 0;
    input_.AppendIdleLine = false;
    EXPECT_EQ(Run().Rows, std::vector<CheckRow>{W("IDS_WARNING_IDLEANIMATION")});
    EXPECT_EQ(ReadFile(doc_->QcFile), before);

    // A script that cannot take the line: the compile must not go on.
    input_.AppendIdleLine = true;
    doc_->QcFile = dir_ / "gone.qc";
    const CheckResult gone = Run();
    ASSERT_EQ(gone.Rows.size(), 2u);
    EXPECT_EQ(gone.Rows[1].Kind, RowKind::Error);
    EXPECT_EQ(gone.ErrorCount, 1);
}

TEST_F(CheckModelDataTest, CompilerChecksFormOneChain) {
    MakeComplete();
    std::string path;
    input_.StudioMdlPath = &path;
    EXPECT_EQ(Run().Rows, std::vector<CheckRow>{E("IDS_ERROR_STUDIOMDLPATH")});

    path = dir_ / "no such compiler";
    EXPECT_EQ(Run().Rows, std::vector<CheckRow>{E("IDS_ERROR_STUDIOMDL")})
        << "a missing file is not also tested for blanks";

    path = dir_ / "my studiomdl";
    WriteFile(path, "");
    const CheckResult blank = Run();
    EXPECT_EQ(blank.Rows, (std::vector<CheckRow>{W("IDS_WARNING_SPACES_PART1"),
                                                 W("IDS_WARNING_SPACES_PART2")}));
    EXPECT_EQ(blank.ErrorCount, 0);

    input_.StudioMdlPath = nullptr; // a check of the script alone
    EXPECT_TRUE(Run().Rows.empty());
}

TEST_F(CheckModelDataTest, EmptyTextureFolderTakesTheModelFolder) {
    MakeComplete();
    doc_->TexturePath = "";
    EXPECT_EQ(Run().Rows, std::vector<CheckRow>{W("IDS_WARNING_TEXTUREPATH")});
    EXPECT_EQ(doc_->TexturePath, "models");

    doc_->TexturePath = "";
    doc_->ModelPath = "";
    const CheckResult both = Run();
    EXPECT_EQ(both.Rows,
              (std::vector<CheckRow>{W("IDS_WARNING_TEXTUREPATH"), E("IDS_ERROR_MODELPATH")}));
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
    EXPECT_EQ(Run().Rows,
              (std::vector<CheckRow>{
                  W("IDS_WARNING_BODYGROUP_PART1 \"heads\" IDS_WARNING_BODYGROUP_PART2"),
                  E("IDS_ERROR_NOREFERENCEMODEL")}));

    doc_->BodyGroups[3].Parts[1] = "arm_ref";
    EXPECT_EQ(Run().ErrorCount, 0);

    // A count past the table is read up to the table's end, no further.
    doc_->BodyGroupCount = 200;
    EXPECT_EQ(Run().Rows.size(), 32u - 2u); // groups 2 and 4..32 have no parts
}

TEST_F(CheckModelDataTest, AnimationChecksInTheirOrder) {
    MakeComplete();
    AnimRec& a = doc_->Anims[0][1];
    a.SmdFile = "walk_smd";
    a.Fps = 0;
    a.ActivityId = "ACT_WALK";
    a.FrameLimit = 1;
    a.FrameStart = 5;
    a.FrameEnd = 4;
    AnimRec& b = doc_->Anims[4][0];
    b.SmdFile = "run";
    b.Name = "run";
    b.ActivityId = "ACT_RUN 1";
    b.FrameLimit = 1;
    b.FrameStart = 4;
    b.FrameEnd = 4;
    CheckResult result = Run();
    EXPECT_EQ(
        result.Rows,
        (std::vector<CheckRow>{
            E("IDS_ERROR_ANIMATIONNAME_PART1 walk_smdIDS_ERROR_ANIMATIONNAME_PART2"),
            W("IDS_WARNING_FPS_PART1  IDS_WARNING_FPS_PART2"), W("IDS_WARNING_MISSINGNUMBER "),
            E("IDS_ERROR_STARTFRAME_PART1 walk_smdIDS_ERROR_STARTFRAME_PART2")}));
    EXPECT_EQ(result.ErrorCount, 2);

    // Only the last character counts: a blank or a sign passes as well.
    a = AnimRec{};
    a.SmdFile = a.Name = "walk";
    for (const char* passes : {"ACT_WALK 1", "ACT_WALK ", "ACT_WALK-"}) {
        a.ActivityId = passes;
        EXPECT_TRUE(Run().Rows.empty()) << passes;
    }
}

TEST_F(CheckModelDataTest, GroupWalkStopsAtTheFirstSlotWithoutAFile) {
    MakeComplete();
    doc_->Anims[0][2].SmdFile = "hidden";  // behind the free slot 1
    doc_->Anims[10][100].SmdFile = "last"; // the last slot of the last group is walked
    doc_->Anims[10][100].Name = "last";
    doc_->Anims[10][100].Fps = 0;
    for (int s = 0; s < 100; ++s) {
        doc_->Anims[10][s].SmdFile = doc_->Anims[10][s].Name = "a";
    }
    doc_->Anims[10][101].SmdFile = "beyond"; // never written, never checked
    EXPECT_EQ(Run().Rows,
              std::vector<CheckRow>{W("IDS_WARNING_FPS_PART1 last IDS_WARNING_FPS_PART2")});
}

} // namespace
} // namespace quarle::compile
