// The name of a new body group. Opened by CmdNewGroup of the main window
// without blocking it: the user may delete or select groups meanwhile, so the
// new group's slot is worked out only when CmdOK is pressed. The form is
// deleted when it closes.
#pragma once

#include "AppState.h"
#include "platform/Services.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace quarle::ui {

class DlgName : public QDialog {
    Q_OBJECT

public:
    // groups: CmbBodyGroup of the main window, which receives the new group's
    // entry without its selection changing.
    DlgName(AppState& state, platform::Services& services, QComboBox* groups,
            QWidget* parent = nullptr);
    ~DlgName() override;

    QLabel* Label1 = nullptr;
    QLineEdit* TxtName = nullptr;
    QPushButton* CmdOK = nullptr;
    QPushButton* CmdAbbrechen = nullptr;
    QPushButton* CmdLocalise = nullptr;

    // Adds the group behind the last one; at 32 groups it refuses with a
    // message and stays open.
    void CmdOK_Click();
    void CmdAbbrechen_Click();
    void CmdLocalise_Click();

signals:
    // The language editor is to open on this form.
    void LocaliseRequested(QWidget* form);

private:
    void Form_Load();

    AppState& state_;
    platform::Services& services_;
    QComboBox* groups_;
};

} // namespace quarle::ui
