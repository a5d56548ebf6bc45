// The writers of language files: the rewrite that saves one entry of the
// language editor, and the copy that starts a new language. Both take the
// active file's bytes and give the new file's bytes (cp1252, CR LF after
// every line); writing them safely is the caller's business.
#pragma once

#include "localisation/LanguageFile.h"
#include "localisation/MessageTexts.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarle {

enum class EditMode {
    Controls, // a form's caption and its controls' captions and tool tips
    Strings,  // the global strings
};

// The entry being saved, with its texts in UTF-8.
struct LngEdit {
    std::string Item; // "Titel", a control's Name, or an IDS_ key
    int Index = -1;   // the control's index in its array, -1 for none
    std::string NewCaption;
    std::string NewTooltip;
    // Control entries take two lines, caption and tool tip; "Titel" one.
    bool WithTooltip = true;

    // Item, with "(Index)" behind it for a member of a control array.
    std::string Key() const;
};

// Rewrites the file for one saved entry. The new file starts with the
// program's "Version" line; the old "Version" lines of the head are dropped.
// Controls mode: every entry of the key in the section of formName is
// replaced (a key is what stands left of the "=", minus the blank in front
// of it, compared without case); an entry not in the section is added at its
// end; a missing section is made, ahead of "Global Strings", with an empty
// line and the separator behind it. A line that starts with "=" ends the
// section, as it does for the reader. Strings mode: the block of global
// strings is written anew from names and texts, with the edited text stored
// in texts first (index 0 has no line, so an edit of it is dropped); the
// block is appended with a separator when the file has none. Every other
// line is copied as it stands.
std::string SaveEntry(std::string_view bytes, EditMode mode, std::string_view formName,
                      const LngEdit& edit, const std::array<std::string, IdsKeyTable.size()>& names,
                      std::array<std::string, IdsKeyTable.size()>& texts,
                      std::string_view version = ProgramVersion);

// Rewrites the file for one saved message text, as SaveEntry does: the
// program's "Version" line first, then the file with every entry of the
// message's key in the "Quarle Messages" section (looked for ahead of
// "Global Strings", keys compared without case) replaced, or the entry
// added at the end of the section. A file without the section gets one
// ahead of "Global Strings" (or at its end), with an empty line and the
// separator behind it. The text is stored in texts as a reader of the new
// file takes it: an empty text keeps the English default.
std::string SaveMessage(std::string_view bytes, Msg id, std::string_view text, MessageTexts& texts,
                        std::string_view version = ProgramVersion);

// A new language from the active one: "InfoForThis = " and the description
// (a line break in it makes further header lines), "Version = " and the
// version, then every line of the active file but those starting with
// "INFOFORTHIS" or "VERSION" in any case.
std::string NewLanguage(std::string_view activeBytes, std::string_view description,
                        std::string_view version = ProgramVersion);

// The file name a language name gives: blanks removed, ".lng" behind.
std::string LanguageFileName(std::string_view language);

} // namespace quarle

namespace quarle {

// What the settings dialog shows of a language file's header. The file is
// read in fields (a line up to its end or its first comma, leading blanks
// dropped, a field that starts with a double quote running to the next one)
// until the first field with "InfoForThis =": its text from the second
// character behind it is the description, cut at a comma by the fields. A
// field with "Version =" ahead of it gives the version.
struct LanguageHeader {
    std::optional<std::string> Info;
    std::optional<std::string> Version;
};
LanguageHeader ReadLanguageHeader(const std::vector<std::string>& lines);

} // namespace quarle
