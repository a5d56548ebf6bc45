#include "compile/ModelFileChecks.h"

#include "document/BmpHeader.h"
#include "document/Paths.h"
#include "document/SmdReader.h"
#include "document/Text.h"
#include "localisation/Cp1252.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>

namespace quarle::compile {

namespace {

std::string Shown(const std::string& documentText) {
    return Cp1252ToUtf8(documentText);
}

bool EndsWithBmp(std::string_view name) {
    return name.size() > 4 && ToUpper(name.substr(name.size() - 4)) == ".BMP";
}

bool PowerOfTwo(std::int64_t n) {
    return n > 0 && std::has_single_bit(static_cast<std::uint64_t>(n));
}

// Where a file of the script stands on the disk.
struct Found {
    enum { Exact, OtherCase, Missing } How = Missing;
    std::string Path; // the file as it is on the disk (document bytes)
};

Found Locate(const std::string& path) {
    std::error_code ec;
    if (std::filesystem::is_regular_file(paths::ToFsPath(path), ec)) {
        return {Found::Exact, path};
    }
    if (const auto other = paths::Resolve(path); other && paths::FileExists(*other)) {
        // The program names files without their ending, so an ending in
        // other capitals ("Shoot.SMD") is no one's mistake.
        const std::size_t stem = path.size() >= 4 ? path.size() - 4 : 0;
        const bool onlyEnding =
            other->size() == path.size() && other->compare(0, stem, path, 0, stem) == 0;
        return {onlyEnding ? Found::Exact : Found::OtherCase, *other};
    }
    return {};
}

// A vertex or normal of a part, as the compiler tells them apart: the same
// place on the same bone is one. Counted by sorting, which is far cheaper
// than a hash set for the tens of thousands of corners of a large part.
struct PointKey {
    int Bone;
    std::array<std::uint32_t, 3> At; // the bits of the floats

    auto operator<=>(const PointKey&) const = default;
};
PointKey Key(int bone, const std::array<float, 3>& at) {
    PointKey key{bone, {}};
    for (std::size_t k = 0; k < 3; ++k) {
        key.At[k] = std::bit_cast<std::uint32_t>(at[k] + 0.0f); // -0 and 0 are one place
    }
    return key;
}
std::size_t Distinct(std::vector<PointKey>& keys) {
    std::sort(keys.begin(), keys.end());
    return static_cast<std::size_t>(std::unique(keys.begin(), keys.end()) - keys.begin());
}

// How much of each texture the triangles use.
struct TextureUse {
    std::string Name;     // as the first mesh wrote it
    std::string FirstSmd; // the mesh that uses it first
    float MinU = 0, MaxU = 0, MinV = 0, MaxV = 0;
    bool Any = false;
};

class FileChecks {
public:
    FileChecks(const Document& doc, const MessageTexts& texts, const AddRowFn& add)
        : doc_(doc), texts_(texts), add_(add) {}

    void Run() {
        for (int g = 1; g <= std::min<int>(doc_.BodyGroupCount, limits::LastBodyGroup); ++g) {
            const BodyGroupRec& group = doc_.BodyGroups[g];
            for (int p = 1; p <= std::min<int>(group.PartCount, limits::LastPart); ++p) {
                if (!group.Parts[p].empty() && group.Parts[p] != Blank) {
                    Reference(group.Parts[p]);
                }
            }
        }
        for (int g = 0; g <= limits::LastSequenceGroup; ++g) {
            for (int s = 0; s <= limits::LastWrittenAnimSlot; ++s) {
                const AnimRec& anim = doc_.Anims[g][s];
                if (anim.Name.empty()) {
                    continue;
                }
                Sequence(anim, anim.SmdFile);
                if (anim.BlendOn == 1) {
                    Sequence(anim, anim.BlendFile);
                }
            }
        }
        ModelLimits();
        Textures();
        Bones();
    }

private:
    std::string Text(Msg id, const std::vector<std::string>& args) const {
        return FormatMessage(texts_[static_cast<std::size_t>(id)], args);
    }
    void Error(Msg id, const std::vector<std::string>& args) {
        add_(Text(id, args), RowKind::Error);
    }
    void Warning(Msg id, const std::vector<std::string>& args) {
        add_(Text(id, args), RowKind::Warning);
    }

    std::string SmdPath(const std::string& name) const {
        return paths::Join(doc_.ModelPath, paths::ToStyle(name + ".smd"));
    }

    // Reads a mesh or animation file once, with the rows of the file itself
    // (missing, other capitals, version, bones named twice, broken lines).
    // A file used twice (a part that is also a sequence) is read twice, but
    // its rows come once; the files are not all held at the same time.
    std::unique_ptr<SmdModel> Load(const std::string& name) {
        const std::string path = SmdPath(name);
        const bool first = seen_.insert(ToUpper(path)).second;
        const Found found = Locate(path);
        if (found.How == Found::Missing) {
            if (first) {
                Error(MSG_CHECK_SMD_MISSING, {Shown(path)});
            }
            return nullptr;
        }
        auto loaded = std::make_unique<SmdModel>(ReadSmdFile(found.Path));
        const SmdModel& model = *loaded;
        const std::string shown = Shown(found.Path);
        if (!first) {
            return model.Readable ? std::move(loaded) : nullptr;
        }
        if (found.How == Found::OtherCase) {
            Warning(MSG_CHECK_FILE_OTHER_CASE, {Shown(path), Shown(found.Path)});
        }
        if (!model.Readable) {
            Error(MSG_CHECK_SMD_UNREADABLE, {shown});
            return nullptr;
        }
        if (!model.Version1) {
            Error(MSG_CHECK_SMD_VERSION, {shown});
        }
        std::set<std::string_view> names;
        for (const SmdNode& node : model.Nodes) {
            if (!names.insert(node.Name).second) {
                Error(MSG_CHECK_SMD_BONE_TWICE, {shown, Shown(node.Name)});
            }
        }
        // Lines the compiler may read otherwise: one row for the first.
        for (const SmdProblem& problem : model.Problems) {
            if (problem.Kind != SmdProblemKind::NotVersion1) {
                Warning(MSG_CHECK_SMD_BAD_LINE, {shown, std::to_string(problem.Line)});
                break;
            }
        }
        return loaded;
    }

    void Reference(const std::string& part) {
        const std::unique_ptr<SmdModel> model = Load(part);
        allPartsRead_ = allPartsRead_ && model != nullptr;
        if (!model || !counted_.insert(ToUpper(SmdPath(part))).second) {
            return;
        }
        const std::string shown = Shown(SmdPath(part));
        for (const SmdNode& node : model->Nodes) {
            modelBones_.insert(ToUpper(node.Name));
        }
        std::vector<PointKey> vertices;
        std::vector<PointKey> normals;
        vertices.reserve(model->Triangles.size() * 3);
        normals.reserve(model->Triangles.size() * 3);
        for (const SmdTriangle& tri : model->Triangles) {
            TextureUse& use = Texture(tri.Texture, shown);
            for (const SmdVertex& v : tri.Vertices) {
                vertices.push_back(Key(v.Bone, v.Position));
                normals.push_back(Key(v.Bone, v.Normal));
                if (!use.Any) {
                    use.MinU = use.MaxU = v.Uv[0];
                    use.MinV = use.MaxV = v.Uv[1];
                    use.Any = true;
                }
                use.MinU = std::min(use.MinU, v.Uv[0]);
                use.MaxU = std::max(use.MaxU, v.Uv[0]);
                use.MinV = std::min(use.MinV, v.Uv[1]);
                use.MaxV = std::max(use.MaxV, v.Uv[1]);
            }
        }
        Limit(shown, Distinct(vertices), studio::MaxVertices, MSG_CHECK_TOO_MANY_VERTICES,
              MSG_CHECK_WORD_VERTICES);
        Limit(shown, Distinct(normals), studio::MaxNormals, MSG_CHECK_TOO_MANY_NORMALS,
              MSG_CHECK_WORD_NORMALS);
        Limit(shown, model->Triangles.size(), studio::MaxTriangles, MSG_CHECK_TOO_MANY_TRIANGLES,
              MSG_CHECK_WORD_TRIANGLES);
    }

    // Over the limit: an error; from nine tenths of it on: a warning.
    void Limit(const std::string& shown, std::size_t count, int limit, Msg over, Msg word) {
        const auto n = static_cast<long>(count);
        if (n > limit) {
            Error(over, {shown, std::to_string(n), std::to_string(limit)});
        } else if (n * 10 >= static_cast<long>(limit) * 9) {
            Warning(MSG_CHECK_NEAR_LIMIT, {shown, std::to_string(n), std::to_string(limit),
                                           texts_[static_cast<std::size_t>(word)]});
        }
    }

    TextureUse& Texture(const std::string& name, const std::string& smd) {
        const std::string key = ToUpper(name);
        const auto it = textureIndex_.find(key);
        if (it != textureIndex_.end()) {
            return textures_[it->second];
        }
        textureIndex_.emplace(key, textures_.size());
        textures_.push_back({name, smd});
        return textures_.back();
    }

    void Sequence(const AnimRec& anim, const std::string& file) {
        const std::unique_ptr<SmdModel> model = Load(file);
        if (!model) {
            return;
        }
        const std::string shown = Shown(SmdPath(file));
        if (model->Frames.empty()) {
            Error(MSG_CHECK_SMD_NO_FRAME, {shown});
            return;
        }
        const std::size_t bytes = AnimationBytes(*model, anim);
        if (bytes > static_cast<std::size_t>(studio::MaxSequenceBytes)) {
            std::size_t frames = 0;
            for (const SmdFrame& f : model->Frames) {
                frames += InRange(anim, f.Time) ? 1 : 0;
            }
            Warning(MSG_CHECK_SEQUENCE_LARGE, {Shown(anim.Name), shown, std::to_string(frames),
                                               std::to_string(model->Nodes.size())});
        }
    }

    static bool InRange(const AnimRec& anim, int time) {
        return anim.FrameLimit != 1 || (time >= anim.FrameStart && time <= anim.FrameEnd);
    }

    // What the sequence's animation data would take if the compiler could
    // fold only runs of equal values: per bone six offsets, and per channel
    // that moves a head and a value for each run. The compiler also folds
    // values that round alike, so the real size can be smaller: a warning.
    static std::size_t AnimationBytes(const SmdModel& model, const AnimRec& anim) {
        std::map<int, std::array<std::vector<float>, 6>> channels;
        for (const SmdNode& node : model.Nodes) {
            channels[node.Index];
        }
        for (const SmdFrame& frame : model.Frames) {
            if (!InRange(anim, frame.Time)) {
                continue;
            }
            for (const SmdBonePose& pose : frame.Bones) {
                auto& c = channels[pose.Bone];
                for (int k = 0; k < 3; ++k) {
                    c[static_cast<std::size_t>(k)].push_back(
                        pose.Position[static_cast<std::size_t>(k)]);
                    c[static_cast<std::size_t>(k) + 3].push_back(
                        pose.Rotation[static_cast<std::size_t>(k)]);
                }
            }
        }
        std::size_t bytes = 0;
        for (const auto& [bone, six] : channels) {
            bytes += 12;
            for (const std::vector<float>& values : six) {
                std::size_t runs = values.empty() ? 0 : 1;
                for (std::size_t i = 1; i < values.size(); ++i) {
                    runs += values[i] != values[i - 1] ? 1 : 0;
                }
                bytes += runs <= 1 ? 4 * runs : 2 * (runs + 1 + runs / 255);
            }
        }
        return bytes;
    }

    void ModelLimits() {
        if (modelBones_.size() > static_cast<std::size_t>(studio::MaxBones)) {
            Error(MSG_CHECK_TOO_MANY_BONES,
                  {std::to_string(modelBones_.size()), std::to_string(studio::MaxBones)});
        }
        if (textures_.size() > static_cast<std::size_t>(studio::MaxTextures)) {
            Error(MSG_CHECK_TOO_MANY_TEXTURES,
                  {std::to_string(textures_.size()), std::to_string(studio::MaxTextures)});
        }
    }

    void Textures() {
        for (const TextureUse& use : textures_) {
            if (!EndsWithBmp(use.Name)) {
                Error(MSG_CHECK_TEXTURE_NOT_BMP, {use.FirstSmd, Shown(use.Name)});
                continue;
            }
            const std::string path = paths::Join(doc_.TexturePath, paths::ToStyle(use.Name));
            const Found found = Locate(path);
            if (found.How == Found::Missing) {
                Error(MSG_CHECK_TEXTURE_MISSING,
                      {use.FirstSmd, Shown(use.Name), Shown(doc_.TexturePath)});
                continue;
            }
            if (found.How == Found::OtherCase) {
                Warning(MSG_CHECK_FILE_OTHER_CASE, {Shown(path), Shown(found.Path)});
            }
            Bitmap(use, Shown(found.Path), ReadBmpFile(found.Path));
        }
    }

    void Bitmap(const TextureUse& use, const std::string& shown, const BmpHeader& h) {
        if (!h.Readable || !h.Bitmap) {
            Error(MSG_CHECK_BMP_NOT_BITMAP, {shown});
            return;
        }
        bool usable = true;
        if (h.InfoSize != 40) {
            Error(MSG_CHECK_BMP_HEADER, {shown, std::to_string(h.InfoSize)});
            usable = false;
        }
        if (h.BitsPerPixel != 8) {
            Error(MSG_CHECK_BMP_DEPTH, {shown, std::to_string(h.BitsPerPixel)});
            usable = false;
        }
        if (h.Compression != 0) {
            Error(MSG_CHECK_BMP_COMPRESSED, {shown});
            usable = false;
        }
        if (usable) {
            const std::uint32_t colours = h.PaletteColours == 0 ? 256 : h.PaletteColours;
            if (h.PaletteRoom() < std::min<std::uint32_t>(colours, 256) || !h.PixelsComplete()) {
                Error(MSG_CHECK_BMP_CUT_SHORT, {shown});
            }
        }
        const std::int64_t width = std::abs(static_cast<std::int64_t>(h.Width));
        const std::int64_t height = std::abs(static_cast<std::int64_t>(h.Height));
        if (!PowerOfTwo(width) || !PowerOfTwo(height)) {
            Warning(MSG_CHECK_BMP_NOT_POWER_OF_TWO,
                    {shown, std::to_string(width), std::to_string(height)});
        }
        if (use.Any) {
            // The part of the bitmap the UVs span; beyond 0..1 it tiles, so
            // the span can be wider than the bitmap. Rows are whole multiples
            // of 4 bytes.
            const double spanU = static_cast<double>(use.MaxU) - use.MinU;
            const double spanV = static_cast<double>(use.MaxV) - use.MinV;
            const auto skinW =
                static_cast<std::int64_t>(std::ceil(spanU * static_cast<double>(width) - 1e-6));
            const auto skinH =
                static_cast<std::int64_t>(std::ceil(spanV * static_cast<double>(height) - 1e-6));
            const std::int64_t rounded = (skinW + 3) / 4 * 4;
            if (rounded * skinH + studio::PaletteBytes > studio::MaxSkinBytes) {
                Error(MSG_CHECK_TEXTURE_TOO_LARGE,
                      {shown, std::to_string(rounded), std::to_string(skinH)});
            }
        }
    }

    // Attachments and controllers need bones that a reference part has.
    // Without a part that could be read nothing is certain.
    void Bones() {
        if (modelBones_.empty() || !allPartsRead_) {
            return;
        }
        for (int i = 0; i <= limits::LastAttachment; ++i) {
            const std::string& bone = doc_.AttachmentBones[static_cast<std::size_t>(i)];
            if (doc_.Attachments[static_cast<std::size_t>(i)].Active == 1 &&
                !modelBones_.contains(ToUpper(bone))) {
                Error(MSG_CHECK_ATTACHMENT_BONE, {std::to_string(i), Shown(bone)});
            }
        }
        for (int i = 0; i <= limits::LastController; ++i) {
            const std::string& bone = doc_.ControllerBones[static_cast<std::size_t>(i)];
            if (doc_.Controllers[static_cast<std::size_t>(i)].Active == 1 &&
                !modelBones_.contains(ToUpper(bone))) {
                Error(MSG_CHECK_CONTROLLER_BONE, {std::to_string(i), Shown(bone)});
            }
        }
    }

    const Document& doc_;
    const MessageTexts& texts_;
    const AddRowFn& add_;
    std::set<std::string> seen_;       // files read, by the path in capitals
    std::set<std::string> counted_;    // reference parts already counted
    std::set<std::string> modelBones_; // in capitals
    bool allPartsRead_ = true;
    std::vector<TextureUse> textures_;
    std::map<std::string, std::size_t> textureIndex_;
};

} // namespace

void CheckModelFiles(const Document& doc, const MessageTexts& texts, const AddRowFn& add) {
    if (doc.ModelPath.empty()) {
        return; // check 5 has said so; nothing can be found
    }
    FileChecks(doc, texts, add).Run();
}

} // namespace quarle::compile
