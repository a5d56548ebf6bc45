// An .smd file read the compiler's way, as a reference and as an animation
// of the same model, and everything the checks work out from it: the
// merging of vertices and normals, the packing of texture coordinates, the
// bones kept, an animation's values and their size. Nothing may crash, hang
// or touch memory outside a table, whatever indices and numbers it holds.
#include "FuzzSupport.h"
#include "compile/CompilerSmd.h"
#include "compile/ModelBuild.h"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quarle::compile;
    const std::string_view text = quarle::fuzz::Bytes(data, size);
    SmdReadOptions options;
    options.Mirrored = {"b1"};
    options.LastFrame = 40;
    const ReferenceSmd ref = ReadReferenceSmd(text, options);
    std::vector<BoneFrame> frames;
    BuildBoneFrames(ref, frames);
    const PartMerge merged = MergePart(ref, frames, {1, 2, 3}, 1.5f, 4096);
    std::size_t sum = static_cast<std::size_t>(merged.Vertices.Count + merged.Normals.Count);
    for (const UvSpan& span : PackedUvSpans(ref)) {
        sum += static_cast<std::size_t>(SkinOf({span}, 63, 65, false).Bytes());
    }
    std::vector<ModelBone> bones;
    AddPartBones(bones, ref, UsedBones(ref), {{"b2", "b3"}});

    const AnimationSmd anim = ReadAnimationSmd(text, options);
    const SequenceMotion motion = SequenceValues({anim, anim}, {true, 0x1FF}, bones, {});
    AnimationScales scales(bones.size());
    scales.Widen(motion);
    sum += static_cast<std::size_t>(AnimationBytes(motion, scales).Count + AnimationBytesBound(motion));
    return sum == static_cast<std::size_t>(-1) ? 1 : 0;
}
