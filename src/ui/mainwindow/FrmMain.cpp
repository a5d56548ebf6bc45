// Start and stop of the program, and what the window hands on to its parts.
#include "ui/mainwindow/FrmMain.h"
#include "ui/common/Texts.h"

#include "document/InputFile.h"
#include "document/Paths.h"
#include "document/QcReader.h"
#include "document/SafeWrite.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "platform/Twips.h"
#include "ui/localisation/ApplyLanguage.h"
#include "ui/localisation/Messages.h"
#include "ui/mainwindow/AnimationsPage.h"
#include "ui/mainwindow/DocumentCommands.h"
#include "ui/mainwindow/ModelFilesPage.h"
#include "ui/mainwindow/ModelFolderList.h"
#include "ui/mainwindow/ShellSettings.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <algorithm>

namespace quarle::ui {

// ---------------------------------------------------------------------------
// The window and its parts

FrmMain::FrmMain(AppState& state, platform::Services& services, platform::SettingsStore& settings,
                 QWidget* parent)
    : QMainWindow(parent), state_(state), services_(services), settings_(settings) {
    setObjectName(QStringLiteral("FrmMain"));
    setWindowTitle(QStringLiteral("Quarle"));
    Build(*this);
    ConnectShell();
    folderList_ = std::make_unique<ModelFolderList>(FileList);
    animations_ = std::make_unique<AnimationsPage>(state_, services_, *this, *folderList_, *this);
    modelFiles_ = std::make_unique<ModelFilesPage>(state_, services_, *this, *folderList_,
                                                   *animations_, *this);
    commands_ = std::make_unique<DocumentCommands>(state_, services_, *this, WorkFolder,
                                                   *folderList_, *modelFiles_, *animations_, *this);
    ConnectAssistant();
    ConnectDesktop();
    platform::SetWidthTwips(this, DesignWidth);
    platform::SetHeightTwips(this, DesignHeight);
    // Larger, yes; smaller than designed, no.
    setMinimumSize(platform::ToPixels(DesignWidth), platform::ToPixels(DesignHeight));
}

void FrmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    using platform::TwipsPerPixel;
    PlaceControls(std::max(0, width() * TwipsPerPixel - DesignWidth),
                  std::max(0, height() * TwipsPerPixel - DesignHeight));
}

// The parts go before the controls they work on: members before the bases.
FrmMain::~FrmMain() = default;

// ---------------------------------------------------------------------------
// Start and stop

void FrmMain::Form_Load() {
    TmrAnim->start();

    // The mascot's frame chain: still frames, and two loops 6-7 and 8-9.
    std::fill(WizFrameSteps.begin(), WizFrameSteps.begin() + 256, i16{1});
    WizFrameSteps[6] = 2;
    WizFrameSteps[7] = -6;
    WizFrameSteps[8] = 2;
    WizFrameSteps[9] = -8;
    DisableWizard();
    SetWizardAnim(0);

    ToolSettings& tools = state_.Settings;
    const platform::HostEnvironment env = services_.Environment();
    ReadToolSettings(settings_, services_.ProgramFolder(), env, tools);
    const bool toolNotice = ToolNoticeDue(settings_, env, tools);
    // Missing programs only leave their commands disabled; they start so.
    if (CompilerOffered(Doc(tools.StudioMdlPath), env)) {
        CmdCompile->setEnabled(true);
    }
    if (ViewsInPreview(tools) || platform::ProgramExists(Doc(tools.ModelViewerPath))) {
        MnuDateiView->setEnabled(true);
    }
    ReadRecentFiles(settings_, tools);
    commands_->ShowRecentFiles();

    platform::SetWidthTwips(this, 7650);
    platform::SetWidthTwips(FrmModelfiles, 7215);
    platform::SetHeightTwips(this, 6420);
    platform::SetHeightTwips(FrmModelfiles, 4575);

    commands_->NewDocument();

    FillIdsNames(state_.IdsNames);
    ApplyLanguage(state_, services_, this);
    if (state_.LocalisationMode) {
        CmdLocalise->setVisible(true);
    }
    commands_->MarkSaved();

    commands_->RemoveLeftovers();

    // Settings that cannot be kept are said at once, not lost at the end.
    if (const std::error_code error = settings_.WriteError()) {
        services_.MsgBox(MessageText(state_, MSG_SETTINGS_UNWRITABLE,
                                     {QDir::toNativeSeparators(settings_.FileName()),
                                      Text(SystemReasonText(error, state_.MsgTexts))}),
                         platform::Buttons::Ok, platform::Icon::Exclamation, QString());
    }

    // A first start that found no compiler says so once, in the language
    // just applied, and offers the way to the paths.
    if (toolNotice) {
        WriteSetting(settings_, setting::ToolNotice, QStringLiteral("1"));
        settings_.Sync();
        const platform::Answer answer =
            services_.MsgBox(MessageText(state_, MSG_TOOLS_FIRST_START, {Doc(tools.StudioMdlPath)}),
                             platform::Buttons::YesNo, platform::Icon::Information, QString());
        if (answer == platform::Answer::Yes) {
            MnuEinstAllg_Click();
        }
    }
}

void FrmMain::Form_Unload() {
    if (stopped_) {
        return;
    }
    stopped_ = true;
    TmrAnim->stop();
    TmrPlayAnim->stop();
    WriteSettingsNow();
    // Files are opened and closed within each operation: none is open here.
    if (EndProcess) {
        EndProcess();
    }
}

void FrmMain::closeEvent(QCloseEvent* event) {
    // Unsaved changes are saved or let go first; Cancel keeps the program.
    if (!stopped_ && !commands_->SaveChangesFirst()) {
        event->ignore();
        return;
    }
    Form_Unload();
    event->accept();
}

void FrmMain::WriteSettingsNow() {
    WriteSettings(settings_, state_.Settings);
}

void FrmMain::MnuDateiBeenden_Click() {
    close();
}

QString FrmMain::IdsText(int key) const {
    return Text(state_.IdsTexts[static_cast<std::size_t>(key)]);
}

// ---------------------------------------------------------------------------
// The parts

FrmMainReaderHost& FrmMain::ScriptReaderHost() {
    return commands_->ScriptReaderHost();
}

void FrmMain::Update() {
    modelFiles_->Update();
}

void FrmMain::OpenGivenScript(const QString& path) {
    commands_->OpenGivenScript(path);
}

void FrmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    // Back in the window, perhaps from the file manager: the list shows
    // what the folder holds now. Unchanged files are not read again.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() &&
        FrmModelfiles->isEnabled() && !folderList_->FileListPath().isEmpty()) {
        folderList_->FileListRefresh();
        modelFiles_->RefillLstFiles();
    }
}

// ---------------------------------------------------------------------------
// Wiring of the controls handled here

void FrmMain::ConnectShell() {
    connect(MnuDateiBeenden, &QAction::triggered, this, &FrmMain::MnuDateiBeenden_Click);
    connect(CmdModeleinst, &QPushButton::clicked, this, &FrmMain::CmdModeleinst_Click);
    connect(MnuEinstModel, &QAction::triggered, this, &FrmMain::MnuEinstModel_Click);
    connect(MnuEinstAllg, &QAction::triggered, this, &FrmMain::MnuEinstAllg_Click);
    connect(MnuWizardsGrWiz, &QAction::triggered, this, &FrmMain::MnuWizardsGrWiz_Click);
    connect(MnuWizardsAnimWiz, &QAction::triggered, this, &FrmMain::MnuWizardsAnimWiz_Click);
    connect(MnuHilfeUeber, &QAction::triggered, this, &FrmMain::MnuHilfeUeber_Click);
    connect(CmdLocalise, &QPushButton::clicked, this, &FrmMain::CmdLocalise_Click);
    connect(MnuDateiPreview, &QAction::triggered, this, &FrmMain::MnuDateiPreview_Click);
    connect(MnuDateiOpenCompiled, &QAction::triggered, this, &FrmMain::MnuDateiOpenCompiled_Click);
}

} // namespace quarle::ui
