#include "localisation/LanguageFile.h"

#include "document/InputFile.h"
#include "document/Paths.h"
#include "localisation/Cp1252.h"
#include "localisation/MessageTexts.h"

#include <iterator>

namespace quarle {
namespace {

std::string_view TrimBlanks(std::string_view s) {
    const auto first = s.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

std::string AsciiUpper(std::string_view s) {
    std::string out(s);
    for (char& c : out) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return out;
}

// Index 0..3 of a recent-file menu entry, by its name; -1 for any other.
int RecentFileEntry(std::string_view name) {
    const std::string upper = AsciiUpper(name);
    constexpr std::string_view Prefix = "MNUDATEILAST";
    if (upper.size() == Prefix.size() + 1 && upper.starts_with(Prefix)) {
        const char digit = upper.back();
        if (digit >= '1' && digit <= '4') {
            return digit - '1';
        }
    }
    return -1;
}

bool IsSeparator(std::string_view line) {
    const std::string_view trimmed = TrimBlanks(line);
    return trimmed.empty() || trimmed.find_first_not_of('-') == std::string_view::npos;
}

} // namespace

std::optional<LngEntry> SplitEntry(std::string_view line) {
    const auto eq = line.find('=');
    if (eq == std::string_view::npos) {
        return std::nullopt;
    }
    return LngEntry{std::string(TrimBlanks(line.substr(0, eq))),
                    std::string(TrimBlanks(line.substr(eq + 1)))};
}

bool IsSectionEntry(std::string_view line) {
    const auto eq = line.find('=');
    return eq != std::string_view::npos && eq != 0;
}

std::vector<std::string> SplitLines(std::string_view bytes) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    std::size_t i = 0;
    while (i < bytes.size()) {
        const char c = bytes[i];
        if (c == '\r' || c == '\n') {
            lines.push_back(Cp1252ToUtf8(bytes.substr(start, i - start)));
            i += (c == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ? 2 : 1;
            start = i;
        } else {
            ++i;
        }
    }
    if (start < bytes.size()) {
        lines.push_back(Cp1252ToUtf8(bytes.substr(start)));
    }
    return lines;
}

std::optional<std::vector<std::string>> ReadLanguageLines(const std::filesystem::path& file,
                                                          OpenProblem* problem) {
    InputFile in = InputFile::OpenExact(file, FileKind::Language, paths::FromFsPath(file));
    std::string bytes;
    if (!in.ReadAll(bytes)) {
        if (problem != nullptr) {
            *problem = in.Problem();
        }
        return std::nullopt;
    }
    return SplitLines(bytes);
}

bool ReadGlobalStrings(const std::vector<std::string>& lines,
                       std::array<std::string, IdsKeyTable.size()>& texts, LanguageHost& host,
                       std::string_view version) {
    const std::size_t n = lines.size();
    std::size_t i = 0;
    bool versionFound = false;
    bool reachedStrings = false;
    while (i < n) {
        const std::string_view line = lines[i++];
        if (line.starts_with("Version")) {
            // The version stands from the tenth character on: "Version = x".
            const std::string_view found = line.size() > 9 ? TrimBlanks(line.substr(9)) : "";
            if (found != version) {
                host.OutdatedWarning();
            }
            versionFound = true;
        }
        if (line == GlobalStringsLine) {
            reachedStrings = true;
            break;
        }
    }
    if (!reachedStrings) {
        host.IncompleteWarning();
        return false;
    }
    if (!versionFound) {
        host.OutdatedWarning();
    }
    if (i < n) {
        ++i; // the count line: the number of strings is fixed
    }
    for (int k = 1; k <= GlobalStringCount; ++k) {
        if (i >= n) {
            host.IncompleteWarning();
            break;
        }
        auto entry = SplitEntry(lines[i++]);
        if (!entry) {
            host.IncompleteWarning();
            break;
        }
        texts[static_cast<std::size_t>(k)] = std::move(entry->Value);
    }
    return true;
}

std::string FormControl::Key() const {
    if (Index < 0) {
        return Name;
    }
    return Name + "(" + std::to_string(Index) + ")";
}

void ApplySection(const std::vector<std::string>& lines, std::string_view formName,
                  const std::vector<FormControl>& controls,
                  const std::array<std::string, 4>& recentFiles, SectionTarget& target) {
    const std::size_t n = lines.size();
    std::size_t i = 0;

    // The head. A head on the last line has nothing behind it and counts as
    // not found.
    for (;;) {
        if (i >= n) {
            return;
        }
        const std::string& line = lines[i++];
        if (i == n) {
            return;
        }
        if (line == formName) {
            break;
        }
    }

    std::vector<std::string> upperKeys;
    upperKeys.reserve(controls.size());
    for (const FormControl& control : controls) {
        upperKeys.push_back(AsciiUpper(control.Key()));
    }

    while (i < n) {
        const std::string& line = lines[i++];
        // An entry on the last line is not applied: the section ends there.
        if (!IsSectionEntry(line) || i == n) {
            return;
        }
        const LngEntry entry = *SplitEntry(line);
        if (entry.Key == TitleKey) {
            if (!entry.Value.empty()) {
                target.SetTitle(entry.Value);
            }
            continue;
        }
        const std::string upperKey = AsciiUpper(entry.Key);
        std::size_t control = 0;
        while (control < controls.size() && upperKeys[control] != upperKey) {
            ++control;
        }
        if (control == controls.size()) {
            continue; // unknown key: skipped, and so is its tool tip line, as one more entry
        }
        if (const int recent = RecentFileEntry(controls[control].Name); recent >= 0) {
            // The entries are paths of the document's text.
            target.SetCaption(control, Cp1252ToUtf8(recentFiles[static_cast<std::size_t>(recent)]));
            continue;
        }
        if (!entry.Value.empty()) {
            target.SetCaption(control, entry.Value);
        }
        // The tool tip line; its key is not looked at. There is one, since the
        // caption line was not the last.
        const std::string& tipLine = lines[i++];
        if (!IsSectionEntry(tipLine)) {
            return;
        }
        const LngEntry tip = *SplitEntry(tipLine);
        if (!tip.Value.empty()) {
            target.SetToolTip(control, tip.Value);
        }
    }
}

LngContents ParseLanguageFile(const std::vector<std::string>& lines) {
    LngContents contents;
    LngSection* section = nullptr;
    std::size_t i = 0;
    for (; i < lines.size(); ++i) {
        const std::string& line = lines[i];
        if (line == GlobalStringsLine) {
            contents.HasGlobalStrings = true;
            ++i;
            break;
        }
        if (IsSectionEntry(line)) {
            auto entry = *SplitEntry(line);
            if (section != nullptr) {
                section->Entries.push_back(std::move(entry));
            } else if (contents.Sections.empty() && !contents.Messages) {
                contents.Header.push_back(std::move(entry));
            }
        } else if (IsSeparator(line) || line.front() == '=') {
            section = nullptr;
        } else if (line == MessagesLine) {
            contents.Messages = LngSection{line, i, {}};
            section = &*contents.Messages;
        } else {
            contents.Sections.push_back(LngSection{line, i, {}});
            section = &contents.Sections.back();
        }
    }
    if (contents.HasGlobalStrings && i < lines.size()) {
        contents.CountLine = SplitEntry(lines[i]);
        ++i;
        while (i < lines.size() && contents.Strings.size() < GlobalStringCount) {
            auto entry = SplitEntry(lines[i]);
            if (!entry) {
                break;
            }
            contents.Strings.push_back(std::move(*entry));
            ++i;
        }
    }
    contents.LinesAfterStrings = contents.HasGlobalStrings ? lines.size() - i : 0;
    return contents;
}

} // namespace quarle
