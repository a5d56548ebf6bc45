// The window of compiled models, end to end through the main window: the
// preview chosen as the viewer in the settings, the view command and the
// file menu opening a model, its sequences, body parts and skin families,
// and a model that a compile broke.
#include "StudioBytes.h"
#include "support/MainWindowFixture.h"
#include "ui/localisation/DlgSettings.h"
#include "ui/preview/FrmCompiledModel.h"
#include "ui/preview/PreviewView.h"

#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <chrono>
#include <filesystem>
#include <gmock/gmock.h>

namespace quarle::test {
namespace {

using ::testing::HasSubstr;

class FrmCompiledModelTest : public MainWindowFixture {};

TEST_F(FrmCompiledModelTest, ShowsTheModelTheUserChoosesAsChosen) {
    const StudioBuilt built = BuildStudio(SmallStudio());
    WriteFile(InWork("small.mdl"), QByteArray::fromStdString(built.Model));
    WriteFile(InWork("small01.mdl"), QByteArray::fromStdString(built.Groups.at(1)));
    settings.Store().Set(QStringLiteral("ModelViewer"), InWork("no-viewer"));
    Start();
    EXPECT_FALSE(form->MnuDateiView->isEnabled());

    // The preview as the viewer: the path goes out of use, the command in.
    ModalScript script([](QWidget* modal) {
        auto* dialog = qobject_cast<ui::DlgSettings*>(modal);
        ASSERT_NE(dialog, nullptr);
        EXPECT_FALSE(dialog->ChkPreviewViewer->isChecked());
        dialog->ChkPreviewViewer->click();
        EXPECT_FALSE(dialog->TxtModelviewer->isEnabled());
        dialog->OKButton->click();
    });
    form->MnuEinstAllg->trigger();
    ASSERT_TRUE(script.Ran());
    EXPECT_EQ(state->Settings.ModelViewerPath, PreviewViewer);
    EXPECT_TRUE(form->MnuDateiView->isEnabled());

    // The view command shows the script's model in it.
    Doc().ModelName = InWork("small.mdl").toStdString();
    form->MnuDateiView->trigger();
    ui::FrmCompiledModel* view = form->OpenFrmCompiledModel();
    ASSERT_NE(view, nullptr);
    EXPECT_TRUE(view->isVisible());
    EXPECT_EQ(view->ModelPath(), Doc().ModelName);
    auto status = [view] { return view->LblStatus->text().toStdString(); };
    EXPECT_EQ(Items(view->LstSequences), QStringList({"idle", "wave", "run"}));
    EXPECT_EQ(Items(view->CmbBodyPart), QStringList({"body", "head"}));
    EXPECT_EQ(Items(view->CmbSkin), QStringList({"0", "1"}));
    EXPECT_THAT(status(), HasSubstr("6 triangles; idle: frame 0 of 4"));

    // The head's second model has no triangles; the skin family changes the
    // head's texture, not its triangles.
    view->CmbBodyPart->setCurrentIndex(1);
    EXPECT_EQ(Items(view->CmbSubModel), QStringList({"head_a", "blank"}));
    view->CmbSubModel->setCurrentIndex(1);
    EXPECT_THAT(status(), HasSubstr("5 triangles"));
    view->CmbSubModel->setCurrentIndex(0);
    view->CmbSkin->setCurrentIndex(1);
    EXPECT_THAT(status(), HasSubstr("6 triangles"));

    // A frame of the sequence in the group file: the root, and the head's
    // attachment with it, moves along X by its animation values.
    view->CmdPlay->setChecked(false);
    view->LstSequences->setCurrentRow(2);
    ASSERT_EQ(view->PicView->Markers().Attachments.size(), 1u);
    const preview::Vec3 before = view->PicView->Markers().Attachments[0].Point;
    view->SldFrame->setValue(3);
    EXPECT_FALSE(view->CmdPlay->isChecked());
    EXPECT_EQ(view->ShownSequence(), 2);
    EXPECT_THAT(status(), HasSubstr("run: frame 3 of 5"));
    const preview::Vec3 after = view->PicView->Markers().Attachments[0].Point;
    EXPECT_NEAR(after[0] - before[0], 3 * 0.01f, 1e-5f);
    EXPECT_NEAR(after[1] - before[1], 0.0f, 1e-5f);

    // The file menu opens another model into the same window; one a compile
    // left broken says why, and shows again once it is whole.
    ASSERT_TRUE(QDir(work.path()).mkdir(QStringLiteral("other")));
    const QString other = InWork("other/other.mdl");
    WriteFile(other, QByteArray::fromStdString(built.Model));
    services.QueueOpen(Pick(other));
    form->MnuDateiOpenCompiled->trigger();
    EXPECT_EQ(form->OpenFrmCompiledModel(), view);
    EXPECT_EQ(view->ModelPath(), other.toStdString());
    EXPECT_THAT(status(), HasSubstr("sequence group file other01.mdl was not found"));
    WriteFile(other, "IDSQ broken");
    const std::filesystem::path file = other.toStdString();
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) +
                                               std::chrono::seconds(5));
    view->TmrTick_Timer();
    EXPECT_THAT(status(), HasSubstr("other.mdl cannot be shown: This is no studio model"));
    EXPECT_EQ(view->LstSequences->count(), 0);
    services.VerifyAllUsed();
}

} // namespace
} // namespace quarle::test
