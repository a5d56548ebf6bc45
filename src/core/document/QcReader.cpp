#include "document/QcReader.h"

#include "document/NumberText.h"
#include "document/Paths.h"
#include "document/QcInclude.h"
#include "document/SmdScan.h"
#include "document/Text.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
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

namespace {

enum class BlockKind { None, BodyGroup, TextureGroup, Sequence };

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

class Reader {
public:
    Reader(Document& doc, ReaderHost& host, ProblemOnce& report, const SourceMap& map)
        : doc_(doc), host_(host), report_(report), map_(map),
          qcFolder_(paths::FolderOf(doc.QcFile)) {}

    const std::string& QcFolder() const { return qcFolder_; }

    // False when the load was broken off.
    bool ReadLines(const std::vector<std::string_view>& lines) {
        doc_.BodyGroupCount = 0;
        doc_.BodyGroups[1].PartCount = 0;
        doc_.BodyGroups[1].Name.clear();
        ForgetKeptRows();
        anchor_ = &doc_.KeptBeforeBody;
        lines_ = lines;
        for (index_ = 0; index_ < lines_.size(); ++index_) {
            if (index_ % ProgressLines == 0 && !host_.Progress(index_, lines_.size())) {
                cancelled_ = true;
                return false;
            }
            IncludesAt(index_);
            const std::string_view line = Trim(lines_[index_]);
            const std::size_t keptBefore = keptCount_;
            recordLine_ = false;
            FollowComments(line);
            if (!line.empty() && line.front() == '$') {
                heldDirective_ = true;
                if (block_ == BlockKind::Sequence) {
                    EndSequence(); // a block that never closed ends here
                }
                Directive(line);
            } else {
                BlockLine(line);
            }
            if (broken_) {
                return false;
            }
            if (include_ && !line.empty() && (recordLine_ || keptCount_ == keptBefore)) {
                include_->OnlyKept = false;
            }
        }
        IncludesAt(lines_.size());
        if (block_ == BlockKind::Sequence) {
            EndSequence();
        }
        // The texture scans of the parts follow, which may read large meshes.
        if (!host_.Progress(lines_.size(), lines_.size())) {
            cancelled_ = true;
            return false;
        }
        ResolveTextures();
        return true;
    }

    // Whether a line was read as a directive.
    bool HeldDirective() const { return heldDirective_; }
    // Whether the user cancelled the load (ReadLines returned false).
    bool Cancelled() const { return cancelled_; }

    // The findings of the load, in the order of the script's lines.
    LoadFindings TakeFindings() {
        std::stable_sort(noted_.begin(), noted_.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        LoadFindings findings;
        findings.reserve(noted_.size());
        for (auto& [index, finding] : noted_) {
            findings.push_back(std::move(finding));
        }
        return findings;
    }

private:
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
    // looked for beside the script first, as the compiler does; found there,
    // it becomes that folder and asWritten keeps the script's text.
    bool CheckFolder(std::string& folder, Ids key, FolderQuestion what,
                     std::string* asWritten = nullptr) {
        if (FolderPasses(folder, what)) {
            return true;
        }
        if (!folder.empty() && !paths::IsAbsolute(paths::ToStyle(folder))) {
            std::string beside = FolderBeside(qcFolder_, folder);
            if (FolderPasses(beside, what)) {
                if (asWritten != nullptr) {
                    *asWritten = folder;
                }
                folder = std::move(beside);
                return true;
            }
        }
        const std::string answer = host_.NewDir(folder, host_.Text(key), what);
        if (answer == Refused) {
            BreakOff();
            return false;
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
        } else {
            report_(ReadProblem::PartNotInModelPath, answer);
        }
        return true;
    }

    // --- includes ---------------------------------------------------------
    //
    // An include of the script whose lines were all kept as text (hitboxes
    // and the like: nothing the forms show) is kept as its $include line, at
    // the place of those lines. Any other is read into the script; a save
    // writes its lines there, and the findings say so once per file. What
    // an include includes in turn goes with it.

    struct IncludeRead {
        const IncludeSpan* Span = nullptr;
        std::vector<std::string>* Anchor = nullptr;
        std::size_t AnchorSize = 0;
        std::size_t Kept = 0;
        bool OnlyKept = true;
    };

    // Opens and closes the includes that start and end before line index.
    void IncludesAt(std::size_t index) {
        if (include_ && include_->Span->End == index) {
            CloseInclude();
        }
        while (nextInclude_ < map_.Includes.size() && map_.Includes[nextInclude_].First == index) {
            const IncludeSpan& span = map_.Includes[nextInclude_++];
            // Only where a line can stand on its own, or where the include's
            // first line is a directive, which ends any block (what stood
            // between a block and the include may be in the records, and a
            // save writes the include's line right behind the block); and
            // where the file is found as the line names it. A comment around
            // it does not count: comments are read like any line, and whether
            // a block comment is still open behind a save depends on what the
            // forms made of the lines inside it.
            const bool standsAlone = block_ == BlockKind::None || OpensWithDirective(span);
            include_ = IncludeRead{&span, anchor_, anchor_->size(), keptCount_,
                                   standsAlone && !span.Asked};
            if (span.End == index) {
                CloseInclude();
            }
        }
    }

    bool OpensWithDirective(const IncludeSpan& span) const {
        for (std::size_t i = span.First; i < span.End && i < lines_.size(); ++i) {
            const std::string_view line = Trim(lines_[i]);
            if (!line.empty()) {
                return line.front() == '$';
            }
        }
        return false;
    }

    void CloseInclude() {
        const IncludeRead read = *include_;
        include_.reset();
        const bool inPlace = read.OnlyKept && block_ == BlockKind::None &&
                             anchor_ == read.Anchor &&
                             anchor_->size() - read.AnchorSize == keptCount_ - read.Kept;
        if (inPlace) {
            anchor_->resize(read.AnchorSize);
            anchor_->emplace_back(read.Span->Line);
            return;
        }
        if (!mergedIncludes_.insert(read.Span->Path).second) {
            return;
        }
        LoadFinding finding{FindingKind::IncludeMerged, doc_.QcFile, read.Span->LineNumber,
                            std::string(Trim(read.Span->Line))};
        if (!map_.Files.empty()) {
            finding.File = map_.Files.front();
        }
        noted_.emplace_back(read.Span->First, std::move(finding));
    }

    // --- findings ---------------------------------------------------------
    //
    // Each kind is noted once per line of the working file, with the file and
    // the line number it came from.

    void NoteAt(FindingKind kind, std::size_t index) {
        if (index >= lines_.size() || !notedKinds_.insert({index, static_cast<int>(kind)}).second) {
            return;
        }
        LoadFinding finding{kind, {}, 0, std::string(Trim(lines_[index]))};
        if (index < map_.Lines.size()) {
            const LineOrigin& origin = map_.Lines[index];
            finding.File = origin.File < map_.Files.size() ? map_.Files[origin.File] : doc_.QcFile;
            finding.Line = origin.Line;
        }
        noted_.emplace_back(index, std::move(finding));
    }

    void Note(FindingKind kind) { NoteAt(kind, index_); }

    // Comments of other editors ("//" behind a blank, "/* ... */" blocks)
    // are read like any line, but what they hold is no loss.
    void FollowComments(std::string_view line) {
        inComment_ = inComment_ || line.starts_with("/*");
        commentLine_ = inComment_ || line.starts_with("//");
        if (inComment_ && line.find("*/") != std::string_view::npos) {
            inComment_ = false;
        }
    }

    // A line that no directive reads. Lines under a directive that is left
    // out go with it.
    // It is kept, as it stands, at the place of the last body group, texture
    // directive or sequence before it. Only empty lines go.
    void UnreadLine(std::string_view line) {
        if (!line.empty()) {
            Keep();
        }
    }

    void Keep() {
        anchor_->emplace_back(lines_[index_]);
        ++keptCount_;
    }

    // Rows beyond the tenth are the load's own: none of an earlier load.
    void ForgetKeptRows() {
        for (int r = limits::LastWrittenTextureRow + 1; r <= limits::LastTextureRow; ++r) {
            for (auto& cell : doc_.TextureVariations[static_cast<std::size_t>(r)]) {
                cell = Blank;
            }
        }
    }

    // A $cd or $cdtexture whose folder a later one replaces.
    void NotePathReplaced(std::optional<std::size_t>& lastLine, const std::string& before,
                          const std::string& after) {
        if (lastLine && before != after) {
            NoteAt(FindingKind::PathReplaced, *lastLine);
        }
        lastLine = index_;
    }

    // --- numbers ----------------------------------------------------------

    i16 Whole(double value) {
        const double r = std::nearbyint(value);
        if (std::isnan(r)) {
            return 0;
        }
        if (r != value) {
            Note(FindingKind::FractionRounded);
        }
        if (r < INT16_MIN || r > INT16_MAX) {
            report_(ReadProblem::NumberOutOfRange, line_);
            return static_cast<i16>(r < 0 ? INT16_MIN : INT16_MAX);
        }
        return static_cast<i16>(r);
    }

    f32 Float(double value) {
        if (std::isnan(value)) {
            return 0.0f;
        }
        if (value > FLT_MAX || value < -FLT_MAX) {
            report_(ReadProblem::NumberOutOfRange, line_);
            return value < 0 ? -FLT_MAX : FLT_MAX;
        }
        return static_cast<f32>(value);
    }

    // A table index from a script; -1 when it is no whole number in 0..last.
    static int Index(double value, int last) {
        const double r = std::nearbyint(value);
        return r >= 0 && r <= last ? static_cast<int>(r) : -1;
    }

    // RemoveAll(text, "\""): for one character that is no letter, cutting the
    // first occurrence until none is left takes out every one of them.
    static std::string NoQuotes(std::string_view text) {
        std::string result;
        result.reserve(text.size());
        for (const char c : text) {
            if (c != '"') {
                result.push_back(c);
            }
        }
        return result;
    }

    // The next token of a texture row: blanks before it are passed over, so
    // that a quoted name starts at its quote and keeps the blanks inside it
    // (a part file may name a texture with a blank at its end).
    static std::string_view ListToken(std::string_view text, int& pos) {
        while (pos >= 1 && pos <= static_cast<int>(text.size()) &&
               (text[static_cast<std::size_t>(pos - 1)] == ' ' ||
                text[static_cast<std::size_t>(pos - 1)] == '\t')) {
            ++pos;
        }
        return NextToken(text, pos);
    }

    static std::string Unquoted(std::string_view token) {
        return token == NoToken ? std::string() : NoQuotes(token);
    }

    // The axis of a word; any other word (such as the X of a moving
    // controller) keeps the old one.
    f32 AxisOr(std::string_view word, f32 old) {
        const std::string upper = ToUpper(word);
        if (upper == "XR") {
            return 0.0f;
        }
        if (upper == "YR") {
            return 1.0f;
        }
        if (upper == "ZR") {
            return 2.0f;
        }
        return old;
    }

    static bool IsRotation(std::string_view word) {
        const std::string upper = ToUpper(word);
        return upper == "XR" || upper == "YR" || upper == "ZR";
    }

    // --- directives -------------------------------------------------------

    void Directive(std::string_view line) {
        line_.assign(line);
        const std::size_t blank = line.find(' ', 1);
        if (blank == std::string_view::npos) {
            directive_.assign(line);
            rest_.clear();
        } else {
            directive_.assign(Trim(line.substr(0, blank + 1)));
            rest_.assign(Trim(line.substr(blank + 1)));
        }
        block_ = BlockKind::None;

        const std::string word = ToUpper(directive_);
        if (word == "$MODELNAME") {
            ModelName();
        } else if (word == "$CD") {
            std::string folder = NoQuotes(rest_);
            std::string asWritten;
            if (CheckFolder(folder, IDS_MODELPATH, FolderQuestion::ModelPath, &asWritten)) {
                NotePathReplaced(cdLine_, doc_.ModelPath, folder);
                doc_.ModelPath = folder;
                doc_.ModelPathAsWritten = asWritten;
            }
        } else if (word == "$CDTEXTURE" && cdTextureLine_) {
            // The compiler looks for textures in each folder, in order: the
            // forms hold the first, the others are kept.
            doc_.KeptCdTextures.emplace_back(lines_[index_]);
        } else if (word == "$CDTEXTURE") {
            std::string folder = NoQuotes(rest_);
            std::string asWritten;
            if (CheckFolder(folder, IDS_TEXTUREPATH, FolderQuestion::TexturePath, &asWritten)) {
                cdTextureLine_ = index_;
                doc_.TexturePath = folder;
                doc_.TexturePathAsWritten = asWritten;
            }
        } else if (word == "$SCALE") {
            doc_.ModelScale = Float(TextToNumber(rest_));
        } else if (word == "$GAMMA") {
            doc_.Gamma = Float(TextToNumber(rest_));
        } else if (word == "$EXTERNALTEXTURES") {
            doc_.ExternalTextures = 1;
        } else if (word == "$TEXRENDERMODE") {
            TexRenderMode();
        } else if (word == "$TEXTUREGROUP") {
            TextureGroup();
        } else if (word == "$BODYGROUP") {
            BodyGroup();
        } else if (word == "$BODY") {
            Body();
        } else if (word == "$EYEPOSITION") {
            int pos = 1;
            doc_.EyesOn = 1;
            doc_.EyeX = Float(TextToNumber(NextToken(rest_, pos)));
            doc_.EyeY = Float(TextToNumber(NextToken(rest_, pos)));
            doc_.EyeZ = Float(TextToNumber(NextToken(rest_, pos)));
        } else if (word == "$ATTACHMENT") {
            Attachment();
        } else if (word == "$CONTROLLER") {
            Controller();
        } else if (word == "$SEQUENCEGROUPSIZE") {
            doc_.SequenceGroupSize = Whole(TextToNumber(rest_));
        } else if (word == "$SEQUENCEGROUP") {
            ++sequenceGroup_;
            sequenceSlot_ = -1;
            if (sequenceGroup_ > limits::LastSequenceGroup) {
                report_(ReadProblem::TooManySequenceGroups, line_);
                anchor_ = &doc_.KeptAfterAnimations;
                Keep();
            } else {
                const auto g = static_cast<std::size_t>(sequenceGroup_);
                doc_.SequenceGroupNames[g] = rest_;
                anchor_ = &doc_.KeptAtGroupStart[g];
            }
        } else if (word == "$SEQUENCE") {
            Sequence();
        } else {
            // $origin, $hbox and every other directive, with the block that
            // follows it: kept as they stand.
            Keep();
        }
    }

    void ModelName() {
        std::string rest = NoQuotes(rest_);
        if (paths::HostStyle() == paths::Style::Windows) {
            rest = ReplaceAll(rest, "/", "\\");
        }
        if (rest.empty()) {
            // No name at all (a new model's): it stays without one, and
            // is not taken for a file in the script's folder.
            doc_.ModelName.clear();
            doc_.ModelNameAsWritten.clear();
            return;
        }
        const int at = LastSeparator(rest);
        std::string folder;
        char sep = '\0';
        if (at < 1) {
            folder = qcFolder_;
            modelFile_ = rest;
        } else {
            modelFile_ = std::string(Mid(rest, at + 1));
            folder = std::string(Left(rest, at - 1));
            sep = rest[static_cast<std::size_t>(at - 1)];
        }
        std::string checked = folder;
        std::string asWritten;
        if (!CheckFolder(checked, IDS_MODELNAME, FolderQuestion::ModelName, &asWritten)) {
            return;
        }
        doc_.ModelNameAsWritten = asWritten.empty() ? std::string() : rest;
        if (sep == '\0' || checked != folder) {
            // A folder of this machine (the script's own, or the user's pick).
            sep = paths::Separator();
            if (checked.empty()) {
                doc_.ModelName = modelFile_;
                return;
            }
        }
        doc_.ModelName = checked + sep + modelFile_;
    }

    void Attachment() {
        int pos = 1;
        const int index = Index(TextToNumber(NextToken(rest_, pos)), limits::LastAttachment);
        if (index < 0) {
            report_(ReadProblem::AttachmentIndex, line_);
            return;
        }
        const auto i = static_cast<std::size_t>(index);
        AttachmentRec& a = doc_.Attachments[i];
        a.Active = 1;
        doc_.AttachmentBones[i] = Unquoted(NextToken(rest_, pos));
        a.X = Float(TextToNumber(NextToken(rest_, pos)));
        a.Y = Float(TextToNumber(NextToken(rest_, pos)));
        a.Z = Float(TextToNumber(NextToken(rest_, pos)));
    }

    void Controller() {
        int pos = 1;
        const int index = Index(TextToNumber(NextToken(rest_, pos)), limits::LastController);
        if (index < 0) {
            report_(ReadProblem::ControllerIndex, line_);
            return;
        }
        const auto i = static_cast<std::size_t>(index);
        const std::string bone = Unquoted(NextToken(rest_, pos));
        const std::string_view axis = NextToken(rest_, pos);
        if (!IsRotation(axis)) {
            Keep(); // a moving controller (X, Y, Z): the forms turn only
            return;
        }
        ControllerRec& c = doc_.Controllers[i];
        c.Active = 1;
        doc_.ControllerBones[i] = bone;
        c.Axis = AxisOr(axis, c.Axis);
        c.LimitMin = Float(TextToNumber(NextToken(rest_, pos)));
        c.LimitMax = Float(TextToNumber(NextToken(rest_, pos)));
    }

    // --- body groups ------------------------------------------------------

    // Opens the next body group; null when the table is full.
    BodyGroupRec* NewBodyGroup() {
        if (doc_.BodyGroupCount >= limits::LastBodyGroup) {
            report_(ReadProblem::TooManyBodyGroups, line_);
            Keep();
            return nullptr;
        }
        ++doc_.BodyGroupCount;
        // Fresh, as the reset leaves it: groups above 10 and part slots above
        // 10 are not reset and would carry parts of an earlier load.
        BodyGroupRec& group = doc_.BodyGroups[doc_.BodyGroupCount];
        group = BodyGroupRec{};
        anchor_ = &group.KeptAfter;
        return &group;
    }

    void Body() {
        BodyGroupRec* group = NewBodyGroup();
        if (group == nullptr) {
            return;
        }
        int pos = 1;
        group->Name = Unquoted(NextToken(rest_, pos));
        group->Parts[1] = Unquoted(NextToken(rest_, pos));
        group->PartCount = 1;
        // reverse, scale and the like: kept for the $body line.
        if (pos <= static_cast<int>(rest_.size())) {
            group->KeptWords = std::string(
                Trim(std::string_view(rest_).substr(static_cast<std::size_t>(pos - 1))));
        }
        CheckPart(group->Parts[1]);
    }

    void BodyGroup() {
        parseState_ = 1;
        BodyGroupRec* group = NewBodyGroup();
        if (group == nullptr) {
            directive_.clear(); // its block lines are kept with it
            return;
        }
        block_ = BlockKind::BodyGroup;
        std::string name = rest_;
        if (!name.empty() && name.back() == '{') {
            parseState_ = 2;
            name.pop_back();
        }
        group->Name = name;
    }

    void EndBlock() {
        directive_.clear();
        block_ = BlockKind::None;
    }

    void BodyGroupLine(std::string_view line) {
        std::string text(line);
        const std::size_t open = text.find('{');
        if (open != std::string::npos && parseState_ == 1) {
            parseState_ = 2;
            text.erase(0, open + 1);
        }
        if (!text.empty() && text.front() == '}') {
            EndBlock();
            return;
        }
        if (text.empty() || parseState_ != 2) {
            return;
        }
        // A part line that ends the block: the part is what stands before the
        // brace, and a line with nothing before it only closes the block.
        const std::size_t close = text.find('}');
        if (close != std::string::npos) {
            EndBlock();
            text = std::string(Trim(std::string_view(text).substr(0, close)));
            if (text.empty()) {
                return;
            }
        }
        BodyGroupRec& group = doc_.BodyGroups[doc_.BodyGroupCount];
        if (group.PartCount >= limits::LastPart) {
            report_(ReadProblem::TooManyParts, std::string(line));
            return;
        }
        ++group.PartCount;
        const std::size_t p = group.PartCount;
        const std::string after = TextAfter(text, "studio \"", 1);
        if (after == "-1") {
            if (ToUpper(text) != "BLANK") {
                Note(FindingKind::PartReadAsBlank);
            }
            group.Parts[p] = Blank;
            return;
        }
        // reverse behind the name's closing quote: a part may be named so.
        const std::size_t quote = after.find('"');
        const std::size_t reverse = after.find("reverse", quote == std::string::npos ? 0 : quote);
        if (reverse == std::string::npos) {
            group.Parts[p] = NoQuotes(after);
            group.Reverse[p] = 0;
        } else {
            // The blanks before reverse go, also those a quote kept in.
            group.Parts[p] = std::string(Trim(NoQuotes(std::string_view(after).substr(0, reverse))));
            group.Reverse[p] = -1;
        }
        CheckPart(group.Parts[p]);
    }

    // --- textures ---------------------------------------------------------

    // Collects the .bmp lines of every part file into names(1..), from count on.
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
                if (!CollectBmpLines(path, names, count)) {
                    report_(ReadProblem::TooManyTextures, PartPath(part));
                }
            }
        }
    }

    // Texture directives are mapped once every body is read: a save writes
    // them behind all bodies, where the next load maps them onto the
    // textures of every part. Mapped here against only the parts before
    // them, a texture of a later part would be kept now and mapped then.
    void ResolveTextures() {
        if (!renderModes_.empty()) {
            int count = 0;
            ScanParts(modeTextures_, count);
            for (int i = 1; i <= limits::LastTexture; ++i) {
                doc_.TextureModes[static_cast<std::size_t>(i)].Name =
                    modeTextures_[static_cast<std::size_t>(i)];
            }
        }
        // The kept line of each directive that maps goes.
        std::vector<std::size_t> mapped;
        for (const RenderModeRead& read : renderModes_) {
            if (MapRenderMode(read.Texture, read.Mode)) {
                mapped.push_back(read.Kept);
            }
        }
        if (textureGroupRead_) {
            // The texture table holds the textures of every part, as a save
            // writes them all before the group.
            int count = doc_.TextureCount;
            ScanParts(doc_.TextureVariations[1], count);
            doc_.TextureCount = static_cast<u8>(count);
        }
        if (doc_.TextureCount == 0) {
            textureRows_.clear(); // no texture to map onto: the groups stay as lines
        } else {
            mapped.insert(mapped.end(), textureLines_.begin(), textureLines_.end());
        }
        // From the back, so that the places of the others stay.
        std::sort(mapped.begin(), mapped.end());
        for (auto it = mapped.rbegin(); it != mapped.rend(); ++it) {
            doc_.KeptAfterTextures.erase(doc_.KeptAfterTextures.begin() +
                                         static_cast<std::ptrdiff_t>(*it));
        }
        for (const TextureRowRead& row : textureRows_) {
            if (row.GroupStart) {
                textureRow_ = 0;
                continue;
            }
            index_ = row.Index;
            TextureRow(row.Text);
        }
    }

    bool MapRenderMode(const std::string& texture, const std::string& mode) {
        if (mode != "MASKED" && mode != "ADDITIVE") {
            return false; // a mode the forms do not offer
        }
        for (int i = 1; i <= limits::LastTexture; ++i) {
            TextureModeRec& slot = doc_.TextureModes[static_cast<std::size_t>(i)];
            if (slot.Name == texture) {
                // The compiler adds the modes of a texture up; the slot
                // holds one, a second stays as its line.
                const u8 value = mode == "MASKED" ? 1 : 2;
                if (slot.Mode != 0 && slot.Mode != value) {
                    return false;
                }
                slot.Mode = value;
                return true;
            }
        }
        return false; // a texture the parts lack
    }

    void TexRenderMode() {
        recordLine_ = true;
        int pos = 1;
        // A line without a name matches nothing; an empty name ("") matches
        // the first slot without a texture.
        std::string texture = NoQuotes(NextToken(rest_, pos));
        std::string mode = ToUpper(Unquoted(NextToken(rest_, pos)));
        anchor_ = &doc_.KeptAfterTextures;
        // Kept until it maps (see ResolveTextures).
        renderModes_.push_back({std::move(texture), std::move(mode), anchor_->size()});
        Keep();
    }

    void TextureGroup() {
        recordLine_ = true;
        block_ = BlockKind::TextureGroup;
        parseState_ = !rest_.empty() && rest_.back() == '{' ? 2 : 1;
        textureGroupRead_ = true;
        textureRows_.push_back({index_, {}, true});
        anchor_ = &doc_.KeptAfterTextures;
        KeepTextureLine();
    }

    // A line of a texture group, kept until the group maps (see
    // ResolveTextures): without a texture of the parts to map onto, the
    // group stays as it stands.
    void KeepTextureLine() {
        textureLines_.push_back(doc_.KeptAfterTextures.size());
        Keep();
    }

    void TextureGroupLine(std::string_view line) {
        if (!line.empty()) {
            KeepTextureLine();
        }
        std::string text(line);
        if (parseState_ == 1) {
            const std::size_t open = text.find('{');
            if (open != std::string::npos) {
                parseState_ = 2;
                text = std::string(Trim(std::string_view(text).substr(open + 1)));
            }
        }
        if (parseState_ == 2) {
            const std::size_t open = text.find('{');
            if (open != std::string::npos) {
                parseState_ = 3;
                text = std::string(Trim(std::string_view(text).substr(open + 1)));
            }
        }
        if (parseState_ == 2 && text.find('}') != std::string::npos) {
            // The group is closed: what follows is read like any line, and
            // an include there stands on its own.
            parseState_ = 0;
            block_ = BlockKind::None;
        }
        if (text.empty() || parseState_ != 3) {
            return;
        }
        // The row is mapped once every body is read; here only its end is
        // looked for.
        int pos = 1;
        for (;;) {
            const int before = pos;
            const std::string_view token = ListToken(text, pos);
            if (token == NoToken || pos <= before) {
                break;
            }
            if (token == "}") {
                parseState_ = 2;
                break;
            }
        }
        textureRows_.push_back({index_, std::move(text), false});
    }

    // One row of a texture group: the first names the textures of its
    // columns, the others what replaces them.
    void TextureRow(std::string_view text) {
        ++textureRow_;
        textureColumn_ = 0;
        const bool stored = textureRow_ <= limits::LastTextureRow;
        if (!stored) {
            report_(ReadProblem::TooManyTextureRows, std::string(text));
        }
        const auto row = static_cast<std::size_t>(stored ? textureRow_ : 0);
        auto& cells = doc_.TextureVariations;
        if (stored && textureRow_ > limits::LastWrittenTextureRow) {
            doc_.KeptTextureRows =
                std::max(doc_.KeptTextureRows, textureRow_ - limits::LastWrittenTextureRow);
        }
        if (stored && textureRow_ > 1) {
            for (int c = 1; c <= doc_.TextureCount; ++c) {
                cells[row][static_cast<std::size_t>(c)] = Blank;
            }
        }
        int pos = 1;
        for (;;) {
            const int before = pos;
            const std::string_view token = ListToken(text, pos);
            if (token == NoToken || pos <= before) {
                break; // the row goes on in the next line, as a row of its own
            }
            if (token == "}") {
                break;
            }
            ++textureColumn_;
            if (textureColumn_ > limits::LastTexture) {
                report_(ReadProblem::TooManyTextureColumns, std::string(text));
                continue;
            }
            if (!stored) {
                continue;
            }
            const std::string name = NoQuotes(token);
            const auto column = static_cast<std::size_t>(textureColumn_);
            if (textureRow_ == 1) {
                bool found = false;
                for (int c = 1; c <= doc_.TextureCount && !found; ++c) {
                    if (cells[1][static_cast<std::size_t>(c)] == name) {
                        columnMap_[column] = static_cast<i16>(c);
                        found = true;
                    }
                }
                if (!found) {
                    Note(FindingKind::TextureNotInParts);
                }
            } else {
                const auto c = static_cast<std::size_t>(columnMap_[column]);
                cells[row][c] = name == cells[1][c] ? std::string(Blank) : name;
            }
        }
        NoteDroppedTextureRow(row);
    }

    // A row that the writer leaves out: one that changes nothing (no skin of
    // its own then).
    void NoteDroppedTextureRow(std::size_t row) {
        if (textureRow_ < 2 || row == 0) {
            return;
        }
        const auto& cells = doc_.TextureVariations[row];
        const bool changes = std::any_of(cells.begin() + 1, cells.begin() + 1 + doc_.TextureCount,
                                         [](const std::string& cell) { return cell != Blank; });
        if (!changes) {
            Note(FindingKind::TextureRowDropped);
        }
    }

    void BlockLine(std::string_view line) {
        switch (block_) {
        case BlockKind::BodyGroup:
            BodyGroupLine(line);
            break;
        case BlockKind::TextureGroup:
            TextureGroupLine(line);
            break;
        case BlockKind::Sequence:
            SequenceLine(line);
            break;
        case BlockKind::None:
            UnreadLine(line);
            break;
        }
    }

    // --- sequences --------------------------------------------------------
    //
    // The compiler's grammar: behind the two names it reads tokens to the end
    // of the line or, once a brace is open, across lines until the braces
    // balance. What the record holds goes there; other options (motion
    // flags, node, transitions, ...) and further files are kept in order.

    void Sequence() {
        recordLine_ = true;
        parseState_ = 0;
        ++sequenceSlot_;
        seq_ = SequenceRead{};
        events_.clear();
        AnimRec* anim = &spareAnim_;
        if (sequenceGroup_ > limits::LastSequenceGroup) {
            seq_.KeepLines = true; // reported at its $sequencegroup
        } else if (sequenceSlot_ > limits::LastAnimSlot) {
            report_(ReadProblem::TooManySequences, line_);
            seq_.KeepLines = true;
        } else {
            anim = &doc_.Anims[static_cast<std::size_t>(sequenceGroup_)]
                              [static_cast<std::size_t>(sequenceSlot_)];
            // The forms hold 101 sequences of a group; the record of one
            // beyond is read, and its lines are kept to be written.
            seq_.KeepLines = sequenceSlot_ > limits::LastWrittenAnimSlot;
        }
        if (seq_.KeepLines) {
            // A kept sequence stays behind the sequences before it, also
            // when other directives stood between them.
            anchor_ = sequenceGroup_ > limits::LastSequenceGroup
                          ? &doc_.KeptAfterAnimations
                          : &doc_.Anims[static_cast<std::size_t>(sequenceGroup_)]
                                       [limits::LastWrittenAnimSlot].KeptAfter;
        }
        seq_.Anim = anim;
        // Each slot is read once per load; start it from a fresh record, so
        // nothing of an earlier load survives in slots and events that the
        // reset does not reach.
        *anim = AnimRec{};
        int pos = 1;
        anim->Name = Unquoted(NextToken(rest_, pos));
        if (sequenceGroup_ == 0 && anim != &spareAnim_) {
            host_.AddAnimation(anim->Name);
        }
        const std::string_view file = NextToken(rest_, pos);
        if (file == "{") {
            // $sequence "run" { "run" fps 30 ... }: the file comes inside.
            seq_.Depth = 1;
            seq_.FileInside = true;
        } else {
            anim->SmdFile = Unquoted(file);
        }
        if (seq_.KeepLines) {
            Keep();
        } else if (!anim->Name.empty()) {
            // A sequence without a name is not written: what follows it
            // stays where it would read back.
            anchor_ = &anim->KeptAfter;
        }
        SequenceTokens(rest_, pos);
    }

    // A line inside the braces of a sequence.
    void SequenceLine(std::string_view line) {
        if (seq_.KeepLines && !line.empty()) {
            Keep();
        }
        SequenceTokens(line, 1);
    }

    void SequenceTokens(std::string_view text, int pos) {
        block_ = BlockKind::Sequence;
        AnimRec& anim = *seq_.Anim;
        for (;;) {
            const int before = pos;
            const std::string_view token = NextToken(text, pos);
            if (token == NoToken || pos <= before) {
                break;
            }
            if (token.starts_with("//")) {
                break; // a comment to the end of the line
            }
            if (token.empty()) {
                continue; // a second blank behind a quoted token: no token to the compiler
            }
            // Most tokens have no quotes: they are read as they are.
            std::string_view t = token;
            if (std::find(token.begin(), token.end(), '"') == token.end()) {
                // as it is
            } else if (token.size() >= 2 && token.front() == '"' &&
                       token.find('"', 1) == token.size() - 1) {
                t = token.substr(1, token.size() - 2); // "..." as a whole
            } else {
                unquoted_ = NoQuotes(token);
                t = unquoted_;
            }
            if (CutShort() && IsBrace(WordOf(t))) {
                DropCutShort();
            }
            switch (parseState_) {
            case 0:
                Keyword(anim, token, t);
                break;
            case 1:
                anim.Fps = Whole(TextToNumber(t));
                parseState_ = 0;
                break;
            case 2:
                anim.FrameStart = Whole(TextToNumber(t));
                parseState_ = 3;
                break;
            case 3:
                anim.FrameEnd = Whole(TextToNumber(t));
                parseState_ = 0;
                break;
            case 4:
                anim.OriginX = Whole(TextToNumber(t));
                parseState_ = 5;
                break;
            case 5:
                anim.OriginY = Whole(TextToNumber(t));
                parseState_ = 6;
                break;
            case 6:
                anim.OriginZ = Whole(TextToNumber(t));
                parseState_ = 0;
                break;
            case 7:
                // The weight of an activity, when a number follows it.
                parseState_ = 0;
                if (StrictNumber(t, '.')) {
                    anim.ActivityId += ' ';
                    anim.ActivityId += Trim(t); // " 1" from a quote left open
                } else {
                    Keyword(anim, token, t);
                }
                break;
            case 9:
                if (anim.EventCount >= limits::MaxEvents) {
                    report_(ReadProblem::TooManyEvents, anim.Name);
                    spareEvent_ = AnimEventRec{};
                    event_ = &spareEvent_;
                } else {
                    // Gathered here and stored at the end of the sequence,
                    // so that its table grows once.
                    ++anim.EventCount;
                    event_ = &events_.emplace_back();
                }
                event_->EventId = Whole(TextToNumber(t));
                parseState_ = 10;
                break;
            case 10:
                event_->Frame = Whole(TextToNumber(t));
                parseState_ = 11;
                break;
            case 11:
                // The options of an event, when they stand on its line.
                parseState_ = 0;
                if (Trim(t) == "}") {
                    CloseBrace();
                } else {
                    event_->Parameter = std::string(Trim(t));
                }
                break;
            case 13:
                seq_.BlendText.emplace_back(token);
                seq_.BlendAxis = t;
                parseState_ = 14;
                break;
            case 14:
                seq_.BlendText.emplace_back(token);
                seq_.BlendMin = Float(TextToNumber(t));
                parseState_ = 15;
                break;
            case 15:
                seq_.BlendText.emplace_back(token);
                seq_.BlendMax = Float(TextToNumber(t));
                parseState_ = 0;
                break;
            case 16:
                anim.Scale = Float(TextToNumber(t));
                parseState_ = 0;
                break;
            case 17:
                anim.Rotate = Float(TextToNumber(t));
                parseState_ = 0;
                break;
            case 20:
                seq_.Options.emplace_back(token);
                parseState_ = --seq_.Arguments > 0 ? 20 : 0;
                break;
            default:
                parseState_ = 0;
                break;
            }
        }
        if (parseState_ == 7 || parseState_ == 11) {
            parseState_ = 0; // an activity without weight, an event without options
        }
        if (seq_.Depth <= 0) {
            EndSequence();
        }
    }

    void CloseBrace() {
        if (seq_.Depth > 0) {
            --seq_.Depth;
        }
    }

    // An option the record does not hold, with its arguments.
    void KeepOption(std::string_view token, int arguments) {
        seq_.OptionStart = seq_.Options.size();
        seq_.OptionLine = index_;
        seq_.Options.emplace_back(token);
        seq_.Arguments = arguments;
        if (arguments > 0) {
            parseState_ = 20;
        }
    }

    // Still waiting for a value of a blend or a kept option.
    bool CutShort() const { return parseState_ == 20 || (parseState_ >= 13 && parseState_ <= 15); }

    // An option whose values a brace or the end of its sequence cut short
    // goes: the compiler would take the brace, or refuse the line, and kept
    // as it stands it would take the tokens a save writes behind it.
    void DropCutShort() {
        if (parseState_ == 20) {
            seq_.Options.resize(seq_.OptionStart);
        } else {
            seq_.Blend = false;
            seq_.BlendText.clear();
            seq_.BlendAxis.clear();
        }
        NoteAt(FindingKind::OptionCutShort, seq_.OptionLine);
        seq_.Arguments = 0;
        parseState_ = 0;
    }

    enum class Word {
        Other,
        Fps,
        Loop,
        Frame,
        Origin,
        LX,
        LY,
        LZ,
        Motion,
        Rotate,
        Scale,
        Blend,
        OneArgument,
        TwoArguments,
        ThreeArguments,
        Open,
        OpenEvent,
        Event,
        Close
    };

    // The option words, compared in upper case (they are all ASCII): up to
    // seven letters as one number, the longer ones as text.
    static constexpr std::uint64_t Packed(std::string_view word) {
        // The length in the top byte: a word never ends in a zero byte.
        std::uint64_t key = static_cast<std::uint64_t>(word.size()) << 56;
        for (std::size_t i = 0; i < word.size() && i < 7; ++i) {
            key |= static_cast<std::uint64_t>(static_cast<unsigned char>(word[i])) << (8 * i);
        }
        return key;
    }

    static bool IsBrace(Word word) {
        return word == Word::Open || word == Word::OpenEvent || word == Word::Close;
    }

    static Word WordOf(std::string_view t) {
        if (t.size() > 7) {
            char upper[12];
            if (t.size() > sizeof upper) {
                return Word::Other;
            }
            for (std::size_t i = 0; i < t.size(); ++i) {
                const char c = t[i];
                upper[i] = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
            }
            const std::string_view word(upper, t.size());
            if (word == "ANIMATION") {
                return Word::OneArgument;
            }
            return word == "TRANSITION" || word == "RTRANSITION" ? Word::TwoArguments : Word::Other;
        }
        // The short words: packed as Packed does, in upper case, in one pass.
        std::uint64_t key = static_cast<std::uint64_t>(t.size()) << 56;
        for (std::size_t i = 0; i < t.size(); ++i) {
            const auto c = static_cast<unsigned char>(t[i]);
            const auto upper = c >= 'a' && c <= 'z' ? static_cast<unsigned char>(c - 'a' + 'A') : c;
            key |= static_cast<std::uint64_t>(upper) << (8 * i);
        }
        switch (key) {
        case Packed("FPS"):
            return Word::Fps;
        case Packed("LOOP"):
            return Word::Loop;
        case Packed("FRAME"):
            return Word::Frame;
        case Packed("ORIGIN"):
            return Word::Origin;
        case Packed("LX"):
            return Word::LX;
        case Packed("LY"):
            return Word::LY;
        case Packed("LZ"):
            return Word::LZ;
        case Packed("X"):
        case Packed("Y"):
        case Packed("Z"):
        case Packed("XR"):
        case Packed("YR"):
        case Packed("ZR"):
        case Packed("AX"):
        case Packed("AY"):
        case Packed("AZ"):
        case Packed("AXR"):
        case Packed("AYR"):
        case Packed("AZR"):
            return Word::Motion;
        case Packed("ROTATE"):
            return Word::Rotate;
        case Packed("SCALE"):
            return Word::Scale;
        case Packed("BLEND"):
            return Word::Blend;
        case Packed("NODE"):
            return Word::OneArgument;
        case Packed("PIVOT"):
            return Word::ThreeArguments;
        case Packed("{"):
            return Word::Open;
        case Packed("{EVENT"):
            return Word::OpenEvent;
        case Packed("EVENT"):
            return Word::Event;
        case Packed("}"):
            return Word::Close;
        default:
            return Word::Other;
        }
    }

    // Whether a word is an activity name (ACT_..., in any case). A quoted
    // name with blanks is none: the compiler takes it for a file.
    static bool IsActivity(std::string_view t) {
        return t.size() >= 4 && (t[0] == 'A' || t[0] == 'a') && (t[1] == 'C' || t[1] == 'c') &&
               (t[2] == 'T' || t[2] == 't') && t[3] == '_' &&
               t.find_first_of(" \t") == std::string_view::npos;
    }

    void Keyword(AnimRec& anim, std::string_view token, std::string_view t) {
        if (t.empty()) {
            return; // blanks in a row
        }
        switch (WordOf(t)) {
        case Word::Fps:
            parseState_ = 1;
            break;
        case Word::Loop:
            anim.Loop = 1;
            break;
        case Word::Frame:
            anim.FrameLimit = 1;
            parseState_ = 2;
            break;
        case Word::Origin:
            anim.OriginOn = 1;
            parseState_ = 4;
            break;
        case Word::LX:
            anim.LX = 1;
            break;
        case Word::LY:
            anim.LY = 1;
            break;
        case Word::LZ:
            anim.LZ = 1;
            break;
        case Word::Motion:
            KeepOption(token, 0);
            break;
        case Word::Rotate:
            parseState_ = 17;
            break;
        case Word::Scale:
            parseState_ = 16;
            break;
        case Word::Blend:
            if (seq_.Blend) {
                KeepOption(token, 3);
            } else {
                seq_.Blend = true;
                seq_.BlendText = {std::string(token)};
                seq_.OptionLine = index_;
                parseState_ = 13;
            }
            break;
        case Word::OneArgument:
            KeepOption(token, 1);
            break;
        case Word::TwoArguments:
            KeepOption(token, 2);
            break;
        case Word::ThreeArguments:
            KeepOption(token, 3);
            break;
        case Word::Open:
            ++seq_.Depth;
            break;
        case Word::OpenEvent:
            ++seq_.Depth;
            parseState_ = 9;
            break;
        case Word::Event:
            parseState_ = 9;
            break;
        case Word::Close:
            CloseBrace();
            break;
        case Word::Other:
            if (IsActivity(t) && anim.ActivityId.empty()) {
                anim.ActivityId = std::string(t);
                parseState_ = 7;
            } else if (IsActivity(t)) {
                KeepOption(token, 0);
            } else {
                // Anything else is one more .smd file for the compiler.
                seq_.Files.emplace_back(token);
            }
            break;
        }
    }

    // A sequence is read: the first further file with blend is the blend's
    // second file; other files, and a blend without one, are kept.
    void EndSequence() {
        if (CutShort()) {
            DropCutShort();
        }
        AnimRec& anim = *seq_.Anim;
        std::size_t file = 0;
        if (seq_.FileInside && !seq_.Files.empty()) {
            anim.SmdFile = NoQuotes(seq_.Files.front());
            seq_.Files.erase(seq_.Files.begin());
        }
        const bool rotation = IsRotation(seq_.BlendAxis);
        if (seq_.Blend && rotation) {
            anim.BlendAxis = AxisOr(seq_.BlendAxis, anim.BlendAxis);
            anim.BlendMin = seq_.BlendMin;
            anim.BlendMax = seq_.BlendMax;
        }
        if (seq_.Blend && rotation && !seq_.Files.empty()) {
            anim.BlendOn = 1;
            anim.BlendFile = NoQuotes(seq_.Files.front());
            file = 1;
        } else if (seq_.Blend) {
            seq_.Options.insert(seq_.Options.begin(), seq_.BlendText.begin(),
                                seq_.BlendText.end());
        }
        anim.KeptFiles.assign(std::make_move_iterator(seq_.Files.begin() + static_cast<std::ptrdiff_t>(file)),
                              std::make_move_iterator(seq_.Files.end()));
        anim.KeptOptions = std::move(seq_.Options);
        if (!events_.empty()) {
            const int count = static_cast<int>(events_.size());
            anim.Events[count]; // one allocation for the whole table
            for (int e = 1; e <= count; ++e) {
                anim.Events[e] = std::move(events_[static_cast<std::size_t>(e - 1)]);
            }
            events_.clear();
        }
        event_ = &spareEvent_;
        block_ = BlockKind::None;
        parseState_ = 0;
        seq_.Depth = 0;
    }

    Document& doc_;
    ReaderHost& host_;
    ProblemOnce& report_;
    const SourceMap& map_;
    const std::string qcFolder_;
    bool broken_ = false;
    bool cancelled_ = false;

    // What tells the findings.
    std::span<const std::string_view> lines_; // of the working file
    std::size_t index_ = 0;               // of the line being read
    std::vector<std::pair<std::size_t, LoadFinding>> noted_;
    std::set<std::pair<std::size_t, int>> notedKinds_;
    bool inComment_ = false;
    bool commentLine_ = false;
    std::optional<std::size_t> cdLine_;
    std::optional<std::size_t> cdTextureLine_;
    // Where lines that no record holds are kept.
    std::vector<std::string>* anchor_ = nullptr;
    std::size_t keptCount_ = 0; // lines kept so far
    bool recordLine_ = false;   // the line read went into a record, kept or not
    std::optional<IncludeRead> include_;
    std::size_t nextInclude_ = 0;
    std::set<std::string> mergedIncludes_; // reported, by path
    // The sequence being read, across the lines of its braces.
    struct SequenceRead {
        AnimRec* Anim = nullptr;
        bool KeepLines = false;  // its lines are kept as they stand
        int Depth = 0;           // braces open
        bool FileInside = false; // the first file stands inside the braces
        bool Blend = false;      // the first blend option was read
        std::vector<std::string> BlendText; // its tokens, as written
        std::string BlendAxis;
        f32 BlendMin = 0.0f;
        f32 BlendMax = 0.0f;
        std::vector<std::string> Files; // further files, as written
        std::vector<std::string> Options; // kept options, each token as written
        int Arguments = 0;              // still to come of the last kept option
        std::size_t OptionStart = 0;    // where the last kept option begins in Options
        std::size_t OptionLine = 0;     // the line of the last kept option or blend
    };
    SequenceRead seq_;
    AnimRec spareAnim_;
    AnimEventRec spareEvent_;
    AnimEventRec* event_ = &spareEvent_;
    std::vector<AnimEventRec> events_; // of the sequence being read

    std::string unquoted_; // a token of a sequence without its quotes
    std::string line_;     // the directive line, for reports
    std::string directive_;
    std::string rest_;
    BlockKind block_ = BlockKind::None;
    int parseState_ = 0;
    std::string modelFile_;
    bool heldDirective_ = false;
    int sequenceGroup_ = 0;
    int sequenceSlot_ = -1;
    // Texture directives, mapped once every body is read.
    struct RenderModeRead {
        std::string Texture;
        std::string Mode;  // in upper case
        std::size_t Kept;  // its line's place in KeptAfterTextures
    };
    std::vector<RenderModeRead> renderModes_;
    struct TextureRowRead {
        std::size_t Index;
        std::string Text;
        bool GroupStart;
    };
    std::vector<TextureRowRead> textureRows_;
    std::vector<std::size_t> textureLines_; // their places in KeptAfterTextures
    std::array<std::string, limits::LastTexture + 1> modeTextures_{};
    int textureRow_ = 0;
    bool textureGroupRead_ = false;
    int textureColumn_ = 0;
    std::array<i16, limits::LastTexture + 1> columnMap_{};
};

} // namespace

ReadOutcome ReadQcFile(Document& doc, ReaderHost& host, const std::string& workFolder,
                       LoadFindings* findings, bool* noDirective) {
    ProblemOnce report(host);
    SourceMap map;
    const std::string workFile =
        workFolder.empty() ? std::string(WorkFileName) : paths::Join(workFolder, WorkFileName);

    Reader reader(doc, host, report, map);
    BufferResult buffered = BufferResult::Done;
    {
        // A buffer of some size: the file is written in few calls.
        std::vector<char> buffer(std::size_t{1} << 16);
        std::ofstream out;
        out.rdbuf()->pubsetbuf(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        out.open(paths::ToFsPath(workFile), std::ios::binary | std::ios::trunc);
        if (!out) {
            report(ReadProblem::WorkFileUnwritable, workFile);
            host.NewDocument();
            return ReadOutcome::Unreadable;
        }
        buffered = BufferQcFile(out, doc.QcFile, reader.QcFolder(), host, report, &map);
        out.close();
        if (buffered == BufferResult::Done && out.fail()) {
            report(ReadProblem::WorkFileUnwritable, workFile);
            host.NewDocument();
            return ReadOutcome::Unreadable;
        }
    }
    if (buffered == BufferResult::Refused) {
        return ReadOutcome::Refused;
    }
    if (buffered == BufferResult::Unreadable) {
        host.NewDocument();
        return ReadOutcome::Unreadable;
    }
    // The lines written to the working file, as the map holds them.
    if (!reader.ReadLines(map.LineTexts)) {
        return reader.Cancelled() ? ReadOutcome::Cancelled : ReadOutcome::Refused;
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
