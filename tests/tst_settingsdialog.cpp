#include "process/ffmpeg.h"
#include "settings/appsettings.h"
#include "settings/schedule.h"
#include "station/recordingroom.h"
#include "support/table.h"
#include "ui/retentiontext.h"
#include "ui/settingsdialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

/// The controls in the order of their creation, without the parts that other controls are made of.
template <class Control>
QList<Control*> controls(const SettingsDialog& dialog)
{
    QList<Control*> list = dialog.findChildren<Control*>();
    list.removeIf([](const Control* control) { return control->objectName().startsWith(QLatin1String("qt_")); });
    return list;
}

QVariantList shown(const SettingsDialog& dialog)
{
    QVariantList values;
    for (const auto* box : controls<QCheckBox>(dialog))
        values << box->isChecked();
    for (const auto* box : controls<QSpinBox>(dialog))
        values << box->value();
    for (const auto* box : controls<QDoubleSpinBox>(dialog))
        values << box->value();
    for (const auto* box : controls<QComboBox>(dialog))
        values << box->currentText();
    for (const auto* edit : controls<QLineEdit>(dialog))
        values << edit->text();
    for (const auto* group : controls<QGroupBox>(dialog))
        values << (group->isCheckable() && group->isChecked());
    return values;
}

void changeEverything(const SettingsDialog& dialog)
{
    for (auto* box : controls<QComboBox>(dialog))
        box->setCurrentIndex((box->currentIndex() + 1) % std::max(box->count(), 1));
    for (auto* box : controls<QCheckBox>(dialog))
        box->toggle();
    for (auto* box : controls<QSpinBox>(dialog))
        box->setValue(box->value() == box->maximum() ? box->minimum() : box->value() + 1);
    for (auto* box : controls<QDoubleSpinBox>(dialog))
        box->setValue(box->value() + 0.5);
    for (auto* edit : controls<QLineEdit>(dialog))
        edit->setText(edit->text() + QStringLiteral("x"));
    for (auto* group : controls<QGroupBox>(dialog))
        group->setChecked(!group->isChecked());
}

QComboBox* boxWith(const SettingsDialog& dialog, const QString& item)
{
    for (auto* box : controls<QComboBox>(dialog)) {
        if (box->findText(item) >= 0)
            return box;
    }
    return nullptr;
}

} // namespace

class TestSettingsDialog : public QObject {
    Q_OBJECT

    using RetentionRows = Table<RetentionText::Question, QString, bool>;

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("Quayside"));
        QCoreApplication::setApplicationName(QStringLiteral("tst_settingsdialog"));
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder.path());
        qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8()); // where starting with the system is arranged
        qputenv("PULSE_RUNTIME_PATH", m_folder.path().toUtf8()); // else it leaves a folder behind
        QVERIFY(QDir().mkpath(m_folder.path()));
        m_settings.outputFolder = m_folder.filePath(QStringLiteral("recordings"));
        m_settings.copyFolder = m_folder.filePath(QStringLiteral("copies"));
        m_settings.deviceId = "gone";
        m_settings.deviceLabel = QStringLiteral("Studio <A>");
        m_settings.playbackId = "also gone";
        m_settings.midiDevice = 3;
        m_settings.midiDeviceName = QStringLiteral("Desk");
        m_settings.backend = 1;
    }

    void keepsWhatIsNotThere()
    {
        SettingsDialog dialog(m_settings);
        const QVariantList before = shown(dialog);
        QVERIFY(before.contains(QStringLiteral("Studio <A>")));
        QVERIFY(before.contains(QStringLiteral("Desk")));
        dialog.accept();
        QCOMPARE(m_settings.deviceId, "gone");
        QCOMPARE(m_settings.playbackId, "also gone");
        QCOMPARE(m_settings.midiDevice, 3);
        QCOMPARE(m_settings.midiDeviceName, QStringLiteral("Desk"));
        QCOMPARE(shown(SettingsDialog(m_settings)), before);
    }

    void writesEveryControlOrNone()
    {
        const auto rejected = std::make_unique<SettingsDialog>(m_settings);
        const QVariantList before = shown(*rejected);
        changeEverything(*rejected);
        rejected->reject();
        m_settings.load();
        QCOMPARE(shown(SettingsDialog(m_settings)), before);

        SettingsDialog accepted(m_settings);
        changeEverything(accepted);
        const QVariantList changed = shown(accepted);
        accepted.accept();
        m_settings.load();
        const QVariantList reloaded = shown(SettingsDialog(m_settings));
        QCOMPARE(reloaded.size(), changed.size());
        for (int i = 0; i < changed.size(); ++i)
            QVERIFY2(reloaded.at(i) == changed.at(i), qPrintable(changed.at(i).toString()));
        AppSettings::setStartWithSystem(false);
    }

    void channelsOfTheDevice_data()
    {
        const Table<int, int, QString> row;
        row("everything", 0, 2, "as the device delivers");
        row("a pair", 15, 2, "15 + 16");
        row("a single channel", 8, 1, "8 only");
        row("a pair that is not offered", 2, 2, "2 + 3");
        row("a number that makes no sense", 65, 3, "as the device delivers");
    }
    void channelsOfTheDevice()
    {
        const auto [first, count, text] = Table<int, int, QString>::fetch();
        m_settings.firstChannel = first;
        m_settings.channelCount = count;
        SettingsDialog dialog(m_settings);
        auto* box = boxWith(dialog, QStringLiteral("63 + 64"));
        QCOMPARE(box->currentText(), text);
        dialog.accept();
        QCOMPARE(m_settings.firstChannel, first);
        QCOMPARE(m_settings.channelCount, count);
        box->setCurrentText(QStringLiteral("9 only"));
        dialog.accept();
        QCOMPARE(m_settings.firstChannel, 9);
        QCOMPARE(m_settings.channelCount, 1);
        box->setCurrentText(QStringLiteral("as the device delivers"));
        dialog.accept();
        QCOMPARE(m_settings.firstChannel, 0);
        QCOMPARE(m_settings.channelCount, 2);
    }

    void enablesWhatTheChoiceNeeds()
    {
        SettingsDialog dialog(m_settings);
        auto* codec = boxWith(dialog, QStringLiteral("FLAC"));
        auto* bitrate = boxWith(dialog, QStringLiteral("320 kbps"));
        codec->setCurrentIndex(codec->findText(QStringLiteral("AAC")));
        QVERIFY(bitrate->isEnabled());
        codec->setCurrentIndex(codec->findText(QStringLiteral("WAV (uncompressed)")));
        QVERIFY(!bitrate->isEnabled());
        QVERIFY(codec->toolTip().isEmpty());
        codec->setCurrentIndex(codec->findText(QStringLiteral("FLAC")));
        QCOMPARE(codec->toolTip().isEmpty(), ffmpegAvailable());
        auto* trigger = boxWith(dialog, QStringLiteral("Serial text command"));
        trigger->setCurrentIndex(3);
        QVERIFY(!boxWith(dialog, QStringLiteral("CTS"))->isEnabled());
        QVERIFY(boxWith(dialog, QStringLiteral("Desk"))->isEnabled());
        auto* source = boxWith(dialog, QStringLiteral("Input device"));
        const auto* deviceChannels = boxWith(dialog, QStringLiteral("63 + 64"));
        for (const auto& [kind, enabled] : {std::pair("Playback device (loopback)", false),
                                            {"Input device", true},
                                            {"Internet stream (URL)", false}}) {
            source->setCurrentIndex(source->findText(kind));
            QCOMPARE(deviceChannels->isEnabled(), enabled);
        }
        auto* preview = dialog.findChild<QLabel*>(QStringLiteral("preview"));
        for (auto* edit : controls<QLineEdit>(dialog)) {
            if (edit->text().startsWith(QStringLiteral("%y")))
                edit->setText(QStringLiteral("%sn-x"));
        }
        QVERIFY2(preview->text().endsWith(QStringLiteral("-x.flac")), qPrintable(preview->text()));
    }

    void retention_data()
    {
        const auto question = [](qint64 rate, qint64 freeBytes) {
            RetentionText::Question made;
            made.bytesPerDay = RetentionText::bytesPerDay(rate, false, {});
            made.freeBytes = freeBytes;
            return made;
        };
        const RetentionRows row;
        auto asked = question(16'000, 74'000'000'000);
        row("does not fit", asked, "365 days need 505 GB; 74 GB are free: enough for 53 days.", false);
        asked.deleteWhenFull = true;
        row("the oldest go, and 42 days fit", asked, "365 days need 505 GB; 74 GB are free: enough for 53 days.", true);
        asked.keepDays = 60;
        row("60 do not", asked, "365 days need 505 GB; 74 GB are free: enough for 53 days.", false);
        asked.deleteOld = false;
        asked.keepDays = 50;
        row("only when full", asked, "50 days need 69 GB; 74 GB are free: enough for 53 days.", true);
        asked.deleteWhenFull = false;
        row("never", asked, "Nothing is ever deleted; 74 GB are free: enough for 53 days.", false);
        asked = question(192'000, 4'000'000'000);
        asked.recordingsBytes = 1'700'000'000'000;
        asked.days = 100;
        row("a disk that is full of recordings", asked,
            "100 days need 1.7 TB; 4.0 GB are free, 1.7 TB hold recordings: enough for 102 days.", true);
        asked.freeBytes = -1;
        row("unknown", asked, "100 days need 1.7 TB; how much is free is not known.", true);
        asked = question(16'000, 1'382'400'000);
        asked.days = 1;
        row("just so", asked, "1 day needs 1.4 GB; 1.4 GB are free: enough for 1 day.", true);
        --asked.freeBytes;
        row("a byte less", asked, "1 day needs 1.4 GB; 1.4 GB are free: enough for 0 days.", false);
        asked = question(0, 500);
        asked.days = 365;
        row("no format", asked, "365 days need 365 bytes; 500 bytes are free: enough for 500 days.", true);
    }
    void retention()
    {
        const auto [question, text, fits] = RetentionRows::fetch();
        QLocale::setDefault(QLocale::c());
        const RetentionText::Answer answer = RetentionText::answer(question);
        QCOMPARE(answer.text, text);
        QCOMPARE(answer.fits, fits);
    }
    void countsTheMarkedHours()
    {
        Schedule nights;
        for (int hour = 0; hour < 6; ++hour)
            nights.setHour(hour, true);
        QCOMPARE(RetentionText::bytesPerDay(1000, true, nights), 21'600'000);
        QCOMPARE(RetentionText::bytesPerDay(1000, false, nights), 86'400'000);
        QCOMPARE(RetentionText::bytesPerDay(1000, true, Schedule()), 86'400'000); // by hand only
    }

    /// Of the folder that is shown, in the format that is shown, in a colour that stands out.
    void showsWhatTheDaysNeed()
    {
        const QString folder = m_folder.filePath(QStringLiteral("room"));
        QVERIFY(QDir().mkpath(folder));
        for (const char* name : {"/a.wav", "/notes.txt"}) {
            QFile file(folder + QLatin1String(name));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(300'000, 'x')) == 300'000);
        }
        const RoomForRecordings room = RecordingRoom::query(folder);
        QVERIFY(room.freeBytes > 0);
        QCOMPARE(room.recordingsBytes, 300'000);
        const QString notYet = folder + QStringLiteral("/not/yet");
        QVERIFY(RecordingRoom::query(notYet).freeBytes > 0);
        QVERIFY(!QFile::exists(notYet));
        QCOMPARE(RecordingRoom::query(QStringLiteral("relative")).freeBytes, -1);

        m_settings.outputFolder = folder;
        m_settings.housekeepingEnabled = true;
        m_settings.housekeepingDays = 1;
        m_settings.deleteWhenFull = false;
        m_settings.codec = Mp3;
        m_settings.bitrate = 16;
        SettingsDialog dialog(m_settings);
        auto* label = dialog.findChild<QLabel*>(QStringLiteral("retention"));
        const QColor usual = label->palette().color(QPalette::WindowText);
        QTRY_VERIFY2(label->text().contains(QStringLiteral("hold recordings")), qPrintable(label->text()));
        QVERIFY2(label->text().startsWith(QStringLiteral("1 day needs 173 MB; ")), qPrintable(label->text()));
        QCOMPARE(label->palette().color(QPalette::WindowText), usual);
        auto* codec = boxWith(dialog, QStringLiteral("FLAC"));
        codec->setCurrentIndex(codec->findText(QStringLiteral("WAV (uncompressed)")));
        for (auto* box : controls<QSpinBox>(dialog)) {
            if (box->maximum() == 3650)
                box->setValue(3650);
        }
        auto* rate = boxWith(dialog, QStringLiteral("48000 Hz"));
        rate->setCurrentIndex(rate->findText(QStringLiteral("48000 Hz")));
        auto* channels = boxWith(dialog, QStringLiteral("stereo"));
        channels->setCurrentIndex(channels->findText(QStringLiteral("stereo")));
        QVERIFY2(label->text().startsWith(QStringLiteral("3650 days need 61 TB; ")), qPrintable(label->text()));
        QVERIFY(label->palette().color(QPalette::WindowText) != usual);
    }

    /// What cannot be is not accepted, and nothing else of the dialog either.
    void refusesACopyInsideTheRecordings()
    {
        m_settings.copyEnabled = true;
        const QString before = m_settings.copyFolder = m_folder.filePath(QStringLiteral("copies"));
        SettingsDialog dialog(m_settings);
        auto* problem = dialog.findChild<QLabel*>(QStringLiteral("copyProblem"));
        QVERIFY(problem->text().isEmpty());
        for (auto* edit : controls<QLineEdit>(dialog)) {
            if (edit->text() == before)
                edit->setText(m_settings.outputFolder + QStringLiteral("/copies"));
        }
        QVERIFY2(problem->text().contains(QStringLiteral("outside")), qPrintable(problem->text()));
        QString said;
        QTimer::singleShot(0, this, [&said] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            said = box->text();
            box->accept();
        });
        dialog.accept();
        QCOMPARE(said, problem->text());
        QCOMPARE(dialog.result(), 0);
        QCOMPARE(m_settings.copyFolder, before);
        m_settings.copyEnabled = false;
    }

    void asksForServerAndRecipient()
    {
        m_settings.smtpHost = QStringLiteral("mail.station.example");
        m_settings.alertEmail.clear();
        SettingsDialog dialog(m_settings);
        QCOMPARE(sayingOfTest(dialog), QStringLiteral("Enter at least an SMTP server and a recipient address."));
    }

    /// To the server that the controls name and the settings do not, and back with its words.
    void testsTheServerInTheControls()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        connect(&server, &QTcpServer::newConnection, &server,
                [&] { server.nextPendingConnection()->write("554 no mail here\r\n"); });
        SettingsDialog dialog(m_settings);
        for (auto* edit : controls<QLineEdit>(dialog))
            edit->setText(QStringLiteral("127.0.0.1"));
        for (auto* box : controls<QSpinBox>(dialog))
            box->setValue(server.serverPort());
        QCOMPARE(sayingOfTest(dialog), QStringLiteral("554 no mail here"));
    }

private:
    /// Presses the button "Test" and tells what the box then says.
    static QString sayingOfTest(const SettingsDialog& dialog)
    {
        QString said;
        QTimer poll;
        poll.callOnTimeout([&said] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                said = box->text();
                box->accept();
            }
        });
        poll.start(10);
        for (auto* button : dialog.findChildren<QPushButton*>()) {
            if (button->text() == QStringLiteral("&Test"))
                button->click();
        }
        [[maybe_unused]] const bool done = QTest::qWaitFor([&said] { return !said.isEmpty(); }, 20'000);
        return said;
    }

    QTemporaryDir m_folder;
    AppSettings& m_settings = AppSettings::instance();
};

QTEST_MAIN(TestSettingsDialog)
#include "tst_settingsdialog.moc"
