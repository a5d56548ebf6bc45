// The working files of a compile: the two-line script that runs the
// compiler and leaves the marker, the compiler's log, the marker itself, and
// what is read back from them afterwards. All of them stand in one working
// folder, passed in by the caller.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarle::compile {

inline constexpr const char* LogFileName = "compile.log";
inline constexpr const char* MarkerFileName = "fert.dat";

// Batch: compile.bat for the Windows command interpreter, CR LF.
// Posix: compile.sh for /bin/sh, LF; every path in single quotes.
enum class ScriptStyle { Batch, Posix };

ScriptStyle HostScriptStyle();
const char* ScriptFileName(ScriptStyle style);

// A text as one word of a POSIX shell line: in single quotes, a quote inside
// written as '\''. Nothing in it is expanded or run.
std::string ShellQuote(std::string_view text);

// True when the program is a Windows executable (ends in ".exe", any case),
// which a non-Windows host runs through wine.
bool IsWindowsExecutable(std::string_view program);

// The two lines: the compiler on the script with its output appended to the
// log, then the marker. In a batch the compiler's path stands bare and the
// script's path in double quotes (a '%' doubled so the interpreter leaves it
// alone). In a POSIX script both are quoted, a Windows compiler runs through
// wine, and the marker also carries the compiler's exit status.
std::string CompileScriptText(ScriptStyle style, std::string_view studioMdlPath,
                              std::string_view qcFile);

// How the script is started: the program and its arguments, run in the
// working folder, no shell in between.
struct ScriptLaunch {
    std::string Program;
    std::vector<std::string> Arguments;
};
ScriptLaunch LaunchForScript(ScriptStyle style);

// Writes bytes to path through a temporary file in the same folder, renamed
// over the target. "" on success, else what went wrong.
std::string WriteFileReplacing(const std::string& path, std::string_view bytes);

// Appends line and CR LF to the file at path, through a temporary file in
// the same folder renamed over it. A file that does not end in a line end
// gets one first, so the line stands on its own. "" on success, else what
// went wrong.
std::string AppendScriptLine(const std::string& path, const std::string& line);

// Deletes the log and the marker of an earlier run. "" on success, else what
// could not be deleted.
std::string DeleteRunFiles(const std::string& folder);

// Writes the script into the folder. "" on success, else what went wrong.
std::string WriteCompileScript(const std::string& folder, ScriptStyle style,
                               std::string_view studioMdlPath, std::string_view qcFile);

// The lines of a text file, CR LF or LF, without their line ends. A file
// that cannot be read gives no lines.
std::vector<std::string> ReadLines(const std::string& path);

// The exit status the marker carries ("Fertig 3"), if it carries one.
std::optional<int> MarkerExitStatus(const std::string& markerPath);

// How a line of the compiler's log reads: plain, a warning or an error.
enum class LogKind { Plain, Warning, Error };
LogKind ClassifyLogLine(std::string_view line);

// The state of a file on disk, to tell whether a compile wrote the model.
struct FileStamp {
    bool Exists = false;
    std::uintmax_t Size = 0;
    std::int64_t WriteTime = 0; // file clock ticks

    bool operator==(const FileStamp&) const = default;
};
FileStamp StampOf(const std::string& path);

enum class ModelChange { NotWritten, Created, Rewritten, Unchanged };
// Before and after the run: no file afterwards is NotWritten; a file that
// was not there before is Created; a file whose stamp moved is Rewritten.
ModelChange CompareStamps(const FileStamp& before, const FileStamp& after);

// How a run ended.
enum class RunEnd { Finished, Cancelled, TimedOut, ScriptEnded, NotStarted, NotRun };

struct RunOutcome {
    RunEnd End = RunEnd::NotRun;
    int CheckErrors = 0;
    std::optional<int> ExitStatus; // the compiler's, where the host tells it
    ModelChange Model = ModelChange::NotWritten;
    std::string ModelPath;
    int LogErrors = 0;
    int LogWarnings = 0;
    double Seconds = 0;
};

// One line for the dialog's status bar: what the compiler itself did.
std::string DescribeOutcome(const RunOutcome& outcome);

} // namespace quarle::compile
