// A new name for the selected body group, shown modally by CmdRename of the
// main window. It opens with the group's current name.
#pragma once

#include "ui/dialogs/NameDialog.h"

class QComboBox;

namespace quarle::ui {

class DlgRenameGroup : public NameDialog {
    Q_OBJECT

public:
    // groups: CmbBodyGroup of the main window; its selected entry is the
    // group renamed.
    DlgRenameGroup(AppState& state, platform::Services& services, QComboBox* groups,
                   QWidget* parent = nullptr);
    ~DlgRenameGroup() override;

    // Label1 and CmdLocalise come with NameDialog.
    QLineEdit* TxtNewCaption = nullptr;
    QPushButton* OKButton = nullptr;
    QPushButton* CancelButton = nullptr;

    void OKButton_Click();
    void CancelButton_Click();

private:
    void Form_Load() override;

    QComboBox* groups_;
};

} // namespace quarle::ui
