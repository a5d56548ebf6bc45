// Last page of the base-settings wizard: the summary, and the step that
// writes the entries of all pages into the document and the main window.
#pragma once

#include "ui/wizards/WizardChain.h"

class QLabel;
class QListWidget;
class QPushButton;

namespace quarle::ui {

class MainWindowAccess;

class Wizard5 : public WizardPage {
    Q_OBJECT

public:
    Wizard5(AppState& state, platform::Services& services, WizardChain& chain,
            MainWindowAccess& main, QWidget* parent = nullptr);

    QLabel* LblAllRight = nullptr;
    QListWidget* LstSumm = nullptr;
    QPushButton* CmdFertig = nullptr;

    // Paths, reference part, scale and eyes into the document, then the end.
    void CmdFertig_Click();
    // The summary, built anew each time the page shows: what the other pages
    // hold now, and the eye position only when the model gets eyes.
    void Form_Activate() override;

private:
    void Form_Load() override;

    MainWindowAccess& main_;
};

} // namespace quarle::ui
