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

// The host's separator between a folder and a name, as the core writes paths.
#ifdef _WIN32
inline constexpr const char* Sep = "\\";
#else
inline constexpr const char* Sep = "/";
#endif

// A path or argument quoted for the host's shell: /bin/sh, or cmd.exe on
// Windows (where no argument of these tests holds a double quote).
inline std::string Quoted(const std::string& s) {
#ifdef _WIN32
    return "\"" + s + "\"";
#else
    std::string q = "'";
    for (char c : s) {
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return q + "'";
#endif
}

struct ToolRun {
    int Status = -1;
    std::string Out;
    std::string Err;
};

// Runs quarle-qc with arguments (each quoted here) in the folder cwd. On
// POSIX, env stands in front of the command ("A=b "); Windows takes the
// number format from the user's settings, not from the environment, so
// there env is left out.
inline ToolRun RunTool(const std::vector<std::string>& args, const std::string& cwd = ".",
                       [[maybe_unused]] const std::string& env = "") {
    const TempDir streams;
#ifdef _WIN32
    namespace fs = std::filesystem;
    const std::string tool = fs::absolute(QUARLE_QC_TOOL).make_preferred().string();
    std::string command = "cd /d " + Quoted(fs::absolute(cwd).make_preferred().string()) +
                          " && " + Quoted(tool);
#else
    std::string command = "cd " + Quoted(cwd) + " && " + env + Quoted(QUARLE_QC_TOOL);
#endif
    for (const std::string& a : args) {
        command += " " + Quoted(a);
    }
    command += " >" + Quoted(streams / "out") + " 2>" + Quoted(streams / "err");
#ifdef _WIN32
    // cmd.exe takes the first and last quote of the line away: wrap it once more.
    const int status = std::system(("\"" + command + "\"").c_str());
#else
    const int raw = std::system(command.c_str());
    const int status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
#endif
    ToolRun run{status, ReadFile(streams / "out"), ReadFile(streams / "err")};
#ifdef _WIN32
    // The console's text mode ends lines with CR LF.
    for (std::string* text : {&run.Out, &run.Err}) {
        std::string lf;
        for (char c : *text) {
            if (c != '\r') {
                lf += c;
            }
        }
        *text = lf;
    }
#endif
    return run;
}

} // namespace quarle::testing
