// Shared by the script tests: a scripted reader host, a load of a script text
// as the open command does it, and the documents the golden scripts describe.
#pragma once

#include "TestFiles.h"
#include "document/Document.h"
#include "document/QcReader.h"
#include "document/QcWriter.h"
#include "document/ReaderHost.h"
#include "document/ScriptLayout.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace quarle::testing {

// The texts that line(i) gives for i from first to last, one after the other.
template <typename Line> std::string Repeat(int first, int last, Line line) {
    std::string text;
    for (int i = first; i <= last; ++i) {
        text += line(std::to_string(i));
    }
    return text;
}

// A reference part: a mesh with the given texture lines.
inline std::string Smd(const std::vector<std::string>& textures) {
    std::string text = "version 1\nnodes\n0 \"Bone1\" -1\nend\ntriangles\n";
    for (const std::string& t : textures) {
        text += t + "\n0 0 0 0 0 0 0 0 0\n";
    }
    return text + "end\n";
}

// Answers questions from a queue, records every question, and fails the test
// on a question it has no answer for (unless told to keep everything).
class ScriptedHost : public ReaderHost {
public:
    struct Question {
        std::string Kind; // "dir" or "part"
        std::string Path;
        std::string Extra;
        FolderQuestion What = FolderQuestion::ModelPath;
    };

    explicit ScriptedHost(Document& doc) : doc_(doc) {}
    ~ScriptedHost() override {
        EXPECT_TRUE(answers_.empty()) << answers_.size() << " answers left over";
    }

    // Answers the next question with this text ("0" refuses).
    void Answer(std::string answer) { answers_.push_back(std::move(answer)); }
    // Questions without a queued answer keep what the script wrote.
    bool KeepUnanswered = false;

    std::vector<Question> Questions;
    std::vector<std::string> Animations; // LstAnimations
    std::vector<std::pair<ReadProblem, std::string>> Problems;
    int NewDocuments = 0;
    int Finished = 0;

    int ProblemsOf(ReadProblem kind) const {
        return static_cast<int>(std::count_if(Problems.begin(), Problems.end(),
                                              [&](const auto& p) { return p.first == kind; }));
    }
    std::vector<ReadProblem> ProblemKinds() const {
        std::vector<ReadProblem> kinds;
        for (const auto& p : Problems) {
            kinds.push_back(p.first);
        }
        return kinds;
    }

    std::string Text(Ids key) override { return std::string("<") + IdsKeyTable[key] + ">"; }

    std::string NewDir(const std::string& oldDir, const std::string& extra,
                       FolderQuestion what) override {
        Questions.push_back({"dir", oldDir, extra, what});
        if (answers_.empty() && KeepUnanswered) {
            return what == FolderQuestion::IncludeFile
                       ? std::filesystem::path(oldDir).parent_path().string()
                       : oldDir;
        }
        return Next(oldDir);
    }

    std::string PickPartFile(const std::string& missingFile, const std::string& extra,
                             const std::string&) override {
        Questions.push_back({"part", missingFile, extra, FolderQuestion::ModelPath});
        return answers_.empty() && KeepUnanswered ? missingFile : Next(missingFile);
    }

    void NewDocument() override {
        ++NewDocuments;
        Animations.clear();
        InitVars(doc_);
    }
    void AddAnimation(const std::string& name) override { Animations.push_back(name); }
    void Problem(ReadProblem kind, const std::string& detail) override {
        Problems.emplace_back(kind, detail);
    }
    void LoadFinished() override { ++Finished; }

private:
    std::string Next(const std::string& path) {
        if (answers_.empty()) {
            ADD_FAILURE() << "unexpected question about \"" << path << "\"";
            return Refused;
        }
        std::string answer = answers_.front();
        answers_.pop_front();
        return answer;
    }

    Document& doc_;
    std::deque<std::string> answers_;
};

// The document as the writer puts it.
inline std::string Script(const Document& doc, char separator = '.') {
    std::ostringstream out;
    WriteQcScript(doc, out, separator);
    return out.str();
}

// A document, a host and a folder with a model folder m/ of reference parts
// (head: a.bmp; arm: b.bmp, c.bmp; leg: A.BMP, d.bmp), an animation, and a
// texture folder tex/: loads script texts as the open command does.
struct Model {
    TempDir Dir;
    std::unique_ptr<Document> Doc = std::make_unique<Document>();
    ScriptedHost Host{*Doc};

    Model() {
        Dir.Write("m/head.smd", Smd({"a.bmp"}));
        Dir.Write("m/arm.smd", Smd({"b.bmp", "c.bmp"}));
        Dir.Write("m/leg.smd", Smd({"A.BMP", "d.bmp"}));
        Dir.Write("m/walk.smd", "version 1\nskeleton\ntime 0\nend\n");
        Dir.Write("tex/a.bmp", "BM");
    }
    std::string M() const { return Dir / "m"; }
    // The head of a script whose folders exist.
    std::string Paths() const {
        return "$cd \"" + M() + "\"\n$cdtexture \"" + Dir / "tex" + "\"\n";
    }

    // Writes the script as model.qc in the test's folder and reads it.
    ReadOutcome Load(const std::string& script) { return LoadFile(Dir.Write("model.qc", script)); }
    ReadOutcome LoadFile(const std::string& path) {
        InitVars(*Doc);
        Doc->QcFile = path;
        // Every load lists its findings: the document must come out the same.
        Findings.clear();
        return ReadQcFile(*Doc, Host, Dir.Path(), &Findings);
    }
    LoadFindings Findings;
    std::string Written() const { return Script(*Doc); }
};

// Makes a save write every record anew, as if the user had changed it, with
// the values it holds: the snapshot of each, not the record, is changed.
inline void WriteAllAnew(Document& doc) {
    if (!doc.Layout) {
        return;
    }
    for (auto& group : doc.Anims) {
        for (std::size_t s = 0; s <= limits::LastWrittenAnimSlot; ++s) {
            AnimRec& anim = group[s];
            if (anim.From.Read) {
                auto source = std::make_shared<SequenceSource>(*anim.From.Read);
                source->Values.Loop = 2; // a flag is 0 or 1
                anim.From.Read = std::move(source);
            }
        }
    }
    for (BodyGroupRec& group : doc.BodyGroups) {
        if (group.From.Read) {
            auto source = std::make_shared<BodyGroupSource>(*group.From.Read);
            source->Values.Name = "\x01";
            group.From.Read = std::move(source);
        }
    }
    auto layout = std::make_shared<ScriptLayout>(*doc.Layout);
    for (AttachmentRead& a : layout->Attachments) {
        a.Bone = "\x01";
    }
    for (ControllerRead& c : layout->Controllers) {
        c.Bone = "\x01";
    }
    SettingsRead& s = layout->Settings;
    s.ModelScale = s.Gamma = s.EyeX = -1.0e30f;
    s.SequenceGroupSize = -32768;
    for (RenderModeRead& mode : layout->RenderModes) {
        mode.Mode = 3;
    }
    if (layout->TextureGroup) {
        layout->TextureGroup->Table[limits::LastTextureRow][1] = "\x01";
    }
    doc.Layout = std::move(layout);
}

// The lines of a written script that start with prefix, each ended by LF.
inline std::string LinesOf(const std::string& text, std::string_view prefix) {
    std::string found;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (line.starts_with(prefix)) {
            found += line + "\n";
        }
    }
    return found;
}

// The text without its third line, the maker's notice of the writer's head.
inline std::string WithoutNotice(const std::string& text) {
    std::size_t start = 0;
    for (int i = 1; i < 3 && start != std::string::npos; ++i) {
        start = text.find('\n', start);
        start = start == std::string::npos ? start : start + 1;
    }
    const std::size_t end = start == std::string::npos ? start : text.find('\n', start);
    return end == std::string::npos ? text : text.substr(0, start) + text.substr(end + 1);
}

// The model of the writer's example script: two body groups, one attachment,
// two textures with one variation, one masked texture, two animations in two
// sequence groups; folders m and tex, the model named m\robot.mdl.
inline void FillRobot(Document& d, const std::string& m, const std::string& tex) {
    d.ModelName = m + "\\robot.mdl";
    d.ModelPath = m;
    d.TexturePath = tex;
    d.Gamma = 2.2f;
    d.Attachments[0] = {1, 1.5f, 0.0f, 0.0f};
    d.AttachmentBones[0] = "Bone1";
    d.BodyGroupCount = 2;
    d.BodyGroups[1] = {.Name = "head", .PartCount = 1, .Parts = {"", "head"}};
    d.BodyGroups[2] = {
        .Name = "arms", .PartCount = 2, .Parts = {"", "arm", Blank}, .Reverse = {0, -1}};
    d.TextureModes[2] = {"b.bmp", 1};
    d.TextureCount = 2;
    d.TextureVariations[1][1] = "a.bmp";
    d.TextureVariations[1][2] = "b.bmp";
    d.TextureVariations[2][1] = "c.bmp";
    d.Anims[0][0].Name = d.Anims[0][0].SmdFile = "idle";
    d.Anims[0][0].Loop = 1;
    d.Anims[0][0].ActivityId = "ACT_ARM 1";
    d.Anims[1][0].Name = d.Anims[1][0].SmdFile = "walk";
    d.Anims[1][0].Fps = 24;
}

// Every directive, option and number form of the dialect in use, with the
// parts of a Model (whose scan gives a, b, c, d), and what the writer leaves
// out: an inactive attachment, mode 3 and slot 11 of the render modes, a cell
// past TextureCount and row 11 of the variations, a blend file without
// BlendOn, an event past EventCount, slot 101, and group 2 without slot 0.
inline void FillEverything(Document& d, const std::string& name, const std::string& m,
                           const std::string& tex) {
    d.ModelName = name;
    d.ModelPath = m;
    d.TexturePath = tex;
    d.ModelScale = 1.5f;
    d.Gamma = 2.2f;
    d.ExternalTextures = d.EyesOn = 1;
    d.EyeX = 1.0f;
    d.EyeY = -2.5f;
    d.EyeZ = 64.0f;
    d.Attachments = {{{1, 1.5f, 0.0f, -2.0f}, {0, 5.0f, 5.0f, 5.0f}, {1, 0.0f, 0.0f, 0.0f}, {}}};
    d.AttachmentBones = {"Bip01 R Hand", "off", "Bone2", ""};
    d.Controllers = {{{}, {1, 2.0f, -30.0f, 30.5f}, {}, {1, 0.0f, -1.5f, 0.0f}}};
    d.ControllerBones = {"", "Bip01 Head", "", "Bone3"};
    d.SequenceGroupSize = 64;

    d.BodyGroupCount = 3;
    // A one-part group loses its reverse: $body has none.
    d.BodyGroups[1] = {.Name = "head", .PartCount = 1, .Parts = {"", "head"}, .Reverse = {0, -1}};
    d.BodyGroups[2] = {
        .Name = "arms", .PartCount = 3, .Parts = {"", "arm", Blank, "leg"}, .Reverse = {0, -1}};
    d.BodyGroups[3] = {.Name = "none"};

    d.TextureModes[2] = {"b.bmp", 1};
    d.TextureModes[3] = {"c.bmp", 3};
    d.TextureModes[4] = {"d.bmp", 2};
    d.TextureModes[11] = {"a.bmp", 1};
    d.TextureCount = 4;
    d.TextureVariations[1] = {"", "a.bmp", "b.bmp", "c.bmp", "d.bmp"};
    d.TextureVariations[2][2] = "b2.bmp";
    d.TextureVariations[3][5] = "e3.bmp";
    d.TextureVariations[4][1] = "a4.bmp";
    d.TextureVariations[4][4] = "d4.bmp";
    d.TextureVariations[11][1] = "a11.bmp";

    d.Anims[0][0] = {.Fps = 24,
                     .Loop = 1,
                     .FrameLimit = 1,
                     .FrameStart = 0,
                     .FrameEnd = 20,
                     .OriginOn = 1,
                     .OriginX = 1,
                     .OriginY = -2,
                     .OriginZ = 3,
                     .LX = 1,
                     .LY = 1,
                     .LZ = 1,
                     .Scale = 2.0f,
                     .EventCount = 3,
                     .SmdFile = "walk",
                     .Events = {},
                     .BlendFile = "walk2",
                     .BlendOn = 1,
                     .BlendAxis = 1.0f,
                     .BlendMin = -45.0f,
                     .BlendMax = 45.5f,
                     .Name = "walk",
                     .ActivityId = "ACT_WALK 1",
                     .Rotate = 90.0f};
    d.Anims[0][0].Events[1] = {3, 5001, "12"};
    d.Anims[0][0].Events[2] = {7, 5002, ""};
    d.Anims[0][0].Events[3] = {9, 5004, "common/a b.wav"};
    d.Anims[0][0].Events[4] = {1, 1, "beyond EventCount"};
    AnimRec& idle = d.Anims[0][1];
    idle.Name = idle.SmdFile = "idle";
    idle.Rotate = 1.0f / 3.0f;
    idle.LX = 1;
    idle.BlendFile = "off";
    for (auto [g, s, n] : {std::tuple{0, 2, "plain"}, {1, 0, "g1"}, {2, 1, "late"}}) {
        d.Anims[g][s].Name = d.Anims[g][s].SmdFile = n;
    }
    d.Anims[0][101].Name = "beyond";
    d.Anims[1][0].Fps = 10;
}

} // namespace quarle::testing
