#include "app/appsettings.h"
#include "capture/ffmpeg.h"
#include "ui/settingsdialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
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
        auto* preview = dialog.findChild<QLabel*>(QStringLiteral("preview"));
        for (auto* edit : controls<QLineEdit>(dialog)) {
            if (edit->text().startsWith(QStringLiteral("%y")))
                edit->setText(QStringLiteral("%sn-x"));
        }
        QVERIFY2(preview->text().endsWith(QStringLiteral("-x.flac")), qPrintable(preview->text()));
    }

    void asksForServerAndRecipient()
    {
        m_settings.smtpHost = QStringLiteral("mail.station.example");
        m_settings.alertEmail.clear();
        QCOMPARE(sayingOfTest(), QStringLiteral("Enter at least an SMTP server and a recipient address."));
    }

#ifndef Q_OS_WIN
    /// By a real server, with what the controls hold and the settings do not.
    void sendsATestMail()
    {
        QProcess server;
        server.setWorkingDirectory(m_folder.path());
        server.start(QStringLiteral(QT_TESTCASE_SOURCEDIR "/support/smtpserver"), {});
        QTRY_VERIFY_WITH_TIMEOUT(server.canReadLine(), 20'000);
        m_settings.smtpHost = QStringLiteral("localhost");
        m_settings.smtpPort = server.readLine().split(' ').first().toInt();
        m_settings.smtpTls = false;
        m_settings.smtpUser.clear();
        m_settings.smtpFrom = QStringLiteral("logger@station.example");
        m_settings.alertEmail = QStringLiteral("desk@station.example");
        QCOMPARE(sayingOfTest(), QStringLiteral("Notification sent."));
        QFile mail(m_folder.filePath(QStringLiteral("mail")));
        QVERIFY(mail.open(QIODevice::ReadOnly));
        const QByteArray text = mail.readAll();
        QVERIFY(text.startsWith("logger@station.example ['desk@station.example']"));
        QVERIFY(text.contains("Subject: Tidewell test message\r\n"));
        server.kill();
        server.waitForFinished();
    }
#endif

private:
    /// Presses the button "Test" and tells what the box then says.
    QString sayingOfTest()
    {
        SettingsDialog dialog(m_settings);
        QString said;
        QTimer poll;
        poll.callOnTimeout(&dialog, [&said] {
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
