#include "ui/statustexts.h"

#include "app/appsettings.h"
#include "capture/capturefactory.h"
#include "capture/loopback.h"
#include "encode/codecs.h"

#include <QDir>
#include <QStorageInfo>
#include <QUrl>

#include <algorithm>

namespace {

/// The panel is seen by whoever passes by.
QString withoutPassword(const QString& address)
{
    const QUrl url(address);
    return url.userInfo().isEmpty() ? address : url.toDisplayString(QUrl::RemoveUserInfo);
}

} // namespace

QString StatusTexts::source(const AppSettings& settings, const QString& playbackLabel)
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
        name = settings.deviceLabel.isEmpty() ? tr("default input device") : settings.deviceLabel;
        break;
    }
    return QStringLiteral("%1 · %2").arg(kind, name);
}

QString StatusTexts::playbackLabel(const QByteArray& playbackId)
{
    if (playbackId.isEmpty())
        return {};
    const QList<PlaybackDevice> devices = playbackDevices();
    const auto found = std::find_if(devices.cbegin(), devices.cend(),
                                    [&](const PlaybackDevice& device) { return device.id == playbackId; });
    return found != devices.cend() ? found->name : QString::fromUtf8(playbackId);
}

QString StatusTexts::codec(const AppSettings& settings)
{
    QString text = codecExtension(settings.codec);
    if (text == QLatin1String("mp3") || text == QLatin1String("m4a"))
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

qint64 StatusTexts::freeBytes(const QString& folder)
{
    QDir().mkpath(folder);
    const QStorageInfo volume(folder);
    return volume.isValid() && volume.isReady() ? volume.bytesAvailable() : -1;
}
