// A picture that may be larger than the space it is given, with scroll bars
// that show only when they are needed. All measures are in twips.
//
// Four children: the viewport Picture1 (back colour, clips), the picture
// Picture2 inside it (as large as its picture, moved by minus the scroll
// values), and the scroll bars VScroll1 and HScroll1. The bars keep their
// places when hidden: the viewport never grows into them.
//
// Picture2's mouse and key events are passed on to the owner with their
// parameters by reference, as the owner's handlers expect them: Button 1
// left, 2 right, 4 middle; Shift 1 shift, 2 control, 4 alt; X and Y in twips
// of the picture. A KeyDown the owner leaves alone (KeyCode not set to 0)
// scrolls with the arrow and page keys, and the wheel scrolls too.
#pragma once

#include "platform/TwipsPicture.h"

#include <QColor>
#include <QImage>
#include <QString>
#include <QVariantMap>
#include <QWidget>

class QScrollBar;

namespace quarle::ui {

class ScrollPicture : public QWidget {
    Q_OBJECT

public:
    static constexpr int ScrollBarTwips = 255; // width of VScroll1, height of HScroll1
    static constexpr int SmallChangeTwips = 120;

    explicit ScrollPicture(QWidget* parent = nullptr);
    ~ScrollPicture() override;

    // ---- Members
    QColor BackColor() const;
    void SetBackColor(const QColor& color);
    bool Enabled() const { return isEnabled(); }
    void SetEnabled(bool enabled);
    // Repaints the picture.
    void Refresh();
    // A line on the picture, in twips; flags has no effect.
    void Line(int flags, double x1, double y1, double x2, double y2, const QColor& color);
    const QImage& Picture() const { return picture_; }
    // A new picture; a null image empties the control. The scroll values are
    // not reset: each bar keeps its value within its new range.
    void SetPicture(const QImage& picture);
    // The colour at a point of the picture in twips, as red + 256 * green +
    // 65536 * blue; -1 outside the picture.
    qint32 Point(double x, double y) const;
    // Clears what Line drew; the picture stays.
    void Cls();

    // The stored properties "BackColor", "Enabled" and "Picture", read and
    // written in this order; what a bag doesn't hold takes its default
    // (white, enabled, no picture).
    void ReadProperties(const QVariantMap& bag);
    void WriteProperties(QVariantMap& bag) const;

    // A free text of the owner's, as every control has one.
    QString Tag;

    // The children, for the owner's reflection and for tests.
    QWidget* Picture1 = nullptr;
    platform::TwipsPicture* Picture2 = nullptr;
    QScrollBar* VScroll1 = nullptr;
    QScrollBar* HScroll1 = nullptr;

signals:
    void Click();
    void DblClick();
    void KeyDown(int& keyCode, int& shift);
    void KeyPress(int& keyAscii);
    void KeyUp(int& keyCode, int& shift);
    void MouseDown(int& button, int& shift, double& x, double& y);
    void MouseMove(int& button, int& shift, double& x, double& y);
    void MouseUp(int& button, int& shift, double& x, double& y);
    // A stored property was written ("BackColor", "Enabled", "Picture").
    void PropertyChanged(const QString& name);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Places the viewport and the bars for the control's own size.
    void UserControl_Resize();
    // Ranges and visibility of the bars for the picture's size.
    void Picture2_Resize();
    void VScroll1_Change(int value);
    void HScroll1_Change(int value);

    QImage picture_; // as set; Picture2 holds it with the lines drawn on it
    bool doubleClicked_ = false;
};

} // namespace quarle::ui
