#include "station/attemptlog.h"

#include <utility>

bool AttemptLog::addFailure(const QString& text, const QDateTime& now)
{
    m_held.clear();
    const bool isNew = m_failures == 0 || text != m_text;
    if (isNew) {
        m_text = text;
        m_since = now;
        m_failures = 0;
    }
    ++m_failures;
    return isNew;
}

QString AttemptLog::line() const
{
    if (m_failures < 2)
        return m_text;
    return tr("%1 (tried %2 times since %3)")
        .arg(m_text, QString::number(m_failures), m_since.toString(QStringLiteral("HH:mm")));
}

void AttemptLog::hold(const Line& line)
{
    if (m_held.size() < HeldAtMost)
        m_held.append(line);
}

QList<AttemptLog::Line> AttemptLog::end()
{
    m_failures = 0;
    return std::exchange(m_held, {});
}
