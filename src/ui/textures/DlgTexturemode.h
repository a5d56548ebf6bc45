// The render mode of each texture of the model's meshes: normal, masked or
// additive. Opened modally from the model settings. The list is scanned
// afresh at every opening and names slots 1..count of TextureModes; a mode
// stays with its slot. Every click writes straight into TextureModes;
// OKButton only closes. The designed captions stand: no language is applied
// at load, but the form keeps its localise button.
#pragma once

#include "ui/localisation/LocalisedDialog.h"

#include <array>

class QGroupBox;
class QLabel;
class QListWidget;
class QRadioButton;

namespace quarle::ui {

class MainWindowAccess;

class DlgTexturemode : public LocalisedDialog {
    Q_OBJECT

public:
    DlgTexturemode(AppState& state, platform::Services& services, MainWindowAccess& main,
                   QWidget* parent = nullptr);
    ~DlgTexturemode() override;

    // ---- Controls, in the order they are registered
    QLabel* LblTextures = nullptr;
    QListWidget* LstTextures = nullptr;
    QGroupBox* FrmRenderMode = nullptr;
    std::array<QRadioButton*, 3> OptModes{}; // Index = Mode: normal, masked, additive
    QLabel* LblWarning = nullptr;
    QPushButton* OKButton = nullptr;
    // CmdLocalise comes with LocalisedDialog.

    // ---- Handlers
    void LstTextures_Click();
    void OptModes_Click(int index);
    void OKButton_Click();

private:
    void Form_Load() override;

    MainWindowAccess& main_;
};

} // namespace quarle::ui
