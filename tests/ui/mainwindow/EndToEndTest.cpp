// The main road in one go, as a user walks it: start afresh with the shipped
// German texts and the stand-in compiler on the search path, open a script
// from disk, save it under a new name, compile it, open the model in the
// viewer, start afresh, reopen the script from the recent list, save it
// again, and stop.
#include "FakeCompiler.h"
#include "support/MainWindowFixture.h"

#include <QAction>
#include <QCoreApplication>
#include <QImage>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>

namespace quarle::ui {
namespace {

using test::Items;
using test::Pick;
using test::ReadFile;

class EndToEnd : public test::MainWindowFixture {
protected:
    // The sample mesh and animation into a folder, with the bitmaps of the
    // mesh as the compiler takes them: 8 bits with a palette, so the checks
    // ahead of the compile find nothing to refuse. Then the stand-in
    // compiler and a viewer on the search path, as a new user's would be.
    void ModelFilesAndTools(const QDir& folder) {
        for (const char* smd : {"ref.smd", "run.smd"}) {
            ASSERT_TRUE(QFile::copy(QStringLiteral(QUARLE_TEST_DATA "/smd/model/") + smd,
                                    folder.filePath(smd)));
        }
        for (const char* bitmap : {"Arm.bmp", "Skin.bmp"}) {
            QImage image(16, 16, QImage::Format_Indexed8);
            image.setColorCount(256);
            image.fill(0);
            ASSERT_TRUE(image.save(folder.filePath(bitmap), "BMP"));
        }
        test::WriteFile(viewer);
        QFile::setPermissions(viewer, QFile::permissions(viewer) | QFile::ExeOwner);
        ASSERT_TRUE(QFile::copy(QUARLE_FAKE_COMPILER, InProgramDir("studiomdl")));
        services.Env.Path = programDir.path();
    }

    const QString viewer = InProgramDir("hlmv");
};

TEST_F(EndToEnd, OpenSaveCompileViewAndReopen) {
    ModelFilesAndTools(QDir(models.path()));
    test::WriteFile(InModels("start.qc"),
                    "// written by hand\r\n$modelname \"start.mdl\"\r\n$cd \"" +
                        models.path().toUtf8() + "\"\r\n$cdtexture \"" + models.path().toUtf8() +
                        "\"\r\n$body body \"ref\"\r\n"
                        "$texrendermode \"Arm.bmp\" masked\r\n"
                        "$sequence \"run\" \"run\" fps 30 loop ACT_RUN 1\r\n");
    UseShippedLanguages();
    Start();
    ASSERT_EQ(Text(IDS_SAVEAS), "Speichern unter");
    // Qt's own buttons speak German too.
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Abbrechen");
    EXPECT_TRUE(form->CmdCompile->isEnabled());
    EXPECT_TRUE(form->MnuDateiView->isEnabled());

    // Open.
    services.QueueOpen(Pick(InModels("start.qc")));
    form->MnuDateiOeffnen->trigger();
    EXPECT_EQ(Items(form->LstAnimations), QStringList{"run"});
    EXPECT_EQ(form->CmbBodyGroup->currentText(), "body");
    EXPECT_EQ(Items(form->LstParts), QStringList{"ref"});
    EXPECT_EQ(form->TxtModelpath->text(), models.path());
    EXPECT_EQ(form->FileList->count(), 2);
    EXPECT_TRUE(form->FrmModelfiles->isEnabled());
    EXPECT_EQ(ModelName(), InModels("start.mdl"));
    EXPECT_EQ(state->Settings.RecentFiles[0], "...") << "only a save puts a file on the list";

    // Save under a new name, without the extension.
    services.QueueSave(Pick(InModels("robot")));
    form->MnuDateiSpeichernunter->trigger();
    const QString qc = InModels("robot.qc");
    const QString mdl = InModels("robot.mdl");
    EXPECT_EQ(form->MnuDateiLast1->text(), qc);
    const QByteArray saved = ReadFile(qc);
    EXPECT_TRUE(saved.contains("\r\n$modelname \"" + mdl.toUtf8() + "\"\r\n"));
    EXPECT_TRUE(saved.contains("\r\n$body body \"ref\"\r\n"));
    EXPECT_TRUE(saved.contains("\r\n$texrendermode \"Arm.bmp\" masked\r\n"));
    EXPECT_TRUE(saved.contains("\r\n$sequence \"run\" \"run\" fps 30 loop ACT_RUN 1\r\n"));

    // Compile with the button, and ask for the viewer at the end.
    CompileSeen seen;
    {
        const auto script = ExpectCompile(seen, true);
        QTest::mouseClick(form->CmdCompile, Qt::LeftButton);
        ASSERT_TRUE(script->Ran());
    }
    EXPECT_EQ(seen.Title, Text(IDS_COMPILE) + " " + qc);
    // The window tells the dialog that the model has an animation: no idle warning.
    EXPECT_EQ(seen.Rows.mid(0, 3),
              (QStringList{Text(IDS_CHECKMODELINFO), " ", Text(IDS_COMPILEMODEL)}));
    EXPECT_TRUE(seen.Rows.contains(" grabbing sequence \"run\" \"run\" fps 30 loop ACT_RUN 1"));
    EXPECT_EQ(seen.Rows.last(), Text(IDS_DONE) + " (0 " + Text(IDS_ERRORS) + ")");
    EXPECT_EQ(ReadFile(mdl), "IDST1");
    EXPECT_EQ(ReadFile(qc), saved) << "nothing appended to a model with animations";
    ASSERT_EQ(services.Starts.size(), 1);
    EXPECT_EQ(services.Starts[0].Program, viewer);
    EXPECT_EQ(services.Starts[0].Arguments, QStringList{mdl});

    // The model is on disk: the viewer opens it without a compile.
    form->MnuDateiView->trigger();
    ASSERT_EQ(services.Starts.size(), 2);
    EXPECT_EQ(services.Starts[1].Arguments, QStringList{mdl});

    // Start afresh, then come back through the recent list, twice: the
    // second load empties the list before it fills it.
    form->MnuDateiNeu->trigger();
    EXPECT_EQ(form->LstAnimations->count(), 0);
    EXPECT_EQ(Doc().QcFile, "");
    form->MnuDateiLast1->trigger();
    form->MnuDateiLast1->trigger();
    EXPECT_EQ(Items(form->LstAnimations), QStringList{"run"});
    EXPECT_EQ(QcFile(), qc);
    EXPECT_EQ(ModelName(), mdl);

    // A save of what was read gives the same script.
    QFile::remove(qc);
    form->MnuDateiSpeichern->trigger();
    EXPECT_EQ(ReadFile(qc), saved);

    // Only the two file dialogs asked anything.
    EXPECT_EQ(services.Prompts().size(), 2);

    // The stop keeps the saved script in the store, once, though it was
    // saved twice and opened from the list.
    form->close();
    EXPECT_EQ(ends, 1);
    QSettings ini(settings.Path(), QSettings::IniFormat);
    EXPECT_EQ(ini.value("Settings/RecentFile0").toString(), qc);
    EXPECT_EQ(ini.value("Settings/RecentFile1").toString(), "...");
}

// A script from a mod's source folder names its folders and its model
// relative to itself, and Quarle was started from somewhere else: the
// compiler runs in the script's folder and finds them there, the working
// files stay in Quarle's working folder, and the viewer gets the model where
// the compiler wrote it.
TEST_F(EndToEnd, ARelativeScriptCompilesWhereItsPathsPoint) {
    const QDir source(InModels("src"));
    ASSERT_TRUE(QDir().mkpath(source.filePath("meshes")));
    ASSERT_TRUE(QDir().mkpath(source.filePath("out")));
    ModelFilesAndTools(QDir(source.filePath("meshes")));
    const QString qc = source.filePath("robot.qc");
    const QByteArray original = "$modelname \"out/robot.mdl\"\r\n$cd \"meshes\"\r\n"
                                "$cdtexture \"meshes\"\r\n$body body \"ref\"\r\n"
                                "$sequence \"run\" \"run\" fps 30 loop ACT_RUN 1\r\n";
    test::WriteFile(qc, original);
    Start();

    QTemporaryDir elsewhere;
    const QString startFolder = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(elsewhere.path()));
    services.QueueOpen(Pick(qc));
    form->MnuDateiOeffnen->trigger();
    CompileSeen seen;
    {
        const auto script = ExpectCompile(seen, true);
        QTest::mouseClick(form->CmdCompile, Qt::LeftButton);
        EXPECT_TRUE(script->Ran());
    }
    QDir::setCurrent(startFolder);
    const QString mdl = source.filePath("out/robot.mdl");
    // Without a model the menu entry would compile again.
    ASSERT_EQ(ReadFile(mdl), "IDST1") << seen.Rows.join('|').toStdString();
    form->MnuDateiView->trigger();

    const QByteArray saved = ReadFile(qc);
    EXPECT_EQ(saved, original) << "the save before the compile keeps the script as it was";
    EXPECT_TRUE(seen.Rows.contains(" grabbing meshes/ref.smd"))
        << seen.Rows.join('|').toStdString();
    EXPECT_EQ(seen.Rows.last(), Text(IDS_DONE) + " (0 " + Text(IDS_ERRORS) + ")");
    EXPECT_TRUE(QFileInfo::exists(InWork("compile.log")));
    EXPECT_FALSE(QFileInfo::exists(source.filePath("compile.log")));
    EXPECT_TRUE(QDir(elsewhere.path()).isEmpty());
    ASSERT_EQ(services.Starts.size(), 2) << "after the compile, and from the menu";
    for (const auto& start : services.Starts) {
        EXPECT_EQ(start.Arguments, QStringList{mdl});
    }
}

} // namespace
} // namespace quarle::ui
