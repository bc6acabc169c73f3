#include "archive/archiveindex.h"
#include "engine/recorder.h"
#include "settings/appsettings.h"
#include "settings/codectable.h"
#include "station/station.h"
#include "support/pulserig_linux.h"
#include "support/table.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <sys/mount.h>

using namespace std::chrono_literals;

namespace {

enum class Fault { ServerKilled, ServerFrozen, ServerLate };

/// A station and all that it says.
struct Watched {
    Watched()
    {
        QObject::connect(&station, &Station::errorLogged, &station, [this](const QString& text) {
            if (said.isEmpty())
                saidAfterMs = int(sinceFault.elapsed());
            said << text;
        });
        QObject::connect(&station, &Station::errorAmended, &station, [this] { ++amended; });
    }
    bool hears(int withinMs = 5000) const
    {
        return QTest::qWaitFor(
            [this] {
                const double seconds = station.status().secondsSinceAudio;
                return seconds >= 0.0 && seconds < 0.5;
            },
            withinMs);
    }
    Station station;
    QStringList said;
    int amended = 0;
    int saidAfterMs = -1;
    QElapsedTimer sinceFault;
};

} // namespace

/// What ends a recording, or its sound, and goes away again: nobody has to do anything.
class TestComesBack : public QObject {
    Q_OBJECT

    using OutageRows =
        Table<CaptureBackend, bool, Fault, int>; // source, automatic mode, what happens, for how long (s)

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("Quayside");
        QCoreApplication::setApplicationName("tst_comesback");
        QStandardPaths::setTestModeEnabled(true);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_store.path());
        m_settings.checkAtStartup = false;
        m_settings.codec = Mp3;
    }

    void outage_data()
    {
        using enum CaptureBackend;
        const OutageRows row;
        row("input, by hand, server killed for 1 s", InputDevice, false, Fault::ServerKilled, 1);
        row("input, by hand, server killed for 8 s", InputDevice, false, Fault::ServerKilled, 8);
        row("loopback, automatic, server killed for 8 s", Loopback, true, Fault::ServerKilled, 8);
        row("input, automatic, server frozen for 8 s", InputDevice, true, Fault::ServerFrozen, 8);
        row("loopback, by hand, server frozen for 8 s", Loopback, false, Fault::ServerFrozen, 8);
        row("input, automatic, server 6 s late", InputDevice, true, Fault::ServerLate, 6);
    }
    void outage()
    {
        const auto [backend, automatic, fault, seconds] = OutageRows::fetch();
        QTemporaryDir folder;
        PulseRig server;
        qputenv("PULSE_SERVER", "unix:/nowhere");
        QVERIFY(fault == Fault::ServerLate || server.start());
        m_settings.outputFolder = folder.path();
        m_settings.backend = int(backend);
        m_settings.deviceId = "line_in";
        m_settings.autoMode = automatic;
        Watched watched;
        watched.sinceFault.start();
        watched.station.begin();
        if (!automatic)
            watched.station.startRecording();
        QVERIFY(fault == Fault::ServerLate || watched.hears());
        watched.sinceFault.start();
        if (fault == Fault::ServerKilled)
            server.kill();
        else if (fault == Fault::ServerFrozen)
            server.freeze(true);
        QTest::qWait(1000 * seconds); // the outage
        const QString during = watched.station.state().wordText();
        fault == Fault::ServerFrozen ? server.freeze(false) : (void)server.start();
        QElapsedTimer back;
        back.start();
        QVERIFY2(watched.hears(10'000), qPrintable(watched.said.join(" | ")));
        qInfo("said after %.1f s, %s; audio %.1f s after the server", watched.saidAfterMs / 1000.0, qPrintable(during),
              double(back.elapsed()) / 1000.0);
        QVERIFY(watched.saidAfterMs >= 0 && watched.saidAfterMs < 4500);
        QVERIFY2(watched.said.size() <= 2, qPrintable(watched.said.join(" | ")));
        QVERIFY2(fault == Fault::ServerFrozen ? during == "NO AUDIO" : during == "TRYING AGAIN" || seconds == 1,
                 qPrintable(during));
        QTRY_VERIFY_WITH_TIMEOUT(!watched.station.state().tryingAgain, 5000);
        watched.station.stopRecording();
        // No header alone is left.
        QCOMPARE(QDir(folder.path()).entryList({"*.mp3"}).size(), watched.station.archive()->records().size());
    }

    /// It goes on as soon as there is room again, and a hundred attempts leave neither lines nor files.
    void diskFull()
    {
        QTemporaryDir folder;
        const QByteArray path = folder.path().toUtf8();
        if (mount("tmpfs", path, "tmpfs", 0, "size=1m") != 0)
            QSKIP("This machine does not allow mounting a file system.");
        {
            PulseRig server;
            QVERIFY(server.start());
            m_settings.outputFolder = folder.path();
            m_settings.backend = int(CaptureBackend::Loopback);
            m_settings.autoMode = false;
            m_settings.codec = Wav;
            QFile ballast(folder.filePath("ballast"));
            QVERIFY(ballast.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            Watched watched;
            watched.station.begin();
            watched.station.startRecording();
            QVERIFY(watched.hears());
            while (ballast.write(QByteArray(4096, 'x')) == 4096) {}
            QTRY_COMPARE_WITH_TIMEOUT(watched.station.state().wordText(), QString("TRYING AGAIN"), 5000);
            QVERIFY(watched.station.state().cannotWrite);
            QTest::qWait(12'000); // the outage
            QVERIFY2(watched.said.size() <= 3, qPrintable(watched.said.join(" | ")));
            const qsizetype files = QDir(folder.path()).entryList({"*.wav"}).size();
            QVERIFY2(files <= 2, qPrintable(QString::number(files)));
            QVERIFY(ballast.remove());
            const bool back = QTest::qWaitFor([&] { return watched.station.state().wordText() == "DISK"; }, 15'000);
            QVERIFY2(back, qPrintable(watched.said.join(" | "))); // it is a small one
        }
        umount2(path, MNT_DETACH);
    }

    void stopEndsTheAttempts()
    {
        QTemporaryDir folder;
        PulseRig server;
        QVERIFY(server.start());
        m_settings.outputFolder = folder.path();
        m_settings.backend = int(CaptureBackend::Loopback);
        m_settings.autoMode = false;
        Watched watched;
        watched.station.begin();
        watched.station.startRecording();
        QVERIFY(watched.hears());
        server.kill();
        QTRY_VERIFY(watched.station.state().tryingAgain);
        watched.station.stopRecording();
        QVERIFY(!watched.station.state().tryingAgain);
        QVERIFY(server.start());
        QVERIFY(!watched.hears(7000));
    }

private:
    QTemporaryDir m_store;
    AppSettings& m_settings = AppSettings::instance();
};

QTEST_GUILESS_MAIN(TestComesBack)
#include "tst_comesback_linux.moc"
