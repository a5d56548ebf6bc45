// The attachments of the model: for each of the four, whether it exists, the
// bone it hangs on and where it stands relative to that bone. Every control
// writes to the document at once; OKButton only closes the dialog.
#pragma once

#include "ui/dialogs/SkeletonView.h"

class QCheckBox;
class QPushButton;

namespace quarle::ui {

class DlgBindung : public SkeletonDialog {
    Q_OBJECT

public:
    DlgBindung(AppState& state, platform::Services& services, MainWindowAccess& main,
               QWidget* parent = nullptr);
    ~DlgBindung() override;

    QLabel* Label1 = nullptr;
    QComboBox* CmbBindung = nullptr;
    QCheckBox* ChkBndgAktiv = nullptr;
    QLabel* Label2 = nullptr;
    QGroupBox* Frame1 = nullptr;
    QLabel* Label3 = nullptr;
    QLineEdit* TxtBindungX = nullptr;
    QLabel* Label4 = nullptr;
    QLineEdit* TxtBindungY = nullptr;
    QLabel* Label5 = nullptr;
    QLineEdit* TxtBindungZ = nullptr;

    void CmbBindung_Click();
    void ChkBndgAktiv_Click();
    void TxtBindung_Change(int axis, const QString& text); // 0 X, 1 Y, 2 Z

protected:
    void StoreBoneName(const QString& text) override;

private:
    void Form_Load() override;
    // The attachment being edited: the entry of CmbBindung whose text stands
    // in the box; -1 while typed text names none.
    int K() const;
    void EnableItemControls(bool on);
};

} // namespace quarle::ui
