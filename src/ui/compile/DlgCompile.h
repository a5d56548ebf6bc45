// The compile dialog: checks the model, runs the compiler through a small
// script in the working folder (the compiler itself in the script's folder),
// waits for the script's marker file and shows the compiler's log. Everything
// happens in the one tick of TmrCompile; the form repaints between rows and
// stays responsive during the wait, which can be cancelled and gives up after
// a time limit. Checks that found an error hold the compiler back, and the
// user may then run it all the same.
#pragma once

#include "AppState.h"
#include "compile/CheckModelData.h"
#include "compile/CompileFiles.h"
#include "compile/CompileRun.h"
#include "platform/ProgramRun.h"
#include "platform/Services.h"
#include "ui/localisation/LocalisedDialog.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <chrono>
#include <initializer_list>

namespace quarle::ui {

struct CompileOptions {
    // Where compile.log, fert.dat and the script stand; empty: the
    // process's working folder.
    QString WorkingFolder;
    // How long the wait for the marker may take.
    std::chrono::milliseconds TimeLimit = std::chrono::minutes(10);
    // How often the wait looks for the marker.
    std::chrono::milliseconds PollInterval = std::chrono::milliseconds(50);
};

class DlgCompile : public LocalisedDialog {
    Q_OBJECT

public:
    // The kind of a row of List1 (compile::RowKind / compile::LogKind) as an
    // int in this role: 0 plain, 1 warning, 2 error.
    static constexpr int KindRole = Qt::UserRole + 1;

    // animationRows: the rows of the main window's animation list.
    DlgCompile(AppState& state, platform::Services& services, int animationRows,
               QWidget* parent = nullptr, CompileOptions options = {});
    ~DlgCompile() override;

    QListWidget* List1;
    QTimer* TmrCompile;
    QPushButton* OKButton;
    QCheckBox* ChkViewAfterCompile;
    // Ends the wait for the compiler; enabled only while it runs.
    QPushButton* CmdCancel;
    // Runs the compiler although the checks found errors; shown only then.
    QPushButton* CmdCompileAnyway;
    // What the compiler itself did: its exit status and the model file.
    QLabel* LblStatus;

    void TmrCompile_Timer();
    void OKButton_Click();
    void CmdCancel_Click();
    void CmdCompileAnyway_Click();

    // Closing the window while the compile runs asks it to stop instead.
    void reject() override;

    // True from the first tick until the closing row.
    bool Running() const { return running_; }
    const compile::RunOutcome& Outcome() const { return outcome_; }

signals:
    // The model (document bytes) is to open in the program's own preview,
    // which the settings name as the viewer.
    void PreviewRequested(const std::string& model);

protected:
    void showEvent(QShowEvent* event) override;

private:
    class RowHost;

    void Form_Load() override;
    void AddRow(const QString& text, int kind = 0);
    void Repaint(bool userInput);
    void BeginRun();
    void EndRun();
    void RunCompiler();
    // Opens the model the compiler wrote.
    void ShowModel();
    compile::RunEnd WaitForMarker(const QString& marker);
    QString Ids(int id) const;
    QString MsgText(quarle::Msg key, std::initializer_list<QString> args = {}) const;

    int animationRows_;
    CompileOptions options_;
    QString folder_;
    platform::ProgramRun* run_ = nullptr;
    bool ticked_ = false;
    bool running_ = false;
    bool cancelRequested_ = false;
    compile::RunOutcome outcome_;
};

// The status line after a run, in the active language: how the run ended,
// what the log reported and what became of the model file.
QString StatusText(const compile::RunOutcome& outcome, const AppState& state);

// A line of the compiler's log as text: UTF-8 when it is valid UTF-8, else
// the single-byte code page the compiler writes on Windows.
QString LogLineText(const std::string& bytes);

} // namespace quarle::ui
