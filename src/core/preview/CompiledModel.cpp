#include "preview/CompiledModel.h"

#include "document/Paths.h"
#include "document/ScriptLayout.h"
#include "document/Text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

namespace quarle::preview {

namespace {

using studio::StudioModel;

constexpr float QuarterTurn = std::numbers::pi_v<float> / 2;

BoneMatrix LocalMatrix(const std::array<float, 6>& channels) {
    return BoneMatrix::FromPose({channels[0], channels[1], channels[2]},
                                {channels[3], channels[4], channels[5]});
}

// The $origin in force for a sequence: where the script has it, else (a
// sequence added since) at the script's end.
DefaultOrigin OriginFor(const Document& doc, const AnimRec& anim) {
    if (anim.From.Read) {
        return anim.From.Read->Origin;
    }
    return doc.Layout ? doc.Layout->LastOrigin : DefaultOrigin{};
}

Vec3 TurnedBack(const Vec3& v, float turn) {
    const float c = std::cos(turn), s = std::sin(turn);
    return {c * v[0] + s * v[1], -s * v[0] + c * v[1], v[2]};
}

int FindBone(const std::vector<std::string>& names, const std::string& name) {
    const auto it = std::find(names.begin(), names.end(), name);
    return it == names.end() ? -1 : int(it - names.begin());
}

} // namespace

std::vector<BoneMatrix> PoseCompiled(const StudioModel& model, int sequence, int frame) {
    std::vector<BoneMatrix> pose(model.Bones.size());
    for (std::size_t b = 0; b < model.Bones.size(); ++b) {
        const BoneMatrix local =
            LocalMatrix(studio::BoneChannels(model, sequence, 0, frame, int(b)));
        const int parent = model.Bones[b].Parent;
        // The reader keeps every parent ahead of its child.
        pose[b] = parent >= 0 && std::size_t(parent) < b ? pose[std::size_t(parent)] * local
                                                         : local;
    }
    return pose;
}

Skeleton CompiledSkeleton(const StudioModel& model) {
    Skeleton skeleton;
    for (const studio::Bone& b : model.Bones) {
        skeleton.Names.push_back(b.Name);
        skeleton.Parents.push_back(b.Parent);
    }
    skeleton.Bind = PoseCompiled(model, -1, 0);
    return skeleton;
}

Mesh BuildCompiledMesh(const StudioModel& model, const std::vector<int>& chosen, int family,
                       std::vector<int>& textures) {
    Mesh mesh;
    mesh.Bones = CompiledSkeleton(model);
    textures.clear();
    const std::vector<BoneMatrix>& rest = mesh.Bones.Bind;
    const std::vector<int>* skins =
        model.SkinFamilies.empty()
            ? nullptr
            : &model.SkinFamilies[std::size_t(
                  std::clamp(family, 0, int(model.SkinFamilies.size()) - 1))];
    bool first = true;
    for (std::size_t p = 0; p < model.BodyParts.size(); ++p) {
        const studio::BodyPart& part = model.BodyParts[p];
        int pick = p < chosen.size() ? chosen[p] : 0;
        if (pick < 0 || std::size_t(pick) >= part.Models.size()) {
            pick = 0;
        }
        if (part.Models.empty()) {
            continue;
        }
        const studio::Model& sub = part.Models[std::size_t(pick)];
        for (const studio::Mesh& m : sub.Meshes) {
            int texture = -1;
            if (skins != nullptr && m.SkinRef >= 0 && std::size_t(m.SkinRef) < skins->size()) {
                texture = (*skins)[std::size_t(m.SkinRef)];
            }
            auto at = std::find(textures.begin(), textures.end(), texture);
            if (at == textures.end()) {
                textures.push_back(texture);
                const bool named = texture >= 0 && std::size_t(texture) < model.Textures.size();
                mesh.Batches.push_back(
                    {named ? model.Textures[std::size_t(texture)].Name : std::string(), {}});
                at = textures.end() - 1;
            }
            MeshBatch& batch = mesh.Batches[std::size_t(at - textures.begin())];
            const studio::Texture* image =
                texture >= 0 && std::size_t(texture) < model.Textures.size()
                    ? &model.Textures[std::size_t(texture)]
                    : nullptr;
            const float width = image != nullptr && image->Width > 0 ? float(image->Width) : 1.0f;
            const float height =
                image != nullptr && image->Height > 0 ? float(image->Height) : 1.0f;
            for (const auto& triangle : m.Triangles) {
                for (const studio::Corner& c : triangle) {
                    MeshVertex v;
                    v.Bone = sub.VertexBones[std::size_t(c.Vertex)];
                    v.Position = rest[std::size_t(v.Bone)].Apply(sub.Vertices[std::size_t(c.Vertex)]);
                    const int normalBone = sub.NormalBones[std::size_t(c.Normal)];
                    // A normal turns with its own bone; skinning turns it with
                    // the corner's, which the compiler makes the same.
                    v.Normal = rest[std::size_t(normalBone)].Rotate(sub.Normals[std::size_t(c.Normal)]);
                    // Texel rows count from the top; the preview's V from the
                    // bottom.
                    v.Uv = {float(c.S) / width, 1.0f - float(c.T) / height};
                    for (std::size_t i = 0; i < 3; ++i) {
                        mesh.Min[i] = first ? v.Position[i] : std::min(mesh.Min[i], v.Position[i]);
                        mesh.Max[i] = first ? v.Position[i] : std::max(mesh.Max[i], v.Position[i]);
                    }
                    first = false;
                    batch.Vertices.push_back(v);
                }
            }
        }
    }
    // The joints are framed too; a model of bones alone by them alone.
    for (const BoneMatrix& joint : rest) {
        const Vec3 o = joint.Origin();
        for (std::size_t i = 0; i < 3; ++i) {
            mesh.Min[i] = first ? o[i] : std::min(mesh.Min[i], o[i]);
            mesh.Max[i] = first ? o[i] : std::max(mesh.Max[i], o[i]);
        }
        first = false;
    }
    return mesh;
}

TextureImage CompiledTexture(const studio::Texture& texture) {
    TextureImage image;
    if (texture.Width <= 0 || texture.Height <= 0 ||
        texture.Pixels.size() != std::size_t(texture.Width) * std::size_t(texture.Height) ||
        texture.Palette.size() < 768) {
        return image;
    }
    image.Width = texture.Width;
    image.Height = texture.Height;
    image.Rgba.resize(texture.Pixels.size() * 4);
    const bool masked = (texture.Flags & studio::TextureMasked) != 0;
    for (std::size_t i = 0; i < texture.Pixels.size(); ++i) {
        const std::size_t c = std::size_t(texture.Pixels[i]) * 3;
        image.Rgba[4 * i] = texture.Palette[c];
        image.Rgba[4 * i + 1] = texture.Palette[c + 1];
        image.Rgba[4 * i + 2] = texture.Palette[c + 2];
        image.Rgba[4 * i + 3] = masked && texture.Pixels[i] == 255 ? 0 : 255;
    }
    return image;
}

int CompiledRenderMode(int flags) {
    if ((flags & studio::TextureAdditive) != 0) {
        return 2;
    }
    return (flags & studio::TextureMasked) != 0 ? 1 : 0;
}

Placement PlacementOf(const Document& doc, const AnimRec* anim) {
    Placement placement;
    placement.Scale = doc.ModelScale;
    if (anim == nullptr) {
        return placement;
    }
    const DefaultOrigin origin = OriginFor(doc, *anim);
    placement.Origin = origin.Offset;
    float degrees = origin.Degrees;
    if (anim->OriginOn == 1) {
        placement.Origin = {float(anim->OriginX), float(anim->OriginY), float(anim->OriginZ)};
    }
    if (anim->Rotate != 0.0f) {
        degrees = anim->Rotate;
    }
    placement.Turn = QuarterTurn + degrees * std::numbers::pi_v<float> / 180.0f;
    if (anim->Scale != 1.0f) {
        placement.Scale = anim->Scale;
    }
    return placement;
}

int CompiledSequence(const Document& doc, int group, int slot, const StudioModel& model) {
    if (group < 0 || group > limits::LastSequenceGroup || slot < 0 ||
        slot > limits::LastAnimSlot) {
        return -1;
    }
    const std::string& name = doc.Anims[std::size_t(group)][std::size_t(slot)].Name;
    int before = 0;
    for (int g = 0; g <= group; ++g) {
        for (int s = 0; s < (g < group ? limits::LastAnimSlot + 1 : slot); ++s) {
            before += paths::EqualsNoCase(doc.Anims[std::size_t(g)][std::size_t(s)].Name, name);
        }
    }
    for (std::size_t s = 0; s < model.Sequences.size(); ++s) {
        if (paths::EqualsNoCase(model.Sequences[s].Label, name) && before-- == 0) {
            return int(s);
        }
    }
    return -1;
}

int CompiledFrame(const SmdModel& animation, const AnimRec& anim, int fileFrame) {
    if (animation.Frames.empty()) {
        return 0;
    }
    // The compiler takes the times from 0 on, or within the frame range.
    const int low = anim.FrameLimit == 1 ? anim.FrameStart : 0;
    const int high = anim.FrameLimit == 1 ? anim.FrameEnd : std::numeric_limits<int>::max();
    std::optional<int> first;
    for (const SmdFrame& f : animation.Frames) {
        if (f.Time >= low && f.Time <= high) {
            first = std::min(first.value_or(f.Time), f.Time);
        }
    }
    const int shown = std::clamp(fileFrame, 0, int(animation.Frames.size()) - 1);
    return std::max(animation.Frames[std::size_t(shown)].Time - first.value_or(0), 0);
}

SkeletonComparison CompareSkeletons(const Skeleton& sources, const std::vector<Vec3>& sourceJoints,
                                    const std::vector<bool>& carried, const StudioModel& model,
                                    int sequence, int frame, const Placement& placement,
                                    float modelScale) {
    SkeletonComparison result;
    const std::vector<BoneMatrix> pose = PoseCompiled(model, sequence, frame);
    // The movement the compiler took out of this frame, put back.
    Vec3 moved{};
    if (sequence >= 0 && std::size_t(sequence) < model.Sequences.size()) {
        const studio::Sequence& seq = model.Sequences[std::size_t(sequence)];
        if (seq.Frames > 1) {
            const float share =
                float(std::clamp(frame, 0, seq.Frames - 1)) / float(seq.Frames - 1);
            for (std::size_t i = 0; i < 3; ++i) {
                moved[i] = seq.LinearMovement[i] * share;
            }
        }
    }
    const float rescale = placement.Scale != 0.0f ? modelScale / placement.Scale : 1.0f;
    std::vector<std::string> compiledNames;
    for (std::size_t b = 0; b < model.Bones.size(); ++b) {
        const Vec3 o = pose[b].Origin();
        const Vec3 back = TurnedBack({o[0] + moved[0], o[1] + moved[1], o[2] + moved[2]},
                                     placement.Turn);
        Vec3 joint;
        for (std::size_t i = 0; i < 3; ++i) {
            joint[i] = back[i] * rescale + placement.Origin[i] * modelScale;
        }
        result.Joints.push_back(joint);
        result.Parents.push_back(model.Bones[b].Parent);
        compiledNames.push_back(model.Bones[b].Name);

        const int source = FindBone(sources.Names, model.Bones[b].Name);
        if (source < 0 || std::size_t(source) >= sourceJoints.size()) {
            result.OnlyCompiled.push_back(model.Bones[b].Name);
            continue;
        }
        const Vec3& s = sourceJoints[std::size_t(source)];
        const float distance = std::hypot(s[0] - joint[0], s[1] - joint[1], s[2] - joint[2]);
        if (result.LargestBone.empty() || distance > result.Largest) {
            result.Largest = distance;
            result.LargestBone = model.Bones[b].Name;
        }
    }
    // A bone that carries vertices keeps its parents in the compiled model.
    std::vector<bool> needed(sources.Names.size(), false);
    for (std::size_t b = 0; b < sources.Names.size() && b < carried.size(); ++b) {
        for (int at = carried[b] ? int(b) : -1, steps = 0;
             at >= 0 && std::size_t(at) < needed.size() && !needed[std::size_t(at)] &&
             steps <= int(needed.size());
             ++steps) {
            needed[std::size_t(at)] = true;
            at = std::size_t(at) < sources.Parents.size() ? sources.Parents[std::size_t(at)] : -1;
        }
    }
    for (std::size_t b = 0; b < sources.Names.size(); ++b) {
        if (needed[b] && FindBone(compiledNames, sources.Names[b]) < 0) {
            result.OnlySources.push_back(sources.Names[b]);
        }
    }
    return result;
}

} // namespace quarle::preview
