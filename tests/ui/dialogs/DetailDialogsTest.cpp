// The detail dialogs of the model and of one animation, reached from the
// main window as a user reaches them: a model folder, animations added and
// selected, the dialog opened, typed into and closed, the script saved and
// its lines compared.
#include "document/NumberText.h"
#include "support/MainWindowFixture.h"
#include "ui/dialogs/DlgAnimExt.h"
#include "ui/dialogs/DlgBindung.h"
#include "ui/dialogs/DlgController.h"
#include "ui/dialogs/DlgModeleinstellungen.h"
#include "ui/dialogs/DlgOrigin.h"
#include "ui/dialogs/FrmEvents.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QRadioButton>
#include <QTimer>
#include <QTreeWidget>
#include <functional>

namespace quarle::ui {
namespace {

using platform::Answer;
using test::Click;
using test::Items;

// Typing into a box after selecting its text, as a user overwrites it.
void Type(QLineEdit* box, const QString& text) {
    box->selectAll();
    QTest::keyClicks(box, text);
}

void Clear(QLineEdit* box) {
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Backspace);
}

void Enter(QLineEdit* box, const QString& text) {
    Type(box, text);
    QTest::keyClick(box, Qt::Key_Return);
}

// A pick of an entry of the combo box's list.
void Choose(QComboBox* box, const QString& text) {
    const int i = box->findText(text);
    ASSERT_GE(i, 0) << text.toStdString();
    box->setCurrentIndex(i);
    emit box->activated(i);
}

// The column of the yellow cross's vertical arm in a view, -1 if none is drawn.
int CrossColumn(const QImage& view) {
    int best = -1;
    int most = 0;
    for (int x = 0; x < view.width(); ++x) {
        int yellow = 0;
        for (int y = 0; y < view.height(); ++y) {
            yellow += view.pixelColor(x, y) == QColor(255, 255, 0) ? 1 : 0;
        }
        if (yellow > most) {
            most = yellow;
            best = x;
        }
    }
    return best;
}

class DetailDialogsTest : public test::MainWindowFixture {
protected:
    DetailDialogsTest() {
        Start(Texts::Keys);
        OpenSampleModel();
        ShowPage(1);
        for (const char* file : {"idle", "walk", "run"}) {
            test::SelectText(form->LstFiles, file);
            form->CmdAdd->click();
        }
    }

    AnimRec& Anim(int slot) { return Doc().Anims[0][static_cast<std::size_t>(slot)]; }

    // Puts the animation back to a fresh record and selects it.
    void Fresh(int slot, const char* name) {
        Click(form->LstAnimations, -1);
        Anim(slot) = AnimRec{};
        Anim(slot).Name = name;
        Anim(slot).SmdFile = name;
        Click(form->LstAnimations, slot);
    }

    // Runs steps on the modal dialog that open() shows; steps close it.
    template <class Dialog>
    static void Drive(const std::function<void()>& open,
                      const std::function<void(Dialog&)>& steps) {
        test::ModalScript script([&](QWidget* modal) {
            auto* dialog = dynamic_cast<Dialog*>(modal);
            ASSERT_NE(dialog, nullptr) << modal->objectName().toStdString();
            steps(*dialog);
            if (dialog->isVisible()) {
                ADD_FAILURE() << "the steps left the dialog open";
                dialog->close();
            }
        });
        open();
        ASSERT_TRUE(script.Ran());
    }

    // Saves through the menu and returns the script's lines that start with
    // one of the prefixes, joined with "|".
    std::string Saved(const QStringList& prefixes) {
        if (Doc().QcFile.empty()) {
            services.QueueSave(test::Pick(InModels("model.qc")));
        }
        form->MnuDateiSpeichern->trigger();
        QStringList found;
        for (const QString& line :
             QString::fromLatin1(test::ReadFile(InModels("model.qc"))).split("\r\n")) {
            for (const QString& prefix : prefixes) {
                if (line.startsWith(prefix)) {
                    found.append(line);
                }
            }
        }
        return found.join('|').toStdString();
    }
};

// ---------------------------------------------------------------------------
// Animation properties, with its events and origin: what a user sets comes
// out in the $sequence line.

TEST_F(DetailDialogsTest, AnimationPropertiesReachTheSequenceLine) {
    struct Case {
        const char* what;
        int slot; // 1 walk (last frame 12), 2 run (last frame 8)
        std::function<void(AnimRec&)> before;
        std::function<void(DlgAnimExt&)> steps;
        const char* line;
    };
    const auto none = [](AnimRec&) {};
    const Case cases[] = {
        {"typed values; a frame above the file's last comes down at once", 1, none,
         [](DlgAnimExt& d) {
             Type(d.NumberBox("Text6"), "25");
             d.Check1->click();
             d.ChkLX->click();
             d.ChkLZ->click();
             EXPECT_FALSE(d.TxtMaxFrame->isEnabled());
             d.ChkFrameGrenze->click();
             Type(d.TxtMinFrame, "2");
             Type(d.TxtMaxFrame, "99");
             EXPECT_EQ(d.TxtMaxFrame->text(), "12");
             Type(d.NumberBox("TxtScale"), "1,5"); // the key filter makes the comma a point
             EXPECT_EQ(d.NumberBox("TxtScale")->text(), "1.5");
             Type(d.NumberBox("TxtAnimRotate"), "-9.5"); // no point in a rotation
             d.OKButton->click();
         },
         R"($sequence "walk" "walk" fps 25 loop frame 2 12 rotate -95  LX LZ scale 1.5)"},
        {"empty boxes fall back or keep; rejected texts keep the last number", 1, none,
         [](DlgAnimExt& d) {
             Clear(d.NumberBox("Text6"));
             EXPECT_EQ(d.NumberBox("Text6")->text(), "0");
             Type(d.NumberBox("Text6"), "40000"); // 4000 fits, 40000 does not
             Clear(d.NumberBox("TxtScale"));
             EXPECT_EQ(d.NumberBox("TxtScale")->text(), "1");
             Type(d.NumberBox("TxtScale"), "1.2.3"); // 1.2 on the way there
             Type(d.NumberBox("TxtScale"), "-");
             d.ChkFrameGrenze->click();
             Clear(d.TxtMaxFrame);
             EXPECT_EQ(d.TxtMaxFrame->text(), "");
             d.OKButton->click();
         },
         R"($sequence "walk" "walk" fps 4000 frame 0 10  scale 1.2)"},
        {"opening lowers the frames to the file's last, with the range off", 2,
         [](AnimRec& a) { a.FrameStart = 9; },
         [](DlgAnimExt& d) {
             d.ChkFrameGrenze->click();
             d.OKButton->click();
         },
         R"($sequence "run" "run" fps 30 frame 8 8 )"},
        {"blending: a pick from the list, the axis and the limits", 1, none,
         [](DlgAnimExt& d) {
             d.ChkBlend->click();
             EXPECT_TRUE(d.FrameCtrl->isEnabled());
             Choose(d.CmbBlendFile, "idle");
             d.CmbBlendFile->lineEdit()->setText("typed"); // typing is not a pick
             d.CtrlAchse[1]->click();
             Type(d.TxtLimitMin, "-30");
             Type(d.TxtLimitMax, "45");
             d.OKButton->click();
         },
         R"($sequence "walk" "walk" "idle" fps 30  blend YR -30 45)"},
        {"blending off opens with Combo1 and keeps the file; a foreign axis is Z", 1,
         [](AnimRec& a) {
             a.BlendFile = "run";
             a.BlendAxis = 7.0f;
         },
         [](DlgAnimExt& d) {
             EXPECT_EQ(d.CmbBlendFile->currentText(), "Combo1");
             EXPECT_GE(d.CmbBlendFile->findText("idle"), 0);
             d.ChkBlend->click();
             d.OKButton->click();
         },
         R"($sequence "walk" "walk" "run" fps 30  blend XR 0 0)"},
        {"events and origin through their dialogs", 1, none,
         [](DlgAnimExt& d) {
             Drive<FrmEvents>([&] { d.CmdEvents->click(); },
                              [](FrmEvents& e) {
                                  ASSERT_EQ(e.LVEvent->topLevelItemCount(), 22);
                                  e.LVEvent->topLevelItem(17)->setSelected(true);
                                  e.LVEvent->topLevelItem(4)->setSelected(true);
                                  e.CmdAdd->click(); // in catalogue order
                                  EXPECT_EQ(Items(e.LstAnimEvents), (QStringList{"1004", "5004"}));
                                  Click(e.LstAnimEvents, 0);
                                  Type(e.TxtFrame, "30");
                                  EXPECT_EQ(e.TxtFrame->text(), "12");
                                  Type(e.TxtParameter, "ambience/x.wav");
                                  e.CmdOK->click();
                              });
             Drive<DlgOrigin>([&] { d.CmdOrigin->click(); },
                              [](DlgOrigin& o) {
                                  // The pixel right of the centre pixel: 30 twips, one unit.
                                  QTest::mouseClick(o.PicXYVer, Qt::LeftButton, {}, QPoint(78, 76));
                                  Enter(o.TxtZ, "-3");
                                  o.OKButton->click();
                              });
             d.OKButton->click();
         },
         R"($sequence "walk" "walk" fps 30 origin 1 0 -3  { event 1004 12 "ambience/x.wav" })"
         R"( { event 5004 1 })"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Fresh(c.slot, c.slot == 1 ? "walk" : "run");
        c.before(Anim(c.slot));
        Drive<DlgAnimExt>([&] { form->CmdAnimExt->click(); }, c.steps);
        EXPECT_EQ(Saved({QStringLiteral("$sequence \"") + (c.slot == 1 ? "walk" : "run")}), c.line);
    }
    // Without a selected animation the button opens nothing.
    Click(form->LstAnimations, -1);
    const auto prompts = services.Prompts().size();
    form->CmdAnimExt->click();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(services.Prompts().size(), prompts);
}

// ---------------------------------------------------------------------------
// The event editor's table: the guard of the boxes, the delete that closes
// up, and the refusal of the 256th event.

TEST_F(DetailDialogsTest, EventsCloseUpAndTheTableStopsAt255) {
    Fresh(1, "walk");
    AnimRec& walk = Anim(1);
    walk.EventCount = 3;
    walk.Events[1] = {2, 1001, "a"};
    walk.Events[2] = {3, 1002, "b"};
    walk.Events[3] = {4, 1003, ""};
    const auto events = [&walk] {
        QStringList shown;
        for (int i = 0; i <= walk.EventCount; ++i) {
            const AnimEventRec& e = walk.Events[i];
            shown.append(QStringLiteral("%1@%2:%3")
                             .arg(e.EventId)
                             .arg(e.Frame)
                             .arg(QString::fromStdString(e.Parameter)));
        }
        return shown.join(' ');
    };
    Drive<DlgAnimExt>(
        [&] { form->CmdAnimExt->click(); },
        [&](DlgAnimExt& d) {
            Drive<FrmEvents>(
                [&] { d.CmdEvents->click(); },
                [&](FrmEvents& e) {
                    EXPECT_EQ(Items(e.LstAnimEvents), (QStringList{"1001", "1002", "1003"}));
                    // Before the first click the boxes reach nothing; a click only shows.
                    Type(e.TxtFrame, "7");
                    Type(e.TxtParameter, "z");
                    Click(e.LstAnimEvents, 1);
                    EXPECT_EQ(e.TxtFrame->text(), "3");
                    EXPECT_EQ(e.TxtParameter->text(), "b");
                    EXPECT_EQ(events(), "0@1: 1001@2:a 1002@3:b 1003@4:");
                    // Two rows side by side go in one click; the third moves up whole.
                    test::Select(e.LstAnimEvents, {0, 1});
                    e.CmdDel->click();
                    EXPECT_EQ(Items(e.LstAnimEvents), QStringList{"1003"});
                    EXPECT_EQ(e.TxtFrame->text(), "3") << "the boxes are not cleared";
                    Click(e.LstAnimEvents, 0);
                    EXPECT_EQ(e.TxtFrame->text(), "4");
                    EXPECT_EQ(events(), "0@1: 1003@4:");
                    // A frame equal to the file's last stands; a new event has frame 1.
                    Type(e.TxtFrame, "12");
                    e.LVEvent->topLevelItem(0)->setSelected(true);
                    e.CmdAdd->click();
                    e.CmdAdd->click();
                    EXPECT_EQ(events(), "0@1: 1003@12: 1000@1: 1000@1:");
                    // At 255 events the next is refused, the table kept.
                    walk.EventCount = 254;
                    services.QueueMsgBox(Answer::Ok);
                    e.CmdAdd->click();
                    EXPECT_EQ(walk.EventCount, 255);
                    e.CmdAdd->click();
                    EXPECT_EQ(walk.EventCount, 255);
                    EXPECT_EQ(e.LstAnimEvents->count(), 4);
                    e.CmdOK->click();
                });
            d.OKButton->click();
        });
    ASSERT_EQ(services.Prompts().size(), 1);
    EXPECT_TRUE(services.Prompts()[0].Text.contains("255"));
}

// ---------------------------------------------------------------------------
// The origin dialog works on a copy: only OK changes the record, by the
// rule on the sum of the three offsets.

TEST_F(DetailDialogsTest, OriginChangesTheRecordOnlyOnOk) {
    struct Case {
        const char* what;
        std::array<i16, 3> before;
        std::function<void(DlgOrigin&)> steps;
        flag on;
        std::array<i16, 3> after;
        int messages = 0;
    };
    const Case cases[] = {
        {"cancel after clicks and Enter",
         {4, 5, 6},
         [](DlgOrigin& o) {
             QTest::mouseClick(o.PicXYVer, Qt::LeftButton, {}, QPoint(10, 10));
             Enter(o.TxtZ, "9");
             o.CancelButton->click();
         },
         1,
         {4, 5, 6}},
        {"offsets that cancel out clear only the flag",
         {4, 5, 6},
         [](DlgOrigin& o) {
             Enter(o.TxtX, "2");
             Enter(o.TxtY, "-2");
             Enter(o.TxtZ, "0");
             o.OKButton->click();
         },
         0,
         {4, 5, 6}},
        {"the centre of a view is 0; Z stays",
         {4, 5, 6},
         [](DlgOrigin& o) {
             QTest::mouseClick(o.PicXYVer, Qt::LeftButton, {}, QPoint(76, 76));
             EXPECT_EQ(o.TxtX->text(), "0");
             o.OKButton->click();
         },
         1,
         {0, 0, 6}},
        {"the X,Z view sets X and Z and keeps Y",
         {4, 5, 6},
         [](DlgOrigin& o) {
             QTest::mouseClick(o.PicXZVer, Qt::RightButton, {}, QPoint(74, 80));
             EXPECT_EQ(o.TxtZ->text(), "2"); // 60 twips: 2 units
             o.OKButton->click();
         },
         1,
         {-1, 5, 2}},
        {"a number counts only with Enter",
         {4, 5, 6},
         [](DlgOrigin& o) {
             Type(o.TxtX, "5");
             o.OKButton->click();
         },
         1,
         {4, 5, 6}},
        {"Enter without a usable number keeps the copy and says why",
         {4, 5, 6},
         [](DlgOrigin& o) {
             Enter(o.TxtX, "-");
             Enter(o.TxtY, "1093");
             Enter(o.TxtZ, "-1092");
             o.OKButton->click();
         },
         1,
         {4, 5, -1092},
         2},
        {"a record beyond the views keeps its number; a sum beyond 16 bits counts",
         {2000, 1000, 1000},
         [](DlgOrigin& o) {
             EXPECT_EQ(o.TxtX->text(), "2000");
             o.OKButton->click();
         },
         1,
         {2000, 1000, 1000}},
        {"the sum is of the numbers stored, not of the view's edges",
         {2000, -1092, 0},
         [](DlgOrigin& o) { o.OKButton->click(); },
         1,
         {2000, -1092, 0}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Fresh(1, "walk");
        AnimRec& walk = Anim(1);
        walk.OriginOn = 1;
        walk.OriginX = c.before[0];
        walk.OriginY = c.before[1];
        walk.OriginZ = c.before[2];
        for (int i = 0; i < c.messages; ++i) {
            services.QueueMsgBox(Answer::Ok);
        }
        Drive<DlgAnimExt>([&] { form->CmdAnimExt->click(); },
                          [&](DlgAnimExt& d) {
                              Drive<DlgOrigin>([&] { d.CmdOrigin->click(); }, c.steps);
                              d.OKButton->click();
                          });
        EXPECT_EQ(walk.OriginOn, c.on);
        EXPECT_EQ((std::array<i16, 3>{walk.OriginX, walk.OriginY, walk.OriginZ}), c.after);
        services.VerifyAllUsed();
    }
}

TEST_F(DetailDialogsTest, OriginViewsPaintTheCopyAfterTheTimer) {
    Fresh(1, "walk");
    Anim(1).OriginX = 4; // 120 twips: 8 pixels right of the centre
    Drive<DlgAnimExt>(
        [&] { form->CmdAnimExt->click(); },
        [&](DlgAnimExt& d) {
            Drive<DlgOrigin>(
                [&] { d.CmdOrigin->click(); },
                [&](DlgOrigin& o) {
                    if (o.Timer1->isActive()) {
                        EXPECT_EQ(CrossColumn(o.PicXYVer->Picture()), -1)
                            << "nothing before Timer1";
                    }
                    ASSERT_TRUE(QTest::qWaitFor([&] { return !o.Timer1->isActive(); }, 2000));
                    EXPECT_EQ(CrossColumn(o.PicXYVer->Picture()), 84);
                    EXPECT_EQ(CrossColumn(o.PicXZVer->Picture()), 84);
                    EXPECT_EQ(o.PicXYVer->Picture().pixelColor(5, 76), QColor(192, 192, 192));
                    // A press in the X,Z view moves the cross of the X,Y view as well,
                    // and what is shown is what a repaint shows.
                    QTest::mouseClick(o.PicXZVer, Qt::LeftButton, {}, QPoint(60, 76));
                    EXPECT_EQ(CrossColumn(o.PicXYVer->Picture()), 60);
                    EXPECT_EQ(o.PicXYVer->grab().toImage().convertToFormat(QImage::Format_RGB32),
                              o.PicXYVer->Picture());
                    o.CancelButton->click();
                });
            d.OKButton->click();
        });
}

// ---------------------------------------------------------------------------
// Model settings: the head lines of the script.

const QStringList HeadLines = {"$scale", "$gamma", "$externaltextures", "$eyeposition",
                               "$sequencegroupsize"};

TEST_F(DetailDialogsTest, ModelSettingsReachTheHeadLines) {
    struct Case {
        const char* what;
        std::function<void(Document&)> before;
        std::function<void(DlgModeleinstellungen&, Document&)> steps;
        const char* lines;
    };
    const Case cases[] = {
        {"typed values; ticking the group size stores the box's 64", [](Document&) {},
         [](DlgModeleinstellungen& m, Document&) {
             Type(m.TxtMassstab, "2.5");
             Type(m.TxtGamma, "2.2");
             m.ChkAugen->click();
             Type(m.TxtAugenX, "1.5");
             Type(m.TxtAugenY, "-2");
             Type(m.TxtAugenZ, "64");
             m.ChkExtTex->click();
             m.ChkSequenceGroupSize->click();
             m.OKButton->click();
         },
         "$scale 2.5|$gamma 2.2|$externaltextures|$eyeposition 1.5 -2 64|"
         "$sequencegroupsize 64"},
        {"scale and gamma read the number at the start of the text", [](Document&) {},
         [](DlgModeleinstellungen& m, Document&) {
             Type(m.TxtGamma, "1.2.3");
             Type(m.TxtMassstab, ".");
             m.OKButton->click();
         },
         "$scale 0|$gamma 1.2"},
        {"unticked eyes show letters and keep the numbers; a lone minus keeps one",
         [](Document& doc) {
             doc.EyesOn = 1;
             doc.EyeX = 1;
             doc.EyeY = 2;
             doc.EyeZ = 3;
         },
         [](DlgModeleinstellungen& m, Document& doc) {
             m.ChkAugen->click();
             EXPECT_EQ(m.TxtAugenX->text() + m.TxtAugenY->text() + m.TxtAugenZ->text(), "XYZ");
             EXPECT_FALSE(m.TxtAugenZ->isEnabled());
             EXPECT_EQ(doc.EyeY, 2.0f);
             m.ChkAugen->click();
             EXPECT_EQ(m.TxtAugenZ->text(), "3");
             Type(m.TxtAugenX, "-");
             Type(m.TxtAugenY, "1.2.3");
             m.OKButton->click();
         },
         "$eyeposition 1 1.2 3"},
        {"a negative size counts as off and stays until the box is ticked; the text stays",
         [](Document& doc) { doc.SequenceGroupSize = -5; },
         [](DlgModeleinstellungen& m, Document& doc) {
             EXPECT_FALSE(m.ChkSequenceGroupSize->isChecked());
             EXPECT_EQ(doc.SequenceGroupSize, -5);
             m.ChkSequenceGroupSize->click();
             EXPECT_EQ(doc.SequenceGroupSize, 64);
             Type(m.TxtSequenceGroupSize, "99999"); // 9999 fits, 99999 does not
             EXPECT_EQ(doc.SequenceGroupSize, 9999);
             Type(m.TxtSequenceGroupSize, "128");
             m.ChkSequenceGroupSize->click();
             EXPECT_EQ(doc.SequenceGroupSize, 0);
             m.ChkSequenceGroupSize->click();
             m.OKButton->click();
         },
         "$sequencegroupsize 128"},
        {"each gate opens its dialog over a disabled settings dialog, which comes back after it",
         [](Document& doc) {
             doc.BodyGroups[1].PartCount = 1;
             doc.BodyGroups[1].Parts[1] = Blank;
         },
         [](DlgModeleinstellungen& m, Document&) {
             const std::pair<QPushButton*, const char*> gates[] = {
                 {m.CmdAttachment, "DlgBindung"},
                 {m.CmdController, "DlgController"},
                 {m.CmdTextureGroup, "DlgTextureGroup"},
                 {m.CmdTexturemode, "DlgTexturemode"}};
             for (const auto& [gate, dialog] : gates) {
                 QString opened;
                 bool ownerEnabled = true;
                 QTimer::singleShot(0, &m, [&] {
                     QWidget* top = QApplication::activeModalWidget();
                     opened = top != nullptr ? top->objectName() : QString();
                     ownerEnabled = m.isEnabled();
                     if (top != nullptr && top != &m) {
                         top->close();
                     }
                 });
                 gate->click();
                 EXPECT_EQ(opened, QString::fromLatin1(dialog));
                 EXPECT_FALSE(ownerEnabled);
                 EXPECT_TRUE(m.isEnabled());
             }
             m.OKButton->click();
         },
         ""},
    };
    bool byMenu = true;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        form->Commands().NewDocument();
        c.before(Doc());
        Drive<DlgModeleinstellungen>(
            [&] {
                if (byMenu) {
                    form->MnuEinstModel->trigger();
                } else {
                    form->CmdModeleinst->click();
                }
            },
            [&](DlgModeleinstellungen& m) {
                const bool parts = Doc().BodyGroups[1].PartCount != 0;
                EXPECT_EQ(m.CmdTexturemode->isEnabled(), parts);
                c.steps(m, Doc());
            });
        byMenu = !byMenu;
        EXPECT_EQ(Saved(HeadLines), c.lines);
    }
}

// ---------------------------------------------------------------------------
// Under a decimal-comma locale (ctest runs these with LC_ALL=de_DE.UTF-8):
// what the forms show with a comma comes back whole.

class DecimalCommaTest : public DetailDialogsTest {
protected:
    void SetUp() override {
        if (SystemDecimalSeparator() != ',') {
            GTEST_SKIP() << "needs a decimal-comma locale, as ctest's ui_decimal_comma gives";
        }
    }
};

TEST_F(DecimalCommaTest, NumbersShownWithACommaComeBackWhole) {
    // A part opens the skeleton dialogs; without its file they list no bones.
    Doc().BodyGroupCount = 1;
    Doc().BodyGroups[1].PartCount = 1;
    Doc().BodyGroups[1].Parts[1] = "body";
    Doc().Attachments[0] = {1, 1.5f, -2.5f, 0};
    Doc().Controllers[0] = {1, 0, -12.5f, 12.5f};
    Drive<DlgModeleinstellungen>(
        [&] { form->CmdModeleinst->click(); },
        [&](DlgModeleinstellungen& m) {
            EXPECT_EQ(m.TxtGamma->text(), "1,8");
            m.TxtGamma->end(false);
            QTest::keyClick(m.TxtGamma, Qt::Key_Backspace);
            QTest::keyClicks(m.TxtGamma, "5");
            EXPECT_EQ(m.TxtGamma->text(), "1,5");
            Type(m.TxtMassstab, "0,25");
            Drive<DlgBindung>([&] { m.CmdAttachment->click(); },
                              [&](DlgBindung& d) {
                                  EXPECT_EQ(d.TxtBindungY->text(), "-2.5") << "always a point";
                                  d.OKButton->click();
                              });
            Drive<DlgController>([&] { m.CmdController->click(); },
                                 [&](DlgController& d) {
                                     EXPECT_EQ(d.TxtLimitMin->text(), "-12,5");
                                     d.OKButton->click();
                                 });
            m.OKButton->click();
        });
    Fresh(1, "walk");
    Anim(1).Rotate = 12.5f;
    Anim(1).BlendOn = 1;
    Anim(1).BlendMin = -12.5f;
    Anim(1).BlendMax = 12.5f;
    Anim(1).Scale = 1.5f;
    Anim(1).OriginX = 3;
    Drive<DlgAnimExt>([&] { form->CmdAnimExt->click(); },
                      [&](DlgAnimExt& d) {
                          EXPECT_EQ(d.TxtLimitMin->text(), "-12,5");
                          EXPECT_EQ(d.NumberBox("TxtAnimRotate")->text(), "12,5");
                          Drive<DlgOrigin>([&] { d.CmdOrigin->click(); },
                                           [&](DlgOrigin& o) {
                                               Enter(o.TxtY,
                                                     "2,5"); // 75 twips, OK halves it to the even 2
                                               o.OKButton->click();
                                           });
                          d.OKButton->click();
                      });
    EXPECT_EQ(
        Saved(HeadLines + QStringList{"$attachment", "$controller", "$sequence \"walk\""}),
        "$scale 0.25|$gamma 1.5|$attachment 0 \"\" 1.5 -2.5 0|$controller 0 \"\" XR -12,5 12,5|"
        "$sequence \"walk\" \"walk\" \"\" fps 30 origin 3 2 0 rotate 12,5  scale 1,5 "
        "blend XR -12,5 12,5");
}

} // namespace
} // namespace quarle::ui
