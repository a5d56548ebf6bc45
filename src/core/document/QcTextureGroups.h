// The texture directives the forms show, and how they map onto the
// document's texture tables: $texrendermode lines onto the render mode of a
// texture, the first $texturegroup onto the table of variations. The
// compiler takes texture names in any case and without what ends a part
// file's texture line that is no visible character, and so does the mapping.
//
// A texture group maps by its first row, which names the columns; each
// further row, up to the brace that closes it, is a variation. A column that
// names no texture of the forms (one beyond the tenth) is kept as the
// script wrote it, row by row.
#pragma once

#include "document/Document.h"
#include "document/ScriptLayout.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarle {

struct RenderModeWords {
    std::string Texture;
    u8 Mode = 0; // 1 masked, 2 additive
};

// Sets the render modes of the lines on the textures of doc.TextureModes
// (their names filled from the parts already). Each line gives its read:
// Slot 0 for one the forms cannot show (a texture they do not list, or a
// second mode of a texture, which the compiler adds to the first).
std::vector<RenderModeRead> MapRenderModes(Document& doc, const std::vector<RenderModeWords>& lines);

// The names of a texture group's rows, as the script wrote them.
struct TextureGroupWords {
    std::string Name;
    std::vector<std::vector<std::string>> Rows;
};

// Fills the variations of doc (base row scanned already) from the group.
// Nothing when the table cannot hold it (no texture to map onto, no rows,
// more rows than the table has, two columns of one texture).
std::optional<TextureGroupRead> MapTextureGroup(Document& doc, TextureGroupWords words);

// Whether the user changed the variations since the load.
bool TextureGroupChanged(const Document& doc, const TextureGroupRead& read);

// The lines of the group the forms hold, as a save writes them: the script's
// name, columns in the script's order (then any other column the user gave
// a variation), every row the script had and any the user added.
std::vector<std::string> TextureGroupLines(const Document& doc, const TextureGroupRead& read);

// The lines of a new group: "$texturegroup dummi" and its block, the base
// row and each used variation row (empty when no row is used).
std::vector<std::string> NewTextureGroupLines(const Document& doc);

} // namespace quarle
