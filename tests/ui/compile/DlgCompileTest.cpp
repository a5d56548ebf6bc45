// The compile dialog end to end: checks, the script, the stand-in compiler,
// the wait, the log, the closing row and the viewer.
#include "ui/compile/DlgCompile.h"

#include "FakeCompiler.h"
#include "localisation/GlobalStrings.h"
#include "localisation/MessageTexts.h"
#include "support/ScriptedServices.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>
#include <memory>

namespace quarle::ui {
namespace {

using namespace std::chrono_literals;

QString FromBytes(const QByteArray& bytes) {
    return QString::fromUtf8(bytes);
}

class DlgCompileTest : public ::testing::Test {
protected:
    DlgCompileTest() {
        for (std::size_t i = 0; i < IdsKeyTable.size(); ++i) {
            state_->IdsTexts[i] = IdsKeyTable[i];
        }
        // Each message as its key and its placeholders: "MSG_COMPILE_TIMED_OUT %1".
        for (const MessageEntry& entry : MessageTable) {
            std::string text(entry.Key);
            for (char n = '1'; n <= '9'; ++n) {
                if (entry.English.find(std::string{'%', n}) != std::string_view::npos) {
                    text += std::string{' ', '%', n};
                }
            }
            state_->MsgTexts[static_cast<std::size_t>(entry.Id)] = text;
        }
        state_->Settings.StudioMdlPath = QUARLE_FAKE_COMPILER;
        options_.WorkingFolder = work_.path();
        options_.PollInterval = 10ms;
    }

    QString Work(const QString& name) const { return QDir(work_.path()).filePath(name); }

    static void Write(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
        file.write(bytes);
    }
    static QByteArray Read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // A model that passes the checks, saved with the extra lines given;
    // fake compiler directives go there.
    void SaveModel(const QByteArray& extra = {}, const QString& qcName = "robot.qc",
                   bool withAnimation = true) {
        Document& doc = state_->Doc;
        doc.ModelPath = models_.path().toStdString();
        doc.TexturePath = doc.ModelPath;
        doc.BodyGroups[1].PartCount = 1;
        doc.BodyGroups[1].Parts[1] = "robot_ref";
        // Meshes the file checks ahead of the compile accept.
        const QByteArray smd = "version 1\r\nnodes\r\n0 \"root\" -1\r\nend\r\n"
                               "skeleton\r\ntime 0\r\n0 0 0 0 0 0 0\r\nend\r\n";
        Write(QDir(models_.path()).filePath("robot_ref.smd"), smd + "triangles\r\nend\r\n");
        Write(QDir(models_.path()).filePath("walk.smd"), smd);
        if (withAnimation) {
            doc.Anims[0][0].Name = "walk";
            doc.Anims[0][0].SmdFile = "walk";
        }
        doc.QcFile = QDir(models_.path()).filePath(qcName).toStdString();
        doc.ModelName = QDir(models_.path()).filePath("robot.mdl").toStdString();
        QByteArray qc = "$modelname \"" + QByteArray::fromStdString(doc.ModelName) + "\"\r\n$cd \"" +
                        QByteArray::fromStdString(doc.ModelPath) + "\"\r\n";
        if (withAnimation) {
            qc += "$sequence walk \"walk\"\r\n";
        }
        Write(QString::fromStdString(doc.QcFile), qc + extra);
    }

    // Built and loaded, as the compile command has it before it shows it.
    std::unique_ptr<DlgCompile> Make(int animationRows = 1) {
        auto dlg =
            std::make_unique<DlgCompile>(*state_, services_, animationRows, nullptr, options_);
        dlg->Load();
        return dlg;
    }

    // Shows the dialog and waits for its closing row.
    static void RunToEnd(DlgCompile& dlg) {
        dlg.show();
        ASSERT_TRUE(QTest::qWaitFor([&] { return dlg.OKButton->isEnabled(); }, 20000));
    }

    static QStringList Rows(const DlgCompile& dlg) {
        QStringList rows;
        for (int i = 0; i < dlg.List1->count(); ++i) {
            rows << dlg.List1->item(i)->text();
        }
        return rows;
    }
    static int KindOfRow(const DlgCompile& dlg, const QString& text) {
        const auto items = dlg.List1->findItems(text, Qt::MatchExactly);
        return items.isEmpty() ? -1 : items.front()->data(DlgCompile::KindRole).toInt();
    }

    QTemporaryDir work_;
    QTemporaryDir models_;
    std::unique_ptr<AppState> state_ = std::make_unique<AppState>();
    test::ScriptedServices services_;
    CompileOptions options_;
};

TEST_F(DlgCompileTest, SavedFreshDocumentIsRefusedAndKeepsTheLastCompilesFiles) {
    const QString qc = QDir(models_.path()).filePath("new.qc");
    state_->Doc.QcFile = qc.toStdString();
    Write(qc, "// saved\r\n");
    for (const char* name : {"compile.sh", "compile.log", "fert.dat"}) {
        Write(Work(name), "old");
    }
    auto dlg = Make(0);
    EXPECT_EQ(dlg->windowTitle(), "IDS_COMPILE " + qc);
    EXPECT_FALSE(dlg->OKButton->isEnabled());
    EXPECT_EQ(Rows(*dlg), QStringList{"IDS_CHECKMODELINFO"})
        << "nothing runs before the form is up";

    RunToEnd(*dlg);
    EXPECT_EQ(Rows(*dlg),
              (QStringList{"IDS_CHECKMODELINFO", "IDS_WARNING_TEXTUREPATH", "IDS_ERROR_MODELPATH",
                           "MSG_CHECK_EMPTY_BODYGROUP body", "IDS_ERROR_NOREFERENCEMODEL",
                           "IDS_WARNING_IDLEANIMATION", " ", "IDS_CANTCOMPILE",
                           "IDS_DONE (3 IDS_ERRORS)"}));
    EXPECT_EQ(FromBytes(Read(qc)), "// saved\r\n$sequence idle \"\"\r\n");
    for (const char* name : {"compile.sh", "compile.log", "fert.dat"}) {
        EXPECT_EQ(Read(Work(name)), "old") << name;
    }
    EXPECT_EQ(dlg->LblStatus->text(), "MSG_STATUS_REFUSED MSG_ERRORS 3");
    EXPECT_EQ(KindOfRow(*dlg, "IDS_ERROR_MODELPATH"), 2);
    EXPECT_EQ(KindOfRow(*dlg, "IDS_WARNING_TEXTUREPATH"), 1);
    EXPECT_EQ(KindOfRow(*dlg, "IDS_CHECKMODELINFO"), 0);

    // The user runs the compiler all the same: on the script as saved,
    // which names no model, so none comes out, and the closing row counts
    // that beside the checks' three.
    ASSERT_TRUE(dlg->CmdCompileAnyway->isVisible());
    const int before = dlg->List1->count();
    QTest::mouseClick(dlg->CmdCompileAnyway, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return dlg->OKButton->isEnabled(); }, 20000));
    const QStringList rows = Rows(*dlg).mid(before);
    EXPECT_EQ(rows.first(), "IDS_COMPILEMODEL");
    EXPECT_TRUE(rows.contains(" qc: " + qc)) << rows.join('|').toStdString();
    EXPECT_EQ(rows.mid(rows.size() - 2),
              (QStringList{"MSG_COMPILE_NO_MODEL " + QDir(models_.path()).filePath("new.mdl"),
                           "IDS_DONE (4 IDS_ERRORS)"}));
    EXPECT_FALSE(dlg->CmdCompileAnyway->isVisible()) << "one run per showing";
    EXPECT_EQ(Read(Work("fert.dat")), "Fertig 0\n");
}

TEST_F(DlgCompileTest, ModelWithoutAnimationsCompilesWithTheIdleLine) {
    SaveModel({}, "robot.qc", false);
    auto dlg = Make(0);
    RunToEnd(*dlg);
    const QString qc = QString::fromStdString(state_->Doc.QcFile);
    const QString mdl = QString::fromStdString(state_->Doc.ModelName);
    EXPECT_EQ(Rows(*dlg),
              (QStringList{"IDS_CHECKMODELINFO", "IDS_WARNING_IDLEANIMATION", " ",
                           "IDS_COMPILEMODEL", " fake studiomdl 1.0", " arguments: 1", " qc: " + qc,
                           " grabbing sequence idle \"robot_ref\"", " sequences: 1",
                           " writing " + mdl, "IDS_DONE (0 IDS_ERRORS)"}));
    EXPECT_EQ(Read(mdl), "IDST1");
    EXPECT_EQ(dlg->Outcome().End, compile::RunEnd::Finished);
    EXPECT_EQ(dlg->LblStatus->text(), "MSG_STATUS_LINE MSG_STATUS_FINISHED 0 MSG_STATUS_LOG "
                                      "MSG_ERRORS 0 MSG_WARNINGS 0 MSG_STATUS_MODEL_WRITTEN " +
                                          mdl);
    EXPECT_FALSE(dlg->CmdCancel->isEnabled());
}

TEST_F(DlgCompileTest, ACompilerThatCannotStartShowsTheSystemsReason) {
    const QString compiler = Work("studiomdl");
    Write(compiler, "not a program"); // no execute permission
    state_->Settings.StudioMdlPath = compiler.toStdString();
    SaveModel();
    auto dlg = Make();
    RunToEnd(*dlg);
    const QStringList rows = Rows(*dlg);
    const QStringList reason = rows.filter(compiler);
    ASSERT_EQ(reason.size(), 1) << rows.join('|').toStdString();
    EXPECT_GT(rows.indexOf(reason[0]), rows.indexOf("IDS_COMPILEMODEL"));
    EXPECT_EQ(dlg->Outcome().ExitStatus, 126);
}

TEST_F(DlgCompileTest, StaleMarkerDoesNotEndTheWait) {
    SaveModel("// fake: sleep 400\r\n");
    Write(Work("fert.dat"), "Fertig 9\r\n");
    Write(Work("compile.log"), "stale line\r\n");
    auto dlg = Make();
    RunToEnd(*dlg);
    const QStringList rows = Rows(*dlg);
    EXPECT_FALSE(rows.contains(" stale line"));
    EXPECT_TRUE(rows.contains(" sequences: 1")) << "printed only after the compiler's pause";
    EXPECT_EQ(dlg->Outcome().ExitStatus, 0);
    EXPECT_EQ(dlg->Outcome().Model, compile::ModelChange::Created);
}

TEST_F(DlgCompileTest, CancelStopsTheCompilerAndEndsWithTheClosingRow) {
    SaveModel("// fake: sleep 800\r\n");
    auto dlg = Make();
    // The wait runs inside the timer's tick, so the user's part is played
    // from a timer of its own while the compiler is running.
    bool stayedOpen = false;
    bool clicked = false;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, dlg.get(), [&] {
        // Once the compiler has written its first lines.
        if (clicked || !dlg->CmdCancel->isEnabled() || QFileInfo(Work("compile.log")).size() == 0) {
            return;
        }
        EXPECT_TRUE(dlg->Running());
        dlg->reject(); // the window's close box: a request to stop, not a close
        stayedOpen = dlg->isVisible();
        QTest::mouseClick(dlg->CmdCancel, Qt::LeftButton);
        clicked = true;
    });
    user.start(20);
    dlg->show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return dlg->OKButton->isEnabled(); }, 5000));

    EXPECT_TRUE(clicked);
    EXPECT_TRUE(stayedOpen);
    const QStringList rows = Rows(*dlg);
    const int cancelled = rows.indexOf("MSG_COMPILE_CANCELLED");
    ASSERT_GT(cancelled, rows.indexOf("IDS_COMPILEMODEL"));
    ASSERT_GT(cancelled, rows.indexOf(" fake studiomdl 1.0")) << "after what the compiler wrote";
    ASSERT_GT(rows.indexOf(" fake studiomdl 1.0"), 0);
    EXPECT_EQ(KindOfRow(*dlg, rows[cancelled]), 2);
    EXPECT_EQ(rows.last(), "IDS_DONE (1 IDS_ERRORS)");
    EXPECT_FALSE(rows.contains(" sequences: 1"));
    EXPECT_EQ(dlg->Outcome().End, compile::RunEnd::Cancelled);
    EXPECT_TRUE(dlg->LblStatus->text().startsWith("MSG_STATUS_LINE MSG_STATUS_CANCELLED "))
        << dlg->LblStatus->text().toStdString();
    // The compiler went with the script: its model never appears.
    QTest::qWait(1200);
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(state_->Doc.ModelName)));
    dlg->reject();
    EXPECT_FALSE(dlg->isVisible()) << "once finished, the close box closes";
}

TEST_F(DlgCompileTest, TimeLimitEndsTheWait) {
    options_.TimeLimit = 300ms;
    SaveModel("// fake: sleep 5000\r\n");
    auto dlg = Make();
    RunToEnd(*dlg);
    const QStringList rows = Rows(*dlg);
    EXPECT_TRUE(rows.contains("MSG_COMPILE_TIMED_OUT 0.3")) << rows.join('|').toStdString();
    EXPECT_EQ(rows.last(), "IDS_DONE (1 IDS_ERRORS)");
    EXPECT_EQ(dlg->Outcome().End, compile::RunEnd::TimedOut);
    EXPECT_TRUE(dlg->LblStatus->text().startsWith("MSG_STATUS_LINE MSG_STATUS_TIMED_OUT "));
}

TEST_F(DlgCompileTest, HostileScriptPathReachesTheCompilerWhole) {
    const QString hostile = "a b'c\"d $(touch pwned1) `touch pwned2`; touch pwned3 & x.qc";
    SaveModel({}, hostile);
    auto dlg = Make();
    RunToEnd(*dlg);
    EXPECT_TRUE(Rows(*dlg).contains(" qc: " + QString::fromStdString(state_->Doc.QcFile)));
    EXPECT_TRUE(Rows(*dlg).contains(" arguments: 1"));
    for (const QString& folder : {work_.path(), models_.path()}) {
        for (const char* name : {"pwned1", "pwned2", "pwned3"}) {
            EXPECT_FALSE(QFileInfo::exists(QDir(folder).filePath(name))) << name;
        }
    }
}

// What the compiler says stands out in its colour, and the closing row
// counts it with the checks' errors: a banner with the reason below it is
// one error, and a compiler that leaves no model without a word gets a row
// of its own.
TEST_F(DlgCompileTest, TheClosingRowCountsWhatTheCompilerSaid) {
    struct Case {
        QByteArray Lines;
        QStringList Red;    // rows shown as errors
        QStringList Yellow; // rows shown as warnings
        QString Closing;
        QString Status;
    };
    const QString mdl = QDir(models_.path()).filePath("robot.mdl");
    const std::vector<Case> cases{
        {"// fake: say WARNING: texture arm.bmp has odd size\r\n",
         {},
         {" WARNING: texture arm.bmp has odd size"},
         "IDS_DONE (0 IDS_ERRORS)",
         "MSG_STATUS_LINE MSG_STATUS_FINISHED 0 MSG_STATUS_LOG MSG_ERRORS 0 MSG_ONE_WARNING "
         "MSG_STATUS_MODEL_WRITTEN " +
             mdl},
        {"// fake: say ************ ERROR ************\r\n// fake: say arm.bmp not found\r\n"
         "// fake: exit 1\r\n// fake: nomdl\r\n",
         {" ************ ERROR ************", " arm.bmp not found"},
         {},
         "IDS_DONE (1 IDS_ERRORS)",
         "MSG_STATUS_LINE MSG_STATUS_FINISHED 1 MSG_STATUS_LOG MSG_ONE_ERROR MSG_WARNINGS 0 "
         "MSG_STATUS_NO_MODEL"},
        // A crash: no word in the log.
        {"// fake: exit 139\r\n// fake: nomdl\r\n",
         {"MSG_COMPILE_NO_MODEL " + mdl},
         {},
         "IDS_DONE (1 IDS_ERRORS)",
         "MSG_STATUS_LINE MSG_STATUS_FINISHED 139 MSG_STATUS_LOG MSG_ERRORS 0 MSG_WARNINGS 0 "
         "MSG_STATUS_NO_MODEL"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Lines.toStdString());
        QFile::remove(mdl);
        SaveModel(c.Lines);
        auto dlg = Make();
        RunToEnd(*dlg);
        QStringList red;
        QStringList yellow;
        for (int i = 0; i < dlg->List1->count(); ++i) {
            const QListWidgetItem* item = dlg->List1->item(i);
            const int kind = item->data(DlgCompile::KindRole).toInt();
            if (kind == 2) {
                red << item->text();
            } else if (kind == 1) {
                yellow << item->text();
            }
            if (kind != 0) {
                EXPECT_FALSE(item->icon().isNull());
                EXPECT_NE(item->foreground().color(), dlg->List1->item(0)->foreground().color());
            }
        }
        EXPECT_EQ(red, c.Red);
        EXPECT_EQ(yellow, c.Yellow);
        EXPECT_EQ(Rows(*dlg).last(), c.Closing);
        EXPECT_EQ(dlg->LblStatus->text(), c.Status);
        EXPECT_FALSE(dlg->CmdCompileAnyway->isVisible()) << "offered only after refused checks";
    }
}

TEST_F(DlgCompileTest, OkOpensTheViewerWithTheModelAsOneArgument) {
    state_->Settings.ModelViewerPath = QUARLE_FAKE_COMPILER; // any existing program
    SaveModel();
    state_->Doc.ModelName = "/models/my robot.mdl";
    auto dlg = Make();
    EXPECT_TRUE(dlg->ChkViewAfterCompile->isEnabled());
    RunToEnd(*dlg);
    dlg->ChkViewAfterCompile->setChecked(true);
    QTest::mouseClick(dlg->OKButton, Qt::LeftButton);
    ASSERT_EQ(services_.Starts.size(), 1);
    EXPECT_EQ(services_.Starts[0].Program, QUARLE_FAKE_COMPILER);
    EXPECT_EQ(services_.Starts[0].Arguments, QStringList{"/models/my robot.mdl"});
    EXPECT_EQ(dlg->result(), QDialog::Accepted);

    // A viewer that fails to start is reported.
    services_.StartResult = false;
    services_.QueueMsgBox(platform::Answer::Ok);
    auto failing = Make();
    RunToEnd(*failing);
    failing->ChkViewAfterCompile->setChecked(true);
    failing->OKButton_Click();
    ASSERT_EQ(services_.Prompts().size(), 1);
    EXPECT_EQ(services_.Prompts()[0].Title, "IDS_ERROR");
    EXPECT_EQ(services_.Prompts()[0].Text,
              "MSG_VIEWER_NOT_STARTED\n" +
                  QString::fromStdString(state_->Settings.ModelViewerPath));

    // With the preview as the viewer, OK asks for the model there.
    services_.Starts.clear();
    state_->Settings.ModelViewerPath = PreviewViewer;
    auto preview = Make();
    std::vector<std::string> shown;
    QObject::connect(preview.get(), &DlgCompile::PreviewRequested,
                     [&shown](const std::string& model) { shown.push_back(model); });
    EXPECT_TRUE(preview->ChkViewAfterCompile->isEnabled());
    RunToEnd(*preview);
    preview->ChkViewAfterCompile->setChecked(true);
    QTest::mouseClick(preview->OKButton, Qt::LeftButton);
    EXPECT_EQ(shown, std::vector<std::string>{"/models/my robot.mdl"});
    EXPECT_TRUE(services_.Starts.isEmpty());

    // A missing viewer keeps the box disabled, also after a refused compile.
    services_.Starts.clear();
    state_->Settings.ModelViewerPath = Work("no viewer").toStdString();
    state_->Settings.StudioMdlPath.clear();
    auto refused = Make();
    RunToEnd(*refused);
    EXPECT_TRUE(Rows(*refused).contains("IDS_ERROR_STUDIOMDLPATH"));
    EXPECT_FALSE(refused->ChkViewAfterCompile->isEnabled());
    QTest::mouseClick(refused->OKButton, Qt::LeftButton);
    EXPECT_TRUE(services_.Starts.isEmpty());
    EXPECT_FALSE(refused->isVisible());
}

// The status line is put together from the messages of the language, with
// one error and one warning told apart from several.
TEST(StatusText, TellsHowTheRunEndedWhatTheLogSaidAndWhereTheModelIs) {
    auto state = std::make_unique<AppState>();
    compile::RunOutcome o;
    o.CheckErrors = 1;
    EXPECT_EQ(StatusText(o, *state), "Not compiled: the checks found 1 error.");
    o.End = compile::RunEnd::NotStarted;
    EXPECT_EQ(StatusText(o, *state), "Not compiled: the compile script could not be started.");

    o.End = compile::RunEnd::Finished;
    o.ExitStatus = 127;
    o.LogErrors = 3;
    o.LogWarnings = 1;
    o.Model = compile::ModelChange::Unchanged;
    o.ModelPath = "/m/robot.mdl";
    EXPECT_EQ(StatusText(o, *state), "Compiler could not be run (exit status 127); log: 3 errors, "
                                     "1 warning; model not changed: /m/robot.mdl.");
    o.ExitStatus.reset();
    o.Model = compile::ModelChange::Rewritten;
    EXPECT_EQ(StatusText(o, *state), "Compiler finished (exit status not reported); log: 3 "
                                     "errors, 1 warning; model rewritten: /m/robot.mdl.");
    o.End = compile::RunEnd::ScriptEnded;
    o.Seconds = 2.6;
    EXPECT_TRUE(StatusText(o, *state).startsWith("The compile script ended without leaving"));
    o.End = compile::RunEnd::TimedOut;
    EXPECT_TRUE(StatusText(o, *state).startsWith("Compile stopped: no result after 3 s;"));

    // Another language orders the pieces its own way.
    state->MsgTexts[MSG_STATUS_LINE] = "%3 (%1 / %2)";
    state->MsgTexts[MSG_STATUS_TIMED_OUT] = "nach %1 s abgebrochen";
    state->MsgTexts[MSG_STATUS_LOG] = "Log: %2, %1";
    state->MsgTexts[MSG_ERRORS] = "%1 Fehler";
    state->MsgTexts[MSG_ONE_WARNING] = "1 Warnung";
    state->MsgTexts[MSG_STATUS_MODEL_REWRITTEN] = "Modell %1 neu geschrieben";
    EXPECT_EQ(StatusText(o, *state),
              "Modell /m/robot.mdl neu geschrieben (nach 3 s abgebrochen / Log: 1 Warnung, 3 "
              "Fehler)");
}

TEST(LogLineText, ReadsUtf8AndFallsBackToTheCodePage) {
    EXPECT_EQ(LogLineText("Gr\xc3\xb6\xc3\x9f"
                          "e"),
              QString::fromUtf8("Größe"));
    EXPECT_EQ(LogLineText("Gr\xf6\xdf"
                          "e"),
              QString::fromUtf8("Größe"));
}

} // namespace
} // namespace quarle::ui
