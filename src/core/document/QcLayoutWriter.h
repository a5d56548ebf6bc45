// The save of a document that a script was read into: the script's own
// pieces in their order, each record the user did not change as the script
// had it, a changed one written anew at its place, a new one where its kind
// stands (behind the record before it in the forms' order, or where the
// writer puts its kind), and an include whose records are all unchanged as
// its own $include line. An include the user changed something in is written
// into the script; the save names it.
#pragma once

#include "document/Document.h"
#include "document/ScriptLayout.h"

#include <ostream>
#include <string>
#include <vector>

namespace quarle {

// The writer's head: the model's name, the version, the maker's notice and
// an empty line, each ended by eol.
void WriteHead(const Document& doc, std::ostream& out, std::string_view eol);

// writtenIn, when given, receives the $include line of each include written
// into the script.
void WriteLayoutScript(const Document& doc, const ScriptLayout& layout, std::ostream& out,
                       char decimalSeparator, std::vector<std::string>* writtenIn);

} // namespace quarle
