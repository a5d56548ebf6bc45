#include "document/InputFile.h"

#include "document/NumberText.h"
#include "document/Paths.h"

#include <algorithm>
#include <cstring>
#include <cerrno>
#include <utility>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace quarle {

namespace fs = std::filesystem;

namespace {

std::error_code LastError() {
    return {errno, std::generic_category()};
}

#ifdef _WIN32
using StatBuffer = struct _stat64;
bool IsRegular(const StatBuffer& st) {
    return (st.st_mode & _S_IFMT) == _S_IFREG;
}
bool IsFolder(const StatBuffer& st) {
    return (st.st_mode & _S_IFMT) == _S_IFDIR;
}
int StatPath(const fs::path& path, StatBuffer& st) {
    return _wstat64(path.c_str(), &st);
}
int StatOpen(int fd, StatBuffer& st) {
    return _fstat64(fd, &st);
}
int OpenRead(const fs::path& path) {
    return _wopen(path.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
}
long long ReadSome(int fd, char* buffer, std::size_t size) {
    return _read(fd, buffer, static_cast<unsigned>(std::min<std::size_t>(size, 1u << 30)));
}
void CloseFile(int fd) {
    _close(fd);
}
#else
using StatBuffer = struct stat;
bool IsRegular(const StatBuffer& st) {
    return S_ISREG(st.st_mode);
}
bool IsFolder(const StatBuffer& st) {
    return S_ISDIR(st.st_mode);
}
int StatPath(const fs::path& path, StatBuffer& st) {
    return ::stat(path.c_str(), &st);
}
int StatOpen(int fd, StatBuffer& st) {
    return ::fstat(fd, &st);
}
int OpenRead(const fs::path& path) {
    // Non-blocking: should a pipe be swapped in after the test above, the
    // open itself does not wait for a writer; the test after it refuses it.
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (fd >= 0) {
        ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    }
    return fd;
}
long long ReadSome(int fd, char* buffer, std::size_t size) {
    long long got;
    do {
        got = ::read(fd, buffer, size);
    } while (got < 0 && errno == EINTR);
    return got;
}
void CloseFile(int fd) {
    ::close(fd);
}
#endif

// A missing file, a folder and anything else that is not a regular file.
OpenFailure Classify(const StatBuffer& st) {
    if (IsRegular(st)) {
        return OpenFailure::None;
    }
    return IsFolder(st) ? OpenFailure::Folder : OpenFailure::Special;
}

} // namespace

std::uint64_t SizeLimit(FileKind kind) {
    constexpr std::uint64_t MiB = 1024 * 1024;
    switch (kind) {
    case FileKind::Script:
        // A script of every sequence slot with every event is below 100 MiB.
        return 256 * MiB;
    case FileKind::Smd:
        // The compiler's largest part or animation is some tens of MiB.
        return 1024 * MiB;
    case FileKind::Bitmap:
        // An 8-bit texture is below 1 MiB; a 24-bit 8192 x 8192 picture 192 MiB.
        return 256 * MiB;
    case FileKind::Language:
        return 16 * MiB;
    case FileKind::Model:
        // The compiler writes each file of a model from a 16 MiB buffer.
        return 64 * MiB;
    }
    return 0;
}

InputFile InputFile::Open(const std::string& path, FileKind kind) {
    const std::optional<fs::path> found = paths::ResolveFs(path);
    if (!found) {
        InputFile file;
        file.problem_.Path = path;
        file.problem_.Kind = kind;
        file.Fail(OpenFailure::Missing);
        return file;
    }
    return OpenExact(*found, kind, path);
}

InputFile InputFile::OpenExact(const fs::path& path, FileKind kind, const std::string& name) {
    InputFile file;
    file.problem_.Path = name;
    file.problem_.Kind = kind;
    file.limit_ = SizeLimit(kind);
    StatBuffer st{};
    if (path.empty() || StatPath(path, st) != 0) {
        const std::error_code error = LastError();
        file.Fail(error == std::errc::no_such_file_or_directory || path.empty()
                      ? OpenFailure::Missing
                      : OpenFailure::Denied,
                  path.empty() ? std::error_code() : error);
        return file;
    }
    if (const OpenFailure kindOf = Classify(st); kindOf != OpenFailure::None) {
        file.Fail(kindOf);
        return file;
    }
    file.fd_ = OpenRead(path);
    if (file.fd_ < 0) {
        file.Fail(OpenFailure::Denied, LastError());
        return file;
    }
    if (StatOpen(file.fd_, st) != 0) {
        file.Fail(OpenFailure::Denied, LastError());
        return file;
    }
    if (const OpenFailure kindOf = Classify(st); kindOf != OpenFailure::None) {
        file.Fail(kindOf);
        return file;
    }
    file.size_ = static_cast<std::uint64_t>(st.st_size);
    if (file.size_ > file.limit_) {
        file.Fail(OpenFailure::TooLarge);
    }
    return file;
}

InputFile::InputFile(InputFile&& other) noexcept
    : fd_(std::exchange(other.fd_, -1)), size_(other.size_), read_(other.read_),
      limit_(other.limit_), problem_(std::move(other.problem_)) {}

InputFile& InputFile::operator=(InputFile&& other) noexcept {
    if (this != &other) {
        Close();
        fd_ = std::exchange(other.fd_, -1);
        size_ = other.size_;
        read_ = other.read_;
        limit_ = other.limit_;
        problem_ = std::move(other.problem_);
    }
    return *this;
}

InputFile::~InputFile() {
    Close();
}

void InputFile::Close() {
    if (fd_ >= 0) {
        CloseFile(fd_);
        fd_ = -1;
    }
}

void InputFile::Fail(OpenFailure failure, std::error_code system) {
    problem_.Failure = failure;
    problem_.System = system;
    Close();
}

std::size_t InputFile::Read(char* buffer, std::size_t size) {
    if (fd_ < 0 || size == 0) {
        return 0;
    }
    // One byte beyond the limit is asked for, so that a file grown past it
    // is told from one that ends exactly there.
    const std::uint64_t room = limit_ - std::min(read_, limit_) + 1;
    const long long got =
        ReadSome(fd_, buffer, static_cast<std::size_t>(std::min<std::uint64_t>(size, room)));
    if (got < 0) {
        Fail(OpenFailure::ReadError, LastError());
        return 0;
    }
    read_ += static_cast<std::uint64_t>(got);
    if (read_ > limit_) {
        Fail(OpenFailure::TooLarge);
        return 0;
    }
    return static_cast<std::size_t>(got);
}

bool InputFile::ReadAll(std::string& text) {
    if (fd_ < 0) {
        return false;
    }
    // The size the file has now in one read; whatever it grew by since
    // comes in blocks behind it.
    std::size_t used = text.size();
    text.resize(used + static_cast<std::size_t>(std::max<std::uint64_t>(size_, 1 << 14)));
    for (;;) {
        if (used == text.size()) {
            // Full at the size the file had: a small read tells whether it
            // grew since, so that a file read whole is not copied over.
            char probe[4096];
            const std::size_t more = Read(probe, sizeof probe);
            if (more == 0) {
                break;
            }
            text.resize(text.size() + std::max<std::size_t>(text.size() / 2, 1 << 14));
            std::memcpy(text.data() + used, probe, more);
            used += more;
        }
        const std::size_t got = Read(text.data() + used, text.size() - used);
        if (got == 0) {
            break;
        }
        used += got;
    }
    text.resize(used);
    Close();
    return problem_.Failure == OpenFailure::None;
}

std::optional<std::string> ReadFileText(const std::string& path, FileKind kind,
                                        OpenProblem* problem) {
    InputFile file = InputFile::Open(path, kind);
    std::string text;
    if (!file.ReadAll(text)) {
        if (problem != nullptr) {
            *problem = file.Problem();
        }
        return std::nullopt;
    }
    return text;
}

std::string DescribeOpenProblem(const OpenProblem& problem, const MessageTexts& texts) {
    auto text = [&](Msg key) -> const std::string& { return texts[static_cast<std::size_t>(key)]; };
    switch (problem.Failure) {
    case OpenFailure::None:
        break;
    case OpenFailure::Missing:
        return FormatMessage(text(MSG_OPEN_MISSING), {problem.Path});
    case OpenFailure::Folder:
        return FormatMessage(text(MSG_OPEN_FOLDER), {problem.Path});
    case OpenFailure::Special:
        return FormatMessage(text(MSG_OPEN_SPECIAL), {problem.Path});
    case OpenFailure::TooLarge:
        return FormatMessage(text(MSG_OPEN_TOO_LARGE),
                             {problem.Path, IntToText(static_cast<long long>(
                                                SizeLimit(problem.Kind) / (1024 * 1024)))});
    case OpenFailure::Denied:
    case OpenFailure::ReadError:
        return FormatMessage(
            text(problem.Failure == OpenFailure::Denied ? MSG_OPEN_DENIED : MSG_OPEN_READ_ERROR),
            {problem.Path, SystemReasonText(problem.System, texts)});
    }
    return {};
}

std::string SystemReasonText(const std::error_code& error, const MessageTexts& texts) {
    if (!error) {
        return {};
    }
    // Compared as conditions, so Windows' own codes match as well.
    static constexpr std::pair<std::errc, Msg> Known[] = {
        {std::errc::permission_denied, MSG_SYSTEM_DENIED},
        {std::errc::operation_not_permitted, MSG_SYSTEM_DENIED},
        {std::errc::no_space_on_device, MSG_SYSTEM_DISK_FULL},
        {std::errc::read_only_file_system, MSG_SYSTEM_READ_ONLY},
        {std::errc::no_such_file_or_directory, MSG_SYSTEM_NOT_FOUND},
        {std::errc::is_a_directory, MSG_SYSTEM_IS_FOLDER},
        {std::errc::not_a_directory, MSG_SYSTEM_NOT_FOLDER},
        {std::errc::filename_too_long, MSG_SYSTEM_NAME_TOO_LONG},
        {std::errc::device_or_resource_busy, MSG_SYSTEM_IN_USE},
        {std::errc::text_file_busy, MSG_SYSTEM_IN_USE},
        {std::errc::io_error, MSG_SYSTEM_IO},
        {std::errc::file_exists, MSG_SYSTEM_EXISTS},
    };
    for (const auto& [condition, key] : Known) {
        if (error == condition && !texts[static_cast<std::size_t>(key)].empty()) {
            return texts[static_cast<std::size_t>(key)];
        }
    }
#ifdef EDQUOT
    if (error == std::error_condition(EDQUOT, std::generic_category())) {
        return texts[MSG_SYSTEM_DISK_FULL];
    }
#endif
    return error.message();
}

} // namespace quarle
