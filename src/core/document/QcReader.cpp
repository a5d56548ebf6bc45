#include "document/QcReader.h"

#include "document/NumberText.h"
#include "document/Paths.h"
#include "document/QcGrammar.h"
#include "document/QcInclude.h"
#include "document/QcSequenceReader.h"
#include "document/QcTextureGroups.h"
#include "document/ScriptLayout.h"
#include "document/SmdScan.h"
#include "document/Text.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <span>
#include <string_view>
#include <system_error>

namespace quarle {

std::string DescribeProblem(ReadProblem kind, const std::string& detail,
                            const MessageTexts& texts) {
    const std::string& text = texts[static_cast<std::size_t>(ProblemMessage(kind))];
    if (detail.empty()) {
        return text;
    }
    return FormatMessage(texts[MSG_READ_DETAIL], {text, detail});
}

std::optional<ReadProblem> NotAScript(std::string_view text) {
    if ((text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"))) {
        return ReadProblem::Utf16Text;
    }
    if (text.find('\0') != std::string_view::npos) {
        return ReadProblem::BinaryFile;
    }
    return std::nullopt;
}

namespace {

// Directives and skipped lines read between two reports of the progress of
// a load.
constexpr std::size_t ProgressSteps = 256;

// Lines read between two reports of the progress of a load.
constexpr std::size_t ProgressLines = 512;

// Position (from 1) of the last folder separator, with the quirk of FindLast:
// the last character is not looked at. Both separators on a POSIX host.
int LastSeparator(std::string_view text) {
    const int length = static_cast<int>(text.size());
    int at = FindLast(length, text, "\\");
    if (paths::HostStyle() == paths::Style::Posix) {
        at = std::max(at, FindLast(length, text, "/"));
    }
    return at;
}

// folder + separator + name, with the separator the folder already uses.
std::string JoinLike(std::string_view folder, std::string_view name) {
    if (folder.empty()) {
        return std::string(name);
    }
    const char last = folder.back();
    if (last == '\\' || last == '/') {
        return std::string(folder) + std::string(name);
    }
    const std::size_t at = folder.find_last_of("\\/");
    const char sep = at == std::string_view::npos ? paths::Separator() : folder[at];
    return std::string(folder) + sep + std::string(name);
}

std::string TrimmedFolder(std::string path) {
    while (path.size() > 1 && (path.back() == '/' || path.back() == '\\')) {
        path.pop_back();
    }
    return path;
}

// The writer's own head: four lines that a save writes anew.
std::size_t OwnHeadLength(std::string_view text) {
    static constexpr std::array<std::string_view, 3> starts = {
        "// QC-File for Half-Life Model: ", "// Createt with \"Quarle ", "// "};
    std::size_t at = 0;
    for (const std::string_view start : starts) {
        if (text.substr(at, start.size()) != start) {
            return 0;
        }
        const std::size_t end = text.find('\n', at);
        if (end == std::string_view::npos) {
            return 0;
        }
        at = end + 1;
    }
    const std::string_view empty = text.substr(at, 2);
    if (empty.starts_with("\r\n")) {
        return at + 2;
    }
    return empty.starts_with("\n") ? at + 1 : 0;
}

std::string LineEndOf(std::string_view text) {
    const std::size_t lf = text.find('\n');
    return lf != std::string_view::npos && (lf == 0 || text[lf - 1] != '\r') ? "\n" : "\r\n";
}

void KeepNumber(NumberTexts& numbers, int field, std::string_view written,
                std::string_view read) {
    if (written != read) {
        numbers.push_back({static_cast<std::uint16_t>(field), std::string(read)});
    }
}

// A directive read into a record, and the bytes it covers.
struct DirectiveRead {
    PieceKind Kind = PieceKind::Text;
    int Ref = 0;
    TextSpan Span;
};

class Reader {
public:
    Reader(Document& doc, ReaderHost& host, ProblemOnce& report)
        : doc_(doc), host_(host), report_(report), layout_(std::make_shared<ScriptLayout>()),
          qcFolder_(paths::FolderOf(doc.QcFile)) {}

    // False when the load was broken off.
    bool Read(std::string script) {
        layout_->Folder = qcFolder_;
        layout_->Eol = LineEndOf(script);
        headEnd_ = OwnHeadLength(script);
        layout_->OwnHead = headEnd_ > 0;
        doc_.BodyGroupCount = 0;
        doc_.BodyGroups[1].PartCount = 0;
        doc_.BodyGroups[1].Name.clear();
        // Slots beyond those the forms hold, which the reset does not reach,
        // hold nothing of an earlier load (a deleted animation pulls the one
        // behind it up).
        for (AnimGroup& group : doc_.Anims) {
            if (group.HoldsUpperSlots()) {
                for (std::size_t s = limits::LastWrittenAnimSlot + 1; s < AnimGroup::Size; ++s) {
                    group[s] = AnimRec{};
                }
            }
        }
        // A setting the script does not give keeps the value it had; a save
        // writes it only when the user changes it.
        settings_.ModelName = doc_.ModelName;
        settings_.ModelPath = doc_.ModelPath;
        settings_.TexturePath = doc_.TexturePath;
        settings_.ModelScale = doc_.ModelScale;
        settings_.Gamma = doc_.Gamma;
        settings_.ExternalTextures = doc_.ExternalTextures;
        settings_.EyesOn = doc_.EyesOn;
        settings_.EyeX = doc_.EyeX;
        settings_.EyeY = doc_.EyeY;
        settings_.EyeZ = doc_.EyeZ;
        settings_.SequenceGroupSize = doc_.SequenceGroupSize;
        identities_[0] = Identity(DiskPath(doc_.QcFile, ""));

        ScriptTokens tokens(std::move(script), doc_.QcFile,
                            [this](const std::string& name) { return LoadInclude(name); });
        tokens.CopyText(false); // the cursor reads each token where it stands
        tokens_ = &tokens;
        ScriptCursor cursor(tokens, [this](TokenStatus status, const ScriptToken& name) {
            IncludeNotRead(status, name);
        });
        cursor_ = &cursor;
        scriptSize_ = tokens.SourceText(0).size();
        std::size_t steps = 0;
        while (!broken_ && cursor.NextCross()) {
            if (steps++ % ProgressSteps == 0 && !ReportProgress()) {
                cancelled_ = true;
                return false;
            }
            const std::string_view word = cursor.Text();
            if (word.empty() || word.front() != '$') {
                SkipLine();
                continue;
            }
            heldDirective_ = true;
            cursor.StartDirective();
            directiveLine_ = cursor.Token().Line;
            Directive();
        }
        if (broken_) {
            return false;
        }
        layout_->CompilerStops = stops_ || cursor.CompilerStops();
        NoteRefusal();
        NoteQuotesAcrossLines();
        // The texture scans of the parts follow, which may read large meshes.
        if (!host_.Progress(scriptSize_, scriptSize_)) {
            cancelled_ = true;
            return false;
        }
        ResolveTextures();
        BuildPieces();
        ListAnimations();
        doc_.Layout = layout_;
        return true;
    }

    bool HeldDirective() const { return heldDirective_; }
    // Whether the user cancelled the load (Read returned false).
    bool Cancelled() const { return cancelled_; }

    LoadFindings TakeFindings() { return std::move(findings_); }

    // The script with its includes in place, as the compiler reads it.
    void WriteFlattened(std::ostream& out) const { Flatten(out, 0); }

private:
    // How far the script is read, in its bytes: where the last token of the
    // script itself stands (its includes count where their line stands).
    bool ReportProgress() {
        const ScriptToken& token = cursor_->Token();
        if (token.Source == 0) {
            progressAt_ = token.Begin;
        }
        return host_.Progress(progressAt_, scriptSize_);
    }

    // --- questions --------------------------------------------------------

    void BreakOff() {
        broken_ = true;
        host_.NewDocument();
    }

    // A folder passes when it holds a file; the model's folder, into which
    // the compiler only writes, when it is there at all.
    static bool FolderPasses(const std::string& folder, FolderQuestion what) {
        const std::string path = paths::ToStyle(folder);
        if (!paths::IsAbsolute(path)) {
            return false;
        }
        const auto resolved = paths::Resolve(path);
        if (!resolved) {
            return false;
        }
        if (what == FolderQuestion::ModelName) {
            return paths::FolderExists(*resolved);
        }
        std::error_code ec;
        for (std::filesystem::directory_iterator it(paths::ToFsPath(*resolved), ec), end;
             !ec && it != end; it.increment(ec)) {
            std::error_code fileEc;
            if (it->is_regular_file(fileEc)) {
                return true;
            }
        }
        return false;
    }

    // The folder check; false when the user refused. A relative folder is
    // looked for beside the script first, as the compiler finds it there;
    // found so, it becomes that folder and counts as the script's own (read
    // is set to it). Otherwise read keeps the script's text, and the folder
    // is what the user answered.
    bool CheckFolder(std::string& folder, Ids key, FolderQuestion what, std::string& read) {
        read = folder;
        if (FolderPasses(folder, what)) {
            return true;
        }
        if (!folder.empty() && !paths::IsAbsolute(paths::ToStyle(folder))) {
            std::string beside = FolderBeside(qcFolder_, folder);
            if (FolderPasses(beside, what)) {
                folder = std::move(beside);
                read = folder;
                return true;
            }
        }
        const std::string answer = host_.NewDir(folder, host_.Text(key), what);
        if (answer == Refused) {
            BreakOff();
            return false;
        }
        if (answer != folder) {
            NoteDirective(FindingKind::PathAnswered);
        }
        folder = answer;
        return true;
    }

    std::string PartPath(const std::string& part) const {
        return JoinLike(doc_.ModelPath, part + ".smd");
    }

    bool IsSmdInModelPath(const std::string& pick) const {
        const std::string name = paths::FileNameOf(pick);
        if (name.size() < 4 || ToUpper(name.substr(name.size() - 4)) != ".SMD") {
            return false;
        }
        const std::string folder = TrimmedFolder(paths::ToStyle(paths::FolderOf(pick)));
        const std::string modelPath = TrimmedFolder(paths::ToStyle(doc_.ModelPath));
        if (folder == modelPath) {
            return true;
        }
        std::error_code ec;
        return !folder.empty() && !modelPath.empty() &&
               std::filesystem::equivalent(paths::ToFsPath(DiskPath(folder, qcFolder_)),
                                           paths::ToFsPath(DiskPath(modelPath, qcFolder_)), ec) &&
               !ec;
    }

    // The test of a part's file; false when the user refused.
    bool CheckPart(std::string& part) {
        const std::string path = PartPath(part);
        if (paths::FileExists(DiskPath(path, qcFolder_))) {
            return true;
        }
        const std::string answer =
            host_.PickPartFile(path, host_.Text(IDS_REFERENCEMODEL), doc_.ModelPath);
        if (answer == Refused) {
            BreakOff();
            return false;
        }
        if (answer == path) {
            return true; // the file the script names: the part stays as written
        }
        if (IsSmdInModelPath(answer)) {
            const std::string name = paths::FileNameOf(answer);
            part = name.substr(0, name.size() - 4);
            NoteDirective(FindingKind::PathAnswered);
        } else {
            report_(ReadProblem::PartNotInModelPath, answer);
        }
        return true;
    }

    // --- includes ---------------------------------------------------------

    // The text of an included file, looked for beside the script first, as
    // the compiler finds it, and else where the user points. Nothing when
    // it cannot be read (its $include line then stays as it stands).
    std::optional<std::string> LoadInclude(const std::string& name) {
        failure_ = IncludeFailure::None;
        unread_ = OpenProblem{};
        if (broken_) {
            return std::nullopt;
        }
        std::string path = paths::ToStyle(name);
        std::string disk = DiskPath(path, qcFolder_);
        bool asked = false;
        if (!paths::FileExists(disk)) {
            asked = true;
            const std::string answer =
                host_.NewDir(path, host_.Text(IDS_INCLUDEFILE), FolderQuestion::IncludeFile);
            if (answer == Refused) {
                BreakOff();
                return std::nullopt;
            }
            path = answer.empty() ? paths::FileNameOf(path)
                                  : paths::Join(answer, paths::FileNameOf(path));
            disk = DiskPath(path, qcFolder_);
        }
        // A file that includes itself would be read until the compiler's
        // nesting ends; it is read once.
        const std::string identity = Identity(disk);
        for (const int open : tokens_->OpenSources()) {
            if (static_cast<std::size_t>(open) < identities_.size() &&
                identities_[static_cast<std::size_t>(open)] == identity) {
                failure_ = IncludeFailure::Loop;
                return std::nullopt;
            }
        }
        std::string text;
        OpenProblem problem;
        if (!ReadWholeFile(disk, text, &problem)) {
            failure_ = IncludeFailure::Missing;
            // One that is there but refused is named with why.
            if (problem.Failure != OpenFailure::Missing) {
                unread_ = problem;
                unread_.Path = path;
            }
            return std::nullopt;
        }
        if (NotAScript(text)) {
            failure_ = IncludeFailure::NotAScript;
            return std::nullopt;
        }
        identities_.resize(tokens_->Sources().size() + 1);
        identities_.back() = identity;
        pendingInclude_ = IncludeRead{};
        pendingInclude_.Disk = disk;
        pendingInclude_.Asked = asked && path != paths::ToStyle(name);
        if (pendingInclude_.Asked) {
            const ScriptInclude& met = tokens_->Includes().back();
            Note(FindingKind::PathAnswered, met.Parent, met.Line,
                 std::string(LineAt(met.Parent, met.Begin)));
        }
        includeReads_.push_back(pendingInclude_);
        return text;
    }

    static std::string Identity(const std::string& diskPath) {
        std::error_code ec;
        const auto canonical = std::filesystem::weakly_canonical(paths::ToFsPath(diskPath), ec);
        return ec ? diskPath : paths::FromFsPath(canonical);
    }

    // An $include the compiler cannot read either: its line stays as it
    // stands, and the load says why.
    void IncludeNotRead(TokenStatus status, const ScriptToken& name) {
        if (broken_) {
            return;
        }
        FindingKind kind = FindingKind::IncludeMissing;
        if (status == TokenStatus::IncludeTooDeep || failure_ == IncludeFailure::Loop) {
            kind = FindingKind::IncludeTooDeep;
        } else if (failure_ == IncludeFailure::NotAScript) {
            kind = FindingKind::IncludeNotAScript;
        }
        const ScriptInclude& met = tokens_->Includes().back();
        std::string_view text(tokens_->SourceText(met.Parent));
        text = text.substr(met.Begin, met.End - met.Begin);
        Note(kind, name.Source, name.Line, std::string(text),
             kind == FindingKind::IncludeMissing ? unread_ : OpenProblem{});
    }

    // The line of a source from a place in it to its end.
    std::string_view LineAt(int source, std::size_t begin) const {
        const std::string_view text(tokens_->SourceText(source));
        const std::size_t end = text.find_first_of("\r\n", begin);
        return text.substr(begin, end == std::string_view::npos ? std::string_view::npos : end - begin);
    }

    // A place where the compiler refuses the script: the first one is named.
    void Refuse() {
        stops_ = true;
        if (refusedSource_ < 0) {
            refusedSource_ = cursor_->DirectiveSpan().Source;
            refusedLine_ = directiveLine_;
        }
    }

    void NoteRefusal() {
        int source = refusedSource_;
        int line = refusedLine_;
        if (cursor_->RefusedSource() >= 0 &&
            (source < 0 || (cursor_->RefusedSource() == source && cursor_->RefusedLine() < line))) {
            source = cursor_->RefusedSource();
            line = cursor_->RefusedLine();
        }
        if (source < 0) {
            return;
        }
        // The line's text, by its number.
        const std::string_view text(tokens_->SourceText(source));
        std::size_t begin = 0;
        for (int l = 1; l < line && begin != std::string_view::npos; ++l) {
            begin = text.find('\n', begin);
            begin = begin == std::string_view::npos ? begin : begin + 1;
        }
        Note(FindingKind::CompilerRefuses, source, line,
             begin == std::string_view::npos ? std::string() : std::string(LineAt(source, begin)));
    }

    // The quotes that run across a line end: kept for the writer, and the
    // first named, at the line of its opening quote.
    void NoteQuotesAcrossLines() {
        const std::vector<ScriptToken>& quotes = tokens_->QuotesAcrossLines();
        for (const ScriptToken& q : quotes) {
            layout_->QuotesAcrossLines.push_back({q.Source, q.Begin, q.End});
        }
        if (quotes.empty()) {
            return;
        }
        const ScriptToken& first = quotes.front();
        const std::string_view text(tokens_->SourceText(first.Source));
        const std::size_t lf = text.rfind('\n', first.Begin);
        Note(FindingKind::QuoteAcrossLines, first.Source, first.Line,
             std::string(LineAt(first.Source, lf == std::string_view::npos ? 0 : lf + 1)));
    }

    // A finding at the directive being read.
    void NoteDirective(FindingKind kind) {
        const TextSpan span = cursor_->DirectiveSpan();
        Note(kind, span.Source, directiveLine_, std::string(LineAt(span.Source, span.Begin)));
    }

    void Note(FindingKind kind, int source, int line, std::string text,
              OpenProblem unread = {}) {
        LoadFinding finding{kind, tokens_->Sources()[static_cast<std::size_t>(source)], line,
                            std::move(text), std::move(unread)};
        if (std::find(findings_.begin(), findings_.end(), finding) == findings_.end()) {
            findings_.push_back(std::move(finding));
        }
    }

    // --- the main loop ----------------------------------------------------

    // A token that is no directive: the rest of its line goes with it.
    void SkipLine() {
        while (cursor_->Available() && cursor_->NextOnLine()) {
        }
    }

    // n tokens of the line, as a directive the forms do not show reads them.
    void Arguments(int n) {
        for (int i = 0; i < n && cursor_->NextOnLine(); ++i) {
        }
    }

    void Directive() {
        const std::string_view word = cursor_->Text();
        if (word == "$modelname") {
            ModelName();
        } else if (word == "$cd") {
            Cd();
        } else if (word == "$cdtexture") {
            CdTexture();
        } else if (word == "$scale") {
            Scale();
        } else if (word == "$gamma") {
            Gamma();
        } else if (word == "$externaltextures") {
            doc_.ExternalTextures = 1;
            settings_.ExternalTextures = 1;
            Record(PieceKind::ExternalTextures, 0);
        } else if (word == "$eyeposition") {
            EyePosition();
        } else if (word == "$attachment") {
            Attachment();
        } else if (word == "$controller") {
            Controller();
        } else if (word == "$body") {
            Body();
        } else if (word == "$bodygroup") {
            BodyGroup();
        } else if (word == "$texrendermode") {
            TexRenderMode();
        } else if (word == "$texturegroup") {
            TextureGroup();
        } else if (word == "$sequencegroup") {
            SequenceGroup();
        } else if (word == "$sequencegroupsize") {
            SequenceGroupSize();
        } else if (word == "$sequence") {
            Sequence();
        } else if (word == "$origin") {
            Origin();
        } else if (word == "$root" || word == "$mirrorbone" || word == "$flags") {
            Arguments(1);
        } else if (word == "$pivot" || word == "$hgroup" || word == "$renamebone") {
            Arguments(2);
        } else if (word == "$bbox" || word == "$cbox") {
            Arguments(6);
        } else if (word == "$hbox") {
            Arguments(8);
        } else if (word != "$cliptotextures") {
            Refuse(); // a word the compiler refuses: it stays as it stands
        }
    }

    // The directive just read fills a record: its bytes are that record's,
    // unless they run across an include.
    bool Record(PieceKind kind, int ref) {
        if (cursor_->Straddles()) {
            return false;
        }
        directives_.push_back({kind, ref, cursor_->DirectiveSpan()});
        return true;
    }

    // A setting of which only the last counts: an earlier line of it then
    // changes nothing and stays as it stands.
    void RecordLast(PieceKind kind, std::optional<std::size_t>& last) {
        if (last) {
            directives_[*last].Kind = PieceKind::Text;
        }
        last = directives_.size();
        if (!Record(kind, 0)) {
            last.reset();
        }
    }

    void NumberOf(int field, f32 value) {
        KeepNumber(settings_.Numbers, field, FloatToPointText(value), cursor_->Text());
    }

    // --- settings ---------------------------------------------------------

    void ModelName() {
        if (!cursor_->NextOnLine()) {
            return;
        }
        std::string rest(cursor_->Text());
        if (paths::HostStyle() == paths::Style::Windows) {
            rest = ReplaceAll(rest, "/", "\\");
        }
        std::string value;
        std::string read;
        if (!rest.empty()) {
            const int at = LastSeparator(rest);
            std::string folder;
            std::string file;
            char sep = '\0';
            if (at < 1) {
                folder = qcFolder_;
                file = rest;
            } else {
                file = std::string(Mid(rest, at + 1));
                folder = std::string(Left(rest, at - 1));
                sep = rest[static_cast<std::size_t>(at - 1)];
            }
            std::string checked = folder;
            std::string readFolder;
            if (!CheckFolder(checked, IDS_MODELNAME, FolderQuestion::ModelName, readFolder)) {
                return;
            }
            const auto join = [&](const std::string& f) {
                // A folder of this machine (the script's own, or the user's pick).
                const char s = sep == '\0' || f != folder ? paths::Separator() : sep;
                return f.empty() ? file : f + s + file;
            };
            value = join(checked);
            read = join(readFolder);
        }
        doc_.ModelName = value;
        settings_.ModelName = read;
        settings_.ModelNameText = cursor_->Text();
        RecordLast(PieceKind::ModelName, modelName_);
    }

    void Cd() {
        if (!cursor_->NextOnLine() || cdRead_) {
            Refuse(); // a second $cd the compiler refuses: it stays as it stands
            return;
        }
        cdRead_ = true;
        std::string folder(cursor_->Text());
        const std::string written = folder;
        std::string read;
        if (CheckFolder(folder, IDS_MODELPATH, FolderQuestion::ModelPath, read)) {
            doc_.ModelPath = folder;
            settings_.ModelPath = read;
            settings_.ModelPathText = written;
            Record(PieceKind::Cd, 0);
        }
    }

    // Every folder of the line; the forms hold the first of the first line.
    void CdTexture() {
        std::vector<std::string> folders;
        std::vector<std::string> raws;
        while (cursor_->Available() && cursor_->NextOnLine()) {
            folders.emplace_back(cursor_->Text());
            raws.emplace_back(cursor_->Raw());
        }
        if (folders.empty() || cdTextureRead_) {
            return;
        }
        cdTextureRead_ = true;
        std::string folder = folders.front();
        std::string read;
        if (CheckFolder(folder, IDS_TEXTUREPATH, FolderQuestion::TexturePath, read)) {
            doc_.TexturePath = folder;
            settings_.TexturePath = read;
            settings_.TexturePathText = folders.front();
            settings_.MoreTextureFolders.assign(raws.begin() + 1, raws.end());
            Record(PieceKind::CdTexture, 0);
        }
    }

    // The first $scale: it scales what follows it, and a later one what
    // follows that, so a later one stays as it stands.
    void Scale() {
        if (!cursor_->NextOnLine() || scaleRead_) {
            return;
        }
        scaleRead_ = true;
        doc_.ModelScale = settings_.ModelScale = FloatField(CompilerFloat(cursor_->Text()));
        NumberOf(fields::ModelScale, doc_.ModelScale);
        Record(PieceKind::Scale, 0);
    }

    void Gamma() {
        if (!cursor_->NextOnLine()) {
            return;
        }
        doc_.Gamma = settings_.Gamma = FloatField(CompilerFloat(cursor_->Text()));
        std::erase_if(settings_.Numbers, [](const NumberText& t) { return t.Field == fields::Gamma; });
        NumberOf(fields::Gamma, doc_.Gamma);
        RecordLast(PieceKind::Gamma, gamma_);
    }

    void EyePosition() {
        std::array<f32, 3> xyz{};
        NumberTexts numbers;
        for (int i = 0; i < 3; ++i) {
            if (!cursor_->NextOnLine()) {
                return;
            }
            xyz[static_cast<std::size_t>(i)] = FloatField(CompilerFloat(cursor_->Text()));
            KeepNumber(numbers, fields::EyeX + i, FloatToPointText(xyz[static_cast<std::size_t>(i)]),
                       cursor_->Text());
        }
        doc_.EyesOn = settings_.EyesOn = 1;
        doc_.EyeX = settings_.EyeX = xyz[0];
        doc_.EyeY = settings_.EyeY = xyz[1];
        doc_.EyeZ = settings_.EyeZ = xyz[2];
        std::erase_if(settings_.Numbers, [](const NumberText& t) {
            return t.Field >= fields::EyeX && t.Field <= fields::EyeZ;
        });
        settings_.Numbers.insert(settings_.Numbers.end(), numbers.begin(), numbers.end());
        RecordLast(PieceKind::EyePosition, eyePosition_);
    }

    // The offset and turn of the sequences that follow, which the compiler
    // reads in floating point; a missing number reads as 0.
    void Origin() {
        DefaultOrigin& origin = layout_->LastOrigin;
        for (f32& v : origin.Offset) {
            v = cursor_->NextOnLine() ? ToF32(CompilerFloat(cursor_->Text())) : 0.0f;
        }
        if (cursor_->Available() && cursor_->NextOnLine()) {
            origin.Degrees = ToF32(CompilerFloat(cursor_->Text()));
        }
    }

    void SequenceGroupSize() {
        if (!cursor_->NextOnLine()) {
            return;
        }
        const long long size = CompilerWhole(cursor_->Text());
        doc_.SequenceGroupSize = settings_.SequenceGroupSize =
            WholeField(static_cast<double>(size));
        std::erase_if(settings_.Numbers,
                      [](const NumberText& t) { return t.Field == fields::SequenceGroupSize; });
        KeepNumber(settings_.Numbers, fields::SequenceGroupSize, IntToText(doc_.SequenceGroupSize),
                   cursor_->Text());
        RecordLast(PieceKind::SequenceGroupSize, sequenceGroupSize_);
    }

    // --- attachments and controllers ---------------------------------------

    // The next words of the directive's line, as read and as written; false
    // where the line ends first, or at the first word Accept(index, word)
    // turns down, where the compiler passes over the rest of the directive.
    template <std::size_t Count, class Accept>
    bool WordsOnLine(std::array<std::string, Count>& words, std::array<std::string, Count>& raws,
                     Accept&& accept) {
        for (std::size_t i = 0; i < Count; ++i) {
            if (!cursor_->NextOnLine()) {
                return false;
            }
            words[i] = cursor_->Text();
            raws[i] = cursor_->Raw();
            if (!accept(i, words[i])) {
                return false;
            }
        }
        return true;
    }

    // An attachment fills the slot of its number when that is free; the
    // model keeps them in the script's order, which the save keeps too.
    void Attachment() {
        std::array<std::string, 5> words;
        std::array<std::string, 5> raws;
        if (!WordsOnLine(words, raws, [](std::size_t, std::string_view) { return true; })) {
            return;
        }
        for (int i = 0; i < 2 && cursor_->Available(); ++i) {
            cursor_->NextOnLine(); // two more the compiler reads and forgets
        }
        const long long index = CompilerWhole(words[0]);
        if (index < 0 || index > limits::LastAttachment) {
            return;
        }
        const auto slot = static_cast<std::size_t>(index);
        AttachmentRead& read = layout_->Attachments[slot];
        if (read.Read) {
            return; // a second one of the number: the forms show the first
        }
        read.Read = true;
        read.IndexText = raws[0];
        read.Bone = words[1];
        read.Values = {1, FloatField(CompilerFloat(words[2])), FloatField(CompilerFloat(words[3])),
                       FloatField(CompilerFloat(words[4]))};
        const f32 xyz[] = {read.Values.X, read.Values.Y, read.Values.Z};
        for (int i = 0; i < 3; ++i) {
            KeepNumber(read.Numbers, fields::X + i, FloatToPointText(xyz[i]),
                       words[static_cast<std::size_t>(i + 2)]);
        }
        if (!Record(PieceKind::Attachment, static_cast<int>(slot))) {
            read = AttachmentRead{};
            return;
        }
        doc_.Attachments[slot] = read.Values;
        doc_.AttachmentBones[slot] = read.Bone;
    }

    // A controller the forms show: one of the numbers 0 to 3 that turns
    // (XR, YR, ZR), the first of its number. The mouth (4, or the word), a
    // moving one and any other stay as the script has them.
    void Controller() {
        std::array<std::string, 5> words;
        std::array<std::string, 5> raws;
        // The compiler passes over a controller of an unknown type.
        if (!WordsOnLine(words, raws, [](std::size_t i, std::string_view word) {
                return i != 2 || IsMotionWord(word);
            })) {
            return;
        }
        if (EqualNoCase(words[0], "mouth")) {
            return;
        }
        const long long index = CompilerWhole(words[0]);
        const int axis = RotationAxis(words[2]);
        if (index < 0 || index > limits::LastController || axis < 0) {
            return;
        }
        const auto slot = static_cast<std::size_t>(index);
        ControllerRead& read = layout_->Controllers[slot];
        if (read.Read) {
            return;
        }
        read.Read = true;
        read.IndexText = raws[0];
        read.Bone = words[1];
        read.AxisText = raws[2];
        read.Values = {1, static_cast<f32>(axis), FloatField(CompilerFloat(words[3])),
                       FloatField(CompilerFloat(words[4]))};
        KeepNumber(read.Numbers, fields::LimitMin, FloatToPointText(read.Values.LimitMin), words[3]);
        KeepNumber(read.Numbers, fields::LimitMax, FloatToPointText(read.Values.LimitMax), words[4]);
        if (!Record(PieceKind::Controller, static_cast<int>(slot))) {
            read = ControllerRead{};
            return;
        }
        doc_.Controllers[slot] = read.Values;
        doc_.ControllerBones[slot] = read.Bone;
    }

    // --- body groups ------------------------------------------------------

    // A part as the compiler reads "studio": its name, then every token of
    // the line: reverse, scale and its value, and words it passes over.
    bool Part(BodyGroupRec& group) {
        if (!cursor_->NextOnLine()) {
            return false;
        }
        std::string name(cursor_->Text());
        i16 reverse = 0;
        std::string words;
        while (cursor_->Available() && cursor_->NextOnLine()) {
            if (EqualNoCase(cursor_->Text(), "reverse")) {
                reverse = -1;
                continue;
            }
            const bool scale = EqualNoCase(cursor_->Text(), "scale");
            words += words.empty() ? "" : " ";
            words += cursor_->Raw();
            if (scale && cursor_->NextOnLine()) {
                words += ' ';
                words += cursor_->Raw();
            }
        }
        AddPart(group, std::move(name), reverse, std::move(words));
        return true;
    }

    void AddPart(BodyGroupRec& group, std::string name, i16 reverse, std::string words) {
        if (group.PartCount >= limits::LastPart) {
            partsFull_ = true;
            return;
        }
        ++group.PartCount;
        const auto p = static_cast<std::size_t>(group.PartCount);
        group.Parts[p] = std::move(name);
        group.Reverse[p] = reverse;
        group.PartWords[p] = std::move(words);
    }

    void Body() {
        if (!cursor_->NextOnLine()) {
            return;
        }
        BodyGroupRec group;
        group.Name = cursor_->Text();
        partsFull_ = false;
        if (!Part(group)) {
            return; // no part: the compiler stops here
        }
        AddBodyGroup(std::move(group), true);
    }

    // The block: every token up to one that starts with '}', across lines
    // and comments; "studio" and "blank" in any case make parts, and the
    // compiler passes over anything else, directives too.
    void BodyGroup() {
        if (!cursor_->NextOnLine()) {
            return;
        }
        BodyGroupRec group;
        group.Name = cursor_->Text();
        partsFull_ = false;
        for (;;) {
            if (!cursor_->NextCross()) {
                // The script ends in the block: the compiler reads past the
                // end and crashes, and builds no model.
                Refuse();
                return;
            }
            const std::string_view t = cursor_->Text();
            if (!t.empty() && t.front() == '}') {
                break;
            }
            if (!t.empty() && t.front() == '{') {
                continue;
            }
            if (EqualNoCase(t, "studio")) {
                Part(group);
            } else if (EqualNoCase(t, "blank")) {
                AddPart(group, Blank, 0, {});
            }
        }
        AddBodyGroup(std::move(group), false);
    }

    void AddBodyGroup(BodyGroupRec group, bool body) {
        if (partsFull_ || doc_.BodyGroupCount >= limits::LastBodyGroup || broken_) {
            return; // more than the forms hold: it stays as the script has it
        }
        if (!Record(PieceKind::BodyGroup, nextBodyId_)) {
            return;
        }
        auto source = std::make_shared<BodyGroupSource>();
        source->Id = nextBodyId_++;
        source->Span = cursor_->DirectiveSpan();
        source->Body = body;
        source->Values = group;
        ++doc_.BodyGroupCount;
        BodyGroupRec& held = doc_.BodyGroups[doc_.BodyGroupCount];
        held = std::move(group);
        held.From.Read = std::move(source);
        texturesSeen_ = texturesSeen_ || std::any_of(held.Parts.begin() + 1,
                                                     held.Parts.begin() + 1 + held.PartCount,
                                                     [](const std::string& p) { return p != Blank; });
        for (int p = 1; p <= held.PartCount && !broken_; ++p) {
            std::string& part = held.Parts[static_cast<std::size_t>(p)];
            if (part != Blank) {
                CheckPart(part);
            }
        }
    }

    // --- textures ---------------------------------------------------------

    void TexRenderMode() {
        std::string texture;
        if (!cursor_->Available() || !cursor_->NextOnLine()) {
            return;
        }
        texture = cursor_->Text();
        if (!cursor_->Available() || !cursor_->NextOnLine()) {
            return;
        }
        texturesSeen_ = true;
        // The compiler takes these two words only, in lower case.
        const std::string_view mode = cursor_->Text();
        if (mode != "masked" && mode != "additive") {
            Refuse();
            return;
        }
        const int line = static_cast<int>(renderModeLines_.size());
        if (Record(PieceKind::RenderMode, line)) {
            renderModeLines_.push_back({std::move(texture), static_cast<u8>(mode == "masked" ? 1 : 2)});
        }
    }

    // The rows of the block: a brace opens, one closes; names stand between
    // the braces of a row (the second level), and anything else the
    // compiler passes over.
    void TextureGroup() {
        if (!cursor_->NextOnLine()) {
            return;
        }
        TextureGroupWords words{std::string(cursor_->Text()), {}};
        int depth = 0;
        int row = 0;
        for (;;) {
            if (!cursor_->NextCross()) {
                // The block runs to the end of the script (its braces never
                // closed it): the compiler reads past the end and crashes, and
                // a line a save adds behind it would be a word of the block.
                Refuse();
                break;
            }
            const std::string_view t = cursor_->Text();
            if (!t.empty() && t.front() == '{') {
                ++depth;
            } else if (!t.empty() && t.front() == '}') {
                if (--depth == 0) {
                    break;
                }
                ++row;
            } else if (depth == 2) {
                words.Rows.resize(static_cast<std::size_t>(row) + 1);
                words.Rows.back().emplace_back(t);
            }
        }
        // The compiler takes the first group only, after the parts that
        // give the textures; any other stays as the script has it.
        if (!texturesSeen_) {
            Refuse(); // before any part: the compiler has no textures to map onto
        }
        if (textureGroup_ || !texturesSeen_ || cursor_->AtEnd()) {
            return;
        }
        if (Record(PieceKind::TextureGroup, 0)) {
            textureGroup_ = std::move(words);
            textureGroupPiece_ = directives_.size() - 1;
        }
    }

    void ScanParts(std::span<std::string> names, int& count) {
        for (int g = 1; g <= doc_.BodyGroupCount; ++g) {
            const BodyGroupRec& group = doc_.BodyGroups[static_cast<std::size_t>(g)];
            for (int p = 1; p <= group.PartCount; ++p) {
                const std::string& part = group.Parts[static_cast<std::size_t>(p)];
                if (part.empty() || part == Blank) {
                    continue;
                }
                const std::string path = DiskPath(PartPath(part), qcFolder_);
                if (!paths::FileExists(path)) {
                    report_(ReadProblem::PartFileMissing, PartPath(part));
                    continue;
                }
                if (!CollectBmpLines(path, names, count) && !moreTextures_) {
                    moreTextures_ = true;
                    texturesFullAt_ = PartPath(part);
                }
            }
        }
    }

    // Texture directives map once every body is read: the forms list the
    // textures of every part.
    void ResolveTextures() {
        if (renderModeLines_.empty() && !textureGroup_) {
            return;
        }
        if (!renderModeLines_.empty()) {
            std::array<std::string, limits::LastTexture + 1> names{};
            int count = 0;
            ScanParts(names, count);
            for (int i = 1; i <= limits::LastTexture; ++i) {
                doc_.TextureModes[static_cast<std::size_t>(i)].Name = names[static_cast<std::size_t>(i)];
            }
            layout_->RenderModes = MapRenderModes(doc_, renderModeLines_);
        }
        if (textureGroup_) {
            int count = doc_.TextureCount;
            ScanParts(doc_.TextureVariations[1], count);
            doc_.TextureCount = static_cast<u8>(count);
            layout_->TextureGroup = MapTextureGroup(doc_, std::move(*textureGroup_));
            if (!layout_->TextureGroup) {
                directives_[textureGroupPiece_].Kind = PieceKind::Text;
            }
        }
        for (DirectiveRead& d : directives_) {
            if (d.Kind == PieceKind::RenderMode &&
                layout_->RenderModes[static_cast<std::size_t>(d.Ref)].Slot == 0) {
                d.Kind = PieceKind::Text;
            }
        }
        if (moreTextures_) {
            Note(FindingKind::MoreThanTenTextures, 0, 0, texturesFullAt_);
        }
    }

    // --- sequences --------------------------------------------------------

    void SequenceGroup() {
        if (!cursor_->NextOnLine()) {
            return;
        }
        ++sequenceGroup_;
        sequenceSlot_ = -1;
        if (sequenceGroup_ <= limits::LastSequenceGroup) {
            // The group's place in the script, even where an include gives
            // its name: its line holds no record, so the piece holds only the
            // words before the include, and the group's sequences follow it.
            directives_.push_back(
                {PieceKind::SequenceGroup, sequenceGroup_, cursor_->DirectiveSpan()});
        }
    }

    void Sequence() {
        AnimRec anim;
        auto source = std::make_shared<SequenceSource>();
        const SequenceResult result = sequences_.Read(*cursor_, anim, *source);
        if (!result.Complete) {
            Refuse();
        }
        if (!result.Named) {
            return; // "$sequence" alone: the compiler stops at it
        }
        ++sequenceSlot_;
        // The forms hold 101 sequences of 11 groups, with 255 events each;
        // anything beyond stays as the script has it.
        if (sequenceGroup_ > limits::LastSequenceGroup ||
            sequenceSlot_ > limits::LastWrittenAnimSlot || result.Events > limits::MaxEvents ||
            !Record(PieceKind::Sequence, nextSequenceId_)) {
            --sequenceSlot_;
            return;
        }
        source->Id = nextSequenceId_++;
        source->Span = cursor_->DirectiveSpan();
        source->Origin = layout_->LastOrigin;
        source->Text = tokens_->Texts()[static_cast<std::size_t>(source->Span.Source)];
        const auto g = static_cast<std::size_t>(sequenceGroup_);
        AnimRec& held = doc_.Anims[g][static_cast<std::size_t>(sequenceSlot_)];
        held = std::move(anim);
        held.From.Read = std::move(source);
        listed_[g] = sequenceSlot_ + 1;
    }

    void ListAnimations() {
        for (int s = 0; s < listed_[0]; ++s) {
            host_.AddAnimation(doc_.Anims[0][static_cast<std::size_t>(s)].Name);
        }
    }

    // --- pieces -----------------------------------------------------------

    // The bytes of every source, in reading order: the directives read into
    // records, each include where it stands, and what lies between them.
    void BuildPieces() {
        const std::vector<ScriptInclude>& met = tokens_->Includes();
        const std::size_t sources = tokens_->Texts().size();
        layout_->Texts = tokens_->Texts();
        directivesOf_.assign(sources, {});
        includesOf_.assign(sources, {});
        for (std::size_t d = 0; d < directives_.size(); ++d) {
            directivesOf_[static_cast<std::size_t>(directives_[d].Span.Source)].push_back(d);
        }
        std::size_t read = 0;
        for (const ScriptInclude& include : met) {
            if (include.Source < 0) {
                continue;
            }
            IncludeRead entry = includeReads_[read++];
            entry.Line = {include.Parent, include.Begin, include.End};
            entry.Name = include.Name;
            entry.Source = include.Source;
            entry.LineNumber = include.Line;
            includesOf_[static_cast<std::size_t>(include.Parent)].push_back(layout_->Includes.size());
            layout_->Includes.push_back(std::move(entry));
        }
        sourceInclude_.assign(sources, -1);
        for (std::size_t i = 0; i < layout_->Includes.size(); ++i) {
            sourceInclude_[static_cast<std::size_t>(layout_->Includes[i].Source)] = static_cast<int>(i);
        }
        for (IncludeRead& include : layout_->Includes) {
            include.Parent = sourceInclude_[static_cast<std::size_t>(include.Line.Source)];
        }
        Pieces(0, headEnd_);
    }

    void TextPiece(int source, std::size_t begin, std::size_t end) {
        if (begin >= end) {
            return;
        }
        std::vector<ScriptPiece>& pieces = layout_->Pieces;
        if (!pieces.empty() && pieces.back().Kind == PieceKind::Text &&
            pieces.back().Span.Source == source && pieces.back().Span.End == begin) {
            pieces.back().Span.End = end;
            return;
        }
        pieces.push_back({PieceKind::Text, sourceInclude_[static_cast<std::size_t>(source)],
                          {source, begin, end}, 0});
    }

    void Pieces(int source, std::size_t from) {
        const auto s = static_cast<std::size_t>(source);
        const int include = sourceInclude_[s];
        const std::vector<std::size_t>& directives = directivesOf_[s];
        const std::vector<std::size_t>& includes = includesOf_[s];
        std::size_t d = 0;
        std::size_t i = 0;
        std::size_t at = from;
        while (d < directives.size() || i < includes.size()) {
            const bool takeDirective =
                i >= includes.size() ||
                (d < directives.size() &&
                 directives_[directives[d]].Span.Begin < layout_->Includes[includes[i]].Line.Begin);
            if (takeDirective) {
                const DirectiveRead& read = directives_[directives[d++]];
                if (read.Span.Begin < at) {
                    continue; // inside the head a save writes anew
                }
                if (read.Kind == PieceKind::Text) {
                    continue; // its bytes join those around it
                }
                TextPiece(source, at, read.Span.Begin);
                layout_->Pieces.push_back({read.Kind, include, read.Span, read.Ref});
                at = read.Span.End;
            } else {
                const std::size_t k = includes[i++];
                const IncludeRead& entry = layout_->Includes[k];
                TextPiece(source, at, entry.Line.Begin);
                layout_->Pieces.push_back(
                    {PieceKind::IncludeStart, include, entry.Line, static_cast<int>(k)});
                Pieces(entry.Source, 0);
                layout_->Pieces.push_back(
                    {PieceKind::IncludeEnd, include, {source, entry.Line.End, entry.Line.End},
                     static_cast<int>(k)});
                at = entry.Line.End;
            }
        }
        TextPiece(source, at, tokens_->SourceText(source).size());
    }

    void Flatten(std::ostream& out, int source) const {
        const std::string& text = *layout_->Texts[static_cast<std::size_t>(source)];
        std::size_t at = 0;
        for (const std::size_t k : includesOf_[static_cast<std::size_t>(source)]) {
            const IncludeRead& entry = layout_->Includes[k];
            out.write(text.data() + at, static_cast<std::streamsize>(entry.Line.Begin - at));
            Flatten(out, entry.Source);
            at = entry.Line.End;
        }
        out.write(text.data() + at, static_cast<std::streamsize>(text.size() - at));
    }

    enum class IncludeFailure { None, Missing, Loop, NotAScript };

    Document& doc_;
    ReaderHost& host_;
    ProblemOnce& report_;
    std::shared_ptr<ScriptLayout> layout_;
    SettingsRead& settings_ = layout_->Settings;
    const std::string qcFolder_;
    ScriptTokens* tokens_ = nullptr;
    ScriptCursor* cursor_ = nullptr;
    bool broken_ = false;
    bool cancelled_ = false;
    std::size_t scriptSize_ = 0;
    std::size_t progressAt_ = 0;
    bool heldDirective_ = false;
    int directiveLine_ = 0;
    bool stops_ = false;
    int refusedSource_ = -1;
    int refusedLine_ = 0;
    std::size_t headEnd_ = 0;
    LoadFindings findings_;

    // Includes: what each one read, by the order they were entered.
    IncludeFailure failure_ = IncludeFailure::None;
    OpenProblem unread_; // of the include last refused
    IncludeRead pendingInclude_;
    std::vector<IncludeRead> includeReads_;
    std::vector<std::string> identities_{std::string()};

    std::vector<DirectiveRead> directives_;
    SequenceReader sequences_;
    std::optional<std::size_t> modelName_;
    std::optional<std::size_t> gamma_;
    std::optional<std::size_t> eyePosition_;
    std::optional<std::size_t> sequenceGroupSize_;
    bool cdRead_ = false;
    bool cdTextureRead_ = false;
    bool scaleRead_ = false;
    bool partsFull_ = false;
    int nextBodyId_ = 1;
    int nextSequenceId_ = 1;
    int sequenceGroup_ = 0;
    int sequenceSlot_ = -1;
    std::array<int, limits::LastSequenceGroup + 1> listed_{};

    // Textures: the compiler's list has one once a part or a texture line
    // named it; the directives map once every body is read.
    bool texturesSeen_ = false;
    std::vector<RenderModeWords> renderModeLines_;
    std::optional<TextureGroupWords> textureGroup_;
    std::size_t textureGroupPiece_ = 0;
    bool moreTextures_ = false;
    std::string texturesFullAt_;

    // Pieces, by source.
    std::vector<std::vector<std::size_t>> directivesOf_;
    std::vector<std::vector<std::size_t>> includesOf_;
    std::vector<int> sourceInclude_;
};

} // namespace

ReadOutcome ReadQcFile(Document& doc, ReaderHost& host, const std::string& workFolder,
                       LoadFindings* findings, bool* noDirective) {
    ProblemOnce report(host);
    const std::string workFile =
        workFolder.empty() ? std::string(WorkFileName) : paths::Join(workFolder, WorkFileName);

    std::string script;
    OpenProblem problem;
    if (!ReadWholeFile(DiskPath(doc.QcFile, ""), script, &problem)) {
        problem.Path = doc.QcFile;
        report.File(ReadProblem::ScriptUnreadable, problem);
        host.NewDocument();
        return ReadOutcome::Unreadable;
    }
    if (const std::optional<ReadProblem> kind = NotAScript(script)) {
        report(*kind, doc.QcFile);
        host.NewDocument();
        return ReadOutcome::NotAScript;
    }
    // A buffer of some size: the working file is written in few calls.
    std::vector<char> buffer(std::size_t{1} << 16);
    std::ofstream out;
    out.rdbuf()->pubsetbuf(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    out.open(paths::ToFsPath(workFile), std::ios::binary | std::ios::trunc);
    if (!out) {
        report(ReadProblem::WorkFileUnwritable, workFile);
        host.NewDocument();
        return ReadOutcome::Unreadable;
    }

    Reader reader(doc, host, report);
    if (!reader.Read(std::move(script))) {
        return reader.Cancelled() ? ReadOutcome::Cancelled : ReadOutcome::Refused;
    }
    reader.WriteFlattened(out);
    out.close();
    if (out.fail()) {
        report(ReadProblem::WorkFileUnwritable, workFile);
        host.NewDocument();
        return ReadOutcome::Unreadable;
    }
    if (findings != nullptr) {
        *findings = reader.TakeFindings();
    }
    if (noDirective != nullptr) {
        *noDirective = !reader.HeldDirective();
    }
    host.LoadFinished();
    return ReadOutcome::Loaded;
}

} // namespace quarle
