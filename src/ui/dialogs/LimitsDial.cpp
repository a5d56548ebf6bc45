#include "ui/dialogs/LimitsDial.h"

#include "platform/Twips.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

namespace quarle::ui {

LimitsDial::LimitsDial(QWidget* parent) : QWidget(parent) {
    const int side = platform::ToPixels(SizeTwips);
    setFixedSize(side, side);
}

void LimitsDial::SetHands(float minAngle, float maxAngle) {
    min_ = minAngle;
    max_ = maxAngle;
    update();
}

void LimitsDial::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    painter.setRenderHint(QPainter::Antialiasing);
    // The sunken rim: shadow above and to the left, light below and right.
    const QRectF outer(2.5, 2.5, 55, 55);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().dark().color(), 2));
    painter.drawArc(outer, 45 * 16, 180 * 16);
    painter.setPen(QPen(palette().light().color(), 2));
    painter.drawArc(outer, 225 * 16, 180 * 16);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawEllipse(outer.adjusted(2, 2, -2, -2));

    painter.setRenderHint(QPainter::Antialiasing, false);
    const auto hand = [&](float angle, const QColor& colour) {
        const double x = std::isfinite(angle) ? std::cos(angle) * 25 + 30 : 55;
        const double y = std::isfinite(angle) ? std::sin(angle) * 25 + 30 : 30;
        painter.setPen(QPen(colour, 1));
        painter.drawLine(QPointF(30, 30), QPointF(x, y));
    };
    hand(min_, QColor(255, 0, 0));
    hand(max_, QColor(0, 0, 255));
}

void LimitsDial::mouseMoveEvent(QMouseEvent* event) {
    const Qt::MouseButtons held = event->buttons();
    const int button =
        ((held & Qt::LeftButton) != 0 ? 1 : 0) + ((held & Qt::RightButton) != 0 ? 2 : 0);
    emit MouseMove(button, platform::ToTwips(qRound(event->position().y())));
}

} // namespace quarle::ui
