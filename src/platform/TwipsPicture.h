// A picture box that draws in twips and keeps what it drew in an image of
// its own. Painting the widget only shows that image, so covering and
// uncovering the window shows the same picture, and what is drawn later
// covers what was drawn before.
#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>

namespace quarle::platform {

class TwipsPicture : public QWidget {
public:
    // Without a picture, and shows nothing until one is set.
    explicit TwipsPicture(QWidget* parent = nullptr);
    // A picture of this fixed size in twips, filled with a colour.
    TwipsPicture(int widthTwips, int heightTwips, const QColor& fill, QWidget* parent = nullptr);

    const QImage& Picture() const { return picture_; }
    // Shows this picture, as it is, at the top left corner; the widget's size
    // stays what it is.
    void SetPicture(const QImage& picture);
    // Fills the whole picture with a colour.
    void Cls(const QColor& fill);
    // A line or the rim of a circle, at pixel precision and without smoothing.
    // Width 0 is the thinnest line the painter knows. Nothing happens while
    // there is no picture.
    void Line(double x1, double y1, double x2, double y2, const QColor& colour, int width = 1);
    void Circle(double x, double y, double radius, const QColor& colour);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    // False while there is no picture; an indexed one becomes true colour.
    bool Paintable();

    QImage picture_;
};

} // namespace quarle::platform
