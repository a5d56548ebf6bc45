// The 3D preview on the sample model: two body groups, its textures (the
// eyes masked), an eye position, an attachment and a controller, playing its
// first animation; then the same model as the compiler built it, over its
// sources and in the window of compiled models. Drawn with GL, so Gallery.cpp
// calls it only in the run under a virtual X display
// (quarle_gallery OUTDIR --preview).
#include "GallerySupport.h"
#include "ui/preview/FrmCompiledModel.h"
#include "ui/preview/FrmPreview.h"
#include "ui/preview/PreviewView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>

void PreviewGallery(const QString& folder, const char* languageFile) {
    quarle::gallery::Window window(languageFile);
    quarle::ui::FrmMain& form = window.Start();
    quarle::Document& doc = window.State->Doc;

    QTemporaryDir model;
    const QDir sample(QStringLiteral(QUARLE_TEST_DATA "/model"));
    for (const QString& name : sample.entryList(QDir::Files)) {
        QFile::copy(sample.filePath(name), QDir(model.path()).filePath(name));
    }
    doc.ModelPath = model.path().toStdString();
    doc.TexturePath = QUARLE_TEST_DATA "/model/textures";
    doc.BodyGroupCount = 2;
    doc.BodyGroups[1].PartCount = 1;
    doc.BodyGroups[1].Parts[1] = "robot_ref";
    doc.BodyGroups[2].Name = "head";
    doc.BodyGroups[2].PartCount = 2;
    doc.BodyGroups[2].Parts[1] = "robot_head";
    doc.BodyGroups[2].Parts[2] = "robot_helmet";
    doc.TextureModes[1] = {"Robot_Eyes.BMP", 1};
    doc.EyesOn = 1;
    doc.EyeX = 6.0f;
    doc.EyeZ = 62.0f;
    doc.Attachments[0] = {1, 0.0f, -4.0f, 2.0f};
    doc.AttachmentBones[0] = "Bip01 Spine";
    doc.Controllers[0] = {1, 2.0f, -45.0f, 60.0f};
    doc.ControllerBones[0] = "Bip01 Head";
    const char* anims[] = {"idle", "walk", "run"};
    for (std::size_t s = 0; s < 3; ++s) {
        doc.Anims[0][s].Name = doc.Anims[0][s].SmdFile = anims[s];
    }
    form.Update();
    form.Animations().TxtAnimNr_Change();
    form.LstAnimations->setCurrentRow(0);

    form.MnuDateiPreview->trigger();
    quarle::ui::FrmPreview* preview = form.OpenFrmPreview();
    if (preview == nullptr || !QTest::qWaitForWindowExposed(preview)) {
        quarle::gallery::Fail(QStringLiteral("FrmPreview did not open (%1)").arg(languageFile));
        return;
    }
    // A frame into the animation, playing on from there.
    preview->SldFrame->setValue(3);
    preview->CmdPlay->setChecked(true);
    preview->TmrTick_Timer();
    if (preview->PicView->GlAvailable() != true) {
        quarle::gallery::Fail(QStringLiteral("FrmPreview cannot draw: %1")
                                  .arg(preview->LblStatus->text()));
    }
    quarle::gallery::Save(preview, folder, QStringLiteral("FrmPreview"));

    // The robot fallen over at the end of its death, framed with F: centred
    // in its pose and filling most of the view.
    doc.Anims[0][3].Name = doc.Anims[0][3].SmdFile = "die_back";
    form.Animations().TxtAnimNr_Change();
    form.LstAnimations->setCurrentRow(3);
    preview->TmrTick_Timer();
    preview->SldFrame->setValue(preview->SldFrame->maximum());
    preview->CmdFrameModel->click();
    preview->TmrTick_Timer();
    quarle::gallery::Save(preview, folder, QStringLiteral("FrmPreview-Framed"));

    // The compiled skeleton (magenta) over the sources' in the middle of the
    // walk: the model the compiler wrote beside the script.
    const QString compiled = QStringLiteral(QUARLE_TEST_DATA "/compiled");
    QFile::copy(compiled + QStringLiteral("/robot.mdl"), QDir(model.path()).filePath("robot.mdl"));
    doc.QcFile = QDir(model.path()).filePath(QStringLiteral("robot.qc")).toStdString();
    doc.ModelName = "robot.mdl";
    form.LstAnimations->setCurrentRow(1);
    preview->CmdPlay->setChecked(false);
    preview->TmrTick_Timer();
    preview->ChkCompiled->setChecked(true);
    preview->SldFrame->setValue(6);
    preview->CmdFrameModel->click();
    preview->TmrTick_Timer();
    quarle::gallery::Save(preview, folder, QStringLiteral("FrmPreview-Compiled"));
    preview->close();
    quarle::gallery::ExpectNoPrompts(window.Services,
                                     QStringLiteral("FrmPreview (%1)").arg(languageFile));

    // The compiled model in its own window, opened from the file menu: the
    // helmet chosen for the head, half-way through its run.
    window.Services.QueueOpen(quarle::platform::FilePick{compiled + QStringLiteral("/robot.mdl"),
                                                 QStringLiteral("robot.mdl")});
    form.MnuDateiOpenCompiled->trigger();
    quarle::ui::FrmCompiledModel* view = form.OpenFrmCompiledModel();
    if (view == nullptr || !QTest::qWaitForWindowExposed(view)) {
        quarle::gallery::Fail(QStringLiteral("FrmCompiledModel did not open (%1)").arg(languageFile));
        return;
    }
    view->CmdPlay->setChecked(false);
    view->LstSequences->setCurrentRow(2);
    view->CmbBodyPart->setCurrentIndex(1);
    view->CmbSubModel->setCurrentIndex(1);
    view->SldFrame->setValue(4);
    view->CmdFrameModel->click();
    view->TmrTick_Timer();
    quarle::gallery::Save(view, folder, QStringLiteral("FrmCompiledModel"));
    view->close();
}
