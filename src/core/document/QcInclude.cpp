#include "document/QcInclude.h"

#include "document/InputFile.h"
#include "document/Paths.h"
#include "document/Text.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace quarle {

std::vector<std::string_view> SplitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    // Lines are long (a sequence with its events is hundreds of bytes): the
    // next CR and the next LF are each found by a library search.
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    auto next = [end](const char* from, char c) {
        const void* found =
            from < end ? std::memchr(from, c, static_cast<std::size_t>(end - from)) : nullptr;
        return found != nullptr ? static_cast<const char*>(found) : end;
    };
    const char* start = begin;
    const char* cr = next(begin, '\r');
    const char* lf = next(begin, '\n');
    while (start < end) {
        const char* stop = std::min(cr, lf);
        if (stop == end) {
            lines.emplace_back(start, static_cast<std::size_t>(end - start));
            break;
        }
        lines.emplace_back(start, static_cast<std::size_t>(stop - start));
        start = stop + 1;
        if (stop == cr && start == lf) {
            ++start; // CR LF
        }
        if (cr < start) {
            cr = next(start, '\r');
        }
        if (lf < start) {
            lf = next(start, '\n');
        }
    }
    return lines;
}

bool ReadWholeFile(const std::string& path, std::string& text, OpenProblem* problem) {
    InputFile file = InputFile::Open(path, FileKind::Script);
    text.clear();
    if (!file.ReadAll(text)) {
        if (problem != nullptr) {
            *problem = file.Problem();
        }
        return false;
    }
    return true;
}

std::string DiskPath(std::string_view scriptPath, const std::string& baseFolder) {
    std::string path = paths::ToStyle(scriptPath);
    if (!path.empty() && !baseFolder.empty() && !paths::IsAbsolute(path)) {
        path = paths::Join(baseFolder, path);
    }
    return paths::Resolve(path).value_or(path);
}

std::string FolderBeside(const std::string& scriptFolder, std::string_view folder) {
    const std::string path = paths::ToStyle(folder);
    if (paths::IsAbsolute(path)) {
        return path;
    }
    // A script named without a folder stands in the working folder.
    std::error_code ec;
    const std::string base =
        scriptFolder.empty() ? paths::FromFsPath(std::filesystem::current_path(ec)) : scriptFolder;
    std::string normal =
        paths::FromFsPath(paths::ToFsPath(paths::Join(base, path)).lexically_normal());
    while (normal.size() > 1 && paths::IsSeparator(normal.back()) &&
           !(normal.size() == 3 && normal[1] == ':')) {
        normal.pop_back();
    }
    return paths::Resolve(normal).value_or(normal);
}

std::string FolderToWrite(const std::string& held, const std::string& asWritten,
                          const std::string& scriptFolder) {
    if (asWritten.empty() || held.empty()) {
        return held;
    }
    return FolderBeside(scriptFolder, asWritten) == held ? asWritten : held;
}

} // namespace quarle
