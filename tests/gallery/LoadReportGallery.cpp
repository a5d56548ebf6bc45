// The message after a load of a script from elsewhere, in each language, as
// the desktop's message box shows it:
//   LoadReport.png   a decompiled script with a line the compiler refuses
#include "GallerySupport.h"

#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QTemporaryDir>

void LoadReportGallery(const QString& folder, const char* languageFile) {
    using quarle::gallery::Fail;
    QTemporaryDir models;
    quarle::gallery::Window window(languageFile);
    quarle::ui::FrmMain& form = window.Start();
    form.WorkFolder = models.path();
    const QByteArray m = models.path().toUtf8();
    QByteArray script = "$cd \"" + m + "\"\r\n$cdtexture \"" + m +
                        "/tex\"\r\n$cliptotextures\r\n$body body \"ref\"\r\n"
                        "$sequence \"idle\" \"idle\" fps 30 node 3 transition 1 2\r\n";
    for (int i = 1; i < 130; ++i) {
        script += "$sequence \"s" + QByteArray::number(i) + "\" \"idle\" fps 29.97\r\n";
    }
    script += "$Scale 2\r\n";
    QDir(models.path()).mkpath(QStringLiteral("tex"));
    for (const char* name : {"ref.smd", "tex/a.bmp", "barney.qc"}) {
        QFile file(QDir(models.path()).filePath(QString::fromLatin1(name)));
        if (!file.open(QIODevice::WriteOnly) ||
            file.write(QByteArray(name) == "barney.qc" ? script : "x") < 0) {
            Fail(QStringLiteral("cannot write %1").arg(file.fileName()));
        }
    }
    window.Services.QueueMsgBox(quarle::platform::Answer::Ok);
    form.Commands().OpenQcFile(
        QDir(models.path()).filePath(QStringLiteral("barney.qc")).toStdString());
    const auto& prompts = window.Services.Prompts();
    if (prompts.size() != 1) {
        Fail(QStringLiteral("LoadReport: %1 prompts instead of one").arg(prompts.size()));
        return;
    }
    QMessageBox box(QMessageBox::Warning, prompts[0].Title, prompts[0].Text, QMessageBox::Ok,
                    &form);
    box.show();
    quarle::gallery::Save(&box, folder, QStringLiteral("LoadReport"));
}
