// Last page of the animation wizard: the summary, and the step that adds the
// animation to the sequence group on show in the main window.
#pragma once

#include "ui/wizards/WizardChain.h"

class QLabel;
class QListWidget;
class QPushButton;

namespace quarle::ui {

class MainWindowAccess;

class AnimWiz5 : public WizardPage {
    Q_OBJECT

public:
    AnimWiz5(AppState& state, platform::Services& services, WizardChain& chain,
             MainWindowAccess& main, QWidget* parent = nullptr);

    QLabel* LblAllRight = nullptr;
    QListWidget* LstSumm = nullptr;
    QPushButton* CmdWeiter = nullptr; // "Fertigstellen"

    // Adds the animation behind the entries of the group on show, then ends
    // the run. A full group is refused and the page stays.
    void CmdWeiter_Click() override; // finishes

private:
    // The summary is built once, when the page loads.
    void Form_Load() override;

public:
    // The summary, built anew each time the page shows, from what the other
    // pages hold now.
    void Form_Activate() override;

private:
    MainWindowAccess& main_;
};

} // namespace quarle::ui
