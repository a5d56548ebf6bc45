// Which .smd files of the model folder are meshes and which are animations.
// The main window sorts the folder's files into its two lists on every change
// of the page, and the reference test reads an animation file to its end; on
// a folder of a few hundred files that is a noticeable wait each time. The
// cache keeps each file's kind with the size and modification time it had
// when it was read, and reads a file again only when these have changed, so
// files that appear or change on the disk still show up at the next refill.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <unordered_map>

namespace quarle {

enum class SmdKind {
    Reference,  // a mesh: the reference test finds "triangles"
    Animation,  // any other file
    Unreadable, // gone, not a file, or cannot be opened: listed on neither page
};

class ModelFolderCache {
public:
    // Changes closer than this to the moment a file was read could share its
    // time stamp with the version read (coarse file system clocks); such an
    // entry is read again at the next call.
    static constexpr std::chrono::seconds ClockMargin{2};

    // The kind of the file at path (UTF-8; the case fallback of paths::Resolve
    // applies). Reads the file only when it is new to the cache, when its size
    // or modification time differ from those remembered, or when its entry was
    // read too soon after the last change to be trusted.
    SmdKind KindOf(const std::string& path);

    // Forgets every entry whose path is not among paths: files that are gone,
    // or the files of a folder no longer on show.
    void Keep(std::span<const std::string> paths);
    void Clear() { entries_.clear(); }

    std::size_t Entries() const { return entries_.size(); }
    // Files read (opened and scanned) since the cache was made.
    std::size_t FilesRead() const { return filesRead_; }

private:
    struct Entry {
        std::uintmax_t Size = 0;
        std::filesystem::file_time_type Modified{};
        SmdKind Kind = SmdKind::Unreadable;
        bool Settled = false; // read well after its last change
    };

    std::unordered_map<std::string, Entry> entries_;
    std::size_t filesRead_ = 0;
};

} // namespace quarle
