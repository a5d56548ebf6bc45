// A new name for the selected body group, shown modally by CmdRename of the
// main window. It opens with the group's current name.
#pragma once

#include "AppState.h"
#include "platform/Services.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace quarle::ui {

class DlgRenameGroup : public QDialog {
    Q_OBJECT

public:
    // groups: CmbBodyGroup of the main window; its selected entry is the
    // group renamed.
    DlgRenameGroup(AppState& state, platform::Services& services, QComboBox* groups,
                   QWidget* parent = nullptr);
    ~DlgRenameGroup() override;

    QLabel* Label1 = nullptr;
    QLineEdit* TxtNewCaption = nullptr;
    QPushButton* OKButton = nullptr;
    QPushButton* CancelButton = nullptr;
    QPushButton* CmdLocalise = nullptr;

    void OKButton_Click();
    void CancelButton_Click();
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
