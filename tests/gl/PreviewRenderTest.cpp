// The preview's drawing, rendered by Mesa's software renderer and read back:
// a square with a two-texel texture (red, and palette index 255 in green),
// counted by the colours of its pixels in each render mode; and the compiled
// skeleton laid over it.
#include "StudioBytes.h"
#include "support/MainWindowFixture.h"
#include "ui/preview/FrmPreview.h"
#include "ui/preview/PreviewView.h"

#include <QCheckBox>
#include <QImage>
#include <QLabel>
#include <QTest>
#include <gmock/gmock.h>

namespace quarle::test {
namespace {

// A 2 x 1 8-bit bitmap: index 1 red on the left, index 255 green on the right.
QByteArray TwoTexelBitmap() {
    QByteArray palette(256 * 4, '\0');
    palette[1 * 4 + 2] = char(220); // blue, green, red, 0
    palette[255 * 4 + 1] = char(220);
    const QByteArray pixels("\x01\xff\0\0", 4);
    QByteArray bmp;
    auto u32 = [&bmp](quint32 v) {
        for (int i = 0; i < 4; ++i) {
            bmp.append(char((v >> (8 * i)) & 0xff));
        }
    };
    auto u16 = [&bmp](quint16 v) {
        bmp.append(char(v & 0xff));
        bmp.append(char(v >> 8));
    };
    const quint32 offset = 14 + 40 + 1024;
    bmp.append("BM");
    u32(offset + 4);
    u32(0);
    u32(offset);
    u32(40);
    u32(2);
    u32(1);
    u16(1);
    u16(8);
    u32(0);
    u32(4);
    u32(2835);
    u32(2835);
    u32(256);
    u32(0);
    return bmp + palette + pixels;
}

// A square of 40 units in the Y-Z plane on one bone, U running along Y.
const char* Square = R"(version 1
nodes
  0 "root" -1
end
skeleton
time 0
  0 0 0 0 0 0 0
end
triangles
square.bmp
  0 0 -20 -20 1 0 0 0 0
  0 0 20 -20 1 0 0 1 0
  0 0 20 20 1 0 0 1 1
square.bmp
  0 0 -20 -20 1 0 0 0 0
  0 0 20 20 1 0 0 1 1
  0 0 -20 20 1 0 0 0 1
end
)";

struct Counts {
    int Red = 0;
    int Green = 0;
    double GreenBlue = 0; // mean blue of the green pixels: the background added in
};

Counts Count(const QImage& image) {
    Counts counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c.red() > 100 && c.red() > 2 * c.green() && c.red() > 2 * c.blue()) {
                ++counts.Red;
            } else if (c.green() > 100 && c.green() > 2 * c.red() && c.green() > c.blue()) {
                ++counts.Green;
                counts.GreenBlue += c.blue();
            }
        }
    }
    if (counts.Green > 0) {
        counts.GreenBlue /= counts.Green;
    }
    return counts;
}

class PreviewRender : public MainWindowFixture {
protected:
    // The preview opened from the file menu on the shown main window, drawn
    // once; fails where it cannot draw.
    ui::FrmPreview* ShowPreview() {
        form->show();
        form->MnuDateiPreview->trigger();
        ui::FrmPreview* preview = form->OpenFrmPreview();
        if (preview == nullptr || !QTest::qWaitForWindowExposed(preview)) {
            ADD_FAILURE() << "the preview did not open";
            return nullptr;
        }
        preview->TmrTick_Timer();
        if (preview->PicView->GlAvailable() != true) {
            ADD_FAILURE() << preview->LblStatus->text().toStdString();
            return nullptr;
        }
        return preview;
    }
};

TEST_F(PreviewRender, RenderModesDrawTheTexelsAsTheyShould) {
    Start();
    WriteFile(InModels("square.smd"), Square);
    WriteFile(InModels("square.bmp"), TwoTexelBitmap());
    Doc().ModelPath = models.path().toStdString();
    Doc().TexturePath = models.path().toStdString();
    Doc().BodyGroups[1].PartCount = 1;
    Doc().BodyGroups[1].Parts[1] = "square";
    Doc().TextureModes[1].Name = "square.bmp";

    ui::FrmPreview* preview = ShowPreview();
    ASSERT_NE(preview, nullptr);

    const struct {
        int Mode;
        bool GreenDrawn;
        bool GreenOverBackground;
    } cases[] = {
        {0, true, false}, // normal: both texels, opaque
        {1, false, false}, // masked: index 255 is not drawn
        {2, true, true},  // additive: added to the background
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Mode);
        Doc().TextureModes[1].Mode = u8(c.Mode);
        preview->TmrTick_Timer();
        const Counts counts = Count(preview->PicView->Grab());
        const int pixels = preview->PicView->width() * preview->PicView->height();
        // The framed square fills a good part of the view, half of it red.
        EXPECT_GT(counts.Red, pixels / 20);
        if (c.GreenDrawn) {
            // The same area, seen at an angle: the nearer half shows larger.
            EXPECT_GT(counts.Green, counts.Red / 2);
            EXPECT_LT(counts.Green, counts.Red * 2);
            EXPECT_EQ(counts.GreenBlue > 40, c.GreenOverBackground) << counts.GreenBlue;
        } else {
            EXPECT_EQ(counts.Green, 0);
        }
    }
    EXPECT_FALSE(preview->LblStatus->text().contains("square.bmp"));
}

// The pixels of the compiled skeleton's colour.
int Magenta(const QImage& image) {
    int n = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            n += c.red() > 180 && c.blue() > 180 && c.green() < 110;
        }
    }
    return n;
}

TEST_F(PreviewRender, TheCompiledSkeletonLiesOverTheSourcesInAColourOfItsOwn) {
    Start();
    WriteFile(InModels("square.smd"), Square);
    WriteFile(InModels("square.bmp"), TwoTexelBitmap());
    // Compiled with the root 10 units higher than the sources have it, and
    // a bone the sources lack.
    StudioBuild build;
    studio::StudioModel& m = build.Model;
    m.Bones = {{"root", -1, 0, {-1, -1, -1, -1, -1, -1}, {0, 0, 10, 0, 0, 0}, {}},
               {"tip", 0, 0, {-1, -1, -1, -1, -1, -1}, {0, 15, 15, 0, 0, 0}, {}}};
    m.Groups = {{"default", ""}};
    studio::Model part;
    part.Name = "square";
    part.VertexBones = {0, 0, 0};
    part.Vertices = {{0, -20, -20}, {0, 20, -20}, {0, 20, 20}};
    part.NormalBones = {0};
    part.Normals = {{1, 0, 0}};
    studio::Mesh mesh;
    mesh.DeclaredTriangles = 1;
    mesh.Triangles = {{studio::Corner{0, 0, 0, 0}, studio::Corner{1, 0, 1, 0},
                       studio::Corner{2, 0, 1, 1}}};
    part.Meshes = {mesh};
    m.BodyParts = {{"body", 1, {part}}};
    m.Textures = {{"square.bmp", 0, 1, 1, {0}, StudioPalette()}};
    m.SkinRefs = 1;
    m.SkinFamilies = {{0}};
    WriteFile(InModels("square.mdl"), QByteArray::fromStdString(BuildStudio(build).Model));
    Doc().QcFile = InModels("square.qc").toStdString();
    Doc().ModelName = InModels("square.mdl").toStdString();
    Doc().ModelPath = models.path().toStdString();
    Doc().TexturePath = models.path().toStdString();
    Doc().BodyGroups[1].PartCount = 1;
    Doc().BodyGroups[1].Parts[1] = "square";

    ui::FrmPreview* preview = ShowPreview();
    ASSERT_NE(preview, nullptr);
    ASSERT_TRUE(preview->ChkCompiled->isEnabled());
    EXPECT_EQ(Magenta(preview->PicView->Grab()), 0);

    preview->ChkCompiled->setChecked(true);
    EXPECT_GT(Magenta(preview->PicView->Grab()), 40);
    const std::string status = preview->LblStatus->text().toStdString();
    EXPECT_THAT(status,
                ::testing::HasSubstr(
                    "compiled skeleton (square.mdl): largest distance 10.000 at \"root\""));
    EXPECT_THAT(status, ::testing::HasSubstr("bones only in the compiled model: tip"));

    preview->ChkCompiled->setChecked(false);
    EXPECT_EQ(Magenta(preview->PicView->Grab()), 0);
    EXPECT_THAT(preview->LblStatus->text().toStdString(),
                ::testing::Not(::testing::HasSubstr("compiled skeleton")));
}

} // namespace
} // namespace quarle::test
