#include "platform/ToolSearch.h"

#include <QDir>
#include <QLocale>
#include <QFileInfo>
#include <QProcessEnvironment>

namespace quarle::platform {
namespace {

#ifdef Q_OS_WIN
constexpr QChar PathSeparator = QLatin1Char(';');
constexpr bool WindowsHost = true;
#else
constexpr QChar PathSeparator = QLatin1Char(':');
constexpr bool WindowsHost = false;
#endif

bool IsExecutableFile(const QString& path) {
    const QFileInfo info(path);
    return info.isFile() && info.isExecutable();
}

bool IsWindowsProgram(const QString& path) {
    return path.endsWith(QLatin1String(".exe"), Qt::CaseInsensitive);
}

bool HasWine(const HostEnvironment& env) {
    return !FindOnPath(QStringLiteral("wine"), env).isEmpty();
}

// The native program on the search path, then in the home's tool folders
// the native program or the Windows one (this one only with wine).
QString FindTool(const QString& name, const HostEnvironment& env) {
    if (WindowsHost) {
        return {}; // the designed places stay
    }
    if (const QString found = FindOnPath(name, env); !found.isEmpty()) {
        return found;
    }
    const bool wine = HasWine(env);
    for (const QString& folder : ToolFolders(env)) {
        const QDir dir(folder);
        if (IsExecutableFile(dir.filePath(name))) {
            return dir.filePath(name);
        }
        const QString windows = dir.filePath(name + QStringLiteral(".exe"));
        if (wine && QFileInfo(windows).isFile()) {
            return windows;
        }
    }
    return {};
}

// Editors that need a terminal and so cannot open a script from a window.
bool IsTerminalEditor(const QString& program) {
    static const QStringList terminal{
        QStringLiteral("vi"),    QStringLiteral("vim"),  QStringLiteral("nvim"),
        QStringLiteral("view"),  QStringLiteral("nano"), QStringLiteral("pico"),
        QStringLiteral("ed"),    QStringLiteral("ex"),   QStringLiteral("micro"),
        QStringLiteral("joe"),   QStringLiteral("jed"),  QStringLiteral("ne"),
        QStringLiteral("mg"),    QStringLiteral("kak"),  QStringLiteral("hx"),
        QStringLiteral("helix"), QStringLiteral("emacs")};
    return terminal.contains(QFileInfo(program).fileName());
}

// The program of an editor variable ("gvim -f" gives gvim's path), or "".
QString EditorOf(const QString& variable, const HostEnvironment& env) {
    const QStringList words = variable.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.isEmpty() || IsTerminalEditor(words.front())) {
        return {};
    }
    const QString& program = words.front();
    if (program.contains(QLatin1Char('/'))) {
        return IsExecutableFile(program) ? program : QString();
    }
    return FindOnPath(program, env);
}

} // namespace

HostEnvironment HostEnvironment::OfProcess() {
    const QProcessEnvironment process = QProcessEnvironment::systemEnvironment();
    // The first of the UI languages: LANGUAGE, LC_ALL, LC_MESSAGES or LANG
    // off Windows, the user's display language on Windows.
    return {process.value(QStringLiteral("PATH")), QDir::homePath(),
            process.value(QStringLiteral("VISUAL")), process.value(QStringLiteral("EDITOR")),
            QLocale::system().uiLanguages().value(0)};
}

QStringList ToolFolders(const HostEnvironment& env) {
    if (env.Home.isEmpty()) {
        return {};
    }
    const QDir home(env.Home);
    const QString sdk = QStringLiteral("steamapps/common/Half-Life SDK/");
    QStringList folders;
    for (const QString& steam :
         {QStringLiteral(".steam/steam/"), QStringLiteral(".local/share/Steam/")}) {
        folders.append(home.filePath(steam + sdk + QStringLiteral("Model Tools")));
        folders.append(home.filePath(steam + sdk + QStringLiteral("Model Viewer")));
    }
    folders.prepend(home.filePath(QStringLiteral(".local/bin")));
    folders.append(home.filePath(QStringLiteral(".wine/drive_c/half-life/tools")));
    return folders;
}

QString FindOnPath(const QString& name, const HostEnvironment& env) {
    for (const QString& folder : env.Path.split(PathSeparator, Qt::SkipEmptyParts)) {
        const QString candidate = QDir(folder).filePath(name);
        if (IsExecutableFile(candidate)) {
            return candidate;
        }
    }
    return {};
}

QString FindCompiler(const HostEnvironment& env) {
    return FindTool(QStringLiteral("studiomdl"), env);
}

QString FindViewer(const HostEnvironment& env) {
    return FindTool(QStringLiteral("hlmv"), env);
}

QString FindTextEditor(const HostEnvironment& env) {
    if (WindowsHost) {
        return {};
    }
    for (const QString& variable : {env.Visual, env.Editor}) {
        if (const QString editor = EditorOf(variable, env); !editor.isEmpty()) {
            return editor;
        }
    }
    return {};
}

ToolState CheckTool(const QString& program, const HostEnvironment& env) {
    if (program.isEmpty()) {
        return ToolState::Missing;
    }
    QString path = program;
    if (!program.contains(QLatin1Char('/')) && !program.contains(QLatin1Char('\\'))) {
        path = FindOnPath(program, env);
        if (path.isEmpty()) {
            return ToolState::Missing;
        }
    }
    if (!QFileInfo(path).isFile()) {
        return ToolState::Missing;
    }
    if (IsWindowsProgram(path)) {
        if (WindowsHost) {
            return ToolState::Startable;
        }
        return HasWine(env) ? ToolState::ThroughWine : ToolState::NoWine;
    }
    return QFileInfo(path).isExecutable() ? ToolState::Startable : ToolState::NotExecutable;
}

} // namespace quarle::platform
