#include "platform/Services.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <QTime>
#include <algorithm>
#include <utility>
#include <vector>

namespace quarle::platform {
namespace {

using Std = QMessageBox::StandardButton;

std::vector<Std> ButtonsOf(Buttons buttons) {
    switch (buttons) {
    case Buttons::Ok:
        return {QMessageBox::Ok};
    case Buttons::OkCancel:
        return {QMessageBox::Ok, QMessageBox::Cancel};
    case Buttons::YesNo:
        return {QMessageBox::Yes, QMessageBox::No};
    case Buttons::YesNoCancel:
        return {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel};
    case Buttons::RetryCancel:
        return {QMessageBox::Retry, QMessageBox::Cancel};
    case Buttons::AbortRetryIgnore:
        return {QMessageBox::Abort, QMessageBox::Retry, QMessageBox::Ignore};
    }
    return {QMessageBox::Ok};
}

QMessageBox::Icon QtIcon(Icon icon) {
    switch (icon) {
    case Icon::None:
        return QMessageBox::NoIcon;
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Information:
        return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

Answer AnswerOf(QAbstractButton* clicked, QMessageBox& box) {
    switch (box.standardButton(clicked)) {
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Retry:
        return Answer::Retry;
    case QMessageBox::Abort:
        return Answer::Abort;
    case QMessageBox::Ignore:
        return Answer::Ignore;
    default:
        return Answer::Cancel;
    }
}

bool EndsWithExe(const QString& program) {
    return program.endsWith(QLatin1String(".exe"), Qt::CaseInsensitive);
}

// Qt's own file dialog reads a typed name with double quotes as a list of
// names ("a" "b") and would save under a quoted piece of it, perhaps in
// another folder. A save takes one name, and takes it as typed.
class FileDialog : public QFileDialog {
public:
    using QFileDialog::QFileDialog;

    // The path of a typed name with quotes, once accepted; empty otherwise.
    QString TypedPath;

protected:
    void accept() override {
        auto* edit = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (acceptMode() != AcceptSave || edit == nullptr ||
            !edit->text().contains(QLatin1Char('"'))) {
            QFileDialog::accept();
            return;
        }
        const QFileInfo info(directory().absoluteFilePath(edit->text()));
        if (info.isDir()) {
            setDirectory(info.absoluteFilePath());
            edit->clear();
            return;
        }
        if (info.exists() && !testOption(DontConfirmOverwrite)) {
            // Qt's own question, in Qt's own words (and language).
            const QString question =
                QCoreApplication::translate("QFileDialog",
                                            "%1 already exists.\nDo you want to replace it?")
                    .arg(info.fileName());
            if (QMessageBox::warning(this, windowTitle(), question,
                                     QMessageBox::Yes | QMessageBox::No,
                                     QMessageBox::No) != QMessageBox::Yes) {
                return;
            }
        }
        TypedPath = info.absoluteFilePath();
        QDialog::accept();
    }
};

} // namespace

QString Services::UserDataFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

qint64 Services::Milliseconds() {
    static const QElapsedTimer clock = [] {
        QElapsedTimer started;
        started.start();
        return started;
    }();
    return clock.elapsed();
}

void Services::SetBusyCursor(bool) {}

bool Services::ShowProgress(const QString&, const QString&, qint64, qint64) {
    return true;
}

void Services::EndProgress() {}

HostEnvironment Services::Environment() {
    return HostEnvironment::OfProcess();
}

bool Services::CanWriteTo(const QString& folder) {
    if (folder.isEmpty() || !QFileInfo(folder).isDir()) {
        return false;
    }
    QTemporaryFile probe(QDir(folder).filePath(QStringLiteral("write-test-XXXXXX.tmp")));
    return probe.open();
}

Launch LaunchFor(const QString& program, const QStringList& arguments) {
#ifdef Q_OS_WIN
    return {program, arguments};
#else
    if (EndsWithExe(program)) {
        return {QStringLiteral("wine"), QStringList{program} + arguments};
    }
    return {program, arguments};
#endif
}

bool ProgramExists(const QString& program) {
    if (program.isEmpty()) {
        return false;
    }
    const bool bare = !program.contains(QLatin1Char('/')) && !program.contains(QLatin1Char('\\'));
    if (bare) {
        return !QStandardPaths::findExecutable(program).isEmpty();
    }
    return QFileInfo(program).isFile();
}

QString QtFileFilter(const QString& filter) {
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns;
        for (const QString& p : parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            const QString pattern = p.trimmed();
            patterns.append(pattern == QLatin1String("*.*") ? QStringLiteral("*") : pattern);
        }
        if (patterns.isEmpty()) {
            patterns.append(QStringLiteral("*"));
        }
        const QString description = parts[i].trimmed();
        filters.append(QStringLiteral("%1 (%2)").arg(
            description.isEmpty() ? patterns.join(QLatin1Char(' ')) : description,
            patterns.join(QLatin1Char(' '))));
    }
    if (filters.isEmpty() && !filter.trimmed().isEmpty()) {
        filters.append(filter.trimmed()); // a lone pattern without description
    }
    return filters.join(QStringLiteral(";;"));
}

QtServices::QtServices(QWidget* dialogParent)
    : dialogParent_(dialogParent), random_(QRandomGenerator::system()->generate()) {}

QWidget* QtServices::Parent() const {
    return dialogParent_ != nullptr ? dialogParent_.data() : QApplication::activeWindow();
}

Answer QtServices::MsgBox(const QString& text, Buttons buttons, Icon icon, const QString& title) {
    QMessageBox box(Parent());
    box.setIcon(QtIcon(icon));
    box.setText(text);
    box.setWindowTitle(title.isEmpty() ? QCoreApplication::applicationName() : title);
    const std::vector<Std> set = ButtonsOf(buttons);
    for (Std b : set) {
        box.addButton(b);
    }
    // The first button is the default, as with the desktop's own message boxes.
    box.setDefaultButton(set.front());
    box.exec();
    return AnswerOf(box.clickedButton(), box);
}

std::optional<FilePick> QtServices::ShowFileDialog(bool save, const QString& title,
                                                   const QString& filter,
                                                   const QString& initialDir) {
    FileDialog dialog(Parent(), title, initialDir, QtFileFilter(filter));
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    const QStringList chosen =
        dialog.TypedPath.isEmpty() ? dialog.selectedFiles() : QStringList{dialog.TypedPath};
    if (chosen.isEmpty() || chosen.front().isEmpty()) {
        return std::nullopt;
    }
    const QString path = QDir::toNativeSeparators(chosen.front());
    return FilePick{path, QFileInfo(chosen.front()).fileName()};
}

std::optional<FilePick> QtServices::ShowOpen(const QString& title, const QString& filter,
                                             const QString& initialDir) {
    return ShowFileDialog(false, title, filter, initialDir);
}

std::optional<FilePick> QtServices::ShowSave(const QString& title, const QString& filter,
                                             const QString& initialDir) {
    return ShowFileDialog(true, title, filter, initialDir);
}

std::optional<QString> QtServices::ShowFolder(const QString& title, const QString& initialDir) {
    QFileDialog dialog(Parent(), title, initialDir);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly, true);
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    const QStringList chosen = dialog.selectedFiles();
    if (chosen.isEmpty() || chosen.front().isEmpty()) {
        return std::nullopt;
    }
    // Folders are held without a closing separator: "C:\\" becomes "C:",
    // while the root of a Unix tree stays "/".
    QString folder = QDir::toNativeSeparators(QDir::cleanPath(chosen.front()));
    while (folder.size() > 1 &&
           (folder.endsWith(QLatin1Char('/')) || folder.endsWith(QLatin1Char('\\')))) {
        folder.chop(1);
    }
    return folder;
}

bool QtServices::StartProgram(const QString& program, const QStringList& arguments) {
    const Launch launch = LaunchFor(program, arguments);
    return QProcess::startDetached(launch.Program, launch.Arguments);
}

QString DataFolderOf(const QString& executableFolder) {
    const QDir beside(executableFolder);
    QString folder = beside.absolutePath();
    // Compared by hand: a name filter would build a pattern matcher for one look.
    bool languageFiles = false;
    for (QDirIterator it(folder, QDir::Files | QDir::Readable); !languageFiles && it.hasNext();) {
        languageFiles =
            it.nextFileInfo().fileName().endsWith(QLatin1String(".lng"), Qt::CaseInsensitive);
    }
    const QDir installed(beside.filePath(QStringLiteral("../share/quarle")));
    if (!languageFiles && installed.exists()) {
        folder = installed.canonicalPath();
    }
    folder = QDir::toNativeSeparators(folder);
    while (folder.size() > 1 &&
           (folder.endsWith(QLatin1Char('/')) || folder.endsWith(QLatin1Char('\\')))) {
        folder.chop(1);
    }
    return folder;
}

QString QtServices::ProgramFolder() {
    if (programFolder_.isEmpty()) {
        programFolder_ = DataFolderOf(QCoreApplication::applicationDirPath());
    }
    return programFolder_;
}

double QtServices::Rnd() {
    return random_.generateDouble();
}

double QtServices::Timer() {
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

} // namespace quarle::platform

namespace quarle::platform {

void QtServices::SetBusyCursor(bool busy) {
    if (busy == busy_) {
        return;
    }
    busy_ = busy;
    if (busy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

bool QtServices::ShowProgress(const QString& title, const QString& text, qint64 done,
                              qint64 total) {
    // The bar counts in steps of an int; large totals are scaled down.
    const qint64 scale = std::max<qint64>(1, total / 100000);
    if (!progress_) {
        progress_ = std::make_unique<QProgressDialog>(Parent());
        progress_->setWindowModality(Qt::WindowModal);
        progress_->setMinimumDuration(0); // the caller has waited already
        progress_->setAutoReset(false);
        progress_->setAutoClose(false);
    }
    progress_->setWindowTitle(title);
    progress_->setLabelText(text);
    progress_->setMaximum(static_cast<int>(std::max<qint64>(1, total / scale)));
    progress_->setValue(
        static_cast<int>(std::clamp<qint64>(done / scale, 0, progress_->maximum())));
    if (!progress_->isVisible()) {
        progress_->show();
    }
    QCoreApplication::processEvents();
    return !progress_->wasCanceled();
}

void QtServices::EndProgress() {
    progress_.reset();
}

} // namespace quarle::platform
