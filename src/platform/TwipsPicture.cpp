#include "platform/TwipsPicture.h"

#include "platform/Twips.h"

#include <QPainter>

namespace quarle::platform {
namespace {

QPointF Pixels(double x, double y) {
    return {x / TwipsPerPixel, y / TwipsPerPixel};
}

} // namespace

TwipsPicture::TwipsPicture(QWidget* parent) : QWidget(parent) {}

TwipsPicture::TwipsPicture(int widthTwips, int heightTwips, const QColor& fill, QWidget* parent)
    : QWidget(parent), picture_(ToPixels(widthTwips), ToPixels(heightTwips), QImage::Format_RGB32) {
    picture_.fill(fill);
    setFixedSize(picture_.size());
}

void TwipsPicture::SetPicture(const QImage& picture) {
    picture_ = picture;
    update();
}

void TwipsPicture::Cls(const QColor& fill) {
    picture_.fill(fill);
    update();
}

bool TwipsPicture::Paintable() {
    if (picture_.isNull()) {
        return false;
    }
    if (picture_.format() == QImage::Format_Indexed8 || picture_.format() == QImage::Format_Mono ||
        picture_.format() == QImage::Format_MonoLSB) {
        picture_ = picture_.convertToFormat(QImage::Format_RGB32); // a painter needs true colour
    }
    return true;
}

void TwipsPicture::Line(double x1, double y1, double x2, double y2, const QColor& colour,
                        int width) {
    if (!Paintable()) {
        return;
    }
    QPainter painter(&picture_);
    painter.setPen(QPen(colour, width));
    painter.drawLine(Pixels(x1, y1), Pixels(x2, y2));
    painter.end();
    update();
}

void TwipsPicture::Circle(double x, double y, double radius, const QColor& colour) {
    if (!Paintable()) {
        return;
    }
    QPainter painter(&picture_);
    painter.setPen(QPen(colour, 1));
    painter.setBrush(Qt::NoBrush);
    const double r = radius / TwipsPerPixel;
    painter.drawEllipse(Pixels(x, y), r, r);
    painter.end();
    update();
}

void TwipsPicture::paintEvent(QPaintEvent* /*event*/) {
    if (!picture_.isNull()) {
        QPainter painter(this);
        painter.drawImage(0, 0, picture_);
    }
}

} // namespace quarle::platform
