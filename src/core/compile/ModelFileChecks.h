// The checks of the model's files ahead of a compile: the meshes and
// animations the script names, the bitmaps their triangles use, and the
// limits of the compiler and of the model format. They follow the checks of
// the document in CheckModelData.
//
// A fault the compiler is certain to refuse is an error; what only may go
// wrong (a file found under other capitals, a texture that is not a power of
// two, a part close to a limit, a sequence that may be too large) is a
// warning. Rows are in the language of texts; names in them come from the
// document (cp1252) and are turned to UTF-8.
#pragma once

#include "compile/CheckModelData.h"
#include "document/Document.h"
#include "localisation/MessageTexts.h"

#include <functional>
#include <string>

namespace quarle::compile {

// The compiler's and the format's limits.
namespace studio {
inline constexpr int MaxBones = 128;
inline constexpr int MaxVertices = 2048; // per reference part
inline constexpr int MaxNormals = 2048;  // per reference part
inline constexpr int MaxTriangles = 20000;
inline constexpr int MaxTextures = 100;
inline constexpr long MaxSkinBytes = 640L * 480L; // skin pixels and the 768-byte palette
inline constexpr long PaletteBytes = 768;
inline constexpr long MaxSequenceBytes = 64L * 1024L;
} // namespace studio

using AddRowFn = std::function<void(std::string text, RowKind kind)>;

// Runs the file checks on the document as it will be compiled (TexturePath
// already holds the folder the compiler will search).
void CheckModelFiles(const Document& doc, const MessageTexts& texts, const AddRowFn& add);

} // namespace quarle::compile
