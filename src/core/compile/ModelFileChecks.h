// The checks of the saved script and the model's files ahead of a compile.
// They read the script as the compiler will (CompilePlan), then the meshes,
// animations and bitmaps it names as the compiler reads them (CompilerSmd),
// and work out what the compiler works out from them (ModelBuild). They
// follow the checks of the document in CheckModelData.
//
// A row is an error only where the compiler refuses, crashes or writes a
// model the game cannot use; a warning where the model builds but may not
// be what the user expects, where the Half-Life SDK's compiler refuses what
// later compilers take, or where the compiler's arithmetic cannot be told
// exactly; nothing where the compiler takes it. A kind of warning that would
// repeat (bitmaps that are no power of two, files in other capitals) is one
// row for the model. Rows are in the language of texts; names in them come
// from the script (cp1252) and are turned to UTF-8.
#pragma once

#include "compile/CheckModelData.h"
#include "document/Document.h"
#include "localisation/MessageTexts.h"

#include <functional>
#include <string>

namespace quarle::compile {

// The compiler's and the model format's limits.
namespace studio {
inline constexpr int MaxBones = 128; // the compiler takes fewer than this
inline constexpr int MaxVertices = 2048; // per part
inline constexpr int MaxNormals = 2048;  // per part
inline constexpr int MaxTriangles = 20000;
inline constexpr int MaxTextures = 100;
inline constexpr int MaxPartTextures = 256;
inline constexpr long MaxSkinBytes = 640L * 480L; // skin pixels and the 768-byte palette
inline constexpr long MaxSequenceBytes = 65535;
inline constexpr std::size_t BoneNameRoom = 32;    // with the end of the name
inline constexpr std::size_t TextureNameRoom = 64;
inline constexpr long OutputBuffer = 16L * 1024 * 1024; // what the compiler writes a file into
inline constexpr long HeaderBytes = 244;                // a model file's header
inline constexpr long TextureEntryBytes = 80;           // a texture's entry
} // namespace studio

using AddRowFn = std::function<void(std::string text, RowKind kind)>;

// Runs the checks on the script saved at doc.QcFile and the files it names.
void CheckModelFiles(const Document& doc, const MessageTexts& texts, const AddRowFn& add);

} // namespace quarle::compile
