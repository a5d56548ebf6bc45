// The preview follows the document and the main window's pages while it is
// open: markers, the frame of the selected animation, the chosen part and the
// texture folder. Runs with or without GL: the scene is what the view is
// handed, and its projection needs no context.
#include "support/MainWindowFixture.h"
#include "ui/preview/FrmPreview.h"
#include "ui/preview/PreviewView.h"

#include <QLabel>
#include <QSlider>
#include <QStyle>
#include <gmock/gmock.h>

namespace quarle::test {
namespace {

class FrmPreviewTest : public MainWindowFixture {
protected:
    // Shows the window's document with one animation of group 0 listed,
    // and opens the preview on it.
    ui::FrmPreview* OpenPreview(const char* name, const char* file) {
        Doc().Anims[0][0].Name = name;
        Doc().Anims[0][0].SmdFile = file;
        form->Update();
        form->Animations().TxtAnimNr_Change();
        form->MnuDateiPreview->trigger();
        return form->OpenFrmPreview();
    }
};

MATCHER_P3(IsPoint, x, y, z, "") {
    return std::abs(arg[0] - x) < 1e-3f && std::abs(arg[1] - y) < 1e-3f &&
           std::abs(arg[2] - z) < 1e-3f;
}

TEST_F(FrmPreviewTest, FollowsTheDocumentAndThePages) {
    Start();
    OpenSampleModel();
    Document& doc = Doc();
    doc.TexturePath = QUARLE_TEST_DATA "/model/textures";
    doc.BodyGroups[1].PartCount = 2;
    doc.BodyGroups[1].Parts[1] = "robot_ref";
    doc.BodyGroups[1].Parts[2] = "robot_head";
    doc.EyesOn = 1;
    doc.EyeZ = 50.0f;
    doc.Attachments[1] = {1, 0.0f, 0.0f, 2.0f};
    doc.AttachmentBones[1] = "bip01 head"; // bones are matched whatever their case
    ui::FrmPreview* preview = OpenPreview("Idle", "idle");
    ASSERT_NE(preview, nullptr);
    ui::PreviewView* view = preview->PicView;
    preview->TmrTick_Timer();
    auto status = [preview] { return preview->LblStatus->text().toStdString(); };
    EXPECT_THAT(status(), ::testing::HasSubstr("60 triangles")) << "the first part of the group";
    EXPECT_THAT(status(), ::testing::Not(::testing::HasSubstr(".bmp")));

    // It opens playing: the button is pressed and says what a click does.
    const auto shows = [&](QStyle::StandardPixmap icon, const QString& caption) {
        EXPECT_EQ(preview->CmdPlay->text(), caption);
        EXPECT_TRUE(preview->CmdPlay->icon().pixmap(16).toImage() ==
                    preview->style()->standardIcon(icon).pixmap(16).toImage())
            << caption.toStdString();
    };
    EXPECT_TRUE(preview->CmdPlay->isChecked());
    shows(QStyle::SP_MediaPause, QString::fromStdString(state->MsgTexts[MSG_PREVIEW_PAUSE]));

    // A new eye position moves the marker on the screen.
    ASSERT_TRUE(view->Markers().Eye);
    const std::optional<QPointF> before = view->Project(*view->Markers().Eye);
    doc.EyeZ = 60.0f;
    preview->TmrTick_Timer();
    ASSERT_TRUE(view->Markers().Eye);
    EXPECT_THAT(*view->Markers().Eye, IsPoint(0.0f, 0.0f, 60.0f));
    const std::optional<QPointF> after = view->Project(*view->Markers().Eye);
    ASSERT_TRUE(before && after);
    EXPECT_LT(after->y(), before->y() - 1.0) << "the marker moves up";

    // A frame picked on the slider holds the animation there; the head's
    // attachment rides on the root, which idle lifts one unit a frame.
    Click(form->LstAnimations, 0);
    preview->SldFrame->setValue(2);
    EXPECT_FALSE(preview->CmdPlay->isChecked());
    shows(QStyle::SP_MediaPlay, QStringLiteral("Abspielen"));
    EXPECT_EQ(preview->ShownFrame(), 2);
    ASSERT_EQ(view->Markers().Attachments.size(), 1u);
    EXPECT_EQ(view->Markers().Attachments[0].Number, 1);
    EXPECT_THAT(view->Markers().Attachments[0].Point, IsPoint(0.0f, 0.0f, 38 + 8 + 12 + 2));
    EXPECT_THAT(status(), ::testing::HasSubstr("Idle: frame 2"));

    // The part selected in LstParts replaces the first; a texture folder
    // without the bitmaps names them.
    Click(form->LstParts, 1);
    doc.TexturePath = models.path().toStdString();
    preview->TmrTick_Timer();
    EXPECT_THAT(status(), ::testing::HasSubstr("14 triangles"));
    EXPECT_THAT(status(), ::testing::HasSubstr("robot_face.bmp, Robot_Eyes.BMP"));
}

// "Frame the model" centres what is shown, in its pose, and fills most of
// the view, whichever extent limits it.
TEST_F(FrmPreviewTest, FramingCentresTheShownPartsAndFillsTheView) {
    Start();
    OpenSampleModel();
    Document& doc = Doc();
    doc.BodyGroups[1].PartCount = 2;
    doc.BodyGroups[1].Parts[1] = "robot_ref";
    doc.BodyGroups[1].Parts[2] = "robot_head";
    doc.BodyGroups[2].PartCount = 1;
    doc.BodyGroups[2].Parts[1] = "robot_helmet";
    doc.BodyGroupCount = 2;
    // The robot falls over, away from where it stood: the pose shown is far
    // from the bind pose.
    WriteFile(InModels("fall.smd"),
              "version 1\r\nnodes\r\n0 \"Bip01\" -1\r\n1 \"Bip01 Spine\" 0\r\n"
              "2 \"Bip01 Head\" 1\r\nend\r\nskeleton\r\n"
              "time 0\r\n0 0 0 36 0 0 0\r\n1 0 0 8 0 0 0\r\n2 0 0 12 0 0 0\r\n"
              "time 1\r\n0 150 40 6 0 1.5708 0\r\n1 0 0 8 0 0 0\r\n2 0 0 12 0 0 0\r\n"
              "end\r\n");
    ui::FrmPreview* preview = OpenPreview("Fall", "fall");
    ASSERT_NE(preview, nullptr);
    ui::PreviewView* view = preview->PicView;
    Click(form->LstAnimations, 0);

    for (const QSize size : {QSize(400, 300), QSize(240, 420)}) {
        view->resize(size);
        preview->SldFrame->setValue(preview->SldFrame->maximum());
        ASSERT_FALSE(view->Corners().empty());
        preview->CmdFrameModel->click();
        double left = 1e9, right = -1e9, top = 1e9, bottom = -1e9;
        for (const preview::Vec3& corner : view->Corners()) {
            const std::optional<QPointF> at = view->Project(corner);
            ASSERT_TRUE(at);
            left = std::min(left, at->x());
            right = std::max(right, at->x());
            top = std::min(top, at->y());
            bottom = std::max(bottom, at->y());
        }
        SCOPED_TRACE(QStringLiteral("%1x%2: %3..%4, %5..%6")
                         .arg(size.width())
                         .arg(size.height())
                         .arg(left)
                         .arg(right)
                         .arg(top)
                         .arg(bottom)
                         .toStdString());
        EXPECT_GE(left, 0.0);
        EXPECT_LE(right, size.width());
        EXPECT_GE(top, 0.0);
        EXPECT_LE(bottom, size.height());
        EXPECT_NEAR((left + right) / 2, size.width() / 2.0, size.width() * 0.02);
        EXPECT_NEAR((top + bottom) / 2, size.height() / 2.0, size.height() * 0.02);
        const double fill = std::max((right - left) / size.width(), (bottom - top) / size.height());
        EXPECT_NEAR(fill, 0.8, 0.03);
    }
}

} // namespace
} // namespace quarle::test
