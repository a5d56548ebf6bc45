// Third page of the animation wizard: the activity, picked, typed or left
// empty.
#pragma once

#include "ui/wizards/WizardChain.h"

class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;

namespace quarle::ui {

class AnimWiz3 : public WizardPage {
    Q_OBJECT

public:
    AnimWiz3(AppState& state, platform::Services& services, WizardChain& chain,
             QWidget* parent = nullptr);

    QGroupBox* FrmAnimationID = nullptr;
    QLabel* LblHelpText1 = nullptr;
    QComboBox* CmbAnimWiz3AnimID = nullptr;
    QPushButton* CmdWeiter = nullptr;

private:
    void Form_Load() override;
};

} // namespace quarle::ui
