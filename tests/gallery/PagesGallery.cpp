// The two pages of the main window filled from the sample model folder, as a
// user builds them through the controls, and the two dialogs of the body
// groups. Part of the form gallery (Gallery.cpp calls PagesGallery).
#include "GallerySupport.h"
#include "ui/dialogs/DlgName.h"
#include "ui/dialogs/DlgRenameGroup.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>

namespace {

using quarle::gallery::Fail;
using quarle::gallery::Save;
using quarle::ui::DlgName;
using quarle::ui::DlgRenameGroup;
using quarle::ui::FrmMain;

void SelectFiles(QListWidget* list, std::initializer_list<const char*> names) {
    list->clearSelection();
    for (const char* name : names) {
        const auto found = list->findItems(QString::fromLatin1(name), Qt::MatchExactly);
        if (found.size() != 1) {
            Fail(QStringLiteral("%1 is not listed").arg(QLatin1String(name)));
            continue;
        }
        list->setCurrentItem(found.first(), QItemSelectionModel::Select);
    }
}

} // namespace

// Renders the pages and the dialogs into folder, in the language of
// languageFile.
void PagesGallery(const QString& folder, const char* languageFile) {
    quarle::gallery::Window window(languageFile);
    FrmMain& form = window.Start();
    auto& state = window.State;

    QTemporaryDir model;
    const QDir sample(QStringLiteral(QUARLE_TEST_DATA "/model"));
    for (const QString& name : sample.entryList(QDir::Files)) {
        if (!QFile::copy(sample.filePath(name), QDir(model.path()).filePath(name))) {
            Fail(QStringLiteral("cannot copy %1").arg(name));
        }
    }
    state->Doc.ModelPath = model.path().toStdString();
    state->Doc.TexturePath = model.path().toStdString();
    form.Update();

    // Page 0: the body with its reference mesh, and a head group of three
    // parts, one of them empty and one reversed.
    SelectFiles(form.LstFiles, {"robot_ref"});
    form.CmdAdd->click();
    form.CmdNewGroup->click();
    DlgName* name = form.ModelFiles().OpenDlgName();
    name->TxtName->setText(QStringLiteral("head"));
    Save(name, folder, QStringLiteral("DlgName"));
    name->CmdOK->click();
    form.CmbBodyGroup->setCurrentIndex(1);
    SelectFiles(form.LstFiles, {"robot_head", "robot_helmet"});
    form.CmdAdd->click();
    form.CmdBlank->click();
    form.LstParts->setCurrentRow(1);
    form.ChkReverse->click();
    Save(&form, folder, QStringLiteral("Pages-ModelFiles"));

    {
        DlgRenameGroup rename(*state, window.Services, form.CmbBodyGroup, &form);
        rename.setModal(false);
        rename.show();
        Save(&rename, folder, QStringLiteral("DlgRenameGroup"));
    }

    // Page 1: four animations of group 0, the walk on show with its activity.
    form.TabSmd->setCurrentIndex(1);
    SelectFiles(form.LstFiles, {"idle", "walk", "run", "jump"});
    form.CmdAdd->click();
    form.LstAnimations->setCurrentRow(3);
    form.TxtAnimID->setCurrentIndex(form.TxtAnimID->findText(QStringLiteral("ACT_WALK 1")));
    form.LstFiles->clearSelection();
    Save(&form, folder, QStringLiteral("Pages-Animations"));

    if (state->Doc.SmdFrameCount != 12) {
        Fail(QStringLiteral("walk.smd has %1 frames, not 12").arg(state->Doc.SmdFrameCount));
    }

    // A mod's tree: meshes and animations in subfolders, listed by the
    // names the script gives them.
    QTemporaryDir tree;
    const QDir root(tree.path());
    const struct {
        const char* From;
        const char* To;
    } moves[] = {{"robot_ref", "meshes/robot_ref"},     {"robot_head", "meshes/heads/robot_head"},
                 {"robot_helmet", "meshes/heads/helmet"}, {"idle", "animations/idle"},
                 {"walk", "animations/walk"},          {"run", "animations/run"},
                 {"die_back", "animations/death/die_back"}};
    for (const auto& move : moves) {
        const QString to = root.filePath(QString::fromLatin1(move.To) + QStringLiteral(".smd"));
        root.mkpath(QFileInfo(to).path());
        if (!QFile::copy(sample.filePath(QString::fromLatin1(move.From) + QStringLiteral(".smd")),
                         to)) {
            Fail(QStringLiteral("cannot copy %1").arg(move.To));
        }
    }
    form.Commands().NewDocument();
    form.ModelFiles().SetModelFolder(tree.path()); // as the folder chooser sets it
    form.TabSmd->setCurrentIndex(0);
    SelectFiles(form.LstFiles, {"meshes/robot_ref"});
    form.CmdAdd->click();
    SelectFiles(form.LstFiles, {"meshes/heads/robot_head"});
    Save(&form, folder, QStringLiteral("Pages-ModelFiles-Subfolders"));
    quarle::gallery::ExpectNoPrompts(window.Services,
                                     QStringLiteral("the pages (%1)").arg(languageFile));
}
