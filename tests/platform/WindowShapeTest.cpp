// The outline of a picture: which pixels a shaped picture box keeps.
#include "platform/WindowShape.h"

#include <QImage>
#include <QRect>
#include <cstring>
#include <gtest/gtest.h>
#include <vector>

namespace quarle::platform {
namespace {

// Rows of characters, one colour per character.
QImage Picture(const std::vector<const char*>& rows) {
    const int height = static_cast<int>(rows.size());
    const int width = height == 0 ? 0 : static_cast<int>(std::strlen(rows[0]));
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto c = static_cast<unsigned char>(rows[static_cast<std::size_t>(y)][x]);
            image.setPixel(x, y, qRgb(c, 254, 252));
        }
    }
    return image;
}

struct ShapeCase {
    const char* name;
    std::vector<const char*> rows;
    std::vector<QRect> kept; // as x, y, width, height
};

TEST(WindowShape, KeepsTheRunsOfOtherColoursThanTheTopLeftPixel) {
    const std::vector<ShapeCase> cases = {
        {"run to the right edge, empty row, two runs with a hole",
         {"..##", "....", ".#.#", "#a.b"},
         {{2, 0, 2, 1}, {1, 2, 1, 1}, {3, 2, 1, 1}, {0, 3, 2, 1}, {3, 3, 1, 1}}},
        {"an opaque top-left pixel makes its colour transparent everywhere",
         {"#.#", ".#.", "#.."},
         {{1, 0, 1, 1}, {0, 1, 1, 1}, {2, 1, 1, 1}, {1, 2, 2, 1}}},
        {"a whole row, a hole inside the drawing",
         {".....", ".###.", ".#.#.", "XXXXX"},
         {{1, 1, 3, 1}, {1, 2, 1, 1}, {3, 2, 1, 1}, {0, 3, 5, 1}}},
        {"transparent everywhere", {"...", "..."}, {}},
        {"one pixel", {"."}, {}},
        {"nothing", {}, {}},
    };
    for (const ShapeCase& c : cases) {
        QRegion expected;
        for (const QRect& r : c.kept) {
            expected += r;
        }
        EXPECT_EQ(BuildShapeRegion(Picture(c.rows)), expected) << c.name;
    }
}

} // namespace
} // namespace quarle::platform
