// The attachment and controller dialogs driven as a user reaches them: a
// model with a humanoid skeleton is opened, the dialog opened and worked,
// closed, the script saved, and its $attachment and $controller lines
// compared with what the user set.
#include "support/MainWindowFixture.h"
#include "ui/dialogs/DlgBindung.h"
#include "ui/dialogs/DlgController.h"
#include "ui/dialogs/DlgModeleinstellungen.h"
#include "ui/dialogs/LimitsDial.h"

#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QRadioButton>
#include <QTimer>
#include <functional>
#include <vector>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace quarle::ui {
namespace {

using platform::Answer;
using test::Pick;

class SkeletonDialogs : public test::MainWindowFixture {
protected:
    void SetUp() override {
        ASSERT_TRUE(QFile::copy(QStringLiteral(QUARLE_TEST_DATA "/skeleton/humanoid.smd"),
                                InModels("humanoid.smd")));
        const QByteArray folder = models.path().toUtf8();
        test::WriteFile(InModels("humanoid.qc"), "$modelname \"humanoid.mdl\"\r\n$cd \"" + folder +
                                                     "\"\r\n$cdtexture \"" + folder +
                                                     "\"\r\n$body body \"humanoid\"\r\n");
        Start(Texts::Keys);
        services.QueueOpen(Pick(InModels("humanoid.qc")));
        form->MnuDateiOeffnen->trigger();
        ASSERT_EQ(Doc().BodyGroups[1].Parts[1], "humanoid");
    }

    // Opens the dialog as the user does and runs the script on it.
    template <class Dialog> void Work(const std::function<void(Dialog&)>& script) {
        // Through the model settings, whose button opens the dialog.
        test::ModalScript settings([&](QWidget* w) {
            auto* m = qobject_cast<DlgModeleinstellungen*>(w);
            ASSERT_NE(m, nullptr);
            test::ModalScript modal([&](QWidget* w) {
                auto* dialog = qobject_cast<Dialog*>(w);
                ASSERT_NE(dialog, nullptr);
                script(*dialog);
                QTest::mouseClick(dialog->OKButton, Qt::LeftButton);
            });
            QPushButton* gate =
                std::is_same_v<Dialog, DlgBindung> ? m->CmdAttachment : m->CmdController;
            gate->click();
            EXPECT_TRUE(modal.Ran());
            m->OKButton->click();
        });
        form->CmdModeleinst->click();
        ASSERT_TRUE(settings.Ran());
    }

    // The lines of the saved script that start with the directive.
    QStringList Saved(const char* directive) {
        form->MnuDateiSpeichern->trigger();
        QStringList lines;
        for (const QByteArray& line : test::ReadFile(InModels("humanoid.qc")).split('\n')) {
            if (line.startsWith(directive)) {
                lines.append(QString::fromLatin1(line.trimmed()));
            }
        }
        return lines;
    }
};

// A click on an entry of the list: a bone, or an attachment or controller.
void Choose(QComboBox* list, const char* name) {
    const int i = list->findText(QString::fromLatin1(name));
    ASSERT_GE(i, 0) << name;
    list->setCurrentIndex(i);
    emit list->activated(i);
}

// Typing over the text of a list, key by key.
void TypeOver(QComboBox* list, const char* keys) {
    list->lineEdit()->selectAll();
    QTest::keyClicks(list->lineEdit(), QString::fromLatin1(keys));
}

void Retype(QLineEdit* box, const char* keys) {
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Backspace);
    QTest::keyClicks(box, QString::fromLatin1(keys));
}

TEST_F(SkeletonDialogs, AttachmentsPickBonesAndAreWritten) {
    Work<DlgBindung>([](DlgBindung& d) {
        EXPECT_EQ(d.TxtBone->count(), 23);
        EXPECT_EQ(d.CmbBindung->currentText(), "Bndg.-Nr.0");
        EXPECT_FALSE(d.TxtBone->isEnabled()) << "an inactive attachment";
        EXPECT_FALSE(d.TxtBindungX->isEnabled());

        d.ChkBndgAktiv->click();
        ASSERT_TRUE(d.TxtBone->isEnabled());
        EXPECT_TRUE(d.TxtBoneX->text().isEmpty()) << "ticking marks no bone";
        Choose(d.TxtBone, "Bip01 Head");
        const QImage head = d.PicXY->Picture();
        Choose(d.TxtBone, "Bip01 R Hand");
        EXPECT_EQ(QStringList({d.TxtBoneX->text(), d.TxtBoneY->text(), d.TxtBoneZ->text(),
                               d.TxtParent->text()}),
                  QStringList({"-29", "57", "0", "Bip01 R Forearm"}));
        EXPECT_NE(d.PicXY->Picture(), head);
        Choose(d.TxtBone, "Bip01 Head");
        EXPECT_EQ(d.PicXY->Picture(), head) << "the hand is grey again, the head red";
        Choose(d.TxtBone, "Bip01");
        EXPECT_EQ(d.TxtParent->text(), "IDS_NONE");
        Choose(d.TxtBone, "Bip01 R Hand");
        Retype(d.TxtBindungX, "1,5"); // a comma is typed as a point
        Retype(d.TxtBindungY, "-2x");
        Retype(d.TxtBindungZ, "3");

        // Typed text names no attachment: nothing reaches the tables.
        TypeOver(d.CmbBindung, "Bndg.-Nr.9");
        Retype(d.TxtBindungZ, "77");
        d.ChkBndgAktiv->click();

        TypeOver(d.CmbBindung, "Bndg.-Nr.2"); // typed whole, it picks
        EXPECT_FALSE(d.ChkBndgAktiv->isChecked());
        EXPECT_EQ(d.TxtBindungX->text(), "0");
        d.ChkBndgAktiv->click();
        d.TxtBone->setEditText(QString());
        QTest::keyClicks(d.TxtBone->lineEdit(), QStringLiteral("Custom Bone"));
        Retype(d.TxtBindungZ, "-");

        Choose(d.CmbBindung, "Bndg.-Nr.0");
        EXPECT_EQ(d.TxtBindungX->text(), "1.5");
        EXPECT_EQ(d.TxtBone->currentText(), "Bip01 R Hand");
    });
    EXPECT_EQ(Saved("$attachment"), QStringList({"$attachment 0 \"Bip01 R Hand\" 1.5 -2 3",
                                                 "$attachment 2 \"Custom Bone\" 0 0 0"}));
}

// A drag on the dial with a button held, as the user moves the pointer.
void Drag(LimitsDial* dial, Qt::MouseButtons held, int y) {
    QMouseEvent move(QEvent::MouseMove, QPointF(20, y), dial->mapToGlobal(QPointF(20, y)),
                     Qt::NoButton, held, Qt::NoModifier);
    QApplication::sendEvent(dial, &move);
}

TEST_F(SkeletonDialogs, ControllersTakeAxisLimitsAndADraggedDial) {
    Doc().Controllers[1] = {1, 7, -10, 12.5f}; // a foreign axis: Z is the nearest
    Doc().ControllerBones[1] = "Bip01 Neck";
    Work<DlgController>([](DlgController& d) {
        EXPECT_FALSE(d.FrameCtrl->isEnabled());
        EXPECT_TRUE(d.TxtBone->isEnabled()) << "the bone stays free to pick";
        d.ChkCtrlAktiv->click();
        Choose(d.TxtBone, "Bip01 Head");
        EXPECT_EQ(QStringList({d.TxtBoneX->text(), d.TxtBoneY->text(), d.TxtBoneZ->text(),
                               d.TxtParent->text()}),
                  QStringList({"62", "0", "0", "Bip01 Neck"}));
        d.CtrlAchse[2]->click();

        Drag(d.PicLimits, Qt::LeftButton, 30); // 450 twips down: 90 degrees
        Drag(d.PicLimits, Qt::RightButton, 15);
        Drag(d.PicLimits, Qt::NoButton, 59);
        EXPECT_EQ(d.TxtLimitMin->text(), "90");
        EXPECT_EQ(d.TxtLimitMax->text(), "45");
        const QImage dial = d.PicLimits->grab().toImage();
        EXPECT_EQ(dial.pixelColor(30, 50), QColor(255, 0, 0)) << "90 points straight down";
        EXPECT_EQ(dial.pixelColor(40, 40), QColor(0, 0, 255));
        Retype(d.TxtLimitMax, "-30x");

        Choose(d.CmbController, "Bndg.-Nr.1");
        EXPECT_TRUE(d.FrameCtrl->isEnabled());
        EXPECT_TRUE(d.CtrlAchse[2]->isChecked());
        EXPECT_EQ(d.TxtLimitMax->text(), "12.5");
        EXPECT_EQ(d.TxtParent->text(), "Bip01 Spine1") << "the stored bone is marked";
        Choose(d.CmbController, "Bndg.-Nr.2");
        EXPECT_FALSE(d.FrameCtrl->isEnabled());
        EXPECT_EQ(d.TxtLimitMin->text(), "0");
    });
    EXPECT_EQ(Saved("$controller"), QStringList({"$controller 0 \"Bip01 Head\" ZR 90 -30",
                                                 "$controller 1 \"Bip01 Neck\" ZR -10 12.5"}));
}

// Typed text in the number box names no item, so what is edited then reaches
// no table. Coming back to the item shown, by picking it again or by typing
// its name, shows its record once more, as the script writes it.
TEST_F(SkeletonDialogs, ComingBackToTheShownItemShowsItsRecordAgain) {
    Doc().Attachments[0] = {1, 1, 0, 0};
    Doc().AttachmentBones[0] = "Bip01 Head";
    Doc().Controllers[0] = {1, 0, 1, 2};
    Doc().ControllerBones[0] = "Bip01 Neck";
    const std::function<void(QComboBox*)> comingBack[] = {
        [](QComboBox* list) { Choose(list, "Bndg.-Nr.0"); },
        [](QComboBox* list) { TypeOver(list, "Bndg.-Nr.0"); },
    };
    for (const auto& back : comingBack) {
        Work<DlgBindung>([&](DlgBindung& d) {
            TypeOver(d.CmbBindung, "Bndg.-Nr.9");
            Retype(d.TxtBindungX, "99");
            d.ChkBndgAktiv->click();
            back(d.CmbBindung);
            EXPECT_TRUE(d.ChkBndgAktiv->isChecked());
            EXPECT_EQ(d.TxtBindungX->text(), "1");
        });
        Work<DlgController>([&](DlgController& d) {
            TypeOver(d.CmbController, "Bndg.-Nr.9");
            Retype(d.TxtLimitMin, "99");
            d.ChkCtrlAktiv->click();
            back(d.CmbController);
            EXPECT_TRUE(d.ChkCtrlAktiv->isChecked());
            EXPECT_EQ(d.TxtLimitMin->text(), "1");
        });
    }
    EXPECT_EQ(Saved("$attachment"), QStringList({"$attachment 0 \"Bip01 Head\" 1 0 0"}));
    EXPECT_EQ(Saved("$controller"), QStringList({"$controller 0 \"Bip01 Neck\" XR 1 2"}));
}

// A reference mesh that has gone missing leaves the bone list empty; the
// dialogs open, paint and take typed bone names all the same.
TEST_F(SkeletonDialogs, WithoutTheReferenceFileTheDialogsStillWork) {
    ASSERT_TRUE(QFile::remove(InModels("humanoid.smd")));
    Work<DlgController>([](DlgController& d) {
        EXPECT_EQ(d.TxtBone->count(), 0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !d.Timer1->isActive(); }, 2000));
        d.ChkCtrlAktiv->click();
        QTest::keyClicks(d.TxtBone->lineEdit(), QStringLiteral("Bip01 Head"));
        EXPECT_TRUE(d.TxtParent->text().isEmpty());
    });
    EXPECT_EQ(Saved("$controller"), QStringList({"$controller 0 \"Bip01 Head\" XR 0 0"}));
}

// A reference "file" that is a folder, a pipe with no writer or the endless
// /dev/zero: the dialog opens at once with no bones and names the file.
TEST_F(SkeletonDialogs, AReferenceThatIsNoPlainFileIsNamedAndTheDialogOpens) {
    struct Row {
        const char* Kind;
        std::function<void(const QString&)> Make;
        const char* Told;
    };
    const std::vector<Row> rows = {
        {"folder", [](const QString& p) { ASSERT_TRUE(QDir().mkdir(p)); }, "is a folder"},
#ifndef _WIN32
        {"pipe", [](const QString& p) { ASSERT_EQ(::mkfifo(QFile::encodeName(p), 0600), 0); },
         "not a plain file"},
        {"device", [](const QString& p) { ASSERT_TRUE(QFile::link("/dev/zero", p)); },
         "not a plain file"},
#endif
    };
    const QString reference = InModels("humanoid.smd");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.Kind);
        QFile::remove(reference);
        QDir().rmdir(reference);
        row.Make(reference);
        services.QueueMsgBox(Answer::Ok);
        Work<DlgBindung>([](DlgBindung& d) { EXPECT_EQ(d.TxtBone->count(), 0); });
        const QString told = services.Prompts().last().Text;
        EXPECT_TRUE(told.contains(reference)) << told.toStdString();
        EXPECT_TRUE(told.contains(QLatin1String(row.Told))) << told.toStdString();
    }
}

} // namespace
} // namespace quarle::ui
