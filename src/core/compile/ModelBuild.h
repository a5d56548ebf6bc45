// What the model compiler works out from the files before it writes a model,
// done the same way, for the checks of its limits:
//  - the bones it keeps: over all parts, the bones a corner of a triangle
//    is on and their ancestors; the rest are dropped;
//  - the vertices and normals of a part after its merging: places in the
//    bone's own frame cut to 0.01 after the scale, normals within about 2
//    degrees of one already kept, on the same bone and texture;
//  - the size of a skin: the part of a bitmap the texture coordinates span,
//    after the compiler clamps them to -1..2 and moves whole triangles by
//    one bitmap towards each other;
//  - the bytes of a sequence's animation data, after the compiler's
//    rounding to steps of each bone's range and its folding of equal runs.
// The arithmetic follows the compiler's, in single precision where it uses
// it. Where a result sits so close to a rounding step that another build of
// the compiler could land on the other side, it says how far it may be off.
#pragma once

#include "compile/CompilerSmd.h"

#include <array>
#include <string>
#include <vector>

namespace quarle::compile {

// A bone's frame in the reference pose: its rotation, the inverse, and its
// place in the model.
struct BoneFrame {
    std::array<std::array<float, 4>, 3> M{};
    std::array<std::array<float, 4>, 3> IM{};
    Vec3 WorldOrg{};
};

// The frames of a part's bones from its skeleton, in index order; a parent
// with a higher index than its child is taken as it stands in frames, which
// (as in the compiler) keeps what an earlier part left there.
void BuildBoneFrames(const ReferenceSmd& part, std::vector<BoneFrame>& frames);

// A count that may be off by up to Uncertain either way.
struct MergedCount {
    long Count = 0;
    long Uncertain = 0;
};

struct PartMerge {
    MergedCount Vertices;
    MergedCount Normals;
};

// The vertices and normals of a part. Counting stops once it is certain that
// both are above stopAbove.
PartMerge MergePart(const ReferenceSmd& part, const std::vector<BoneFrame>& frames, const Vec3& adjust,
                    float scale, long stopAbove);

// The span of a part's texture coordinates on one texture, after the
// compiler's clamping and moving of triangles.
struct UvSpan {
    float MinU = 0, MaxU = 0, MinV = 0, MaxV = 0;
    bool Any = false;
};
std::vector<UvSpan> PackedUvSpans(const ReferenceSmd& part);

// The skin of a texture: width and height in pixels of the stored picture.
struct SkinSize {
    long Width = 0;
    long Height = 0;
    long Bytes() const { return Width * Height + 256 * 3; }
};
// spans: every span of the texture over all parts; the bitmap's size as the
// compiler takes it (16 bits each).
SkinSize SkinOf(const std::vector<UvSpan>& spans, int bitmapWidth, int bitmapHeight, bool chrome);

// Whether the compiler takes a texture for chrome (its name holds "chrome").
bool IsChromeName(std::string_view name);

// ---- bones of the model ----

struct ModelBone {
    std::string Name;
    int Parent = -1;
    BonePose Pose; // the reference pose of the part that brought it
};

// A bone whose parent differs from the one it had before.
struct ParentClash {
    std::string Bone;
    std::string Parent;   // here ("" for a root)
    std::string Before;   // as kept ("" for a root)
};

// The used bones of a part (corners and their ancestors), by index.
std::vector<bool> UsedBones(const ReferenceSmd& part);

// Adds a part's used bones to the model's, renamed first; the clashes are
// returned.
std::vector<ParentClash> AddPartBones(std::vector<ModelBone>& bones, const ReferenceSmd& part,
                                      const std::vector<bool>& used,
                                      const std::vector<std::pair<std::string, std::string>>& renames);

int FindBone(const std::vector<ModelBone>& bones, std::string_view name); // exact, -1 when none
int FindBoneNoCase(const std::vector<ModelBone>& bones, std::string_view name);

// The name a rename gives a bone (the first rename whose old name matches).
std::string Renamed(const std::string& name,
                    const std::vector<std::pair<std::string, std::string>>& renames);

// ---- animation data ----

// A sequence's animation as the compiler holds it before it rounds: for each
// blend, each bone of the model and each of its six values (place, then
// rotation), the value of every frame less the bone's reference value.
struct SequenceMotion {
    int Frames = 0;
    int Blends = 0;
    // [blend][bone][channel] -> values per frame
    std::vector<std::vector<std::array<std::vector<float>, 6>>> Deltas;
};

struct SequenceShape {
    bool Looping = false;
    int MotionType = 0; // bit i: the control word i of X Y Z XR YR ZR LX LY LZ ...
};

// The values of a sequence from its blend files (each already read), mapped
// onto the model's bones by name (renamed first).
SequenceMotion SequenceValues(const std::vector<AnimationSmd>& blends, const SequenceShape& shape,
                              const std::vector<ModelBone>& bones,
                              const std::vector<std::pair<std::string, std::string>>& renames);

// The rounding steps of every bone's six values, from the ranges over all
// sequences; widen with each sequence, then read.
class AnimationScales {
public:
    explicit AnimationScales(std::size_t bones);
    void Widen(const SequenceMotion& motion);
    float Scale(std::size_t bone, int channel) const;

private:
    std::vector<std::array<float, 6>> min_;
    std::vector<std::array<float, 6>> max_;
};

// The largest distance the compiler's writer measures within the sequence's
// animation data (it refuses more than 65535 bytes), and how far it may be
// off.
MergedCount AnimationBytes(const SequenceMotion& motion, const AnimationScales& scales);

// An upper bound of the same without the scales: when it is below the limit
// the sequence need not be kept.
long AnimationBytesBound(const SequenceMotion& motion);

} // namespace quarle::compile
