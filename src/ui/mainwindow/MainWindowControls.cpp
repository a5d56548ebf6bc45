// The control tree and the menu tree of the main window, as designed: German
// captions and tool tips (a language file replaces them), initial states,
// and the places of the top-level controls in twips. Inside the two frames
// and on the pages, layouts keep the controls aligned whatever the length
// of the captions of a language.
#include "ui/mainwindow/MainWindowControls.h"

#include "platform/Reflection.h"
#include "platform/Twips.h"
#include "ui/common/ActivityIds.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProxyStyle>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>

// Resources of a static library must be registered by name from outside any
// namespace.
static void InitIconResources() {
    Q_INIT_RESOURCE(icons);
}

namespace quarle::ui {

using platform::Control;
using platform::SetGeometryTwips;

namespace {

// Geometry of the form, in twips.
constexpr int FormWidth = MainWindowControls::DesignWidth;
constexpr int Margin = 210;
constexpr int PathsTop = 60;
constexpr int PathsWidth = 5100;
constexpr int PathsHeight = 1170;
// The two big buttons stand beside the paths, one above the other, above the
// place where the assistant parks its mascot (from 820 down), so that the
// parked mascot never covers them.
constexpr int ButtonsLeft = Margin + PathsWidth + 120;
constexpr int ButtonsWidth = FormWidth - Margin - ButtonsLeft;
constexpr int ButtonsTop = PathsTop + 60;
constexpr int ButtonHeight = 330;
constexpr int ButtonGap = 45;
constexpr int ModelfilesTop = PathsTop + PathsHeight + 90;
constexpr int ModelfilesWidth = 7215;
constexpr int ModelfilesHeight = 4575;

QPushButton* PictureButton(QWidget* parent, const char* icon, int size, int iconSize) {
    auto* button = new QPushButton(parent);
    button->setIcon(QIcon(QStringLiteral(":/icons/%1.png").arg(QLatin1String(icon))));
    button->setIconSize(QSize(iconSize, iconSize));
    button->setFixedSize(size, size);
    return button;
}

// A path field too narrow for its path shows the whole path above its own
// tip. The tip itself stays as the language file set it.
class WholePathTip : public QObject {
public:
    explicit WholePathTip(QLineEdit* field) : QObject(field), field_(field) {
        field->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched != field_ || event->type() != QEvent::ToolTip) {
            return false;
        }
        const QString path = field_->text();
        // The text's room: the field less its frame and inner margins.
        const int room = field_->contentsRect().width() - field_->textMargins().left() -
                         field_->textMargins().right() - 8;
        if (path.isEmpty() || field_->fontMetrics().horizontalAdvance(path) <= room) {
            return false;
        }
        const QString tip = field_->toolTip();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                           tip.isEmpty() ? path : path + QLatin1Char('\n') + tip, field_);
        return true;
    }

private:
    QLineEdit* field_;
};

// The tabs of the pages, as narrow as their captions allow: the mascot parks
// above the right end of the tab row, and the style's wide tabs would reach
// under it.
class NarrowTabs : public QProxyStyle {
public:
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override {
        if (metric == PM_TabBarTabHSpace) {
            return TabPadding;
        }
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

private:
    static constexpr int TabPadding = 6; // pixels beside a caption, both sides together
};

QPushButton* SmallButton(QWidget* parent, const QString& caption, const QString& tip = {}) {
    auto* button = new QPushButton(caption, parent);
    button->setToolTip(tip);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return button;
}

} // namespace

void MainWindowControls::PlaceControls(int extraWidth, int extraHeight) {
    SetGeometryTwips(CmdModeleinst, ButtonsLeft + extraWidth, ButtonsTop, ButtonsWidth,
                     ButtonHeight);
    SetGeometryTwips(CmdCompile, ButtonsLeft + extraWidth, ButtonsTop + ButtonHeight + ButtonGap,
                     ButtonsWidth, ButtonHeight);
    SetGeometryTwips(FrmPaths, Margin, PathsTop, PathsWidth + extraWidth, PathsHeight);
    SetGeometryTwips(FrmModelfiles, Margin, ModelfilesTop, ModelfilesWidth + extraWidth,
                     ModelfilesHeight + extraHeight);
}

void MainWindowControls::Build(QMainWindow& window) {
    InitIconResources();
    BuildControls(window);
    BuildAssistant(window);
    BuildMenus(window);
}

void MainWindowControls::BuildControls(QMainWindow& window) {
    auto* form = new QWidget(&window);
    form->setObjectName(QStringLiteral("FrmMainClient"));
    window.setCentralWidget(form);

    // The localise button sits at the right end of the menu bar, out of the
    // way of the form's own controls; it shows only in localisation mode.
    CmdLocalise = Control(PictureButton(window.menuBar(), "localise", platform::ToPixels(390), 21),
                          QStringLiteral("CmdLocalise"));
    CmdLocalise->setFlat(true);
    window.menuBar()->setCornerWidget(CmdLocalise, Qt::TopRightCorner);
    CmdLocalise->setVisible(false);

    CmdModeleinst = Control(new QPushButton(QStringLiteral("Modelleinstellungen"), form),
                            QStringLiteral("CmdModeleinst"));
    CmdModeleinst->setToolTip(QStringLiteral("Massstab, Controller, Augenpos., usw."));

    CmdCompile = Control(new QPushButton(QStringLiteral("Erstelle Modell"), form),
                         QStringLiteral("CmdCompile"));
    CmdCompile->setToolTip(QStringLiteral("Was wohl?"));
    CmdCompile->setEnabled(false);

    // ---- Paths
    FrmPaths = Control(new QGroupBox(QStringLiteral("Pfade"), form), QStringLiteral("FrmPaths"));

    LblTexturepath = Control(new QLabel(QStringLiteral("Texturenpfad:"), FrmPaths),
                             QStringLiteral("LblTexturepath"));
    // Both path fields take a typed folder (ModelFilesPage::TxtPath_Commit).
    TxtTexturepath = Control(new QLineEdit(FrmPaths), QStringLiteral("TxtTexturepath"));
    TxtTexturepath->setToolTip(
        QStringLiteral("($cdtextures) - Pfad in dem die Texturen des Modells gespeichert sind"));
    CmdBrowseTexture =
        Control(SmallButton(FrmPaths, QStringLiteral("..."), QStringLiteral("Browse")),
                QStringLiteral("CmdBrowseTexture"));

    LblModelpath = Control(new QLabel(QStringLiteral("Modell-Dateienpfad:"), FrmPaths),
                           QStringLiteral("LblModelpath"));
    TxtModelpath = Control(new QLineEdit(FrmPaths), QStringLiteral("TxtModelpath"));
    TxtModelpath->setToolTip(
        QStringLiteral("($cd) - Pfad in dem die mdl-Dateien f\u00fcr das Modell gespeichert sind"));
    CmdBrowseModel = Control(SmallButton(FrmPaths, QStringLiteral("..."), QStringLiteral("Browse")),
                             QStringLiteral("CmdBrowseModel"));

    new WholePathTip(TxtTexturepath);
    new WholePathTip(TxtModelpath);
    for (QPushButton* browse : {CmdBrowseTexture, CmdBrowseModel}) {
        browse->setFixedWidth(30);
    }
    auto* paths = new QGridLayout(FrmPaths);
    paths->setContentsMargins(9, 4, 9, 6);
    paths->setHorizontalSpacing(6);
    paths->setVerticalSpacing(4);
    paths->addWidget(LblTexturepath, 0, 0);
    paths->addWidget(TxtTexturepath, 0, 1);
    paths->addWidget(CmdBrowseTexture, 0, 2);
    paths->addWidget(LblModelpath, 1, 0);
    paths->addWidget(TxtModelpath, 1, 1);
    paths->addWidget(CmdBrowseModel, 1, 2);
    paths->setColumnStretch(1, 1);

    // ---- Model files: the files of the folder on the left, the picture
    // buttons that move them, the two pages on the right.
    FrmModelfiles = Control(new QGroupBox(QStringLiteral("Modelldateien"), form),
                            QStringLiteral("FrmModelfiles"));
    FrmModelfiles->setEnabled(false);
    PlaceControls(0, 0);

    LstFiles = Control(new QListWidget(FrmModelfiles), QStringLiteral("LstFiles"));
    LstFiles->setSortingEnabled(true);
    LstFiles->setSelectionMode(QAbstractItemView::ExtendedSelection);
    LstFiles->setToolTip(QStringLiteral("Zur Verf\u00fcgung stehende Modell-Dateien"));
    LstFiles->setFixedWidth(140);

    FileList = Control(new QListWidget(FrmModelfiles), QStringLiteral("FileList"));
    FileList->setToolTip(QStringLiteral("Zur Verf\u00fcgung stehende Modell-Dateien"));
    FileList->setVisible(false);

    CmdAdd = Control(PictureButton(FrmModelfiles, "add", 34, 24), QStringLiteral("CmdAdd"));
    CmdAdd->setToolTip(QStringLiteral("F\u00fcge Animation Hinzu"));
    CmdDelAnimation =
        Control(PictureButton(FrmModelfiles, "delete", 34, 24), QStringLiteral("CmdDelAnimation"));
    CmdDelAnimation->setToolTip(QStringLiteral("L\u00f6sche Animation"));
    CmdBlank = Control(PictureButton(FrmModelfiles, "blank", 34, 24), QStringLiteral("CmdBlank"));

    TabSmd = Control(new QTabWidget(FrmModelfiles), QStringLiteral("TabSmd"));
    auto* modelPage = new QWidget;
    auto* animPage = new QWidget;
    TabSmd->addTab(modelPage, QStringLiteral("Modeldateien"));
    TabSmd->addTab(animPage, QStringLiteral("Animationsdateien"));
    TabSmd->setCurrentIndex(0);
    auto* narrowTabs = new NarrowTabs;
    narrowTabs->setParent(TabSmd);
    TabSmd->tabBar()->setStyle(narrowTabs);

    auto* buttons = new QVBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch(1);
    buttons->addWidget(CmdAdd);
    buttons->addWidget(CmdDelAnimation);
    buttons->addSpacing(10);
    buttons->addWidget(CmdBlank);
    buttons->addStretch(1);

    auto* files = new QHBoxLayout(FrmModelfiles);
    files->setContentsMargins(9, 4, 9, 9);
    files->setSpacing(6);
    files->addWidget(LstFiles);
    files->addLayout(buttons);
    files->addWidget(TabSmd, 1);

    // ---- Page 0: body groups and their parts
    LblParameter = Control(new QLabel(QStringLiteral("Parameter:"), modelPage),
                           QStringLiteral("LblParameter"));
    CmbBodyGroup = Control(new QComboBox(modelPage), QStringLiteral("CmbBodyGroup"));
    CmbBodyGroup->setEditable(true);
    CmbBodyGroup->setInsertPolicy(QComboBox::NoInsert);
    CmbBodyGroup->setToolTip(QStringLiteral("Liste der Bodypartgruppen"));
    // A group name has up to 20 characters, and all of them show.
    CmbBodyGroup->setMinimumContentsLength(20);
    CmbBodyGroup->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    CmdNewGroup = Control(SmallButton(modelPage, QStringLiteral("Neu"),
                                      QStringLiteral("F\u00fcgt eine neue Bodypartgruppe hinzu")),
                          QStringLiteral("CmdNewGroup"));
    LstParts = Control(new QListWidget(modelPage), QStringLiteral("LstParts"));
    LstParts->setSelectionMode(QAbstractItemView::ExtendedSelection);
    ChkReverse =
        Control(new QCheckBox(QStringLiteral("Reverse"), modelPage), QStringLiteral("ChkReverse"));
    CmdDel = Control(SmallButton(modelPage, QStringLiteral("Del"),
                                 QStringLiteral("L\u00f6scht die markierte Bodypartgruppe")),
                     QStringLiteral("CmdDel"));
    CmdDel->setEnabled(false);
    CmdRename = Control(SmallButton(modelPage, QStringLiteral("Ren")), QStringLiteral("CmdRename"));
    CmdRename->setEnabled(false);
    for (QPushButton* b : {CmdNewGroup, CmdDel, CmdRename}) {
        b->setMinimumWidth(44);
        b->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    }

    // The group's name has the page's whole width; the group's buttons stand
    // beside its parts.
    auto* groupButtons = new QVBoxLayout;
    groupButtons->setSpacing(4);
    groupButtons->addWidget(CmdNewGroup);
    groupButtons->addWidget(CmdDel);
    groupButtons->addWidget(CmdRename);
    groupButtons->addStretch(1);
    auto* partsRow = new QHBoxLayout;
    partsRow->setSpacing(6);
    partsRow->addWidget(LstParts, 1);
    partsRow->addLayout(groupButtons);
    auto* parameterRow = new QHBoxLayout;
    parameterRow->addWidget(LblParameter);
    parameterRow->addWidget(ChkReverse);
    parameterRow->addStretch(1);
    auto* modelLayout = new QVBoxLayout(modelPage);
    modelLayout->setContentsMargins(8, 8, 8, 8);
    modelLayout->setSpacing(6);
    modelLayout->addWidget(CmbBodyGroup);
    modelLayout->addLayout(partsRow, 1);
    modelLayout->addLayout(parameterRow);

    // ---- Page 1: the animations of one sequence group
    LstAnimations = Control(new QListWidget(animPage), QStringLiteral("LstAnimations"));
    LstAnimations->setSelectionMode(QAbstractItemView::ExtendedSelection);
    LstAnimations->setToolTip(QStringLiteral("Alle Animationen f\u00fcr ein Modell"));
    LstAnimations->addItem(QStringLiteral("LstAnimations"));
    VScrAnim = Control(new QScrollBar(Qt::Vertical, animPage), QStringLiteral("VScrAnim"));
    VScrAnim->setRange(-1, 1);
    VScrAnim->setSingleStep(1);
    VScrAnim->setPageStep(1);
    VScrAnim->setValue(0);
    VScrAnim->setFixedHeight(34); // two arrows and no trough: it moves entries, it does not scroll
    CmdAnimPfeill =
        Control(PictureButton(animPage, "arrow_left", 24, 16), QStringLiteral("CmdAnimPfeill"));
    TxtAnimNr = Control(new QLineEdit(QStringLiteral("0"), animPage), QStringLiteral("TxtAnimNr"));
    TxtAnimNr->setFixedWidth(34);
    TxtAnimNr->setAlignment(Qt::AlignCenter);
    CmdAnimPfeilr =
        Control(PictureButton(animPage, "arrow_right", 24, 16), QStringLiteral("CmdAnimPfeilr"));
    TxtAnimName = Control(new QLineEdit(animPage), QStringLiteral("TxtAnimName"));
    TxtAnimName->setToolTip(QStringLiteral("($sequence) - Name der Animation"));
    TxtAnimID = Control(new QComboBox(animPage), QStringLiteral("TxtAnimID"));
    TxtAnimID->setEditable(true);
    TxtAnimID->setInsertPolicy(QComboBox::NoInsert);
    for (const std::string& id : ActivityIds()) {
        TxtAnimID->addItem(QString::fromLatin1(id.c_str()));
    }
    TxtAnimID->setCurrentIndex(-1);
    TxtAnimID->setEditText(QString());
    TxtAnimID->setToolTip(QStringLiteral("Legt den Identifikationsnamen f\u00fcr Vordefinierte "
                                         "Standartfunktion fest, falls vorhanden"));
    TxtAnimDatei = Control(new QLineEdit(animPage), QStringLiteral("TxtAnimDatei"));
    TxtAnimDatei->setEnabled(false);
    CmdAnimExt =
        Control(SmallButton(animPage, QStringLiteral("Erweitert")), QStringLiteral("CmdAnimExt"));
    CmdAnimExt->setMinimumWidth(90);
    LblAnimGroup = Control(new QLabel(QStringLiteral("Animgruppe:"), animPage),
                           QStringLiteral("LblAnimGroup"));
    LblAnimName =
        Control(new QLabel(QStringLiteral("Name:"), animPage), QStringLiteral("LblAnimName"));
    LblAnimID =
        Control(new QLabel(QStringLiteral("Anim.-ID:"), animPage), QStringLiteral("LblAnimID"));
    LblSMDFile =
        Control(new QLabel(QStringLiteral("SmdDatei:"), animPage), QStringLiteral("LblSMDFile"));

    auto* groupNumber = new QHBoxLayout;
    groupNumber->setSpacing(3);
    groupNumber->addWidget(LblAnimGroup);
    groupNumber->addSpacing(4);
    groupNumber->addWidget(CmdAnimPfeill);
    groupNumber->addWidget(TxtAnimNr);
    groupNumber->addWidget(CmdAnimPfeilr);
    groupNumber->addStretch(1);
    auto* listRow = new QHBoxLayout;
    listRow->setSpacing(4);
    listRow->addWidget(LstAnimations, 1);
    listRow->addWidget(VScrAnim, 0, Qt::AlignTop);
    auto* fields = new QGridLayout;
    fields->setHorizontalSpacing(6);
    fields->setVerticalSpacing(4);
    fields->addWidget(LblAnimName, 0, 0);
    fields->addWidget(TxtAnimName, 0, 1);
    fields->addWidget(LblAnimID, 1, 0);
    fields->addWidget(TxtAnimID, 1, 1);
    fields->addWidget(LblSMDFile, 2, 0);
    fields->addWidget(TxtAnimDatei, 2, 1);
    fields->addWidget(CmdAnimExt, 3, 1, Qt::AlignRight);
    fields->setColumnStretch(1, 1);
    auto* animLayout = new QVBoxLayout(animPage);
    animLayout->setContentsMargins(8, 8, 8, 8);
    animLayout->setSpacing(6);
    animLayout->addLayout(groupNumber);
    animLayout->addLayout(listRow, 1);
    animLayout->addLayout(fields);
}

void MainWindowControls::BuildAssistant(QMainWindow& window) {
    QWidget* form = window.centralWidget();

    // The speech box's shadow stands behind the box, so it is made first.
    TxtWizSayShadow = Control(new QPlainTextEdit(form), QStringLiteral("TxtWizSayShadow"));
    TxtWizSayShadow->setReadOnly(true);
    TxtWizSayShadow->setFrameShape(QFrame::NoFrame);
    TxtWizSayShadow->setStyleSheet(QStringLiteral("background: black;"));
    TxtWizSayShadow->setFocusPolicy(Qt::NoFocus);
    SetGeometryTwips(TxtWizSayShadow, 3600 + 45, 3120 + 45, 3255, 1335);
    TxtWizSayShadow->setVisible(false);

    FrmWizSay = Control(new QGroupBox(form), QStringLiteral("FrmWizSay"));
    FrmWizSay->setFlat(true);
    FrmWizSay->setStyleSheet(
        QStringLiteral("QGroupBox#FrmWizSay { background: rgb(255, 192, 128); border: none; "
                       "margin: 0; padding: 0; }"));
    SetGeometryTwips(FrmWizSay, 3600, 3120, 3255, 1335);
    FrmWizSay->setVisible(false);

    ShpTitel = Control(new QFrame(FrmWizSay), QStringLiteral("ShpTitel"));
    ShpTitel->setAutoFillBackground(true);
    ShpTitel->setBackgroundRole(QPalette::Highlight);
    SetGeometryTwips(ShpTitel, 0, 0, 3135, 120);
    PicWizClose = Control(new QLabel(FrmWizSay), QStringLiteral("PicWizClose"));
    SetGeometryTwips(PicWizClose, 3135, 0, 120, 120);
    TxtWizSay = Control(new QPlainTextEdit(FrmWizSay), QStringLiteral("TxtWizSay"));
    TxtWizSay->setReadOnly(true);
    TxtWizSay->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    SetGeometryTwips(TxtWizSay, 120, 195, 3015, 750);
    CmdWizBack = Control(new QPushButton(QStringLiteral("Zur\u00fcck"), FrmWizSay),
                         QStringLiteral("CmdWizBack"));
    SetGeometryTwips(CmdWizBack, 1080, 1050, 975, 225);
    CmdNext =
        Control(new QPushButton(QStringLiteral("Weiter"), FrmWizSay), QStringLiteral("CmdNext"));
    SetGeometryTwips(CmdNext, 2160, 1050, 975, 225);
    CmdEnd = Control(new QPushButton(QStringLiteral("Ende"), FrmWizSay), QStringLiteral("CmdEnd"));
    SetGeometryTwips(CmdEnd, 120, 1050, 855, 225);

    // The mascot sits on top of everything else.
    PicWiz = Control(new QLabel(form), QStringLiteral("PicWiz"));
    SetGeometryTwips(PicWiz, 720, 3360, 1500, 1500);
    PicWiz->setVisible(false);

    TmrAnim = Control(new QTimer(&window), QStringLiteral("TmrAnim"));
    TmrAnim->setInterval(500);
    TmrPlayAnim = Control(new QTimer(&window), QStringLiteral("TmrPlayAnim"));
    TmrPlayAnim->setInterval(200);
}

void MainWindowControls::ShowSpeechBox() {
    // The box's small type is a font of its own, and loading it costs the
    // start a font match: it is set when the box first shows.
    constexpr int SpeechPixels = 10;
    if (TxtWizSay->font().pixelSize() != SpeechPixels) {
        QFont small = FrmWizSay->font();
        small.setPixelSize(SpeechPixels);
        const std::array<QWidget*, 4> speech{TxtWizSay, CmdWizBack, CmdNext, CmdEnd};
        for (QWidget* w : speech) {
            w->setFont(small);
        }
    }
    FrmWizSay->setVisible(true);
    TxtWizSayShadow->setVisible(true);
}

void MainWindowControls::BuildMenus(QMainWindow& window) {
    auto entry = [&window](QMenu* menu, const QString& name, const QString& caption) {
        auto* action = Control(new QAction(caption, &window), name);
        menu->addAction(action);
        return action;
    };
    // A separator is a line in the menu: it has no text (a style would draw
    // one beside the line), and to the language files it is a line, which has
    // neither caption nor tool tip.
    auto separator = [&window](QMenu* menu, const QString& name) {
        auto* action = Control(new QAction(&window), name);
        action->setSeparator(true);
        platform::SetControlKind(action, platform::ControlKind::Line);
        menu->addAction(action);
        return action;
    };

    MnuDatei =
        Control(window.menuBar()->addMenu(QStringLiteral("&Datei")), QStringLiteral("MnuDatei"));
    MnuDateiNeu = entry(MnuDatei, QStringLiteral("MnuDateiNeu"), QStringLiteral("&Neu"));
    MnuDateiOeffnen =
        entry(MnuDatei, QStringLiteral("MnuDateiOeffnen"), QStringLiteral("&\u00d6ffnen"));
    MnuDateiSpeichern =
        entry(MnuDatei, QStringLiteral("MnuDateiSpeichern"), QStringLiteral("&Speichern"));
    MnuDateiSpeichernunter = entry(MnuDatei, QStringLiteral("MnuDateiSpeichernunter"),
                                   QStringLiteral("Speichern &unter"));
    str = separator(MnuDatei, QStringLiteral("str"));
    MnuDateiComp =
        entry(MnuDatei, QStringLiteral("MnuDateiComp"), QStringLiteral("mdl-Datei &erstellen"));
    MnuDateiView = entry(MnuDatei, QStringLiteral("MnuDateiView"),
                         QStringLiteral("Model mit &Viewer \u00f6ffnen"));
    MnuDateiView->setEnabled(false);
    MnuDateiViewCode = entry(MnuDatei, QStringLiteral("MnuDateiViewCode"),
                             QStringLiteral("qc-Datei mit &Editor \u00f6ffnen"));
    MnuDateiPreview =
        entry(MnuDatei, QStringLiteral("MnuDateiPreview"), QStringLiteral("&3D-Vorschau"));
    MnuDateiOpenCompiled = entry(MnuDatei, QStringLiteral("MnuDateiOpenCompiled"),
                                 QStringLiteral("&Kompiliertes Modell \u00f6ffnen..."));
    MnuB = separator(MnuDatei, QStringLiteral("MnuB"));
    MnuDateiLast1 = entry(MnuDatei, QStringLiteral("MnuDateiLast1"), QString());
    MnuDateiLast2 = entry(MnuDatei, QStringLiteral("MnuDateiLast2"), QString());
    MnuDateiLast3 = entry(MnuDatei, QStringLiteral("MnuDateiLast3"), QString());
    MnuDateiLast4 = entry(MnuDatei, QStringLiteral("MnuDateiLast4"), QString());
    mnustrich = separator(MnuDatei, QStringLiteral("mnustrich"));
    MnuDateiBeenden =
        entry(MnuDatei, QStringLiteral("MnuDateiBeenden"), QStringLiteral("&Beenden"));
    // The desktop's own keys, beside the menus' access keys. A language file
    // replaces captions only, so the keys are the same in every language.
    MnuDateiOeffnen->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    MnuDateiSpeichern->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    MnuDateiSpeichernunter->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));

    MnuEinstellungen = Control(window.menuBar()->addMenu(QStringLiteral("&Einstellungen")),
                               QStringLiteral("MnuEinstellungen"));
    MnuEinstModel = entry(MnuEinstellungen, QStringLiteral("MnuEinstModel"),
                          QStringLiteral("&Modeleinstellungen"));
    MnuEinstAllg = entry(MnuEinstellungen, QStringLiteral("MnuEinstAllg"),
                         QStringLiteral("&Allgemeine Einstellungen"));

    MnuWizards = Control(window.menuBar()->addMenu(QStringLiteral("&Wizards")),
                         QStringLiteral("MnuWizards"));
    MnuWizardsWizAn =
        entry(MnuWizards, QStringLiteral("MnuWizardsWizAn"), QStringLiteral("&Wizard an"));
    MnuWizardsWizAn->setCheckable(true);
    MnuWizardsGrWiz = entry(MnuWizards, QStringLiteral("MnuWizardsGrWiz"),
                            QStringLiteral("&Grundeinstellungen Wizard"));
    MnuWizardsAnimWiz = entry(MnuWizards, QStringLiteral("MnuWizardsAnimWiz"),
                              QStringLiteral("&Animationen Wizard"));
    MnuWizardsAnimWiz->setEnabled(false);

    MnuHilfe =
        Control(window.menuBar()->addMenu(QStringLiteral("&Hilfe")), QStringLiteral("MnuHilfe"));
    MnuHilfeUeber = entry(MnuHilfe, QStringLiteral("MnuHilfeUeber"), QStringLiteral("&\u00dcber"));
}

} // namespace quarle::ui
