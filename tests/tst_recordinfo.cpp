#include "archive/recordinfo.h"
#include "support/table.h"

#include <limits>

namespace {

constexpr qint64 Largest = std::numeric_limits<qint64>::max();
constexpr qint64 Hour = 3'600'000;

QDateTime at(qint64 ms)
{
    return QDateTime::fromMSecsSinceEpoch(ms);
}

} // namespace

class TestRecordInfo : public QObject {
    Q_OBJECT

    using EndRows = Table<QDateTime, qint64, qint64>;

private Q_SLOTS:
    void end_data()
    {
        const EndRows row;
        row("an hour", at(Hour), Hour, 2 * Hour);
        row("before the epoch", at(-Hour), 1000, 1000 - Hour);
        row("unknown start", {}, Hour, RecordInfo::UnknownMs);
        row("unknown length", at(Hour), 0, RecordInfo::UnknownMs);
        row("negative length", at(Hour), -1, RecordInfo::UnknownMs);
        row("just fits", at(Hour), Largest - Hour, Largest);
        row("would overflow", at(Hour), Largest - Hour + 1, Largest);
        row("before the epoch, longest", at(-Hour), Largest, Largest - Hour);
    }
    void end()
    {
        const auto [start, durationMs, expected] = EndRows::fetch();
        const RecordInfo record{"a.wav", "/a.wav", start, durationMs};
        QCOMPARE(record.startMs(), start.isValid() ? start.toMSecsSinceEpoch() : RecordInfo::UnknownMs);
        QCOMPARE(record.endMs(), expected);
    }
};

QTEST_GUILESS_MAIN(TestRecordInfo)
#include "tst_recordinfo.moc"
