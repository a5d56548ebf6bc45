#include "compile/CompilePlan.h"

#include "compile/Activities.h"
#include "compile/CompilerText.h"
#include "document/Paths.h"
#include "document/QcInclude.h"
#include "document/ScriptTokens.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace quarle::compile {

namespace {

constexpr double Pi = 3.14159265358979323846;

// Tables of the compiler that a script can overrun.
constexpr int MaxTextureFolders = 16;
constexpr int MaxModels = 32; // parts of all body groups, blank ones included
constexpr int MaxBodyParts = 32;
constexpr int MaxSequences = 2048;
constexpr int MaxAnimations = 2048; // animation files of all sequences
constexpr int MaxSequenceFiles = 16;
constexpr int MaxEvents = 1024; // the compiler stops at the last entry
constexpr int MaxPivots = 256;
constexpr std::size_t ShortName = 32; // name fields of 32 bytes, with their end
constexpr std::size_t LongName = 64;

// The motion and controller words; the six first are the controller axes.
constexpr std::array<std::string_view, 15> ControlWords = {
    "X", "Y", "Z", "XR", "YR", "ZR", "LX", "LY", "LZ", "AX", "AY", "AZ", "AXR", "AYR", "AZR"};

int LookupControl(std::string_view word) {
    for (std::size_t i = 0; i < ControlWords.size(); ++i) {
        if (EqualsNoCase(ControlWords[i], word)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

// The options of a $sequence line that the compiler knows by their first
// letters, and how many of them it compares.
struct PrefixOption {
    std::string_view Word;
    std::size_t Compared;
};
constexpr std::array<PrefixOption, 6> PrefixOptions = {{{"loop", 4},
                                                        {"frame", 5},
                                                        {"blend", 5},
                                                        {"node", 4},
                                                        {"transition", 4},
                                                        {"rtransition", 4}}};

// The compiler cuts a file name at its last '.', unless a '/' comes first
// on the way back.
std::string StripExtension(std::string path) {
    if (path.empty()) {
        return path;
    }
    std::size_t length = path.size() - 1;
    while (length > 0 && path[length] != '.') {
        --length;
        if (path[length] == '/') {
            return path;
        }
    }
    if (length > 0) {
        path.resize(length);
    }
    return path;
}

class PlanReader {
public:
    PlanReader(CompilePlan& plan, std::string text, const std::string& qcFile)
        : plan_(plan),
          tokens_(std::move(text), paths::FileNameOf(qcFile),
                  [this](const std::string& name) { return LoadInclude(name); }) {
        plan_.WorkFolder = paths::FolderOf(qcFile);
        plan_.Output = CompilerPath(plan_, StripExtension(paths::FileNameOf(qcFile)) + ".mdl");
    }

    void Run() {
        while (!plan_.Stopped) {
            // The compiler looks for a token that begins with '$' and skips
            // the rest of any line that begins otherwise.
            if (!Next(true)) {
                break;
            }
            if (Tok().empty() || Tok()[0] != '$') {
                while (!plan_.Stopped && tokens_.Available()) {
                    Next(false);
                }
                continue;
            }
            Directive(std::string(Tok()));
        }
        plan_.Sources = tokens_.Sources();
    }

private:
    // ---- tokens ----

    std::optional<std::string> LoadInclude(const std::string& name) {
        std::string text;
        const auto found = paths::Resolve(CompilerPath(plan_, name));
        if (!found || !ReadWholeFile(*found, text)) {
            return std::nullopt;
        }
        return text;
    }

    const std::string& Tok() const { return tokens_.Token().Text; }
    PlanPlace Here() const { return {tokens_.Token().Source, tokens_.Token().Line}; }

    void Issue(Msg id, RowKind kind, PlanPlace at, std::vector<std::string> args = {}) {
        plan_.Issues.push_back({id, kind, at, std::move(args)});
    }
    // An error at which the compiler stops.
    void Stop(Msg id, std::vector<std::string> args = {}) {
        Issue(id, RowKind::Error, Here(), std::move(args));
        plan_.Stopped = true;
    }

    // The next token; false at the end of the script or where the compiler
    // stops (then with its issue).
    bool Next(bool crossLine) {
        if (plan_.Stopped) {
            return false;
        }
        switch (tokens_.Next(crossLine)) {
        case TokenStatus::Ok:
            return true;
        case TokenStatus::End:
            return false;
        case TokenStatus::LineIncomplete:
            Stop(MSG_CHECK_LINE_INCOMPLETE, {directive_});
            return false;
        case TokenStatus::IncludeMissing:
            Stop(MSG_CHECK_INCLUDE_MISSING, {Tok()});
            return false;
        case TokenStatus::IncludeTooDeep:
            Stop(MSG_CHECK_INCLUDE_TOO_DEEP, {Tok()});
            return false;
        case TokenStatus::TokenTooLong:
            Stop(MSG_CHECK_TOKEN_TOO_LONG, {std::to_string(ScriptTokens::MaxTokenLength - 1)});
            return false;
        }
        return false;
    }

    // A token the directive needs on its own line.
    bool Word(std::string& out) {
        if (!Next(false)) {
            return false;
        }
        out = Tok();
        return true;
    }
    bool Skip(int count) {
        std::string ignored;
        for (int i = 0; i < count; ++i) {
            if (!Word(ignored)) {
                return false;
            }
        }
        return true;
    }
    bool Number(float& out) {
        std::string word;
        if (!Word(word)) {
            return false;
        }
        out = static_cast<float>(Atof(word));
        return true;
    }

    // More than a table of the compiler holds: where it stops or crashes.
    void TooMany(const std::string& what, int most) {
        Stop(MSG_CHECK_TABLE_FULL, {what, std::to_string(most)});
    }
    // Where it writes on past the table's end and goes on: said once a kind.
    void Overrun(const std::string& what, int most) {
        if (overrun_.insert(what).second) {
            Issue(MSG_CHECK_TABLE_OVERRUN, RowKind::Warning, Here(), {what, std::to_string(most)});
        }
    }
    // A name longer than its field: the model holds it without its end.
    void NameLength(const std::string& name, std::size_t field, PlanPlace at) {
        if (name.size() >= field) {
            Issue(MSG_CHECK_NAME_TOO_LONG, RowKind::Warning, at, {name, std::to_string(field - 1)});
        }
    }
    // A file's name longer than the compiler keeps: it looks for another.
    // (One of 64 bytes fills the field, and the zeros behind it end it.)
    void FileNameLength(const std::string& name, PlanPlace at) {
        if (name.size() > LongName) {
            Issue(MSG_CHECK_FILE_NAME_TOO_LONG, RowKind::Error, at,
                  {name, std::to_string(LongName), name.substr(0, LongName) + ".smd"});
        }
    }

    // The compiler keeps 64 bytes of a file's name, which it joins to the
    // folder of $cd.
    std::string FilePath(const std::string& name) const {
        return CompilerPath(plan_, cd_ + "/" + name.substr(0, LongName) + ".smd");
    }

    // A directive read as a word of a block (one whose end is missing or
    // misplaced): said once per block, where it stands.
    class BlockWords {
    public:
        explicit BlockWords(std::string block) : block_(std::move(block)) {}
        void Note(PlanReader& reader) {
            const std::string& t = reader.Tok();
            if (!said_ && !t.empty() && t[0] == '$') {
                said_ = true;
                reader.Issue(MSG_CHECK_BLOCK_SWALLOWS, RowKind::Warning, reader.Here(), {block_, t});
            }
        }

    private:
        std::string block_;
        bool said_ = false;
    };

    // The end of the script inside a block: the compiler releases the
    // script a second time when it looks for the next directive.
    void Unended(const std::string& block, PlanPlace at) {
        if (!plan_.Stopped) {
            Issue(MSG_CHECK_BLOCK_UNENDED, RowKind::Error, at, {block});
            plan_.Stopped = true;
        }
    }

    // ---- directives ----

    void Directive(const std::string& word) {
        directive_ = word;
        if (word == "$modelname") {
            std::string name;
            if (Word(name)) {
                plan_.Output = CompilerPath(plan_, StripExtension(name) + ".mdl");
                plan_.OutputAt = Here();
            }
        } else if (word == "$cd") {
            if (cdSet_) {
                Stop(MSG_CHECK_TWO_CD);
                return;
            }
            cdSet_ = true;
            Word(cd_);
            plan_.CdFolder = cd_;
        } else if (word == "$cdtexture") {
            while (!plan_.Stopped && tokens_.Available()) {
                std::string folder;
                if (!Word(folder)) {
                    return;
                }
                if (plan_.TextureFolders.size() >= MaxTextureFolders) {
                    Overrun("$cdtexture", MaxTextureFolders);
                }
                plan_.TextureFolders.push_back(folder);
            }
        } else if (word == "$scale") {
            float scale = 0;
            if (Number(scale)) {
                defaultScale_ = scale;
            }
        } else if (word == "$root" || word == "$sequencegroup" || word == "$sequencegroupsize" ||
                   word == "$gamma" || word == "$flags") {
            Skip(1);
        } else if (word == "$pivot") {
            Skip(2);
        } else if (word == "$controller") {
            Controller();
        } else if (word == "$body") {
            std::string name;
            if (BodyPart(name) && Word(name)) {
                Part(Tok(), Here());
                ++plan_.BodyParts.back().Parts;
            }
        } else if (word == "$bodygroup") {
            BodyGroup();
        } else if (word == "$sequence") {
            Sequence();
        } else if (word == "$eyeposition") {
            Skip(3);
        } else if (word == "$origin") {
            Origin();
        } else if (word == "$bbox" || word == "$cbox") {
            Skip(6);
        } else if (word == "$mirrorbone") {
            std::string bone;
            if (Word(bone)) {
                mirrored_.push_back(bone.substr(0, LongName));
            }
        } else if (word == "$texturegroup") {
            TextureGroup();
        } else if (word == "$hgroup") {
            std::string bone;
            if (Skip(1) && Word(bone)) {
                plan_.BoneLinks.push_back({word, bone, Here()});
            }
        } else if (word == "$hbox") {
            std::string bone;
            if (Skip(1) && Word(bone) && Skip(6)) {
                plan_.BoneLinks.push_back({word, bone, Here()});
            }
        } else if (word == "$attachment") {
            Attachment();
        } else if (word == "$externaltextures" || word == "$cliptotextures") {
            // flags alone
        } else if (word == "$renamebone") {
            PlanRename rename;
            if (Word(rename.From) && Word(rename.To)) {
                NameLength(rename.From, ShortName, Here());
                NameLength(rename.To, ShortName, Here());
                plan_.Renames.push_back(std::move(rename));
            }
        } else if (word == "$texrendermode") {
            RenderMode();
        } else {
            Stop(MSG_CHECK_BAD_COMMAND, {word});
        }
    }

    void Controller() {
        std::string bone;
        std::string type;
        if (!Skip(1) || !Word(bone) || !Word(type)) {
            return;
        }
        const PlanPlace at = Here();
        const int control = LookupControl(type);
        if (control < 0) {
            // The compiler says so and leaves the controller out.
            Issue(MSG_CHECK_CONTROLLER_TYPE_UNKNOWN, RowKind::Warning, at, {type});
            return;
        }
        if (!Skip(2)) {
            return;
        }
        if (control >= 6) {
            // Taken here; the writer of the model refuses it at the end.
            Issue(MSG_CHECK_CONTROLLER_TYPE_MOTION, RowKind::Error, at, {type});
        }
        plan_.BoneLinks.push_back({"$controller", bone, at});
    }

    void Attachment() {
        std::string bone;
        if (!Skip(1) || !Word(bone)) {
            return;
        }
        const PlanPlace at = Here();
        if (!Skip(3)) {
            return;
        }
        for (int i = 0; i < 2 && tokens_.Available(); ++i) {
            Skip(1);
        }
        plan_.BoneLinks.push_back({"$attachment", bone, at});
    }

    void Origin() {
        std::array<float, 3> at{};
        for (float& v : at) {
            if (!Number(v)) {
                return;
            }
        }
        defaultAdjust_ = at;
        if (tokens_.Available()) {
            float turn = 0;
            if (Number(turn)) {
                defaultZRotation_ =
                    static_cast<float>((static_cast<double>(turn) + 90) * (Pi / 180.0));
            }
        }
    }

    bool BodyPart(std::string& name) {
        if (!Word(name)) {
            return false;
        }
        if (plan_.BodyParts.size() >= MaxBodyParts) {
            Overrun("$bodygroup", MaxBodyParts);
        }
        plan_.BodyParts.push_back({name, Here(), 0});
        return true;
    }

    // A part line: the file and what may follow it on its line.
    void Part(const std::string& name, PlanPlace at) {
        if (plan_.Parts.size() >= MaxModels) {
            Overrun("studio", MaxModels);
        }
        PlanPart part;
        part.File = {name, FilePath(name), at};
        part.BodyPart = static_cast<int>(plan_.BodyParts.size()) - 1;
        part.Read.Scale = defaultScale_;
        part.Read.Mirrored = mirrored_;
        part.Adjust = adjust_;
        while (!plan_.Stopped && tokens_.Available()) {
            std::string option;
            if (!Word(option)) {
                return;
            }
            if (EqualsNoCase(option, "scale")) {
                if (!Number(part.Read.Scale)) {
                    return;
                }
            }
        }
        FileNameLength(name, at);
        plan_.Parts.push_back(std::move(part));
        anyTexture_ = true; // as far as the script tells: the part's triangles have textures
    }

    void BodyGroup() {
        std::string name;
        if (!BodyPart(name)) {
            return;
        }
        BlockWords block("$bodygroup " + name);
        const PlanPlace at = Here();
        for (;;) {
            if (!Next(true)) {
                Unended("$bodygroup " + name, at);
                return;
            }
            const std::string& t = Tok();
            if (!t.empty() && t[0] == '{') {
                continue;
            }
            if (!t.empty() && t[0] == '}') {
                break;
            }
            if (EqualsNoCase(t, "studio")) {
                std::string file;
                if (!Word(file)) {
                    return;
                }
                Part(file, Here());
                ++plan_.BodyParts.back().Parts;
            } else if (EqualsNoCase(t, "blank")) {
                if (plan_.Parts.size() >= MaxModels) {
                    Overrun("studio", MaxModels);
                }
                PlanPart blank;
                blank.Blank = true;
                blank.File.At = Here();
                blank.BodyPart = static_cast<int>(plan_.BodyParts.size()) - 1;
                plan_.Parts.push_back(std::move(blank));
                ++plan_.BodyParts.back().Parts;
            } else {
                block.Note(*this);
            }
        }
    }

    void TextureGroup() {
        if (!anyTexture_) {
            Stop(MSG_CHECK_TEXTUREGROUP_FIRST);
            return;
        }
        std::string name;
        if (!Word(name)) {
            return;
        }
        BlockWords block("$texturegroup " + name);
        const PlanPlace at = Here();
        int depth = 0;
        for (;;) {
            if (!Next(true)) {
                Unended("$texturegroup " + name, at);
                return;
            }
            const std::string& t = Tok();
            if (!t.empty() && t[0] == '{') {
                ++depth;
            } else if (!t.empty() && t[0] == '}') {
                if (--depth == 0) {
                    break;
                }
            } else {
                block.Note(*this);
                if (depth == 2) {
                    plan_.TextureNames.push_back(
                        {t, Here(), static_cast<int>(plan_.Parts.size())});
                }
            }
        }
    }

    void RenderMode() {
        if (!tokens_.Available()) {
            Stop(MSG_CHECK_LINE_INCOMPLETE, {directive_});
            return;
        }
        std::string texture;
        if (!Word(texture)) {
            return;
        }
        plan_.TextureNames.push_back({texture, Here(), static_cast<int>(plan_.Parts.size())});
        anyTexture_ = true;
        if (!tokens_.Available()) {
            Stop(MSG_CHECK_LINE_INCOMPLETE, {directive_});
            return;
        }
        std::string mode;
        if (!Word(mode)) {
            return;
        }
        if (mode != "additive" && mode != "masked") {
            // The SDK's compiler stops here; later compilers know more modes.
            Issue(MSG_CHECK_RENDERMODE_OTHER, RowKind::Warning, Here(), {mode});
        }
    }

    void Sequence() {
        std::string name;
        if (!Word(name)) {
            return;
        }
        if (plan_.Sequences.size() >= MaxSequences) {
            Overrun("$sequence", MaxSequences);
        }
        PlanSequence seq;
        seq.Name = name;
        seq.At = Here();
        NameLength(name, ShortName, seq.At);
        adjust_ = defaultAdjust_;
        float scale = defaultScale_;
        float turn = defaultZRotation_;
        int depth = 0;
        int pivots = 0;
        BlockWords block("$sequence " + name);
        for (;;) {
            if (depth > 0) {
                if (!Next(true)) {
                    Unended("$sequence " + name, seq.At);
                    return;
                }
                block.Note(*this);
            } else if (plan_.Stopped || !tokens_.Available() || !Next(false)) {
                break;
            }
            const std::string t = Tok();
            const PlanPlace at = Here();
            if (t == "{") {
                ++depth;
            } else if (t == "}") {
                --depth;
            } else if (EqualsNoCase(t, "deform")) {
                // nothing
            } else if (EqualsNoCase(t, "event")) {
                if (!Event(seq, depth)) {
                    return;
                }
            } else if (EqualsNoCase(t, "pivot")) {
                if (++pivots >= MaxPivots) {
                    TooMany("pivot", MaxPivots - 1);
                    return;
                }
                if (!Skip(3)) {
                    return;
                }
            } else if (EqualsNoCase(t, "fps")) {
                if (!Skip(1)) {
                    return;
                }
            } else if (EqualsNoCase(t, "origin")) {
                for (float& v : adjust_) {
                    if (!Number(v)) {
                        return;
                    }
                }
            } else if (EqualsNoCase(t, "rotate")) {
                if (!Number(turn)) {
                    return;
                }
                turn = static_cast<float>((static_cast<double>(turn) + 90) * (Pi / 180.0));
            } else if (EqualsNoCase(t, "scale")) {
                if (!Number(scale)) {
                    return;
                }
            } else if (const PrefixOption* option = Prefixed(t)) {
                OptionWord(t, *option, at);
                if (!PrefixedOption(seq, option->Word)) {
                    return;
                }
            } else if (const int control = LookupControl(t); control >= 0) {
                seq.MotionType |= 1 << control;
            } else if (EqualsNoCase(t, "animation")) {
                std::string file;
                if (!Word(file) || !AddFile(seq, file, Here())) {
                    return;
                }
            } else if (IsCompilerActivity(t)) {
                if (!Activity(t)) {
                    return;
                }
            } else if (!AddFile(seq, t, at)) {
                return;
            }
            if (depth < 0) {
                Stop(MSG_CHECK_MISSING_OPEN_BRACE, {name});
                return;
            }
        }
        if (plan_.Stopped) {
            return;
        }
        if (seq.Files.empty()) {
            Issue(MSG_CHECK_NO_ANIMATION_FILE, RowKind::Error, seq.At, {name});
            plan_.Stopped = true;
            return;
        }
        seq.Read.Scale = scale;
        seq.Read.Adjust = adjust_;
        seq.Read.ZRotation = turn;
        seq.Read.Mirrored = mirrored_;
        plan_.Sequences.push_back(std::move(seq));
    }

    static const PrefixOption* Prefixed(const std::string& t) {
        for (const PrefixOption& option : PrefixOptions) {
            if (PrefixNoCase(option.Word, t, option.Compared)) {
                return &option;
            }
        }
        return nullptr;
    }

    // A word the compiler takes for an option by its first letters, while it
    // was meant for a file: it is quoted, or a file of that name is there.
    void OptionWord(const std::string& t, const PrefixOption& option, PlanPlace at) {
        if (EqualsNoCase(t, option.Word)) {
            return;
        }
        const bool quoted = tokens_.Token().Quoted;
        if (quoted || paths::FileExists(FilePath(t))) {
            Issue(MSG_CHECK_FILE_READ_AS_OPTION, RowKind::Error, at, {t, std::string(option.Word)});
        }
    }

    bool PrefixedOption(PlanSequence& seq, std::string_view word) {
        if (word == "loop") {
            seq.Looping = true;
            return true;
        }
        if (word == "frame") {
            std::string first;
            std::string last;
            if (!Word(first) || !Word(last)) {
                return false;
            }
            seq.Read.FirstFrame = Atoi(first);
            seq.Read.LastFrame = Atoi(last);
            return true;
        }
        if (word == "blend") {
            return Skip(3);
        }
        if (word == "node") {
            return Skip(1);
        }
        return Skip(2); // transition, rtransition
    }

    bool Event(PlanSequence& seq, int& depth) {
        if (static_cast<int>(seq.Events.size()) + 1 >= MaxEvents) {
            // The compiler ends without a model (and without an error status).
            TooMany("event", MaxEvents - 1);
            return false;
        }
        std::string number;
        std::string frame;
        if (!Word(number) || !Word(frame)) {
            return false;
        }
        seq.Events.push_back({Atoi(number), Atoi(frame), Here()});
        if (tokens_.Available()) {
            std::string options;
            if (!Word(options)) {
                return false;
            }
            if (!options.empty() && options[0] == '}') {
                --depth;
            } else {
                NameLength(options, LongName, Here());
            }
        }
        return true;
    }

    bool Activity(const std::string& name) {
        const PlanPlace at = Here();
        if (!tokens_.Available()) {
            Issue(MSG_CHECK_ACTIVITY_NO_WEIGHT, RowKind::Error, at, {name});
            plan_.Stopped = true;
            return false;
        }
        std::string weight;
        if (!Word(weight)) {
            return false;
        }
        if (!StartsWithNumber(weight)) {
            Issue(MSG_CHECK_ACTIVITY_WEIGHT_WORD, RowKind::Warning, at, {name, weight});
        }
        return true;
    }

    bool AddFile(PlanSequence& seq, const std::string& name, PlanPlace at) {
        if (seq.Files.size() >= MaxSequenceFiles) {
            TooMany("$sequence " + seq.Name, MaxSequenceFiles);
            return false;
        }
        if (++animations_ > MaxAnimations) {
            Overrun("animation files", MaxAnimations);
        }
        FileNameLength(name, at);
        seq.Files.push_back({name, FilePath(name), at});
        return true;
    }

    CompilePlan& plan_;
    ScriptTokens tokens_;
    std::string directive_;
    bool cdSet_ = false;
    std::string cd_;
    float defaultScale_ = 1.0f;
    Vec3 defaultAdjust_{};
    Vec3 adjust_{};
    float defaultZRotation_ = static_cast<float>(Pi / 2);
    std::vector<std::string> mirrored_;
    bool anyTexture_ = false;
    int animations_ = 0;
    std::set<std::string> overrun_;
};

} // namespace

std::string CompilerPath(const CompilePlan& plan, const std::string& path) {
    return paths::IsAbsolute(path) ? path : paths::Join(plan.WorkFolder, path);
}

CompilePlan ReadCompilePlan(const std::string& qcFile) {
    CompilePlan plan;
    std::string text;
    const auto found = paths::Resolve(qcFile);
    if (!found || !ReadWholeFile(*found, text)) {
        plan.Sources = {paths::FileNameOf(qcFile)};
        plan.Issues.push_back({MSG_CHECK_SCRIPT_UNREADABLE, RowKind::Error, {}, {qcFile}});
        plan.Stopped = true;
        return plan;
    }
    PlanReader(plan, std::move(text), qcFile).Run();
    return plan;
}

} // namespace quarle::compile
