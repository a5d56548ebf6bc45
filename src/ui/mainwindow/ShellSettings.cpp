#include "ui/mainwindow/ShellSettings.h"

#include "platform/Cp1252Text.h"

namespace quarle::ui {
namespace {

QString Text(const std::string& s) {
    return QString::fromStdString(s);
}

QString InProgramFolder(const QString& programFolder, const char* file) {
#ifdef Q_OS_WIN
    return programFolder + QLatin1Char('\\') + QLatin1String(file);
#else
    return programFolder + QLatin1Char('/') + QLatin1String(file);
#endif
}

} // namespace

QString DefaultStudioMdlPath(const QString& programFolder) {
    return InProgramFolder(programFolder, "studiomdl.exe");
}

QString DefaultModelViewerPath(const QString& programFolder) {
    return InProgramFolder(programFolder, "mdlv.exe");
}

QString DefaultTextEditorPath() {
#if defined(Q_OS_WIN)
    return QStringLiteral("notepad.exe");
#elif defined(Q_OS_MACOS)
    return QStringLiteral("open");
#else
    return QStringLiteral("xdg-open");
#endif
}

void ReadToolSettings(const platform::SettingsStore& store, const QString& programFolder,
                      ToolSettings& settings) {
    settings.StudioMdlPath = store.Get(QStringLiteral("StudioMdl")).toStdString();
    settings.ModelViewerPath = store.Get(QStringLiteral("ModelViewer")).toStdString();
    settings.LanguageFile = store.Get(QStringLiteral("Language")).toStdString();
    settings.TextEditorPath = store.Get(QStringLiteral("TextEditor")).toStdString();
    if (settings.StudioMdlPath.empty()) {
        settings.StudioMdlPath = DefaultStudioMdlPath(programFolder).toStdString();
    }
    if (settings.ModelViewerPath.empty()) {
        settings.ModelViewerPath = DefaultModelViewerPath(programFolder).toStdString();
    }
    if (settings.TextEditorPath.empty()) {
        settings.TextEditorPath = DefaultTextEditorPath().toStdString();
    }
    if (settings.LanguageFile.empty()) {
        settings.LanguageFile = DefaultLanguage;
    }
}

void ReadRecentFiles(const platform::SettingsStore& store, ToolSettings& settings) {
    for (std::size_t i = 0; i < settings.RecentFiles.size(); ++i) {
        const QString value = store.Get(QStringLiteral("Recentfile%1").arg(i));
        // The entries are scripts' paths, held as the document holds text;
        // one that text cannot name is left empty.
        settings.RecentFiles[i] =
            value.isEmpty() ? EmptyRecentFile
                            : platform::ToCp1252(value).value_or(std::string(EmptyRecentFile));
    }
}

QList<std::pair<QString, QString>> SettingsToWrite(const ToolSettings& settings) {
    QList<std::pair<QString, QString>> writes{
        {QStringLiteral("StudioMDL"), Text(settings.StudioMdlPath)},
        {QStringLiteral("TextEditor"), Text(settings.TextEditorPath)},
        {QStringLiteral("ModelViewer"), Text(settings.ModelViewerPath)},
        {QStringLiteral("Language"), Text(settings.LanguageFile)},
    };
    for (std::size_t i = 0; i < settings.RecentFiles.size(); ++i) {
        writes.append(
            {QStringLiteral("RecentFile%1").arg(i), platform::FromCp1252(settings.RecentFiles[i])});
    }
    return writes;
}

void WriteSettings(platform::SettingsStore& store, const ToolSettings& settings) {
    for (const auto& [key, value] : SettingsToWrite(settings)) {
        store.Set(key, value);
    }
    store.Sync();
}

} // namespace quarle::ui
