// The .qc writer: the document as a script in the compiler's dialect. A
// document that no script was read into is written in the writer's own
// layout, CR LF, byte for byte as the format says. A document read from a
// script is written as that script, piece by piece (see ScriptLayout): what
// the user did not change stands as it stood.
//
// Beyond the format's own rules:
// - the third head line, the maker's notice, is MakersNotice;
// - an Axis or BlendAxis that is neither 1 nor 2 is written XR;
// - a count that runs past its table (BodyGroupCount above 32, a PartCount
//   above 16, TextureCount above 10) writes the table's slots and no more;
// - a name the compiler would not read back bare (empty, with a blank or a
//   byte from 128 up) is written in quotes, and a body group of one blank
//   part as a block, which the compiler reads as such;
// - texture names of a texture group lose what ends them that is no
//   visible character, as the compiler compares them.
#pragma once

#include "document/Document.h"

#include <ostream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace quarle {

// Line 3 of every script.
inline constexpr std::string_view MakersNotice =
    "// Written by Quarle 0.8.4; lines it does not show are kept as they stand";

// Writes the script of doc. Numbers in locale form use decimalSeparator.
// includesWrittenIn, when given, receives the $include line of each include
// that a change of the user puts into the script.
void WriteQcScript(const Document& doc, std::ostream& out, char decimalSeparator,
                   std::vector<std::string>* includesWrittenIn = nullptr);

// Why a write failed, for the message of the form.
enum class WriteFailure {
    None,
    NoName,
    BrokenLink,
    NoFolder,
    NotAFile,
    WriteProtected,
    NoTemporary,
    FolderUnwritable,
    Incomplete,
    NotReplaced,
};

struct WriteResult {
    bool Ok = true;
    std::string Error; // what went wrong, in English (the command line's)
    WriteFailure Reason = WriteFailure::None;
    std::string Where;           // the file or folder that failed, document text
    std::string SystemReason;    // the system's own words, when it gave some
    std::error_code System;      // and its reason, for a text of the user's language
    bool OldFileExisted = false; // a file of the script's name was there (and is unchanged)
    // The includes a change of the user put into the script (their $include
    // lines): the files themselves are left as they were.
    std::vector<std::string> IncludesWrittenIn;
};

// Writes the script to path through a temporary file in the same folder,
// renamed over the target at the end (SafeWrite.h): a failed or killed write
// leaves an old script whole, and no temporary file stays behind. A write-protected target is
// refused, not replaced; a replaced target keeps its permissions. (The recent-file list is the
// caller's.)
WriteResult WriteQcFile(const Document& doc, const std::string& path, char decimalSeparator);

} // namespace quarle
