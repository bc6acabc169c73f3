#pragma once

#include <QCoreApplication>
#include <QDateTime>
#include <QList>
#include <QString>

class QLoggingCategory;

/// Keeps a row of failing attempts to record to one line of the log per error, which tells how many there were. The
/// other lines of an attempt wait until it is known to work, and are forgotten when it fails.
class AttemptLog {
    Q_DECLARE_TR_FUNCTIONS(AttemptLog)
public:
    struct Line {
        const QLoggingCategory* category;
        QString text;
    };
    /// More errors than take turns in one row of failures.
    static constexpr qsizetype ErrorsAtMost = 8;
    /// More lines than one attempt has.
    static constexpr qsizetype HeldAtMost = 20;

    /// Whether a failure was the last thing that happened.
    bool isFailing() const { return !m_errors.isEmpty(); }
    /// How many there were in this row.
    int failures() const;
    /// When the first one was; only while isFailing().
    const QDateTime& since() const { return m_errors.first().since; }

    /// A failure. \return whether it needs a line of its own; else that of this text is to be brought up to date.
    bool addFailure(const QString& text, const QDateTime& now);
    /// The line of this error as it should be.
    QString line(const QString& text) const;

    void hold(const Line& line);
    void forgetHeld() { m_held.clear(); }
    /// The row is over. \return the lines that were held, to be shown now if the attempt worked.
    QList<Line> end();

private:
    struct Error {
        QString text;
        QDateTime since;
        int failures = 0;
    };
    qsizetype indexOf(const QString& text) const;

    QList<Error> m_errors; ///< of this row, in the order in which they first came
    QList<Line> m_held;
};
