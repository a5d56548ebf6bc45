// Second page of the animation wizard: the animation file, chosen from the
// animation files of the model folder.
#pragma once

#include "ui/wizards/WizardChain.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace quarle::ui {

class AnimWiz2 : public WizardPage {
    Q_OBJECT

public:
    AnimWiz2(AppState& state, platform::Services& services, WizardChain& chain,
             QWidget* parent = nullptr);

    QLabel* LblHelpText = nullptr;
    QLabel* LblAvailableModels = nullptr;
    QListWidget* LstFiles = nullptr;
    QListWidget* FileAnimWiz2AnimModel = nullptr; // hidden: the "*.smd" files of ModelPath
    QPushButton* CmdAssignAnimation = nullptr;
    QLabel* LblAnimationmodel = nullptr;
    QLineEdit* TxtAnimWiz2AnimModel = nullptr;     // the file's name
    QLineEdit* TxtAnimWiz2AnimModelLong = nullptr; // hidden: its full path
    QPushButton* CmdWeiter = nullptr;

    // Lists the animation files of the model folder.
    void Form_Activate() override;
    void CmdAssignAnimation_Click();
    // A name typed by hand names the file of the model folder it stands for.
    void TxtAnimWiz2AnimModel_Change();
    // Next is open when the chosen file exists.
    void TxtAnimWiz2AnimModelLong_Change();

    // The folder the file list shows.
    QString FileListPath() const { return fileListPath_; }

private:
    void Form_Load() override;

    QString fileListPath_;
    bool assigning_ = false;
};

} // namespace quarle::ui
