// What the main window does not show of one animation: speed, loop, frame
// range, motion, rotation, scale and blending, and the way to its events and
// its origin. The animation is the one selected on the main window's page
// "Animationsdateien", looked up again in every event. Every control writes
// into it in its own event; OKButton only closes the form.
#pragma once

#include "ui/localisation/LocalisedDialog.h"

#include <array>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace quarle::ui {

class MainWindowAccess;

class DlgAnimExt : public LocalisedDialog {
    Q_OBJECT

public:
    DlgAnimExt(AppState& state, platform::Services& services, MainWindowAccess& main,
               QWidget* parent = nullptr);
    ~DlgAnimExt() override;

    QLabel* Label6 = nullptr;
    QLineEdit* Text6 = nullptr;
    QLabel* Label7 = nullptr;
    QLineEdit* TxtAnimRotate = nullptr;
    QLabel* Label2 = nullptr;
    QLineEdit* TxtScale = nullptr;
    QCheckBox* Check1 = nullptr;
    QCheckBox* ChkLX = nullptr;
    QCheckBox* ChkLY = nullptr;
    QCheckBox* ChkLZ = nullptr;
    QCheckBox* ChkFrameGrenze = nullptr;
    QLineEdit* TxtMinFrame = nullptr;
    QLabel* Label8 = nullptr;
    QLineEdit* TxtMaxFrame = nullptr;
    QPushButton* CmdEvents = nullptr;
    QPushButton* CmdOrigin = nullptr;
    QCheckBox* ChkBlend = nullptr;
    QLabel* Label1 = nullptr;
    QComboBox* CmbBlendFile = nullptr;
    QGroupBox* FrameCtrl = nullptr;
    std::array<QRadioButton*, 3> CtrlAchse{};
    QLabel* Label3 = nullptr;
    QLabel* Label4 = nullptr;
    QLineEdit* TxtLimitMin = nullptr;
    QLabel* Label5 = nullptr;
    QLineEdit* TxtLimitMax = nullptr;
    QPushButton* OKButton = nullptr;

    void Text6_Change();
    void TxtAnimRotate_Change();
    void TxtScale_Change();
    void TxtMinFrame_Change();
    void TxtMaxFrame_Change();
    void TxtLimitMin_Change();
    void TxtLimitMax_Change();
    void Check1_Click();
    void ChkLX_Click();
    void ChkLY_Click();
    void ChkLZ_Click();
    void ChkFrameGrenze_Click();
    void ChkBlend_Click();
    void CmbBlendFile_Click();
    void CtrlAchse_Click(int index);
    void CmdEvents_Click();
    void CmdOrigin_Click();
    void OKButton_Click();

private:
    void Form_Load() override;
    // Sets a text box's text and runs its change event, also when the text
    // does not change.
    void Fill(QLineEdit* box, const QString& text, void (DlgAnimExt::*change)());
    void StoreFrame(QLineEdit* box, i16& field);

    MainWindowAccess& main_;
};

} // namespace quarle::ui
