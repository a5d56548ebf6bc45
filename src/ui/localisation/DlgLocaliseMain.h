// The language editor: lists what can be translated on a live form (or the
// global strings and, below them, the messages), makes the chosen control
// blink, shows a new caption at once on the form, and writes each entry into
// the active language file when the translator moves on to the next one or
// closes the dialog. Its own captions are English and never translated.
#pragma once

#include "AppState.h"
#include "platform/Services.h"

#include <QDialog>
#include <QPointer>
#include <QString>

class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTimer;

namespace quarle::ui {

class DlgLocaliseMain : public QDialog {
    Q_OBJECT

public:
    // stringsMode: the global strings and the messages instead of the
    // target's controls.
    DlgLocaliseMain(AppState& state, platform::Services& services, QWidget* target,
                    bool stringsMode, QWidget* parent = nullptr);
    ~DlgLocaliseMain() override;

    QListWidget* LstToLocalise;
    QGroupBox* FrmLocalisation;
    QLabel* Label2;
    QLineEdit* LblOldCaption;
    QLabel* Label3;
    QLineEdit* TxtNewCaption;
    QLabel* Label4;
    QLineEdit* LblOldTooltip;
    QLabel* Label6;
    QLineEdit* TxtNewTooltip;
    QTimer* TmrBlink;
    QPushButton* OKButton;

    void LstToLocalise_Click();
    void TxtNewCaption_Change();
    void TxtNewTooltip_Change();
    void TmrBlink_Timer();
    void OKButton_Click();

    // "1" during the final save.
    QString LstToLocaliseTag;
    // The list row being edited, -1 until one is chosen.
    int LastRow = -1;
    // The entry of LastRow is still to be saved.
    bool Pending = false;

protected:
    void done(int result) override;

private:
    void Form_Load();
    void Form_Unload();
    void SaveEntry();
    QString RowText(int row) const;

    AppState& state_;
    platform::Services& services_;
    QPointer<QWidget> target_;
    bool stringsMode_;
    bool unloaded_ = false;

    // The entry being edited.
    QString LocItem;
    int LocIndex = -1;
    // The Msg of a message row, -1 for a global string or a control.
    int LocMessage = -1;
    QString LocOldCaption;
    QString LocOldTooltip;
    QString LocNewCaption;
    QString LocNewTooltip;
    bool LocVisible = false;
};

} // namespace quarle::ui
