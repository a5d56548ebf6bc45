// What a load tells about a script from elsewhere: every place where the
// script that a save writes will differ from the script that was read in a
// way that changes the model (a directive that is left out, an option read
// as something else, a table that holds less than the script). Cosmetic
// differences (comments, case, the order of options, defaults, the spelling
// of numbers) are not findings: a script written by this system gives none.
//
// The reader fills the list as it reads; the document's records are the
// same with and without it.
#pragma once

#include "localisation/MessageTexts.h"

#include <array>
#include <cstddef>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarle {

// What the forms cannot show is kept and written back (see Document), so the
// kinds marked "kept" are no longer found; they stay for their messages.
enum class FindingKind {
    UnknownDirective,      // (kept) a directive the reader does not know, with the lines under it
    LineNotRead,           // (kept) a line outside every block (a tab in front, stray text)
    LineAfterSequence,     // (kept) a line behind a $sequence, such as an event block
    MotionFlagDropped,     // (kept) X, AX, AY or AZR on a $sequence
    SequenceOptionMisread, // (kept) an unknown option taken for a blend file or an activity
    BlendWithoutFile,      // (kept) blend without a second file: neither is written
    BodyWordsLost,         // (kept) words behind the two names of a $body, such as reverse
    BodyGroupReverseLost,  // (kept) a $bodygroup of one reversed part becomes a $body
    PathReplaced,          // a $cd that a later one replaces
    SequenceNotWritten,    // (kept) a sequence beyond the 101 of a group that a save writes
    FractionRounded,       // a fraction in a whole-number field, as in fps 29.97
    TextureNotInParts,     // a texture of a $texturegroup row the parts lack
    RenderModeChanged,     // (kept) a render mode other than masked or additive
    TextureRowDropped,     // a $texturegroup row that changes nothing
    PartReadAsBlank,       // a part line without studio "..." (studio arm, without quotes)
    AxisNotKept,           // (kept) a controller or blend axis other than XR, YR, ZR
    IncludeMerged,         // an include that gave records: its lines replace its $include line
    OptionCutShort,        // a sequence option without all its values, before a brace or its end
};
inline constexpr int FindingKinds = static_cast<int>(FindingKind::OptionCutShort) + 1;

struct LoadFinding {
    FindingKind Kind = FindingKind::UnknownDirective;
    std::string File; // the script, or the include the line came from
    int Line = 0;     // from 1, in File
    std::string Text; // the line as it stands there

    bool operator==(const LoadFinding&) const = default;
};
using LoadFindings = std::vector<LoadFinding>;

// Where each line of the working file came from: files by their path as the
// script (or the include line) names them, lines by number in that file.
struct LineOrigin {
    std::size_t File = 0; // index into SourceMap::Files
    int Line = 0;
};
// An include of the script itself (one of the outermost), with everything
// it includes in turn: lines First to End (not included) of the working file.
struct IncludeSpan {
    std::size_t First = 0;
    std::size_t End = 0;
    std::string_view Line; // the $include line as the script has it
    int LineNumber = 0;    // of that line in the script
    std::string Path;      // as the line names it
    bool Asked = false;    // the file was not where the line says
};
struct SourceMap {
    std::vector<std::string> Files;
    std::vector<IncludeSpan> Includes; // in the order of the script
    std::vector<LineOrigin> Lines; // one per line of the working file
    // The lines of the working file themselves, as views into Texts, the
    // text of each file read (held as long as the map).
    std::vector<std::string_view> LineTexts;
    std::list<std::string> Texts;
};

// The message of a kind: the messages follow the kinds.
inline Msg FindingMessage(FindingKind kind) {
    static_assert(MSG_FINDING_OPTION_CUT_SHORT - MSG_FINDING_UNKNOWN_DIRECTIVE + 1 == FindingKinds,
                  "one message for each kind of finding, in the same order");
    return static_cast<Msg>(MSG_FINDING_UNKNOWN_DIRECTIVE + static_cast<int>(kind));
}

// "model.qc, line 12: $cliptotextures": where a finding stands, the file by
// its name only. The line's bytes are passed through as they are.
std::string FindingPlace(const LoadFinding& finding, const MessageTexts& texts);

// One line for standard error: "warning: ", the place, the kind.
std::string FindingWarning(const LoadFinding& finding,
                           const MessageTexts& texts = EnglishMessageTexts());

// How many findings there are of each kind, in the order of the kinds.
std::array<std::size_t, FindingKinds> CountFindings(const LoadFindings& findings);

// The places a message quotes; the rest is counted.
inline constexpr std::size_t QuotedFindings = 5;

// The original script, kept on the first save over it: the first of
// NAME.orig, NAME.orig2, NAME.orig3, ... that does not exist.
std::string KeptOriginalName(const std::string& script);

// Copies the script to KeptOriginalName, through a temporary file
// (SafeWrite.h). Never replaces a file. Gives the name of the copy, or
// nothing with error set (UTF-8, in the given texts).
std::optional<std::string> KeepOriginal(const std::string& script, std::string& error,
                                        const MessageTexts& texts = EnglishMessageTexts());

} // namespace quarle
