// The checks ahead of a compile: the document, the size of the animation
// list and the file system, turned into rows for the compile dialog's list
// and a count of errors. Two checks repair something on the way: an empty
// texture folder takes the model folder, and a model without animations gets
// an idle sequence appended to its saved script.
#pragma once

#include "AppState.h"
#include "document/Document.h"
#include "localisation/MessageTexts.h"

#include <array>
#include <string>
#include <vector>

namespace quarle::compile {

enum class RowKind { Info, Warning, Error };

struct CheckRow {
    std::string Text;
    RowKind Kind = RowKind::Info;

    bool operator==(const CheckRow&) const = default;
};

using IdsTextTable = std::array<std::string, LastIds + 1>;

struct CheckInput {
    // The compiler's path from the settings. Unset: the compiler is not
    // looked at (a check of the script alone), and its three checks give no row.
    const std::string* StudioMdlPath = nullptr;
    // Rows of the animation list on show in the main window.
    int AnimationRows = 0;
    // Texts of the global strings in the active language.
    const IdsTextTable* Texts = nullptr;
    // Append the idle sequence to Doc.QcFile when there is no animation.
    // Off for a dry run that must leave the script as it is.
    bool AppendIdleLine = true;
    // Texts of the messages in the active language; English when unset.
    const MessageTexts* Messages = nullptr;
    // Read the model's meshes, animations and bitmaps (checks 10 on). Off
    // for a check of the document alone.
    bool CheckFiles = true;
};

// Receives each row the moment it is found, so a form can show the rows one
// by one.
class CheckHost {
public:
    virtual ~CheckHost() = default;
    virtual void AddRow(const CheckRow& row) = 0;
};

struct CheckResult {
    std::vector<CheckRow> Rows;
    int ErrorCount = 0;
};

// Runs every check in its order and returns all rows: those of the document,
// then those of the model's files (ModelFileChecks.h). doc.TexturePath may
// change (the empty texture folder takes the model folder). A script that
// cannot take the idle line gives an error row of its own.
CheckResult CheckModelData(Document& doc, const CheckInput& input, CheckHost* host = nullptr);

// The line appended to a script for a model without animations, without its
// line end.
std::string IdleSequenceLine(const Document& doc);

} // namespace quarle::compile
