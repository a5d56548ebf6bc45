// The cheap line scans of .smd files: reference test, last frame, texture
// names. None of them parses geometry.
//
// Reading rules shared by all of them:
// - A line ends at LF, CR LF or a lone CR; a CR never becomes part of a
//   value or a line. The last line of a file needs no line end.
// - Value scans (FindFileValue, ScanSmdFrames) cut a line into values at its
//   commas. Blanks and tabs at the start of a value are skipped. A value that
//   begins with a double quote runs to the closing quote on the same line,
//   which is not part of it (a quote left open runs to the line end); text
//   between the closing quote and the next comma is dropped. An empty line is
//   one empty value, so in a file without commas value N is line N.
// - Line scans (CollectBmpLines) take whole lines as they stand.
// - Lines are held up to at least 128 KiB; the rest of a longer line is
//   skipped. Binary junk reads as text.
// - Files are opened as InputFile opens them: through the case fallback of
//   paths::Resolve, regular files only, within the size limit of .smd files.
//   A file that is refused or cannot be opened reads as an empty file.
//
// Files are read in large blocks; only lines that can matter to a scan (those
// holding a byte that can start its word) are cut into values.
#pragma once

#include "document/Document.h"
#include "document/InputFile.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quarle {

// The text behind Word on the first value that starts with Word (exact
// case), at value number Line or later, outside /* */ blocks; "gg-1gg" when
// none. One double quote is cut from the start and one from the end of that
// text. A value holding "/*" turns the block mark on, then one holding "*/"
// turns it off. Line (1-based, in/out) becomes the number of the matching
// value and stays as it was when there is none.
std::string FindFileValue(const std::string& path, std::string_view word, int& line);

// True when the file is a reference mesh: FindFileValue(path, "triangles",
// 1) finds a value. Stops reading at the first hit.
bool IsReferenceSmd(const std::string& path);

// Sets frameCount to the number of the last "time" value (first four
// characters "TIME" in any case; comments are not honoured), read from the
// value's sixth character on. Leaves frameCount alone when the file has none.
// The number is read as a decimal with an optional sign, rounded to the
// nearest whole number (halves to even) and clamped to -32768..32767; a time
// value with no digit there does not count, so an earlier one stands.
void ScanSmdFrames(const std::string& path, i16& frameCount);

// Adds every line of the file that contains ".BMP" (any case) and matches
// none of names[1..count] (case-insensitive, ASCII letters) as names[++count],
// unchanged, in the order first seen. names[0] is unused; names.size() - 1 is
// the table's capacity. Returns false when a new name did not fit: it is
// dropped, count stays at capacity and reading stops.
bool CollectBmpLines(const std::string& path, std::span<std::string> names, int& count);

// The facts of the three scans above in one read of the file.
struct SmdFacts {
    bool Readable = false;  // the file could be opened
    OpenProblem Unread;     // why not, when it could not
    bool Reference = false; // as IsReferenceSmd
    bool HasTime = false;   // a time value with a number was seen
    i16 LastFrame = 0;      // what ScanSmdFrames would set, when HasTime
    // Every distinct .BMP line, as CollectBmpLines collects them into an
    // empty table, without a limit on their number.
    std::vector<std::string> Textures;
};
SmdFacts ScanSmdFile(const std::string& path);

} // namespace quarle
