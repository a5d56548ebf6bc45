// The mascot on the main window: its pose timers with fixed random numbers,
// its placement beside a target, and the tips as a user walks through them.
#include "platform/Twips.h"
#include "support/MainWindowFixture.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTabBar>
#include <functional>
#include <vector>

namespace quarle::ui {
namespace {

using platform::LeftTwips;
using platform::TopTwips;

class Assistant : public test::MainWindowFixture {
protected:
    Assistant() {
        UseShippedLanguages(); // the frames and the German tips
        Start();
        form->show();
    }

    // The frame on show, or -1.
    int Frame() const {
        if (!form->PicWiz->isVisible()) {
            return -1;
        }
        for (int n = 0; n < form->ImgLstWizAnims.size(); ++n) {
            if (form->PicWiz->pixmap().cacheKey() == form->ImgLstWizAnims[n].cacheKey()) {
                return n;
            }
        }
        return -2;
    }
    QPoint Mascot() const { return {LeftTwips(form->PicWiz), TopTwips(form->PicWiz)}; }
    QPoint SpeechBox() const { return {LeftTwips(form->FrmWizSay), TopTwips(form->FrmWizSay)}; }
    int Step() const { return form->PicWizTag.toInt(); }
};

TEST_F(Assistant, PoseTimersWithFixedRandomNumbers) {
    // Parked after the start, resting, waiting for its first draw.
    ASSERT_EQ(form->ImgLstWizAnims.size(), 10);
    EXPECT_EQ(Mascot(), QPoint(6000, 825)); // 820 twips, on whole pixels
    // ... where its figure leaves both tabs of the pages free.
    const QTabBar* tabs = form->TabSmd->findChild<QTabBar*>();
    const QRegion figure = form->PicWiz->mask().translated(form->PicWiz->pos());
    for (int tab = 0; tab < tabs->count(); ++tab) {
        const QRect rect(tabs->mapTo(form->PicWiz->parentWidget(), tabs->tabRect(tab).topLeft()),
                         tabs->tabRect(tab).size());
        EXPECT_FALSE(figure.intersects(rect)) << "tab " << tab << " " << rect.right() << " "
                                              << figure.boundingRect().left();
    }
    EXPECT_EQ(Frame(), 0);
    EXPECT_EQ(form->TmrAnimTag, "NEW");
    EXPECT_EQ(form->TmrAnim->interval(), 500);
    EXPECT_TRUE(form->TmrAnim->isActive()) << "the poses run from the start";

    struct Row {
        const char* state;
        double rnd; // both draws of a "NEW" tick get it
        const char* next;
        int frame; // after the tick
        bool looping;
        int interval;
    };
    const std::vector<Row> rows = {
        {"NEW", 0.05, "1", 6, true, 500},           // hold 1 tick, first loop
        {"NEW", 0.10, "1", 8, true, 500},           // second loop
        {"NEW", 0.99, "4", 0, false, 500},          // hold 4 ticks, resting
        {"NEW", 0.00, "1", 0, false, 500},          //
        {"3", 0.0, "2", 0, false, 500},             // counting down
        {"1", 0.0, "NEW", 0, false, 500},           //
        {"BUSY", 0.0, "BUSY_SEC", 3, false, 10000}, // the pose holds
        {"BUSY_SEC", 0.0, "0", 0, false, 500},      // then rests
        {"0", 0.0, "-1", 0, false, 500},            // and never draws again
        {"-1", 0.0, "-2", 0, false, 500},
    };
    for (const Row& row : rows) {
        form->SetWizardAnim(row.state == std::string("BUSY") ? 3 : 0);
        form->TmrAnim->setInterval(row.state == std::string("BUSY") ? 10000 : 500);
        form->TmrAnimTag = QString::fromLatin1(row.state);
        services.NextRnd = row.rnd;
        form->TmrAnim_Timer();
        EXPECT_EQ(form->TmrAnimTag, QString::fromLatin1(row.next)) << row.state << " " << row.rnd;
        EXPECT_EQ(Frame(), row.frame) << row.state << " " << row.rnd;
        EXPECT_EQ(form->TmrPlayAnim->isActive(), row.looping) << row.state;
        EXPECT_EQ(form->TmrAnim->interval(), row.interval) << row.state;
    }

    // The loops: each frame shown in turn, the mascot keeps its place.
    for (const auto& [first, played] :
         std::vector<std::pair<int, std::vector<int>>>{{6, {7, 6, 7, 6}}, {8, {9, 8, 9}}}) {
        form->SetWizardAnim(first);
        for (const int frame : played) {
            form->TmrPlayAnim_Timer();
            EXPECT_EQ(Frame(), frame) << "loop of " << first;
            EXPECT_EQ(Mascot(), QPoint(6000, 825));
        }
    }
    // Turning off during a loop stops it.
    form->DisableWizard();
    EXPECT_FALSE(form->TmrPlayAnim->isActive());
    EXPECT_EQ(Frame(), 0);

    // Outside its outline the mascot lets the window's controls take the mouse.
    QWidget* client = form->centralWidget();
    const QPoint corner = form->PicWiz->mapTo(client, QPoint(1, 1));
    const QPoint belly = form->PicWiz->mapTo(client, QPoint(50, 70));
    EXPECT_NE(client->childAt(corner), form->PicWiz);
    EXPECT_EQ(client->childAt(belly), form->PicWiz);
}

TEST_F(Assistant, PlacesTheMascotAndSpeechBoxBesideTheTarget) {
    // The window is 7650 by 6420 twips: its middle counts as left and upper.
    struct Row {
        const char* where;
        QPoint target;
        int frame;
        QPoint mascot;
        int boxLeft;
    };
    const std::vector<Row> rows = {
        {"right, upper", {6000, 1500}, 2, {4980, 1200}, 2055},
        {"right, lower", {6000, 4500}, 3, {4980, 3480}, 2055},
        {"left, lower", {1500, 4500}, 4, {1140, 3480}, 2100},
        {"left, upper", {1500, 1500}, 5, {1020, 1200}, 2100},
        {"middle", {3825, 3210}, 5, {3345, 2910}, 4425},
    };
    for (const Row& row : rows) {
        form->ShowWizard(row.target.x(), row.target.y(), QStringLiteral("Tipp"));
        EXPECT_EQ(Frame(), row.frame) << row.where;
        EXPECT_EQ(Mascot(), row.mascot) << row.where;
        EXPECT_EQ(SpeechBox(), QPoint(row.boxLeft, row.target.y() + 30)) << row.where;
        EXPECT_EQ(QPoint(LeftTwips(form->TxtWizSayShadow), TopTwips(form->TxtWizSayShadow)),
                  SpeechBox() + QPoint(45, 45))
            << row.where;
        EXPECT_TRUE(form->FrmWizSay->isVisible());
        EXPECT_TRUE(form->TxtWizSayShadow->isVisible());
        EXPECT_EQ(form->TxtWizSay->toPlainText(), QStringLiteral("Tipp"));
        // The box's small type comes with its first showing.
        EXPECT_EQ(form->TxtWizSay->font().pixelSize(), 10) << row.where;
        EXPECT_EQ(form->CmdNext->font().pixelSize(), 10) << row.where;
        EXPECT_EQ(form->TmrAnimTag, "BUSY");
        EXPECT_EQ(form->TmrAnim->interval(), 10000);
    }
}

TEST_F(Assistant, WalksThroughTheTipsFromWhatTheWindowNeedsNext) {
    const Ids tips[] = {IDS_TIP_TEXTUREPATH,       IDS_TIP_MODELPATH,    IDS_TIP_REFERENCE,
                        IDS_TIP_CHANGETOANIMATION, IDS_TIP_ADDANIMATION, IDS_TIP_COMPILE};
    // The window as a user fills it, and the tip the assistant starts with.
    const std::vector<std::pair<std::function<void()>, int>> stages = {
        {[] {}, 0},
        {[this] {
             Doc().TexturePath = "/t";
             form->Update();
         },
         1},
        {[this] { OpenSampleModel(); }, 2},
        {[this] {
             test::SelectText(form->LstFiles, "robot_ref");
             form->CmdAdd->click();
         },
         3},
        {[this] { ShowPage(1); }, 4},
        {[this] {
             test::SelectText(form->LstFiles, "walk");
             form->CmdAdd->click();
         },
         5},
    };
    for (const auto& [stage, step] : stages) {
        stage();
        form->MnuWizardsWizAn->trigger();
        EXPECT_TRUE(form->MnuWizardsWizAn->isChecked());
        EXPECT_EQ(Step(), step);
        EXPECT_EQ(form->TxtWizSay->toPlainText(), Text(tips[step]));
        form->MnuWizardsWizAn->trigger(); // off again: parked
        EXPECT_FALSE(form->MnuWizardsWizAn->isChecked());
        EXPECT_FALSE(form->FrmWizSay->isVisible());
        EXPECT_EQ(Mascot(), QPoint(6000, 825));
        EXPECT_EQ(form->TmrAnimTag, "NEW");
    }

    // From the last tip back to the first and on again: each tip points at
    // the thing it is about (for the lists and the tabs, the entry), and the
    // speech box leaves that free.
    form->MnuWizardsWizAn->trigger();
    auto inForm = [this](const QWidget* w, QRect r) {
        return QRect(w->mapTo(form->centralWidget(), r.topLeft()), r.size());
    };
    ShowPage(0);
    const QRect things[] = {
        inForm(form->CmdBrowseTexture, form->CmdBrowseTexture->rect()),
        inForm(form->CmdBrowseModel, form->CmdBrowseModel->rect()),
        inForm(form->LstParts->viewport(), form->LstParts->visualItemRect(form->LstParts->item(0))),
        inForm(form->TabSmd->tabBar(), form->TabSmd->tabBar()->tabRect(1)),
        inForm(form->CmdAdd, form->CmdAdd->rect()),
        inForm(form->CmdCompile, form->CmdCompile->rect())};
    ShowPage(1);
    // Up-right at the path buttons, the tab and the compile button; up-left
    // at the list of parts and the add button, which stand left of the middle.
    const int poses[] = {2, 2, 5, 2, 5, 2};
    auto expectTip = [&](int step) {
        EXPECT_EQ(Step(), step);
        EXPECT_EQ(form->TxtWizSay->toPlainText(), Text(tips[step]));
        EXPECT_EQ(Frame(), poses[step]) << step;
        EXPECT_FALSE(form->FrmWizSay->geometry().intersects(things[step])) << step;
        // The finger ends near the thing: its spot in the pose is within a
        // few pixels of the thing's edge.
        const QRect near = things[step].adjusted(-12, -12, 12, 12);
        const QPoint spots[] = {{68, 20}, {68, 68}, {24, 68}, {32, 20}};
        EXPECT_TRUE(near.contains(form->PicWiz->pos() + spots[poses[step] - 2])) << step;
    };
    for (int step = 5; step > 0; --step) {
        expectTip(step);
        form->CmdWizBack->click();
    }
    expectTip(0);
    const QPoint atFirst = Mascot();
    form->TmrAnimTag = QStringLiteral("-7");
    form->CmdWizBack->click(); // at the first tip nothing happens
    EXPECT_EQ(Step(), 0);
    EXPECT_EQ(Mascot(), atFirst);
    EXPECT_EQ(form->TmrAnimTag, "-7");
    for (int step = 1; step <= 5; ++step) {
        form->CmdNext->click();
        expectTip(step);
    }
    const QPoint atLast = Mascot();
    form->TmrAnimTag = QStringLiteral("-7");
    form->CmdNext->click(); // nor at the last one
    EXPECT_EQ(Step(), 5);
    EXPECT_EQ(Mascot(), atLast);
    EXPECT_EQ(form->TmrAnimTag, "-7");

    // The close box shows pressed while held, closes the box; the mascot
    // rests content, and a click on it brings the tip back.
    QTest::mousePress(form->PicWizClose, Qt::LeftButton, {}, QPoint(3, 3));
    EXPECT_EQ(form->PicWizClose->pixmap().cacheKey(), form->ImgLstMain[1].cacheKey());
    QTest::mouseRelease(form->PicWizClose, Qt::LeftButton, {}, QPoint(3, 3));
    EXPECT_EQ(form->PicWizClose->pixmap().cacheKey(), form->ImgLstMain[0].cacheKey());
    EXPECT_FALSE(form->FrmWizSay->isVisible());
    EXPECT_FALSE(form->TxtWizSayShadow->isVisible());
    EXPECT_EQ(Frame(), 1);
    EXPECT_EQ(form->TmrAnimTag, "BUSY");
    QTest::mouseClick(form->PicWiz, Qt::LeftButton, {}, QPoint(50, 70));
    EXPECT_TRUE(form->FrmWizSay->isVisible());
    EXPECT_EQ(Frame(), 0);
    EXPECT_EQ(form->TmrAnimTag, "0");
    EXPECT_EQ(Mascot(), atLast);

    // Dragging the speech box by its title stripe; the shadow follows.
    const QPoint box = SpeechBox();
    QTest::mousePress(form->ShpTitel, Qt::LeftButton, {}, QPoint(10, 4));
    QMouseEvent move(QEvent::MouseMove, QPointF(40, 24),
                     form->ShpTitel->mapToGlobal(QPointF(40, 24)), Qt::NoButton, Qt::LeftButton,
                     {});
    QApplication::sendEvent(form->ShpTitel, &move);
    QTest::mouseRelease(form->ShpTitel, Qt::LeftButton, {}, QPoint(40, 24));
    EXPECT_EQ(SpeechBox(), box + QPoint(450, 300));
    EXPECT_EQ(form->FrmWizSayTag, "0");

    // Closed, then turned off within its twenty seconds: drawing again at once.
    form->PicWizClose_Click();
    form->CmdEnd->click();
    EXPECT_EQ(form->TmrAnimTag, "NEW");
    EXPECT_EQ(form->TmrAnim->interval(), 500);
    EXPECT_FALSE(form->MnuWizardsWizAn->isChecked());
    EXPECT_FALSE(form->FrmWizSay->isVisible());
    EXPECT_EQ(Mascot(), QPoint(6000, 825));
    QTest::mouseClick(form->PicWiz, Qt::LeftButton, {}, QPoint(50, 70));
    EXPECT_FALSE(form->FrmWizSay->isVisible()); // parked, a click does nothing
}

} // namespace
} // namespace quarle::ui
