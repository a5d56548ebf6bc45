#include "LoadScript.h"

#include "document/Paths.h"
#include "document/QcReader.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <system_error>
#include <utility>
#include <vector>

namespace quarle::qc {

namespace {

namespace fs = std::filesystem;
using Texts = std::array<std::string, LastIds + 1>;

class ToolReaderHost : public ReaderHost {
public:
    ToolReaderHost(Document& doc, Missing missing, const Texts* texts, std::string script)
        : doc_(doc), missing_(missing), texts_(texts), script_(std::move(script)) {}

    int AnimationRows() const { return rows_; }

    std::string Text(Ids key) override {
        if (texts_) {
            return (*texts_)[static_cast<std::size_t>(key)];
        }
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

    void NewDocument() override {
        InitVars(doc_);
        rows_ = 0;
    }
    void AddAnimation(const std::string&) override { ++rows_; }
    void LoadFinished() override {}

    void Problem(ReadProblem kind, const std::string& detail) override {
        if (kind == ReadProblem::BinaryFile || kind == ReadProblem::Utf16Text) {
            // Not a script at all: the command stops with an error.
            std::fprintf(stderr, "error: %s: %s\n", script_.c_str(),
                         DescribeProblem(kind, {}).c_str());
            return;
        }
        std::fprintf(stderr, "quarle-qc: %s: %s\n", script_.c_str(),
                     DescribeProblem(kind, detail).c_str());
    }
    void FileProblem(ReadProblem kind, const OpenProblem& problem) override {
        Problem(kind, problem.Path);
        std::fprintf(stderr, "quarle-qc: %s\n", DescribeOpenProblem(problem).c_str());
    }

private:
    std::string Refuse(const std::string& extra, const std::string& path) {
        std::fprintf(stderr, "quarle-qc: %s: %s: cannot find \"%s\"; load refused\n",
                     script_.c_str(), extra.c_str(), path.c_str());
        return quarle::Refused;
    }

    Document& doc_;
    Missing missing_;
    const Texts* texts_;
    std::string script_;
    int rows_ = 0;
};

// Where the working file goes: the folder TMPDIR names; else /dev/shm, a
// folder kept in memory, while it has ample room for the script (a file that
// lives only for one command then costs no disk writes, and its removal no
// wait for them), else the user's cache folder ($XDG_CACHE_HOME), else the
// system's temporary folder.
fs::path WorkBase(const std::string& script, std::error_code& ec) {
    const char* tmpdir = std::getenv("TMPDIR");
    if (tmpdir != nullptr && *tmpdir != '\0') {
        return fs::temp_directory_path(ec);
    }
    std::error_code ignored;
    const std::optional<fs::path> found = paths::ResolveFs(script);
    const std::uintmax_t size = found ? fs::file_size(*found, ignored) : 0;
    // Includes and the flattened copy come on top of the script itself.
    const std::uintmax_t need = std::max<std::uintmax_t>(64u << 20, 8 * size);
    const fs::path memory = "/dev/shm";
    if (fs::is_directory(memory, ignored)) {
        const fs::space_info space = fs::space(memory, ignored);
        if (!ignored && space.available >= need) {
            return memory;
        }
    }
    const char* cache = std::getenv("XDG_CACHE_HOME");
    if (cache != nullptr && *cache == '/' && fs::is_directory(cache, ignored)) {
        return cache;
    }
    return fs::temp_directory_path(ec);
}

} // namespace

WorkFolder::WorkFolder(const std::string& script) {
    std::error_code ec;
    const fs::path base = WorkBase(script, ec);
    std::random_device random;
    for (int attempt = 0; !ec && attempt < 16 && path_.empty(); ++attempt) {
        const fs::path candidate = base / ("quarle-qc-" + std::to_string(random()));
        if (fs::create_directory(candidate, ec) && !ec) {
            path_ = paths::FromFsPath(candidate);
        }
    }
}

WorkFolder::~WorkFolder() {
    std::error_code ignored;
    if (!path_.empty()) {
        fs::remove_all(paths::ToFsPath(path_), ignored);
    }
}

LoadedScript LoadScript(const std::string& path, Missing missing, const Texts* texts) {
    LoadedScript loaded;
    WorkFolder work(path);
    if (work.Path().empty()) {
        std::fprintf(stderr, "quarle-qc: no temporary folder for the working file\n");
        return loaded;
    }
    // The open command: reset, name the script, read. A new document is in
    // its reset state already. It is never handed back: each command loads
    // one script and ends, and freeing its thousands of records one by one
    // would cost more than the save. A pointer kept here keeps it reachable
    // to the end, so leak checkers stay quiet.
    static std::vector<std::unique_ptr<Document>>* const documents =
        new std::vector<std::unique_ptr<Document>>();
    loaded.Doc = documents->emplace_back(std::make_unique<Document>()).get();
    loaded.Doc->QcFile = path;
    ToolReaderHost host(*loaded.Doc, missing, texts, path);
    LoadFindings findings;
    const ReadOutcome outcome = ReadQcFile(*loaded.Doc, host, work.Path(), &findings);
    // What a save of this load would change, one warning a line.
    for (const LoadFinding& finding : findings) {
        std::fprintf(stderr, "%s\n", FindingWarning(finding).c_str());
    }
    switch (outcome) {
    case ReadOutcome::Loaded:
        loaded.Status = 0;
        break;
    case ReadOutcome::Refused:
    case ReadOutcome::Cancelled: // nothing here cancels
        loaded.Status = 3;
        break;
    case ReadOutcome::Unreadable:
        loaded.Status = 2;
        break;
    case ReadOutcome::NotAScript:
        loaded.Status = 1;
        break;
    }
    loaded.AnimationRows = host.AnimationRows();
    loaded.Findings = std::move(findings);
    return loaded;
}

} // namespace quarle::qc
