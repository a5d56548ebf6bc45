// The texture names of a model: the .bmp lines of every mesh part of its body
// groups, gathered the way both texture dialogs list them.
#pragma once

#include "document/Document.h"

#include <span>
#include <string>
#include <vector>

namespace quarle {

struct TextureScanResult {
    // Part files (ModelPath, the part's name and ".smd") that could not be
    // read; their textures are missing from the names.
    std::vector<std::string> Unreadable;
    // A new name did not fit the table: it and every later one were dropped.
    bool Full = false;
};

// For each body group 1..BodyGroupCount and each of its parts that is
// neither empty nor "<blank>", adds the part file's texture lines to
// names[1..] from count on (CollectBmpLines: case-blind duplicates skipped,
// first-seen order). Names already in the table stay where they are.
TextureScanResult CollectModelTextures(const Document& doc, std::span<std::string> names,
                                       int& count);

} // namespace quarle
