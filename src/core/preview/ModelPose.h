// What the 3D preview draws, worked out without a window: the bone matrices
// of a frame, the meshes of the chosen parts in their bind pose and skinned
// to a pose, the frame an animation shows at a time, and the pixels of an
// 8-bit texture. The window only uploads what these give.
//
// Conventions, those of the model compiler:
// - a bone's rotation (x, y, z) in radians turns as R = Rz(z) * Ry(y) * Rx(x);
// - a bone's matrix in the model is its parent's matrix times its own;
// - reference meshes give their corners in model space at the first frame of
//   their own skeleton, so a corner follows its bone by
//   pose[bone] * inverse(bind[bone]).
#pragma once

#include "document/Document.h"
#include "document/SmdReader.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarle::preview {

using Vec3 = std::array<float, 3>;

// A rigid transform: rotation rows and translation, row-major 3 x 4.
struct BoneMatrix {
    std::array<float, 12> M{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0};

    static BoneMatrix FromPose(const Vec3& position, const Vec3& rotation);
    BoneMatrix operator*(const BoneMatrix& right) const;
    Vec3 Apply(const Vec3& point) const;  // rotation and translation
    Vec3 Rotate(const Vec3& vector) const; // rotation only
    BoneMatrix Inverse() const;            // of a rigid transform
    Vec3 Origin() const { return {M[3], M[7], M[11]}; }
};

// The bones of the model, by name, in the order of the first reference part.
struct Skeleton {
    std::vector<std::string> Names;
    std::vector<int> Parents; // -1 for a root
    std::vector<BoneMatrix> Bind; // model-space matrices of the first frame
};

// The model-space matrix of every bone of the skeleton in the frame of
// animation. Bones are matched by name; a bone the animation lacks keeps
// its bind pose relative to its parent. A parent loop is cut at the first
// bone met twice.
std::vector<BoneMatrix> PoseBones(const Skeleton& skeleton, const SmdModel& animation,
                                  int frame);

struct MeshVertex {
    Vec3 Position; // model space, bind pose, already scaled
    Vec3 Normal;
    std::array<float, 2> Uv;
    int Bone = 0; // index into the skeleton
};

// The triangles of one texture: three vertices each.
struct MeshBatch {
    std::string Texture; // as the .smd names it
    std::vector<MeshVertex> Vertices;
};

struct Mesh {
    Skeleton Bones;
    std::vector<MeshBatch> Batches; // in the order textures first appear
    Vec3 Min{}; // bounds of the bind pose
    Vec3 Max{};
};

// The reference parts the preview shows: for each body group the part at
// chosen[group] (0 when chosen is shorter), as ModelPath/<part>.smd; a
// "<blank>" or empty part is left out. chosen counts from 0 both ways: its
// first entry is body group 1, and 0 picks the group's first part; an entry
// outside the group's parts shows none of them.
std::vector<std::string> ChosenPartFiles(const Document& doc, const std::vector<int>& chosen);

// Builds the mesh of the parts, scaled by scale. The skeleton is that of the
// first part; bones of later parts are matched by name and appended when new.
Mesh BuildMesh(const std::vector<SmdModel>& parts, float scale);

// The corners of the batches moved to the pose (pose as PoseBones gives it,
// scale applied to its translations), three per triangle, batch after batch.
void SkinMesh(const Mesh& mesh, const std::vector<BoneMatrix>& pose, float scale,
              std::vector<Vec3>& positions, std::vector<Vec3>& normals);

// The frame of an animation with frameCount frames that shows seconds after
// its start, at the record's Fps: looping when Loop is on, held at its last
// frame otherwise, and within FrameStart..FrameEnd (clamped into the file)
// when FrameLimit is on. 0 for an animation without frames or an Fps not
// above 0.
int FrameAt(const AnimRec& anim, int frameCount, double seconds);

// The texture name a variation row shows in place of name: row 0 or 1 is
// the model's own; a row whose cell for that texture is empty or "<blank>"
// keeps the name too.
std::string VariedTexture(const Document& doc, int row, std::string_view name);

// 0 normal, 1 masked, 2 additive, by the render-mode table (case-blind).
int RenderMode(const Document& doc, std::string_view texture);

// An 8-bit palette bitmap as RGBA rows from the top. With masked, palette
// index 255 is transparent (alpha 0); every other pixel is opaque.
struct TextureImage {
    int Width = 0;
    int Height = 0;
    std::vector<std::uint8_t> Rgba;
};

// nullopt for anything that is not a complete, uncompressed 8-bit bitmap.
std::optional<TextureImage> DecodeBmp8(std::string_view bytes, bool masked);

} // namespace quarle::preview
