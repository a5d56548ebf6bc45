// The 3D preview: the model as its sources and the forms describe it now,
// drawn with OpenGL. Not modal, and it only reads: it follows the document,
// the two pages of the main window and the choices of the texture and
// controller dialogs on every tick of its timer. What the mesh depends on
// (folders, parts, scale, the part files' times) is compared each tick and
// the mesh rebuilt only when it changed; the markers and the animation are
// read every tick.
#pragma once

#include "preview/ModelPose.h"
#include "ui/localisation/LocalisedDialog.h"
#include "ui/preview/CompiledModelFile.h"

#include <QElapsedTimer>
#include <QStringList>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

class QCheckBox;
class QLabel;
class QSlider;
class QTimer;

namespace quarle::ui {

class MainWindowAccess;
class PreviewView;
struct PreviewMarkers;

class FrmPreview : public LocalisedDialog {
    Q_OBJECT

public:
    FrmPreview(AppState& state, platform::Services& services, MainWindowAccess& main,
               QWidget* parent = nullptr);
    ~FrmPreview() override;

    // ---- Controls, in the order they are registered
    PreviewView* PicView = nullptr;
    QPushButton* CmdPlay = nullptr; // checked while the animation plays
    QSlider* SldFrame = nullptr;
    QPushButton* CmdFrameModel = nullptr;
    QLabel* LblStatus = nullptr;
    QTimer* TmrTick = nullptr;
    // CmdLocalise comes with LocalisedDialog.
    // Lays the compiled model's skeleton over the sources' one; enabled
    // while a script is open and its model file exists.
    QCheckBox* ChkCompiled = nullptr;

    // ---- Handlers
    void CmdPlay_Click();
    void SldFrame_Change();
    void CmdFrameModel_Click();
    // Reads the document again and draws the frame due now.
    void TmrTick_Timer();

    // The frame of the animation on show.
    int ShownFrame() const { return frame_; }

private:
    void Form_Load() override;
    // What the mesh is built from (the part files, their times, the
    // scale) and what its textures are (the bitmap files after the
    // variation, their times and render modes). A change rebuilds them.
    struct Source {
        std::vector<std::string> Files;
        std::vector<std::optional<std::filesystem::file_time_type>> Times;
        float Scale = 1.0f;
        std::vector<int> Modes;
        bool operator==(const Source&) const = default;
    };
    Source MeshSource() const;
    Source TextureSource() const;
    void RebuildMesh();
    void ReloadTextures();
    // The animation on show and its file, read again when its name or time
    // changed; nothing without an animation with frames.
    const SmdModel* CurrentAnimation(const AnimRec*& anim);
    void ShowPose(const SmdModel* animation);
    void ShowStatus(int frameCount, const AnimRec* anim);
    // The compiled skeleton in the sequence and frame of the sources' pose,
    // as lines of markers, and what its comparison found for the status.
    void AddCompiledSkeleton(const std::vector<preview::BoneMatrix>& pose,
                             const SmdModel* animation, PreviewMarkers& markers);

    MainWindowAccess& main_;
    std::optional<Source> meshSource_;
    std::optional<Source> textureSource_;
    preview::Mesh mesh_;
    std::vector<std::string> missingParts_;
    std::vector<std::string> missingTextures_;
    std::string animFile_;
    std::filesystem::file_time_type animTime_{};
    SmdModel animation_;
    double seconds_ = 0.0;
    int frame_ = 0;
    QElapsedTimer clock_;
    bool framed_ = false;
    CompiledModelFile compiled_;
    QStringList compiledStatus_;
    bool frameDue_ = false;
};

} // namespace quarle::ui
