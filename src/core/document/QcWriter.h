// The .qc writer: the document as a script in the compiler's dialect, CR LF,
// byte for byte as the format says. The whole file is rewritten from the
// document; nothing of an old file is kept.
#pragma once

#include <ostream>
#include <string>

#include "document/Document.h"

namespace quarle {

// Writes the script of doc. Numbers in locale form use decimalSeparator.
void WriteQcScript(const Document& doc, std::ostream& out, char decimalSeparator);

struct WriteResult {
    bool Ok = true;
    std::string Error; // what went wrong, for a message box
};

// Writes the script to path through a temporary file in the same folder,
// renamed over the target at the end: a failed write leaves an old script
// whole. (The recent-file list is the caller's.)
WriteResult WriteQcFile(const Document& doc, const std::string& path, char decimalSeparator);

} // namespace quarle
