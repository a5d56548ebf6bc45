// The document commands of the main window: new, open, save, save under a new
// name, compile, the viewer and the editor, the recent files, the question
// before unsaved changes would be lost, the title bar, and the scripts from
// the desktop. A load goes through the reader host, which this part holds.
#pragma once

#include "AppState.h"
#include "localisation/MessageTexts.h"
#include "platform/Services.h"
#include "ui/mainwindow/FrmMainReaderHost.h"
#include "ui/mainwindow/LoadReport.h"
#include "ui/mainwindow/MainWindowControls.h"

#include <QObject>
#include <QString>
#include <string>

namespace quarle::ui {

class AnimationsPage;
class MainWindowShell;
class ModelFilesPage;
class ModelFolderList;

class DocumentCommands : public QObject {
    Q_OBJECT

public:
    // workFolder: the window's WorkFolder, read at each command.
    DocumentCommands(AppState& state, platform::Services& services, MainWindowControls& controls,
                     const QString& workFolder, ModelFolderList& folder, ModelFilesPage& modelFiles,
                     AnimationsPage& animations, MainWindowShell& shell);
    ~DocumentCommands() override;

    // Handlers
    void MnuDateiNeu_Click();
    void MnuDateiOeffnen_Click();
    void MnuDateiSpeichern_Click();
    void MnuDateiSpeichernunter_Click();
    void MnuDateiComp_Click();
    void CmdCompile_Click();
    void MnuDateiView_Click();
    void MnuDateiViewCode_Click();
    void MnuDateiLast_Click(int i); // i: 0 for MnuDateiLast1 .. 3 for MnuDateiLast4
    void MnuDateiLast1_Click() { MnuDateiLast_Click(0); }
    void MnuDateiLast2_Click() { MnuDateiLast_Click(1); }
    void MnuDateiLast3_Click() { MnuDateiLast_Click(2); }
    void MnuDateiLast4_Click() { MnuDateiLast_Click(3); }

    // The reset behind the new-document command, without its question:
    // empties LstAnimations, resets the document and shows the result.
    void NewDocument();
    // Resets the document, empties LstParts, shows the result.
    void InitVars();
    // The load behind the open command and the recent entries: empties
    // LstAnimations, resets the document, sets QcFile and reads the script.
    // A load the user cancels puts the document back as it was.
    void OpenQcFile(const std::string& path);
    // Puts QcFile on the recent list, then rewrites the script from the
    // document with the user's decimal separator. A write that fails is
    // reported and changes nothing: the old script stays whole, and the
    // recent list stays as it was. False then.
    bool WriteQcFile();

    // The recent-file list: QcFile goes on top unless it is already listed.
    void PushRecentFile();
    void ShowRecentFiles();

    // Where the working files of a load and a compile stand (loadbuffer.dat,
    // the compile script, compile.log, fert.dat): the window's WorkFolder;
    // empty: the process's working directory, or a folder of the user's own
    // when that cannot be written.
    QString WorkingFolder() const;
    // Where the working file of a load stands while the load runs (it is
    // removed after): WorkFolder, else the user's cache folder.
    QString LoadWorkFolder() const;
    // At start: the temporary files that killed saves left beside the
    // recent scripts, and a killed load's working file, are removed.
    void RemoveLeftovers();

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

    // What a load asks of the user goes through this host.
    FrmMainReaderHost& ScriptReaderHost() { return readerHost_; }

private:
    void ConnectFileCommands();
    // The name the title bar and the question give the script.
    QString ScriptTitle() const;
    // The save and save-as commands; true when the script was written.
    bool SaveQcFile();
    bool SaveQcFileAs();
    // Starts program with file as its one argument; a program that is
    // missing or does not start is reported with the message given for it.
    void StartWithFile(const std::string& program, const std::string& file, Msg missing,
                       Msg notStarted);
    QString IdsText(int key) const;

    AppState& state_;
    platform::Services& services_;
    MainWindowControls& c_;
    const QString& workFolder_;
    ModelFilesPage& modelFiles_;
    MainWindowShell& shell_;
    LoadReport loadReport_;
    FrmMainReaderHost readerHost_;
    // The document as the writer rendered it at the last load, save or new
    // document.
    std::string savedText_;
};

} // namespace quarle::ui
