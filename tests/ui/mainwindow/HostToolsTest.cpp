// The tools a start finds on a host other than Windows, the notice of a
// first start without a compiler, and the marks beside the paths in the
// settings dialog. The search path and home are stand-ins of the test's own.
#include "support/MainWindowFixture.h"
#include "ui/localisation/DlgSettings.h"
#include "ui/localisation/Messages.h"
#include "ui/mainwindow/ShellSettings.h"

#include <QLabel>
#include <QLineEdit>

namespace quarle::ui {
namespace {

#ifndef Q_OS_WIN

using platform::Answer;

// A stand-in program (an empty file) under root; executable unless told.
QString Tool(const QTemporaryDir& root, const QString& path, bool executable = true) {
    const QString full = QDir(root.path()).filePath(path);
    QDir().mkpath(QFileInfo(full).path());
    test::WriteFile(full);
    QFile::setPermissions(full, executable ? QFile::permissions(full) | QFile::ExeOwner
                                           : QFile::ReadOwner | QFile::WriteOwner);
    return full;
}

struct Row {
    const char* Case;
    QStringList Tools; // under the fake root: "bin/..." on PATH, "home/..." in the home
    QString Visual, Editor;
    QStringList Stored;                   // compiler, viewer, editor as stored; empty: none stored
    QString Compiler, Viewer, TextEditor; // expected, under the root ("@" the program folder)
    bool Notice;
};

TEST(HostToolsTest, DefaultsComeFromTheHostOnlyWhereTheStoreIsEmpty) {
    const QString sdk = QStringLiteral("home/.steam/steam/steamapps/common/Half-Life SDK/");
    const QString wineTools = QStringLiteral("home/.wine/drive_c/half-life/tools/");
    const QList<Row> rows{
        {"native tools on the path; a terminal $VISUAL is passed over",
         {"bin/studiomdl", "bin/hlmv", "bin/gedit"},
         "vim",
         "gedit --new-window",
         {},
         "bin/studiomdl",
         "bin/hlmv",
         "bin/gedit",
         false},
        {"Windows tools in the home with wine; .local/bin comes first",
         {"bin/wine", "home/.local/bin/studiomdl.exe", wineTools + "studiomdl.exe",
          sdk + "Model Viewer/hlmv.exe"},
         "",
         "nano",
         {},
         "home/.local/bin/studiomdl.exe",
         sdk + "Model Viewer/hlmv.exe",
         "xdg-open",
         false},
        {"Windows tools without wine are no tools; the preview is the viewer",
         {wineTools + "studiomdl.exe", wineTools + "hlmv.exe"},
         "",
         "",
         {},
         "@/studiomdl.exe",
         "<preview>",
         "xdg-open",
         true},
        {"a stored Windows viewer beside the program that is not there gives way",
         {"bin/hlmv"},
         "",
         "",
         {"/opt/x/studiomdl", "@/mdlv.exe", "kate"},
         "/opt/x/studiomdl",
         "bin/hlmv",
         "kate",
         false},
        {"a store with values keeps them, startable or not",
         {"bin/studiomdl", "bin/hlmv", "bin/gedit"},
         "gedit",
         "",
         {"/opt/x/studiomdl", "/opt/x/hlmv", "kate"},
         "/opt/x/studiomdl",
         "/opt/x/hlmv",
         "kate",
         false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.Case);
        QTemporaryDir root;
        QTemporaryDir programDir;
        for (const QString& tool : row.Tools) {
            Tool(root, tool);
        }
        const QDir fake(root.path());
        test::TempSettings settings;
        settings.Store().Set(QStringLiteral("ToolNotice"), QString()); // a first start
        if (!row.Stored.isEmpty()) {
            settings.Store().Set(QStringLiteral("StudioMdl"), row.Stored[0]);
            settings.Store().Set(QStringLiteral("ModelViewer"),
                                 row.Stored[1].startsWith(QLatin1Char('@'))
                                     ? programDir.path() + row.Stored[1].mid(1)
                                     : row.Stored[1]);
            settings.Store().Set(QStringLiteral("TextEditor"), row.Stored[2]);
        }
        const auto expected = [&](const QString& path) {
            if (path.startsWith(QLatin1Char('@'))) {
                return (programDir.path() + path.mid(1)).toStdString();
            }
            return (path.contains(QLatin1Char('/')) && !path.startsWith(QLatin1Char('/'))
                        ? fake.filePath(path)
                        : path)
                .toStdString();
        };

        // Two starts on the same store: the notice comes once.
        for (int start = 0; start < 2; ++start) {
            test::ScriptedServices services;
            services.ProgramFolderPath = programDir.path();
            services.Env = {fake.filePath("bin") + ":/nonexistent", fake.filePath("home"),
                            row.Visual, row.Editor, services.Env.Language};
            if (row.Notice && start == 0) {
                services.QueueMsgBox(Answer::No);
            }
            auto state = std::make_unique<AppState>();
            FrmMain form(*state, services, settings.Store());
            form.Form_Load();
            EXPECT_EQ(state->Settings.StudioMdlPath, expected(row.Compiler));
            EXPECT_EQ(state->Settings.ModelViewerPath, expected(row.Viewer));
            EXPECT_EQ(state->Settings.TextEditorPath, expected(row.TextEditor));
            EXPECT_EQ(services.Prompts().size(), row.Notice && start == 0 ? 1 : 0) << start;
            if (!services.Prompts().isEmpty()) {
                EXPECT_EQ(services.Prompts()[0].Text,
                          MessageText(*state, MSG_TOOLS_FIRST_START,
                                      {QString::fromStdString(expected(row.Compiler))}));
            }
            services.VerifyAllUsed();
        }
    }
}

class HostToolsDialogTest : public test::MainWindowFixture {};

TEST_F(HostToolsDialogTest, TheNoticeOpensTheSettingsWhoseMarksFollowTheText) {
    QTemporaryDir root;
    const QString compiler = Tool(root, "bin/studiomdl");
    const QString notRunnable = Tool(root, "home/tools/studiomdl", false);
    const QString windows = Tool(root, "home/tools/studiomdl.exe");
    const QString wineDir = QFileInfo(Tool(root, "winebin/wine")).path();
    const QString path = QDir(root.path()).filePath("bin");
    // The compiler is not on the search path of the start.
    services.Env = {QStringLiteral("/nonexistent"), QDir(root.path()).filePath("home"), {}, {},
                    services.Env.Language};
    settings.Store().Set(QStringLiteral("ToolNotice"), QString());

    struct Typed {
        QString Text;
        bool Wine;
        bool Startable;
        Msg Reason;
        QString Shown; // the program the tip names
    };
    const QList<Typed> typed{
        {"/nowhere/studiomdl", false, false, MSG_TOOL_MISSING, "/nowhere/studiomdl"},
        {compiler, false, true, MSG_TOOL_STARTABLE, compiler},
        {"studiomdl", false, true, MSG_TOOL_STARTABLE, compiler},
        {notRunnable, false, false, MSG_TOOL_NOT_EXECUTABLE, notRunnable},
        {windows, false, false, MSG_TOOL_NO_WINE, windows},
        {windows, true, true, MSG_TOOL_THROUGH_WINE, windows},
    };
    const auto expectMark = [this](QLabel* mark, bool startable, Msg reason, const QString& shown) {
        EXPECT_EQ(mark->text(), startable ? QStringLiteral("\u2714") : QStringLiteral("\u2718"));
        EXPECT_EQ(mark->toolTip().section(QLatin1Char('\n'), 1),
                  MessageText(*state, reason, {shown}));
    };
    test::ModalScript script([&](QWidget* modal) {
        auto* dialog = qobject_cast<DlgSettings*>(modal);
        ASSERT_NE(dialog, nullptr);
        // As found at the start: no compiler, no viewer, the desktop's opener
        // not on this search path.
        expectMark(dialog->ImageStudioMDL, false, MSG_TOOL_MISSING, dialog->TxtStudioMDL->text());
        expectMark(dialog->ImageEditor, false, MSG_TOOL_MISSING, QStringLiteral("xdg-open"));
        for (const Typed& t : typed) {
            SCOPED_TRACE(t.Text.toStdString());
            services.Env.Path = t.Wine ? path + QLatin1Char(':') + wineDir : path;
            dialog->TxtStudioMDL->clear();
            dialog->TxtStudioMDL->setText(t.Text);
            expectMark(dialog->ImageStudioMDL, t.Startable, t.Reason, t.Shown);
        }
        dialog->CancelButton->click();
    });
    services.QueueMsgBox(Answer::Yes);
    Start();
    EXPECT_TRUE(script.Ran());
    EXPECT_EQ(services.Prompts().size(), 1);
}

#endif

} // namespace
} // namespace quarle::ui
