#include "compile/CompileRun.h"

#include "document/Paths.h"
#include "localisation/Cp1252.h"

namespace quarle::compile {

CompileRun::CompileRun(CompileJob job, const MessageTexts& texts, ScriptStyle style)
    : job_(std::move(job)), texts_(texts), style_(style) {
    // The compiler runs in another folder than this process: it must be
    // handed the script by its full path.
    job_.QcFile = paths::Join(ScriptFolderOf(job_.QcFile), paths::FileNameOf(job_.QcFile));
    outcome_.ModelPath = ModelFileOf(job_.ModelName, job_.QcFile);
}

std::string CompileRun::MarkerPath() const {
    return paths::Join(job_.WorkFolder, MarkerFileName);
}

void CompileRun::Row(Msg key, const std::vector<std::string>& args) {
    rows_.push_back({FormatMessage(texts_[static_cast<std::size_t>(key)], args), RowKind::Error});
}

bool CompileRun::Prepare() {
    // A marker left from an earlier run would end the wait at once; a log
    // that stays only gets this run's lines appended.
    const std::string deleteFailure = DeleteRunFiles(job_.WorkFolder);
    if (!deleteFailure.empty() && paths::FileExists(MarkerPath())) {
        Row(MSG_COMPILE_CANNOT_START, {Cp1252ToUtf8(deleteFailure)});
        outcome_.End = RunEnd::NotStarted;
        return false;
    }
    const std::string writeFailure =
        WriteCompileScript(job_.WorkFolder, style_, job_.StudioMdlPath, job_.QcFile);
    if (!writeFailure.empty()) {
        Row(MSG_SCRIPT_NOT_WRITTEN,
            {ScriptFileName(style_), Cp1252ToUtf8(job_.WorkFolder), Cp1252ToUtf8(writeFailure)});
        outcome_.End = RunEnd::NotStarted;
        return false;
    }
    before_ = StampOf(outcome_.ModelPath);
    return true;
}

void CompileRun::NotStarted(const std::string& reason) {
    Row(MSG_SCRIPT_NOT_STARTED, {ScriptFileName(style_), reason});
    outcome_.End = RunEnd::NotStarted;
}

void CompileRun::Finish(RunEnd end, double seconds) {
    outcome_.End = end;
    outcome_.Seconds = seconds;
    if (end == RunEnd::Finished) {
        outcome_.ExitStatus = MarkerExitStatus(MarkerPath());
    }
    ClassifiedLog log = ClassifyLog(ReadLines(paths::Join(job_.WorkFolder, LogFileName)));
    outcome_.LogErrors = log.Errors;
    outcome_.LogWarnings = log.Warnings;
    for (LogLine& line : log.Lines) {
        const RowKind kind = line.Kind == LogKind::Error     ? RowKind::Error
                             : line.Kind == LogKind::Warning ? RowKind::Warning
                                                             : RowKind::Info;
        rows_.push_back({std::move(line.Text), kind, true});
    }
    outcome_.Model = CompareStamps(before_, StampOf(outcome_.ModelPath));
    if (end == RunEnd::ScriptEnded) {
        Row(MSG_SCRIPT_NO_MARKER, {ScriptFileName(style_), MarkerFileName});
    } else if (FailedInSilence(outcome_)) {
        Row(MSG_COMPILE_NO_MODEL, {Cp1252ToUtf8(outcome_.ModelPath)});
    }
}

std::vector<RunRow> CompileRun::TakeRows() {
    std::vector<RunRow> rows;
    rows.swap(rows_);
    return rows;
}

} // namespace quarle::compile
