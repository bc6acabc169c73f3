#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

/// One line of the journal. The format is an interface: others read these files for years. A line is a JSON object:
///
/// | member | type | meaning |
/// | --- | --- | --- |
/// | "v" | number | version of this format: 1 |
/// | "seq" | number | number of the line: 1 for the very first, and one more for each |
/// | "utc" | text | when, ISO 8601 with milliseconds and "Z" |
/// | "local" | text | the same in local time with its offset |
/// | "monoMs" | number | a clock that is never set, in ms; it starts anew with the machine |
/// | "event" | text | stable name, such as "file.closed" |
/// | "fields" | object | what happened; units are in the names, such as "lengthMs" |
/// | "text" | text | a sentence about it in the language of the program; may be empty |
/// | "prev" | text | SHA-256 of the line before without its line feed, in hexadecimal; empty in the very first line |
///
/// New events, fields and members may come; none changes its meaning.
struct JournalEntry {
    static constexpr int Version = 1;
    /// Longer texts are cut, in characters.
    static constexpr qsizetype MaxText = 2000;

    QString event;
    QJsonObject fields;
    QString text;
    qint64 utcMs = 0; ///< since the epoch
    int offsetSeconds = 0; ///< local time minus UTC
    qint64 monotonicMs = 0;

    /// The events of log lines. Whatever else the log shows of another event is a line of its own.
    static constexpr char Log[] = "log";
    static constexpr char Error[] = "error";
    bool isLogLine() const { return event == QLatin1String(Log) || event == QLatin1String(Error); }

    /// An entry for this moment.
    static JournalEntry now(const QString& event, const QString& text, const QJsonObject& fields);
    /// The line without its line feed. \param previousHash hash() of the line before; empty for the first.
    QByteArray toLine(qint64 sequence, const QByteArray& previousHash) const;
    /// "seq" of a line; 0 when it is none of the journal.
    static qint64 sequenceOf(const QByteArray& line);
    /// Reads a line; nothing when it is none of the journal, as after a power cut.
    static std::optional<JournalEntry> fromLine(const QByteArray& line);
    /// SHA-256 of a line without its line feed, as the next line carries it in "prev".
    static QByteArray hash(const QByteArray& line);
    /// The file that a line of this moment goes to: one per month in UTC, such as "2026-11.jsonl".
    static QString fileName(qint64 utcMs);
};
