// Hands the mouse buttons and moves over one widget to the form that owns
// it, as the widget's MouseDown, MouseMove, MouseUp and Click events. The
// widget's own children pass on what they do not use, so a press on a
// label inside a frame reaches the frame, in the frame's coordinates.
#pragma once

#include <QObject>
#include <QPointF>
#include <functional>

class QWidget;

namespace quarle::ui {

class MouseRelay : public QObject {
public:
    // Watches widget from now on; it is destroyed with the widget.
    explicit MouseRelay(QWidget* widget);

    std::function<void(Qt::MouseButton, QPointF)> MouseDown;
    std::function<void(Qt::MouseButtons, QPointF)> MouseMove;
    std::function<void(Qt::MouseButton, QPointF)> MouseUp;
    // A left button let go over the widget's visible part.
    std::function<void()> Click;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* widget_;
};

} // namespace quarle::ui
