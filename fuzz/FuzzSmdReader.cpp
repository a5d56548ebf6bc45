// The full .smd reader over any text, and the checks that read its result.
#include "FuzzSupport.h"
#include "document/SmdReader.h"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const quarle::SmdModel model = quarle::ReadSmdText(quarle::fuzz::Bytes(data, size));
    // Everything the result holds can be walked without care.
    std::size_t sum = 0;
    for (const quarle::SmdFrame& frame : model.Frames) {
        for (const quarle::SmdBonePose& pose : frame.Bones) {
            sum += model.BoneName(pose.Bone).size();
        }
    }
    for (const quarle::SmdTriangle& tri : model.Triangles) {
        sum += tri.Texture.size() + model.BoneName(tri.Vertices[2].Bone).size();
    }
    return sum == static_cast<std::size_t>(-1) ? 1 : 0;
}
