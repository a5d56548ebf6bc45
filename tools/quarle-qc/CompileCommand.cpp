// compile IN.qc [--compiler PATH] [--ignore-checks] [--language FILE]: the
// compile dialog's road without the dialog. Loads IN as check does and runs
// the checks ahead of a compile; an error ends the run there unless
// --ignore-checks is given. Then the compiler (PATH, else "studiomdl" on the
// search path) runs on the script as it is on disk, in the script's folder,
// through the dialog's compile script in a temporary folder. The script is
// never rewritten: a model without animations gets no idle line.
//
// Prints the rows the dialog lists, one a line: those of the checks, the
// compiler's log lines (each behind "error: " or "warning: " as the dialog
// marks it), the closing row with its count of errors, and the status line.
//
// Exit status: 0 when the compiler wrote the model, 1 when it did not or the
// checks stopped it, 2 for a usage error or a script or language file that
// cannot be read.
#include "Commands.h"
#include "DialogRows.h"
#include "LoadScript.h"
#include "compile/CheckModelData.h"
#include "compile/CompileRun.h"
#include "document/Paths.h"
#include "localisation/GlobalStrings.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace quarle::qc {

namespace {

namespace fs = std::filesystem;

int Usage() {
    std::fprintf(stderr, "usage: quarle-qc compile IN.qc [--compiler PATH] [--ignore-checks] "
                         "[--language FILE]\n");
    return 2;
}

// The compiler on the search path, by its full path; the bare name when it
// is not there (the checks then say that it cannot be found).
std::string CompilerOnSearchPath() {
#ifdef _WIN32
    const std::string name = "studiomdl.exe";
    const char separator = ';';
#else
    const std::string name = "studiomdl";
    const char separator = ':';
#endif
    const char* variable = std::getenv("PATH");
    const std::string path = variable != nullptr ? variable : "";
    for (std::size_t start = 0; start <= path.size();) {
        std::size_t end = path.find(separator, start);
        if (end == std::string::npos) {
            end = path.size();
        }
        const std::string folder = path.substr(start, end - start);
        start = end + 1;
        if (folder.empty()) {
            continue;
        }
        const fs::path candidate = fs::path(folder) / name;
        std::error_code ec;
        if (!fs::is_regular_file(candidate, ec)) {
            continue;
        }
#ifndef _WIN32
        if (::access(candidate.c_str(), X_OK) != 0) {
            continue;
        }
#endif
        return paths::FromFsPath(candidate);
    }
    return name;
}

} // namespace

int RunCompile(const Args& args) {
    std::optional<std::string> language;
    std::optional<std::string> compiler;
    bool ignoreChecks = false;
    const std::optional<std::string> script =
        ScriptAndOptions(args, {{"--language", &language},
                                {"--compiler", &compiler},
                                {"--ignore-checks", nullptr, &ignoreChecks}});
    if (!script || script->empty()) {
        return Usage();
    }
    const std::string& in = *script;

    compile::IdsTextTable texts{};
    MessageTexts messages = DefaultMessageTexts();
    if (!LoadTexts(language.value_or(""), texts, messages)) {
        return 2;
    }
    const std::string studioMdl = compiler ? *compiler : CompilerOnSearchPath();

    // Folders and the model the script names relative to its own folder are
    // then read as the compiler, running there, reads them.
    std::error_code ec;
    const fs::path full = fs::absolute(paths::ToFsPath(in), ec);
    const LoadedScript loaded =
        LoadScript(ec ? in : paths::FromFsPath(full), Missing::Keep, &texts);
    if (loaded.Status != 0) {
        return 2;
    }
    const Document& doc = *loaded.Doc;

    const compile::CheckResult checks = PrintChecks(loaded, &studioMdl, texts, messages);

    compile::RunOutcome outcome;
    outcome.CheckErrors = checks.ErrorCount;
    if (checks.ErrorCount > 0 && !ignoreChecks) {
        PrintRow(texts[IDS_CANTCOMPILE], compile::RowKind::Info);
    } else {
        PrintRow(texts[IDS_COMPILEMODEL], compile::RowKind::Info);
        const WorkFolder work;
        compile::CompileRun run({work.Path(), studioMdl, doc.QcFile, doc.ModelName}, messages);
        run.SetCheckErrors(checks.ErrorCount);
        if (work.Path().empty()) {
            run.NotStarted("no temporary folder for the compile script");
        } else if (run.Prepare()) {
            const auto start = std::chrono::steady_clock::now();
            std::fflush(stdout);
            if (!compile::RunScriptAndWait(work.Path(), compile::HostScriptStyle())) {
                run.NotStarted("no shell to run it");
            } else {
                const std::chrono::duration<double> seconds =
                    std::chrono::steady_clock::now() - start;
                run.Finish(paths::FileExists(run.MarkerPath()) ? compile::RunEnd::Finished
                                                               : compile::RunEnd::ScriptEnded,
                           seconds.count());
            }
        }
        for (const compile::RunRow& row : run.TakeRows()) {
            PrintRow(row.Text, row.Kind);
        }
        outcome = run.Outcome();
    }
    PrintRow(texts[IDS_DONE] + " (" + std::to_string(compile::ErrorTotal(outcome)) + " " +
                 texts[IDS_ERRORS] + ")",
             compile::RowKind::Info);
    std::printf("%s\n", compile::DescribeOutcome(outcome).c_str());
    const bool written = outcome.Model == compile::ModelChange::Created ||
                         outcome.Model == compile::ModelChange::Rewritten;
    return std::fflush(stdout) == 0 && written ? 0 : 1;
}

} // namespace quarle::qc
