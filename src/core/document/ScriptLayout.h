// What a load keeps of a script beside the records the forms show: the
// script's text (and that of each include), cut into pieces in the order the
// compiler reads them, and the values each record was read with.
//
// A save walks the pieces. A piece the forms do not show is written as it
// stands; a record the user did not change is written as the script had it,
// byte for byte; a changed record is written anew at its place, with the
// script's own text for each value that still equals the value read from it.
// So a load and a save change nothing the compiler reads, and only what the
// user changed is written otherwise.
#pragma once

#include "document/Document.h"
#include "document/SequenceNumbers.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarle {

// Bytes of one text a load read: the script (source 0) or an include.
struct TextSpan {
    int Source = 0;
    std::size_t Begin = 0;
    std::size_t End = 0;

    bool operator==(const TextSpan&) const = default;
};

enum class PieceKind : std::uint8_t {
    Text,         // what no form shows: comments, blanks, other directives
    IncludeStart, // an $include line (Ref: the include); the file's pieces follow
    IncludeEnd,   // behind the last piece of the include Ref
    ModelName,
    Cd,
    CdTexture,
    Scale,
    Gamma,
    ExternalTextures,
    EyePosition,
    SequenceGroupSize,
    Attachment,    // Ref: the slot
    Controller,    // Ref: the slot
    BodyGroup,     // Ref: the record's id
    RenderMode,    // Ref: index into ScriptLayout::RenderModes
    TextureGroup,  // the first $texturegroup, the one the forms show
    SequenceGroup, // Ref: the group
    Sequence,      // Ref: the record's id
};

struct ScriptPiece {
    PieceKind Kind = PieceKind::Text;
    int Include = -1; // the innermost include it stands in; -1: the script itself
    TextSpan Span;
    int Ref = 0;
};

// A number as the script wrote it, kept where the writer would write the
// value read from it otherwise ("29.97" for an fps of 30, "1.50", "0x10").
struct NumberText {
    std::uint16_t Field = 0;
    std::string Text;
};
using NumberTexts = std::vector<NumberText>;

inline const std::string* FindNumberText(const NumberTexts& texts, int field) {
    for (const NumberText& t : texts) {
        if (t.Field == field) {
            return &t.Text;
        }
    }
    return nullptr;
}

// The fields whose numbers are kept so: first the rows of SequenceNumbers,
// then the others. Events count two fields each from FirstEventField on: the
// event number, then its frame.
namespace fields {
enum : std::uint16_t {
    FirstSequenceNumber,
    FrameStart = FirstSequenceNumber + SequenceNumberCount,
    FrameEnd,
    OriginX,
    OriginY,
    OriginZ,
    BlendMin,
    BlendMax,
    ModelScale,
    Gamma,
    EyeX,
    EyeY,
    EyeZ,
    SequenceGroupSize,
    X,
    Y,
    Z,
    LimitMin,
    LimitMax,
    FirstEventField,
};
inline constexpr int SequenceNumber(std::size_t row) {
    return FirstSequenceNumber + static_cast<int>(row);
}
inline constexpr int EventId(int e) { return FirstEventField + 2 * (e - 1); }
inline constexpr int EventFrame(int e) { return FirstEventField + 2 * (e - 1) + 1; }
} // namespace fields

// A sequence's values as read: its texts stand in the script's text, so a
// large script costs no second copy of its names and event options.
struct SequenceValues {
    struct Event {
        i16 Frame = 1;
        i16 EventId = 0;
        std::string_view Parameter;
    };
    // The rows of SequenceNumbers, as SequenceNumberValue gives them.
    std::array<double, SequenceNumberCount> Numbers{};
    flag Loop = 0;
    flag FrameLimit = 0;
    i16 FrameStart = 0;
    i16 FrameEnd = 10;
    flag OriginOn = 0;
    i16 OriginX = 0;
    i16 OriginY = 0;
    i16 OriginZ = 0;
    flag LX = 0;
    flag LY = 0;
    flag LZ = 0;
    std::string_view SmdFile;
    std::vector<Event> Events; // the first event first
    std::string_view BlendFile;
    flag BlendOn = 0;
    f32 BlendAxis = 0.0f;
    f32 BlendMin = 0.0f;
    f32 BlendMax = 0.0f;
    std::string_view Name;
    std::string ActivityId;
    std::vector<std::string> KeptFiles;
    std::vector<std::string> KeptOptions;

    // Whether the record still holds these values.
    bool Same(const AnimRec& anim) const;
};

// The origin a $origin line sets for the sequences behind it: an offset,
// and a turn in degrees about Z beyond the compiler's own quarter turn.
struct DefaultOrigin {
    std::array<f32, 3> Offset{};
    f32 Degrees = 0.0f;
};

// Where a sequence was read from, and its values then.
struct SequenceSource {
    int Id = 0;
    TextSpan Span;
    // The $origin in force where the script has the sequence.
    DefaultOrigin Origin;
    std::shared_ptr<const std::string> Text; // the text the values stand in
    SequenceValues Values;
    NumberTexts Numbers;
    // The rows of SequenceNumbers the script gave: one whose value is the
    // default (rotate 0, scale 1) stays, as the compiler takes it over
    // $origin and $scale.
    std::array<bool, SequenceNumberCount> Given{};
};

// Where a body group was read from, and its values then.
struct BodyGroupSource {
    int Id = 0;
    TextSpan Span;
    BodyGroupRec Values;
    bool Body = false; // a $body line, not a $bodygroup block
};

// An $include of the script or of another include.
struct IncludeRead {
    int Parent = -1; // the include it stands in; -1: the script
    TextSpan Line;   // "$include" and its name, in the text of the parent
    int LineNumber = 0;
    std::string Name;   // as the line names it
    std::string Disk;   // the file read; empty when none could be
    bool Asked = false; // found only where the user pointed
    int Source = -1;    // its text; -1 when it was not read
};

// The single-valued settings as the load left them.
struct SettingsRead {
    std::string ModelName;
    std::string ModelPath;
    std::string TexturePath;
    // The three as the script wrote them.
    std::string ModelNameText;
    std::string ModelPathText;
    std::string TexturePathText;
    // Further folders of the first $cdtexture line, as written.
    std::vector<std::string> MoreTextureFolders;
    f32 ModelScale = 1.0f;
    f32 Gamma = DefaultGamma;
    flag ExternalTextures = 0;
    flag EyesOn = 0;
    f32 EyeX = 0.0f;
    f32 EyeY = 0.0f;
    f32 EyeZ = 0.0f;
    i16 SequenceGroupSize = 0;
    NumberTexts Numbers;
};

struct AttachmentRead {
    bool Read = false;
    AttachmentRec Values;
    std::string Bone;
    std::string IndexText; // the index as written
    NumberTexts Numbers;
};

struct ControllerRead {
    bool Read = false;
    ControllerRec Values;
    std::string Bone;
    std::string IndexText;
    std::string AxisText; // as written ("xr")
    NumberTexts Numbers;
};

// A $texrendermode line that sets the mode of a texture the forms show.
struct RenderModeRead {
    int Slot = 0;
    u8 Mode = 0;
    std::string Texture; // as the line names it
    std::string Name;    // the slot's texture then
};

// The texture group the forms show: the names of each of its rows as the
// script wrote them (the first row names the columns), the column of the
// table each of the script's columns fills (0: none), and the table then.
struct TextureGroupRead {
    std::string Name;
    std::vector<std::vector<std::string>> Rows;
    std::vector<int> Columns;
    u8 TextureCount = 0;
    std::array<std::array<std::string, limits::LastTexture + 1>, limits::LastTextureRow + 1> Table{};
};

struct ScriptLayout {
    // The texts read: the script, then each include.
    std::vector<std::shared_ptr<const std::string>> Texts;
    std::vector<ScriptPiece> Pieces;
    std::vector<IncludeRead> Includes;
    // The script's folder at the load: relative paths of the script are
    // seen from there.
    std::string Folder;
    // The script began with the writer's own head, which a save writes anew.
    bool OwnHead = false;
    // The line end the script uses, for lines a save adds.
    std::string Eol = "\r\n";
    // The compiler stops in this script (a line cut short, braces that do
    // not close, a quote left open, a directive it does not know, an
    // include it cannot read): what follows that place, and lines a save
    // adds behind it, it would not read as the forms show them.
    bool CompilerStops = false;
    // The quoted tokens that run across a line end, from their opening
    // quote to behind their closing one, in the order read: a line a save
    // adds never goes between their quotes, where the compiler would read
    // it as part of a name.
    std::vector<TextSpan> QuotesAcrossLines;

    SettingsRead Settings;
    // The $origin in force at the end of the script, for sequences a save
    // adds there.
    DefaultOrigin LastOrigin;
    std::array<AttachmentRead, limits::LastAttachment + 1> Attachments{};
    std::array<ControllerRead, limits::LastController + 1> Controllers{};
    std::vector<RenderModeRead> RenderModes;
    std::optional<TextureGroupRead> TextureGroup;

    std::string_view TextOf(const TextSpan& span) const {
        const std::string& text = *Texts[static_cast<std::size_t>(span.Source)];
        return std::string_view(text).substr(span.Begin, span.End - span.Begin);
    }
};

} // namespace quarle
