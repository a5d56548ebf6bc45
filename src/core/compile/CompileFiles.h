// The working files of a compile: the two-line script that runs the
// compiler and leaves the marker, the compiler's log, the marker itself, and
// what is read back from them afterwards. All of them stand in one working
// folder, passed in by the caller. The compiler itself runs in the script's
// folder, where it resolves the script's relative paths.
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

// The two lines: into the script's folder (the folder of qcFile, which the
// caller gives as a full path), and there the compiler on the script with its
// output appended to the log; then the marker. The script is started in
// workFolder, and names the log and the marker there by their full paths, as
// it has left that folder. In a batch the compiler's path stands bare and the
// other paths in double quotes (a '%' doubled so the interpreter leaves it
// alone). In a POSIX script every path is quoted, a Windows compiler runs
// through wine, and the marker also carries the compiler's exit status. A
// folder that cannot be entered leaves its reason in the log, and the
// compiler is not run.
std::string CompileScriptText(ScriptStyle style, std::string_view studioMdlPath,
                              std::string_view qcFile, std::string_view workFolder);

// How the script is started: the program and its arguments, run in the
// working folder, no shell in between.
struct ScriptLaunch {
    std::string Program;
    std::vector<std::string> Arguments;
};
ScriptLaunch LaunchForScript(ScriptStyle style);

// Starts the script in folder through the host's shell and returns when it
// has ended. False when no shell could be started.
bool RunScriptAndWait(const std::string& folder, ScriptStyle style);

// Writes bytes to path as a script is saved (a temporary file beside it,
// synced, then renamed over it; a replaced file keeps its permissions).
// "" on success, else what went wrong.
std::string WriteFileReplacing(const std::string& path, std::string_view bytes);

// Appends line and CR LF to the file at path, through a temporary file in
// the same folder renamed over it. A file that does not end in a line end
// gets one first, so the line stands on its own. "" on success, else what
// went wrong.
std::string AppendScriptLine(const std::string& path, const std::string& line);

// Deletes the log and the marker of an earlier run. "" on success, else what
// could not be deleted.
std::string DeleteRunFiles(const std::string& folder);

// Writes the script into the folder, for a run whose log and marker stand
// there. "" on success, else what went wrong.
std::string WriteCompileScript(const std::string& folder, ScriptStyle style,
                               std::string_view studioMdlPath, std::string_view qcFile);

// The lines of a text file, CR LF or LF, without their line ends. A file
// that cannot be read gives no lines.
std::vector<std::string> ReadLines(const std::string& path);

// The exit status the marker carries ("Fertig 3"), if it carries one.
std::optional<int> MarkerExitStatus(const std::string& markerPath);
// Whether the script has written its marker whole: the shell makes the file
// before the line goes in, so a marker seen at once may still be empty.
bool MarkerWritten(const std::string& markerPath);

// How a line of the compiler's log reads: plain, a warning or an error.
enum class LogKind { Plain, Warning, Error };
LogKind ClassifyLogLine(std::string_view line);

// The lines of the compiler's log with their kinds. The compiler says why it
// stops on the first line behind its banner ("**** ERROR ****"): that line
// is an error too, and the two count as one.
struct LogLine {
    std::string Text;
    LogKind Kind = LogKind::Plain;

    bool operator==(const LogLine&) const = default;
};
struct ClassifiedLog {
    std::vector<LogLine> Lines;
    int Errors = 0;
    int Warnings = 0;
};
ClassifiedLog ClassifyLog(std::vector<std::string> lines);

// The full path of the folder the script stands in: where the compiler runs.
std::string ScriptFolderOf(const std::string& qcFile);

// The model file the compiler writes for a script: the $modelname with its
// extension (from the last dot of its name) replaced by ".mdl", a relative
// name taken from the script's folder. A model without a name is named after
// the script, as the compiler names it when the script gives none.
std::string ModelFileOf(const std::string& modelName, const std::string& qcFile);

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

// Whether the compiler ended by itself and left no model without a line of
// its log saying why (it crashed, or failed in silence).
bool FailedInSilence(const RunOutcome& outcome);

// What the closing row of a compile counts: the errors of the checks, of the
// compiler's log, and one for a run that failed otherwise (not started,
// stopped, no marker, or no model without a word).
int ErrorTotal(const RunOutcome& outcome);

// One line for the dialog's status bar: what the compiler itself did.
std::string DescribeOutcome(const RunOutcome& outcome);

} // namespace quarle::compile
