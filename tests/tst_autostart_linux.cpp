#include "settings/appsettings.h"
#include "settings/autostartentry_linux.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <utility>

namespace {

/// Paths, and what the entry makes of them.
constexpr std::pair<const char*, const char*> Paths[] = {
    {"/opt/tide well", R"(Exec="/opt/tide well")"},
    {"/100%f", R"(Exec="/100%%f")"},
    {R"(/a"b$c`d)", R"(Exec="/a\\"b\\$c\\`d")"},
    {R"(/a\b)", R"(Exec="/a\\\\b")"},
};

} // namespace

class TestAutostart : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pathSurvives()
    {
        for (const auto& [path, line] : Paths)
            QVERIFY2(AutostartEntry::text(path).split('\n').contains(line), path);
    }

    void entryComesAndGoes()
    {
        QTemporaryDir config;
        qputenv("XDG_CONFIG_HOME", config.path().toUtf8());
        const QString path = config.filePath("autostart/tidewell.desktop");
        AppSettings::setStartWithSystem(true);
        QFile entry(path);
        QVERIFY(entry.open(QIODevice::ReadOnly));
        QVERIFY(entry.readAll().contains("Exec=\"" + QCoreApplication::applicationFilePath().toUtf8() + '"'));
        AppSettings::setStartWithSystem(false);
        AppSettings::setStartWithSystem(false);
        QVERIFY(!QFile::exists(path));
    }
};

QTEST_GUILESS_MAIN(TestAutostart)
#include "tst_autostart_linux.moc"
