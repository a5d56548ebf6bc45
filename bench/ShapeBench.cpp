// Times the outline of one mascot frame, as every frame change builds it,
// against a plain copy of the same picture in the same run.
//
//   shape-bench PICTURE [REPEATS]
//
// Three numbers in microseconds, each the median of 21 batches of REPEATS:
//   copy        a deep copy of the picture, nothing else
//   runs        the runs of opaque pixels alone
//   region      the whole region, as the main window builds it
// and the ratio of region to copy.
#include "platform/ShapeRuns.h"
#include "platform/WindowShape.h"

#include <QImage>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double MedianMicros(int repeats, const std::function<void()>& run) {
    std::vector<double> batches;
    for (int b = 0; b < 21; ++b) {
        const Clock::time_point start = Clock::now();
        for (int i = 0; i < repeats; ++i) {
            run();
        }
        batches.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count() /
                          repeats);
    }
    std::sort(batches.begin(), batches.end());
    return batches[batches.size() / 2];
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: shape-bench PICTURE [REPEATS]\n");
        return 2;
    }
    const QImage picture(QString::fromLocal8Bit(argv[1]));
    if (picture.isNull()) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 1;
    }
    const int repeats = argc > 2 ? std::max(1, std::atoi(argv[2])) : 200;
    const QImage pixels = picture.convertToFormat(QImage::Format_ARGB32);
    long long sink = 0;

    const double copy = MedianMicros(repeats, [&] {
        const QImage c = picture.copy();
        sink += c.constBits()[c.sizeInBytes() / 2];
    });
    const double runs = MedianMicros(repeats, [&] {
        const auto stride = static_cast<std::size_t>(pixels.bytesPerLine()) / 4;
        sink += static_cast<long long>(
            quarle::platform::ShapeRuns({reinterpret_cast<const std::uint32_t*>(pixels.constBits()),
                                         stride * static_cast<std::size_t>(pixels.height())},
                                        pixels.width(), pixels.height(), stride)
                .size());
    });
    const double region = MedianMicros(
        repeats, [&] { sink += quarle::platform::BuildShapeRegion(picture).rectCount(); });
    std::printf("picture     %dx%d, %d rectangles\n", picture.width(), picture.height(),
                quarle::platform::BuildShapeRegion(picture).rectCount());
    std::printf("copy        %8.2f us\n", copy);
    std::printf("runs        %8.2f us\n", runs);
    std::printf("region      %8.2f us\n", region);
    std::printf("region/copy %8.1f\n", region / copy);
    return sink == 42 ? 3 : 0;
}
