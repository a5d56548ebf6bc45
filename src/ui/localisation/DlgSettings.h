// The general settings: the paths of the compiler, the model viewer and the
// text editor, the language (applied at once when picked), and the way into
// the translation tools.
#pragma once

#include "ui/localisation/LocalisedDialog.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;

namespace quarle::ui {

class MainWindowAccess;

class DlgSettings : public LocalisedDialog {
    Q_OBJECT

public:
    DlgSettings(AppState& state, platform::Services& services, MainWindowAccess& main,
                QWidget* parent = nullptr);
    ~DlgSettings() override;

    QGroupBox* FrmPaths;
    QLabel* LblStudioMDL;
    QLineEdit* TxtStudioMDL;
    QLabel* LblModelviewer;
    QLineEdit* TxtModelviewer;
    QLabel* LblEditor;
    QLineEdit* TxtEditor;
    QPushButton* Command1;
    QPushButton* Command2;
    QPushButton* Command3;
    // Beside each path: a check mark when the program is found and can be
    // started, a cross otherwise; the tool tip says which and why.
    QLabel* ImageStudioMDL;
    QLabel* ImageModelviewer;
    QLabel* ImageEditor;
    QGroupBox* FrmSprache;
    QComboBox* CmbLanguage;
    QLabel* LblVersion;
    QLabel* LblVers;
    QLabel* LblInfo;
    QPushButton* CmdNewLocalisation;
    QPushButton* CmdLocalisationmode;
    QPushButton* CmdLocaliseStrings;
    QPushButton* OKButton;
    QPushButton* CancelButton;
    // Compiled models open in the program's own preview instead of a
    // viewer; the viewer's path then stays unused.
    QCheckBox* ChkPreviewViewer;

    void CmbLanguage_Click();
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void CmdNewLocalisation_Click();
    void CmdLocalisationmode_Click();
    void CmdLocaliseStrings_Click();
    void OKButton_Click();
    void CancelButton_Click();
    void ChkPreviewViewer_Click();

private:
    void Form_Load() override;
    void Browse(const QString& title, QLineEdit* target);
    // Brings the mark of a path in line with its text.
    void UpdateMark(QLabel* mark, const QString& path);
    void UpdateMarks();

    MainWindowAccess& main_;
};

} // namespace quarle::ui
