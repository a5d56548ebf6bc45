// The reader over any script: written to a file, read with a host that
// answers every question the same way for the same input, then written back.
// Nothing may crash, hang, or touch memory outside a table, and the script
// written must read back to the same bytes.
#include "FuzzSupport.h"
#include "document/Document.h"
#include "document/QcReader.h"
#include "document/QcWriter.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>

namespace {

using quarle::fuzz::ProcessFolder;

// The model folder of every run: parts with textures, and includes.
const ProcessFolder& Folder() {
    static const ProcessFolder folder;
    static const bool ready = [] {
        std::string many = "triangles\n";
        for (int i = 0; i < 14; ++i) {
            many += "t" + std::to_string(i) + ".bmp\n";
        }
        folder.Write("many.smd", many);
        folder.Write("head.smd", "triangles\nhead.bmp\nFACE.BMP\n");
        folder.Write("arm.smd", "triangles\nface.bmp\narm.bmp \n");
        folder.Write("inc.qc", "$sequence \"inc\" \"inc\" fps 10\n$include \"inc.qc\"\n");
        folder.Write("box.qci", "$hbox 0 \"b\" 0 0 0 1 1 1\n\n$bbox 0 0 0 1 1 1\n");
        return true;
    }();
    (void)ready;
    return folder;
}

// Question number refuseAt is refused (0: none is); folders are kept as
// written or answered with the model folder.
class FuzzHost : public quarle::ReaderHost {
public:
    FuzzHost(quarle::Document& doc, int refuseAt, bool modelFolder)
        : doc_(doc), refuseAt_(refuseAt), modelFolder_(modelFolder) {}

    std::string Text(quarle::Ids key) override { return quarle::IdsKeyTable[key]; }
    std::string NewDir(const std::string& oldDir, const std::string&,
                       quarle::FolderQuestion what) override {
        if (++questions_ == refuseAt_) {
            return quarle::Refused;
        }
        if (modelFolder_) {
            return Folder().Path();
        }
        return what == quarle::FolderQuestion::IncludeFile ? std::string() : oldDir;
    }
    std::string PickPartFile(const std::string& missingFile, const std::string&,
                             const std::string&) override {
        if (++questions_ == refuseAt_) {
            return quarle::Refused;
        }
        return modelFolder_ ? Folder() / "arm.smd" : missingFile;
    }
    void NewDocument() override { quarle::InitVars(doc_); }
    void AddAnimation(const std::string&) override {}
    void Problem(quarle::ReadProblem, const std::string&) override {}
    void LoadFinished() override {}

private:
    quarle::Document& doc_;
    int questions_ = 0;
    int refuseAt_;
    bool modelFolder_;
};

// A line that holds "$include" anywhere is read as an include. A folder or
// name whose quotes a read took out can come to hold it ($cd c:\m$"include,
// ACT_$"include), and the line a save writes of it cannot say otherwise. No
// script names things so; such saves are left out of the comparison.
bool HoldsIncludeInside(const std::string& saved) {
    for (std::size_t at = saved.find("$include"); at != std::string::npos;
         at = saved.find("$include", at + 1)) {
        if (at > 0 && saved[at - 1] != '\n') {
            return true;
        }
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view script = quarle::fuzz::Bytes(data, size);
    // Special files of the system would block or never end; they are no scripts.
    for (const char* device : {"/dev", "/proc", "/sys"}) {
        if (script.find(device) != std::string_view::npos) {
            return -1;
        }
    }
    const ProcessFolder& folder = Folder();
    // A document of its own for each read, so that no run depends on the
    // runs before it (a fresh one is a few hundred kilobytes).
    const auto fresh = std::make_unique<quarle::Document>();
    quarle::Document& doc = *fresh;
    doc.QcFile = folder.Write("fuzz.qc", script);
    const bool modelFolder = (size / 7) % 2 == 1;
    FuzzHost host(doc, static_cast<int>(size % 7), modelFolder);
    const bool loaded = quarle::ReadQcFile(doc, host, folder.Path()) == quarle::ReadOutcome::Loaded;
    std::ostringstream out;
    quarle::WriteQcScript(doc, out, (size & 8) != 0 ? ',' : '.');
    if (!loaded) {
        return 0;
    }
    // The script a save writes must read back to itself: read and written
    // again, it gives the same bytes. (With a decimal comma some numbers are
    // written in the form of the user's locale, which the reader does not
    // take back; the comparison is made with the point.)
    std::ostringstream first;
    quarle::WriteQcScript(doc, first, '.');
    if (HoldsIncludeInside(first.str())) {
        return 0;
    }
    const auto second = std::make_unique<quarle::Document>();
    quarle::Document& next = *second;
    next.QcFile = folder.Write("again.qc", first.str());
    // Questions of the second read keep what the script says.
    FuzzHost quiet(next, 0, false);
    if (quarle::ReadQcFile(next, quiet, folder.Path()) != quarle::ReadOutcome::Loaded) {
        std::abort();
    }
    std::ostringstream again;
    quarle::WriteQcScript(next, again, '.');
    if (again.str() != first.str()) {
        // The first line that differs, for the log of the run.
        std::istringstream a(first.str());
        std::istringstream b(again.str());
        std::string lineA;
        std::string lineB;
        while (std::getline(a, lineA) && std::getline(b, lineB) && lineA == lineB) {
        }
        std::fprintf(stderr, "a save reads back otherwise:\n  saved:  %s\n  again:  %s\n",
                     lineA.c_str(), lineB.c_str());
        std::abort();
    }
    return 0;
}
