// Writes the bytes of a compiled studio model, laid out as the compiler lays
// them out, from a description: the tests read these bytes back, the bench
// draws a large one and the fuzz target's seeds come from it. Plain C++ on
// the core's types, so that any of them can include it.
#pragma once

#include "studio/StudioModel.h"

#include <array>
#include <bit>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace quarle::test {

// The animation values of one sequence: [blend][bone][channel], one value a
// frame; a channel without values keeps its bone's rest value.
using AnimationValues = std::vector<std::vector<std::array<std::vector<std::int16_t>, 6>>>;

// A strip (or a fan) of a mesh, as the compiler writes it.
struct MeshRun {
    bool Fan = false;
    std::vector<studio::Corner> Corners;
};

struct StudioBuild {
    // Everything but the animation values and the mesh runs; the offsets,
    // counts and Length in it are not used.
    studio::StudioModel Model;
    std::vector<AnimationValues> Animations; // by sequence; missing: no values
    // The runs of a mesh by body part, model and mesh; a mesh not named
    // here writes each of its triangles as a strip of three.
    std::map<std::array<int, 3>, std::vector<MeshRun>> Runs;
    bool SplitTextures = false; // textures and skins in a file of their own
};

struct StudioBuilt {
    std::string Model;
    std::string Textures;              // NAMET.mdl, when split
    std::map<int, std::string> Groups; // NAME01.mdl, ... by group
};

namespace studio_bytes {

class Buffer {
public:
    std::string Bytes;

    std::size_t Size() const { return Bytes.size(); }
    void Align() {
        while (Bytes.size() % 4 != 0) {
            Bytes += '\0';
        }
    }
    void U8(int v) { Bytes += static_cast<char>(v & 0xff); }
    void I16(int v) {
        U8(v);
        U8(v >> 8);
    }
    void I32(std::int64_t v) {
        for (int i = 0; i < 4; ++i) {
            U8(static_cast<int>(v >> (8 * i)));
        }
    }
    void F32(float v) { I32(std::bit_cast<std::uint32_t>(v)); }
    void Vec(const studio::Vec3& v) {
        for (const float f : v) {
            F32(f);
        }
    }
    void Text(const std::string& s, std::size_t length) {
        std::string field = s.substr(0, length);
        field.resize(length, '\0');
        Bytes += field;
    }
    void Patch(std::size_t at, std::int64_t v) {
        for (std::size_t i = 0; i < 4; ++i) {
            Bytes[at + i] = static_cast<char>((v >> (8 * i)) & 0xff);
        }
    }
};

// Runs of values, as the compiler packs them: the values that change, then
// the frames that repeat the last of them, at most 255 frames a run.
inline std::string EncodeRuns(const std::vector<std::int16_t>& values) {
    Buffer out;
    std::size_t i = 0;
    while (i < values.size()) {
        std::vector<std::int16_t> stored{values[i++]};
        int total = 1;
        while (i < values.size() && total < 255 && values[i] != stored.back()) {
            stored.push_back(values[i++]);
            ++total;
        }
        while (i < values.size() && total < 255 && values[i] == stored.back()) {
            ++i;
            ++total;
        }
        out.U8(static_cast<int>(stored.size()));
        out.U8(total);
        for (const std::int16_t v : stored) {
            out.I16(v);
        }
    }
    return out.Bytes;
}

// The animations of the sequences of one group; sets offsets[s] for each.
inline void WriteAnimations(Buffer& out, const StudioBuild& build, int group,
                            std::vector<std::size_t>& offsets) {
    const studio::StudioModel& m = build.Model;
    const std::size_t bones = m.Bones.size();
    for (std::size_t s = 0; s < m.Sequences.size(); ++s) {
        const studio::Sequence& seq = m.Sequences[s];
        if (seq.Group != group) {
            continue;
        }
        out.Align();
        offsets[s] = out.Size();
        const std::size_t blends = static_cast<std::size_t>(seq.Blends);
        const std::size_t table = out.Size();
        out.Bytes.append(blends * bones * 12, '\0');
        for (std::size_t b = 0; b < blends; ++b) {
            for (std::size_t j = 0; j < bones; ++j) {
                const std::size_t record = table + (b * bones + j) * 12;
                for (std::size_t k = 0; k < 6; ++k) {
                    const bool has = s < build.Animations.size() &&
                                     b < build.Animations[s].size() &&
                                     j < build.Animations[s][b].size() &&
                                     !build.Animations[s][b][j][k].empty();
                    if (!has) {
                        continue;
                    }
                    const std::size_t offset = out.Size() - record;
                    out.Bytes[record + 2 * k] = static_cast<char>(offset & 0xff);
                    out.Bytes[record + 2 * k + 1] = static_cast<char>(offset >> 8);
                    out.Bytes += EncodeRuns(build.Animations[s][b][j][k]);
                }
            }
        }
    }
    out.Align();
}

// Textures and skin families behind a header whose texture fields stand at
// head + 180.
inline void WriteTextures(Buffer& out, const studio::StudioModel& m, std::size_t head) {
    out.Align();
    const std::size_t table = out.Size();
    out.Patch(head + 180, static_cast<std::int64_t>(m.Textures.size()));
    out.Patch(head + 184, static_cast<std::int64_t>(table));
    out.Bytes.append(m.Textures.size() * 80, '\0');
    out.Align();
    out.Patch(head + 192, m.SkinRefs);
    out.Patch(head + 196, static_cast<std::int64_t>(m.SkinFamilies.size()));
    out.Patch(head + 200, static_cast<std::int64_t>(out.Size()));
    for (const auto& family : m.SkinFamilies) {
        for (const int t : family) {
            out.I16(t);
        }
    }
    out.Align();
    out.Patch(head + 188, static_cast<std::int64_t>(out.Size()));
    for (std::size_t t = 0; t < m.Textures.size(); ++t) {
        const studio::Texture& tex = m.Textures[t];
        Buffer rec;
        rec.Text(tex.Name, 64);
        rec.I32(tex.Flags);
        rec.I32(tex.Width);
        rec.I32(tex.Height);
        rec.I32(static_cast<std::int64_t>(out.Size()));
        out.Bytes.replace(table + 80 * t, 80, rec.Bytes);
        for (const std::uint8_t p : tex.Pixels) {
            out.U8(p);
        }
        for (const std::uint8_t c : tex.Palette) {
            out.U8(c);
        }
    }
    out.Align();
}

inline void Header(Buffer& out, const char* magic, const std::string& name) {
    out.Bytes += magic;
    out.I32(studio::Version);
    out.Text(name, 64);
    out.I32(0); // length, patched at the end
}

} // namespace studio_bytes

inline StudioBuilt BuildStudio(const StudioBuild& build) {
    using namespace studio_bytes;
    const studio::StudioModel& m = build.Model;
    StudioBuilt built;
    Buffer out;
    Header(out, "IDST", m.Name);
    out.Vec(m.Eye);
    out.Vec(m.Min);
    out.Vec(m.Max);
    out.Vec(m.BoxMin);
    out.Vec(m.BoxMax);
    out.I32(m.Flags);
    out.Bytes.append(244 - out.Size(), '\0');

    out.Patch(140, static_cast<std::int64_t>(m.Bones.size()));
    out.Patch(144, static_cast<std::int64_t>(out.Size()));
    for (const studio::Bone& b : m.Bones) {
        out.Text(b.Name, 32);
        out.I32(b.Parent);
        out.I32(b.Flags);
        for (const int c : b.Controllers) {
            out.I32(c);
        }
        for (const float v : b.Value) {
            out.F32(v);
        }
        for (const float v : b.Scale) {
            out.F32(v);
        }
    }
    out.Patch(148, static_cast<std::int64_t>(m.Controllers.size()));
    out.Patch(152, static_cast<std::int64_t>(out.Size()));
    for (const studio::BoneController& c : m.Controllers) {
        out.I32(c.Bone);
        out.I32(c.Type);
        out.F32(c.Start);
        out.F32(c.End);
        out.I32(c.Rest);
        out.I32(c.Index);
    }
    out.Patch(212, static_cast<std::int64_t>(m.Attachments.size()));
    out.Patch(216, static_cast<std::int64_t>(out.Size()));
    for (const studio::Attachment& a : m.Attachments) {
        out.Text(a.Name, 32);
        out.I32(a.Type);
        out.I32(a.Bone);
        out.Vec(a.Origin);
        for (const auto& v : a.Vectors) {
            out.Vec(v);
        }
    }
    out.Patch(156, static_cast<std::int64_t>(m.HitBoxes.size()));
    out.Patch(160, static_cast<std::int64_t>(out.Size()));
    for (const studio::HitBox& h : m.HitBoxes) {
        out.I32(h.Bone);
        out.I32(h.Group);
        out.Vec(h.Min);
        out.Vec(h.Max);
    }

    std::vector<std::size_t> animOffsets(m.Sequences.size(), 0);
    WriteAnimations(out, build, 0, animOffsets);
    for (std::size_t g = 1; g < m.Groups.size(); ++g) {
        Buffer file;
        Header(file, "IDSQ", m.Groups[g].Name);
        WriteAnimations(file, build, static_cast<int>(g), animOffsets);
        file.Patch(72, static_cast<std::int64_t>(file.Size()));
        built.Groups[static_cast<int>(g)] = file.Bytes;
    }

    out.Patch(164, static_cast<std::int64_t>(m.Sequences.size()));
    out.Patch(168, static_cast<std::int64_t>(out.Size()));
    const std::size_t sequences = out.Size();
    out.Bytes.append(m.Sequences.size() * 176, '\0');
    for (std::size_t s = 0; s < m.Sequences.size(); ++s) {
        const studio::Sequence& q = m.Sequences[s];
        const std::size_t events = out.Size();
        for (const studio::Event& e : q.Events) {
            out.I32(e.Frame);
            out.I32(e.Id);
            out.I32(e.Type);
            out.Text(e.Options, 64);
        }
        const std::size_t pivots = out.Size();
        for (const studio::Pivot& p : q.Pivots) {
            out.Vec(p.Origin);
            out.I32(p.Start);
            out.I32(p.End);
        }
        Buffer rec;
        rec.Text(q.Label, 32);
        rec.F32(q.Fps);
        rec.I32(q.Flags);
        rec.I32(q.Activity);
        rec.I32(q.ActivityWeight);
        rec.I32(static_cast<std::int64_t>(q.Events.size()));
        rec.I32(static_cast<std::int64_t>(events));
        rec.I32(q.Frames);
        rec.I32(static_cast<std::int64_t>(q.Pivots.size()));
        rec.I32(static_cast<std::int64_t>(pivots));
        rec.I32(q.MotionType);
        rec.I32(q.MotionBone);
        rec.Vec(q.LinearMovement);
        rec.I32(0);
        rec.I32(0);
        rec.Vec(q.Min);
        rec.Vec(q.Max);
        rec.I32(q.Blends);
        rec.I32(static_cast<std::int64_t>(animOffsets[s]));
        rec.I32(q.BlendType[0]);
        rec.I32(q.BlendType[1]);
        rec.F32(q.BlendStart[0]);
        rec.F32(q.BlendStart[1]);
        rec.F32(q.BlendEnd[0]);
        rec.F32(q.BlendEnd[1]);
        rec.I32(q.BlendParent);
        rec.I32(q.Group);
        rec.I32(q.EntryNode);
        rec.I32(q.ExitNode);
        rec.I32(q.NodeFlags);
        rec.I32(q.NextSequence);
        out.Bytes.replace(sequences + 176 * s, 176, rec.Bytes);
    }
    out.Align();
    out.Patch(172, static_cast<std::int64_t>(m.Groups.size()));
    out.Patch(176, static_cast<std::int64_t>(out.Size()));
    for (const studio::SequenceGroup& g : m.Groups) {
        out.Text(g.Label, 32);
        out.Text(g.Name, 64);
        out.I32(0);
        out.I32(0);
    }

    out.Patch(204, static_cast<std::int64_t>(m.BodyParts.size()));
    out.Patch(208, static_cast<std::int64_t>(out.Size()));
    const std::size_t parts = out.Size();
    out.Bytes.append(m.BodyParts.size() * 76, '\0');
    for (std::size_t p = 0; p < m.BodyParts.size(); ++p) {
        const studio::BodyPart& part = m.BodyParts[p];
        const std::size_t models = out.Size();
        out.Bytes.append(part.Models.size() * 112, '\0');
        Buffer prec;
        prec.Text(part.Name, 64);
        prec.I32(static_cast<std::int64_t>(part.Models.size()));
        prec.I32(part.Base);
        prec.I32(static_cast<std::int64_t>(models));
        out.Bytes.replace(parts + 76 * p, 76, prec.Bytes);
        for (std::size_t k = 0; k < part.Models.size(); ++k) {
            const studio::Model& model = part.Models[k];
            const std::size_t vertexBones = out.Size();
            for (const int b : model.VertexBones) {
                out.U8(b);
            }
            out.Align();
            const std::size_t normalBones = out.Size();
            for (const int b : model.NormalBones) {
                out.U8(b);
            }
            out.Align();
            const std::size_t vertices = out.Size();
            for (const auto& v : model.Vertices) {
                out.Vec(v);
            }
            const std::size_t normals = out.Size();
            for (const auto& n : model.Normals) {
                out.Vec(n);
            }
            const std::size_t meshes = out.Size();
            out.Bytes.append(model.Meshes.size() * 20, '\0');
            for (std::size_t s = 0; s < model.Meshes.size(); ++s) {
                const studio::Mesh& mesh = model.Meshes[s];
                const std::size_t commands = out.Size();
                const auto runs = build.Runs.find(
                    {static_cast<int>(p), static_cast<int>(k), static_cast<int>(s)});
                if (runs != build.Runs.end()) {
                    for (const MeshRun& run : runs->second) {
                        const int n = static_cast<int>(run.Corners.size());
                        out.I16(run.Fan ? -n : n);
                        for (const studio::Corner& c : run.Corners) {
                            out.I16(c.Vertex);
                            out.I16(c.Normal);
                            out.I16(c.S);
                            out.I16(c.T);
                        }
                    }
                } else {
                    for (const auto& tri : mesh.Triangles) {
                        out.I16(3);
                        for (const studio::Corner& c : tri) {
                            out.I16(c.Vertex);
                            out.I16(c.Normal);
                            out.I16(c.S);
                            out.I16(c.T);
                        }
                    }
                }
                out.I16(0);
                out.Align();
                Buffer mrec;
                mrec.I32(mesh.DeclaredTriangles);
                mrec.I32(static_cast<std::int64_t>(commands));
                mrec.I32(mesh.SkinRef);
                mrec.I32(mesh.Normals);
                mrec.I32(0);
                out.Bytes.replace(meshes + 20 * s, 20, mrec.Bytes);
            }
            Buffer rec;
            rec.Text(model.Name, 64);
            rec.I32(model.Type);
            rec.F32(model.Radius);
            rec.I32(static_cast<std::int64_t>(model.Meshes.size()));
            rec.I32(static_cast<std::int64_t>(meshes));
            rec.I32(static_cast<std::int64_t>(model.Vertices.size()));
            rec.I32(static_cast<std::int64_t>(vertexBones));
            rec.I32(static_cast<std::int64_t>(vertices));
            rec.I32(static_cast<std::int64_t>(model.Normals.size()));
            rec.I32(static_cast<std::int64_t>(normalBones));
            rec.I32(static_cast<std::int64_t>(normals));
            rec.I32(0);
            rec.I32(0);
            out.Bytes.replace(models + 112 * k, 112, rec.Bytes);
        }
    }
    if (build.SplitTextures) {
        Buffer file;
        Header(file, "IDST", m.Name);
        file.Bytes.append(244 - file.Size(), '\0');
        WriteTextures(file, m, 0);
        file.Patch(72, static_cast<std::int64_t>(file.Size()));
        built.Textures = file.Bytes;
    } else {
        WriteTextures(out, m, 0);
    }
    out.Patch(72, static_cast<std::int64_t>(out.Size()));
    built.Model = out.Bytes;
    return built;
}

inline std::vector<std::uint8_t> StudioPalette() {
    std::vector<std::uint8_t> p(768);
    for (std::size_t i = 0; i < p.size(); ++i) {
        p[i] = std::uint8_t(i * 7);
    }
    return p;
}

// Three bones, a controller, an attachment, two hit boxes, three sequences
// (one in a group file of its own, one of two blends) with events, a pivot
// and animation values, two body parts of three models (one mesh of a strip
// and a fan), three textures and two skin families.
inline StudioBuild SmallStudio() {
    StudioBuild build;
    studio::StudioModel& m = build.Model;
    m.Name = "small.mdl";
    m.Flags = 3;
    m.Eye = {0, 6, 62};
    m.Min = {-16, -16, 0};
    m.Max = {16, 16, 72};
    m.BoxMin = {-8, -9, 0};
    m.BoxMax = {8, 9, 70};
    m.Bones = {
        {"root", -1, 0, {-1, -1, -1, -1, -1, -1}, {0, 0, 36, 0, 0, 1.5f}, {0.01f, 0.01f, 0.01f, 1e-4f, 1e-4f, 1e-4f}},
        {"spine", 0, 0, {-1, -1, -1, -1, -1, 0}, {0, 0, 8, 0, 0, 0}, {0.5f, 0.5f, 0.5f, 0.01f, 0.01f, 0.01f}},
        {"head", 1, 2, {-1, -1, -1, -1, -1, -1}, {0, 0, 12, 0.25f, 0, 0}, {1, 1, 1, 0.001f, 0.001f, 0.001f}},
    };
    m.Controllers = {{1, studio::MotionZR | 0x8000, -45, 60, 12, 0}};
    m.Attachments = {{"gun", 0, 2, {0, -4, 2}, {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}}};
    m.HitBoxes = {{0, 3, {-4, -4, -36}, {4, 4, 8}}, {2, 1, {-7, -7, -3}, {7, 7, 12}}};
    m.Groups = {{"default", ""}, {"extra", "models\\small01.mdl"}};
    studio::Sequence idle;
    idle.Label = "idle";
    idle.Fps = 10;
    idle.Flags = studio::SequenceLooping;
    idle.Activity = 1;
    idle.ActivityWeight = 1;
    idle.Events = {{2, 1004, 0, "common/null.wav"}};
    idle.Frames = 4;
    idle.Pivots = {{{1, 2, 3}, 0, 3}};
    idle.MotionType = studio::MotionLX;
    idle.LinearMovement = {5, 0, 0};
    idle.Min = {-1, -2, -3};
    idle.Max = {1, 2, 3};
    idle.Blends = 1;
    studio::Sequence wave = idle;
    wave.Label = "wave";
    wave.Fps = 15;
    wave.Flags = 0;
    wave.Activity = 0;
    wave.ActivityWeight = 0;
    wave.Events = {{0, 5001, 0, "10"}, {2, 2001, 0, ""}};
    wave.Frames = 3;
    wave.Pivots = {};
    wave.MotionType = 0;
    wave.LinearMovement = {};
    wave.Blends = 2;
    wave.BlendType = {studio::MotionXR, 0};
    wave.BlendStart = {-30, 0};
    wave.BlendEnd = {30, 0};
    studio::Sequence run = wave;
    run.Label = "run";
    run.Fps = 20;
    run.Events = {};
    run.Frames = 5;
    run.Blends = 1;
    run.BlendType = {};
    run.BlendStart = {};
    run.BlendEnd = {};
    run.Group = 1;
    run.EntryNode = 2;
    run.ExitNode = 3;
    run.NodeFlags = 1;
    run.NextSequence = 1;
    m.Sequences = {idle, wave, run};
    build.Animations.resize(3);
    build.Animations[0] = {{{}, {}, {}}};
    build.Animations[0][0][0][2] = {0, 100, 100, 100};
    build.Animations[0][0][1][5] = {-5, -5, 7, 7};
    build.Animations[1] = {{{}, {}, {}}, {{}, {}, {}}};
    build.Animations[1][1][2][3] = {300, 200, 100};
    build.Animations[2] = {{{}, {}, {}}};
    build.Animations[2][0][0][0] = {1, 2, 3, 4, 5};

    studio::Model body;
    body.Name = "body_ref";
    body.Radius = 40;
    body.VertexBones = {0, 0, 1, 1, 2, 2};
    body.Vertices = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}};
    body.NormalBones = {0, 1, 2};
    body.Normals = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    const std::vector<studio::Corner> strip{{0, 0, 0, 0}, {1, 0, 4, 0}, {2, 1, 0, 2}, {3, 1, 4, 2}, {4, 2, 2, 1}};
    const std::vector<studio::Corner> fan{{5, 2, 1, 1}, {0, 0, 3, 1}, {1, 0, 3, 2}, {2, 1, 0, 1}};
    studio::Mesh bodyMesh;
    bodyMesh.DeclaredTriangles = 5;
    bodyMesh.Normals = 3;
    bodyMesh.Strips = 1;
    bodyMesh.Fans = 1;
    // A strip turns every other triangle; a fan keeps its first corner.
    bodyMesh.Triangles = {{strip[0], strip[1], strip[2]}, {strip[2], strip[1], strip[3]},
                          {strip[2], strip[3], strip[4]}, {fan[0], fan[1], fan[2]},
                          {fan[0], fan[2], fan[3]}};
    body.Meshes = {bodyMesh};
    build.Runs[{0, 0, 0}] = {{false, strip}, {true, fan}};
    studio::Model head;
    head.Name = "head_a";
    head.VertexBones = {2, 2, 2};
    head.Vertices = {{0, 0, 0}, {1, 1, 0}, {0, 1, 1}};
    head.NormalBones = {2};
    head.Normals = {{0, 0, 1}};
    studio::Mesh headMesh;
    headMesh.DeclaredTriangles = 1;
    headMesh.SkinRef = 1;
    headMesh.Normals = 1;
    headMesh.Strips = 1;
    headMesh.Triangles = {{studio::Corner{0, 0, 0, 0}, studio::Corner{1, 0, 1, 0}, studio::Corner{2, 0, 1, 1}}};
    head.Meshes = {headMesh};
    studio::Model bare;
    bare.Name = "blank";
    m.BodyParts = {{"body", 1, {body}}, {"head", 1, {head, bare}}};
    m.Textures = {{"skin.bmp", 0, 4, 2, {0, 1, 2, 3, 4, 5, 6, 7}, StudioPalette()},
                  {"eyes.bmp", studio::TextureMasked, 2, 2, {255, 1, 1, 255}, StudioPalette()},
                  {"eyes_b.bmp", studio::TextureAdditive | studio::TextureChrome, 2, 1, {9, 9}, StudioPalette()}};
    m.SkinRefs = 2;
    m.SkinFamilies = {{0, 1}, {0, 2}};
    return build;
}

} // namespace quarle::test
