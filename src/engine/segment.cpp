#include "engine/segment.h"

QDateTime Segment::end(const QDateTime& start, int splitMinutes, bool alignToClock)
{
    if (splitMinutes < 1)
        return {};
    if (!alignToClock)
        return start.addSecs(qint64(splitMinutes) * 60);

    constexpr qint64 MinutesPerDay = 24 * 60;
    const qint64 minute = start.time().hour() * 60 + start.time().minute();
    const qint64 boundary = (minute / splitMinutes + 1) * splitMinutes; // minutes after midnight

    const qint64 intoMinute = start.time().second() * 1000 + start.time().msec();
    const QDateTime byLength = start.addMSecs((boundary - minute) * 60'000 - intoMinute);
    const QTime boundaryTime = QTime::fromMSecsSinceStartOfDay(int(boundary % MinutesPerDay) * 60'000);
    const QDateTime byClock(start.date().addDays(boundary / MinutesPerDay), boundaryTime);

    // The two differ only across a daylight-saving change. Then the boundary on the clock may be an hour further away
    // than a segment is long, or, in the hour that comes twice, already behind.
    return byClock.isValid() && byClock > start && byClock < byLength ? byClock : byLength;
}
