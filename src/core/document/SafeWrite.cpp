#include "document/SafeWrite.h"

#include <array>
#include <cerrno>
#include <random>
#include <streambuf>
#include <string>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace quarle {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view Marker = ".~quarle";
constexpr std::string_view Ending = ".tmp";
constexpr std::size_t RandomDigits = 8;

std::error_code LastError() {
    return {errno, std::generic_category()};
}

// ".NAME.~quarle" in the file system's own characters.
fs::path::string_type TemporaryStem(const fs::path& target) {
    fs::path::string_type stem;
    stem += fs::path::value_type('.');
    stem += target.filename().native();
    for (const char c : Marker) {
        stem += static_cast<fs::path::value_type>(c);
    }
    return stem;
}

bool IsTemporaryOf(const fs::path::string_type& name, const fs::path::string_type& stem) {
    if (name.size() != stem.size() + RandomDigits + Ending.size() ||
        name.compare(0, stem.size(), stem) != 0) {
        return false;
    }
    for (std::size_t i = 0; i < RandomDigits; ++i) {
        const auto c = name[stem.size() + i];
        if (!((c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'))) {
            return false;
        }
    }
    for (std::size_t i = 0; i < Ending.size(); ++i) {
        if (name[stem.size() + RandomDigits + i] != static_cast<fs::path::value_type>(Ending[i])) {
            return false;
        }
    }
    return true;
}

#ifdef _WIN32
int CreateExclusive(const fs::path& path) {
    int fd = -1;
    // No one else may open it while it is written: a sweep cannot remove it.
    errno = _wsopen_s(&fd, path.c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY | _O_NOINHERIT,
                      _SH_DENYRW, _S_IREAD | _S_IWRITE);
    return fd;
}
int CreateReplacing(const fs::path& path) {
    int fd = -1;
    errno = _wsopen_s(&fd, path.c_str(), _O_CREAT | _O_TRUNC | _O_WRONLY | _O_BINARY | _O_NOINHERIT,
                      _SH_DENYRW, _S_IREAD | _S_IWRITE);
    return fd;
}
long long WriteSome(int fd, const char* data, std::size_t size) {
    return _write(fd, data, static_cast<unsigned>(std::min<std::size_t>(size, 1u << 30)));
}
bool SyncFile(int fd) {
    return _commit(fd) == 0;
}
void CloseFile(int fd) {
    _close(fd);
}
#else
int CreateExclusive(const fs::path& path) {
    const int fd = ::open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (fd >= 0) {
        // Held until the file is renamed or removed; a lock that cannot be
        // had on this file system leaves the file to be swept by no one.
        ::flock(fd, LOCK_EX | LOCK_NB);
    }
    return fd;
}
int CreateReplacing(const fs::path& path) {
    return ::open(path.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC | O_NOFOLLOW, 0666);
}
long long WriteSome(int fd, const char* data, std::size_t size) {
    long long done;
    do {
        done = ::write(fd, data, size);
    } while (done < 0 && errno == EINTR);
    return done;
}
bool SyncFile(int fd) {
    int result;
    do {
        result = ::fsync(fd);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}
void CloseFile(int fd) {
    ::close(fd);
}
// The rename itself reaches the disk with the folder's entry.
void SyncFolder(const fs::path& folder) {
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd); // some file systems cannot: nothing more can be done then
        ::close(fd);
    }
}
#endif

// A stream buffer on a file descriptor that remembers the first failure.
class FileBuffer : public std::streambuf {
public:
    explicit FileBuffer(int fd) : fd_(fd), buffer_(std::size_t{1} << 16) {
        setp(buffer_.data(), buffer_.data() + buffer_.size());
    }
    const std::error_code& Error() const { return error_; }

protected:
    int_type overflow(int_type c) override {
        if (!Drain()) {
            return traits_type::eof();
        }
        if (!traits_type::eq_int_type(c, traits_type::eof())) {
            *pptr() = traits_type::to_char_type(c);
            pbump(1);
        }
        return traits_type::not_eof(c);
    }
    int sync() override { return Drain() ? 0 : -1; }

private:
    bool Drain() {
        const char* p = pbase();
        while (!error_ && p < pptr()) {
            const long long done = WriteSome(fd_, p, static_cast<std::size_t>(pptr() - p));
            if (done <= 0) {
                error_ = done < 0 ? LastError() : std::make_error_code(std::errc::io_error);
            } else {
                p += done;
            }
        }
        setp(buffer_.data(), buffer_.data() + buffer_.size());
        return !error_;
    }

    int fd_;
    std::vector<char> buffer_;
    std::error_code error_;
};

// Renames from over to (Replace) or to a name that is free (otherwise).
SafeWriteResult Rename(const fs::path& from, const fs::path& to, bool replace) {
#ifdef _WIN32
    DWORD flags = MOVEFILE_WRITE_THROUGH | (replace ? MOVEFILE_REPLACE_EXISTING : 0);
    if (!MoveFileExW(from.c_str(), to.c_str(), flags)) {
        const DWORD error = GetLastError();
        const bool exists = error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS;
        return {!replace && exists ? SafeWriteStep::Exists : SafeWriteStep::Replace,
                std::error_code(static_cast<int>(error), std::system_category())};
    }
    return {};
#else
    if (replace) {
        if (::rename(from.c_str(), to.c_str()) != 0) {
            return {SafeWriteStep::Replace, LastError()};
        }
        return {};
    }
    // A hard link never replaces a file; where the file system has none,
    // a test just before the rename has to do.
    if (::link(from.c_str(), to.c_str()) == 0) {
        ::unlink(from.c_str());
        return {};
    }
    if (errno == EEXIST) {
        return {SafeWriteStep::Exists, LastError()};
    }
    struct stat st {};
    if (::lstat(to.c_str(), &st) == 0) {
        return {SafeWriteStep::Exists, std::make_error_code(std::errc::file_exists)};
    }
    if (::rename(from.c_str(), to.c_str()) != 0) {
        return {SafeWriteStep::Replace, LastError()};
    }
    return {};
#endif
}

} // namespace

int RemoveWriteLeftovers(const fs::path& target) {
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    const fs::path::string_type stem = TemporaryStem(target);
    std::vector<fs::path> found;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        if (IsTemporaryOf(it->path().filename().native(), stem)) {
            found.push_back(it->path());
        }
    }
    int removed = 0;
    for (const fs::path& path : found) {
#ifdef _WIN32
        // A temporary that a running write holds open cannot be removed.
        removed += _wremove(path.c_str()) == 0 ? 1 : 0;
#else
        const int fd = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (fd < 0) {
            continue;
        }
        struct stat st {};
        if (::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && ::flock(fd, LOCK_EX | LOCK_NB) == 0) {
            removed += ::unlink(path.c_str()) == 0 ? 1 : 0;
        }
        ::close(fd);
#endif
    }
    return removed;
}

SafeWriteResult WriteFileSafely(const fs::path& target,
                                const std::function<void(std::ostream&)>& write,
                                const SafeWriteOptions& options) {
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    const fs::path& namedAfter = options.TemporaryOf ? *options.TemporaryOf : target;
    RemoveWriteLeftovers(namedAfter);
    std::optional<fs::perms> permissions = options.Permissions;
    if (!permissions && options.Replace) {
        std::error_code ignored;
        if (const fs::file_status old = fs::status(target, ignored); fs::is_regular_file(old)) {
            permissions = old.permissions();
        }
    }

    // A random name: a name used by a write that runs now is passed over.
    std::random_device device;
    std::mt19937 random(device());
    fs::path temporary;
    int fd = -1;
    if (options.Temporary) {
        temporary = folder / *options.Temporary;
        fd = CreateReplacing(temporary);
        if (fd < 0) {
            return {SafeWriteStep::Create, LastError()};
        }
    }
    for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
        fs::path::string_type name = TemporaryStem(namedAfter);
        std::uint32_t bits = random();
        for (std::size_t i = 0; i < RandomDigits; ++i, bits >>= 4) {
            name += static_cast<fs::path::value_type>("0123456789abcdef"[bits & 15]);
        }
        for (const char c : Ending) {
            name += static_cast<fs::path::value_type>(c);
        }
        temporary = folder / fs::path(name);
        fd = CreateExclusive(temporary);
        if (fd < 0 && errno != EEXIST) {
            return {SafeWriteStep::Create, LastError()};
        }
    }
    if (fd < 0) {
        return {SafeWriteStep::NoTemporary, {}};
    }
    auto fail = [&](SafeWriteStep step, std::error_code error) {
        if (fd >= 0) {
            CloseFile(fd);
        }
        std::error_code ignored;
        fs::remove(temporary, ignored);
        return SafeWriteResult{step, error};
    };

    {
        FileBuffer buffer(fd);
        std::ostream out(&buffer);
        write(out);
        out.flush();
        if (!out.good() || buffer.Error()) {
            return fail(SafeWriteStep::Write, buffer.Error());
        }
    }
#ifndef _WIN32
    if (permissions) {
        // A refusal leaves the usual permissions; the data are whole all the same.
        ::fchmod(fd, static_cast<mode_t>(*permissions & fs::perms::mask));
    }
#endif
    if (!SyncFile(fd)) {
        return fail(SafeWriteStep::Write, LastError());
    }
#ifdef _WIN32
    // Windows renames no file that is open.
    CloseFile(fd);
    fd = -1;
    if (permissions) {
        std::error_code ignored;
        fs::permissions(temporary, *permissions, ignored);
    }
#endif
    const SafeWriteResult renamed = Rename(temporary, target, options.Replace);
    if (!renamed) {
        return fail(renamed.Step, renamed.System);
    }
#ifndef _WIN32
    CloseFile(fd);
    SyncFolder(folder);
#endif
    return {};
}

} // namespace quarle
