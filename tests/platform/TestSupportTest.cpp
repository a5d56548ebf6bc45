// The test support checks the tests of the forms; here it is checked itself.
#include "support/ModalScript.h"
#include "support/ScriptedServices.h"

#include <QDialog>
#include <QTest>
#include <QTimer>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace quarle::test {
namespace {

using platform::Answer;
using platform::Buttons;
using platform::FilePick;
using platform::Icon;

TEST(ScriptedServices, AnswersInOrderAndRecordsEveryPrompt) {
    ScriptedServices s;
    s.QueueMsgBox(Answer::Yes);
    s.QueueMsgBox(Answer::Cancel);
    s.QueueOpen(FilePick{"/m/a.qc", "a.qc"});
    s.QueueOpen(std::nullopt);
    s.QueueSave(FilePick{"/m/b.qc", "b.qc"});

    EXPECT_EQ(s.MsgBox("first", Buttons::YesNo, Icon::Question, "T1"), Answer::Yes);
    EXPECT_EQ(s.ShowOpen("Open...", "*.*|*.*")->FileTitle, "a.qc");
    EXPECT_EQ(s.MsgBox("second", Buttons::OkCancel, Icon::Critical, "T2"), Answer::Cancel);
    EXPECT_FALSE(s.ShowOpen("Open...", "Bitmap|*.bmp").has_value());
    EXPECT_EQ(s.ShowSave("Save as...", "QC|*.qc", "/m")->FileName, "/m/b.qc");

    ASSERT_EQ(s.Prompts().size(), 5);
    EXPECT_EQ(s.Prompts()[0].Kind, "MsgBox");
    EXPECT_EQ(s.Prompts()[0].Text, "first");
    EXPECT_EQ(s.Prompts()[0].Title, "T1");
    EXPECT_EQ(s.Prompts()[2].Buttons, Buttons::OkCancel);
    EXPECT_EQ(s.Prompts()[2].Icon, Icon::Critical);
    EXPECT_EQ(s.Prompts()[3].Kind, "Open");
    EXPECT_EQ(s.Prompts()[3].Filter, "Bitmap|*.bmp");
    EXPECT_EQ(s.Prompts()[4].Kind, "Save");
    EXPECT_EQ(s.Prompts()[4].Title, "Save as...");
    EXPECT_EQ(s.Prompts()[4].InitialDir, "/m");

    s.StartResult = false;
    EXPECT_FALSE(s.StartProgram("notepad.exe", {"c:\\m\\a.qc"}));
    ASSERT_EQ(s.Starts.size(), 1);
    EXPECT_EQ(s.Starts[0].Program, "notepad.exe");
    EXPECT_EQ(s.Starts[0].Arguments, QStringList{"c:\\m\\a.qc"});
    s.NextRnd = 0.25;
    s.Now = 3600;
    EXPECT_EQ(s.Rnd(), 0.25);
    EXPECT_EQ(s.Timer(), 3600);
    EXPECT_EQ(s.ProgramFolder(), QUARLE_BINARY_DIR "/bin");
}

TEST(ScriptedServices, FailsOnUnexpectedPromptsAndLeftoverAnswers) {
    ScriptedServices s;
    // A kind with nothing queued fails, even when another kind has answers.
    s.QueueSave(FilePick{"/x.qc", "x.qc"});
    EXPECT_NONFATAL_FAILURE(
        EXPECT_EQ(s.MsgBox("Kein Pfad", Buttons::YesNo, Icon::Question, "t"), Answer::Cancel),
        "Kein Pfad");
    EXPECT_NONFATAL_FAILURE(EXPECT_FALSE(s.ShowOpen("Öffnen", "*.*|*.*").has_value()),
                            "Unexpected Open dialog");
    EXPECT_EQ(s.Prompts().size(), 2); // recorded all the same

    EXPECT_NONFATAL_FAILURE(s.VerifyAllUsed(), "Save dialog answer");
    s.VerifyAllUsed(); // the leftovers were reported once and dropped

    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedServices leftover;
            leftover.QueueMsgBox(Answer::Ok);
        },
        "message box answer was queued but never asked for");
}

TEST(ModalScript, DrivesTheNextModalDialog) {
    QDialog dialog;
    ModalScript script([](QWidget* modal) { qobject_cast<QDialog*>(modal)->done(7); });
    EXPECT_FALSE(script.Ran());
    EXPECT_EQ(dialog.exec(), 7);
    EXPECT_TRUE(script.Ran());
    EXPECT_EQ(script.Modal(), &dialog);
}

TEST(ModalScript, AScriptThatNeverRanCannotFireLater) {
    int runs = 0;
    {
        ModalScript stale([&](QWidget* modal) {
            ++runs;
            modal->close();
        });
    } // gone before any dialog showed
    QDialog dialog;
    QTimer::singleShot(200, &dialog, &QDialog::reject); // the fallback that ends exec
    dialog.exec();
    EXPECT_EQ(runs, 0);

    // And one that gives up waiting stays quiet too.
    ModalScript patient([&](QWidget*) { ++runs; }, 30, 10);
    QTest::qWait(100);
    QDialog second;
    QTimer::singleShot(100, &second, &QDialog::reject);
    second.exec();
    EXPECT_FALSE(patient.Ran());
    EXPECT_EQ(runs, 0);
}

} // namespace
} // namespace quarle::test
