// What the two texture dialogs share: the texture names of the model's
// meshes with their problems told once, and the bitmaps of the texture
// folder.
#pragma once

#include "AppState.h"
#include "platform/Services.h"

#include <QImage>
#include <QStringList>
#include <span>
#include <string>

namespace quarle::ui {

// Adds the textures of the model's mesh parts to names[1..] from count on.
// Part files that cannot be read are skipped and named in one message; more
// names than the table holds are dropped with one message naming the limit.
void CollectTextures(const AppState& state, platform::Services& services,
                     std::span<std::string> names, int& count);

// The bitmaps of the texture folder ("*.bmp" in any case), sorted as the main
// window sorts file names; empty when the folder cannot be read.
QStringList BitmapFiles(const std::string& textureFolder);

// A bitmap of the texture folder by its name (found in any case), as Qt's
// image reader reads it: paletted 8-bit bitmaps as the game uses them and any
// other bitmap Qt reads. A null image when it can't be read, and for a name
// the document's code page cannot hold, which no bitmap of the folder has.
QImage LoadBitmap(const std::string& textureFolder, const QString& name);

} // namespace quarle::ui
