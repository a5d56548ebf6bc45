#include "gallery/GalleryExtras.h"

#include <map>
#include <string>

namespace quarle::gallery {
namespace {

// Filled during static initialisation, before main runs.
std::map<std::string, ExtraPictures>& Registry() {
    static std::map<std::string, ExtraPictures> registry;
    return registry;
}

} // namespace

GalleryExtra::GalleryExtra(const char* name, ExtraPictures pictures) {
    Registry()[name] = pictures;
}

int RunExtras(const QString& folder, const char* languageFile) {
    int failures = 0;
    for (const auto& entry : Registry()) {
        failures += entry.second(folder, languageFile);
    }
    return failures;
}

} // namespace quarle::gallery
