#pragma once

#include <QCoreApplication>
#include <QString>

/// Why a recording starts or stops. These texts go to Recorder::start() and stop() and, as they are, into the journal;
/// the log shows them translated.
namespace Reason {
inline constexpr char Manual[] = QT_TRANSLATE_NOOP("Recorder", "manual");
inline constexpr char Scheduler[] = QT_TRANSLATE_NOOP("Recorder", "scheduler");
inline constexpr char Trigger[] = QT_TRANSLATE_NOOP("Recorder", "trigger");
inline constexpr char SettingsChanged[] = QT_TRANSLATE_NOOP("Recorder", "settings changed");
inline constexpr char Exit[] = QT_TRANSLATE_NOOP("Recorder", "exit");
inline constexpr char CaptureError[] = QT_TRANSLATE_NOOP("Recorder", "capture error");
inline constexpr char WriteError[] = QT_TRANSLATE_NOOP("Recorder", "write error");
inline constexpr char SplitFailed[] = QT_TRANSLATE_NOOP("Recorder", "split failed");
inline constexpr char Shutdown[] = QT_TRANSLATE_NOOP("Recorder", "Shutdown");

/// Whether the recording ended by itself, because something failed.
inline bool isError(const QString& reason)
{
    return reason == QLatin1String(CaptureError) || reason == QLatin1String(WriteError) ||
           reason == QLatin1String(SplitFailed);
}

inline QString text(const char* reason)
{
    return QString::fromLatin1(reason);
}
} // namespace Reason
