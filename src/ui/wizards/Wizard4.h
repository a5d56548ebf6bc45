// Third page of the base-settings wizard: the scale and the eye position.
#pragma once

#include "ui/wizards/WizardChain.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace quarle::ui {

class Wizard4 : public WizardPage {
    Q_OBJECT

public:
    Wizard4(AppState& state, platform::Services& services, WizardChain& chain,
            QWidget* parent = nullptr);

    QGroupBox* FrmScale = nullptr;
    QLabel* LblHelpText1 = nullptr;
    QLabel* LblScale = nullptr;
    QLineEdit* TxtWiz4Massstab = nullptr;
    QGroupBox* FrmEyes = nullptr;
    QLabel* LblHelpText2 = nullptr;
    QCheckBox* ChkWiz4Augen = nullptr;
    QLineEdit* TxtWiz4AugenX = nullptr;
    QLineEdit* TxtWiz4AugenY = nullptr;
    QLineEdit* TxtWiz4AugenZ = nullptr;
    QPushButton* CmdWeiter = nullptr;

    // Ticked: the three boxes open with "0"; clear: closed, showing X, Y, Z.
    void ChkWiz4Augen_Click();

private:
    void Form_Load() override;
};

} // namespace quarle::ui
