// The compiled skeleton laid over the sources': placed back as the script
// placed the sequence (origin, turn, scale, linear movement), so that a
// model compiled from the script meets its sources and one compiled with
// another origin does not.
#include "preview/CompiledModel.h"

#include "document/ScriptLayout.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace quarle::preview {
namespace {

constexpr float Degree = std::numbers::pi_v<float> / 180.0f;

// Two bones as the sources pose them: the root at (1, 2, 3) turned 0.3
// about Z, a tip 10 above it.
Skeleton Sources() {
    return {{"root", "tip"}, {-1, 0}, {}};
}

std::vector<Vec3> SourceJoints(float modelScale) {
    return {{modelScale * 1, modelScale * 2, modelScale * 3},
            {modelScale * 1, modelScale * 2, modelScale * 13}};
}

// The same frame as the compiler writes it for an origin, a turn (radians),
// a scale and a movement taken out at the second and last frame.
studio::StudioModel Compiled(const Vec3& origin, float turn, float scale, const Vec3& movement) {
    const float x = 1 - origin[0], y = 2 - origin[1], z = 3 - origin[2];
    studio::StudioModel m;
    m.Bones = {
        {"root", -1, 0, {}, {scale * (std::cos(turn) * x - std::sin(turn) * y) - movement[0],
                             scale * (std::sin(turn) * x + std::cos(turn) * y) - movement[1],
                             scale * z - movement[2], 0, 0, 0.3f + turn}, {}},
        {"tip", 0, 0, {}, {0, 0, 10 * scale, 0, 0, 0}, {}},
    };
    studio::Sequence seq;
    seq.Label = "walk";
    seq.Frames = 2;
    seq.Blends = 1;
    seq.LinearMovement = movement;
    m.Sequences = {seq};
    return m;
}

TEST(CompiledModel, TheCompiledSkeletonMeetsItsSourcesWhereTheScriptPutIt) {
    const struct {
        const char* What;
        DefaultOrigin ScriptOrigin; // the $origin the script gives
        float ModelScale;
        AnimRec Anim;
        // How the model was compiled.
        Vec3 Origin;
        float Turn;
        float Scale;
        Vec3 Movement;
        float Largest;
    } cases[] = {
        {"the compiler's own quarter turn", {}, 1, {}, {}, 90 * Degree, 1, {}, 0},
        {"$origin with a turn", {{0, 0, 36}, 30}, 1, {}, {0, 0, 36}, 120 * Degree,
         1, {}, 0},
        {"the sequence's origin, rotate and scale, and LX", {{9, 9, 9}, 0}, 1,
         [] {
             AnimRec a;
             a.OriginOn = 1;
             a.OriginX = 5;
             a.OriginY = -4;
             a.OriginZ = 2;
             a.Rotate = 45;
             a.Scale = 2;
             a.LX = 1;
             return a;
         }(),
         {5, -4, 2}, 135 * Degree, 2, {7, 0, 0}, 0},
        {"$scale", {}, 3, {}, {}, 90 * Degree, 3, {}, 0},
        {"a model compiled with another origin", {}, 1, {}, {0, 0, 10}, 90 * Degree, 1, {}, 10},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.What);
        Document doc;
        doc.ModelScale = c.ModelScale;
        auto layout = std::make_shared<ScriptLayout>();
        layout->LastOrigin = c.ScriptOrigin;
        doc.Layout = layout;
        const SkeletonComparison seen =
            CompareSkeletons(Sources(), SourceJoints(c.ModelScale), {true, true},
                             Compiled(c.Origin, c.Turn, c.Scale, c.Movement), 0, 1,
                             PlacementOf(doc, &c.Anim), c.ModelScale);
        EXPECT_NEAR(seen.Largest, c.Largest, 1e-3f);
        EXPECT_FALSE(seen.LargestBone.empty());
        EXPECT_TRUE(seen.OnlyCompiled.empty());
        EXPECT_TRUE(seen.OnlySources.empty());
        ASSERT_EQ(seen.Joints.size(), 2u);
        EXPECT_NEAR(seen.Joints[1][2] - seen.Joints[0][2], 10 * c.ModelScale, 1e-3f);
    }

    // A bone that carries vertices and is missing from the compiled model
    // is named, and so is one the sources lack.
    studio::StudioModel other = Compiled({}, 90 * Degree, 1, {});
    other.Bones[1].Name = "spare";
    Document doc;
    const AnimRec anim;
    const SkeletonComparison seen = CompareSkeletons(
        Sources(), SourceJoints(1), {false, true}, other, 0, 1, PlacementOf(doc, &anim), 1);
    EXPECT_EQ(seen.OnlyCompiled, std::vector<std::string>{"spare"});
    EXPECT_EQ(seen.OnlySources, std::vector<std::string>{"tip"});
}

} // namespace
} // namespace quarle::preview
