#include "station/alarmqueue.h"

#include <QJsonArray>

#include <algorithm>
#include <optional>

namespace {

constexpr qint64 FirstRetryMs = 60'000;
constexpr qint64 LongestRetryMs = 15 * 60'000;
constexpr qsizetype LongestText = 500;

QString utc(const QDateTime& moment)
{
    return moment.toUTC().toString(Qt::ISODateWithMs);
}

std::optional<Alarm> fromJson(const QJsonObject& object)
{
    const QString name = object.value(QLatin1String("alarm")).toString();
    const auto row = std::find_if(AlarmRows.begin(), AlarmRows.end(),
                                  [&](const AlarmRow& each) { return name == QLatin1String(each.name); });
    const QDateTime at = QDateTime::fromString(object.value(QLatin1String("atUtc")).toString(), Qt::ISODateWithMs);
    if (row == AlarmRows.end() || !at.isValid())
        return std::nullopt;
    return Alarm{row->kind, object.value(QLatin1String("over")).toBool(),
                 object.value(QLatin1String("text")).toString().left(LongestText), at.toLocalTime(),
                 object.value(QLatin1String("lastedMs")).toInteger()};
}

} // namespace

void AlarmQueue::add(const Alarm& alarm)
{
    m_waiting.append(alarm);
    if (m_waiting.size() <= MostWaiting)
        return;
    m_waiting.removeAt(m_underWay); // those before it are being sent
    ++m_dropped;
}

qint64 AlarmQueue::dueMs(qint64 nowMs) const
{
    if (m_lastMs == 0 || m_lastMs > nowMs) // never, or with a clock that was put back
        return nowMs;
    const qint64 wait =
        m_failures > 0 ? std::min(FirstRetryMs << std::min(m_failures - 1, 10), LongestRetryMs) : m_intervalMs;
    return m_lastMs + wait;
}

QList<Alarm> AlarmQueue::begin(qint64 nowMs)
{
    m_lastMs = nowMs;
    m_underWay = m_waiting.size();
    return m_waiting;
}

void AlarmQueue::end(bool sent)
{
    const qsizetype done = std::exchange(m_underWay, 0);
    m_failures = sent ? 0 : m_failures + 1;
    if (!sent)
        return;
    m_waiting.remove(0, std::min(done, m_waiting.size()));
    m_dropped = 0;
}

qsizetype AlarmQueue::dropExpired(qint64 nowMs)
{
    if (m_underWay > 0)
        return 0;
    const auto expired = [nowMs](const Alarm& alarm) { return alarm.at.toMSecsSinceEpoch() < nowMs - KeptForMs; };
    return m_waiting.removeIf(expired);
}

void AlarmQueue::clear()
{
    m_waiting.clear();
    m_underWay = m_dropped = 0;
}

QString AlarmQueue::title(const QList<Alarm>& alarms, qsizetype dropped)
{
    if (alarms.size() + dropped == 1)
        return alarms.first().text;
    const QString format = QStringLiteral("yyyy-MM-dd HH:mm");
    return tr("%1 alarms between %2 and %3")
        .arg(QString::number(alarms.size() + dropped), alarms.first().at.toString(format),
             alarms.last().at.toString(format));
}

QString AlarmQueue::text(const QList<Alarm>& alarms, qsizetype dropped)
{
    QStringList lines;
    for (const Alarm& alarm : alarms)
        lines << alarm.at.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss  ")) + alarm.text;
    if (dropped > 0)
        lines << tr("%n earlier one(s) found no room.", nullptr, int(dropped));
    return lines.join(u'\n') + u'\n';
}

QJsonObject AlarmQueue::toJson(const Alarm& alarm)
{
    return {{QStringLiteral("alarm"), QLatin1String(AlarmRows[size_t(alarm.kind)].name)},
            {QStringLiteral("over"), alarm.isOver},
            {QStringLiteral("text"), alarm.text},
            {QStringLiteral("atUtc"), utc(alarm.at)},
            {QStringLiteral("lastedMs"), alarm.durationMs}};
}

QJsonObject AlarmQueue::toJson() const
{
    QJsonArray waiting;
    for (const Alarm& alarm : m_waiting)
        waiting.append(toJson(alarm));
    return {{QStringLiteral("lastMs"), m_lastMs},
            {QStringLiteral("dropped"), m_dropped},
            {QStringLiteral("waiting"), waiting}};
}

void AlarmQueue::readJson(const QJsonObject& object)
{
    m_lastMs = object.value(QLatin1String("lastMs")).toInteger();
    m_dropped = qsizetype(std::clamp<qint64>(object.value(QLatin1String("dropped")).toInteger(), 0, 1'000'000));
    const QJsonArray waiting = object.value(QLatin1String("waiting")).toArray();
    for (const QJsonValue& value : waiting) {
        if (const auto alarm = fromJson(value.toObject()); alarm && m_waiting.size() < MostWaiting)
            m_waiting.append(*alarm);
    }
}
