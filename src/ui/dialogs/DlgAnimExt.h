// What the main window does not show of one animation: speed, loop, frame
// range, motion, rotation, scale and blending, and the way to its events and
// its origin. The animation is the one selected on the main window's page
// "Animationsdateien", looked up again in every event. Every control writes
// into it in its own event; OKButton only closes the form. The numeric
// options (speed, rotation, scale, ...) are a label and a text box for each
// row of SequenceNumbers, built, filled and read by their row.
#pragma once

#include "ui/localisation/LocalisedDialog.h"

#include <array>
#include <functional>
#include <string_view>
#include <vector>

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

    // A row's label and text box, by the row of SequenceNumbers.
    std::vector<QLabel*> NumberLabels;
    std::vector<QLineEdit*> NumberBoxes;
    // The boxes of fps, rotate and scale by their own names.
    QLineEdit* Text6 = nullptr;
    QLineEdit* TxtAnimRotate = nullptr;
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

    // The text box of a numeric option by its name ("Text6"); null for none.
    QLineEdit* NumberBox(std::string_view name) const;

    void NumberBox_Change(std::size_t row);
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
    void Fill(QLineEdit* box, const QString& text, const std::function<void()>& change);
    void StoreFrame(QLineEdit* box, i16& field);

    MainWindowAccess& main_;
};

} // namespace quarle::ui
