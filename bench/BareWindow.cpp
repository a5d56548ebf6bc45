// The reference of bench/startup.sh: the least a Qt Widgets program does to
// put a window of the main window's size on the screen.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QWidget window;
    window.setWindowTitle(QStringLiteral("bare"));
    window.resize(510, 428); // the main window's designed size in pixels
    window.show();
    return QApplication::exec();
}
