#include "ui/wizards/AnimWiz3.h"

#include "platform/Reflection.h"
#include "ui/common/ActivityIds.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quarle::ui {

AnimWiz3::AnimWiz3(AppState& state, platform::Services& services, WizardChain& chain,
                   QWidget* parent)
    : WizardPage(state, services, chain, QStringLiteral("AnimWiz3"),
                 QStringLiteral("Animations-Wizard"), parent) {
    CreatePicQuarle();
    FrmAnimationID = platform::Control(new QGroupBox(QStringLiteral("Animations-ID"), this),
                                       QStringLiteral("FrmAnimationID"));
    LblHelpText1 = CreateHelpText(
        FrmAnimationID, QStringLiteral("LblHelpText1"),
        QStringLiteral("Falls die Animation einen Standartvorgang wie zum Beispiel "
                       "Gehen oder schie\u00dfen ist, kannst du einen entsprechenden "
                       "Ident- ifikationsnamen f\u00fcr die Animation aus- w\u00e4hlen. "
                       "Dadurch wird diese automatisch ausgef\u00fchrt wenn das "
                       "entsprechende Ereigniss eintritt."),
        340);
    CmbAnimWiz3AnimID =
        platform::Control(new QComboBox(FrmAnimationID), QStringLiteral("CmbAnimWiz3AnimID"));
    CmbAnimWiz3AnimID->setEditable(true);
    // The activity is taken as typed: no completion may change the text.
    CmbAnimWiz3AnimID->setCompleter(nullptr);
    CmbAnimWiz3AnimID->setInsertPolicy(QComboBox::NoInsert);
    for (const std::string& id : ActivityIds()) {
        CmbAnimWiz3AnimID->addItem(QString::fromLatin1(id.c_str()));
    }
    CmbAnimWiz3AnimID->setCurrentIndex(-1);
    CmbAnimWiz3AnimID->setEditText(QString());
    CreateCmdZurueck();
    CreateCmdAbbrechen();
    CmdWeiter = CreateCmdWeiter();
    CreateCmdLocalise();

    auto* frame = new QVBoxLayout(FrmAnimationID);
    frame->addWidget(LblHelpText1);
    frame->addWidget(CmbAnimWiz3AnimID);
    auto* content = new QVBoxLayout;
    content->addWidget(FrmAnimationID);
    content->addStretch();
    LayOut(content, {CmdZurueck, CmdAbbrechen, CmdWeiter});
}

void AnimWiz3::Form_Load() {
    LoadPage();
}

} // namespace quarle::ui
