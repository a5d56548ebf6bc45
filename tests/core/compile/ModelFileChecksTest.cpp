// Checks 10 on: a small model that passes, broken in one way per row.
#include "../TestFiles.h"
#include "compile/CheckModelData.h"
#include "localisation/GlobalStrings.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string_view>

namespace quarle::compile {
namespace {

using quarle::testing::TempDir;

// An 8-bit bitmap of w x h pixels; the other arguments break it.
std::string Bmp(int w, int h, int bits = 8, int info = 40, int compression = 0, int cut = 0) {
    const int stride = (w * bits + 31) / 32 * 4;
    const int palette = bits == 8 ? 1024 : 0;
    const int offset = 14 + info + palette;
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
    u32(offset + stride * h);
    u32(0);
    u32(offset);
    u32(info);
    u32(w);
    u32(h);
    u16(1);
    u16(bits);
    u32(compression);
    u32(stride * h);
    u32(0);
    u32(0);
    u32(0);
    u32(0);
    b.resize(static_cast<std::size_t>(offset + stride * h - cut), '\0');
    return b;
}

std::string Nodes(int count, const std::string& twice = "") {
    std::string s = "nodes\n";
    for (int i = 0; i < count; ++i) {
        s += std::to_string(i) + " \"" +
             (i == 0   ? "root"
              : i == 1 ? "arm"
                       : "b" + std::to_string(i)) +
             "\" " + std::to_string(i - 1) + "\n";
    }
    if (!twice.empty()) {
        s += std::to_string(count) + " \"" + twice + "\" 0\n";
    }
    return s + "end\n";
}

// Frames 0..frames-1 of bones 0..bones-1; moving: every value changes each frame.
std::string Skeleton(int bones, int frames, bool moving = false) {
    std::string s = "skeleton\n";
    for (int t = 0; t < frames; ++t) {
        s += "time " + std::to_string(t) + "\n";
        for (int b = 0; b < bones; ++b) {
            const std::string v = moving ? std::to_string(t + b) : "0";
            s += std::to_string(b) + " " + v + " " + v + " " + v + " " + v + " " + v + " " + v +
                 "\n";
        }
    }
    return s + "end\n";
}

struct Corner {
    float X = 0, Nx = 0, U = 0, V = 0;
};
std::string Triangle(const std::string& texture, Corner a = {0, 0, 0, 0}, Corner b = {1, 0, 1, 0},
                     Corner c = {2, 0, 0, 1}) {
    std::string s = texture + "\n";
    for (const Corner& k : {a, b, c}) {
        s += "0 " + std::to_string(k.X) + " 0 0 " + std::to_string(k.Nx) + " 0 1 " +
             std::to_string(k.U) + " " + std::to_string(k.V) + "\n";
    }
    return s;
}

std::string Reference(const std::string& triangles, int bones = 2) {
    return "version 1\n" + Nodes(bones) + Skeleton(bones, 1) + "triangles\n" + triangles + "end\n";
}

// n triangles on texture: distinct corners (places), distinct normals, or
// all alike.
std::string Many(int n, bool places, bool normals) {
    std::string s;
    for (int i = 0; i < n; ++i) {
        const auto x = static_cast<float>(3 * i);
        s += Triangle("skin.bmp", {places ? x : 0, normals ? x : 0, 0, 0},
                      {places ? x + 1 : 0, normals ? x + 1 : 0, 1, 0},
                      {places ? x + 2 : 0, normals ? x + 2 : 0, 0, 1});
    }
    return s;
}

// The small model: one part on a 64 x 64 bitmap, one animation, an
// attachment and a controller on its bones.
struct Model {
    Model() {
        dir_.Write("body.smd", Reference(Triangle("skin.bmp")));
        dir_.Write("walk.smd", "version 1\n" + Nodes(2) + Skeleton(2, 2));
        dir_.Write("skin.bmp", Bmp(64, 64));
        doc_->QcFile = dir_ / "m.qc";
        doc_->ModelPath = doc_->TexturePath = dir_.Path();
        doc_->BodyGroupCount = 1;
        doc_->BodyGroups[1].PartCount = 1;
        doc_->BodyGroups[1].Parts[1] = "body";
        doc_->Anims[0][0].Name = doc_->Anims[0][0].SmdFile = "walk";
        doc_->Attachments[0].Active = 1;
        doc_->AttachmentBones[0] = "arm";
        doc_->Controllers[0].Active = 1;
        doc_->ControllerBones[0] = "ROOT"; // names of bones are compared ignoring case
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

TEST(ModelFileChecks, EachRefusalGivesOneRowOfItsKindNamingTheFile) {
    struct Case {
        const char* What;
        std::function<void(TempDir&, Document&)> Break;
        RowKind Kind;
        std::string Names; // the file (or bone) the row must name
    };
    const RowKind E = RowKind::Error;
    const RowKind W = RowKind::Warning;
    const std::vector<Case> cases = {
        {"part missing", [](TempDir&, Document& d) { d.BodyGroups[1].Parts[1] = "gone"; }, E,
         "gone.smd"},
        {"part in other capitals",
         [](TempDir& t, Document&) { std::filesystem::rename(t / "body.smd", t / "Body.smd"); }, W,
         "Body.smd"},
        {"no version line",
         [](TempDir& t, Document&) {
             t.Write("body.smd", Reference(Triangle("skin.bmp")).substr(10));
         },
         E, "body.smd"},
        {"bone twice",
         [](TempDir& t, Document&) {
             t.Write("walk.smd", "version 1\n" + Nodes(2, "arm") + Skeleton(2, 2));
         },
         E, "\"arm\""},
        {"animation without a frame",
         [](TempDir& t, Document&) {
             t.Write("walk.smd", "version 1\n" + Nodes(2) + "skeleton\nend\n");
         },
         E, "walk.smd"},
        {"texture not a bitmap",
         [](TempDir& t, Document&) { t.Write("body.smd", Reference(Triangle("skin.tga"))); }, E,
         "skin.tga"},
        {"texture missing", [](TempDir& t, Document&) { std::filesystem::remove(t / "skin.bmp"); },
         E, "skin.bmp"},
        {"texture in other capitals",
         [](TempDir& t, Document&) { std::filesystem::rename(t / "skin.bmp", t / "SKIN.bmp"); }, W,
         "SKIN.bmp"},
        {"24 bits", [](TempDir& t, Document&) { t.Write("skin.bmp", Bmp(64, 64, 24)); }, E,
         "skin.bmp"},
        {"RLE", [](TempDir& t, Document&) { t.Write("skin.bmp", Bmp(64, 64, 8, 40, 1)); }, E,
         "skin.bmp"},
        {"108-byte header", [](TempDir& t, Document&) { t.Write("skin.bmp", Bmp(64, 64, 8, 108)); },
         E, "skin.bmp"},
        {"cut short", [](TempDir& t, Document&) { t.Write("skin.bmp", Bmp(64, 64, 8, 40, 0, 9)); },
         E, "skin.bmp"},
        {"not a bitmap", [](TempDir& t, Document&) { t.Write("skin.bmp", "GIF89a"); }, E,
         "skin.bmp"},
        {"not a power of two", [](TempDir& t, Document&) { t.Write("skin.bmp", Bmp(96, 64)); }, W,
         "skin.bmp"},
        {"1024 x 512 used whole",
         [](TempDir& t, Document&) { t.Write("skin.bmp", Bmp(1024, 512)); }, E, "skin.bmp"},
        {"UVs tile to a skin too large",
         [](TempDir& t, Document&) {
             t.Write("body.smd",
                     Reference(Triangle("skin.bmp", {0, 0, 0, 0}, {1, 0, 12, 0}, {2, 0, 0, 9})));
         },
         E, "skin.bmp"},
        {"129 bones",
         [](TempDir& t, Document&) { t.Write("body.smd", Reference(Triangle("skin.bmp"), 129)); },
         E, "129"},
        {"2049 vertices",
         [](TempDir& t, Document&) { t.Write("body.smd", Reference(Many(683, true, false))); }, E,
         "body.smd"},
        {"close to the vertex limit",
         [](TempDir& t, Document&) { t.Write("body.smd", Reference(Many(650, true, false))); }, W,
         "body.smd"},
        {"2049 normals",
         [](TempDir& t, Document&) { t.Write("body.smd", Reference(Many(683, false, true))); }, E,
         "body.smd"},
        {"20001 triangles",
         [](TempDir& t, Document&) { t.Write("body.smd", Reference(Many(20001, false, false))); },
         E, "body.smd"},
        {"101 textures",
         [](TempDir& t, Document&) {
             std::string tris;
             for (int i = 0; i < 101; ++i) {
                 const std::string name = "t" + std::to_string(i) + ".bmp";
                 t.Write(name, Bmp(8, 8));
                 tris += Triangle(name);
             }
             t.Write("body.smd", Reference(tris));
         },
         E, "101"},
        {"attachment on no bone", [](TempDir&, Document& d) { d.AttachmentBones[0] = "hand"; }, E,
         "\"hand\""},
        {"controller on no bone",
         [](TempDir&, Document& d) {
             d.ControllerBones[1] = "jaw";
             d.Controllers[1].Active = 1;
         },
         E, "\"jaw\""},
        {"sequence over 64 KB",
         [](TempDir& t, Document&) {
             t.Write("walk.smd", "version 1\n" + Nodes(50) + Skeleton(50, 120, true));
         },
         W, "walk.smd"},
    };

    EXPECT_EQ(Model().Rows(), std::vector<CheckRow>()) << "the unbroken model";
    for (const Case& c : cases) {
        SCOPED_TRACE(c.What);
#ifdef _WIN32
        // A file system that ignores case finds the other capitals itself.
        if (std::string_view(c.What).find("capitals") != std::string_view::npos) {
            continue;
        }
#endif
        Model fresh;
        c.Break(fresh.dir_, *fresh.doc_);
        const std::vector<CheckRow> rows = fresh.Rows();
        ASSERT_EQ(rows.size(), 1u) << (rows.empty() ? "" : rows[0].Text + " / " + rows.back().Text);
        EXPECT_EQ(rows[0].Kind, c.Kind) << rows[0].Text;
        EXPECT_NE(rows[0].Text.find(c.Names), std::string::npos) << rows[0].Text;
    }
}

// The sample model with bitmaps for its textures: no row of the file checks.
TEST(ModelFileChecks, TheSampleModelGivesNoRow) {
    Model m;
    TempDir& dir_ = m.dir_;
    Document* doc_ = m.doc_.get();
    for (const auto& entry : std::filesystem::directory_iterator(QUARLE_TEST_DATA "/model")) {
        std::filesystem::copy(entry.path(), dir_ / entry.path().filename().string(),
                              std::filesystem::copy_options::overwrite_existing);
    }
    for (const char* texture :
         {"robot_body.bmp", "robot_face.bmp", "Robot_Eyes.BMP", "helmet.bmp"}) {
        dir_.Write(texture, Bmp(64, 64));
    }
    const char* parts[] = {"robot_ref", "robot_head", "robot_helmet"};
    doc_->BodyGroups[1].PartCount = 3;
    for (int p = 1; p <= 3; ++p) {
        doc_->BodyGroups[1].Parts[p] = parts[p - 1];
    }
    int slot = 0;
    for (const char* anim : {"idle", "walk", "run", "jump", "die_back", "Shoot"}) {
        doc_->Anims[0][slot].Name = doc_->Anims[0][slot].SmdFile = anim;
        ++slot;
    }
    doc_->Attachments[0].Active = doc_->Controllers[0].Active = 0;
    EXPECT_EQ(m.Rows(), std::vector<CheckRow>());
}

} // namespace
} // namespace quarle::compile
