#include "document/QcWriter.h"

#include "document/NumberText.h"
#include "document/Paths.h"
#include "document/QcGrammar.h"
#include "document/QcLayoutWriter.h"
#include "document/QcScriptLines.h"
#include "document/QcTextureGroups.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
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
        result.SystemReason = ec.message();
        result.Error += " (" + result.SystemReason + ")";
    }
    return result;
}

// A name beside the target that no file has yet.
fs::path TemporaryBeside(const fs::path& target) {
    std::mt19937 random(static_cast<std::mt19937::result_type>(
        std::chrono::steady_clock::now().time_since_epoch().count()));
    for (int attempt = 0; attempt < 100; ++attempt) {
        fs::path candidate = target;
        candidate += ".tmp" + std::to_string(random() % 1000000);
        std::error_code ec;
        if (!fs::exists(candidate, ec) && !ec) {
            return candidate;
        }
    }
    return {};
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

    const fs::path temporary = TemporaryBeside(target);
    if (temporary.empty()) {
        WriteResult result = Failure(WriteFailure::NoTemporary,
                                     "No temporary file could be made beside the script", target);
        result.OldFileExisted = replacing;
        return result;
    }
    auto fail = [&](WriteFailure reason, const std::string& what, const fs::path& where,
                    std::error_code code = {}) {
        std::error_code ignored;
        fs::remove(temporary, ignored);
        WriteResult result = Failure(reason, what, where, code);
        result.OldFileExisted = replacing;
        return result;
    };
    std::vector<std::string> writtenIn;
    {
        errno = 0;
        // A buffer of some size: the script is written in few calls.
        std::vector<char> buffer(std::size_t{1} << 16);
        std::ofstream out;
        out.rdbuf()->pubsetbuf(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        out.open(temporary, std::ios::binary | std::ios::trunc);
        if (!out.is_open()) {
            const int error = errno;
            return fail(WriteFailure::FolderUnwritable,
                        "The folder of the script cannot be written to", folder,
                        error != 0 ? std::error_code(error, std::generic_category())
                                   : std::error_code());
        }
        WriteQcScript(doc, out, decimalSeparator, &writtenIn);
        out.flush();
        const bool written = out.good();
        out.close();
        if (!written || out.fail()) {
            return fail(WriteFailure::Incomplete,
                        "The script could not be written completely (is the disk full?)", target);
        }
    }
    if (replacing) {
        // The new script keeps what the user set for the old one.
        fs::permissions(temporary, old.permissions(), ec);
    }
    fs::rename(temporary, target, ec);
    if (ec) {
        return fail(WriteFailure::NotReplaced, "The script could not replace the old file", target,
                    ec);
    }
    WriteResult written;
    written.IncludesWrittenIn = std::move(writtenIn);
    return written;
}

} // namespace quarle
