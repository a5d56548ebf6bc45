#include "document/ModelFolderCache.h"

#include "document/Paths.h"
#include "document/SmdScan.h"

#include <optional>
#include <unordered_set>

namespace quarle {
namespace {

namespace fs = std::filesystem;

fs::path FsPath(const std::string& path) {
    return paths::ToFsPath(path);
}

struct Stamp {
    std::string DiskPath; // the spelling that exists on the disk
    std::uintmax_t Size = 0;
    fs::file_time_type Modified{};
};

std::optional<Stamp> StampOf(const std::string& path) {
    std::error_code ec;
    Stamp stamp;
    stamp.DiskPath = path;
    if (!fs::is_regular_file(FsPath(path), ec)) {
        // A script written on Windows may spell the folder in other capitals.
        std::optional<std::string> resolved = paths::Resolve(path);
        if (!resolved || !fs::is_regular_file(FsPath(*resolved), ec)) {
            return std::nullopt;
        }
        stamp.DiskPath = std::move(*resolved);
    }
    const fs::path disk = FsPath(stamp.DiskPath);
    stamp.Size = fs::file_size(disk, ec);
    if (ec) {
        return std::nullopt;
    }
    stamp.Modified = fs::last_write_time(disk, ec);
    if (ec) {
        return std::nullopt;
    }
    return stamp;
}

bool CanOpen(const std::string& path) {
    return static_cast<bool>(InputFile::Open(path, FileKind::Smd));
}

} // namespace

SmdKind ModelFolderCache::KindOf(const std::string& path) {
    const std::optional<Stamp> stamp = StampOf(path);
    if (!stamp) {
        entries_.erase(path);
        return SmdKind::Unreadable;
    }
    const auto found = entries_.find(path);
    if (found != entries_.end()) {
        const Entry& entry = found->second;
        if (entry.Settled && entry.Size == stamp->Size && entry.Modified == stamp->Modified) {
            return entry.Kind;
        }
    }

    // Taken before the read: a change during the read leaves the entry
    // unsettled, so the next call reads the file again.
    const fs::file_time_type readAt = fs::file_time_type::clock::now();
    ++filesRead_;
    if (!CanOpen(stamp->DiskPath)) {
        entries_.erase(path);
        return SmdKind::Unreadable;
    }
    Entry entry;
    entry.Size = stamp->Size;
    entry.Modified = stamp->Modified;
    entry.Kind = IsReferenceSmd(stamp->DiskPath) ? SmdKind::Reference : SmdKind::Animation;
    entry.Settled = stamp->Modified + ClockMargin < readAt;
    entries_[path] = entry;
    return entry.Kind;
}

void ModelFolderCache::Keep(std::span<const std::string> paths) {
    const std::unordered_set<std::string> keep(paths.begin(), paths.end());
    std::erase_if(entries_, [&](const auto& entry) { return !keep.contains(entry.first); });
}

} // namespace quarle
