// The about box: the program's picture, name, a notice, and its version.
// Not modal; it closes itself when it is closed.
#pragma once

#include "ui/localisation/LocalisedDialog.h"

class QLabel;

namespace quarle::ui {

class frmAbout : public LocalisedDialog {
    Q_OBJECT

public:
    frmAbout(AppState& state, platform::Services& services, QWidget* parent = nullptr);
    ~frmAbout() override;

    QLabel* picIcon;
    QLabel* lblTitle;
    QLabel* lblDisclaimer;
    QLabel* LblFreeware;
    QLabel* LblVersion;
    QPushButton* CmdOK;

    void CmdOK_Click();

private:
    void Form_Load() override;
};

} // namespace quarle::ui
