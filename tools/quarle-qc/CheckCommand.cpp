// check IN.qc [--language FILE] [--studiomdl PATH]: loads IN as the editor's
// open command does, keeping every folder and part that cannot be found as
// the script wrote it, and runs the checks ahead of a compile. Prints their
// rows as the compile dialog lists them, one a line, each behind "error: "
// or "warning: " (the compiler's path under its error row stands indented
// on a line of its own), in the texts of english.lng beside this program (or
// of FILE). The compiler is looked at
// only when PATH is given. The script itself is not changed: a model without
// animations shows its warning, but no idle line is appended.
//
// Exit status: 1 when the checks found an error, 0 when not, 2 for a usage
// error or a script or language file that cannot be read.
#include "Commands.h"
#include "DialogRows.h"
#include "LoadScript.h"
#include "compile/CheckModelData.h"

#include <cstdio>
#include <optional>
#include <string>

namespace quarle::qc {

namespace {

int Usage() {
    std::fprintf(stderr, "usage: quarle-qc check IN.qc [--language FILE] [--studiomdl PATH]\n");
    return 2;
}

} // namespace

int RunCheck(const Args& args) {
    std::optional<std::string> language;
    std::optional<std::string> studioMdl;
    const std::optional<std::string> script =
        ScriptAndOptions(args, {{"--language", &language}, {"--studiomdl", &studioMdl}});
    if (!script || script->empty()) {
        return Usage();
    }
    const std::string& in = *script;

    compile::IdsTextTable texts{};
    MessageTexts messages = DefaultMessageTexts();
    if (!LoadTexts(language.value_or(""), texts, messages)) {
        return 2;
    }

    const LoadedScript loaded = LoadScript(in, Missing::Keep, &texts);
    if (loaded.Status != 0) {
        return 2;
    }

    const compile::CheckResult result =
        PrintChecks(loaded, studioMdl ? &*studioMdl : nullptr, texts, messages);
    return result.ErrorCount > 0 ? 1 : 0;
}

} // namespace quarle::qc
