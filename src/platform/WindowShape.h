// Shaped pictures: a picture box that shows and catches the mouse only where
// its picture is not of the top-left pixel's colour.
#pragma once

#include <QImage>
#include <QRegion>

class QLabel;
class QPixmap;

namespace quarle::platform {

// The opaque pixels of the picture as a region, in the picture's pixels.
QRegion BuildShapeRegion(const QImage& picture);

// Shows picture in the box at its own size, without a border, cut to its
// outline. The box keeps its top-left corner.
void ApplyWindowShape(QLabel* box, const QPixmap& picture);

} // namespace quarle::platform
