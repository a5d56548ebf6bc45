#include "ui/localisation/ApplyLanguage.h"

#include "localisation/LanguageFile.h"
#include "localisation/MessageTexts.h"
#include "platform/LanguageFolders.h"
#include "platform/Reflection.h"
#include "ui/localisation/Messages.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <algorithm>
#include <filesystem>

namespace quarle::ui {
namespace {

QString FromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

class MessageHost : public LanguageHost {
public:
    explicit MessageHost(platform::Services& services) : services_(services) {}

    void IncompleteWarning() override { Warn(IncompleteWarningText, IncompleteWarningTitle); }
    void OutdatedWarning() override { Warn(OutdatedWarningText, OutdatedWarningTitle); }

private:
    void Warn(std::string_view text, std::string_view title) {
        services_.MsgBox(FromUtf8(text), platform::Buttons::Ok, platform::Icon::Exclamation,
                         FromUtf8(title));
    }

    platform::Services& services_;
};

// Writes through reflection; a property the control doesn't have is ignored.
class FormWriter : public SectionTarget {
public:
    FormWriter(QWidget* form, const QList<platform::ControlInfo>& controls)
        : form_(form), controls_(controls) {}

    void SetTitle(const std::string& text) override {
        platform::SetCaption(form_, QString::fromStdString(text));
    }
    void SetCaption(std::size_t control, const std::string& text) override {
        platform::SetCaption(Object(control), QString::fromStdString(text));
    }
    void SetToolTip(std::size_t control, const std::string& text) override {
        platform::SetToolTipText(Object(control), QString::fromStdString(text));
    }

private:
    QObject* Object(std::size_t control) const {
        return controls_.at(static_cast<qsizetype>(control)).Object;
    }

    QWidget* form_;
    const QList<platform::ControlInfo>& controls_;
};

std::filesystem::path FsPath(const QString& path) {
    return std::filesystem::path(path.toStdU16String());
}

// Qt's own texts (the buttons of message boxes, the file dialogs) in the
// language of the program: German with deutsch.lng, Qt's English otherwise.
// Without Qt's translations on the system they stay English.
void UseQtTranslations(const std::string& languageFile) {
    static QTranslator* german = nullptr;
    const bool wanted =
        QString::fromStdString(languageFile)
            .compare(QLatin1String(DefaultLanguageFile.data()), Qt::CaseInsensitive) == 0;
    if (wanted == (german != nullptr)) {
        return;
    }
    if (!wanted) {
        QCoreApplication::removeTranslator(german);
        delete german;
        german = nullptr;
        return;
    }
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (!translator->load(QLocale(QLocale::German), QStringLiteral("qtbase"), QStringLiteral("_"),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete translator;
        return;
    }
    QCoreApplication::installTranslator(translator);
    german = translator;
}

} // namespace

LanguageRead ReadLanguage(const AppState& state, platform::Services& services,
                          const std::string& fileName) {
    LanguageRead read;
    LanguageRead incomplete; // the first copy that is read but holds no strings
    const QString name = QString::fromStdString(fileName);
    for (const QString& place : platform::LanguagePlaces(services)) {
        const QString path = QDir(place).filePath(name);
        if (!QFileInfo::exists(path) && !QFileInfo(path).isSymLink()) {
            continue;
        }
        OpenProblem problem;
        std::optional<std::vector<std::string>> lines = ReadLanguageLines(FsPath(path), &problem);
        QString why;
        if (!lines) {
            problem.Path = QDir::toNativeSeparators(path).toStdString();
            why = OpenProblemText(state, problem);
        } else if (std::find(lines->begin(), lines->end(), GlobalStringsLine) == lines->end()) {
            why = MessageText(state, MSG_LANGUAGE_NO_STRINGS);
            if (!incomplete.Lines) {
                incomplete.Lines = std::move(lines);
                incomplete.Path = path;
            }
        } else {
            read.Lines = std::move(lines);
            read.Path = path;
            return read;
        }
        if (read.Broken.isEmpty()) {
            read.Broken = path;
            read.Why = why;
        }
    }
    // No copy is whole: one that is read at all is used, and the reader's
    // warnings say what it lacks.
    return incomplete.Lines ? incomplete : read;
}

void ApplyLanguage(AppState& state, platform::Services& services, QWidget* form) {
    if (form == nullptr) {
        return;
    }
    const bool isMain = form->objectName() == QLatin1String("FrmMain");
    LanguageRead read;

    if (isMain) {
        // A missing language falls back to German; without that file, too,
        // every caption stays as designed and the texts keep what they hold.
        read = ReadLanguage(state, services, state.Settings.LanguageFile);
        if (!read.Lines) {
            const LanguageRead unusable = read;
            state.Settings.LanguageFile = std::string(DefaultLanguageFile);
            read = ReadLanguage(state, services, state.Settings.LanguageFile);
            if (read.Broken.isEmpty()) {
                read.Broken = unusable.Broken;
                read.Why = unusable.Why;
            }
        }
        if (!read.Lines) {
            return;
        }
        const std::vector<std::string>& lines = *read.Lines;
        UseQtTranslations(state.Settings.LanguageFile);
        // The messages the key table has no place for: English wherever the
        // file gives none, so no text of an earlier language stays behind.
        ReadMessageTexts(lines, state.MsgTexts);
        // A copy of the user's that cannot be used is named, in the language
        // of the copy used in its place.
        if (!read.Broken.isEmpty()) {
            services.MsgBox(MessageText(state, MSG_LANGUAGE_BROKEN,
                                        {QDir::toNativeSeparators(read.Broken), read.Why,
                                         QDir::toNativeSeparators(read.Path)}),
                            platform::Buttons::Ok, platform::Icon::Exclamation,
                            QStringLiteral("Quarle"));
        }
        MessageHost host(services);
        if (!ReadGlobalStrings(lines, state.IdsTexts, host)) {
            return;
        }
    } else {
        read = ReadLanguage(state, services, state.Settings.LanguageFile);
        if (!read.Lines) {
            return;
        }
    }
    const std::vector<std::string>& lines = *read.Lines;

    const QList<platform::ControlInfo> controls = platform::ControlsOf(form);
    std::vector<FormControl> keys;
    keys.reserve(static_cast<std::size_t>(controls.size()));
    for (const platform::ControlInfo& control : controls) {
        keys.push_back(FormControl{control.Name.toStdString(), control.Index});
        if (isMain && control.Index == -1 && control.Name == QLatin1String("TabSmd")) {
            platform::SetTabCaption(control.Object, 1,
                                    QString::fromStdString(state.IdsTexts[IDS_ANIMATIONFILES]));
        }
    }
    FormWriter writer(form, controls);
    ApplySection(lines, form->objectName().toStdString(), keys, state.Settings.RecentFiles, writer);
}

} // namespace quarle::ui
