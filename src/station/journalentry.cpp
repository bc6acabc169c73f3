#include "station/journalentry.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QJsonDocument>
#include <QTimeZone>

#include <chrono>

namespace {

QString isoLocal(qint64 utcMs, int offsetSeconds)
{
    return QDateTime::fromMSecsSinceEpoch(utcMs, Qt::OffsetFromUTC, offsetSeconds).toString(Qt::ISODateWithMs);
}

QJsonObject bounded(const QJsonObject& fields)
{
    QJsonObject copy = fields;
    for (QJsonValueRef field : copy) {
        if (field.isString() && field.toString().size() > JournalEntry::MaxText)
            field = field.toString().left(JournalEntry::MaxText);
    }
    return copy;
}

} // namespace

JournalEntry JournalEntry::now(const QString& event, const QString& text, const QJsonObject& fields)
{
    const QDateTime local = QDateTime::currentDateTime();
    JournalEntry entry;
    entry.event = event;
    entry.fields = fields;
    entry.text = text;
    entry.utcMs = local.toMSecsSinceEpoch();
    entry.offsetSeconds = local.offsetFromUtc();
    entry.monotonicMs =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
            .count();
    return entry;
}

QByteArray JournalEntry::toLine(qint64 sequence, const QByteArray& previousHash) const
{
    return QJsonDocument(QJsonObject{{QStringLiteral("v"), Version},
                                     {QStringLiteral("seq"), sequence},
                                     {QStringLiteral("utc"),
                                      QDateTime::fromMSecsSinceEpoch(utcMs, Qt::UTC).toString(Qt::ISODateWithMs)},
                                     {QStringLiteral("local"), isoLocal(utcMs, offsetSeconds)},
                                     {QStringLiteral("monoMs"), monotonicMs},
                                     {QStringLiteral("event"), event},
                                     {QStringLiteral("fields"), bounded(fields)},
                                     {QStringLiteral("text"), text.left(MaxText)},
                                     {QStringLiteral("prev"), QString::fromLatin1(previousHash)}})
        .toJson(QJsonDocument::Compact);
}

std::optional<JournalEntry> JournalEntry::fromLine(const QByteArray& line)
{
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    const QDateTime local = QDateTime::fromString(object.value(QLatin1String("local")).toString(), Qt::ISODateWithMs);
    JournalEntry entry;
    entry.event = object.value(QLatin1String("event")).toString();
    if (entry.event.isEmpty() || !local.isValid())
        return std::nullopt;
    entry.fields = object.value(QLatin1String("fields")).toObject();
    entry.text = object.value(QLatin1String("text")).toString();
    entry.utcMs = local.toMSecsSinceEpoch();
    entry.offsetSeconds = local.offsetFromUtc();
    entry.monotonicMs = object.value(QLatin1String("monoMs")).toInteger();
    return entry;
}

qint64 JournalEntry::sequenceOf(const QByteArray& line)
{
    return QJsonDocument::fromJson(line).object().value(QLatin1String("seq")).toInteger();
}

QByteArray JournalEntry::hash(const QByteArray& line)
{
    return QCryptographicHash::hash(line, QCryptographicHash::Sha256).toHex();
}

QString JournalEntry::fileName(qint64 utcMs)
{
    return QDateTime::fromMSecsSinceEpoch(utcMs, Qt::UTC).toString(QStringLiteral("yyyy-MM'.jsonl'"));
}
