// Every path rule in one place. Scripts come from Windows ('\' separates
// folders, ':' as second character marks an absolute path); the editor also
// runs where '/' is the separator. Both styles read '\' and '/' as
// separators; each writes its own. HostStyle() is the style of the machine we
// run on.
//
// Windows-made scripts and folders also differ in case from the files on
// disk ("Head.smd" named as "head", ".SMD", ".BMP"). On a case-sensitive file
// system the file tests here fall back to a case-insensitive match (ASCII
// letters) of each missing path component in its folder.
//
// Paths are UTF-8 text. Nothing here throws: file-system errors read as
// "missing".
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarle::paths {

enum class Style { Windows, Posix };

Style HostStyle();

// '\' and '/' in either style.
bool IsSeparator(char c, Style style = HostStyle());
// '\' for Windows, '/' for Posix.
char Separator(Style style = HostStyle());

// Both styles: a ':' as second character ("c:\x", "c:x") and a UNC path
// ("\\server\x"). Posix also: any path that starts with a separator ("/x",
// "\x"); on Windows "\x" hangs off the current drive and is not absolute.
bool IsAbsolute(std::string_view path, Style style = HostStyle());

// The folder of a file: the path up to its last separator, without that
// separator ("c:\a\b.smd" -> "c:\a", "c:\b.smd" -> "c:"); a root keeps its
// separator ("/b.smd" -> "/"). "" when the path has no separator.
std::string FolderOf(std::string_view path, Style style = HostStyle());

// The text behind the last separator; the whole path when there is none.
std::string FileNameOf(std::string_view path, Style style = HostStyle());

// folder + separator + name, with no doubled separator; an empty side gives
// the other side unchanged.
std::string Join(std::string_view folder, std::string_view name, Style style = HostStyle());

// Every separator of the path written as the style's own.
std::string ToStyle(std::string_view path, Style style = HostStyle());

// Case-insensitive comparison of ASCII letters; other bytes compare exactly.
bool EqualsNoCase(std::string_view a, std::string_view b);
// Ordering of file names: case-insensitive, byte order among equals.
bool NameLess(std::string_view a, std::string_view b);

// A path of the document (cp1252 bytes, as scripts hold it) as the file
// system takes it, and back. The file system is given UTF-8 on every system
// (host separators); a name on disk with a character cp1252 cannot hold comes
// back with '?' in its place. Off Windows a name on disk that is not UTF-8
// (made where another code page ruled) comes back as its very bytes, and
// goes to the system so again when no UTF-8 name of that text exists.
std::filesystem::path ToFsPath(std::string_view path);
std::string FromFsPath(const std::filesystem::path& path);

// The path as it exists on disk: the exact spelling, else a case-insensitive
// match of each missing component (the first in byte order when several
// spellings exist); nullopt when nothing matches. The result uses host
// separators.
std::optional<std::string> Resolve(const std::string& path);
// The same, as the file system spells it (for a file about to be opened).
std::optional<std::filesystem::path> ResolveFs(const std::string& path);
bool FileExists(const std::string& path);   // a regular file, case fallback
bool FolderExists(const std::string& path); // a folder, case fallback

// What a listing takes: regular files (and links to them), or every entry
// but folders (pipes, devices, ... included, for a reader to refuse by name).
enum class Entries { Files, NotFolders };

// File names (not paths) in Folder whose name ends with Ext in any case
// (Ext with its dot: ".smd"), longer than Ext, of the entries asked for,
// sorted by NameLess. The folder itself goes through the case fallback.
// nullopt when the folder cannot be listed.
std::optional<std::vector<std::string>>
TryListFiles(const std::string& folder, std::string_view ext, Entries which = Entries::Files);
// TryListFiles with an unreadable folder read as empty.
std::vector<std::string> ListFiles(const std::string& folder, std::string_view ext);

// How deep ListFilesBelow looks, and how many folders it reads at most: a
// model tree keeps its files a level or two down (meshes/, animations/run/),
// and a folder chosen by mistake (a home folder) must not stall the window.
inline constexpr int ModelTreeDepth = 3;
inline constexpr std::size_t ModelTreeFolders = 400;

// The files of ListFiles in folder and in its subfolders down to
// ModelTreeDepth levels, named relative to folder with '/' between the
// pieces ("ref.smd", "meshes/body.smd"), as scripts name them. The files of
// the folder itself come first, then each subfolder's in NameLess order of
// the folder names. Hidden folders (".git") and links to folders are passed
// over; past ModelTreeFolders folders the listing stops.
std::vector<std::string> ListFilesBelow(const std::string& folder, std::string_view ext);

} // namespace quarle::paths
