// Shared by the reader tests: a scripted host, temporary folders, and a load
// of a script text as the open command does it.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "document/Document.h"
#include "document/QcReader.h"
#include "document/QcWriter.h"
#include "document/ReaderHost.h"

namespace quarle::testing {

// A folder of its own for one test, removed at its end.
class TempDir {
public:
    TempDir() {
        std::random_device random;
        const auto base = std::filesystem::path(::testing::TempDir());
        do {
            path_ = base / ("quarle-reader-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    ~TempDir() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    std::string Path() const { return path_.string(); }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

    // Writes a file (folders created as needed) and returns its path.
    std::string Write(const std::string& name, const std::string& text) const {
        const auto file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
        return file.string();
    }

private:
    std::filesystem::path path_;
};

inline std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// A reference part: a mesh with the given texture lines.
inline std::string Smd(const std::vector<std::string>& textures) {
    std::string text = "version 1\nnodes\n0 \"Bone1\" -1\nend\ntriangles\n";
    for (const std::string& t : textures) {
        text += t + "\n0 0 0 0 0 0 0 0 0\n";
    }
    return text + "end\n";
}

// Answers questions from a queue, records every question, and fails the test
// on a question it has no answer for (unless told to keep everything).
class ScriptedHost : public ReaderHost {
public:
    struct Question {
        std::string Kind; // "dir" or "part"
        std::string Path;
        std::string Extra;
        FolderQuestion What = FolderQuestion::ModelPath;
    };

    explicit ScriptedHost(Document& doc) : doc_(doc) {}
    ~ScriptedHost() override {
        EXPECT_TRUE(answers_.empty()) << answers_.size() << " answers left over";
    }

    // Answers the next question with this text ("0" refuses).
    void Answer(std::string answer) { answers_.push_back(std::move(answer)); }
    // Questions without a queued answer keep what the script wrote.
    bool KeepUnanswered = false;

    std::vector<Question> Questions;
    std::vector<std::string> Animations; // LstAnimations
    std::vector<std::pair<ReadProblem, std::string>> Problems;
    int NewDocuments = 0;
    int Finished = 0;

    int ProblemsOf(ReadProblem kind) const {
        int n = 0;
        for (const auto& p : Problems) {
            n += p.first == kind ? 1 : 0;
        }
        return n;
    }

    std::string Text(Ids key) override { return std::string("<") + IdsKeyTable[key] + ">"; }

    std::string NewDir(const std::string& oldDir, const std::string& extra,
                       FolderQuestion what) override {
        Questions.push_back({"dir", oldDir, extra, what});
        if (answers_.empty() && KeepUnanswered) {
            return what == FolderQuestion::IncludeFile
                       ? std::filesystem::path(oldDir).parent_path().string()
                       : oldDir;
        }
        return Next(oldDir);
    }

    std::string PickPartFile(const std::string& missingFile, const std::string& extra,
                             const std::string&) override {
        Questions.push_back({"part", missingFile, extra, FolderQuestion::ModelPath});
        if (answers_.empty() && KeepUnanswered) {
            return missingFile;
        }
        return Next(missingFile);
    }

    void NewDocument() override {
        ++NewDocuments;
        Animations.clear();
        InitVars(doc_);
    }
    void AddAnimation(const std::string& name) override { Animations.push_back(name); }
    void Problem(ReadProblem kind, const std::string& detail) override {
        Problems.emplace_back(kind, detail);
    }
    void LoadFinished() override { ++Finished; }

private:
    std::string Next(const std::string& path) {
        if (answers_.empty()) {
            ADD_FAILURE() << "unexpected question about \"" << path << "\"";
            return Refused;
        }
        std::string answer = answers_.front();
        answers_.pop_front();
        return answer;
    }

    Document& doc_;
    std::deque<std::string> answers_;
};

// A document, a host and a folder: loads script texts as the open command does.
struct Loader {
    TempDir Dir;
    std::unique_ptr<Document> Doc = std::make_unique<Document>();
    ScriptedHost Host{*Doc};

    // Writes the script as model.qc in the test's folder and reads it.
    ReadOutcome Load(const std::string& script, const std::string& name = "model.qc") {
        return LoadFile(Dir.Write(name, script));
    }
    ReadOutcome LoadFile(const std::string& path) {
        InitVars(*Doc);
        Doc->QcFile = path;
        return ReadQcFile(*Doc, Host, Dir.Path());
    }
    // The document as the writer puts it, with a point for decimals.
    std::string Written() const {
        std::ostringstream out;
        WriteQcScript(*Doc, out, '.');
        return out.str();
    }
};

// A model folder m/ with reference parts (head: a.bmp; arm: b.bmp, c.bmp;
// leg: A.BMP, d.bmp), an animation, and a texture folder tex/.
struct Model : Loader {
    Model() {
        Dir.Write("m/head.smd", Smd({"a.bmp"}));
        Dir.Write("m/arm.smd", Smd({"b.bmp", "c.bmp"}));
        Dir.Write("m/leg.smd", Smd({"A.BMP", "d.bmp"}));
        Dir.Write("m/walk.smd", "version 1\nskeleton\ntime 0\nend\n");
        Dir.Write("tex/a.bmp", "BM");
    }
    std::string M() const { return Dir / "m"; }
    // The head of a script whose folders exist.
    std::string Paths() const {
        return "$cd \"" + M() + "\"\n$cdtexture \"" + Dir / "tex" + "\"\n";
    }
};

// The text without its line n (from 1): drops the maker's notice of the
// writer's head from comparisons.
inline std::string WithoutLine(const std::string& text, int n) {
    std::size_t start = 0;
    for (int i = 1; i < n && start != std::string::npos; ++i) {
        start = text.find('\n', start);
        start = start == std::string::npos ? start : start + 1;
    }
    if (start == std::string::npos) {
        return text;
    }
    const std::size_t end = text.find('\n', start);
    return text.substr(0, start) + (end == std::string::npos ? "" : text.substr(end + 1));
}

} // namespace quarle::testing
