// main() of every Qt test binary: one offscreen QApplication, a pinned C locale.
#include <QApplication>
#include <QLocale>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QLocale::setDefault(QLocale::c());
    ::testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    QApplication::setApplicationName("QuarleTests");
    return RUN_ALL_TESTS();
}
