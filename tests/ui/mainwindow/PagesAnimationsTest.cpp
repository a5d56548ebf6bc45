// Page "Animationsdateien": the animations of one sequence group, driven
// through the controls.
#include "support/MainWindowFixture.h"

#include <QLineEdit>
#include <QScrollBar>
#include <functional>
#include <utility>
#include <vector>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace quarle::ui {
namespace {

using platform::Answer;
using test::Click;
using test::Items;
using test::Select;

class AnimationsTest : public test::MainWindowFixture {
protected:
    AnimationsTest() {
        Start(Texts::Keys);
        OpenSampleModel();
        ShowPage(1);
    }

    // Adds these files of the folder, one click of CmdAdd each.
    void Add(std::initializer_list<const char*> files) {
        for (const char* file : files) {
            test::SelectText(form->LstFiles, file);
            form->CmdAdd->click();
        }
    }

    AnimRec& Anim(int group, int slot) {
        return Doc().Anims[static_cast<std::size_t>(group)][static_cast<std::size_t>(slot)];
    }
};

TEST_F(AnimationsTest, ArrowsWrapAndTheBoxTakesOnlyGroupNumbers) {
    EXPECT_EQ(form->TxtAnimNr->text(), QStringLiteral("0"));
    form->CmdAnimPfeill->click();
    EXPECT_EQ(form->TxtAnimNr->text(), QStringLiteral("10"));
    form->CmdAnimPfeilr->click();
    EXPECT_EQ(form->TxtAnimNr->text(), QStringLiteral("0"));
    form->CmdAnimPfeilr->click();
    EXPECT_EQ(form->TxtAnimNr->text(), QStringLiteral("1"));

    // Typing: a letter and a number above 10 are not taken.
    form->TxtAnimNr->selectAll();
    QTest::keyClicks(form->TxtAnimNr, QStringLiteral("x1"));
    EXPECT_EQ(form->TxtAnimNr->text(), QStringLiteral("1"));
    QTest::keyClicks(form->TxtAnimNr, QStringLiteral("2"));
    EXPECT_EQ(form->TxtAnimNr->text(), QStringLiteral("1"));
    QTest::keyClicks(form->TxtAnimNr, QStringLiteral("0"));
    EXPECT_EQ(form->TxtAnimNr->text(), QStringLiteral("10"));

    // A text set by code that is no group number reaches no table.
    form->TxtAnimNr->setText(QStringLiteral("-3"));
    EXPECT_FALSE(form->AnimGroup().has_value());
    Add({"idle"});
    EXPECT_EQ(form->LstAnimations->count(), 0);
    form->CmdAnimPfeilr->click();
    EXPECT_EQ(form->TxtAnimNr->text(), QStringLiteral("1"));
}

TEST_F(AnimationsTest, EachGroupListsItsOwnAnimations) {
    form->TxtAnimNr->setText(QStringLiteral("3"));
    Select(form->LstFiles, {6, 2}); // walk, idle: added in list order
    form->CmdAdd->click();
    EXPECT_EQ(Items(form->LstAnimations), (QStringList{"idle", "walk"}));
    EXPECT_EQ(form->LstAnimations->currentRow(), -1);
    EXPECT_EQ(Anim(3, 1).SmdFile, "walk");

    form->CmdAnimPfeilr->click();
    EXPECT_EQ(form->LstAnimations->count(), 0);
    EXPECT_EQ(form->TxtAnimDatei->text(), QStringLiteral(".smd"));
    form->CmdAnimPfeill->click();
    EXPECT_EQ(Items(form->LstAnimations), (QStringList{"idle", "walk"}));
    // Slot 0 is on show, though nothing is selected.
    EXPECT_EQ(form->TxtAnimName->text(), QStringLiteral("idle"));
    EXPECT_EQ(form->TxtAnimDatei->text(), QStringLiteral("idle.smd"));

    // A slot with a name but no file ends the listing.
    Anim(0, 0).Name = "stand";
    Anim(0, 0).SmdFile = "idle";
    Anim(0, 1).Name = "nofile";
    Anim(0, 2).Name = "run";
    Anim(0, 2).SmdFile = "run";
    form->TxtAnimNr->setText(QStringLiteral("0"));
    EXPECT_EQ(Items(form->LstAnimations), QStringList{"stand"});
}

TEST_F(AnimationsTest, AClickShowsTheAnimationAndItsLastFrame) {
    Add({"idle", "walk"});
    Anim(0, 1).ActivityId = "ACT_WALK 1";
    Doc().SmdFrameCount = 3;
    Click(form->LstAnimations, 1);
    EXPECT_EQ(form->TxtAnimName->text(), QStringLiteral("walk"));
    EXPECT_EQ(form->TxtAnimDatei->text(), QStringLiteral("walk.smd"));
    EXPECT_EQ(form->TxtAnimID->currentText(), QStringLiteral("ACT_WALK 1"));
    EXPECT_EQ(Doc().SmdFrameCount, 12);

    // A rename shows in the list at once and leaves the file alone.
    form->TxtAnimName->setText(QStringLiteral("walk_fast"));
    EXPECT_EQ(Items(form->LstAnimations), (QStringList{"idle", "walk_fast"}));
    EXPECT_EQ(Anim(0, 1).Name, "walk_fast");
    EXPECT_EQ(Anim(0, 1).SmdFile, "walk");
    EXPECT_EQ(form->TxtAnimDatei->text(), QStringLiteral("walk.smd"));

    // An activity is stored as the box offers it (a name the compiler knows and
    // the weight 1), or as typed.
    ASSERT_EQ(form->TxtAnimID->count(), 76);
    form->TxtAnimID->setCurrentIndex(7);
    EXPECT_EQ(Anim(0, 1).ActivityId, "ACT_COMBAT_IDLE 1");
    form->TxtAnimID->setEditText(QStringLiteral("ACT_RUN 4"));
    EXPECT_EQ(Anim(0, 1).ActivityId, "ACT_RUN 4");

    // A file that is gone leaves the frame number as it was.
    ASSERT_TRUE(QFile::remove(InModels("walk.smd")));
    Click(form->LstAnimations, 0);
    EXPECT_EQ(Doc().SmdFrameCount, 20);
    Click(form->LstAnimations, 1);
    EXPECT_EQ(Doc().SmdFrameCount, 20);
    EXPECT_EQ(Anim(0, 0).Name, "idle"); // showing wrote the same values back
}

// An animation "file" that is a folder or a pipe with no writer: the click
// answers at once, names it and leaves the frame number as it was.
TEST_F(AnimationsTest, AnAnimationThatIsNoPlainFileIsNamedAndNotWaitedFor) {
    Add({"idle", "walk"});
    const QString walk = InModels("walk.smd");
    const std::vector<std::pair<const char*, std::function<void()>>> kinds = {
        {"is a folder", [&] { ASSERT_TRUE(QDir().mkdir(walk)); }},
#ifndef _WIN32
        {"not a plain file", [&] { ASSERT_EQ(::mkfifo(QFile::encodeName(walk), 0600), 0); }},
#endif
    };
    for (const auto& [told, make] : kinds) {
        SCOPED_TRACE(told);
        QFile::remove(walk);
        QDir().rmdir(walk);
        make();
        Click(form->LstAnimations, 0);
        Doc().SmdFrameCount = 3;
        services.QueueMsgBox(Answer::Ok);
        Click(form->LstAnimations, 1);
        EXPECT_EQ(Doc().SmdFrameCount, 3);
        const QString text = services.Prompts().last().Text;
        EXPECT_TRUE(text.contains(walk) && text.contains(QLatin1String(told)))
            << text.toStdString();
    }
}

TEST_F(AnimationsTest, DeletingMovesTheRestUpWithEverythingTheyHold) {
    Add({"idle", "walk", "run"});
    Anim(0, 1).EventCount = 1;
    Anim(0, 1).Events[1].EventId = 1004;
    Anim(0, 1).BlendOn = 1;
    Anim(0, 2).FrameLimit = 1;
    Anim(0, 2).FrameEnd = 8;
    Anim(0, 5).Name = "far"; // not listed: behind the free slot 3
    Click(form->LstAnimations, 0);
    form->CmdDelAnimation->click();
    EXPECT_EQ(Items(form->LstAnimations), (QStringList{"walk", "run"}));
    EXPECT_EQ(Anim(0, 0).Events[1].EventId, 1004);
    EXPECT_EQ(Anim(0, 0).BlendOn, 1);
    EXPECT_EQ(Anim(0, 1).FrameEnd, 8);
    EXPECT_EQ(Anim(0, 2).Name, "");
    EXPECT_EQ(Anim(0, 2).SmdFile, "");
    // Only the list's slots move: what stands further on stays.
    EXPECT_EQ(Anim(0, 4).Name, "");
    EXPECT_EQ(Anim(0, 5).Name, "far");
    // The fields keep their text; nothing is selected.
    EXPECT_EQ(form->TxtAnimName->text(), QStringLiteral("idle"));
    EXPECT_EQ(form->LstAnimations->currentRow(), -1);
    form->TxtAnimName->setText(QStringLiteral("ignored"));
    EXPECT_EQ(Anim(0, 0).Name, "walk");

    // Several at once: exactly the selected ones go.
    Add({"jump", "idle"}); // walk, run, jump, idle
    Select(form->LstAnimations, {3, 1});
    form->CmdDelAnimation->click();
    EXPECT_EQ(Items(form->LstAnimations), (QStringList{"walk", "jump"}));
    EXPECT_EQ(Anim(0, 1).Name, "jump");
    EXPECT_EQ(Anim(0, 2).Name, "");
}

TEST_F(AnimationsTest, TheScrollBarMovesTheSelectedAnimation) {
    Add({"idle", "walk", "run"});
    Anim(0, 1).Fps = 12;
    QScrollBar* bar = form->VScrAnim;

    Click(form->LstAnimations, 1);
    bar->triggerAction(QAbstractSlider::SliderSingleStepSub); // the upper arrow
    EXPECT_EQ(Items(form->LstAnimations), (QStringList{"walk", "idle", "run"}));
    EXPECT_EQ(Anim(0, 0).Fps, 12);
    EXPECT_EQ(Anim(0, 1).Name, "idle");
    EXPECT_EQ(form->LstAnimations->currentRow(), 0);
    EXPECT_EQ(form->TxtAnimName->text(), QStringLiteral("walk"));
    EXPECT_EQ(bar->value(), 0);

    // The last entry cannot go further down: the bar stays at 1, and the
    // next click on the upper arrow only brings it back.
    Click(form->LstAnimations, 2);
    bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(bar->value(), 1);
    EXPECT_EQ(Items(form->LstAnimations), (QStringList{"walk", "idle", "run"}));
    bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(bar->value(), 1);
    bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
    EXPECT_EQ(bar->value(), 0);
    EXPECT_EQ(Items(form->LstAnimations), (QStringList{"walk", "idle", "run"}));
    EXPECT_EQ(form->LstAnimations->currentRow(), 2);
}

TEST_F(AnimationsTest, AFullGroupRefusesFurtherAnimations) {
    for (int s = 0; s < 100; ++s) {
        Anim(5, s).Name = Anim(5, s).SmdFile = "a" + std::to_string(s);
    }
    Anim(5, 101).Name = "kept";
    form->TxtAnimNr->setText(QStringLiteral("5"));
    ASSERT_EQ(form->LstAnimations->count(), 100);

    services.QueueMsgBox(Answer::Ok);
    Select(form->LstFiles, {0, 1, 2});
    form->CmdAdd->click();
    EXPECT_EQ(form->LstAnimations->count(), 101);
    EXPECT_EQ(Anim(5, 100).SmdFile, "die_back");
    EXPECT_EQ(Anim(5, 101).Name, "kept");
    EXPECT_EQ(Anim(5, 101).SmdFile, "");
    // One message says how many went in and how many did not.
    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_EQ(services.Prompts()[0].Text,
              "A sequence group holds at most 101 animations. Added: 1; not added: 2.");

    // With no room at all, nothing is added.
    services.QueueMsgBox(Answer::Ok);
    form->CmdAdd->click();
    EXPECT_EQ(form->LstAnimations->count(), 101);
    ASSERT_EQ(services.Prompts().size(), 2);
    EXPECT_TRUE(services.Prompts()[1].Text.contains(QStringLiteral("101")));
}

} // namespace
} // namespace quarle::ui
