// The whole of an .smd file: its bones, every frame of its skeleton and its
// triangles with texture, position, normal, UV and bone of each corner. The
// checks ahead of a compile read parts and animations with it; a preview can
// draw from it.
//
// Reading rules:
// - A line ends at LF, CR LF or a lone CR. Blank lines and lines that start
//   with "//" are skipped. Words are cut at blanks and tabs; a bone name in
//   double quotes may hold blanks.
// - Blocks are "nodes", "skeleton" and "triangles", each up to its "end";
//   a block keyword that is not known is skipped to its "end".
// - A line that cannot be read as what its block holds is dropped and noted
//   in Problems with its line number; the rest of the file is still read. A
//   file can never make the reader fail: what it lacks is simply missing
//   from the result.
#pragma once

#include "document/InputFile.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace quarle {

struct SmdNode {
    int Index = 0;
    std::string Name;
    int Parent = -1; // negative for a root
};

// A bone's place in one frame, relative to its parent: position and the
// rotation about X, Y and Z in radians, as the file gives them.
struct SmdBonePose {
    int Bone = 0;
    std::array<float, 3> Position{};
    std::array<float, 3> Rotation{};
};

struct SmdFrame {
    int Time = 0;
    std::vector<SmdBonePose> Bones; // in the order of the file
};

struct SmdVertex {
    int Bone = 0;
    std::array<float, 3> Position{};
    std::array<float, 3> Normal{};
    std::array<float, 2> Uv{};
};

struct SmdTriangle {
    std::string Texture; // the line above the corners, as it stands
    std::array<SmdVertex, 3> Vertices{};
};

enum class SmdProblemKind {
    Unreadable,       // the file cannot be opened
    NotVersion1,      // the first line is not "version 1"
    BadLine,          // a line its block cannot read; dropped
    TriangleCutShort, // a triangle with fewer than three corners; dropped
    BlockNotClosed,   // the file ends inside a block
};

struct SmdProblem {
    SmdProblemKind Kind = SmdProblemKind::BadLine;
    int Line = 0; // 1-based; 0 for the whole file
};

struct SmdModel {
    bool Readable = false;
    bool Version1 = false; // the first line reads "version 1"
    std::vector<SmdNode> Nodes;
    std::vector<SmdFrame> Frames;
    std::vector<SmdTriangle> Triangles;
    std::vector<SmdProblem> Problems;
    OpenProblem Unread; // why the file was not read, with an Unreadable problem

    // The name of a bone by its index in Nodes; empty when there is none.
    std::string_view BoneName(int index) const;
};

// Reads the text of an .smd file.
SmdModel ReadSmdText(std::string_view text);

// Reads the file at path (document bytes; the case fallback of
// paths::Resolve applies). A file that cannot be opened gives Readable false
// and one Unreadable problem.
SmdModel ReadSmdFile(const std::string& path);

} // namespace quarle
