// What the dialogs, the wizards, the preview and the settings reach of the
// main window: the animation and parts on show, the lists of its two pages,
// and the few controls a dialog turns on or fills. The document and the
// services come with AppState and platform::Services, as for every form; this
// is the rest. The main window implements it, so a form that works through
// the window needs this header and not the window's own.
#pragma once

#include "document/Document.h"

#include <QString>
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

class QWidget;

namespace quarle::ui {

class MainWindowAccess {
public:
    // The window itself: the parent of what a dialog opens on its behalf.
    virtual QWidget& Window() = 0;

    // ---- The animations page
    // The sequence group on show: the number in its box when it is a whole
    // number from 0 to 10; nothing for any other text.
    virtual std::optional<int> AnimGroup() const = 0;
    // The animation on show, which the dialogs of an animation work on: the
    // current row's slot in the group on show; null when no row is current
    // or the group number is not one.
    virtual AnimRec* CurrentAnim() = 0;
    // The rows of the group on show, and a row added behind them (not
    // selected) for an animation a wizard put into the next slot.
    virtual int AnimationRowCount() const = 0;
    virtual void AppendAnimationRow(const QString& name) = 0;

    // ---- The model files page
    // The entries of the model folder's list, as shown.
    virtual QStringList ModelFileNames() const = 0;
    // A part added behind the parts of the body group on show.
    virtual void AppendPartRow(const QString& name) = 0;
    // The two path fields as a wizard sets them; the model folder's files
    // are listed again.
    virtual void ShowPaths(const QString& texturePath, const QString& modelPath) = 0;

    // ---- The 3D preview
    // The animation selected as {group, slot} (the first of the group on
    // show while none is selected), and the part on show per body group
    // (index 0 for group 1).
    virtual std::optional<std::pair<int, int>> PreviewAnimation() const = 0;
    virtual std::vector<int> PreviewParts() const = 0;

    // ---- The settings
    // The window in the language just chosen.
    virtual void ShowLanguage() = 0;
    // The window's localise button, shown while localisation mode is on.
    virtual void ShowLocaliseButton(bool on) = 0;
    // The next opening of the language editor works on the global strings.
    virtual void LocaliseGlobalStringsNext() = 0;
    // The commands that start the compiler, the text editor and the viewer,
    // offered or not.
    virtual void OfferTools(bool compiler, bool editor, bool viewer) = 0;

protected:
    ~MainWindowAccess() = default;
};

} // namespace quarle::ui
