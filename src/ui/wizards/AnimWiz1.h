// First page of the animation wizard: the animation's name.
#pragma once

#include "ui/wizards/WizardChain.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace quarle::ui {

class AnimWiz1 : public WizardPage {
    Q_OBJECT

public:
    AnimWiz1(AppState& state, platform::Services& services, WizardChain& chain,
             QWidget* parent = nullptr);

    QLabel* LblHelpText = nullptr;
    QLabel* LblAnimationname = nullptr;
    QLineEdit* TxtAnimWiz1AnimName = nullptr;
    QPushButton* CmdWeiter = nullptr;

    // Next opens once the user has typed a name: the designed text in the
    // box does not count.
    void TxtAnimWiz1AnimName_Change();

private:
    void Form_Load() override;
};

} // namespace quarle::ui
