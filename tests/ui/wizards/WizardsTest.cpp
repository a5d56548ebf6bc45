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
#include <QClipboard>
#include <QImage>
#include <QLabel>
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
    for (const QChar c : text) {
        if (c.unicode() < 128) {
            QTest::keyClick(box, c.toLatin1());
        } else {
            box->insert(c); // as an input method gives it
        }
    }
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
    std::vector<Pages::Step> BaseSteps(const QString& scale = "0,5", bool eyes = true) {
        return {
            On<Wizard2>([this](Wizard2& p) {
                services.QueueFolder(InModels("textures"));
                Press(p.CmdWiz2Texturenpfad);
                EXPECT_FALSE(p.CmdWeiter->isEnabled());
                services.QueueFolder(models.path());
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
            On<Wizard4>([scale, eyes](Wizard4& p) {
                Retype(p.TxtWiz4Massstab, scale);
                if (eyes) {
                    p.ChkWiz4Augen->click();
                }
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
                // The language file's (none here: the English default).
                EXPECT_EQ(p.TxtAnimWiz1AnimName->text(), "Name of the animation");
                EXPECT_FALSE(p.CmdWeiter->isEnabled());
                Retype(p.TxtAnimWiz1AnimName, "");
                EXPECT_FALSE(p.CmdWeiter->isEnabled());
                Retype(p.TxtAnimWiz1AnimName, name);
                Press(p.CmdWeiter);
            }),
            On<AnimWiz2>([file](AnimWiz2& p) {
                EXPECT_EQ(Items(p.LstFiles),
                          (QStringList{"die_back.smd", "draft.smd", "idle.smd", "jump.smd",
                                       "run.smd", "Shoot.SMD", "walk.smd"}));
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
    QDir(programDir.path()).mkdir("bilder");
    QImage mascot(400, 600, QImage::Format_RGB32);
    mascot.fill(Qt::darkGreen);
    ASSERT_TRUE(mascot.save(InProgramDir("bilder/quarle.jpg")));
    auto steps = BaseSteps();
    steps.insert(steps.begin() + 1, On<Wizard3>([](Wizard3& p) {
                     // The picture keeps the size of its place.
                     ASSERT_FALSE(p.PicQuarle->pixmap().isNull());
                     EXPECT_EQ(p.PicQuarle->pixmap().size(), QSize(160, 240));
                     EXPECT_EQ(p.PicQuarle->size(), QSize(160, 240));
                     Press(p.CmdZurueck);
                 }));
    steps.insert(steps.begin() + 2, On<Wizard2>([](Wizard2& p) { Press(p.CmdWeiter); }));
    steps.push_back(On<Wizard5>([this](Wizard5& p) {
        EXPECT_EQ(
            Items(p.LstSumm),
            (QStringList{"", "IDS_TEXTUREPATH: " + InModels("textures"),
                         "IDS_MODELPATH: " + models.path(), QString(37, '-'),
                         "IDS_REFERENCEMODEL: robot_ref.smd", QString(37, '-'), "IDS_SCALE: 0.5",
                         "IDS_EYES: IDS_YES", "    X: -1.5", "    Y: 2", "    Z: 64"}));
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
                               "IDS_ANIMATIONID: ACT_WALK 1", "IDS_LXPARAMETER: IDS_NONES",
                               "IDS_FPS: 15",
                               "IDS_SHOWPICTURES: IDS_ALL", "IDS_LOOP: IDS_ON"}));
        Press(p.CmdWeiter);
    }));
    Run(form->MnuWizardsAnimWiz, std::move(steps));
    steps = AnimSteps("sprung", "jump.smd", "", true, false);
    steps.push_back(On<AnimWiz5>([](AnimWiz5& p) {
        EXPECT_EQ(Items(p.LstSumm).mid(4),
                  (QStringList{"IDS_ANIMATIONID: IDS_NONES", "IDS_LXPARAMETER: IDS_NONES",
                               "IDS_FPS: 15",
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
        "// Written by Quarle 0.8.4; lines it does not show are kept as they stand\r\n"
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

TEST_F(Wizards, BackToEveryPageKeepsEntriesAndFinishTakesTheChangedOnes) {
    auto steps = BaseSteps();
    // The user moves the first page; the others show where it stood.
    steps[0] = [first = steps[0]](QWidget* page) {
        page->move(150, 90);
        first(page);
    };
    steps.push_back(On<Wizard5>([](Wizard5& p) {
        EXPECT_EQ(p.pos(), QPoint(150, 90));
        Press(p.CmdZurueck);
    }));
    steps.push_back(On<Wizard4>([](Wizard4& p) {
        EXPECT_EQ(p.TxtWiz4Massstab->text(), "0.5");
        EXPECT_EQ(p.TxtWiz4AugenZ->text(), "64");
        // Pasted text goes through the key filter too.
        QApplication::clipboard()->setText("2,x");
        p.TxtWiz4Massstab->selectAll();
        QTest::keyClick(p.TxtWiz4Massstab, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(p.TxtWiz4Massstab->text(), "2.");
        // Ticking again shows 0 whatever was typed before.
        p.ChkWiz4Augen->click();
        EXPECT_EQ(p.TxtWiz4AugenX->text(), "X");
        p.ChkWiz4Augen->click();
        EXPECT_EQ(p.TxtWiz4AugenZ->text(), "0");
        Press(p.CmdZurueck);
    }));
    steps.push_back(On<Wizard3>([](Wizard3& p) {
        EXPECT_EQ(p.TxtWiz3Referenzmodel->text(), "robot_ref.smd");
        EXPECT_EQ(p.LstFiles->count(), 3) << "listed once, not twice";
        Press(p.CmdZurueck);
    }));
    steps.push_back(On<Wizard2>([this](Wizard2& p) {
        EXPECT_EQ(p.TxtWiz2Modelpfad->text(), models.path());
        Press(p.CmdWeiter);
    }));
    steps.push_back(On<Wizard3>([](Wizard3& p) {
        const auto found = p.LstFiles->findItems("robot_head.smd", Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1);
        const QPoint at = p.LstFiles->visualItemRect(found.first()).center();
        QTest::mouseClick(p.LstFiles->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(p.LstFiles->viewport(), Qt::LeftButton, {}, at);
        EXPECT_EQ(p.TxtWiz3Referenzmodel->text(), "robot_head.smd");
        Press(p.CmdWeiter);
    }));
    steps.push_back(On<Wizard4>([](Wizard4& p) { Press(p.CmdWeiter); }));
    steps.push_back(On<Wizard5>([](Wizard5& p) {
        // The summary shows the entries as they are now.
        EXPECT_EQ(p.LstSumm->item(6)->text(), "IDS_SCALE: 2.");
        Press(p.CmdFertig);
    }));
    Run(form->MnuWizardsGrWiz, std::move(steps));
    EXPECT_EQ(Doc().ModelScale, 2.0f);
    EXPECT_EQ(Doc().EyeZ, 0.0f);
    EXPECT_EQ(Doc().BodyGroups[1].Parts[1], "robot_head");

    ShowPage(1);
    form->TxtAnimNr->setText("3");
    steps = AnimSteps("walk", "walk.smd", "ACT_WALK 1", true, false);
    steps.push_back(On<AnimWiz5>([](AnimWiz5& p) { Press(p.CmdZurueck); }));
    steps.push_back(On<AnimWiz4>([](AnimWiz4& p) {
        EXPECT_EQ(p.TxtAnimWiz4FpS->text(), "15");
        EXPECT_EQ(p.TxtAnimWiz4FrameStart->text(), "2");
        Press(p.CmdZurueck);
    }));
    steps.push_back(On<AnimWiz3>([](AnimWiz3& p) {
        EXPECT_EQ(p.CmbAnimWiz3AnimID->currentText(), "ACT_WALK 1");
        Press(p.CmdZurueck);
    }));
    steps.push_back(On<AnimWiz2>([](AnimWiz2& p) {
        EXPECT_EQ(p.LstFiles->count(), 7) << "listed once, not twice";
        EXPECT_EQ(p.TxtAnimWiz2AnimModel->text(), "walk.smd");
        test::SelectText(p.LstFiles, "run.smd");
        Press(p.CmdAssignAnimation);
        Press(p.CmdZurueck);
    }));
    steps.push_back(On<AnimWiz1>([](AnimWiz1& p) {
        EXPECT_EQ(p.TxtAnimWiz1AnimName->text(), "walk");
        Retype(p.TxtAnimWiz1AnimName, "renn");
        Press(p.CmdWeiter);
    }));
    steps.push_back(On<AnimWiz2>([](AnimWiz2& p) { Press(p.CmdWeiter); }));
    steps.push_back(On<AnimWiz3>([](AnimWiz3& p) { Press(p.CmdWeiter); }));
    steps.push_back(On<AnimWiz4>([](AnimWiz4& p) {
        // The end box shows the last frame of the file chosen now.
        EXPECT_EQ(p.TxtAnimWiz4FrameEnd->text(), "8");
        Press(p.CmdWeiter);
    }));
    steps.push_back(On<AnimWiz5>([](AnimWiz5& p) {
        EXPECT_EQ(p.LstSumm->item(1)->text(), "IDS_ANIMATION - renn");
        Press(p.CmdWeiter);
    }));
    Run(form->MnuWizardsAnimWiz, std::move(steps));
    const AnimRec& anim = Doc().Anims[3][0];
    EXPECT_EQ(anim.Name, "renn");
    EXPECT_EQ(anim.SmdFile, "run");
    EXPECT_EQ(anim.FrameStart, 2);
    EXPECT_EQ(anim.FrameEnd, 8);
    EXPECT_EQ(Items(form->LstAnimations), QStringList{"run"});
}

// Cancel on each page, and the close box of a middle page, leave the script
// exactly as it was; the next run starts from the designed texts.
TEST_F(Wizards, CancelOrCloseOnAnyPageChangesNothing) {
    Doc().ModelPath = models.path().toStdString();
    form->Update();
    ShowPage(1);
    Doc().Anims[3][0].Name = "idle";
    Doc().Anims[3][0].SmdFile = "idle";
    form->TxtAnimNr->setText("3");
    const QByteArray before = Save();
    const auto cancel = [](QWidget* page) { Press(page->findChild<QPushButton*>("CmdAbbrechen")); };
    const auto close = [](QWidget* page) { page->close(); };
    struct Row {
        QAction* Menu;
        std::vector<Pages::Step> Steps;
        std::size_t Page; // the page left on
        std::function<void(QWidget*)> Leave;
    };
    std::vector<Row> rows;
    for (std::size_t page = 0; page <= 4; ++page) {
        if (page < 4) {
            rows.push_back({form->MnuWizardsGrWiz, BaseSteps(), page, page == 2 ? close : cancel});
        }
        rows.push_back({form->MnuWizardsAnimWiz, AnimSteps("a", "run.smd", "x", true, true), page,
                        page == 2 ? close : cancel});
    }
    rows.push_back({form->MnuWizardsGrWiz, BaseSteps(), 2, cancel});
    rows.push_back({form->MnuWizardsAnimWiz, AnimSteps("a", "run.smd", "x", true, true), 2, cancel});
    for (const Row& row : rows) {
        SCOPED_TRACE(row.Menu->objectName().toStdString() + " page " + std::to_string(row.Page));
        std::vector<Pages::Step> steps(row.Steps.begin(), row.Steps.begin() + row.Page);
        steps.push_back(row.Leave);
        Run(row.Menu, std::move(steps));
        EXPECT_EQ(Items(form->LstAnimations), QStringList{"idle"});
        EXPECT_EQ(Save(), before);
    }
}

// When Next opens, in a table per wizard.
TEST_F(Wizards, NextOpensOnlyWithUsableEntries) {
    QDir(models.path()).mkdir("empty");
    QDir(models.path()).mkdir("anims");
    QFile::copy(InModels("run.smd"), InModels("anims/run.smd"));
    struct Folders {
        const char* Textures; // the folder chosen ("." the model folder); nullptr: none
        const char* Models;
        bool Next;
    };
    const Folders folders[] = {
        {nullptr, nullptr, false},
        {"textures", nullptr, false},
        {nullptr, ".", false},
        {"textures", ".", true},
        {"empty", ".", true},   // the bitmaps may come later
        {"textures", "empty", false}, // no model file to choose from
        {"textures", "gone", false},  // typed, and no folder
    };
    const auto in = [&](const char* folder) {
        return QString::fromLatin1(folder) == "." ? models.path() : InModels(folder);
    };
    for (const Folders& row : folders) {
        Run(form->MnuWizardsGrWiz, {On<Wizard2>([&](Wizard2& p) {
                if (row.Textures != nullptr) {
                    services.QueueFolder(in(row.Textures));
                    Press(p.CmdWiz2Texturenpfad);
                }
                if (row.Models != nullptr && QDir(in(row.Models)).exists()) {
                    services.QueueFolder(in(row.Models));
                    Press(p.CmdWiz2Modelpfad);
                } else if (row.Models != nullptr) {
                    p.TxtWiz2Modelpfad->setText(in(row.Models));
                }
                EXPECT_EQ(p.CmdWeiter->isEnabled(), row.Next)
                    << (row.Textures ? row.Textures : "-") << " "
                    << (row.Models ? row.Models : "-");
                Press(p.CmdAbbrechen);
            })});
    }
    // A folder of animations only offers no reference; another folder drops
    // a reference chosen before.
    Run(form->MnuWizardsGrWiz, {On<Wizard2>([&](Wizard2& p) {
                                    services.QueueFolder(InModels("textures"));
                                    Press(p.CmdWiz2Texturenpfad);
                                    services.QueueFolder(models.path());
                                    Press(p.CmdWiz2Modelpfad);
                                    Press(p.CmdWeiter);
                                }),
                                On<Wizard3>([](Wizard3& p) {
                                    Press(p.CmdAssign); // nothing selected: nothing happens
                                    EXPECT_EQ(p.TxtWiz3Referenzmodel->text(), "");
                                    test::SelectText(p.LstFiles, "robot_ref.smd");
                                    Press(p.CmdAssign);
                                    EXPECT_TRUE(p.CmdWeiter->isEnabled());
                                    Press(p.CmdZurueck);
                                }),
                                On<Wizard2>([&](Wizard2& p) {
                                    services.QueueFolder(InModels("anims"));
                                    Press(p.CmdWiz2Modelpfad);
                                    Press(p.CmdWeiter);
                                }),
                                On<Wizard3>([](Wizard3& p) {
                                    EXPECT_EQ(p.LstFiles->count(), 0);
                                    EXPECT_FALSE(p.CmdWeiter->isEnabled());
                                    Press(p.CmdAbbrechen);
                                })});

    // The animation wizard: the file must exist (the name is AnimSteps' first check).
    Doc().ModelPath = models.path().toStdString();
    form->Update();
    struct File {
        const char* Typed; // into TxtAnimWiz2AnimModel by hand
        bool Next;
    };
    const File files[] = {{"Animation", false},
                          {"run.smd", true},
                          {"RUN.SMD", true},
                          {"gone.smd", false},
                          {"", false}};
    for (const File& row : files) {
        Run(form->MnuWizardsAnimWiz,
            {On<AnimWiz1>([](AnimWiz1& p) {
                 Retype(p.TxtAnimWiz1AnimName, "j");
                 Press(p.CmdWeiter);
             }),
             On<AnimWiz2>([&](AnimWiz2& p) {
                 if (QString(row.Typed) != p.TxtAnimWiz2AnimModel->text()) {
                     Retype(p.TxtAnimWiz2AnimModel, row.Typed);
                 }
                 EXPECT_EQ(p.CmdWeiter->isEnabled(), row.Next) << row.Typed;
                 Press(p.CmdAbbrechen);
             })});
    }
    // Without animation files nothing can be chosen.
    Doc().ModelPath = InModels("textures").toStdString();
    Run(form->MnuWizardsAnimWiz, {On<AnimWiz1>([](AnimWiz1& p) {
                                      Retype(p.TxtAnimWiz1AnimName, "j");
                                      Press(p.CmdWeiter);
                                  }),
                                  On<AnimWiz2>([](AnimWiz2& p) {
                                      EXPECT_EQ(p.LstFiles->count(), 0);
                                      EXPECT_FALSE(p.CmdWeiter->isEnabled());
                                      Press(p.CmdAbbrechen);
                                  })});
}

// A group whose list is full takes no more.
TEST_F(Wizards, FullGroupIsRefused) {
    Doc().ModelPath = models.path().toStdString();
    form->Update();
    ShowPage(1);
    for (int s = 0; s <= limits::LastWrittenAnimSlot; ++s) {
        form->LstAnimations->addItem("run");
    }
    services.QueueMsgBox(platform::Answer::Ok);
    form->MnuWizardsAnimWiz->trigger();
    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_EQ(form->LstAnimations->count(), limits::LastWrittenAnimSlot + 1);
}

// A text the script cannot hold is refused on the last page, which stays
// open; nothing is added.
TEST_F(Wizards, BaseSettingsRefuseAFolderTheScriptCannotNameAndKeepTheEyesOff) {
    Doc().EyeX = 7;
    auto steps = BaseSteps("1", false);
    steps[0] = On<Wizard2>([this](Wizard2& p) {
        services.QueueFolder(QString::fromUtf8("/tmp/\xC5\x81\xC3\xB3" "d\xC5\xBA"));
        services.QueueMsgBox(platform::Answer::Ok);
        Press(p.CmdWiz2Texturenpfad);
        EXPECT_EQ(services.Prompts().last().Kind, "MsgBox");
        EXPECT_EQ(p.TxtWiz2Texturenpfad->text(), "");
        services.QueueFolder(InModels("textures"));
        Press(p.CmdWiz2Texturenpfad);
        services.QueueFolder(models.path());
        Press(p.CmdWiz2Modelpfad);
        Press(p.CmdWeiter);
    });
    steps.push_back(On<Wizard5>([](Wizard5& p) {
        EXPECT_EQ(Items(p.LstSumm).mid(6, 2), (QStringList{"IDS_SCALE: 1", "IDS_EYES: IDS_NO"}));
        Press(p.CmdFertig);
    }));
    Run(form->MnuWizardsGrWiz, std::move(steps));
    EXPECT_EQ(Doc().TexturePath, InModels("textures").toStdString());
    EXPECT_EQ(Doc().EyesOn, 0);
    EXPECT_EQ(Doc().EyeX, 7.0f) << "the eye position stays behind the cleared box";
    services.VerifyAllUsed();
}

TEST_F(Wizards, NameTheScriptCannotHoldIsRefused) {
    Doc().ModelPath = models.path().toStdString();
    form->Update();
    auto steps = AnimSteps(QString::fromUtf8("\xE8\xB7\xB3"), "jump.smd", "", false, false);
    steps.push_back(On<AnimWiz5>([this](AnimWiz5& p) {
        services.QueueMsgBox(platform::Answer::Ok);
        Press(p.CmdWeiter);
        EXPECT_EQ(services.Prompts().last().Kind, "MsgBox");
        Press(p.CmdAbbrechen);
    }));
    Run(form->MnuWizardsAnimWiz, std::move(steps));
    EXPECT_EQ(form->LstAnimations->count(), 0);
    EXPECT_TRUE(Doc().Anims[0][0].SmdFile.empty());
}

} // namespace
} // namespace quarle::ui
