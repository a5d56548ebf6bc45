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

// (Answering and recording are what every test of the forms relies on; here
// only the failures a test must see.)

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

TEST(ModalScript, RunsOnceOnTheNextModalDialogAndNeverLater) {
    int runs = 0;
    {
        QDialog dialog;
        ModalScript script([&](QWidget* modal) {
            ++runs;
            qobject_cast<QDialog*>(modal)->done(7);
        });
        EXPECT_EQ(dialog.exec(), 7);
        EXPECT_TRUE(script.Ran());
        EXPECT_EQ(script.Modal(), &dialog);
        QTimer::singleShot(200, &dialog, &QDialog::reject);
        dialog.exec(); // a second dialog: the script is spent
        EXPECT_EQ(runs, 1);
    }
    {
        ModalScript stale([&](QWidget* modal) {
            ++runs;
            modal->close();
        });
    } // gone before any dialog showed: it never fires
    QDialog dialog;
    QTimer::singleShot(200, &dialog, &QDialog::reject); // the fallback that ends exec
    dialog.exec();
    EXPECT_EQ(runs, 1);

    // And one that gives up waiting stays quiet too.
    ModalScript patient([&](QWidget*) { ++runs; }, 30, 10);
    QTest::qWait(100);
    QDialog second;
    QTimer::singleShot(100, &second, &QDialog::reject);
    second.exec();
    EXPECT_FALSE(patient.Ran());
    EXPECT_EQ(runs, 1);
}

} // namespace
} // namespace quarle::test
