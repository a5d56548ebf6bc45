#include "ui/compile/DlgCompile.h"

#include "document/Paths.h"
#include "localisation/Cp1252.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "ui/localisation/Messages.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPixmap>
#include <QStringDecoder>
#include <QStyle>
#include <QVBoxLayout>
#include <cmath>

namespace quarle::ui {

namespace {

constexpr int PlainRow = 0;
constexpr int WarningRow = 1;
constexpr int ErrorRow = 2;

int KindOf(compile::RowKind kind) {
    switch (kind) {
    case compile::RowKind::Warning:
        return WarningRow;
    case compile::RowKind::Error:
        return ErrorRow;
    default:
        return PlainRow;
    }
}

} // namespace

namespace {

QString Count(const AppState& state, int n, quarle::Msg one, quarle::Msg many) {
    return n == 1 ? MessageText(state, one) : MessageText(state, many, {QString::number(n)});
}

} // namespace

QString StatusText(const compile::RunOutcome& outcome, const AppState& state) {
    using compile::RunEnd;
    if (outcome.End == RunEnd::NotRun) {
        return MessageText(state, MSG_STATUS_REFUSED,
                           {Count(state, outcome.CheckErrors, MSG_ONE_ERROR, MSG_ERRORS)});
    }
    if (outcome.End == RunEnd::NotStarted) {
        return MessageText(state, MSG_STATUS_NOT_STARTED);
    }
    const QString seconds = QString::number(std::llround(outcome.Seconds));
    QString end;
    switch (outcome.End) {
    case RunEnd::Finished:
        if (!outcome.ExitStatus) {
            end = MessageText(state, MSG_STATUS_NO_EXIT_STATUS);
        } else if (*outcome.ExitStatus == 126 || *outcome.ExitStatus == 127) {
            // The shell's answers for a program it found but could not run,
            // and for one it did not find.
            end =
                MessageText(state, MSG_STATUS_NOT_RUNNABLE, {QString::number(*outcome.ExitStatus)});
        } else {
            end = MessageText(state, MSG_STATUS_FINISHED, {QString::number(*outcome.ExitStatus)});
        }
        break;
    case RunEnd::Cancelled:
        end = MessageText(state, MSG_STATUS_CANCELLED, {seconds});
        break;
    case RunEnd::TimedOut:
        end = MessageText(state, MSG_STATUS_TIMED_OUT, {seconds});
        break;
    default:
        end = MessageText(state, MSG_STATUS_NO_MARKER);
        break;
    }
    const QString log =
        MessageText(state, MSG_STATUS_LOG,
                    {Count(state, outcome.LogErrors, MSG_ONE_ERROR, MSG_ERRORS),
                     Count(state, outcome.LogWarnings, MSG_ONE_WARNING, MSG_WARNINGS)});
    const QString model = platform::FromCp1252(outcome.ModelPath);
    QString written;
    switch (outcome.Model) {
    case compile::ModelChange::Created:
        written = MessageText(state, MSG_STATUS_MODEL_WRITTEN, {model});
        break;
    case compile::ModelChange::Rewritten:
        written = MessageText(state, MSG_STATUS_MODEL_REWRITTEN, {model});
        break;
    case compile::ModelChange::Unchanged:
        written = MessageText(state, MSG_STATUS_MODEL_UNCHANGED, {model});
        break;
    case compile::ModelChange::NotWritten:
        written = MessageText(state, MSG_STATUS_NO_MODEL);
        break;
    }
    return MessageText(state, MSG_STATUS_LINE, {end, log, written});
}

QString LogLineText(const std::string& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    if (!utf8.hasError()) {
        return text;
    }
    return QString::fromStdString(Cp1252ToUtf8(bytes));
}

// Shows each row of the checks the moment it is found.
class DlgCompile::RowHost : public compile::CheckHost {
public:
    explicit RowHost(DlgCompile& form) : form_(form) {}
    void AddRow(const compile::CheckRow& row) override {
        form_.AddRow(QString::fromStdString(row.Text), KindOf(row.Kind));
        form_.Repaint(false);
    }

private:
    DlgCompile& form_;
};

DlgCompile::DlgCompile(AppState& state, platform::Services& services, int animationRows,
                       QWidget* parent, CompileOptions options)
    : LocalisedDialog(state, services, parent), animationRows_(animationRows),
      options_(std::move(options)) {
    setObjectName(QStringLiteral("DlgCompile"));
    setWindowTitle(QStringLiteral("Compiliere"));
    setModal(true);
    folder_ = options_.WorkingFolder.isEmpty() ? QDir::currentPath() : options_.WorkingFolder;

    List1 = platform::Control(new QListWidget(this), QStringLiteral("List1"));
    List1->setSelectionMode(QAbstractItemView::SingleSelection);
    List1->setMinimumSize(640, 300);
    // Long rows (the checks' sentences, paths in the log) wrap within the
    // list instead of running off behind a horizontal scroll bar.
    List1->setWordWrap(true);
    List1->setTextElideMode(Qt::ElideNone);
    List1->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    List1->setResizeMode(QListView::Adjust);
    List1->setIconSize(QSize(14, 14));
    LblStatus = platform::Control(new QLabel(this), QStringLiteral("LblStatus"));
    LblStatus->setWordWrap(true);
    LblStatus->setMinimumHeight(2 * LblStatus->fontMetrics().lineSpacing());
    LblStatus->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    LblStatus->setTextInteractionFlags(Qt::TextSelectableByMouse);
    ChkViewAfterCompile = platform::Control(
        new QCheckBox(QStringLiteral("Model nach dem Kompilieren mit Viewer öffnen"), this),
        QStringLiteral("ChkViewAfterCompile"));
    ChkViewAfterCompile->setEnabled(false);
    CreateCmdLocalise();
    CmdCancel = platform::Control(new QPushButton(QStringLiteral("Abbrechen"), this),
                                  QStringLiteral("CmdCancel"));
    CmdCancel->setEnabled(false);
    CmdCancel->setAutoDefault(false);
    CmdCompileAnyway =
        platform::Control(new QPushButton(QStringLiteral("Trotzdem kompilieren"), this),
                          QStringLiteral("CmdCompileAnyway"));
    CmdCompileAnyway->setToolTip(
        QStringLiteral("Den Compiler trotz der Fehler starten: ein neuerer Compiler nimmt "
                       "manches an, was die Prüfung ablehnt"));
    CmdCompileAnyway->setVisible(false);
    CmdCompileAnyway->setAutoDefault(false);
    OKButton =
        platform::Control(new QPushButton(QStringLiteral("OK"), this), QStringLiteral("OKButton"));
    OKButton->setDefault(true);
    TmrCompile = platform::Control(new QTimer(this), QStringLiteral("TmrCompile"));
    TmrCompile->setInterval(50);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(ChkViewAfterCompile);
    buttons->addStretch();
    buttons->addWidget(CmdLocalise);
    buttons->addWidget(CmdCompileAnyway);
    buttons->addWidget(CmdCancel);
    buttons->addWidget(OKButton);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(List1, 1);
    layout->addWidget(LblStatus);
    layout->addLayout(buttons);

    connect(TmrCompile, &QTimer::timeout, this, &DlgCompile::TmrCompile_Timer);
    connect(OKButton, &QPushButton::clicked, this, &DlgCompile::OKButton_Click);
    connect(CmdCancel, &QPushButton::clicked, this, &DlgCompile::CmdCancel_Click);
    connect(CmdCompileAnyway, &QPushButton::clicked, this, &DlgCompile::CmdCompileAnyway_Click);
}

DlgCompile::~DlgCompile() = default;

QString DlgCompile::Ids(int id) const {
    return QString::fromStdString(state_.IdsTexts[static_cast<std::size_t>(id)]);
}

QString DlgCompile::MsgText(quarle::Msg key, std::initializer_list<QString> args) const {
    return MessageText(state_, key, args);
}

void DlgCompile::Form_Load() {
    LoadLanguage();
    setWindowTitle(Ids(IDS_COMPILE) + QLatin1Char(' ') + platform::FromCp1252(state_.Doc.QcFile));
    // TmrCompile is started when the form comes up (showEvent).
    OKButton->setEnabled(false);
    const QString viewer = platform::FromCp1252(state_.Settings.ModelViewerPath);
    if (ViewsInPreview(state_.Settings) || platform::ProgramExists(viewer)) {
        ChkViewAfterCompile->setEnabled(true);
    }
    AddRow(Ids(IDS_CHECKMODELINFO));
}

void DlgCompile::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!ticked_ && !TmrCompile->isActive()) {
        TmrCompile->start();
    }
}

void DlgCompile::AddRow(const QString& text, int kind) {
    auto* item = new QListWidgetItem(text);
    item->setData(KindRole, kind);
    // Plain rows get an empty picture, so that every row's text starts
    // in the same column.
    static const QIcon none = [] {
        QPixmap empty(14, 14);
        empty.fill(Qt::transparent);
        return QIcon(empty);
    }();
    item->setIcon(none);
    if (kind == ErrorRow) {
        item->setForeground(QColor(0xb0, 0x00, 0x20));
        item->setIcon(style()->standardIcon(QStyle::SP_MessageBoxCritical));
    } else if (kind == WarningRow) {
        item->setForeground(QColor(0x9a, 0x5b, 0x00));
        item->setIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning));
    }
    List1->addItem(item);
}

void DlgCompile::Repaint(bool userInput) {
    List1->scrollToBottom();
    QCoreApplication::processEvents(userInput ? QEventLoop::AllEvents
                                              : QEventLoop::ExcludeUserInputEvents);
}

void DlgCompile::TmrCompile_Timer() {
    TmrCompile->stop();
    if (ticked_) {
        return;
    }
    ticked_ = true;
    BeginRun();

    compile::CheckInput input;
    input.StudioMdlPath = &state_.Settings.StudioMdlPath;
    input.AnimationRows = animationRows_;
    input.Texts = &state_.IdsTexts;
    input.Messages = &state_.MsgTexts;
    RowHost host(*this);
    const compile::CheckResult checks = compile::CheckModelData(state_.Doc, input, &host);
    outcome_ = {};
    outcome_.CheckErrors = checks.ErrorCount;

    AddRow(QStringLiteral(" "));
    Repaint(false);

    if (checks.ErrorCount == 0) {
        RunCompiler();
    } else {
        AddRow(Ids(IDS_CANTCOMPILE));
    }
    EndRun();
}

void DlgCompile::CmdCompileAnyway_Click() {
    if (running_ || outcome_.End != compile::RunEnd::NotRun) {
        return;
    }
    BeginRun();
    RunCompiler();
    EndRun();
}

void DlgCompile::BeginRun() {
    running_ = true;
    CmdCompileAnyway->setVisible(false);
    CmdLocalise->setEnabled(false);
    OKButton->setEnabled(false);
}

void DlgCompile::EndRun() {
    // The closing row counts every error above it: the checks' and, after a
    // run, the compiler's.
    AddRow(Ids(IDS_DONE) + QStringLiteral(" (") + QString::number(compile::ErrorTotal(outcome_)) +
           QLatin1Char(' ') + Ids(IDS_ERRORS) + QLatin1Char(')'));
    LblStatus->setText(StatusText(outcome_, state_));
    CmdCancel->setEnabled(false);
    CmdCompileAnyway->setVisible(outcome_.End == compile::RunEnd::NotRun);
    CmdLocalise->setEnabled(true);
    running_ = false;
    OKButton->setEnabled(true);
    OKButton->setFocus();
    List1->scrollToBottom();
}

void DlgCompile::RunCompiler() {
    AddRow(Ids(IDS_COMPILEMODEL));
    Repaint(false);

    compile::CompileRun run({platform::ToCp1252Marked(folder_), state_.Settings.StudioMdlPath,
                             state_.Doc.QcFile, state_.Doc.ModelName},
                            state_.MsgTexts);
    run.SetCheckErrors(outcome_.CheckErrors);
    compile::RunEnd end = compile::RunEnd::NotStarted;
    if (run.Prepare()) {
        const compile::ScriptLaunch launch = run.Launch();
        QStringList arguments;
        for (const std::string& a : launch.Arguments) {
            arguments << QString::fromStdString(a);
        }
        delete run_;
        run_ = new platform::ProgramRun(this);
        QElapsedTimer clock;
        clock.start();
        if (!run_->Start(QString::fromStdString(launch.Program), arguments, folder_,
                         platform::WindowStyle::Minimised)) {
            run.NotStarted(run_->ErrorText().toStdString());
        } else {
            end =
                WaitForMarker(QDir(folder_).filePath(QString::fromLatin1(compile::MarkerFileName)));
            if (end == compile::RunEnd::Cancelled || end == compile::RunEnd::TimedOut) {
                // Their rows follow the log lines the compiler wrote until then.
                run_->Kill();
            }
            Repaint(false);
            run.Finish(end, static_cast<double>(clock.elapsed()) / 1000.0);
        }
    }
    for (const compile::RunRow& row : run.TakeRows()) {
        if (row.FromLog) {
            AddRow(QLatin1Char(' ') + LogLineText(row.Text), KindOf(row.Kind));
        } else {
            AddRow(QString::fromStdString(row.Text), KindOf(row.Kind));
        }
    }
    if (end == compile::RunEnd::Cancelled) {
        AddRow(MsgText(MSG_COMPILE_CANCELLED), ErrorRow);
    } else if (end == compile::RunEnd::TimedOut) {
        AddRow(MsgText(MSG_COMPILE_TIMED_OUT,
                       {QString::number(static_cast<double>(options_.TimeLimit.count()) / 1000.0)}),
               ErrorRow);
    }
    outcome_ = run.Outcome();
}

compile::RunEnd DlgCompile::WaitForMarker(const QString& marker) {
    cancelRequested_ = false;
    CmdCancel->setEnabled(true);
    QElapsedTimer clock;
    clock.start();
    QEventLoop loop;
    QTimer poll;
    poll.setInterval(static_cast<int>(options_.PollInterval.count()));
    compile::RunEnd end = compile::RunEnd::Finished;
    bool done = false;
    auto check = [&] {
        if (done) {
            return;
        }
        if (QFileInfo::exists(marker) &&
            (compile::MarkerWritten(platform::ToCp1252Marked(marker)) || run_->Finished())) {
            end = compile::RunEnd::Finished;
        } else if (cancelRequested_) {
            end = compile::RunEnd::Cancelled;
        } else if (clock.elapsed() >= options_.TimeLimit.count()) {
            end = compile::RunEnd::TimedOut;
        } else if (run_->Finished()) {
            // The script writes the marker as its last act; look once more.
            end = QFileInfo::exists(marker) ? compile::RunEnd::Finished
                                            : compile::RunEnd::ScriptEnded;
        } else {
            return;
        }
        done = true;
        poll.stop();
        loop.quit();
    };
    connect(&poll, &QTimer::timeout, &loop, check);
    connect(CmdCancel, &QPushButton::clicked, &loop, check);
    check();
    if (!done) {
        poll.start();
        loop.exec();
    }
    CmdCancel->setEnabled(false);
    return end;
}

void DlgCompile::CmdCancel_Click() {
    if (running_) {
        cancelRequested_ = true;
    }
}

void DlgCompile::reject() {
    if (running_) {
        cancelRequested_ = true;
        return;
    }
    TmrCompile->stop();
    QDialog::reject();
}

void DlgCompile::OKButton_Click() {
    if (running_) {
        return;
    }
    if (ChkViewAfterCompile->isEnabled() && ChkViewAfterCompile->isChecked()) {
        ShowModel();
    }
    accept();
}

void DlgCompile::ShowModel() {
    const QString viewer = platform::FromCp1252(state_.Settings.ModelViewerPath);
    const std::string model = compile::ModelFileOf(state_.Doc.ModelName, state_.Doc.QcFile);
    if (ViewsInPreview(state_.Settings)) {
        emit PreviewRequested(model);
        return;
    }
    // The model's path is one argument, blanks and all; a file found only in
    // another case is handed over as it is on disk.
    if (!services_.StartProgram(viewer,
                                {platform::FromCp1252(paths::Resolve(model).value_or(model))})) {
        services_.MsgBox(MsgText(MSG_VIEWER_NOT_STARTED) + QLatin1Char('\n') + viewer,
                         platform::Buttons::Ok, platform::Icon::Critical, Ids(IDS_ERROR));
    }
}

} // namespace quarle::ui
