// Both wizards driven through the Wizards menu as a user walks them: page by
// page with the modal pages answered in turn, ending in a saved script, or
// in a cancel that leaves the script as it was.
#include "support/MainWindowFixture.h"
#include "ui/wizards/AnimWiz1.h"
#include "ui/wizards/AnimWiz2.h"
#include "ui/wizards/AnimWiz3.h"
#include "ui/wizards/AnimWiz4.h"
#include "ui/wizards/AnimWiz5.h"
#include "ui/wizards/Wizard2.h"
#include "ui/wizards/Wizard3.h"
#include "ui/wizards/Wizard4.h"
#include "ui/wizards/Wizard5.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <functional>
#include <vector>

namespace quarle::ui {
namespace {

using test::Items;
using test::Pick;
using test::ReadFile;

// Answers the modal pages of one run in turn: each step gets the page on
// show and leaves it with one of its buttons. A page of the wrong kind, or
// one left showing after the last step, is closed, which ends the run.
class Pages {
public:
    using Step = std::function<void(QWidget*)>;

    explicit Pages(std::vector<Step> steps) : steps_(std::move(steps)) {
        timer_.setInterval(5);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Poll(); });
        timer_.start();
    }
    std::size_t Ran() const { return next_; }

private:
    void Poll() {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal == nullptr || !modal->isVisible()) {
            return;
        }
        if (next_ >= steps_.size()) {
            ADD_FAILURE() << "a page is left showing: " << modal->objectName().toStdString();
            modal->close();
            return;
        }
        steps_[next_++](modal);
    }

    std::vector<Step> steps_;
    std::size_t next_ = 0;
    QTimer timer_;
};

template <class P> Pages::Step On(std::function<void(P&)> act) {
    return [act](QWidget* modal) {
        auto* page = qobject_cast<P*>(modal);
        if (page == nullptr) {
            ADD_FAILURE() << "unexpected page " << modal->objectName().toStdString();
            modal->close();
            return;
        }
        act(*page);
    };
}

void Press(QPushButton* button) {
    ASSERT_TRUE(button->isEnabled()) << button->objectName().toStdString();
    QTest::mouseClick(button, Qt::LeftButton);
}

void Retype(QLineEdit* box, const QString& text) {
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Backspace);
    QTest::keyClicks(box, text);
}

class Wizards : public test::MainWindowFixture {
protected:
    Wizards() {
        Start(Texts::Keys);
        QDir(models.path()).mkdir("textures");
        test::WriteFile(InModels("textures/skin.bmp"), "BM");
        const QDir sample(QStringLiteral(QUARLE_TEST_DATA "/model"));
        for (const QString& name : sample.entryList(QDir::Files)) {
            QFile::copy(sample.filePath(name), InModels(name));
        }
    }

    // The steps of the base-settings wizard up to its summary, with the
    // sample folders, robot_ref as reference, the scale and the eyes.
    std::vector<Pages::Step> BaseSteps(const QString& scale = "0,5") {
        return {
            On<Wizard2>([this](Wizard2& p) {
                services.QueueOpen(Pick(InModels("textures/skin.bmp")));
                Press(p.CmdWiz2Texturenpfad);
                EXPECT_FALSE(p.CmdWeiter->isEnabled());
                services.QueueOpen(Pick(InModels("walk.smd")));
                Press(p.CmdWiz2Modelpfad);
                Press(p.CmdWeiter);
            }),
            On<Wizard3>([](Wizard3& p) {
                EXPECT_EQ(Items(p.LstFiles),
                          (QStringList{"robot_head.smd", "robot_helmet.smd", "robot_ref.smd"}));
                EXPECT_FALSE(p.CmdWeiter->isEnabled());
                test::SelectText(p.LstFiles, "robot_ref.smd");
                Press(p.CmdAssign);
                Press(p.CmdWeiter);
            }),
            On<Wizard4>([scale](Wizard4& p) {
                Retype(p.TxtWiz4Massstab, scale);
                p.ChkWiz4Augen->click();
                Retype(p.TxtWiz4AugenX, "-1.5");
                Retype(p.TxtWiz4AugenY, "2a");
                Retype(p.TxtWiz4AugenZ, "64");
                Press(p.CmdWeiter);
            }),
        };
    }

    // The animation wizard's steps up to its summary.
    static std::vector<Pages::Step> AnimSteps(const QString& name, const char* file,
                                              const QString& activity, bool limit, bool loop) {
        return {
            On<AnimWiz1>([name](AnimWiz1& p) {
                EXPECT_EQ(p.TxtAnimWiz1AnimName->text(), "Name der Animation");
                EXPECT_FALSE(p.CmdWeiter->isEnabled());
                Retype(p.TxtAnimWiz1AnimName, name);
                Press(p.CmdWeiter);
            }),
            On<AnimWiz2>([file](AnimWiz2& p) {
                EXPECT_EQ(Items(p.LstFiles), (QStringList{"die_back.smd", "draft.smd", "idle.smd",
                                                          "jump.smd", "run.smd", "Shoot.SMD",
                                                          "walk.smd"}));
                test::SelectText(p.LstFiles, file);
                Press(p.CmdAssignAnimation);
                Press(p.CmdWeiter);
            }),
            On<AnimWiz3>([activity](AnimWiz3& p) {
                QTest::keyClicks(p.CmbAnimWiz3AnimID, activity);
                Press(p.CmdWeiter);
            }),
            On<AnimWiz4>([limit, loop](AnimWiz4& p) {
                if (limit) {
                    p.ChkAnimWiz4Frame->click();
                    Retype(p.TxtAnimWiz4FrameStart, "2");
                    Retype(p.TxtAnimWiz4FrameEnd, "99"); // above the last frame
                }
                if (loop) {
                    p.ChkAnimWiz4Schleife->click();
                }
                Retype(p.TxtAnimWiz4FpS, "15");
                Press(p.CmdWeiter);
            }),
        };
    }

    void Run(QAction* menu, std::vector<Pages::Step> steps) {
        const std::size_t count = steps.size();
        Pages pages(std::move(steps));
        menu->trigger();
        EXPECT_EQ(pages.Ran(), count);
    }

    QByteArray Save() {
        services.QueueSave(Pick(InModels("robot.qc")));
        form->MnuDateiSpeichernunter->trigger();
        return ReadFile(InModels("robot.qc"));
    }
};

TEST_F(Wizards, NewModelThenTwoAnimationsGiveTheScript) {
    EXPECT_FALSE(form->MnuWizardsAnimWiz->isEnabled());
    auto steps = BaseSteps();
    steps.push_back(On<Wizard5>([this](Wizard5& p) {
        EXPECT_EQ(Items(p.LstSumm),
                  (QStringList{"", "IDS_TEXTUREPATH: " + InModels("textures"),
                               "IDS_MODELPATH: " + models.path(), QString(37, '-'),
                               "IDS_REFERENCEMODEL: robot_ref.smd", QString(37, '-'),
                               "IDS_SCALE: 0.5", "IDS_EYES: IDS_YES", "    X: -1.5", "    Y: 2",
                               "    Z: 64"}));
        Press(p.CmdFertig);
    }));
    Run(form->MnuWizardsGrWiz, std::move(steps));
    EXPECT_EQ(form->TxtModelpath->text(), models.path());
    EXPECT_EQ(Items(form->LstParts), QStringList{"robot_ref"});
    EXPECT_TRUE(form->MnuWizardsAnimWiz->isEnabled());
    EXPECT_TRUE(form->FrmModelfiles->isEnabled());

    ShowPage(1);
    steps = AnimSteps("walk", "walk.smd", "ACT_WALK 1", false, true);
    steps.push_back(On<AnimWiz5>([](AnimWiz5& p) {
        EXPECT_EQ(Items(p.LstSumm),
                  (QStringList{"", "IDS_ANIMATION - walk", "", "SMD-IDS_FILE: walk.smd",
                               "IDS_ANIMATIONID: ACT_WALK 1", "IDS_FPS: 15",
                               "IDS_SHOWPICTURES: IDS_ALL", "IDS_LOOP: IDS_ON"}));
        Press(p.CmdWeiter);
    }));
    Run(form->MnuWizardsAnimWiz, std::move(steps));
    steps = AnimSteps("sprung", "jump.smd", "", true, false);
    steps.push_back(On<AnimWiz5>([](AnimWiz5& p) {
        EXPECT_EQ(Items(p.LstSumm).mid(4),
                  (QStringList{"IDS_ANIMATIONID: IDS_NONES", "IDS_FPS: 15",
                               "IDS_SHOWPICTURES: 2 IDS_TO 15", "IDS_LOOP: IDS_OFF"}));
        Press(p.CmdWeiter);
    }));
    Run(form->MnuWizardsAnimWiz, std::move(steps));
    // The new entries show the files' names, not selected.
    EXPECT_EQ(Items(form->LstAnimations), (QStringList{"walk", "jump"}));
    EXPECT_EQ(form->LstAnimations->currentRow(), -1);
    EXPECT_EQ(Doc().SmdFrameCount, 15);

    const QString golden =
        "// QC-File for Half-Life Model: \"%1/robot.mdl\"\r\n"
        "// Createt with \"Quarle 0.8.4\"\r\n"
        "// Written by Quarle 0.8.4; changes made by hand are lost on the next save\r\n"
        "\r\n"
        "// Pathdata\r\n"
        "$modelname \"%1/robot.mdl\"\r\n"
        "$cd \"%1\"\r\n"
        "$cdtexture \"%1/textures\"\r\n"
        "\r\n"
        "// Modelsettings\r\n"
        "$scale 0.5\r\n"
        "$eyeposition -1.5 2 64\r\n"
        "$body body \"robot_ref\"\r\n"
        "\r\n"
        "// Animations\r\n"
        "$sequence \"walk\" \"walk\" fps 15 loop ACT_WALK 1\r\n"
        "$sequence \"sprung\" \"jump\" fps 15 frame 2 15 \r\n";
    EXPECT_EQ(Save().toStdString(), golden.arg(models.path()).toStdString());
}

} // namespace
} // namespace quarle::ui
