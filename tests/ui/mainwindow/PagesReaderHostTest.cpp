// A script read with the main window as the reader's host: the questions go
// through the window's message boxes and Open dialog, the sequences of group 0
// land in LstAnimations, and the end of the load refreshes the window.
#include "PagesTestSupport.h"
#include "document/QcReader.h"
#include "localisation/GlobalStrings.h"

#include <QAction>
#include <QGroupBox>
#include <QLineEdit>

namespace quarle::ui::pages {
namespace {

using platform::Answer;
using platform::FilePick;
using platform::Icon;

class ReaderHostTest : public PagesTest {
protected:
    ReaderHostTest() {
        OpenModelFolder();
        // The folder the window knows is not the script's: the load brings it.
        Doc().ModelPath.clear();
        form->Update();
    }

    // Loads the script as the open command does.
    ReadOutcome Load(const QByteArray& script) {
        const QString path = Model(QStringLiteral("robot.qc"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(script);
        file.close();
        form->LstAnimations->clear();
        form->InitVars();
        Doc().QcFile = path.toStdString();
        return ReadQcFile(Doc(), form->ScriptReaderHost(), work.path().toStdString());
    }

    QByteArray Head() const {
        return "$modelname \"" + Model("robot.mdl").toUtf8() + "\"\r\n$cdtexture \"" +
               model.path().toUtf8() + "\"\r\n";
    }

    FilePick Pick(const QString& name) const { return FilePick{Model(name), name}; }

    QString Text(Ids key) const { return QString::fromStdString(state->IdsTexts[key]); }

    QTemporaryDir work;
};

TEST_F(ReaderHostTest, AMissingFolderIsAskedForAndTheLoadFillsTheWindow) {
    form->TxtAnimNr->setText(QStringLiteral("4"));
    services.QueueMsgBox(Answer::Ok);
    services.QueueOpen(Pick(QStringLiteral("walk.smd")));
    const ReadOutcome outcome =
        Load(Head() + "$cd \"c:\\gone\\robot\"\r\n"
                      "$bodygroup body\r\n{\r\nstudio \"robot_ref\"\r\n}\r\n"
                      "$sequence \"stand\" \"idle\" fps 20\r\n"
                      "$sequence \"walk\" \"walk\" loop\r\n");
    ASSERT_EQ(outcome, ReadOutcome::Loaded);

    ASSERT_EQ(services.Prompts().size(), 2);
    const auto& question = services.Prompts()[0];
    EXPECT_EQ(question.Text, Text(IDS_MODELPATH) + ": " + Text(IDS_MSGBOX_CANTFINDPATH_PART1) +
                                 " \"c:\\gone\\robot\" " + Text(IDS_MSGBOX_CANTFINDPATH_PART2));
    EXPECT_EQ(question.Icon, Icon::Question);
    EXPECT_EQ(services.Prompts()[1].Title, Text(IDS_OPEN));

    EXPECT_EQ(Doc().ModelPath, model.path().toStdString());
    EXPECT_EQ(form->TxtModelpath->text(), model.path());
    EXPECT_TRUE(form->FrmModelfiles->isEnabled());
    EXPECT_TRUE(form->MnuWizardsAnimWiz->isEnabled());
    EXPECT_EQ(form->FileListPath(), model.path());
    EXPECT_EQ(form->LstFiles->count(), 3);
    EXPECT_EQ(Items(form->LstParts), QStringList{"robot_ref"});
    // The list holds group 0, and the number says so.
    EXPECT_EQ(form->TxtAnimNr->text(), QStringLiteral("0"));
    EXPECT_EQ(Items(form->LstAnimations), (QStringList{"stand", "walk"}));
    EXPECT_EQ(Doc().Anims[0][0].Fps, 20);
}

TEST_F(ReaderHostTest, AMissingPartIsPickedAsAFileOfTheModelFolder) {
    services.QueueMsgBox(Answer::Ok);
    services.QueueOpen(Pick(QStringLiteral("robot_head.smd")));
    const ReadOutcome outcome =
        Load(Head() + "$cd \"" + model.path().toUtf8() +
             "\"\r\n$bodygroup body\r\n{\r\nstudio \"robot_gone\"\r\n}\r\n");
    ASSERT_EQ(outcome, ReadOutcome::Loaded);
    ASSERT_EQ(services.Prompts().size(), 2);
    EXPECT_TRUE(services.Prompts()[0].Text.startsWith(Text(IDS_REFERENCEMODEL) + ": "));
    EXPECT_TRUE(services.Prompts()[0].Text.contains(QStringLiteral("robot_gone.smd")));
    EXPECT_EQ(services.Prompts()[1].Filter, QStringLiteral("Model|*.smd"));
    EXPECT_EQ(services.Prompts()[1].InitialDir, model.path());
    EXPECT_EQ(Doc().BodyGroups[1].Parts[1], "robot_head");
    EXPECT_EQ(Items(form->LstParts), QStringList{"robot_head"});

    // A refusal breaks the load off: a new document, the list emptied.
    services.QueueMsgBox(Answer::Ok);
    services.QueueOpen(std::nullopt);
    EXPECT_EQ(Load(Head() + "$cd \"" + model.path().toUtf8() +
                   "\"\r\n$sequence \"stand\" \"idle\"\r\n"
                   "$bodygroup body\r\n{\r\nstudio \"robot_gone\"\r\n}\r\n"),
              ReadOutcome::Refused);
    EXPECT_EQ(form->LstAnimations->count(), 0);
    EXPECT_EQ(Doc().BodyGroups[1].PartCount, 0);
    EXPECT_EQ(Doc().QcFile, "");
}

} // namespace
} // namespace quarle::ui::pages
