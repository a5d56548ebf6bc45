#include "compile/CompilerSmd.h"

#include "compile/CompilerText.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace quarle::compile {

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr std::size_t LineBuffer = 1024; // the compiler's line buffer, with its NUL

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

// One line as the compiler's fgets hands it over: up to its line end (kept,
// as "\n"), at most 1023 bytes, CR LF read as LF. What follows a NUL byte is
// not seen by the string functions that read the line.
struct SourceLine {
    std::string_view Text; // without the line end, up to a NUL
    bool LineEnd = false;  // the line ends in "\n" (and holds no NUL)
};

class Lines {
public:
    explicit Lines(std::string_view text) : text_(text) {}

    // The next line; false at the end of the text.
    bool Next(SourceLine& line) {
        if (pos_ >= text_.size()) {
            return false;
        }
        ++count_;
        std::size_t end = text_.find('\n', pos_);
        bool lineEnd = end != std::string_view::npos;
        if (!lineEnd) {
            end = text_.size();
        }
        std::size_t contentEnd = end;
        if (lineEnd && contentEnd > pos_ && text_[contentEnd - 1] == '\r') {
            --contentEnd;
        }
        // The buffer holds 1023 bytes with the line end.
        const std::size_t room = LineBuffer - 1 - (lineEnd ? 1 : 0);
        std::size_t next = lineEnd ? end + 1 : end;
        if (contentEnd - pos_ > room) {
            contentEnd = pos_ + LineBuffer - 1;
            next = contentEnd;
            lineEnd = false;
        }
        std::string_view content = text_.substr(pos_, contentEnd - pos_);
        if (const std::size_t nul = content.find('\0'); nul != std::string_view::npos) {
            content = content.substr(0, nul);
            lineEnd = false;
        }
        line = {content, lineEnd};
        pos_ = next;
        return true;
    }

    int Count() const { return count_; }

private:
    std::string_view text_;
    std::size_t pos_ = 0;
    int count_ = 0;
};

// Reads a line the way scanf reads it: each number or word starts after
// blanks and ends where the next character cannot belong to it.
class Scan {
public:
    explicit Scan(std::string_view s) : s_(s) {}

    // True when only blanks are left: scanf then reports the end of input.
    bool AtEnd() {
        SkipSpace();
        return i_ >= s_.size();
    }

    std::optional<int> Int() {
        SkipSpace();
        return ReadCInt(s_, i_);
    }

    std::optional<float> Float() {
        SkipSpace();
        return ReadCNumber<float>(s_, i_);
    }

    std::optional<std::string_view> Word() {
        SkipSpace();
        const std::size_t start = i_;
        while (i_ < s_.size() && !IsSpace(s_[i_])) {
            ++i_;
        }
        if (i_ == start) {
            return std::nullopt;
        }
        return s_.substr(start, i_ - start);
    }

    bool Literal(char c) {
        if (i_ < s_.size() && s_[i_] == c) {
            ++i_;
            return true;
        }
        return false;
    }

    // One or more characters other than stop.
    std::optional<std::string_view> Until(char stop) {
        const std::size_t start = i_;
        while (i_ < s_.size() && s_[i_] != stop) {
            ++i_;
        }
        if (i_ == start) {
            return std::nullopt;
        }
        return s_.substr(start, i_ - start);
    }

    void SkipSpace() {
        while (i_ < s_.size() && IsSpace(s_[i_])) {
            ++i_;
        }
    }

private:
    std::string_view s_;
    std::size_t i_ = 0;
};

// "%d %f %f %f %f %f %f": how many of the seven it reads, or -1 for a line
// that holds nothing.
int ReadPose(std::string_view line, int& index, Vec3& pos, Vec3& rot) {
    Scan scan(line);
    if (scan.AtEnd()) {
        return -1;
    }
    const auto i = scan.Int();
    if (!i) {
        return 0;
    }
    index = *i;
    for (int k = 0; k < 6; ++k) {
        const auto v = scan.Float();
        if (!v) {
            return 1 + k;
        }
        (k < 3 ? pos : rot)[static_cast<std::size_t>(k % 3)] = *v;
    }
    return 7;
}

// "%s %d": the word and the number behind it change only when the line has
// them; a blank line leaves both as they were.
void ReadCommand(std::string_view line, std::string& word, int& number) {
    Scan scan(line);
    if (const auto w = scan.Word()) {
        word.assign(*w);
        if (const auto n = scan.Int()) {
            number = *n;
        }
    }
}

void ClipRotations(Vec3& rot) {
    // The compiler turns back one turn at a time. Far out, a turn no longer
    // changes a float and the loop would never end (the compiler hangs
    // there); such a value is taken back at once instead.
    constexpr double FarOut = Pi * 2 * 4096;
    for (float& r : rot) {
        if (!std::isfinite(r) || std::fabs(static_cast<double>(r)) > FarOut) {
            r = static_cast<float>(std::remainder(static_cast<double>(r), Pi * 2));
        }
        while (static_cast<double>(r) >= Pi) {
            r = static_cast<float>(static_cast<double>(r) - Pi * 2);
        }
        while (static_cast<double>(r) < -Pi) {
            r = static_cast<float>(static_cast<double>(r) + Pi * 2);
        }
    }
}

bool InTable(int index) {
    return index >= 0 && index < MaxSourceBones;
}

class Reader {
public:
    Reader(std::string_view text, const SmdReadOptions& options, std::vector<SmdFinding>& findings,
           std::vector<CompilerNode>& nodes)
        : lines_(text), options_(options), findings_(findings), nodes_(nodes) {
        nodes_.assign(MaxSourceBones, CompilerNode{});
    }

    void Finding(SmdFindingKind kind, int line, std::string detail = {}, std::string detail2 = {}) {
        findings_.push_back({kind, line, std::move(detail), std::move(detail2), repeatLine_});
        stopped_ = stopped_ || IsFatal(kind);
    }

    bool Stopped() const { return stopped_; }

    // The top of the file: the word of each line picks what follows; a blank
    // line repeats the word before.
    template <class Dispatch> void Top(Dispatch&& dispatch) {
        SourceLine line;
        std::string word;
        int number = 0;
        while (!stopped_ && lines_.Next(line)) {
            Scan probe(line.Text);
            const bool blank = probe.AtEnd();
            ReadCommand(line.Text, word, number);
            repeatLine_ = blank ? lines_.Count() : 0;
            if (word == "version") {
                if (number != 1) {
                    Finding(SmdFindingKind::BadVersion, lines_.Count(), std::to_string(number));
                }
            } else {
                dispatch(word);
            }
            repeatLine_ = 0;
        }
    }

    // Returns the file's bone count after this block: the last index plus one.
    int Nodes() {
        if (++nodeBlocks_ > 1) {
            Finding(SmdFindingKind::NodesReadAgain, lines_.Count());
        }
        int last = 0;
        SourceLine line;
        while (lines_.Next(line)) {
            Scan scan(line.Text);
            const auto index = scan.Int();
            scan.SkipSpace();
            std::optional<std::string_view> name;
            std::optional<int> parent;
            if (index && scan.Literal('"')) {
                name = scan.Until('"');
                if (name && scan.Literal('"')) {
                    parent = scan.Int();
                }
            }
            if (!parent) {
                return last + 1;
            }
            if (!InTable(*index)) {
                Finding(SmdFindingKind::IndexOutOfRange, lines_.Count(), std::to_string(*index));
                return last + 1;
            }
            CompilerNode& node = nodes_[static_cast<std::size_t>(*index)];
            node.Name.assign(name->substr(0, 64));
            node.Parent = *parent;
            last = *index;
            for (const std::string& mirrored : options_.Mirrored) {
                if (node.Name == mirrored) {
                    node.Mirrored = true;
                }
            }
            if (!node.Mirrored && *parent != -1 && InTable(*parent)) {
                node.Mirrored = nodes_[static_cast<std::size_t>(*parent)].Mirrored;
            }
        }
        Finding(SmdFindingKind::NodesCutShort, lines_.Count());
        return 0;
    }

    // A reference's skeleton: every pose line sets its bone, the last frame
    // wins; it ends at "end" or with the file.
    void ReferenceSkeleton(std::vector<BonePose>& skeleton) {
        SourceLine line;
        std::string word;
        int number = 0;
        bool warned = false;
        while (lines_.Next(line)) {
            int index = 0;
            BonePose pose;
            if (ReadPose(line.Text, index, pose.Pos, pose.Rot) == 7) {
                if (!InTable(index)) {
                    Finding(SmdFindingKind::IndexOutOfRange, lines_.Count(), std::to_string(index));
                    return;
                }
                for (float& v : pose.Pos) {
                    v = v * options_.Scale;
                }
                if (nodes_[static_cast<std::size_t>(index)].Mirrored) {
                    for (float& v : pose.Pos) {
                        v = -v;
                    }
                }
                ClipRotations(pose.Rot);
                skeleton[static_cast<std::size_t>(index)] = pose;
                continue;
            }
            ReadCommand(line.Text, word, number);
            if (word == "end") {
                return;
            }
            if (word == "triangles" && !warned) {
                Finding(SmdFindingKind::SkeletonSwallowsTriangles, lines_.Count());
                warned = true;
            }
        }
    }

    void Triangles(ReferenceSmd& out, int numBones) {
        if (!snapshot_) {
            out.Skeleton = skeleton_;
            snapshot_ = true;
        }
        SourceLine line;
        while (lines_.Next(line)) {
            if (line.LineEnd && line.Text == "end") {
                return;
            }
            std::string_view name = line.Text;
            while (!name.empty() && (static_cast<unsigned char>(name.back()) <= 32 ||
                                     static_cast<unsigned char>(name.back()) >= 127)) {
                name.remove_suffix(1);
            }
            if (name.empty()) {
                // The compiler skips the three lines below an empty name.
                for (int k = 0; k < 3 && lines_.Next(line); ++k) {
                }
                continue;
            }
            CompilerTriangle tri;
            tri.Texture = TextureIndex(out, name);
            tri.Line = lines_.Count();
            for (CompilerCorner& corner : tri.Corners) {
                corner.Bone = -1; // not read: the file ended
                if (!lines_.Next(line)) {
                    continue;
                }
                if (!ReadCorner(line.Text, corner)) {
                    Finding(SmdFindingKind::BadTriangleLine, lines_.Count());
                    return;
                }
                if (corner.Bone < 0 || corner.Bone >= numBones) {
                    Finding(SmdFindingKind::CornerBoneOutside, lines_.Count(),
                            std::to_string(corner.Bone), std::to_string(numBones));
                    return;
                }
            }
            out.Triangles.push_back(tri);
        }
    }

    // An animation's skeleton: the poses of the frames in range. Returns
    // false when the compiler stops in it.
    bool AnimationSkeleton(AnimationSmd& out, std::vector<std::pair<int, std::pair<int, BonePose>>>& poses) {
        poses.clear();
        int frame = -99999999;
        int first = 99999;
        int last = 0;
        int index = 0;
        std::string word;
        const float cz = static_cast<float>(std::cos(static_cast<double>(options_.ZRotation)));
        const float sz = static_cast<float>(std::sin(static_cast<double>(options_.ZRotation)));
        SourceLine line;
        while (lines_.Next(line)) {
            BonePose pose;
            const int read = ReadPose(line.Text, index, pose.Pos, pose.Rot);
            if (read == 7) {
                if (frame < options_.FirstFrame || frame > options_.LastFrame) {
                    continue;
                }
                if (!InTable(index) || index >= out.NumBones) {
                    Finding(SmdFindingKind::PoseBoneOutside, lines_.Count(), std::to_string(index));
                    return false;
                }
                if (frame < 0 || frame > MaxFrameNumber) {
                    Finding(SmdFindingKind::FrameOutside, lines_.Count(), std::to_string(frame));
                    return false;
                }
                const CompilerNode& node = nodes_[static_cast<std::size_t>(index)];
                if (node.Parent == -1) {
                    Vec3 p = pose.Pos;
                    for (std::size_t k = 0; k < 3; ++k) {
                        p[k] = p[k] - options_.Adjust[k];
                    }
                    pose.Pos = {cz * p[0] - sz * p[1], sz * p[0] + cz * p[1], p[2]};
                    pose.Rot[2] += options_.ZRotation;
                }
                last = std::max(last, frame);
                first = std::min(first, frame);
                if (node.Mirrored) {
                    for (float& v : pose.Pos) {
                        v = -v;
                    }
                }
                for (float& v : pose.Pos) {
                    v = v * options_.Scale;
                }
                ClipRotations(pose.Rot);
                poses.push_back({index, {frame, pose}});
                continue;
            }
            // A line that is not all seven numbers: the word and number of
            // "%s %d", where index keeps what the pose pattern read of it.
            Scan scan(line.Text);
            if (const auto w = scan.Word()) {
                word.assign(*w);
                if (const auto n = scan.Int()) {
                    index = *n;
                }
            }
            if (word == "time") {
                frame = index;
            } else if (word == "end") {
                out.HasFrames = first <= last;
                out.FirstFrame = first;
                out.LastFrame = last;
                return true;
            } else {
                Finding(SmdFindingKind::BadPoseLine, lines_.Count());
                return false;
            }
        }
        Finding(SmdFindingKind::AnimationCutShort, lines_.Count());
        return false;
    }

    // Skips lines up to one that begins with "end"; true when a skipped line
    // opened a block.
    bool SkipToEnd() {
        bool block = false;
        SourceLine line;
        while (lines_.Next(line)) {
            if (line.Text.starts_with("end")) {
                break;
            }
            Scan scan(line.Text);
            if (const auto w = scan.Word(); w && (*w == "nodes" || *w == "skeleton")) {
                block = true;
            }
        }
        return block;
    }

    int Line() const { return lines_.Count(); }

    std::vector<BonePose> skeleton_ = std::vector<BonePose>(MaxSourceBones);

private:
    static int TextureIndex(ReferenceSmd& out, std::string_view name) {
        for (std::size_t i = 0; i < out.Textures.size(); ++i) {
            if (EqualsNoCase(out.Textures[i], name)) {
                return static_cast<int>(i);
            }
        }
        out.Textures.emplace_back(name);
        return static_cast<int>(out.Textures.size()) - 1;
    }

    static bool ReadCorner(std::string_view text, CompilerCorner& c) {
        Scan scan(text);
        const auto bone = scan.Int();
        if (!bone) {
            return false;
        }
        c.Bone = *bone;
        float* fields[8] = {&c.Pos[0], &c.Pos[1], &c.Pos[2], &c.Normal[0],
                            &c.Normal[1], &c.Normal[2], &c.U, &c.V};
        for (float* field : fields) {
            const auto v = scan.Float();
            if (!v) {
                return false;
            }
            *field = *v;
        }
        return true;
    }

    Lines lines_;
    const SmdReadOptions& options_;
    std::vector<SmdFinding>& findings_;
    std::vector<CompilerNode>& nodes_;
    int nodeBlocks_ = 0;
    int repeatLine_ = 0;
    bool stopped_ = false;
    bool snapshot_ = false;
};

} // namespace

bool IsFatal(SmdFindingKind kind) {
    return kind != SmdFindingKind::NoSkeleton && kind != SmdFindingKind::NodesReadAgain &&
           kind != SmdFindingKind::SkippedToEnd;
}

ReferenceSmd ReadReferenceSmd(std::string_view text, const SmdReadOptions& options) {
    ReferenceSmd out;
    Reader reader(text, options, out.Findings, out.Nodes);
    reader.Top([&](const std::string& word) {
        if (word == "nodes") {
            out.NumBones = reader.Nodes();
        } else if (word == "skeleton") {
            reader.ReferenceSkeleton(reader.skeleton_);
        } else if (word == "triangles") {
            reader.Triangles(out, out.NumBones);
        }
        // Any other word: the compiler says so and reads on.
    });
    if (out.Skeleton.empty()) {
        out.Skeleton = reader.skeleton_;
    }
    return out;
}

AnimationSmd ReadAnimationSmd(std::string_view text, const SmdReadOptions& options) {
    AnimationSmd out;
    Reader reader(text, options, out.Findings, out.Nodes);
    std::vector<std::pair<int, std::pair<int, BonePose>>> poses;
    bool skeletonRead = false;
    reader.Top([&](const std::string& word) {
        if (word == "nodes") {
            out.NumBones = reader.Nodes();
        } else if (word == "skeleton") {
            out.HasFrames = false;
            if (!reader.AnimationSkeleton(out, poses)) {
                return;
            }
            skeletonRead = true;
            if (!out.HasFrames) {
                reader.Finding(SmdFindingKind::NoFrameInRange, reader.Line());
            }
        } else {
            const int line = reader.Line();
            if (reader.SkipToEnd()) {
                reader.Finding(SmdFindingKind::SkippedToEnd, line, word);
            }
        }
    });
    if (!reader.Stopped() && !skeletonRead) {
        reader.Finding(SmdFindingKind::NoSkeleton, reader.Line());
    }
    if (reader.Stopped() || !out.HasFrames) {
        return out;
    }
    const auto frames = static_cast<std::size_t>(out.LastFrame - out.FirstFrame + 1);
    out.Poses.assign(static_cast<std::size_t>(std::clamp(out.NumBones, 0, MaxSourceBones)),
                     std::vector<BonePose>());
    for (const auto& [bone, timed] : poses) {
        // A nodes block behind the skeleton can leave fewer bones than its
        // poses name; the compiler goes on with the new count.
        if (static_cast<std::size_t>(bone) >= out.Poses.size()) {
            continue;
        }
        std::vector<BonePose>& track = out.Poses[static_cast<std::size_t>(bone)];
        if (track.empty()) {
            track.resize(frames);
        }
        track[static_cast<std::size_t>(timed.first - out.FirstFrame)] = timed.second;
    }
    for (std::vector<BonePose>& track : out.Poses) {
        track.resize(frames);
    }
    return out;
}

} // namespace quarle::compile
