// Reflection over a form's controls: each control is registered with its
// Name (and Index, for members of a control array) in creation order, and its
// Caption, ToolTipText and Visible are read and written by name. A property
// that a kind of control does not have reads as nullopt, and a write to it
// is ignored (returns false).
//
// Kinds: QLabel, QAbstractButton (buttons, check boxes, option buttons),
// QGroupBox (frames), QAction and QMenu (menu entries), QLineEdit / QTextEdit
// / QPlainTextEdit (text boxes: no caption), QListWidget, QComboBox,
// picture boxes (plain QWidget/QLabel with a pixmap), QTabWidget (Caption is
// the text of the page showing; TabCaption(i) each page's), and the form
// itself (its window title).
#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QWidget>
#include <optional>

namespace quarle::platform {

struct ControlInfo {
    QObject* Object = nullptr;
    QString Name;
    int Index = -1; // -1: not a member of a control array

    // "Name" or "Name(Index)": the key of a control in a language file.
    QString Key() const;
};

// Registers obj as a control of the form it belongs to (the form is found
// by walking the parents; QActions belong to the form they are parented to).
// Sets the object name. Returns obj for chaining.
QObject* RegisterControl(QObject* obj, const QString& name, int index = -1);

template <class T> T* Control(T* obj, const QString& name, int index = -1) {
    RegisterControl(obj, name, index);
    return obj;
}

// The registered controls of a form, in the order they were registered.
QList<ControlInfo> ControlsOf(const QWidget* form);
// A control by name and index, or nullptr.
QObject* FindControl(const QWidget* form, const QString& name, int index = -1);

std::optional<QString> Caption(const QObject* control);
bool SetCaption(QObject* control, const QString& text);
std::optional<QString> ToolTipText(const QObject* control);
bool SetToolTipText(QObject* control, const QString& text);
std::optional<bool> Visible(const QObject* control);
bool SetVisible(QObject* control, bool visible);
// Tab controls only.
std::optional<QString> TabCaption(const QObject* control, int page);
bool SetTabCaption(QObject* control, int page, const QString& text);

} // namespace quarle::platform
