// Writes the designed texts of every form in the catalogue, as each form
// stands when it is built and before a language file is applied: one line per
// form ("Titel", its caption) and per registered control, with the control's
// key, caption and tool tip. generate.py takes the German texts of the
// language files from this dump (tools/lng/forms.tsv).
//
//   quarle-form-texts OUT                 write the dump to OUT
//   quarle-form-texts OUT --against FILE  also exit 1, naming each form and
//                                         control, where FILE says otherwise
//
// The file is UTF-8, tab separated; a property the control doesn't have is
// "<not available>", and a tab, line break or backslash in a text is written
// as \t, \n, \r or \\.
#include "AppState.h"
#include "platform/Reflection.h"
#include "platform/SettingsStore.h"
#include "ui/FormCatalogue.h"
#include "ui/mainwindow/FrmMain.h"

#include <QApplication>
#include <QFile>
#include <QLocale>
#include <QStringList>
#include <QTemporaryDir>
#include <QTextStream>
#include <cstdio>
#include <map>
#include <memory>
#include <utility>

namespace {

using namespace quarle;

const QString NotAvailable = QStringLiteral("<not available>");

// Building a form asks the user nothing and starts nothing; a question here
// is a fault of the form and fails the dump.
class SilentServices : public platform::Services {
public:
    platform::Answer MsgBox(const QString& text, platform::Buttons, platform::Icon,
                            const QString&) override {
        Refused(QStringLiteral("a message: ") + text);
        return platform::Answer::Cancel;
    }
    std::optional<platform::FilePick> ShowOpen(const QString& title, const QString&,
                                               const QString&) override {
        Refused(QStringLiteral("a file dialog: ") + title);
        return std::nullopt;
    }
    std::optional<platform::FilePick> ShowSave(const QString& title, const QString&,
                                               const QString&) override {
        Refused(QStringLiteral("a file dialog: ") + title);
        return std::nullopt;
    }
    std::optional<QString> ShowFolder(const QString& title, const QString&) override {
        Refused(QStringLiteral("a folder chooser: ") + title);
        return std::nullopt;
    }
    bool StartProgram(const QString& program, const QStringList&) override {
        Refused(QStringLiteral("a program start: ") + program);
        return false;
    }
    QString ProgramFolder() override { return QCoreApplication::applicationDirPath(); }
    double Rnd() override { return 0.0; }
    double Timer() override { return 0.0; }

    bool Asked = false;

private:
    void Refused(const QString& what) {
        std::fprintf(stderr, "quarle-form-texts: a form asked for %s\n", qPrintable(what));
        Asked = true;
    }
};

QString Escaped(const std::optional<QString>& text) {
    if (!text) {
        return NotAvailable;
    }
    QString out;
    for (const QChar c : *text) {
        switch (c.unicode()) {
        case '\\':
            out += QStringLiteral("\\\\");
            break;
        case '\t':
            out += QStringLiteral("\\t");
            break;
        case '\n':
            out += QStringLiteral("\\n");
            break;
        case '\r':
            out += QStringLiteral("\\r");
            break;
        default:
            out += c;
        }
    }
    return out;
}

// The lines of the dump, in catalogue order and each form's creation order.
QStringList DumpLines(SilentServices& services) {
    QTemporaryDir folder;
    platform::SettingsStore settings(folder.filePath(QStringLiteral("settings.ini")));
    auto state = std::make_unique<AppState>();
    ui::FrmMain main(*state, services, settings);
    ui::FormNeeds needs{*state, services, settings, main};

    QStringList lines;
    for (const ui::CataloguedForm& entry : ui::FormCatalogue()) {
        const QString name = QString::fromLatin1(entry.Name);
        const std::unique_ptr<QWidget> form = entry.Make(needs);
        if (form->objectName() != name) {
            std::fprintf(stderr, "quarle-form-texts: %s builds a form named %s\n", entry.Name,
                         qPrintable(form->objectName()));
            services.Asked = true;
        }
        lines << QStringList{name, QStringLiteral("Titel"),
                             Escaped(platform::Caption(form.get()).value_or(QString())),
                             NotAvailable}
                     .join(QLatin1Char('\t'));
        for (const platform::ControlInfo& control : platform::ControlsOf(form.get())) {
            lines << QStringList{name, control.Key(), Escaped(platform::Caption(control.Object)),
                                 Escaped(platform::ToolTipText(control.Object))}
                         .join(QLatin1Char('\t'));
        }
    }
    return lines;
}

const QString Head =
    QStringLiteral("# form\tcontrol\tcaption\ttool tip (written by quarle-form-texts; "
                   "the designed texts, before a language file is applied)");

bool Write(const QString& path, const QStringList& lines) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        return false;
    }
    const QByteArray text = (QStringList{Head} + lines).join(QLatin1Char('\n')).toUtf8() + '\n';
    return file.write(text) == text.size() && file.flush();
}

// Form and control (in upper case, as a language file compares keys) of a
// line, and the control's key with its texts.
using Rows = std::map<std::pair<QString, QString>, std::pair<QString, QString>>;
Rows RowsOf(const QStringList& lines) {
    Rows rows;
    for (const QString& line : lines) {
        const QStringList fields = line.split(QLatin1Char('\t'));
        if (line.startsWith(QLatin1Char('#')) || fields.size() < 2) {
            continue;
        }
        rows[{fields[0], fields[1].toUpper()}] = {fields[1],
                                                  fields.mid(2).join(QStringLiteral(" | "))};
    }
    return rows;
}

// Names each form and control where the committed dump differs from the forms.
int Compare(const QStringList& built, const QString& committedPath) {
    QFile file(committedPath);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "quarle-form-texts: cannot read %s\n", qPrintable(committedPath));
        return 1;
    }
    const QStringList committedLines =
        QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (QStringList{Head} + built == committedLines) {
        return 0;
    }
    const Rows forms = RowsOf(built);
    const Rows committed = RowsOf(committedLines);
    int differences = 0;
    for (const auto& [key, row] : forms) {
        const auto it = committed.find(key);
        if (it == committed.end()) {
            std::fprintf(stderr, "%s %s: not in %s\n", qPrintable(key.first), qPrintable(row.first),
                         qPrintable(committedPath));
        } else if (it->second != row) {
            std::fprintf(stderr, "%s %s: the form has \"%s\", %s has %s \"%s\"\n",
                         qPrintable(key.first), qPrintable(row.first), qPrintable(row.second),
                         qPrintable(committedPath), qPrintable(it->second.first),
                         qPrintable(it->second.second));
        } else {
            continue;
        }
        ++differences;
    }
    for (const auto& [key, row] : committed) {
        if (!forms.count(key)) {
            std::fprintf(stderr, "%s %s: in %s, but no such control\n", qPrintable(key.first),
                         qPrintable(row.first), qPrintable(committedPath));
            ++differences;
        }
    }
    if (differences == 0) {
        std::fprintf(stderr, "%s: the controls are in another order than the forms create them\n",
                     qPrintable(committedPath));
    }
    std::fprintf(stderr,
                 "quarle-form-texts: %s is not the forms' dump; rewrite it with "
                 "quarle-form-texts %s\n",
                 qPrintable(committedPath), qPrintable(committedPath));
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QLocale::setDefault(QLocale::c());
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("QuarleFormTexts"));
    const QStringList args = QApplication::arguments().mid(1);
    if (args.size() != 1 && !(args.size() == 3 && args[1] == QStringLiteral("--against"))) {
        std::fprintf(stderr, "usage: quarle-form-texts OUT [--against FILE]\n");
        return 2;
    }

    SilentServices services;
    const QStringList lines = DumpLines(services);
    if (services.Asked) {
        return 1;
    }
    if (!Write(args[0], lines)) {
        std::fprintf(stderr, "quarle-form-texts: cannot write %s\n", qPrintable(args[0]));
        return 1;
    }
    return args.size() == 3 ? Compare(lines, args[2]) : 0;
}
