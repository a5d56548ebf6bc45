#include "ui/localisation/ApplyLanguage.h"

#include "localisation/LanguageFile.h"
#include "localisation/MessageTexts.h"
#include "platform/LanguageFolders.h"
#include "platform/Reflection.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

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

QString LanguagePath(platform::Services& services, const std::string& file) {
    return platform::LanguageReadPath(services, QString::fromStdString(file));
}

std::optional<std::vector<std::string>> ReadLines(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    return SplitLines(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
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

void ApplyLanguage(AppState& state, platform::Services& services, QWidget* form) {
    if (form == nullptr) {
        return;
    }
    const bool isMain = form->objectName() == QLatin1String("FrmMain");
    std::optional<std::vector<std::string>> lines;

    if (isMain) {
        // A missing language falls back to German; without that file, too,
        // every caption stays as designed and the texts keep what they hold.
        if (!QFileInfo(LanguagePath(services, state.Settings.LanguageFile)).isFile()) {
            state.Settings.LanguageFile = std::string(DefaultLanguageFile);
            if (!QFileInfo(LanguagePath(services, state.Settings.LanguageFile)).isFile()) {
                return;
            }
        }
        lines = ReadLines(LanguagePath(services, state.Settings.LanguageFile));
        if (!lines) {
            return;
        }
        UseQtTranslations(state.Settings.LanguageFile);
        // The messages the key table has no place for: English wherever the
        // file gives none, so no text of an earlier language stays behind.
        ReadMessageTexts(*lines, state.MsgTexts);
        MessageHost host(services);
        if (!ReadGlobalStrings(*lines, state.IdsTexts, host)) {
            return;
        }
        if (QObject* tab = platform::FindControl(form, QStringLiteral("TabSmd"))) {
            platform::SetTabCaption(tab, 1,
                                    QString::fromStdString(state.IdsTexts[IDS_ANIMATIONFILES]));
        }
    } else {
        lines = ReadLines(LanguagePath(services, state.Settings.LanguageFile));
        if (!lines) {
            return;
        }
    }

    const QList<platform::ControlInfo> controls = platform::ControlsOf(form);
    std::vector<FormControl> keys;
    keys.reserve(static_cast<std::size_t>(controls.size()));
    for (const platform::ControlInfo& control : controls) {
        keys.push_back(FormControl{control.Name.toStdString(), control.Index});
    }
    FormWriter writer(form, controls);
    ApplySection(*lines, form->objectName().toStdString(), keys, state.Settings.RecentFiles,
                 writer);
}

} // namespace quarle::ui
