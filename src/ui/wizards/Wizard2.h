// First page of the base-settings wizard: the texture folder and the model
// folder, each named by picking a file in it.
#pragma once

#include "ui/wizards/WizardChain.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace quarle::ui {

class Wizard2 : public WizardPage {
    Q_OBJECT

public:
    Wizard2(AppState& state, platform::Services& services, WizardChain& chain,
            QWidget* parent = nullptr);

    QLabel* LblHelpText1 = nullptr;
    QLabel* LblHelpText2 = nullptr;
    QLabel* LblHelpText3 = nullptr;
    QLabel* LblHelpText4 = nullptr;
    QLabel* LblHelpText5 = nullptr;
    QLabel* LblTexturepath = nullptr;
    QLineEdit* TxtWiz2Texturenpfad = nullptr;
    QPushButton* CmdWiz2Texturenpfad = nullptr;
    QLabel* LblModelpath = nullptr;
    QLineEdit* TxtWiz2Modelpfad = nullptr;
    QPushButton* CmdWiz2Modelpfad = nullptr;
    QPushButton* CmdWeiter = nullptr;

    void CmdWiz2Texturenpfad_Click();
    void CmdWiz2Modelpfad_Click();
    // Either box: Next is open when both folders exist and hold a file.
    void TxtWiz2Pfad_Change();

private:
    void Form_Load();
    // The folder of a file the user picks, or nothing after a cancel.
    std::optional<QString> PickFolder(int titleKey, const QString& filter);
};

} // namespace quarle::ui
