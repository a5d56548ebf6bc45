// Every path rule in one place. Scripts come from Windows ('\' separates
// folders, ':' as second character marks an absolute path); the editor also
// runs where '/' is the separator. Style::Posix reads both separators and
// writes '/'. HostStyle() is the style of the machine we run on.
//
// Windows-made scripts and folders also differ in case from the files on
// disk; the file tests here fall back to a case-insensitive match in the same
// folder when the exact spelling is missing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarle::paths {

enum class Style { Windows, Posix };

Style HostStyle();

bool IsSeparator(char c, Style style = HostStyle());
char Separator(Style style = HostStyle());
// "c:\x", "\\server\x" and (Posix) "/x" are absolute.
bool IsAbsolute(std::string_view path, Style style = HostStyle());
// The folder of a file, without a closing separator; "" when there is none.
std::string FolderOf(std::string_view path, Style style = HostStyle());
// The last component of a path.
std::string FileNameOf(std::string_view path, Style style = HostStyle());
// folder + separator + name; no doubled separator.
std::string Join(std::string_view folder, std::string_view name, Style style = HostStyle());
// Every separator of the path written as the style's own.
std::string ToStyle(std::string_view path, Style style = HostStyle());

// The path as it exists on disk: the exact spelling, else a case-insensitive
// match of each missing component; nullopt when nothing matches.
std::optional<std::string> Resolve(const std::string& path);
bool FileExists(const std::string& path);   // a regular file, case fallback
bool FolderExists(const std::string& path); // a folder, case fallback
// File names (not paths) in Folder whose extension equals Ext in any case
// (Ext with its dot: ".smd"), sorted by name.
std::vector<std::string> ListFiles(const std::string& folder, std::string_view ext);

} // namespace quarle::paths
