#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QMainWindow window;
    window.setWindowTitle("Quarle");
    window.resize(510, 428);
    window.show();
    return QApplication::exec();
}
