// Wires the tiers together and hands over to the main window, whose load is
// the start of the program and whose close is its end.
#include "AppState.h"
#include "platform/FontWarmUp.h"
#include "platform/QtServices.h"
#include "platform/SettingsStore.h"
#include "ui/mainwindow/FrmMain.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTimer>
#include <memory>

int main(int argc, char** argv) {
    quarle::platform::FontWarmUp fonts;
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quarle"));
    QApplication::setApplicationVersion(QStringLiteral(QUARLE_VERSION));

    // --help and --version print and end here; a script named opens once
    // the window shows.
    QCommandLineParser options;
    options.setApplicationDescription(
        QStringLiteral("Editor for Half-Life model compile scripts (.qc)."));
    options.addHelpOption();
    options.addVersionOption();
    options.addPositionalArgument(QStringLiteral("script"),
                                  QStringLiteral("A .qc script to open."),
                                  QStringLiteral("[script]"));
    options.process(app);
    const QStringList scripts = options.positionalArguments();

    // The document's tables are large: the state lives on the heap.
    auto state = std::make_unique<quarle::AppState>();
    quarle::platform::QtServices services;
    quarle::platform::SettingsStore settings;

    fonts.Wait();
    quarle::ui::FrmMain window(*state, services, settings);
    services.SetDialogParent(&window);
    window.EndProcess = [] { QCoreApplication::exit(0); };
    window.Form_Load();
    window.show();
    if (!scripts.isEmpty()) {
        QTimer::singleShot(0, &window, [&window, script = scripts.front()] {
            window.OpenGivenScript(script);
        });
    }
    return QApplication::exec();
}
