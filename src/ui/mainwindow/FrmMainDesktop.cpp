// The main window on the desktop: scripts dropped on the window, the title
// bar's refresh shortly after the user's input, and the end of the desktop
// session. What the title says and the question about unsaved changes are
// the document commands'.
#include "platform/Reflection.h"
#include "ui/mainwindow/DocumentCommands.h"
#include "ui/mainwindow/FrmMain.h"

#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#ifndef QT_NO_SESSIONMANAGER
#include <QSessionManager>
#endif

namespace quarle::ui {
namespace {

// The one local script of a drag, or nothing: several files, a folder, a
// file of another kind or a remote address are refused.
std::optional<QString> DraggedScript(const QMimeData* mime) {
    if (mime == nullptr || !mime->hasUrls()) {
        return std::nullopt;
    }
    const QList<QUrl> urls = mime->urls();
    if (urls.size() != 1 || !urls.front().isLocalFile()) {
        return std::nullopt;
    }
    const QString path = urls.front().toLocalFile();
    if (!path.endsWith(QLatin1String(".qc"), Qt::CaseInsensitive) || !QFileInfo(path).isFile()) {
        return std::nullopt;
    }
    return QDir::toNativeSeparators(path);
}

// Input after which a form may have written into the document.
bool MayChangeDocument(QEvent::Type type) {
    return type == QEvent::MouseButtonRelease || type == QEvent::KeyRelease ||
           type == QEvent::Wheel || type == QEvent::Drop;
}

} // namespace

void FrmMain::ConnectDesktop() {
    setProperty(platform::CaptionProperty, windowTitle());
    setAcceptDrops(true);
    titleCheck_ = new QTimer(this);
    titleCheck_->setSingleShot(true);
    titleCheck_->setInterval(150);
    connect(titleCheck_, &QTimer::timeout, commands_.get(), &DocumentCommands::ShowTitle);
    qApp->installEventFilter(this);
    commands_->MarkSaved();
#ifndef QT_NO_SESSIONMANAGER
    connect(qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& manager) {
        if (!commands_->SessionEnding(manager.allowsInteraction())) {
            manager.cancel();
        }
    });
#endif
}

bool FrmMain::TakeDrag(QDropEvent* event) {
    if (!event->mimeData()->hasUrls()) {
        return false; // text for a field: the field's own
    }
    const std::optional<QString> script = DraggedScript(event->mimeData());
    if (!script) {
        event->ignore();
        return true;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (event->type() == QEvent::Drop) {
        // The file manager waits for the drop to end; the questions of the
        // open come after.
        QTimer::singleShot(0, this, [this, path = *script] { commands_->OpenDroppedScript(path); });
    }
    return true;
}

void FrmMain::dragEnterEvent(QDragEnterEvent* event) {
    TakeDrag(event);
}

void FrmMain::dragMoveEvent(QDragMoveEvent* event) {
    TakeDrag(event);
}

void FrmMain::dropEvent(QDropEvent* event) {
    TakeDrag(event);
}

bool FrmMain::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (MayChangeDocument(type) && !stopped_) {
        titleCheck_->start();
    }
    // Text fields take drops of their own; a script dropped on one of this
    // window's opens all the same.
    if ((type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop) &&
        watched != this && watched->isWidgetType() &&
        static_cast<QWidget*>(watched)->window() == this) {
        return TakeDrag(static_cast<QDropEvent*>(event));
    }
    return QMainWindow::eventFilter(watched, event);
}

bool FrmMain::event(QEvent* event) {
    // The language's caption (through reflection) is shown behind the name.
    if (event->type() == QEvent::DynamicPropertyChange &&
        static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName() ==
            platform::CaptionProperty &&
        commands_ != nullptr) {
        commands_->ShowTitle();
    }
    return QMainWindow::event(event);
}

} // namespace quarle::ui
