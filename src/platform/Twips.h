// Form geometry in twips: 1/1440 inch, 15 to a pixel.
#pragma once

#include <QWidget>

namespace quarle::platform {

inline constexpr int TwipsPerPixel = 15;

// Rounds to the nearest pixel, the same way on both sides of zero (negative
// positions place a control partly outside its parent).
constexpr int ToPixels(int twips) {
    return twips >= 0 ? (twips + TwipsPerPixel / 2) / TwipsPerPixel
                      : -((-twips + TwipsPerPixel / 2) / TwipsPerPixel);
}
constexpr int ToTwips(int pixels) {
    return pixels * TwipsPerPixel;
}

// Place and size a widget in twips, relative to its parent. Width and height
// are those of the widget itself (for a window, without its frame).
void SetGeometryTwips(QWidget* w, int left, int top, int width, int height);
void SetWidthTwips(QWidget* w, int width);
void SetHeightTwips(QWidget* w, int height);
int WidthTwips(const QWidget* w);
int HeightTwips(const QWidget* w);
int LeftTwips(const QWidget* w);
int TopTwips(const QWidget* w);
void MoveTwips(QWidget* w, int left, int top);

} // namespace quarle::platform
