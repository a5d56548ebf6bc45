#include "document/Paths.h"

#include "localisation/Cp1252.h"

#include <algorithm>
#include <system_error>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace quarle::paths {

namespace fs = std::filesystem;

namespace {

unsigned char FoldAscii(char c) {
    const auto u = static_cast<unsigned char>(c);
    return (u >= 'A' && u <= 'Z') ? static_cast<unsigned char>(u + ('a' - 'A')) : u;
}

// Whether the bytes are UTF-8 throughout (ASCII is).
[[maybe_unused]] bool IsUtf8(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size()) {
        const auto b = static_cast<unsigned char>(text[i]);
        const std::size_t length = b < 0x80             ? 1
                                   : (b & 0xE0) == 0xC0 ? 2
                                   : (b & 0xF0) == 0xE0 ? 3
                                   : (b & 0xF8) == 0xF0 ? 4
                                                        : 0;
        if (length == 0 || i + length > text.size()) {
            return false;
        }
        char32_t cp = length == 1 ? b : b & (0x7F >> length);
        for (std::size_t k = 1; k < length; ++k) {
            const auto c = static_cast<unsigned char>(text[i + k]);
            if ((c & 0xC0) != 0x80) {
                return false;
            }
            cp = (cp << 6) | (c & 0x3F);
        }
        if ((length == 2 && cp < 0x80) || (length == 3 && cp < 0x800) ||
            (length == 4 && (cp < 0x10000 || cp > 0x10FFFF)) || (cp >= 0xD800 && cp <= 0xDFFF)) {
            return false;
        }
        i += length;
    }
    return true;
}

enum class Kind { Any, File, Folder };

bool IsKind(const fs::path& p, Kind kind) {
    std::error_code ec;
    const fs::file_status st = fs::status(p, ec);
    if (ec) {
        return false;
    }
    switch (kind) {
    case Kind::File:
        return fs::is_regular_file(st);
    case Kind::Folder:
        return fs::is_directory(st);
    case Kind::Any:
        break;
    }
    return fs::exists(st);
}

// The entry of Dir whose name equals Name but for case and which is of the
// wanted kind; the first in byte order when there are several.
std::optional<fs::path> FindNoCase(const fs::path& dir, const std::string& name, Kind kind) {
    std::error_code ec;
    fs::directory_iterator it(dir.empty() ? fs::path(".") : dir, ec);
    std::optional<std::string> best;
    fs::path bestName; // as the system spells it
    for (; !ec && it != fs::directory_iterator(); it.increment(ec)) {
        std::string candidate = FromFsPath(it->path().filename());
        if (!EqualsNoCase(candidate, name) || (best && !(candidate < *best))) {
            continue;
        }
        if (IsKind(dir / it->path().filename(), kind)) {
            best = std::move(candidate);
            bestName = it->path().filename();
        }
    }
    if (!best) {
        return std::nullopt;
    }
    return dir / bestName;
}

std::optional<fs::path> ResolveAs(std::string_view path, Kind kind) {
    if (path.empty()) {
        return std::nullopt;
    }
    const fs::path full = ToFsPath(path);
    if (IsKind(full, kind)) {
        return full;
    }
    std::vector<fs::path> parts;
    for (const fs::path& part : full.relative_path()) {
        if (!part.empty()) {
            parts.push_back(part);
        }
    }
    fs::path current = full.root_path();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const Kind want = i + 1 == parts.size() ? kind : Kind::Folder;
        fs::path exact = current / parts[i];
        if (IsKind(exact, want)) {
            current = std::move(exact);
            continue;
        }
        if (parts[i] == "." || parts[i] == "..") {
            return std::nullopt;
        }
        std::optional<fs::path> match = FindNoCase(current, FromFsPath(parts[i]), want);
        if (!match) {
            return std::nullopt;
        }
        current = std::move(*match);
    }
    if (parts.empty() && !IsKind(current, kind)) {
        return std::nullopt;
    }
    return current;
}

} // namespace

Style HostStyle() {
#ifdef _WIN32
    return Style::Windows;
#else
    return Style::Posix;
#endif
}

bool IsSeparator(char c, Style) {
    return c == '\\' || c == '/';
}

char Separator(Style style) {
    return style == Style::Windows ? '\\' : '/';
}

bool IsAbsolute(std::string_view path, Style style) {
    if (path.size() >= 2 && path[1] == ':') {
        return true;
    }
    if (path.size() >= 2 && IsSeparator(path[0], style) && IsSeparator(path[1], style)) {
        return true;
    }
    return style == Style::Posix && !path.empty() && IsSeparator(path[0], style);
}

std::string FolderOf(std::string_view path, Style style) {
    std::size_t end = path.size();
    while (end > 0 && !IsSeparator(path[end - 1], style)) {
        --end;
    }
    if (end == 0) {
        return {};
    }
    std::size_t folderEnd = end - 1;
    while (folderEnd > 0 && IsSeparator(path[folderEnd - 1], style)) {
        --folderEnd;
    }
    if (folderEnd == 0) {
        return std::string(path.substr(0, 1)); // the root
    }
    return std::string(path.substr(0, folderEnd));
}

std::string FileNameOf(std::string_view path, Style style) {
    std::size_t start = path.size();
    while (start > 0 && !IsSeparator(path[start - 1], style)) {
        --start;
    }
    return std::string(path.substr(start));
}

std::string Join(std::string_view folder, std::string_view name, Style style) {
    if (folder.empty()) {
        return std::string(name);
    }
    if (name.empty()) {
        return std::string(folder);
    }
    std::string result(folder);
    const bool folderEnds = IsSeparator(folder.back(), style);
    const bool nameStarts = IsSeparator(name.front(), style);
    if (folderEnds && nameStarts) {
        name.remove_prefix(1);
    } else if (!folderEnds && !nameStarts) {
        result += Separator(style);
    }
    result += name;
    return result;
}

std::string ToStyle(std::string_view path, Style style) {
    std::string result(path);
    const char sep = Separator(style);
    for (char& c : result) {
        if (IsSeparator(c, style)) {
            c = sep;
        }
    }
    return result;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (FoldAscii(a[i]) != FoldAscii(b[i])) {
            return false;
        }
    }
    return true;
}

bool NameLess(std::string_view a, std::string_view b) {
    const std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
        const unsigned char x = FoldAscii(a[i]);
        const unsigned char y = FoldAscii(b[i]);
        if (x != y) {
            return x < y;
        }
    }
    if (a.size() != b.size()) {
        return a.size() < b.size();
    }
    return a < b;
}

#ifdef _WIN32
fs::path ToFsPath(std::string_view path) {
    const std::string utf8 = Cp1252ToUtf8(path);
    return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string FromFsPath(const fs::path& path) {
    const std::u8string text = path.u8string();
    return Utf8ToCp1252(std::string_view(reinterpret_cast<const char*>(text.data()), text.size()));
}
#else
namespace {

// The path with each name between '/' replaced by what fn makes of it;
// fn(before, name) also sees the path made so far.
template <typename Fn> std::string EachName(std::string_view path, Fn fn) {
    std::string made;
    made.reserve(path.size());
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        made += fn(made, path.substr(start, end - start));
        if (end < path.size()) {
            made += '/';
        }
        start = end + 1;
    }
    return made;
}

} // namespace

fs::path ToFsPath(std::string_view path) {
    const std::string posix = ToStyle(path, Style::Posix);
    if (std::all_of(posix.begin(), posix.end(),
                    [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
        return fs::path(posix);
    }
    // Name by name: one that is not UTF-8 may be the very bytes of a name
    // on disk (FromFsPath gives those as they are).
    return fs::path(EachName(posix, [](const std::string& before, std::string_view name) {
        std::string utf8 = Cp1252ToUtf8(name);
        if (utf8 == name || IsUtf8(name)) {
            return utf8;
        }
        struct stat st {};
        const bool onlyBytes = ::lstat((before + utf8).c_str(), &st) != 0 &&
                               ::lstat((before + std::string(name)).c_str(), &st) == 0;
        return onlyBytes ? std::string(name) : utf8;
    }));
}

std::string FromFsPath(const fs::path& path) {
    // Name by name: a name that is not UTF-8 (made on a system with another
    // code page) is taken as the bytes it is, which cp1252 reads as the
    // Western letters they most likely were.
    return EachName(path.native(), [](const std::string&, std::string_view name) {
        return IsUtf8(name) ? Utf8ToCp1252(name) : std::string(name);
    });
}
#endif

std::optional<fs::path> ResolveFs(const std::string& path) {
    return ResolveAs(path, Kind::Any);
}

std::optional<std::string> Resolve(const std::string& path) {
    std::optional<fs::path> found = ResolveAs(path, Kind::Any);
    if (!found) {
        return std::nullopt;
    }
    return FromFsPath(*found);
}

bool FileExists(const std::string& path) {
    return ResolveAs(path, Kind::File).has_value();
}

bool FolderExists(const std::string& path) {
    return ResolveAs(path, Kind::Folder).has_value();
}

std::optional<std::vector<std::string>> TryListFiles(const std::string& folder,
                                                     std::string_view ext, Entries which) {
    const std::optional<fs::path> dir = ResolveAs(folder, Kind::Folder);
    if (!dir) {
        return std::nullopt;
    }
    std::error_code ec;
    fs::directory_iterator it(*dir, ec);
    if (ec) {
        return std::nullopt;
    }
    std::vector<std::string> names;
    for (; !ec && it != fs::directory_iterator(); it.increment(ec)) {
        std::string name = FromFsPath(it->path().filename());
        if (name.size() <= ext.size() ||
            !EqualsNoCase(std::string_view(name).substr(name.size() - ext.size()), ext)) {
            continue;
        }
        std::error_code typeError;
        if (which == Entries::NotFolders ? !it->is_directory(typeError)
                                         : it->is_regular_file(typeError)) {
            names.push_back(std::move(name));
        }
    }
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return NameLess(a, b); });
    return names;
}

std::vector<std::string> ListFiles(const std::string& folder, std::string_view ext) {
    return TryListFiles(folder, ext).value_or(std::vector<std::string>{});
}

namespace {

// Appends the files of dir (and, while depth allows, of its subfolders) to
// names, each behind prefix.
void ListBelow(const fs::path& dir, const std::string& prefix, std::string_view ext, int depth,
               std::size_t& folders, std::vector<std::string>& names) {
    if (folders >= ModelTreeFolders) {
        return;
    }
    ++folders;
    std::error_code ec;
    fs::directory_iterator it(dir, ec);
    if (ec) {
        return;
    }
    std::vector<std::string> files;
    std::vector<std::pair<std::string, fs::path>> subfolders;
    for (; !ec && it != fs::directory_iterator(); it.increment(ec)) {
        std::string name = FromFsPath(it->path().filename());
        std::error_code typeError;
        if (it->is_regular_file(typeError)) {
            if (name.size() > ext.size() &&
                EqualsNoCase(std::string_view(name).substr(name.size() - ext.size()), ext)) {
                files.push_back(std::move(name));
            }
        } else if (depth > 0 && !name.empty() && name.front() != '.' &&
                   !it->is_symlink(typeError) && it->is_directory(typeError)) {
            subfolders.emplace_back(std::move(name), it->path());
        }
    }
    const auto less = [](const std::string& a, const std::string& b) { return NameLess(a, b); };
    std::sort(files.begin(), files.end(), less);
    for (std::string& file : files) {
        names.push_back(prefix + file);
    }
    std::sort(subfolders.begin(), subfolders.end(),
              [&](const auto& a, const auto& b) { return less(a.first, b.first); });
    for (const auto& [name, path] : subfolders) {
        ListBelow(path, prefix + name + '/', ext, depth - 1, folders, names);
    }
}

} // namespace

std::vector<std::string> ListFilesBelow(const std::string& folder, std::string_view ext) {
    std::vector<std::string> names;
    const std::optional<fs::path> dir = ResolveAs(folder, Kind::Folder);
    if (!dir) {
        return names;
    }
    std::size_t folders = 0;
    ListBelow(*dir, std::string(), ext, ModelTreeDepth, folders, names);
    return names;
}

} // namespace quarle::paths
