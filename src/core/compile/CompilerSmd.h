// The .smd files as the model compiler reads them, for the checks ahead of a
// compile. The compiler reads a file line by line with fixed patterns, and
// some of its ways differ from what the file format means:
//  - a line is at most 1023 bytes (a longer one is read as several), CR LF
//    reads as LF, and a line ends at a NUL byte;
//  - at the top of a file the first word picks the block; a blank line keeps
//    the word of the line before, so a blank line behind a block's "end"
//    enters that block again;
//  - a node line is `index "name" parent` with the name in quotes; the
//    block ends at the first other line, and the file's bone count is the
//    last index read plus one;
//  - in a reference file the triangles end at a line that is exactly "end";
//    a texture line keeps its leading blanks and loses the trailing ones; an
//    empty one drops the three lines below it;
//  - in an animation file a word other than version, nodes and skeleton skips
//    every line up to one that begins with "end";
//  - numbers are read as the C library's scanf reads them: the longest
//    number at the start of a word, the next one right behind it.
// Where the compiler would stop, crash or read out of its tables, a finding
// says so; the rest of the file is read on as the compiler would have read
// it, so one run names what it can.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace quarle::compile {

using Vec3 = std::array<float, 3>;

// Node indices the compiler keeps per file, and frame numbers per animation.
inline constexpr int MaxSourceBones = 512;
inline constexpr int MaxFrameNumber = 2047;

struct CompilerNode {
    std::string Name; // empty for an index the file never gave
    int Parent = 0;   // the compiler's fresh table holds 0
    bool Mirrored = false;
};

struct BonePose {
    Vec3 Pos{};
    Vec3 Rot{};
};

struct CompilerCorner {
    int Bone = 0;
    Vec3 Pos{};
    Vec3 Normal{};
    float U = 0, V = 0;
};

struct CompilerTriangle {
    int Texture = 0; // index into the file's Textures
    int Line = 0;
    std::array<CompilerCorner, 3> Corners{};
};

enum class SmdFindingKind {
    // The compiler stops, crashes or corrupts its tables (the first of these
    // in a file is the one it meets).
    BadVersion,        // Detail: the number
    NodesCutShort,     // the file ends inside the nodes
    IndexOutOfRange,   // a node or pose index outside 0..511; Detail: the index
    BadTriangleLine,   // a corner line that is not nine numbers
    CornerBoneOutside, // Detail: the bone index; the file has Detail2 bones
    SkeletonSwallowsTriangles, // a reference's skeleton runs on into the triangles, which it reads as poses
    BadPoseLine,       // an animation line that is no pose, "time" or "end"
    AnimationCutShort, // the file ends inside an animation's skeleton
    PoseBoneOutside,   // an animation pose on a bone index the nodes do not reach; Detail: the index
    FrameOutside,      // a pose in the frame range at a frame outside 0..2047; Detail: the frame
    NoFrameInRange,    // an animation with no pose in its frame range (the compiler crashes)
    // The compiler reads on.
    NoSkeleton,        // an animation without a skeleton: its bones stay unset (fatal when
                       // the model has one of them)
    NodesReadAgain,    // a second nodes block, or a blank line behind the first's end
    SkippedToEnd,      // an animation's unknown word skipped lines that held a block; Detail: the word
};

struct SmdFinding {
    SmdFindingKind Kind = SmdFindingKind::BadVersion;
    int Line = 0; // the compiler's line count (1-based)
    std::string Detail;
    std::string Detail2;
    // The blank line that made the compiler enter the block the finding is
    // in once more; 0 when it entered it through its word.
    int RepeatLine = 0;
};

bool IsFatal(SmdFindingKind kind);

// How a file is read: the scale, the bones mirrored so far, and for an
// animation the frame range, the origin shift and the turn about Z of its
// sequence.
struct SmdReadOptions {
    float Scale = 1.0f;
    std::vector<std::string> Mirrored;
    // Animations only.
    int FirstFrame = 0;
    int LastFrame = MaxFrameNumber;
    Vec3 Adjust{};
    float ZRotation = 0.0f;
};

struct ReferenceSmd {
    int NumBones = 0;                // the last node index read, plus one
    std::vector<CompilerNode> Nodes; // MaxSourceBones entries
    // The skeleton as the first triangles block found it (scaled, mirrored,
    // rotations within -pi..pi).
    std::vector<BonePose> Skeleton;  // MaxSourceBones entries
    std::vector<std::string> Textures; // in the order the triangles first use them
    std::vector<CompilerTriangle> Triangles;
    std::vector<SmdFinding> Findings;
};

struct AnimationSmd {
    int NumBones = 0;
    std::vector<CompilerNode> Nodes; // MaxSourceBones entries
    bool HasFrames = false;          // a pose fell into the range
    int FirstFrame = 0;              // of the poses read, when HasFrames
    int LastFrame = 0;
    // Poses by bone (below NumBones), then by frame from FirstFrame; zero
    // where the file gives none, as in the compiler's tables.
    std::vector<std::vector<BonePose>> Poses;
    std::vector<SmdFinding> Findings;
};

ReferenceSmd ReadReferenceSmd(std::string_view text, const SmdReadOptions& options);
AnimationSmd ReadAnimationSmd(std::string_view text, const SmdReadOptions& options);

} // namespace quarle::compile
