// The controls both previews share below their view: the play button, the
// frame slider, the framing button, the status line and the timer.
#pragma once

#include "AppState.h"

#include <QPushButton>

class QLabel;
class QSlider;
class QTimer;

namespace quarle::ui {

// Checked while the animation plays. Icon and caption say what a click
// does: the caption of the language file is the "play", shown while the
// animation holds; while it plays the button shows "pause" in its place.
class PlayButton : public QPushButton {
    Q_OBJECT

public:
    PlayButton(const AppState& state, const QString& caption, QWidget* parent);

protected:
    // A new caption from the language file or its editor.
    bool event(QEvent* event) override;

private:
    void ShowState(bool playing);
    const AppState& state_;
};

struct PreviewControls {
    PlayButton* CmdPlay = nullptr;
    QSlider* SldFrame = nullptr;
    QPushButton* CmdFrameModel = nullptr;
    QLabel* LblStatus = nullptr;
    QTimer* TmrTick = nullptr; // a frame of a 60 Hz screen
};

// Makes the controls on form and registers them by name in the order above,
// with their designed captions; playTip is the play button's tool tip.
PreviewControls MakePreviewControls(QWidget* form, const AppState& state, const QString& playTip);

} // namespace quarle::ui
