// The mascot on the main window: parked, and speaking at each of its six
// tips over a filled model; and its ten frames with the close box and the
// wizard picture as one sheet. Part of the form gallery (Gallery.cpp calls
// AssistantGallery).
#include "GallerySupport.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>

namespace {

using quarle::gallery::Fail;
using quarle::gallery::Save;
using quarle::ui::FrmMain;

// The frames at twice their size on the window's grey, numbered, then the
// close box up and pressed, then the wizard picture.
void FrameSheet(const FrmMain& form, const QString& programFolder, const QString& folder) {
    if (form.ImgLstWizAnims.size() != 10 || form.ImgLstMain.size() != 2) {
        Fail(QStringLiteral("the mascot's pictures are missing"));
        return;
    }
    const QPixmap wizard(QDir(programFolder).filePath(QStringLiteral("bilder/quarle.jpg")));
    if (wizard.isNull()) {
        Fail(QStringLiteral("the wizard picture is missing"));
    }
    const int cell = 216;
    QPixmap sheet(5 * cell + 20 + wizard.width() * 2, 2 * cell + 20);
    sheet.fill(QColor(240, 240, 240));
    QPainter p(&sheet);
    for (int n = 0; n < 10; ++n) {
        const QPoint at(10 + (n % 5) * cell, 10 + (n / 5) * cell);
        p.drawPixmap(QRect(at, QSize(200, 200)), form.ImgLstWizAnims[n]);
        p.drawText(at + QPoint(4, 14), QString::number(n));
    }
    p.drawPixmap(QRect(10 + 5 * cell - 40, 10, 16, 16), form.ImgLstMain[0]);
    p.drawPixmap(QRect(10 + 5 * cell - 40, 36, 16, 16), form.ImgLstMain[1]);
    p.drawPixmap(QRect(10 + 5 * cell, 10, wizard.width() * 2, wizard.height() * 2), wizard);
    p.end();
    QLabel label;
    label.setPixmap(sheet);
    label.resize(sheet.size());
    Save(&label, folder, QStringLiteral("Assistant-Frames"));
}

} // namespace

// Renders into folder, in the language of languageFile.
void AssistantGallery(const QString& folder, const char* languageFile) {
    quarle::gallery::Window window(languageFile);
    FrmMain& form = window.Start();
    // The pictures show one moment: no random pose in between.
    form.TmrAnim->stop();
    Save(&form, folder, QStringLiteral("FrmMain-Assistant-Parked"));
    FrameSheet(form, window.Services.ProgramFolderPath, folder);

    // A model with its paths and a reference part, so that every tip points
    // at a control that is filled in as the user would find it.
    QTemporaryDir model;
    const QDir sample(QStringLiteral(QUARLE_TEST_DATA "/model"));
    for (const QString& name : sample.entryList(QDir::Files)) {
        if (!QFile::copy(sample.filePath(name), QDir(model.path()).filePath(name))) {
            Fail(QStringLiteral("cannot copy %1").arg(name));
        }
    }
    window.State->Doc.ModelPath = model.path().toStdString();
    window.State->Doc.TexturePath = model.path().toStdString();
    form.Update();
    const auto ref = form.LstFiles->findItems(QStringLiteral("robot_ref"), Qt::MatchExactly);
    if (ref.size() == 1) {
        form.LstFiles->setCurrentItem(ref.first());
        form.CmdAdd->click();
    }

    form.MnuWizardsWizAn->trigger();
    for (int step = 0; step <= 5; ++step) {
        // The tips of the animations page are seen on that page.
        form.TabSmd->setCurrentIndex(step >= 4 ? 1 : 0);
        form.PicWizTag = QString::number(step);
        form.RefreshWizard();
        form.TmrAnim->stop();
        Save(&form, folder, QStringLiteral("FrmMain-Assistant-Tip%1").arg(step));
    }
    form.PicWizClose_Click();
    form.TmrAnim->stop();
    Save(&form, folder, QStringLiteral("FrmMain-Assistant-Closed"));
    quarle::gallery::ExpectNoPrompts(window.Services,
                                     QStringLiteral("assistant (%1)").arg(languageFile));
}
