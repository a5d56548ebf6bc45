// The name of a new body group. Opened by CmdNewGroup of the main window
// without blocking it: the user may delete or select groups meanwhile, so the
// new group's slot is worked out only when CmdOK is pressed. The form is
// deleted when it closes.
#pragma once

#include "ui/dialogs/NameDialog.h"

class QComboBox;

namespace quarle::ui {

class DlgName : public NameDialog {
    Q_OBJECT

public:
    // groups: CmbBodyGroup of the main window, which receives the new group's
    // entry without its selection changing.
    DlgName(AppState& state, platform::Services& services, QComboBox* groups,
            QWidget* parent = nullptr);
    ~DlgName() override;

    // Label1 and CmdLocalise come with NameDialog.
    QLineEdit* TxtName = nullptr;
    QPushButton* CmdOK = nullptr;
    QPushButton* CmdAbbrechen = nullptr;

    // Adds the group behind the last one; at 32 groups it refuses with a
    // message and stays open.
    void CmdOK_Click();
    void CmdAbbrechen_Click();

private:
    void Form_Load() override;

    QComboBox* groups_;
};

} // namespace quarle::ui
