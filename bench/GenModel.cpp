// Writes a deterministic model folder for the scan benchmark: reference meshes
// with textures and animation files, the way modelling tools export them.
//
//   gen-model DIR [SEED]
//
// Same seed, same bytes: the generator has its own random numbers and number
// forms, so neither the library nor the locale changes the output.
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int ReferenceFiles = 40;
constexpr int AnimationFiles = 160;
constexpr int Bones = 40;

class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    std::uint64_t Next() { // splitmix64
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    // in [lo, hi]
    std::int64_t Between(std::int64_t lo, std::int64_t hi) {
        return lo + static_cast<std::int64_t>(Next() % static_cast<std::uint64_t>(hi - lo + 1));
    }

private:
    std::uint64_t state_;
};

class Writer {
public:
    explicit Writer(bool crlf) : crlf_(crlf) { text_.reserve(6 << 20); }
    Writer& operator<<(std::string_view s) {
        text_ += s;
        return *this;
    }
    Writer& operator<<(std::int64_t n) {
        char buf[24];
        text_.append(buf, std::to_chars(buf, buf + sizeof buf, n).ptr);
        return *this;
    }
    // A fixed-point number with six decimals, from millionths.
    Writer& Fixed(std::int64_t millionths) {
        if (millionths < 0) {
            text_ += '-';
            millionths = -millionths;
        }
        *this << millionths / 1000000;
        char buf[8];
        std::snprintf(buf, sizeof buf, ".%06d", static_cast<int>(millionths % 1000000));
        text_ += buf;
        return *this;
    }
    void End() { text_ += crlf_ ? "\r\n" : "\n"; }
    std::size_t Size() const { return text_.size(); }
    bool Save(const std::filesystem::path& path) const {
        std::FILE* f = std::fopen(path.string().c_str(), "wb");
        if (f == nullptr) {
            return false;
        }
        const bool ok = std::fwrite(text_.data(), 1, text_.size(), f) == text_.size();
        return std::fclose(f) == 0 && ok;
    }

private:
    bool crlf_;
    std::string text_;
};

void Skeleton(Writer& w) {
    w << "version 1";
    w.End();
    w << "nodes";
    w.End();
    for (int b = 0; b < Bones; ++b) {
        w << "  " << b << " \"Bip01 Bone" << b << "\" " << (b - 1);
        w.End();
    }
    w << "end";
    w.End();
    w << "skeleton";
    w.End();
}

void Frame(Writer& w, Random& r, std::int64_t time) {
    w << "time " << time;
    w.End();
    for (int b = 0; b < Bones; ++b) {
        w << "  " << b;
        for (int k = 0; k < 6; ++k) {
            w << " ";
            w.Fixed(r.Between(-40000000, 40000000));
        }
        w.End();
    }
}

void Reference(Writer& w, Random& r, std::size_t bytes, const std::vector<std::string>& textures) {
    Skeleton(w);
    Frame(w, r, 0);
    w << "end";
    w.End();
    w << "triangles";
    w.End();
    while (w.Size() < bytes) {
        w << textures[static_cast<std::size_t>(
            r.Between(0, static_cast<std::int64_t>(textures.size()) - 1))];
        w.End();
        // A mesh's triangle is small beside its model: the corners stand
        // around a place anywhere in the model, on one bone.
        const std::int64_t bone = r.Between(0, Bones - 1);
        std::int64_t centre[3];
        for (std::int64_t& c : centre) {
            c = r.Between(-60000000, 60000000);
        }
        for (int v = 0; v < 3; ++v) {
            w << "  " << bone;
            for (int k = 0; k < 3; ++k) {
                w << " ";
                w.Fixed(centre[k] + r.Between(-1500000, 1500000));
            }
            for (int k = 0; k < 3; ++k) {
                w << " ";
                w.Fixed(r.Between(-1000000, 1000000));
            }
            for (int k = 0; k < 2; ++k) {
                w << " ";
                w.Fixed(r.Between(0, 1000000));
            }
            w.End();
        }
    }
    w << "end";
    w.End();
}

void Animation(Writer& w, Random& r, std::size_t bytes) {
    Skeleton(w);
    for (std::int64_t time = 0; w.Size() < bytes; ++time) {
        Frame(w, r, time);
    }
    w << "end";
    w.End();
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: gen-model DIR [SEED]\n");
        return 2;
    }
    const std::filesystem::path dir = argv[1];
    const std::uint64_t seed = argc > 2 ? std::stoull(argv[2]) : 1;
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    Random r(seed);
    const char* skins[] = {"skin",   "face",  "arm",    "leg",  "torso",
                           "helmet", "boots", "chrome", "belt", "hands"};
    std::size_t total = 0;
    for (int i = 0; i < ReferenceFiles; ++i) {
        std::vector<std::string> textures;
        const int count = static_cast<int>(r.Between(2, 6));
        for (int t = 0; t < count; ++t) {
            std::string name = std::string(skins[(i + t) % 10]) + std::to_string(i % 7);
            name += r.Between(0, 3) == 0 ? ".BMP" : ".bmp";
            textures.push_back(name);
        }
        Writer w(i % 2 == 0);
        Reference(w, r, static_cast<std::size_t>(r.Between(2000000, 5000000)), textures);
        const std::string name = "ref" + std::to_string(i) + (i % 5 == 0 ? ".SMD" : ".smd");
        if (!w.Save(dir / name)) {
            std::fprintf(stderr, "gen-model: cannot write %s\n", name.c_str());
            return 1;
        }
        total += w.Size();
    }
    for (int i = 0; i < AnimationFiles; ++i) {
        Writer w(i % 3 != 0);
        Animation(w, r, static_cast<std::size_t>(r.Between(100000, 3000000)));
        const std::string name = "anim" + std::to_string(i) + ".smd";
        if (!w.Save(dir / name)) {
            std::fprintf(stderr, "gen-model: cannot write %s\n", name.c_str());
            return 1;
        }
        total += w.Size();
    }
    std::printf("%d files, %zu bytes\n", ReferenceFiles + AnimationFiles, total);
    return 0;
}
