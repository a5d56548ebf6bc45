#include "document/SmdReader.h"

#include <gtest/gtest.h>

namespace quarle {
namespace {

TEST(SmdReader, ReadsBonesEveryFrameAndEachCorner) {
    const SmdModel m =
        ReadSmdText("version 1\r\nnodes\r\n  0 \"Bip01 Pelvis\" -1\r\n  1 \"arm\" 0\r\n"
                    "end\r\nskeleton\r\ntime 0\r\n0 1 2 3 0.1 0.2 0.3\r\n"
                    "1 4 5 6 0 0 0\r\ntime 5\r\n0 7 8 9 0 0 0\r\nend\r\n"
                    "triangles\r\nskin.bmp\r\n0 1 2 3 0 0 1 0.25 0.5\r\n"
                    "1 4 5 6 0 1 0 1 1\r\n1 7 8 9 1 0 0 -2 3\r\nend\r\n");
    EXPECT_TRUE(m.Version1);
    EXPECT_TRUE(m.Problems.empty());
    ASSERT_EQ(m.Nodes.size(), 2u);
    EXPECT_EQ(m.Nodes[0].Name, "Bip01 Pelvis");
    EXPECT_EQ(m.Nodes[1].Parent, 0);
    ASSERT_EQ(m.Frames.size(), 2u);
    EXPECT_EQ(m.Frames[1].Time, 5);
    EXPECT_EQ(m.Frames[0].Bones[0].Position, (std::array<float, 3>{1, 2, 3}));
    EXPECT_FLOAT_EQ(m.Frames[0].Bones[0].Rotation[2], 0.3f);
    ASSERT_EQ(m.Triangles.size(), 1u);
    const SmdTriangle& t = m.Triangles[0];
    EXPECT_EQ(t.Texture, "skin.bmp");
    EXPECT_EQ(m.BoneName(t.Vertices[2].Bone), "arm");
    EXPECT_EQ(t.Vertices[1].Normal, (std::array<float, 3>{0, 1, 0}));
    EXPECT_EQ(t.Vertices[2].Uv, (std::array<float, 2>{-2, 3}));
}

// Broken lines are dropped and named; the rest of the file is still read.
TEST(SmdReader, BrokenLinesAreNamedAndTheRestIsRead) {
    const SmdModel m = ReadSmdText("version 2\nnodes\n0 \"a\" -1\nx \"b\" 0\nend\nskeleton\n"
                                   "0 1 2 3 4 5 6\ntime 0\n0 1 2 3 4 5 6\nend\ntriangles\n"
                                   "cut.bmp\n0 1 2 3 4 5 6 7 8\nskin.bmp\n0 0 0 0 0 0 1 0 0\n"
                                   "0 0 0 0 0 0 1 0 0\n0 0 0 0 0 0 1 0 0\nopen.bmp\n");
    EXPECT_FALSE(m.Version1);
    EXPECT_EQ(m.Nodes.size(), 1u);
    EXPECT_EQ(m.Frames.size(), 1u);
    ASSERT_EQ(m.Triangles.size(), 1u);
    EXPECT_EQ(m.Triangles[0].Texture, "skin.bmp");
    std::vector<std::pair<SmdProblemKind, int>> problems;
    for (const SmdProblem& p : m.Problems) {
        problems.emplace_back(p.Kind, p.Line);
    }
    EXPECT_EQ(problems,
              (std::vector<std::pair<SmdProblemKind, int>>{{SmdProblemKind::NotVersion1, 1},
                                                           {SmdProblemKind::BadLine, 4},
                                                           {SmdProblemKind::BadLine, 7},
                                                           {SmdProblemKind::TriangleCutShort, 12},
                                                           {SmdProblemKind::TriangleCutShort, 18},
                                                           {SmdProblemKind::BlockNotClosed, 18}}));
}

} // namespace
} // namespace quarle
