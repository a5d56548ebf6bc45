#include "document/Document.h"

#include <gtest/gtest.h>

namespace quarle {
namespace {

TEST(Document, ResetLeavesTheRangesItDoesNotName) {
    // Each range is set at its last reset index and at the first one beyond.
    auto doc = std::make_unique<Document>();
    doc->ModelPath = "c:\\model";
    doc->ModelName = "c:\\model\\robot.mdl";
    doc->TexturePath = "c:\\tex";
    doc->EyeX = 3.0f;
    doc->SmdFrameCount = 12;
    doc->Anims[10][100].Name = "walk";
    doc->Anims[10][100].FrameEnd = 99;
    doc->Anims[10][100].FrameLimit = 5;
    doc->Anims[10][101].Name = "beyond";
    doc->Anims[10][100].Events[10].EventId = 5004;
    doc->Anims[10][100].Events[11].EventId = 1003;
    doc->BodyGroups[10].Name = "g10";
    doc->BodyGroups[11].Name = "g11";
    doc->BodyGroups[10].Parts[10] = "p10";
    doc->BodyGroups[10].Parts[11] = "p11";
    doc->TextureVariations[10][10] = "row10.bmp";
    doc->TextureVariations[11][1] = "row11.bmp";
    doc->TextureModes[10].Mode = 1;
    doc->TextureModes[11].Mode = 2;

    InitVars(*doc);

    EXPECT_EQ(doc->ModelPath, "c:\\model");
    EXPECT_EQ(doc->ModelName, "c:\\model\\robot.mdl");
    EXPECT_EQ(doc->TexturePath, "c:\\tex");
    EXPECT_EQ(doc->EyeX, 3.0f);
    EXPECT_EQ(doc->SmdFrameCount, 12);
    EXPECT_EQ(doc->Anims[10][100].Name, "");
    EXPECT_EQ(doc->Anims[10][100].FrameEnd, 10);
    EXPECT_EQ(doc->Anims[10][100].FrameLimit, 0);
    EXPECT_EQ(doc->Anims[10][101].Name, "beyond");
    EXPECT_EQ(doc->Anims[10][100].Events[10].EventId, 0);
    EXPECT_EQ(doc->Anims[10][100].Events[11].EventId, 1003);
    EXPECT_EQ(doc->BodyGroups[10].Name, "");
    EXPECT_EQ(doc->BodyGroups[11].Name, "g11");
    EXPECT_EQ(doc->BodyGroups[10].Parts[10], "");
    EXPECT_EQ(doc->BodyGroups[10].Parts[11], "p11");
    EXPECT_EQ(doc->TextureVariations[10][10], Blank);
    EXPECT_EQ(doc->TextureVariations[11][1], "row11.bmp");
    EXPECT_EQ(doc->TextureModes[10].Mode, 0);
    EXPECT_EQ(doc->TextureModes[11].Mode, 2);
}

TEST(Document, FreshDocumentCostsAFewMegabytes) {
    auto doc = std::make_unique<Document>();
    const std::size_t bytes = DocumentFootprint(*doc);
    EXPECT_LT(bytes, 4u * 1024 * 1024);
    // Writing the last event slot of one animation costs that animation only.
    doc->Anims[3][7].Events[1024].EventId = 1;
    EXPECT_EQ(doc->Anims[3][7].Events.StoredSlots(), 1025);
    EXPECT_EQ(doc->Anims[3][8].Events.StoredSlots(), 0);
    EXPECT_EQ(doc->Anims[3][8].Events[1024].Frame, 1);
}

} // namespace
} // namespace quarle
