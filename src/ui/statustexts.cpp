#include "ui/statustexts.h"

#include "settings/appsettings.h"
#include "settings/codectable.h"

#include <QUrl>

namespace {

/// The panel is seen by whoever passes by.
QString withoutPassword(const QString& address)
{
    const QUrl url(address);
    return url.userInfo().isEmpty() ? address : url.toDisplayString(QUrl::RemoveUserInfo);
}

} // namespace

QString StatusTexts::source(const AppSettings& settings, const QString& playbackLabel, const QString& recordedInput)
{
    QString kind, name;
    switch (CaptureBackend(settings.backend)) {
    case CaptureBackend::Loopback:
        kind = tr("LOOP");
        name = playbackLabel.isEmpty() ? tr("default playback device") : playbackLabel;
        break;
    case CaptureBackend::Stream:
        kind = tr("NET");
        name = settings.streamUrl.isEmpty() ? tr("no stream URL") : withoutPassword(settings.streamUrl);
        break;
    case CaptureBackend::InputDevice:
    default:
        kind = tr("IN");
        name = settings.deviceLabel.isEmpty() ? tr("default input device")
               : recordedInput.isEmpty()      ? settings.deviceLabel
                                              : recordedInput;
        break;
    }
    return QStringLiteral("%1 · %2").arg(kind, name);
}

QString StatusTexts::codec(const AppSettings& settings)
{
    QString text = codecExtension(settings.codec);
    if (codecRow(settings.codec).size == CodecRow::Size::Bitrate)
        text += QStringLiteral(" %1K").arg(settings.bitrate);
    return text + QLatin1Char(' ') + (settings.channels == 1 ? tr("MONO") : tr("STEREO"));
}

QString StatusTexts::diskLeft(qint64 freeBytes, qint64 bytesPerSecond)
{
    if (freeBytes < 0)
        return tr("unknown");
    const qint64 seconds = freeBytes / qMax<qint64>(bytesPerSecond, 1);
    return tr("%1d %2h").arg(seconds / 86'400).arg(seconds % 86'400 / 3600);
}

QString StatusTexts::copy(bool enabled, int filesBehind)
{
    if (!enabled)
        return {};
    return QStringLiteral(" · ") +
           (filesBehind == 0 ? tr("COPY ok") : tr("COPY %n file(s) behind", nullptr, filesBehind));
}
