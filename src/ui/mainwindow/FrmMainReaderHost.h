// The main window as the script reader's host: the folder and part questions
// go to the user through the window's message boxes and Open dialog, read
// sequences of group 0 land in LstAnimations, problems are shown as message
// boxes in the active language (the reader passes each kind once per load),
// a long load shows that it is working and can be cancelled, and the end of
// a load refreshes the window.
#pragma once

#include "AppState.h"
#include "document/ReaderHost.h"
#include "platform/Services.h"
#include "ui/mainwindow/MainWindowControls.h"

#include <QtGlobal>

namespace quarle::ui {

class AnimationsPage;
class DocumentCommands;
class ModelFilesPage;
class ModelFolderList;

class FrmMainReaderHost final : public quarle::ReaderHost {
public:
    FrmMainReaderHost(AppState& state, platform::Services& services, MainWindowControls& controls,
                      ModelFolderList& folder, ModelFilesPage& modelFiles,
                      AnimationsPage& animations, DocumentCommands& commands)
        : state_(state), services_(services), c_(controls), folder_(folder),
          modelFiles_(modelFiles), animations_(animations), commands_(commands) {}

    std::string Text(Ids key) override;
    std::string NewDir(const std::string& oldDir, const std::string& extra,
                       FolderQuestion what) override;
    // Asks for a replacement of a folder that does not exist: the folder of
    // a file the user picks, or "0" when the user gives up.
    std::string NewDir(const std::string& oldDir, const std::string& extra);
    std::string PickPartFile(const std::string& missingFile, const std::string& extra,
                             const std::string& modelPath) override;
    void NewDocument() override;
    void AddAnimation(const std::string& name) override;
    void Problem(ReadProblem kind, const std::string& detail) override;
    void FileProblem(ReadProblem kind, const OpenProblem& problem) override;
    bool Progress(std::size_t done, std::size_t total) override;
    void LoadFinished() override;

    // Around one load of script: a load that takes longer than BusyAfterMs
    // shows the busy cursor and a progress window with a Cancel button; the
    // end of the load takes both away.
    void BeginLoad(const std::string& script);
    void EndLoad();
    static constexpr qint64 BusyAfterMs = 500;

private:
    // The question whether to look for something missing (a folder, a
    // part's file) that extra names; true on OK.
    bool AskToLookFor(const std::string& missing, const std::string& extra);
    // A question or a message of the load: no busy cursor or progress
    // window over it, and the time it is open does not count.
    void Pause();

    AppState& state_;
    platform::Services& services_;
    MainWindowControls& c_;
    ModelFolderList& folder_;
    ModelFilesPage& modelFiles_;
    AnimationsPage& animations_;
    DocumentCommands& commands_;
    std::string script_;
    qint64 started_ = 0;
    bool busy_ = false;
};

} // namespace quarle::ui
