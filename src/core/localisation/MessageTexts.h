// Messages beyond the table of global strings: the refusals at the table
// limits, failed saves, the compile dialog's own rows and status line, the
// script reader's problem reports and the like. The key table of the global
// strings is fixed by the position of its lines, so these texts live in a
// section of their own in a language file, ahead of "Global Strings":
//
//     Quarle Messages
//     MSG_PARTS_FULL = Diese Bodygruppe hat schon %1 Teile ...
//     ...
//
// Keys are compared ignoring case; a key the file doesn't give keeps its
// English default, an unknown key is skipped, and the section ends like a
// form section, at the first line that is no entry. A text with variable
// parts names them %1, %2, ... in the order the code passes them.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarle {

enum Msg : int {
    // Refusals at the ends of the document's tables; %1 is the limit.
    MSG_PARTS_FULL,
    MSG_GROUPS_FULL,
    MSG_ANIMATIONS_FULL,
    // A save that failed: the first line, the script, the reassurance.
    MSG_SAVE_FAILED,
    MSG_SAVE_SCRIPT,
    MSG_SAVE_OLD_FILE_KEPT,
    // The external programs.
    MSG_VIEWER_MISSING,
    MSG_EDITOR_MISSING,
    MSG_VIEWER_NOT_STARTED,
    MSG_EDITOR_NOT_STARTED,
    MSG_CHOOSE_PROGRAM,
    // Rows of the compile dialog.
    MSG_COMPILE_CANNOT_START,
    MSG_SCRIPT_NOT_WRITTEN,
    MSG_SCRIPT_NOT_STARTED,
    MSG_COMPILE_CANCELLED,
    MSG_COMPILE_TIMED_OUT,
    MSG_SCRIPT_NO_MARKER,
    // The status line of the compile dialog: "%1; %2; %3." of the end of
    // the run, the log's counts and the model file.
    MSG_STATUS_LINE,
    MSG_STATUS_REFUSED,
    MSG_STATUS_NOT_STARTED,
    MSG_STATUS_FINISHED,
    MSG_STATUS_NO_EXIT_STATUS,
    MSG_STATUS_NOT_RUNNABLE,
    MSG_STATUS_CANCELLED,
    MSG_STATUS_TIMED_OUT,
    MSG_STATUS_NO_MARKER,
    MSG_STATUS_LOG,
    MSG_STATUS_MODEL_WRITTEN,
    MSG_STATUS_MODEL_REWRITTEN,
    MSG_STATUS_MODEL_UNCHANGED,
    MSG_STATUS_NO_MODEL,
    MSG_ONE_ERROR,
    MSG_ERRORS,
    MSG_ONE_WARNING,
    MSG_WARNINGS,
    // The script reader's problems, in the order of ReadProblem, and the
    // form of a problem with its detail.
    MSG_READ_SCRIPT_UNREADABLE,
    MSG_READ_WORK_FILE_UNWRITABLE,
    MSG_READ_INCLUDE_UNREADABLE,
    MSG_READ_INCLUDE_LOOP,
    MSG_READ_INCLUDE_TOO_DEEP,
    MSG_READ_TOO_MANY_BODY_GROUPS,
    MSG_READ_TOO_MANY_PARTS,
    MSG_READ_ATTACHMENT_INDEX,
    MSG_READ_CONTROLLER_INDEX,
    MSG_READ_TOO_MANY_SEQUENCE_GROUPS,
    MSG_READ_TOO_MANY_SEQUENCES,
    MSG_READ_TOO_MANY_EVENTS,
    MSG_READ_TOO_MANY_TEXTURES,
    MSG_READ_TOO_MANY_TEXTURE_COLUMNS,
    MSG_READ_TOO_MANY_TEXTURE_ROWS,
    MSG_READ_NUMBER_OUT_OF_RANGE,
    MSG_READ_PART_FILE_MISSING,
    MSG_READ_PART_NOT_IN_MODEL_PATH,
    MSG_READ_DETAIL,
    // A typed text with a character that the files' code page cannot hold;
    // %1 is the text.
    MSG_TEXT_NOT_CP1252,
    MSG_LANGUAGE_NOT_SAVED,
    MSG_LANGUAGE_NAME_INVALID,
    MSG_LANGUAGE_NAME_IN_USE,
    // Not a message: the number of messages. New keys go above it.
    MSG_END
};
inline constexpr std::size_t MsgCount = static_cast<std::size_t>(MSG_END);

struct MessageEntry {
    Msg Id;
    std::string_view Key;
    std::string_view English;
};

// Every message with its key in the language file and its English text.
inline constexpr std::array<MessageEntry, MsgCount> MessageTable{{
    {MSG_PARTS_FULL, "MSG_PARTS_FULL",
     "This body group already has %1 parts, the most a group can hold. No part was added."},
    {MSG_GROUPS_FULL, "MSG_GROUPS_FULL",
     "The model already has %1 body groups, the most it can hold. No group was added."},
    {MSG_ANIMATIONS_FULL, "MSG_ANIMATIONS_FULL",
     "This sequence group already has %1 animations, the most a group can hold. No animation "
     "was added."},
    {MSG_SAVE_FAILED, "MSG_SAVE_FAILED", "The script could not be saved."},
    {MSG_SAVE_SCRIPT, "MSG_SAVE_SCRIPT", "Script: %1"},
    {MSG_SAVE_OLD_FILE_KEPT, "MSG_SAVE_OLD_FILE_KEPT", "An old file of that name is unchanged."},
    {MSG_VIEWER_MISSING, "MSG_VIEWER_MISSING", "The model viewer cannot be found:"},
    {MSG_EDITOR_MISSING, "MSG_EDITOR_MISSING", "The text editor cannot be found:"},
    {MSG_VIEWER_NOT_STARTED, "MSG_VIEWER_NOT_STARTED", "The model viewer could not be started:"},
    {MSG_EDITOR_NOT_STARTED, "MSG_EDITOR_NOT_STARTED", "The text editor could not be started:"},
    {MSG_CHOOSE_PROGRAM, "MSG_CHOOSE_PROGRAM", "Choose it under Settings - General settings."},
    {MSG_COMPILE_CANNOT_START, "MSG_COMPILE_CANNOT_START", "The compile cannot start: %1"},
    {MSG_SCRIPT_NOT_WRITTEN, "MSG_SCRIPT_NOT_WRITTEN", "%1 cannot be written in %2: %3"},
    {MSG_SCRIPT_NOT_STARTED, "MSG_SCRIPT_NOT_STARTED", "%1 cannot be started: %2"},
    {MSG_COMPILE_CANCELLED, "MSG_COMPILE_CANCELLED",
     "Compile cancelled; the compiler was stopped."},
    {MSG_COMPILE_TIMED_OUT, "MSG_COMPILE_TIMED_OUT", "Compile stopped: no result after %1 s."},
    {MSG_SCRIPT_NO_MARKER, "MSG_SCRIPT_NO_MARKER", "%1 ended without writing %2."},
    {MSG_STATUS_LINE, "MSG_STATUS_LINE", "%1; %2; %3."},
    {MSG_STATUS_REFUSED, "MSG_STATUS_REFUSED", "Not compiled: the checks found %1."},
    {MSG_STATUS_NOT_STARTED, "MSG_STATUS_NOT_STARTED",
     "Not compiled: the compile script could not be started."},
    {MSG_STATUS_FINISHED, "MSG_STATUS_FINISHED", "Compiler finished with exit status %1"},
    {MSG_STATUS_NO_EXIT_STATUS, "MSG_STATUS_NO_EXIT_STATUS",
     "Compiler finished (exit status not reported)"},
    {MSG_STATUS_NOT_RUNNABLE, "MSG_STATUS_NOT_RUNNABLE",
     "Compiler could not be run (exit status %1)"},
    {MSG_STATUS_CANCELLED, "MSG_STATUS_CANCELLED", "Compile cancelled after %1 s"},
    {MSG_STATUS_TIMED_OUT, "MSG_STATUS_TIMED_OUT", "Compile stopped: no result after %1 s"},
    {MSG_STATUS_NO_MARKER, "MSG_STATUS_NO_MARKER",
     "The compile script ended without leaving its marker"},
    {MSG_STATUS_LOG, "MSG_STATUS_LOG", "log: %1, %2"},
    {MSG_STATUS_MODEL_WRITTEN, "MSG_STATUS_MODEL_WRITTEN", "model written: %1"},
    {MSG_STATUS_MODEL_REWRITTEN, "MSG_STATUS_MODEL_REWRITTEN", "model rewritten: %1"},
    {MSG_STATUS_MODEL_UNCHANGED, "MSG_STATUS_MODEL_UNCHANGED", "model not changed: %1"},
    {MSG_STATUS_NO_MODEL, "MSG_STATUS_NO_MODEL", "no model written"},
    {MSG_ONE_ERROR, "MSG_ONE_ERROR", "1 error"},
    {MSG_ERRORS, "MSG_ERRORS", "%1 errors"},
    {MSG_ONE_WARNING, "MSG_ONE_WARNING", "1 warning"},
    {MSG_WARNINGS, "MSG_WARNINGS", "%1 warnings"},
    {MSG_READ_SCRIPT_UNREADABLE, "MSG_READ_SCRIPT_UNREADABLE", "The script cannot be opened"},
    {MSG_READ_WORK_FILE_UNWRITABLE, "MSG_READ_WORK_FILE_UNWRITABLE",
     "The working file cannot be written"},
    {MSG_READ_INCLUDE_UNREADABLE, "MSG_READ_INCLUDE_UNREADABLE",
     "An included file cannot be opened and was skipped"},
    {MSG_READ_INCLUDE_LOOP, "MSG_READ_INCLUDE_LOOP",
     "A file includes itself; the include was skipped"},
    {MSG_READ_INCLUDE_TOO_DEEP, "MSG_READ_INCLUDE_TOO_DEEP",
     "Includes are nested too deeply; the include was skipped"},
    {MSG_READ_TOO_MANY_BODY_GROUPS, "MSG_READ_TOO_MANY_BODY_GROUPS",
     "More than 32 body groups; the rest were skipped"},
    {MSG_READ_TOO_MANY_PARTS, "MSG_READ_TOO_MANY_PARTS",
     "More than 16 parts in a body group; the rest were skipped"},
    {MSG_READ_ATTACHMENT_INDEX, "MSG_READ_ATTACHMENT_INDEX",
     "An attachment number outside 0 to 3 was skipped"},
    {MSG_READ_CONTROLLER_INDEX, "MSG_READ_CONTROLLER_INDEX",
     "A controller number outside 0 to 3 was skipped"},
    {MSG_READ_TOO_MANY_SEQUENCE_GROUPS, "MSG_READ_TOO_MANY_SEQUENCE_GROUPS",
     "More than 10 sequence groups; their sequences were skipped"},
    {MSG_READ_TOO_MANY_SEQUENCES, "MSG_READ_TOO_MANY_SEQUENCES",
     "More than 513 sequences in a group; the rest were skipped"},
    {MSG_READ_TOO_MANY_EVENTS, "MSG_READ_TOO_MANY_EVENTS",
     "More than 255 events in a sequence; the rest were skipped"},
    {MSG_READ_TOO_MANY_TEXTURES, "MSG_READ_TOO_MANY_TEXTURES",
     "More than 10 textures in the parts; the rest were left out"},
    {MSG_READ_TOO_MANY_TEXTURE_COLUMNS, "MSG_READ_TOO_MANY_TEXTURE_COLUMNS",
     "More than 10 textures in a texture group row; the rest were skipped"},
    {MSG_READ_TOO_MANY_TEXTURE_ROWS, "MSG_READ_TOO_MANY_TEXTURE_ROWS",
     "More than 100 texture group rows; the rest were skipped"},
    {MSG_READ_NUMBER_OUT_OF_RANGE, "MSG_READ_NUMBER_OUT_OF_RANGE",
     "A number too large for its field was cut to the field's limit"},
    {MSG_READ_PART_FILE_MISSING, "MSG_READ_PART_FILE_MISSING",
     "A part file is missing; its textures were not read"},
    {MSG_READ_PART_NOT_IN_MODEL_PATH, "MSG_READ_PART_NOT_IN_MODEL_PATH",
     "The chosen file is not an .smd file in the model folder; the part was kept"},
    {MSG_READ_DETAIL, "MSG_READ_DETAIL", "%1: \"%2\""},
    {MSG_TEXT_NOT_CP1252, "MSG_TEXT_NOT_CP1252",
     "\"%1\" holds a character that cannot be saved in a script. Please use letters of "
     "Western European languages only."},
    {MSG_LANGUAGE_NOT_SAVED, "MSG_LANGUAGE_NOT_SAVED",
     "The language file \"%1\" could not be written (%2). The file was left as it was."},
    {MSG_LANGUAGE_NAME_INVALID, "MSG_LANGUAGE_NAME_INVALID",
     "Please enter a name for the new language, without the characters \\ / : * ? \" < > |."},
    {MSG_LANGUAGE_NAME_IN_USE, "MSG_LANGUAGE_NAME_IN_USE",
     "\"%1\" is the language file in use. Please choose another name for the new language."},
}};

namespace detail {
constexpr bool MessageTableInOrder() {
    for (std::size_t i = 0; i < MessageTable.size(); ++i) {
        if (static_cast<std::size_t>(MessageTable[i].Id) != i) {
            return false;
        }
    }
    return true;
}
} // namespace detail
static_assert(detail::MessageTableInOrder(), "MessageTable rows must follow the Msg enum");

// The head line of the section in a language file.
inline constexpr std::string_view MessagesLine = "Quarle Messages";

// The active texts of the messages, indexed by Msg.
using MessageTexts = std::array<std::string, MsgCount>;

// The English texts, as the program starts with them.
MessageTexts DefaultMessageTexts();
const MessageTexts& EnglishMessageTexts();

// The message of a key, compared ignoring case; nullopt for an unknown key.
std::optional<Msg> FindMessageKey(std::string_view key);

// Loads the messages of a language file: every text goes back to its
// English default, then the entries of the "Quarle Messages" section (looked
// for ahead of "Global Strings") replace the texts of their keys. An empty
// value keeps the default. Returns false when the file has no such section.
bool ReadMessageTexts(const std::vector<std::string>& lines, MessageTexts& texts);

// Puts the arguments in place of %1 .. %9, in one pass: an argument that
// itself holds "%2" is not replaced again. A placeholder without an argument
// stays as it is.
std::string FormatMessage(std::string_view pattern, const std::vector<std::string>& args);

} // namespace quarle
