// What the archive costs with years of recordings: one hourly file each, half MP3, half WAV.
// A change of the dialog's list is to take less than 200 ms with 100,000 recordings, or the operator waits for it.
// The ratios at the end, of 100,000 files to 50,000, should stay at about two: no scan inside a scan.

#include "archive/archiveindex.h"
#include "archive/recordsfile.h"
#include "ui/archivedialog.h"
#include "ui/archivemodel.h"
#include "ui/archivetable.h"

#include <QApplication>
#include <QDateTimeEdit>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

const QDateTime FirstStart(QDate(2013, 1, 1), QTime(0, 0));
constexpr qint64 SparseSize = 1440044; // long enough for a length that is known, without the room it would take

/// A canonical header of 16-bit stereo at 48 kHz, and no audio.
QByteArray wavHeader()
{
    return QByteArray::fromHex("524946462400000057415645"
                               "666d7420100000000100020080bb000000ee020004001000"
                               "6461746100000000");
}

/// A folder of that many recordings, made once per run.
const QString& folderOf(int files)
{
    static std::map<int, std::unique_ptr<QTemporaryDir>> folders;
    static std::map<int, QString> paths;
    auto& folder = folders[files];
    if (!folder) {
        folder = std::make_unique<QTemporaryDir>();
        paths[files] = folder->path();
        const QByteArray wav = wavHeader();
        const QByteArray mp3 = QByteArray::fromHex("fffb9064"); // a frame of 128 kbit/s
        for (int i = 0; i < files; ++i) {
            const QString name = FirstStart.addSecs(3600LL * i).toString(u"yyyyMMdd-hhmmss");
            QFile file(folder->filePath(name + QLatin1String(i % 2 ? ".mp3" : ".wav")));
            if (!file.open(QIODevice::WriteOnly) || file.write(i % 2 ? mp3 : wav) < 0 || !file.resize(SparseSize))
                qFatal("cannot fill %s", qPrintable(folder->path()));
        }
        ArchiveIndex().setFolder(folder->path()); // so that what the scans read is in the cache
    }
    return paths[files];
}

int filesOf(const benchmark::State& state)
{
    return int(state.range(0));
}

/// An index of the folder whose records.json lists every file.
std::unique_ptr<ArchiveIndex> indexed(int files)
{
    auto index = std::make_unique<ArchiveIndex>();
    index->setFolder(folderOf(files));
    index->save();
    if (index->records().size() < files)
        qFatal("only %d files listed", int(index->records().size()));
    return index;
}

void rescanFresh(benchmark::State& state)
{
    const QString folder = folderOf(filesOf(state));
    for (auto _ : state) {
        state.PauseTiming();
        QFile::remove(folder + QStringLiteral("/records.json"));
        auto index = std::make_unique<ArchiveIndex>();
        state.ResumeTiming();
        index->setFolder(folder); // nothing to read: a scan in which every file is new
        state.PauseTiming();
        index.reset();
        state.ResumeTiming();
    }
}

void rescanIndexed(benchmark::State& state)
{
    const auto index = indexed(filesOf(state));
    for (auto _ : state)
        index->rescan();
}

void load(benchmark::State& state)
{
    const auto index = indexed(filesOf(state));
    for (auto _ : state)
        index->load();
}

void save(benchmark::State& state)
{
    const auto index = indexed(filesOf(state));
    for (auto _ : state)
        index->save();
}

void addRecord(benchmark::State& state)
{
    const auto index = indexed(filesOf(state));
    RecordInfo record = index->records().constLast();
    record.fileName = QStringLiteral("new.wav");
    for (auto _ : state)
        index->addRecord(record);
}

void recordAt(benchmark::State& state)
{
    const auto index = indexed(filesOf(state));
    const QDateTime moment = FirstStart.addSecs(3600LL * filesOf(state) / 2);
    for (auto _ : state)
        benchmark::DoNotOptimize(index->recordAt(moment));
}

/// The dialog over an index in which no two lengths are alike, so that sorting by them scatters the times.
struct OpenDialog {
    explicit OpenDialog(int files) : index(indexed(files))
    {
        QList<RecordInfo> records = index->records();
        for (qsizetype i = 0; i < records.size(); ++i)
            records[i].durationMs = 1 + i * 7919 % 100'003;
        QFile file(folderOf(files) + QStringLiteral("/records.json"));
        const QByteArray json = RecordsFile::toJson(records);
        if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size())
            qFatal("cannot write the index");
        file.close();
        index->load();
        open();
    }
    void open()
    {
        dialog = std::make_unique<ArchiveDialog>(index.get());
        dialog->show();
        QCoreApplication::processEvents();
    }
    void call(const char* slot)
    {
        QMetaObject::invokeMethod(dialog.get(), slot);
        QCoreApplication::processEvents();
    }
    void sortBy(int column)
    {
        dialog->findChild<ArchiveTable*>()->sortByColumn(column, Qt::AscendingOrder);
        QCoreApplication::processEvents();
    }

    std::unique_ptr<ArchiveIndex> index;
    std::unique_ptr<ArchiveDialog> dialog;
};

void openDialog(benchmark::State& state)
{
    OpenDialog dialog(filesOf(state));
    for (auto _ : state)
        dialog.open();
}

void sortDialog(benchmark::State& state, ArchiveModel::Column column)
{
    OpenDialog dialog(filesOf(state));
    for (auto _ : state) {
        dialog.sortBy(column);
        state.PauseTiming();
        dialog.sortBy(column == ArchiveModel::Length ? ArchiveModel::Date : ArchiveModel::Length);
        state.ResumeTiming();
    }
}

/// Half of the recordings, and all of them again.
void filterDialog(benchmark::State& state, const char* slot, const char* undo)
{
    OpenDialog dialog(filesOf(state));
    dialog.sortBy(ArchiveModel::Length);
    const auto edits = dialog.dialog->findChildren<QDateTimeEdit*>();
    edits.at(0)->setDateTime(FirstStart);
    edits.at(1)->setDateTime(FirstStart.addSecs(1800LL * filesOf(state)));
    dialog.call(undo);
    for (auto _ : state) {
        dialog.call(slot);
        state.PauseTiming();
        dialog.call(undo);
        state.ResumeTiming();
    }
}

/// A segment finishes, and the dialog shows it.
void changeUnderDialog(benchmark::State& state)
{
    OpenDialog dialog(filesOf(state));
    dialog.dialog->findChild<ArchiveTable*>()->selectRow(100);
    for (auto _ : state)
        dialog.dialog->findChild<ArchiveModel*>()->reload();
}

/// The usual table, and below it how each figure grew when the files doubled.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        benchmark::ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            m_times[run.run_name.function_name][run.run_name.args] = run.GetAdjustedRealTime();
    }
    void Finalize() override
    {
        for (const auto& [name, times] : m_times) {
            if (times.size() == 2 && times.contains("100000"))
                GetOutputStream() << name << ": x " << times.at("100000") / times.at("50000") << '\n';
        }
    }

private:
    std::map<std::string, std::map<std::string, double>> m_times;
};

const auto BothSizes = [](benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(50000)->Arg(100000)->Unit(benchmark::kMillisecond)->MinTime(2);
};
BENCHMARK(rescanFresh)->Apply(BothSizes);
BENCHMARK(rescanIndexed)->Apply(BothSizes);
BENCHMARK(load)->Apply(BothSizes);
BENCHMARK(save)->Apply(BothSizes);
BENCHMARK(addRecord)->Apply(BothSizes);
BENCHMARK(recordAt)->Apply(BothSizes);
BENCHMARK(openDialog)->Apply(BothSizes);
BENCHMARK_CAPTURE(sortDialog, byDate, ArchiveModel::Date)->Apply(BothSizes);
BENCHMARK_CAPTURE(sortDialog, byLength, ArchiveModel::Length)->Apply(BothSizes);
BENCHMARK_CAPTURE(sortDialog, byPath, ArchiveModel::Path)->Apply(BothSizes);
BENCHMARK_CAPTURE(filterDialog, toHalf, "applyRangeFilter", "clearRangeFilter")->Apply(BothSizes);
BENCHMARK_CAPTURE(filterDialog, toAll, "clearRangeFilter", "applyRangeFilter")->Apply(BothSizes);
BENCHMARK(changeUnderDialog)->Apply(BothSizes);

} // namespace

int main(int argc, char* argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
