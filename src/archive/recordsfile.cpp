#include "archive/recordsfile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace {

/// Truncates; what no qint64 can hold becomes the nearest one, because a plain cast of it is undefined.
qint64 toInt64(const QJsonValue& value)
{
    constexpr double Limit = 9223372036854775808.0; // 2^63, the first double out of range
    const double number = value.toDouble();
    if (number >= Limit)
        return std::numeric_limits<qint64>::max();
    if (number < -Limit)
        return std::numeric_limits<qint64>::min();
    return static_cast<qint64>(number);
}

// Writing is done by hand, and only here. The whole index is written whenever a file closes, on the thread that also
// takes the audio: 100,000 records took 0.7 s by way of QJsonObject and QDateTime::toString, and take 0.15 s so.

/// A JSON string, quotes included.
void appendString(QByteArray& json, const QString& text)
{
    const auto isPlain = [](QChar c) { return c >= u' ' && c <= u'~' && c != u'"' && c != u'\\'; };
    if (std::all_of(text.begin(), text.end(), isPlain)) {
        json.append('"').append(text.toLatin1()).append('"');
    } else {
        const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
        json.append(array.mid(1, array.size() - 2));
    }
}

/// Local time as QDateTime::toString(Qt::ISODate) has it; empty when invalid.
QByteArray isoText(const QDateTime& start)
{
    const QDateTime local = start.toLocalTime();
    int year = 0;
    int month = 0;
    int day = 0;
    local.date().getDate(&year, &month, &day);
    if (!local.isValid() || year < 1 || year > 9999)
        return local.toString(Qt::ISODate).toLatin1();
    const int seconds = local.time().msecsSinceStartOfDay() / 1000;
    const std::array<std::pair<int, int>, 7> pairs = {{{0, year / 100},
                                                       {2, year % 100},
                                                       {5, month},
                                                       {8, day},
                                                       {11, seconds / 3600},
                                                       {14, seconds / 60 % 60},
                                                       {17, seconds % 60}}};
    QByteArray text = QByteArrayLiteral("0000-00-00T00:00:00");
    for (const auto& [at, number] : pairs) {
        text[at] = char('0' + number / 10);
        text[at + 1] = char('0' + number % 10);
    }
    return text;
}

} // namespace

QByteArray RecordsFile::toJson(const QList<RecordInfo>& records)
{
    QByteArray json = "[";
    for (const RecordInfo& record : records) {
        if (record.inProgress)
            continue;
        json.append(json.size() > 1 ? ",{\"bytes\":" : "{\"bytes\":").append(QByteArray::number(record.bytes));
        json.append(",\"durationMs\":").append(QByteArray::number(record.durationMs));
        json.append(",\"file\":");
        appendString(json, record.fileName);
        json.append(",\"start\":\"").append(isoText(record.start)).append("\"}");
    }
    return json.append(']');
}

QList<RecordInfo> RecordsFile::fromJson(const QByteArray& json, const QString& folder)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    const QJsonArray array =
        document.isArray() ? document.array() : document.object().value(QLatin1String("records")).toArray();
    QList<RecordInfo> records;
    records.reserve(array.size());
    for (const QJsonValue& element : array) {
        const QJsonObject object = element.toObject();
        RecordInfo record;
        record.fileName = object.value(QLatin1String("file")).toString();
        record.filePath = folder + u'/' + record.fileName;
        record.start =
            QDateTime::fromString(object.value(QLatin1String("start")).toString(), Qt::ISODate).toLocalTime();
        record.durationMs = toInt64(object.value(QLatin1String("durationMs")));
        record.bytes = toInt64(object.value(QLatin1String("bytes")));
        records.append(record);
    }
    return records;
}
