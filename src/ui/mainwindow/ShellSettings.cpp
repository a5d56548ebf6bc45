#include "ui/mainwindow/ShellSettings.h"
#include "ui/common/Texts.h"

#include "localisation/LanguageFile.h"
#include "platform/Cp1252Text.h"
#include "platform/Services.h"

namespace quarle::ui {
namespace {

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
#ifdef Q_OS_WIN
    return InProgramFolder(programFolder, "mdlv.exe");
#else
    // No viewer beside the program off Windows: the program's own preview.
    (void)programFolder;
    return QString::fromLatin1(PreviewViewer.data(), qsizetype(PreviewViewer.size()));
#endif
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
                      const platform::HostEnvironment& env, ToolSettings& settings) {
    settings.StudioMdlPath = platform::ToCp1252Marked(ReadSetting(store, setting::StudioMdl));
    settings.ModelViewerPath = platform::ToCp1252Marked(ReadSetting(store, setting::ModelViewer));
    settings.LanguageFile = ReadSetting(store, setting::Language).toStdString();
    settings.TextEditorPath = platform::ToCp1252Marked(ReadSetting(store, setting::TextEditor));
    // What the store leaves empty is looked for on the host first. A place
    // that the settings' code page cannot name counts as not found.
    const auto orDefault = [](const QString& found, const QString& fallback) {
        return platform::ToCp1252Marked(found.isEmpty() || !platform::ToCp1252(found) ? fallback
                                                                                      : found);
    };
    if (settings.StudioMdlPath.empty()) {
        settings.StudioMdlPath =
            orDefault(platform::FindCompiler(env), DefaultStudioMdlPath(programFolder));
    }
#ifndef Q_OS_WIN
    // The Windows viewer beside the program, which earlier versions stored
    // off Windows too, gives way to the preview while it is not there.
    const QString besideProgram = InProgramFolder(programFolder, "mdlv.exe");
    if (platform::FromCp1252(settings.ModelViewerPath) == besideProgram &&
        !platform::ProgramExists(besideProgram)) {
        settings.ModelViewerPath.clear();
    }
#endif
    if (settings.ModelViewerPath.empty()) {
        settings.ModelViewerPath =
            orDefault(platform::FindViewer(env), DefaultModelViewerPath(programFolder));
    }
    if (settings.TextEditorPath.empty()) {
        settings.TextEditorPath = orDefault(platform::FindTextEditor(env), DefaultTextEditorPath());
    }
    // A first start speaks the user's language: German for a German
    // locale, English for any other. The settings dialog's choice is stored
    // at the stop and wins from then on.
    if (settings.LanguageFile.empty()) {
        settings.LanguageFile = FirstStartLanguage(env.Language.toStdString());
    }
}

bool ToolNoticeDue(const platform::SettingsStore& store, const platform::HostEnvironment& env,
                   const ToolSettings& settings) {
#ifdef Q_OS_WIN
    (void)store;
    (void)env;
    (void)settings;
    return false;
#else
    return ReadSetting(store, setting::StudioMdl).isEmpty() &&
           ReadSetting(store, setting::ToolNotice).isEmpty() &&
           !platform::CanStart(
               platform::CheckTool(platform::FromCp1252(settings.StudioMdlPath), env));
#endif
}

bool CompilerOffered(const QString& studioMdlPath, const platform::HostEnvironment& env) {
    return platform::ProgramExists(studioMdlPath) &&
           platform::CheckTool(studioMdlPath, env) != platform::ToolState::NoWine;
}

static_assert(setting::RecentFiles.size() ==
              std::tuple_size_v<decltype(ToolSettings::RecentFiles)>);

void ReadRecentFiles(const platform::SettingsStore& store, ToolSettings& settings) {
    for (std::size_t i = 0; i < settings.RecentFiles.size(); ++i) {
        const QString value = ReadSetting(store, setting::RecentFiles[i]);
        // The entries are scripts' paths, held as the document holds text;
        // one that text cannot name is left empty.
        settings.RecentFiles[i] =
            value.isEmpty() ? EmptyRecentFile
                            : platform::ToCp1252(value).value_or(std::string(EmptyRecentFile));
    }
}

QList<std::pair<QString, QString>> SettingsToWrite(const ToolSettings& settings) {
    QList<std::pair<QString, QString>> writes{
        {QLatin1String(setting::StudioMdl.Name), platform::FromCp1252(settings.StudioMdlPath)},
        {QLatin1String(setting::TextEditor.Name), platform::FromCp1252(settings.TextEditorPath)},
        {QLatin1String(setting::ModelViewer.Name), platform::FromCp1252(settings.ModelViewerPath)},
        {QLatin1String(setting::Language.Name), Text(settings.LanguageFile)},
    };
    for (std::size_t i = 0; i < settings.RecentFiles.size(); ++i) {
        writes.append({QLatin1String(setting::RecentFiles[i].Name),
                       platform::FromCp1252(settings.RecentFiles[i])});
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
