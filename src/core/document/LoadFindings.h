// What a load tells about a script: the places where a save will change what
// the compiler reads (where the user pointed Quarle to a file the script
// names elsewhere), and what the forms keep as the script wrote it although
// the user may want to know (an include that cannot be read, textures
// beyond the ten the dialogs show). A script that the forms show whole gives
// none: a save writes it as it was, but for what the user changes.
//
// The reader fills the list as it reads; the document's records are the
// same with and without it.
#pragma once

#include "document/InputFile.h"
#include "localisation/MessageTexts.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarle {

enum class FindingKind {
    PathAnswered,        // a folder or file was not where the script says: the save names the one the user chose
    IncludeMissing,      // an include that cannot be read: its line stays as it stands
    IncludeTooDeep,      // an include nested too deeply, or one of itself: its line stays
    IncludeNotAScript,   // an included file that is binary or UTF-16: its line stays
    MoreThanTenTextures, // the texture dialogs show the first ten; the others stay as written
    CompilerRefuses,     // the first line the compiler refuses: it stays as it stands
    QuoteAcrossLines,    // the first quote that closes on a later line: the lines between are one name
};
inline constexpr int FindingKinds = static_cast<int>(FindingKind::QuoteAcrossLines) + 1;

// Whether a save changes the model at such a place; the others stay as the
// script has them.
inline bool ChangesModel(FindingKind kind) {
    return kind == FindingKind::PathAnswered;
}

struct LoadFinding {
    FindingKind Kind = FindingKind::IncludeMissing;
    std::string File; // the script, or the include the line came from
    int Line = 0;     // from 1, in File; 0 where it is about no line
    std::string Text; // the line as it stands there
    // An include that is there but is not read (a folder, a pipe, a device,
    // a file above the size of scripts): why, naming the file.
    OpenProblem Unread;

    bool operator==(const LoadFinding&) const = default;
};
using LoadFindings = std::vector<LoadFinding>;

// The message of a kind: the messages follow the kinds.
inline Msg FindingMessage(FindingKind kind) {
    static_assert(MSG_FINDING_QUOTE_ACROSS_LINES - MSG_FINDING_PATH_ANSWERED + 1 == FindingKinds,
                  "one message for each kind of finding, in the same order");
    return static_cast<Msg>(MSG_FINDING_PATH_ANSWERED + static_cast<int>(kind));
}

// "model.qc, line 12: $include \"gone.qci\"": where a finding stands, the
// file by its name only ("model.qc: ..." for one about no line). The line's
// bytes are passed through as they are.
std::string FindingPlace(const LoadFinding& finding, const MessageTexts& texts);

// One line for standard error: "warning: ", the place, the kind, and why an
// include was not read where the system said.
std::string FindingWarning(const LoadFinding& finding,
                           const MessageTexts& texts = EnglishMessageTexts());

// How many findings there are of each kind, in the order of the kinds.
std::array<std::size_t, FindingKinds> CountFindings(const LoadFindings& findings);

// The head of the report of a load: in how many places a save changes what
// the compiler reads, or that it changes nothing there.
std::string FindingsHead(const LoadFindings& findings,
                         const MessageTexts& texts = EnglishMessageTexts());

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
