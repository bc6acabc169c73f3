#pragma once

#include <QCoreApplication>
#include <QString>

class Schedule;

/// Whether the disk holds the days that recordings are to be kept. Pure functions of their arguments.
class RetentionText {
    Q_DECLARE_TR_FUNCTIONS(RetentionText)
public:
    struct Question {
        qint64 bytesPerDay = 0; ///< what recording takes; below 1 is taken as 1
        qint64 freeBytes = -1; ///< negative: unknown
        /// What recordings already take in the folder. It counts as room: by the time that the days are over,
        /// each of them has made way for a new one. Without that, a full and well running logger would show red.
        qint64 recordingsBytes = 0;
        bool deleteOld = true; ///< recordings are deleted after so many days:
        int days = 365;
        bool deleteWhenFull = false; ///< or the oldest before that when the disk is full, but none younger than:
        int keepDays = 42;
    };
    struct Answer {
        QString text; ///< one sentence
        bool fits = true; ///< false: the disk will be full before the days are over. True when that is unknown
    };
    static Answer answer(const Question& question);

    /// \param automatic only the hours marked in the schedule are recorded. With none marked, all count: what is
    /// recorded then is recorded by hand.
    static qint64 bytesPerDay(qint64 bytesPerSecond, bool automatic, const Schedule& schedule);
    /// In powers of 1000, like the size of a disk is given, with two or three digits.
    static QString size(qint64 bytes);
};
