// Fourth page of the animation wizard: speed, frame range and loop.
#pragma once

#include "ui/wizards/WizardChain.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace quarle::ui {

class AnimWiz4 : public WizardPage {
    Q_OBJECT

public:
    AnimWiz4(AppState& state, platform::Services& services, WizardChain& chain,
             QWidget* parent = nullptr);

    QGroupBox* FrmFPS = nullptr;
    QLabel* LblHelpText1 = nullptr;
    QLabel* LblFPS = nullptr;
    QLineEdit* TxtAnimWiz4FpS = nullptr;
    QGroupBox* FrmFramelilimts = nullptr;
    QLabel* LblHelpText2 = nullptr;
    QCheckBox* ChkAnimWiz4Frame = nullptr;
    QLineEdit* TxtAnimWiz4FrameStart = nullptr;
    QLabel* LblTo = nullptr;
    QLineEdit* TxtAnimWiz4FrameEnd = nullptr;
    QGroupBox* FrmLoop = nullptr;
    QLabel* LblHelpText3 = nullptr;
    QCheckBox* ChkAnimWiz4Schleife = nullptr;
    QPushButton* CmdWeiter = nullptr;

    // Reads the last frame of the chosen file into the end box.
    void Form_Activate() override;
    void ChkAnimWiz4Frame_Click();
    // A frame above the file's last one becomes the last one at once.
    void TxtAnimWiz4FrameStart_Change();
    void TxtAnimWiz4FrameEnd_Change();

private:
    void Form_Load() override;
    void LimitFrame(QLineEdit* box);
};

} // namespace quarle::ui
