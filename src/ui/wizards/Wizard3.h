// Second page of the base-settings wizard: the reference model, chosen from
// the mesh files of the model folder.
#pragma once

#include "ui/wizards/WizardChain.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace quarle::ui {

class Wizard3 : public WizardPage {
    Q_OBJECT

public:
    Wizard3(AppState& state, platform::Services& services, WizardChain& chain,
            QWidget* parent = nullptr);

    QLabel* LblHelpText1 = nullptr;
    QLabel* LblModelfiles = nullptr;
    QListWidget* LstFiles = nullptr;
    QListWidget* FileWiz3Modeldateien = nullptr; // hidden: the "*.smd" files of the folder
    QPushButton* CmdAssign = nullptr;
    QLabel* LblReferencemodel = nullptr;
    QLineEdit* TxtWiz3Referenzmodel = nullptr;
    QPushButton* CmdWeiter = nullptr;

    // Lists the mesh files of the model folder of the first page.
    void Form_Activate() override;
    void CmdAssign_Click();
    void LstFiles_DblClick();
    // Next is open when the reference file exists in the model folder.
    void TxtWiz3Referenzmodel_Change();

private:
    void Form_Load() override;
    QString ModelFolder() const;
};

} // namespace quarle::ui
