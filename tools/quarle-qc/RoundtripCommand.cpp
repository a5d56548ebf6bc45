// roundtrip IN.qc OUT.qc [--missing=keep|refuse]: loads IN as the editor's
// open command does and writes it back through the writer. Nothing is asked:
// with "keep" every folder or part file that cannot be found stays as the
// script wrote it; with "refuse" the first such question breaks the load off.
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <system_error>

#include "Commands.h"
#include "document/Document.h"
#include "document/Paths.h"
#include "document/QcReader.h"
#include "document/QcWriter.h"

namespace quarle::qc {

namespace {

enum class Missing { Keep, Refuse };

class CliHost : public ReaderHost {
public:
    CliHost(Document& doc, Missing missing, std::string script)
        : doc_(doc), missing_(missing), script_(std::move(script)) {}

    bool RefusedAQuestion() const { return refused_; }

    std::string Text(Ids key) override {
        switch (key) {
        case IDS_MODELNAME:
            return "Model name";
        case IDS_MODELPATH:
            return "Model path";
        case IDS_TEXTUREPATH:
            return "Texture path";
        case IDS_INCLUDEFILE:
            return "Include file";
        case IDS_REFERENCEMODEL:
            return "Reference model";
        default:
            return IdsKeyTable[static_cast<std::size_t>(key)];
        }
    }

    std::string NewDir(const std::string& oldDir, const std::string& extra,
                       FolderQuestion what) override {
        if (missing_ == Missing::Refuse) {
            return Refuse(extra, oldDir);
        }
        return what == FolderQuestion::IncludeFile ? paths::FolderOf(oldDir) : oldDir;
    }

    std::string PickPartFile(const std::string& missingFile, const std::string& extra,
                             const std::string&) override {
        return missing_ == Missing::Refuse ? Refuse(extra, missingFile) : missingFile;
    }

    void NewDocument() override { InitVars(doc_); }
    void AddAnimation(const std::string&) override {}
    void LoadFinished() override {}

    void Problem(ReadProblem kind, const std::string& detail) override {
        std::fprintf(stderr, "quarle-qc: %s: %s\n", script_.c_str(),
                     DescribeProblem(kind, detail).c_str());
    }

private:
    std::string Refuse(const std::string& extra, const std::string& path) {
        std::fprintf(stderr, "quarle-qc: %s: %s: cannot find \"%s\"; load refused\n",
                     script_.c_str(), extra.c_str(), path.c_str());
        refused_ = true;
        return quarle::Refused;
    }

    Document& doc_;
    Missing missing_;
    std::string script_;
    bool refused_ = false;
};

// A fresh folder for the working file, removed again at the end.
class WorkFolder {
public:
    WorkFolder() {
        std::error_code ec;
        const auto base = std::filesystem::temp_directory_path(ec);
        if (ec) {
            return;
        }
        std::random_device random;
        for (int attempt = 0; attempt < 16 && path_.empty(); ++attempt) {
            const auto candidate = base / ("quarle-qc-" + std::to_string(random()));
            if (std::filesystem::create_directory(candidate, ec) && !ec) {
                path_ = candidate.string();
            }
        }
    }
    ~WorkFolder() {
        std::error_code ec;
        if (!path_.empty()) {
            std::filesystem::remove_all(path_, ec);
        }
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

int Usage() {
    std::fprintf(stderr, "usage: quarle-qc roundtrip IN.qc OUT.qc [--missing=keep|refuse]\n");
    return 2;
}

} // namespace

int RunRoundtrip(const Args& args) {
    std::string in;
    std::string out;
    Missing missing = Missing::Keep;
    for (const std::string& arg : args) {
        if (arg == "--missing=keep") {
            missing = Missing::Keep;
        } else if (arg == "--missing=refuse") {
            missing = Missing::Refuse;
        } else if (arg.starts_with("--")) {
            return Usage();
        } else if (in.empty()) {
            in = arg;
        } else if (out.empty()) {
            out = arg;
        } else {
            return Usage();
        }
    }
    if (in.empty() || out.empty()) {
        return Usage();
    }

    WorkFolder work;
    if (work.Path().empty()) {
        std::fprintf(stderr, "quarle-qc: no temporary folder for the working file\n");
        return 2;
    }
    // The open command: reset, name the script, read.
    auto doc = std::make_unique<Document>();
    InitVars(*doc);
    doc->QcFile = in;
    CliHost host(*doc, missing, in);
    switch (ReadQcFile(*doc, host, work.Path())) {
    case ReadOutcome::Loaded:
        break;
    case ReadOutcome::Refused:
        return 3;
    case ReadOutcome::Unreadable:
        return 2;
    }
    const WriteResult written = WriteQcFile(*doc, out, '.');
    if (!written.Ok) {
        std::fprintf(stderr, "quarle-qc: %s: %s\n", out.c_str(), written.Error.c_str());
        return 2;
    }
    return 0;
}

} // namespace quarle::qc
