// Times the 3D preview's frame on a large reference part, or on a compiled
// model, against a plain clear of the same view in the same run.
//
//   preview-bench PART.smd ANIMATION.smd [FRAMES]
//   preview-bench MODEL.mdl [FRAMES]
//   preview-bench --make-model OUT.mdl
//
// A compiled model is drawn with its own textures, the first model of each
// body part, through its longest sequence frame by frame. --make-model
// writes a large one (StudioBytes.h): 64 bones, four body parts of 4096
// triangles each (a small closed surface about every bone), four textures of
// 512 x 512 and a sequence of 60 frames that moves every channel of every
// bone.
//
// Each frame of a model poses the skeleton at the next frame of the
// animation, skins the mesh on the CPU, uploads it and draws it; each frame
// of the clear draws the empty view. All are read back, so that every frame
// is finished when its time is taken. Prints the mean times in milliseconds
// and the frames per second they allow, for two models of as many
// triangles on the part's skeleton: the part itself, and closed surfaces of
// small triangles about its bones, as modelling tools export a body.
#include "StudioBytes.h"
#include "document/SmdReader.h"
#include "preview/CompiledModel.h"
#include "preview/ModelPose.h"
#include "ui/preview/PreviewView.h"

#include <QApplication>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double Millis(Clock::time_point from) {
    return std::chrono::duration<double, std::milli>(Clock::now() - from).count();
}

// A sphere of small triangles about each bone of the part, as many
// triangles in all as the part has, on the part's own skeleton and frame.
quarle::SmdModel Spheres(const quarle::SmdModel& part, std::size_t triangles) {
    quarle::SmdModel model;
    model.Readable = model.Version1 = true;
    model.Nodes = part.Nodes;
    model.Frames = {part.Frames.front()};
    const quarle::preview::Skeleton bones = quarle::preview::BuildMesh({part}, 1.0f).Bones;
    const std::size_t perBone = std::max<std::size_t>(triangles / bones.Names.size(), 8);
    const int slices = std::max(2, static_cast<int>(std::sqrt(double(perBone) / 2.0)));
    const int stacks = std::max(2, static_cast<int>(perBone / (2 * slices)));
    constexpr double Pi = 3.14159265358979323846;
    for (std::size_t b = 0; b < bones.Names.size() && model.Triangles.size() < triangles; ++b) {
        const quarle::preview::Vec3 at = bones.Bind[b].Origin();
        auto corner = [&](int i, int j) {
            const double theta = Pi * i / stacks;
            const double phi = 2 * Pi * j / slices;
            const std::array<float, 3> n{float(std::sin(theta) * std::cos(phi)),
                                         float(std::sin(theta) * std::sin(phi)),
                                         float(std::cos(theta))};
            quarle::SmdVertex v;
            v.Bone = static_cast<int>(b);
            v.Normal = n;
            for (std::size_t k = 0; k < 3; ++k) {
                v.Position[k] = at[k] + 4.0f * n[k];
            }
            v.Uv = {float(j) / slices, float(i) / stacks};
            return v;
        };
        for (int i = 0; i < stacks; ++i) {
            for (int j = 0; j < slices; ++j) {
                model.Triangles.push_back({"skin.bmp", {corner(i, j), corner(i + 1, j),
                                                        corner(i + 1, j + 1)}});
                model.Triangles.push_back({"skin.bmp", {corner(i, j), corner(i + 1, j + 1),
                                                        corner(i, j + 1)}});
            }
        }
    }
    return model;
}

// The mean time of a frame of mesh, posed by animation frame after frame.
double TimeModel(quarle::ui::PreviewView& view, const quarle::preview::Mesh& mesh,
                 const quarle::SmdModel& animation, int frames, double& skinning) {
    view.SetMesh(mesh, std::vector<quarle::ui::PreviewTexture>(mesh.Batches.size()));
    view.FrameModel();
    std::vector<quarle::preview::Vec3> positions;
    std::vector<quarle::preview::Vec3> normals;
    skinning = 0;
    view.Grab();
    const Clock::time_point start = Clock::now();
    for (int i = 0; i < frames; ++i) {
        const Clock::time_point cpu = Clock::now();
        const int frame = i % static_cast<int>(animation.Frames.size());
        const auto pose = quarle::preview::PoseBones(mesh.Bones, animation, frame);
        quarle::preview::SkinMesh(mesh, pose, 1.0f, positions, normals);
        view.SetPose(positions, normals, {});
        skinning += Millis(cpu);
        view.Grab();
    }
    skinning /= frames;
    return Millis(start) / frames;
}

void Report(const char* what, double ms) {
    std::printf("%-28s %8.2f ms  (%5.0f fps)\n", what, ms, 1000.0 / ms);
}

// The large compiled model of the bench: see the head of this file.
std::string LargeCompiledModel() {
    using namespace quarle;
    constexpr int Bones = 64;
    constexpr int Parts = 4;
    constexpr int Triangles = 4096;
    constexpr int Frames = 60;
    test::StudioBuild build;
    studio::StudioModel& m = build.Model;
    m.Name = "bench.mdl";
    for (int b = 0; b < Bones; ++b) {
        studio::Bone bone;
        bone.Name = "bone" + std::to_string(b);
        bone.Parent = b == 0 ? -1 : (b - 1) / 2; // a binary tree
        bone.Value = {0, b == 0 ? 0.0f : 6.0f, b == 0 ? 0.0f : 4.0f, 0, 0, 0};
        bone.Scale = {0.01f, 0.01f, 0.01f, 0.0001f, 0.0001f, 0.0001f};
        m.Bones.push_back(bone);
    }
    m.Groups = {{"default", ""}};
    studio::Sequence seq;
    seq.Label = "move";
    seq.Fps = 30;
    seq.Flags = studio::SequenceLooping;
    seq.Frames = Frames;
    seq.Blends = 1;
    m.Sequences = {seq};
    build.Animations.resize(1);
    build.Animations[0].resize(1);
    build.Animations[0][0].resize(Bones);
    for (int b = 0; b < Bones; ++b) {
        for (std::size_t k = 0; k < 6; ++k) {
            auto& values = build.Animations[0][0][std::size_t(b)][k];
            for (int f = 0; f < Frames; ++f) {
                values.push_back(std::int16_t(std::lround(
                    3000 * std::sin(0.1 * f + 0.7 * double(k) + 0.3 * b))));
            }
        }
    }
    for (int p = 0; p < Parts; ++p) {
        studio::Model model;
        model.Name = "part" + std::to_string(p);
        // A small closed surface about each bone, as a modelling tool
        // exports a body: 4 x 8 cells of two triangles.
        constexpr int Stacks = 4;
        constexpr int Slices = 8;
        constexpr double Pi = 3.14159265358979323846;
        studio::Mesh mesh;
        mesh.SkinRef = p;
        for (int b = 0; b < Bones && int(mesh.Triangles.size()) < Triangles; ++b) {
            const int first = int(model.Vertices.size());
            for (int i = 0; i <= Stacks; ++i) {
                for (int j = 0; j < Slices; ++j) {
                    const double theta = Pi * i / Stacks;
                    const double phi = 2 * Pi * j / Slices;
                    model.VertexBones.push_back(b);
                    model.Vertices.push_back({float(1.5 * std::sin(theta) * std::cos(phi)),
                                              float(1.5 * std::sin(theta) * std::sin(phi)),
                                              float(1.5 * std::cos(theta)) + float(p)});
                }
            }
            const auto at = [&](int i, int j) {
                return studio::Corner{first + i * Slices + j % Slices, 0, j * 64 % 512,
                                      i * 128 % 512};
            };
            for (int i = 0; i < Stacks; ++i) {
                for (int j = 0; j < Slices; ++j) {
                    mesh.Triangles.push_back({at(i, j), at(i + 1, j), at(i + 1, j + 1)});
                    mesh.Triangles.push_back({at(i, j), at(i + 1, j + 1), at(i, j + 1)});
                }
            }
        }
        mesh.Triangles.resize(std::min<std::size_t>(mesh.Triangles.size(), Triangles));
        mesh.DeclaredTriangles = int(mesh.Triangles.size());
        model.NormalBones = {0};
        model.Normals = {{0, 0, 1}};
        model.Meshes = {mesh};
        m.BodyParts.push_back({"body" + std::to_string(p), 1, {model}});
        studio::Texture texture{"skin" + std::to_string(p) + ".bmp", 0, 512, 512, {}, {}};
        for (int i = 0; i < 512 * 512; ++i) {
            texture.Pixels.push_back(std::uint8_t((i / 512 / 32 + i % 512 / 32 + p) % 256));
        }
        texture.Palette = test::StudioPalette();
        m.Textures.push_back(texture);
    }
    m.SkinRefs = Parts;
    m.SkinFamilies = {{0, 1, 2, 3}};
    return test::BuildStudio(build).Model;
}

// Times a compiled model against a clear of the same view.
int TimeCompiled(quarle::ui::PreviewView& view, const char* path, int frames, double clear) {
    const quarle::studio::StudioLoad load = quarle::studio::ReadStudioFile(path);
    if (!load.Model) {
        std::fprintf(stderr, "preview-bench: %s: %s\n", path,
                     quarle::studio::ProblemText(*load.Error).c_str());
        return 1;
    }
    const quarle::studio::StudioModel& m = *load.Model;
    std::vector<int> textureOf;
    const quarle::preview::Mesh mesh = quarle::preview::BuildCompiledMesh(m, {}, 0, textureOf);
    std::vector<quarle::ui::PreviewTexture> textures;
    std::size_t corners = 0;
    for (std::size_t i = 0; i < textureOf.size(); ++i) {
        quarle::ui::PreviewTexture texture;
        if (textureOf[i] >= 0) {
            const quarle::studio::Texture& t = m.Textures[std::size_t(textureOf[i])];
            texture.Image = quarle::preview::CompiledTexture(t);
            texture.Mode = quarle::preview::CompiledRenderMode(t.Flags);
        }
        textures.push_back(std::move(texture));
        corners += mesh.Batches[i].Vertices.size();
    }
    int sequence = -1;
    for (std::size_t s = 0; s < m.Sequences.size(); ++s) {
        if (sequence < 0 || m.Sequences[s].Frames > m.Sequences[std::size_t(sequence)].Frames) {
            sequence = int(s);
        }
    }
    view.SetMesh(mesh, std::move(textures));
    view.FrameModel();
    view.Grab();
    std::vector<quarle::preview::Vec3> positions;
    std::vector<quarle::preview::Vec3> normals;
    double posing = 0;
    const Clock::time_point start = Clock::now();
    for (int i = 0; i < frames; ++i) {
        const Clock::time_point cpu = Clock::now();
        const int frame = sequence < 0 ? 0 : i % std::max(m.Sequences[std::size_t(sequence)].Frames, 1);
        const auto pose = quarle::preview::PoseCompiled(m, sequence, frame);
        quarle::preview::SkinMesh(mesh, pose, 1.0f, positions, normals);
        view.SetPose(positions, normals, {});
        posing += Millis(cpu);
        view.Grab();
    }
    const double model = Millis(start) / frames;
    std::printf("compiled model %s: %zu triangles, %zu bones, sequence \"%s\"\n", path,
                corners / 3, m.Bones.size(),
                sequence < 0 ? "" : m.Sequences[std::size_t(sequence)].Label.c_str());
    std::printf("view 800 x 600, %d frames each\n", frames);
    Report("clear", clear);
    Report("compiled model", model);
    std::printf("of which pose and skinning  %8.2f ms\n", posing / frames);
    return 0;
}

bool EndsWith(const char* text, const char* tail) {
    const std::size_t n = std::strlen(text), k = std::strlen(tail);
    return n >= k && std::strcmp(text + n - k, tail) == 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], "--make-model") == 0) {
        std::ofstream(argv[2], std::ios::binary) << LargeCompiledModel();
        return 0;
    }
    QApplication app(argc, argv);
    const bool compiled = argc >= 2 && EndsWith(argv[1], ".mdl");
    if (argc < (compiled ? 2 : 3)) {
        std::fprintf(stderr, "usage: preview-bench PART.smd ANIMATION.smd [FRAMES]\n"
                             "       preview-bench MODEL.mdl [FRAMES]\n"
                             "       preview-bench --make-model OUT.mdl\n");
        return 2;
    }
    const int frameArg = compiled ? 2 : 3;
    const int frames = argc > frameArg ? std::max(std::atoi(argv[frameArg]), 1) : 200;

    quarle::ui::PreviewView view;
    view.resize(800, 600);
    view.show();
    for (int i = 0; i < 50 && !view.GlAvailable(); ++i) {
        QApplication::processEvents();
    }
    if (view.GlAvailable() != true) {
        std::fprintf(stderr, "preview-bench: no GL context\n");
        return 1;
    }

    // The clear: the same view without a mesh.
    view.Grab();
    Clock::time_point start = Clock::now();
    for (int i = 0; i < frames; ++i) {
        view.Grab();
    }
    const double clear = Millis(start) / frames;
    if (compiled) {
        return TimeCompiled(view, argv[1], frames, clear);
    }

    const quarle::SmdModel part = quarle::ReadSmdFile(argv[1]);
    const quarle::SmdModel animation = quarle::ReadSmdFile(argv[2]);
    if (!part.Readable || animation.Frames.empty()) {
        std::fprintf(stderr, "preview-bench: cannot read the part or the animation\n");
        return 1;
    }
    const quarle::preview::Mesh mesh = quarle::preview::BuildMesh({part}, 1.0f);
    std::size_t corners = 0;
    for (const auto& batch : mesh.Batches) {
        corners += batch.Vertices.size();
    }

    // The models, textured with the checker of missing bitmaps.
    double skinPart = 0;
    const double asWritten = TimeModel(view, mesh, animation, frames, skinPart);
    const quarle::preview::Mesh closed =
        quarle::preview::BuildMesh({Spheres(part, corners / 3)}, 1.0f);
    std::size_t closedCorners = 0;
    for (const auto& batch : closed.Batches) {
        closedCorners += batch.Vertices.size();
    }
    double skinClosed = 0;
    const double surfaces = TimeModel(view, closed, animation, frames, skinClosed);

    std::printf("view 800 x 600, %d frames each, triangles %zu (part) and %zu (surfaces)\n",
                frames, corners / 3, closedCorners / 3);
    Report("clear", clear);
    Report("part as written", asWritten);
    Report("closed surfaces", surfaces);
    std::printf("of which pose and skinning  %8.2f ms and %.2f ms\n", skinPart, skinClosed);
    return 0;
}
