// The main window: menus, the two path fields, the model-files frame with its
// two pages, the compile button and the assistant's controls. It lives for
// the whole run; its load starts the program and its close ends it.
//
// The window's behaviour is spread over several files so that each area can
// grow on its own:
//   FrmMain.cpp            start and stop, Update, NewDir, new document,
//                          recent files, path buttons, the hidden file list
//   FrmMainControls.cpp    the control tree and the menu tree
//   FrmMainModelFiles.cpp  page "Modeldateien" and what both pages share
//   FrmMainAnimations.cpp  page "Animationsdateien"
//   FrmMainFile.cpp        open, save, compile, viewer, editor, recent entries
//   FrmMainDialogs.cpp     the dialogs and wizards opened from the menus
//   FrmMainAssistant.cpp   the mascot and its speech box
#pragma once

#include "AppState.h"
#include "document/LoadFindings.h"
#include "document/ModelFolderCache.h"
#include "platform/Services.h"
#include "platform/SettingsStore.h"
#include "ui/common/MainWindowAccess.h"
#include "ui/mainwindow/FrmMainReaderHost.h"

#include <QGroupBox>
#include <QList>
#include <QMainWindow>
#include <QPixmap>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QAction;
class QCheckBox;
class QComboBox;
class QDragEnterEvent;
class QDragMoveEvent;
class QDropEvent;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QScrollBar;
class QTabWidget;

namespace quarle::ui {

class DlgName;
class FrmPreview;
class FrmCompiledModel;
class frmAbout;

class FrmMain : public QMainWindow, public MainWindowAccess {
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

    // ---- Public operations other forms and the script reader use
    void Update();
    // The assistant.
    void ShowWizard(int x, int y, const QString& text);
    void RefreshWizard();
    void SetBusyWizard();
    void SetIdleWizard();
    void MoveWizard(int x, int y);
    void SetWizardAnim(int anim);
    void HideWizard();
    void DisableWizard();
    void ShowText();
    // Asks for a replacement of a folder that does not exist: the folder of
    // a file the user picks, or "0" when the user gives up.
    std::string NewDir(const std::string& oldDir, const std::string& extra);
    // Resets the document, empties LstParts, shows the result.
    void InitVars();
    // Opens the language editor on a form (Tag "null": on the global
    // strings) and returns when it closes.
    void Localise(QWidget* obj);
    // The form the language editor works on while it is open.
    QPointer<QWidget> LocaliseTarget;

    // The recent-file list: QcFile goes on top unless it is already listed.
    void PushRecentFile();
    void ShowRecentFiles();

    // The hidden file list of the model folder ("*.smd" files, any case).
    // A folder that does not exist is refused and the old list kept.
    bool SetFileListPath(const QString& folder);
    void FileListRefresh();
    QString FileListPath() const { return fileListPath_; }

    // ---- Handlers (control and event)
    void MnuDateiNeu_Click();
    void MnuDateiOeffnen_Click();
    void MnuDateiSpeichern_Click();
    void MnuDateiSpeichernunter_Click();
    void MnuDateiComp_Click();
    void MnuDateiView_Click();
    void MnuDateiViewCode_Click();
    void MnuDateiPreview_Click();
    void MnuDateiOpenCompiled_Click();
    void MnuDateiLast_Click(int i); // i: 0 for MnuDateiLast1 .. 3 for MnuDateiLast4
    void MnuDateiLast1_Click() { MnuDateiLast_Click(0); }
    void MnuDateiLast2_Click() { MnuDateiLast_Click(1); }
    void MnuDateiLast3_Click() { MnuDateiLast_Click(2); }
    void MnuDateiLast4_Click() { MnuDateiLast_Click(3); }
    void MnuDateiBeenden_Click();
    void MnuEinstModel_Click();
    void MnuEinstAllg_Click();
    void MnuWizardsWizAn_Click();
    void MnuWizardsGrWiz_Click();
    void MnuWizardsAnimWiz_Click();
    void MnuHilfeUeber_Click();

    void CmdModeleinst_Click();
    void CmdCompile_Click();
    void CmdLocalise_Click();

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
    // Page "Animationsdateien"
    void CmdAnimPfeill_Click();
    void CmdAnimPfeilr_Click();
    void TxtAnimNr_Change();
    void LstAnimations_Click();
    void TxtAnimName_Change();
    void TxtAnimID_Change();
    void VScrAnim_Change();
    void CmdAnimExt_Click();

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

    // ---- Controls, in the order they are registered
    QPushButton* CmdLocalise = nullptr;
    QPushButton* CmdModeleinst = nullptr;
    QPushButton* CmdCompile = nullptr;

    QGroupBox* FrmPaths = nullptr;
    QLabel* LblTexturepath = nullptr;
    QLineEdit* TxtTexturepath = nullptr;
    QPushButton* CmdBrowseTexture = nullptr;
    QLabel* LblModelpath = nullptr;
    QLineEdit* TxtModelpath = nullptr;
    QPushButton* CmdBrowseModel = nullptr;

    QGroupBox* FrmModelfiles = nullptr;
    QListWidget* LstFiles = nullptr;
    QListWidget* FileList = nullptr; // hidden: the files of the model folder
    QPushButton* CmdAdd = nullptr;
    QPushButton* CmdDelAnimation = nullptr;
    QPushButton* CmdBlank = nullptr;
    QTabWidget* TabSmd = nullptr;

    // Page 0 of TabSmd
    QLabel* LblParameter = nullptr;
    QComboBox* CmbBodyGroup = nullptr;
    QPushButton* CmdNewGroup = nullptr;
    QListWidget* LstParts = nullptr;
    QCheckBox* ChkReverse = nullptr;
    QPushButton* CmdDel = nullptr;
    QPushButton* CmdRename = nullptr;

    // Page 1 of TabSmd
    QListWidget* LstAnimations = nullptr;
    QScrollBar* VScrAnim = nullptr;
    QPushButton* CmdAnimPfeill = nullptr;
    QLineEdit* TxtAnimNr = nullptr;
    QPushButton* CmdAnimPfeilr = nullptr;
    QLineEdit* TxtAnimName = nullptr;
    QComboBox* TxtAnimID = nullptr;
    QLineEdit* TxtAnimDatei = nullptr;
    QPushButton* CmdAnimExt = nullptr;
    QLabel* LblAnimGroup = nullptr;
    QLabel* LblAnimName = nullptr;
    QLabel* LblAnimID = nullptr;
    QLabel* LblSMDFile = nullptr;

    // The assistant
    QGroupBox* FrmWizSay = nullptr;
    QFrame* ShpTitel = nullptr;
    QLabel* PicWizClose = nullptr;
    QPlainTextEdit* TxtWizSay = nullptr;
    QPushButton* CmdWizBack = nullptr;
    QPushButton* CmdNext = nullptr;
    QPushButton* CmdEnd = nullptr;
    QPlainTextEdit* TxtWizSayShadow = nullptr;
    QLabel* PicWiz = nullptr;
    QTimer* TmrAnim = nullptr;
    QTimer* TmrPlayAnim = nullptr;
    QList<QPixmap> ImgLstMain;     // close box up, close box pressed
    QList<QPixmap> ImgLstWizAnims; // the mascot's frames 0..9

    // Menus
    QMenu* MnuDatei = nullptr;
    QAction* MnuDateiNeu = nullptr;
    QAction* MnuDateiOeffnen = nullptr;
    QAction* MnuDateiSpeichern = nullptr;
    QAction* MnuDateiSpeichernunter = nullptr;
    QAction* str = nullptr;
    QAction* MnuDateiComp = nullptr;
    QAction* MnuDateiView = nullptr;
    QAction* MnuDateiViewCode = nullptr;
    QAction* MnuDateiPreview = nullptr;
    QAction* MnuDateiOpenCompiled = nullptr;
    QAction* MnuB = nullptr;
    QAction* MnuDateiLast1 = nullptr;
    QAction* MnuDateiLast2 = nullptr;
    QAction* MnuDateiLast3 = nullptr;
    QAction* MnuDateiLast4 = nullptr;
    QAction* mnustrich = nullptr;
    QAction* MnuDateiBeenden = nullptr;
    QMenu* MnuEinstellungen = nullptr;
    QAction* MnuEinstModel = nullptr;
    QAction* MnuEinstAllg = nullptr;
    QMenu* MnuWizards = nullptr;
    QAction* MnuWizardsWizAn = nullptr;
    QAction* MnuWizardsGrWiz = nullptr;
    QAction* MnuWizardsAnimWiz = nullptr;
    QMenu* MnuHilfe = nullptr;
    QAction* MnuHilfeUeber = nullptr;

    // The four recent-file entries, MnuDateiLast1 .. MnuDateiLast4.
    std::array<QAction*, 4> MnuDateiLast() const {
        return {MnuDateiLast1, MnuDateiLast2, MnuDateiLast3, MnuDateiLast4};
    }

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

    // ---- The two pages and the script reader's host
    // (FrmMainModelFiles.cpp, FrmMainAnimations.cpp, FrmMainReaderHost.cpp)

    // "1" while LstParts sets ChkReverse, so that showing a part never
    // changes its flag; empty otherwise.
    QString ChkReverseTag;
    // The sequence group on show: the number in TxtAnimNr when it is a whole
    // number from 0 to 10; nothing for any other text.
    std::optional<int> AnimGroup() const override;
    // The animation on show, which the dialogs of an animation work on: the
    // slot of LstAnimations' current row in the group on show; null when no
    // row is current or the group number is not one.
    AnimRec* CurrentAnim() override;
    // What a load asks of the user goes through this window:
    //     ReadQcFile(doc, form.ScriptReaderHost(), workFolder);
    quarle::ReaderHost& ScriptReaderHost() { return readerHost_; }
    // The dialog of CmdNewGroup while it is open (it does not block the window).
    DlgName* OpenDlgName() const;
    // What the 3D preview shows of the two pages: the animation selected in
    // LstAnimations as {group, slot} (the first of the group on show while
    // none is selected), and the part on show per body group (index 0 for
    // group 1): the selected entry of LstParts for the selected group, the
    // first part for the others.
    std::optional<std::pair<int, int>> PreviewAnimation() const override;
    std::vector<int> PreviewParts() const override;
    // The preview window while it is open.
    FrmPreview* OpenFrmPreview() const;
    // Shows a compiled model (document bytes) in the window of compiled
    // models, opened or brought up for it; and that window while it is open.
    void ShowCompiledModel(const std::string& path);
    FrmCompiledModel* OpenFrmCompiledModel() const;
    // Which files of the model folder are meshes, remembered between refills.
    const ModelFolderCache& ModelFolderKinds() const { return modelFolderKinds_; }

    // ---- On the desktop (FrmMainDesktop.cpp)

    // The reset behind the new-document command, without its question.
    void NewDocument();
    // Whether the document differs from the last load, save or new document.
    bool DocumentChanged() const;
    // What the document now is counts as saved; the title follows.
    void MarkSaved();
    // The title bar: the script's name, a mark while it has unsaved changes,
    // and the caption ("robot.qc* — Quarle").
    void ShowTitle();
    // Before the document is replaced or the program ends: with unsaved
    // changes, asks whether to save them. True when the caller may go on
    // (saved, or the user lets them go); false after Cancel or a save that
    // did not happen.
    bool SaveChangesFirst();
    // The desktop session ends: asks as above where the session allows it,
    // and writes the settings. False: the session is to go on.
    bool SessionEnding(bool mayAsk);
    // A script named on the command line: opened as the Open command opens
    // the chosen file, with the same questions and messages.
    void OpenGivenScript(const QString& path);
    // A script dropped on the window: the question about unsaved changes,
    // then the open.
    void OpenDroppedScript(const QString& path);

    // ---- The rest of what the dialogs reach (FrmMainAccess.cpp)
    QWidget& Window() override { return *this; }
    int AnimationRowCount() const override;
    void AppendAnimationRow(const QString& name) override;
    QStringList ModelFileNames() const override;
    void AppendPartRow(const QString& name) override;
    void ShowPaths(const QString& texturePath, const QString& modelPath) override;
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
    void BuildControls();
    // The top-level controls, at their designed places plus the room a
    // larger window gives (in twips).
    void PlaceControls(int extraWidth, int extraHeight);
    void BuildMenus();
    void BuildAssistant();
    void ConnectShell();
    void ConnectModelFilesPage();
    void ConnectAnimationsPage();
    void ConnectFileCommands();
    void ConnectAssistant();
    void ConnectDesktop();
    // The name the title bar and the question give the script.
    QString ScriptTitle() const;
    // Accepts or refuses a drag; true when the event was this window's.
    bool TakeDrag(QDropEvent* event);
    void WriteSettingsNow();
    // Shows frame anim of the mascot at its place, cut to its outline.
    void ShowWizardFrame(int anim);
    // Enables or disables what needs a model folder.
    void SetModelFolderKnown(bool known);
    // The folder chooser, opened at current when that is a folder: the
    // chosen folder, or nothing after a cancel.
    std::optional<QString> PickFolder(const QString& title, const QString& current);
    // The texture field's note that its folder holds no bitmaps yet.
    void ShowTextureFolderNote();
    QAction* TxtTexturepathNote = nullptr;

    AppState& state_;
    platform::Services& services_;
    platform::SettingsStore& settings_;
    QString fileListPath_;
    bool stopped_ = false;
    // The document as the writer rendered it at the last load, save or new
    // document.
    std::string savedText_;
    // Runs shortly after the user's input: the title's mark follows.
    QTimer* titleCheck_ = nullptr;

    // ---- The two pages and the script reader's host
    friend class FrmMainReaderHost;
    // The selected body group, BodyGroups(index + 1), or nothing.
    std::optional<int> SelectedBodyGroup() const;
    void AddPartsFromFiles();
    void AddAnimationsFromFiles();
    void DeleteSelectedParts();
    void DeleteSelectedAnimations();
    QPointer<DlgName> dlgName_;
    QPointer<frmAbout> about_;
    QPointer<FrmPreview> preview_;
    QPointer<FrmCompiledModel> compiledModel_;
    ModelFolderCache modelFolderKinds_;
    FrmMainReaderHost readerHost_{*this};
    // Scripts loaded with findings whose original has not been kept yet.
    std::vector<std::string> originalsToKeep_;
    // The includes a save of the document on show has named as written in.
    std::vector<std::string> includesReported_;

    // ======== Document commands: open, save, compile, viewer, editor,
    // recent entries (FrmMainFile.cpp) ========
public:
    // Where the working files of a load and a compile stand (loadbuffer.dat,
    // the compile script, compile.log, fert.dat); empty: the process's
    // working directory, or a folder of the user's own when that cannot be
    // written (WorkingFolder).
    QString WorkFolder;
    QString WorkingFolder() const;
    // Where the working file of a load stands while the load runs (it is
    // removed after): WorkFolder, else the user's cache folder.
    QString LoadWorkFolder() const;
    // At start: the temporary files that killed saves left beside the
    // recent scripts, and a killed load's working file, are removed.
    void RemoveLeftovers();

    // The load behind the open command and the recent entries: empties
    // LstAnimations, resets the document, sets QcFile and reads the script.
    // A load the user cancels puts the document back as it was.
    void OpenQcFile(const std::string& path);
    // Puts QcFile on the recent list, then rewrites the script from the
    // document with the user's decimal separator. A write that fails is
    // reported and changes nothing: the old script stays whole, and the
    // recent list stays as it was. False then.
    bool WriteQcFile();

    // ---- What a load of a script from elsewhere changes (FrmMainLoadReport.cpp)

    // After a load: tells the user once where a save will change the model,
    // and remembers the script, so that the first save over it keeps the
    // original. No findings: nothing is shown.
    void ReportLoadFindings(const LoadFindings& findings);
    // After a load of a file that held no directive at all: says so, and
    // keeps the original of a file that is not empty on the first save over it.
    void ReportNoDirective();
    // Before a save over QcFile: keeps the original of a script whose load
    // had findings beside it (NAME.qc.orig, or the next free name). False,
    // after a message, when it cannot be kept: then nothing is written.
    bool KeepOriginalBeforeSave();
    // After a save that wrote includes into the script (the user changed
    // what they hold): names them, once each for the document on show.
    void ReportIncludesWrittenIn(const std::vector<std::string>& includes);

private:
    // The first save over this script keeps its original.
    void KeepOriginalOnFirstSave(const std::string& script);
    // The save and save-as commands; true when the script was written.
    bool SaveQcFile();
    bool SaveQcFileAs();
    // Starts program with file as its one argument; a program that is
    // missing or does not start is reported with the message given for it.
    void StartWithFile(const std::string& program, const std::string& file, Msg missing,
                       Msg notStarted);
    // The folder a file dialog opens in: that of the script, else the model
    // folder, else the dialog's own choice.
    QString DialogFolder() const;
    QString IdsText(int key) const;
    // ======== end of the document commands ========
};

} // namespace quarle::ui
