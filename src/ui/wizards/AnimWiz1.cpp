#include "ui/wizards/AnimWiz1.h"

#include "platform/Reflection.h"
#include "ui/localisation/Messages.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace quarle::ui {

AnimWiz1::AnimWiz1(AppState& state, platform::Services& services, WizardChain& chain,
                   QWidget* parent)
    : WizardPage(state, services, chain, QStringLiteral("AnimWiz1"),
                 QStringLiteral("Animations-Wizard"), parent) {
    CreatePicQuarle();
    LblHelpText = CreateHelpText(
        this, QStringLiteral("LblHelpText"),
        QStringLiteral("Gib einen Namen f\u00fcr die Animation an. Mit diesem wird "
                       "die Animation in der fertigen mdl-Datei angesprochen. F\u00fcr "
                       "eine Sprunganimation zum Beispiel den Namen \"jump\"."));
    LblAnimationname = platform::Control(new QLabel(QStringLiteral("Animationsname:"), this),
                                         QStringLiteral("LblAnimationname"));
    TxtAnimWiz1AnimName =
        platform::Control(new QLineEdit(QStringLiteral("Name der Animation"), this),
                          QStringLiteral("TxtAnimWiz1AnimName"));
    CreateCmdAbbrechen();
    CmdWeiter = CreateCmdWeiter();
    CmdWeiter->setEnabled(false);
    CreateCmdLocalise();

    auto* name = new QHBoxLayout;
    name->addWidget(LblAnimationname);
    name->addWidget(TxtAnimWiz1AnimName, 1);
    auto* content = new QVBoxLayout;
    content->addWidget(LblHelpText);
    content->addStretch();
    content->addLayout(name);
    LayOut(content, {CmdAbbrechen, CmdWeiter});

    connect(TxtAnimWiz1AnimName, &QLineEdit::textChanged, this,
            &AnimWiz1::TxtAnimWiz1AnimName_Change);
}

void AnimWiz1::Form_Load() {
    LoadPage();
    // The name the box starts with is in the user's language; it is no
    // entry yet, so Next stays closed, and typing replaces it.
    const QSignalBlocker block(TxtAnimWiz1AnimName);
    TxtAnimWiz1AnimName->setText(MessageText(state_, MSG_ANIMWIZ_DEFAULT_NAME));
    TxtAnimWiz1AnimName->selectAll();
}

void AnimWiz1::TxtAnimWiz1AnimName_Change() {
    CmdWeiter->setEnabled(!TxtAnimWiz1AnimName->text().isEmpty());
}

} // namespace quarle::ui
