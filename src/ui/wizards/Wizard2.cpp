#include "ui/wizards/Wizard2.h"

#include "localisation/GlobalStrings.h"
#include "platform/Reflection.h"
#include "ui/localisation/Messages.h"

#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace quarle::ui {
namespace {

QLabel* HelpLabel(QWidget* parent, const QString& name, const QString& text) {
    auto* label = platform::Control(new QLabel(text, parent), name);
    label->setWordWrap(true);
    return label;
}

bool IsFolder(const QString& folder) {
    return !folder.isEmpty() && QDir(folder).exists();
}

// The folder exists and holds at least one file.
bool HoldsAFile(const QString& folder) {
    if (folder.isEmpty()) {
        return false;
    }
    const QDir dir(folder);
    return dir.exists() && !dir.entryList(QDir::Files | QDir::Hidden | QDir::System).isEmpty();
}

} // namespace

Wizard2::Wizard2(AppState& state, platform::Services& services, WizardChain& chain, QWidget* parent)
    : WizardPage(state, services, chain, QStringLiteral("Wizard2"),
                 QStringLiteral("Wizard - Pfade"), parent) {
    CreatePicQuarle();
    LblHelpText1 = HelpLabel(
        this, QStringLiteral("LblHelpText1"),
        QStringLiteral("Gib jetz den Pfad an in dem die Texturen f\u00fcr das Modell liegen "
                       "sowie den Pfad in dem die einzelnen smd-Dateien (also die Animations "
                       "und Referenzdateien) liegen."));
    LblHelpText2 = HelpLabel(this, QStringLiteral("LblHelpText2"),
                             QStringLiteral("z.B. f\u00fcr den Texturenpfad:"));
    LblHelpText3 = HelpLabel(this, QStringLiteral("LblHelpText3"),
                             QStringLiteral(" \"c:\\modells\\meinmodell\\texturen\""));
    LblHelpText4 = HelpLabel(this, QStringLiteral("LblHelpText4"),
                             QStringLiteral("z.B. f\u00fcr den Modell-Dateienpfad:"));
    LblHelpText5 = HelpLabel(this, QStringLiteral("LblHelpText5"),
                             QStringLiteral(" \"c:\\modells\\meinmodell\""));
    LblTexturepath = platform::Control(new QLabel(QStringLiteral("Texturenpfad:"), this),
                                       QStringLiteral("LblTexturepath"));
    TxtWiz2Texturenpfad =
        platform::Control(new QLineEdit(this), QStringLiteral("TxtWiz2Texturenpfad"));
    TxtWiz2Texturenpfad->setToolTip(
        QStringLiteral("Pfad in dem die Texturen des Modells gespeichert sind"));
    CmdWiz2Texturenpfad = platform::Control(new QPushButton(QStringLiteral("..."), this),
                                            QStringLiteral("CmdWiz2Texturenpfad"));
    LblModelpath = platform::Control(new QLabel(QStringLiteral("Modell-Dateienpfad:"), this),
                                     QStringLiteral("LblModelpath"));
    TxtWiz2Modelpfad = platform::Control(new QLineEdit(this), QStringLiteral("TxtWiz2Modelpfad"));
    TxtWiz2Modelpfad->setToolTip(
        QStringLiteral("Pfad in dem die mdl-Dateien f\u00fcr das Modell gespeichert sind"));
    CmdWiz2Modelpfad = platform::Control(new QPushButton(QStringLiteral("..."), this),
                                         QStringLiteral("CmdWiz2Modelpfad"));
    CreateCmdAbbrechen();
    CmdWeiter = CreateCmdWeiter();
    CmdWeiter->setEnabled(false);
    CreateCmdLocalise();

    for (QLineEdit* box : {TxtWiz2Texturenpfad, TxtWiz2Modelpfad}) {
        box->setMinimumWidth(300);
    }
    for (QPushButton* button : {CmdWiz2Texturenpfad, CmdWiz2Modelpfad}) {
        button->setFixedWidth(30);
        button->setAutoDefault(false);
    }
    // The examples stand in a little, under their lead-ins.
    LblHelpText3->setIndent(16);
    LblHelpText5->setIndent(16);
    auto* examples = new QGridLayout;
    examples->addWidget(LblHelpText2, 0, 0);
    examples->addWidget(LblHelpText3, 1, 0);
    examples->addWidget(LblHelpText4, 2, 0);
    examples->addWidget(LblHelpText5, 3, 0);
    examples->setContentsMargins(0, 0, 0, 0);
    auto* fields = new QGridLayout;
    fields->addWidget(LblTexturepath, 0, 0);
    fields->addWidget(TxtWiz2Texturenpfad, 0, 1);
    fields->addWidget(CmdWiz2Texturenpfad, 0, 2);
    fields->addWidget(LblModelpath, 1, 0);
    fields->addWidget(TxtWiz2Modelpfad, 1, 1);
    fields->addWidget(CmdWiz2Modelpfad, 1, 2);
    auto* content = new QVBoxLayout;
    LblHelpText1->setFixedWidth(440);
    content->addWidget(LblHelpText1);
    content->addLayout(examples);
    content->addStretch();
    content->addLayout(fields);
    LayOut(content, {CmdAbbrechen, CmdWeiter});

    connect(CmdWiz2Texturenpfad, &QPushButton::clicked, this, &Wizard2::CmdWiz2Texturenpfad_Click);
    connect(CmdWiz2Modelpfad, &QPushButton::clicked, this, &Wizard2::CmdWiz2Modelpfad_Click);
    connect(TxtWiz2Texturenpfad, &QLineEdit::textChanged, this, &Wizard2::TxtWiz2Pfad_Change);
    connect(TxtWiz2Modelpfad, &QLineEdit::textChanged, this, &Wizard2::TxtWiz2Pfad_Change);
}

void Wizard2::Form_Load() {
    LoadPage();
}

std::optional<QString> Wizard2::PickFolder(int titleKey, const QLineEdit* box) {
    const QString current = box->text();
    const std::optional<QString> folder = services_.ShowFolder(
        QString::fromStdString(state_.IdsTexts[static_cast<std::size_t>(titleKey)]),
        QDir(current).exists() ? current : QString());
    if (!folder || folder->isEmpty()) {
        return std::nullopt;
    }
    // A folder the document cannot name is refused here, as the main window
    // refuses it, rather than stored with '?' for its letters.
    if (!TypedText(state_, services_, *folder)) {
        return std::nullopt;
    }
    return folder;
}

void Wizard2::CmdWiz2Texturenpfad_Click() {
    if (const auto folder = PickFolder(IDS_TEXTUREPATH, TxtWiz2Texturenpfad)) {
        TxtWiz2Texturenpfad->setText(*folder);
    }
}

void Wizard2::CmdWiz2Modelpfad_Click() {
    if (const auto folder = PickFolder(IDS_MODELPATH, TxtWiz2Modelpfad)) {
        TxtWiz2Modelpfad->setText(*folder);
    }
}

void Wizard2::TxtWiz2Pfad_Change() {
    // The bitmaps may come later; the model's files are what the next page
    // chooses from.
    CmdWeiter->setEnabled(IsFolder(TxtWiz2Texturenpfad->text()) &&
                          HoldsAFile(TxtWiz2Modelpfad->text()));
}

} // namespace quarle::ui
