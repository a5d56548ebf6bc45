// German names typed into every name field reach the script as cp1252 bytes
// and come back from it whole; a character cp1252 cannot hold is refused.
#include "support/MainWindowFixture.h"
#include "ui/dialogs/DlgName.h"
#include "ui/dialogs/DlgRenameGroup.h"

#include <QLineEdit>

namespace quarle::ui {
namespace {

using platform::Answer;
using test::Items;
using test::Pick;

class DocumentTextTest : public test::MainWindowFixture {
protected:
    DocumentTextTest() {
        Start(Texts::Keys);
        OpenSampleModel();
        Doc().TexturePath = Doc().ModelPath;
    }

    void NewGroup(const QString& name) {
        form->CmdNewGroup->click();
        DlgName* dialog = form->OpenDlgName();
        ASSERT_NE(dialog, nullptr);
        dialog->TxtName->setText(name);
        dialog->CmdOK->click();
    }
};

TEST_F(DocumentTextTest, GermanNamesRoundTripThroughTheScript) {
    test::SelectText(form->LstFiles, "robot_ref");
    form->CmdAdd->click(); // the group "body" with the reference
    NewGroup(QStringLiteral("Kopf"));
    form->CmbBodyGroup->setCurrentIndex(1);
    test::ModalScript rename([](QWidget* modal) {
        auto* dialog = qobject_cast<DlgRenameGroup*>(modal);
        ASSERT_NE(dialog, nullptr);
        dialog->TxtNewCaption->setText(QStringLiteral("K\u00f6rper"));
        dialog->OKButton->click();
    });
    form->CmdRename->click();
    ASSERT_TRUE(rename.Ran());
    test::SelectText(form->LstFiles, "robot_head");
    form->CmdAdd->click();
    NewGroup(QStringLiteral("H\u00e4nde"));

    ShowPage(1);
    test::SelectText(form->LstFiles, "walk");
    form->CmdAdd->click();
    test::Click(form->LstAnimations, 0);
    form->TxtAnimName->setText(QStringLiteral("\u00dcbung"));
    form->TxtAnimID->setEditText(QStringLiteral("ACT_\u00c4 1"));

    // A character cp1252 cannot hold is refused at the field and the
    // document keeps the last name it took.
    services.QueueMsgBox(Answer::Ok);
    form->TxtAnimName->setText(QStringLiteral("\u0141\u00f3d\u017a"));
    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_TRUE(services.Prompts()[0].Text.contains(QStringLiteral("\u0141\u00f3d\u017a")));
    EXPECT_EQ(form->TxtAnimName->text(), QStringLiteral("\u00dcbung"));
    services.QueueMsgBox(Answer::Ok);
    form->CmdNewGroup->click();
    form->OpenDlgName()->TxtName->setText(QStringLiteral("\u0141"));
    form->OpenDlgName()->CmdOK->click();
    EXPECT_EQ(Doc().BodyGroupCount, 3) << "the refused name adds no group";
    EXPECT_TRUE(form->OpenDlgName()->isVisible()) << "the dialog stays for another name";
    form->OpenDlgName()->CmdAbbrechen->click();

    // The script's own name holds an umlaut too: the file on disk is named
    // in UTF-8, the script's text in cp1252.
    services.QueueSave(Pick(InModels(QStringLiteral("R\u00fcstung.qc"))));
    form->MnuDateiSpeichernunter->trigger();
    const QByteArray script = test::ReadFile(InModels(QStringLiteral("R\u00fcstung.qc")));
    EXPECT_FALSE(script.contains("\xC3")) << script.toStdString();
    for (const char* bytes : {"$body K\xF6rper \"robot_head\"", "$bodygroup H\xE4nde\r\n",
                              "$sequence \"\xDC"
                              "bung\"",
                              "ACT_\xC4 1", "$modelname \"", "R\xFCstung.mdl\""}) {
        EXPECT_TRUE(script.contains(bytes)) << bytes << "\n" << script.toStdString();
    }

    // Read back, every name shows as typed.
    services.QueueOpen(Pick(InModels(QStringLiteral("R\u00fcstung.qc"))));
    form->MnuDateiOeffnen->trigger();
    EXPECT_EQ(Items(form->CmbBodyGroup),
              (QStringList{"body", QStringLiteral("K\u00f6rper"), QStringLiteral("H\u00e4nde")}));
    EXPECT_EQ(Items(form->LstAnimations), QStringList{QStringLiteral("\u00dcbung")});
    test::Click(form->LstAnimations, 0);
    EXPECT_EQ(form->TxtAnimID->currentText(), QStringLiteral("ACT_\u00c4 1"));
    services.VerifyAllUsed();
}

} // namespace
} // namespace quarle::ui
