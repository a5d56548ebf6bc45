// The attachment and controller dialogs on a humanoid skeleton, each with an
// active item on a picked bone.
#include "GallerySupport.h"
#include "ui/dialogs/DlgBindung.h"
#include "ui/dialogs/DlgController.h"

namespace {

using quarle::gallery::Save;

void Humanoid(quarle::Document& doc) {
    doc.ModelPath = QUARLE_TEST_DATA "/skeleton";
    doc.BodyGroupCount = 1;
    doc.BodyGroups[1].PartCount = 1;
    doc.BodyGroups[1].Parts[1] = "humanoid";
}

} // namespace

void SkeletonGallery(const QString& folder, const char* languageFile) {
    quarle::gallery::Window window(languageFile);
    quarle::ui::FrmMain& form = window.Start();
    quarle::Document& doc = window.State->Doc;
    Humanoid(doc);
    doc.Attachments[0] = {1, 1.5f, -2.0f, 3.0f};
    doc.AttachmentBones[0] = "Bip01 R Hand";
    doc.Controllers[0] = {1, 1.0f, -30.0f, 60.0f};
    doc.ControllerBones[0] = "Bip01 Head";
    {
        quarle::ui::DlgBindung dialog(*window.State, window.Services, form, &form);
        dialog.show();
        Save(&dialog, folder, QStringLiteral("DlgBindung"));
    }
    {
        quarle::ui::DlgController dialog(*window.State, window.Services, form, &form);
        dialog.show();
        Save(&dialog, folder, QStringLiteral("DlgController"));
    }
    quarle::gallery::ExpectNoPrompts(window.Services,
                                     QStringLiteral("skeleton dialogs (%1)").arg(languageFile));
}
