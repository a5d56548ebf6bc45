// Everything the forms share for a run: the document, the tool settings, the
// texts of the global strings. One instance is built at start and passed to
// every form; each test builds its own.
#pragma once

#include "document/Document.h"
#include "document/Skeleton.h"
#include "localisation/MessageTexts.h"

#include <array>
#include <string>
#include <string_view>

namespace quarle {

// The settings held in shared fields between the start and stop sequences.
// The programs' paths and the recent files are cp1252 text, as every path the
// core is given.
struct ToolSettings {
    std::string StudioMdlPath;
    std::string ModelViewerPath;
    std::string TextEditorPath;
    std::string LanguageFile;
    std::array<std::string, 4> RecentFiles{"...", "...", "...", "..."};
};

// The model viewer's path that names the program's own preview of compiled
// models instead of a program.
inline constexpr std::string_view PreviewViewer = "<preview>";

// Whether models are opened in the program's own preview: the viewer is
// that, or none is set.
inline bool ViewsInPreview(const ToolSettings& tools) {
    return tools.ModelViewerPath.empty() || tools.ModelViewerPath == PreviewViewer;
}

// What the 3D preview shows beyond the document: the texture variation row
// (1: the model's own textures) and the controller, as last chosen in their
// dialogs.
struct PreviewChoice {
    int TextureRow = 1;
    int Controller = 0;
};

inline constexpr int LastIds = 93; // IdsNames(0..93), IdsTexts(0..93)

struct AppState {
    Document Doc;
    ToolSettings Settings;
    std::array<std::string, LastIds + 1> IdsNames{};
    std::array<std::string, LastIds + 1> IdsTexts{};
    // Messages that have no global string; English until a language file
    // with a messages section is read.
    MessageTexts MsgTexts = DefaultMessageTexts();
    bool LocalisationMode = false;
    i16 OriginEditX = 0;
    i16 OriginEditY = 0;
    i16 OriginEditZ = 0;
    // The bone tree of the skeleton dialogs; not part of the document.
    SkeletonTables Skeleton;
    PreviewChoice Preview;
};

} // namespace quarle
