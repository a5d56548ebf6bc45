// The main road in one go, as a user walks it: start with the shipped German
// texts, open a script from disk, save it under a new name, compile it with
// the stand-in compiler, open the model in the viewer, start afresh, reopen
// the script from the recent list, save it again, and stop.
#include "AppState.h"
#include "FakeCompiler.h"
#include "localisation/GlobalStrings.h"
#include "support/ModalScript.h"
#include "support/ScriptedServices.h"
#include "support/TempSettings.h"
#include "ui/compile/DlgCompile.h"
#include "ui/mainwindow/FrmMain.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace quarle::ui {
namespace {

QByteArray Read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

QStringList Items(const QListWidget* list) {
    QStringList items;
    for (int i = 0; i < list->count(); ++i) {
        items << list->item(i)->text();
    }
    return items;
}

TEST(EndToEnd, OpenSaveCompileViewAndReopen) {
    QTemporaryDir models;
    QTemporaryDir work;
    QTemporaryDir tools;
    const QDir dir(models.path());
    for (const char* smd : {"ref.smd", "run.smd"}) {
        ASSERT_TRUE(
            QFile::copy(QStringLiteral(QUARLE_TEST_DATA "/smd/model/") + smd, dir.filePath(smd)));
    }
    const QString viewer = QDir(tools.path()).filePath("hlmv");
    QFile(viewer).open(QIODevice::WriteOnly);
    {
        QFile script(dir.filePath("start.qc"));
        ASSERT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("// written by hand\r\n"
                     "$modelname \"start.mdl\"\r\n"
                     "$cd \"" +
                     models.path().toUtf8() +
                     "\"\r\n"
                     "$cdtexture \"" +
                     models.path().toUtf8() +
                     "\"\r\n"
                     "$body body \"ref\"\r\n"
                     "$texrendermode \"Arm.bmp\" masked\r\n"
                     "$sequence \"run\" \"run\" fps 30 loop ACT_RUN 1\r\n");
    }

    test::TempSettings settings;
    settings.Store().Set("StudioMDL", QUARLE_FAKE_COMPILER);
    settings.Store().Set("ModelViewer", viewer);
    test::ScriptedServices services; // the program folder of the build: the shipped languages
    auto state = std::make_unique<AppState>();
    FrmMain form(*state, services, settings.Store());
    form.WorkFolder = work.path();
    form.Form_Load();
    auto ids = [&](Ids key) { return QString::fromStdString(state->IdsTexts[key]); };
    ASSERT_EQ(ids(IDS_SAVEAS), "Speichern unter");
    EXPECT_TRUE(form.CmdCompile->isEnabled());
    EXPECT_TRUE(form.MnuDateiView->isEnabled());

    // Open.
    services.QueueOpen(platform::FilePick{dir.filePath("start.qc"), "start.qc"});
    form.MnuDateiOeffnen->trigger();
    EXPECT_EQ(Items(form.LstAnimations), QStringList{"run"});
    EXPECT_EQ(form.CmbBodyGroup->currentText(), "body");
    EXPECT_EQ(Items(form.LstParts), QStringList{"ref"});
    EXPECT_EQ(form.TxtModelpath->text(), models.path());
    EXPECT_EQ(form.FileList->count(), 2);
    EXPECT_TRUE(form.FrmModelfiles->isEnabled());
    EXPECT_EQ(state->Doc.ModelName, dir.filePath("start.mdl").toStdString());

    // Save under a new name, without the extension.
    services.QueueSave(platform::FilePick{dir.filePath("robot"), "robot"});
    form.MnuDateiSpeichernunter->trigger();
    const QString qc = dir.filePath("robot.qc");
    const QString mdl = dir.filePath("robot.mdl");
    EXPECT_EQ(form.MnuDateiLast1->text(), qc);
    const QByteArray saved = Read(qc);
    EXPECT_TRUE(saved.contains("\r\n$modelname \"" + mdl.toUtf8() + "\"\r\n"));
    EXPECT_TRUE(saved.contains("\r\n$body body \"ref\"\r\n"));
    EXPECT_TRUE(saved.contains("\r\n$texrendermode \"Arm.bmp\" masked\r\n"));
    EXPECT_TRUE(saved.contains("\r\n$sequence \"run\" \"run\" fps 30 loop ACT_RUN 1\r\n"));

    // Compile with the button, and ask for the viewer at the end.
    QStringList rows;
    {
        test::ModalScript script([&](QWidget* modal) {
            auto* dialog = qobject_cast<DlgCompile*>(modal);
            ASSERT_NE(dialog, nullptr);
            ASSERT_TRUE(QTest::qWaitFor([&] { return dialog->OKButton->isEnabled(); }, 20000));
            rows = Items(dialog->List1);
            EXPECT_EQ(dialog->windowTitle(), ids(IDS_COMPILE) + " " + qc);
            ASSERT_TRUE(dialog->ChkViewAfterCompile->isEnabled());
            dialog->ChkViewAfterCompile->setChecked(true);
            QTest::mouseClick(dialog->OKButton, Qt::LeftButton);
        });
        QTest::mouseClick(form.CmdCompile, Qt::LeftButton);
        ASSERT_TRUE(script.Ran());
    }
    EXPECT_EQ(rows, (QStringList{ids(IDS_CHECKMODELINFO), " ", ids(IDS_COMPILEMODEL),
                                 " fake studiomdl 1.0", " arguments: 1", " qc: " + qc,
                                 " grabbing sequence \"run\" \"run\" fps 30 loop ACT_RUN 1",
                                 " sequences: 1", " writing " + mdl,
                                 ids(IDS_DONE) + " (0 " + ids(IDS_ERRORS) + ")"}));
    EXPECT_EQ(Read(mdl), "IDST1");
    EXPECT_EQ(Read(qc), saved) << "nothing appended to a model with animations";
    ASSERT_EQ(services.Starts.size(), 1);
    EXPECT_EQ(services.Starts[0].Program, viewer);
    EXPECT_EQ(services.Starts[0].Arguments, QStringList{mdl});

    // The model is on disk: the viewer opens it without a compile.
    form.MnuDateiView->trigger();
    ASSERT_EQ(services.Starts.size(), 2);
    EXPECT_EQ(services.Starts[1].Arguments, QStringList{mdl});

    // Start afresh, then come back through the recent list.
    form.MnuDateiNeu->trigger();
    EXPECT_EQ(form.LstAnimations->count(), 0);
    EXPECT_EQ(state->Doc.QcFile, "");
    form.MnuDateiLast1->trigger();
    EXPECT_EQ(Items(form.LstAnimations), QStringList{"run"});
    EXPECT_EQ(state->Doc.QcFile, qc.toStdString());
    EXPECT_EQ(state->Doc.ModelName, mdl.toStdString());

    // A save of what was read gives the same script.
    QFile::remove(qc);
    form.MnuDateiSpeichern->trigger();
    EXPECT_EQ(Read(qc), saved);

    // Only the two file dialogs asked anything.
    EXPECT_EQ(services.Prompts().size(), 2);

    // The stop keeps the saved script in the store.
    form.close();
    QSettings ini(settings.Path(), QSettings::IniFormat);
    EXPECT_EQ(ini.value("Settings/RecentFile0").toString(), qc);
    EXPECT_EQ(ini.value("Settings/RecentFile1").toString(), "...");
}

} // namespace
} // namespace quarle::ui
