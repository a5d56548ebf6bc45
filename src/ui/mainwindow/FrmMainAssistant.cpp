// The assistant: the mascot Quarle on the main window, its poses, its tips
// and its speech box.
//
// Two timers drive it. TmrAnim runs a small state machine in its tag: "NEW"
// draws a random pose and a count of ticks to hold it, "BUSY" and
// "BUSY_SEC" hold a pose for two long ticks after a tip was shown, and a
// number counts down to the next draw. TmrPlayAnim plays the two-frame loops
// that WizFrameSteps chains.
#include "localisation/GlobalStrings.h"
#include "platform/Twips.h"
#include "platform/WindowShape.h"
#include "ui/assistant/MouseRelay.h"
#include "ui/mainwindow/FrmMain.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <cmath>
#include <cstdlib>

namespace quarle::ui {

namespace {

// The frames and the close box's pictures stand beside the program in
// "assistant"; a picture that is missing leaves its list empty, and the
// mascot then stays hidden. At the start the files are only looked for:
// each frame is read when it is first shown, and the rest once the window
// is up, so the first window waits for one frame.
QDir AssistantFolder(const QString& programFolder) {
    return QDir(QDir(programFolder).filePath(QStringLiteral("assistant")));
}

QString FramePath(const QDir& folder, int n) {
    return folder.filePath(QStringLiteral("quarle%1.png").arg(n));
}

void FindAssistantPictures(const QString& programFolder, QList<QPixmap>& frames) {
    if (!frames.isEmpty()) {
        return;
    }
    const QDir folder = AssistantFolder(programFolder);
    for (int n = 0; n < 10; ++n) {
        if (!QFileInfo(FramePath(folder, n)).isFile()) {
            return;
        }
    }
    frames = QList<QPixmap>(10);
}

// Whether frame n can be shown; reads it when it has not been read.
bool ReadFrame(const QString& programFolder, QList<QPixmap>& frames, int n) {
    if (n < 0 || n >= frames.size()) {
        return false;
    }
    if (frames[n].isNull()) {
        frames[n] = QPixmap(FramePath(AssistantFolder(programFolder), n));
    }
    return !frames[n].isNull();
}

void ReadCloseBox(const QString& programFolder, QList<QPixmap>& closeBox) {
    if (closeBox.isEmpty()) {
        const QDir folder = AssistantFolder(programFolder);
        const QPixmap up(folder.filePath(QStringLiteral("close_up.png")));
        const QPixmap down(folder.filePath(QStringLiteral("close_down.png")));
        if (!up.isNull() && !down.isNull()) {
            closeBox = {up, down};
        }
    }
}

// A point of a control in the coordinates of the window's client area, in twips.
QPoint TwipsIn(const QWidget* form, const QWidget* control, QPoint pixels = {}) {
    const QPoint p = control->mapTo(form, pixels);
    return {platform::ToTwips(p.x()), platform::ToTwips(p.y())};
}

int RoundTwips(double v) {
    return static_cast<int>(std::lround(v));
}

} // namespace

void FrmMain::ConnectAssistant() {
    connect(CmdNext, &QPushButton::clicked, this, &FrmMain::CmdNext_Click);
    connect(CmdWizBack, &QPushButton::clicked, this, &FrmMain::CmdWizBack_Click);
    connect(CmdEnd, &QPushButton::clicked, this, &FrmMain::CmdEnd_Click);
    // A checkable entry checks itself on a click; the assistant decides,
    // from the state the entry had before.
    connect(MnuWizardsWizAn, &QAction::triggered, this, [this](bool checked) {
        MnuWizardsWizAn->setChecked(!checked);
        MnuWizardsWizAn_Click();
    });
    connect(TmrAnim, &QTimer::timeout, this, &FrmMain::TmrAnim_Timer);
    connect(TmrPlayAnim, &QTimer::timeout, this, &FrmMain::TmrPlayAnim_Timer);

    auto* mascot = new MouseRelay(PicWiz);
    mascot->Click = [this] { PicWiz_Click(); };
    auto* closeBox = new MouseRelay(PicWizClose);
    closeBox->MouseDown = [this](Qt::MouseButton b, QPointF) { PicWizClose_MouseDown(b); };
    closeBox->MouseUp = [this](Qt::MouseButton b, QPointF) { PicWizClose_MouseUp(b); };
    closeBox->Click = [this] { PicWizClose_Click(); };
    auto* speechBox = new MouseRelay(FrmWizSay);
    speechBox->MouseDown = [this](Qt::MouseButton b, QPointF at) {
        FrmWizSay_MouseDown(b, at.x() * platform::TwipsPerPixel, at.y() * platform::TwipsPerPixel);
    };
    speechBox->MouseMove = [this](Qt::MouseButtons, QPointF at) {
        FrmWizSay_MouseMove(at.x() * platform::TwipsPerPixel, at.y() * platform::TwipsPerPixel);
    };
    speechBox->MouseUp = [this](Qt::MouseButton, QPointF) { FrmWizSay_MouseUp(); };
}

// ---------------------------------------------------------------------------
// Placing the mascot and its speech box

void FrmMain::ShowWizard(int x, int y, const QString& text) {
    TxtWizSay->setPlainText(text);
    const int formWidth = platform::WidthTwips(this);
    const int formHeight = platform::HeightTwips(this);
    const int wizWidth = platform::WidthTwips(PicWiz);
    const int wizHeight = platform::HeightTwips(PicWiz);
    const int sayWidth = platform::WidthTwips(FrmWizSay);

    // side: the pose that points back at the target, 0 up-right, 1
    // down-right, 2 down-left, 3 up-left (frames 2 to 5).
    int wizX = 0;
    int wizY = 0;
    int side = 0;
    int sayLeft = 0;
    if (formWidth / 2.0 < x) {
        wizX = x - wizWidth + 480;
        side = 2;
        sayLeft = x - sayWidth - 690;
    } else {
        wizX = x - 480;
        side = 0;
        sayLeft = x + 600;
    }
    if (formHeight / 2.0 < y) {
        wizY = y - wizHeight + 480;
        if (side == 2) {
            side = 1;
        } else {
            side = 2;
            wizX += 120;
        }
    } else {
        wizY = y - 300;
        side = side == 2 ? 0 : 3;
    }
    MoveWizard(wizX, wizY);

    const int sayTop = y + 30;
    platform::MoveTwips(FrmWizSay, sayLeft, sayTop);
    platform::MoveTwips(TxtWizSayShadow, sayLeft + 45, sayTop + 45);
    SetWizardAnim(side + 2);
    SetBusyWizard();
    ShowSpeechBox();
}

void FrmMain::RefreshWizard() {
    QWidget* form = centralWidget();
    const int step = PicWizTag.toInt();
    QPoint target;
    Ids text = IDS_TIP_TEXTUREPATH;
    switch (step) {
    case 0: // under the texture folder's button, at its left edge
        target = TwipsIn(form, CmdBrowseTexture, {0, CmdBrowseTexture->height()});
        text = IDS_TIP_TEXTUREPATH;
        break;
    case 1:
        target = TwipsIn(form, CmdBrowseModel, {0, CmdBrowseModel->height()});
        text = IDS_TIP_MODELPATH;
        break;
    case 2: // a little into the list of parts
        target = TwipsIn(form, LstParts) + QPoint(360, 360);
        text = IDS_TIP_REFERENCE;
        break;
    case 3: { // the tab of the animations page, near its top
        const QRect tab = TabSmd->tabBar()->tabRect(1);
        target = TwipsIn(form, TabSmd->tabBar(), tab.topLeft()) + QPoint(0, 120);
        text = IDS_TIP_CHANGETOANIMATION;
        break;
    }
    case 4:
        target = TwipsIn(form, CmdAdd, CmdAdd->rect().center());
        text = IDS_TIP_ADDANIMATION;
        break;
    default:
        target = TwipsIn(form, CmdCompile, {0, CmdCompile->height()});
        text = IDS_TIP_COMPILE;
        break;
    }
    ShowWizard(static_cast<i16>(target.x()), static_cast<i16>(target.y()), IdsText(text));
}

void FrmMain::SetBusyWizard() {
    TmrAnim->setInterval(10000);
    TmrAnimTag = QStringLiteral("BUSY");
}

void FrmMain::SetIdleWizard() {
    SetWizardAnim(0);
    TmrAnimTag = QStringLiteral("0");
    TmrAnim->setInterval(500);
}

void FrmMain::MoveWizard(int x, int y) {
    platform::MoveTwips(PicWiz, x, y);
}

void FrmMain::SetWizardAnim(int anim) {
    TmrPlayAnim->stop();
    HideWizard();
    if (!wizardPicturesSought_) {
        wizardPicturesSought_ = true;
        FindAssistantPictures(services_.ProgramFolder(), ImgLstWizAnims);
        ReadCloseBox(services_.ProgramFolder(), ImgLstMain);
        if (!ImgLstMain.isEmpty()) {
            PicWizClose->setPixmap(ImgLstMain[0]);
        }
        QTimer::singleShot(0, this, [this] {
            for (int n = 0; n < ImgLstWizAnims.size(); ++n) {
                ReadFrame(services_.ProgramFolder(), ImgLstWizAnims, n);
            }
        });
    }
    // Without the mascot's pictures there is nothing to show, and an empty
    // picture box on top of the pages would only catch their clicks.
    if (anim < 0 || anim >= ImgLstWizAnims.size()) {
        return;
    }
    ShowWizardFrame(anim);
    if (WizFrameSteps[static_cast<std::size_t>(anim)] > 1) {
        TmrPlayAnim->start();
        TmrPlayAnimTag = QString::number(anim);
    }
}

void FrmMain::ShowWizardFrame(int anim) {
    HideWizard();
    if (!ReadFrame(services_.ProgramFolder(), ImgLstWizAnims, anim)) {
        return;
    }
    // The shape resizes the box; the mascot keeps its place.
    const QPoint place = PicWiz->pos();
    platform::ApplyWindowShape(PicWiz, ImgLstWizAnims[anim]);
    PicWiz->move(place);
    PicWiz->setVisible(true);
    PicWiz->raise();
}

void FrmMain::HideWizard() {
    PicWiz->setVisible(false);
}

void FrmMain::DisableWizard() {
    MoveWizard(6000, 820);
    SetIdleWizard();
    MnuWizardsWizAn->setChecked(false);
    FrmWizSay->setVisible(false);
    TxtWizSayShadow->setVisible(false);
    TmrAnimTag = QStringLiteral("NEW");
}

void FrmMain::ShowText() {
    if (!MnuWizardsWizAn->isChecked()) {
        return;
    }
    ShowSpeechBox();
    SetWizardAnim(0);
    SetIdleWizard();
}

// ---------------------------------------------------------------------------
// Handlers

void FrmMain::MnuWizardsWizAn_Click() {
    if (MnuWizardsWizAn->isChecked()) {
        DisableWizard();
        return;
    }
    // The first thing still to do decides where the tips start.
    int step = 5;
    if (TxtTexturepath->text().isEmpty()) {
        step = 0;
    } else if (TxtModelpath->text().isEmpty()) {
        step = 1;
    } else if (LstParts->count() == 0) {
        step = 2;
    } else if (TabSmd->currentIndex() == 0) {
        step = 3;
    } else if (LstAnimations->count() == 0) {
        step = 4;
    }
    PicWizTag = QString::number(step);
    RefreshWizard();
    MnuWizardsWizAn->setChecked(true);
}

void FrmMain::CmdNext_Click() {
    const int step = PicWizTag.toInt();
    if (step < 5) {
        PicWizTag = QString::number(step + 1);
        CmdWizBack->setEnabled(true);
        RefreshWizard();
    }
}

void FrmMain::CmdWizBack_Click() {
    const int step = PicWizTag.toInt();
    if (step >= 1) {
        PicWizTag = QString::number(step - 1);
        RefreshWizard();
    }
}

void FrmMain::CmdEnd_Click() {
    DisableWizard();
}

void FrmMain::PicWiz_Click() {
    ShowText();
}

void FrmMain::PicWizClose_Click() {
    FrmWizSay->setVisible(false);
    TxtWizSayShadow->setVisible(false);
    SetBusyWizard();
    SetWizardAnim(1);
}

void FrmMain::PicWizClose_MouseDown(Qt::MouseButton button) {
    if (button == Qt::LeftButton && ImgLstMain.size() == 2) {
        PicWizClose->setPixmap(ImgLstMain[1]);
    }
}

void FrmMain::PicWizClose_MouseUp(Qt::MouseButton /*button*/) {
    if (ImgLstMain.size() == 2) {
        PicWizClose->setPixmap(ImgLstMain[0]);
    }
}

void FrmMain::FrmWizSay_MouseDown(Qt::MouseButton button, double x, double y) {
    if (button != Qt::LeftButton) {
        return;
    }
    FrmWizSayTag = QStringLiteral("1");
    DragX = static_cast<i16>(std::lround(x));
    DragY = static_cast<i16>(std::lround(y));
}

void FrmMain::FrmWizSay_MouseMove(double x, double y) {
    if (FrmWizSayTag != QLatin1String("1")) {
        return;
    }
    const int left = platform::LeftTwips(FrmWizSay);
    const int top = platform::TopTwips(FrmWizSay);
    platform::MoveTwips(FrmWizSay, RoundTwips(left + x - DragX), RoundTwips(top + y - DragY));
    // The shadow follows from the frame's new place, so it runs one mouse
    // step ahead and falls into place at the next move.
    platform::MoveTwips(TxtWizSayShadow,
                        RoundTwips(platform::LeftTwips(FrmWizSay) + x - DragX + 45),
                        RoundTwips(platform::TopTwips(FrmWizSay) + y - DragY + 45));
}

void FrmMain::FrmWizSay_MouseUp() {
    FrmWizSayTag = QStringLiteral("0");
}

void FrmMain::TmrAnim_Timer() {
    if (TmrAnimTag == QLatin1String("NEW")) {
        // The generator of the services is seeded once per run; a new seed
        // from the clock at every draw would only make the draws repeat
        // within a second.
        const int hold = static_cast<int>(services_.Rnd() * 4);
        TmrAnimTag = QString::number(hold + 1);
        const int pose = static_cast<int>(services_.Rnd() * 20);
        SetWizardAnim(pose == 1 ? 6 : pose == 2 ? 8 : 0);
    } else if (TmrAnimTag == QLatin1String("BUSY")) {
        TmrAnimTag = QStringLiteral("BUSY_SEC");
    } else if (TmrAnimTag == QLatin1String("BUSY_SEC")) {
        SetIdleWizard();
    } else {
        // The count runs on below zero after SetIdleWizard: the pose then
        // holds until the assistant is used or turned off.
        const QString next = QString::number(TmrAnimTag.toLongLong() - 1);
        TmrAnimTag = next == QLatin1String("0") ? QStringLiteral("NEW") : next;
    }
}

void FrmMain::TmrPlayAnim_Timer() {
    int frame = TmrPlayAnimTag.toInt() + 1;
    const int previous = frame - 1;
    if (previous >= 0 && previous < static_cast<int>(WizFrameSteps.size()) &&
        WizFrameSteps[static_cast<std::size_t>(previous)] < 0) {
        frame = std::abs(WizFrameSteps[static_cast<std::size_t>(previous)]);
    }
    TmrPlayAnimTag = QString::number(frame);
    ShowWizardFrame(frame);
}

} // namespace quarle::ui
