#include "preview/ModelPose.h"

#include "document/Paths.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quarle::preview {

namespace {

using Index = std::size_t;

Index At(int i) {
    return static_cast<Index>(i);
}

bool InRange(int i, std::size_t size) {
    return i >= 0 && static_cast<std::size_t>(i) < size;
}

// The parent each bone hangs from once loops are cut (-1 for a root), and an
// order in which every parent comes before its children.
struct Hierarchy {
    std::vector<int> Parent;
    std::vector<int> Order;
};

Hierarchy Arrange(const std::vector<int>& parents) {
    const std::size_t n = parents.size();
    enum : char { Unseen, Walking, Placed };
    std::vector<char> state(n, Unseen);
    Hierarchy h{std::vector<int>(n, -1), {}};
    h.Order.reserve(n);
    std::vector<int> chain;
    for (std::size_t b = 0; b < n; ++b) {
        chain.clear();
        int cur = static_cast<int>(b);
        while (InRange(cur, n) && state[At(cur)] == Unseen) {
            state[At(cur)] = Walking;
            chain.push_back(cur);
            cur = parents[At(cur)];
        }
        // The top of the chain hangs from a placed bone, from nothing, or
        // from a bone of the chain itself: that last one is a loop, cut here.
        for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
            const int p = parents[At(*it)];
            h.Parent[At(*it)] = InRange(p, n) && state[At(p)] == Placed ? p : -1;
            state[At(*it)] = Placed;
            h.Order.push_back(*it);
        }
    }
    return h;
}

std::vector<BoneMatrix> Chain(const Hierarchy& h, const std::vector<BoneMatrix>& local) {
    std::vector<BoneMatrix> model(local.size());
    for (const int b : h.Order) {
        const int p = h.Parent[At(b)];
        model[At(b)] = p < 0 ? local[At(b)] : model[At(p)] * local[At(b)];
    }
    return model;
}

// Skeleton position of each node index of a file (-1 where there is none).
class NodeMap {
public:
    explicit NodeMap(const SmdModel& smd) {
        int top = -1;
        for (const SmdNode& node : smd.Nodes) {
            top = std::max(top, node.Index);
        }
        // Node numbers come from the file; a wild one is not worth a table.
        if (top >= 0 && top < (1 << 16)) {
            slots_.assign(At(top) + 1, -1);
        }
    }
    void Set(int node, int place) {
        if (InRange(node, slots_.size()) && slots_[At(node)] < 0) {
            slots_[At(node)] = place;
        }
    }
    int Get(int node) const { return InRange(node, slots_.size()) ? slots_[At(node)] : -1; }

private:
    std::vector<int> slots_;
};

int FindName(const std::vector<std::string>& names, std::string_view name) {
    const auto it = std::find(names.begin(), names.end(), name);
    return it == names.end() ? -1 : static_cast<int>(it - names.begin());
}

// The model-space matrices of the first frame of a file, by node order.
std::vector<BoneMatrix> FirstFrame(const SmdModel& smd, const NodeMap& places,
                                   const std::vector<int>& parents) {
    std::vector<BoneMatrix> local(smd.Nodes.size());
    if (!smd.Frames.empty()) {
        for (const SmdBonePose& pose : smd.Frames.front().Bones) {
            const int b = places.Get(pose.Bone);
            if (b >= 0) {
                local[At(b)] = BoneMatrix::FromPose(pose.Position, pose.Rotation);
            }
        }
    }
    return Chain(Arrange(parents), local);
}

// Parents of a file's nodes as positions in its node list.
std::vector<int> NodeParents(const SmdModel& smd, const NodeMap& places) {
    std::vector<int> parents;
    parents.reserve(smd.Nodes.size());
    for (const SmdNode& node : smd.Nodes) {
        parents.push_back(places.Get(node.Parent));
    }
    return parents;
}

NodeMap PlaceNodes(const SmdModel& smd) {
    NodeMap places(smd);
    for (std::size_t i = 0; i < smd.Nodes.size(); ++i) {
        places.Set(smd.Nodes[i].Index, static_cast<int>(i));
    }
    return places;
}

void Grow(Mesh& mesh, const Vec3& p, bool first) {
    for (Index i = 0; i < 3; ++i) {
        mesh.Min[i] = first ? p[i] : std::min(mesh.Min[i], p[i]);
        mesh.Max[i] = first ? p[i] : std::max(mesh.Max[i], p[i]);
    }
}

BoneMatrix ScaledTranslation(BoneMatrix m, float scale) {
    m.M[3] *= scale;
    m.M[7] *= scale;
    m.M[11] *= scale;
    return m;
}

} // namespace

BoneMatrix BoneMatrix::FromPose(const Vec3& position, const Vec3& rotation) {
    const double sx = std::sin(rotation[0]), cx = std::cos(rotation[0]);
    const double sy = std::sin(rotation[1]), cy = std::cos(rotation[1]);
    const double sz = std::sin(rotation[2]), cz = std::cos(rotation[2]);
    BoneMatrix m;
    m.M = {float(cz * cy), float(cz * sy * sx - sz * cx), float(cz * sy * cx + sz * sx), position[0],
           float(sz * cy), float(sz * sy * sx + cz * cx), float(sz * sy * cx - cz * sx), position[1],
           float(-sy),     float(cy * sx),                float(cy * cx),                position[2]};
    return m;
}

BoneMatrix BoneMatrix::operator*(const BoneMatrix& right) const {
    BoneMatrix out;
    for (Index r = 0; r < 3; ++r) {
        for (Index c = 0; c < 4; ++c) {
            float v = M[r * 4] * right.M[c] + M[r * 4 + 1] * right.M[4 + c] +
                      M[r * 4 + 2] * right.M[8 + c];
            if (c == 3) {
                v += M[r * 4 + 3];
            }
            out.M[r * 4 + c] = v;
        }
    }
    return out;
}

Vec3 BoneMatrix::Rotate(const Vec3& v) const {
    return {M[0] * v[0] + M[1] * v[1] + M[2] * v[2], M[4] * v[0] + M[5] * v[1] + M[6] * v[2],
            M[8] * v[0] + M[9] * v[1] + M[10] * v[2]};
}

Vec3 BoneMatrix::Apply(const Vec3& p) const {
    const Vec3 r = Rotate(p);
    return {r[0] + M[3], r[1] + M[7], r[2] + M[11]};
}

BoneMatrix BoneMatrix::Inverse() const {
    // The rotation's transpose, and the translation turned back by it.
    BoneMatrix inv;
    for (Index r = 0; r < 3; ++r) {
        for (Index c = 0; c < 3; ++c) {
            inv.M[r * 4 + c] = M[c * 4 + r];
        }
    }
    const Vec3 t = inv.Rotate(Origin());
    inv.M[3] = -t[0];
    inv.M[7] = -t[1];
    inv.M[11] = -t[2];
    return inv;
}

std::vector<BoneMatrix> PoseBones(const Skeleton& skeleton, const SmdModel& animation,
                                  int frame) {
    const std::size_t n = skeleton.Names.size();
    std::vector<int> parents(n, -1);
    for (std::size_t b = 0; b < n && b < skeleton.Parents.size(); ++b) {
        parents[b] = skeleton.Parents[b];
    }
    const Hierarchy h = Arrange(parents);
    auto bind = [&](int b) {
        return InRange(b, skeleton.Bind.size()) ? skeleton.Bind[At(b)] : BoneMatrix{};
    };
    std::vector<BoneMatrix> local(n);
    std::vector<bool> posed(n, false);
    if (!animation.Frames.empty()) {
        const int last = static_cast<int>(animation.Frames.size()) - 1;
        const SmdFrame& shown = animation.Frames[At(std::clamp(frame, 0, last))];
        NodeMap toSkeleton(animation);
        for (const SmdNode& node : animation.Nodes) {
            toSkeleton.Set(node.Index, FindName(skeleton.Names, node.Name));
        }
        for (const SmdBonePose& pose : shown.Bones) {
            const int b = toSkeleton.Get(pose.Bone);
            if (b >= 0 && !posed[At(b)]) {
                local[At(b)] = BoneMatrix::FromPose(pose.Position, pose.Rotation);
                posed[At(b)] = true;
            }
        }
    }
    for (std::size_t b = 0; b < n; ++b) {
        if (!posed[b]) {
            const int p = h.Parent[b];
            const int bone = static_cast<int>(b);
            local[b] = p < 0 ? bind(bone) : bind(p).Inverse() * bind(bone);
        }
    }
    return Chain(h, local);
}

std::vector<std::string> ChosenPartFiles(const Document& doc, const std::vector<int>& chosen) {
    std::vector<std::string> files;
    const int groups = std::min<int>(doc.BodyGroupCount, limits::LastBodyGroup);
    for (int g = 1; g <= groups; ++g) {
        const BodyGroupRec& group = doc.BodyGroups[At(g)];
        const int parts = std::min<int>(group.PartCount, limits::LastPart);
        const int pick = InRange(g - 1, chosen.size()) ? chosen[At(g - 1)] : 0;
        if (pick < 0 || pick >= parts) {
            continue;
        }
        const std::string& part = group.Parts[At(pick + 1)];
        if (!part.empty() && part != Blank) {
            files.push_back(paths::Join(doc.ModelPath, part + ".smd"));
        }
    }
    return files;
}

Mesh BuildMesh(const std::vector<SmdModel>& parts, float scale) {
    Mesh mesh;
    Skeleton& skeleton = mesh.Bones;
    bool firstCorner = true;
    for (std::size_t k = 0; k < parts.size(); ++k) {
        const SmdModel& part = parts[k];
        const NodeMap places = PlaceNodes(part);
        const std::vector<BoneMatrix> ownBind = FirstFrame(part, places, NodeParents(part, places));

        // Each node of the part as a bone of the skeleton; new names are
        // appended, their parents found by name once all are in.
        std::vector<int> toSkeleton(part.Nodes.size(), -1);
        const std::size_t before = skeleton.Names.size();
        for (std::size_t i = 0; i < part.Nodes.size(); ++i) {
            int b = FindName(skeleton.Names, part.Nodes[i].Name);
            if (b < 0) {
                b = static_cast<int>(skeleton.Names.size());
                skeleton.Names.push_back(part.Nodes[i].Name);
                skeleton.Parents.push_back(-1);
                skeleton.Bind.push_back(ownBind[i]);
            }
            toSkeleton[i] = b;
        }
        for (std::size_t i = 0; i < part.Nodes.size(); ++i) {
            const int b = toSkeleton[i];
            const int p = places.Get(part.Nodes[i].Parent);
            if (At(b) >= before && p >= 0 && toSkeleton[At(p)] != b) {
                skeleton.Parents[At(b)] = toSkeleton[At(p)];
            }
        }

        // A later part whose first frame differs from the skeleton's is
        // brought into the skeleton's bind pose bone by bone.
        std::vector<BoneMatrix> rebase(part.Nodes.size());
        if (k > 0) {
            for (std::size_t i = 0; i < part.Nodes.size(); ++i) {
                rebase[i] = skeleton.Bind[At(toSkeleton[i])] * ownBind[i].Inverse();
            }
        }
        for (const SmdTriangle& tri : part.Triangles) {
            auto batch = std::find_if(mesh.Batches.begin(), mesh.Batches.end(),
                                      [&](const MeshBatch& b) { return b.Texture == tri.Texture; });
            if (batch == mesh.Batches.end()) {
                batch = mesh.Batches.insert(mesh.Batches.end(), MeshBatch{tri.Texture, {}});
            }
            for (const SmdVertex& corner : tri.Vertices) {
                const int node = places.Get(corner.Bone);
                MeshVertex v;
                v.Position = corner.Position;
                v.Normal = corner.Normal;
                if (node >= 0) {
                    v.Bone = toSkeleton[At(node)];
                    v.Position = rebase[At(node)].Apply(v.Position);
                    v.Normal = rebase[At(node)].Rotate(v.Normal);
                }
                for (float& c : v.Position) {
                    c *= scale;
                }
                v.Uv = corner.Uv;
                Grow(mesh, v.Position, firstCorner);
                firstCorner = false;
                batch->Vertices.push_back(v);
            }
        }
    }
    return mesh;
}

void SkinMesh(const Mesh& mesh, const std::vector<BoneMatrix>& pose, float scale,
              std::vector<Vec3>& positions, std::vector<Vec3>& normals) {
    const std::vector<BoneMatrix>& bind = mesh.Bones.Bind;
    std::vector<BoneMatrix> skin(std::min(pose.size(), bind.size()));
    for (std::size_t b = 0; b < skin.size(); ++b) {
        skin[b] = ScaledTranslation(pose[b], scale) * ScaledTranslation(bind[b], scale).Inverse();
    }
    positions.clear();
    normals.clear();
    for (const MeshBatch& batch : mesh.Batches) {
        for (const MeshVertex& v : batch.Vertices) {
            if (InRange(v.Bone, skin.size())) {
                const BoneMatrix& m = skin[At(v.Bone)];
                positions.push_back(m.Apply(v.Position));
                normals.push_back(m.Rotate(v.Normal));
            } else {
                positions.push_back(v.Position);
                normals.push_back(v.Normal);
            }
        }
    }
}

int FrameAt(const AnimRec& anim, int frameCount, double seconds) {
    if (frameCount <= 0 || anim.Fps <= 0) {
        return 0;
    }
    int first = 0;
    int last = frameCount - 1;
    if (anim.FrameLimit == 1) {
        first = std::clamp<int>(anim.FrameStart, 0, frameCount - 1);
        last = std::clamp<int>(anim.FrameEnd, 0, frameCount - 1);
        if (first > last) {
            std::swap(first, last);
        }
    }
    const double span = last - first + 1;
    // Before the start, or at no time at all, the range's first frame shows.
    double step = seconds > 0 && std::isfinite(seconds) ? std::floor(seconds * anim.Fps) : 0;
    if (anim.Loop == 1) {
        step = std::fmod(step, span);
    } else if (!(step < span)) {
        step = span - 1;
    }
    return first + static_cast<int>(step);
}

std::string VariedTexture(const Document& doc, int row, std::string_view name) {
    if (row <= 1 || row > limits::LastTextureRow) {
        return std::string(name);
    }
    const int columns = std::min<int>(doc.TextureCount, limits::LastTexture);
    const auto& base = doc.TextureVariations[1];
    for (int c = 1; c <= columns; ++c) {
        if (paths::EqualsNoCase(base[At(c)], name)) {
            const std::string& cell = doc.TextureVariations[At(row)][At(c)];
            return cell.empty() || cell == Blank ? std::string(name) : cell;
        }
    }
    return std::string(name);
}

int RenderMode(const Document& doc, std::string_view texture) {
    for (int i = 1; i <= limits::LastTextureMode; ++i) {
        const TextureModeRec& slot = doc.TextureModes[At(i)];
        if (!slot.Name.empty() && paths::EqualsNoCase(slot.Name, texture) &&
            (slot.Mode == 1 || slot.Mode == 2)) {
            return slot.Mode;
        }
    }
    return 0;
}

} // namespace quarle::preview
