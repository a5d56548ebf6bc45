// The language-file reader and both writers over any file. A rewrite for a
// key the file does not hold must keep every line but the old "Version"
// lines, in order.
#include "localisation/LanguageEdit.h"
#include "localisation/LanguageFile.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

struct SilentHost : quarle::LanguageHost {
    void IncompleteWarning() override {}
    void OutdatedWarning() override {}
};

struct NullTarget : quarle::SectionTarget {
    void SetTitle(const std::string&) override {}
    void SetCaption(std::size_t, const std::string&) override {}
    void SetToolTip(std::size_t, const std::string&) override {}
};

bool KeptInOrder(const std::vector<std::string>& before, const std::vector<std::string>& after) {
    std::size_t at = 0;
    for (const std::string& line : before) {
        if (line.rfind("Version", 0) == 0) {
            continue;
        }
        while (at < after.size() && after[at] != line) {
            ++at;
        }
        if (at == after.size()) {
            return false;
        }
        ++at;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string> lines = quarle::SplitLines(bytes);

    std::array<std::string, quarle::IdsKeyTable.size()> names{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        names[i] = quarle::IdsKeyTable[i];
    }
    std::array<std::string, quarle::IdsKeyTable.size()> texts{};
    SilentHost host;
    quarle::ReadGlobalStrings(lines, texts, host);
    const std::vector<quarle::FormControl> controls = {
        {"CmdAdd", -1}, {"OptModes", 0}, {"OptModes", 1}, {"MnuDateiLast1", -1}};
    NullTarget target;
    quarle::ApplySection(lines, "FrmMain", controls, {"a", "b", "c", "d"}, target);
    quarle::ParseLanguageFile(lines);

    const quarle::LngEdit absent{"QzFuzzKey", 3, "caption", "tip", true};
    const bool keyInFile = std::any_of(lines.begin(), lines.end(), [](const std::string& line) {
        std::string upper = line;
        std::transform(upper.begin(), upper.end(), upper.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
        return upper.find("QZFUZZKEY") != std::string::npos;
    });
    for (const char* form : {"FrmMain", "DlgSettings"}) {
        const std::string saved =
            quarle::SaveEntry(bytes, quarle::EditMode::Controls, form, absent, names, texts);
        if (!keyInFile && !KeptInOrder(lines, quarle::SplitLines(saved))) {
            std::abort();
        }
    }
    const quarle::LngEdit title{"Titel", -1, "caption", "", false};
    quarle::SaveEntry(bytes, quarle::EditMode::Controls, "FrmMain", title, names, texts);
    const quarle::LngEdit text{"IDS_VERSION", -1, "Version", "", false};
    quarle::SaveEntry(bytes, quarle::EditMode::Strings, "", text, names, texts);
    quarle::NewLanguage(bytes, "Fuzz, a language\nsecond line");
    return 0;
}
