#include "ui/textures/ScrollPicture.h"

#include "platform/Twips.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

namespace quarle::ui {

using platform::ToPixels;
using platform::ToTwips;
using platform::TwipsPerPixel;

namespace {

// The key code of a key as the owner's handlers know it.
int KeyCodeOf(const QKeyEvent* event) {
    const int key = event->key();
    if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z)) {
        return key;
    }
    switch (key) {
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
        return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Shift:
        return 16;
    case Qt::Key_Control:
        return 17;
    case Qt::Key_Alt:
        return 18;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Space:
        return 32;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Insert:
        return 45;
    case Qt::Key_Delete:
        return 46;
    default:
        return key >= Qt::Key_F1 && key <= Qt::Key_F24 ? 112 + (key - Qt::Key_F1) : 0;
    }
}

int ShiftOf(Qt::KeyboardModifiers modifiers) {
    return (modifiers & Qt::ShiftModifier ? 1 : 0) | (modifiers & Qt::ControlModifier ? 2 : 0) |
           (modifiers & Qt::AltModifier ? 4 : 0);
}

int ButtonsOf(Qt::MouseButtons buttons) {
    return (buttons & Qt::LeftButton ? 1 : 0) | (buttons & Qt::RightButton ? 2 : 0) |
           (buttons & Qt::MiddleButton ? 4 : 0);
}

} // namespace

ScrollPicture::ScrollPicture(QWidget* parent) : QWidget(parent) {
    // The children are the control's own, not controls of the form that
    // holds it: they have names but are not registered.
    Picture1 = new QWidget(this);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    Picture1->setAutoFillBackground(true);
    // Picture2 paints the picture with what Line drew on it.
    Picture2 = new platform::TwipsPicture(Picture1);
    Picture2->setObjectName(QStringLiteral("Picture2"));
    Picture2->setFocusPolicy(Qt::StrongFocus);
    Picture2->installEventFilter(this);
    Picture2->resize(0, 0);
    VScroll1 = new QScrollBar(Qt::Vertical, this);
    VScroll1->setObjectName(QStringLiteral("VScroll1"));
    HScroll1 = new QScrollBar(Qt::Horizontal, this);
    HScroll1->setObjectName(QStringLiteral("HScroll1"));
    for (QScrollBar* bar : {VScroll1, HScroll1}) {
        bar->setRange(0, 0);
        bar->setSingleStep(SmallChangeTwips);
        bar->setVisible(false);
    }
    connect(VScroll1, &QScrollBar::valueChanged, this, &ScrollPicture::VScroll1_Change);
    connect(HScroll1, &QScrollBar::valueChanged, this, &ScrollPicture::HScroll1_Change);
    SetBackColor(Qt::white);
}

ScrollPicture::~ScrollPicture() = default;

QColor ScrollPicture::BackColor() const {
    return Picture1->palette().color(QPalette::Window);
}

void ScrollPicture::SetBackColor(const QColor& color) {
    QPalette palette = Picture1->palette();
    palette.setColor(QPalette::Window, color);
    Picture1->setPalette(palette);
    emit PropertyChanged(QStringLiteral("BackColor"));
}

void ScrollPicture::SetEnabled(bool enabled) {
    setEnabled(enabled);
    emit PropertyChanged(QStringLiteral("Enabled"));
}

void ScrollPicture::Refresh() {
    Picture2->repaint();
}

void ScrollPicture::Line(int /*flags*/, double x1, double y1, double x2, double y2,
                         const QColor& color) {
    Picture2->Line(x1, y1, x2, y2, color);
}

void ScrollPicture::SetPicture(const QImage& picture) {
    picture_ = picture;
    Picture2->SetPicture(picture);
    emit PropertyChanged(QStringLiteral("Picture"));
    Picture2->resize(picture.size());
    Picture2_Resize();
    Picture2->update();
}

qint32 ScrollPicture::Point(double x, double y) const {
    const int px = static_cast<int>(std::floor(x / TwipsPerPixel));
    const int py = static_cast<int>(std::floor(y / TwipsPerPixel));
    const QImage& drawn = Picture2->Picture();
    if (drawn.isNull() || !drawn.valid(px, py)) {
        return -1;
    }
    const QRgb rgb = drawn.pixel(px, py);
    return qRed(rgb) + 256 * qGreen(rgb) + 65536 * qBlue(rgb);
}

void ScrollPicture::Cls() {
    Picture2->SetPicture(picture_);
}

void ScrollPicture::ReadProperties(const QVariantMap& bag) {
    SetBackColor(bag.value(QStringLiteral("BackColor"), QColor(Qt::white)).value<QColor>());
    SetEnabled(bag.value(QStringLiteral("Enabled"), true).toBool());
    SetPicture(bag.value(QStringLiteral("Picture"), QImage()).value<QImage>());
}

void ScrollPicture::WriteProperties(QVariantMap& bag) const {
    bag.insert(QStringLiteral("BackColor"), BackColor());
    bag.insert(QStringLiteral("Enabled"), Enabled());
    bag.insert(QStringLiteral("Picture"), picture_);
}

void ScrollPicture::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    UserControl_Resize();
}

void ScrollPicture::UserControl_Resize() {
    const int w = ToTwips(width());
    const int h = ToTwips(height());
    const int viewW = std::max(0, w - (ScrollBarTwips + 45));
    const int viewH = std::max(0, h - (ScrollBarTwips + 45));
    platform::SetGeometryTwips(Picture1, 0, 0, viewW, viewH);
    platform::SetGeometryTwips(VScroll1, viewW + 15, 0, ScrollBarTwips, viewH);
    platform::SetGeometryTwips(HScroll1, 0, viewH + 15, viewW, ScrollBarTwips);
}

void ScrollPicture::Picture2_Resize() {
    const int pictureW = ToTwips(Picture2->width());
    const int pictureH = ToTwips(Picture2->height());
    const int vMax = pictureH - ToTwips(Picture1->height());
    const int hMax = pictureW - ToTwips(Picture1->width());
    // A bar that is not needed has the range 0..0, which puts the picture
    // back to the edge.
    VScroll1->setRange(0, std::max(0, vMax));
    VScroll1->setVisible(vMax >= 1);
    HScroll1->setRange(0, std::max(0, hMax));
    HScroll1->setVisible(hMax >= 1);
    VScroll1->setPageStep(std::max(1, pictureH / 4));
    VScroll1->setSingleStep(SmallChangeTwips);
    HScroll1->setPageStep(std::max(1, pictureW / 4));
    HScroll1->setSingleStep(SmallChangeTwips);
}

void ScrollPicture::VScroll1_Change(int value) {
    Picture2->move(Picture2->x(), -ToPixels(value));
}

void ScrollPicture::HScroll1_Change(int value) {
    Picture2->move(-ToPixels(value), Picture2->y());
}

void ScrollPicture::wheelEvent(QWheelEvent* event) {
    const bool vertical = std::abs(event->angleDelta().y()) >= std::abs(event->angleDelta().x()) &&
                          !(event->modifiers() & Qt::ShiftModifier);
    QScrollBar* bar = vertical && VScroll1->isVisible() ? VScroll1 : HScroll1;
    if (bar->isVisible()) {
        QApplication::sendEvent(bar, event);
    } else {
        event->ignore();
    }
}

bool ScrollPicture::eventFilter(QObject* watched, QEvent* event) {
    if (watched != Picture2) {
        return QWidget::eventFilter(watched, event);
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const QPointF at = mouse->position();
        int button =
            ButtonsOf(event->type() == QEvent::MouseMove ? mouse->buttons()
                                                         : Qt::MouseButtons(mouse->button()));
        int shift = ShiftOf(mouse->modifiers());
        double x = at.x() * TwipsPerPixel;
        double y = at.y() * TwipsPerPixel;
        if (event->type() == QEvent::MouseMove) {
            emit MouseMove(button, shift, x, y);
        } else if (event->type() == QEvent::MouseButtonRelease) {
            emit MouseUp(button, shift, x, y);
            // The release that ends a double click is no click of its own.
            if (!doubleClicked_ && Picture2->rect().contains(at.toPoint())) {
                emit Click();
            }
            doubleClicked_ = false;
        } else if (event->type() == QEvent::MouseButtonDblClick) {
            // Down, up, click, double click, up: the second press is no
            // mouse down of its own.
            doubleClicked_ = true;
            emit DblClick();
        } else {
            emit MouseDown(button, shift, x, y);
        }
        return true;
    }
    case QEvent::KeyPress: {
        auto* key = static_cast<QKeyEvent*>(event);
        int keyCode = KeyCodeOf(key);
        int shift = ShiftOf(key->modifiers());
        emit KeyDown(keyCode, shift);
        const QString text = key->text();
        if (!text.isEmpty() && text.at(0).unicode() < 256) {
            int keyAscii = text.at(0).unicode();
            emit KeyPress(keyAscii);
        }
        // Keys the owner left alone and that don't scroll go on to the
        // form (Tab, Escape, Return).
        bool scrolled = true;
        switch (keyCode) {
        case 37:
            HScroll1->triggerAction(QAbstractSlider::SliderSingleStepSub);
            break;
        case 39:
            HScroll1->triggerAction(QAbstractSlider::SliderSingleStepAdd);
            break;
        case 38:
            VScroll1->triggerAction(QAbstractSlider::SliderSingleStepSub);
            break;
        case 40:
            VScroll1->triggerAction(QAbstractSlider::SliderSingleStepAdd);
            break;
        case 33:
            VScroll1->triggerAction(QAbstractSlider::SliderPageStepSub);
            break;
        case 34:
            VScroll1->triggerAction(QAbstractSlider::SliderPageStepAdd);
            break;
        default:
            scrolled = false;
            break;
        }
        return scrolled;
    }
    case QEvent::KeyRelease: {
        const auto* key = static_cast<QKeyEvent*>(event);
        int keyCode = KeyCodeOf(key);
        int shift = ShiftOf(key->modifiers());
        emit KeyUp(keyCode, shift);
        return false;
    }
    default:
        return QWidget::eventFilter(watched, event);
    }
}

} // namespace quarle::ui
