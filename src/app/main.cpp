#include "app/clientcommands.h"
#include "app/commandline.h"
#include "app/consoletwin.h"
#include "app/instancelock.h"
#include "app/servicemanager.h"
#include "app/startup.h"
#include "app/terminationsignals.h"
#include "settings/appsettings.h"
#include "settings/channel.h"
#include "station/controlserver.h"
#include "station/station.h"
#include "ui/mainwindow.h"
#include "ui/theme.h"

#include <QApplication>
#include <QIcon>
#include <QMessageBox>

#include <cstdio>

namespace {

using Action = CommandLine::Action;

QString alreadyRunning()
{
    return Channel::named(QCoreApplication::translate("main", "Tidewell is already running."));
}

/// Ready for other processes' commands. Without it the program records all the same.
void listen(ControlServer& control, Station& station)
{
    if (!control.listen())
        station.logError(QCoreApplication::translate("main", "Commands from the command line will not arrive: %1")
                             .arg(control.errorString()));
}

void mentionLock(const InstanceLock& lock, Station& station)
{
    if (!lock.problem().isEmpty())
        station.log(lock.problem());
}

int runWindow(const CommandLine& line)
{
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/branding/icon.png")));
    Theme::apply(AppSettings::instance().theme);
    StartUp::armCrashHandlers(line);
    const auto waited = StartUp::waitAfterCrashes(line);
    InstanceLock lock;
    if (!lock.take()) {
        QMessageBox::information(nullptr, QCoreApplication::translate("main", "Tidewell"), alreadyRunning());
        return 0;
    }
    QApplication::setQuitOnLastWindowClosed(false);
    MainWindow window;
    StartUp::mentionCrash(*window.station(), waited);
    mentionLock(lock, *window.station());
    ControlServer control(*window.station());
    QObject::connect(&control, &ControlServer::showRequested, &window, &MainWindow::bringToFront);
    listen(control, *window.station());
    const TerminationSignals signals;
    QObject::connect(&signals, &TerminationSignals::terminationRequested, &window, &MainWindow::exit);
    QObject::connect(&signals, &TerminationSignals::hangUp, &window, &MainWindow::exit); // the terminal has gone
    window.show();
    return QApplication::exec();
}

int runHeadless(const CommandLine& line)
{
    StartUp::armCrashHandlers(line);
    const auto waited = StartUp::waitAfterCrashes(line);
    InstanceLock lock;
    if (!lock.take()) {
        std::fprintf(stderr, "%s\n", qPrintable(alreadyRunning()));
        return ClientCommands::Failed;
    }
    Station station;
    ControlServer control(station);
    const TerminationSignals signals;
    ServiceManager::Reporter manager;
    QObject::connect(&signals, &TerminationSignals::terminationRequested, &station, &Station::exit);
    QObject::connect(&signals, &TerminationSignals::hangUp, &station, &Station::reloadSettings);
    QObject::connect(&station, &Station::exitRequested, &manager, &ServiceManager::Reporter::stopping);
    QObject::connect(&station, &Station::exitRequested, &station, [] { QCoreApplication::exit(); });
    listen(control, station);
    station.begin();
    StartUp::mentionCrash(station, waited);
    mentionLock(lock, station);
    manager.ready();
    const int status = QCoreApplication::exec();
    AppSettings::instance().saveSerial(); // a window saves all when it goes
    return status;
}

} // namespace

int main(int argc, char* argv[])
{
    QStringList raw;
    for (int i = 0; i < argc; ++i)
        raw << QString::fromLocal8Bit(argv[i]);
    const bool needsNoDisplay = CommandLine::needsNoDisplay(raw);
    if (!needsNoDisplay) {
        if (const auto status = ConsoleTwin::handWindowOver())
            return *status;
    }
    const auto app =
        needsNoDisplay ? std::make_unique<QCoreApplication>(argc, argv) : std::make_unique<QApplication>(argc, argv);
    StartUp::nameApplication();
    const auto parsed = CommandLine::parse(QCoreApplication::arguments());
    if (const auto* wrong = std::get_if<QString>(&parsed)) {
        std::fprintf(stderr, "%s\n", qPrintable(*wrong));
        return ClientCommands::WrongUsage;
    }
    const auto& line = std::get<CommandLine>(parsed);
    StartUp::loadSettings(line);
    switch (line.action) {
    case Action::Window:
        return runWindow(line);
    case Action::Headless:
        return runHeadless(line);
    default:
        return ClientCommands::run(line);
    }
}
