// One run of the compiler on a saved script, as the compile dialog and
// quarle-qc both take it: the working files of an earlier run go, the compile
// script is written and started (by the caller, who knows how to wait), and
// afterwards the marker, the log and the model file tell how it went. The
// rows it gives are those of the dialog's list: the log's lines, and its own
// rows where the run failed.
#pragma once

#include "compile/CheckModelData.h"
#include "compile/CompileFiles.h"
#include "localisation/MessageTexts.h"

#include <string>
#include <vector>

namespace quarle::compile {

struct CompileJob {
    // Where the compile script, the log and the marker stand.
    std::string WorkFolder;
    std::string StudioMdlPath;
    // The saved script; the compiler runs in its folder.
    std::string QcFile;
    // The document's $modelname.
    std::string ModelName;
};

// A row of the run: a line of the compiler's log (its bytes as the compiler
// wrote them) or a row of the run's own (language text).
struct RunRow {
    std::string Text;
    RowKind Kind = RowKind::Info;
    bool FromLog = false;

    bool operator==(const RunRow&) const = default;
};

class CompileRun {
public:
    CompileRun(CompileJob job, const MessageTexts& texts, ScriptStyle style = HostScriptStyle());

    // Deletes the log and the marker of an earlier run, writes the compile
    // script and notes the model file's state. False when the run cannot
    // start; its row says why, and the outcome is NotStarted.
    bool Prepare();

    // What the caller starts in the working folder, and the file whose
    // existence ends the wait.
    ScriptLaunch Launch() const { return LaunchForScript(style_); }
    std::string MarkerPath() const;
    const CompileJob& Job() const { return job_; }

    // The script could not be started: reason is the system's word for it.
    void NotStarted(const std::string& reason);

    // After the wait: how it ended and how long it took. Reads the exit
    // status from the marker, the log (classified and counted) and the model
    // file; adds the log's rows, then a row for a script that left no marker
    // and for a compiler that left no model without saying why.
    void Finish(RunEnd end, double seconds);

    // The rows added since the last call.
    std::vector<RunRow> TakeRows();

    const RunOutcome& Outcome() const { return outcome_; }
    void SetCheckErrors(int count) { outcome_.CheckErrors = count; }

private:
    void Row(Msg key, const std::vector<std::string>& args);

    CompileJob job_;
    const MessageTexts& texts_;
    ScriptStyle style_;
    FileStamp before_;
    RunOutcome outcome_;
    std::vector<RunRow> rows_;
};

} // namespace quarle::compile
