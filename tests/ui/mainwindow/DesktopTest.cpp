// The main window among the user's other programs: a script named on the
// command line or dropped on the window, the language of a first start, a
// model tree with subfolders, and the question before unsaved changes are
// lost.
#include "support/MainWindowFixture.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>

namespace quarle::test {
namespace {

using platform::Answer;

class DesktopTest : public MainWindowFixture {
protected:
    // A script of the sample model with two animations, saved and loaded.
    QString SampleScript(const QString& name = QStringLiteral("robot.qc")) {
        const QString qc = InModels(name);
        WriteFile(qc, "$cd \"" + models.path().toUtf8() + "\"\r\n$cdtexture \"" +
                          models.path().toUtf8() +
                          "\"\r\n$body body \"robot_ref\"\r\n"
                          "$sequence \"stand\" \"idle\" loop\r\n$sequence \"walk\" \"walk\"\r\n");
        return qc;
    }

    // Sends a drag of urls over widget, then drops it there when it was taken.
    bool Drag(QWidget* widget, const QList<QUrl>& urls) {
        QMimeData mime;
        mime.setUrls(urls);
        mime.setText(urls.isEmpty() ? QString() : urls.front().toString());
        const QPoint at = widget->rect().center();
        QDragEnterEvent enter(at, Qt::CopyAction | Qt::LinkAction, &mime, Qt::LeftButton, {});
        QApplication::sendEvent(widget, &enter);
        if (!enter.isAccepted()) {
            return false;
        }
        QDropEvent drop(QPointF(at), Qt::CopyAction | Qt::LinkAction, &mime, Qt::LeftButton, {});
        QApplication::sendEvent(widget, &drop);
        QCoreApplication::processEvents(); // the open follows the drop
        return true;
    }
};

TEST_F(DesktopTest, AScriptNamedAtTheStartOpensWithTheOpenCommandsQuestions) {
    Start(Texts::Keys);
    OpenSampleModel();
    // The folder of the script is gone: the same question as after Open.
    const QString qc = InModels("robot.qc");
    WriteFile(qc, "$cd \"c:\\gone\\robot\"\r\n$body body \"robot_ref\"\r\n"
                  "$sequence \"walk\" \"walk\"\r\n");
    services.QueueMsgBox(Answer::Ok);
    services.QueueFolder(models.path());
    services.QueueMsgBox(Answer::Ok); // the report names the folder a save writes
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(models.path()));
    form->OpenGivenScript(QStringLiteral("robot.qc")); // relative to the working folder
    QDir::setCurrent(before);
    ASSERT_EQ(services.Prompts().size(), 3);
    EXPECT_TRUE(services.Prompts()[0].Text.startsWith("IDS_MODELPATH: "));
    EXPECT_EQ(QcFile(), qc);
    EXPECT_EQ(Items(form->LstParts), QStringList{"robot_ref"});
    EXPECT_EQ(form->windowTitle(), QStringLiteral("robot.qc \u2014 Quarle"));

    // A file that cannot be read: the open's message, and a new document.
    services.QueueMsgBox(Answer::Ok);
    form->OpenGivenScript(InModels("missing.qc"));
    EXPECT_EQ(services.Prompts().last().Icon, platform::Icon::Critical);
    EXPECT_EQ(Doc().QcFile, "");
    EXPECT_EQ(form->LstParts->count(), 0);
    EXPECT_EQ(ends, 0);
}

TEST_F(DesktopTest, ADroppedScriptOpensAndAnythingElseIsRefused) {
    Start(Texts::Keys);
    OpenSampleModel();
    const QString qc = SampleScript();
    WriteFile(InModels("notes.txt"));
    const QUrl script = QUrl::fromLocalFile(qc);

    // Another kind of file, two scripts, a folder: refused.
    EXPECT_FALSE(Drag(form.get(), {QUrl::fromLocalFile(InModels("notes.txt"))}));
    EXPECT_FALSE(Drag(form.get(), {script, script}));
    EXPECT_FALSE(Drag(form.get(), {QUrl::fromLocalFile(models.path())}));
    EXPECT_TRUE(services.Prompts().isEmpty());

    // A script, dropped on a text field, opens; the field stays as it was.
    Doc().EyesOn = 1; // an unsaved change: asked about first
    services.QueueMsgBox(Answer::No);
    const QString path = form->TxtModelpath->text();
    ASSERT_TRUE(Drag(form->TxtModelpath, {script}));
    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_EQ(services.Prompts()[0].Buttons, platform::Buttons::YesNoCancel);
    EXPECT_EQ(QcFile(), qc);
    EXPECT_EQ(Items(form->LstAnimations), (QStringList{"stand", "walk"}));
    EXPECT_EQ(form->TxtModelpath->text(), path);
}

// The language of a first start follows the system's; a stored choice wins.
TEST_F(DesktopTest, AFirstStartSpeaksTheSystemsLanguage) {
    struct Row {
        const char* Stored; // the store's "Language"; "" none yet
        const char* System; // the system's language
        const char* Starts; // the language file the start takes
    };
    const Row rows[] = {
        {"", "de_DE.UTF-8", "deutsch.lng"}, {"", "de-AT", "deutsch.lng"},
        {"", "de", "deutsch.lng"},          {"", "DE_ch", "deutsch.lng"},
        {"", "en_US.UTF-8", "english.lng"}, {"", "fr-FR", "english.lng"},
        {"", "C", "english.lng"},           {"", "", "english.lng"},
        {"", "dev", "english.lng"},         {"deutsch.lng", "en_GB", "deutsch.lng"},
        {"english.lng", "de_DE", "english.lng"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.Stored) + " / " + row.System);
        TempSettings store;
        store.Store().Set(QStringLiteral("Language"), QString::fromLatin1(row.Stored));
        ScriptedServices host;
        host.Env.Language = QString::fromLatin1(row.System);
        AppState state;
        ui::FrmMain window(state, host, store.Store());
        window.Form_Load();
        EXPECT_EQ(state.Settings.LanguageFile, row.Starts);
        window.Form_Unload();
        EXPECT_EQ(store.Store().Get(QStringLiteral("Language")), QString::fromLatin1(row.Starts))
            << "kept from then on";
    }
}

TEST_F(DesktopTest, TheModelFilesListReachesIntoSubfolders) {
    Start(Texts::Keys);
    const QByteArray mesh = "version 1\r\nnodes\r\nend\r\ntriangles\r\nend\r\n";
    const QByteArray anim = "version 1\r\nnodes\r\nend\r\nskeleton\r\ntime 0\r\nend\r\n";
    for (const char* folder : {"meshes", "animations/walk", ".git", "a/b/c/d"}) {
        ASSERT_TRUE(QDir(models.path()).mkpath(folder));
    }
    WriteFile(InModels("ref.smd"), mesh);
    WriteFile(InModels("meshes/body.smd"), mesh);
    WriteFile(InModels("meshes/Head.SMD"), mesh);
    WriteFile(InModels("animations/run.smd"), anim);
    WriteFile(InModels("animations/walk/walk_left.smd"), anim);
    WriteFile(InModels(".git/stray.smd"), mesh);     // hidden folders are passed over
    WriteFile(InModels("a/b/c/d/too_deep.smd"), mesh); // below the depth looked at
    WriteFile(InModels("a/b/c/deep.smd"), mesh);

    services.QueueFolder(models.path());
    form->CmdBrowseModel->click();
    services.QueueFolder(models.path());
    form->CmdBrowseTexture->click();
    EXPECT_EQ(Items(form->LstFiles),
              (QStringList{"a/b/c/deep", "meshes/body", "meshes/Head", "ref"}));
    ShowPage(1);
    EXPECT_EQ(Items(form->LstFiles), (QStringList{"animations/run", "animations/walk/walk_left"}));

    // Added as the script names it, and written so.
    ShowPage(0);
    SelectText(form->LstFiles, "meshes/body");
    form->CmdAdd->click();
    EXPECT_EQ(Doc().BodyGroups[1].Parts[1], "meshes/body");
    services.QueueSave(Pick(InModels("robot.qc")));
    form->MnuDateiSpeichern->trigger();
    EXPECT_TRUE(ReadFile(InModels("robot.qc")).contains("\"meshes/body\"\r\n"));

    // A file moved away is gone from the list once the script is opened
    // again, although the folder is the same.
    ASSERT_TRUE(QFile::rename(InModels("meshes/Head.SMD"), InModels("Head.txt")));
    form->Commands().OpenQcFile(InModels("robot.qc").toStdString());
    EXPECT_EQ(Items(form->LstFiles), (QStringList{"a/b/c/deep", "meshes/body", "ref"}));
    EXPECT_EQ(Items(form->LstParts), QStringList{"meshes/body"});
}

// Every command that replaces the document or ends the program asks about
// unsaved changes: Yes saves them first, No lets them go, Cancel keeps
// everything as it is.
TEST_F(DesktopTest, UnsavedChangesAreAskedAboutBeforeTheyAreLost) {
    OpenSampleModel();
    const QString qc = SampleScript();
    const QString other = SampleScript(QStringLiteral("other.qc"));
    const QByteArray saved = ReadFile(qc);

    std::unique_ptr<ModalScript> wizard;
    bool sessionGoesOn = false;
    struct Command {
        const char* Name;
        std::function<void(bool)> Run; // runs; given whether it is to go on past the question
        std::function<bool()> Done; // whether the command went on
        bool Replaces;              // the document after it is the other script's
    };
    const Command commands[] = {
        {"new", [&](bool) { form->MnuDateiNeu->trigger(); }, [&] { return QcFile().isEmpty(); }, true},
        {"open",
         [&](bool goesOn) {
             if (goesOn) {
                 services.QueueOpen(Pick(other));
             }
             form->MnuDateiOeffnen->trigger();
         },
         [&] { return QcFile() == other; }, true},
        {"recent", [&](bool) { form->MnuDateiLast1->trigger(); }, [&] { return QcFile() == other; },
         true},
        {"drop", [&](bool) { form->Commands().OpenDroppedScript(other); }, [&] { return QcFile() == other; },
         true},
        {"base wizard",
         [&](bool) {
             wizard = std::make_unique<ModalScript>([](QWidget* page) { page->close(); });
             form->MnuWizardsGrWiz->trigger();
         },
         [&] { return wizard->Ran(); }, false},
        {"close box", [&](bool) { form->close(); }, [&] { return ends == 1; }, false},
        {"exit", [&](bool) { form->MnuDateiBeenden->trigger(); }, [&] { return ends == 1; }, false},
        {"session end", [&](bool) { sessionGoesOn = !form->Commands().SessionEnding(true); },
         [&] { return !sessionGoesOn; }, false},
    };
    for (const Command& command : commands) {
        for (const Answer answer : {Answer::Yes, Answer::No, Answer::Cancel}) {
            SCOPED_TRACE(std::string(command.Name) + ", answer " + std::to_string(int(answer)));
            // A window of its own each time: a close ends one.
            form = std::make_unique<ui::FrmMain>(*state, services, settings.Store());
            form->WorkFolder = work.path();
            form->EndProcess = [this] { ++ends; };
            ends = 0;
            Start(Texts::Keys);
            state->Settings.RecentFiles[0] = other.toStdString();
            form->Commands().ShowRecentFiles();
            WriteFile(qc, saved);
            form->Commands().OpenQcFile(qc.toStdString());
            EXPECT_EQ(form->windowTitle(), QStringLiteral("robot.qc \u2014 Quarle"));

            // An animation renamed as the user does it; the title marks it.
            ShowPage(1);
            Click(form->LstAnimations, 0);
            form->TxtAnimName->selectAll();
            QTest::keyClicks(form->TxtAnimName, "renamed");
            EXPECT_TRUE(QTest::qWaitFor(
                [&] { return form->windowTitle() == QStringLiteral("robot.qc* \u2014 Quarle"); },
                2000));

            const qsizetype asked = services.Prompts().size();
            services.QueueMsgBox(answer);
            command.Run(answer != Answer::Cancel);
            ASSERT_GT(services.Prompts().size(), asked);
            EXPECT_EQ(services.Prompts()[asked].Buttons, platform::Buttons::YesNoCancel);
            EXPECT_TRUE(services.Prompts()[asked].Text.contains("robot.qc"));
            EXPECT_EQ(ReadFile(qc).contains("\"renamed\""), answer == Answer::Yes);
            EXPECT_EQ(command.Done(), answer != Answer::Cancel);
            if (answer == Answer::Cancel) {
                EXPECT_EQ(Doc().Anims[0][0].Name, "renamed") << "the change stays";
                EXPECT_EQ(QcFile(), qc);
            } else if (command.Replaces) {
                // What the command left counts as unchanged: no second question.
                const qsizetype now = services.Prompts().size();
                form->MnuDateiNeu->trigger();
                EXPECT_EQ(services.Prompts().size(), now);
            }
        }
    }
}

} // namespace
} // namespace quarle::test
