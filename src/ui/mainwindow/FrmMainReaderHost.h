// The main window as the script reader's host: the folder and part questions
// go to the user through the window's message boxes and Open dialog, read
// sequences of group 0 land in LstAnimations, problems are shown as message
// boxes in the active language (the reader passes each kind once per load),
// and the end of a load refreshes the window.
#pragma once

#include "document/ReaderHost.h"

namespace quarle::ui {

class FrmMain;

class FrmMainReaderHost final : public quarle::ReaderHost {
public:
    explicit FrmMainReaderHost(FrmMain& form) : form_(form) {}

    std::string Text(Ids key) override;
    std::string NewDir(const std::string& oldDir, const std::string& extra,
                       FolderQuestion what) override;
    std::string PickPartFile(const std::string& missingFile, const std::string& extra,
                             const std::string& modelPath) override;
    void NewDocument() override;
    void AddAnimation(const std::string& name) override;
    void Problem(ReadProblem kind, const std::string& detail) override;
    void LoadFinished() override;

private:
    FrmMain& form_;
};

} // namespace quarle::ui
