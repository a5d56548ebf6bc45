// The main window on the desktop: whether the document differs from what was
// last loaded or saved, the question before such changes would be lost, the
// title bar that names the script, scripts dropped on the window or named on
// the command line, and the end of the desktop session.
//
// The forms write into the document directly and tell nobody, so a change is
// found by comparison: the document is rendered as the writer would save it
// and compared with the rendering of the last load, save or new document.
// Only what a save would write counts; a selection or a page shown does not.
// The rendering takes a few milliseconds even on the largest scripts, and it
// runs only when asked (the questions) and shortly after the user's input
// (the title bar), never on a timer of its own.
#include "document/Paths.h"
#include "document/QcWriter.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "ui/localisation/Messages.h"
#include "ui/mainwindow/FrmMain.h"

#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <sstream>

#ifndef QT_NO_SESSIONMANAGER
#include <QSessionManager>
#endif

namespace quarle::ui {
namespace {

std::string Rendered(const Document& doc) {
    std::ostringstream out;
    WriteQcScript(doc, out, '.');
    return std::move(out).str();
}

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
    connect(titleCheck_, &QTimer::timeout, this, &FrmMain::ShowTitle);
    qApp->installEventFilter(this);
    MarkSaved();
#ifndef QT_NO_SESSIONMANAGER
    connect(qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& manager) {
        if (!SessionEnding(manager.allowsInteraction())) {
            manager.cancel();
        }
    });
#endif
}

// ---------------------------------------------------------------------------
// Changes and the question

void FrmMain::MarkSaved() {
    savedText_ = Rendered(state_.Doc);
    ShowTitle();
}

bool FrmMain::DocumentChanged() const {
    return Rendered(state_.Doc) != savedText_;
}

QString FrmMain::ScriptTitle() const {
    const std::string& file = state_.Doc.QcFile;
    return file.empty() ? MessageText(state_, MSG_UNTITLED)
                        : platform::FromCp1252(paths::FileNameOf(file));
}

void FrmMain::ShowTitle() {
    const QString title = ScriptTitle() + (DocumentChanged() ? QStringLiteral("*") : QString()) +
                          QStringLiteral(" \u2014 ") +
                          property(platform::CaptionProperty).toString();
    if (windowTitle() != title) {
        setWindowTitle(title);
    }
}

bool FrmMain::SaveChangesFirst() {
    if (!DocumentChanged()) {
        return true;
    }
    const platform::Answer answer = services_.MsgBox(
        MessageText(state_, MSG_UNSAVED_CHANGES, {ScriptTitle()}), platform::Buttons::YesNoCancel,
        platform::Icon::Exclamation, property(platform::CaptionProperty).toString());
    switch (answer) {
    case platform::Answer::Yes:
        // A cancelled save dialog or a failed write keeps the document.
        return SaveQcFile();
    case platform::Answer::No:
        return true;
    default:
        return false;
    }
}

bool FrmMain::SessionEnding(bool mayAsk) {
    if (mayAsk && !SaveChangesFirst()) {
        return false;
    }
    // The process may end without a close of the window: the settings are
    // written now.
    WriteSettingsNow();
    return true;
}

// ---------------------------------------------------------------------------
// Scripts from the desktop

void FrmMain::OpenGivenScript(const QString& path) {
    const QString full = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    if (const std::optional<std::string> typed = TypedText(state_, services_, full)) {
        OpenQcFile(*typed);
    }
}

void FrmMain::OpenDroppedScript(const QString& path) {
    if (SaveChangesFirst()) {
        OpenGivenScript(path);
    }
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
        QTimer::singleShot(0, this, [this, path = *script] { OpenDroppedScript(path); });
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
            platform::CaptionProperty) {
        ShowTitle();
    }
    return QMainWindow::event(event);
}

} // namespace quarle::ui
