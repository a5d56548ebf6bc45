// The three cheap line scans of .smd files: reference test, last frame,
// texture names. Files with CR LF or LF line ends read the same; a CR never
// becomes part of a value or a line. Paths go through the case fallback of
// paths::Resolve. A file that cannot be opened reads as an empty file.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "document/Document.h"

namespace quarle {

// The text behind Word on the first value that starts with Word, at value
// number Line or later, outside /* */ blocks; "gg-1gg" when none. Line
// (1-based, in/out) becomes the number of the matching value.
std::string FindFileValue(const std::string& path, std::string_view word, int& line);

// True when the file is a reference mesh: it has a value starting "triangles".
bool IsReferenceSmd(const std::string& path);

// Sets frameCount to the number of the last "time" value; leaves it alone
// when the file has none.
void ScanSmdFrames(const std::string& path, i16& frameCount);

// Adds every line of the file that contains ".BMP" (any case) and matches
// none of names[1..count] (case-insensitive) as names[++count], in the order
// first seen. names[0] is unused; names.size() - 1 is the table's capacity.
// Returns false when a new name did not fit (it is dropped, count stays at
// capacity).
bool CollectBmpLines(const std::string& path, std::span<std::string> names, int& count);

} // namespace quarle
