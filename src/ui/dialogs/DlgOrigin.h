// The origin of one animation: two views, X,Y and X,Z, into which the user
// clicks, or three boxes whose number counts when Enter is pressed. Unlike
// the other dialogs of an animation it works on a copy (OriginEditX/Y/Z of
// AppState, in twips of the views: 30 to an origin unit), and the record
// changes only with OKButton.
#pragma once

#include "platform/TwipsPicture.h"
#include "ui/localisation/LocalisedDialog.h"

#include <array>
#include <optional>

class QLabel;
class QLineEdit;
class QTimer;

namespace quarle::ui {

class MainWindowAccess;

// A black picture box of the origin dialog that reports a press in twips.
class OriginView : public platform::TwipsPicture {
    Q_OBJECT

public:
    explicit OriginView(QWidget* parent);

signals:
    // A press of any button at (x, y) in twips from the top left corner.
    void MouseDown(double x, double y);

protected:
    void mousePressEvent(QMouseEvent* event) override;
};

class DlgOrigin : public LocalisedDialog {
    Q_OBJECT

public:
    DlgOrigin(AppState& state, platform::Services& services, MainWindowAccess& main,
              QWidget* parent = nullptr);
    ~DlgOrigin() override;

    QLabel* Label4 = nullptr;
    OriginView* PicXYVer = nullptr;
    QLabel* Label5 = nullptr;
    OriginView* PicXZVer = nullptr;
    QLabel* Label1 = nullptr;
    QLineEdit* TxtX = nullptr;
    QLabel* Label2 = nullptr;
    QLineEdit* TxtY = nullptr;
    QLabel* Label3 = nullptr;
    QLineEdit* TxtZ = nullptr;
    QPushButton* OKButton = nullptr;
    QPushButton* CancelButton = nullptr;
    QTimer* Timer1 = nullptr;

    void Timer1_Timer();
    void PicXYVer_MouseDown(double x, double y);
    void PicXZVer_MouseDown(double x, double y);
    void TxtX_KeyPress(int& keyAscii);
    void TxtY_KeyPress(int& keyAscii);
    void TxtZ_KeyPress(int& keyAscii);
    void OKButton_Click();
    void CancelButton_Click();

private:
    void Form_Load() override;
    void DrawOrigin();
    // Enter in a box: the working copy of the axis takes the box's number.
    void TakeNumber(QLineEdit* box, i16& copy, int axis);

    MainWindowAccess& main_;
    // The record's number of an axis whose working copy cannot hold it
    // (beyond 1092 units either way), until the user sets that axis.
    std::array<std::optional<i16>, 3> beyondView_{};
};

} // namespace quarle::ui
