// The .qc reader: fills the document from the script named by QcFile. It
// reads back everything the writer emits and copes, line by line, with
// scripts written by hand; what a load followed by a save keeps and loses is
// part of the dialect.
#pragma once

#include "document/Document.h"
#include "document/LoadFindings.h"
#include "document/ReaderHost.h"

#include <string>

namespace quarle {

// The working file of a load: the script with its includes, flattened. It is
// written afresh for each load and left behind. One spelling on every file
// system.
inline constexpr const char* WorkFileName = "loadbuffer.dat";

enum class ReadOutcome {
    Loaded,     // the script was read; LoadFinished has run
    Refused,    // the user refused a question; NewDocument has run
    Unreadable, // the script or the working file could not be used (reported); NewDocument has run
    Cancelled,  // the host's Progress answered false; the document is half read
};

// Reads doc.QcFile into doc. The caller has reset the document, set QcFile
// and emptied LstAnimations (the open command does this). The working file
// goes to workFolder ("" for the process's working directory).
//
// Relative paths that remain in the script after the questions (a host may
// keep them) are taken from the folder of the script when files are looked
// for, and are stored as written.
//
// With findings, a load that went through lists there every place where a
// save will change the model; a load that did not leaves it untouched. With
// noDirective, a load that went through says there whether the script and
// its includes held no directive at all (a binary file, a text that is no
// script).
ReadOutcome ReadQcFile(Document& doc, ReaderHost& host, const std::string& workFolder,
                       LoadFindings* findings = nullptr, bool* noDirective = nullptr);

} // namespace quarle
