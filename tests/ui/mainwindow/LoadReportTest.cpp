// A script from elsewhere opened and saved through the window: one message
// after the load names what a save will change, and the first save keeps the
// original beside the script.
#include "support/MainWindowFixture.h"

#include <QAction>

namespace quarle::ui {
namespace {

using platform::Answer;
using platform::Icon;
using test::Pick;
using test::ReadFile;
using test::WriteFile;

class LoadReportTest : public test::MainWindowFixture {
protected:
    LoadReportTest() { Start(Texts::Keys); }
};

TEST_F(LoadReportTest, OneMessageAfterTheLoadAndTheFirstSaveKeepsTheOriginalOnce) {
    OpenSampleModel();
    const QByteArray m = models.path().toUtf8();
    QByteArray script = "// from a decompiler\r\n$cd \"c:\\gone\"\r\n$cdtexture \"" + m +
                        "\"\r\n$cliptotextures\r\n$body body \"robot_ref\"\r\n"
                        "$sequence \"s0\" \"idle\" fps 29.97 node 3\r\n";
    for (int i = 1; i < 130; ++i) {
        script += "$sequence \"s" + QByteArray::number(i) + "\" \"idle\" fps 30\r\n";
    }
    script += "$Scale 2\r\n";
    const QString qc = InModels("done.qc");
    WriteFile(qc, script);
    // An older copy is left alone; the next free name takes the original.
    WriteFile(qc + ".orig", "older");

    services.QueueOpen(Pick(qc));
    services.QueueMsgBox(Answer::Ok);
    services.QueueFolder(models.path());
    services.QueueMsgBox(Answer::Ok);
    form->MnuDateiOeffnen->trigger();
    ASSERT_EQ(services.Prompts().size(), 4);
    const auto& box = services.Prompts()[3];
    EXPECT_EQ(box.Title, "What Quarle found in the script");
    EXPECT_EQ(box.Icon, Icon::Exclamation);
    // What the forms cannot show is kept: the head names only what a save
    // really changes, the rows what the user should know besides.
    EXPECT_EQ(box.Text,
              "A save of this script changes what the compiler reads in 1 place.\n\n"
              "1 \u00d7 A folder or file was not where the script says: the save names the one "
              "you chose\n"
              "1 \u00d7 The model compiler refuses the script at this line and builds no model; "
              "the line is kept as it stands\n\n"
              "The first places:\n"
              "done.qc, line 2: $cd \"c:\\gone\"\n"
              "done.qc, line 136: $Scale 2\n\n"
              "The first save keeps the original script beside it as \"done.qc.orig2\".");
    EXPECT_EQ(form->LstAnimations->count(), 101) << "the forms hold 101; the others stay as written";

    form->MnuDateiSpeichern->trigger();
    EXPECT_EQ(services.Prompts().size(), 4) << "a save asks nothing";
    EXPECT_EQ(ReadFile(qc + ".orig2"), script);
    EXPECT_EQ(ReadFile(qc + ".orig"), "older");
    EXPECT_TRUE(ReadFile(qc).contains("\r\n$cliptotextures\r\n"));
    EXPECT_TRUE(ReadFile(qc).contains("\r\n$sequence \"s129\" \"idle\" fps 30\r\n"));
    EXPECT_EQ(state->Settings.RecentFiles[0], qc.toStdString()) << "the script, not its copy";

    // Later saves write over the script only.
    Doc().ModelScale = 2.0f;
    form->MnuDateiSpeichern->trigger();
    EXPECT_TRUE(ReadFile(qc).contains("\r\n$scale 2\r\n"));
    EXPECT_EQ(ReadFile(qc + ".orig2"), script);
    EXPECT_FALSE(QFileInfo::exists(qc + ".orig3"));
    EXPECT_EQ(state->Settings.RecentFiles[1], "...");
}

TEST_F(LoadReportTest, AFileWithoutADirectiveIsToldAndItsOriginalKept) {
    const QString kept = "\n\nThe first save keeps the original script beside it as \"x.qc.orig\".";
    const struct {
        QByteArray Bytes;
        bool Kept;
    } files[] = {
        {"Dear Sir,\r\nplease find the model attached.\r\n", true},
        {"// a note, and no more\r\n", true},
        {"", false},
    };
    for (const auto& file : files) {
        const QString qc = InModels("x.qc");
        WriteFile(qc, file.Bytes);
        services.QueueOpen(Pick(qc));
        services.QueueMsgBox(Answer::Ok);
        const auto before = services.Prompts().size();
        form->MnuDateiOeffnen->trigger();
        ASSERT_EQ(services.Prompts().size(), before + 2) << file.Bytes.toStdString();
        const auto& box = services.Prompts().back();
        EXPECT_EQ(box.Icon, Icon::Exclamation);
        EXPECT_EQ(box.Text,
                  "\"x.qc\" holds no directive: it is not a model script, or it is empty. "
                  "Quarle has read nothing from it." +
                      (file.Kept ? kept : QString()));
        EXPECT_EQ(QcFile(), qc);

        form->MnuDateiSpeichern->trigger();
        EXPECT_EQ(services.Prompts().size(), before + 2) << "a save asks nothing";
        EXPECT_EQ(ReadFile(qc), file.Bytes) << "the save keeps what it could not read";
        EXPECT_EQ(ReadFile(qc + ".orig"), file.Kept ? file.Bytes : QByteArray("<missing>"));
        QFile::remove(qc + ".orig");
    }
}

// A binary or UTF-16 file opened by mistake is refused by what it looks
// like: the window gets a new document, so a save asks for a name and the
// file stays as it was.
TEST_F(LoadReportTest, ABinaryOrUtf16FileIsRefusedAndNeverSavedOver) {
    const struct {
        QByteArray Bytes;
        QString Text;
    } files[] = {
        {QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x01\0", 20), "holds NUL bytes"},
        {QByteArray("\xFF\xFE$\0c\0d\0", 8), "is UTF-16 text"},
    };
    for (const auto& file : files) {
        const QString qc = InModels("x.qc");
        WriteFile(qc, file.Bytes);
        services.QueueOpen(Pick(qc));
        services.QueueMsgBox(Answer::Ok);
        form->MnuDateiOeffnen->trigger();
        const auto& box = services.Prompts().back();
        EXPECT_EQ(box.Icon, Icon::Critical);
        EXPECT_TRUE(box.Text.contains(file.Text)) << box.Text.toStdString();
        EXPECT_TRUE(box.Text.contains(qc)) << box.Text.toStdString();
        EXPECT_EQ(QcFile(), QString());

        services.QueueSave(std::nullopt);
        form->MnuDateiSpeichern->trigger();
        EXPECT_EQ(ReadFile(qc), file.Bytes);
        EXPECT_FALSE(QFileInfo::exists(qc + ".orig"));
    }
}

} // namespace
} // namespace quarle::ui
