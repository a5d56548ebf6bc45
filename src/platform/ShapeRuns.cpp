#include "platform/ShapeRuns.h"

namespace quarle::platform {

std::vector<ShapeRun> ShapeRuns(std::span<const std::uint32_t> pixels, int width, int height,
                                std::size_t stride) {
    std::vector<ShapeRun> runs;
    if (width <= 0 || height <= 0 || stride < static_cast<std::size_t>(width) ||
        pixels.size() <
            stride * static_cast<std::size_t>(height - 1) + static_cast<std::size_t>(width)) {
        return runs;
    }
    const std::uint32_t transparent = pixels[0];
    for (int y = 0; y < height; ++y) {
        const std::uint32_t* row = pixels.data() + stride * static_cast<std::size_t>(y);
        int x = 0;
        while (x < width) {
            while (x < width && row[x] == transparent) {
                ++x;
            }
            if (x == width) {
                break;
            }
            const int start = x;
            while (x < width && row[x] != transparent) {
                ++x;
            }
            runs.push_back({y, start, x});
        }
    }
    return runs;
}

} // namespace quarle::platform
