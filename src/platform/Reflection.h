// Reflection over a form's controls: each control is registered with its
// Name (and Index, for members of a control array) in creation order, and its
// Caption, ToolTipText and Visible are read and written by name. A property
// that a kind of control does not have reads as nullopt, and a write to it
// is ignored (returns false).
//
// Which kind has which property:
//
//   kind                                     Caption  ToolTipText  Visible
//   label, button, check box, option button  yes      yes          yes
//   frame (QGroupBox), tab control           yes      yes          yes
//   menu (QMenu), menu entry (QAction)       yes      no           yes
//   text box, list box, combo box, picture   no       yes          yes
//   other widgets (own controls, list views) no       yes          yes
//   line or shape (a plain QFrame)           no       no           yes
//   scroll bar                               no       no           yes
//   timer (QTimer) and other plain objects   no       no           no
//   the form itself (a window)               yes      no           yes
//
// A form's Caption is its window title. A form or control that shows more or
// other than its caption (the main window's title adds the script's name, the
// preview's play button says "pause" while it plays) keeps its caption in the
// dynamic property CaptionProperty; Caption and SetCaption then read and write
// that, and the owner shows it as it sees fit. A tab control's Caption is the text
// of the page showing; TabCaption(i) is each page's. A QLabel is a picture
// box when it is marked as one (SetControlKind), when its name starts with
// "Pic" or "Image", or when it holds a pixmap; otherwise it is a label.
// Visible is the control's own setting, not whether it is on screen now: a
// control on a hidden form or page still reads as visible.
#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QWidget>
#include <optional>

namespace quarle::platform {

enum class ControlKind {
    Auto, // decided from the Qt class (the default)
    Label,
    Button,
    Frame,
    Menu,
    MenuEntry,
    TextBox,
    ListBox,
    ComboBox,
    Picture,
    Tabs,
    Widget,
    Line,
    ScrollBar,
    Timer,
    Form,
    Object,
};

struct ControlInfo {
    QObject* Object = nullptr;
    QString Name;
    int Index = -1; // -1: not a member of a control array

    // "Name" or "Name(Index)": the key of a control in a language file.
    QString Key() const;
};

// Registers obj as a control of the form it belongs to (the form is found
// by walking the parents; QActions belong to the form they are parented to).
// Sets the object name. Returns obj for chaining. Registering again renames
// the control but keeps its place in the order.
QObject* RegisterControl(QObject* obj, const QString& name, int index = -1);

template <class T> T* Control(T* obj, const QString& name, int index = -1) {
    RegisterControl(obj, name, index);
    return obj;
}

// Overrides the kind found from the Qt class, e.g. a QLabel that serves as a
// picture box, or a QFrame that serves as a container rather than a line.
void SetControlKind(QObject* obj, ControlKind kind);
ControlKind KindOf(const QObject* obj);

// Name and Index of a registered control; nullopt for anything else.
std::optional<ControlInfo> InfoOf(const QObject* obj);
// The form a control belongs to: the nearest window among its ancestors
// (menus, which are windows of their own, are skipped).
QWidget* FormOf(const QObject* obj);

// The registered controls of a form, in the order they were registered.
// Controls of other forms parented to this one (dialogs) are not included.
QList<ControlInfo> ControlsOf(const QWidget* form);
// A control by name and index, or nullptr.
QObject* FindControl(const QWidget* form, const QString& name, int index = -1);

inline constexpr const char* CaptionProperty = "Caption";
std::optional<QString> Caption(const QObject* control);
bool SetCaption(QObject* control, const QString& text);
std::optional<QString> ToolTipText(const QObject* control);
bool SetToolTipText(QObject* control, const QString& text);
std::optional<bool> Visible(const QObject* control);
bool SetVisible(QObject* control, bool visible);
// Tab controls only; nullopt / false for a page that doesn't exist.
std::optional<QString> TabCaption(const QObject* control, int page);
bool SetTabCaption(QObject* control, int page, const QString& text);

} // namespace quarle::platform
