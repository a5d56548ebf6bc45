// The reader of compiled models over any bytes, which also stand in for its
// texture file and (as a group file) for its sequence groups. Whatever it
// lets through must hold only indices within their tables, and is posed,
// meshed and textured as the preview does it.
#include "FuzzSupport.h"
#include "preview/CompiledModel.h"
#include "studio/StudioModel.h"

#include <algorithm>

namespace {

bool Within(int index, std::size_t size) {
    return index >= 0 && static_cast<std::size_t>(index) < size;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quarle;
    const std::string bytes(fuzz::Bytes(data, size));
    studio::SideFiles side;
    side.Stem = "fuzz";
    side.Read = [&bytes](const std::string& name) -> std::optional<std::string> {
        std::string file = bytes;
        if (name != "fuzzT.mdl" && file.size() >= 4) {
            file.replace(0, 4, "IDSQ");
        }
        return file;
    };
    const studio::StudioLoad load = studio::ReadStudioModel(bytes, side);
    if (load.Model.has_value() == load.Error.has_value()) {
        __builtin_trap();
    }
    if (!load.Model) {
        return 0;
    }
    const studio::StudioModel& m = *load.Model;
    for (const studio::BodyPart& part : m.BodyParts) {
        for (const studio::Model& model : part.Models) {
            for (const int bone : model.VertexBones) {
                if (!Within(bone, m.Bones.size())) {
                    __builtin_trap();
                }
            }
            for (const studio::Mesh& mesh : model.Meshes) {
                for (const auto& triangle : mesh.Triangles) {
                    for (const studio::Corner& c : triangle) {
                        if (!Within(c.Vertex, model.Vertices.size()) ||
                            !Within(c.Normal, model.Normals.size())) {
                            __builtin_trap();
                        }
                    }
                }
            }
        }
    }
    for (const auto& family : m.SkinFamilies) {
        for (const int texture : family) {
            if (!Within(texture, m.Textures.size())) {
                __builtin_trap();
            }
        }
    }
    const int sequences = static_cast<int>(std::min<std::size_t>(m.Sequences.size(), 8));
    for (int s = -1; s < sequences; ++s) {
        preview::PoseCompiled(m, s, 0);
        preview::PoseCompiled(m, s, 1 << 20);
    }
    std::vector<int> textures;
    const preview::Mesh mesh = preview::BuildCompiledMesh(m, {}, 1, textures);
    if (textures.size() != mesh.Batches.size()) {
        __builtin_trap();
    }
    for (const studio::Texture& texture : m.Textures) {
        preview::CompiledTexture(texture);
    }
    return 0;
}
