// Wires the tiers together and hands over to the main window, whose load is
// the start of the program and whose close is its end.
#include "AppState.h"
#include "platform/QtServices.h"
#include "platform/SettingsStore.h"
#include "ui/mainwindow/FrmMain.h"

#include <QApplication>
#include <QCoreApplication>
#include <memory>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quarle"));

    // The document's tables are large: the state lives on the heap.
    auto state = std::make_unique<quarle::AppState>();
    quarle::platform::QtServices services;
    quarle::platform::SettingsStore settings;

    quarle::ui::FrmMain window(*state, services, settings);
    services.SetDialogParent(&window);
    window.EndProcess = [] { QCoreApplication::exit(0); };
    window.Form_Load();
    window.show();
    return QApplication::exec();
}
