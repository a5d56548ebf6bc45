// The model files of the main window: the two path fields, the list of the
// model folder's files (LstFiles) with the buttons that add, delete and blank
// entries on either page, and page "Modeldateien" of TabSmd: the body groups
// and their parts. It writes straight into the document's paths and
// BodyGroups; the animations page takes the buttons' work while it shows.
#pragma once

#include "AppState.h"
#include "document/ModelFolderCache.h"
#include "platform/Services.h"
#include "ui/mainwindow/MainWindowControls.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

class QAction;
class QLineEdit;

namespace quarle::ui {

class AnimationsPage;
class DlgName;
class MainWindowShell;
class ModelFolderList;

class ModelFilesPage : public QObject {
    Q_OBJECT

public:
    ModelFilesPage(AppState& state, platform::Services& services, MainWindowControls& controls,
                   ModelFolderList& folder, AnimationsPage& animations, MainWindowShell& shell);

    // The paths and the body groups as the document holds them; the first
    // group is selected, which shows its parts.
    void Update();

    // The path fields
    void CmdBrowseTexture_Click();
    void CmdBrowseModel_Click();
    void TxtModelpath_Change();
    void TxtModelpath_KeyPress(int keyAscii);
    // A folder typed into either path field, taken when the field is left
    // or Enter pressed: a folder that exists becomes the path, anything
    // else gives way to the path in use.
    void TxtPath_Commit(QLineEdit* field);
    // The texture and model folders as the path buttons and typed paths set
    // them; false (after a message) for a folder the script cannot name.
    bool SetTextureFolder(const QString& folder);
    bool SetModelFolder(const QString& folder);

    // Both pages
    void TabSmd_Click(int previousTab);
    void RefillLstFiles();
    void LstFiles_DblClick();
    void CmdAdd_Click();
    void CmdDelAnimation_Click();
    void CmdBlank_Click();
    // Page "Modeldateien"
    void CmbBodyGroup_Click();
    void CmdNewGroup_Click();
    void CmdDel_Click();
    void CmdRename_Click();
    void LstParts_Click();
    void ChkReverse_Click();

    // "1" while LstParts sets ChkReverse, so that showing a part never
    // changes its flag; empty otherwise.
    QString ChkReverseTag;
    // The dialog of CmdNewGroup while it is open (it does not block the window).
    DlgName* OpenDlgName() const;
    // Which files of the model folder are meshes, remembered between refills.
    const ModelFolderCache& ModelFolderKinds() const { return modelFolderKinds_; }

    // The part on show per body group (index 0 for group 1), for the 3D
    // preview: the selected entry of LstParts for the selected group, the
    // first part for the others.
    std::vector<int> PreviewParts() const;
    // The entries of LstFiles, as shown.
    QStringList ModelFileNames() const;
    void AppendPartRow(const QString& name);
    // The path fields as a wizard sets them; the folder's files are listed.
    void ShowPaths(const QString& texturePath, const QString& modelPath);

private:
    void ConnectModelFilesPage();
    // The selected body group, BodyGroups(index + 1), or nothing.
    std::optional<int> SelectedBodyGroup() const;
    void AddPartsFromFiles();
    void DeleteSelectedParts();
    // Enables or disables what needs a model folder.
    void SetModelFolderKnown(bool known);
    // The texture field's note that its folder holds no bitmaps yet.
    void ShowTextureFolderNote();

    AppState& state_;
    platform::Services& services_;
    MainWindowControls& c_;
    ModelFolderList& folder_;
    AnimationsPage& animations_;
    MainWindowShell& shell_;
    QAction* TxtTexturepathNote = nullptr;
    QPointer<DlgName> dlgName_;
    ModelFolderCache modelFolderKinds_;
};

} // namespace quarle::ui
