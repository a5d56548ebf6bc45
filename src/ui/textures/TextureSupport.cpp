#include "ui/textures/TextureSupport.h"

#include "document/ModelTextures.h"
#include "document/Paths.h"
#include "localisation/GlobalStrings.h"
#include "ui/localisation/Messages.h"

#include <QImageReader>

namespace quarle::ui {

namespace {

void Warn(const AppState& state, platform::Services& services, const QString& text) {
    services.MsgBox(text, platform::Buttons::Ok, platform::Icon::Exclamation,
                    QString::fromStdString(state.IdsTexts[IDS_ERROR]));
}

} // namespace

void CollectTextures(const AppState& state, platform::Services& services,
                     std::span<std::string> names, int& count) {
    const TextureScanResult result = CollectModelTextures(state.Doc, names, count);
    if (!result.Unreadable.empty()) {
        QString files;
        for (const std::string& path : result.Unreadable) {
            files += QStringLiteral("\n") + QString::fromStdString(path);
        }
        Warn(state, services, MessageText(state, MSG_TEXTURE_PARTS_UNREADABLE, {files}));
    }
    if (result.Full) {
        Warn(state, services,
             MessageText(state, MSG_TEXTURES_FULL,
                         {QString::number(static_cast<int>(names.size()) - 1)}));
    }
}

QStringList BitmapFiles(const std::string& textureFolder) {
    QStringList files;
    if (textureFolder.empty()) {
        return files;
    }
    for (const std::string& name : paths::ListFiles(textureFolder, ".bmp")) {
        files.append(QString::fromStdString(name));
    }
    return files;
}

QImage LoadBitmap(const std::string& textureFolder, const QString& name) {
    if (textureFolder.empty() || name.isEmpty()) {
        return {};
    }
    const std::optional<std::string> path =
        paths::Resolve(paths::Join(textureFolder, name.toStdString()));
    if (!path) {
        return {};
    }
    QImageReader reader(QString::fromStdString(*path));
    reader.setDecideFormatFromContent(true);
    QImage image;
    if (!reader.read(&image)) {
        return {};
    }
    return image;
}

} // namespace quarle::ui
