// The texture variations of the model: for each of nine variations, which
// bitmap of the texture folder replaces which texture of the meshes. Opened
// modally from the model settings. Every control writes straight into the
// document's TextureVariations (row 1 the textures, row n + 1 variation n);
// OKButton only closes. The designed captions stand: no language is applied
// at load, but the form keeps its localise button.
#pragma once

#include "ui/localisation/LocalisedDialog.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;

namespace quarle::ui {

class MainWindowAccess;
class ScrollPicture;

class DlgTextureGroup : public LocalisedDialog {
    Q_OBJECT

public:
    static constexpr int FirstVariation = 1;
    static constexpr int LastVariation = 9;

    DlgTextureGroup(AppState& state, platform::Services& services, MainWindowAccess& main,
                    QWidget* parent = nullptr);
    ~DlgTextureGroup() override;

    // ---- Controls, in the order they are registered
    QLabel* LblTexturegroup = nullptr;
    QLineEdit* TxtVarNr = nullptr;
    QPushButton* CmdVarPfeill = nullptr;
    QPushButton* CmdVarPfeilr = nullptr;
    QGroupBox* FrmVariation = nullptr;
    QLabel* LblTextur = nullptr;
    QListWidget* LstTexture = nullptr;
    QCheckBox* ChkChangeTo = nullptr;
    QListWidget* FileChangeTo = nullptr; // the bitmaps of TexturePath ("*.bmp", any case)
    QLabel* LblPreview = nullptr;
    ScrollPicture* ScrPicPreview = nullptr;
    QPushButton* OKButton = nullptr;
    // CmdLocalise comes with LocalisedDialog.

    // "1" while the code sets ChkChangeTo, so that its click stores nothing.
    QString ChkChangeToTag = QStringLiteral("0");

    // ---- Handlers
    void CmdVarPfeill_Click();
    void CmdVarPfeilr_Click();
    void TxtVarNr_Change();
    void LstTexture_Click();
    void ChkChangeTo_Click();
    void FileChangeTo_Click();
    void OKButton_Click();

    // The variation on show: the number in TxtVarNr, or the last one it held
    // while the box holds no number.
    int Variation() const { return variation_; }

private:
    void Form_Load() override;
    void FillFileChangeTo();
    // The cell of the variation on show and the selected texture (column 0,
    // which nothing reads, when no texture is selected).
    std::string& Cell();
    void ShowBitmap(const QString& name);

    MainWindowAccess& main_;
    int variation_ = FirstVariation;
};

} // namespace quarle::ui
