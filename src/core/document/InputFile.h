// The one way a file is opened for reading. Scripts and their includes,
// .smd files (scans, the full reader, the skeleton), bitmaps and language
// files all come through here, so that a name that does not belong to a file
// can never make a reader wait or eat memory:
//
// - Only regular files are read, and links to them. A folder, a pipe, a
//   device or a socket (or a link to one) is refused before it is opened: a
//   pipe without a writer would block the open, /dev/zero would never end,
//   and a folder reads as an error in the middle of a stream. The test is
//   made again on what was opened, so a name swapped in between is caught.
// - Each kind of file has a size limit, far above what a real file of that
//   kind holds. A larger file is refused, and a file that grows past the
//   limit while it is read ends there with the same refusal.
// - A refusal is an OpenProblem that names the file and why; readers pass it
//   on to their host, DescribeOpenProblem words it.
#pragma once

#include "localisation/MessageTexts.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace quarle {

// What a file is read as; it sets the size limit.
enum class FileKind {
    Script,   // a .qc script or an include
    Smd,      // a mesh or an animation
    Bitmap,   // a texture
    Language, // a .lng file
    Model,    // a compiled model (.mdl) and its texture and sequence files
};

// The largest file of a kind that is read, in bytes.
std::uint64_t SizeLimit(FileKind kind);

enum class OpenFailure {
    None,
    Missing,  // nothing of that name (after the case fallback)
    Folder,   // a folder, or a link to one
    Special,  // a pipe, device or socket, or a link to one
    TooLarge, // above the kind's size limit, or grew past it while read
    Denied,   // the system refused to open it; System says why
    ReadError // reading failed part way; System says why
};

struct OpenProblem {
    OpenFailure Failure = OpenFailure::None;
    std::string Path; // the file, as the caller named it (document text)
    FileKind Kind = FileKind::Script;
    std::error_code System; // the system's reason, where it gave one

    bool operator==(const OpenProblem&) const = default;
};

// An open regular file, read from the start to at most its kind's limit.
class InputFile {
public:
    // path is document text (cp1252) and goes through the case fallback of
    // paths::Resolve.
    static InputFile Open(const std::string& path, FileKind kind);
    // A path of the file system, taken exactly as it is; name is what a
    // problem calls it (document text).
    static InputFile OpenExact(const std::filesystem::path& path, FileKind kind,
                               const std::string& name);

    InputFile(InputFile&& other) noexcept;
    InputFile& operator=(InputFile&& other) noexcept;
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();

    // False when the file was refused or reading failed; Problem says why.
    explicit operator bool() const { return problem_.Failure == OpenFailure::None; }
    const OpenProblem& Problem() const { return problem_; }

    // The size the file had when it was opened.
    std::uint64_t Size() const { return size_; }

    // Up to size bytes into buffer; 0 at the end, after a failure, and once
    // the kind's limit is passed (the problem is then TooLarge).
    std::size_t Read(char* buffer, std::size_t size);

    // The rest of the file appended to text; false on a failure.
    bool ReadAll(std::string& text);

private:
    InputFile() = default;
    void Fail(OpenFailure failure, std::error_code system = {});
    void Close();

    int fd_ = -1;
    std::uint64_t size_ = 0;
    std::uint64_t read_ = 0;
    std::uint64_t limit_ = 0;
    OpenProblem problem_;
};

// The whole of a file; nullopt with problem filled when it was refused.
std::optional<std::string> ReadFileText(const std::string& path, FileKind kind,
                                        OpenProblem* problem = nullptr);

// A sentence that names the file and tells why it is not read, in the given
// texts (English unless a host passes those of the active language). The
// system's reason comes from SystemReasonText.
std::string DescribeOpenProblem(const OpenProblem& problem,
                                const MessageTexts& texts = EnglishMessageTexts());

// The system's reason for a failure in the words of the texts where they
// have them (a full disk, a missing permission, ...), else the system's own.
std::string SystemReasonText(const std::error_code& error,
                             const MessageTexts& texts = EnglishMessageTexts());

} // namespace quarle
