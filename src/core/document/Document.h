// The model document: everything a .qc script can say, held in fixed tables.
//
// The forms read and write these records directly. Tables are indexed as the
// script numbers them: body groups, parts, events, texture rows and columns
// and render modes from 1; animations, attachments and controllers from 0.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quarle {

using u8 = std::uint8_t;
using i16 = std::int16_t;
using f32 = float;
using flag = std::uint8_t; // on when it equals 1

// Table sizes: the last valid index of each table, and the ranges that the
// writer and the reset walk.
namespace limits {
inline constexpr int LastBodyGroup = 32;        // BodyGroups(0..32), slots 1..32 in use
inline constexpr int LastPart = 16;             // Parts(0..16), slots 1..16 in use
inline constexpr int LastSequenceGroup = 10;    // Anims(0..10, ...)
inline constexpr int LastAnimSlot = 512;        // Anims(..., 0..512)
inline constexpr int LastWrittenAnimSlot = 100; // writer, reset and list walk 0..100
inline constexpr int LastEventSlot = 1024;      // Events(0..1024)
inline constexpr int MaxEvents = 255;           // EventCount is a u8
inline constexpr int LastAttachment = 3;
inline constexpr int LastController = 3;
inline constexpr int LastTexture = 10;     // TextureVariations columns 1..10
inline constexpr int LastTextureRow = 100; // TextureVariations rows 1..100
inline constexpr int LastWrittenTextureRow = 10;
inline constexpr int LastTextureMode = 100;       // TextureModes(0..100)
inline constexpr int LastWrittenTextureMode = 10; // writer and reset walk slots 1..10
inline constexpr int LastResetBodyGroup = 10;     // the reset walks groups and part slots 0..10
inline constexpr int LastResetEvent = 10;         // the reset walks events 1..10
} // namespace limits

// "<blank>": a part without a mesh, or a texture cell without a replacement.
inline constexpr const char* Blank = "<blank>";

struct SequenceSource;
struct BodyGroupSource;
struct ScriptLayout;

// Where a record was read from (see ScriptLayout), handed on with the record
// when the forms move it. It is no value of the record: records compare
// equal whatever they were read from.
template <typename S> struct ReadFrom {
    std::shared_ptr<const S> Read;
    bool operator==(const ReadFrom&) const { return true; }
};

struct AnimEventRec {
    i16 Frame = 1;
    i16 EventId = 0;
    std::string Parameter;

    bool operator==(const AnimEventRec&) const = default;
};

// Events(0..1024) of one animation. There are 11 x 513 animations, so a
// string per slot would cost hundreds of megabytes. Slots are stored only up
// to the highest one ever written; every slot above reads as a fresh record.
// Indexing and the reset rules are those of a full table.
class EventTable {
public:
    static constexpr int Size = limits::LastEventSlot + 1;

    // Write access: storage grows to hold slot i (0..1024).
    AnimEventRec& operator[](int i) {
        if (i >= static_cast<int>(slots_.size())) {
            Grow(i);
        }
        return slots_[static_cast<std::size_t>(i)];
    }
    // Read access: a slot never written reads as a fresh record.
    const AnimEventRec& operator[](int i) const {
        return i < static_cast<int>(slots_.size()) ? slots_[static_cast<std::size_t>(i)] : Fresh();
    }

    // Puts slots first..last back to the reset value; releases storage when
    // nothing above them holds a value.
    void Reset(int first, int last);

    // Slots held in memory (for measurements and tests).
    int StoredSlots() const { return static_cast<int>(slots_.size()); }

    // Equal when every slot reads the same, however much each one stores.
    bool operator==(const EventTable& other) const;

private:
    void Grow(int i);
    static const AnimEventRec& Fresh();

    std::vector<AnimEventRec> slots_;
};

// One $sequence.
struct AnimRec {
    i16 Fps = 30;
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
    f32 Scale = 1.0f;
    u8 EventCount = 0;
    std::string SmdFile;
    EventTable Events;
    std::string BlendFile;
    flag BlendOn = 0;
    f32 BlendAxis = 0.0f;
    f32 BlendMin = 0.0f;
    f32 BlendMax = 0.0f;
    std::string Name; // empty: the slot is free
    std::string ActivityId;
    f32 Rotate = 0.0f;
    // What the forms do not show, kept as the script wrote it: further .smd
    // files (written right behind the ones above), and options such as
    // motion flags, node and transitions (written behind the known ones).
    // Each token as the script has it, quotes included where it had them.
    std::vector<std::string> KeptFiles{};
    std::vector<std::string> KeptOptions{};
    ReadFrom<SequenceSource> From{};

    bool operator==(const AnimRec&) const = default;
};

// Anims(g, 0..512): the sequences of one group. The forms, the writer and
// the reset use slots 0..100; a slot above is only ever written by a load of
// a group with more sequences, or by a delete that moves records up. Those
// slots are stored once one of them is written to; until then each reads as
// a fresh record, and a new document costs only the memory it uses.
// Indexing, iteration and the reset rules are those of a full table.
class AnimGroup {
public:
    static constexpr std::size_t Size = limits::LastAnimSlot + 1;

    AnimGroup() = default;
    AnimGroup(const AnimGroup& other);
    AnimGroup& operator=(const AnimGroup& other);
    AnimGroup(AnimGroup&&) noexcept = default;
    AnimGroup& operator=(AnimGroup&&) noexcept = default;
    ~AnimGroup() = default;

    // Write access: the slots above 100 are stored from the first access on.
    AnimRec& operator[](std::size_t i) { return i < Front ? front_[i] : Back()[i - Front]; }
    // Read access: a slot above 100 that was never stored reads as a fresh record.
    const AnimRec& operator[](std::size_t i) const {
        return i < Front ? front_[i] : back_ ? (*back_)[i - Front] : Fresh();
    }
    static constexpr std::size_t size() { return Size; }

    // Whether the slots above 100 are held in memory (for measurements and tests).
    bool HoldsUpperSlots() const { return back_ != nullptr; }

    template <typename Group, typename Rec> class Iterator {
    public:
        Iterator(Group* group, std::size_t i) : group_(group), i_(i) {}
        Rec& operator*() const { return (*group_)[i_]; }
        Iterator& operator++() {
            ++i_;
            return *this;
        }
        bool operator==(const Iterator& other) const { return i_ == other.i_; }

    private:
        Group* group_;
        std::size_t i_;
    };
    auto begin() { return Iterator<AnimGroup, AnimRec>(this, 0); }
    auto end() { return Iterator<AnimGroup, AnimRec>(this, Size); }
    auto begin() const { return Iterator<const AnimGroup, const AnimRec>(this, 0); }
    auto end() const { return Iterator<const AnimGroup, const AnimRec>(this, Size); }

private:
    static constexpr std::size_t Front = limits::LastWrittenAnimSlot + 1;
    using BackSlots = std::array<AnimRec, Size - Front>;

    AnimRec* Back();
    static const AnimRec& Fresh();

    std::array<AnimRec, Front> front_{};
    std::unique_ptr<BackSlots> back_;
};

// One $body or $bodygroup.
struct BodyGroupRec {
    std::string Name;
    u8 PartCount = 0;
    std::array<std::string, limits::LastPart + 1> Parts{};
    std::array<i16, limits::LastPart + 1> Reverse{}; // -1 on, tested for non-zero
    // The words behind a part's name other than reverse (such as scale 2),
    // as the script wrote them.
    std::array<std::string, limits::LastPart + 1> PartWords{};
    ReadFrom<BodyGroupSource> From{};

    bool operator==(const BodyGroupRec&) const = default;
};

struct AttachmentRec {
    flag Active = 0;
    f32 X = 0.0f;
    f32 Y = 0.0f;
    f32 Z = 0.0f;

    bool operator==(const AttachmentRec&) const = default;
};

struct ControllerRec {
    flag Active = 0;
    f32 Axis = 0.0f; // 0 XR, 1 YR, 2 ZR
    f32 LimitMin = 0.0f;
    f32 LimitMax = 0.0f;

    bool operator==(const ControllerRec&) const = default;
};

struct TextureModeRec {
    std::string Name;
    u8 Mode = 0; // 0 normal, 1 masked, 2 additive

    bool operator==(const TextureModeRec&) const = default;
};

// The 32-bit float nearest to 1.8: the reset gamma, and the writer's test.
inline constexpr f32 DefaultGamma = 1.8f;

// The document's own fields that a new document resets, with their reset
// values: written here once, taken by a new Document and put back whole by
// InitVars.
struct DocumentResetFields {
    std::string QcFile;
    f32 ModelScale = 1.0f;
    f32 Gamma = DefaultGamma;
    flag ExternalTextures = 0;
    flag EyesOn = 0;
    i16 SequenceGroupSize = 0;
    u8 TextureCount = 0;

    // The script as a load read it, beside the records: what the forms do
    // not show, and where each record stood. Empty for a document that no
    // script was read into.
    std::shared_ptr<const ScriptLayout> Layout;
};

struct Document : DocumentResetFields {
    Document(); // a document in its reset state

    // Not reset by a new document: the model's name and folders, the eye
    // position and the frame count of the last .smd looked at.
    std::string ModelName;
    std::string ModelPath;
    std::string TexturePath;
    f32 EyeX = 0.0f;
    f32 EyeY = 0.0f;
    f32 EyeZ = 0.0f;
    u8 BodyGroupCount = 1;
    std::array<BodyGroupRec, limits::LastBodyGroup + 1> BodyGroups{};
    // Anims[group][slot]
    std::array<AnimGroup, limits::LastSequenceGroup + 1> Anims{};
    std::array<AttachmentRec, limits::LastAttachment + 1> Attachments{};
    std::array<std::string, limits::LastAttachment + 1> AttachmentBones{};
    std::array<ControllerRec, limits::LastController + 1> Controllers{};
    std::array<std::string, limits::LastController + 1> ControllerBones{};
    // TextureVariations[row][column]
    std::array<std::array<std::string, limits::LastTexture + 1>, limits::LastTextureRow + 1>
        TextureVariations{};
    std::array<TextureModeRec, limits::LastTextureMode + 1> TextureModes{};
    i16 SmdFrameCount = 0;
};

// The document part of the new-document reset, in its order. The main
// window's InitVars wraps it with the emptying of LstParts and its Update.
// The document's own fields go back to DocumentResetFields, and each slot it
// walks becomes the default-constructed record, so the reset values above are
// written once. Only the ranges it walks are touched:
// animation slots 101..512, events 11..1024, body groups 11..32, part slots
// 11..16, texture rows above 10 and render modes above 10 keep what they
// held. ModelName, ModelPath, TexturePath, the eye position and
// SmdFrameCount are not reset.
void InitVars(Document& doc);

// Bytes the document holds on the heap and inline, for measurements.
std::size_t DocumentFootprint(const Document& doc);

} // namespace quarle
