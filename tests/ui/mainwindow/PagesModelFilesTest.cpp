// Page "Modeldateien": the files of the model folder, body groups and their
// parts, driven through the controls.
#include "support/MainWindowFixture.h"
#include "ui/dialogs/DlgName.h"
#include "ui/dialogs/DlgRenameGroup.h"

#include <QLineEdit>

namespace quarle::ui {
namespace {

using platform::Answer;
using test::Click;
using test::Items;
using test::Select;
using test::SelectText;

const QStringList Meshes{"robot_head", "robot_helmet", "robot_ref"};

class ModelFilesPage : public test::MainWindowFixture {
protected:
    ModelFilesPage() {
        Start(Texts::Keys);
        OpenSampleModel();
    }

    void Add(const char* file) {
        SelectText(form->LstFiles, file);
        form->CmdAdd->click();
    }
};

TEST_F(ModelFilesPage, RefillSortsTheFolderIntoMeshesAndAnimations) {
    EXPECT_EQ(Items(form->LstFiles), Meshes);

    // A mesh whose only triangles are commented out is an animation; the
    // listing ignores the case of names and of the extension.
    ShowPage(1);
    EXPECT_EQ(Items(form->LstFiles),
              (QStringList{"die_back", "draft", "idle", "jump", "run", "Shoot", "walk"}));

    // A change of the page reads the folder again: a file that appeared and
    // one that changed its kind show up where they now belong.
    test::WriteFile(InModels("zombie.smd"), "version 1\r\ntriangles\r\nend\r\n");
    QFile changed(InModels("run.smd"));
    ASSERT_TRUE(changed.open(QIODevice::Append));
    changed.write("triangles\r\nend\r\n");
    changed.close();
    ShowPage(0);
    EXPECT_EQ(Items(form->LstFiles), Meshes + QStringList({"run", "zombie"}));
    // Files gone from the folder leave the list and the cache.
    ASSERT_TRUE(QFile::remove(InModels("zombie.smd")));
    ShowPage(1);
    ShowPage(0);
    EXPECT_EQ(Items(form->LstFiles), Meshes + QStringList{"run"});
    EXPECT_EQ(form->ModelFiles().ModelFolderKinds().Entries(), 10u);
}

TEST_F(ModelFilesPage, AddTakesEverySelectedFileInListOrder) {
    Select(form->LstFiles, {2, 0, 1});
    form->CmdAdd->click();
    EXPECT_EQ(Items(form->LstParts), Meshes);
    const BodyGroupRec& body = Doc().BodyGroups[1];
    EXPECT_EQ(body.PartCount, 3);
    EXPECT_EQ(form->LstFiles->selectedItems().size(), 3); // the selection stays

    // A double click adds what is selected, not only the entry under the
    // pointer; the same file twice gives two parts.
    Select(form->LstFiles, {0, 2});
    emit form->LstFiles->itemDoubleClicked(form->LstFiles->item(2));
    EXPECT_EQ(body.PartCount, 5);
    EXPECT_EQ(body.Parts[4], "robot_head");
    EXPECT_EQ(body.Parts[5], "robot_ref");
    EXPECT_TRUE(services.Prompts().isEmpty());
}

TEST_F(ModelFilesPage, AFullGroupRefusesFurtherParts) {
    for (int i = 0; i < 14; ++i) {
        form->CmdBlank->click();
    }
    // Room for two of the three: the third is refused, once.
    services.QueueMsgBox(Answer::Ok);
    Select(form->LstFiles, {0, 1, 2});
    form->CmdAdd->click();
    BodyGroupRec& body = Doc().BodyGroups[1];
    EXPECT_EQ(body.PartCount, 16);
    EXPECT_EQ(body.Parts[16], "robot_helmet");
    EXPECT_EQ(form->LstParts->count(), 16);
    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_TRUE(services.Prompts()[0].Text.contains(QStringLiteral("16")));

    services.QueueMsgBox(Answer::Ok);
    form->CmdBlank->click();
    EXPECT_EQ(body.PartCount, 16);
    EXPECT_EQ(services.Prompts().size(), 2);
}

TEST_F(ModelFilesPage, ReverseFlagsTravelWithTheirPartsWhenSeveralAreDeleted) {
    Add("robot_ref");
    // Blank works from the other page too, on the group of page 0.
    ShowPage(1);
    form->CmdBlank->click();
    ShowPage(0);
    Add("robot_head");
    Add("robot_helmet");
    Add("robot_ref");
    EXPECT_EQ(Items(form->LstParts),
              (QStringList{"robot_ref", "<blank>", "robot_head", "robot_helmet", "robot_ref"}));

    BodyGroupRec& body = Doc().BodyGroups[1];
    Click(form->LstParts, 0);
    form->ChkReverse->click();
    EXPECT_EQ(body.Reverse[1], -1);
    Click(form->LstParts, 1);
    EXPECT_FALSE(form->ChkReverse->isEnabled());
    EXPECT_FALSE(form->ChkReverse->isChecked());
    Click(form->LstParts, 2);
    EXPECT_TRUE(form->ChkReverse->isEnabled());
    EXPECT_FALSE(form->ChkReverse->isChecked());
    form->ChkReverse->click();
    Click(form->LstParts, 0);
    EXPECT_TRUE(form->ChkReverse->isChecked());
    EXPECT_EQ(body.Reverse[1], -1); // showing a part leaves its flag alone

    // Exactly the selected parts go; robot_head moves up with its flag, and
    // the slots that fall free keep no flag for the next part.
    Select(form->LstParts, {3, 0});
    form->CmdDelAnimation->click();
    EXPECT_EQ(Items(form->LstParts), (QStringList{"<blank>", "robot_head", "robot_ref"}));
    EXPECT_EQ(body.PartCount, 3);
    EXPECT_EQ(body.Parts[2], "robot_head");
    EXPECT_EQ(body.Parts[4], "");
    EXPECT_EQ(body.Parts[5], "");
    EXPECT_EQ(body.Reverse[1], 0);
    EXPECT_EQ(body.Reverse[2], -1);
    EXPECT_EQ(body.Reverse[3], 0);
    EXPECT_EQ(body.Reverse[4], 0);
    form->CmdBlank->click();
    EXPECT_EQ(body.Reverse[4], 0);

    // No part selected: a click on the box changes nothing.
    EXPECT_EQ(form->LstParts->currentRow(), -1);
    const auto before = body.Reverse;
    form->ChkReverse->click();
    EXPECT_EQ(body.Reverse, before);
    // Nor when the current part was taken out of the selection.
    Click(form->LstParts, 1);
    form->LstParts->setCurrentRow(1, QItemSelectionModel::Deselect);
    form->ChkReverse->click();
    EXPECT_EQ(body.Reverse, before);
}

TEST_F(ModelFilesPage, DeletingGroupsDownToNoneAndAddingOneBack) {
    Document& doc = Doc();
    doc.BodyGroupCount = 3;
    doc.BodyGroups[2].Name = "arms";
    doc.BodyGroups[2].PartCount = 1;
    doc.BodyGroups[2].Parts[1] = "arm";
    doc.BodyGroups[2].Reverse[1] = -1;
    doc.BodyGroups[3].Name = "legs";
    form->Update();
    // The groups behind move up whole; nothing is selected afterwards.
    form->CmdDel->click();
    EXPECT_EQ(doc.BodyGroupCount, 2);
    EXPECT_EQ(Items(form->CmbBodyGroup), (QStringList{"arms", "legs"}));
    EXPECT_EQ(form->CmbBodyGroup->currentIndex(), -1);
    EXPECT_EQ(doc.BodyGroups[1].Name, "arms");
    EXPECT_EQ(doc.BodyGroups[1].Parts[1], "arm");
    EXPECT_EQ(doc.BodyGroups[1].Reverse[1], -1);
    EXPECT_EQ(doc.BodyGroups[2].Name, "legs");
    EXPECT_EQ(doc.BodyGroups[3].Name, "");
    EXPECT_EQ(doc.BodyGroups[3].PartCount, 0);

    form->CmbBodyGroup->setCurrentIndex(1);
    form->CmdDel->click();
    form->CmbBodyGroup->setCurrentIndex(0);
    form->CmdDel->click(); // the only group
    EXPECT_EQ(doc.BodyGroupCount, 0);
    EXPECT_EQ(doc.BodyGroups[1].Name, "");
    EXPECT_EQ(form->CmbBodyGroup->count(), 0);
    EXPECT_EQ(form->LstParts->count(), 0);
    EXPECT_TRUE(form->CmdDel->isEnabled());
    EXPECT_TRUE(form->CmdRename->isEnabled());

    // Without a selected group the buttons do nothing, the rename included.
    Select(form->LstFiles, {0});
    form->CmdAdd->click();
    form->CmdBlank->click();
    form->CmdDel->click();
    form->CmdRename->click();
    EXPECT_EQ(doc.BodyGroupCount, 0);
    EXPECT_EQ(doc.BodyGroups[1].PartCount, 0);
    EXPECT_EQ(form->LstParts->count(), 0);
    EXPECT_TRUE(services.Prompts().isEmpty());
}

TEST_F(ModelFilesPage, NewGroupsComeFromTheNameDialogWithoutBlockingTheWindow) {
    Add("robot_ref");
    form->CmdNewGroup->click();
    QPointer<DlgName> dialog = form->ModelFiles().OpenDlgName();
    ASSERT_FALSE(dialog.isNull());
    EXPECT_FALSE(dialog->isModal());
    EXPECT_TRUE(dialog->isVisible());
    form->CmdNewGroup->click(); // the open dialog comes forward, no second one
    EXPECT_EQ(form->ModelFiles().OpenDlgName(), dialog.data());

    // The window stays usable meanwhile; the slot is the one behind the
    // last group when OK is pressed.
    form->CmdBlank->click();
    dialog->TxtName->setText(QStringLiteral("head"));
    dialog->CmdOK->click();
    EXPECT_EQ(Doc().BodyGroupCount, 2);
    EXPECT_EQ(Doc().BodyGroups[2].Name, "head");
    EXPECT_EQ(Items(form->CmbBodyGroup), (QStringList{"body", "head"}));
    EXPECT_EQ(form->CmbBodyGroup->currentIndex(), 0);
    EXPECT_EQ(Items(form->LstParts), (QStringList{"robot_ref", "<blank>"}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.isNull(); }, 2000));

    // At 32 groups the dialog refuses and stays open for a cancel.
    Doc().BodyGroupCount = 32;
    form->CmdNewGroup->click();
    dialog = form->ModelFiles().OpenDlgName();
    services.QueueMsgBox(Answer::Ok);
    dialog->CmdOK->click();
    EXPECT_EQ(Doc().BodyGroupCount, 32);
    EXPECT_EQ(form->CmbBodyGroup->count(), 2);
    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_TRUE(services.Prompts()[0].Text.contains(QStringLiteral("32")));
    EXPECT_TRUE(dialog->isVisible());
    dialog->CmdAbbrechen->click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.isNull(); }, 2000));
}

TEST_F(ModelFilesPage, RenameChangesTheGroupAndItsEntryAtOnce) {
    Doc().BodyGroupCount = 2;
    Doc().BodyGroups[2].Name = "head";
    form->Update();
    form->CmbBodyGroup->setCurrentIndex(1);
    // The same dialog twice: OK takes the new name, Cancel drops it.
    for (const bool ok : {true, false}) {
        QString shown;
        test::ModalScript script([&](QWidget* modal) {
            auto* dialog = qobject_cast<DlgRenameGroup*>(modal);
            ASSERT_NE(dialog, nullptr);
            shown = dialog->TxtNewCaption->text();
            dialog->TxtNewCaption->setText(ok ? QStringLiteral("helmet") : QStringLiteral("gone"));
            (ok ? dialog->OKButton : dialog->CancelButton)->click();
        });
        form->CmdRename->click();
        EXPECT_TRUE(script.Ran());
        EXPECT_EQ(shown, ok ? QStringLiteral("head") : QStringLiteral("helmet"));
        EXPECT_EQ(Doc().BodyGroups[2].Name, "helmet");
        EXPECT_EQ(Items(form->CmbBodyGroup), (QStringList{"body", "helmet"}));
        EXPECT_EQ(form->CmbBodyGroup->currentText(), QStringLiteral("helmet"));
    }
}

} // namespace
} // namespace quarle::ui
