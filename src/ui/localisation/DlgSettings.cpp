#include "ui/localisation/DlgSettings.h"

#include "localisation/LanguageEdit.h"
#include "localisation/LanguageFile.h"
#include "platform/Cp1252Text.h"
#include "platform/LanguageFolders.h"
#include "platform/Reflection.h"
#include "platform/ToolSearch.h"
#include "ui/common/MainWindowAccess.h"
#include "ui/localisation/ApplyLanguage.h"
#include "ui/localisation/DlgNewLocalisation.h"
#include "ui/localisation/Messages.h"
#include "ui/mainwindow/ShellSettings.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <array>
#include <optional>

namespace quarle::ui {
namespace {

using platform::Control;

QString FromUtf8(const std::string& text) {
    return QString::fromStdString(text);
}

const QString ModeOn = QStringLiteral("Localisationmode on");
const QString ModeOff = QStringLiteral("Localisationmode off");

} // namespace

DlgSettings::DlgSettings(AppState& state, platform::Services& services, MainWindowAccess& main,
                         QWidget* parent)
    : LocalisedDialog(state, services, parent), main_(main) {
    setObjectName(QStringLiteral("DlgSettings"));
    setWindowTitle(QStringLiteral("Name des Dialogfeldes"));
    setModal(true);

    FrmPaths = Control(new QGroupBox(QStringLiteral("Pfade"), this), QStringLiteral("FrmPaths"));
    LblStudioMDL =
        Control(new QLabel(QStringLiteral("Compiler:"), FrmPaths), QStringLiteral("LblStudioMDL"));
    TxtStudioMDL = Control(new QLineEdit(FrmPaths), QStringLiteral("TxtStudioMDL"));
    LblModelviewer = Control(new QLabel(QStringLiteral("Modelviewer:"), FrmPaths),
                             QStringLiteral("LblModelviewer"));
    TxtModelviewer = Control(new QLineEdit(FrmPaths), QStringLiteral("TxtModelviewer"));
    LblEditor =
        Control(new QLabel(QStringLiteral("Texteditor:"), FrmPaths), QStringLiteral("LblEditor"));
    TxtEditor = Control(new QLineEdit(FrmPaths), QStringLiteral("TxtEditor"));
    Command1 =
        Control(new QPushButton(QStringLiteral("..."), FrmPaths), QStringLiteral("Command1"));
    Command2 =
        Control(new QPushButton(QStringLiteral("..."), FrmPaths), QStringLiteral("Command2"));
    Command3 =
        Control(new QPushButton(QStringLiteral("..."), FrmPaths), QStringLiteral("Command3"));
    const QString markTip = QStringLiteral("Gefunden und startbar?");
    ImageStudioMDL = Control(new QLabel(FrmPaths), QStringLiteral("ImageStudioMDL"));
    ImageModelviewer = Control(new QLabel(FrmPaths), QStringLiteral("ImageModelviewer"));
    ImageEditor = Control(new QLabel(FrmPaths), QStringLiteral("ImageEditor"));
    for (QLabel* mark : {ImageStudioMDL, ImageModelviewer, ImageEditor}) {
        mark->setToolTip(markTip);
        mark->setFixedWidth(20);
        mark->setAlignment(Qt::AlignCenter);
    }
    FrmSprache =
        Control(new QGroupBox(QStringLiteral("Sprache"), this), QStringLiteral("FrmSprache"));
    CmbLanguage = Control(new QComboBox(FrmSprache), QStringLiteral("CmbLanguage"));
    LblVersion =
        Control(new QLabel(QStringLiteral("Version:"), FrmSprache), QStringLiteral("LblVersion"));
    LblVers = Control(new QLabel(FrmSprache), QStringLiteral("LblVers"));
    LblInfo = Control(new QLabel(FrmSprache), QStringLiteral("LblInfo"));
    LblInfo->setWordWrap(true);
    CmdNewLocalisation = Control(new QPushButton(QStringLiteral("Neue Lokalisierung"), FrmSprache),
                                 QStringLiteral("CmdNewLocalisation"));
    CmdLocalisationmode =
        Control(new QPushButton(ModeOn, FrmSprache), QStringLiteral("CmdLocalisationmode"));
    CreateCmdLocalise();
    CmdLocaliseStrings = Control(new QPushButton(this), QStringLiteral("CmdLocaliseStrings"));
    CmdLocaliseStrings->setIcon(CmdLocalise->icon());
    CmdLocaliseStrings->setFixedSize(CmdLocalise->size());
    CmdLocaliseStrings->setAutoDefault(false);
    CmdLocaliseStrings->setVisible(false);
    OKButton = Control(new QPushButton(QStringLiteral("OK"), this), QStringLiteral("OKButton"));
    OKButton->setDefault(true);
    CancelButton =
        Control(new QPushButton(QStringLiteral("Abbrechen"), this), QStringLiteral("CancelButton"));
    ChkPreviewViewer = Control(
        new QCheckBox(QStringLiteral("Modelle in Quarles 3D-Vorschau \u00f6ffnen"), FrmPaths),
        QStringLiteral("ChkPreviewViewer"));
    ChkPreviewViewer->setToolTip(
        QStringLiteral("Zeigt kompilierte Modelle selbst, statt einen Modelviewer zu starten"));

    auto* paths = new QGridLayout(FrmPaths);
    int row = 0;
    for (auto [label, field, mark, browse] :
         {std::tuple<QLabel*, QLineEdit*, QLabel*, QPushButton*>{LblStudioMDL, TxtStudioMDL,
                                                                 ImageStudioMDL, Command1},
          {LblModelviewer, TxtModelviewer, ImageModelviewer, Command2},
          {LblEditor, TxtEditor, ImageEditor, Command3}}) {
        label->setBuddy(field);
        field->setMinimumWidth(300);
        browse->setFixedWidth(32);
        browse->setAutoDefault(false);
        paths->addWidget(label, row, 0);
        paths->addWidget(field, row, 1);
        paths->addWidget(mark, row, 2);
        paths->addWidget(browse, row, 3);
        connect(field, &QLineEdit::textChanged, this,
                [this, mark](const QString& text) { UpdateMark(mark, text); });
        ++row;
    }
    paths->addWidget(ChkPreviewViewer, row, 1, 1, 3);
    paths->setColumnStretch(1, 1);

    auto* language = new QGridLayout(FrmSprache);
    language->addWidget(CmbLanguage, 0, 0, 1, 2);
    language->addWidget(LblVersion, 1, 0);
    language->addWidget(LblVers, 1, 1);
    language->addWidget(LblInfo, 2, 0, 1, 2);
    language->addWidget(CmdNewLocalisation, 0, 2);
    language->addWidget(CmdLocalisationmode, 1, 2);
    language->setColumnStretch(1, 1);
    CmdNewLocalisation->setAutoDefault(false);
    CmdLocalisationmode->setAutoDefault(false);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(CmdLocalise);
    buttons->addWidget(CmdLocaliseStrings);
    buttons->addStretch(1);
    buttons->addWidget(OKButton);
    buttons->addWidget(CancelButton);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FrmPaths);
    layout->addWidget(FrmSprache);
    layout->addLayout(buttons);

    connect(CmbLanguage, &QComboBox::activated, this, &DlgSettings::CmbLanguage_Click);
    connect(Command1, &QPushButton::clicked, this, &DlgSettings::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &DlgSettings::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &DlgSettings::Command3_Click);
    connect(CmdNewLocalisation, &QPushButton::clicked, this,
            &DlgSettings::CmdNewLocalisation_Click);
    connect(CmdLocalisationmode, &QPushButton::clicked, this,
            &DlgSettings::CmdLocalisationmode_Click);
    connect(CmdLocaliseStrings, &QPushButton::clicked, this,
            &DlgSettings::CmdLocaliseStrings_Click);
    connect(OKButton, &QPushButton::clicked, this, &DlgSettings::OKButton_Click);
    connect(CancelButton, &QPushButton::clicked, this, &DlgSettings::CancelButton_Click);
    connect(ChkPreviewViewer, &QCheckBox::toggled, this, &DlgSettings::ChkPreviewViewer_Click);
}

DlgSettings::~DlgSettings() = default;

void DlgSettings::Form_Load() {
    LoadLanguage();
    const ToolSettings& tools = state_.Settings;
    // The paths are held as the document holds text, like every other path.
    TxtStudioMDL->setText(platform::FromCp1252(tools.StudioMdlPath));
    TxtModelviewer->setText(ViewsInPreview(tools) ? QString()
                                                  : platform::FromCp1252(tools.ModelViewerPath));
    ChkPreviewViewer->setChecked(ViewsInPreview(tools));
    ChkPreviewViewer_Click();
    TxtEditor->setText(platform::FromCp1252(tools.TextEditorPath));
    for (const QString& name : platform::LanguageFileNames(services_)) {
        CmbLanguage->addItem(name.chopped(4));
    }
    // Showing the language in use is no pick: the header labels stay empty.
    CmbLanguage->setCurrentIndex(
        CmbLanguage->findText(FromUtf8(tools.LanguageFile).chopped(4), Qt::MatchFixedString));
    if (state_.LocalisationMode) {
        CmdLocaliseStrings->setVisible(true);
    }
    UpdateMarks();
}

void DlgSettings::UpdateMark(QLabel* mark, const QString& path) {
    const platform::HostEnvironment env = services_.Environment();
    const platform::ToolState tool = platform::CheckTool(path, env);
    QString shown = path;
    if (!path.contains(QLatin1Char('/')) && !path.contains(QLatin1Char('\\'))) {
        if (const QString found = platform::FindOnPath(path, env); !found.isEmpty()) {
            shown = found;
        }
    }
    Msg reason = MSG_TOOL_MISSING;
    switch (tool) {
    case platform::ToolState::Startable:
        reason = MSG_TOOL_STARTABLE;
        break;
    case platform::ToolState::ThroughWine:
        reason = MSG_TOOL_THROUGH_WINE;
        break;
    case platform::ToolState::Missing:
        reason = MSG_TOOL_MISSING;
        break;
    case platform::ToolState::NotExecutable:
        reason = MSG_TOOL_NOT_EXECUTABLE;
        break;
    case platform::ToolState::NoWine:
        reason = MSG_TOOL_NO_WINE;
        break;
    }
    const bool startable = platform::CanStart(tool);
    mark->setText(startable ? QStringLiteral("\u2714") : QStringLiteral("\u2718"));
    mark->setStyleSheet(startable ? QStringLiteral("color: green") : QStringLiteral("color: red"));
    // The first line is the mark's own tip from the language file.
    const QString tip = mark->toolTip().section(QLatin1Char('\n'), 0, 0);
    mark->setToolTip(tip + QLatin1Char('\n') + MessageText(state_, reason, {shown}));
}

void DlgSettings::UpdateMarks() {
    UpdateMark(ImageStudioMDL, TxtStudioMDL->text());
    UpdateMark(ImageModelviewer, TxtModelviewer->text());
    UpdateMark(ImageEditor, TxtEditor->text());
}

void DlgSettings::CmbLanguage_Click() {
    state_.Settings.LanguageFile =
        (CmbLanguage->currentText() + QStringLiteral(".lng")).toStdString();
    ApplyLanguage(state_, services_, this);
    UpdateMarks(); // the tips in the new language
    main_.ShowLanguage();

    const std::vector<std::string> lines =
        ReadLanguage(state_, services_, state_.Settings.LanguageFile)
            .Lines.value_or(std::vector<std::string>{});
    const LanguageHeader header = ReadLanguageHeader(lines);
    if (header.Info) {
        LblInfo->setText(platform::FromCp1252(*header.Info));
    }
    LblVers->setText(header.Version ? platform::FromCp1252(*header.Version) : QStringLiteral("-"));
}

void DlgSettings::Browse(const QString& title, QLineEdit* target) {
    // Native compilers and viewers off Windows have no extension.
#ifdef Q_OS_WIN
    const QString filter = QStringLiteral("*.exe|*.exe");
#else
    const QString filter = QStringLiteral("*.exe|*.exe|*.*|*.*");
#endif
    if (const auto pick = services_.ShowOpen(title, filter)) {
        target->setText(pick->FileName);
    }
}

void DlgSettings::Command1_Click() {
    Browse(QStringLiteral("Compiler"), TxtStudioMDL);
}

void DlgSettings::Command2_Click() {
    Browse(QStringLiteral("Modelviewer"), TxtModelviewer);
}

void DlgSettings::Command3_Click() {
    Browse(QStringLiteral("Texteditor"), TxtEditor);
}

void DlgSettings::CmdNewLocalisation_Click() {
    DlgNewLocalisation dialog(state_, services_, this);
    dialog.exec();
}

void DlgSettings::CmdLocalisationmode_Click() {
    const bool on = !state_.LocalisationMode;
    state_.LocalisationMode = on;
    CmdLocalisationmode->setText(on ? ModeOff : ModeOn);
    CmdLocalise->setVisible(on);
    CmdLocaliseStrings->setVisible(on);
    main_.ShowLocaliseButton(on);
}

void DlgSettings::CmdLocaliseStrings_Click() {
    main_.LocaliseGlobalStringsNext();
    emit LocaliseRequested(this);
}

void DlgSettings::OKButton_Click() {
    // A path that the code page cannot name is refused with a message, and
    // the dialog stays open with every path as it was.
    std::array<std::string, 3> paths;
    const std::array<const QLineEdit*, 3> boxes{TxtStudioMDL, TxtEditor, TxtModelviewer};
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        std::optional<std::string> path = TypedText(state_, services_, boxes[i]->text());
        if (!path) {
            return;
        }
        paths[i] = std::move(*path);
    }
    ToolSettings& tools = state_.Settings;
    tools.StudioMdlPath = std::move(paths[0]);
    tools.TextEditorPath = std::move(paths[1]);
    tools.ModelViewerPath =
        ChkPreviewViewer->isChecked() ? std::string(PreviewViewer) : std::move(paths[2]);
    // A bare program name counts when it is found on the search path.
    main_.OfferTools(CompilerOffered(TxtStudioMDL->text(), services_.Environment()),
                     platform::ProgramExists(TxtEditor->text()),
                     ViewsInPreview(tools) || platform::ProgramExists(TxtModelviewer->text()));
    accept();
}

void DlgSettings::CancelButton_Click() {
    reject();
}

void DlgSettings::ChkPreviewViewer_Click() {
    const bool preview = ChkPreviewViewer->isChecked();
    TxtModelviewer->setEnabled(!preview);
    Command2->setEnabled(!preview);
    ImageModelviewer->setVisible(!preview);
}

} // namespace quarle::ui
