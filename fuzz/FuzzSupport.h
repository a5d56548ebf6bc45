// What the fuzz targets share: a folder of their own for the process, and
// the input written to a file in it (the reader and the scans read files).
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace quarle::fuzz {

// A fresh folder under the temporary folder, removed when the process ends.
class ProcessFolder {
public:
    ProcessFolder() {
        path_ =
            std::filesystem::temp_directory_path() / ("quarle-fuzz-" + std::to_string(::getpid()));
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~ProcessFolder() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    ProcessFolder(const ProcessFolder&) = delete;
    ProcessFolder& operator=(const ProcessFolder&) = delete;

    std::string operator/(const std::string& name) const { return (path_ / name).string(); }
    std::string Path() const { return path_.string(); }

    std::string Write(const std::string& name, std::string_view bytes) const {
        const std::string file = *this / name;
        std::ofstream(file, std::ios::binary | std::ios::trunc)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return file;
    }

private:
    std::filesystem::path path_;
};

inline std::string_view Bytes(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace quarle::fuzz
