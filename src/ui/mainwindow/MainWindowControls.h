// The controls of the main window, in the order they are registered, and the
// building of them as designed: German captions and tool tips (a language file
// replaces them), initial states, and the places of the top-level controls in
// twips. The window derives from this table; its parts (the two pages, the
// document commands, the reader host) work on the controls through a
// reference to it, so that none of them needs the window's header. Tests and
// the language files find the controls by these names.
#pragma once

#include <QList>
#include <QPixmap>
#include <array>

class QAction;
class QCheckBox;
class QComboBox;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMainWindow;
class QListWidget;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QScrollBar;
class QTabWidget;
class QTimer;

namespace quarle::ui {

struct MainWindowControls {
    // The window's designed size in twips; it may grow, not shrink.
    static constexpr int DesignWidth = 7650;
    static constexpr int DesignHeight = 6420;

    // Builds every control and menu on window, which becomes their parent.
    void Build(QMainWindow& window);
    // The top-level controls, at their designed places plus the room a
    // larger window gives (in twips).
    void PlaceControls(int extraWidth, int extraHeight);
    // Shows the mascot's speech box and its shadow.
    void ShowSpeechBox();

    QPushButton* CmdLocalise = nullptr;
    QPushButton* CmdModeleinst = nullptr;
    QPushButton* CmdCompile = nullptr;

    QGroupBox* FrmPaths = nullptr;
    QLabel* LblTexturepath = nullptr;
    QLineEdit* TxtTexturepath = nullptr;
    QPushButton* CmdBrowseTexture = nullptr;
    QLabel* LblModelpath = nullptr;
    QLineEdit* TxtModelpath = nullptr;
    QPushButton* CmdBrowseModel = nullptr;

    QGroupBox* FrmModelfiles = nullptr;
    QListWidget* LstFiles = nullptr;
    QListWidget* FileList = nullptr; // hidden: the files of the model folder
    QPushButton* CmdAdd = nullptr;
    QPushButton* CmdDelAnimation = nullptr;
    QPushButton* CmdBlank = nullptr;
    QTabWidget* TabSmd = nullptr;

    // Page 0 of TabSmd
    QLabel* LblParameter = nullptr;
    QComboBox* CmbBodyGroup = nullptr;
    QPushButton* CmdNewGroup = nullptr;
    QListWidget* LstParts = nullptr;
    QCheckBox* ChkReverse = nullptr;
    QPushButton* CmdDel = nullptr;
    QPushButton* CmdRename = nullptr;

    // Page 1 of TabSmd
    QListWidget* LstAnimations = nullptr;
    QScrollBar* VScrAnim = nullptr;
    QPushButton* CmdAnimPfeill = nullptr;
    QLineEdit* TxtAnimNr = nullptr;
    QPushButton* CmdAnimPfeilr = nullptr;
    QLineEdit* TxtAnimName = nullptr;
    QComboBox* TxtAnimID = nullptr;
    QLineEdit* TxtAnimDatei = nullptr;
    QPushButton* CmdAnimExt = nullptr;
    QLabel* LblAnimGroup = nullptr;
    QLabel* LblAnimName = nullptr;
    QLabel* LblAnimID = nullptr;
    QLabel* LblSMDFile = nullptr;

    // The assistant
    QGroupBox* FrmWizSay = nullptr;
    QFrame* ShpTitel = nullptr;
    QLabel* PicWizClose = nullptr;
    QPlainTextEdit* TxtWizSay = nullptr;
    QPushButton* CmdWizBack = nullptr;
    QPushButton* CmdNext = nullptr;
    QPushButton* CmdEnd = nullptr;
    QPlainTextEdit* TxtWizSayShadow = nullptr;
    QLabel* PicWiz = nullptr;
    QTimer* TmrAnim = nullptr;
    QTimer* TmrPlayAnim = nullptr;
    QList<QPixmap> ImgLstMain;     // close box up, close box pressed
    QList<QPixmap> ImgLstWizAnims; // the mascot's frames 0..9

    // Menus
    QMenu* MnuDatei = nullptr;
    QAction* MnuDateiNeu = nullptr;
    QAction* MnuDateiOeffnen = nullptr;
    QAction* MnuDateiSpeichern = nullptr;
    QAction* MnuDateiSpeichernunter = nullptr;
    QAction* str = nullptr;
    QAction* MnuDateiComp = nullptr;
    QAction* MnuDateiView = nullptr;
    QAction* MnuDateiViewCode = nullptr;
    QAction* MnuDateiPreview = nullptr;
    QAction* MnuDateiOpenCompiled = nullptr;
    QAction* MnuB = nullptr;
    QAction* MnuDateiLast1 = nullptr;
    QAction* MnuDateiLast2 = nullptr;
    QAction* MnuDateiLast3 = nullptr;
    QAction* MnuDateiLast4 = nullptr;
    QAction* mnustrich = nullptr;
    QAction* MnuDateiBeenden = nullptr;
    QMenu* MnuEinstellungen = nullptr;
    QAction* MnuEinstModel = nullptr;
    QAction* MnuEinstAllg = nullptr;
    QMenu* MnuWizards = nullptr;
    QAction* MnuWizardsWizAn = nullptr;
    QAction* MnuWizardsGrWiz = nullptr;
    QAction* MnuWizardsAnimWiz = nullptr;
    QMenu* MnuHilfe = nullptr;
    QAction* MnuHilfeUeber = nullptr;

    // The four recent-file entries, MnuDateiLast1 .. MnuDateiLast4.
    std::array<QAction*, 4> MnuDateiLast() const {
        return {MnuDateiLast1, MnuDateiLast2, MnuDateiLast3, MnuDateiLast4};
    }

private:
    void BuildControls(QMainWindow& window);
    void BuildAssistant(QMainWindow& window);
    void BuildMenus(QMainWindow& window);
};

} // namespace quarle::ui
