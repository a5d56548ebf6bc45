#include "ui/wizards/Wizard5.h"

#include "document/Text.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "ui/common/MainWindowAccess.h"
#include "ui/localisation/Messages.h"
#include "ui/wizards/Wizard2.h"
#include "ui/wizards/Wizard3.h"
#include "ui/wizards/Wizard4.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

namespace quarle::ui {

Wizard5::Wizard5(AppState& state, platform::Services& services, WizardChain& chain,
                 MainWindowAccess& main, QWidget* parent)
    : WizardPage(state, services, chain, QStringLiteral("Wizard5"), QStringLiteral("Wizard"),
                 parent),
      main_(main) {
    CmdFertig = CreateSummary(LblAllRight, LstSumm, QStringLiteral("CmdFertig"));
    connect(CmdFertig, &QPushButton::clicked, this, &Wizard5::CmdFertig_Click);
}

void Wizard5::Form_Load() {
    LoadPage();
}

void Wizard5::Form_Activate() {
    LstSumm->clear();
    const Wizard2* paths = chain_.Find<Wizard2>();
    const Wizard3* reference = chain_.Find<Wizard3>();
    const Wizard4* other = chain_.Find<Wizard4>();
    if (paths == nullptr || reference == nullptr || other == nullptr) {
        return;
    }
    const auto ids = [this](Ids key) { return QString::fromStdString(state_.IdsTexts[key]); };
    const QString rule(37, QLatin1Char('-'));
    const QString sep = QStringLiteral(": ");
    const bool eyes = other->ChkWiz4Augen->isChecked();
    LstSumm->addItems({
        QString(),
        ids(IDS_TEXTUREPATH) + sep + paths->TxtWiz2Texturenpfad->text(),
        ids(IDS_MODELPATH) + sep + paths->TxtWiz2Modelpfad->text(),
        rule,
        ids(IDS_REFERENCEMODEL) + sep + reference->TxtWiz3Referenzmodel->text(),
        rule,
        ids(IDS_SCALE) + sep + other->TxtWiz4Massstab->text(),
        ids(IDS_EYES) + sep + ids(eyes ? IDS_YES : IDS_NO),
    });
    // Without eyes the boxes hold their letters, which are no position.
    if (eyes) {
        LstSumm->addItems({
            QStringLiteral("    X: ") + other->TxtWiz4AugenX->text(),
            QStringLiteral("    Y: ") + other->TxtWiz4AugenY->text(),
            QStringLiteral("    Z: ") + other->TxtWiz4AugenZ->text(),
        });
    }
}

void Wizard5::CmdFertig_Click() {
    const Wizard2* paths = chain_.Find<Wizard2>();
    const Wizard3* reference = chain_.Find<Wizard3>();
    const Wizard4* other = chain_.Find<Wizard4>();
    if (paths == nullptr || reference == nullptr || other == nullptr) {
        return;
    }
    const QString file = reference->TxtWiz3Referenzmodel->text();
    // The part is the file's name without ".smd". A name the document
    // cannot hold is refused before anything changes.
    const std::optional<std::string> part =
        TypedText(state_, services_, file.left(file.size() - 4));
    if (!part) {
        return;
    }
    Document& doc = state_.Doc;
    const QString texturePath = paths->TxtWiz2Texturenpfad->text();
    const QString modelPath = paths->TxtWiz2Modelpfad->text();
    doc.TexturePath = platform::ToCp1252Marked(texturePath);
    doc.ModelPath = platform::ToCp1252Marked(modelPath);
    main_.ShowPaths(PathFromDocument(doc.TexturePath), PathFromDocument(doc.ModelPath));

    BodyGroupRec& first = doc.BodyGroups[1];
    first.PartCount = 1;
    first.Parts[1] = *part;
    main_.AppendPartRow(platform::FromCp1252(*part));

    const auto number = [](const QLineEdit* box) {
        return ToF32(TextToNumber(box->text().toStdString()));
    };
    doc.ModelScale = number(other->TxtWiz4Massstab);
    doc.EyesOn = other->ChkWiz4Augen->isChecked() ? 1 : 0;
    if (doc.EyesOn == 1) {
        doc.EyeX = number(other->TxtWiz4AugenX);
        doc.EyeY = number(other->TxtWiz4AugenY);
        doc.EyeZ = number(other->TxtWiz4AugenZ);
    }
    EndRun();
}

} // namespace quarle::ui
