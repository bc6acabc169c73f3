#include "app/appsettings.h"
#include "app/autostartentry_linux.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestAutostart : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pathSurvives_data();
    void pathSurvives();
    void entryComesAndGoes();
};

void TestAutostart::pathSurvives_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("exec");
    QTest::newRow("blank") << "/opt/tide well" << QByteArray(R"(Exec="/opt/tide well")");
    QTest::newRow("field code") << "/100%f" << QByteArray(R"(Exec="/100%%f")");
    QTest::newRow("shell characters") << R"(/a"b$c`d)" << QByteArray(R"(Exec="/a\\"b\\$c\\`d")");
    QTest::newRow("backslash") << R"(/a\b)" << QByteArray(R"(Exec="/a\\\\b")");
}

void TestAutostart::pathSurvives()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, exec);
    QVERIFY(AutostartEntry::text(path).split('\n').contains(exec));
}

void TestAutostart::entryComesAndGoes()
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

QTEST_GUILESS_MAIN(TestAutostart)
#include "tst_autostart_linux.moc"
