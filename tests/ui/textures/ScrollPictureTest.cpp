// The scrolling picture on its own: where its parts stand for its size, when
// its scroll bars show and how far they reach, how the picture moves, and
// what its owner hears of the mouse.
#include "ui/textures/ScrollPicture.h"

#include "platform/Twips.h"

#include <QScrollBar>
#include <QTest>
#include <gtest/gtest.h>

namespace quarle::ui {
namespace {

using platform::ToPixels;

QImage Picture(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(qRgb(10, 20, 30));
    return image;
}

TEST(ScrollPictureTest, BarsShowOnlyWhenThePictureIsLargerThanTheViewport) {
    ScrollPicture control;
    control.resize(ToPixels(4500), ToPixels(3300)); // viewport 4200 x 3000 twips
    control.show();
    ASSERT_EQ(control.Picture1->geometry(), QRect(0, 0, 280, 200));

    const struct {
        int width, height; // pixels
        bool vertical, horizontal;
        int vMax, hMax; // twips
    } rows[] = {
        {100, 100, false, false, 0, 0},     // both hidden, picture at the top left
        {280, 200, false, false, 0, 0},     // exactly the viewport
        {281, 200, false, true, 0, 15},     // one pixel wider
        {600, 40, false, true, 0, 4800},    // wider but not higher
        {40, 600, true, false, 6000, 0},    // higher but not wider
        {600, 600, true, true, 6000, 4800}, // both
    };
    for (const auto& row : rows) {
        control.SetPicture(Picture(row.width, row.height));
        const QString at = QStringLiteral("%1x%2").arg(row.width).arg(row.height);
        EXPECT_EQ(control.VScroll1->isVisible(), row.vertical) << at.toStdString();
        EXPECT_EQ(control.HScroll1->isVisible(), row.horizontal) << at.toStdString();
        EXPECT_EQ(control.VScroll1->maximum(), row.vMax) << at.toStdString();
        EXPECT_EQ(control.HScroll1->maximum(), row.hMax) << at.toStdString();
        EXPECT_EQ(control.VScroll1->pageStep(), row.height * 15 / 4) << at.toStdString();
        EXPECT_EQ(control.Picture2->geometry(), QRect(0, 0, row.width, row.height));
        // The viewport never grows into a hidden bar.
        EXPECT_EQ(control.Picture1->size(), QSize(280, 200));
    }

    // The picture moves by minus the scroll values; a new picture keeps them
    // as far as its own range allows.
    control.VScroll1->setValue(1500);
    control.HScroll1->setValue(3000);
    EXPECT_EQ(control.Picture2->pos(), QPoint(-200, -100));
    control.SetPicture(Picture(600, 220));
    EXPECT_EQ(control.VScroll1->value(), 300);
    EXPECT_EQ(control.Picture2->pos(), QPoint(-200, -20));
    control.SetPicture(Picture(600, 600));
    EXPECT_EQ(control.VScroll1->value(), 300) << "not reset by a new picture";
    control.SetPicture(Picture(100, 100));
    EXPECT_EQ(control.Picture2->pos(), QPoint(0, 0));
}

TEST(ScrollPictureTest, TheOwnerHearsThePictureInTwips) {
    ScrollPicture control;
    control.resize(300, 300);
    control.show();
    control.SetPicture(Picture(400, 400));
    control.VScroll1->setValue(150); // 10 pixels down
    QStringList heard;
    QObject::connect(
        &control, &ScrollPicture::MouseDown, [&](int& button, int& shift, double& x, double& y) {
            heard << QStringLiteral("down %1 %2 %3 %4").arg(button).arg(shift).arg(x).arg(y);
        });
    QObject::connect(&control, &ScrollPicture::Click, [&] { heard << "click"; });
    QObject::connect(&control, &ScrollPicture::DblClick, [&] { heard << "double"; });
    QTest::mouseClick(control.Picture2, Qt::LeftButton, Qt::ShiftModifier, QPoint(10, 20));
    // A double click as the desktop sends it: press, release, double, release.
    QTest::mouseClick(control.Picture2, Qt::RightButton, {}, QPoint(1, 2));
    QTest::mouseDClick(control.Picture2, Qt::RightButton, {}, QPoint(1, 2));
    EXPECT_EQ(heard,
              (QStringList{"down 1 1 150 300", "click", "down 2 0 15 30", "click", "double"}));

    // Lines draw on the picture in twips; Cls takes them off again.
    EXPECT_EQ(control.Point(150, 300), 10 + 256 * 20 + 65536 * 30);
    control.Line(0, 0, 300, 3000, 300, QColor(255, 0, 0));
    EXPECT_EQ(control.Point(150, 300), 255);
    control.Cls();
    EXPECT_EQ(control.Point(150, 300), 10 + 256 * 20 + 65536 * 30);
    EXPECT_EQ(control.Point(-1, 0), -1);
}

} // namespace
} // namespace quarle::ui
