#include "document/QcWriter.h"

#include "document/NumberText.h"
#include "document/Paths.h"
#include "document/QcInclude.h"
#include "document/SafeWrite.h"
#include "document/Text.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <system_error>

namespace quarle {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Eol = "\r\n";

std::string_view AxisWord(f32 axis) {
    if (axis == 1.0f) {
        return "YR";
    }
    if (axis == 2.0f) {
        return "ZR";
    }
    return "XR";
}

// A whole number behind a line, with no string of its own (a large script
// has tens of thousands of event numbers).
void AppendWhole(std::string& line, long long value) {
    char digits[24];
    const auto written = std::to_chars(digits, digits + sizeof digits, value);
    line.append(digits, static_cast<std::size_t>(written.ptr - digits));
}

std::string Quoted(std::string_view text) {
    std::string quoted;
    quoted.reserve(text.size() + 2);
    quoted += '"';
    quoted += text;
    quoted += '"';
    return quoted;
}

// A quoted name behind another. A token is read as quoted only when it
// starts at its quote; one read from the blank behind a quote ends at the
// next blank or tab, and uses that up. So, behind a token read as quoted, a
// name with a blank or tab inside follows the quote directly, and a tab that
// began it (as in "name"<tab>"file") stands outside its quotes, where it
// reads back from. Afterwards, whether this name is read as quoted.
bool AppendQuoted(std::string& line, std::string_view name, bool behindQuoted) {
    const bool blanks = name.find_first_of(" \t") != std::string_view::npos;
    if (!behindQuoted || !blanks) {
        line += ' ';
        line += Quoted(name);
        return !behindQuoted;
    }
    if (name.front() == '\t' && name.find_first_of(" \t", 1) == std::string_view::npos) {
        line += '\t';
        line += Quoted(name.substr(1));
        return false;
    }
    line += Quoted(name);
    return true;
}

// A kept token, so that it reads back as it was read; afterwards, whether it
// is read as quoted. Read from the blank behind a quoted token, a token runs to
// the next blank or tab, whatever quotes it holds; read from its first
// character, one that starts with a quote runs to the next quote.
bool AppendToken(std::string& line, std::string_view token, bool behindQuoted) {
    if (token.empty()) {
        return behindQuoted;
    }
    if (token.front() == '\t') {
        // Read from the tab: it must not stand behind a blank of its own.
        line += behindQuoted ? "" : " ";
        line += token;
        return false;
    }
    line += ' ';
    if (token.front() != '"') {
        line += token;
        return false;
    }
    const std::size_t close = token.find('"', 1);
    const bool blanks = token.find_first_of(" \t") != std::string_view::npos;
    if (close == token.size() - 1) {
        // "..." as a whole: read from its quote, or from the blank when it
        // has none inside.
        if (behindQuoted && blanks) {
            line.pop_back();
        }
        line += token;
        return !behindQuoted || blanks;
    }
    if (blanks) {
        // A quote that ran to the end of its line: closed here, it reads
        // back as one token wherever it stands.
        if (behindQuoted) {
            line.pop_back();
        }
        line += token;
        line += '"';
        return true;
    }
    // Quotes that only a read from a blank takes in: a second blank when
    // the one before is used up.
    if (!behindQuoted) {
        line += ' ';
    }
    line += token;
    return false;
}

std::size_t Index(int i) {
    return static_cast<std::size_t>(i);
}

class ScriptWriter {
public:
    ScriptWriter(const Document& doc, std::ostream& out, char separator)
        : doc_(doc), out_(out), separator_(separator) {}

    void Write() {
        Head();
        Paths();
        ModelSettings();
        BodyGroups();
        RenderModes();
        TextureGroup();
        KeptAfterTextures();
        Animations();
    }

private:
    void Line(std::string_view text = {}) { out_ << text << Eol; }
    // Lines kept from a script, as they stood.
    void Lines(const std::vector<std::string>& lines) {
        for (const std::string& line : lines) {
            Line(line);
        }
    }
    // Point form and locale form of a float.
    std::string Point(f32 v) const { return FloatToPointText(v); }
    std::string Local(f32 v) const { return FloatToText(v, separator_); }

    // $modelname as the script wrote it, while its relative folder still
    // names the model's folder, seen from the script's folder.
    std::string ModelNameToWrite() const {
        const std::string& written = doc_.ModelNameAsWritten;
        if (written.empty()) {
            return doc_.ModelName;
        }
        const std::string folder =
            FolderToWrite(paths::FolderOf(doc_.ModelName), paths::FolderOf(written),
                          paths::FolderOf(doc_.QcFile));
        return folder == paths::FolderOf(written) &&
                       paths::FileNameOf(written) == paths::FileNameOf(doc_.ModelName)
                   ? written
                   : doc_.ModelName;
    }

    void Head() {
        Line("// QC-File for Half-Life Model: " + Quoted(ModelNameToWrite()));
        Line("// Createt with \"Quarle 0.8.4\"");
        Line(MakersNotice);
        Line();
    }

    void Paths() {
        Line("// Pathdata");
        Line("$modelname " + Quoted(ModelNameToWrite()));
        const std::string scriptFolder = paths::FolderOf(doc_.QcFile);
        Line("$cd " + Quoted(FolderToWrite(doc_.ModelPath, doc_.ModelPathAsWritten, scriptFolder)));
        Line("$cdtexture " +
             Quoted(FolderToWrite(doc_.TexturePath, doc_.TexturePathAsWritten, scriptFolder)));
        Lines(doc_.KeptCdTextures);
        Line();
    }

    void ModelSettings() {
        Line("// Modelsettings");
        if (doc_.ModelScale != 1.0f) {
            Line("$scale " + Point(doc_.ModelScale));
        }
        if (doc_.Gamma != DefaultGamma) {
            Line("$gamma " + Point(doc_.Gamma));
        }
        if (doc_.ExternalTextures == 1) {
            Line("$externaltextures");
        }
        if (doc_.EyesOn == 1) {
            Line("$eyeposition " + Local(doc_.EyeX) + " " + Local(doc_.EyeY) + " " +
                 Local(doc_.EyeZ));
        }
        for (int i = 0; i <= limits::LastAttachment; ++i) {
            const AttachmentRec& a = doc_.Attachments[Index(i)];
            if (a.Active == 1) {
                Line("$attachment " + IntToText(i) + " " + Quoted(doc_.AttachmentBones[Index(i)]) +
                     " " + Point(a.X) + " " + Point(a.Y) + " " + Point(a.Z));
            }
        }
        for (int i = 0; i <= limits::LastController; ++i) {
            const ControllerRec& c = doc_.Controllers[Index(i)];
            if (c.Active == 1) {
                Line("$controller " + IntToText(i) + " " + Quoted(doc_.ControllerBones[Index(i)]) +
                     " " + std::string(AxisWord(c.Axis)) + " " + Local(c.LimitMin) + " " +
                     Local(c.LimitMax));
            }
        }
        Lines(doc_.KeptBeforeBody);
    }

    void BodyGroups() {
        const int groups = std::min<int>(doc_.BodyGroupCount, limits::LastBodyGroup);
        for (int g = 1; g <= groups; ++g) {
            const BodyGroupRec& group = doc_.BodyGroups[Index(g)];
            const int parts = std::min<int>(group.PartCount, limits::LastPart);
            // A blank at the end of the name would not read back, and a
            // $body reads its name as one word without quotes: other names
            // take a block.
            const std::string_view name = Trim(group.Name);
            if (parts == 1 && group.Reverse[1] == 0 && !name.empty() &&
                name.find_first_of(" \t\"") == std::string_view::npos) {
                // A lone part, even "<blank>", stands as it is.
                Line("$body " + std::string(name) + " " + Quoted(group.Parts[1]) +
                     (group.KeptWords.empty() ? "" : " " + group.KeptWords));
                Lines(group.KeptAfter);
                continue;
            }
            if (name.ends_with('{')) {
                // A read takes one brace at the end of the line for the
                // block's: the block opens on the name's line.
                Line("$bodygroup " + std::string(name) + "{");
            } else {
                // The compiler wants a name on the line; "" is an empty one.
                Line("$bodygroup " + (name.empty() ? std::string("\"\"") : std::string(name)));
                Line("{");
            }
            for (int p = 1; p <= parts; ++p) {
                const std::string& part = group.Parts[Index(p)];
                if (part == Blank) {
                    Line("blank");
                } else {
                    Line("studio " + Quoted(part) +
                         (group.Reverse[Index(p)] != 0 ? " reverse" : ""));
                }
            }
            Line("}");
            Lines(group.KeptAfter);
        }
    }

    void RenderModes() {
        for (int i = 1; i <= limits::LastWrittenTextureMode; ++i) {
            const TextureModeRec& mode = doc_.TextureModes[Index(i)];
            if (mode.Mode == 1) {
                Line("$texrendermode " + Quoted(mode.Name) + " masked");
            } else if (mode.Mode == 2) {
                Line("$texrendermode " + Quoted(mode.Name) + " additive");
            }
        }
    }

    void TextureGroup() {
        const int columns = std::min<int>(doc_.TextureCount, limits::LastTexture);
        if (columns <= 0) {
            return;
        }
        const auto& base = doc_.TextureVariations[1];
        bool opened = false;
        const int rows = limits::LastWrittenTextureRow +
                         std::clamp(doc_.KeptTextureRows, 0,
                                    limits::LastTextureRow - limits::LastWrittenTextureRow);
        for (int r = 2; r <= rows; ++r) {
            const auto& row = doc_.TextureVariations[Index(r)];
            const bool used = std::any_of(row.begin() + 1, row.begin() + 1 + columns,
                                          [](const std::string& cell) { return cell != Blank; });
            if (!used) {
                continue;
            }
            if (!opened) {
                Line();
                Line("$texturegroup dummi");
                Line("{");
                RowLine(base, base, columns);
                opened = true;
            }
            RowLine(row, base, columns);
        }
        if (opened) {
            Line("}");
        }
    }

    void KeptAfterTextures() { Lines(doc_.KeptAfterTextures); }

    // { "a.bmp" "b.bmp" }: a "<blank>" cell is the base texture of its column.
    template <typename Row> void RowLine(const Row& row, const Row& base, int columns) {
        std::string text = "{";
        for (int c = 1; c <= columns; ++c) {
            const std::string& cell = row[Index(c)];
            text += " " + Quoted(cell == Blank ? base[Index(c)] : cell);
        }
        Line(text + " }");
    }

    void Animations() {
        Line();
        Line("// Animations");
        if (doc_.SequenceGroupSize > 0) {
            Line("$sequencegroupsize " + IntToText(doc_.SequenceGroupSize));
        }
        for (int g = 0; g <= limits::LastSequenceGroup; ++g) {
            // Lines behind the last slot (kept sequences beyond it) read
            // back as such only behind as many slots: then a slot without a
            // name is written too.
            const bool everySlot =
                !doc_.Anims[Index(g)][limits::LastWrittenAnimSlot].KeptAfter.empty();
            for (int s = 0; s <= limits::LastWrittenAnimSlot; ++s) {
                const AnimRec& anim = doc_.Anims[Index(g)][Index(s)];
                if (s == 0) {
                    GroupStart(g, !anim.Name.empty());
                }
                if (!anim.Name.empty() || everySlot) {
                    Line(SequenceLine(anim));
                }
                // What followed a sequence without a name stays too.
                Lines(anim.KeptAfter);
            }
        }
        Lines(doc_.KeptAfterAnimations);
    }

    // The $sequencegroup line stands before a slot 0 in use, for a group
    // that a script named, and for one with kept lines, which read back
    // behind it only. Kept groups beyond the last read back as such only
    // behind every group.
    void GroupStart(int g, bool slotZeroUsed) {
        const std::string& name = doc_.SequenceGroupNames[Index(g)];
        if (g > 0 && (slotZeroUsed || !name.empty() || KeepsLines(g) ||
                      !doc_.KeptAfterAnimations.empty())) {
            Line();
            Line("$sequencegroup " + (name.empty() ? "seqgroup" + IntToText(g) : name));
        }
        Lines(doc_.KeptAtGroupStart[Index(g)]);
    }

    bool KeepsLines(int g) const {
        if (!doc_.KeptAtGroupStart[Index(g)].empty()) {
            return true;
        }
        for (int s = 0; s <= limits::LastWrittenAnimSlot; ++s) {
            if (!doc_.Anims[Index(g)][Index(s)].KeptAfter.empty()) {
                return true;
            }
        }
        return false;
    }

    std::string SequenceLine(const AnimRec& a) const {
        std::string line;
        line.reserve(256 + 48 * static_cast<std::size_t>(a.EventCount)); // with room for its events
        line += "$sequence " + Quoted(a.Name);
        bool quoted = AppendQuoted(line, a.SmdFile, true);
        if (a.BlendOn == 1) {
            quoted = AppendQuoted(line, a.BlendFile, quoted);
        }
        for (const std::string& token : a.KeptFiles) {
            quoted = AppendToken(line, token, quoted);
        }
        line += " fps " + IntToText(a.Fps);
        if (a.Loop == 1) {
            line += " loop";
        }
        if (a.FrameLimit == 1) {
            line += " frame " + IntToText(a.FrameStart) + " " + IntToText(a.FrameEnd);
        }
        if (a.OriginOn == 1) {
            line += " origin " + IntToText(a.OriginX) + " " + IntToText(a.OriginY) + " " +
                    IntToText(a.OriginZ);
        }
        if (a.Rotate != 0.0f) {
            line += " rotate " + Local(a.Rotate);
        }
        line += " " + a.ActivityId; // the blank stands even without an activity
        const std::size_t activityEnd = line.size();
        if (a.LX == 1) {
            line += " LX";
        }
        if (a.LY == 1) {
            line += " LY";
        }
        if (a.LZ == 1) {
            line += " LZ";
        }
        if (a.Scale != 1.0f) {
            line += " scale " + Local(a.Scale);
        }
        if (a.BlendOn == 1) {
            line += " blend " + std::string(AxisWord(a.BlendAxis)) + " " + Local(a.BlendMin) + " " +
                    Local(a.BlendMax);
        }
        // Behind a word without quotes, or behind the blank of no activity,
        // which a read starts from as it does behind a quoted token.
        quoted = a.ActivityId.empty() && line.size() == activityEnd;
        for (const std::string& token : a.KeptOptions) {
            quoted = AppendToken(line, token, quoted);
        }
        for (int e = 1; e <= a.EventCount; ++e) {
            const AnimEventRec& event = a.Events[e];
            line += " { event ";
            AppendWhole(line, event.EventId);
            line += ' ';
            AppendWhole(line, event.Frame);
            if (!event.Parameter.empty()) {
                line += " \"";
                line += event.Parameter;
                line += '"';
            }
            line += " }";
        }
        return line;
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

void WriteQcScript(const Document& doc, std::ostream& out, char decimalSeparator) {
    ScriptWriter(doc, out, decimalSeparator).Write();
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

    SafeWriteOptions options;
    if (replacing) {
        // The new script keeps what the user set for the old one.
        options.Permissions = old.permissions();
    }
    const SafeWriteResult written = WriteFileSafely(
        target, [&](std::ostream& out) { WriteQcScript(doc, out, decimalSeparator); }, options);
    WriteResult result;
    switch (written.Step) {
    case SafeWriteStep::Done:
        return {};
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
