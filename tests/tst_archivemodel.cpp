#include "archive/archiveindex.h"
#include "support/table.h"
#include "ui/archivemodel.h"
#include "ui/archiverangefilter.h"

#include <QAbstractItemModelTester>
#include <QTemporaryDir>

namespace {

QDateTime at(const char* time)
{
    return {QDate(2026, 3, 2), QTime::fromString(QLatin1String(time))};
}

} // namespace

class TestArchiveModel : public QObject {
    Q_OBJECT

    using RangeRows = Table<QDateTime, QDateTime, QStringList>;

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_index = std::make_unique<ArchiveIndex>();
        m_index->setFolder(m_folder->path());
        m_model = std::make_unique<ArchiveModel>(m_index.get());
        m_filter = std::make_unique<ArchiveRangeFilter>(m_model.get());
        add("hour.wav", at("10:00:00"), 3'600'000);
        add("open.wav", at("10:00:00"), 0);
        add("late.wav", at("21:00:00"), 3'725'000);
        add("undated.wav", {}, 1000);
    }

    void showsARecord()
    {
        const QAbstractItemModelTester modelRules(m_model.get());
        const QAbstractItemModelTester filterRules(m_filter.get());
        const auto shown = [this](int row, ArchiveModel::Column column) { return m_model->index(row, column).data(); };
        QCOMPARE(shown(2, ArchiveModel::Length), QStringLiteral("1:02:05"));
        QCOMPARE(shown(1, ArchiveModel::Length), QStringLiteral("0:00:00"));
        QCOMPARE(shown(1, ArchiveModel::Stopped), QStringLiteral("-"));
        QCOMPARE(shown(3, ArchiveModel::Stopped), QStringLiteral("-"));
        QCOMPARE(m_model->index(0, 3).data(ArchiveModel::EndRole).toDateTime(), at("11:00:00"));
        QVERIFY(!m_model->index(1, 0).data(ArchiveModel::EndRole).toDateTime().isValid());
        QCOMPARE(m_model->index(2, 1).data(Qt::ToolTipRole).toString(),
                 m_folder->filePath(QStringLiteral("late.wav")) + QStringLiteral("\n1.95 KiB\n1:02:05"));
        QVERIFY(m_model->record(4).fileName.isEmpty());
        m_index->removeRecord(m_folder->filePath(QStringLiteral("open.wav")));
        QCOMPARE(m_model->rowCount(), 3);
    }

    void rangeShowsWhatOverlaps_data()
    {
        const RangeRows row;
        const QString hour = "hour.wav", open = "open.wav";
        row("touches the end", at("11:00:00"), at("12:00:00"), {hour});
        row("just after the end", at("11:00:01"), at("12:00:00"), {});
        row("touches the start", at("09:00:00"), at("10:00:00"), {hour, open});
        row("unknown length", at("10:30:00"), at("11:00:00"), {hour});
        row("no range", at("10:30:00"), {}, {hour, open, "late.wav", "undated.wav"});
    }
    void rangeShowsWhatOverlaps()
    {
        const auto [from, to, files] = RangeRows::fetch();
        m_filter->setRange(from, to);
        QCOMPARE(filesShown(), files);
    }

    void sortsByValues()
    {
        add("long.wav", at("09:59:59"), 36'000'000); // "10:00:00" is before "1:00:00" as a text
        m_filter->sort(ArchiveModel::Length, Qt::DescendingOrder);
        QCOMPARE(filesShown().mid(0, 3),
                 QStringList({QStringLiteral("long.wav"), QStringLiteral("late.wav"), QStringLiteral("hour.wav")}));
        m_filter->sort(ArchiveModel::Started, Qt::AscendingOrder);
        QCOMPARE(filesShown().mid(0, 2), QStringList({QStringLiteral("undated.wav"), QStringLiteral("long.wav")}));
    }

private:
    void add(const char* name, const QDateTime& start, qint64 durationMs)
    {
        m_index->addRecord({name, m_folder->filePath(name), start, durationMs, 2000, false});
    }

    QStringList filesShown() const
    {
        QStringList files;
        for (int row = 0; row < m_filter->rowCount(); ++row)
            files << m_filter->index(row, ArchiveModel::File).data().toString();
        return files;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ArchiveIndex> m_index;
    std::unique_ptr<ArchiveModel> m_model;
    std::unique_ptr<ArchiveRangeFilter> m_filter;
};

QTEST_MAIN(TestArchiveModel)
#include "tst_archivemodel.moc"
