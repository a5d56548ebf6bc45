#include "platform/WindowShape.h"

#include "platform/ShapeRuns.h"

#include <QLabel>
#include <QPixmap>
#include <QRect>
#include <vector>

namespace quarle::platform {

QRegion BuildShapeRegion(const QImage& picture) {
    if (picture.isNull()) {
        return {};
    }
    // One 32-bit value per pixel, so that colours compare exactly.
    const QImage pixels =
        picture.format() == QImage::Format_RGB32 || picture.format() == QImage::Format_ARGB32
            ? picture
            : picture.convertToFormat(QImage::Format_ARGB32);
    const auto stride = static_cast<std::size_t>(pixels.bytesPerLine()) / 4;
    const std::span<const std::uint32_t> all(
        reinterpret_cast<const std::uint32_t*>(pixels.constBits()),
        stride * static_cast<std::size_t>(pixels.height()));
    const std::vector<ShapeRun> runs = ShapeRuns(all, pixels.width(), pixels.height(), stride);
    std::vector<QRect> rects;
    rects.reserve(runs.size());
    for (const ShapeRun& run : runs) {
        rects.emplace_back(run.Left, run.Y, run.Right - run.Left, 1);
    }
    // Runs come sorted by row, then left to right, and never overlap: the
    // order a region keeps its rectangles in, so they are taken as they are.
    QRegion region;
    region.setRects(rects.data(), static_cast<int>(rects.size()));
    return region;
}

void ApplyWindowShape(QLabel* box, const QPixmap& picture) {
    box->setFrameShape(QFrame::NoFrame);
    box->setContentsMargins(0, 0, 0, 0);
    box->setPixmap(picture);
    box->resize(picture.size());
    box->setMask(BuildShapeRegion(picture.toImage()));
}

} // namespace quarle::platform
