// The numeric options of a $sequence line that the forms show, one row each:
// the word the compiler reads, the field of the animation record the number
// lands in, the kind of number, where the writer puts it on the line, and the
// two controls of the animation dialog that edit it, with their designed
// (German) and English texts. The reader, the writer and the dialog all walk
// this table, and tools/lng/generate.py takes the English texts from it, so a
// new option is a row here and its field in AnimRec.
#pragma once

#include "document/Document.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace quarle {

enum class SequenceNumberKind : std::uint8_t {
    // An i16 field from 0 to 32767: the script's number rounded to the
    // nearest whole (the compiler keeps fractions); typed as digits and taken
    // only when the whole text is a number that fits.
    Count,
    // An f32 field typed as a signed whole number (a minus, no point); the
    // field reads the number at the start of the text, whatever follows.
    Degrees,
    // An f32 field typed as a signed decimal; taken only when the whole text
    // is a number that fits.
    Factor,
};

// Where the writer puts an option among the ones it writes itself.
enum class SequenceNumberPlace : std::uint8_t {
    BehindFiles,  // behind the animation files, ahead of "loop"
    BehindOrigin, // behind "origin", ahead of the activity
    BehindMotion, // behind LX, LY and LZ, ahead of "blend"
};

// The record field a row lands in: an i16 one for a count, else an f32 one.
struct SequenceNumberField {
    i16 AnimRec::*Whole = nullptr;
    f32 AnimRec::*Real = nullptr;
};
constexpr SequenceNumberField FieldOf(i16 AnimRec::*field) {
    return {field, nullptr};
}
constexpr SequenceNumberField FieldOf(f32 AnimRec::*field) {
    return {nullptr, field};
}

// A control of the dialog: its name, its designed text and the English one.
struct SequenceNumberText {
    std::string_view Name;
    std::string_view German;
    std::string_view English;
};

struct SequenceNumber {
    // Compared whole and in any case, as the compiler compares these words
    // ahead of the ones it tells apart by their first letters.
    std::string_view Keyword;
    SequenceNumberField Field;
    SequenceNumberKind Kind = SequenceNumberKind::Count;
    SequenceNumberPlace Place = SequenceNumberPlace::BehindFiles;
    // Written on every line; otherwise only when it is off the record's
    // default, or the script gave it with the value it still has (the
    // compiler takes a sequence's rotate 0 or scale 1 over $origin and $scale).
    bool Always = false;
    // What an emptied text box shows and stores.
    std::string_view EmptyText;
    SequenceNumberText Label; // its caption
    SequenceNumberText Box;   // its tool tip; the box shows the record's default
};

inline constexpr std::array SequenceNumbers{
    SequenceNumber{
        .Keyword = "fps",
        .Field = FieldOf(&AnimRec::Fps),
        .Kind = SequenceNumberKind::Count,
        .Place = SequenceNumberPlace::BehindFiles,
        .Always = true,
        .EmptyText = "0",
        .Label = {"Label6", "Fps:", "Fps:"},
        .Box = {"Text6",
                "($sequence...fps) - Gibt die Geschwindigkeit an mit der die Animation abgespielt "
                "wird",
                "($sequence ... fps) - Speed at which the animation is played"},
    },
    SequenceNumber{
        .Keyword = "rotate",
        .Field = FieldOf(&AnimRec::Rotate),
        .Kind = SequenceNumberKind::Degrees,
        .Place = SequenceNumberPlace::BehindOrigin,
        .EmptyText = "0",
        .Label = {"Label7", "Rotation:", "Rotation:"},
        .Box = {"TxtAnimRotate", "", ""},
    },
    SequenceNumber{
        .Keyword = "scale",
        .Field = FieldOf(&AnimRec::Scale),
        .Kind = SequenceNumberKind::Factor,
        .Place = SequenceNumberPlace::BehindMotion,
        .EmptyText = "1",
        .Label = {"Label2", "Ma\u00dfstab:", "Scale:"},
        .Box = {"TxtScale", "", ""},
    },
};

inline constexpr std::size_t SequenceNumberCount = SequenceNumbers.size();

// Each row's field is of the type its kind needs.
static_assert([] {
    for (const SequenceNumber& row : SequenceNumbers) {
        const bool whole = row.Kind == SequenceNumberKind::Count;
        if ((row.Field.Whole != nullptr) != whole || (row.Field.Real != nullptr) == whole) {
            return false;
        }
    }
    return true;
}());

// The row whose keyword the token is, in any case; -1 for none.
int SequenceNumberOf(std::string_view token);

// A row's number in the record, as a double (which holds an i16 and an f32
// exactly), and a number that the field's type holds stored into it.
double SequenceNumberValue(const AnimRec& anim, std::size_t row);
void SetSequenceNumber(AnimRec& anim, std::size_t row, double value);
// The value of a fresh record.
double SequenceNumberDefault(std::size_t row);

} // namespace quarle
