// The .qc reader: fills the document from the script named by QcFile, token
// by token as the model compiler reads it: directive words in their case,
// option words in any, blocks that end at their closing brace, quoted tokens
// with their bytes, comments skipped where the compiler skips them, and
// includes where an $include token stands. What the forms show goes into
// the records; the script itself, cut into pieces, goes into the document's
// Layout, so that a save writes back what the user did not change as it
// stood.
#pragma once

#include "document/Document.h"
#include "document/LoadFindings.h"
#include "document/ReaderHost.h"

#include <optional>
#include <string>
#include <string_view>

namespace quarle {

// The working file of a load: the script with its includes, flattened. It is
// written afresh for each load and left behind. One spelling on every file
// system.
inline constexpr const char* WorkFileName = "loadbuffer.dat";

enum class ReadOutcome {
    Loaded,     // the script was read; LoadFinished has run
    Refused,    // the user refused a question; NewDocument has run
    Unreadable, // the script or the working file could not be used (reported); NewDocument has run
    NotAScript, // the file is binary or UTF-16 text (reported); NewDocument has run
    Cancelled,  // the host's Progress answered false; the document is half read
};

// What a file looks like when it is no script the compiler could read: one
// that holds NUL bytes, or starts with a UTF-16 byte-order mark.
std::optional<ReadProblem> NotAScript(std::string_view text);

// Reads doc.QcFile into doc. The caller has reset the document, set QcFile
// and emptied LstAnimations (the open command does this). The working file,
// the script with its includes in place, goes to workFolder ("" for the
// process's working directory).
//
// Relative paths that remain in the script after the questions (a host may
// keep them) are taken from the folder of the script when files are looked
// for, and are stored as written.
//
// With findings, a load that went through lists there what the user should
// know of the script (see LoadFindings); a load that did not leaves it
// untouched. With
// noDirective, a load that went through says there whether the script and
// its includes held no directive at all (a binary file, a text that is no
// script).
ReadOutcome ReadQcFile(Document& doc, ReaderHost& host, const std::string& workFolder,
                       LoadFindings* findings = nullptr, bool* noDirective = nullptr);

} // namespace quarle
