#include "compile/ModelFileChecks.h"

#include "compile/CompilePlan.h"
#include "compile/CompilerSmd.h"
#include "compile/CompilerText.h"
#include "compile/ModelBuild.h"
#include "document/BmpHeader.h"
#include "document/InputFile.h"
#include "document/Paths.h"
#include "document/QcInclude.h"
#include "localisation/Cp1252.h"

#include <algorithm>
#include <bit>
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

// A path as the rows show it: without the "." and ".." steps that joining
// the script's folder and its folders leaves.
std::string ShownPath(const std::string& path) {
    return Cp1252ToUtf8(paths::FromFsPath(paths::ToFsPath(path).lexically_normal()));
}

bool PowerOfTwo(std::int64_t n) {
    return n > 0 && std::has_single_bit(static_cast<std::uint64_t>(n));
}

// Where a file the compiler opens stands on the disk: the compiler's own
// file system ignores capitals.
struct Found {
    enum { Exact, OtherCase, Missing } How = Missing;
    std::string Path; // the file as it is on the disk (document bytes)
};

Found Locate(const std::string& path) {
    std::error_code ec;
    if (std::filesystem::exists(paths::ToFsPath(path), ec)) {
        return {Found::Exact, path};
    }
    if (const auto other = paths::Resolve(path)) {
        // Names are written without their ending, so an ending in other
        // capitals ("Shoot.SMD") is no one's mistake.
        const std::size_t stem = path.size() >= 4 ? path.size() - 4 : 0;
        const bool onlyEnding =
            other->size() == path.size() &&
            paths::ToStyle(*other).compare(0, stem, paths::ToStyle(path), 0, stem) == 0;
        return {onlyEnding ? Found::Exact : Found::OtherCase, *other};
    }
    return {};
}

// A texture of the model: its name, the spans of the parts that use it,
// and who named it first.
struct ModelTexture {
    std::string Name;
    std::string FirstUser; // shown: a file, or a place in the script
    std::vector<UvSpan> Spans;
    int PartsBefore = 0; // the script's parts before the one that named it first
};

class FileChecks {
public:
    FileChecks(const std::string& qcFile, const MessageTexts& texts, const AddRowFn& add)
        : qcFile_(qcFile), texts_(texts), add_(add) {}

    void Run() {
        plan_ = ReadCompilePlan(qcFile_);
        for (const PlanIssue& issue : plan_.Issues) {
            At(issue.At, Text(issue.Id, Shown(issue.Args)), issue.Kind);
        }
        OutputFolder();
        for (std::size_t i = 0; i < plan_.Parts.size(); ++i) {
            if (!plan_.Parts[i].Blank) {
                Part(plan_.Parts[i], static_cast<int>(i));
            }
        }
        Bones();
        AnimationScales scales(bones_.size());
        std::vector<std::pair<const PlanSequence*, SequenceMotion>> large;
        for (const PlanSequence& seq : plan_.Sequences) {
            Sequence(seq, scales, large);
        }
        Textures();
        for (const auto& [seq, motion] : large) {
            AnimationSize(*seq, motion, scales);
        }
        Summaries();
    }

private:
    // ---- rows ----

    static std::vector<std::string> Shown(const std::vector<std::string>& args) {
        std::vector<std::string> out;
        out.reserve(args.size());
        for (const std::string& a : args) {
            out.push_back(Cp1252ToUtf8(a));
        }
        return out;
    }
    std::string Text(Msg id, const std::vector<std::string>& args) const {
        return FormatMessage(texts_[static_cast<std::size_t>(id)], args);
    }
    void Row(Msg id, RowKind kind, const std::vector<std::string>& args) {
        add_(Text(id, args), kind);
    }
    void Error(Msg id, const std::vector<std::string>& args) { Row(id, RowKind::Error, args); }
    void Warning(Msg id, const std::vector<std::string>& args) { Row(id, RowKind::Warning, args); }

    std::string PlaceName(const PlanPlace& at) const {
        const auto source = static_cast<std::size_t>(at.Source);
        return source < plan_.Sources.size() ? compile::Shown(plan_.Sources[source]) : std::string();
    }
    // A row with the place in the script in front.
    void At(const PlanPlace& at, std::string text, RowKind kind) {
        if (at.Line > 0) {
            text = Text(MSG_CHECK_AT, {PlaceName(at), std::to_string(at.Line), text});
        }
        add_(std::move(text), kind);
    }
    std::string PlaceText(const PlanPlace& at) const {
        return PlaceName(at) + ":" + std::to_string(at.Line);
    }

    // ---- files ----

    // The text of a file the compiler opens; nothing (with its row) when it
    // is missing or cannot be read.
    std::optional<std::string> Open(const PlanFile& file, bool activityLike) {
        const Found found = Locate(file.Path);
        if (found.How == Found::Missing) {
            if (!notRead_.insert(file.Path).second) {
                return std::nullopt; // said at its first use
            }
            if (activityLike) {
                At(file.At,
                   Text(MSG_CHECK_UNKNOWN_ACTIVITY,
                        {compile::Shown(file.Name), ShownPath(file.Path)}),
                   RowKind::Error);
            } else {
                At(file.At, Text(MSG_CHECK_SMD_MISSING, {ShownPath(file.Path)}),
                   RowKind::Error);
            }
            return std::nullopt;
        }
        NoteCase(file.Path, found);
        std::string text;
        OpenProblem problem;
        if (!ReadWholeFile(found.Path, text, &problem)) {
            if (!notRead_.insert(file.Path).second) {
                return std::nullopt; // said at its first use
            }
            // Why, where the open says (a folder, a pipe, too large, denied).
            problem.Path = ShownPath(found.Path);
            const std::string why = DescribeOpenProblem(problem, texts_);
            if (why.empty()) {
                Error(MSG_CHECK_SMD_UNREADABLE, {problem.Path});
            } else {
                add_(why, RowKind::Error);
            }
            return std::nullopt;
        }
        return text;
    }

    void NoteCase(const std::string& asNamed, const Found& found) {
        if (found.How == Found::OtherCase &&
            std::none_of(otherCase_.begin(), otherCase_.end(),
                         [&](const std::string& p) { return p == found.Path; })) {
            otherCase_.push_back(found.Path);
        }
        (void)asNamed;
    }

    // The rows of a file's findings; true when the compiler gets through it.
    bool Findings(const std::vector<SmdFinding>& findings, const std::string& path,
                  const SmdReadOptions& read) {
        const std::string shown = ShownPath(path);
        bool fatal = false;
        for (const SmdFinding& f : findings) {
            const std::string line = std::to_string(f.Line);
            std::string text;
            switch (f.Kind) {
            case SmdFindingKind::BadVersion:
                text = Text(MSG_CHECK_SMD_VERSION, {shown, line, f.Detail});
                break;
            case SmdFindingKind::NodesCutShort:
                text = Text(MSG_CHECK_SMD_NODES_CUT, {shown});
                break;
            case SmdFindingKind::IndexOutOfRange:
                text = Text(MSG_CHECK_SMD_INDEX_RANGE, {shown, line, f.Detail});
                break;
            case SmdFindingKind::BadTriangleLine:
                text = Text(MSG_CHECK_SMD_BAD_LINE, {shown, line});
                break;
            case SmdFindingKind::CornerBoneOutside:
                text = Text(MSG_CHECK_SMD_CORNER_BONE, {shown, line, f.Detail, f.Detail2});
                break;
            case SmdFindingKind::SkeletonSwallowsTriangles:
                text = Text(MSG_CHECK_SMD_SWALLOWED, {shown, line});
                break;
            case SmdFindingKind::BadPoseLine:
                text = Text(MSG_CHECK_SMD_BAD_POSE, {shown, line});
                break;
            case SmdFindingKind::AnimationCutShort:
                text = Text(MSG_CHECK_SMD_CUT_SHORT, {shown});
                break;
            case SmdFindingKind::PoseBoneOutside:
                text = Text(MSG_CHECK_SMD_POSE_BONE, {shown, line, f.Detail});
                break;
            case SmdFindingKind::FrameOutside:
                text = Text(MSG_CHECK_SMD_FRAME_RANGE, {shown, line, f.Detail});
                break;
            case SmdFindingKind::NoFrameInRange:
                if (read.FirstFrame > read.LastFrame) {
                    // A range that ends before it starts: the document's
                    // check of the frames says so.
                    fatal = true;
                    continue;
                }
                text = Text(MSG_CHECK_SMD_NO_FRAME, {shown, std::to_string(read.FirstFrame),
                                                     std::to_string(read.LastFrame)});
                break;
            case SmdFindingKind::NoSkeleton:
                continue; // the sequence decides, with the model's bones

            case SmdFindingKind::NodesReadAgain:
                text = Text(f.RepeatLine > 0 ? MSG_CHECK_SMD_NODES_AGAIN : MSG_CHECK_SMD_NODES_TWICE,
                            {shown, line});
                break;
            case SmdFindingKind::SkippedToEnd:
                text = Text(MSG_CHECK_SMD_SKIPPED, {shown, line, compile::Shown(f.Detail)});
                break;
            }
            if (f.RepeatLine > 0 && f.Kind != SmdFindingKind::NodesReadAgain) {
                text += " " + Text(MSG_CHECK_SMD_REPEATED, {std::to_string(f.RepeatLine)});
            }
            const bool isFatal = IsFatal(f.Kind);
            // A frame past the compiler's table is written past it: that
            // may crash it, but a native build was seen to write the model.
            const bool certain = isFatal && f.Kind != SmdFindingKind::FrameOutside;
            add_(std::move(text), certain ? RowKind::Error : RowKind::Warning);
            fatal = fatal || isFatal;
        }
        return !fatal;
    }

    // ---- parts ----

    void Part(const PlanPart& part, int index) {
        const std::optional<std::string> text = Open(part.File, false);
        if (!text) {
            allPartsRead_ = false;
            return;
        }
        const ReferenceSmd ref = ReadReferenceSmd(*text, part.Read);
        if (!Findings(ref.Findings, part.File.Path, part.Read)) {
            allPartsRead_ = false;
            return;
        }
        const std::string shown = ShownPath(part.File.Path);
        BuildBoneFrames(ref, frames_);
        const long limit = std::max(studio::MaxVertices, studio::MaxNormals);
        const PartMerge merged = MergePart(ref, frames_, part.Adjust, part.Read.Scale, limit);
        Limit(shown, merged.Vertices, studio::MaxVertices, MSG_CHECK_TOO_MANY_VERTICES,
              MSG_CHECK_WORD_VERTICES);
        Limit(shown, merged.Normals, studio::MaxNormals, MSG_CHECK_TOO_MANY_NORMALS,
              MSG_CHECK_WORD_NORMALS);
        if (ref.Textures.size() > static_cast<std::size_t>(studio::MaxPartTextures)) {
            Error(MSG_CHECK_PART_TEXTURES, {shown, std::to_string(ref.Textures.size()),
                                            std::to_string(studio::MaxPartTextures)});
        }
        if (ref.Triangles.size() > static_cast<std::size_t>(studio::MaxTriangles)) {
            Error(MSG_CHECK_TOO_MANY_TRIANGLES, {shown, std::to_string(ref.Triangles.size()),
                                                 std::to_string(studio::MaxTriangles)});
        }

        // Its textures, in the order of the model's, with what it spans.
        const std::vector<UvSpan> spans = PackedUvSpans(ref);
        for (std::size_t t = 0; t < ref.Textures.size(); ++t) {
            ModelTexture& texture = TextureNamed(ref.Textures[t], "\"" + shown + "\"", index);
            texture.Spans.push_back(spans[t]);
        }

        const std::vector<bool> used = UsedBones(ref);
        for (const ParentClash& clash : AddPartBones(bones_, ref, used, Renames())) {
            Error(MSG_CHECK_PARENT_CLASH, {shown, compile::Shown(clash.Bone), RootName(clash.Parent),
                                           RootName(clash.Before)});
        }
    }

    static std::string RootName(const std::string& bone) {
        return bone.empty() ? "ROOT" : compile::Shown(bone);
    }

    // Over the limit for certain: an error; perhaps over it: a warning.
    void Limit(const std::string& shown, const MergedCount& count, int limit, Msg over, Msg word) {
        if (count.Count - count.Uncertain > limit) {
            Error(over, {shown, std::to_string(count.Count), std::to_string(limit)});
        } else if (count.Count + count.Uncertain > limit) {
            Warning(MSG_CHECK_NEAR_LIMIT,
                    {shown, std::to_string(count.Count), std::to_string(limit),
                     texts_[static_cast<std::size_t>(word)], std::to_string(count.Uncertain)});
        }
    }

    const std::vector<std::pair<std::string, std::string>>& Renames() {
        if (renames_.size() != plan_.Renames.size()) {
            renames_.clear();
            for (const PlanRename& r : plan_.Renames) {
                renames_.emplace_back(r.From, r.To);
            }
        }
        return renames_;
    }

    ModelTexture& TextureNamed(const std::string& name, const std::string& user, int part) {
        for (ModelTexture& t : textures_) {
            if (EqualsNoCase(t.Name, name)) {
                return t;
            }
        }
        textures_.push_back({name, user, {}, part});
        return textures_.back();
    }

    // ---- bones ----

    void Bones() {
        if (bones_.size() >= static_cast<std::size_t>(studio::MaxBones)) {
            Error(MSG_CHECK_TOO_MANY_BONES,
                  {std::to_string(bones_.size()), std::to_string(studio::MaxBones)});
        }
        for (const ModelBone& bone : bones_) {
            if (bone.Name.size() >= studio::BoneNameRoom) {
                Warning(MSG_CHECK_NAME_TOO_LONG, {compile::Shown(bone.Name),
                                                std::to_string(studio::BoneNameRoom - 1)});
            }
        }
        // Without every part read, which bones the model keeps is not known.
        if (!allPartsRead_) {
            return;
        }
        for (const PlanBoneLink& link : plan_.BoneLinks) {
            if (FindBoneNoCase(bones_, link.Bone) < 0) {
                At(link.At, Text(MSG_CHECK_LINK_BONE, {link.Directive, compile::Shown(link.Bone)}),
                   RowKind::Error);
            }
        }
    }

    // ---- sequences ----

    void Sequence(const PlanSequence& seq, AnimationScales& scales,
                  std::vector<std::pair<const PlanSequence*, SequenceMotion>>& large) {
        std::vector<AnimationSmd> blends;
        bool read = true;
        for (const PlanFile& file : seq.Files) {
            const bool activityLike = PrefixNoCase("ACT_", file.Name, 4);
            const std::optional<std::string> text = Open(file, activityLike);
            if (!text) {
                read = false;
                continue;
            }
            AnimationSmd anim = ReadAnimationSmd(*text, seq.Read);
            read = Findings(anim.Findings, file.Path, seq.Read) && read;
            blends.push_back(std::move(anim));
        }
        if (!read || blends.empty()) {
            return;
        }
        const AnimationSmd& first = blends[0];
        // A file without a skeleton leaves its bones without poses; the
        // compiler crashes on the first it reaches.
        bool posesMissing = false;
        for (std::size_t q = 0; q < blends.size(); ++q) {
            if (!blends[q].HasFrames && ReachesMissingPoses(seq, first)) {
                Error(MSG_CHECK_SMD_NO_FRAME, {ShownPath(seq.Files[q].Path),
                                               std::to_string(seq.Read.FirstFrame),
                                               std::to_string(seq.Read.LastFrame)});
            }
            posesMissing = posesMissing || !blends[q].HasFrames;
        }
        if (posesMissing) {
            return;
        }
        Events(seq, first);
        if (!allPartsRead_) {
            return;
        }
        ParentsOf(seq, first);
        SequenceMotion motion =
            SequenceValues(blends, {seq.Looping, seq.MotionType}, bones_, Renames());
        scales.Widen(motion);
        if (AnimationBytesBound(motion) > studio::MaxSequenceBytes) {
            large.emplace_back(&seq, std::move(motion));
        }
    }

    // Whether the compiler reads the poses of the first file's bones: all of
    // them in a looping sequence, the roots' for the motion it takes out,
    // and those it maps onto the model's bones.
    bool ReachesMissingPoses(const PlanSequence& seq, const AnimationSmd& first) {
        const int count = std::clamp(first.NumBones, 0, MaxSourceBones);
        if (count == 0) {
            return false;
        }
        if (seq.Looping) {
            return true;
        }
        for (int j = 0; j < count; ++j) {
            if (first.Nodes[static_cast<std::size_t>(j)].Parent == -1) {
                return true;
            }
        }
        return allPartsRead_ && SharesABone(first);
    }

    bool SharesABone(const AnimationSmd& anim) {
        const int count = std::clamp(anim.NumBones, 0, MaxSourceBones);
        for (int j = 0; j < count; ++j) {
            if (FindBone(bones_, Renamed(anim.Nodes[static_cast<std::size_t>(j)].Name, Renames())) >= 0) {
                return true;
            }
        }
        return false;
    }

    void Events(const PlanSequence& seq, const AnimationSmd& first) {
        for (const PlanEvent& e : seq.Events) {
            if (e.Frame < first.FirstFrame || e.Frame > first.LastFrame) {
                const int moved = e.Frame < first.FirstFrame ? first.FirstFrame : first.LastFrame;
                At(e.At,
                   Text(MSG_CHECK_EVENT_OUTSIDE,
                        {std::to_string(e.Event), compile::Shown(seq.Name), std::to_string(e.Frame),
                         std::to_string(first.FirstFrame), std::to_string(first.LastFrame),
                         std::to_string(moved)}),
                   RowKind::Warning);
            }
        }
    }

    // The bones the first file of a sequence shares with the model must
    // hang on parents of the same names.
    void ParentsOf(const PlanSequence& seq, const AnimationSmd& first) {
        const int count = std::clamp(first.NumBones, 0, MaxSourceBones);
        for (int j = 0; j < count; ++j) {
            const CompilerNode& node = first.Nodes[static_cast<std::size_t>(j)];
            const int k = FindBone(bones_, Renamed(node.Name, Renames()));
            if (k < 0) {
                continue;
            }
            const std::string parent =
                node.Parent >= 0 && node.Parent < MaxSourceBones
                    ? Renamed(first.Nodes[static_cast<std::size_t>(node.Parent)].Name, Renames())
                    : std::string();
            const int kept = bones_[static_cast<std::size_t>(k)].Parent;
            const std::string before = kept >= 0 ? bones_[static_cast<std::size_t>(kept)].Name : "";
            if (parent != before || (node.Parent == -1) != (kept == -1)) {
                At(seq.At,
                   Text(MSG_CHECK_ANIM_PARENT_CLASH,
                        {ShownPath(seq.Files[0].Path), compile::Shown(node.Name),
                         node.Parent == -1 ? "ROOT" : compile::Shown(parent),
                         kept == -1 ? "ROOT" : compile::Shown(before)}),
                   RowKind::Error);
                return;
            }
        }
    }

    void AnimationSize(const PlanSequence& seq, const SequenceMotion& motion,
                       const AnimationScales& scales) {
        const MergedCount bytes = AnimationBytes(motion, scales);
        // Rounding that another build may do the other way moves a value
        // or two; a hundredth of the limit is room enough for it.
        const long slack = std::max(bytes.Uncertain, studio::MaxSequenceBytes / 100);
        if (bytes.Count - slack > studio::MaxSequenceBytes) {
            At(seq.At,
               Text(MSG_CHECK_SEQUENCE_LARGE, {compile::Shown(seq.Name), std::to_string(bytes.Count)}),
               RowKind::Error);
        } else if (bytes.Count + slack > studio::MaxSequenceBytes) {
            At(seq.At,
               Text(MSG_CHECK_SEQUENCE_MAY_BE_LARGE, {compile::Shown(seq.Name),
                                                      std::to_string(bytes.Count),
                                                      std::to_string(slack)}),
               RowKind::Warning);
        }
    }

    // ---- textures ----

    // The model's textures in the compiler's order: those of the parts as
    // they were read, with the ones the script names in between.
    std::vector<ModelTexture> TexturesInOrder() {
        std::vector<ModelTexture> fromParts = std::move(textures_);
        textures_.clear();
        std::vector<ModelTexture> ordered;
        std::size_t next = 0;
        const auto add = [&](ModelTexture t) {
            for (ModelTexture& have : ordered) {
                if (EqualsNoCase(have.Name, t.Name)) {
                    have.Spans.insert(have.Spans.end(), t.Spans.begin(), t.Spans.end());
                    return;
                }
            }
            ordered.push_back(std::move(t));
        };
        for (const PlanTextureName& named : plan_.TextureNames) {
            while (next < fromParts.size() && fromParts[next].PartsBefore < named.AfterParts) {
                add(std::move(fromParts[next++]));
            }
            add({named.Texture, PlaceText(named.At), {}, named.AfterParts});
        }
        while (next < fromParts.size()) {
            add(std::move(fromParts[next++]));
        }
        return ordered;
    }

    void Textures() {
        std::vector<ModelTexture> textures = TexturesInOrder();
        if (textures.size() > static_cast<std::size_t>(studio::MaxTextures)) {
            // The compiler writes the rest past the end of its table.
            Warning(MSG_CHECK_TOO_MANY_TEXTURES,
                  {std::to_string(textures.size()), std::to_string(studio::MaxTextures)});
        }
        const std::vector<std::string> folders =
            plan_.TextureFolders.empty() ? std::vector<std::string>{plan_.CdFolder}
                                         : plan_.TextureFolders;
        std::string folderList;
        for (const std::string& f : folders) {
            folderList += (folderList.empty() ? "\"" : ", \"") +
                          ShownPath(CompilerPath(plan_, f)) + "\"";
        }
        for (ModelTexture& t : textures) {
            if (t.Name.size() > studio::TextureNameRoom) {
                // The compiler keeps the first 64 characters and looks for a
                // bitmap of that name, which cannot end in ".bmp".
                Error(MSG_CHECK_FILE_NAME_TOO_LONG,
                      {compile::Shown(t.Name), std::to_string(studio::TextureNameRoom),
                       compile::Shown(t.Name.substr(0, studio::TextureNameRoom))});
                continue;
            }
            if (t.Name.size() == studio::TextureNameRoom) {
                Warning(MSG_CHECK_NAME_TOO_LONG, {compile::Shown(t.Name),
                                                std::to_string(studio::TextureNameRoom - 1)});
            }
            Texture(t, folders, folderList);
        }
        // The skins alone, with their headers, in the file that holds them.
        const long bytes = skinBytes_ + studio::HeaderBytes +
                           studio::TextureEntryBytes * static_cast<long>(textures.size());
        if (bytes > studio::OutputBuffer) {
            Warning(MSG_CHECK_MODEL_BUFFER,
                    {std::to_string(bytes), std::to_string(studio::OutputBuffer)});
        }
    }

    void Texture(ModelTexture& t, const std::vector<std::string>& folders,
                 const std::string& folderList) {
        const bool bmp = t.Name.size() >= 4 && EqualsNoCase(t.Name.substr(t.Name.size() - 4), ".bmp");
        std::optional<Found> found;
        for (const std::string& folder : folders) {
            const Found f = Locate(CompilerPath(plan_, folder + "/" + t.Name));
            if (f.How != Found::Missing) {
                found = f;
                break;
            }
        }
        if (found && !bmp) {
            Error(MSG_CHECK_TEXTURE_NOT_BMP, {t.FirstUser, compile::Shown(t.Name)});
            return;
        }
        if (!found) {
            if (!bmp && plan_.TextureFolders.empty()) {
                Error(MSG_CHECK_TEXTURE_NOT_BMP, {t.FirstUser, compile::Shown(t.Name)});
            } else {
                Error(MSG_CHECK_TEXTURE_MISSING, {t.FirstUser, compile::Shown(t.Name), folderList});
            }
            return;
        }
        NoteCase(t.Name, *found);
        const BmpHeader h = ReadBmpFile(found->Path);
        const std::string shown = ShownPath(found->Path);
        if (!Bitmap(shown, h)) {
            return;
        }
        const auto width = static_cast<std::uint16_t>(h.Width);
        const auto height = static_cast<std::uint16_t>(h.Height);
        if (!PowerOfTwo(width) || !PowerOfTwo(height)) {
            notPowerOfTwo_.push_back(compile::Shown(FileName(found->Path)) + " (" +
                                     std::to_string(width) + " x " + std::to_string(height) + ")");
        }
        const bool chrome = IsChromeName(t.Name);
        if (t.Spans.empty() && !chrome) {
            // No triangle uses it: the compiler sizes it as the texture it
            // stands in for (or the first), and that one is checked.
            return;
        }
        const SkinSize skin = SkinOf(t.Spans, width, height, chrome);
        skinBytes_ += skin.Bytes();
        if (skin.Bytes() > studio::MaxSkinBytes) {
            Warning(MSG_CHECK_TEXTURE_TOO_LARGE,
                    {shown, std::to_string(skin.Width), std::to_string(skin.Height)});
        }
    }

    static std::string FileName(const std::string& path) { return paths::FileNameOf(path); }

    // The compiler's tests of a bitmap's headers, in its order; true when it
    // takes the bitmap.
    bool Bitmap(const std::string& shown, const BmpHeader& h) {
        if (!h.PlainHeaders) {
            Error(MSG_CHECK_BMP_NOT_BITMAP, {shown});
            return false;
        }
        if (h.Reserved1 != 0 || h.Reserved2 != 0) {
            Error(MSG_CHECK_BMP_RESERVED, {shown});
            return false;
        }
        if (h.InfoSize != 40 || h.Planes != 1) {
            Error(MSG_CHECK_BMP_HEADER, {shown, std::to_string(h.InfoSize), std::to_string(h.Planes)});
            return false;
        }
        if (h.BitsPerPixel != 8) {
            Error(MSG_CHECK_BMP_DEPTH, {shown, std::to_string(h.BitsPerPixel)});
            return false;
        }
        if (h.Compression != 0) {
            Error(MSG_CHECK_BMP_COMPRESSED, {shown});
            return false;
        }
        if (h.PaletteColours > 256) {
            Error(MSG_CHECK_BMP_PALETTE, {shown, std::to_string(h.PaletteColours)});
            return false;
        }
        // The palette follows the headers; the pixels run from there up to
        // the size the header gives, which must leave room for every row.
        const std::uint64_t palette = 4ull * (h.PaletteColours == 0 ? 256 : h.PaletteColours);
        const std::uint64_t pixelsAt = 54 + palette;
        if (h.FileSize < pixelsAt) {
            Error(MSG_CHECK_BMP_CUT_SHORT, {shown});
            return false;
        }
        if (h.DeclaredSize <= pixelsAt || h.DeclaredSize > h.FileSize) {
            Error(MSG_CHECK_BMP_SIZE_FIELD,
                  {shown, std::to_string(h.DeclaredSize), std::to_string(h.FileSize)});
            return false;
        }
        if (h.Height < 0) {
            Error(MSG_CHECK_BMP_TOP_DOWN, {shown});
            return false;
        }
        const std::uint64_t stride = (static_cast<std::uint64_t>(static_cast<std::uint32_t>(h.Width)) + 3) & ~3ull;
        if (stride * static_cast<std::uint64_t>(h.Height) > h.DeclaredSize - pixelsAt) {
            Error(MSG_CHECK_BMP_CUT_SHORT, {shown});
            return false;
        }
        if (static_cast<std::uint16_t>(h.Width) == 0 || static_cast<std::uint16_t>(h.Height) == 0) {
            Error(MSG_CHECK_BMP_EMPTY, {shown, std::to_string(h.Width), std::to_string(h.Height)});
            return false;
        }
        return true;
    }

    // ---- the rest ----

    void OutputFolder() {
        const std::string folder = paths::FolderOf(plan_.Output);
        if (!folder.empty() && !paths::FolderExists(folder)) {
            At(plan_.OutputAt, Text(MSG_CHECK_OUTPUT_FOLDER, {ShownPath(plan_.Output)}),
               RowKind::Error);
        }
    }

    // The warnings that would repeat, one row each.
    void Summaries() {
        const auto firstFew = [](const std::vector<std::string>& names) {
            std::string list;
            for (std::size_t i = 0; i < names.size() && i < 3; ++i) {
                list += (i == 0 ? "" : ", ") + names[i];
            }
            return names.size() > 3 ? list + ", ..." : list;
        };
        if (!otherCase_.empty()) {
            std::vector<std::string> shown;
            for (const std::string& p : otherCase_) {
                shown.push_back("\"" + ShownPath(p) + "\"");
            }
            Warning(MSG_CHECK_FILE_OTHER_CASE, {std::to_string(shown.size()), firstFew(shown)});
        }
        if (!notPowerOfTwo_.empty()) {
            Warning(MSG_CHECK_BMP_NOT_POWER_OF_TWO,
                    {std::to_string(notPowerOfTwo_.size()), firstFew(notPowerOfTwo_)});
        }
    }

    const std::string& qcFile_;
    const MessageTexts& texts_;
    const AddRowFn& add_;
    CompilePlan plan_;
    std::vector<BoneFrame> frames_;
    std::vector<ModelBone> bones_;
    std::vector<std::pair<std::string, std::string>> renames_;
    std::vector<ModelTexture> textures_;
    bool allPartsRead_ = true;
    long skinBytes_ = 0;
    // Files found missing or not readable: each is said once, at its first use.
    std::set<std::string> notRead_;
    std::vector<std::string> otherCase_;
    std::vector<std::string> notPowerOfTwo_;
};

} // namespace

void CheckModelFiles(const Document& doc, const MessageTexts& texts, const AddRowFn& add) {
    FileChecks(doc.QcFile, texts, add).Run();
}

} // namespace quarle::compile
