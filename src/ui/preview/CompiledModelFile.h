// A compiled model as its file holds it now: read on the first look, and
// again when the path or the file's time changes (a compile wrote it anew).
#pragma once

#include "studio/StudioModel.h"

#include <filesystem>
#include <optional>
#include <string>

namespace quarle::ui {

class CompiledModelFile {
public:
    // Reads the model at path (document bytes) when it was not read yet,
    // when it names another file than the last, or when its time changed.
    // True when it was read.
    bool Refresh(const std::string& path);

    const studio::StudioLoad& Load() const { return load_; }
    const studio::StudioModel* Model() const { return load_.Model ? &*load_.Model : nullptr; }
    const std::string& Path() const { return path_; }

private:
    bool read_ = false;
    std::string path_;
    std::optional<std::filesystem::file_time_type> time_;
    studio::StudioLoad load_;
};

} // namespace quarle::ui
