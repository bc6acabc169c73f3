#include "capture/capturefactory.h"
#include "capture/loopback.h"
#include "settings/appsettings.h"
#include "triggers/miditrigger.h"

#include <QDir>
#include <QSettings>
#include <QTest>

/// What only Windows has, in its real registry and with its real device lists.
class TestPlatform : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void runKeyComesAndGoes()
    {
        QCoreApplication::setApplicationName("Tidewell");
        const QSettings run("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run",
                            QSettings::NativeFormat);
        AppSettings::setStartWithSystem(true);
        QCOMPARE(run.value("Tidewell").toString(),
                 '"' + QDir::toNativeSeparators(QCoreApplication::applicationFilePath()) + '"');
        AppSettings::setStartWithSystem(false);
        QVERIFY(!run.contains("Tidewell"));
    }

    void settingsAreInTheRegistry()
    {
        QCoreApplication::setOrganizationName("Quayside");
        QCoreApplication::setApplicationName("tst_platform");
        AppSettings::instance().alertSubject = "Zoë";
        AppSettings::instance().save();
        QSettings store("HKEY_CURRENT_USER\\Software\\Quayside\\tst_platform", QSettings::NativeFormat);
        QCOMPARE(store.value("alerts/subject").toString(), "Zoë");
        QVERIFY(store.childGroups().contains("general"));
        store.clear();
    }

    /// One sound server, which scripts/build-windows brings up, three lists; and MIDI, of which a machine may have
    /// none.
    void devicesAreListed()
    {
        QStringList outputs;
        for (const PlaybackDevice& device : playbackDevices())
            outputs << device.name;
        QVERIFY2(outputs.contains("Program") && outputs.contains("Program2"), qPrintable(outputs.join(u',')));
        QStringList inputs;
        for (const QAudioDevice& device : inputDevices())
            inputs << device.description();
        QVERIFY2(inputs.contains("LineIn"), qPrintable(inputs.join(u',')));
        for (const QString& name : MidiTrigger::devices())
            QVERIFY(!name.isEmpty());
    }
};

QTEST_MAIN(TestPlatform)
#include "tst_platform_win.moc"
