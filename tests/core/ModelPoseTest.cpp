#include "preview/ModelPose.h"

#include <gtest/gtest.h>

namespace quarle::preview {
namespace {

// A whole .smd: its nodes, the lines of its first frame, and corners by
// bone and position, three to a triangle; a corner's normal is the
// direction of its position.
using Corner = std::pair<int, Vec3>;
std::string Smd(std::string_view nodes, std::string_view frame, const std::vector<Corner>& corners) {
    std::string text = "version 1\nnodes\n" + std::string(nodes) + "end\nskeleton\ntime 0\n" +
                       std::string(frame) + "end\ntriangles\n";
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const auto& [bone, p] = corners[i];
        std::string xyz;
        for (const float v : p) {
            xyz += " " + std::to_string(v);
        }
        text += (i % 3 == 0 ? "skin.bmp\n" : "") + std::to_string(bone) + xyz + xyz + " 0 0\n";
    }
    return text + "end\n";
}

struct PoseCase {
    const char* Name;
    std::string Reference;
    std::string Animation;
    float Scale;
    std::vector<Vec3> Expected; // the corners skinned to the animation's first frame
    bool NormalsToo;            // the normals turn onto the same directions
};

const std::vector<Corner> UnitCorners{{0, {1, 0, 0}}, {0, {0, 1, 0}}, {0, {0, 0, 1}}};
const std::string OneBone = "0 \"root\" -1\n";
const std::string TwoBones = "0 \"root\" -1\n1 \"child\" 0\n";
const std::string TwoBonesSwapped = "0 \"child\" 1\n1 \"root\" -1\n";

TEST(ModelPose, CornersFollowTheirBonesToHandWorkedPoses) {
    const std::string rest = Smd(OneBone, "0 0 0 0 0 0 0\n", UnitCorners);
    const std::string chain =
        Smd(TwoBones, "0 0 0 0 0 0 0\n1 10 0 0 0 0 0\n", {{1, {10, 1, 0}}, {1, {10, 0, 0}}, {0, {1, 0, 0}}});
    // 3-4-5 triangles: turned about X by (cos 0.6, sin 0.8), then about Z by
    // (cos 0.8, sin 0.6).
    const std::string twoAxes = "0 0 0 0 0.92729522 0 0.64350111\n";
    const std::vector<PoseCase> cases{
        {"quarter turn about x", rest, Smd(OneBone, "0 0 0 0 1.57079633 0 0\n", {}), 1,
         {{1, 0, 0}, {0, 0, 1}, {0, -1, 0}}, true},
        {"quarter turn about y", rest, Smd(OneBone, "0 0 0 0 0 1.57079633 0\n", {}), 1,
         {{0, 0, -1}, {0, 1, 0}, {1, 0, 0}}, true},
        {"quarter turn about z", rest, Smd(OneBone, "0 0 0 0 0 0 1.57079633\n", {}), 1,
         {{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}, true},
        {"two axes", Smd(OneBone, "0 0 0 0 0 0 0\n", {{0, {5, 0, 0}}, {0, {0, 5, 0}}, {0, {0, 0, 5}}}),
         Smd(OneBone, twoAxes, {}), 1, {{4, 3, 0}, {-1.8f, 2.4f, 4}, {2.4f, -3.2f, 3}}, false},
        // The animation names only the root: the child keeps its place on it.
        {"turn at the root carries the child", chain, Smd(OneBone, "0 0 0 0 0 0 1.57079633\n", {}),
         1, {{-1, 10, 0}, {0, 10, 0}, {0, 1, 0}}, false},
        // Nodes in another order, matched by name; the child's own turn
        // comes first, then its parent's.
        {"child turned on a turned root", chain,
         Smd(TwoBonesSwapped, "1 0 0 0 0 0 1.57079633\n0 10 0 0 1.57079633 0 0\n", {}), 1,
         {{0, 10, 1}, {0, 10, 0}, {0, 1, 0}}, false},
        // Bound turned a quarter about z, posed without the turn.
        {"child turned back from its bind",
         Smd(TwoBones, "0 0 0 0 0 0 0\n1 10 0 0 0 0 1.57079633\n", {{1, {10, 1, 0}}, {1, {10, 0, 0}}, {0, {1, 0, 0}}}),
         Smd(TwoBones, "0 0 0 0 0 0 0\n1 10 0 0 0 0 0\n", {}), 1,
         {{11, 0, 0}, {10, 0, 0}, {1, 0, 0}}, false},
        {"root moved, scaled", Smd(OneBone, "0 1 0 0 0 0 0\n", {{0, {2, 0, 0}}, {0, {1, 1, 0}}, {0, {1, 0, 1}}}),
         Smd(OneBone, "0 6 0 -2 0 0 0\n", {}), 2, {{14, 0, -4}, {12, 2, -4}, {12, 0, -2}}, false},
    };
    for (const PoseCase& c : cases) {
        SCOPED_TRACE(c.Name);
        const Mesh mesh = BuildMesh({ReadSmdText(c.Reference)}, c.Scale);
        const std::vector<BoneMatrix> pose = PoseBones(mesh.Bones, ReadSmdText(c.Animation), 0);
        std::vector<Vec3> positions;
        std::vector<Vec3> normals;
        SkinMesh(mesh, pose, c.Scale, positions, normals);
        ASSERT_EQ(positions.size(), c.Expected.size());
        for (std::size_t i = 0; i < positions.size(); ++i) {
            for (std::size_t k = 0; k < 3; ++k) {
                EXPECT_NEAR(positions[i][k], c.Expected[i][k], 1e-4) << "corner " << i;
                if (c.NormalsToo) {
                    EXPECT_NEAR(normals[i][k], c.Expected[i][k], 1e-4) << "normal " << i;
                }
            }
        }
    }
}

TEST(ModelPose, FrameAtLoopsHoldsAndKeepsToItsLimits) {
    struct Case {
        const char* Name;
        i16 Fps;
        flag Loop, Limit;
        i16 Start, End;
        int Frames;
        double Seconds;
        int Expected;
    };
    const std::vector<Case> cases{
        {"loop wraps", 10, 1, 0, 0, 0, 5, 0.73, 2},
        {"hold stops at the last", 10, 0, 0, 0, 0, 5, 0.73, 4},
        {"hold inside", 10, 0, 0, 0, 0, 5, 0.35, 3},
        {"loop within limits", 10, 1, 1, 2, 4, 10, 0.45, 3},
        {"limits start at their first", 10, 0, 1, 3, 6, 10, 0, 3},
        {"limits reversed and clamped", 10, 0, 1, 20, 3, 10, 5, 9},
        {"limit below the file", 10, 1, 1, -5, 1, 10, 0.25, 0},
        {"no fps", 0, 1, 0, 0, 0, 5, 0.73, 0},
        {"negative fps", -5, 1, 0, 0, 0, 5, 0.73, 0},
        {"no frames", 10, 1, 1, 2, 4, 0, 0.73, 0},
    };
    for (const Case& c : cases) {
        AnimRec anim;
        anim.Fps = c.Fps;
        anim.Loop = c.Loop;
        anim.FrameLimit = c.Limit;
        anim.FrameStart = c.Start;
        anim.FrameEnd = c.End;
        EXPECT_EQ(FrameAt(anim, c.Frames, c.Seconds), c.Expected) << c.Name;
    }
}

void Put(std::string& b, std::uint32_t v, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        b += static_cast<char>((v >> (8 * i)) & 0xFF);
    }
}

// A bitmap with a 256-entry palette: 1 red, 2 green, 3 blue, 255 white (the
// unused fourth byte set, to be ignored); pixel rows as they lie in the file.
std::string Bmp(int width, int height, int bits, const std::vector<std::string>& rows) {
    std::string pal(1024, '\0');
    for (std::size_t i = 3; i < pal.size(); i += 4) {
        pal[i] = '\x7f';
    }
    pal.replace(4, 3, "\0\0\xff", 3);
    pal.replace(8, 3, "\0\xff\0", 3);
    pal.replace(12, 3, "\xff\0\0", 3);
    pal.replace(1020, 3, "\xff\xff\xff", 3);
    std::string b = "BM";
    Put(b, 0, 4 + 4);
    Put(b, 14 + 40 + 1024, 4);
    Put(b, 40, 4);
    Put(b, static_cast<std::uint32_t>(width), 4);
    Put(b, static_cast<std::uint32_t>(height), 4);
    Put(b, 1, 2);
    Put(b, static_cast<std::uint32_t>(bits), 2);
    Put(b, 0, 6 * 4);
    b += pal;
    for (const std::string& row : rows) {
        b += row;
    }
    return b;
}

TEST(ModelPose, DecodeBmp8GivesRgbaRowsFromTheTop) {
    const std::vector<std::uint8_t> square{255, 0, 0, 255, 0,   255, 0,   255,
                                           0,   0, 255, 255, 255, 255, 255, 255};
    const std::string bottomUp = Bmp(2, 2, 8, {{"\x03\xff\xff\xff", 4}, {"\x01\x02\xff\xff", 4}});
    std::vector<std::uint8_t> maskedSquare = square;
    maskedSquare[15] = 0;
    struct Case {
        const char* Name;
        std::string Bytes;
        bool Masked;
        std::optional<std::vector<std::uint8_t>> Expected;
    };
    const std::vector<Case> cases{
        {"bottom-up", bottomUp, false, square},
        {"top-down", Bmp(2, -2, 8, {{"\x01\x02\0\0", 4}, {"\x03\xff\0\0", 4}}), false, square},
        {"rows padded", Bmp(3, 2, 8, {{"\x03\x03\x03\xff", 4}, {"\x01\x01\x02\xff", 4}}), false,
         std::vector<std::uint8_t>{255, 0, 0,   255, 255, 0, 0,   255, 0, 255, 0, 255,
                                   0,   0, 255, 255, 0,   0, 255, 255, 0, 0,   255, 255}},
        {"masked 255", bottomUp, true, maskedSquare},
        {"truncated", bottomUp.substr(0, bottomUp.size() - 1), false, std::nullopt},
        {"24-bit", Bmp(2, 2, 24, {std::string(16, '\0')}), false, std::nullopt},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        const auto image = DecodeBmp8(c.Bytes, c.Masked);
        ASSERT_EQ(image.has_value(), c.Expected.has_value());
        if (image) {
            EXPECT_EQ(image->Rgba, *c.Expected);
            EXPECT_EQ(image->Height, 2);
        }
    }
}

} // namespace
} // namespace quarle::preview
