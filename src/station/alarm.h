#pragma once

#include "settings/alarmkind.h"

#include <QDateTime>
#include <QString>

/// Something that the operator must know, or that it is over.
struct Alarm {
    AlarmKind kind = AlarmKind::NoAudio;
    bool isOver = false;
    QString text; ///< a sentence
    QDateTime at; ///< when it began, or when it was over
    qint64 durationMs = 0; ///< how long it lasted, once it is over
};
