// The texture variations and render modes as a user gives them: a script with
// two meshes is opened, the dialog is opened and driven, closed, the script
// saved and its texture lines compared; a second opening must add nothing.
// The bitmaps are made here: 8-bit paletted, as the game uses them.
#include "platform/Cp1252Text.h"
#include "support/MainWindowFixture.h"
#include "ui/dialogs/DlgModeleinstellungen.h"
#include "ui/textures/DlgTextureGroup.h"
#include "ui/textures/DlgTexturemode.h"
#include "ui/textures/ScrollPicture.h"

#include <QAction>
#include <QImage>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <functional>
#include <type_traits>

namespace quarle::ui {
namespace {

using platform::Answer;
using test::Items;
using test::Pick;
using test::ReadFile;
using test::SelectText;
using test::WriteFile;

QByteArray Mesh(std::initializer_list<const char*> textures) {
    QByteArray smd = "version 1\r\nnodes\r\n  0 \"root\" -1\r\nend\r\ntriangles\r\n";
    for (const char* texture : textures) {
        smd += QByteArray(texture) + "\r\n  0 0 0 0 0 0 1 0 0\r\n";
    }
    return smd + "end\r\n";
}

void WriteBitmap(const QString& path, int width, int height, int shade) {
    QImage image(width, height, QImage::Format_Indexed8);
    QList<QRgb> palette;
    for (int i = 0; i < 256; ++i) {
        palette.append(qRgb(i, 255 - i, shade));
    }
    image.setColorTable(palette);
    image.fill(static_cast<uint>(shade));
    ASSERT_TRUE(image.save(path, "BMP")) << path.toStdString();
}

class TextureDialogsTest : public test::MainWindowFixture {
protected:
    TextureDialogsTest() {
        Start(Texts::Keys);
        QDir(models.path()).mkdir("tex");
        WriteFile(InModels("body.smd"), Mesh({"skin.bmp", "Grate.BMP", "skin.bmp"}));
        WriteFile(InModels("head.smd"), Mesh({"face.bmp", "SKIN.BMP"}));
        WriteBitmap(InTextures("face.bmp"), 64, 64, 10);
        WriteBitmap(InTextures("Face_blood.bmp"), 64, 32, 20);
        WriteBitmap(InTextures("grate.BMP"), 32, 32, 30);
        WriteBitmap(InTextures("skin_red.bmp"), 600, 40, 40); // wider than the preview
        WriteFile(InTextures("skin.tga"), "not a bitmap");
        WriteFile(InModels("robot.qc"), "$cd \"" + models.path().toUtf8() + "\"\r\n$cdtexture \"" +
                                            models.path().toUtf8() + "/tex" +
                                            "\"\r\n$body body \"body\"\r\n$body head \"head\"\r\n");
        services.QueueOpen(Pick(InModels("robot.qc")));
        form->MnuDateiOeffnen->trigger();
    }

    QString InTextures(const QString& name) const { return InModels("tex/" + name); }

    // Opens the dialog as the user reaches it, runs the script on it while it
    // is modal, and closes it with OK.
    template <class Dialog> void Open(const std::function<void(Dialog&)>& script) {
        // Through the model settings, whose button opens the dialog.
        test::ModalScript settings([&](QWidget* w) {
            auto* m = qobject_cast<DlgModeleinstellungen*>(w);
            ASSERT_NE(m, nullptr);
            test::ModalScript modal([&script](QWidget* shown) {
                auto* dialog = qobject_cast<Dialog*>(shown);
                ASSERT_NE(dialog, nullptr) << "not the dialog expected";
                script(*dialog);
                QTest::mouseClick(dialog->OKButton, Qt::LeftButton);
            });
            QPushButton* gate =
                std::is_same_v<Dialog, DlgTextureGroup> ? m->CmdTextureGroup : m->CmdTexturemode;
            gate->click();
            EXPECT_TRUE(modal.Ran());
            m->OKButton->click();
        });
        form->CmdModeleinst->click();
        ASSERT_TRUE(settings.Ran());
    }

    // The texture lines of the saved script: what a save puts behind the
    // script's last body, where it ends.
    QByteArray SavedTextureLines() {
        form->MnuDateiSpeichern->trigger();
        const QByteArray script = ReadFile(InModels("robot.qc"));
        const QByteArray from = "$body head \"head\"\r\n";
        const qsizetype start = script.indexOf(from);
        EXPECT_TRUE(start >= 0) << script.toStdString();
        return script.mid(start + from.size());
    }
};

TEST_F(TextureDialogsTest, TwoSkinsGoIntoTheTextureGroup) {
    const QStringList textures{"skin.bmp", "Grate.BMP", "face.bmp"};
    Open<DlgTextureGroup>([&](DlgTextureGroup& dlg) {
        EXPECT_EQ(Items(dlg.LstTexture), textures) << "one entry per name, any case";
        EXPECT_EQ(Items(dlg.FileChangeTo),
                  (QStringList{"face.bmp", "Face_blood.bmp", "grate.BMP", "skin_red.bmp"}));

        // Variation 1: the face gets blood. Ticking takes the first bitmap
        // at once, then the user picks another.
        SelectText(dlg.LstTexture, "face.bmp");
        EXPECT_FALSE(dlg.ChkChangeTo->isChecked());
        EXPECT_EQ(dlg.ScrPicPreview->Picture().size(), QSize(64, 64));
        dlg.ChkChangeTo->click();
        EXPECT_EQ(Doc().TextureVariations[2][3], "face.bmp");
        SelectText(dlg.FileChangeTo, "Face_blood.bmp");
        EXPECT_EQ(Doc().TextureVariations[2][3], "Face_blood.bmp");
        EXPECT_EQ(dlg.ScrPicPreview->Picture().size(), QSize(64, 32));

        // Variation 2: a red skin. The change of variation shows the first
        // texture, unchanged there; the wide bitmap brings the horizontal bar.
        dlg.CmdVarPfeilr->click();
        EXPECT_EQ(dlg.LstTexture->currentRow(), 0);
        EXPECT_FALSE(dlg.ChkChangeTo->isChecked());
        dlg.ChkChangeTo->click();
        SelectText(dlg.FileChangeTo, "skin_red.bmp");
        EXPECT_TRUE(dlg.ScrPicPreview->HScroll1->isVisibleTo(&dlg));
        EXPECT_FALSE(dlg.ScrPicPreview->VScroll1->isVisibleTo(&dlg));

        // Variation 3 is tried and given up again: it writes nothing.
        dlg.TxtVarNr->setText("3");
        dlg.ChkChangeTo->click();
        dlg.ChkChangeTo->click();

        // The number stays within 1..9, and a box without a number keeps
        // the variation on show.
        for (const auto& [typed, shown] : {std::pair{"12", "9"}, {"0", "1"}, {"-4", "1"}}) {
            dlg.TxtVarNr->setText(typed);
            EXPECT_EQ(dlg.TxtVarNr->text(), shown) << typed;
        }
        dlg.CmdVarPfeill->click();
        EXPECT_EQ(dlg.TxtVarNr->text(), "1");
        dlg.TxtVarNr->setText("9");
        dlg.CmdVarPfeilr->click();
        EXPECT_EQ(dlg.TxtVarNr->text(), "9");
        dlg.TxtVarNr->setText("");
        EXPECT_EQ(dlg.Variation(), 9);
        dlg.TxtVarNr->setText("1");
        SelectText(dlg.LstTexture, "face.bmp");
        EXPECT_TRUE(dlg.ChkChangeTo->isChecked());
        EXPECT_EQ(dlg.FileChangeTo->currentItem()->text(), "Face_blood.bmp");
        EXPECT_EQ(dlg.ScrPicPreview->Picture().size(), QSize(64, 64))
            << "one click, one picture: the texture's, not its replacement's";
    });
    const QByteArray golden = "$texturegroup dummi\r\n{\r\n"
                              "{ \"skin.bmp\" \"Grate.BMP\" \"face.bmp\" }\r\n"
                              "{ \"skin.bmp\" \"Grate.BMP\" \"Face_blood.bmp\" }\r\n"
                              "{ \"skin_red.bmp\" \"Grate.BMP\" \"face.bmp\" }\r\n}\r\n";
    EXPECT_EQ(SavedTextureLines(), golden);

    // A second opening lists the same textures; a replacement that left the
    // folder keeps its cell, with no bitmap selected.
    QFile::remove(InTextures("Face_blood.bmp"));
    Open<DlgTextureGroup>([&](DlgTextureGroup& dlg) {
        EXPECT_EQ(Items(dlg.LstTexture), textures);
        SelectText(dlg.LstTexture, "face.bmp");
        EXPECT_TRUE(dlg.ChkChangeTo->isChecked());
        EXPECT_EQ(dlg.FileChangeTo->selectedItems().size(), 0);
    });
    EXPECT_EQ(Doc().TextureCount, 3);
    EXPECT_EQ(SavedTextureLines(), golden);

    // The script reads back to the same table.
    form->MnuDateiLast1->trigger();
    EXPECT_EQ(SavedTextureLines(), golden);
    EXPECT_TRUE(services.Prompts().size() == 1) << "only the open dialog asked";
}

TEST_F(TextureDialogsTest, RenderModesStayWithTheirTextures) {
    Open<DlgTexturemode>([](DlgTexturemode& dlg) {
        EXPECT_EQ(Items(dlg.LstTextures), (QStringList{"skin.bmp", "Grate.BMP", "face.bmp"}));
        EXPECT_FALSE(dlg.FrmRenderMode->isEnabled()) << "no texture chosen";
        SelectText(dlg.LstTextures, "Grate.BMP");
        EXPECT_TRUE(dlg.OptModes[0]->isChecked());
        dlg.OptModes[1]->click();
        SelectText(dlg.LstTextures, "face.bmp");
        EXPECT_TRUE(dlg.OptModes[0]->isChecked());
        dlg.OptModes[2]->click();
        SelectText(dlg.LstTextures, "Grate.BMP");
        EXPECT_TRUE(dlg.OptModes[1]->isChecked());
    });
    const QByteArray golden = "$texrendermode \"Grate.BMP\" masked\r\n"
                              "$texrendermode \"face.bmp\" additive\r\n";
    EXPECT_EQ(SavedTextureLines(), golden);

    // Opened again: the same three, each showing its mode; the script reads
    // back to the same lines.
    Open<DlgTexturemode>([](DlgTexturemode& dlg) {
        EXPECT_EQ(dlg.LstTextures->count(), 3);
        SelectText(dlg.LstTextures, "face.bmp");
        EXPECT_TRUE(dlg.OptModes[2]->isChecked());
    });
    EXPECT_EQ(SavedTextureLines(), golden);
    form->MnuDateiLast1->trigger();
    EXPECT_EQ(SavedTextureLines(), golden);
}

// What the dialogs do with what they can't use: each problem told once, by
// message box, and the document at its last valid value.
TEST_F(TextureDialogsTest, ProblemsAreToldOnceAndLoseNothing) {
    // A mesh file that went missing, and a third mesh with eleven textures.
    Doc().BodyGroupCount = 4;
    Doc().BodyGroups[3].PartCount = 2;
    Doc().BodyGroups[3].Parts[1] = "gone";
    Doc().BodyGroups[3].Parts[2] = "gone_too";
    QByteArray many = "triangles\r\n";
    for (int i = 1; i <= 11; ++i) {
        many += "t" + QByteArray::number(i) + ".bmp\r\n";
    }
    WriteFile(InModels("many.smd"), many);
    Doc().BodyGroups[4].PartCount = 1;
    Doc().BodyGroups[4].Parts[1] = "many";
    // A broken bitmap, and more bitmaps than a byte can count.
    WriteFile(InTextures("broken.bmp"), "BM not really");
    for (int i = 0; i < 300; ++i) {
        WriteFile(InTextures(QStringLiteral("z%1.bmp").arg(i, 3, 10, QChar('0'))), "x");
    }

    services.QueueMsgBox(Answer::Ok);
    services.QueueMsgBox(Answer::Ok);
    Open<DlgTextureGroup>([&](DlgTextureGroup& dlg) {
        ASSERT_EQ(dlg.LstTexture->count(), 10);
        EXPECT_EQ(dlg.LstTexture->item(9)->text(), "t7.bmp");
        EXPECT_EQ(dlg.FileChangeTo->count(), 305);
        SelectText(dlg.LstTexture, "t7.bmp");
        dlg.ChkChangeTo->click();
        SelectText(dlg.FileChangeTo, "broken.bmp");
        EXPECT_TRUE(dlg.ScrPicPreview->Picture().isNull()) << "an empty preview";
        EXPECT_EQ(Doc().TextureVariations[2][10], "broken.bmp") << "still chosen";
        SelectText(dlg.FileChangeTo, "z299.bmp");
    });
    ASSERT_EQ(services.Prompts().size(), 3);
    const QString unreadable = services.Prompts()[1].Text;
    EXPECT_TRUE(unreadable.startsWith("These mesh files could not be read"));
    EXPECT_TRUE(unreadable.contains(InModels("gone.smd")) &&
                unreadable.contains(InModels("gone_too.smd")));
    EXPECT_EQ(services.Prompts()[2].Text,
              "The meshes of this model use more than 10 different textures. Only the first 10 "
              "are listed; the others can have no variations or render modes.");
    EXPECT_EQ(Doc().TextureCount, 10);

    // The 300th bitmap is found again on the next opening.
    services.QueueMsgBox(Answer::Ok);
    services.QueueMsgBox(Answer::Ok);
    Open<DlgTextureGroup>([](DlgTextureGroup& dlg) {
        SelectText(dlg.LstTexture, "t7.bmp");
        EXPECT_EQ(dlg.FileChangeTo->currentItem()->text(), "z299.bmp");
    });

    // The render modes count the same ten, and tell the same problems.
    services.QueueMsgBox(Answer::Ok);
    services.QueueMsgBox(Answer::Ok);
    Open<DlgTexturemode>([](DlgTexturemode& dlg) { EXPECT_EQ(dlg.LstTextures->count(), 10); });
    EXPECT_EQ(Doc().TextureModes[10].Name, "t7.bmp");

    // A texture folder without bitmaps: ticking is refused and undone.
    Doc().TexturePath = InModels("empty").toStdString();
    QDir(models.path()).mkdir("empty");
    services.QueueMsgBox(Answer::Ok);
    services.QueueMsgBox(Answer::Ok);
    services.QueueMsgBox(Answer::Ok);
    Open<DlgTextureGroup>([&](DlgTextureGroup& dlg) {
        SelectText(dlg.LstTexture, "face.bmp");
        dlg.ChkChangeTo->click();
        EXPECT_FALSE(dlg.ChkChangeTo->isChecked());
        EXPECT_EQ(Doc().TextureVariations[2][3], Blank);
    });
    EXPECT_TRUE(services.Prompts().last().Text.startsWith("The texture folder \""));
    services.VerifyAllUsed();
}

// Names on disk are UTF-8, the document holds cp1252: a texture folder and
// bitmaps with umlauts are listed, previewed and picked by their own letters,
// written as cp1252, and the folder is named as it is called.
TEST_F(TextureDialogsTest, UmlautsInTheTextureFolderKeepTheirLetters) {
    QDir(models.path()).mkdir("Blüten");
    WriteBitmap(InModels("Blüten/blütig.bmp"), 64, 32, 50);
    WriteBitmap(InModels("Blüten/ärmel.bmp"), 32, 16, 60);
    Doc().TexturePath = *platform::ToCp1252(InModels("Blüten"));
    const struct {
        const char* texture;
        const char* bitmap;
        std::size_t column;
        QSize preview;
    } rows[] = {{"face.bmp", "blütig.bmp", 3, {64, 32}}, {"skin.bmp", "ärmel.bmp", 1, {32, 16}}};
    Open<DlgTextureGroup>([&](DlgTextureGroup& dlg) {
        EXPECT_EQ(Items(dlg.FileChangeTo), (QStringList{"blütig.bmp", "ärmel.bmp"}));
        for (const auto& row : rows) {
            SelectText(dlg.LstTexture, row.texture);
            dlg.ChkChangeTo->click();
            SelectText(dlg.FileChangeTo, row.bitmap);
            EXPECT_EQ(Doc().TextureVariations[2][row.column], *platform::ToCp1252(row.bitmap));
            EXPECT_EQ(dlg.ScrPicPreview->Picture().size(), row.preview) << row.bitmap;
        }
    });
    EXPECT_TRUE(SavedTextureLines().contains("{ \"\xe4rmel.bmp\" \"Grate.BMP\" \"bl\xfc"
                                             "tig.bmp\" }"));

    // A mesh file that can't be read and a folder without bitmaps, both named
    // with their umlauts under the error title.
    Doc().BodyGroupCount = 3;
    Doc().BodyGroups[3].PartCount = 1;
    Doc().BodyGroups[3].Parts[1] = *platform::ToCp1252("Blüten/weg");
    QDir(models.path()).mkdir("Öde");
    Doc().TexturePath = *platform::ToCp1252(InModels("Öde"));
    services.QueueMsgBox(Answer::Ok);
    services.QueueMsgBox(Answer::Ok);
    Open<DlgTextureGroup>([](DlgTextureGroup& dlg) {
        SelectText(dlg.LstTexture, "Grate.BMP");
        dlg.ChkChangeTo->click();
    });
    const auto& prompts = services.Prompts();
    ASSERT_EQ(prompts.size(), 3);
    EXPECT_TRUE(prompts[1].Text.contains(InModels("Blüten/weg.smd")))
        << prompts[1].Text.toStdString();
    EXPECT_TRUE(prompts[2].Text.contains(InModels("Öde"))) << prompts[2].Text.toStdString();
    EXPECT_EQ(prompts[2].Title, "IDS_ERROR");
}

} // namespace
} // namespace quarle::ui
