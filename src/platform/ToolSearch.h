// Where the external tools are found on this host, and whether a path names
// one that can be started. Knows the environment only through
// HostEnvironment, so a test hands in a search path and a home of its own.
//
// Off Windows the compiler and the viewer are looked up in this order:
//   1. the native program on the search path ("studiomdl", "hlmv");
//   2. in each of these folders under the home, in this order, the native
//      program and then the Windows one ("studiomdl.exe", "hlmv.exe"):
//        .local/bin
//        .steam/steam/steamapps/common/Half-Life SDK/Model Tools
//        .steam/steam/steamapps/common/Half-Life SDK/Model Viewer
//        .local/share/Steam/steamapps/common/Half-Life SDK/Model Tools
//        .local/share/Steam/steamapps/common/Half-Life SDK/Model Viewer
//        .wine/drive_c/half-life/tools
//   A Windows program counts only when wine is on the search path.
// The text editor is $VISUAL, then $EDITOR, each by its first word and only
// when that program is on the search path and is no terminal editor (vi,
// nano, emacs -nw and the like cannot show in a window of their own and are
// skipped), and else "xdg-open", the desktop's opener.
#pragma once

#include <QString>
#include <QStringList>

namespace quarle::platform {

struct HostEnvironment {
    QString Path;   // the search path, folders joined by ':' (';' on Windows)
    QString Home;   // the user's home folder
    QString Visual; // $VISUAL
    QString Editor; // $EDITOR
    // The user's language for the program's texts, as the system names it
    // ("de-DE", "en_US.UTF-8"; on Windows the user's UI language); empty
    // when it names none.
    QString Language;

    // The running process's own.
    static HostEnvironment OfProcess();
};

// The folders under the home searched for the compiler and viewer, in order.
QStringList ToolFolders(const HostEnvironment& env);

// The first executable file of this name on the search path, or "".
QString FindOnPath(const QString& name, const HostEnvironment& env);

// The compiler, viewer and text editor found as above, or "" when there is
// none; always "" on Windows, where the designed places stay.
QString FindCompiler(const HostEnvironment& env);
QString FindViewer(const HostEnvironment& env);
QString FindTextEditor(const HostEnvironment& env);

// Whether a program's path (or a bare name looked up on the search path)
// can be started here.
enum class ToolState {
    Startable,     // an executable file
    ThroughWine,   // a Windows program, and wine is on the search path
    Missing,       // no such file (or, for a bare name, not on the path)
    NotExecutable, // a file that may not be run
    NoWine,        // a Windows program, and no wine to run it
};
ToolState CheckTool(const QString& program, const HostEnvironment& env);
inline bool CanStart(ToolState state) {
    return state == ToolState::Startable || state == ToolState::ThroughWine;
}

} // namespace quarle::platform
