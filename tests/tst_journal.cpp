#include "station/journal.h"
#include "station/journalfile.h"
#include "station/journalmirror.h"
#include "support/table.h"

#include <QDateTime>
#include <QDir>
#include <QJsonDocument>
#include <QMap>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

const QString Month = QStringLiteral("2026-11.jsonl");
constexpr qint64 November = 1'793'491'200'000; // 2026-11-01 00:00 UTC

JournalEntry entryAt(qint64 utcMs, const QString& text, const char* event = JournalEntry::Log)
{
    JournalEntry entry;
    entry.event = QLatin1String(event);
    entry.text = text;
    entry.utcMs = utcMs;
    entry.offsetSeconds = 3600;
    return entry;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

void writeTo(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

/// Every line carries the hash of the one before, whatever that holds.
bool chainHolds(const QByteArray& content, QByteArray previous = {})
{
    QList<QByteArray> lines = content.split('\n');
    lines.removeLast();
    for (const QByteArray& line : lines) {
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        if (!object.isEmpty() && object.value("prev").toString().toLatin1() != previous)
            return false;
        previous = JournalEntry::hash(line);
    }
    return !lines.isEmpty();
}

QStringList texts(const QList<JournalEntry>& entries)
{
    QStringList list;
    for (const JournalEntry& entry : entries)
        list << entry.text;
    return list;
}

} // namespace

class TestJournal : public QObject {
    Q_OBJECT

    using Copies = Table<QByteArray, QString, QByteArray>; // what is there, name of ours, what is in the other's

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void lineIsAnInterface()
    {
        JournalEntry entry = entryAt(November + 1234, "Zoë said \"hi\"\n", "file.closed");
        entry.fields = {{"lengthMs", 3'600'000}, {"file", QString(5000, u'x')}};
        entry.monotonicMs = 77;
        const QJsonObject line = QJsonDocument::fromJson(entry.toLine(7, "abc")).object();
        QCOMPARE(line.value("v").toInt(), 1);
        QCOMPARE(line.value("utc").toString(), "2026-11-01T00:00:01.234Z");
        QCOMPARE(line.value("local").toString(), "2026-11-01T01:00:01.234+01:00");
        QCOMPARE(line.value("monoMs").toInt(), 77);
        QCOMPARE(line.value("event").toString(), "file.closed");
        QCOMPARE(line.value("fields").toObject().value("lengthMs").toInt(), 3'600'000);
        QCOMPARE(line.value("fields").toObject().value("file").toString().size(), 2000);
        QCOMPARE(line.value("prev").toString(), "abc");
        QCOMPARE(line.value("seq").toInt(), 7);
        QVERIFY(!entry.toLine(7, "abc").contains('\n'));

        const auto back = JournalEntry::fromLine(entry.toLine(7, "abc"));
        QVERIFY(back);
        QCOMPARE(back->text, entry.text);
        QCOMPARE(back->utcMs, entry.utcMs);
        QCOMPARE(back->offsetSeconds, 3600);
        for (const QByteArray& rubbish : {QByteArray(), QByteArray("{"), QByteArray("[]"), QByteArray("{\"v\":1}")})
            QVERIFY(!JournalEntry::fromLine(rubbish));
    }

    void chainGoesOnOverMonthsRestartsAndCutLines()
    {
        const QString folder = m_folder->filePath("new/journal");
        {
            JournalFile file(folder);
            QVERIFY(file.append(entryAt(November - 1, "october")));
            QVERIFY(file.append(entryAt(November, "november")));
        }
        const QByteArray october = contentOf(folder + "/2026-10.jsonl");
        QVERIFY(chainHolds(october));
        const QByteArray last = JournalEntry::hash(october.chopped(1));

        QVERIFY(JournalFile(folder).append(entryAt(November + 1, "after a restart")));
        const QString path = folder + '/' + Month;
        const QByteArray whole = contentOf(path);
        writeTo(path, whole.chopped(30)); // as a power cut leaves it
        QVERIFY(JournalFile(folder).append(entryAt(November + 2, "after a power cut")));
        QVERIFY(contentOf(path).startsWith(whole.chopped(30) + '\n'));
        QVERIFY(chainHolds(contentOf(path), last));
        QCOMPARE(texts(JournalFile(folder).linesBefore(November + 2, 10)), (QStringList{"october", "november"}));
    }

    void chainGoesOnAfterAWrongClock()
    {
        for (const qint64 days : {0, 70, 0, 0, -40, 0})
            QVERIFY(JournalFile(m_folder->path()).append(entryAt(November + days * 86'400'000, "line")));
        QMap<qint64, QByteArray> lines;
        for (const QString& name : JournalFile::namesIn(m_folder->path())) {
            for (const QByteArray& line : contentOf(m_folder->filePath(name)).split('\n')) {
                if (!line.isEmpty())
                    lines.insert(JournalEntry::sequenceOf(line), line);
            }
        }
        QCOMPARE(lines.firstKey(), 1);
        QCOMPARE(lines.lastKey(), 6);
        QCOMPARE(lines.size(), 6);
        const QList<QByteArray> ordered = lines.values();
        QVERIFY(chainHolds(ordered.join('\n') + '\n'));
    }

    void goesOnInADeletedFolder()
    {
        const QString folder = m_folder->filePath("journal");
        JournalFile file(folder);
        QVERIFY(file.append(entryAt(November, "one")));
        if (!QDir(folder).removeRecursively())
            return; // Windows does not let it go while the file is open
        QVERIFY(file.append(entryAt(November + 1, "two")));
        QCOMPARE(texts(file.linesBefore(November + 2, 10)), QStringList("two"));
    }

    void waitsForAFullDisk()
    {
        const QString blocked = m_folder->filePath("journal");
        writeTo(blocked, "in the way");
        JournalFile file(blocked);
        QVERIFY(!file.append(entryAt(November, "one")));
        QVERIFY(!file.append(entryAt(November + 1, "two")));
        QVERIFY(QFile::remove(blocked));
        QVERIFY(file.append(entryAt(November + 2, "three")));
        QCOMPARE(texts(file.linesBefore(November + 3, 10)), (QStringList{"one", "two", "three"}));
        QVERIFY(chainHolds(contentOf(blocked + '/' + Month)));
    }

    void readsBackwards()
    {
        JournalFile file(m_folder->path());
        for (int i = 0; i < 1000; ++i) {
            QVERIFY(file.append(entryAt(November - 500 + i, QString::number(i))));
            if (i % 10 == 0)
                QVERIFY(file.append(entryAt(November - 500 + i, "no log line", "file.opened")));
        }
        const QStringList lines = texts(file.linesBefore(November + 100, 400));
        QCOMPARE(lines.size(), 400);
        QCOMPARE(lines.constFirst(), "200");
        QCOMPARE(lines.constLast(), "599");
    }

    void copiesBesideWhatIsThere_data()
    {
        const Copies row;
        row("nothing", "(missing)", Month, {});
        row("the beginning of ours", "one", Month, {});
        row("ours, its last line cut", "cut", Month, {});
        row("another computer's", "{\"other\":1}\n", "2026-11.2.jsonl", "{\"other\":1}\n");
        row("another computer's first line, cut", "{\"oth", "2026-11.2.jsonl", "{\"oth");
    }
    void copiesBesideWhatIsThere()
    {
        const auto [there, ours, other] = Copies::fetch();
        const QString source = m_folder->filePath("source");
        const QString target = m_folder->filePath("recordings/.tidewell");
        JournalFile file(source);
        QVERIFY(file.append(entryAt(November, "one")));
        const QByteArray first = contentOf(source + '/' + Month);
        QVERIFY(file.append(entryAt(November + 1, "two")));
        if (there != "(missing)") {
            QVERIFY(QDir().mkpath(target));
            writeTo(target + '/' + Month, there == "one" ? first : there == "cut" ? first + "{\"even" : there);
            if (there == "cut") // it must be ours that was cut
                writeTo(target + '/' + Month, contentOf(source + '/' + Month).chopped(20));
        }

        JournalMirror mirror(source, target);
        if (there == "(missing)") {
            QVERIFY(!mirror.update()); // a drive that is away is not replaced by a folder
            QVERIFY(QDir().mkpath(m_folder->filePath("recordings")));
        }
        QVERIFY(mirror.update());
        QCOMPARE(contentOf(target + '/' + ours), contentOf(source + '/' + Month));
        QVERIFY(file.append(entryAt(November + 2, "three")));
        QVERIFY(mirror.update());
        QCOMPARE(contentOf(target + '/' + ours), contentOf(source + '/' + Month));
        if (!other.isEmpty())
            QCOMPARE(contentOf(target + '/' + Month), other);
    }

    void keepsEverythingWhileTheShareIsAway()
    {
        const QString recordings = m_folder->filePath("share");
        {
            Journal journal(m_folder->filePath("local"));
            journal.setRecordingsFolder(recordings);
            journal.write("one", "1");
            QSignalSpy read(&journal, &Journal::linesRead);
            journal.write(QLatin1String(JournalEntry::Error), "seen");
            journal.readLinesBefore(QDateTime::currentMSecsSinceEpoch() + 1000, 5);
            QVERIFY(read.wait());
            QCOMPARE(texts(read.constFirst().constFirst().value<QList<JournalEntry>>()), QStringList("seen"));
            QVERIFY(!QFileInfo::exists(recordings));
            QVERIFY(QDir().mkpath(recordings));
            journal.write("two", "2");
        }
        const QString name = JournalEntry::fileName(QDateTime::currentMSecsSinceEpoch());
        const QByteArray copy = contentOf(recordings + "/.tidewell/" + name);
        QCOMPARE(copy, contentOf(m_folder->filePath("local/") + name));
        QCOMPARE(copy.count('\n'), 3);
        QVERIFY(chainHolds(copy));
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestJournal)
#include "tst_journal.moc"
