// The bone controllers of the model: for each of the four, whether it
// exists, the bone it turns, the axis and the two angle limits, which the
// dial PicLimits shows and a drag on it sets. Every control writes to the
// document at once; OKButton only closes the dialog.
#pragma once

#include "ui/dialogs/SkeletonView.h"

#include <array>

class QCheckBox;
class QPushButton;
class QRadioButton;

namespace quarle::ui {

class LimitsDial;

class DlgController : public SkeletonDialog {
    Q_OBJECT

public:
    DlgController(AppState& state, platform::Services& services, MainWindowAccess& main,
                  QWidget* parent = nullptr);
    ~DlgController() override;

    QLabel* Label1 = nullptr;
    QComboBox* CmbController = nullptr;
    QCheckBox* ChkCtrlAktiv = nullptr;
    QLabel* Label2 = nullptr;
    QGroupBox* FrameCtrl = nullptr;
    std::array<QRadioButton*, 3> CtrlAchse{};
    QLabel* Label3 = nullptr;
    LimitsDial* PicLimits = nullptr;
    QLabel* Label4 = nullptr;
    QLineEdit* TxtLimitMin = nullptr;
    QLabel* Label5 = nullptr;
    QLineEdit* TxtLimitMax = nullptr;

    void CmbController_Click();
    void ChkCtrlAktiv_Click();
    void CtrlAchse_Click(int index);
    void TxtLimitMin_Change(const QString& text);
    void TxtLimitMax_Change(const QString& text);
    void PicLimits_MouseMove(int button, int y);

protected:
    void StoreBoneName(const QString& text) override;

private:
    void Form_Load() override;
    void DrawLimits();
    int K() const;
};

} // namespace quarle::ui
