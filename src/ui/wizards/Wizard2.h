// First page of the base-settings wizard: the texture folder and the model
// folder, chosen with the folder chooser or typed.
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
    // Either box: Next is open when both folders exist and the model folder
    // holds a file; the texture folder may still be empty.
    void TxtWiz2Pfad_Change();

private:
    void Form_Load() override;
    // The folder the user chooses (starting at the one in box), or nothing
    // after a cancel.
    std::optional<QString> PickFolder(int titleKey, const QLineEdit* box);
};

} // namespace quarle::ui
