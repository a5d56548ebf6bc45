// The reader of compiled models on bytes laid out as the compiler writes
// them (StudioBytes.h): every section read back, the run-length animation
// values against frames worked out by hand, and broken files refused with
// the problem named.
#include "StudioBytes.h"
#include "TestFiles.h"
#include "studio/StudioModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quarle::studio {
namespace {

using test::BuildStudio;
using test::MeshRun;
using test::StudioBuild;
using test::StudioBuilt;
using ::testing::HasSubstr;

// The files of a built model beside each other, as side files read them.
SideFiles Beside(const StudioBuilt& built) {
    SideFiles side;
    side.Stem = "small";
    side.Read = [built](const std::string& name) -> std::optional<std::string> {
        if (name == "small01.mdl" && built.Groups.count(1) != 0) {
            return built.Groups.at(1);
        }
        if (name == "smallT.mdl" && !built.Textures.empty()) {
            return built.Textures;
        }
        return std::nullopt;
    };
    return side;
}

TEST(StudioModel, ReadsEverySectionBackAndPrintsIt) {
    for (const bool split : {false, true}) {
        SCOPED_TRACE(split ? "textures in smallT.mdl" : "textures in the model");
        StudioBuild build = test::SmallStudio();
        build.SplitTextures = split;
        const StudioBuilt built = BuildStudio(build);
        const StudioLoad load = ReadStudioModel(built.Model, Beside(built));
        ASSERT_TRUE(load.Model) << ProblemText(load.Error.value_or(StudioProblem{}));
        EXPECT_TRUE(load.Notes.empty());
        const StudioModel& read = *load.Model;
        const StudioModel& want = build.Model;

        EXPECT_EQ(read.Name, want.Name);
        EXPECT_EQ(read.Length, int(built.Model.size()));
        EXPECT_EQ(read.Flags, want.Flags);
        EXPECT_EQ(read.Eye, want.Eye);
        EXPECT_EQ(read.Min, want.Min);
        EXPECT_EQ(read.Max, want.Max);
        EXPECT_EQ(read.BoxMin, want.BoxMin);
        EXPECT_EQ(read.BoxMax, want.BoxMax);
        EXPECT_EQ(read.Bones, want.Bones);
        EXPECT_EQ(read.Controllers, want.Controllers);
        EXPECT_EQ(read.Attachments, want.Attachments);
        EXPECT_EQ(read.HitBoxes, want.HitBoxes);
        EXPECT_EQ(read.Groups, want.Groups);
        ASSERT_EQ(read.Sequences.size(), want.Sequences.size());
        for (std::size_t s = 0; s < want.Sequences.size(); ++s) {
            Sequence expected = want.Sequences[s];
            expected.AnimationOffset = read.Sequences[s].AnimationOffset;
            EXPECT_EQ(read.Sequences[s], expected) << "sequence " << s;
        }
        EXPECT_EQ(read.BodyParts, want.BodyParts);
        EXPECT_EQ(read.Textures, want.Textures);
        EXPECT_EQ(read.SkinRefs, want.SkinRefs);
        EXPECT_EQ(read.SkinFamilies, want.SkinFamilies);
        EXPECT_EQ(read.ExternalTextures, split);
        ASSERT_EQ(read.GroupBytes.size(), 2u);
        EXPECT_EQ(read.GroupBytes[1], built.Groups.at(1));

        // The channels of a frame: the rest value plus value times scale,
        // in the model and in the group file; a frame beyond the end shows
        // the last.
        const auto idle = BoneChannels(read, 0, 0, 1, 0);
        EXPECT_FLOAT_EQ(idle[2], 36 + 100 * 0.01f);
        EXPECT_FLOAT_EQ(idle[5], 1.5f);
        EXPECT_FLOAT_EQ(BoneChannels(read, 0, 0, 9, 1)[5], 7 * 0.01f);
        EXPECT_FLOAT_EQ(BoneChannels(read, 1, 1, 2, 2)[3], 0.25f + 100 * 0.001f);
        EXPECT_FLOAT_EQ(BoneChannels(read, 1, 0, 2, 2)[3], 0.25f) << "blend 0 has no values";
        EXPECT_FLOAT_EQ(BoneChannels(read, 2, 0, 3, 0)[0], 4 * 0.01f);
    }

    // The same files through quarle-qc, from a folder.
    const testing::TempDir dir;
    const StudioBuilt built = BuildStudio(test::SmallStudio());
    const std::string model = dir.Write("small.mdl", built.Model);
    dir.Write("small01.mdl", built.Groups.at(1));
    const testing::ToolRun run = testing::RunTool({"mdl", model});
    EXPECT_EQ(run.Status, 0) << run.Err;
    EXPECT_EQ(run.Err, "");
    EXPECT_EQ(run.Out, R"(studio "small.mdl" length )" + std::to_string(built.Model.size()) +
                           R"( flags 3
eye 0 6 62
hull -16 -16 0 16 16 72
box -8 -9 0 8 9 70
bone 0 "root" parent -1 position 0 0 36 rotation 0 0 1.5
bone 1 "spine" parent 0 position 0 0 8 rotation 0 0 0
bone 2 "head" parent 1 position 0 0 12 rotation 0.25 0 0
controller 0 bone 1 type ZR wrap range -45 60 rest 12 index 0
attachment 0 "gun" bone 2 origin 0 -4 2
hitbox 0 bone 0 group 3 min -4 -4 -36 max 4 4 8
hitbox 1 bone 2 group 1 min -7 -7 -3 max 7 7 12
group 0 "default" ""
group 1 "extra" "models\small01.mdl"
sequence 0 "idle" fps 10 frames 4 flags 1 loop activity 1 weight 1 group 0 blends 1 motion 64 movement 5 0 0 events 1
event 0 0 frame 2 id 1004 "common/null.wav"
sequence 1 "wave" fps 15 frames 3 flags 0 activity 0 weight 0 group 0 blends 2 motion 0 movement 0 0 0 events 2
event 1 0 frame 0 id 5001 "10"
event 1 1 frame 2 id 2001 ""
sequence 2 "run" fps 20 frames 5 flags 0 activity 0 weight 0 group 1 blends 1 motion 0 movement 0 0 0 events 0
bodypart 0 "body" models 1
model 0 0 "body_ref" triangles 5 vertices 6 normals 3 meshes 1
bodypart 1 "head" models 2
model 1 0 "head_a" triangles 1 vertices 3 normals 1 meshes 1
model 1 1 "blank" triangles 0 vertices 0 normals 0 meshes 0
texture 0 "skin.bmp" 4 x 2 flags 0
texture 1 "eyes.bmp" 2 x 2 flags 64 masked
texture 2 "eyes_b.bmp" 2 x 1 flags 34 chrome additive
skin 0 0 1
skin 1 0 2
)");
}

TEST(StudioModel, RunLengthValuesGiveTheFramesWorkedOutByHand) {
    // Three stored values over five frames (the last repeats), one value
    // over two frames, two values over two frames; a byte of padding ahead.
    const std::string runs("\x7f"
                           "\x03\x05\x0a\x00\x14\x00\xe2\xff"
                           "\x01\x02\x00\x80"
                           "\x02\x02\xff\x7f\x01\x00",
                           19);
    const struct {
        const char* What;
        std::string Bytes;
        int Frames;
        std::optional<std::vector<std::int16_t>> Values;
    } cases[] = {
        {"all nine frames", runs, 9,
         std::vector<std::int16_t>{10, 20, -30, -30, -30, -32768, -32768, 32767, 1}},
        {"the first six", runs, 6, std::vector<std::int16_t>{10, 20, -30, -30, -30, -32768}},
        {"no frames", runs, 0, std::vector<std::int16_t>{}},
        {"one frame more than the runs hold", runs, 10, std::nullopt},
        {"a run cut inside its values", runs.substr(0, 8), 3, std::nullopt},
        {"a run of no frames", std::string("\x00\x01\x00\x05\x00", 5), 1, std::nullopt},
        {"a run of no values", std::string("\x00\x00\x03\x05\x00", 5), 1, std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.What);
        EXPECT_EQ(DecodeAnimation(c.Bytes, 1, c.Frames), c.Values);
    }
}

// Little-endian fields of built bytes, to find and break them.
int Int(const std::string& b, std::size_t at) {
    std::uint32_t v = 0;
    for (std::size_t i = 4; i-- > 0;) {
        v = (v << 8) | std::uint8_t(b[at + i]);
    }
    return int(v);
}

void SetInt(std::string& b, std::size_t at, int v) {
    for (std::size_t i = 0; i < 4; ++i) {
        b[at + i] = char((std::uint32_t(v) >> (8 * i)) & 0xff);
    }
}

TEST(StudioModel, BrokenFilesAreRefusedWithTheProblemNamed) {
    StudioBuild split = test::SmallStudio();
    split.SplitTextures = true;
    const StudioBuilt good = BuildStudio(test::SmallStudio());
    const std::size_t bones = std::size_t(Int(good.Model, 144));
    const std::size_t seqs = std::size_t(Int(good.Model, 168));
    const std::size_t parts = std::size_t(Int(good.Model, 208));
    const std::size_t models = std::size_t(Int(good.Model, parts + 72));
    const std::size_t meshes = std::size_t(Int(good.Model, models + 76));
    const std::size_t firstCorner = std::size_t(Int(good.Model, meshes + 4)) + 2;
    const std::size_t textures = std::size_t(Int(good.Model, 184));
    const std::size_t skins = std::size_t(Int(good.Model, 200));
    // The stream of the idle root's Z: its offset from the bone's record.
    const std::size_t idleAnims = std::size_t(Int(good.Model, seqs + 124));
    const std::size_t idleRootZ =
        idleAnims + (std::uint8_t(good.Model[idleAnims + 4]) |
                     std::uint8_t(good.Model[idleAnims + 5]) << 8);

    const struct {
        const char* What;
        std::function<void(StudioBuilt&)> Break;
        Msg Expected;
        const char* Names;
    } cases[] = {
        {"an empty file", [](StudioBuilt& b) { b.Model.clear(); }, MSG_MDL_NOT_STUDIO, ""},
        {"a group file's magic", [](StudioBuilt& b) { b.Model.replace(0, 4, "IDSQ"); },
         MSG_MDL_NOT_STUDIO, "IDSQ"},
        {"another version", [](StudioBuilt& b) { SetInt(b.Model, 4, 6); }, MSG_MDL_VERSION, "6"},
        {"a cut header", [](StudioBuilt& b) { b.Model.resize(100); }, MSG_MDL_BEYOND_END,
         "header"},
        {"bones beyond the end", [](StudioBuilt& b) { SetInt(b.Model, 140, 1000); },
         MSG_MDL_BEYOND_END, "bones"},
        {"a negative count", [](StudioBuilt& b) { SetInt(b.Model, 164, -2); },
         MSG_MDL_BAD_COUNT, "sequences"},
        {"a huge offset", [](StudioBuilt& b) { SetInt(b.Model, 208, 0x7fffffff); },
         MSG_MDL_BEYOND_END, "body parts"},
        {"a bone hanging from a later one",
         [bones](StudioBuilt& b) { SetInt(b.Model, bones + 112 + 32, 2); }, MSG_MDL_BAD_INDEX,
         "bone 1 parent"},
        {"a sequence in a group that is not there",
         [seqs](StudioBuilt& b) { SetInt(b.Model, seqs + 156, 5); }, MSG_MDL_BAD_INDEX,
         "sequence 0 \"idle\" group"},
        {"animation values that cover no frame",
         [idleRootZ](StudioBuilt& b) { b.Model[idleRootZ + 1] = 0; }, MSG_MDL_BAD_ANIMATION,
         "bone 0, channel 2"},
        {"a corner beyond the vertices",
         [firstCorner](StudioBuilt& b) { b.Model[firstCorner] = 9; }, MSG_MDL_BAD_INDEX,
         "body part 0 model 0 mesh 0 vertex"},
        {"texture pixels beyond the end",
         [textures](StudioBuilt& b) { SetInt(b.Model, textures + 80 + 68, 4096); },
         MSG_MDL_BEYOND_END, "texture 1 \"eyes.bmp\" pixels"},
        {"a skin naming no texture", [skins](StudioBuilt& b) { b.Model[skins + 6] = 7; },
         MSG_MDL_BAD_INDEX, "skin family 1, reference 1"},
        {"a group file of another kind",
         [](StudioBuilt& b) { b.Groups[1].replace(0, 4, "IDST"); }, MSG_MDL_IN_FILE,
         "small01.mdl"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.What);
        StudioBuilt broken = good;
        c.Break(broken);
        const StudioLoad load = ReadStudioModel(broken.Model, Beside(broken));
        EXPECT_FALSE(load.Model);
        ASSERT_TRUE(load.Error);
        EXPECT_EQ(load.Error->Message, c.Expected) << ProblemText(*load.Error);
        EXPECT_THAT(ProblemText(*load.Error), HasSubstr(c.Names));
    }

    // A cut texture file is named; a missing one is a note, and the model
    // reads without textures.
    StudioBuilt cut = BuildStudio(split);
    cut.Textures.resize(cut.Textures.size() - 3); // two bytes of padding end it
    const StudioLoad cutLoad = ReadStudioModel(cut.Model, Beside(cut));
    ASSERT_TRUE(cutLoad.Error);
    EXPECT_THAT(ProblemText(*cutLoad.Error), HasSubstr("smallT.mdl: texture 2"));
    cut.Textures.clear();
    const StudioLoad bare = ReadStudioModel(cut.Model, Beside(cut));
    ASSERT_TRUE(bare.Model);
    EXPECT_TRUE(bare.Model->Textures.empty());
    ASSERT_EQ(bare.Notes.size(), 1u);
    EXPECT_EQ(ProblemText(bare.Notes[0]),
              "The texture file smallT.mdl was not found; the model is drawn without its "
              "textures.");

    // Wherever the file is cut, it is refused: the last texture's palette
    // ends it, with only padding behind.
    const std::size_t end = std::size_t(Int(good.Model, textures + 2 * 80 + 76)) + 2 + 768;
    ASSERT_LE(good.Model.size() - end, 3u);
    for (std::size_t size = 0; size < end; ++size) {
        ASSERT_FALSE(ReadStudioModel(good.Model.substr(0, size), Beside(good)).Model) << size;
    }
    // And the group file too.
    for (std::size_t size = 0; size < good.Groups.at(1).size(); ++size) {
        StudioBuilt shorter = good;
        shorter.Groups[1].resize(size);
        ASSERT_FALSE(ReadStudioModel(shorter.Model, Beside(shorter)).Model) << size;
    }
}

} // namespace
} // namespace quarle::studio
