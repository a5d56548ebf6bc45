// The compile dialog as the compile command leaves it, in each language:
//   DlgCompile-AfterRun.png   a model compiled by the stand-in compiler
//   DlgCompile-Refused.png    a fresh document, saved and refused by the checks
#include "FakeCompiler.h"
#include "GallerySupport.h"
#include "support/ModalScript.h"
#include "ui/compile/DlgCompile.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {

using quarle::gallery::Fail;
using quarle::gallery::Save;
using quarle::test::ModalScript;
using quarle::ui::DlgCompile;
using quarle::ui::FrmMain;

// Runs the compile command of a started window and saves the dialog once
// its closing row is there.
void ShootCompile(FrmMain& form, const QString& folder, const QString& name) {
    bool shot = false;
    ModalScript script([&](QWidget* modal) {
        auto* dialog = qobject_cast<DlgCompile*>(modal);
        if (dialog == nullptr ||
            !QTest::qWaitFor([&] { return dialog->OKButton->isEnabled(); }, 20000)) {
            Fail(QStringLiteral("%1: the compile did not finish").arg(name));
            modal->close();
            return;
        }
        Save(dialog, folder, name);
        shot = true;
        QTest::mouseClick(dialog->OKButton, Qt::LeftButton);
    });
    form.Commands().CmdCompile_Click();
    if (!shot) {
        Fail(QStringLiteral("no picture of %1").arg(name));
    }
}

// A window in the language whose compiler is the stand-in and whose working
// files go to work.
void Configure(quarle::gallery::Window& window, const QString& work) {
    auto& store = window.Settings.Store();
    store.Set(QStringLiteral("StudioMDL"), QStringLiteral(QUARLE_FAKE_COMPILER));
    // Any file will do as the viewer: its box is then enabled.
    store.Set(QStringLiteral("ModelViewer"), QStringLiteral(QUARLE_FAKE_COMPILER));
    window.Form->WorkFolder = work;
}

} // namespace

void CompileRunGallery(const QString& folder, const char* languageFile) {
    QTemporaryDir models;
    QTemporaryDir work;
    const QDir dir(models.path());
    for (const char* smd : {"ref.smd", "run.smd"}) {
        QFile::copy(QStringLiteral(QUARLE_TEST_DATA "/smd/model/") + smd, dir.filePath(smd));
    }
    {
        quarle::gallery::Window window(languageFile);
        Configure(window, work.path());
        FrmMain& form = window.Start();
        quarle::Document& doc = window.State->Doc;
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
        ShootCompile(form, folder, QStringLiteral("DlgCompile-AfterRun"));
        quarle::gallery::ExpectNoPrompts(window.Services, QStringLiteral("the compile"));
    }
    {
        quarle::gallery::Window window(languageFile);
        Configure(window, work.path());
        FrmMain& form = window.Start();
        window.Services.QueueSave(quarle::platform::FilePick{dir.filePath(QStringLiteral("fresh")),
                                                             QStringLiteral("fresh")});
        ShootCompile(form, folder, QStringLiteral("DlgCompile-Refused"));
        if (window.Services.Prompts().size() != 1) {
            Fail(QStringLiteral("the refused compile asked %1 questions")
                     .arg(window.Services.Prompts().size()));
        }
    }
}
