#include "DialogRows.h"

#include "document/Paths.h"
#include "localisation/GlobalStrings.h"
#include "localisation/LanguageFile.h"

#include <cstdio>
#include <filesystem>
#include <iterator>

#ifdef _WIN32
#include <windows.h>
#endif

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

} // namespace

bool LoadTexts(const std::string& language, compile::IdsTextTable& texts, MessageTexts& messages) {
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
        return false;
    } else {
        std::fprintf(stderr, "quarle-qc: %s not found; rows show the keys of their texts\n",
                     languageFile.string().c_str());
        for (std::size_t i = 0; i < texts.size(); ++i) {
            texts[i] = IdsKeyTable[i];
        }
    }
    return true;
}

void PrintRow(const std::string& text, compile::RowKind kind) {
    const char* prefix = kind == compile::RowKind::Error     ? "error: "
                         : kind == compile::RowKind::Warning ? "warning: "
                                                             : "";
    std::printf("%s%s\n", prefix, text.c_str());
}

compile::CheckResult PrintChecks(const LoadedScript& loaded, const std::string* studioMdl,
                                 const compile::IdsTextTable& texts, const MessageTexts& messages) {
    compile::CheckInput input;
    input.StudioMdlPath = studioMdl;
    input.AnimationRows = loaded.AnimationRows;
    input.Texts = &texts;
    input.AppendIdleLine = false;
    input.Messages = &messages;
    compile::CheckResult result = compile::CheckModelData(*loaded.Doc, input);
    for (const compile::CheckRow& row : result.Rows) {
        PrintRow(row.Text, row.Kind);
    }
    return result;
}

} // namespace quarle::qc
