#include "triggers/seriallines.h"

std::optional<QString> SerialLines::next()
{
    const qsizetype end = m_pending.indexOf('\n');
    if (end < 0) {
        if (m_pending.size() > MaxPending)
            m_pending.clear();
        return {};
    }
    const QString line = QString::fromLatin1(m_pending.constData(), end).trimmed();
    m_pending.remove(0, end + 1);
    return line;
}

SerialCommand serialCommand(const QString& line, const QString& onCommand, const QString& offCommand)
{
    if (line.isEmpty())
        return SerialCommand::None;
    if (line.compare(onCommand, Qt::CaseInsensitive) == 0)
        return SerialCommand::On;
    if (line.compare(offCommand, Qt::CaseInsensitive) == 0)
        return SerialCommand::Off;
    return SerialCommand::None;
}
