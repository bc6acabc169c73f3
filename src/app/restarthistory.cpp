#include "app/restarthistory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds Window = 60s;
constexpr int AtOnce = 2;
constexpr std::chrono::milliseconds FirstWait = 5s;
constexpr std::chrono::milliseconds LongestWait = 60s;
constexpr int MaxRestarts = 8; ///< more do not make the wait longer
constexpr qint64 LatestMs = 1LL << 52; ///< far beyond any date
constexpr qsizetype FileBytes = 512; ///< room for them

} // namespace

std::chrono::milliseconds RestartHistory::wait(const QList<Restart>& before, qint64 nowMs)
{
    qint64 end = nowMs;
    qint64 ranMs = 0; // the waits do not count, else they would end what they are there for
    int count = 1; // with this one
    for (auto restart = before.crbegin(); restart != before.crend(); ++restart) {
        const qint64 lengthMs = end - (restart->atMs + restart->waitMs);
        if (lengthMs < 0)
            break;
        ranMs += lengthMs;
        if (ranMs > Window.count())
            break;
        ++count;
        end = restart->atMs;
    }
    if (count <= AtOnce)
        return 0ms;
    return std::min(LongestWait, FirstWait * (1 << std::min(count - AtOnce - 1, 8)));
}

QByteArray RestartHistory::toText(const QList<Restart>& restarts)
{
    QByteArray text;
    for (const Restart& restart : restarts)
        text += QByteArray::number(restart.atMs) + ' ' + QByteArray::number(restart.waitMs) + '\n';
    return text;
}

QList<RestartHistory::Restart> RestartHistory::fromText(const QByteArray& text)
{
    QList<Restart> restarts;
    for (const QByteArray& line : text.split('\n')) {
        const QList<QByteArray> parts = line.split(' ');
        bool isTime = false, isWait = false;
        const Restart restart{parts.value(0).toLongLong(&isTime), parts.value(1).toLongLong(&isWait)};
        if (isTime && isWait && parts.size() == 2 && restart.atMs >= 0 && restart.atMs < LatestMs &&
            restart.waitMs >= 0 && restart.waitMs <= LongestWait.count())
            restarts.append(restart);
    }
    return restarts;
}

std::chrono::milliseconds RestartHistory::add(const QString& path, qint64 nowMs)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    // Overwritten in place and never longer: that works on a full disk too.
    const bool isOpen = file.open(QIODevice::ReadWrite);
    QList<Restart> restarts = isOpen ? fromText(file.read(FileBytes)) : QList<Restart>();
    const auto waits = wait(restarts, nowMs);
    restarts.append({nowMs, waits.count()});
    const QByteArray text = toText(restarts.mid(std::max<qsizetype>(0, restarts.size() - MaxRestarts)));
    const bool isKept =
        isOpen && file.seek(0) && file.write(text.leftJustified(FileBytes, '\n', true)) == FileBytes && file.flush();
    return isKept ? waits : std::max(waits, FirstWait);
}
