#include "platform/Reflection.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTextEdit>
#include <QTimer>
#include <QVariant>
#include <algorithm>

namespace quarle::platform {
namespace {

// Dynamic properties that make an object a control.
constexpr const char* SeqProperty = "quarleControlSeq";
constexpr const char* IndexProperty = "quarleControlIndex";
constexpr const char* KindProperty = "quarleControlKind";

qint64 nextSeq = 0; // the program runs on one thread

bool IsRegistered(const QObject* obj) {
    return obj != nullptr && obj->property(SeqProperty).isValid();
}

bool IsFormWindow(const QWidget* w) {
    return w->isWindow() && qobject_cast<const QMenu*>(w) == nullptr;
}

ControlKind KindFromClass(const QObject* obj) {
    if (qobject_cast<const QTimer*>(obj)) {
        return ControlKind::Timer;
    }
    if (qobject_cast<const QAction*>(obj)) {
        return ControlKind::MenuEntry;
    }
    const auto* w = qobject_cast<const QWidget*>(obj);
    if (w == nullptr) {
        return ControlKind::Object;
    }
    if (qobject_cast<const QMenu*>(w)) {
        return ControlKind::Menu;
    }
    if (qobject_cast<const QTabWidget*>(w)) {
        return ControlKind::Tabs;
    }
    if (qobject_cast<const QGroupBox*>(w)) {
        return ControlKind::Frame;
    }
    if (qobject_cast<const QAbstractButton*>(w)) {
        return ControlKind::Button;
    }
    if (const auto* label = qobject_cast<const QLabel*>(w)) {
        const QString& name = label->objectName();
        if (name.startsWith(QLatin1String("Pic")) || name.startsWith(QLatin1String("Image")) ||
            !label->pixmap().isNull()) {
            return ControlKind::Picture;
        }
        return ControlKind::Label;
    }
    if (qobject_cast<const QLineEdit*>(w) || qobject_cast<const QTextEdit*>(w) ||
        qobject_cast<const QPlainTextEdit*>(w)) {
        return ControlKind::TextBox;
    }
    if (qobject_cast<const QComboBox*>(w)) {
        return ControlKind::ComboBox;
    }
    if (qobject_cast<const QAbstractItemView*>(w)) {
        return ControlKind::ListBox;
    }
    if (qobject_cast<const QAbstractSlider*>(w)) {
        return ControlKind::ScrollBar;
    }
    // A plain QFrame (not one of the many subclasses above) draws a line or a shape.
    if (w->metaObject() == &QFrame::staticMetaObject) {
        return ControlKind::Line;
    }
    if (!IsRegistered(w) && IsFormWindow(w)) {
        return ControlKind::Form;
    }
    return ControlKind::Widget;
}

bool HasCaption(ControlKind kind) {
    switch (kind) {
    case ControlKind::Label:
    case ControlKind::Button:
    case ControlKind::Frame:
    case ControlKind::Menu:
    case ControlKind::MenuEntry:
    case ControlKind::Tabs:
    case ControlKind::Form:
        return true;
    default:
        return false;
    }
}

bool HasToolTip(ControlKind kind) {
    switch (kind) {
    case ControlKind::Label:
    case ControlKind::Button:
    case ControlKind::Frame:
    case ControlKind::Tabs:
    case ControlKind::TextBox:
    case ControlKind::ListBox:
    case ControlKind::ComboBox:
    case ControlKind::Picture:
    case ControlKind::Widget:
        return true;
    default:
        return false;
    }
}

bool HasVisible(ControlKind kind) {
    return kind != ControlKind::Timer && kind != ControlKind::Object;
}

// The QAction that stands for a menu or menu entry.
QAction* ActionOf(const QObject* obj) {
    if (const auto* menu = qobject_cast<const QMenu*>(obj)) {
        return menu->menuAction();
    }
    return qobject_cast<QAction*>(const_cast<QObject*>(obj));
}

} // namespace

QString ControlInfo::Key() const {
    return Index < 0 ? Name : QStringLiteral("%1(%2)").arg(Name).arg(Index);
}

QObject* RegisterControl(QObject* obj, const QString& name, int index) {
    if (obj == nullptr) {
        return nullptr;
    }
    obj->setObjectName(name);
    if (!IsRegistered(obj)) {
        obj->setProperty(SeqProperty, QVariant::fromValue(nextSeq++));
    }
    obj->setProperty(IndexProperty, index);
    return obj;
}

void SetControlKind(QObject* obj, ControlKind kind) {
    if (obj != nullptr) {
        obj->setProperty(KindProperty, static_cast<int>(kind));
    }
}

ControlKind KindOf(const QObject* obj) {
    if (obj == nullptr) {
        return ControlKind::Object;
    }
    const QVariant set = obj->property(KindProperty);
    if (set.isValid() && static_cast<ControlKind>(set.toInt()) != ControlKind::Auto) {
        return static_cast<ControlKind>(set.toInt());
    }
    return KindFromClass(obj);
}

std::optional<ControlInfo> InfoOf(const QObject* obj) {
    if (!IsRegistered(obj)) {
        return std::nullopt;
    }
    return ControlInfo{const_cast<QObject*>(obj), obj->objectName(),
                       obj->property(IndexProperty).toInt()};
}

QWidget* FormOf(const QObject* obj) {
    for (QObject* p = obj != nullptr ? obj->parent() : nullptr; p != nullptr; p = p->parent()) {
        auto* w = qobject_cast<QWidget*>(p);
        if (w != nullptr && IsFormWindow(w)) {
            return w;
        }
    }
    return nullptr;
}

QList<ControlInfo> ControlsOf(const QWidget* form) {
    QList<std::pair<qint64, ControlInfo>> found;
    if (form != nullptr) {
        for (QObject* obj : form->findChildren<QObject*>()) {
            if (IsRegistered(obj) && FormOf(obj) == form) {
                found.append({obj->property(SeqProperty).toLongLong(), *InfoOf(obj)});
            }
        }
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    QList<ControlInfo> controls;
    controls.reserve(found.size());
    for (const auto& entry : found) {
        controls.append(entry.second);
    }
    return controls;
}

QObject* FindControl(const QWidget* form, const QString& name, int index) {
    for (const ControlInfo& info : ControlsOf(form)) {
        if (info.Name == name && info.Index == index) {
            return info.Object;
        }
    }
    return nullptr;
}

std::optional<QString> Caption(const QObject* control) {
    const ControlKind kind = KindOf(control);
    if (!HasCaption(kind)) {
        return std::nullopt;
    }
    if (const QVariant caption = control->property(CaptionProperty); caption.isValid()) {
        return caption.toString();
    }
    switch (kind) {
    case ControlKind::Form:
        return qobject_cast<const QWidget*>(control)->windowTitle();
    case ControlKind::Menu:
    case ControlKind::MenuEntry:
        if (const QAction* action = ActionOf(control)) {
            return action->text();
        }
        break;
    case ControlKind::Tabs:
        if (const auto* tabs = qobject_cast<const QTabWidget*>(control)) {
            return tabs->tabText(tabs->currentIndex()); // "" without pages
        }
        break;
    default:
        break;
    }
    if (const auto* label = qobject_cast<const QLabel*>(control)) {
        return label->text();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(control)) {
        return button->text();
    }
    if (const auto* frame = qobject_cast<const QGroupBox*>(control)) {
        return frame->title();
    }
    if (const auto* w = qobject_cast<const QWidget*>(control)) {
        return w->windowTitle(); // a form-like widget marked by hand
    }
    return std::nullopt;
}

bool SetCaption(QObject* control, const QString& text) {
    const ControlKind kind = KindOf(control);
    if (!HasCaption(kind)) {
        return false;
    }
    if (control->property(CaptionProperty).isValid()) {
        control->setProperty(CaptionProperty, text);
        return true;
    }
    switch (kind) {
    case ControlKind::Form:
        qobject_cast<QWidget*>(control)->setWindowTitle(text);
        return true;
    case ControlKind::Menu:
        if (auto* menu = qobject_cast<QMenu*>(control)) {
            menu->setTitle(text);
            return true;
        }
        break;
    case ControlKind::MenuEntry:
        if (QAction* action = ActionOf(control)) {
            action->setText(text);
            return true;
        }
        break;
    case ControlKind::Tabs:
        if (auto* tabs = qobject_cast<QTabWidget*>(control)) {
            if (tabs->currentIndex() < 0) {
                return false;
            }
            tabs->setTabText(tabs->currentIndex(), text);
            return true;
        }
        break;
    default:
        break;
    }
    if (auto* label = qobject_cast<QLabel*>(control)) {
        label->setText(text);
        return true;
    }
    if (auto* button = qobject_cast<QAbstractButton*>(control)) {
        button->setText(text);
        return true;
    }
    if (auto* frame = qobject_cast<QGroupBox*>(control)) {
        frame->setTitle(text);
        return true;
    }
    if (auto* w = qobject_cast<QWidget*>(control)) {
        w->setWindowTitle(text);
        return true;
    }
    return false;
}

std::optional<QString> ToolTipText(const QObject* control) {
    const auto* w = qobject_cast<const QWidget*>(control);
    if (w == nullptr || !HasToolTip(KindOf(control))) {
        return std::nullopt;
    }
    return w->toolTip();
}

bool SetToolTipText(QObject* control, const QString& text) {
    auto* w = qobject_cast<QWidget*>(control);
    if (w == nullptr || !HasToolTip(KindOf(control))) {
        return false;
    }
    w->setToolTip(text);
    return true;
}

std::optional<bool> Visible(const QObject* control) {
    if (!HasVisible(KindOf(control))) {
        return std::nullopt;
    }
    if (const QAction* action = ActionOf(control)) {
        return action->isVisible();
    }
    const auto* w = qobject_cast<const QWidget*>(control);
    if (w == nullptr) {
        return std::nullopt;
    }
    if (w->isWindow() || w->parentWidget() == nullptr) {
        return w->isVisible();
    }
    // The control's own setting: hidden only when hidden by hand.
    return w->isVisibleTo(w->parentWidget());
}

bool SetVisible(QObject* control, bool visible) {
    if (!HasVisible(KindOf(control))) {
        return false;
    }
    if (QAction* action = ActionOf(control)) {
        action->setVisible(visible);
        return true;
    }
    auto* w = qobject_cast<QWidget*>(control);
    if (w == nullptr) {
        return false;
    }
    w->setVisible(visible);
    return true;
}

std::optional<QString> TabCaption(const QObject* control, int page) {
    const auto* tabs = qobject_cast<const QTabWidget*>(control);
    if (tabs == nullptr || KindOf(control) != ControlKind::Tabs || page < 0 ||
        page >= tabs->count()) {
        return std::nullopt;
    }
    return tabs->tabText(page);
}

bool SetTabCaption(QObject* control, int page, const QString& text) {
    auto* tabs = qobject_cast<QTabWidget*>(control);
    if (tabs == nullptr || KindOf(control) != ControlKind::Tabs || page < 0 ||
        page >= tabs->count()) {
        return false;
    }
    tabs->setTabText(page, text);
    return true;
}

} // namespace quarle::platform
