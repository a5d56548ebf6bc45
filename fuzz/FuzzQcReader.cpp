// The reader over any script: written to a file, read with a host that
// answers every question the same way for the same input, then written back.
// Nothing may crash, hang, or touch memory outside a table. A load that asked
// nothing saves the script's own bytes; the script a save writes reads back
// to the same bytes; and with a record changed as the forms change them, the
// save reads back into the same records.
#include "FuzzSupport.h"
#include "document/Document.h"
#include "document/QcReader.h"
#include "document/QcWriter.h"
#include "document/ScriptLayout.h"

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
    int Questions() const { return questions_; }

private:
    quarle::Document& doc_;
    int questions_ = 0;
    int refuseAt_;
    bool modelFolder_;
};

// What the forms show of a document, field by field (paths aside, which a
// load turns into this machine's folders).
bool SameForms(const quarle::Document& a, const quarle::Document& b) {
    if (a.ModelScale != b.ModelScale || a.Gamma != b.Gamma ||
        a.ExternalTextures != b.ExternalTextures || a.EyesOn != b.EyesOn ||
        (a.EyesOn == 1 && (a.EyeX != b.EyeX || a.EyeY != b.EyeY || a.EyeZ != b.EyeZ)) ||
        a.SequenceGroupSize != b.SequenceGroupSize || a.BodyGroupCount != b.BodyGroupCount ||
        a.Attachments != b.Attachments || a.AttachmentBones != b.AttachmentBones ||
        a.Controllers != b.Controllers || a.ControllerBones != b.ControllerBones) {
        return false;
    }
    for (int g = 1; g <= a.BodyGroupCount && g <= quarle::limits::LastBodyGroup; ++g) {
        if (!(a.BodyGroups[static_cast<std::size_t>(g)] == b.BodyGroups[static_cast<std::size_t>(g)])) {
            return false;
        }
    }
    for (std::size_t g = 0; g < a.Anims.size(); ++g) {
        for (std::size_t s = 0; s <= quarle::limits::LastWrittenAnimSlot; ++s) {
            if (!(a.Anims[g][s] == b.Anims[g][s])) {
                return false;
            }
        }
    }
    return true;
}

// A change as the forms make one, chosen by the input: a frame rate, a
// part's reverse, an attachment's position, a new animation.
void Change(quarle::Document& doc, std::size_t choice) {
    switch (choice % 4) {
    case 0:
        if (!doc.Anims[0][0].Name.empty()) {
            doc.Anims[0][0].Fps = static_cast<quarle::i16>(doc.Anims[0][0].Fps + 1);
        }
        break;
    case 1:
        if (doc.BodyGroupCount >= 1 && doc.BodyGroups[1].PartCount >= 1 &&
            doc.BodyGroups[1].Parts[1] != quarle::Blank) {
            doc.BodyGroups[1].Reverse[1] = doc.BodyGroups[1].Reverse[1] == 0 ? -1 : 0;
        }
        break;
    case 2:
        doc.Attachments[1].Active = 1;
        doc.Attachments[1].X += 1.5f;
        break;
    default:
        for (std::size_t s = 0; s <= quarle::limits::LastWrittenAnimSlot; ++s) {
            if (doc.Anims[1][s].Name.empty() && !doc.Anims[1][s].From.Read) {
                doc.Anims[1][s].Name = doc.Anims[1][s].SmdFile = "added";
                break;
            }
        }
        break;
    }
}

[[noreturn]] void Differ(const std::string& what, const std::string& a, const std::string& b) {
    // The first line that differs, for the log of the run.
    std::istringstream first(a);
    std::istringstream second(b);
    std::string lineA;
    std::string lineB;
    while (std::getline(first, lineA) && std::getline(second, lineB) && lineA == lineB) {
    }
    std::fprintf(stderr, "%s:\n  one:    %s\n  other:  %s\n", what.c_str(), lineA.c_str(),
                 lineB.c_str());
    // Short scripts whole, for the log of the run.
    if (a.size() + b.size() < 8192) {
        std::fprintf(stderr, "--- one:\n%s\n--- other:\n%s\n---\n", a.c_str(), b.c_str());
    }
    std::abort();
}

std::string Saved(const quarle::Document& doc) {
    std::ostringstream out;
    quarle::WriteQcScript(doc, out, '.');
    return out.str();
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
    // Nothing asked and nothing changed: the save is the script itself
    // (but for the writer's own head, which names the model anew).
    const std::string first = Saved(doc);
    if (host.Questions() == 0 && !(doc.Layout && doc.Layout->OwnHead) && first != script) {
        Differ("a save without a change is not the script", std::string(script), first);
    }
    // The script a save writes reads back to itself.
    const auto second = std::make_unique<quarle::Document>();
    quarle::Document& next = *second;
    next.QcFile = folder.Write("again.qc", first);
    // Questions of the second read keep what the script says.
    FuzzHost quiet(next, 0, false);
    if (quarle::ReadQcFile(next, quiet, folder.Path()) != quarle::ReadOutcome::Loaded) {
        std::abort();
    }
    const std::string again = Saved(next);
    if (again != first) {
        Differ("a save reads back otherwise", first, again);
    }
    // A record changed: written anew, it reads back as the forms hold it.
    // Not where the compiler stops in the script: behind that place it
    // reads nothing as the forms show it, and a record written anew need
    // not read back as it stood (a sequence cut short, braces left open).
    if (!doc.Layout || doc.Layout->CompilerStops) {
        return 0;
    }
    Change(next, size);
    const std::string changed = Saved(next);
    const auto third = std::make_unique<quarle::Document>();
    quarle::Document& last = *third;
    last.QcFile = folder.Write("changed.qc", changed);
    FuzzHost still(last, 0, false);
    if (quarle::ReadQcFile(last, still, folder.Path()) != quarle::ReadOutcome::Loaded) {
        std::abort();
    }
    if (!SameForms(next, last)) {
        Differ("a changed record reads back otherwise", changed, Saved(last));
    }
    return 0;
}