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

namespace {

// One file of the chain of open includes, by its canonical path.
std::string Identity(const std::string& diskPath) {
    std::error_code ec;
    const auto canonical = std::filesystem::weakly_canonical(paths::ToFsPath(diskPath), ec);
    return ec ? diskPath : paths::FromFsPath(canonical);
}

class Buffering {
public:
    Buffering(std::ostream& out, const std::string& baseFolder, ReaderHost& host,
              ProblemOnce& report, SourceMap* map)
        : out_(out), baseFolder_(baseFolder), host_(host), report_(report), map_(map) {}

    // Copies one file's text; false when the user refused a question. name
    // is the file's path as the script or the include line gives it.
    bool Copy(std::string&& read, const std::string& identity, const std::string& name) {
        chain_.push_back(identity);
        const std::size_t file = map_ ? map_->Files.size() : 0;
        // With a map, the lines are kept in it as views into the file's text.
        const std::string& text = map_ ? map_->Texts.emplace_back(std::move(read)) : read;
        if (map_) {
            map_->Files.push_back(name);
        }
        int number = 0;
        for (std::string_view line : SplitLines(text)) {
            ++number;
            if (line.substr(0, 2) == "//") {
                continue;
            }
            if (line.find("$include") == std::string_view::npos) {
                out_ << line << "\r\n";
                if (map_) {
                    map_->Lines.push_back({file, number});
                    map_->LineTexts.push_back(line);
                }
                continue;
            }
            if (!Include(line, number)) {
                return false;
            }
        }
        chain_.pop_back();
        return true;
    }

private:
    bool Include(std::string_view line, int number) {
        const std::size_t blank = line.find(' ');
        const int splitPos = blank == std::string_view::npos ? 0 : static_cast<int>(blank) + 1;
        std::string head;
        std::string tail;
        SplitAt(line, splitPos, head, tail);
        // Scripts write '\' (or '/'): both are read, this machine's is written.
        std::string path = paths::ToStyle(RemoveAll(tail, "\""));
        const std::string name = paths::FileNameOf(path);
        std::string disk = DiskPath(path, baseFolder_);
        IncludeSpan span{0, 0, line, number, path, false};

        // A relative include is looked for beside the script first, as the
        // compiler finds it.
        if (!paths::FileExists(disk)) {
            span.Asked = true;
            const std::string answer =
                host_.NewDir(path, host_.Text(IDS_INCLUDEFILE), FolderQuestion::IncludeFile);
            if (answer == Refused) {
                host_.NewDocument();
                return false;
            }
            path = answer.empty() ? name : paths::Join(answer, name);
            disk = DiskPath(path, baseFolder_);
        }

        if (static_cast<int>(chain_.size()) > MaxIncludeDepth) {
            report_(ReadProblem::IncludeTooDeep, path);
            return true;
        }
        const std::string identity = Identity(disk);
        for (const std::string& open : chain_) {
            if (open == identity) {
                report_(ReadProblem::IncludeLoop, path);
                return true;
            }
        }
        std::string text;
        OpenProblem problem;
        if (!ReadWholeFile(disk, text, &problem)) {
            problem.Path = path;
            report_.File(ReadProblem::IncludeUnreadable, problem);
            return true;
        }
        if (map_ == nullptr || chain_.size() != 1) {
            return Copy(std::move(text), identity, path);
        }
        span.First = map_->LineTexts.size();
        const bool copied = Copy(std::move(text), identity, path);
        span.End = map_->LineTexts.size();
        map_->Includes.push_back(std::move(span));
        return copied;
    }

    std::ostream& out_;
    const std::string& baseFolder_;
    ReaderHost& host_;
    ProblemOnce& report_;
    SourceMap* map_;
    std::vector<std::string> chain_;
};

} // namespace

BufferResult BufferQcFile(std::ostream& out, const std::string& scriptPath,
                          const std::string& baseFolder, ReaderHost& host, ProblemOnce& report,
                          SourceMap* map) {
    const std::string disk = DiskPath(scriptPath, "");
    std::string text;
    OpenProblem problem;
    if (!ReadWholeFile(disk, text, &problem)) {
        problem.Path = scriptPath;
        report.File(ReadProblem::ScriptUnreadable, problem);
        return BufferResult::Unreadable;
    }
    Buffering buffering(out, baseFolder, host, report, map);
    return buffering.Copy(std::move(text), Identity(disk), scriptPath) ? BufferResult::Done
                                                            : BufferResult::Refused;
}

} // namespace quarle
