// Files for the core tests: a folder of a test's own, whole files in and out,
// and runs of the built quarle-qc tool.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace quarle::testing {

// A folder of its own for one test, removed at its end (protections and all).
class TempDir {
public:
    TempDir() {
        std::random_device random;
        const auto base = std::filesystem::path(::testing::TempDir());
        do {
            path_ = base / ("quarle-core-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    ~TempDir() {
        namespace fs = std::filesystem;
        std::error_code ec;
        fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ec);
        for (auto it = fs::recursive_directory_iterator(path_, ec);
             it != fs::recursive_directory_iterator(); it.increment(ec)) {
            fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
        }
        fs::remove_all(path_, ec);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    std::string Path() const { return path_.string(); }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

    // Writes a file (folders created as needed) and returns its path.
    std::string Write(const std::string& name, const std::string& bytes) const {
        const auto file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        return file.string();
    }

private:
    std::filesystem::path path_;
};

inline void WriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

inline std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// Golden texts are written with \n; scripts have CR LF.
inline std::string Crlf(std::string_view lf) {
    std::string text;
    for (char c : lf) {
        text += c == '\n' ? std::string("\r\n") : std::string(1, c);
    }
    return text;
}

#ifndef _WIN32
inline std::string Quoted(const std::string& s) {
    std::string q = "'";
    for (char c : s) {
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return q + "'";
}

struct ToolRun {
    int Status = -1;
    std::string Out;
    std::string Err;
};

// Runs quarle-qc with arguments (each quoted here) in the folder cwd, with
// env in front of the command ("A=b ").
inline ToolRun RunTool(const std::vector<std::string>& args, const std::string& cwd = ".",
                       const std::string& env = "") {
    const TempDir streams;
    std::string command = "cd " + Quoted(cwd) + " && " + env + Quoted(QUARLE_QC_TOOL);
    for (const std::string& a : args) {
        command += " " + Quoted(a);
    }
    command += " >" + Quoted(streams / "out") + " 2>" + Quoted(streams / "err");
    const int raw = std::system(command.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, ReadFile(streams / "out"),
            ReadFile(streams / "err")};
}
#endif

} // namespace quarle::testing
