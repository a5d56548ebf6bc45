// What the commands that speak as the compile dialog share: its texts, read
// from a language file, its checks, and its rows, printed one a line.
#pragma once

#include "LoadScript.h"
#include "compile/CheckModelData.h"
#include "localisation/MessageTexts.h"

#include <string>

namespace quarle::qc {

// The texts of the global strings and the messages: those of the language
// file named (which must be there), else of english.lng beside this program,
// and the keys themselves where that is gone. False, with a message, when a
// named file cannot be read.
bool LoadTexts(const std::string& language, compile::IdsTextTable& texts, MessageTexts& messages);

// A row as the dialog lists it, behind "error: " or "warning: " by its kind.
void PrintRow(const std::string& text, compile::RowKind kind);

// The checks ahead of a compile on a loaded script, with their rows printed.
// The script stays as it is: a model without animations gets its warning,
// but no idle line. studioMdl: the compiler to look at, or null for none.
compile::CheckResult PrintChecks(const LoadedScript& loaded, const std::string* studioMdl,
                                 const compile::IdsTextTable& texts, const MessageTexts& messages);

} // namespace quarle::qc
