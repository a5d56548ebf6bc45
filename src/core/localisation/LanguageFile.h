// Language files (.lng): captions and tool tips of the forms, and the texts
// of the global strings.
//
// A file is plain cp1252 text, one entry a line: a key, "=", a value, with
// blanks around both removed. A header ("Version = 0.8.4", "InfoForThis =
// ...") comes first, then one section per form (a line with the form's name,
// then "Titel" and two lines per control, caption and tool tip), then the line
// "Global Strings", a count line and the 93 texts in the order of the key
// table. Everything here works on the file's lines after conversion to UTF-8.
#pragma once

#include "document/InputFile.h"
#include "localisation/GlobalStrings.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarle {

// The program's version as language files name it: major.minor.revision.
inline constexpr std::string_view ProgramVersion = "0.8.4";

// Lines of the "Global Strings" block after its count line; index 0 has none.
inline constexpr int GlobalStringCount = 93;
inline constexpr std::string_view GlobalStringsLine = "Global Strings";
inline constexpr std::string_view SeparatorLine = "----------------------";
inline constexpr std::string_view TitleKey = "Titel";
inline constexpr std::string_view NotAvailable = "<not available>";
inline constexpr std::string_view DefaultLanguageFile = "deutsch.lng";
inline constexpr std::string_view EnglishLanguageFile = "english.lng";

// The language of a first start, while the settings name none: German for a
// locale or UI language that begins with "de" ("de", "de_DE.UTF-8",
// "de-AT"), English for any other, and for none at all.
constexpr std::string_view FirstStartLanguage(std::string_view locale) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; };
    const auto letter = [&](char c) { return lower(c) >= 'a' && lower(c) <= 'z'; };
    const bool german = locale.size() >= 2 && lower(locale[0]) == 'd' && lower(locale[1]) == 'e' &&
                        (locale.size() == 2 || !letter(locale[2]));
    return german ? DefaultLanguageFile : EnglishLanguageFile;
}

// The reader's two warnings. They are fixed English and never translated.
inline constexpr std::string_view IncompleteWarningText = "WARNING: Incomplete Languagefile.";
inline constexpr std::string_view IncompleteWarningTitle = "Incomplete languagefile";
inline constexpr std::string_view OutdatedWarningText = "WARNING: Outdated Languagefile.";
inline constexpr std::string_view OutdatedWarningTitle = "Outdated languagefile";

struct LngEntry {
    std::string Key;
    std::string Value;

    bool operator==(const LngEntry&) const = default;
};

// Splits a line at its first "=" and trims blanks (spaces only) from key and
// value; further "=" belong to the value. nullopt when the line has no "=".
std::optional<LngEntry> SplitEntry(std::string_view line);

// True for a line that continues a form section: it holds a "=" and does not
// start with it.
bool IsSectionEntry(std::string_view line);

// The lines of a file's bytes, converted from cp1252. CR LF, LF and a lone CR
// each end a line; a line end at the very end of the file adds no empty line.
std::vector<std::string> SplitLines(std::string_view bytes);

// The lines of a file, or nullopt with problem filled when it is refused
// or cannot be read (InputFile.h).
std::optional<std::vector<std::string>> ReadLanguageLines(const std::filesystem::path& file,
                                                          OpenProblem* problem = nullptr);

// How the reader reaches the user.
class LanguageHost {
public:
    virtual ~LanguageHost() = default;
    virtual void IncompleteWarning() = 0;
    virtual void OutdatedWarning() = 0;
};

// The global part of the reader. Checks every "Version" line ahead of
// "Global Strings" against version (Outdated warning for each that differs,
// and once when there is none), skips the count line and stores the values of
// up to 93 entry lines in texts[1..93]; texts not reached keep what they hold.
// Returns false when the file ends before "Global Strings": the caller must
// then stop without applying any form section.
bool ReadGlobalStrings(const std::vector<std::string>& lines,
                       std::array<std::string, IdsKeyTable.size()>& texts, LanguageHost& host,
                       std::string_view version = ProgramVersion);

// A control as a section names it: "Name", or "Name(Index)" for a member of a
// control array.
struct FormControl {
    std::string Name;
    int Index = -1; // -1: not in a control array

    std::string Key() const;
};

// Where a section's values go. Control numbers are positions in the list of
// controls handed to ApplySection.
class SectionTarget {
public:
    virtual ~SectionTarget() = default;
    virtual void SetTitle(const std::string& text) = 0;
    virtual void SetCaption(std::size_t control, const std::string& text) = 0;
    virtual void SetToolTip(std::size_t control, const std::string& text) = 0;
};

// Applies the section of formName (its head line compared with case) to the
// controls, given in creation order. Keys match the first control whose key
// is equal ignoring case; "Titel" (with case) is the form's caption. An empty
// value leaves the designed text. The recent-file menu entries MnuDateiLast1
// to MnuDateiLast4 take recentFiles[0..3] instead of the file's value and no
// tool tip line. A head or entry on the very last line of the file does not
// count, and the section ends at the first line that is no entry.
void ApplySection(const std::vector<std::string>& lines, std::string_view formName,
                  const std::vector<FormControl>& controls,
                  const std::array<std::string, 4>& recentFiles, SectionTarget& target);

// The structure of a file as far as it can be told without the forms: for
// checking files as a whole. Sections are recognised by their head lines
// (a line that is not an entry, not empty and not the separator); the
// messages section is kept apart from the forms' sections.
struct LngSection {
    std::string Name;
    std::size_t HeadLine = 0; // 0-based line number of the head
    std::vector<LngEntry> Entries;
};

struct LngContents {
    std::vector<LngEntry> Header; // entry lines ahead of the first section
    std::vector<LngSection> Sections;
    // The "Quarle Messages" section (MessageTexts.h), which is no form's.
    std::optional<LngSection> Messages;
    bool HasGlobalStrings = false;
    std::optional<LngEntry> CountLine;
    std::vector<LngEntry> Strings;     // the entry lines behind the count line, at most 93
    std::size_t LinesAfterStrings = 0; // lines behind the last string
};

LngContents ParseLanguageFile(const std::vector<std::string>& lines);

} // namespace quarle
