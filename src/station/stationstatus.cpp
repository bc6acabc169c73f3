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

StationStatus::Word StationStatus::word() const
{
    if (tryingAgain)
        return Word::TryingAgain;
    if (!recording)
        return wish.wanted ? Word::NotRecording : Word::Idle;
    if (noAudio)
        return Word::NoAudio;
    if (silentSince.isValid())
        return Word::Silence;
    return diskLow ? Word::Disk : copyLate ? Word::Copy : Word::Recording;
}

QString StationStatus::wordText() const
{
    switch (word()) {
    case Word::Idle:
    case Word::NotRecording:
        return tr("NOT RECORDING");
    case Word::Recording:
        return tr("RECORDING");
    case Word::Copy:
        return tr("COPY");
    case Word::Disk:
        return tr("DISK");
    case Word::Silence:
        return tr("SILENCE since %1").arg(silentSince.toString(QStringLiteral("HH:mm")));
    case Word::NoAudio:
        return tr("NO AUDIO");
    case Word::TryingAgain:
        return tr("TRYING AGAIN");
    }
    return {};
}

bool StationStatus::isAlarming() const
{
    return word() != Word::Idle && word() != Word::Recording;
}

AlarmBoard::Conditions StationStatus::alarmConditions() const
{
    AlarmBoard::Conditions conditions{};
    const auto set = [&conditions](AlarmKind kind, bool holds) { conditions[size_t(kind)] = holds; };
    set(AlarmKind::NoAudio, noAudio);
    set(AlarmKind::Silence, silentSince.isValid());
    set(AlarmKind::ChannelDead, channelDead);
    set(AlarmKind::LevelStuck, levelStuck);
    set(AlarmKind::NotRecording, wish.wanted && (!recording || tryingAgain));
    set(AlarmKind::CannotWrite, cannotWrite);
    set(AlarmKind::DiskLow, diskLow);
    set(AlarmKind::CopyBehind, copyEnabled && copyBehind > 0);
    set(AlarmKind::TriggerLost, triggerLost);
    return conditions;
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
            {QStringLiteral("paused"), paused},
            {QStringLiteral("pausedUntil"), time(pausedUntil)},
            {QStringLiteral("automatic"), automatic},
            {QStringLiteral("blockEnd"), time(blockEnd)},
            {QStringLiteral("freeBytes"), number(double(freeBytes))},
            {QStringLiteral("state"), text(wordText())},
            {QStringLiteral("alarming"), isAlarming()},
            {QStringLiteral("tryingAgain"), tryingAgain},
            {QStringLiteral("noAudio"), noAudio},
            {QStringLiteral("silentSince"), time(silentSince)},
            {QStringLiteral("diskLow"), diskLow},
            {QStringLiteral("copyBehind"), copyEnabled ? QJsonValue(copyBehind) : QJsonValue()},
            {QStringLiteral("lastError"), text(lastError)},
            {QStringLiteral("lastErrorAt"), time(lastErrorAt)},
            {QStringLiteral("lastFile"), text(lastFile)}};
}
