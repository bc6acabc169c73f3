#include "archive/archiveindex.h"
#include "support/copyrig.h"
#include "support/pulserig_linux.h"
#include "support/table.h"
#include "ui/archivedialog.h"
#include "ui/archivetable.h"

#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>

#include <algorithm>

namespace {

constexpr int Rate = 44100;
const QDateTime Start(QDate(2020, 3, 2), QTime(10, 0));

/// Each second of the tones has its own, 400 Hz, 500 Hz ...: which one the 50 ms from this sample on are of.
int secondAt(const qint16* pcm)
{
    int rises = 0;
    for (int i = 1; i < Rate / 20; ++i)
        rises += pcm[i - 1] < 0 && pcm[i] >= 0;
    return qRound((rises * 20 - 400) / 100.0);
}

/// The moment of the tones that a recording begins with, in seconds; -1 when it does not get to the second after it.
double momentOfFirstSound(const QByteArray& recording)
{
    const auto* pcm = reinterpret_cast<const qint16*>(recording.constData());
    const auto* end = pcm + recording.size() / 2 - Rate / 20;
    const auto* first = std::find_if(pcm, end, [](int sample) { return std::abs(sample) > 300; });
    for (const auto* at = first; at < end; at += Rate / 100) {
        if (secondAt(at) > secondAt(first))
            return secondAt(at) - double(at - first) / Rate - 0.025; // found with half of its 50 ms
    }
    return -1;
}

} // namespace

class TestArchiveDialog : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_index = std::make_unique<ArchiveIndex>();
        m_index->setFolder(m_folder->path());
        m_dialog = std::make_unique<ArchiveDialog>(m_index.get());
        m_dialog->show();
        m_table = m_dialog->findChild<ArchiveTable*>();
        m_player = m_dialog->findChild<QMediaPlayer*>();
        m_from = m_dialog->findChildren<QDateTimeEdit*>().at(0);
        m_to = m_dialog->findChildren<QDateTimeEdit*>().at(1);
    }

    void startsAtTheMoment_data()
    {
        QTest::addColumn<QString>("ending");
        for (const char* ending : {"wav", "mp3", "flac", "ogg", "m4a"})
            QTest::newRow(ending) << QString(QLatin1String(ending));
    }
    void startsAtTheMoment()
    {
        QFETCH(const QString, ending);
        addFile("100 % of <b>it #1." + ending, Start);
        for (const int ms : {12'300, 5'600}) { // the second within the file that plays
            m_from->setDateTime(Start.addMSecs(ms));
            click("Stop");
            QTest::qWait(300); // what the sound server still has of it is not to be heard
            QProcess monitor;
            monitor.start("parec", {"-d", "program.monitor", "--latency-msec=50", "--rate=44100", "--channels=1"});
            QVERIFY(monitor.waitForReadyRead());
            click("&Play from start time");
            QTRY_VERIFY(m_player->position() > ms + 1500);
            const double heard = momentOfFirstSound(monitor.readAll());
            monitor.kill();
            monitor.waitForFinished();
            QVERIFY2(std::abs(heard - ms / 1000.0) < 0.12, qPrintable(QString::number(heard)));
        }
        QCOMPARE(m_table->selectedPaths().size(), 1);
        QTRY_VERIFY(hasLabel("Mon 2 Mar  10:00:08"));
    }

    void playsByKeys()
    {
        addFile("a.wav", Start);
        QTest::keyClick(m_table, Qt::Key_Down);
        QTest::keyClick(m_table, Qt::Key_Return);
        QTRY_VERIFY(m_player->position() > 0);
        QTest::keyClick(m_table, Qt::Key_Space);
        QCOMPARE(m_player->playbackState(), QMediaPlayer::PausedState);
        auto* slider = m_dialog->findChild<QSlider*>();
        QTest::keyClick(slider, Qt::Key_Right);
        QTRY_VERIFY(hasLabel("00:05/00:20"));
        QTest::keyClick(m_table, Qt::Key_Space);
        QTRY_VERIFY(m_player->position() > 5500);
        addFile("b.wav", Start.addDays(1)); // a segment finishes
        QVERIFY(m_player->playbackState() == QMediaPlayer::PlayingState);
        QCOMPARE(m_table->selectedPaths(), QStringList(m_folder->filePath("a.wav")));
        click("Stop");
        QCOMPARE(slider->value(), 0);
    }

    void findsByTime()
    {
        addFile("a.wav", Start);
        const QString gone = addFile("<b>b.wav", Start.addDays(1));
        m_from->setDateTime(Start.addDays(2));
        m_to->setDateTime(Start.addSecs(20));
        click("&Show matches");
        QVERIFY(m_from->dateTime() == Start.addSecs(20) && m_to->dateTime() == Start.addDays(2));
        QVERIFY(hasLabel("2 of 2 recordings"));
        m_from->setDateTime(Start.addDays(1));
        QTest::keyClick(m_from, Qt::Key_Return);
        QVERIFY(hasLabel("1 of 2 recordings"));

        const auto chooseYesterday = [this] { QTest::keyClick(m_dialog->findChild<QComboBox*>(), Qt::Key_Y); };
        QVERIFY(answer(Qt::Key_Return, chooseYesterday).startsWith("Nothing was recorded between "));
        QCOMPARE(m_from->dateTime(), QDate::currentDate().addDays(-1).startOfDay());
        QCOMPARE(m_to->dateTime(), QDate::currentDate().startOfDay());
        QVERIFY(answer(Qt::Key_Return, [this] { click("&Play from start time"); }).startsWith("No recording covers "));
        click("Show &all");
        QVERIFY(hasLabel("2 recordings"));

        QVERIFY(QFile::remove(gone));
        m_table->selectPath(gone);
        QCOMPARE(answer(Qt::Key_Return, [this] { click("Play"); }), "The file no longer exists:\n" + gone);
        QVERIFY(hasLabel("1 recordings"));
    }

    void playsFromTheCopy_data()
    {
        const Table<QString, bool> row;
        row("whole", "", false);
        row("missing", "missing", true);
        row("cut short", "short", true);
        row("cut short, and the index knows", "short and scanned", true);
        row("of the right length, but no audio", "noise", true);
    }
    void playsFromTheCopy()
    {
        const auto [damage, fromCopy] = Table<QString, bool>::fetch();
        CopyRig rig;
        const QByteArray content = CopyRig::read(addFile("tones.wav", Start));
        const RecordInfo record = rig.add("a.wav", 1, content);
        rig.start();
        QTRY_COMPARE(rig.copied.size(), 1);
        if (damage == "missing")
            QVERIFY(QFile::remove(record.filePath));
        else if (damage.startsWith("short"))
            CopyRig::write(record.filePath, content.left(1000));
        else if (damage == "noise")
            CopyRig::write(record.filePath, QByteArray(content.size(), '\0'));
        if (damage == "short and scanned")
            rig.index.rescan();

        ArchiveDialog dialog(&rig.index, nullptr, rig.copy.get());
        dialog.show();
        auto* table = dialog.findChild<ArchiveTable*>();
        const auto* player = dialog.findChild<QMediaPlayer*>();
        const auto* note = dialog.findChild<QLabel*>("note");
        table->selectPath(record.filePath);
        QTest::keyClick(table, Qt::Key_Return);
        QTRY_VERIFY(player->position() > 0);
        QCOMPARE(player->source().toLocalFile(), fromCopy ? rig.target + "/a.wav" : record.filePath);
        QCOMPARE(note->isVisible(), fromCopy);
        AppSettings::instance().copyEnabled = false;
    }

    void deletes()
    {
        const QString played = addFile("50.wav", Start.addDays(50));
        for (int day = 0; day < 100; ++day) {
            const QString name = QString::number(day) + ".wav";
            QVERIFY(QFile(m_folder->filePath(name)).open(QIODevice::ReadWrite));
            m_index->addRecord({name, m_folder->filePath(name), Start.addDays(day), 20'000});
        }
        QTest::keyClick(m_table, Qt::Key_Home, Qt::ControlModifier);
        for (int day = 99; day > 50; --day)
            QTest::keyClick(m_table, Qt::Key_Down);
        QTest::keyClick(m_table, Qt::Key_Return);
        QTRY_VERIFY(m_player->position() > 0);
        QTest::keyClick(m_table, Qt::Key_Up, Qt::ShiftModifier);

        const auto pressDelete = [this] { QTest::keyClick(m_table, Qt::Key_Delete); };
        const int scroll = m_table->verticalScrollBar()->value();
        QVERIFY(scroll > 0);
        answer(Qt::Key_Return, pressDelete); // No is the default
        QCOMPARE(m_table->selectedPaths().size(), 2);
        QSignalSpy changes(m_index.get(), &ArchiveIndex::changed);
        QCOMPARE(answer(Qt::Key_Y, pressDelete), "Delete 2 selected recording(s) from disk?");
        QVERIFY(m_player->source().isEmpty());
        QCOMPARE(changes.size(), 2); // one for the files removed, one for the scan
        QVERIFY(hasLabel("98 recordings"));
        QVERIFY(!QFile::exists(played) && QFile::exists(m_folder->filePath("49.wav")));
        addFile("newest.wav", Start.addDays(100));
        QCOMPARE(m_table->verticalScrollBar()->value(), scroll + 1); // the same rows are in sight
    }

private:
    QString addFile(const QString& name, const QDateTime& start)
    {
        const RecordInfo record{name, m_folder->filePath(name), start, 20'000};
        const char* tones = "aevalsrc=0.4*sin(2*PI*(400+100*floor(t))*t):s=44100:d=20";
        QProcess::execute("ffmpeg", {"-v", "error", "-f", "lavfi", "-i", QLatin1String(tones), record.filePath});
        m_index->addRecord(record);
        return record.filePath;
    }

    template <class Widget>
    Widget* find(const QString& text) const
    {
        const auto all = m_dialog->findChildren<Widget*>();
        const auto found = std::find_if(all.begin(), all.end(), [&](Widget* one) { return one->text() == text; });
        return found == all.end() ? nullptr : *found;
    }
    bool hasLabel(const QString& text) const { return find<QLabel>(text); }
    void click(const QString& text) { QTest::mouseClick(find<QPushButton>(text), Qt::LeftButton); }

    /// The plain text of the box that an action brings up, which this key answers.
    template <class Action>
    QString answer(Qt::Key key, Action&& action)
    {
        QString text;
        QTimer::singleShot(0, this, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            text = box->textFormat() != Qt::PlainText && Qt::mightBeRichText(box->text()) ? "rich" : box->text();
            QTest::keyClick(box, key);
        });
        action();
        return text;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ArchiveIndex> m_index;
    std::unique_ptr<ArchiveDialog> m_dialog;
    ArchiveTable* m_table = nullptr;
    QMediaPlayer* m_player = nullptr;
    QDateTimeEdit *m_from = nullptr, *m_to = nullptr;
};

int main(int argc, char* argv[])
{
    PulseRig rig;
    if (!rig.start())
        qFatal("The private sound server did not start.");
    QApplication app(argc, argv);
    QLocale::setDefault(QLocale::c());
    TestArchiveDialog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_archivedialog_linux.moc"
