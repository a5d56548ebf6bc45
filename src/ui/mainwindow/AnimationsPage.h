// Page "Animationsdateien" of the main window's TabSmd: the animations of one
// sequence group, the number of the group, and the name, activity and file of
// the animation on show. It writes straight into the document's Anims.
#pragma once

#include "AppState.h"
#include "platform/Services.h"
#include "ui/mainwindow/MainWindowControls.h"

#include <QObject>
#include <QString>
#include <optional>
#include <utility>

namespace quarle::ui {

class MainWindowShell;
class ModelFolderList;

class AnimationsPage : public QObject {
    Q_OBJECT

public:
    // Wires the page's controls; folder is the model folder's file list,
    // whose folder the frames of an animation are read from.
    AnimationsPage(AppState& state, platform::Services& services, MainWindowControls& controls,
                   const ModelFolderList& folder, MainWindowShell& shell);

    // Handlers
    void CmdAnimPfeill_Click();
    void CmdAnimPfeilr_Click();
    void TxtAnimNr_Change();
    void LstAnimations_Click();
    void TxtAnimName_Change();
    void TxtAnimID_Change();
    void VScrAnim_Change();
    void CmdAnimExt_Click();

    // The sequence group on show: the number in TxtAnimNr when it is a whole
    // number from 0 to 10; nothing for any other text.
    std::optional<int> AnimGroup() const;
    // The animation on show, which the dialogs of an animation work on: the
    // slot of LstAnimations' current row in the group on show; null when no
    // row is current or the group number is not one.
    AnimRec* CurrentAnim();
    // The selected files of LstFiles go behind the group's animations, as
    // many as the script keeps; the selected animations are deleted.
    void AddAnimationsFromFiles();
    void DeleteSelectedAnimations();

    // The animation selected as {group, slot} (the first of the group on
    // show while none is selected), for the 3D preview.
    std::optional<std::pair<int, int>> PreviewAnimation() const;
    int AnimationRowCount() const;
    // A row behind the others, not selected.
    void AppendAnimationRow(const QString& name);

private:
    void ConnectAnimationsPage();

    AppState& state_;
    platform::Services& services_;
    MainWindowControls& c_;
    const ModelFolderList& folder_;
    MainWindowShell& shell_;
};

} // namespace quarle::ui
