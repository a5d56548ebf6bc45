#include "ui/preview/CompiledModelFile.h"

#include "document/Paths.h"

namespace quarle::ui {

bool CompiledModelFile::Refresh(const std::string& path) {
    std::optional<std::filesystem::file_time_type> time;
    if (const std::optional<std::string> found = paths::Resolve(path)) {
        std::error_code error;
        const auto written = std::filesystem::last_write_time(paths::ToFsPath(*found), error);
        if (!error) {
            time = written;
        }
    }
    if (read_ && path == path_ && time == time_) {
        return false;
    }
    read_ = true;
    path_ = path;
    time_ = time;
    load_ = studio::ReadStudioFile(path);
    return true;
}

} // namespace quarle::ui
