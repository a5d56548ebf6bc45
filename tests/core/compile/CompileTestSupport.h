// Helpers of the compile tests: a folder of their own, whole files in and out,
// and a table of global strings whose texts are their keys.
#pragma once

#include "compile/CheckModelData.h"
#include "localisation/GlobalStrings.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace quarle::compile::testing {

class TempDir {
public:
    TempDir() {
        static std::atomic<int> counter{0};
        std::random_device rd;
        path_ = std::filesystem::temp_directory_path() /
                ("quarle-compile-" + std::to_string(rd()) + "-" + std::to_string(counter++));
        std::filesystem::create_directories(path_);
    }
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    std::string Path() const { return path_.string(); }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

inline void WriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
}

inline std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

// Every text is its own key, so rows show which keys they were built from.
inline IdsTextTable KeyTexts() {
    IdsTextTable texts;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        texts[i] = IdsKeyTable[i];
    }
    return texts;
}

} // namespace quarle::compile::testing
