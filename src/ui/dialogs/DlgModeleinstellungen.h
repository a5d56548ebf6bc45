// The model-wide values: scale, eye position, texture gamma, external
// textures and the sequence group size, and the gate to the attachment,
// controller, texture variation and texture mode dialogs. Every control
// writes into the document in its own event; OKButton only closes the form.
#pragma once

#include "ui/localisation/LocalisedDialog.h"

#include <QString>

class QCheckBox;
class QLabel;
class QLineEdit;

namespace quarle::ui {

class MainWindowAccess;

class DlgModeleinstellungen : public LocalisedDialog {
    Q_OBJECT

public:
    DlgModeleinstellungen(AppState& state, platform::Services& services, MainWindowAccess& main,
                          QWidget* parent = nullptr);
    ~DlgModeleinstellungen() override;

    QLabel* Label2 = nullptr;
    QLineEdit* TxtMassstab = nullptr;
    QCheckBox* ChkAugen = nullptr;
    QLineEdit* TxtAugenX = nullptr;
    QLineEdit* TxtAugenY = nullptr;
    QLineEdit* TxtAugenZ = nullptr;
    QLabel* Label1 = nullptr;
    QLineEdit* TxtGamma = nullptr;
    QCheckBox* ChkExtTex = nullptr;
    QCheckBox* ChkSequenceGroupSize = nullptr;
    QLineEdit* TxtSequenceGroupSize = nullptr;
    QLabel* LblKB = nullptr;
    QPushButton* CmdAttachment = nullptr;
    QPushButton* CmdController = nullptr;
    QPushButton* CmdTextureGroup = nullptr;
    QPushButton* CmdTexturemode = nullptr;
    QPushButton* OKButton = nullptr;

    // "1" while the form loads, "0" from then on: the scale and the gamma
    // store nothing while the load fills them.
    QString Tag;

    void TxtMassstab_Change();
    void TxtGamma_Change();
    void TxtAugenX_Change();
    void TxtAugenY_Change();
    void TxtAugenZ_Change();
    void TxtSequenceGroupSize_Change();
    void ChkAugen_Click();
    void ChkExtTex_Click();
    void ChkSequenceGroupSize_Click();
    void CmdAttachment_Click();
    void CmdController_Click();
    void CmdTextureGroup_Click();
    void CmdTexturemode_Click();
    void OKButton_Click();

    // Shows a dialog of the model modally over this one: this one is
    // disabled while it is open and usable again when it closes; the
    // dialog's localise requests go to this one's opener.
    void ShowSubDialog(LocalisedDialog& dialog);

private:
    void Form_Load() override;

    MainWindowAccess& main_;
};

} // namespace quarle::ui
