// Compiled studio models (.mdl, version 10), as the model compiler writes
// them: the header, the skeleton with its controllers, attachments and hit
// boxes, the sequences with their events and groups, the run-length encoded
// animation values, the body parts with their models and meshes, and the
// textures with their palettes and skin families. A model whose textures
// stand in a file of their own (NAMET.mdl) or whose sequences are spread
// over group files (NAME01.mdl, ...) is read with those files.
//
// Everything is read through checked views of the file's bytes: a count or
// an offset that points outside the file, a wrong magic number or version,
// a bone that hangs from a later bone, a vertex, normal, texture or bone
// index beyond its table, and animation values that run off their file end
// the read with an error that names the place. Nothing is read outside the
// bytes handed in.
#pragma once

#include "document/InputFile.h"
#include "localisation/MessageTexts.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarle::studio {

using Vec3 = std::array<float, 3>;

inline constexpr int Version = 10;

// Sequence flags.
inline constexpr int SequenceLooping = 0x0001;
// Motion types of sequences and controllers (one bit each).
inline constexpr int MotionX = 0x0001, MotionY = 0x0002, MotionZ = 0x0004;
inline constexpr int MotionXR = 0x0008, MotionYR = 0x0010, MotionZR = 0x0020;
inline constexpr int MotionLX = 0x0040, MotionLY = 0x0080, MotionLZ = 0x0100;
// Texture flags.
inline constexpr int TextureFlatShade = 0x0001, TextureChrome = 0x0002;
inline constexpr int TextureFullBright = 0x0004, TextureNoMips = 0x0008;
inline constexpr int TextureAlpha = 0x0010, TextureAdditive = 0x0020;
inline constexpr int TextureMasked = 0x0040;

struct Bone {
    std::string Name;
    int Parent = -1; // a bone before this one, or -1
    int Flags = 0;
    std::array<int, 6> Controllers{-1, -1, -1, -1, -1, -1}; // per channel, -1 for none
    // The six channels (X, Y, Z, XR, YR, ZR): the value at rest, and what
    // one step of an animation value is worth. Rotations are in radians.
    std::array<float, 6> Value{};
    std::array<float, 6> Scale{};
    bool operator==(const Bone&) const = default;
};

struct BoneController {
    int Bone = 0;
    int Type = 0; // one of the motion bits, perhaps with 0x8000 (wraps)
    float Start = 0;
    float End = 0;
    int Rest = 0;
    int Index = 0; // 0..3 set by the game, 4 the mouth
    bool operator==(const BoneController&) const = default;
};

struct HitBox {
    int Bone = 0;
    int Group = 0;
    Vec3 Min{};
    Vec3 Max{};
    bool operator==(const HitBox&) const = default;
};

struct Attachment {
    std::string Name;
    int Type = 0;
    int Bone = 0;
    Vec3 Origin{};
    std::array<Vec3, 3> Vectors{};
    bool operator==(const Attachment&) const = default;
};

struct Event {
    int Frame = 0;
    int Id = 0;
    int Type = 0;
    std::string Options;
    bool operator==(const Event&) const = default;
};

struct Pivot {
    Vec3 Origin{};
    int Start = 0;
    int End = 0;
    bool operator==(const Pivot&) const = default;
};

struct Sequence {
    std::string Label;
    float Fps = 0;
    int Flags = 0;
    int Activity = 0;
    int ActivityWeight = 0;
    std::vector<Event> Events;
    int Frames = 0;
    std::vector<Pivot> Pivots;
    int MotionType = 0;
    int MotionBone = 0;
    Vec3 LinearMovement{}; // taken out of the root bones over the sequence
    Vec3 Min{};
    Vec3 Max{};
    int Blends = 0;
    int AnimationOffset = 0; // in the file of its group
    std::array<int, 2> BlendType{};
    std::array<float, 2> BlendStart{};
    std::array<float, 2> BlendEnd{};
    int BlendParent = 0;
    int Group = 0;
    int EntryNode = 0;
    int ExitNode = 0;
    int NodeFlags = 0;
    int NextSequence = 0;
    bool operator==(const Sequence&) const = default;
};

struct SequenceGroup {
    std::string Label;
    std::string Name; // the file the game loads for groups above 0
    bool operator==(const SequenceGroup&) const = default;
};

// One corner of a triangle: indices into its model's vertices and normals,
// and the texture position in texels.
struct Corner {
    int Vertex = 0;
    int Normal = 0;
    int S = 0;
    int T = 0;
    bool operator==(const Corner&) const = default;
};

struct Mesh {
    int DeclaredTriangles = 0; // as the mesh says
    int SkinRef = 0;           // column of the skin families
    int Normals = 0;
    int Strips = 0;
    int Fans = 0;
    std::vector<std::array<Corner, 3>> Triangles; // the strips and fans taken apart
    bool operator==(const Mesh&) const = default;
};

struct Model {
    std::string Name;
    int Type = 0;
    float Radius = 0;
    std::vector<int> VertexBones;
    std::vector<Vec3> Vertices; // in the space of their bone
    std::vector<int> NormalBones;
    std::vector<Vec3> Normals;
    std::vector<Mesh> Meshes;
    std::size_t TriangleCount() const;
    bool operator==(const Model&) const = default;
};

struct BodyPart {
    std::string Name;
    int Base = 1;
    std::vector<Model> Models;
    bool operator==(const BodyPart&) const = default;
};

struct Texture {
    std::string Name;
    int Flags = 0;
    int Width = 0;
    int Height = 0;
    std::vector<std::uint8_t> Pixels;  // palette indices, rows from the top
    std::vector<std::uint8_t> Palette; // 256 colours of red, green, blue
    bool operator==(const Texture&) const = default;
};

struct StudioModel {
    std::string Name;
    int Length = 0;
    int Flags = 0;
    Vec3 Eye{};
    Vec3 Min{};
    Vec3 Max{};
    Vec3 BoxMin{};
    Vec3 BoxMax{};
    std::vector<Bone> Bones;
    std::vector<BoneController> Controllers;
    std::vector<HitBox> HitBoxes;
    std::vector<Sequence> Sequences;
    std::vector<SequenceGroup> Groups;
    std::vector<BodyPart> BodyParts;
    std::vector<Attachment> Attachments;
    std::vector<Texture> Textures;
    int SkinRefs = 0;
    std::vector<std::vector<int>> SkinFamilies; // [family][skin ref]: texture index
    bool ExternalTextures = false;              // the textures came from NAMET.mdl
    // The bytes each sequence group's animations are read from: the model
    // itself for group 0, the group's file for the others (empty when it
    // was not found; its sequences then stand at rest).
    std::vector<std::string> GroupBytes;
    bool operator==(const StudioModel&) const = default;
};

// A problem of a read: a message and its arguments (the section, numbers).
struct StudioProblem {
    Msg Message = MSG_MDL_UNREADABLE;
    std::vector<std::string> Args;
    // Why the model file itself was not read, when that was the problem.
    std::optional<OpenProblem> Unread{};
};
std::string ProblemText(const StudioProblem& problem,
                        const MessageTexts& texts = EnglishMessageTexts());

struct StudioLoad {
    std::optional<StudioModel> Model; // nothing when Error says why
    std::optional<StudioProblem> Error;
    std::vector<StudioProblem> Notes; // side files that were not found
};

// The files beside the model: Read gives a file's bytes by its name (no
// folder), or nothing when there is no such file. Stem is the model's file
// name without ".mdl", from which NAMET.mdl and NAME01.mdl are made.
struct SideFiles {
    std::string Stem;
    std::function<std::optional<std::string>(const std::string& name)> Read;
};

StudioLoad ReadStudioModel(std::string_view bytes, const SideFiles& side = {});

// The model at path (document bytes, case fallback on disk) with the files
// beside it.
StudioLoad ReadStudioFile(const std::string& path);

// The values of one channel of run-length encoded animation data that
// starts at offset in bytes, for frames 0 .. frames - 1. Each run is a
// count of values stored and of frames covered (a byte each), then the
// values; frames of the run beyond its values repeat its last value.
// Nothing when the runs leave bytes or are malformed.
std::optional<std::vector<std::int16_t>> DecodeAnimation(std::string_view bytes,
                                                         std::size_t offset, int frames);

// The six channels of a bone in a frame of a sequence's blend: the rest
// values plus the decoded values times the bone's scales. A frame is
// clamped into the sequence; a sequence whose group file is missing, or a
// blend or bone beyond the tables, gives the rest values.
std::array<float, 6> BoneChannels(const StudioModel& model, int sequence, int blend, int frame,
                                  int bone);

} // namespace quarle::studio
