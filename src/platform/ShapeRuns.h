// The outline of a picture as runs of opaque pixels, one row high: what a
// shaped window keeps of its picture. The transparent colour is the colour of
// the top-left pixel, compared exactly, so a picture needs no alpha channel.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quarle::platform {

// Pixels [Left, Right) of row Y.
struct ShapeRun {
    int Y = 0;
    int Left = 0;
    int Right = 0;
    bool operator==(const ShapeRun&) const = default;
};

// Plain C++ over the pixel values, so it can be tested and timed alone.
// pixels holds height rows of stride values each; a row's first width values
// are its pixels. Runs come row by row, left to right. An empty picture or
// one of the top-left colour everywhere gives no runs.
std::vector<ShapeRun> ShapeRuns(std::span<const std::uint32_t> pixels, int width, int height,
                                std::size_t stride);

} // namespace quarle::platform
