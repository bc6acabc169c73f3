#include "station/attemptlog.h"

#include <algorithm>
#include <numeric>
#include <utility>

qsizetype AttemptLog::indexOf(const QString& text) const
{
    const auto found =
        std::find_if(m_errors.begin(), m_errors.end(), [&](const Error& error) { return error.text == text; });
    return found - m_errors.begin();
}

int AttemptLog::failures() const
{
    return std::accumulate(m_errors.begin(), m_errors.end(), 0,
                           [](int sum, const Error& error) { return sum + error.failures; });
}

bool AttemptLog::addFailure(const QString& text, const QDateTime& now)
{
    m_held.clear();
    const qsizetype index = indexOf(text);
    const bool isNew = index == m_errors.size();
    if (isNew && index == ErrorsAtMost) {
        ++m_errors.last().failures;
        return false;
    }
    if (isNew)
        m_errors.append({text, now, 0});
    ++m_errors[index].failures;
    return isNew;
}

QString AttemptLog::line(const QString& text) const
{
    const qsizetype index = indexOf(text);
    if (index == m_errors.size() || m_errors[index].failures < 2)
        return text;
    const Error& error = m_errors[index];
    return tr("%1 (tried %2 times since %3)")
        .arg(text, QString::number(error.failures), error.since.toString(QStringLiteral("HH:mm")));
}

void AttemptLog::hold(const Line& line)
{
    if (m_held.size() < HeldAtMost)
        m_held.append(line);
}

QList<AttemptLog::Line> AttemptLog::end()
{
    m_errors.clear();
    return std::exchange(m_held, {});
}
