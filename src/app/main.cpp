#include "app/appsettings.h"
#include "app/crashrestart.h"
#include "app/terminationsignals.h"
#include "app/theme.h"
#include "ui/mainwindow.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QLockFile>
#include <QMessageBox>
#include <QTranslator>

#include <chrono>

using namespace std::chrono_literals;

namespace {

void nameApplication()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Quayside"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("quayside.example"));
    QCoreApplication::setApplicationName(QStringLiteral("Tidewell"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TIDEWELL_VERSION));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/branding/icon.png")));
}

void installTranslator(const QLocale& locale, const QString& name, const QString& folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (translator->load(locale, name, QStringLiteral("_"), folder)) {
        QCoreApplication::installTranslator(translator.get());
        translator.release()->setParent(qApp);
    }
}

void installTranslations(const QString& language)
{
    const QLocale locale = language.isEmpty() ? QLocale::system() : QLocale(language);
    QLocale::setDefault(locale); // dates and numbers speak the language of the texts
    installTranslator(locale, QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    installTranslator(locale, QStringLiteral("tidewell"), QStringLiteral(":/i18n"));
}

int runWindow()
{
    QApplication::setQuitOnLastWindowClosed(false);
    MainWindow window;
    const TerminationSignals signals;
    QObject::connect(&signals, &TerminationSignals::terminationRequested, &window, &MainWindow::exit);
    window.show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    nameApplication();
    AppSettings& settings = AppSettings::instance();
    settings.load();
    Theme::apply(settings.theme);
    installTranslations(settings.language);
    CrashRestart::install(settings.restartOnCrash);

    // Two instances would record the same source into the same files.
    QLockFile lock(QDir::temp().filePath(QStringLiteral("tidewell.lock")));
    lock.setStaleLockTime(0ms);
    if (!lock.tryLock(200ms)) {
        QMessageBox::information(nullptr, QCoreApplication::translate("main", "Tidewell"),
                                 QCoreApplication::translate("main", "Tidewell is already running."));
        return 0;
    }
    return runWindow();
}
