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
#include <algorithm>
#include <gtest/gtest.h>

namespace quarle::platform {
namespace {

using test::ModalScript;

TEST(Services, FiltersAsTheFormsWriteThem) {
    EXPECT_EQ(QtFileFilter("Bitmap|*.bmp"), "Bitmap (*.bmp)");
    EXPECT_EQ(QtFileFilter("Model|*.smd"), "Model (*.smd)");
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

TEST(Services, FolderRandomAndClock) {
    QtServices services;
    const QString folder = services.ProgramFolder();
    EXPECT_EQ(QDir::fromNativeSeparators(folder), QCoreApplication::applicationDirPath());
    EXPECT_FALSE(folder.endsWith('/'));
    EXPECT_FALSE(folder.endsWith('\\'));

    double low = 1, high = 0;
    for (int i = 0; i < 2000; ++i) {
        const double r = services.Rnd();
        ASSERT_GE(r, 0.0);
        ASSERT_LT(r, 1.0);
        low = std::min(low, r);
        high = std::max(high, r);
    }
    EXPECT_LT(low, 0.05);
    EXPECT_GT(high, 0.95);

    const double t = services.Timer();
    EXPECT_GE(t, 0.0);
    EXPECT_LT(t, 86400.0);
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

// Clicks the button with the given text in a message box.
ModalScript::Script Click(const QString& text, QString* seenText = nullptr,
                          QString* seenTitle = nullptr, QMessageBox::Icon* seenIcon = nullptr) {
    return [=](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (box == nullptr) {
            modal->close();
            FAIL() << "not a message box";
        }
        if (seenText) {
            *seenText = box->text();
        }
        if (seenTitle) {
            *seenTitle = box->windowTitle();
        }
        if (seenIcon) {
            *seenIcon = box->icon();
        }
        for (QAbstractButton* b : box->buttons()) {
            if (box->standardButton(b) != QMessageBox::NoButton &&
                b->text().remove('&').compare(text, Qt::CaseInsensitive) == 0) {
                b->click();
                return;
            }
        }
        ADD_FAILURE() << "no button " << text.toStdString();
        box->reject();
    };
}

TEST(Services, MessageBoxButtonSetsAndAnswers) {
    QtServices services;
    QString text, title;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    {
        ModalScript script(Click("Cancel", &text, &title, &icon));
        EXPECT_EQ(services.MsgBox("Pfad fehlt", Buttons::OkCancel, Icon::Question, "Suche"),
                  Answer::Cancel);
        EXPECT_TRUE(script.Ran());
        EXPECT_EQ(text, "Pfad fehlt");
        EXPECT_EQ(title, "Suche");
        EXPECT_EQ(icon, QMessageBox::Question);
    }
    {
        ModalScript script(Click("OK", nullptr, nullptr, &icon));
        EXPECT_EQ(services.MsgBox("x", Buttons::Ok, Icon::Exclamation, "t"), Answer::Ok);
        EXPECT_EQ(icon, QMessageBox::Warning);
    }
    {
        ModalScript script(Click("No"));
        EXPECT_EQ(services.MsgBox("x", Buttons::YesNoCancel, Icon::Critical, "t"), Answer::No);
    }
    {
        ModalScript script(Click("Ignore"));
        EXPECT_EQ(services.MsgBox("x", Buttons::AbortRetryIgnore, Icon::None, "t"), Answer::Ignore);
    }
    {
        ModalScript script(Click("Retry"));
        EXPECT_EQ(services.MsgBox("x", Buttons::RetryCancel, Icon::Information, "t"),
                  Answer::Retry);
    }
    {
        // Closing a Yes/No box by its close box answers No.
        ModalScript script([](QWidget* modal) { modal->close(); });
        EXPECT_EQ(services.MsgBox("x", Buttons::YesNo, Icon::Question, "t"), Answer::No);
    }
}

// Types the path into the dialog's file name field and accepts, as a user
// would. (selectFile() leaves the field alone once it has the focus.)
void Choose(QFileDialog* dialog, const QString& path) {
    auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
    if (edit == nullptr) {
        dialog->reject();
        FAIL() << "no file name field";
    }
    edit->setText(path);
    static_cast<QDialog*>(dialog)->accept(); // QFileDialog hides it
    if (dialog->isVisible()) {
        ADD_FAILURE() << "the dialog refused " << path.toStdString();
        dialog->reject();
    }
}

TEST(Services, FileDialogsGivePathAndNameAndNothingAfterACancel) {
    QTemporaryDir dir;
    const QString file = dir.filePath("body.smd");
    QFile(file).open(QIODevice::WriteOnly);
    QtServices services;
    QString filters;
    {
        ModalScript script([&](QWidget* modal) {
            auto* dialog = qobject_cast<QFileDialog*>(modal);
            if (dialog == nullptr) {
                modal->close();
                FAIL() << "not a file dialog";
            }
            filters = dialog->nameFilters().join(";;");
            Choose(dialog, file);
        });
        const auto pick = services.ShowOpen("Modellpfad", "Model|*.smd", dir.path());
        EXPECT_TRUE(script.Ran());
        ASSERT_TRUE(pick.has_value());
        EXPECT_EQ(QDir::fromNativeSeparators(pick->FileName), file);
        EXPECT_EQ(pick->FileTitle, "body.smd");
        EXPECT_EQ(filters, "Model (*.smd)");
    }
    {
        ModalScript script([](QWidget* modal) { qobject_cast<QDialog*>(modal)->reject(); });
        EXPECT_FALSE(services.ShowOpen("Modellpfad", "Model|*.smd", dir.path()).has_value());
        EXPECT_TRUE(script.Ran());
    }
    {
        ModalScript script([&](QWidget* modal) {
            auto* dialog = qobject_cast<QFileDialog*>(modal);
            if (dialog == nullptr) {
                modal->close();
                FAIL() << "not a file dialog";
            }
            EXPECT_EQ(dialog->acceptMode(), QFileDialog::AcceptSave);
            Choose(dialog, dir.filePath("neu.qc"));
        });
        const auto pick = services.ShowSave("Speichern unter...", "QC|*.qc", dir.path());
        ASSERT_TRUE(pick.has_value());
        EXPECT_EQ(pick->FileTitle, "neu.qc");
    }
}

} // namespace
} // namespace quarle::platform
