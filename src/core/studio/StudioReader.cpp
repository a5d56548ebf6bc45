#include "document/NumberText.h"
#include "document/Paths.h"
#include "studio/StudioModel.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <set>
#include <utility>

namespace quarle::studio {

namespace {

// Sizes of the records, as the compiler lays them out (32-bit fields,
// packed to four bytes).
constexpr std::size_t HeaderSize = 244;
constexpr std::size_t GroupHeaderSize = 76;
constexpr std::size_t BoneSize = 112;
constexpr std::size_t ControllerSize = 24;
constexpr std::size_t HitBoxSize = 32;
constexpr std::size_t GroupSize = 104;
constexpr std::size_t SequenceSize = 176;
constexpr std::size_t EventSize = 76;
constexpr std::size_t PivotSize = 20;
constexpr std::size_t AttachmentSize = 88;
constexpr std::size_t AnimationSize = 12; // six offsets of 16 bits
constexpr std::size_t BodyPartSize = 76;
constexpr std::size_t TextureSize = 80;
constexpr std::size_t ModelSize = 112;
constexpr std::size_t MeshSize = 20;
constexpr std::size_t CornerSize = 8; // four 16-bit values
constexpr std::size_t PaletteSize = 256 * 3;

// What a read may take beyond what a real model of its size takes: tables
// and animation streams of a real model do not overlap, so a read takes at
// most one element per byte of its files and one run of animation values
// per four bytes. A crafted file that points many tables at the same bytes
// is refused once it asks for this much more.
constexpr std::uint64_t Headroom = std::uint64_t{1} << 20;

std::string Number(std::int64_t n) {
    return IntToText(n);
}

// Little-endian fields of a stretch of the file whose bounds were checked;
// a field beyond the stretch reads as 0.
class Record {
public:
    Record() = default;
    explicit Record(std::string_view bytes) : bytes_(bytes) {}

    std::uint8_t Byte(std::size_t at) const {
        return at < bytes_.size() ? static_cast<std::uint8_t>(bytes_[at]) : 0;
    }
    std::uint32_t Unsigned(std::size_t at, std::size_t width) const {
        if (at > bytes_.size() || bytes_.size() - at < width) {
            return 0;
        }
        std::uint32_t v = 0;
        for (std::size_t i = width; i-- > 0;) {
            v = (v << 8) | Byte(at + i);
        }
        return v;
    }
    int Int(std::size_t at) const { return static_cast<std::int32_t>(Unsigned(at, 4)); }
    int Short(std::size_t at) const { return static_cast<std::int16_t>(Unsigned(at, 2)); }
    int Word(std::size_t at) const { return static_cast<int>(Unsigned(at, 2)); }
    float Float(std::size_t at) const { return std::bit_cast<float>(Unsigned(at, 4)); }
    Vec3 Vector(std::size_t at) const { return {Float(at), Float(at + 4), Float(at + 8)}; }
    // A name of a fixed length, up to its first zero byte.
    std::string Text(std::size_t at, std::size_t length) const {
        if (at >= bytes_.size()) {
            return {};
        }
        const std::string_view field = bytes_.substr(at, length);
        return std::string(field.substr(0, field.find('\0')));
    }
    Record Item(std::size_t i, std::size_t size) const {
        return i < bytes_.size() / size ? Record(bytes_.substr(i * size, size)) : Record();
    }
    std::size_t Size() const { return bytes_.size(); }

private:
    std::string_view bytes_;
};

// Walks the runs of one channel's animation values from offset until the
// run that holds frame; run(first, total, valid, values) is called for each
// run passed, with the first frame it covers, its frames, its stored values
// and where they start. False
// when a run leaves the bytes, covers no frame or holds no value, or when
// budget runs out (then set to 0).
template <class Run>
bool WalkRuns(std::string_view bytes, std::size_t offset, int frame, Run&& run,
              std::uint64_t* budget = nullptr) {
    const Record file(bytes);
    std::size_t at = offset;
    std::int64_t first = 0;
    while (first <= frame) {
        if (at > bytes.size() || bytes.size() - at < 2) {
            return false;
        }
        const int valid = file.Byte(at);
        const int total = file.Byte(at + 1);
        if (valid == 0 || total == 0 || (bytes.size() - at - 2) / 2 < std::size_t(valid)) {
            return false;
        }
        if (budget != nullptr) {
            if (*budget == 0) {
                return false;
            }
            --*budget;
        }
        run(first, total, valid, at + 2);
        first += total;
        at += 2 + 2 * std::size_t(valid);
    }
    return true;
}

// The value of one frame, from the run that covers it: its own stored value,
// or the run's last one.
int FrameValue(const Record& file, std::int64_t first, int valid, std::size_t values, int frame) {
    const std::int64_t i = std::min<std::int64_t>(frame - first, valid - 1);
    return file.Short(values + 2 * std::size_t(i));
}

// One read over one file's bytes; the first problem ends it.
class Reader {
public:
    Reader(std::string_view bytes, std::string fileName)
        : file_(bytes), bytes_(bytes), fileName_(std::move(fileName)),
          budget_(bytes.size() + Headroom) {}

    const std::optional<StudioProblem>& Error() const { return error_; }
    const Record& File() const { return file_; }

    bool Fail(Msg message, std::vector<std::string> args) {
        if (!error_) {
            if (!fileName_.empty()) {
                error_ = StudioProblem{MSG_MDL_IN_FILE,
                                       {fileName_, ProblemText({message, std::move(args)})}};
            } else {
                error_ = StudioProblem{message, std::move(args)};
            }
        }
        return false;
    }

    // The count records of size bytes at offset, as what.
    bool Table(std::int64_t offset, std::int64_t count, std::size_t size, const std::string& what,
               Record& out) {
        if (count < 0) {
            return Fail(MSG_MDL_BAD_COUNT, {what, Number(count)});
        }
        const std::int64_t length = count * std::int64_t(size);
        if (offset < 0 || offset > std::int64_t(bytes_.size()) ||
            std::int64_t(bytes_.size()) - offset < length) {
            return Fail(MSG_MDL_BEYOND_END, {what, Number(offset), Number(offset + length),
                                             Number(std::int64_t(bytes_.size()))});
        }
        if (!Take(std::uint64_t(count), what)) {
            return false;
        }
        out = Record(bytes_.substr(std::size_t(offset), std::size_t(length)));
        return true;
    }

    // Elements of the read's budget (records, corners, rows), as what.
    bool Take(std::uint64_t elements, const std::string& what) {
        if (elements > budget_) {
            return Fail(MSG_MDL_BAD_COUNT, {what, Number(std::int64_t(elements))});
        }
        budget_ -= elements;
        return true;
    }

    // More room for the elements of files read beside this one.
    void Grant(std::uint64_t elements) { budget_ += elements; }

    // value within first..last, as what.
    bool InRange(std::int64_t value, std::int64_t first, std::int64_t last,
                 const std::string& what) {
        if (value < first || value > last) {
            return Fail(MSG_MDL_BAD_INDEX, {what, Number(value), Number(first), Number(last)});
        }
        return true;
    }

    // The magic number and the version, and a head of size bytes.
    bool Head(std::string_view magic, std::size_t size) {
        if (bytes_.size() < 4 || bytes_.substr(0, 4) != magic) {
            std::string start;
            for (const char c : bytes_.substr(0, 4)) {
                const auto u = static_cast<unsigned char>(c);
                start += u >= 0x20 && u < 0x7f ? c : '.';
            }
            return Fail(MSG_MDL_NOT_STUDIO, {start});
        }
        if (bytes_.size() < 8) {
            return Fail(MSG_MDL_BEYOND_END,
                        {"header", "0", Number(std::int64_t(size)), Number(bytes_.size())});
        }
        if (file_.Int(4) != Version) {
            return Fail(MSG_MDL_VERSION, {Number(file_.Int(4))});
        }
        Record head;
        return Table(0, 1, size, "header", head);
    }

private:
    Record file_;
    std::string_view bytes_;
    std::string fileName_;
    std::uint64_t budget_;
    std::optional<StudioProblem> error_;
};

std::string Named(const std::string& kind, std::size_t i) {
    return kind + ' ' + Number(std::int64_t(i));
}

bool ReadBones(Reader& r, StudioModel& m) {
    Record table;
    if (!r.Table(r.File().Int(144), r.File().Int(140), BoneSize, "bones", table)) {
        return false;
    }
    m.Bones.resize(table.Size() / BoneSize);
    for (std::size_t i = 0; i < m.Bones.size(); ++i) {
        const Record rec = table.Item(i, BoneSize);
        Bone& b = m.Bones[i];
        b.Name = rec.Text(0, 32);
        b.Parent = rec.Int(32);
        b.Flags = rec.Int(36);
        for (std::size_t k = 0; k < 6; ++k) {
            b.Controllers[k] = rec.Int(40 + 4 * k);
            b.Value[k] = rec.Float(64 + 4 * k);
            b.Scale[k] = rec.Float(88 + 4 * k);
        }
        // Bones are posed in their order: a parent comes first.
        if (!r.InRange(b.Parent, -1, std::int64_t(i) - 1, Named("bone", i) + " parent")) {
            return false;
        }
    }
    return true;
}

bool ReadRigging(Reader& r, StudioModel& m) {
    const Record& f = r.File();
    const std::int64_t lastBone = std::int64_t(m.Bones.size()) - 1;
    Record table;
    if (!r.Table(f.Int(152), f.Int(148), ControllerSize, "bone controllers", table)) {
        return false;
    }
    for (std::size_t i = 0; i < table.Size() / ControllerSize; ++i) {
        const Record rec = table.Item(i, ControllerSize);
        BoneController c{rec.Int(0), rec.Int(4), rec.Float(8), rec.Float(12), rec.Int(16),
                         rec.Int(20)};
        if (!r.InRange(c.Bone, -1, lastBone, Named("bone controller", i) + " bone")) {
            return false;
        }
        m.Controllers.push_back(c);
    }
    if (!r.Table(f.Int(160), f.Int(156), HitBoxSize, "hit boxes", table)) {
        return false;
    }
    for (std::size_t i = 0; i < table.Size() / HitBoxSize; ++i) {
        const Record rec = table.Item(i, HitBoxSize);
        HitBox h{rec.Int(0), rec.Int(4), rec.Vector(8), rec.Vector(20)};
        if (!r.InRange(h.Bone, 0, lastBone, Named("hit box", i) + " bone")) {
            return false;
        }
        m.HitBoxes.push_back(h);
    }
    if (!r.Table(f.Int(216), f.Int(212), AttachmentSize, "attachments", table)) {
        return false;
    }
    for (std::size_t i = 0; i < table.Size() / AttachmentSize; ++i) {
        const Record rec = table.Item(i, AttachmentSize);
        Attachment a{rec.Text(0, 32), rec.Int(32), rec.Int(36), rec.Vector(40),
                     {rec.Vector(52), rec.Vector(64), rec.Vector(76)}};
        if (!r.InRange(a.Bone, 0, lastBone, Named("attachment", i) + " bone")) {
            return false;
        }
        m.Attachments.push_back(std::move(a));
    }
    return true;
}

// The file name in a path written with either separator.
std::string LastPiece(const std::string& path) {
    const std::size_t cut = path.find_last_of("\\/");
    return cut == std::string::npos ? path : path.substr(cut + 1);
}

std::string TwoDigits(std::size_t n) {
    return (n < 10 ? "0" : "") + Number(std::int64_t(n));
}

bool ReadGroups(Reader& r, StudioModel& m, std::string_view bytes, const SideFiles& side,
                std::vector<StudioProblem>& notes) {
    Record table;
    if (!r.Table(r.File().Int(176), r.File().Int(172), GroupSize, "sequence groups", table)) {
        return false;
    }
    for (std::size_t g = 0; g < table.Size() / GroupSize; ++g) {
        const Record rec = table.Item(g, GroupSize);
        m.Groups.push_back({rec.Text(0, 32), rec.Text(32, 64)});
        if (g == 0) {
            m.GroupBytes.emplace_back(bytes);
            continue;
        }
        // The game loads the name the group gives; a model renamed since
        // its compile still finds its own NAME01.mdl.
        std::vector<std::string> names{LastPiece(m.Groups.back().Name)};
        if (!side.Stem.empty()) {
            names.push_back(side.Stem + TwoDigits(g) + ".mdl");
        }
        std::optional<std::string> found;
        std::string name;
        for (const std::string& candidate : names) {
            if (!candidate.empty() && side.Read && (found = side.Read(candidate))) {
                name = candidate;
                break;
            }
        }
        if (!found) {
            if (side.Read) {
                notes.push_back({MSG_MDL_GROUP_MISSING, {names.back()}});
            }
            m.GroupBytes.emplace_back();
            continue;
        }
        Reader group(*found, name);
        if (!group.Head("IDSQ", GroupHeaderSize)) {
            return r.Fail(group.Error()->Message, group.Error()->Args);
        }
        r.Grant(found->size());
        m.GroupBytes.push_back(std::move(*found));
    }
    return true;
}

// Checks that every channel of every bone of every blend of the sequence
// decodes over its frames. A stream that several channels share is walked
// once.
bool CheckAnimation(Reader& r, const StudioModel& m, std::size_t s,
                    std::set<std::pair<int, std::size_t>>& walked, std::uint64_t& budget) {
    const Sequence& seq = m.Sequences[s];
    const std::string& bytes = m.GroupBytes[std::size_t(seq.Group)];
    if (bytes.empty() || seq.Frames == 0) {
        return true;
    }
    const std::string what = Named("sequence", s) + " \"" + seq.Label + "\"";
    Reader inGroup(bytes, "");
    Record anims;
    const std::int64_t count = std::int64_t(seq.Blends) * std::int64_t(m.Bones.size());
    if (!inGroup.Table(seq.AnimationOffset, count, AnimationSize, what + " animations", anims)) {
        const std::string name =
            seq.Group == 0 ? std::string() : LastPiece(m.Groups[std::size_t(seq.Group)].Name);
        if (name.empty()) {
            return r.Fail(inGroup.Error()->Message, inGroup.Error()->Args);
        }
        return r.Fail(MSG_MDL_IN_FILE, {name, ProblemText(*inGroup.Error())});
    }
    if (!r.Take(std::uint64_t(count), what + " animations")) {
        return false;
    }
    for (std::size_t a = 0; a < std::size_t(count); ++a) {
        const Record rec = anims.Item(a, AnimationSize);
        for (std::size_t k = 0; k < 6; ++k) {
            const int offset = rec.Word(2 * k);
            if (offset == 0) {
                continue;
            }
            const std::size_t at =
                std::size_t(seq.AnimationOffset) + a * AnimationSize + std::size_t(offset);
            if (!walked.insert({seq.Group, at}).second) {
                continue;
            }
            const bool ok = WalkRuns(
                bytes, at, seq.Frames - 1, [](std::int64_t, int, int, std::size_t) {}, &budget);
            if (budget == 0) {
                return r.Fail(MSG_MDL_ANIMATION_TOO_LARGE, {Number(std::int64_t(Headroom))});
            }
            if (!ok) {
                return r.Fail(MSG_MDL_BAD_ANIMATION,
                              {what + ", " + Named("bone", a % m.Bones.size()) + ", " +
                               Named("channel", k)});
            }
        }
    }
    return true;
}

bool ReadSequences(Reader& r, StudioModel& m) {
    const Record& f = r.File();
    Record table;
    if (!r.Table(f.Int(168), f.Int(164), SequenceSize, "sequences", table)) {
        return false;
    }
    std::set<std::pair<int, std::size_t>> walked;
    std::uint64_t budget = Headroom;
    for (const std::string& group : m.GroupBytes) {
        budget += group.size() / 4;
    }
    for (std::size_t s = 0; s < table.Size() / SequenceSize; ++s) {
        const Record rec = table.Item(s, SequenceSize);
        Sequence q;
        q.Label = rec.Text(0, 32);
        q.Fps = rec.Float(32);
        q.Flags = rec.Int(36);
        q.Activity = rec.Int(40);
        q.ActivityWeight = rec.Int(44);
        q.Frames = rec.Int(56);
        q.MotionType = rec.Int(68);
        q.MotionBone = rec.Int(72);
        q.LinearMovement = rec.Vector(76);
        q.Min = rec.Vector(96);
        q.Max = rec.Vector(108);
        q.Blends = rec.Int(120);
        q.AnimationOffset = rec.Int(124);
        q.BlendType = {rec.Int(128), rec.Int(132)};
        q.BlendStart = {rec.Float(136), rec.Float(140)};
        q.BlendEnd = {rec.Float(144), rec.Float(148)};
        q.BlendParent = rec.Int(152);
        q.Group = rec.Int(156);
        q.EntryNode = rec.Int(160);
        q.ExitNode = rec.Int(164);
        q.NodeFlags = rec.Int(168);
        q.NextSequence = rec.Int(172);
        const std::string what = Named("sequence", s) + " \"" + q.Label + "\"";
        if (q.Frames < 0) {
            return r.Fail(MSG_MDL_BAD_COUNT, {what + " frames", Number(q.Frames)});
        }
        if (q.Blends < 0) {
            return r.Fail(MSG_MDL_BAD_COUNT, {what + " blends", Number(q.Blends)});
        }
        if (!r.InRange(q.Group, 0, std::int64_t(m.Groups.size()) - 1, what + " group")) {
            return false;
        }
        Record events;
        if (!r.Table(rec.Int(52), rec.Int(48), EventSize, what + " events", events)) {
            return false;
        }
        for (std::size_t e = 0; e < events.Size() / EventSize; ++e) {
            const Record ev = events.Item(e, EventSize);
            q.Events.push_back({ev.Int(0), ev.Int(4), ev.Int(8), ev.Text(12, 64)});
        }
        Record pivots;
        if (!r.Table(rec.Int(64), rec.Int(60), PivotSize, what + " pivots", pivots)) {
            return false;
        }
        for (std::size_t p = 0; p < pivots.Size() / PivotSize; ++p) {
            const Record pv = pivots.Item(p, PivotSize);
            q.Pivots.push_back({pv.Vector(0), pv.Int(12), pv.Int(16)});
        }
        m.Sequences.push_back(std::move(q));
        if (!CheckAnimation(r, m, s, walked, budget)) {
            return false;
        }
    }
    return true;
}

// The triangles of a mesh's strips and fans: a count, negative for a fan,
// then that many corners; a count of 0 ends the list.
bool ReadCommands(Reader& r, const Model& model, std::size_t at, Mesh& mesh,
                  const std::string& what) {
    const Record& f = r.File();
    const std::size_t size = f.Size();
    while (true) {
        if (at > size || size - at < 2) {
            return r.Fail(MSG_MDL_BEYOND_END, {what + " triangles", Number(std::int64_t(at)),
                                               Number(std::int64_t(at) + 2),
                                               Number(std::int64_t(size))});
        }
        const int count = f.Short(at);
        at += 2;
        if (count == 0) {
            return true;
        }
        const bool fan = count < 0;
        const std::size_t corners = std::size_t(fan ? -count : count);
        Record run;
        if (!r.Table(std::int64_t(at), std::int64_t(corners), CornerSize, what + " triangles",
                     run)) {
            return false;
        }
        at += corners * CornerSize;
        std::vector<Corner> strip(corners);
        for (std::size_t i = 0; i < corners; ++i) {
            const Record c = run.Item(i, CornerSize);
            strip[i] = {c.Short(0), c.Short(2), c.Short(4), c.Short(6)};
            if (!r.InRange(strip[i].Vertex, 0, std::int64_t(model.Vertices.size()) - 1,
                           what + " vertex") ||
                !r.InRange(strip[i].Normal, 0, std::int64_t(model.Normals.size()) - 1,
                           what + " normal")) {
                return false;
            }
        }
        if (!r.Take(corners * 3, what + " triangles")) {
            return false;
        }
        ++(fan ? mesh.Fans : mesh.Strips);
        // Every triangle keeps the turn of the first: a strip swaps the
        // first two corners of every other one.
        for (std::size_t i = 2; i < corners; ++i) {
            if (fan) {
                mesh.Triangles.push_back({strip[0], strip[i - 1], strip[i]});
            } else if (i % 2 == 1) {
                mesh.Triangles.push_back({strip[i - 1], strip[i - 2], strip[i]});
            } else {
                mesh.Triangles.push_back({strip[i - 2], strip[i - 1], strip[i]});
            }
        }
    }
}

bool ReadModel(Reader& r, const Record& rec, const std::string& what, int bones, Model& model) {
    model.Name = rec.Text(0, 64);
    model.Type = rec.Int(64);
    model.Radius = rec.Float(68);
    const int verts = rec.Int(80);
    const int norms = rec.Int(92);
    Record vertexBones, normalBones, vertices, normals, meshes;
    if (!r.Table(rec.Int(84), verts, 1, what + " vertex bones", vertexBones) ||
        !r.Table(rec.Int(96), norms, 1, what + " normal bones", normalBones) ||
        !r.Table(rec.Int(88), verts, 12, what + " vertices", vertices) ||
        !r.Table(rec.Int(100), norms, 12, what + " normals", normals) ||
        !r.Table(rec.Int(76), rec.Int(72), MeshSize, what + " meshes", meshes)) {
        return false;
    }
    for (std::size_t v = 0; v < vertexBones.Size(); ++v) {
        model.VertexBones.push_back(vertexBones.Byte(v));
        model.Vertices.push_back(vertices.Vector(12 * v));
        if (!r.InRange(model.VertexBones.back(), 0, bones - 1, what + " vertex bone")) {
            return false;
        }
    }
    for (std::size_t n = 0; n < normalBones.Size(); ++n) {
        model.NormalBones.push_back(normalBones.Byte(n));
        model.Normals.push_back(normals.Vector(12 * n));
        if (!r.InRange(model.NormalBones.back(), 0, bones - 1, what + " normal bone")) {
            return false;
        }
    }
    for (std::size_t k = 0; k < meshes.Size() / MeshSize; ++k) {
        const Record mr = meshes.Item(k, MeshSize);
        Mesh mesh;
        mesh.DeclaredTriangles = mr.Int(0);
        mesh.SkinRef = mr.Int(8);
        mesh.Normals = mr.Int(12);
        const int at = mr.Int(4);
        if (at < 0) {
            return r.Fail(MSG_MDL_BEYOND_END, {Named(what + " mesh", k) + " triangles",
                                               Number(at), Number(at),
                                               Number(std::int64_t(r.File().Size()))});
        }
        if (!ReadCommands(r, model, std::size_t(at), mesh, Named(what + " mesh", k))) {
            return false;
        }
        model.Meshes.push_back(std::move(mesh));
    }
    return true;
}

bool ReadBodyParts(Reader& r, StudioModel& m) {
    Record table;
    if (!r.Table(r.File().Int(208), r.File().Int(204), BodyPartSize, "body parts", table)) {
        return false;
    }
    for (std::size_t p = 0; p < table.Size() / BodyPartSize; ++p) {
        const Record rec = table.Item(p, BodyPartSize);
        BodyPart part{rec.Text(0, 64), rec.Int(68), {}};
        Record models;
        const std::string what = Named("body part", p);
        if (!r.Table(rec.Int(72), rec.Int(64), ModelSize, what + " models", models)) {
            return false;
        }
        for (std::size_t k = 0; k < models.Size() / ModelSize; ++k) {
            Model model;
            if (!ReadModel(r, models.Item(k, ModelSize), Named(what + " model", k),
                           int(m.Bones.size()), model)) {
                return false;
            }
            part.Models.push_back(std::move(model));
        }
        m.BodyParts.push_back(std::move(part));
    }
    return true;
}

// The textures and skin families of a file (the model, or its NAMET.mdl).
bool ReadTextures(Reader& r, StudioModel& m) {
    const Record& f = r.File();
    Record table;
    if (!r.Table(f.Int(184), f.Int(180), TextureSize, "textures", table)) {
        return false;
    }
    for (std::size_t t = 0; t < table.Size() / TextureSize; ++t) {
        const Record rec = table.Item(t, TextureSize);
        Texture tex{rec.Text(0, 64), rec.Int(64), rec.Int(68), rec.Int(72), {}, {}};
        const std::string what = Named("texture", t) + " \"" + tex.Name + "\"";
        if (tex.Width < 0 || tex.Height < 0) {
            return r.Fail(MSG_MDL_BAD_COUNT,
                          {what + " size", Number(tex.Width) + " x " + Number(tex.Height)});
        }
        const std::int64_t pixels = std::int64_t(tex.Width) * tex.Height;
        Record data;
        if (!r.Table(rec.Int(76), pixels + std::int64_t(PaletteSize), 1, what + " pixels",
                     data)) {
            return false;
        }
        for (std::size_t i = 0; i < data.Size(); ++i) {
            (i < std::size_t(pixels) ? tex.Pixels : tex.Palette).push_back(data.Byte(i));
        }
        m.Textures.push_back(std::move(tex));
    }
    const int refs = f.Int(192);
    const int families = f.Int(196);
    if (refs < 0 || families < 0) {
        return r.Fail(MSG_MDL_BAD_COUNT,
                      {"skin families", Number(families) + " x " + Number(refs)});
    }
    Record skins;
    if (!r.Table(f.Int(200), std::int64_t(refs) * families, 2, "skin families", skins)) {
        return false;
    }
    m.SkinRefs = refs;
    for (int fam = 0; refs > 0 && fam < families; ++fam) {
        std::vector<int> row;
        for (int k = 0; k < refs; ++k) {
            row.push_back(skins.Short(2 * (std::size_t(fam) * std::size_t(refs) + std::size_t(k))));
            if (!r.InRange(row.back(), 0, std::int64_t(m.Textures.size()) - 1,
                           Named("skin family", std::size_t(fam)) + ", " +
                               Named("reference", std::size_t(k)))) {
                return false;
            }
        }
        m.SkinFamilies.push_back(std::move(row));
    }
    return true;
}

// A model without textures of its own takes those of NAMET.mdl.
bool ReadExternalTextures(Reader& r, StudioModel& m, const SideFiles& side,
                          std::vector<StudioProblem>& notes) {
    if (side.Stem.empty() || !side.Read) {
        return true;
    }
    const std::string name = side.Stem + "T.mdl";
    std::optional<std::string> bytes = side.Read(name);
    if (!bytes) {
        notes.push_back({MSG_MDL_TEXTURES_MISSING, {name}});
        return true;
    }
    Reader textures(*bytes, name);
    if (!textures.Head("IDST", HeaderSize) || !ReadTextures(textures, m)) {
        return r.Fail(textures.Error()->Message, textures.Error()->Args);
    }
    m.ExternalTextures = true;
    return true;
}

bool CheckSkinRefs(Reader& r, const StudioModel& m) {
    if (m.SkinFamilies.empty()) {
        return true; // no textures: nothing to look up
    }
    for (std::size_t p = 0; p < m.BodyParts.size(); ++p) {
        for (std::size_t k = 0; k < m.BodyParts[p].Models.size(); ++k) {
            const Model& model = m.BodyParts[p].Models[k];
            for (std::size_t s = 0; s < model.Meshes.size(); ++s) {
                if (!r.InRange(model.Meshes[s].SkinRef, 0, m.SkinRefs - 1,
                               Named(Named(Named("body part", p) + " model", k) + " mesh", s) +
                                   " skin reference")) {
                    return false;
                }
            }
        }
    }
    return true;
}

} // namespace

std::size_t Model::TriangleCount() const {
    std::size_t n = 0;
    for (const Mesh& mesh : Meshes) {
        n += mesh.Triangles.size();
    }
    return n;
}

std::string ProblemText(const StudioProblem& problem, const MessageTexts& texts) {
    if (problem.Unread) {
        return DescribeOpenProblem(*problem.Unread, texts);
    }
    return FormatMessage(texts[std::size_t(problem.Message)], problem.Args);
}

StudioLoad ReadStudioModel(std::string_view bytes, const SideFiles& side) {
    StudioLoad load;
    Reader r(bytes, "");
    StudioModel m;
    if (r.Head("IDST", HeaderSize)) {
        const Record& f = r.File();
        m.Name = f.Text(8, 64);
        m.Length = f.Int(72);
        m.Eye = f.Vector(76);
        m.Min = f.Vector(88);
        m.Max = f.Vector(100);
        m.BoxMin = f.Vector(112);
        m.BoxMax = f.Vector(124);
        m.Flags = f.Int(136);
        const bool ownTextures = f.Int(180) > 0;
        if (ReadBones(r, m) && ReadRigging(r, m) && ReadGroups(r, m, bytes, side, load.Notes) &&
            ReadSequences(r, m) && ReadBodyParts(r, m) &&
            (ownTextures ? ReadTextures(r, m) : ReadExternalTextures(r, m, side, load.Notes)) &&
            CheckSkinRefs(r, m)) {
            load.Model = std::move(m);
        }
    }
    load.Error = r.Error();
    return load;
}

StudioLoad ReadStudioFile(const std::string& path) {
    std::string bytes;
    const std::optional<std::string> found = paths::Resolve(path);
    InputFile file = InputFile::Open(found.value_or(path), FileKind::Model);
    if (!file.ReadAll(bytes)) {
        StudioLoad load;
        load.Error = StudioProblem{MSG_MDL_UNREADABLE, {}, file.Problem()};
        return load;
    }
    SideFiles side;
    const std::string name = paths::FileNameOf(*found);
    const std::size_t dot = name.rfind('.');
    side.Stem = dot == std::string::npos ? name : name.substr(0, dot);
    const std::string folder = paths::FolderOf(*found);
    side.Read = [folder](const std::string& file) -> std::optional<std::string> {
        const std::optional<std::string> at = paths::Resolve(paths::Join(folder, file));
        return at ? ReadFileText(*at, FileKind::Model) : std::nullopt;
    };
    return ReadStudioModel(bytes, side);
}

std::optional<std::vector<std::int16_t>> DecodeAnimation(std::string_view bytes,
                                                         std::size_t offset, int frames) {
    std::vector<std::int16_t> values(std::size_t(std::max(frames, 0)));
    const Record file(bytes);
    const bool ok = WalkRuns(bytes, offset, frames - 1,
                             [&](std::int64_t first, int total, int valid, std::size_t at) {
                                 for (std::int64_t f = first;
                                      f < first + total && f < std::int64_t(values.size()); ++f) {
                                     values[std::size_t(f)] =
                                         std::int16_t(FrameValue(file, first, valid, at, int(f)));
                                 }
                             });
    if (!ok) {
        return std::nullopt;
    }
    return values;
}

std::array<float, 6> BoneChannels(const StudioModel& model, int sequence, int blend, int frame,
                                  int bone) {
    if (bone < 0 || std::size_t(bone) >= model.Bones.size()) {
        return {};
    }
    const Bone& b = model.Bones[std::size_t(bone)];
    std::array<float, 6> channels = b.Value;
    if (sequence < 0 || std::size_t(sequence) >= model.Sequences.size()) {
        return channels;
    }
    const Sequence& seq = model.Sequences[std::size_t(sequence)];
    if (blend < 0 || blend >= seq.Blends || seq.Frames <= 0 || seq.Group < 0 ||
        std::size_t(seq.Group) >= model.GroupBytes.size()) {
        return channels;
    }
    const std::string_view bytes = model.GroupBytes[std::size_t(seq.Group)];
    const std::size_t record = std::size_t(seq.AnimationOffset) +
                               (std::size_t(blend) * model.Bones.size() + std::size_t(bone)) *
                                   AnimationSize;
    const Record anim(bytes.size() >= record ? bytes.substr(record, AnimationSize) : "");
    if (anim.Size() < AnimationSize) {
        return channels;
    }
    const int shown = std::clamp(frame, 0, seq.Frames - 1);
    for (std::size_t k = 0; k < 6; ++k) {
        const int offset = anim.Word(2 * k);
        if (offset == 0) {
            continue;
        }
        const Record file(bytes);
        int value = 0;
        if (WalkRuns(bytes, record + std::size_t(offset), shown,
                     [&](std::int64_t first, int, int valid, std::size_t at) {
                         value = FrameValue(file, first, valid, at, shown);
                     })) {
            channels[k] += float(value) * b.Scale[k];
        }
    }
    return channels;
}

} // namespace quarle::studio
