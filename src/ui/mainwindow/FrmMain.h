// The main window: menus, the two path fields, the model-files frame with its
// two pages, the compile button and the assistant's controls. It lives for
// the whole run; its load starts the program and its close ends it.
//
// The window is the shell: it builds the controls, starts and stops, opens
// the dialogs and wizards of its menus and holds the assistant. The rest is
// done by parts it owns, each with its own header, which work on the
// controls and reach each other through references given at construction:
//   FrmMain.cpp             start and stop
//   FrmMainDialogs.cpp      the dialogs and wizards opened from the menus
//   FrmMainDesktop.cpp      drops on the window, the title's refresh, the session
//   FrmMainAssistant.cpp    the mascot and its speech box
//   FrmMainAccess.cpp       what the dialogs reach (MainWindowAccess)
//   MainWindowControls      the control tree and the menu tree
//   ModelFilesPage          the path fields, LstFiles, page "Modeldateien"
//   AnimationsPage          page "Animationsdateien"
//   DocumentCommands        new, open, save, compile, recent files, unsaved changes
//   FrmMainReaderHost       what a load asks of the user (held by DocumentCommands)
#pragma once

#include "AppState.h"
#include "platform/Services.h"
#include "platform/SettingsStore.h"
#include "ui/mainwindow/MainWindowControls.h"
#include "ui/mainwindow/MainWindowShell.h"

#include <QGroupBox>
#include <QMainWindow>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <array>
#include <functional>
#include <memory>
#include <string>

class QDragEnterEvent;
class QDragMoveEvent;
class QDropEvent;

namespace quarle::ui {

class AnimationsPage;
class DocumentCommands;
class DlgName;
class FrmCompiledModel;
class FrmMainReaderHost;
class FrmPreview;
class ModelFilesPage;
class ModelFolderList;
class frmAbout;

class FrmMain : public QMainWindow, public MainWindowControls, public MainWindowShell {
    Q_OBJECT

public:
    // Builds the controls in their designed state; nothing of the start runs.
    FrmMain(AppState& state, platform::Services& services, platform::SettingsStore& settings,
            QWidget* parent = nullptr);
    ~FrmMain() override;

    // The start: settings, recent files, a new document, the language.
    void Form_Load();
    // The stop: writes the settings, then calls EndProcess. Runs once, from
    // the close of the window or from MnuDateiBeenden.
    void Form_Unload();
    // Called as the last step of the stop. The application sets it to end
    // the process; tests leave it empty.
    std::function<void()> EndProcess;

    // Where the working files of a load and a compile stand; empty: the
    // process's working directory, or a folder of the user's own where that
    // cannot be written (DocumentCommands::WorkingFolder).
    QString WorkFolder;

    // ---- The parts
    ModelFilesPage& ModelFiles() { return *modelFiles_; }
    AnimationsPage& Animations() { return *animations_; }
    DocumentCommands& Commands() { return *commands_; }
    ModelFolderList& FolderList() { return *folderList_; }
    // What a load asks of the user goes through this host:
    //     ReadQcFile(doc, form.ScriptReaderHost(), workFolder);
    FrmMainReaderHost& ScriptReaderHost();

    // The window shows the document anew: the paths and the body groups.
    void Update();
    // A script named on the command line, opened as the Open command opens it.
    void OpenGivenScript(const QString& path);

    // ---- The assistant
    void ShowWizard(int x, int y, const QString& text);
    void RefreshWizard();
    void SetBusyWizard();
    void SetIdleWizard();
    void MoveWizard(int x, int y);
    void SetWizardAnim(int anim);
    void HideWizard();
    void DisableWizard();
    void ShowText();

    // Opens the language editor on a form (Tag "null": on the global
    // strings) and returns when it closes.
    void Localise(QWidget* obj) override;
    // The form the language editor works on while it is open.
    QPointer<QWidget> LocaliseTarget;

    // ---- Handlers of the shell's menus and buttons
    void MnuDateiPreview_Click();
    void MnuDateiOpenCompiled_Click();
    void MnuDateiBeenden_Click();
    void MnuEinstModel_Click();
    void MnuEinstAllg_Click();
    void MnuWizardsWizAn_Click();
    void MnuWizardsGrWiz_Click();
    void MnuWizardsAnimWiz_Click();
    void MnuHilfeUeber_Click();
    void CmdModeleinst_Click();
    void CmdLocalise_Click();

    // The assistant
    void CmdNext_Click();
    void CmdWizBack_Click();
    void CmdEnd_Click();
    void PicWiz_Click();
    void PicWizClose_Click();
    void PicWizClose_MouseDown(Qt::MouseButton button);
    void PicWizClose_MouseUp(Qt::MouseButton button);
    // Positions in twips inside the speech box.
    void FrmWizSay_MouseDown(Qt::MouseButton button, double x, double y);
    void FrmWizSay_MouseMove(double x, double y);
    void FrmWizSay_MouseUp();
    void TmrAnim_Timer();
    void TmrPlayAnim_Timer();

    // ---- Form state
    // "" while the language editor works on controls, "null" while it works
    // on the global strings.
    QString Tag;
    // Frame chaining of the mascot: 1 a still frame, above 1 the first frame
    // of a loop, negative the last frame of a loop (minus the frame to go
    // back to).
    std::array<i16, 513> WizFrameSteps{};
    // State texts of the assistant.
    QString PicWizTag;                          // the tip on show
    QString TmrAnimTag;                         // the pose state machine
    QString TmrPlayAnimTag;                     // the frame of a loop on show
    QString FrmWizSayTag = QStringLiteral("0"); // "1" while the speech box is dragged
    i16 DragX = 0;
    i16 DragY = 0;

    // The preview window while it is open.
    FrmPreview* OpenFrmPreview() const;
    // Shows a compiled model (document bytes) in the window of compiled
    // models, opened or brought up for it; and that window while it is open.
    void ShowCompiledModel(const std::string& path) override;
    FrmCompiledModel* OpenFrmCompiledModel() const;
    void WriteSettingsNow() override;

    // ---- What the dialogs reach (FrmMainAccess.cpp): the parts answer
    QWidget& Window() override { return *this; }
    std::optional<int> AnimGroup() const override;
    AnimRec* CurrentAnim() override;
    int AnimationRowCount() const override;
    void AppendAnimationRow(const QString& name) override;
    QStringList ModelFileNames() const override;
    void AppendPartRow(const QString& name) override;
    void ShowPaths(const QString& texturePath, const QString& modelPath) override;
    std::optional<std::pair<int, int>> PreviewAnimation() const override;
    std::vector<int> PreviewParts() const override;
    void ShowLanguage() override;
    void ShowLocaliseButton(bool on) override;
    void LocaliseGlobalStringsNext() override;
    void OfferTools(bool compiler, bool editor, bool viewer) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    // A local .qc file is taken anywhere on the window; anything else
    // dragged over it is refused.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool event(QEvent* event) override;
    // Coming back to the window refreshes the list of the model folder.
    void changeEvent(QEvent* event) override;
    // A window larger than designed gives the room to the paths and the lists.
    void resizeEvent(QResizeEvent* event) override;

private:
    void ConnectShell();
    void ConnectAssistant();
    void ConnectDesktop();
    // Accepts or refuses a drag; true when the event was this window's.
    bool TakeDrag(QDropEvent* event);
    // Shows frame anim of the mascot at its place, cut to its outline.
    void ShowWizardFrame(int anim);
    QString IdsText(int key) const;

    AppState& state_;
    platform::Services& services_;
    platform::SettingsStore& settings_;
    bool stopped_ = false;
    // The mascot's pictures are looked for once a run: where they are
    // missing, the idle poses do not look again at every tick.
    bool wizardPicturesSought_ = false;
    // Runs shortly after the user's input: the title's mark follows.
    QTimer* titleCheck_ = nullptr;

    QPointer<frmAbout> about_;
    QPointer<FrmPreview> preview_;
    QPointer<FrmCompiledModel> compiledModel_;
    std::unique_ptr<ModelFolderList> folderList_;
    std::unique_ptr<AnimationsPage> animations_;
    std::unique_ptr<ModelFilesPage> modelFiles_;
    std::unique_ptr<DocumentCommands> commands_;
};

} // namespace quarle::ui
