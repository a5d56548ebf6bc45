#include "ui/assistant/MouseRelay.h"

#include <QMouseEvent>
#include <QWidget>

namespace quarle::ui {

MouseRelay::MouseRelay(QWidget* widget) : QObject(widget), widget_(widget) {
    widget->installEventFilter(this);
}

bool MouseRelay::eventFilter(QObject* watched, QEvent* event) {
    if (watched != widget_) {
        return false;
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (MouseDown) {
            MouseDown(mouse->button(), mouse->position());
        }
        return true; // the widget keeps the mouse until the button is let go
    }
    case QEvent::MouseMove: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (MouseMove) {
            MouseMove(mouse->buttons(), mouse->position());
        }
        return true;
    }
    case QEvent::MouseButtonRelease: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        const QPoint at = mouse->position().toPoint();
        const bool over = widget_->rect().contains(at) &&
                          (widget_->mask().isEmpty() || widget_->mask().contains(at));
        if (MouseUp) {
            MouseUp(mouse->button(), mouse->position());
        }
        if (over && mouse->button() == Qt::LeftButton && Click) {
            Click();
        }
        return true;
    }
    default:
        return false;
    }
}

} // namespace quarle::ui
