#include "archive/archiveindex.h"
#include "engine/recorder.h"
#include "settings/appsettings.h"
#include "settings/codectable.h"
#include "support/audiofiles.h"
#include "support/pulserig_linux.h"
#include "support/table.h"
#include "ui/closedialog.h"
#include "ui/loglist.h"
#include "ui/mainwindow.h"
#include "ui/settingsdialog.h"
#include "ui/theme.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

constexpr QColor DarkWindow(37, 40, 43);
constexpr int Stayed = 1;

/// Waits for the dialog that the next command opens, and then acts in it.
template <class Dialog>
void inDialog(const std::function<void(Dialog&)>& act)
{
    QTimer::singleShot(0, qApp, [act] {
        if (auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget()))
            act(*dialog);
    });
}

void click(const QWidget& where, const QString& caption)
{
    for (auto* button : where.findChildren<QPushButton*>()) {
        if (button->text().endsWith(caption))
            return QTest::mouseClick(button, Qt::LeftButton);
    }
    QFAIL(qPrintable(caption));
}

/// The lines with one of these texts, without their times.
QStringList lines(const MainWindow& window, const QStringList& texts)
{
    QStringList found;
    const auto* log = window.findChild<LogList*>();
    for (int i = 0; i < log->count(); ++i) {
        const QString line = log->item(i)->text().section(u"] "_qs, 1);
        if (std::any_of(texts.begin(), texts.end(), [&](const QString& text) { return line.contains(text); }))
            found << line;
    }
    return found;
}

} // namespace

/// What the operator does with the whole window while it records a sound server, on a desktop without a notification
/// area.
class TestMainWindowLinux : public QObject {
    Q_OBJECT

    using SettingsRows = Table<bool, bool, QStringList>; // recording, accepted, log
    /// Close action, recording; the answer, or none where nothing is asked, remembered; whether it ends, close action.
    using CloseRows = Table<int, bool, QString, bool, bool, int>;

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_settings.outputFolder = folder("first");
        m_settings.backend = int(CaptureBackend::Loopback);
        m_settings.codec = Wav;
        m_settings.splitMinutes = 0; // whatever the hour is
        m_settings.autoMode = false;
        m_settings.checkAtStartup = false;
        m_settings.theme = Theme::FollowSystem;
        m_settings.save();
        m_window = std::make_unique<MainWindow>();
        m_window->show();
        m_recorder = m_window->findChild<Recorder*>();
    }
    void cleanup()
    {
        m_window.reset();
        Theme::apply(Theme::FollowSystem);
    }

    void settings_data()
    {
        const SettingsRows row;
        const QString saved = "Settings saved";
        row("idle, accepted", false, true, {saved});
        row("idle, cancelled", false, false, {});
        row("recording, accepted", true, true,
            {"Recording stopped (settings changed)", "Recording started (settings changed)", saved});
        row("recording, cancelled", true, false, {});
    }
    /// Another theme and another folder.
    void settings()
    {
        const auto [recording, accepted, expected] = SettingsRows::fetch();
        if (recording)
            record();
        const QString before = m_recorder->currentFilePath();
        const QPalette palette = QApplication::palette();
        inDialog<SettingsDialog>(
            [this, button = accepted ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel](const SettingsDialog& dialog) {
                for (auto* box : dialog.findChildren<QComboBox*>())
                    box->setCurrentText("Dark"); // only one knows this text
                for (auto* edit : dialog.findChildren<QLineEdit*>()) {
                    if (edit->text() == folder("first"))
                        edit->setText(folder("second"));
                }
                QTest::mouseClick(dialog.findChildren<QDialogButtonBox*>().constLast()->button(button), Qt::LeftButton);
            });
        command("&Settings...");

        QCOMPARE(lines(*m_window, {"settings changed", "Settings saved"}), expected);
        QCOMPARE(QApplication::palette() != palette, accepted);
        QTRY_COMPARE(m_window->palette().color(QPalette::Window) == DarkWindow, accepted);
        m_settings.theme = Theme::Light;
        m_settings.outputFolder.clear();
        m_settings.load();
        QCOMPARE(m_settings.theme, int(accepted ? Theme::Dark : Theme::FollowSystem));
        const QString now = folder(accepted ? "second" : "first");
        QCOMPARE(m_settings.outputFolder, now);
        QCOMPARE(m_window->findChild<ArchiveIndex*>()->folder(), now);

        QCOMPARE(m_recorder->isRecording(), recording);
        if (!recording)
            return;
        QCOMPARE(m_recorder->currentFilePath() == before, !accepted);
        hear();
        click(*m_window, "&Stop");
        QCOMPARE(wavFiles("first"), 1);
        QCOMPARE(wavFiles("second"), accepted ? 1 : 0);
        QVERIFY(AudioFiles::probe(before)["duration"].toString().toDouble() > 0.0);
    }

    void close_data()
    {
        const CloseRows row;
        row("asks, leave", 0, true, "E&xit", false, true, 0);
        row("asks, leave for ever", 0, false, "E&xit", true, true, 2);
        row("asks, stay", 0, true, "&Cancel", false, false, 0);
        row("staying is never remembered", 0, false, "&Cancel", true, false, 0);
        row("there is nothing to minimise to", 1, true, {}, false, true, 1);
        row("leaves", 2, true, {}, false, true, 2);
    }
    void close()
    {
        const auto [action, recording, answer, remember, ends, actionAfter] = CloseRows::fetch();
        m_settings.closeAction = action;
        m_settings.save();
        if (recording)
            record();
        QString question;
        bool recordsOn = false;
        QTimer::singleShot(0, m_window.get(), [&, caption = answer, ticked = remember] {
            inDialog<CloseDialog>([&, caption, ticked](const CloseDialog& dialog) {
                question = dialog.findChild<QLabel*>()->text();
                dialog.findChild<QCheckBox*>()->setChecked(ticked);
                click(dialog, caption);
            });
            m_window->close();
            QTimer::singleShot(100ms, m_window.get(), [&] {
                recordsOn = m_recorder->isRecording();
                QCoreApplication::exit(Stayed);
            });
        });
        QCOMPARE(QCoreApplication::exec(), ends ? 0 : Stayed);

        QCOMPARE(question.isEmpty(), answer.isEmpty());
        QVERIFY(!question.contains("notification area"));
        QCOMPARE(question.contains("A recording is in progress."), recording && !answer.isEmpty());
        QCOMPARE(lines(*m_window, {"Close button"}).value(0), actionAfter == action ? "" : "Close button set to: exit");
        m_settings.closeAction = -1;
        m_settings.load();
        QCOMPARE(m_settings.closeAction, actionAfter);
        QCOMPARE(m_window->isVisible(), !ends);
        QCOMPARE(recordsOn, recording && !ends);
        if (!recording)
            return;
        QCOMPARE(lines(*m_window, {"Recording stopped"}), QStringList("Recording stopped (exit)"));
        ArchiveIndex listed;
        listed.setFolder(folder("first"));
        QCOMPARE(listed.records().size(), 1);
        const double seconds =
            AudioFiles::probe(listed.records().constFirst().filePath)["duration"].toString().toDouble();
        QVERIFY(seconds > 0.0);
        QCOMPARE(qRound64(seconds * 1000), listed.records().constFirst().durationMs);
    }

private:
    QString folder(const QString& name) const { return m_folder->filePath(name); }
    qsizetype wavFiles(const QString& name) const { return QDir(folder(name)).entryList({"*.wav"}).size(); }
    void command(const QString& text) const
    {
        for (auto* action : m_window->menuBar()->findChildren<QAction*>()) {
            if (action->text() == text)
                return action->trigger();
        }
        QFAIL(qPrintable(text));
    }
    void hear() const
    {
        const QSignalSpy blocks(m_recorder, &Recorder::audioReceived);
        QTRY_VERIFY(blocks.size() > 3);
    }
    void record() const
    {
        click(*m_window, "&Record");
        hear();
    }

    AppSettings& m_settings = AppSettings::instance();
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MainWindow> m_window;
    Recorder* m_recorder = nullptr;
};

int main(int argc, char* argv[])
{
    const QTemporaryDir store;
    qputenv("XDG_CONFIG_HOME", store.path().toUtf8()); // for starting with the system
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, store.path());
    QCoreApplication::setOrganizationName("Quayside");
    QCoreApplication::setApplicationName("tst_mainwindow_linux");
    PulseRig rig;
    if (!rig.start())
        qFatal("The private sound server did not start.");
    QApplication app(argc, argv);
    TestMainWindowLinux test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mainwindow_linux.moc"
