// Pictures of the gallery that live in files of their own. A file registers
// its function with a static GalleryExtra; main runs every registered
// function for each language, after the main window's pictures.
#pragma once

#include <QString>

namespace quarle::gallery {

// Writes the pictures of one language into folder and returns how many
// things went wrong (0 when all is well).
using ExtraPictures = int (*)(const QString& folder, const char* languageFile);

struct GalleryExtra {
    GalleryExtra(const char* name, ExtraPictures pictures);
};

// Runs every registered function, in the order of their names; the sum of
// what went wrong.
int RunExtras(const QString& folder, const char* languageFile);

} // namespace quarle::gallery
