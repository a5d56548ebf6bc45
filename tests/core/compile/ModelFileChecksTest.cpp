// The checks of the saved script and its files: one small model that the
// compiler builds, changed in one way per row.
#include "../TestFiles.h"
#include "compile/CheckModelData.h"
#include "localisation/GlobalStrings.h"

#include <cmath>
#include <filesystem>
#include <functional>
#include <map>
#include <gtest/gtest.h>
#include <memory>
#include <string_view>

namespace quarle::compile {
namespace {

using quarle::testing::ReadFile;
using quarle::testing::TempDir;

// An 8-bit bitmap of w x h pixels; the other fields break it.
struct Bitmap {
    int W = 64, H = 64, Bits = 8, Info = 40, Compression = 0, Cut = 0;
    int Reserved = 0, Planes = 1, Colours = 0, Extra = 0;
    int DeclaredSize = 0; // 0: the file's own

    std::string Bytes() const {
        const int stride = (W * Bits + 31) / 32 * 4;
        const int palette = Bits == 8 ? 4 * (Colours == 0 ? 256 : Colours) : 0;
        const int offset = 14 + Info + palette;
        const int size = offset + stride * std::abs(H) + Extra;
        std::string b;
        auto u16 = [&b](int v) {
            b += static_cast<char>(v & 255);
            b += static_cast<char>((v >> 8) & 255);
        };
        auto u32 = [&](int v) {
            u16(v & 0xFFFF);
            u16((v >> 16) & 0xFFFF);
        };
        b += "BM";
        u32(DeclaredSize != 0 ? DeclaredSize : size);
        u16(Reserved);
        u16(0);
        u32(offset);
        u32(Info);
        u32(W);
        u32(H);
        u16(Planes);
        u16(Bits);
        u32(Compression);
        u32(stride * std::abs(H));
        u32(0);
        u32(0);
        u32(Colours);
        u32(0);
        b.resize(static_cast<std::size_t>(size - Cut), '\0');
        return b;
    }
};

std::string BoneName(int i) {
    return i == 0 ? "root" : i == 1 ? "arm" : "b" + std::to_string(i);
}

// count bones in a chain; parents may be given for some.
std::string Nodes(int count, const std::map<int, int>& parents = {},
                  const std::map<int, std::string>& names = {}) {
    std::string s = "nodes\n";
    for (int i = 0; i < count; ++i) {
        const auto p = parents.find(i);
        const auto n = names.find(i);
        s += std::to_string(i) + " \"" + (n != names.end() ? n->second : BoneName(i)) + "\" " +
             std::to_string(p != parents.end() ? p->second : i - 1) + "\n";
    }
    return s + "end\n";
}

// Frames 0..frames-1 of bones 0..bones-1; moving: values that change from
// frame to frame without a pattern.
std::string Skeleton(int bones, int frames, bool moving = false) {
    std::string s = "skeleton\n";
    for (int t = 0; t < frames; ++t) {
        s += "time " + std::to_string(t) + "\n";
        for (int b = 0; b < bones; ++b) {
            s += std::to_string(b);
            for (int k = 0; k < 6; ++k) {
                const long mix = (t * 7919L + b * 104729L + k * 1299709L) % 10007;
                const double v = moving ? (k < 3 ? mix / 1000.0 - 5 : mix / 33356.0 - 0.15) : 0;
                s += " " + std::to_string(v);
            }
            s += "\n";
        }
    }
    return s + "end\n";
}

struct Corner {
    double X = 0, Y = 0, Nx = 0, Ny = 0, U = 0, V = 0;
    int Bone = 1;
    double Nz = 1;
};
std::string Triangle(const std::string& texture, Corner a = {0, 0, 0, 0, 0, 0},
                     Corner b = {1, 0, 0, 0, 1, 0}, Corner c = {0, 1, 0, 0, 0, 1}) {
    std::string s = texture + "\n";
    for (const Corner& k : {a, b, c}) {
        s += std::to_string(k.Bone) + " " + std::to_string(k.X) + " " + std::to_string(k.Y) +
             " 0 " + std::to_string(k.Nx) + " " + std::to_string(k.Ny) + " " +
             std::to_string(k.Nz) + " " + std::to_string(k.U) + " " + std::to_string(k.V) + "\n";
    }
    return s;
}
std::string OnBone(int bone, const std::string& texture = "skin.bmp") {
    return Triangle(texture, {0, 0, 0, 0, 0, 0, bone}, {1, 0, 0, 0, 1, 0, bone},
                    {0, 1, 0, 0, 0, 1, bone});
}

std::string Reference(const std::string& triangles, int bones = 2, const std::string& nodes = "") {
    return "version 1\n" + (nodes.empty() ? Nodes(bones) : nodes) + Skeleton(bones, 1) +
           "triangles\n" + triangles + "end\n";
}
std::string Animation(int bones = 2, int frames = 2, const std::string& nodes = "") {
    return "version 1\n" + (nodes.empty() ? Nodes(bones) : nodes) + Skeleton(bones, frames);
}

// n triangles, each with three corners of their own: at distinct places, or
// all at one place; with normals spread evenly over the sphere (some degrees
// apart), or all within a degree and a half.
std::string Many(int n, bool places, bool normals) {
    std::string s;
    const int corners = 3 * n;
    for (int i = 0; i < n; ++i) {
        Corner k[3];
        for (int j = 0; j < 3; ++j) {
            const int m = 3 * i + j;
            Corner& c = k[j];
            c.X = places ? m : 0;
            c.U = c.V = 0.5;
            if (normals) {
                c.Nz = 1 - 2 * (m + 0.5) / corners;
                const double r = std::sqrt(1 - c.Nz * c.Nz);
                c.Nx = r * std::cos(m * 2.39996323);
                c.Ny = r * std::sin(m * 2.39996323);
            } else {
                c.Nx = std::sin(m * 1e-5);
                c.Nz = std::cos(m * 1e-5);
            }
        }
        s += Triangle("skin.bmp", k[0], k[1], k[2]);
    }
    return s;
}

const char* const Script = "$modelname \"m.mdl\"\n"
                           "$cd \".\"\n"
                           "$cdtexture \".\"\n"
                           "$body body \"body\"\n"
                           "$sequence walk \"walk\" fps 30\n";

// The small model: one part on a 64 x 64 bitmap, one animation.
struct Model {
    Model() {
        dir_.Write("m.qc", Script);
        dir_.Write("body.smd", Reference(OnBone(1)));
        dir_.Write("walk.smd", Animation());
        dir_.Write("skin.bmp", Bitmap{}.Bytes());
        doc_->QcFile = dir_ / "m.qc";
        doc_->ModelPath = doc_->TexturePath = dir_.Path();
        doc_->BodyGroupCount = 1;
        doc_->BodyGroups[1].PartCount = 1;
        doc_->BodyGroups[1].Parts[1] = "body";
        doc_->Anims[0][0].Name = doc_->Anims[0][0].SmdFile = "walk";
        for (std::size_t i = 0; i < texts_.size(); ++i) {
            texts_[i] = IdsKeyTable[i];
        }
        input_.Texts = &texts_;
        input_.AnimationRows = 1;
    }

    std::vector<CheckRow> Rows() { return CheckModelData(*doc_, input_).Rows; }

    TempDir dir_;
    std::unique_ptr<Document> doc_ = std::make_unique<Document>();
    IdsTextTable texts_;
    CheckInput input_;
};

// Replaces the first `from` of the script.
void Edit(TempDir& t, std::string_view from, const std::string& to) {
    std::string s = ReadFile(t / "m.qc");
    const std::size_t at = s.find(from);
    ASSERT_NE(at, std::string::npos) << from;
    s.replace(at, from.size(), to);
    t.Write("m.qc", s);
}

enum class Verdict { None, Warning, Error };

// Each verdict was checked once against the compiler of the Half-Life SDK,
// built natively, on the row's files. Where a row expects nothing, it builds
// the model; where a row expects an error, it refuses the model, crashes or
// never ends, but for one: the part whose skeleton runs into its triangles,
// which it writes without them. A warning stands where it builds a model
// that may not be what was meant, where the SDK's compiler refuses what
// later compilers take (a skin beyond 640 x 480 bytes, the render mode
// fullbright), and where it writes past a table or its output buffer and the
// native build still wrote the model (a frame past 2047, 17 MB of skins).
TEST(ModelFileChecks, EachRuleOnASmallModel) {
    struct Case {
        const char* What;
        std::function<void(TempDir&)> Change;
        Verdict Expect;
        std::string Names = ""; // what the first row must name
        std::size_t Rows = 1;
    };
    const Verdict None = Verdict::None;
    const Verdict W = Verdict::Warning;
    const Verdict E = Verdict::Error;
    const std::vector<Case> cases = {
        // The .smd files as the compiler reads them.
        {"a reference without a version line",
         [](TempDir& t) { t.Write("body.smd", Reference(OnBone(1)).substr(10)); }, None},
        {"a reference with a byte-order mark and a comment before its version",
         [](TempDir& t) { t.Write("body.smd", "\xEF\xBB\xBF// x\n" + Reference(OnBone(1))); }, None},
        {"an animation with a comment before its version",
         [](TempDir& t) { t.Write("walk.smd", "// x\n" + Animation()); }, E, "walk.smd", 2},
        {"version 2", [](TempDir& t) { t.Write("body.smd", "version 2\n" + Reference(OnBone(1)).substr(10)); },
         E, "version 2"},
        {"a corner that is not nine numbers",
         [](TempDir& t) { t.Write("body.smd", Reference("skin.bmp\n1 0 0 0 0 0 1 0\n")); }, E,
         "line 13"},
        {"a corner on a bone the nodes do not give",
         [](TempDir& t) { t.Write("body.smd", Reference(OnBone(2))); }, E, "bone index 2"},
        {"an animation that ends inside its skeleton",
         [](TempDir& t) { t.Write("walk.smd", Animation().substr(0, Animation().size() - 4)); }, E,
         "walk.smd"},
        {"a blank line behind an animation's end",
         [](TempDir& t) { t.Write("walk.smd", Animation() + "\n"); }, E, "blank line 14"},
        {"a blank line behind a reference's skeleton",
         [](TempDir& t) {
             t.Write("body.smd", "version 1\n" + Nodes(2) + Skeleton(2, 1) + "\ntriangles\n" +
                                     OnBone(1) + "end\n");
         },
         E, "line 11"},
        {"an animation without a frame",
         [](TempDir& t) { t.Write("walk.smd", "version 1\n" + Nodes(2) + "skeleton\nend\n"); }, E,
         "walk.smd"},
        {"an animation without a skeleton on bones the model lacks",
         [](TempDir& t) { t.Write("walk.smd", "version 1\n" + Nodes(2, {}, {{0, "x"}, {1, "y"}})); }, E,
         "walk.smd"},
        {"an animation whose nodes come again, fewer, behind its skeleton",
         [](TempDir& t) { t.Write("walk.smd", Animation() + Nodes(1)); }, W, "line 14: a second block"},
        {"an animation without nodes or skeleton",
         [](TempDir& t) { t.Write("walk.smd", "version 1\n"); }, None},
        {"a frame past the compiler's table",
         [](TempDir& t) {
             Edit(t, "fps 30", "fps 30 frame 0 3000");
             t.Write("walk.smd", "version 1\n" + Nodes(2) + "skeleton\ntime 2500\n0 0 0 0 0 0 0\n"
                                 "1 0 0 0 0 0 0\nend\n");
         },
         W, "frame 2500"},
        {"a frame range with no frame in the file",
         [](TempDir& t) { Edit(t, "fps 30", "fps 30 frame 5 9"); }, E, "from 5 to 9"},
        {"a bone twice under the same parent",
         [](TempDir& t) { t.Write("body.smd", Reference(OnBone(2), 3, Nodes(3, {{2, 0}}, {{2, "arm"}}))); },
         None},
        {"a bone twice under other parents",
         [](TempDir& t) {
             t.Write("body.smd", Reference(OnBone(1) + OnBone(2), 3, Nodes(3, {{2, 1}}, {{2, "arm"}})));
         },
         E, "\"arm\""},
        {"a parent that differs between animation and reference",
         [](TempDir& t) { t.Write("walk.smd", Animation(2, 2, Nodes(2, {{1, -1}}))); }, E,
         "walk.smd"},
        {"129 nodes, one of them used",
         [](TempDir& t) { t.Write("body.smd", Reference(OnBone(0), 129)); }, None},
        {"128 bones used",
         [](TempDir& t) {
             std::string tris;
             for (int b = 0; b < 128; ++b) {
                 tris += OnBone(b);
             }
             t.Write("body.smd", Reference(tris, 128));
         },
         E, "128 bones"},
        {"a bone name of 32 characters",
         [](TempDir& t) {
             t.Write("body.smd", Reference(OnBone(1), 2, Nodes(2, {}, {{1, std::string(32, 'a')}})));
         },
         W, std::string(32, 'a')},
        {"links on a bone no vertex uses",
         [](TempDir& t) {
             t.Write("body.smd", Reference(OnBone(1), 3));
             Edit(t, "$sequence", "$attachment 0 \"b2\" 0 0 0\n$controller 0 \"b2\" XR 0 90\n"
                                  "$hbox 0 \"b2\" 0 0 0 1 1 1\n$hgroup 1 \"b2\"\n$sequence");
         },
         E, "$attachment", 4},
        // Limits of a part.
        {"2049 places", [](TempDir& t) { t.Write("body.smd", Reference(Many(683, true, false))); },
         E, "2049 vertices"},
        {"2049 normals", [](TempDir& t) { t.Write("body.smd", Reference(Many(683, false, true))); },
         E, "2049 normals"},
        {"2049 normals that merge",
         [](TempDir& t) { t.Write("body.smd", Reference(Many(683, false, false))); }, None},
        {"20001 triangles",
         [](TempDir& t) { t.Write("body.smd", Reference(Many(20001, false, false))); }, E,
         "20001 triangles"},
        // Textures.
        {"a missing texture", [](TempDir& t) { std::filesystem::remove(t / "skin.bmp"); }, E,
         "skin.bmp"},
        {"a texture that is no bitmap",
         [](TempDir& t) {
             t.Write("body.smd", Reference(OnBone(1, "skin.tga")));
             t.Write("skin.tga", "");
         },
         E, "skin.tga"},
        {"the texture in a later $cdtexture folder",
         [](TempDir& t) {
             std::filesystem::rename(t / "skin.bmp", t / "more/skin.bmp");
             Edit(t, "$cdtexture \".\"", "$cdtexture \"gone\" \"more\"");
         },
         None},
        {"the texture in a folder an include adds",
         [](TempDir& t) {
             std::filesystem::create_directory(t / "maps");
             std::filesystem::rename(t / "skin.bmp", t / "maps/skin.bmp");
             t.Write("maps.qci", "$cdtexture \"maps\"\n");
             Edit(t, "$body", "$include \"maps.qci\"\n$body");
         },
         None},
        {"101 textures",
         [](TempDir& t) {
             std::string tris;
             for (int i = 0; i < 101; ++i) {
                 t.Write("t" + std::to_string(i) + ".bmp", Bitmap{8, 8}.Bytes());
                 tris += OnBone(1, "t" + std::to_string(i) + ".bmp");
             }
             t.Write("body.smd", Reference(tris));
         },
         W, "101 textures"},
        {"a texture name of 64 characters",
         [](TempDir& t) {
             const std::string name = std::string(60, 's') + ".bmp";
             t.Write(name, Bitmap{}.Bytes());
             t.Write("body.smd", Reference(OnBone(1, name)));
         },
         W, std::string(60, 's')},
        {"a texture name of 66 characters",
         [](TempDir& t) {
             const std::string name = std::string(62, 's') + ".bmp";
             t.Write(name, Bitmap{}.Bytes());
             t.Write("body.smd", Reference(OnBone(1, name)));
         },
         E, std::string(62, 's') + ".b\""},
        {"textures past the compiler's 16 MB buffer",
         [](TempDir& t) {
             std::string tris;
             for (int i = 0; i < 56; ++i) {
                 t.Write("t" + std::to_string(i) + ".bmp", Bitmap{636, 480}.Bytes());
                 tris += OnBone(1, "t" + std::to_string(i) + ".bmp");
             }
             t.Write("body.smd", Reference(tris));
         },
         W, "16777216", 2},
        {"tiled texture coordinates",
         [](TempDir& t) {
             t.Write("body.smd", Reference(Triangle("skin.bmp", {0, 0, 0, 0, 0, 0}, {1, 0, 0, 0, 12, 0},
                                                    {0, 1, 0, 0, 0, 9})));
         },
         None},
        {"a 1024 x 512 bitmap used whole",
         [](TempDir& t) { t.Write("skin.bmp", Bitmap{1024, 512}.Bytes()); }, W, "1024 x 512"},
        {"a 1024 x 1024 bitmap for chrome",
         [](TempDir& t) {
             t.Write("chrome.bmp", Bitmap{1024, 1024}.Bytes());
             t.Write("body.smd", Reference(OnBone(1, "chrome.bmp")));
         },
         None},
        {"four bitmaps that are no power of two",
         [](TempDir& t) {
             std::string tris;
             for (int i = 0; i < 4; ++i) {
                 t.Write("n" + std::to_string(i) + ".bmp", Bitmap{96, 64}.Bytes());
                 tris += OnBone(1, "n" + std::to_string(i) + ".bmp");
             }
             t.Write("body.smd", Reference(tris));
         },
         W, "4 textures"},
        {"24 bits", [](TempDir& t) { t.Write("skin.bmp", Bitmap{64, 64, 24}.Bytes()); }, E, "24 bits"},
        {"run-length coded", [](TempDir& t) { t.Write("skin.bmp", Bitmap{.Compression = 1}.Bytes()); },
         E, "RLE"},
        {"a 108-byte header", [](TempDir& t) { t.Write("skin.bmp", Bitmap{.Info = 108}.Bytes()); }, E,
         "108-byte"},
        {"two planes", [](TempDir& t) { t.Write("skin.bmp", Bitmap{.Planes = 2}.Bytes()); }, E,
         "2 planes"},
        {"reserved fields in use",
         [](TempDir& t) { t.Write("skin.bmp", Bitmap{.Reserved = 1}.Bytes()); }, E, "reserved"},
        {"300 palette colours",
         [](TempDir& t) { t.Write("skin.bmp", Bitmap{.Colours = 300}.Bytes()); }, E, "300"},
        {"a size field beyond the file's end",
         [](TempDir& t) { t.Write("skin.bmp", Bitmap{.DeclaredSize = 99999}.Bytes()); }, E, "99999"},
        {"pixels cut short", [](TempDir& t) { t.Write("skin.bmp", Bitmap{.Cut = 9}.Bytes()); }, E,
         "skin.bmp"},
        {"rows from the top", [](TempDir& t) { t.Write("skin.bmp", Bitmap{.H = -64}.Bytes()); }, E,
         "negative height"},
        {"a bitmap 0 pixels wide",
         [](TempDir& t) { t.Write("skin.bmp", Bitmap{.W = 0, .Extra = 64}.Bytes()); }, E, "0 x 64"},
        {"too short for a bitmap", [](TempDir& t) { t.Write("skin.bmp", "GIF89a"); }, E, "skin.bmp"},
        // The script.
        {"an unknown directive", [](TempDir& t) { Edit(t, "$body", "$lod 1\n$body"); }, E, "$lod"},
        {"$sequence \"\"", [](TempDir& t) { Edit(t, "$sequence walk", "$sequence \"\""); }, None},
        {"a sequence name of 32 characters",
         [](TempDir& t) { Edit(t, "$sequence walk", "$sequence " + std::string(32, 'w')); }, W,
         std::string(32, 'w')},
        {"a sequence file named loop_walk",
         [](TempDir& t) {
             std::filesystem::rename(t / "walk.smd", t / "loop_walk.smd");
             Edit(t, "\"walk\"", "\"loop_walk\"");
         },
         E, "loop_walk", 2},
        {"an activity with a stray dot",
         [](TempDir& t) { Edit(t, "fps 30", "fps 30 ACT_COMBAT_IDLE. 1"); }, E, "ACT_COMBAT_IDLE.", 2},
        {"an activity without a weight",
         [](TempDir& t) { Edit(t, "fps 30", "fps 30 ACT_IDLE"); }, E, "ACT_IDLE"},
        {"1024 events",
         [](TempDir& t) {
             std::string events;
             for (int i = 0; i < 1024; ++i) {
                 events += " { event 1 0 }";
             }
             Edit(t, "fps 30", "fps 30" + events);
         },
         E, "1023"},
        {"64 KB of animation data",
         [](TempDir& t) {
             std::string tris;
             for (int b = 0; b < 20; ++b) {
                 tris += OnBone(b);
             }
             t.Write("body.smd", Reference(tris, 20));
             t.Write("walk.smd", "version 1\n" + Nodes(20) + Skeleton(20, 290, true));
         },
         E, "walk"},
        {"a missing part", [](TempDir& t) { std::filesystem::remove(t / "body.smd"); }, E, "body.smd"},
        {"a part that is a folder",
         [](TempDir& t) {
             std::filesystem::remove(t / "body.smd");
             std::filesystem::create_directory(t / "body.smd");
         },
         E, "body.smd\" is a folder"},
        {"a part name of 65 characters",
         [](TempDir& t) {
             const std::string name(65, 'p');
             std::filesystem::rename(t / "body.smd", t / (name + ".smd"));
             Edit(t, "\"body\"", "\"" + name + "\"");
         },
         E, std::string(64, 'p') + ".smd", 2},
        {"33 parts",
         [](TempDir& t) {
             std::string group = "$bodygroup g\n{\n";
             for (int i = 0; i < 33; ++i) {
                 group += "studio \"body\"\n";
             }
             Edit(t, "$body body \"body\"", group + "}");
         },
         W, "studio"},
        {"a directive inside a body group",
         [](TempDir& t) { Edit(t, "$body body \"body\"", "$bodygroup g\n{\nstudio \"body\"\n$scale 2\n}"); },
         W, "$scale"},
        {"a render mode on a texture no triangle uses",
         [](TempDir& t) { Edit(t, "$sequence", "$texrendermode \"glow.bmp\" additive\n$sequence"); },
         E, "glow.bmp"},
        {"the render mode fullbright",
         [](TempDir& t) { Edit(t, "$sequence", "$texrendermode \"skin.bmp\" fullbright\n$sequence"); },
         W, "fullbright"},
        {"a texture group naming a missing bitmap",
         [](TempDir& t) {
             Edit(t, "$sequence", "$texturegroup skins\n{\n{ \"skin.bmp\" }\n{ \"red.bmp\" }\n}\n$sequence");
         },
         E, "red.bmp"},
        {"a texture group the script ends in",
         [](TempDir& t) { Edit(t, "fps 30\n", "fps 30\n$texturegroup skins\n{\n{ \"skin.bmp\" }\n"); },
         E, "$texturegroup skins"},
        {"a missing output folder",
         [](TempDir& t) { Edit(t, "\"m.mdl\"", "\"out/m.mdl\""); }, E, "m.mdl"},
    };

    EXPECT_EQ(Model().Rows(), std::vector<CheckRow>()) << "the unchanged model";
    for (const Case& c : cases) {
        SCOPED_TRACE(c.What);
        Model fresh;
        std::filesystem::create_directory(fresh.dir_ / "more");
        c.Change(fresh.dir_);
        const std::vector<CheckRow> rows = fresh.Rows();
        if (c.Expect == Verdict::None) {
            EXPECT_EQ(rows, std::vector<CheckRow>());
            continue;
        }
        ASSERT_EQ(rows.size(), c.Rows) << (rows.empty() ? "" : rows[0].Text + " / " + rows.back().Text);
        const RowKind kind = c.Expect == Verdict::Error ? RowKind::Error : RowKind::Warning;
        EXPECT_EQ(rows.back().Kind, kind) << rows.back().Text;
        EXPECT_NE(rows[0].Text.find(c.Names), std::string::npos) << rows[0].Text;
    }
}

// The sample model with bitmaps for its textures and a script for it: no row.
TEST(ModelFileChecks, TheSampleModelGivesNoRow) {
    Model m;
    for (const auto& entry : std::filesystem::directory_iterator(QUARLE_TEST_DATA "/model")) {
        std::filesystem::copy(entry.path(), m.dir_ / entry.path().filename().string(),
                              std::filesystem::copy_options::overwrite_existing);
    }
    for (const char* texture : {"robot_body.bmp", "robot_face.bmp", "Robot_Eyes.BMP", "helmet.bmp"}) {
        m.dir_.Write(texture, Bitmap{}.Bytes());
    }
    std::string script = "$modelname \"robot.mdl\"\n$cd \".\"\n$cdtexture \".\"\n"
                         "$bodygroup body\n{\nstudio \"robot_ref\"\nstudio \"robot_head\"\n"
                         "studio \"robot_helmet\"\n}\n";
    for (const char* anim : {"idle", "walk", "run", "jump", "die_back", "Shoot"}) {
        script += "$sequence \"" + std::string(anim) + "\" \"" + anim + "\" fps 30\n";
    }
    m.dir_.Write("m.qc", script);
    EXPECT_EQ(m.Rows(), std::vector<CheckRow>());
}

} // namespace
} // namespace quarle::compile
