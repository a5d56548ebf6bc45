#include "platform/Reflection.h"

#include "platform/Twips.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTimer>
#include <gtest/gtest.h>
#include <memory>

namespace quarle::platform {
namespace {

// A small form with one control of each kind, registered in the order a
// form builds itself; the Qt parent chain differs from that order on purpose.
struct SampleForm {
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
    QMenuBar* bar = new QMenuBar(form.get());
    QMenu* mnuDatei = Control(bar->addMenu("&Datei"), "MnuDatei");
    QAction* mnuDateiNeu = Control(mnuDatei->addAction("&Neu"), "MnuDateiNeu");
    QGroupBox* frmModes = Control(new QGroupBox("Modi", form.get()), "FrmModes");
    QRadioButton* opt0 = Control(new QRadioButton("Normal", frmModes), "OptModes", 0);
    QRadioButton* opt1 = Control(new QRadioButton("Additiv", frmModes), "OptModes", 1);
    QLabel* label1 = Control(new QLabel("Pfad:", form.get()), "Label1");
    QLineEdit* txtPath = Control(new QLineEdit(form.get()), "TxtPath");
    QPushButton* cmdAdd = Control(new QPushButton("Hinzu", form.get()), "CmdAdd");
    QCheckBox* chkReverse = Control(new QCheckBox("Rückwärts", form.get()), "ChkReverse");
    QListWidget* lstParts = Control(new QListWidget(form.get()), "LstParts");
    QComboBox* cmbGroup = Control(new QComboBox(form.get()), "CmbGroup");
    QLabel* picPreview = Control(new QLabel(form.get()), "PicPreview");
    QScrollBar* scrPic = Control(new QScrollBar(Qt::Vertical, form.get()), "ScrPic");
    QFrame* line1 = Control(new QFrame(form.get()), "Line1");
    QTimer* tmrAnim = Control(new QTimer(form.get()), "TmrAnim");
    QTabWidget* tabSmd = Control(new QTabWidget(form.get()), "TabSmd");

    SampleForm() {
        form->setWindowTitle("Quarle");
        tabSmd->addTab(new QWidget, "Modelldateien");
        tabSmd->addTab(new QWidget, "Animationen");
        // A control registered on a page of the tab control still belongs to the form.
        Control(new QLabel("Seite", tabSmd->widget(1)), "LblPage");
    }
};

TEST(Reflection, ControlsComeInRegistrationOrderWithTheirKeys) {
    SampleForm f;
    QStringList keys;
    for (const ControlInfo& c : ControlsOf(f.form.get())) {
        keys << c.Key();
    }
    EXPECT_EQ(keys,
              QStringList({"MnuDatei", "MnuDateiNeu", "FrmModes", "OptModes(0)", "OptModes(1)",
                           "Label1", "TxtPath", "CmdAdd", "ChkReverse", "LstParts", "CmbGroup",
                           "PicPreview", "ScrPic", "Line1", "TmrAnim", "TabSmd", "LblPage"}));

    EXPECT_EQ(FindControl(f.form.get(), "OptModes", 1), f.opt1);
    EXPECT_EQ(FindControl(f.form.get(), "OptModes"), nullptr); // an array needs its index
    EXPECT_EQ(FindControl(f.form.get(), "CmdAdd"), f.cmdAdd);
    EXPECT_EQ(FindControl(f.form.get(), "CmdMissing"), nullptr);
    ASSERT_TRUE(InfoOf(f.opt0).has_value());
    EXPECT_EQ(InfoOf(f.opt0)->Index, 0);
    EXPECT_EQ(InfoOf(f.cmdAdd)->Index, -1);
    EXPECT_FALSE(InfoOf(f.bar).has_value()); // never registered

    // Registering again renames the control but keeps its place.
    RegisterControl(f.opt0, "OptMode", 0);
    EXPECT_EQ(ControlsOf(f.form.get())[3].Key(), "OptMode(0)");
}

TEST(Reflection, EachKindHasTheOldToolkitsProperties) {
    SampleForm f;
    struct Row {
        QObject* control;
        bool caption, toolTip, visible;
    };
    const Row rows[] = {
        {f.mnuDatei, true, false, true},   {f.mnuDateiNeu, true, false, true},
        {f.frmModes, true, true, true},    {f.opt0, true, true, true},
        {f.label1, true, true, true},      {f.txtPath, false, true, true},
        {f.cmdAdd, true, true, true},      {f.chkReverse, true, true, true},
        {f.lstParts, false, true, true},   {f.cmbGroup, false, true, true},
        {f.picPreview, false, true, true}, {f.scrPic, false, false, true},
        {f.line1, false, false, true},     {f.tmrAnim, false, false, false},
        {f.tabSmd, true, true, true},      {f.form.get(), true, false, true},
    };
    // (A menu entry has no tool tip of its own, though Qt's falls back to its text.)
    for (const Row& r : rows) {
        SCOPED_TRACE(r.control->objectName().toStdString());
        EXPECT_EQ(Caption(r.control).has_value(), r.caption);
        EXPECT_EQ(ToolTipText(r.control).has_value(), r.toolTip);
        EXPECT_EQ(Visible(r.control).has_value(), r.visible);
        // Writes land exactly where the property exists.
        EXPECT_EQ(SetCaption(r.control, "Neu"), r.caption);
        EXPECT_EQ(SetToolTipText(r.control, "Tipp"), r.toolTip);
        if (r.caption) {
            EXPECT_EQ(Caption(r.control), "Neu");
        }
        if (r.toolTip) {
            EXPECT_EQ(ToolTipText(r.control), "Tipp");
        }
    }
    // A text box keeps its text when a caption is written to it.
    f.txtPath->setText("c:\\models");
    EXPECT_FALSE(SetCaption(f.txtPath, "x"));
    EXPECT_EQ(f.txtPath->text(), "c:\\models");
    // The form's caption is its window title; the menu's is its title.
    EXPECT_EQ(f.form->windowTitle(), "Neu");
    EXPECT_EQ(f.mnuDatei->title(), "Neu");
}

TEST(Reflection, PictureBoxesAmongLabels) {
    QWidget form;
    auto* image = Control(new QLabel(&form), "Image1");
    auto* plain = Control(new QLabel("Text", &form), "Label7");
    EXPECT_EQ(KindOf(image), ControlKind::Picture);
    EXPECT_EQ(KindOf(plain), ControlKind::Label);
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    plain->setPixmap(pixmap);
    EXPECT_EQ(KindOf(plain), ControlKind::Picture);
    // Marked by hand, whatever it holds.
    auto* shown = Control(new QLabel("x", &form), "Bild");
    SetControlKind(shown, ControlKind::Picture);
    EXPECT_FALSE(Caption(shown).has_value());
    EXPECT_TRUE(ToolTipText(shown).has_value());
}

TEST(Reflection, VisibleIsTheControlsOwnSettingOnAFormNotShown) {
    SampleForm f;
    EXPECT_EQ(Visible(f.cmdAdd), true); // form never shown
    EXPECT_EQ(Visible(f.opt1), true);   // inside a frame
    EXPECT_TRUE(SetVisible(f.cmdAdd, false));
    EXPECT_EQ(Visible(f.cmdAdd), false);
    EXPECT_TRUE(SetVisible(f.cmdAdd, true));
    EXPECT_EQ(Visible(f.cmdAdd), true);

    f.form->show();
    // On the page not showing, a control is off screen but still Visible.
    EXPECT_EQ(f.tabSmd->currentIndex(), 0);
    QObject* onPage = FindControl(f.form.get(), "LblPage");
    EXPECT_FALSE(qobject_cast<QWidget*>(onPage)->isVisible());
    EXPECT_EQ(Visible(onPage), true);
    // Blinking a control: hide, show, hide on a shown form.
    SetVisible(f.chkReverse, false);
    EXPECT_FALSE(f.chkReverse->isVisible());
    SetVisible(f.chkReverse, true);
    EXPECT_TRUE(f.chkReverse->isVisible());

    SetVisible(f.mnuDateiNeu, false);
    EXPECT_EQ(Visible(f.mnuDateiNeu), false);
    SetVisible(f.mnuDatei, false);
    EXPECT_FALSE(f.mnuDatei->menuAction()->isVisible());
    EXPECT_FALSE(SetVisible(f.tmrAnim, false));
}

TEST(Reflection, TabControlCaptionIsThePageShowing) {
    SampleForm f;
    EXPECT_EQ(Caption(f.tabSmd), "Modelldateien");
    EXPECT_EQ(TabCaption(f.tabSmd, 1), "Animationen");
    EXPECT_FALSE(TabCaption(f.tabSmd, 2).has_value());
    EXPECT_FALSE(TabCaption(f.cmdAdd, 0).has_value());

    f.tabSmd->setCurrentIndex(1);
    EXPECT_TRUE(SetCaption(f.tabSmd, "Animation files"));
    EXPECT_EQ(f.tabSmd->tabText(1), "Animation files");
    EXPECT_EQ(f.tabSmd->tabText(0), "Modelldateien");
    EXPECT_TRUE(SetTabCaption(f.tabSmd, 0, "Model files"));
    EXPECT_FALSE(SetTabCaption(f.tabSmd, 5, "x"));
    EXPECT_EQ(TabCaption(f.tabSmd, 0), "Model files");

    QTabWidget empty;
    EXPECT_EQ(Caption(&empty), ""); // has a caption, but no page to hold it
    EXPECT_FALSE(SetCaption(&empty, "x"));
}

TEST(Reflection, ControlsOfADialogParentedToTheFormStayWithTheDialog) {
    SampleForm f;
    auto* dialog = new QDialog(f.form.get());
    auto* ok = Control(new QPushButton("OK", dialog), "OKButton");
    auto* formTimer = Control(new QTimer(f.form.get()), "TmrLast");
    const QList<ControlInfo> mine = ControlsOf(f.form.get());
    EXPECT_EQ(mine.back().Object, formTimer);
    for (const ControlInfo& c : mine) {
        EXPECT_NE(c.Object, ok);
    }
    ASSERT_EQ(ControlsOf(dialog).size(), 1);
    EXPECT_EQ(FormOf(ok), dialog);
    EXPECT_EQ(FormOf(f.mnuDateiNeu), f.form.get()); // through the popup menu and the bar
}

TEST(Twips, RoundToThePixelAndPlaceWidgets) {
    static_assert(ToPixels(7650) == 510);
    static_assert(ToPixels(7) == 0 && ToPixels(8) == 1);
    static_assert(ToPixels(-8) == -1 && ToPixels(-7) == 0);
    static_assert(ToTwips(428) == 6420);
    QWidget parent;
    auto* child = new QWidget(&parent);
    SetGeometryTwips(child, 120, -240, 7215, 4575);
    EXPECT_EQ(child->geometry(), QRect(8, -16, 481, 305));
    SetWidthTwips(child, 1500);
    SetHeightTwips(child, 300);
    EXPECT_EQ(child->size(), QSize(100, 20));
    EXPECT_EQ(WidthTwips(child), 1500);
    EXPECT_EQ(HeightTwips(child), 300);
    MoveTwips(child, 30, 45);
    EXPECT_EQ(LeftTwips(child), 30);
    EXPECT_EQ(TopTwips(child), 45);
}

} // namespace
} // namespace quarle::platform
