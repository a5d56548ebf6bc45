// The reference of bench/startup.sh: the least a Qt Widgets program does to
// put a window of the main window's size on the screen. With --caption the
// window holds one button with a caption, and so pays what any window with
// text pays first: the font database, and on Linux the accessibility bridge
// asking for the session bus.
#include <QApplication>
#include <QPushButton>
#include <QWidget>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QWidget window;
    window.setWindowTitle(QStringLiteral("bare"));
    window.resize(510, 428); // the main window's designed size in pixels
    if (QApplication::arguments().contains(QStringLiteral("--caption"))) {
        auto* button = new QPushButton(&window);
        button->setText(QStringLiteral("Modelleinstellungen"));
        button->move(20, 20);
    }
    window.show();
    return QApplication::exec();
}
