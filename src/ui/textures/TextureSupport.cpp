#include "ui/textures/TextureSupport.h"

#include "document/InputFile.h"
#include "document/ModelTextures.h"
#include "document/Paths.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "ui/localisation/Messages.h"

#include <QBuffer>
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
            files += QStringLiteral("\n") + platform::FromCp1252(path);
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
        files.append(platform::FromCp1252(name));
    }
    return files;
}

QImage LoadBitmap(const std::string& textureFolder, const QString& name) {
    const std::optional<std::string> bytes = platform::ToCp1252(name);
    if (textureFolder.empty() || !bytes || bytes->empty()) {
        return {};
    }
    const std::optional<std::string> data =
        ReadFileText(paths::Join(textureFolder, *bytes), FileKind::Bitmap);
    if (!data) {
        return {};
    }
    QByteArray buffered =
        QByteArray::fromRawData(data->data(), static_cast<qsizetype>(data->size()));
    QBuffer file(&buffered);
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true);
    QImage image;
    if (!reader.read(&image)) {
        return {};
    }
    return image;
}

} // namespace quarle::ui
