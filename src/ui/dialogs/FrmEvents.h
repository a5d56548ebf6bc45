// The events of one animation: event kinds picked from a fixed catalogue,
// added to the animation, each with its frame and its option text. The
// animation is the one selected in the main window, looked up again in every
// event; all changes reach it at once, and CmdOK only closes the form.
//
// Row i of LstAnimEvents stands for Events(i + 1) of the animation; the two
// buttons keep list and table in step, and the table has no gaps.
#pragma once

#include "ui/localisation/LocalisedDialog.h"

#include <QString>

class QLabel;
class QLineEdit;
class QListWidget;
class QTreeWidget;

namespace quarle::ui {

class MainWindowAccess;

class FrmEvents : public LocalisedDialog {
    Q_OBJECT

public:
    FrmEvents(AppState& state, platform::Services& services, MainWindowAccess& main,
              QWidget* parent = nullptr);
    ~FrmEvents() override;

    QTreeWidget* LVEvent = nullptr; // the catalogue: number, description
    QPushButton* CmdAdd = nullptr;
    QPushButton* CmdDel = nullptr;
    QListWidget* LstAnimEvents = nullptr;
    QLabel* LblFrame = nullptr;
    QLineEdit* TxtFrame = nullptr;
    QLabel* LblParameter = nullptr;
    QLineEdit* TxtParameter = nullptr;
    QLabel* LblDescription = nullptr;
    QLabel* LblBeschreibung = nullptr;
    QPushButton* CmdOK = nullptr;

    // LstAnimEvents' Tag: "1" while a click fills the two boxes, "0" after
    // the first click; the boxes store only at "0".
    QString LstAnimEventsTag;

    void CmdAdd_Click();
    void CmdDel_Click();
    void LstAnimEvents_Click();
    void TxtFrame_Change();
    void TxtParameter_Change();
    void CmdOK_Click();

private:
    void Form_Load() override;

    MainWindowAccess& main_;
};

} // namespace quarle::ui
