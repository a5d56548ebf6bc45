// The 3D preview of a compiled model (.mdl): drawn from its own meshes and
// textures, playing any of its sequences chosen from a list, with a model
// chosen for each body part and a skin family. Not modal; it reads the file
// again when a compile wrote it anew.
#pragma once

#include "preview/ModelPose.h"
#include "ui/localisation/LocalisedDialog.h"
#include "ui/preview/CompiledModelFile.h"

#include <QElapsedTimer>
#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QListWidget;
class QSlider;
class QTimer;

namespace quarle::ui {

class PreviewView;

class FrmCompiledModel : public LocalisedDialog {
    Q_OBJECT

public:
    FrmCompiledModel(AppState& state, platform::Services& services, QWidget* parent = nullptr);
    ~FrmCompiledModel() override;

    // Shows the model at path (document bytes) from its first sequence on.
    void ShowModel(const std::string& path);

    // ---- Controls, in the order they are registered
    PreviewView* PicView = nullptr;
    QLabel* LblSequences = nullptr;
    QListWidget* LstSequences = nullptr;
    QLabel* LblBodyPart = nullptr;
    QComboBox* CmbBodyPart = nullptr;
    QLabel* LblSubModel = nullptr;
    QComboBox* CmbSubModel = nullptr;
    QLabel* LblSkin = nullptr;
    QComboBox* CmbSkin = nullptr;
    QPushButton* CmdPlay = nullptr; // checked while the sequence plays
    QSlider* SldFrame = nullptr;
    QPushButton* CmdFrameModel = nullptr;
    QLabel* LblStatus = nullptr;
    QTimer* TmrTick = nullptr;
    // CmdLocalise comes with LocalisedDialog.

    // ---- Handlers
    void LstSequences_Click();
    void CmbBodyPart_Click();
    void CmbSubModel_Click();
    void CmbSkin_Click();
    void CmdPlay_Click();
    void SldFrame_Change();
    void CmdFrameModel_Click();
    // Reads the file again when it changed and draws the frame due now.
    void TmrTick_Timer();

    // The sequence (-1 for none) and its frame on show.
    int ShownSequence() const;
    int ShownFrame() const { return frame_; }
    const std::string& ModelPath() const { return file_.Path(); }

private:
    void Form_Load() override;
    // The lists of a model read anew; the choices stay where they fit.
    void FillLists();
    void RebuildMesh();
    void ShowPose();
    void ShowStatus();

    CompiledModelFile file_;
    QString caption_;
    preview::Mesh mesh_;
    std::vector<int> chosen_; // the model shown of each body part
    double seconds_ = 0.0;
    int frame_ = 0;
    QElapsedTimer clock_;
    bool framed_ = false;
};

} // namespace quarle::ui
