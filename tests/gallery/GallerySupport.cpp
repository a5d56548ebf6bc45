#include "GallerySupport.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QStringList>
#include <QWidget>
#include <cstdio>

namespace quarle::gallery {
namespace {

int failures = 0;
QStringList saved; // folder/name of each picture written

} // namespace

void Fail(const QString& what) {
    std::fprintf(stderr, "gallery: %s\n", qPrintable(what));
    ++failures;
}

int Failures() {
    return failures;
}

void Save(QWidget* form, const QString& folder, const QString& name) {
    QApplication::processEvents();
    const QString path = QDir(folder).filePath(name + QStringLiteral(".png"));
    if (!form->grab().save(path)) {
        Fail(QStringLiteral("cannot write %1").arg(path));
    } else {
        std::printf("%s\n", qPrintable(path));
        saved << QDir(folder).filePath(name);
    }
}

bool Shown(const QString& folder, const QString& name) {
    const QString picture = QDir(folder).filePath(name);
    for (const QString& path : saved) {
        if (path == picture || path.startsWith(picture + QLatin1Char('-'))) {
            return true;
        }
    }
    return false;
}

void ExpectNoPrompts(const test::ScriptedServices& services, const QString& what) {
    if (!services.Prompts().isEmpty()) {
        Fail(QStringLiteral("%1 asked: %2").arg(what, services.Prompts().first().Text));
    }
}

Window::Window(const char* languageFile) {
    Settings.Store().Set(QStringLiteral("Language"), QString::fromLatin1(languageFile));
    if (!QFile::exists(QDir(Services.ProgramFolderPath).filePath(languageFile))) {
        Fail(QStringLiteral("%1 is missing beside the program").arg(languageFile));
    }
    Form = std::make_unique<ui::FrmMain>(*State, Services, Settings.Store());
}

ui::FrmMain& Window::Start() {
    Form->Form_Load();
    Form->show();
    return *Form;
}

} // namespace quarle::gallery
