// Times the refill of the main window's file list on a model folder: the
// listing of the folder and the sorting of its files into meshes and
// animations, as a page change does it.
//
//   modelfolder-bench DIR [RUNS]
//
// Four numbers, each the median of RUNS runs on a warm disk cache:
//   plain read      every .smd file read whole, nothing else
//   uncached        every file through the reference test, as without the cache
//   first refill    a new cache: every file read once
//   repeat refill   the same cache again: files unchanged, nothing read
#include "document/ModelFolderCache.h"
#include "document/Paths.h"
#include "document/SmdScan.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double Millis(const std::function<void()>& run) {
    const Clock::time_point start = Clock::now();
    run();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

std::vector<std::string> Listing(const std::string& folder) {
    std::vector<std::string> files;
    // As the window lists the folder: its subfolders too.
    for (const std::string& name : quarle::paths::ListFilesBelow(folder, ".smd")) {
        files.push_back(quarle::paths::Join(folder, name));
    }
    return files;
}

// One refill through the cache; returns the meshes found.
int Refill(quarle::ModelFolderCache& cache, const std::string& folder) {
    const std::vector<std::string> files = Listing(folder);
    int meshes = 0;
    for (const std::string& file : files) {
        meshes += cache.KindOf(file) == quarle::SmdKind::Reference ? 1 : 0;
    }
    cache.Keep(files);
    return meshes;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: modelfolder-bench DIR [RUNS]\n");
        return 2;
    }
    const std::string folder = argv[1];
    const int runs = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
    const std::vector<std::string> files = Listing(folder);
    if (files.empty()) {
        std::fprintf(stderr, "no .smd files in %s\n", folder.c_str());
        return 1;
    }

    std::vector<char> buffer(1 << 20);
    std::size_t bytes = 0;
    auto plainRead = [&] {
        bytes = 0;
        for (const std::string& file : files) {
            std::ifstream in(file, std::ios::binary);
            while (in.read(buffer.data(), static_cast<std::streamsize>(buffer.size())) ||
                   in.gcount() > 0) {
                bytes += static_cast<std::size_t>(in.gcount());
            }
        }
    };
    int meshes = 0;
    auto uncached = [&] {
        meshes = 0;
        for (const std::string& file : Listing(folder)) {
            meshes += quarle::IsReferenceSmd(file) ? 1 : 0;
        }
    };

    plainRead(); // warm the cache
    std::vector<double> plain, bare, first, repeat;
    std::size_t readsFirst = 0, readsRepeat = 0;
    int cachedMeshes = 0;
    for (int i = 0; i < runs; ++i) {
        plain.push_back(Millis(plainRead));
        bare.push_back(Millis(uncached));
        quarle::ModelFolderCache cache;
        first.push_back(Millis([&] { cachedMeshes = Refill(cache, folder); }));
        readsFirst = cache.FilesRead();
        repeat.push_back(Millis([&] { cachedMeshes = Refill(cache, folder); }));
        readsRepeat = cache.FilesRead() - readsFirst;
    }
    if (cachedMeshes != meshes) {
        std::fprintf(stderr, "the cache found %d meshes, the reference test %d\n", cachedMeshes,
                     meshes);
        return 1;
    }

    std::printf("%zu files (%d meshes), %.1f MB, median of %d runs, warm cache\n", files.size(),
                meshes, static_cast<double>(bytes) / 1e6, runs);
    std::printf("plain read       %9.2f ms\n", Median(plain));
    std::printf("uncached refill  %9.2f ms\n", Median(bare));
    std::printf("first refill     %9.2f ms  (%zu files read)\n", Median(first), readsFirst);
    std::printf("repeat refill    %9.2f ms  (%zu files read)\n", Median(repeat), readsRepeat);
    return 0;
}
