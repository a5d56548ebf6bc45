// The form gallery: every form that exists, built, started and rendered to
// PNG in each language, for people to look at. Usage: quarle_gallery OUTDIR
// (writes OUTDIR/de/*.png and OUTDIR/en/*.png); with --preview only the
// windows that draw with GL, which need a platform with GL. Exits non-zero
// when a language file is missing or a form asked an unexpected question. A
// form of the catalogue that no scene below shows is rendered as it is built,
// so a new form is in the gallery from the start.
#include "GallerySupport.h"
#include "ui/FormCatalogue.h"
#include "ui/localisation/ApplyLanguage.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QLocale>
#include <QMenu>
#include <QTabWidget>
#include <QTemporaryDir>

// The two pages and their dialogs (PagesGallery.cpp).
void PagesGallery(const QString& folder, const char* languageFile);
// The compile dialog after a run and after a refusal (CompileRunGallery.cpp).
void CompileRunGallery(const QString& folder, const char* languageFile);
// The texture variations and render modes (TexturesGallery.cpp).
void TexturesGallery(const QString& folder, const char* languageFile);
// The model settings and the dialogs of one animation (DetailDialogsGallery.cpp).
void DetailDialogsGallery(const QString& folder, const char* languageFile);
// The attachment and controller dialogs on a skeleton (SkeletonGallery.cpp).
void SkeletonGallery(const QString& folder, const char* languageFile);
// Every page of both wizards, filled on the sample model folder (WizardsGallery.cpp).
void WizardsGallery(const QString& folder, const char* languageFile);
// The mascot parked and at each tip, and its frames (AssistantGallery.cpp).
void AssistantGallery(const QString& folder, const char* languageFile);
// The message after a load with findings (LoadReportGallery.cpp).
void LoadReportGallery(const QString& folder, const char* languageFile);
// The settings dialog, the translation tools and the about box
// (LocalisationGallery.cpp).
void LocalisationGallery(const QString& folder, const char* languageFile);
// The 3D preview, drawn with GL (PreviewGallery.cpp).
void PreviewGallery(const QString& folder, const char* languageFile);

namespace {

using quarle::AppState;
using quarle::gallery::Fail;
using quarle::gallery::Save;
using quarle::ui::FrmMain;

void WriteFile(const QString& path, const QByteArray& text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        Fail(QStringLiteral("cannot write %1").arg(path));
    }
}

// A small model folder, so that the pages show what they are for.
void FillModel(FrmMain& form, AppState& state, const QString& folder) {
    const QByteArray mesh = "version 1\r\nnodes\r\nend\r\ntriangles\r\nend\r\n";
    const QByteArray anim = "version 1\r\nnodes\r\nend\r\nskeleton\r\ntime 0\r\nend\r\n";
    for (const char* name : {"robot_ref", "robot_head"}) {
        WriteFile(QDir(folder).filePath(QString::fromLatin1(name) + ".smd"), mesh);
    }
    for (const char* name : {"idle", "walk", "run", "jump", "die_back"}) {
        WriteFile(QDir(folder).filePath(QString::fromLatin1(name) + ".smd"), anim);
    }
    quarle::Document& doc = state.Doc;
    doc.ModelPath = folder.toStdString();
    doc.TexturePath = (folder + "/textures").toStdString();
    doc.BodyGroups[1].PartCount = 1;
    doc.BodyGroups[1].Parts[1] = "robot_ref";
    doc.BodyGroupCount = 2;
    doc.BodyGroups[2].Name = "head";
    doc.BodyGroups[2].PartCount = 2;
    doc.BodyGroups[2].Parts[1] = "robot_head";
    doc.BodyGroups[2].Parts[2] = quarle::Blank;
    const char* anims[] = {"idle", "walk", "run"};
    for (int s = 0; s < 3; ++s) {
        doc.Anims[0][static_cast<std::size_t>(s)].Name = anims[s];
        doc.Anims[0][static_cast<std::size_t>(s)].SmdFile = anims[s];
        form.LstAnimations->addItem(QString::fromLatin1(anims[s]));
    }
    form.Update();
}

void MainWindow(const QString& folder, const char* languageFile) {
    quarle::gallery::Window window(languageFile);
    // Two recent files, so that the file menu shows both kinds of entry.
    window.Settings.Store().Set(QStringLiteral("RecentFile0"),
                                QStringLiteral("c:\\models\\robot.qc"));
    window.Settings.Store().Set(QStringLiteral("RecentFile1"),
                                QStringLiteral("c:\\models\\scientist.qc"));
    FrmMain& form = window.Start();
    Save(&form, folder, QStringLiteral("FrmMain"));

    // The file menu, open: entries, separator lines and the recent files.
    form.MnuDatei->popup(form.mapToGlobal(QPoint(0, 0)));
    Save(form.MnuDatei, folder, QStringLiteral("FrmMain-MnuDatei"));
    form.MnuDatei->hide();

    QTemporaryDir model;
    FillModel(form, *window.State, model.path());
    Save(&form, folder, QStringLiteral("FrmMain-ModelFiles"));
    form.TabSmd->setCurrentIndex(1);
    Save(&form, folder, QStringLiteral("FrmMain-Animations"));
    quarle::gallery::ExpectNoPrompts(window.Services,
                                     QStringLiteral("FrmMain (%1)").arg(languageFile));
}

// A start in localisation mode shows the localise button.
void MainWindowLocalising(const QString& folder, const char* languageFile) {
    quarle::gallery::Window window(languageFile);
    window.State->LocalisationMode = true;
    Save(&window.Start(), folder, QStringLiteral("FrmMain-Localisation"));
}

// Every form of the catalogue that no scene showed, built with an empty
// document, in the language it loads with.
void CatalogueGallery(const QString& folder, const char* languageFile) {
    quarle::gallery::Window window(languageFile);
    FrmMain& main = window.Start();
    quarle::ui::FormNeeds needs{*window.State, window.Services, window.Settings.Store(), main};
    for (const quarle::ui::CataloguedForm& catalogued : quarle::ui::FormCatalogue()) {
        const QString name = QString::fromLatin1(catalogued.Name);
        // The preview draws with GL: the run with --preview shows it.
        if (quarle::gallery::Shown(folder, name) || name == QLatin1String("FrmPreview")) {
            continue;
        }
        const std::unique_ptr<QWidget> form = catalogued.Make(needs);
        if (catalogued.AppliesLanguage) {
            quarle::ui::ApplyLanguage(*window.State, window.Services, form.get());
        }
        form->show();
        Save(form.get(), folder, name);
        form->hide();
    }
    quarle::gallery::ExpectNoPrompts(window.Services,
                                     QStringLiteral("the catalogue (%1)").arg(languageFile));
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QLocale::setDefault(QLocale::c());
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("QuarleGallery"));

    const QString out = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("gallery");
    const bool gl = argc > 2 && QByteArray(argv[2]) == "--preview";
    const struct {
        const char* folder;
        const char* file;
    } languages[] = {{"de", "deutsch.lng"}, {"en", "english.lng"}};
    for (const auto& language : languages) {
        const QString folder = QDir(out).filePath(QString::fromLatin1(language.folder));
        if (!QDir().mkpath(folder)) {
            Fail(QStringLiteral("cannot make %1").arg(folder));
            continue;
        }
        if (gl) {
            PreviewGallery(folder, language.file);
            continue;
        }
        MainWindow(folder, language.file);
        MainWindowLocalising(folder, language.file);
        PagesGallery(folder, language.file);
        CompileRunGallery(folder, language.file);
        TexturesGallery(folder, language.file);
        DetailDialogsGallery(folder, language.file);
        SkeletonGallery(folder, language.file);
        WizardsGallery(folder, language.file);
        AssistantGallery(folder, language.file);
        LoadReportGallery(folder, language.file);
        LocalisationGallery(folder, language.file);
        CatalogueGallery(folder, language.file);
    }
    return quarle::gallery::Failures() == 0 ? 0 : 1;
}
