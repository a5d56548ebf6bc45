// PicLimits of the controller dialog: a black disc with a sunken rim on the
// dialog's grey, with a red hand for the lower limit and a blue one for the
// upper, 25 pixels from the hub; 0 degrees points right and positive angles
// turn clockwise. Moving the pointer with a button held reports the
// pointer's height.
#pragma once

#include <QWidget>

namespace quarle::ui {

class LimitsDial : public QWidget {
    Q_OBJECT

public:
    static constexpr int SizeTwips = 900;

    explicit LimitsDial(QWidget* parent = nullptr);

    // The hands' angles in radians; the dial is drawn afresh with them.
    void SetHands(float minAngle, float maxAngle);
    float MinAngle() const { return min_; }
    float MaxAngle() const { return max_; }

signals:
    // button: 1 left, 2 right, as the buttons held add up (3 both, 0 none);
    // yTwips: the pointer's height from the top of the picture.
    void MouseMove(int button, int yTwips);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    float min_ = 0.0f;
    float max_ = 0.0f;
};

} // namespace quarle::ui
