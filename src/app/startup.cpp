#include "app/startup.h"

#include "app/crashreport.h"
#include "app/crashrestart.h"
#include "app/restarthistory.h"
#include "app/servicemanager.h"
#include "settings/appsettings.h"
#include "settings/channel.h"
#include "station/station.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QThread>
#include <QTranslator>

#include <memory>

namespace {

void installTranslator(const QLocale& locale, const QString& name, const QString& folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (translator->load(locale, name, QStringLiteral("_"), folder)) {
        QCoreApplication::installTranslator(translator.get());
        translator.release()->setParent(qApp);
    }
}

/// A service manager starts the program anew by itself.
bool restartsItself = false;

} // namespace

void StartUp::nameApplication()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Quayside"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("quayside.example"));
    QCoreApplication::setApplicationName(QStringLiteral("Tidewell"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TIDEWELL_VERSION));
}

void StartUp::loadSettings(const CommandLine& line)
{
    Channel::setName(line.profile);
    AppSettings& settings = AppSettings::instance();
    settings.load();
    const QLocale locale = settings.language.isEmpty() ? QLocale::system() : QLocale(settings.language);
    QLocale::setDefault(locale); // dates and numbers speak the language of the texts
    installTranslator(locale, QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    installTranslator(locale, QStringLiteral("tidewell"), QStringLiteral(":/i18n"));
}

void StartUp::armCrashHandlers(const CommandLine& line)
{
    CrashReport::prepare(Station::journalFolder());
    const bool& wanted = ServiceManager::restartsUs() ? restartsItself : AppSettings::instance().restartOnCrash;
    CrashRestart::install(wanted, line.restartArguments());
}

std::chrono::seconds StartUp::waitAfterCrashes(const CommandLine& line)
{
    if (!line.restarted)
        return {};
    const auto wait = RestartHistory::add(Channel::dataFolder() + QStringLiteral("/restarts.txt"),
                                          QDateTime::currentMSecsSinceEpoch());
    QThread::msleep(static_cast<unsigned long>(wait.count()));
    return std::chrono::floor<std::chrono::seconds>(wait);
}

void StartUp::mentionCrash(Station& station, std::chrono::seconds waited)
{
    if (waited.count() > 0)
        station.log(QCoreApplication::translate(
                        "StartUp", "Tidewell crashed again and again, so this start has waited for %1 seconds.")
                        .arg(waited.count()));
    if (const QString report = CrashReport::takeLast(Station::journalFolder()); !report.isEmpty())
        station.reportCrash(report);
}
