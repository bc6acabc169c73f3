#include "app/startup.h"

#include "app/crashreport.h"
#include "app/crashrestart.h"
#include "app/servicemanager.h"
#include "settings/appsettings.h"
#include "settings/channel.h"
#include "station/station.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <chrono>
#include <memory>

using namespace std::chrono_literals;

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

void StartUp::mentionCrash(Station& station)
{
    if (const QString report = CrashReport::takeLast(Station::journalFolder()); !report.isEmpty())
        station.reportCrash(report);
}

StartUp::InstanceLock::InstanceLock() : m_lock(QDir::temp().filePath(Channel::fileName() + QStringLiteral(".lock")))
{
    m_lock.setStaleLockTime(0ms);
}

bool StartUp::InstanceLock::take()
{
    return m_lock.tryLock(200ms);
}
