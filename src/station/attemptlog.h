#pragma once

#include <QCoreApplication>
#include <QDateTime>
#include <QList>
#include <QString>

class QLoggingCategory;

/// Keeps a row of failing attempts to record to one line of the log, which tells how many there were. The other lines
/// of an attempt wait until it is known to work, and are forgotten when it fails.
class AttemptLog {
    Q_DECLARE_TR_FUNCTIONS(AttemptLog)
public:
    struct Line {
        const QLoggingCategory* category;
        QString text;
    };
    /// More lines than one attempt has.
    static constexpr qsizetype HeldAtMost = 20;

    /// Whether a failure was the last thing that happened.
    bool isFailing() const { return m_failures > 0; }
    int failures() const { return m_failures; }
    const QDateTime& since() const { return m_since; }

    /// A failure. \return whether it needs a line of its own; else the last one is to be brought up to date: line().
    bool addFailure(const QString& text, const QDateTime& now);
    QString line() const;

    void hold(const Line& line);
    void forgetHeld() { m_held.clear(); }
    /// The row is over. \return the lines that were held, to be shown now if the attempt worked.
    QList<Line> end();

private:
    QString m_text;
    QDateTime m_since; ///< the first failure
    int m_failures = 0;
    QList<Line> m_held;
};
