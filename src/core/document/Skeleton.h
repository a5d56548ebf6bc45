// The bone tree of the model's first reference mesh, as the attachment and
// the controller dialog show it: the tables, the reading of the .smd file as
// far as its skeleton goes, and where each bone stands.
//
// The two dialogs read the same file with different numbers: their column
// mappings, angle units, rotations, start values and margins of the range
// differ (SkeletonVariant). The same model shows a bone at other coordinates
// in the two dialogs.
//
// Robustness, beyond what a well-formed file needs:
// - lines end at LF, CR LF or a lone CR and are read whole, however long;
// - a bone index outside 0..128 on a node or skeleton line drops that line;
// - a parent index outside 0..128 counts as no parent (a root);
// - the attachment walk of ancestors ends at the first ancestor it has
//   already met (the bone itself counts as met), so a loop cannot hang it;
// - a range that is not above 0 after the margins (all bones at one place,
//   or no bone) is widened to one unit either side of its middle (-1..1
//   without bones), so the views always have a scale.
#pragma once

#include "document/Document.h"
#include "document/InputFile.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace quarle {

inline constexpr int LastBone = 128; // Bones(0..128)

struct BoneRec {
    i16 Parent = 0; // negative for a root
    f32 X = 0.0f;
    f32 Y = 0.0f;
    f32 Z = 0.0f;
    f32 RotA = 0.0f;
    f32 RotB = 0.0f;
    f32 RotC = 0.0f;
};

// Which dialog the rules are those of.
enum class SkeletonVariant {
    Attachment, // DlgBindung: radians, the whole ancestor chain
    Controller, // DlgController: degrees, the parent's rotation only
};

// Shared by both dialogs; they belong to the one opened last. Opening clears
// the names, never the bones: a field the file does not set keeps its value.
struct SkeletonTables {
    std::array<BoneRec, LastBone + 1> Bones{};
    std::array<std::string, LastBone + 1> BoneNames{}; // empty: a free slot
    f32 SkeletonMin = 0.0f;
    f32 SkeletonMax = 0.0f;
};

enum class SkeletonSource {
    Read,       // the reference file was read
    NoPart,     // every part of every body group is "<blank>" or empty
    Unreadable, // the reference file is missing or cannot be opened
};

struct SkeletonLoad {
    SkeletonSource Source = SkeletonSource::NoPart;
    std::string Path;               // the file looked for ("" for NoPart)
    OpenProblem Unread;             // why it was not read (Unreadable)
    std::vector<int> ListedBones;   // the named bones in index order: TxtBone's entries
};

// The reference mesh of the skeleton: in body-group order the first part
// that is neither "<blank>" nor empty, as ModelPath\<part>.smd; nullopt when
// there is none. The path is not tested.
std::optional<std::string> SkeletonFile(const Document& doc);

// The start values of the range for the variant, and the emptying of the
// names: the first two steps of a load, on their own for the controller
// dialog, which runs them earlier than the rest.
void StartSkeleton(SkeletonTables& tables, SkeletonVariant variant);

// Reads the skeleton lines of the text into the tables (names, parents,
// positions and rotations as read; nothing computed).
void ReadSkeletonText(SkeletonTables& tables, std::string_view text, SkeletonVariant variant);

// Positions in the model and the range with its margins, for the named bones
// in index order; returns their indices.
std::vector<int> PlaceBones(SkeletonTables& tables, SkeletonVariant variant);

// The whole load: StartSkeleton, the file found through the case fallback
// of the path rules and read, PlaceBones. Never fails: what cannot be read
// leaves the tables as they were after the start.
SkeletonLoad LoadSkeleton(SkeletonTables& tables, const Document& doc, SkeletonVariant variant);

// The same without StartSkeleton, for a caller that ran it already.
SkeletonLoad ContinueSkeleton(SkeletonTables& tables, const Document& doc,
                              SkeletonVariant variant);

// The views' mapping: twips per model unit when the range spans widthTwips,
// and a model value's screen place in twips, kept finite and within reach of
// a painter. A range not above 0 gives the scale 0.
double SkeletonScale(const SkeletonTables& tables, int widthTwips);
double SkeletonScreen(const SkeletonTables& tables, double scale, double value);

// True when the bone has a parent that the tables can hold.
bool HasParent(const BoneRec& bone);

} // namespace quarle
