// Writing a file so that neither a failure nor a crash leaves it half
// written, and nothing is left behind.
//
// The bytes go to a temporary file beside the target, named after it
// (".NAME.~quarleXXXXXXXX.tmp"), which is flushed to the disk and then
// renamed over the target; the folder is flushed after the rename where the
// system allows it. So the target is either the old file or the new one,
// also when the process is killed or the machine stops in between. A write
// holds its temporary file locked while it runs; a temporary that nothing
// holds is the leftover of a write that was killed, and the next write of
// the same target (or RemoveWriteLeftovers at a start) removes it.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <ostream>
#include <system_error>

namespace quarle {

enum class SafeWriteStep {
    Done,
    NoTemporary, // no free temporary name beside the target
    Create,      // the temporary file could not be made (the folder refuses)
    Write,       // writing or flushing it failed (a full disk, ...)
    Replace,     // it could not be renamed over the target
    Exists,      // NeverReplace, and a file of the target's name exists
};

struct SafeWriteResult {
    SafeWriteStep Step = SafeWriteStep::Done;
    std::error_code System; // the system's reason, where it gave one
    explicit operator bool() const { return Step == SafeWriteStep::Done; }
};

struct SafeWriteOptions {
    // False: a file of the target's name is never replaced (Exists).
    bool Replace = true;
    // Given to the new file. Without them, a file that replaces a plain
    // file takes that file's permissions: what the user set stays.
    std::optional<std::filesystem::perms> Permissions;
    // The file whose name the temporary file takes, when not the target: a
    // copy kept beside a script (NAME.qc.orig) is then swept with the
    // script's own leftovers.
    std::optional<std::filesystem::path> TemporaryOf;
    // A working file of a name the format gives (a language file's
    // "temp.lng", beside the target), used instead of a made-up name; what
    // a killed write left under that name is written over.
    std::optional<std::filesystem::path> Temporary;
};

// Writes target through a temporary file as told above: write fills the
// stream; a failure of the stream counts as a failed write. A failure
// removes the temporary file and leaves target as it was.
SafeWriteResult WriteFileSafely(const std::filesystem::path& target,
                                const std::function<void(std::ostream&)>& write,
                                const SafeWriteOptions& options = {});

// Removes the temporary files of earlier writes of target that no running
// write holds. Returns how many were removed.
int RemoveWriteLeftovers(const std::filesystem::path& target);

} // namespace quarle
