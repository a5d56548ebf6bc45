#include "platform/Services.h"

#include "support/ModalScript.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace quarle::platform {
namespace {

using test::ModalScript;

TEST(Services, FiltersAsTheFormsWriteThem) {
    EXPECT_EQ(QtFileFilter("Bitmap|*.bmp"), "Bitmap (*.bmp)");
    // "*.*" is every file, also those without an extension.
    EXPECT_EQ(QtFileFilter("*.*|*.*"), "*.* (*)");
    EXPECT_EQ(QtFileFilter("QC|*.qc|Alle|*.*"), "QC (*.qc);;Alle (*)");
    EXPECT_EQ(QtFileFilter("Bilder|*.bmp;*.jpg"), "Bilder (*.bmp *.jpg)");
    EXPECT_EQ(QtFileFilter(""), "");
}

TEST(Services, ExeToolsRunThroughWineOffWindows) {
    const Launch exe = LaunchFor("/opt/hl/studiomdl.exe", {"/m/a.qc"});
    const Launch upper = LaunchFor("c:\\HL\\MDLV.EXE", {});
    const Launch native = LaunchFor("gedit", {"a b.qc"});
#ifdef Q_OS_WIN
    EXPECT_EQ(exe.Program, "/opt/hl/studiomdl.exe");
    EXPECT_EQ(exe.Arguments, QStringList{"/m/a.qc"});
#else
    EXPECT_EQ(exe.Program, "wine");
    EXPECT_EQ(exe.Arguments, QStringList({"/opt/hl/studiomdl.exe", "/m/a.qc"}));
    EXPECT_EQ(upper.Program, "wine");
    EXPECT_EQ(upper.Arguments, QStringList{"c:\\HL\\MDLV.EXE"});
#endif
    // An argument with a blank stays one argument: no shell splits it.
    EXPECT_EQ(native.Program, "gedit");
    EXPECT_EQ(native.Arguments, QStringList{"a b.qc"});
}

TEST(Services, ProgramExistsOnThePathOrAsAFile) {
    QTemporaryDir dir;
    const QString file = dir.filePath("mdlv.exe");
    QFile(file).open(QIODevice::WriteOnly);
#ifndef Q_OS_WIN
    EXPECT_TRUE(ProgramExists("sh")); // bare name, found on PATH
#endif
    EXPECT_FALSE(ProgramExists("no-such-program-quarle"));
    EXPECT_TRUE(ProgramExists(file)); // a path as it stands
    EXPECT_FALSE(ProgramExists(dir.filePath("gone.exe")));
    EXPECT_FALSE(ProgramExists(dir.path())); // a folder is no program
    EXPECT_FALSE(ProgramExists(""));
}

TEST(Services, DataFolderBesideTheProgramOrInstalled) {
    QTemporaryDir root;
    const QDir dir(root.path());
    ASSERT_TRUE(dir.mkpath("portable") && dir.mkpath("usr/bin") && dir.mkpath("usr/share/quarle") &&
                dir.mkpath("bare"));
    // Beside an installed layout: a folder named like a language file is
    // none, and the case of a language file's name does not count.
    ASSERT_TRUE(dir.mkpath("opt/bin/english.lng") && dir.mkpath("opt/share/quarle") &&
                dir.mkpath("upper/bin") && dir.mkpath("upper/share/quarle"));
    for (const char* file :
         {"portable/english.lng", "usr/share/quarle/english.lng", "upper/bin/DEUTSCH.LNG"}) {
        QFile lng(dir.filePath(file));
        ASSERT_TRUE(lng.open(QIODevice::WriteOnly));
    }
    const auto data = [&](const char* exe) {
        return QDir::fromNativeSeparators(DataFolderOf(dir.filePath(exe)));
    };
    EXPECT_EQ(data("portable"), QDir(dir.filePath("portable")).absolutePath());
    EXPECT_EQ(data("usr/bin"), QDir(dir.filePath("usr/share/quarle")).canonicalPath());
    EXPECT_EQ(data("bare"), QDir(dir.filePath("bare")).absolutePath());
    EXPECT_EQ(data("opt/bin"), QDir(dir.filePath("opt/share/quarle")).canonicalPath());
    EXPECT_EQ(data("upper/bin"), QDir(dir.filePath("upper/bin")).absolutePath());
    // The build folder holds its language files beside the executable.
    QtServices services;
    const QString folder = services.ProgramFolder();
    EXPECT_EQ(QDir::fromNativeSeparators(folder), QCoreApplication::applicationDirPath());
    EXPECT_FALSE(folder.endsWith('/') || folder.endsWith('\\'));
}

#ifndef Q_OS_WIN
TEST(Services, StartProgramDetachedReportsAFailedStart) {
    QtServices services;
    QTemporaryDir dir;
    const QString marker = dir.filePath("started");
    EXPECT_TRUE(services.StartProgram("touch", {marker}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(marker); }, 5000));
    EXPECT_FALSE(services.StartProgram(dir.filePath("no-such-program"), {}));
}
#endif

TEST(Services, MessageBoxButtonSetsAndAnswers) {
    QtServices services;
    const struct {
        Buttons buttons;
        Icon icon;
        const char* press; // a button's text; nullptr: the close box
        Answer answer;
        QMessageBox::Icon shown;
    } rows[] = {
        {Buttons::OkCancel, Icon::Question, "Cancel", Answer::Cancel, QMessageBox::Question},
        {Buttons::Ok, Icon::Exclamation, "OK", Answer::Ok, QMessageBox::Warning},
        {Buttons::YesNoCancel, Icon::Critical, "No", Answer::No, QMessageBox::Critical},
        {Buttons::AbortRetryIgnore, Icon::None, "Ignore", Answer::Ignore, QMessageBox::NoIcon},
        {Buttons::RetryCancel, Icon::Information, "Retry", Answer::Retry, QMessageBox::Information},
        {Buttons::YesNo, Icon::Question, nullptr, Answer::No, QMessageBox::Question},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.press ? row.press : "close box");
        QString text, title;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        ModalScript script([&](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            if (box == nullptr) {
                modal->close();
                FAIL() << "not a message box";
            }
            text = box->text();
            title = box->windowTitle();
            icon = box->icon();
            if (row.press == nullptr) {
                box->close();
                return;
            }
            for (QAbstractButton* b : box->buttons()) {
                if (b->text().remove('&').compare(row.press, Qt::CaseInsensitive) == 0) {
                    b->click();
                    return;
                }
            }
            ADD_FAILURE() << "no button " << row.press;
            box->reject();
        });
        EXPECT_EQ(services.MsgBox("Pfad fehlt", row.buttons, row.icon, "Suche"), row.answer);
        EXPECT_TRUE(script.Ran());
        EXPECT_EQ(text, "Pfad fehlt");
        EXPECT_EQ(title, "Suche");
        EXPECT_EQ(icon, row.shown);
    }
}

// Answers the next file dialog: types the path into its file name field and
// accepts, as a user would (selectFile() leaves the field alone once it has
// the focus), or cancels for an empty path. Keeps the dialog's filters and mode.
std::unique_ptr<ModalScript> AnswerFileDialog(const QString& path, QString* filters = nullptr,
                                              QFileDialog::AcceptMode* mode = nullptr) {
    return std::make_unique<ModalScript>([=](QWidget* modal) {
        auto* dialog = qobject_cast<QFileDialog*>(modal);
        auto* edit = dialog ? dialog->findChild<QLineEdit*>("fileNameEdit") : nullptr;
        if (edit == nullptr) {
            modal->close();
            FAIL() << "not a file dialog with a name field";
        }
        if (filters) {
            *filters = dialog->nameFilters().join(";;");
        }
        if (mode) {
            *mode = dialog->acceptMode();
        }
        if (path.isEmpty()) {
            dialog->reject();
            return;
        }
        edit->setText(path);
        static_cast<QDialog*>(dialog)->accept(); // QFileDialog hides it
        if (dialog->isVisible()) {
            ADD_FAILURE() << "the dialog refused " << path.toStdString();
            dialog->reject();
        }
    });
}

TEST(Services, FileDialogsGivePathAndNameAndNothingAfterACancel) {
    QTemporaryDir dir;
    const QString file = dir.filePath("body.smd");
    QFile(file).open(QIODevice::WriteOnly);
    QtServices services;
    QString filters;
    QFileDialog::AcceptMode mode = QFileDialog::AcceptSave;
    {
        const auto script = AnswerFileDialog(file, &filters, &mode);
        const auto pick = services.ShowOpen("Modellpfad", "Model|*.smd", dir.path());
        ASSERT_TRUE(pick.has_value());
        EXPECT_EQ(QDir::fromNativeSeparators(pick->FileName), file);
        EXPECT_EQ(pick->FileTitle, "body.smd");
        EXPECT_EQ(filters, "Model (*.smd)");
        EXPECT_EQ(mode, QFileDialog::AcceptOpen);
    }
    {
        const auto script = AnswerFileDialog({});
        EXPECT_FALSE(services.ShowOpen("Modellpfad", "Model|*.smd", dir.path()).has_value());
        EXPECT_TRUE(script->Ran());
    }
    {
        // A file that does not exist yet, in a dialog for saving.
        const auto script = AnswerFileDialog(dir.filePath("neu.qc"), nullptr, &mode);
        const auto pick = services.ShowSave("Speichern unter...", "QC|*.qc", dir.path());
        ASSERT_TRUE(pick.has_value());
        EXPECT_EQ(pick->FileTitle, "neu.qc");
        EXPECT_EQ(mode, QFileDialog::AcceptSave);
    }
}

TEST(Services, ASaveTakesATypedNameWithQuotesAsItStands) {
    QTemporaryDir dir;
    ASSERT_TRUE(QDir(dir.path()).mkdir("sub"));
    QtServices services;
    for (const QString typed : {"say \"hi\".qc", "\"sub\"x.qc", "a\"sub/b\".qc", "sub/\"q\""}) {
        const auto script = AnswerFileDialog(typed);
        const auto pick = services.ShowSave("Speichern unter...", "QC|*.qc", dir.path());
        ASSERT_TRUE(pick.has_value()) << typed.toStdString();
        EXPECT_EQ(QDir::fromNativeSeparators(pick->FileName), dir.filePath(typed));
        EXPECT_EQ(pick->FileTitle, QFileInfo(typed).fileName());
    }
}

} // namespace
} // namespace quarle::platform
