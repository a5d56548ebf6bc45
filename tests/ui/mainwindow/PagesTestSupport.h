// Shared by the tests of the two pages: a started main window with the
// shipped German texts, a copy of the sample model folder of its own, and
// the clicks a user makes in the lists.
#pragma once

#include "AppState.h"
#include "support/ScriptedServices.h"
#include "support/TempSettings.h"
#include "ui/mainwindow/FrmMain.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QItemSelectionModel>
#include <QListWidget>
#include <QTabWidget>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>

namespace quarle::ui::pages {

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

// Selects the entries with these texts.
inline void SelectTexts(QListWidget* list, std::initializer_list<const char*> texts) {
    list->clearSelection();
    for (const char* text : texts) {
        const auto found = list->findItems(QString::fromLatin1(text), Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << text;
        list->setCurrentItem(found.first(), QItemSelectionModel::Select);
    }
}

class PagesTest : public ::testing::Test {
protected:
    PagesTest() {
        form = std::make_unique<FrmMain>(*state, services, settings.Store());
        form->Form_Load();
    }

    // Copies the sample folder and makes it the model folder, as a pick with
    // CmdBrowseModel would.
    void OpenModelFolder() {
        const QDir sample(QStringLiteral(QUARLE_TEST_DATA "/model"));
        for (const QString& name : sample.entryList(QDir::Files)) {
            ASSERT_TRUE(QFile::copy(sample.filePath(name), Model(name)));
        }
        state->Doc.ModelPath = model.path().toStdString();
        form->Update();
        ASSERT_EQ(form->LstFiles->count(), 3);
    }

    QString Model(const QString& name) const { return QDir(model.path()).filePath(name); }

    void ShowPage(int page) { form->TabSmd->setCurrentIndex(page); }

    Document& Doc() { return state->Doc; }

    QTemporaryDir model;
    test::TempSettings settings;
    test::ScriptedServices services;
    std::unique_ptr<AppState> state = std::make_unique<AppState>();
    std::unique_ptr<FrmMain> form;
};

} // namespace quarle::ui::pages
