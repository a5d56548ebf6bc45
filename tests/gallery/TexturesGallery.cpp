// The two texture dialogs on a model whose meshes name real textures, with
// the bitmaps in its texture folder: the variations with the preview of a
// bitmap larger than its box (both scroll bars showing), and the render
// modes with a masked texture chosen. Part of the form gallery (Gallery.cpp
// calls TexturesGallery).
#include "GallerySupport.h"
#include "ui/textures/DlgTextureGroup.h"
#include "ui/textures/DlgTexturemode.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QRadioButton>
#include <QTemporaryDir>

namespace {

using quarle::gallery::Fail;
using quarle::gallery::Save;

void WriteText(const QString& path, const QByteArray& text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        Fail(QStringLiteral("cannot write %1").arg(path));
    }
}

// A bitmap as the game uses it: 8 bits with a palette. Bricks in two tones
// with a face-like disc, so that the preview shows a picture.
void WriteTexture(const QString& path, int width, int height, QColor tone) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(tone.darker(160));
    QPainter painter(&image);
    for (int y = 0; y < height; y += 24) {
        for (int x = (y / 24) % 2 * -24; x < width; x += 48) {
            painter.fillRect(x + 2, y + 2, 44, 20,
                             (x / 48 + y / 24) % 3 ? tone : tone.lighter(120));
        }
    }
    painter.setBrush(tone.lighter(150));
    painter.setPen(QPen(Qt::black, 3));
    painter.drawEllipse(QPoint(width / 2, height / 2), width / 5, height / 4);
    painter.end();
    if (!image.convertToFormat(QImage::Format_Indexed8).save(path, "BMP")) {
        Fail(QStringLiteral("cannot write %1").arg(path));
    }
}

} // namespace

void TexturesGallery(const QString& folder, const char* languageFile) {
    quarle::gallery::Window window(languageFile);
    quarle::ui::FrmMain& form = window.Start();
    quarle::Document& doc = window.State->Doc;

    QTemporaryDir model;
    const QDir dir(model.path());
    dir.mkdir(QStringLiteral("textures"));
    WriteText(dir.filePath(QStringLiteral("scientist_ref.smd")),
              "version 1\r\nnodes\r\nend\r\ntriangles\r\nface.bmp\r\nbody.bmp\r\nhands.bmp\r\n"
              "glasses_chrome.bmp\r\nend\r\n");
    WriteText(dir.filePath(QStringLiteral("scientist_grate.smd")),
              "version 1\r\nnodes\r\nend\r\ntriangles\r\ngrate_masked.bmp\r\nend\r\n");
    const struct {
        const char* name;
        int width, height;
        QColor tone;
    } bitmaps[] = {
        {"face.bmp", 128, 128, QColor(220, 180, 150)},
        {"face_bloody.bmp", 512, 384, QColor(170, 40, 30)},
        {"body.bmp", 256, 256, QColor(230, 230, 230)},
        {"body_team_red.bmp", 256, 256, QColor(200, 60, 60)},
        {"hands.bmp", 64, 64, QColor(220, 180, 150)},
        {"glasses_chrome.bmp", 64, 32, QColor(150, 150, 170)},
        {"grate_masked.bmp", 128, 128, QColor(90, 90, 90)},
    };
    for (const auto& bitmap : bitmaps) {
        WriteTexture(dir.filePath(QStringLiteral("textures/") + bitmap.name), bitmap.width,
                     bitmap.height, bitmap.tone);
    }
    doc.ModelPath = model.path().toStdString();
    doc.TexturePath = dir.filePath(QStringLiteral("textures")).toStdString();
    doc.BodyGroups[1].Name = "body";
    doc.BodyGroups[1].PartCount = 1;
    doc.BodyGroups[1].Parts[1] = "scientist_ref";
    doc.BodyGroupCount = 2;
    doc.BodyGroups[2].Name = "grate";
    doc.BodyGroups[2].PartCount = 1;
    doc.BodyGroups[2].Parts[1] = "scientist_grate";
    form.Update();

    {
        // Variation 2: the face turns bloody; the bloody face is larger than
        // the preview, so both scroll bars show.
        quarle::ui::DlgTextureGroup dialog(*window.State, window.Services, form, &form);
        dialog.setModal(false);
        dialog.show();
        dialog.TxtVarNr->setText(QStringLiteral("2"));
        dialog.LstTexture->setCurrentRow(0);
        dialog.ChkChangeTo->click();
        const auto found =
            dialog.FileChangeTo->findItems(QStringLiteral("face_bloody.bmp"), Qt::MatchExactly);
        if (found.size() != 1) {
            Fail(QStringLiteral("face_bloody.bmp is not listed"));
        } else {
            dialog.FileChangeTo->setCurrentItem(found.first());
        }
        Save(&dialog, folder, QStringLiteral("DlgTextureGroup"));
    }
    {
        quarle::ui::DlgTexturemode dialog(*window.State, window.Services, form, &form);
        dialog.setModal(false);
        dialog.show();
        dialog.LstTextures->setCurrentRow(4);
        dialog.OptModes[1]->click();
        Save(&dialog, folder, QStringLiteral("DlgTexturemode"));
    }
    quarle::gallery::ExpectNoPrompts(window.Services,
                                     QStringLiteral("the texture dialogs (%1)").arg(languageFile));
}
