#include "document/SmdReader.h"

#include "document/Paths.h"
#include "document/QcInclude.h"

#include <charconv>
#include <optional>

namespace quarle {

namespace {

bool IsSpace(char c) {
    return c == ' ' || c == '\t';
}

// Words of a line; a word in double quotes runs to the closing quote (or the
// line end) and loses its quotes. The vector is reused from line to line.
void SplitWords(std::string_view line, std::vector<std::string_view>& words) {
    words.clear();
    std::size_t i = 0;
    while (i < line.size()) {
        while (i < line.size() && IsSpace(line[i])) {
            ++i;
        }
        if (i == line.size()) {
            break;
        }
        if (line[i] == '"') {
            const std::size_t start = ++i;
            while (i < line.size() && line[i] != '"') {
                ++i;
            }
            words.push_back(line.substr(start, i - start));
            if (i < line.size()) {
                ++i;
            }
        } else {
            const std::size_t start = i;
            while (i < line.size() && !IsSpace(line[i])) {
                ++i;
            }
            words.push_back(line.substr(start, i - start));
        }
    }
}

// The whole word as a number (a leading '+' allowed), or nothing.
template <class T> std::optional<T> Number(std::string_view word) {
    if (!word.empty() && word.front() == '+') {
        word.remove_prefix(1);
    }
    T value{};
    const auto [end, ec] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (ec != std::errc() || end != word.data() + word.size()) {
        return std::nullopt;
    }
    return value;
}

std::optional<int> Int(std::string_view word) {
    return Number<int>(word);
}

std::optional<float> Float(std::string_view word) {
    return Number<float>(word);
}

// Reads words[first..first+N) as numbers into out; false if any is not one.
template <std::size_t N>
bool Floats(const std::vector<std::string_view>& words, std::size_t first,
            std::array<float, N>& out) {
    for (std::size_t k = 0; k < N; ++k) {
        const auto v = Float(words[first + k]);
        if (!v) {
            return false;
        }
        out[k] = *v;
    }
    return true;
}

std::string_view Trimmed(std::string_view line) {
    while (!line.empty() && IsSpace(line.front())) {
        line.remove_prefix(1);
    }
    while (!line.empty() && IsSpace(line.back())) {
        line.remove_suffix(1);
    }
    return line;
}

enum class Block { None, Nodes, Skeleton, Triangles, Unknown };

class Reader {
public:
    explicit Reader(SmdModel& model) : m_(model) {}

    void Line(std::string_view raw, int number) {
        const std::string_view line = Trimmed(raw);
        if (first_) {
            first_ = false;
            const auto& words = Words(line);
            m_.Version1 = words.size() == 2 && words[0] == "version" && words[1] == "1";
            if (!m_.Version1) {
                Problem(SmdProblemKind::NotVersion1, number);
            }
            if (!words.empty() && words[0] == "version") {
                return;
            }
        }
        if (line.empty() || line.starts_with("//")) {
            return;
        }
        if (block_ == Block::None) {
            Open(line, number);
            return;
        }
        if (line == "end") {
            Close(number);
            return;
        }
        switch (block_) {
        case Block::Nodes:
            Node(line, number);
            break;
        case Block::Skeleton:
            Skeleton(line, number);
            break;
        case Block::Triangles:
            Triangle(line, number);
            break;
        default:
            break;
        }
    }

    void Finish(int lastLine) {
        if (block_ != Block::None) {
            Close(lastLine);
            Problem(SmdProblemKind::BlockNotClosed, lastLine);
        }
    }

private:
    const std::vector<std::string_view>& Words(std::string_view line) {
        SplitWords(line, words_);
        return words_;
    }

    void Problem(SmdProblemKind kind, int line) { m_.Problems.push_back({kind, line}); }

    void Open(std::string_view line, int number) {
        const auto& words = Words(line);
        const std::string_view word = words.empty() ? std::string_view() : words[0];
        if (word == "nodes") {
            block_ = Block::Nodes;
        } else if (word == "skeleton") {
            block_ = Block::Skeleton;
        } else if (word == "triangles") {
            block_ = Block::Triangles;
        } else if (words.size() == 1 && word != "end") {
            block_ = Block::Unknown; // a block of a later format: skipped to its end
        } else {
            Problem(SmdProblemKind::BadLine, number);
        }
    }

    void Close(int number) {
        if (block_ == Block::Triangles && corner_ >= 0) {
            m_.Triangles.pop_back();
            Problem(SmdProblemKind::TriangleCutShort, texLine_);
        }
        corner_ = -1;
        (void)number;
        block_ = Block::None;
    }

    void Node(std::string_view line, int number) {
        const auto& words = Words(line);
        const auto index = words.size() >= 3 ? Int(words[0]) : std::nullopt;
        const auto parent = words.size() >= 3 ? Int(words[2]) : std::nullopt;
        if (!index || !parent) {
            Problem(SmdProblemKind::BadLine, number);
            return;
        }
        m_.Nodes.push_back({*index, std::string(words[1]), *parent});
    }

    void Skeleton(std::string_view line, int number) {
        const auto& words = Words(line);
        if (!words.empty() && words[0] == "time") {
            const auto time = words.size() >= 2 ? Int(words[1]) : std::nullopt;
            if (!time) {
                Problem(SmdProblemKind::BadLine, number);
                frameOpen_ = false;
                return;
            }
            m_.Frames.push_back({*time, {}});
            frameOpen_ = true;
            return;
        }
        SmdBonePose pose;
        const auto bone = words.size() >= 7 ? Int(words[0]) : std::nullopt;
        if (!frameOpen_ || !bone || !Floats(words, 1, pose.Position) ||
            !Floats(words, 4, pose.Rotation)) {
            Problem(SmdProblemKind::BadLine, number);
            return;
        }
        pose.Bone = *bone;
        m_.Frames.back().Bones.push_back(pose);
    }

    void Triangle(std::string_view line, int number) {
        const auto& words = Words(line);
        SmdVertex v;
        const auto bone = words.size() >= 9 ? Int(words[0]) : std::nullopt;
        const bool vertex = bone && Floats(words, 1, v.Position) && Floats(words, 4, v.Normal) &&
                            Floats(words, 7, v.Uv);
        if (corner_ == -2) {
            if (vertex) {
                return; // the rest of a dropped triangle
            }
            corner_ = -1;
        }
        if (corner_ == -1) {
            // A texture name: the whole line.
            m_.Triangles.push_back({std::string(line), {}});
            corner_ = 0;
            texLine_ = number;
            return;
        }
        if (!vertex) {
            // The triangle cannot be whole: drop it. A short line is taken as
            // the texture of the next one; anything else is skipped with the
            // rest of this triangle.
            m_.Triangles.pop_back();
            if (words.size() < 9) {
                Problem(SmdProblemKind::TriangleCutShort, texLine_);
                m_.Triangles.push_back({std::string(line), {}});
                corner_ = 0;
                texLine_ = number;
            } else {
                Problem(SmdProblemKind::BadLine, number);
                corner_ = -2;
            }
            return;
        }
        v.Bone = *bone;
        m_.Triangles.back().Vertices[static_cast<std::size_t>(corner_)] = v;
        if (++corner_ == 3) {
            corner_ = -1;
        }
    }

    SmdModel& m_;
    std::vector<std::string_view> words_;
    bool first_ = true;
    Block block_ = Block::None;
    bool frameOpen_ = false;
    int corner_ = -1; // -1: a texture line comes next; -2: skipping a broken triangle
    int texLine_ = 0;
};

} // namespace

std::string_view SmdModel::BoneName(int index) const {
    for (const SmdNode& node : Nodes) {
        if (node.Index == index) {
            return node.Name;
        }
    }
    return {};
}

SmdModel ReadSmdText(std::string_view text) {
    SmdModel model;
    model.Readable = true;
    Reader reader(model);
    int number = 0;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = start;
        while (end < text.size() && text[end] != '\n' && text[end] != '\r') {
            ++end;
        }
        reader.Line(text.substr(start, end - start), ++number);
        if (end < text.size() && text[end] == '\r' && end + 1 < text.size() &&
            text[end + 1] == '\n') {
            ++end;
        }
        start = end + 1;
    }
    if (number == 0) {
        reader.Line({}, ++number); // an empty file lacks its version line too
    }
    reader.Finish(number);
    return model;
}

SmdModel ReadSmdFile(const std::string& path) {
    OpenProblem problem;
    const std::optional<std::string> text = ReadFileText(path, FileKind::Smd, &problem);
    if (!text) {
        SmdModel model;
        model.Problems.push_back({SmdProblemKind::Unreadable, 0});
        model.Unread = std::move(problem);
        return model;
    }
    return ReadSmdText(*text);
}

} // namespace quarle
