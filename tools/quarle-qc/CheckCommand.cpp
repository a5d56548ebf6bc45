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
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string>

#ifdef _WIN32
#include <windows.h>
#endif

#include "Commands.h"
#include "LoadScript.h"
#include "compile/CheckModelData.h"
#include "document/Paths.h"
#include "localisation/GlobalStrings.h"
#include "localisation/LanguageFile.h"
#include "localisation/MessageTexts.h"

namespace quarle::qc {

namespace {

namespace fs = std::filesystem;

class StderrLanguageHost : public LanguageHost {
public:
    explicit StderrLanguageHost(std::string file) : file_(std::move(file)) {}
    void IncompleteWarning() override { Warn(IncompleteWarningText); }
    void OutdatedWarning() override { Warn(OutdatedWarningText); }

private:
    void Warn(std::string_view text) {
        std::fprintf(stderr, "quarle-qc: %s: %.*s\n", file_.c_str(), static_cast<int>(text.size()),
                     text.data());
    }
    std::string file_;
};

// The folder of this executable; empty when the host cannot tell.
fs::path ProgramFolder() {
    std::error_code ec;
#ifdef _WIN32
    wchar_t buffer[MAX_PATH * 4];
    const DWORD n = GetModuleFileNameW(nullptr, buffer, static_cast<DWORD>(std::size(buffer)));
    if (n == 0 || n >= std::size(buffer)) {
        return {};
    }
    return fs::path(std::wstring(buffer, n)).parent_path();
#else
    const fs::path self = fs::read_symlink("/proc/self/exe", ec);
    return ec ? fs::path() : self.parent_path();
#endif
}

int Usage() {
    std::fprintf(stderr, "usage: quarle-qc check IN.qc [--language FILE] [--studiomdl PATH]\n");
    return 2;
}

} // namespace

int RunCheck(const Args& args) {
    std::string in;
    std::string language;
    std::optional<std::string> studioMdl;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--language" && i + 1 < args.size()) {
            language = args[++i];
        } else if (arg == "--studiomdl" && i + 1 < args.size()) {
            studioMdl = args[++i];
        } else if (arg.starts_with("--") || !in.empty()) {
            return Usage();
        } else {
            in = arg;
        }
    }
    if (in.empty()) {
        return Usage();
    }

    // Texts: a file named on the command line must be there; without one,
    // english.lng beside the program, and the keys themselves when it is gone.
    compile::IdsTextTable texts{};
    MessageTexts messages = DefaultMessageTexts();
    const bool named = !language.empty();
    const fs::path languageFile =
        named ? paths::ToFsPath(language) : ProgramFolder() / "english.lng";
    const auto lines = ReadLanguageLines(languageFile);
    if (lines) {
        StderrLanguageHost host(languageFile.string());
        ReadGlobalStrings(*lines, texts, host);
        ReadMessageTexts(*lines, messages);
    } else if (named) {
        std::fprintf(stderr, "quarle-qc: cannot read the language file %s\n", language.c_str());
        return 2;
    } else {
        std::fprintf(stderr, "quarle-qc: %s not found; rows show the keys of their texts\n",
                     languageFile.string().c_str());
        for (std::size_t i = 0; i < texts.size(); ++i) {
            texts[i] = IdsKeyTable[i];
        }
    }

    const LoadedScript loaded = LoadScript(in, Missing::Keep, &texts);
    if (loaded.Status != 0) {
        return 2;
    }

    compile::CheckInput input;
    input.StudioMdlPath = studioMdl ? &*studioMdl : nullptr;
    input.AnimationRows = loaded.AnimationRows;
    input.Texts = &texts;
    input.AppendIdleLine = false;
    input.Messages = &messages;
    const compile::CheckResult result = compile::CheckModelData(*loaded.Doc, input);
    for (const compile::CheckRow& row : result.Rows) {
        const char* kind = row.Kind == compile::RowKind::Error     ? "error: "
                           : row.Kind == compile::RowKind::Warning ? "warning: "
                                                                   : "";
        std::printf("%s%s\n", kind, row.Text.c_str());
    }
    return result.ErrorCount > 0 ? 1 : 0;
}

} // namespace quarle::qc
