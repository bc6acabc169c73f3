#include "station/stationstatus.h"

#include "engine/reasons.h"

namespace {

QJsonValue time(const QDateTime& moment)
{
    return moment.isValid() ? QJsonValue(moment.toOffsetFromUtc(moment.offsetFromUtc()).toString(Qt::ISODate))
                            : QJsonValue();
}

QJsonValue text(const QString& value)
{
    return value.isEmpty() ? QJsonValue() : QJsonValue(value);
}

/// What is below 0 is unknown.
QJsonValue number(double value)
{
    return value < 0.0 ? QJsonValue() : QJsonValue(value);
}

} // namespace

RecordingWish RecordingWish::decide(bool automatic, bool inSchedule, bool triggerActive, bool manual)
{
    if (automatic)
        return inSchedule ? RecordingWish{true, Reason::text(Reason::Scheduler)} : RecordingWish{};
    if (triggerActive)
        return {true, Reason::text(Reason::Trigger)};
    if (manual)
        return {true, Reason::text(Reason::Manual)};
    return {};
}

QJsonObject StationStatus::toJson() const
{
    return {{QStringLiteral("version"), version},
            {QStringLiteral("channel"), channel},
            {QStringLiteral("recording"), recording},
            {QStringLiteral("recordingSince"), time(recordingSince)},
            {QStringLiteral("wanted"), wish.wanted},
            {QStringLiteral("wantedBy"), text(wish.by)},
            {QStringLiteral("file"), text(file)},
            {QStringLiteral("leftDb"), recording ? QJsonValue(leftDb) : QJsonValue()},
            {QStringLiteral("rightDb"), recording ? QJsonValue(rightDb) : QJsonValue()},
            {QStringLiteral("source"), text(source)},
            {QStringLiteral("secondsSinceAudio"), number(secondsSinceAudio)},
            {QStringLiteral("trigger"), trigger},
            {QStringLiteral("automatic"), automatic},
            {QStringLiteral("blockEnd"), time(blockEnd)},
            {QStringLiteral("freeBytes"), number(double(freeBytes))},
            {QStringLiteral("copyBehind"), copyEnabled ? QJsonValue(copyBehind) : QJsonValue()},
            {QStringLiteral("lastError"), text(lastError)},
            {QStringLiteral("lastErrorAt"), time(lastErrorAt)},
            {QStringLiteral("lastFile"), text(lastFile)}};
}
