#include "compile/CompileFiles.h"

#include "document/Paths.h"
#include "document/SafeWrite.h"
#include "localisation/Cp1252.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <system_error>

namespace quarle::compile {

namespace fs = std::filesystem;

namespace {

char Lower(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}
bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Where word stands in line on its own (no letter either side), any case.
bool HasWord(std::string_view line, std::string_view word) {
    for (std::size_t i = 0; i + word.size() <= line.size(); ++i) {
        bool match = true;
        for (std::size_t k = 0; k < word.size() && match; ++k) {
            match = Lower(line[i + k]) == word[k];
        }
        if (!match) {
            continue;
        }
        const bool before = i > 0 && IsLetter(line[i - 1]);
        const bool after = i + word.size() < line.size() && IsLetter(line[i + word.size()]);
        if (!before && !after) {
            return true;
        }
    }
    return false;
}

bool IsBlank(std::string_view line) {
    return line.find_first_not_of(" \t") == std::string_view::npos;
}

// The compiler's banner before the reason it stops: the word between stars
// and exclamation marks ("************ ERROR ************", "***ERROR!!!***").
bool IsErrorBanner(std::string_view line) {
    std::string word;
    for (char c : line) {
        if (c != '*' && c != '!' && c != ' ' && c != '\t') {
            word += Lower(c);
        }
    }
    return word == "error";
}

std::string Num(long long value) {
    char buffer[24];
    auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, end);
}

std::string Plural(int count, const char* word) {
    return Num(count) + " " + word + (count == 1 ? "" : "s");
}

fs::path PathOf(const std::string& path) {
    return paths::ToFsPath(path);
}

} // namespace

ScriptStyle HostScriptStyle() {
#ifdef _WIN32
    return ScriptStyle::Batch;
#else
    return ScriptStyle::Posix;
#endif
}

const char* ScriptFileName(ScriptStyle style) {
    return style == ScriptStyle::Batch ? "compile.bat" : "compile.sh";
}

std::string ShellQuote(std::string_view text) {
    std::string out = "'";
    for (char c : text) {
        if (c == '\'') {
            out += "'\\''";
        } else {
            out += c;
        }
    }
    out += '\'';
    return out;
}

bool IsWindowsExecutable(std::string_view program) {
    constexpr std::string_view ext = ".exe";
    if (program.size() < ext.size()) {
        return false;
    }
    std::string_view tail = program.substr(program.size() - ext.size());
    for (std::size_t i = 0; i < ext.size(); ++i) {
        if (Lower(tail[i]) != ext[i]) {
            return false;
        }
    }
    return true;
}

std::string CompileScriptText(ScriptStyle style, std::string_view studioMdlPath,
                              std::string_view qcFile, std::string_view workFolder) {
    const paths::Style pathStyle =
        style == ScriptStyle::Batch ? paths::Style::Windows : paths::Style::Posix;
    std::string scriptFolder = paths::FolderOf(qcFile, pathStyle);
    // "c:" alone is the drive's current folder, not its root.
    if (scriptFolder.size() == 2 && scriptFolder[1] == ':') {
        scriptFolder += '\\';
    }
    const std::string log = paths::Join(workFolder, LogFileName, pathStyle);
    const std::string marker = paths::Join(workFolder, MarkerFileName, pathStyle);
    std::string text;
    if (style == ScriptStyle::Batch) {
        // The interpreter expands %NAME% even inside quotes.
        auto escape = [](std::string_view s) {
            std::string out;
            for (char c : s) {
                out += c;
                if (c == '%') {
                    out += '%';
                }
            }
            return out;
        };
        const std::string logArg = "\"" + escape(log) + "\"";
        // pushd also takes a network folder, which cd cannot make current.
        // The system's own message when the compiler cannot start goes to
        // the log as well.
        text += "pushd \"" + escape(scriptFolder) + "\" 2>>" + logArg + " && " +
                escape(studioMdlPath) + " \"" + escape(qcFile) + "\" >>" + logArg + " 2>&1\r\n";
        text += "echo Fertig >\"" + escape(marker) + "\"\r\n";
    } else {
        // The shell takes file names in UTF-8; its message when the folder
        // or the compiler cannot be used (not executable, no interpreter)
        // goes to the log as well.
        const std::string logArg = ShellQuote(Cp1252ToUtf8(log));
        text += "cd " + ShellQuote(Cp1252ToUtf8(scriptFolder)) + " 2>>" + logArg + " && ";
        if (IsWindowsExecutable(studioMdlPath)) {
            text += "wine ";
        }
        text += ShellQuote(Cp1252ToUtf8(studioMdlPath)) + " " + ShellQuote(Cp1252ToUtf8(qcFile)) +
                " >>" + logArg + " 2>&1\n";
        text += "echo Fertig $? >" + ShellQuote(Cp1252ToUtf8(marker)) + "\n";
    }
    return text;
}

ScriptLaunch LaunchForScript(ScriptStyle style) {
    if (style == ScriptStyle::Batch) {
        return {"cmd.exe", {"/c", ScriptFileName(style)}};
    }
    return {"/bin/sh", {ScriptFileName(style)}};
}

std::string WriteFileReplacing(const std::string& path, std::string_view bytes) {
    const fs::path target = PathOf(path);
    // A script replaced keeps the permissions the user set.
    const SafeWriteResult written = WriteFileSafely(
        target,
        [&](std::ostream& out) { out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())); });
    switch (written.Step) {
    case SafeWriteStep::Done:
        return {};
    case SafeWriteStep::NoTemporary:
    case SafeWriteStep::Create:
        return "the file cannot be written in its folder.";
    case SafeWriteStep::Write:
        return "writing the file failed.";
    case SafeWriteStep::Replace:
    case SafeWriteStep::Exists:
        break;
    }
    return "the file cannot be replaced (" + written.System.message() + ").";
}

std::string AppendScriptLine(const std::string& path, const std::string& line) {
    if (path.empty()) {
        return "the model has not been saved.";
    }
    std::ifstream in(PathOf(path), std::ios::binary);
    if (!in) {
        return "the file cannot be read.";
    }
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) {
        return "the file cannot be read.";
    }
    in.close();
    if (!bytes.empty() && bytes.back() != '\n') {
        bytes += "\r\n";
    }
    bytes += line;
    bytes += "\r\n";
    return WriteFileReplacing(path, bytes);
}

std::string DeleteRunFiles(const std::string& folder) {
    std::string failure;
    for (const char* name : {LogFileName, MarkerFileName}) {
        const std::string path = paths::Join(folder, name);
        std::error_code ec;
        fs::remove(PathOf(path), ec);
        if (ec) {
            failure += (failure.empty() ? "" : " ") + std::string(name) + " cannot be deleted (" +
                       ec.message() + ").";
        }
    }
    return failure;
}

std::string WriteCompileScript(const std::string& folder, ScriptStyle style,
                               std::string_view studioMdlPath, std::string_view qcFile) {
    return WriteFileReplacing(paths::Join(folder, ScriptFileName(style)),
                              CompileScriptText(style, studioMdlPath, qcFile, folder));
}

bool RunScriptAndWait(const std::string& folder, ScriptStyle style) {
    const ScriptLaunch launch = LaunchForScript(style);
    std::string command;
    if (style == ScriptStyle::Batch) {
        command = "cd /d \"" + folder + "\" && " + launch.Program;
        for (const std::string& argument : launch.Arguments) {
            command += " " + argument;
        }
        // cmd.exe takes the first and the last quote of the line away.
        command = "\"" + command + "\"";
    } else {
        command = "cd " + ShellQuote(Cp1252ToUtf8(folder)) + " && " + launch.Program;
        for (const std::string& argument : launch.Arguments) {
            command += " " + ShellQuote(argument);
        }
    }
    return std::system(command.c_str()) != -1;
}

std::vector<std::string> ReadLines(const std::string& path) {
    std::vector<std::string> lines;
    std::ifstream in(PathOf(path), std::ios::binary);
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(std::move(line));
        line.clear();
    }
    return lines;
}

std::optional<int> MarkerExitStatus(const std::string& markerPath) {
    std::vector<std::string> lines = ReadLines(markerPath);
    if (lines.empty()) {
        return std::nullopt;
    }
    std::string_view text = lines.front();
    const std::string_view word = "Fertig";
    if (text.substr(0, word.size()) != word) {
        return std::nullopt;
    }
    text.remove_prefix(word.size());
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    int status = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), status);
    if (ec != std::errc() || end == text.data()) {
        return std::nullopt;
    }
    return status;
}

bool MarkerWritten(const std::string& markerPath) {
    std::ifstream in(PathOf(markerPath), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    return !text.empty() && text.back() == '\n';
}

LogKind ClassifyLogLine(std::string_view line) {
    if (HasWord(line, "error")) {
        return LogKind::Error;
    }
    if (HasWord(line, "warning")) {
        return LogKind::Warning;
    }
    return LogKind::Plain;
}

ClassifiedLog ClassifyLog(std::vector<std::string> lines) {
    ClassifiedLog log;
    bool afterBanner = false;
    for (std::string& text : lines) {
        LogKind kind = ClassifyLogLine(text);
        if (afterBanner && !IsBlank(text)) {
            // The reason of the banner above: counted with it.
            afterBanner = false;
            kind = LogKind::Error;
        } else if (kind == LogKind::Error) {
            ++log.Errors;
            afterBanner = IsErrorBanner(text);
        } else if (kind == LogKind::Warning) {
            ++log.Warnings;
        }
        log.Lines.push_back({std::move(text), kind});
    }
    return log;
}

std::string ScriptFolderOf(const std::string& qcFile) {
    std::error_code ec;
    const fs::path full = fs::absolute(PathOf(qcFile), ec);
    return ec ? paths::FolderOf(qcFile) : paths::FromFsPath(full.parent_path());
}

std::string ModelFileOf(const std::string& modelName, const std::string& qcFile) {
    std::string name = modelName.empty() ? std::string(paths::FileNameOf(qcFile)) : modelName;
    // The compiler cuts at the last dot unless a folder follows it, and
    // never at the very first character.
    const std::size_t fileStart = name.size() - paths::FileNameOf(name).size();
    const std::size_t dot = name.rfind('.');
    if (dot != std::string::npos && dot >= fileStart && dot > 0) {
        name.erase(dot);
    }
    name += ".mdl";
    return paths::IsAbsolute(name) ? name : paths::Join(ScriptFolderOf(qcFile), name);
}

FileStamp StampOf(const std::string& path) {
    FileStamp stamp;
    if (path.empty()) {
        return stamp;
    }
    const std::optional<std::string> resolved = paths::Resolve(path);
    if (!resolved) {
        return stamp;
    }
    std::error_code ec;
    const fs::path p = PathOf(*resolved);
    if (!fs::is_regular_file(p, ec)) {
        return stamp;
    }
    stamp.Exists = true;
    stamp.Size = fs::file_size(p, ec);
    stamp.WriteTime = fs::last_write_time(p, ec).time_since_epoch().count();
    return stamp;
}

ModelChange CompareStamps(const FileStamp& before, const FileStamp& after) {
    if (!after.Exists) {
        return ModelChange::NotWritten;
    }
    if (!before.Exists) {
        return ModelChange::Created;
    }
    return before == after ? ModelChange::Unchanged : ModelChange::Rewritten;
}

bool FailedInSilence(const RunOutcome& o) {
    return o.End == RunEnd::Finished && o.LogErrors == 0 &&
           (o.Model == ModelChange::NotWritten || o.Model == ModelChange::Unchanged);
}

int ErrorTotal(const RunOutcome& o) {
    const bool runFailed = o.End == RunEnd::NotStarted || o.End == RunEnd::Cancelled ||
                           o.End == RunEnd::TimedOut || o.End == RunEnd::ScriptEnded ||
                           FailedInSilence(o);
    return o.CheckErrors + o.LogErrors + (runFailed ? 1 : 0);
}

std::string DescribeOutcome(const RunOutcome& o) {
    if (o.End == RunEnd::NotRun) {
        return "Not compiled: the checks found " + Plural(o.CheckErrors, "error") + ".";
    }
    if (o.End == RunEnd::NotStarted) {
        return "Not compiled: the compile script could not be started.";
    }
    const std::string seconds = Num(std::llround(o.Seconds)) + " s";
    std::string text;
    switch (o.End) {
    case RunEnd::Finished:
        if (!o.ExitStatus) {
            text = "Compiler finished (exit status not reported)";
        } else if (*o.ExitStatus == 126 || *o.ExitStatus == 127) {
            text = "Compiler could not be run (exit status " + Num(*o.ExitStatus) + ")";
        } else {
            text = "Compiler finished with exit status " + Num(*o.ExitStatus);
        }
        break;
    case RunEnd::Cancelled:
        text = "Compile cancelled after " + seconds;
        break;
    case RunEnd::TimedOut:
        text = "Compile stopped: no result after " + seconds;
        break;
    default:
        text = "The compile script ended without leaving its marker";
        break;
    }
    text += "; log: " + Plural(o.LogErrors, "error") + ", " + Plural(o.LogWarnings, "warning");
    switch (o.Model) {
    case ModelChange::Created:
        text += "; model written: " + o.ModelPath;
        break;
    case ModelChange::Rewritten:
        text += "; model rewritten: " + o.ModelPath;
        break;
    case ModelChange::Unchanged:
        text += "; model not changed: " + o.ModelPath;
        break;
    case ModelChange::NotWritten:
        text += "; no model written";
        break;
    }
    return text + ".";
}

} // namespace quarle::compile
