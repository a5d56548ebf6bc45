// The compile dialog as the compile command leaves it, in each language:
//   DlgCompile-AfterRun.png   a model compiled by the stand-in compiler
//   DlgCompile-Refused.png    a fresh document, saved and refused by the checks
#include "AppState.h"
#include "FakeCompiler.h"
#include "support/ModalScript.h"
#include "support/ScriptedServices.h"
#include "support/TempSettings.h"
#include "ui/compile/DlgCompile.h"
#include "ui/mainwindow/FrmMain.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>
#include <memory>

namespace {

using quarle::AppState;
using quarle::test::ModalScript;
using quarle::test::ScriptedServices;
using quarle::test::TempSettings;
using quarle::ui::DlgCompile;
using quarle::ui::FrmMain;

// Runs the compile command of a started window and saves the dialog once
// its closing row is there. The number of problems.
int ShootCompile(FrmMain& form, const QString& folder, const QString& name) {
    int failures = 0;
    bool shot = false;
    ModalScript script([&](QWidget* modal) {
        auto* dialog = qobject_cast<DlgCompile*>(modal);
        if (dialog == nullptr ||
            !QTest::qWaitFor([&] { return dialog->OKButton->isEnabled(); }, 20000)) {
            ++failures;
            modal->close();
            return;
        }
        QApplication::processEvents();
        const QString path = QDir(folder).filePath(name + QStringLiteral(".png"));
        if (dialog->grab().save(path)) {
            std::printf("%s\n", qPrintable(path));
            shot = true;
        }
        QTest::mouseClick(dialog->OKButton, Qt::LeftButton);
    });
    form.CmdCompile_Click();
    if (!shot) {
        std::fprintf(stderr, "gallery: no picture of %s\n", qPrintable(name));
        ++failures;
    }
    return failures;
}

} // namespace

int CompileRunGallery(const QString& folder, const char* languageFile) {
    QTemporaryDir models;
    QTemporaryDir work;
    const QDir dir(models.path());
    for (const char* smd : {"ref.smd", "run.smd"}) {
        QFile::copy(QStringLiteral(QUARLE_TEST_DATA "/smd/model/") + smd, dir.filePath(smd));
    }
    TempSettings settings;
    settings.Store().Set(QStringLiteral("Language"), QString::fromLatin1(languageFile));
    settings.Store().Set(QStringLiteral("StudioMDL"), QStringLiteral(QUARLE_FAKE_COMPILER));
    // Any file will do as the viewer: its box is then enabled.
    settings.Store().Set(QStringLiteral("ModelViewer"), QStringLiteral(QUARLE_FAKE_COMPILER));
    ScriptedServices services;
    int failures = 0;

    {
        auto state = std::make_unique<AppState>();
        FrmMain form(*state, services, settings.Store());
        form.WorkFolder = work.path();
        form.Form_Load();
        quarle::Document& doc = state->Doc;
        doc.ModelPath = models.path().toStdString();
        doc.TexturePath = doc.ModelPath;
        doc.BodyGroups[1].PartCount = 1;
        doc.BodyGroups[1].Parts[1] = "ref";
        doc.Anims[0][0].Name = "run";
        doc.Anims[0][0].SmdFile = "run";
        doc.Anims[0][0].Fps = 30;
        doc.Anims[0][0].ActivityId = "ACT_RUN 1";
        form.LstAnimations->addItem(QStringLiteral("run"));
        doc.QcFile = dir.filePath(QStringLiteral("robot.qc")).toStdString();
        doc.ModelName = dir.filePath(QStringLiteral("robot.mdl")).toStdString();
        failures += ShootCompile(form, folder, QStringLiteral("DlgCompile-AfterRun"));
    }
    {
        auto state = std::make_unique<AppState>();
        FrmMain form(*state, services, settings.Store());
        form.WorkFolder = work.path();
        form.Form_Load();
        services.QueueSave(quarle::platform::FilePick{dir.filePath(QStringLiteral("fresh")),
                                                      QStringLiteral("fresh")});
        failures += ShootCompile(form, folder, QStringLiteral("DlgCompile-Refused"));
    }
    if (services.Prompts().size() != 1) {
        std::fprintf(stderr, "gallery: the compile pictures asked %d questions\n",
                     static_cast<int>(services.Prompts().size()));
        ++failures;
    }
    return failures;
}
