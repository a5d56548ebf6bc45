// Form geometry in twips: 1/1440 inch, 15 to a pixel.
#pragma once

#include <QWidget>

namespace quarle::platform {

inline constexpr int TwipsPerPixel = 15;

constexpr int ToPixels(int twips) { return (twips + TwipsPerPixel / 2) / TwipsPerPixel; }
constexpr int ToTwips(int pixels) { return pixels * TwipsPerPixel; }

// Place and size a widget in twips, relative to its parent.
void SetGeometryTwips(QWidget* w, int left, int top, int width, int height);
void SetWidthTwips(QWidget* w, int width);
void SetHeightTwips(QWidget* w, int height);
int WidthTwips(const QWidget* w);
int HeightTwips(const QWidget* w);

} // namespace quarle::platform
