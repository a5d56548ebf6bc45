// Times the 3D preview's frame on a large reference part against a plain
// clear of the same view in the same run.
//
//   preview-bench PART.smd ANIMATION.smd [FRAMES]
//
// Each frame of a model poses the skeleton at the next frame of the
// animation, skins the mesh on the CPU, uploads it and draws it; each frame
// of the clear draws the empty view. All are read back, so that every frame
// is finished when its time is taken. Prints the mean times in milliseconds
// and the frames per second they allow, for two models of as many
// triangles on the part's skeleton: the part itself, and closed surfaces of
// small triangles about its bones, as modelling tools export a body.
#include "document/SmdReader.h"
#include "preview/ModelPose.h"
#include "ui/preview/PreviewView.h"

#include <QApplication>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
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

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "usage: preview-bench PART.smd ANIMATION.smd [FRAMES]\n");
        return 2;
    }
    const int frames = argc > 3 ? std::max(std::atoi(argv[3]), 1) : 200;
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
