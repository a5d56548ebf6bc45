#include "document/Skeleton.h"

#include "document/NumberText.h"
#include "TestFiles.h"

#include <gtest/gtest.h>
#include <memory>

namespace quarle {
namespace {

using V = SkeletonVariant;

struct Expected {
    int bone;
    const char* name;
    int parent;
    float x, y, z;
};

struct Case {
    const char* what;
    V variant;
    const char* smd; // lines joined with \n, written with CR LF
    std::vector<Expected> bones;
    float min, max;
};

std::unique_ptr<SkeletonTables> Place(const Case& c, std::vector<int>& listed) {
    auto tables = std::make_unique<SkeletonTables>();
    tables->Bones[0].Z = 7.0f; // a field the file does not set keeps its value
    tables->BoneNames[50] = "stale";
    StartSkeleton(*tables, c.variant);
    ReadSkeletonText(*tables, testing::Crlf(c.smd), c.variant);
    listed = PlaceBones(*tables, c.variant);
    return tables;
}

TEST(Skeleton, PositionsAndRangesWorkedOutByHand) {
    const Case cases[] = {
        {"single root, attachment mapping: x, z, -y; range with 1% margins", V::Attachment,
         "version 1\nnodes\n0 \"root\" -1\nend\nskeleton\ntime 0\n0 1 2 3 0.1 0.2 0.3\nend\n",
         {{0, "root", -1, 1, 3, -2}}, -2.05f, 3.0505f},
        {"the same file, controller mapping: z, y, x; range +-5", V::Controller,
         "version 1\nnodes\n0 \"root\" -1\nend\nskeleton\ntime 0\n0 1 2 3 0.1 0.2 0.3\nend\n",
         {{0, "root", -1, 3, 2, 1}}, -4, 8},
        {"controller chain: only the parent's rotation, in degrees", V::Controller,
         "nodes\n0 \"a\" -1\n1 \"b\" 0\n2 \"c\" 1\nend\nskeleton\ntime 0\n"
         "0 0 0 0 0 0 90\n1 0 0 10 0 90 0\n2 0 0 5 0 0 0\nend\n",
         {{0, "a", -1, 0, 0, 0}, {1, "b", 0, 0, 10, 0}, {2, "c", 1, 0, 10, 5}}, -5, 15},
        {"attachment chain: whole ancestry in radians, k31 as k13", V::Attachment,
         "nodes\n0 \"a\" -1\n1 \"b\" 0\n2 \"c\" 1\nend\nskeleton\ntime 0\n"
         "0 0 0 0 0 0 1.5707963\n1 10 0 0 1.5707963 0 0\n2 10 0 0 0 0 0\nend\n",
         {{0, "a", -1, 0, 0, 0}, {1, "b", 0, 0, 0, -10}, {2, "c", 1, 10, -10, 0}}, -10.2f,
         10.202f},
        {"a child before its parent takes the parent's unplaced position", V::Controller,
         "nodes\n0 \"kid\" 2\n1 \"root\" -1\n2 \"mid\" 1\nend\nskeleton\ntime 0\n"
         "0 0 0 1 0 0 0\n1 0 0 100 0 0 0\n2 0 0 10 0 0 0\nend\n",
         {{0, "kid", 2, 11, 0, 0}, {1, "root", -1, 100, 0, 0}, {2, "mid", 1, 110, 0, 0}}, -5,
         115},
        {"loops end: a self parent, and two bones parenting each other", V::Attachment,
         "nodes\n0 \"self\" 0\n1 \"p\" 2\n2 \"q\" 1\nend\nskeleton\ntime 0\n"
         "0 1 0 0 0 0 0\n1 3 0 0 0 0 0\n2 4 0 0 0 0 0\nend\n",
         {{0, "self", 0, 2, 0, 0}, {1, "p", 2, 7, 0, 0}, {2, "q", 1, 11, 0, 0}}, -0.11f,
         11.1111f},
        {"names: blanks stay, a quote ends them, an empty one is no bone; keywords in any case", V::Attachment,
         "  NODES \n0 \"Bip01 L  Hand\"   -1\n1 \"my\"name\" 0\n2 \"\" 0\nEnd\n Skeleton\n"
         "  TIME 0  \n0 0 0 0 0 0 0\n1 0 0 0 0 0 0\nEND\n",
         {{0, "Bip01 L  Hand", -1, 0, 0, 0}, {1, "my", 0, 0, 0, 0}}, -1, 1},
        {"a second time block and the triangles are never read", V::Controller,
         "nodes\n0 \"r\" -1\nend\nskeleton\ntime 0\n0 0 0 0 0 0 0\nend\ntime 1\n"
         "0 50 50 50 0 0 0\nend\nnodes\n1 \"late\" -1\n",
         {{0, "r", -1, 0, 0, 0}}, -5, 5},
        {"column cut: empty columns shift, short lines drop their last column, extra "
         "columns and bad indices are ignored", V::Attachment,
         "nodes\n0 \"a\" -1\n1 \"b\" -1\n2 \"c\" 300\n200 \"far\" -1\nend\nskeleton\ntime 0\n"
         "0 5 6\n1  1 2 3 0 0 0\n2 1 1 1 0 0 0 9 9\n200 1 1 1 0 0 0\nend\n",
         {{0, "a", -1, 5, 0, 7}, {1, "b", -1, 0, 2, -1}, {2, "c", 300, 1, 1, -1}}, -1.08f,
         7.0808f},
        {"one bone at the origin: a range of 0 is widened", V::Attachment,
         "nodes\n0 \"r\" -1\nend\nskeleton\ntime 0\n0 0 0 0 0 0 0\nend\n", {{0, "r", -1, 0, 0, 0}},
         -1, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        std::vector<int> listed;
        const auto tables = Place(c, listed);
        std::vector<int> expectedList;
        for (const Expected& e : c.bones) {
            expectedList.push_back(e.bone);
            const BoneRec& bone = tables->Bones[e.bone];
            EXPECT_EQ(tables->BoneNames[e.bone], e.name);
            EXPECT_EQ(bone.Parent, e.parent) << e.name;
            EXPECT_NEAR(bone.X, e.x, 1e-4) << e.name;
            EXPECT_NEAR(bone.Y, e.y, 1e-4) << e.name;
            EXPECT_NEAR(bone.Z, e.z, 1e-4) << e.name;
        }
        EXPECT_EQ(listed, expectedList);
        EXPECT_NEAR(tables->SkeletonMin, c.min, 1e-4);
        EXPECT_NEAR(tables->SkeletonMax, c.max, 1e-4);
    }
}

// turned.smd holds two chains, root -> 1 -> 2, each root turned about two axes
// and its child about three, with every sine and cosine nonzero, so a sign
// turned over in any one term of either rotation moves a bone. The angles are
// those of the 3-4-5 triangle: t (sin .6, cos .8) and u (sin .8, cos .6), as
// radians in the attachment chain (0.6435011, 0.9272952) and as degrees in
// the controller chain (36.869898, 53.130102). Both children stand at offset
// P = (1, 2, 3) once the columns are mapped.
//
// Attachment chain ar, a1, a2 (ar at 0; a, b, c as RotA, RotB, RotC):
//   ar: a = t, b = u, c = 0       K0 = (.48 .6 -.64 / -.36 .8 .48 / -.64 0 .6)
//   a1: a = t, b = u, c = u       K1 = (.864 .36 -.352 / .152 .48 .864 / -.352 -.8 .36)
//     e.g. k11 = sb·sc·sa + ca·cb = .8·.8·.6 + .8·.6 = .864, k31 = k13
//   a1 = K0·P = (.48 + 1.2 - 1.92, -.36 + 1.6 + 1.44, -.64 + 0 + 1.8)
//        = (-.24, 2.68, 1.16)
//   a2 about a1: a1 + K1·P = a1 + (.528, 3.704, -.872) = (.288, 6.384, .288);
//   then about ar: K0·(.288, 6.384, .288)
//        = (.13824 + 3.8304 - .18432, -.10368 + 5.1072 + .13824, -.18432 + .1728)
//        = (3.78432, 5.14176, -.01152)
// Controller chain cr, c1, c2 (A1, A2, A3 from RotA, RotB, RotC):
//   cr: A1 = t, A2 = u, A3 = 0    M0 = (.48 -.6 -.64 / .36 .8 -.48 / .8 0 .6)
//   c1: A1 = t, A2 = u, A3 = u    M1 = (.48 -.872 .096 / .36 .096 -.928 / .8 .48 .36)
//     e.g. m12 = -s1·c3 - s2·c1·s3 = -.36 - .512 = -.872
//   c1 = M0·P = (.48 - 1.2 - 1.92, .36 + 1.6 - 1.44, .8 + 0 + 1.8) = (-2.64, .52, 2.6)
//   c2 = c1 + M1·P = c1 + (.48 - 1.744 + .288, .36 + .192 - 2.784, .8 + .96 + 1.08)
//        = (-3.616, -1.712, 5.44)
TEST(Skeleton, TurnsAboutSeveralAxesWorkedOutByHand) {
    const std::string text = testing::ReadFile(QUARLE_TEST_DATA "/skeleton/turned.smd");
    const struct {
        V variant;
        int bone;
        float x, y, z;
    } cases[] = {
        {V::Attachment, 1, -0.24f, 2.68f, 1.16f},
        {V::Attachment, 2, 3.78432f, 5.14176f, -0.01152f},
        {V::Controller, 4, -2.64f, 0.52f, 2.6f},
        {V::Controller, 5, -3.616f, -1.712f, 5.44f},
    };
    for (const auto& c : cases) {
        auto tables = std::make_unique<SkeletonTables>();
        StartSkeleton(*tables, c.variant);
        ReadSkeletonText(*tables, text, c.variant);
        PlaceBones(*tables, c.variant);
        const BoneRec& bone = tables->Bones[c.bone];
        SCOPED_TRACE(tables->BoneNames[c.bone]);
        EXPECT_NEAR(bone.X, c.x, 1e-4);
        EXPECT_NEAR(bone.Y, c.y, 1e-4);
        EXPECT_NEAR(bone.Z, c.z, 1e-4);
    }
}

// The reference is the first part that is neither "<blank>" nor empty, found
// in any case; without one, or without its file, the tables hold no names.
TEST(Skeleton, LoadFindsTheFirstReferencePart) {
    const testing::TempDir dir;
    dir.Write("Body.SMD", "nodes\n0 \"pelvis\" -1\nend\nskeleton\ntime 0\n0 0 0 0 0 0 0\nend\n");
    Document doc;
    doc.ModelPath = dir.Path();
    doc.BodyGroupCount = 2;
    doc.BodyGroups[1].PartCount = 2;
    doc.BodyGroups[1].Parts[1] = Blank;
    doc.BodyGroups[2].PartCount = 2;
    doc.BodyGroups[2].Parts[2] = "body";
    auto tables = std::make_unique<SkeletonTables>();
    SkeletonLoad load = LoadSkeleton(*tables, doc, V::Controller);
    EXPECT_EQ(load.Source, SkeletonSource::Read);
    EXPECT_EQ(load.ListedBones, std::vector<int>{0});
    EXPECT_EQ(tables->BoneNames[0], "pelvis");

    doc.BodyGroups[2].Parts[1] = "gone";
    load = LoadSkeleton(*tables, doc, V::Controller);
    EXPECT_EQ(load.Source, SkeletonSource::Unreadable);
    EXPECT_TRUE(load.ListedBones.empty());
    EXPECT_EQ(tables->BoneNames[0], "");

    doc.BodyGroups[2].PartCount = 0;
    EXPECT_EQ(LoadSkeleton(*tables, doc, V::Attachment).Source, SkeletonSource::NoPart);
    EXPECT_EQ(tables->SkeletonMin, -1.0f);
}

#ifndef _WIN32
TEST(Skeleton, ToolPrintsTheBonesOfAReferenceMeshInBothVariants) {
    const testing::TempDir dir;
    const std::string qc = dir.Write(
        "h.qc", "$cd \"" QUARLE_TEST_DATA "/skeleton\"\r\n$body body \"humanoid\"\r\n");
    testing::ToolRun run = testing::RunTool({"skeleton", qc});
    ASSERT_EQ(run.Status, 0) << run.Err;
    EXPECT_EQ(run.Out.substr(0, run.Out.find('\n', run.Out.find("\"Bip01 Neck\""))),
              "0 \"Bip01\" -1 0 38 0\n1 \"Bip01 Pelvis\" 0 0 38 0\n2 \"Bip01 Spine\" 1 0 42 0\n"
              "3 \"Bip01 Spine1\" 2 0 48 0\n4 \"Bip01 Neck\" 3 0 58 0");
    EXPECT_NE(run.Out.find("\n21 \"Bip01 R Toe0\" 19 -4 1 4\n"), std::string::npos) << run.Out;
    EXPECT_TRUE(run.Out.ends_with("\nrange -29.98 69.9898\n")) << run.Out;

    run = testing::RunTool({"skeleton", qc, "--for", "controller"});
    ASSERT_EQ(run.Status, 0) << run.Err;
    EXPECT_TRUE(run.Out.starts_with("0 \"Bip01\" -1 38 0 0\n")) << run.Out;
    EXPECT_NE(run.Out.find("\n21 \"Bip01 R Toe0\" 19 1 -4 -4\n"), std::string::npos) << run.Out;
    EXPECT_TRUE(run.Out.ends_with("\nrange -34 74\n")) << run.Out;

    EXPECT_EQ(testing::RunTool({"skeleton", dir.Write("none.qc", "$cd \"/nowhere\"\r\n"
                                                                 "$body body \"x\"\r\n")})
                  .Status,
              1);
    EXPECT_EQ(testing::RunTool({"skeleton", dir / "missing.qc"}).Status, 2);
    EXPECT_EQ(testing::RunTool({"skeleton", qc, "--for", "both"}).Status, 2);
}
#endif

} // namespace
} // namespace quarle
