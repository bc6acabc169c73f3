#include "engine/recorder.h"
#include "net/silencealert.h"
#include "net/updatechecker.h"
#include "settings/appsettings.h"
#include "station/diskspace.h"
#include "station/recordingpause.h"
#include "station/station.h"
#include "support/table.h"
#include "ui/capturediagnostics.h"
#include "ui/closedialog.h"
#include "ui/loglist.h"
#include "ui/mainwindow.h"
#include "ui/pausebutton.h"
#include "ui/statustexts.h"
#include "ui/updatedialog.h"
#include "ui/vfdpanel.h"

#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTimer>

namespace {

int linesWith(const LogList& log, const QString& text)
{
    return int(log.findItems(text, Qt::MatchContains).size());
}

} // namespace

class TestMainWindow : public QObject {
    Q_OBJECT

    using OfferRows = Table<bool, bool, bool>; // silent, critical, shown
    using CloseRows = Table<QString, int>; // button, choice

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("Quayside"));
        QCoreApplication::setApplicationName(QStringLiteral("tst_mainwindow"));
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder.filePath(QStringLiteral("store")));
    }

    void init()
    {
        AppSettings& settings = AppSettings::instance();
        settings.outputFolder = m_folder.path();
        settings.autoMode = false;
        settings.checkAtStartup = false;
    }

    void keepsTheLogShort()
    {
        LogList log;
        for (int i = 1; i <= LogList::MaxLines + 1; ++i)
            log.append(QString::number(i));
        QCOMPARE(log.count(), 500);
        QVERIFY(log.item(0)->text().endsWith(QStringLiteral("] 2")));
    }

    void showsEarlierLinesToWhoScrollsUp()
    {
        LogList log;
        log.resize(300, 100);
        log.show();
        QSignalSpy wanted(&log, &LogList::earlierWanted);
        for (int i = 0; i < 20; ++i)
            log.append(QString::number(i));
        QCOMPARE(wanted.size(), 0); // nobody has scrolled
        QTest::keyClick(&log, Qt::Key_Home);
        QCOMPARE(wanted.size(), 1);
        QTest::keyClick(&log, Qt::Key_Home);
        QCOMPARE(wanted.size(), 1); // asked already
        JournalEntry line;
        line.utcMs = wanted.first().first().toLongLong() - 1000;
        line.text = QStringLiteral("earlier");
        line.event = QLatin1String(JournalEntry::Error);
        log.prepend({line});
        QCOMPARE(log.count(), 21);
        QVERIFY(log.item(0)->text().endsWith(QStringLiteral("] earlier")));
        QCOMPARE(log.item(0)->foreground().color(), QColor(180, 0, 0));
        QTest::keyClick(&log, Qt::Key_Home);
        QCOMPARE(wanted.size(), 2);
        QCOMPARE(wanted.last().first().toLongLong(), line.utcMs);

        log.prepend(QList<JournalEntry>(600, line));
        QCOMPARE(log.count(), 500); // the newest make room
        log.append(QStringLiteral("new"));
        QCOMPARE(log.count(), 500);
        QVERIFY(log.item(498)->text().endsWith(QStringLiteral("] 19")));
        QVERIFY(log.item(499)->text().endsWith(QStringLiteral("] new")));
    }

    void saysAnOverloadOnceAMinute()
    {
        MainWindow window;
        auto* recorder = window.findChild<Recorder*>();
        for (int i = 0; i < 3; ++i)
            Q_EMIT recorder->overloadDetected();
        QCOMPARE(linesWith(*window.findChild<LogList*>(), QStringLiteral("above full scale")), 1);
    }

    void mailsAtMostEveryQuarterOfAnHour()
    {
        AppSettings& settings = AppSettings::instance();
        settings.silenceNotify = true;
        settings.smtpHost = QStringLiteral("127.0.0.1");
        QTcpServer nobodyAnswers;
        QVERIFY(nobodyAnswers.listen(QHostAddress::LocalHost));
        settings.smtpPort = nobodyAnswers.serverPort();
        settings.smtpTls = false;
        nobodyAnswers.close();

        QDateTime now = QDateTime::currentDateTime();
        SilenceAlert alert(nullptr, [&now] { return now; });
        QSignalSpy outcomes(&alert, &SilenceAlert::logMessage);
        alert.send({10, {}, {}}); // no recipient: neither sent nor counted
        settings.alertEmail = QStringLiteral("operator@station.example");
        for (const int minutes : {0, 14, 1, 14, 1}) {
            now = now.addSecs(60 * minutes);
            alert.send({10, {}, {}});
        }
        QTRY_COMPARE(outcomes.size(), 3);
        QVERIFY(outcomes.first().first().toString().startsWith(QStringLiteral("Silence notification failed: ")));
        QTest::qWait(50);
        QCOMPARE(outcomes.size(), 3);
    }

    void asksForUpdatesOnceADay()
    {
        const QDateTime now = QDateTime::currentDateTime();
        QVERIFY(UpdateChecker::isDue({}, now));
        QVERIFY(!UpdateChecker::isDue(now.addSecs(-19 * 3600), now));
        QVERIFY(UpdateChecker::isDue(now.addSecs(-21 * 3600), now));
    }

    void offersAnUpdate_data()
    {
        const OfferRows row;
        row("skipped, silent", true, false, false);
        row("skipped, but asked for", false, false, true);
        row("skipped, but critical", true, true, true);
    }
    void offersAnUpdate()
    {
        const auto [silent, critical, shown] = OfferRows::fetch();
        AppSettings::instance().skippedVersion = QStringLiteral("2.0");
        UpdateInfo info;
        info.latestVersion = QStringLiteral("2.0");
        info.critical = critical;

        MainWindow window;
        Q_EMIT window.findChild<UpdateChecker*>()->updateAvailable(info, silent);
        QCOMPARE(linesWith(*window.findChild<LogList*>(), QStringLiteral("Update available: version 2.0")), 1);
        const auto* dialog = window.findChild<UpdateDialog*>();
        QCOMPARE(dialog != nullptr, shown);
        if (!dialog)
            return;
        QStringList buttons;
        for (const QPushButton* button : dialog->findChildren<QPushButton*>())
            buttons << button->text();
        QCOMPARE(buttons.contains(QStringLiteral("&Skip This Version")), !critical);
    }

    void showsWhatTheServerSentAsText()
    {
        UpdateInfo info;
        info.latestVersion = QStringLiteral("<img src=x>");
        info.notesUrl = QStringLiteral("javascript:alert(1)");
        info.downloadUrl = QStringLiteral("file:///etc/passwd");
        const UpdateDialog dialog(info);
        for (const QLabel* label : dialog.findChildren<QLabel*>()) {
            QVERIFY(!label->text().contains(QStringLiteral("<img")));
            QVERIFY(!label->text().contains(QStringLiteral("href")));
        }
        for (const QPushButton* button : dialog.findChildren<QPushButton*>())
            QCOMPARE(button->isEnabled(), button->text() != QStringLiteral("&Download..."));
    }

    void decidesWhatClosingMeans()
    {
        const auto always = std::optional(CloseDialog::Exit);
        QCOMPARE(CloseDialog::choiceFromSetting(0, true), std::nullopt);
        QCOMPARE(CloseDialog::choiceFromSetting(1, true), std::optional(CloseDialog::Minimise));
        QCOMPARE(CloseDialog::choiceFromSetting(2, true), always);
        QCOMPARE(CloseDialog::choiceFromSetting(0, false), std::nullopt);
        QCOMPARE(CloseDialog::choiceFromSetting(1, false), always); // there is nothing to minimise to
        QCOMPARE(CloseDialog::choiceFromSetting(7, true), std::nullopt);
    }

    /// Where there is a notification area.
    void asksHowToClose_data()
    {
        const CloseRows row;
        row("minimise", QStringLiteral("&Minimise to Tray"), CloseDialog::Minimise);
        row("exit", QStringLiteral("E&xit"), CloseDialog::Exit);
        row("cancel", QStringLiteral("&Cancel"), CloseDialog::Cancel);
    }
    void asksHowToClose()
    {
        const auto [caption, choice] = CloseRows::fetch();
        for (const bool ticked : {false, true}) {
            CloseDialog dialog(true, false);
            dialog.show();
            dialog.findChild<QCheckBox*>()->setChecked(ticked);
            for (auto* button : dialog.findChildren<QPushButton*>()) {
                if (button->text() == caption)
                    QTest::mouseClick(button, Qt::LeftButton);
            }
            QVERIFY(!dialog.isVisible());
            QCOMPARE(int(dialog.choice()), choice);
            AppSettings& settings = AppSettings::instance();
            settings.closeAction = 7;
            QCOMPARE(dialog.rememberIn(settings).isEmpty(), !ticked || choice == CloseDialog::Cancel);
            QCOMPARE(settings.closeAction, ticked && choice != CloseDialog::Cancel ? choice : 7);
        }
    }

    void leavesWithoutAQuestionWhenTheSessionEnds()
    {
        AppSettings::instance().closeAction = 0;
        MainWindow window;
        window.show();
        QTimer::singleShot(0, &window, [] { QCoreApplication::quit(); });
        QTimer::singleShot(5000, &window, [] { QCoreApplication::exit(1); });
        QCOMPARE(QCoreApplication::exec(), 0);
        QVERIFY(!QApplication::activeModalWidget());
    }

    void keepsTheAutomaticMode()
    {
        AppSettings& settings = AppSettings::instance();
        settings.schedule.setAll(false);
        MainWindow window;
        auto* box = window.findChild<QCheckBox*>();
        QVERIFY(!box->isChecked());
        box->click();
        QVERIFY(settings.autoMode);
        const auto& log = *window.findChild<LogList*>();
        QCOMPARE(linesWith(log, QStringLiteral("Scheduler enabled")), 1);
        box->click();
        QVERIFY(!settings.autoMode);
        QCOMPARE(linesWith(log, QStringLiteral("Scheduler disabled")), 1);
    }

    void pausesFromItsMenu()
    {
        MainWindow window;
        auto* button = window.findChild<PauseButton*>();
        const QList<QAction*> actions = button->menu()->actions();
        QVERIFY(!actions.last()->isEnabled());
        actions.first()->trigger();
        const RecordingPause* pause = window.station()->pause();
        QVERIFY(pause->isActive());
        QVERIFY(window.findChild<VfdPanel*>()->accessibleDescription().endsWith(pause->text()));
        actions.last()->trigger(); // go on
        QVERIFY(!pause->isActive());
        QVERIFY(!window.findChild<VfdPanel*>()->accessibleDescription().contains(QStringLiteral("Paused")));
    }

    void tellsATriggerThatFailedFromNone()
    {
        AppSettings& settings = AppSettings::instance();
        settings.triggerKind = int(TriggerKind::SerialText);
        settings.serialPort = QStringLiteral("no-such-port");
        MainWindow window;
        settings.triggerKind = int(TriggerKind::None);
        const auto find = [&](const QString& start) {
            for (auto* label : window.findChildren<QLabel*>()) {
                if (label->text().startsWith(start))
                    return label;
            }
            return static_cast<QLabel*>(nullptr);
        };
        const QLabel* label = find(QStringLiteral("Trigger: "));
        QCOMPARE(label->text(), QStringLiteral("Trigger: off"));
        QVERIFY(!label->toolTip().isEmpty());
        QCOMPARE(window.station()->status().trigger, QStringLiteral("off"));
        QVERIFY(!window.station()->status().lastError.isEmpty());
        window.station()->applySettings(false);
        QCOMPARE(label->text(), QStringLiteral("Trigger: none"));
        QVERIFY(label->toolTip().isEmpty());
    }

    void describesSourceCodecAndDisk()
    {
        AppSettings& settings = AppSettings::instance();
        settings.backend = 0;
        QCOMPARE(StatusTexts::source(settings, {}), QStringLiteral("LOOP · default playback device"));
        settings.backend = 2;
        QCOMPARE(StatusTexts::source(settings, {}), QStringLiteral("NET · no stream URL"));
        settings.codec = 4;
        settings.bitrate = 128;
        settings.channels = 2;
        QCOMPARE(StatusTexts::codec(settings), QStringLiteral("m4a 128K STEREO"));
        settings.codec = 3;
        settings.channels = 1;
        QCOMPARE(StatusTexts::codec(settings), QStringLiteral("flac MONO"));
        QCOMPARE(StatusTexts::diskLeft(-1, 8000), QStringLiteral("unknown"));
        QCOMPARE(StatusTexts::diskLeft(25 * 3600 + 3599, 0), QStringLiteral("1d 1h"));
        const QString missing = m_folder.filePath(QStringLiteral("new/folder"));
        QVERIFY(DiskSpace::query(missing) > 0);
        QVERIFY(QFileInfo(missing).isDir());
    }

    void reportsOneMeasurement()
    {
        CaptureDiagnostics::Measurement measured;
        measured.source = QStringLiteral("Line In");
        measured.sampleRate = 44100;
        measured.channels = 2;
        measured.elapsedMs = 10'000;
        QVERIFY(CaptureDiagnostics::report(measured).contains(QStringLiteral("Level range: no updates received")));
        measured.bytes = 1'764'000;
        for (const qint64 ms : {0, 20, 90})
            measured.buffers.add(ms);
        measured.meters.add(5);
        measured.lowestDb = -60.0;
        measured.highestDb = -3.26;
        const QStringList expected{
            QStringLiteral("--- Capture diagnostics ---"),
            QStringLiteral("Source: Line In"),
            QStringLiteral("Format: 44100 Hz, 2 channel(s)"),
            QStringLiteral("Audio buffers: 3 in 10.0 s (avg 588000.0 bytes = 3333.3 ms), largest gap 70 ms"),
            QStringLiteral("Audio received: 100.0 %% of real time"),
            QStringLiteral("Meter updates: 1 (0.1 per second), largest gap -1 ms"),
            QStringLiteral("Level range: -60.0 to -3.3 dBFS"),
            QStringLiteral("--- end ---")};
        QCOMPARE(CaptureDiagnostics::report(measured), expected);
    }

private:
    QTemporaryDir m_folder;
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
