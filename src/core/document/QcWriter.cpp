#include "document/QcWriter.h"

#include "document/NumberText.h"
#include "document/Paths.h"
#include "document/QcGrammar.h"
#include "document/QcLayoutWriter.h"
#include "document/QcScriptLines.h"
#include "document/QcTextureGroups.h"
#include "document/SafeWrite.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <system_error>

namespace quarle {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Eol = "\r\n";

std::size_t Index(int i) {
    return static_cast<std::size_t>(i);
}

// A document no script was read into, in the writer's own layout.
class ScriptWriter {
public:
    ScriptWriter(const Document& doc, std::ostream& out, char separator)
        : doc_(doc), out_(out), separator_(separator) {}

    void Write() {
        WriteHead(doc_, out_, Eol);
        Paths();
        ModelSettings();
        BodyGroups();
        RenderModes();
        Lines(NewTextureGroupLines(doc_));
        Animations();
    }

private:
    void Line(std::string_view text = {}) { out_ << text << Eol; }
    void Lines(const std::vector<std::string>& lines) {
        for (const std::string& line : lines) {
            Line(line);
        }
    }

    void Paths() {
        Line("// Pathdata");
        Line("$modelname " + TokenOf(doc_.ModelName));
        Line("$cd " + TokenOf(doc_.ModelPath));
        Line("$cdtexture " + TokenOf(doc_.TexturePath));
        Line();
    }

    void ModelSettings() {
        Line("// Modelsettings");
        if (doc_.ModelScale != 1.0f) {
            Line(ScaleLine(doc_, nullptr));
        }
        if (doc_.Gamma != DefaultGamma) {
            Line(GammaLine(doc_, nullptr));
        }
        if (doc_.ExternalTextures == 1) {
            Line("$externaltextures");
        }
        if (doc_.EyesOn == 1) {
            Line(EyePositionLine(doc_, nullptr, separator_));
        }
        for (int i = 0; i <= limits::LastAttachment; ++i) {
            if (doc_.Attachments[Index(i)].Active == 1) {
                Line(AttachmentLine(doc_, i, nullptr));
            }
        }
        for (int i = 0; i <= limits::LastController; ++i) {
            if (doc_.Controllers[Index(i)].Active == 1) {
                Line(ControllerLine(doc_, i, nullptr, separator_));
            }
        }
    }

    void BodyGroups() {
        const int groups = std::min<int>(doc_.BodyGroupCount, limits::LastBodyGroup);
        for (int g = 1; g <= groups; ++g) {
            Lines(BodyGroupLines(doc_.BodyGroups[Index(g)]));
        }
    }

    void RenderModes() {
        for (int i = 1; i <= limits::LastWrittenTextureMode; ++i) {
            const TextureModeRec& mode = doc_.TextureModes[Index(i)];
            if (mode.Mode == 1 || mode.Mode == 2) {
                Line(RenderModeLine(mode, nullptr));
            }
        }
    }

    void Animations() {
        Line();
        Line("// Animations");
        if (doc_.SequenceGroupSize > 0) {
            Line(SequenceGroupSizeLine(doc_, nullptr));
        }
        for (int g = 0; g <= limits::LastSequenceGroup; ++g) {
            for (int s = 0; s <= limits::LastWrittenAnimSlot; ++s) {
                const AnimRec& anim = doc_.Anims[Index(g)][Index(s)];
                if (anim.Name.empty()) {
                    continue;
                }
                // The group's line stands before a slot 0 in use.
                if (g > 0 && s == 0) {
                    Line();
                    Line("$sequencegroup seqgroup" + IntToText(g));
                }
                Line(SequenceLine(anim, separator_));
            }
        }
    }

    const Document& doc_;
    std::ostream& out_;
    char separator_;
};

fs::path HostPath(const std::string& path) {
    return paths::ToFsPath(path);
}

// The path in the document's text, for the message of a failure.
std::string Utf8(const fs::path& path) {
    return paths::FromFsPath(path);
}

WriteResult Failure(WriteFailure reason, const std::string& what, const fs::path& path,
                    const std::error_code& ec = {}) {
    WriteResult result;
    result.Ok = false;
    result.Reason = reason;
    result.Where = Utf8(path);
    result.Error = what + ": " + result.Where;
    if (ec) {
        result.System = ec;
        result.SystemReason = ec.message();
        result.Error += " (" + result.SystemReason + ")";
    }
    return result;
}

} // namespace

void WriteQcScript(const Document& doc, std::ostream& out, char decimalSeparator,
                   std::vector<std::string>* includesWrittenIn) {
    if (doc.Layout) {
        WriteLayoutScript(doc, *doc.Layout, out, decimalSeparator, includesWrittenIn);
    } else {
        ScriptWriter(doc, out, decimalSeparator).Write();
    }
}

WriteResult WriteQcFile(const Document& doc, const std::string& path, char decimalSeparator) {
    fs::path target = HostPath(path);
    if (path.empty() || !target.has_filename()) {
        return Failure(WriteFailure::NoName, "The script has no file name", target);
    }
    std::error_code ec;
    if (fs::is_symlink(fs::symlink_status(target, ec))) {
        // Replace the file the link points to, not the link.
        const fs::path real = fs::canonical(target, ec);
        if (ec) {
            return Failure(WriteFailure::BrokenLink,
                           "The script is a link to a file that cannot be found", target, ec);
        }
        target = real;
    }
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    if (!fs::is_directory(folder, ec)) {
        return Failure(WriteFailure::NoFolder, "The folder of the script does not exist", folder,
                       ec);
    }
    const fs::file_status old = fs::status(target, ec);
    const bool replacing = fs::exists(old);
    if (replacing && !fs::is_regular_file(old)) {
        return Failure(WriteFailure::NotAFile,
                       "The script's name belongs to something that is not a file", target);
    }
    if (replacing && (old.permissions() & fs::perms::owner_write) == fs::perms::none) {
        WriteResult result =
            Failure(WriteFailure::WriteProtected, "The script is write-protected", target);
        result.OldFileExisted = true;
        return result;
    }

    // The new script keeps the permissions the user set for the old one.
    std::vector<std::string> writtenIn;
    const SafeWriteResult written = WriteFileSafely(target, [&](std::ostream& out) {
        writtenIn.clear();
        WriteQcScript(doc, out, decimalSeparator, &writtenIn);
    });
    WriteResult result;
    switch (written.Step) {
    case SafeWriteStep::Done:
        result.IncludesWrittenIn = std::move(writtenIn);
        return result;
    case SafeWriteStep::NoTemporary:
        result = Failure(WriteFailure::NoTemporary,
                         "No temporary file could be made beside the script", target);
        break;
    case SafeWriteStep::Create:
        result = Failure(WriteFailure::FolderUnwritable,
                         "The folder of the script cannot be written to", folder, written.System);
        break;
    case SafeWriteStep::Write:
        result = Failure(WriteFailure::Incomplete,
                         "The script could not be written completely (is the disk full?)", target,
                         written.System);
        break;
    case SafeWriteStep::Replace:
    case SafeWriteStep::Exists:
        result = Failure(WriteFailure::NotReplaced, "The script could not replace the old file",
                         target, written.System);
        break;
    }
    result.OldFileExisted = replacing;
    return result;
}

} // namespace quarle
