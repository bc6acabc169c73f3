#include "ui/retentiontext.h"

#include "settings/schedule.h"

#include <QLocale>

#include <algorithm>

RetentionText::Answer RetentionText::answer(const Question& question)
{
    const qint64 perDay = std::max<qint64>(question.bytesPerDay, 1);
    // With none of the two nothing is ever deleted, and no number of days is enough.
    const int days = question.deleteOld ? question.days : question.keepDays;
    const bool endless = !question.deleteOld && !question.deleteWhenFull;
    const QString size = RetentionText::size(perDay * days);
    const QString need = endless     ? tr("Nothing is ever deleted")
                         : days == 1 ? tr("1 day needs %1").arg(size)
                                     : tr("%1 days need %2").arg(days).arg(size);
    if (question.freeBytes < 0)
        return {tr("%1; how much is free is not known.").arg(need), true};

    const QString free = RetentionText::size(question.freeBytes);
    const QString room =
        question.recordingsBytes > 0
            ? tr("%1 are free, %2 hold recordings").arg(free, RetentionText::size(question.recordingsBytes))
            : tr("%1 are free").arg(free);
    const qint64 enoughFor = (question.freeBytes + question.recordingsBytes) / perDay;
    const QString enough = enoughFor == 1 ? tr("enough for 1 day") : tr("enough for %1 days").arg(enoughFor);
    // Who lets the oldest go when the disk is full relies on the days that are kept in any case.
    const int relied = question.deleteWhenFull ? std::min(days, question.keepDays) : days;
    return {tr("%1; %2: %3.", "days need bytes; bytes are free: enough for days").arg(need, room, enough),
            !endless && enoughFor >= relied};
}

qint64 RetentionText::bytesPerDay(qint64 bytesPerSecond, bool automatic, const Schedule& schedule)
{
    const auto marked = schedule.toString().count(u'1');
    const auto hours = automatic && marked > 0 ? marked : qsizetype(Schedule::Hours);
    return bytesPerSecond * 3600 * hours / Schedule::Days;
}

QString RetentionText::size(qint64 bytes)
{
    double digits = double(bytes);
    while (digits >= 1000)
        digits /= 1000;
    return QLocale().formattedDataSize(bytes, digits < 10 && bytes >= 1000 ? 1 : 0, QLocale::DataSizeSIFormat);
}
