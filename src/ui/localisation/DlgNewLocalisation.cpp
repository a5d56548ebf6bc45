#include "ui/localisation/DlgNewLocalisation.h"

#include "localisation/LanguageEdit.h"
#include "platform/Reflection.h"
#include "ui/localisation/LanguageWrite.h"
#include "ui/localisation/Messages.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <algorithm>

namespace quarle::ui {

using platform::Control;

DlgNewLocalisation::DlgNewLocalisation(AppState& state, platform::Services& services,
                                       QWidget* parent)
    : QDialog(parent), state_(state), services_(services) {
    setObjectName(QStringLiteral("DlgNewLocalisation"));
    setWindowTitle(QStringLiteral("New Localisation"));
    setModal(true);

    Label1 = Control(new QLabel(QStringLiteral("Language:"), this), QStringLiteral("Label1"));
    TxtLanguage = Control(new QLineEdit(this), QStringLiteral("TxtLanguage"));
    Label2 = Control(new QLabel(QStringLiteral("Description:"), this), QStringLiteral("Label2"));
    TxtDescription = Control(new QPlainTextEdit(this), QStringLiteral("TxtDescription"));
    TxtDescription->setTabChangesFocus(true);
    TxtDescription->setFixedHeight(4 * fontMetrics().lineSpacing());
    OKButton = Control(new QPushButton(QStringLiteral("OK"), this), QStringLiteral("OKButton"));
    OKButton->setDefault(true);
    CancelButton =
        Control(new QPushButton(QStringLiteral("Cancel"), this), QStringLiteral("CancelButton"));
    CancelButton->setAutoDefault(false);
    Label1->setBuddy(TxtLanguage);
    Label2->setBuddy(TxtDescription);

    auto* layout = new QGridLayout(this);
    layout->addWidget(Label1, 0, 0);
    layout->addWidget(TxtLanguage, 0, 1);
    layout->addWidget(Label2, 1, 0, Qt::AlignTop);
    layout->addWidget(TxtDescription, 1, 1);
    layout->addWidget(OKButton, 0, 2);
    layout->addWidget(CancelButton, 1, 2, Qt::AlignTop);
    layout->setColumnMinimumWidth(1, 260);

    connect(OKButton, &QPushButton::clicked, this, &DlgNewLocalisation::OKButton_Click);
    connect(CancelButton, &QPushButton::clicked, this, &DlgNewLocalisation::CancelButton_Click);
}

DlgNewLocalisation::~DlgNewLocalisation() = default;

void DlgNewLocalisation::OKButton_Click() {
    const QString name = TxtLanguage->text().remove(QLatin1Char(' '));
    static const QString forbidden = QStringLiteral("\\/:*?\"<>|");
    const bool badName = name.isEmpty() || std::any_of(name.begin(), name.end(), [](QChar c) {
                             return forbidden.contains(c) || c.unicode() < 32;
                         });
    if (badName) {
        services_.MsgBox(MessageText(state_, MSG_LANGUAGE_NAME_INVALID), platform::Buttons::Ok,
                         platform::Icon::Exclamation, windowTitle());
        return;
    }
    const QString fileName = name + QStringLiteral(".lng");
    // Writing over the file in use would make it a copy of itself under a
    // new header: refused, the translator picks another name.
    if (fileName.compare(QString::fromStdString(state_.Settings.LanguageFile),
                         Qt::CaseInsensitive) == 0) {
        services_.MsgBox(MessageText(state_, MSG_LANGUAGE_NAME_IN_USE, {fileName}),
                         platform::Buttons::Ok, platform::Icon::Exclamation, windowTitle());
        return;
    }
    if (!TypedText(state_, services_, name)) {
        return;
    }
    const QString description = TxtDescription->toPlainText();
    if (!TypedText(state_, services_, description)) {
        return;
    }
    const std::optional<QByteArray> active =
        ReadLanguageBytes(state_, services_, QString::fromStdString(state_.Settings.LanguageFile));
    if (!active) {
        return;
    }
    const std::string bytes =
        NewLanguage(std::string_view(active->constData(), static_cast<std::size_t>(active->size())),
                    description.toUtf8().toStdString());
    if (!WriteLanguageFile(state_, services_, fileName, bytes)) {
        return;
    }
    state_.Settings.LanguageFile = fileName.toStdString();
    accept();
}

void DlgNewLocalisation::CancelButton_Click() {
    reject();
}

} // namespace quarle::ui
