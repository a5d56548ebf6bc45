#include "platform/Twips.h"

namespace quarle::platform {

void SetGeometryTwips(QWidget* w, int left, int top, int width, int height) {
    w->setGeometry(ToPixels(left), ToPixels(top), ToPixels(width), ToPixels(height));
}

void SetWidthTwips(QWidget* w, int width) {
    w->resize(ToPixels(width), w->height());
}

void SetHeightTwips(QWidget* w, int height) {
    w->resize(w->width(), ToPixels(height));
}

void MoveTwips(QWidget* w, int left, int top) {
    w->move(ToPixels(left), ToPixels(top));
}

int WidthTwips(const QWidget* w) {
    return ToTwips(w->width());
}

int HeightTwips(const QWidget* w) {
    return ToTwips(w->height());
}

int LeftTwips(const QWidget* w) {
    return ToTwips(w->x());
}

int TopTwips(const QWidget* w) {
    return ToTwips(w->y());
}

} // namespace quarle::platform
