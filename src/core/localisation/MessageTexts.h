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
    // The compiler ended without a model and without an error line; %1 is
    // the model file.
    MSG_COMPILE_NO_MODEL,
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
    MSG_READ_BINARY_FILE,
    MSG_READ_UTF16_TEXT,
    MSG_READ_PART_FILE_MISSING,
    MSG_READ_PART_NOT_IN_MODEL_PATH,
    MSG_READ_DETAIL,
    // A typed text with a character that the files' code page cannot hold;
    // %1 is the text.
    MSG_TEXT_NOT_CP1252,
    // A file that is not read (InputFile.h): %1 the file, %2 the size limit
    // in MB or the system's reason.
    MSG_OPEN_MISSING,
    MSG_OPEN_FOLDER,
    MSG_OPEN_SPECIAL,
    MSG_OPEN_TOO_LARGE,
    MSG_OPEN_DENIED,
    MSG_OPEN_READ_ERROR,
    // The system's reasons for a failed read or write, where they have a
    // text of their own; others are given in the system's words.
    MSG_SYSTEM_DENIED,
    MSG_SYSTEM_DISK_FULL,
    MSG_SYSTEM_READ_ONLY,
    MSG_SYSTEM_NOT_FOUND,
    MSG_SYSTEM_IS_FOLDER,
    MSG_SYSTEM_NOT_FOLDER,
    MSG_SYSTEM_NAME_TOO_LONG,
    MSG_SYSTEM_IN_USE,
    MSG_SYSTEM_IO,
    MSG_SYSTEM_EXISTS,
    // A long load: the progress window's title and text (%1 the script).
    MSG_LOAD_PROGRESS_TITLE,
    MSG_LOAD_PROGRESS,
    // At start: the settings file cannot be written (%1 the file, %2 why);
    // the user's language file cannot be used (%1 it, %2 why, %3 the file
    // used instead).
    MSG_SETTINGS_UNWRITABLE,
    MSG_LANGUAGE_BROKEN,
    MSG_LANGUAGE_NO_STRINGS,
    // The texture dialogs: mesh files that could not be read (%1, one per
    // line, behind the colon), more textures than the table holds (%1 the limit), a texture
    // folder without bitmaps (%1 the folder).
    MSG_TEXTURE_PARTS_UNREADABLE,
    MSG_TEXTURES_FULL,
    MSG_NO_BITMAPS,
    // The event editor's refusal at the end of an animation's events; %1 is the limit.
    MSG_EVENTS_FULL,
    // Enter in a box of the origin dialog that holds no usable number: %1
    // the text, %2 the largest offset.
    MSG_ORIGIN_NOT_A_NUMBER,
    // What a load of a script finds, in the order of FindingKind; where it
    // stands; the head of the message after the load (whether a save changes
    // the model, and in how many places: %1); the copy of the original that
    // the first save keeps.
    MSG_FINDING_PATH_ANSWERED,
    MSG_FINDING_INCLUDE_MISSING,
    MSG_FINDING_INCLUDE_TOO_DEEP,
    MSG_FINDING_INCLUDE_NOT_A_SCRIPT,
    MSG_FINDING_MORE_THAN_TEN_TEXTURES,
    MSG_FINDING_COMPILER_REFUSES,
    MSG_FINDING_QUOTE_ACROSS_LINES,
    MSG_FINDING_PLACE,
    MSG_FINDINGS_SAME_MODEL,
    MSG_FINDINGS_MODEL_ONE,
    MSG_FINDINGS_MODEL_MANY,
    MSG_FINDINGS_FIRST,
    MSG_FINDINGS_MORE,
    MSG_FINDINGS_KEPT,
    MSG_FINDINGS_TITLE,
    MSG_KEEP_ORIGINAL_FAILED,
    // Why a save failed; %1 is the file or folder, %2 the system's reason.
    MSG_SAVE_NO_NAME,
    MSG_SAVE_BROKEN_LINK,
    MSG_SAVE_NO_FOLDER,
    MSG_SAVE_NOT_A_FILE,
    MSG_SAVE_WRITE_PROTECTED,
    MSG_SAVE_NO_TEMPORARY,
    MSG_SAVE_FOLDER_UNWRITABLE,
    MSG_SAVE_INCOMPLETE,
    MSG_SAVE_NOT_REPLACED,
    MSG_SAVE_SYSTEM_REASON,
    MSG_LANGUAGE_NOT_SAVED,
    MSG_LANGUAGE_NAME_INVALID,
    MSG_LANGUAGE_NAME_IN_USE,
    // Some of the chosen animations fitted: %1 the limit, %2 added, %3 left out.
    MSG_ANIMATIONS_PARTLY_ADDED,
    MSG_NO_DIRECTIVE,
    // A save that wrote includes into the script because the user changed
    // what they hold; %1 their $include lines, with commas between them.
    MSG_INCLUDES_WRITTEN_IN,
    // A script name with a double quote: the script cannot write it.
    MSG_SAVE_NAME_QUOTE,
    // A first start without a compiler that can be started; %1 the path
    // tried.
    MSG_TOOLS_FIRST_START,
    // The tool tips of the marks beside the tool paths; %1 the program.
    MSG_TOOL_STARTABLE,
    MSG_TOOL_THROUGH_WINE,
    MSG_TOOL_MISSING,
    MSG_TOOL_NOT_EXECUTABLE,
    MSG_TOOL_NO_WINE,
    // The checks of the saved script and the model's files ahead of a
    // compile, as the compiler reads them. MSG_CHECK_AT puts a place in
    // front of a row: %1 the script or an include, %2 the line, %3 the row.
    // In the rows of a file %1 is the file. The two words fill %4 of
    // MSG_CHECK_NEAR_LIMIT.
    MSG_CHECK_EMPTY_BODYGROUP,
    MSG_CHECK_ANIMATION_NO_NAME,
    MSG_CHECK_AT,
    MSG_CHECK_SCRIPT_UNREADABLE,
    MSG_CHECK_LINE_INCOMPLETE,
    MSG_CHECK_INCLUDE_MISSING,
    MSG_CHECK_INCLUDE_TOO_DEEP,
    MSG_CHECK_TOKEN_TOO_LONG,
    MSG_CHECK_BAD_COMMAND,
    MSG_CHECK_TWO_CD,
    MSG_CHECK_TABLE_FULL,
    MSG_CHECK_TABLE_OVERRUN,
    MSG_CHECK_NAME_TOO_LONG,
    MSG_CHECK_FILE_NAME_TOO_LONG,
    MSG_CHECK_CONTROLLER_TYPE_UNKNOWN,
    MSG_CHECK_CONTROLLER_TYPE_MOTION,
    MSG_CHECK_BLOCK_SWALLOWS,
    MSG_CHECK_BLOCK_UNENDED,
    MSG_CHECK_TEXTUREGROUP_FIRST,
    MSG_CHECK_RENDERMODE_OTHER,
    MSG_CHECK_MISSING_OPEN_BRACE,
    MSG_CHECK_NO_ANIMATION_FILE,
    MSG_CHECK_FILE_READ_AS_OPTION,
    MSG_CHECK_UNKNOWN_ACTIVITY,
    MSG_CHECK_ACTIVITY_NO_WEIGHT,
    MSG_CHECK_ACTIVITY_WEIGHT_WORD,
    MSG_CHECK_OUTPUT_FOLDER,
    MSG_CHECK_EVENT_OUTSIDE,
    MSG_CHECK_SMD_MISSING,
    MSG_CHECK_FILE_OTHER_CASE,
    MSG_CHECK_SMD_UNREADABLE,
    MSG_CHECK_SMD_VERSION,
    MSG_CHECK_SMD_NODES_CUT,
    MSG_CHECK_SMD_INDEX_RANGE,
    MSG_CHECK_SMD_BAD_LINE,
    MSG_CHECK_SMD_CORNER_BONE,
    MSG_CHECK_SMD_SWALLOWED,
    MSG_CHECK_SMD_BAD_POSE,
    MSG_CHECK_SMD_CUT_SHORT,
    MSG_CHECK_SMD_POSE_BONE,
    MSG_CHECK_SMD_FRAME_RANGE,
    MSG_CHECK_SMD_NO_FRAME,
    MSG_CHECK_SMD_NODES_AGAIN,
    MSG_CHECK_SMD_NODES_TWICE,
    MSG_CHECK_SMD_SKIPPED,
    MSG_CHECK_SMD_REPEATED,
    MSG_CHECK_PARENT_CLASH,
    MSG_CHECK_ANIM_PARENT_CLASH,
    MSG_CHECK_TOO_MANY_BONES,
    MSG_CHECK_LINK_BONE,
    MSG_CHECK_TOO_MANY_VERTICES,
    MSG_CHECK_TOO_MANY_NORMALS,
    MSG_CHECK_TOO_MANY_TRIANGLES,
    MSG_CHECK_PART_TEXTURES,
    MSG_CHECK_NEAR_LIMIT,
    MSG_CHECK_WORD_VERTICES,
    MSG_CHECK_WORD_NORMALS,
    MSG_CHECK_TEXTURE_NOT_BMP,
    MSG_CHECK_TEXTURE_MISSING,
    MSG_CHECK_TOO_MANY_TEXTURES,
    MSG_CHECK_MODEL_BUFFER,
    MSG_CHECK_BMP_NOT_BITMAP,
    MSG_CHECK_BMP_RESERVED,
    MSG_CHECK_BMP_HEADER,
    MSG_CHECK_BMP_DEPTH,
    MSG_CHECK_BMP_COMPRESSED,
    MSG_CHECK_BMP_PALETTE,
    MSG_CHECK_BMP_CUT_SHORT,
    MSG_CHECK_BMP_SIZE_FIELD,
    MSG_CHECK_BMP_TOP_DOWN,
    MSG_CHECK_BMP_EMPTY,
    MSG_CHECK_BMP_NOT_POWER_OF_TWO,
    MSG_CHECK_TEXTURE_TOO_LARGE,
    MSG_CHECK_SEQUENCE_LARGE,
    MSG_CHECK_SEQUENCE_MAY_BE_LARGE,
    // The main window on the desktop: the question before unsaved changes
    // are lost (%1 the script's name), the name of a script not saved yet,
    // the note of a texture folder without bitmaps (%1 the folder).
    MSG_UNSAVED_CHANGES,
    MSG_UNTITLED,
    MSG_TEXTURE_FOLDER_EMPTY,
    // The animation wizard's name before the user types one.
    MSG_ANIMWIZ_DEFAULT_NAME,
    // The status line of the 3D preview.
    MSG_PREVIEW_NO_GL,
    MSG_PREVIEW_NO_PARTS,
    MSG_PREVIEW_PARTS_MISSING,
    MSG_PREVIEW_TEXTURES_MISSING,
    MSG_PREVIEW_BIND_POSE,
    MSG_PREVIEW_FRAME,
    // Reading a compiled model.
    MSG_MDL_UNREADABLE,
    MSG_MDL_NOT_STUDIO,
    MSG_MDL_VERSION,
    MSG_MDL_BEYOND_END,
    MSG_MDL_BAD_COUNT,
    MSG_MDL_BAD_INDEX,
    MSG_MDL_BAD_ANIMATION,
    MSG_MDL_ANIMATION_TOO_LARGE,
    MSG_MDL_IN_FILE,
    MSG_MDL_GROUP_MISSING,
    MSG_MDL_TEXTURES_MISSING,
    // The window of a compiled model, and the compiled skeleton over the
    // sources in the preview.
    MSG_OPEN_COMPILED_TITLE,
    MSG_COMPILED_UNREADABLE,
    MSG_COMPILED_AT_REST,
    MSG_OVERLAY_DISTANCE,
    MSG_OVERLAY_NO_SEQUENCE,
    MSG_OVERLAY_NO_MODEL,
    MSG_OVERLAY_ONLY_COMPILED,
    MSG_OVERLAY_ONLY_SOURCES,
    MSG_OVERLAY_LOOP_END,
    // The preview's play button while the animation plays.
    MSG_PREVIEW_PAUSE,
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
    {MSG_COMPILE_NO_MODEL, "MSG_COMPILE_NO_MODEL",
     "The compiler ended without writing the model \"%1\"."},
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
    {MSG_READ_BINARY_FILE, "MSG_READ_BINARY_FILE",
     "The file holds NUL bytes, as a binary file does, and is no script; it was not read"},
    {MSG_READ_UTF16_TEXT, "MSG_READ_UTF16_TEXT",
     "The file is UTF-16 text (it starts with a byte-order mark), which the model compiler "
     "cannot read; it was not read. Save it as ANSI or single-byte text first"},
    {MSG_READ_PART_FILE_MISSING, "MSG_READ_PART_FILE_MISSING",
     "A part file is missing; its textures were not read"},
    {MSG_READ_PART_NOT_IN_MODEL_PATH, "MSG_READ_PART_NOT_IN_MODEL_PATH",
     "The chosen file is not an .smd file in the model folder; the part was kept"},
    {MSG_READ_DETAIL, "MSG_READ_DETAIL", "%1: \"%2\""},
    {MSG_TEXT_NOT_CP1252, "MSG_TEXT_NOT_CP1252",
     "\"%1\" holds a character that cannot be saved in a script. Please use letters of "
     "Western European languages only."},
    {MSG_OPEN_MISSING, "MSG_OPEN_MISSING", "\"%1\" cannot be found."},
    {MSG_OPEN_FOLDER, "MSG_OPEN_FOLDER", "\"%1\" is a folder, not a file, and is not read."},
    {MSG_OPEN_SPECIAL, "MSG_OPEN_SPECIAL",
     "\"%1\" is not a plain file (a pipe, a device or a socket) and is not read."},
    {MSG_OPEN_TOO_LARGE, "MSG_OPEN_TOO_LARGE",
     "\"%1\" is larger than %2 MB, more than a file of its kind holds, and is not read."},
    {MSG_OPEN_DENIED, "MSG_OPEN_DENIED", "\"%1\" cannot be opened: %2."},
    {MSG_OPEN_READ_ERROR, "MSG_OPEN_READ_ERROR", "\"%1\" could not be read to its end: %2."},
    {MSG_SYSTEM_DENIED, "MSG_SYSTEM_DENIED", "access is denied"},
    {MSG_SYSTEM_DISK_FULL, "MSG_SYSTEM_DISK_FULL", "the disk is full"},
    {MSG_SYSTEM_READ_ONLY, "MSG_SYSTEM_READ_ONLY", "the drive can only be read"},
    {MSG_SYSTEM_NOT_FOUND, "MSG_SYSTEM_NOT_FOUND", "there is no such file or folder"},
    {MSG_SYSTEM_IS_FOLDER, "MSG_SYSTEM_IS_FOLDER", "it is a folder"},
    {MSG_SYSTEM_NOT_FOLDER, "MSG_SYSTEM_NOT_FOLDER", "a part of the path is not a folder"},
    {MSG_SYSTEM_NAME_TOO_LONG, "MSG_SYSTEM_NAME_TOO_LONG", "the name is too long"},
    {MSG_SYSTEM_IN_USE, "MSG_SYSTEM_IN_USE", "the file is in use"},
    {MSG_SYSTEM_IO, "MSG_SYSTEM_IO", "the drive reported an error"},
    {MSG_SYSTEM_EXISTS, "MSG_SYSTEM_EXISTS", "a file of that name exists already"},
    {MSG_LOAD_PROGRESS_TITLE, "MSG_LOAD_PROGRESS_TITLE", "Opening"},
    {MSG_LOAD_PROGRESS, "MSG_LOAD_PROGRESS", "Reading %1 ..."},
    {MSG_SETTINGS_UNWRITABLE, "MSG_SETTINGS_UNWRITABLE",
     "The settings file \"%1\" cannot be written (%2). Settings changed now are lost when the "
     "program ends."},
    {MSG_LANGUAGE_BROKEN, "MSG_LANGUAGE_BROKEN",
     "The language file \"%1\" cannot be used (%2). \"%3\" is used instead."},
    {MSG_LANGUAGE_NO_STRINGS, "MSG_LANGUAGE_NO_STRINGS", "it holds no global strings"},
    {MSG_TEXTURE_PARTS_UNREADABLE, "MSG_TEXTURE_PARTS_UNREADABLE",
     "These mesh files could not be read, so their textures are missing from the list: %1"},
    {MSG_TEXTURES_FULL, "MSG_TEXTURES_FULL",
     "The meshes of this model use more than %1 different textures. Only the first %1 are "
     "listed; the others can have no variations or render modes."},
    {MSG_NO_BITMAPS, "MSG_NO_BITMAPS",
     "The texture folder \"%1\" holds no bitmaps (*.bmp). Choose a texture folder with "
     "bitmaps in the main window first."},
    {MSG_EVENTS_FULL, "MSG_EVENTS_FULL",
     "This animation already has %1 events, the most an animation can hold. No event was "
     "added."},
    {MSG_ORIGIN_NOT_A_NUMBER, "MSG_ORIGIN_NOT_A_NUMBER",
     "\"%1\" is not an offset. Please enter a number from -%2 to %2 and press Enter; the "
     "offset stays as it was."},
    {MSG_FINDING_PATH_ANSWERED, "MSG_FINDING_PATH_ANSWERED",
     "A folder or file was not where the script says: the save names the one you chose"},
    {MSG_FINDING_INCLUDE_MISSING, "MSG_FINDING_INCLUDE_MISSING",
     "An included file cannot be opened: its $include line is kept as it stands, and the "
     "compiler will stop there too"},
    {MSG_FINDING_INCLUDE_TOO_DEEP, "MSG_FINDING_INCLUDE_TOO_DEEP",
     "An include nested deeper than the compiler reads, or one that includes itself: its "
     "$include line is kept as it stands"},
    {MSG_FINDING_INCLUDE_NOT_A_SCRIPT, "MSG_FINDING_INCLUDE_NOT_A_SCRIPT",
     "An included file is binary or UTF-16 text and no script: its $include line is kept as "
     "it stands"},
    {MSG_FINDING_MORE_THAN_TEN_TEXTURES, "MSG_FINDING_MORE_THAN_TEN_TEXTURES",
     "The parts have more than ten textures: the texture dialogs show the first ten, and the "
     "lines of the others are kept as they stand"},
    {MSG_FINDING_COMPILER_REFUSES, "MSG_FINDING_COMPILER_REFUSES",
     "The model compiler refuses the script at this line and builds no model; the line is "
     "kept as it stands"},
    {MSG_FINDING_QUOTE_ACROSS_LINES, "MSG_FINDING_QUOTE_ACROSS_LINES",
     "A quote opened on this line closes on a later line: the compiler reads the lines "
     "between as one name, and a save adds no line between them"},
    {MSG_FINDING_PLACE, "MSG_FINDING_PLACE", "%1, line %2: %3"},
    {MSG_FINDINGS_SAME_MODEL, "MSG_FINDINGS_SAME_MODEL",
     "A save of this script changes nothing the compiler reads, but for what you change."},
    {MSG_FINDINGS_MODEL_ONE, "MSG_FINDINGS_MODEL_ONE",
     "A save of this script changes what the compiler reads in 1 place."},
    {MSG_FINDINGS_MODEL_MANY, "MSG_FINDINGS_MODEL_MANY",
     "A save of this script changes what the compiler reads in %1 places."},
    {MSG_FINDINGS_FIRST, "MSG_FINDINGS_FIRST", "The first places:"},
    {MSG_FINDINGS_MORE, "MSG_FINDINGS_MORE", "... and %1 more."},
    {MSG_FINDINGS_KEPT, "MSG_FINDINGS_KEPT",
     "The first save keeps the original script beside it as \"%1\"."},
    {MSG_FINDINGS_TITLE, "MSG_FINDINGS_TITLE", "What Quarle found in the script"},
    {MSG_KEEP_ORIGINAL_FAILED, "MSG_KEEP_ORIGINAL_FAILED",
     "The original script cannot be kept as \"%1\", so it was not saved over."},
    {MSG_SAVE_NO_NAME, "MSG_SAVE_NO_NAME", "The script has no file name: %1"},
    {MSG_SAVE_BROKEN_LINK, "MSG_SAVE_BROKEN_LINK",
     "The script is a link to a file that cannot be found: %1"},
    {MSG_SAVE_NO_FOLDER, "MSG_SAVE_NO_FOLDER", "The folder of the script does not exist: %1"},
    {MSG_SAVE_NOT_A_FILE, "MSG_SAVE_NOT_A_FILE",
     "The script's name belongs to something that is not a file: %1"},
    {MSG_SAVE_WRITE_PROTECTED, "MSG_SAVE_WRITE_PROTECTED", "The script is write-protected: %1"},
    {MSG_SAVE_NO_TEMPORARY, "MSG_SAVE_NO_TEMPORARY",
     "No temporary file could be made beside the script: %1"},
    {MSG_SAVE_FOLDER_UNWRITABLE, "MSG_SAVE_FOLDER_UNWRITABLE",
     "The folder of the script cannot be written to: %1"},
    {MSG_SAVE_INCOMPLETE, "MSG_SAVE_INCOMPLETE",
     "The script could not be written completely (is the disk full?): %1"},
    {MSG_SAVE_NOT_REPLACED, "MSG_SAVE_NOT_REPLACED",
     "The script could not replace the old file: %1"},
    {MSG_SAVE_SYSTEM_REASON, "MSG_SAVE_SYSTEM_REASON", "The system reports: %1"},
    {MSG_LANGUAGE_NOT_SAVED, "MSG_LANGUAGE_NOT_SAVED",
     "The language file \"%1\" could not be written (%2). The file was left as it was."},
    {MSG_LANGUAGE_NAME_INVALID, "MSG_LANGUAGE_NAME_INVALID",
     "Please enter a name for the new language, without the characters \\ / : * ? \" < > |."},
    {MSG_LANGUAGE_NAME_IN_USE, "MSG_LANGUAGE_NAME_IN_USE",
     "\"%1\" is the language file in use. Please choose another name for the new language."},
    {MSG_ANIMATIONS_PARTLY_ADDED, "MSG_ANIMATIONS_PARTLY_ADDED",
     "A sequence group holds at most %1 animations. Added: %2; not added: %3."},
    {MSG_NO_DIRECTIVE, "MSG_NO_DIRECTIVE",
     "\"%1\" holds no directive: it is not a model script, or it is empty. Quarle has read "
     "nothing from it."},
    {MSG_INCLUDES_WRITTEN_IN, "MSG_INCLUDES_WRITTEN_IN",
     "You changed what these included files hold, so the save wrote their lines into the "
     "script in place of their $include lines; the files themselves are left as they were: %1"},
    {MSG_SAVE_NAME_QUOTE, "MSG_SAVE_NAME_QUOTE",
     "\"%1\" holds a double quote, which a model script cannot name. Please choose a name "
     "without it."},
    {MSG_TOOLS_FIRST_START, "MSG_TOOLS_FIRST_START",
     "Quarle found no model compiler (studiomdl) it can start; it tried \"%1\". A model "
     "can be compiled once the compiler's path is set in the settings. Open the settings "
     "now?"},
    {MSG_TOOL_STARTABLE, "MSG_TOOL_STARTABLE", "Found, and it can be started: %1"},
    {MSG_TOOL_THROUGH_WINE, "MSG_TOOL_THROUGH_WINE",
     "Found, a Windows program; it runs through wine: %1"},
    {MSG_TOOL_MISSING, "MSG_TOOL_MISSING", "Not found: %1"},
    {MSG_TOOL_NOT_EXECUTABLE, "MSG_TOOL_NOT_EXECUTABLE",
     "Found, but it may not be run (it is not executable): %1"},
    {MSG_TOOL_NO_WINE, "MSG_TOOL_NO_WINE",
     "A Windows program, and wine is not on the search path to run it: %1"},
    {MSG_CHECK_EMPTY_BODYGROUP, "MSG_CHECK_EMPTY_BODYGROUP",
     "Error: the body group \"%1\" has no parts; the compiler writes it, and the game divides by "
     "its number of parts when it draws the model."},
    {MSG_CHECK_ANIMATION_NO_NAME, "MSG_CHECK_ANIMATION_NO_NAME",
     "Warning: the animation from the file %1.smd has no name; the compiler takes it, but the "
     "game cannot find it by its name."},
    {MSG_CHECK_AT, "MSG_CHECK_AT", "%1, line %2: %3"},
    {MSG_CHECK_SCRIPT_UNREADABLE, "MSG_CHECK_SCRIPT_UNREADABLE",
     "The script \"%1\" cannot be read."},
    {MSG_CHECK_LINE_INCOMPLETE, "MSG_CHECK_LINE_INCOMPLETE",
     "%1 needs more on this line; the compiler stops here."},
    {MSG_CHECK_INCLUDE_MISSING, "MSG_CHECK_INCLUDE_MISSING",
     "The included file \"%1\" cannot be found; the compiler stops here."},
    {MSG_CHECK_INCLUDE_TOO_DEEP, "MSG_CHECK_INCLUDE_TOO_DEEP",
     "\"%1\" is included more deeply than the compiler follows; it stops here."},
    {MSG_CHECK_TOKEN_TOO_LONG, "MSG_CHECK_TOKEN_TOO_LONG",
     "A word longer than %1 characters; the compiler stops here."},
    {MSG_CHECK_BAD_COMMAND, "MSG_CHECK_BAD_COMMAND",
     "The compiler does not know the directive %1 (it tells directives by their exact letters) "
     "and stops here."},
    {MSG_CHECK_TWO_CD, "MSG_CHECK_TWO_CD", "A second $cd; the compiler takes one and stops here."},
    {MSG_CHECK_TABLE_FULL, "MSG_CHECK_TABLE_FULL",
     "More than the compiler can hold: %1 (at most %2); it stops here."},
    {MSG_CHECK_TABLE_OVERRUN, "MSG_CHECK_TABLE_OVERRUN",
     "More than the compiler's table holds: %1 (at most %2); it writes the rest past the table's "
     "end, and the model may come out broken."},
    {MSG_CHECK_NAME_TOO_LONG, "MSG_CHECK_NAME_TOO_LONG",
     "\"%1\" is longer than the %2 characters the model has room for: the compiler writes it "
     "without its end, and the game reads on into what follows."},
    {MSG_CHECK_FILE_NAME_TOO_LONG, "MSG_CHECK_FILE_NAME_TOO_LONG",
     "\"%1\" is longer than the %2 characters the compiler keeps of a file's name: it looks for "
     "\"%3\"."},
    {MSG_CHECK_CONTROLLER_TYPE_UNKNOWN, "MSG_CHECK_CONTROLLER_TYPE_UNKNOWN",
     "The compiler does not know the controller type %1 and leaves the controller out."},
    {MSG_CHECK_CONTROLLER_TYPE_MOTION, "MSG_CHECK_CONTROLLER_TYPE_MOTION",
     "A controller of the type %1: the compiler writes only X, Y, Z, XR, YR and ZR, and stops "
     "when it comes to write it."},
    {MSG_CHECK_BLOCK_SWALLOWS, "MSG_CHECK_BLOCK_SWALLOWS",
     "%2 stands inside the block of %1: the compiler reads it as a word of the block, not as a "
     "directive."},
    {MSG_CHECK_BLOCK_UNENDED, "MSG_CHECK_BLOCK_UNENDED",
     "The block of %1 is not closed before the script ends: the compiler reads past the end and "
     "crashes."},
    {MSG_CHECK_TEXTUREGROUP_FIRST, "MSG_CHECK_TEXTUREGROUP_FIRST",
     "$texturegroup before any part: the compiler takes it only behind the parts and stops here."},
    {MSG_CHECK_RENDERMODE_OTHER, "MSG_CHECK_RENDERMODE_OTHER",
     "The render mode %1: the Half-Life SDK's compiler takes only additive and masked and stops "
     "here; later compilers take more modes."},
    {MSG_CHECK_MISSING_OPEN_BRACE, "MSG_CHECK_MISSING_OPEN_BRACE",
     "The sequence \"%1\" closes a brace it has not opened; the compiler stops here."},
    {MSG_CHECK_NO_ANIMATION_FILE, "MSG_CHECK_NO_ANIMATION_FILE",
     "The sequence \"%1\" names no animation file the compiler reads as one; it stops here."},
    {MSG_CHECK_FILE_READ_AS_OPTION, "MSG_CHECK_FILE_READ_AS_OPTION",
     "\"%1\" is read as the option %2, not as a file: the compiler knows its options by their "
     "first letters."},
    {MSG_CHECK_UNKNOWN_ACTIVITY, "MSG_CHECK_UNKNOWN_ACTIVITY",
     "%1 is no activity the compiler knows, so it reads it as the animation file \"%2\", which "
     "is not there."},
    {MSG_CHECK_ACTIVITY_NO_WEIGHT, "MSG_CHECK_ACTIVITY_NO_WEIGHT",
     "The activity %1 has no weight behind it; the compiler stops here."},
    {MSG_CHECK_ACTIVITY_WEIGHT_WORD, "MSG_CHECK_ACTIVITY_WEIGHT_WORD",
     "The activity %1 takes \"%2\" for its weight: the compiler reads it as a number, not as "
     "what it is."},
    {MSG_CHECK_OUTPUT_FOLDER, "MSG_CHECK_OUTPUT_FOLDER",
     "The folder of the model \"%1\" does not exist; the compiler cannot write the model."},
    {MSG_CHECK_EVENT_OUTSIDE, "MSG_CHECK_EVENT_OUTSIDE",
     "The event %1 of the sequence \"%2\" is at frame %3, outside its frames %4 to %5; the "
     "compiler moves it to frame %6."},
    {MSG_CHECK_SMD_MISSING, "MSG_CHECK_SMD_MISSING",
     "The mesh or animation file \"%1\" cannot be found."},
    {MSG_CHECK_FILE_OTHER_CASE, "MSG_CHECK_FILE_OTHER_CASE",
     "%1 files are found only in other capitals than the script writes them, which the compiler "
     "finds only where file names ignore them (Windows, wine): %2."},
    {MSG_CHECK_SMD_UNREADABLE, "MSG_CHECK_SMD_UNREADABLE", "\"%1\" cannot be read."},
    {MSG_CHECK_SMD_VERSION, "MSG_CHECK_SMD_VERSION",
     "\"%1\", line %2: version %3; the compiler reads only version 1 and stops there."},
    {MSG_CHECK_SMD_NODES_CUT, "MSG_CHECK_SMD_NODES_CUT",
     "\"%1\" ends inside its nodes; the compiler stops there."},
    {MSG_CHECK_SMD_INDEX_RANGE, "MSG_CHECK_SMD_INDEX_RANGE",
     "\"%1\", line %2: the bone index %3 is outside 0 to 511, beyond the compiler's tables."},
    {MSG_CHECK_SMD_BAD_LINE, "MSG_CHECK_SMD_BAD_LINE",
     "\"%1\", line %2: a corner that is not nine numbers; the compiler stops there."},
    {MSG_CHECK_SMD_CORNER_BONE, "MSG_CHECK_SMD_CORNER_BONE",
     "\"%1\", line %2: a corner on the bone index %3, while the nodes give %4 bones; the "
     "compiler stops there."},
    {MSG_CHECK_SMD_SWALLOWED, "MSG_CHECK_SMD_SWALLOWED",
     "\"%1\", line %2: the skeleton has not ended where the triangles begin; the compiler reads "
     "them as poses, and the part has no triangles."},
    {MSG_CHECK_SMD_BAD_POSE, "MSG_CHECK_SMD_BAD_POSE",
     "\"%1\", line %2: neither a pose of seven numbers nor time or end; the compiler stops there."},
    {MSG_CHECK_SMD_CUT_SHORT, "MSG_CHECK_SMD_CUT_SHORT",
     "\"%1\" ends inside a skeleton; the compiler stops there."},
    {MSG_CHECK_SMD_POSE_BONE, "MSG_CHECK_SMD_POSE_BONE",
     "\"%1\", line %2: a pose of the bone index %3, which the nodes before it do not give; the "
     "compiler crashes."},
    {MSG_CHECK_SMD_FRAME_RANGE, "MSG_CHECK_SMD_FRAME_RANGE",
     "\"%1\", line %2: frame %3 is outside 0 to 2047: the compiler writes it past its tables, "
     "which may crash it or spoil the animation."},
    {MSG_CHECK_SMD_NO_FRAME, "MSG_CHECK_SMD_NO_FRAME",
     "\"%1\": the compiler finds no frame from %2 to %3 in it, and crashes."},
    {MSG_CHECK_SMD_NODES_AGAIN, "MSG_CHECK_SMD_NODES_AGAIN",
     "\"%1\", line %2: a blank line behind the end of the nodes makes the compiler read nodes "
     "once more, and it keeps only the first bone."},
    {MSG_CHECK_SMD_NODES_TWICE, "MSG_CHECK_SMD_NODES_TWICE",
     "\"%1\", line %2: a second block of nodes; the compiler takes its bones in place of the "
     "first block's."},
    {MSG_CHECK_SMD_SKIPPED, "MSG_CHECK_SMD_SKIPPED",
     "\"%1\", line %2: the compiler does not know \"%3\" and skips every line up to the next "
     "that begins with end, a block among them."},
    {MSG_CHECK_SMD_REPEATED, "MSG_CHECK_SMD_REPEATED",
     "(The blank line %1 made the compiler read the block before it once more.)"},
    {MSG_CHECK_PARENT_CLASH, "MSG_CHECK_PARENT_CLASH",
     "\"%1\": the bone \"%2\" has the parent \"%3\", and before it had \"%4\"; the compiler "
     "refuses a bone whose parent changes."},
    {MSG_CHECK_ANIM_PARENT_CLASH, "MSG_CHECK_ANIM_PARENT_CLASH",
     "\"%1\": the bone \"%2\" has the parent \"%3\", in the model \"%4\"; the compiler refuses "
     "the sequence."},
    {MSG_CHECK_TOO_MANY_BONES, "MSG_CHECK_TOO_MANY_BONES",
     "The model uses %1 bones (those a vertex is on, and their parents); the compiler takes "
     "fewer than %2."},
    {MSG_CHECK_LINK_BONE, "MSG_CHECK_LINK_BONE",
     "%1 names the bone \"%2\", which the model does not keep: no vertex is on it or on a bone "
     "below it."},
    {MSG_CHECK_TOO_MANY_VERTICES, "MSG_CHECK_TOO_MANY_VERTICES",
     "\"%1\" has %2 vertices after the compiler's merging; a part can have at most %3."},
    {MSG_CHECK_TOO_MANY_NORMALS, "MSG_CHECK_TOO_MANY_NORMALS",
     "\"%1\" has %2 normals after the compiler's merging; a part can have at most %3."},
    {MSG_CHECK_TOO_MANY_TRIANGLES, "MSG_CHECK_TOO_MANY_TRIANGLES",
     "\"%1\" has %2 triangles; a part can have at most %3."},
    {MSG_CHECK_PART_TEXTURES, "MSG_CHECK_PART_TEXTURES",
     "\"%1\" uses %2 textures; a part can use at most %3."},
    {MSG_CHECK_NEAR_LIMIT, "MSG_CHECK_NEAR_LIMIT",
     "\"%1\" comes to %2 %4 after the compiler's merging, give or take %5, and a part can have "
     "at most %3: the compiler may refuse it."},
    {MSG_CHECK_WORD_VERTICES, "MSG_CHECK_WORD_VERTICES", "vertices"},
    {MSG_CHECK_WORD_NORMALS, "MSG_CHECK_WORD_NORMALS", "normals"},
    {MSG_CHECK_TEXTURE_NOT_BMP, "MSG_CHECK_TEXTURE_NOT_BMP",
     "%1 uses the texture \"%2\", which is not a .bmp file; the compiler takes only those."},
    {MSG_CHECK_TEXTURE_MISSING, "MSG_CHECK_TEXTURE_MISSING",
     "The texture \"%2\" of %1 is in none of the compiler's texture folders: %3."},
    {MSG_CHECK_TOO_MANY_TEXTURES, "MSG_CHECK_TOO_MANY_TEXTURES",
     "The model has %1 textures; the compiler's table holds %2, and it writes the rest past its "
     "end."},
    {MSG_CHECK_MODEL_BUFFER, "MSG_CHECK_MODEL_BUFFER",
     "The textures alone come to %1 bytes, more than the %2 the compiler writes a model file "
     "into: it writes past the end of its buffer, and may crash or spoil the model."},
    {MSG_CHECK_BMP_NOT_BITMAP, "MSG_CHECK_BMP_NOT_BITMAP",
     "The texture \"%1\" is too short for the headers of a bitmap."},
    {MSG_CHECK_BMP_RESERVED, "MSG_CHECK_BMP_RESERVED",
     "The texture \"%1\" has something in the reserved fields of its file header; the compiler "
     "refuses it."},
    {MSG_CHECK_BMP_HEADER, "MSG_CHECK_BMP_HEADER",
     "The texture \"%1\" has a %2-byte info header with %3 planes; the compiler takes only the "
     "plain 40-byte one with 1 plane (save it as a Windows bitmap without colour space "
     "information)."},
    {MSG_CHECK_BMP_DEPTH, "MSG_CHECK_BMP_DEPTH",
     "The texture \"%1\" has %2 bits per pixel; the compiler takes only 8 bits with a palette (256 "
     "colours)."},
    {MSG_CHECK_BMP_COMPRESSED, "MSG_CHECK_BMP_COMPRESSED",
     "The texture \"%1\" is compressed (RLE); the compiler takes only uncompressed bitmaps."},
    {MSG_CHECK_BMP_PALETTE, "MSG_CHECK_BMP_PALETTE",
     "The texture \"%1\" gives %2 palette colours; the compiler has room for 256."},
    {MSG_CHECK_BMP_CUT_SHORT, "MSG_CHECK_BMP_CUT_SHORT",
     "The texture \"%1\" is cut short: its palette or pixels are not all in the file."},
    {MSG_CHECK_BMP_SIZE_FIELD, "MSG_CHECK_BMP_SIZE_FIELD",
     "The texture \"%1\" gives its file size as %2 bytes; the compiler reads the pixels up to "
     "there, and the file has %3."},
    {MSG_CHECK_BMP_TOP_DOWN, "MSG_CHECK_BMP_TOP_DOWN",
     "The texture \"%1\" stores its rows from the top (a negative height); the compiler crashes "
     "on it."},
    {MSG_CHECK_BMP_EMPTY, "MSG_CHECK_BMP_EMPTY",
     "The texture \"%1\" is %2 x %3 pixels; the compiler never finishes on an empty side."},
    {MSG_CHECK_BMP_NOT_POWER_OF_TWO, "MSG_CHECK_BMP_NOT_POWER_OF_TWO",
     "%1 textures have a side that is not a power of two (64, 128, 256, ...); the game scales "
     "them, and they may look blurred: %2."},
    {MSG_CHECK_TEXTURE_TOO_LARGE, "MSG_CHECK_TEXTURE_TOO_LARGE",
     "The texture \"%1\" gives a skin of %2 x %3 pixels as the meshes use it; with its palette "
     "that is more than the 640 x 480 bytes of the Half-Life SDK's compiler (later compilers "
     "take more)."},
    {MSG_CHECK_SEQUENCE_LARGE, "MSG_CHECK_SEQUENCE_LARGE",
     "The sequence \"%1\" comes to %2 bytes of animation data; the compiler refuses more than "
     "65535."},
    {MSG_CHECK_SEQUENCE_MAY_BE_LARGE, "MSG_CHECK_SEQUENCE_MAY_BE_LARGE",
     "The sequence \"%1\" comes to %2 bytes of animation data, give or take %3, close to the "
     "65535 the compiler takes: it may refuse it."},
    {MSG_UNSAVED_CHANGES, "MSG_UNSAVED_CHANGES",
     "The changes to %1 have not been saved. Save them now?"},
    {MSG_UNTITLED, "MSG_UNTITLED", "Untitled"},
    {MSG_TEXTURE_FOLDER_EMPTY, "MSG_TEXTURE_FOLDER_EMPTY",
     "The texture folder \"%1\" holds no bitmaps (*.bmp) yet."},
    {MSG_ANIMWIZ_DEFAULT_NAME, "MSG_ANIMWIZ_DEFAULT_NAME", "Name of the animation"},
    {MSG_PREVIEW_NO_GL, "MSG_PREVIEW_NO_GL",
     "OpenGL is not available here, so the preview cannot draw the model."},
    {MSG_PREVIEW_NO_PARTS, "MSG_PREVIEW_NO_PARTS",
     "No reference part to show: add one on the page of the model files."},
    {MSG_PREVIEW_PARTS_MISSING, "MSG_PREVIEW_PARTS_MISSING", "Not in the model folder: %1"},
    {MSG_PREVIEW_TEXTURES_MISSING, "MSG_PREVIEW_TEXTURES_MISSING",
     "Drawn as a checker, not in the texture folder: %1"},
    {MSG_PREVIEW_BIND_POSE, "MSG_PREVIEW_BIND_POSE", "%1 triangles; no animation selected"},
    {MSG_PREVIEW_FRAME, "MSG_PREVIEW_FRAME", "%1 triangles; %2: frame %3 of %4"},
    {MSG_MDL_UNREADABLE, "MSG_MDL_UNREADABLE", "The model file cannot be read."},
    {MSG_MDL_NOT_STUDIO, "MSG_MDL_NOT_STUDIO",
     "This is no studio model: the file starts with \"%1\" where \"IDST\" should stand."},
    {MSG_MDL_VERSION, "MSG_MDL_VERSION",
     "The studio model has version %1; only version 10 can be read."},
    {MSG_MDL_BEYOND_END, "MSG_MDL_BEYOND_END",
     "%1 reach beyond the end of the file (bytes %2 to %3 of %4)."},
    {MSG_MDL_BAD_COUNT, "MSG_MDL_BAD_COUNT", "%1: the count %2 is out of range."},
    {MSG_MDL_BAD_INDEX, "MSG_MDL_BAD_INDEX", "%1: %2 is out of range (%3 to %4)."},
    {MSG_MDL_BAD_ANIMATION, "MSG_MDL_BAD_ANIMATION", "%1: the animation values are broken."},
    {MSG_MDL_ANIMATION_TOO_LARGE, "MSG_MDL_ANIMATION_TOO_LARGE",
     "The animation data is too large to be checked (more than %1 runs)."},
    {MSG_MDL_IN_FILE, "MSG_MDL_IN_FILE", "%1: %2"},
    {MSG_MDL_GROUP_MISSING, "MSG_MDL_GROUP_MISSING",
     "The sequence group file %1 was not found; its sequences stand at rest."},
    {MSG_MDL_TEXTURES_MISSING, "MSG_MDL_TEXTURES_MISSING",
     "The texture file %1 was not found; the model is drawn without its textures."},
    {MSG_OPEN_COMPILED_TITLE, "MSG_OPEN_COMPILED_TITLE", "Open compiled model"},
    {MSG_COMPILED_UNREADABLE, "MSG_COMPILED_UNREADABLE", "%1 cannot be shown: %2"},
    {MSG_COMPILED_AT_REST, "MSG_COMPILED_AT_REST", "%1 triangles; the bones at rest"},
    {MSG_OVERLAY_DISTANCE, "MSG_OVERLAY_DISTANCE",
     "compiled skeleton (%1): largest distance %2 at \"%3\""},
    {MSG_OVERLAY_NO_SEQUENCE, "MSG_OVERLAY_NO_SEQUENCE",
     "the compiled model has no sequence \"%1\""},
    {MSG_OVERLAY_NO_MODEL, "MSG_OVERLAY_NO_MODEL", "no compiled model to compare: %1"},
    {MSG_OVERLAY_ONLY_COMPILED, "MSG_OVERLAY_ONLY_COMPILED",
     "bones only in the compiled model: %1"},
    {MSG_OVERLAY_ONLY_SOURCES, "MSG_OVERLAY_ONLY_SOURCES",
     "bones with vertices that the compiled model lacks: %1"},
    {MSG_OVERLAY_LOOP_END, "MSG_OVERLAY_LOOP_END",
     "at the end of a loop the compiled model repeats its first frame"},
    {MSG_PREVIEW_PAUSE, "MSG_PREVIEW_PAUSE", "Pause"},
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
