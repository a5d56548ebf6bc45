#include "compile/ModelBuild.h"

#include "compile/CompilerText.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace quarle::compile {

namespace {

constexpr double Pi = 3.14159265358979323846;

using Matrix = std::array<std::array<float, 4>, 3>;

// The compiler's angle matrices: angles in degrees, sines and cosines of
// single-precision angles.
struct Trig {
    float Sr, Sp, Sy, Cr, Cp, Cy;
};
Trig Angles(const Vec3& degrees) {
    Trig t{};
    float angle = static_cast<float>(degrees[2] * (Pi * 2 / 360));
    t.Sy = static_cast<float>(std::sin(angle));
    t.Cy = static_cast<float>(std::cos(angle));
    angle = static_cast<float>(degrees[1] * (Pi * 2 / 360));
    t.Sp = static_cast<float>(std::sin(angle));
    t.Cp = static_cast<float>(std::cos(angle));
    angle = static_cast<float>(degrees[0] * (Pi * 2 / 360));
    t.Sr = static_cast<float>(std::sin(angle));
    t.Cr = static_cast<float>(std::cos(angle));
    return t;
}

Matrix AngleMatrix(const Vec3& degrees) {
    const Trig t = Angles(degrees);
    Matrix m{};
    m[0][0] = t.Cp * t.Cy;
    m[1][0] = t.Cp * t.Sy;
    m[2][0] = -t.Sp;
    m[0][1] = t.Sr * t.Sp * t.Cy + t.Cr * -t.Sy;
    m[1][1] = t.Sr * t.Sp * t.Sy + t.Cr * t.Cy;
    m[2][1] = t.Sr * t.Cp;
    m[0][2] = t.Cr * t.Sp * t.Cy + -t.Sr * -t.Sy;
    m[1][2] = t.Cr * t.Sp * t.Sy + -t.Sr * t.Cy;
    m[2][2] = t.Cr * t.Cp;
    return m;
}

// The inverse of a rotation (no translation) is its transpose.
Matrix RotationInverse(const Matrix& m) {
    Matrix t{};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            t[i][j] = m[j][i];
        }
    }
    return t;
}

Matrix Concat(const Matrix& a, const Matrix& b) {
    Matrix out{};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 4; ++j) {
            out[i][j] = a[i][0] * b[0][j] + a[i][1] * b[1][j] + a[i][2] * b[2][j];
        }
        out[i][3] = out[i][3] + a[i][3];
    }
    return out;
}

Vec3 Transform(const Vec3& v, const Matrix& m) {
    Vec3 out{};
    for (std::size_t i = 0; i < 3; ++i) {
        out[i] = v[0] * m[i][0] + v[1] * m[i][1] + v[2] * m[i][2] + m[i][3];
    }
    return out;
}

// The compiler's normalising: the length in double precision.
void Normalize(Vec3& v) {
    double length = 0;
    for (float c : v) {
        length += static_cast<double>(c * c);
    }
    length = std::sqrt(length);
    if (length == 0) {
        return;
    }
    for (float& c : v) {
        c = static_cast<float>(static_cast<double>(c) / length);
    }
}

float Dot(const Vec3& a, const Vec3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

// C's conversion of a float to int, as x86 does it where C leaves it open.
int Truncate(float v) {
    if (!(std::fabs(v) < 2147483648.0f)) {
        return std::numeric_limits<int>::min();
    }
    return static_cast<int>(v);
}

// Near a step of the cut to 0.01: another build's rounding (a few units in
// the last place of the numbers it worked with) may fall on the other side.
// A place right on a step is where exact arithmetic put it.
bool NearStep(float scaled, float magnitude) {
    const float frac = std::fabs(scaled - std::trunc(scaled));
    const float slack = 4e-7f * (magnitude + 100.0f);
    return (frac != 0.0f && frac < slack) || (frac != 0.0f && 1.0f - frac < slack);
}

struct VertexKey {
    int Bone;
    std::array<int, 3> At;
    bool operator==(const VertexKey&) const = default;
};
struct VertexHash {
    std::size_t operator()(const VertexKey& k) const {
        std::uint64_t h = static_cast<std::uint32_t>(k.Bone);
        for (int v : k.At) {
            h = h * 0x9E3779B97F4A7C15ull + static_cast<std::uint32_t>(v);
        }
        return static_cast<std::size_t>(h ^ (h >> 29));
    }
};

// The normals kept so far, looked up by bone, texture and a grid on the
// unit sphere whose cells are wider than the merging angle.
class NormalGrid {
public:
    static constexpr float Cell = 0.036f;

    // Whether a kept normal is within the angle; near tells whether the
    // best one is so close to the limit that it may go either way.
    bool Matches(int bone, int texture, const Vec3& n, float blend, bool& near) const {
        const auto c = CellOf(n);
        float best = -2.0f;
        for (int dx = -1; dx <= 1; ++dx) {
            for (int dy = -1; dy <= 1; ++dy) {
                for (int dz = -1; dz <= 1; ++dz) {
                    const auto it = cells_.find(Key(bone, texture, c[0] + dx, c[1] + dy, c[2] + dz));
                    if (it == cells_.end()) {
                        continue;
                    }
                    for (const Vec3& kept : it->second) {
                        best = std::max(best, Dot(kept, n));
                    }
                }
            }
        }
        near = std::fabs(best - blend) < 2e-6f;
        return best > blend;
    }

    void Keep(int bone, int texture, const Vec3& n) {
        const auto c = CellOf(n);
        cells_[Key(bone, texture, c[0], c[1], c[2])].push_back(n);
    }

private:
    static std::array<int, 3> CellOf(const Vec3& n) {
        // A broken file may give a normal that is no number or far out; it
        // lands in an edge cell instead of an int it cannot become.
        const auto cell = [](float v) {
            const float c = std::floor((v + 1.0f) / Cell);
            return std::isfinite(c) ? static_cast<int>(std::clamp(c, -1024.0f, 1024.0f)) : 0;
        };
        return {cell(n[0]), cell(n[1]), cell(n[2])};
    }
    static std::uint64_t Key(int bone, int texture, int x, int y, int z) {
        return (static_cast<std::uint64_t>(bone & 0x3FF) << 54) |
               (static_cast<std::uint64_t>(texture & 0x3FFF) << 40) |
               (static_cast<std::uint64_t>(x & 0xFF) << 16) |
               (static_cast<std::uint64_t>(y & 0xFF) << 8) | static_cast<std::uint64_t>(z & 0xFF);
    }
    std::unordered_map<std::uint64_t, std::vector<Vec3>> cells_;
};

// The compiler's texture coordinate packing along one axis: clamp to -1..2,
// then, while the triangle that reaches lowest would still lie below the
// highest one after a step of one bitmap up, move it up; else move the one
// that reaches highest down by one, while it would stay above the lowest.
void PackAxis(std::vector<std::array<float, 3>>& tris) {
    for (auto& t : tris) {
        for (float& c : t) {
            if (std::isnan(c)) {
                c = 0.0f;
            }
            c = c > 2.0f ? 2.0f : c;
            c = c < -1.0f ? -1.0f : c;
        }
    }
    const auto low = [&](int i) {
        const auto& t = tris[static_cast<std::size_t>(i)];
        return std::min(t[0], std::min(t[1], t[2]));
    };
    const auto high = [&](int i) {
        const auto& t = tris[static_cast<std::size_t>(i)];
        return std::max(t[0], std::max(t[1], t[2]));
    };
    // Mostly nothing moves: the first round, in one pass.
    {
        int k = -1;
        int n = -1;
        for (int i = 0; i < static_cast<int>(tris.size()); ++i) {
            k = k < 0 || low(i) < low(k) ? i : k;
            n = n < 0 || high(i) > high(n) ? i : n;
        }
        if (k < 0 || (static_cast<double>(high(k)) + 1.0 >= static_cast<double>(high(n)) &&
                      static_cast<double>(low(n)) - 1.0 <= static_cast<double>(low(k)))) {
            return;
        }
    }
    // The lowest first, by index among equals; the highest first, by index.
    std::set<std::pair<float, int>> byLow;
    std::set<std::pair<float, int>> byHigh; // (-high, index)
    for (int i = 0; i < static_cast<int>(tris.size()); ++i) {
        byLow.insert({low(i), i});
        byHigh.insert({-high(i), i});
    }
    const auto shift = [&](int i, double by) {
        byLow.erase({low(i), i});
        byHigh.erase({-high(i), i});
        for (float& c : tris[static_cast<std::size_t>(i)]) {
            c = static_cast<float>(c + by);
        }
        byLow.insert({low(i), i});
        byHigh.insert({-high(i), i});
    };
    const long most = 8L * static_cast<long>(tris.size()) + 64;
    for (long step = 0; step < most && !tris.empty(); ++step) {
        const int k = byLow.begin()->second;
        const int n = byHigh.begin()->second;
        const float minU = low(k);
        const float maxU = high(n);
        if (static_cast<double>(high(k)) + 1.0 < static_cast<double>(maxU)) {
            shift(k, 1.0);
        } else if (static_cast<double>(low(n)) - 1.0 > static_cast<double>(minU)) {
            shift(n, -1.0);
        } else {
            break;
        }
    }
}

std::string NodeName(const ReferenceSmd& part, int index) {
    return index >= 0 && index < MaxSourceBones ? part.Nodes[static_cast<std::size_t>(index)].Name
                                                : std::string();
}

} // namespace

void BuildBoneFrames(const ReferenceSmd& part, std::vector<BoneFrame>& frames) {
    frames.resize(MaxSourceBones);
    const int bones = std::clamp(part.NumBones, 0, MaxSourceBones);
    for (int i = 0; i < bones; ++i) {
        const BonePose& pose = part.Skeleton[static_cast<std::size_t>(i)];
        Vec3 degrees{};
        for (std::size_t k = 0; k < 3; ++k) {
            degrees[k] = static_cast<float>(pose.Rot[k] * (180.0 / Pi));
        }
        BoneFrame& f = frames[static_cast<std::size_t>(i)];
        const int parent = part.Nodes[static_cast<std::size_t>(i)].Parent;
        const Matrix turn = AngleMatrix(degrees);
        if (parent == -1 || parent < 0 || parent >= MaxSourceBones) {
            f.M = turn;
            f.IM = RotationInverse(turn);
            f.WorldOrg = pose.Pos;
            continue;
        }
        const BoneFrame p = frames[static_cast<std::size_t>(parent)];
        f.M = Concat(p.M, turn);
        f.IM = Concat(RotationInverse(turn), p.IM);
        const Vec3 at = Transform(pose.Pos, p.M);
        for (std::size_t k = 0; k < 3; ++k) {
            f.WorldOrg[k] = at[k] + p.WorldOrg[k];
        }
    }
}

PartMerge MergePart(const ReferenceSmd& part, const std::vector<BoneFrame>& frames, const Vec3& adjust,
                    float scale, long stopAbove) {
    const auto blend = static_cast<float>(std::cos(2.0 * (Pi / 180.0)));
    PartMerge result;
    std::unordered_set<VertexKey, VertexHash> vertices;
    std::unordered_set<VertexKey, VertexHash> nearVertices;
    vertices.reserve(std::min<std::size_t>(part.Triangles.size() * 3, 1u << 16));
    NormalGrid normals;
    for (const CompilerTriangle& tri : part.Triangles) {
        for (const CompilerCorner& c : tri.Corners) {
            if (c.Bone < 0 || c.Bone >= MaxSourceBones) {
                continue;
            }
            const BoneFrame& f = frames[static_cast<std::size_t>(c.Bone)];

            Vec3 n = Transform(c.Normal, f.IM);
            Normalize(n);
            bool near = false;
            if (!normals.Matches(c.Bone, tri.Texture, n, blend, near)) {
                ++result.Normals.Count;
                if (Dot(n, n) > 0.5f) {
                    normals.Keep(c.Bone, tri.Texture, n);
                }
            }
            result.Normals.Uncertain += near ? 1 : 0;

            Vec3 p{};
            float magnitude = 0;
            for (std::size_t k = 0; k < 3; ++k) {
                p[k] = (c.Pos[k] - adjust[k]) * scale - f.WorldOrg[k];
                magnitude = std::max({magnitude, std::fabs(p[k]), std::fabs(f.WorldOrg[k])});
            }
            const Vec3 local = Transform(p, f.IM);
            VertexKey key{c.Bone, {}};
            bool nearStep = false;
            for (std::size_t k = 0; k < 3; ++k) {
                const float scaled = local[k] * 100;
                key.At[k] = Truncate(scaled);
                nearStep = nearStep || NearStep(scaled, magnitude * 100);
            }
            if (vertices.insert(key).second) {
                ++result.Vertices.Count;
            }
            if (nearStep) {
                nearVertices.insert(key);
            }
        }
        result.Vertices.Uncertain = static_cast<long>(nearVertices.size());
        if (result.Vertices.Count - result.Vertices.Uncertain > stopAbove &&
            result.Normals.Count - result.Normals.Uncertain > stopAbove) {
            break;
        }
    }
    result.Vertices.Uncertain = static_cast<long>(nearVertices.size());
    return result;
}

std::vector<UvSpan> PackedUvSpans(const ReferenceSmd& part) {
    std::vector<std::vector<std::array<float, 3>>> us(part.Textures.size());
    std::vector<std::vector<std::array<float, 3>>> vs(part.Textures.size());
    for (const CompilerTriangle& tri : part.Triangles) {
        const auto t = static_cast<std::size_t>(tri.Texture);
        us[t].push_back({tri.Corners[0].U, tri.Corners[1].U, tri.Corners[2].U});
        vs[t].push_back({tri.Corners[0].V, tri.Corners[1].V, tri.Corners[2].V});
    }
    std::vector<UvSpan> spans(part.Textures.size());
    for (std::size_t t = 0; t < spans.size(); ++t) {
        if (us[t].empty()) {
            continue;
        }
        PackAxis(us[t]);
        PackAxis(vs[t]);
        UvSpan& s = spans[t];
        s.Any = true;
        s.MinU = s.MinV = std::numeric_limits<float>::max();
        s.MaxU = s.MaxV = std::numeric_limits<float>::lowest();
        for (std::size_t i = 0; i < us[t].size(); ++i) {
            for (std::size_t k = 0; k < 3; ++k) {
                s.MinU = std::min(s.MinU, us[t][i][k]);
                s.MaxU = std::max(s.MaxU, us[t][i][k]);
                s.MinV = std::min(s.MinV, vs[t][i][k]);
                s.MaxV = std::max(s.MaxV, vs[t][i][k]);
            }
        }
    }
    return spans;
}

SkinSize SkinOf(const std::vector<UvSpan>& spans, int bitmapWidth, int bitmapHeight, bool chrome) {
    if (chrome) {
        return {64, 64};
    }
    float minS = 9999999.0f;
    float maxS = -9999999.0f;
    float minT = 9999999.0f;
    float maxT = -9999999.0f;
    const auto pixel = [](float c, int size) {
        return static_cast<float>(Truncate(c * static_cast<float>(size - 1)));
    };
    for (const UvSpan& s : spans) {
        if (!s.Any) {
            continue;
        }
        // The cut to whole pixels keeps the order, so the span's ends give
        // the ends in pixels.
        minS = std::min(minS, pixel(s.MinU, bitmapWidth));
        maxS = std::max(maxS, pixel(s.MaxU, bitmapWidth));
        minT = std::min(minT, pixel(s.MinV, bitmapHeight));
        maxT = std::max(maxT, pixel(s.MaxV, bitmapHeight));
    }
    if (maxS < minS) {
        return {};
    }
    const long width = (static_cast<long>(Truncate(maxS - minS + 1)) + 3) & ~3L;
    const long height = Truncate(maxT - minT + 1);
    return {width, height};
}

bool IsChromeName(std::string_view name) {
    for (std::size_t i = 0; i + 6 <= name.size(); ++i) {
        if (EqualsNoCase(name.substr(i, 6), "chrome")) {
            return true;
        }
    }
    return false;
}

std::vector<bool> UsedBones(const ReferenceSmd& part) {
    std::vector<bool> used(MaxSourceBones, false);
    for (const CompilerTriangle& tri : part.Triangles) {
        for (const CompilerCorner& c : tri.Corners) {
            if (c.Bone >= 0 && c.Bone < MaxSourceBones) {
                used[static_cast<std::size_t>(c.Bone)] = true;
            }
        }
    }
    for (int k = 0; k < MaxSourceBones; ++k) {
        if (!used[static_cast<std::size_t>(k)]) {
            continue;
        }
        int n = part.Nodes[static_cast<std::size_t>(k)].Parent;
        for (int steps = 0; n >= 0 && n < MaxSourceBones && !used[static_cast<std::size_t>(n)] &&
                            steps < MaxSourceBones;
             ++steps) {
            used[static_cast<std::size_t>(n)] = true;
            n = part.Nodes[static_cast<std::size_t>(n)].Parent;
        }
    }
    return used;
}

std::string Renamed(const std::string& name,
                    const std::vector<std::pair<std::string, std::string>>& renames) {
    for (const auto& [from, to] : renames) {
        if (name == from) {
            return to;
        }
    }
    return name;
}

int FindBone(const std::vector<ModelBone>& bones, std::string_view name) {
    for (std::size_t k = 0; k < bones.size(); ++k) {
        if (bones[k].Name == name) {
            return static_cast<int>(k);
        }
    }
    return -1;
}

int FindBoneNoCase(const std::vector<ModelBone>& bones, std::string_view name) {
    for (std::size_t k = 0; k < bones.size(); ++k) {
        if (EqualsNoCase(bones[k].Name, name)) {
            return static_cast<int>(k);
        }
    }
    return -1;
}

std::vector<ParentClash> AddPartBones(std::vector<ModelBone>& bones, const ReferenceSmd& part,
                                      const std::vector<bool>& used,
                                      const std::vector<std::pair<std::string, std::string>>& renames) {
    std::vector<ParentClash> clashes;
    const int count = std::clamp(part.NumBones, 0, MaxSourceBones);
    for (int j = 0; j < count; ++j) {
        if (!used[static_cast<std::size_t>(j)]) {
            continue;
        }
        const CompilerNode& node = part.Nodes[static_cast<std::size_t>(j)];
        const std::string name = Renamed(node.Name, renames);
        const int parent =
            node.Parent == -1 ? -1 : FindBone(bones, Renamed(NodeName(part, node.Parent), renames));
        const int k = FindBone(bones, name);
        if (k == -1) {
            bones.push_back({name, parent, part.Skeleton[static_cast<std::size_t>(j)]});
            continue;
        }
        const int before = bones[static_cast<std::size_t>(k)].Parent;
        if (parent != before) {
            clashes.push_back({name, parent >= 0 ? bones[static_cast<std::size_t>(parent)].Name : "",
                               before >= 0 ? bones[static_cast<std::size_t>(before)].Name : ""});
        }
    }
    return clashes;
}

// ---- animation data ----

SequenceMotion SequenceValues(const std::vector<AnimationSmd>& blends, const SequenceShape& shape,
                              const std::vector<ModelBone>& bones,
                              const std::vector<std::pair<std::string, std::string>>& renames) {
    SequenceMotion motion;
    if (blends.empty() || !blends[0].HasFrames) {
        return motion;
    }
    const AnimationSmd& first = blends[0];
    const int frames = first.LastFrame - first.FirstFrame + 1;
    const auto nframes = static_cast<std::size_t>(frames);
    const int localBones = std::clamp(first.NumBones, 0, MaxSourceBones);
    motion.Frames = frames;
    motion.Blends = static_cast<int>(blends.size());

    // Each blend's poses, a full track per bone of the first blend (the
    // compiler reads every blend by the first one's bone list).
    std::vector<std::vector<std::vector<BonePose>>> local(blends.size());
    for (std::size_t q = 0; q < blends.size(); ++q) {
        local[q].resize(static_cast<std::size_t>(localBones));
        for (int j = 0; j < localBones; ++j) {
            std::vector<BonePose>& track = local[q][static_cast<std::size_t>(j)];
            if (static_cast<std::size_t>(j) < blends[q].Poses.size()) {
                track = blends[q].Poses[static_cast<std::size_t>(j)];
            }
            track.resize(nframes);
        }
    }
    const auto isRoot = [&](int j) { return first.Nodes[static_cast<std::size_t>(j)].Parent == -1; };

    if (shape.Looping) {
        for (auto& blend : local) {
            for (auto& track : blend) {
                const std::size_t m = nframes - 1;
                for (std::size_t c = 0; c < 3; ++c) {
                    if (!(shape.MotionType & (0x40 << c))) {
                        track[m].Pos[c] = track[0].Pos[c];
                    }
                }
                track[m].Rot = track[0].Rot;
            }
        }
    }
    if (frames > 1 && localBones > 0) {
        // Linear motion of the first bone leaves the roots.
        Vec3 moved{};
        const auto& pos0 = local[0][0];
        for (std::size_t c = 0; c < 3; ++c) {
            if (shape.MotionType & (0x40 << c)) {
                moved[c] = pos0[nframes - 1].Pos[c] - pos0[0].Pos[c];
            }
        }
        for (std::size_t n = 0; n < nframes; ++n) {
            const double share = static_cast<double>(n) * 1.0 / (frames - 1);
            Vec3 step{};
            for (std::size_t c = 0; c < 3; ++c) {
                step[c] = static_cast<float>(moved[c] * share);
            }
            for (int j = 0; j < localBones; ++j) {
                if (!isRoot(j)) {
                    continue;
                }
                for (auto& blend : local) {
                    for (std::size_t c = 0; c < 3; ++c) {
                        blend[static_cast<std::size_t>(j)][n].Pos[c] -= step[c];
                    }
                }
            }
        }
    }
    // Rotations named by XR, YR, ZR keep the first frame's on the roots.
    for (int j = 0; j < localBones; ++j) {
        if (!isRoot(j)) {
            continue;
        }
        for (auto& blend : local) {
            auto& track = blend[static_cast<std::size_t>(j)];
            const Vec3 kept = track[0].Rot;
            for (auto& pose : track) {
                for (std::size_t c = 0; c < 3; ++c) {
                    if (shape.MotionType & (0x08 << c)) {
                        pose.Rot[c] = kept[c];
                    }
                }
            }
        }
    }

    // Onto the model's bones: the last of the file's bones of a name wins.
    std::vector<int> localOf(bones.size(), -1);
    for (int j = 0; j < localBones; ++j) {
        const int k = FindBone(bones, Renamed(first.Nodes[static_cast<std::size_t>(j)].Name, renames));
        if (k >= 0) {
            localOf[static_cast<std::size_t>(k)] = j;
        }
    }
    motion.Deltas.resize(blends.size());
    for (std::size_t q = 0; q < blends.size(); ++q) {
        motion.Deltas[q].resize(bones.size());
        for (std::size_t k = 0; k < bones.size(); ++k) {
            const int j = localOf[k];
            if (j < 0) {
                continue; // the reference pose: every value is 0
            }
            const auto& track = local[q][static_cast<std::size_t>(j)];
            const BonePose& ref = bones[k].Pose;
            for (std::size_t c = 0; c < 6; ++c) {
                std::vector<float>& values = motion.Deltas[q][k][c];
                values.resize(nframes);
                for (std::size_t n = 0; n < nframes; ++n) {
                    if (c < 3) {
                        values[n] = track[n].Pos[c] - ref.Pos[c];
                        continue;
                    }
                    float v = track[n].Rot[c - 3] - ref.Rot[c - 3];
                    if (static_cast<double>(v) >= Pi) {
                        v = static_cast<float>(v - Pi * 2);
                    }
                    if (static_cast<double>(v) < -Pi) {
                        v = static_cast<float>(v + Pi * 2);
                    }
                    values[n] = v;
                }
            }
        }
    }
    return motion;
}

AnimationScales::AnimationScales(std::size_t bones) : min_(bones), max_(bones) {
    for (std::size_t k = 0; k < bones; ++k) {
        for (std::size_t c = 0; c < 6; ++c) {
            min_[k][c] = c < 3 ? -128.0f : static_cast<float>(-Pi / 8.0);
            max_[k][c] = c < 3 ? 128.0f : static_cast<float>(Pi / 8.0);
        }
    }
}

void AnimationScales::Widen(const SequenceMotion& motion) {
    for (const auto& blend : motion.Deltas) {
        for (std::size_t k = 0; k < blend.size() && k < min_.size(); ++k) {
            for (std::size_t c = 0; c < 6; ++c) {
                for (float v : blend[k][c]) {
                    min_[k][c] = std::min(min_[k][c], v);
                    max_[k][c] = std::max(max_[k][c], v);
                }
            }
        }
    }
}

float AnimationScales::Scale(std::size_t bone, int channel) const {
    const float lo = min_[bone][static_cast<std::size_t>(channel)];
    const float hi = max_[bone][static_cast<std::size_t>(channel)];
    if (!(lo < hi)) {
        return 1.0f / 32.0f;
    }
    return -lo > hi ? static_cast<float>(lo / -32768.0) : hi / 32767;
}

namespace {

// How many entries the compiler's folding of a channel takes.
long FoldedEntries(const std::vector<short>& value) {
    const std::size_t n = value.size();
    if (n == 0) {
        return 0;
    }
    long entries = 2; // the first count and the first value
    int valid = 1;
    int total = 1;
    for (std::size_t m = 1; m < n; ++m) {
        if (total == 255) {
            ++entries; // a new count
            valid = 1;
            total = 0;
            ++entries;
        } else if (value[m] != value[m - 1] ||
                   (total == valid && m < n - 1 && value[m] != value[m + 1])) {
            if (total != valid) {
                ++entries; // a new count
                valid = 0;
                total = 0;
            }
            ++valid;
            ++entries;
        }
        ++total;
    }
    if (entries == 2 && value[0] == 0) {
        return 0;
    }
    return entries;
}

short ToShort(float v) {
    // Beyond the range x86 gives the lowest value.
    if (!(std::fabs(v) < 2147483648.0f)) {
        return std::numeric_limits<short>::min();
    }
    return static_cast<short>(static_cast<int>(v));
}

} // namespace

MergedCount AnimationBytes(const SequenceMotion& motion, const AnimationScales& scales) {
    MergedCount result;
    if (motion.Deltas.empty()) {
        return result;
    }
    const std::size_t bones = motion.Deltas[0].size();
    const long structs = static_cast<long>(motion.Deltas.size() * bones) * 12;
    long values = 0;
    long index = 0;
    long nearSteps = 0;
    std::vector<short> quantized(static_cast<std::size_t>(motion.Frames));
    for (const auto& blend : motion.Deltas) {
        for (std::size_t k = 0; k < bones; ++k) {
            for (int c = 0; c < 6; ++c) {
                const std::vector<float>& v = blend[k][static_cast<std::size_t>(c)];
                if (v.empty()) {
                    continue; // all 0: nothing stored
                }
                const float scale = scales.Scale(k, c);
                for (std::size_t n = 0; n < v.size(); ++n) {
                    const float q = v[n] / scale;
                    quantized[n] = ToShort(q);
                    // A division rounded twice (to double, then to float)
                    // may land a unit in the last place away.
                    const float frac = std::fabs(q - std::trunc(q));
                    const float slack = 5e-7f * (std::fabs(q) + 1.0f);
                    nearSteps += frac != 0.0f && (frac < slack || 1.0f - frac < slack) ? 1 : 0;
                }
                quantized.resize(v.size());
                values += FoldedEntries(quantized);
                quantized.resize(static_cast<std::size_t>(motion.Frames));
            }
            const long distance = structs + 2 * values - 12 * index;
            result.Count = std::max(result.Count, distance);
            ++index;
        }
    }
    result.Uncertain = std::min(2 * nearSteps, result.Count);
    return result;
}

long AnimationBytesBound(const SequenceMotion& motion) {
    if (motion.Deltas.empty()) {
        return 0;
    }
    const std::size_t bones = motion.Deltas[0].size();
    long bytes = static_cast<long>(motion.Deltas.size() * bones) * 12;
    for (const auto& blend : motion.Deltas) {
        for (const auto& six : blend) {
            for (const std::vector<float>& v : six) {
                long changes = 0;
                for (std::size_t n = 1; n < v.size(); ++n) {
                    changes += v[n] != v[n - 1] ? 1 : 0;
                }
                bytes += 2 * (2 + 3 * changes + 2 * (static_cast<long>(v.size()) / 255 + 1));
            }
        }
    }
    return bytes;
}

} // namespace quarle::compile
