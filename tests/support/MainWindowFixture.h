// A main window for headless tests, with everything of its own: a program
// folder (empty unless a test puts programs or language files there), a
// settings store, a model folder, a working folder and scripted services.
// The window is built at once; Start() runs its load, so a test can prepare
// the store or the program folder first. Also the clicks a user makes in the
// lists, and small file helpers.
//
// Header only: it needs quarle_ui, which the support library does not link.
#pragma once

#include "AppState.h"
#include "localisation/GlobalStrings.h"
#include "support/ModalScript.h"
#include "support/ScriptedServices.h"
#include "support/TempSettings.h"
#include "ui/compile/DlgCompile.h"
#include "ui/mainwindow/AnimationsPage.h"
#include "ui/mainwindow/DocumentCommands.h"
#include "ui/mainwindow/FrmMain.h"
#include "ui/mainwindow/ModelFilesPage.h"
#include "ui/mainwindow/ModelFolderList.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>

namespace quarle::test {

inline QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

inline void WriteFile(const QString& path, const QByteArray& bytes = {}) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    file.write(bytes);
}

// What a file dialog answers when the user picks this file.
inline platform::FilePick Pick(const QString& path) {
    return platform::FilePick{path, QFileInfo(path).fileName()};
}

inline QStringList Items(const QListWidget* list) {
    QStringList items;
    for (int i = 0; i < list->count(); ++i) {
        items.append(list->item(i)->text());
    }
    return items;
}

inline QStringList Items(const QComboBox* box) {
    QStringList items;
    for (int i = 0; i < box->count(); ++i) {
        items.append(box->itemText(i));
    }
    return items;
}

// A click on one entry.
inline void Click(QListWidget* list, int row) {
    list->setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
}

// Clicks with the control key: these entries, in this order, are selected.
inline void Select(QListWidget* list, std::initializer_list<int> rows) {
    list->clearSelection();
    for (const int row : rows) {
        list->setCurrentRow(row, QItemSelectionModel::Select);
    }
}

// Selects the one entry with this text.
inline void SelectText(QListWidget* list, const char* text) {
    list->clearSelection();
    const auto found = list->findItems(QString::fromUtf8(text), Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1) << text;
    list->setCurrentItem(found.first(), QItemSelectionModel::Select);
}

class MainWindowFixture : public ::testing::Test {
protected:
    MainWindowFixture() {
        services.ProgramFolderPath = programDir.path();
        form = std::make_unique<ui::FrmMain>(*state, services, settings.Store());
        form->WorkFolder = work.path();
        form->EndProcess = [this] { ++ends; };
    }

    enum class Texts {
        AsLoaded, // what the language file of the program folder gave, if any
        Keys,     // every global string reads as its key ("IDS_ERROR")
    };
    void Start(Texts texts = Texts::AsLoaded) {
        form->Form_Load();
        if (texts == Texts::Keys) {
            for (std::size_t i = 0; i < IdsKeyTable.size(); ++i) {
                state->IdsTexts[i] = IdsKeyTable[i];
            }
        }
    }

    // Before Start: the program folder of the build, with the shipped languages.
    void UseShippedLanguages() { services.ProgramFolderPath = QUARLE_BINARY_DIR "/bin"; }

    // Copies the sample model folder into Models and makes it the model
    // folder, as a pick with CmdBrowseModel would.
    void OpenSampleModel() {
        const QDir sample(QStringLiteral(QUARLE_TEST_DATA "/model"));
        for (const QString& name : sample.entryList(QDir::Files)) {
            ASSERT_TRUE(QFile::copy(sample.filePath(name), InModels(name)));
        }
        state->Doc.ModelPath = models.path().toStdString();
        form->Update();
        // As a load would leave it: no unsaved change to ask about.
        form->Commands().MarkSaved();
        ASSERT_EQ(form->LstFiles->count(), 3);
    }

    QString InModels(const QString& name) const { return QDir(models.path()).filePath(name); }
    QString InWork(const QString& name) const { return QDir(work.path()).filePath(name); }
    QString InProgramDir(const QString& name) const {
        return QDir(programDir.path()).filePath(name);
    }
    Document& Doc() { return state->Doc; }
    QString Text(Ids key) const { return QString::fromStdString(state->IdsTexts[key]); }
    QString QcFile() const { return QString::fromStdString(state->Doc.QcFile); }
    QString ModelName() const { return QString::fromStdString(state->Doc.ModelName); }
    void ShowPage(int page) { form->TabSmd->setCurrentIndex(page); }

    // What the compile dialog showed before it was closed.
    struct CompileSeen {
        QString Title;
        QStringList Rows;
        bool ViewerBoxEnabled = false;
    };
    // Arms a script for the compile dialog the next command opens: it waits
    // for the closing row, keeps what the dialog shows, ticks the viewer box
    // when asked, and presses OK.
    std::unique_ptr<ModalScript> ExpectCompile(CompileSeen& seen, bool tickViewer = false) {
        return std::make_unique<ModalScript>([&seen, tickViewer](QWidget* modal) {
            auto* dialog = qobject_cast<ui::DlgCompile*>(modal);
            ASSERT_NE(dialog, nullptr) << "not the compile dialog";
            ASSERT_TRUE(QTest::qWaitFor([&] { return dialog->OKButton->isEnabled(); }, 20000));
            seen.Title = dialog->windowTitle();
            seen.Rows = Items(dialog->List1);
            seen.ViewerBoxEnabled = dialog->ChkViewAfterCompile->isEnabled();
            dialog->ChkViewAfterCompile->setChecked(tickViewer);
            QTest::mouseClick(dialog->OKButton, Qt::LeftButton);
        });
    }

    QTemporaryDir programDir;
    QTemporaryDir models;
    QTemporaryDir work;
    TempSettings settings;
    ScriptedServices services;
    std::unique_ptr<AppState> state = std::make_unique<AppState>();
    std::unique_ptr<ui::FrmMain> form;
    int ends = 0; // calls of EndProcess
};

} // namespace quarle::test
