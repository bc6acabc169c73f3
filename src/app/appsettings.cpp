#include "app/appsettings.h"

#include "encode/codecs.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

namespace {

/// How a field and its stored value turn into each other. Most are stored as they are.
template <class T>
struct AsIs {
    static QVariant store(const T& value) { return QVariant::fromValue(value); }
    static T load(const QVariant& stored) { return stored.value<T>(); }
};

struct CodecName {
    static QVariant store(int codec) { return codecExtension(codec); }
    static int load(const QVariant& stored) { return codecFromExtension(stored.toString()); }
};

struct MonoOrStereo {
    static QVariant store(int channels) { return channels; }
    static int load(const QVariant& stored) { return stored.toInt() > 1 ? 2 : 1; }
};

struct ThemeNumber {
    static QVariant store(int theme) { return theme; }
    static int load(const QVariant& stored)
    {
        const int theme = stored.toInt();
        return theme >= 0 && theme <= 2 ? theme : 0;
    }
};

struct Password {
    static QVariant store(const QString& password) { return Scramble::scramble(password); }
    static QString load(const QVariant& stored) { return Scramble::unscramble(stored.toString()); }
};

Schedule everyHour()
{
    Schedule schedule;
    schedule.setAll(true);
    return schedule;
}

struct ScheduleText {
    static QVariant store(const Schedule& schedule) { return schedule.toString(); }
    static Schedule load(const QVariant& stored)
    {
        const QString text = stored.toString();
        return text.isEmpty() ? everyHour() : Schedule::fromString(text);
    }
};

QByteArray xorWithKey(QByteArray bytes)
{
    static const QByteArray key = QByteArrayLiteral("Marrowgate-Kq7Zp1");
    for (qsizetype i = 0; i < bytes.size(); ++i)
        bytes[i] = char(bytes.at(i) ^ key.at(i % key.size()));
    return bytes;
}

} // namespace

/// Walks every key in the order of the store. Both directions use this list, so none can be read and not written.
template <class Field>
void AppSettings::eachField(Field&& field)
{
    field("capture/backend", backend);
    field("capture/deviceId", deviceId);
    field("capture/deviceLabel", deviceLabel);
    field("capture/playbackId", playbackId);
    field("capture/asio", asio);
    field("capture/streamUrl", streamUrl);
    field("capture/streamReconnect", streamReconnect);
    field("capture/streamStall", streamStall);

    field("levels/inputGainDb", inputGainDb);
    field("levels/softLimit", softLimit);

    field("format/codec", codec, CodecName());
    field("format/sampleRate", sampleRate);
    field("format/bitrate", bitrate);
    field("format/channels", channels, MonoOrStereo());
    field("format/vorbisQuality", vorbisQuality);

    field("output/folder", outputFolder);
    field("output/template", fileTemplate);
    field("output/serial", fileSerial);
    field("output/splitMinutes", splitMinutes);
    field("output/alignToClock", alignToClock);

    field("housekeeping/enabled", housekeepingEnabled);
    field("housekeeping/days", housekeepingDays);

    field("alerts/silenceNotify", silenceNotify);
    field("alerts/email", alertEmail);
    field("alerts/subject", alertSubject);
    field("alerts/seconds", silenceSeconds);
    field("alerts/thresholdDb", silenceThresholdDb);
    field("alerts/smtpHost", smtpHost);
    field("alerts/smtpUser", smtpUser);
    field("alerts/smtpPass", smtpPass, Password());
    field("alerts/smtpPort", smtpPort);
    field("alerts/from", smtpFrom);
    field("alerts/tls", smtpTls);

    field("trigger/kind", triggerKind);
    field("trigger/serialPort", serialPort);
    field("trigger/baud", serialBaud);
    field("trigger/line", serialLine);
    field("trigger/invert", serialInvert);
    field("trigger/onCommand", onCommand);
    field("trigger/offCommand", offCommand);
    field("trigger/midiDevice", midiDevice);
    field("trigger/midiDeviceName", midiDeviceName);
    field("trigger/midiChannel", midiChannel);
    field("trigger/midiNumber", midiNumber);
    field("trigger/holdSeconds", holdSeconds);

    field("updates/url", updateUrl);
    field("updates/checkAtStartup", checkAtStartup);
    field("updates/lastCheck", lastCheck);
    field("updates/skippedVersion", skippedVersion);

    field("general/startWithSystem", startWithSystem);
    field("general/closeAction", closeAction);
    field("general/theme", theme, ThemeNumber());
    field("general/taskbarButton", taskbarButton);
    field("general/restartOnCrash", restartOnCrash);
    field("general/language", language);

    field("state/auto", autoMode);
    field("state/schedule", schedule, ScheduleText());
    field("state/geometry", geometry);
}

AppSettings& AppSettings::instance()
{
    static AppSettings settings;
    return settings;
}

AppSettings::AppSettings()
    : outputFolder(QDir::toNativeSeparators(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
                                            QStringLiteral("/Log"))),
      schedule(everyHour())
{
}

void AppSettings::load()
{
    const QSettings store;
    eachField([&store]<class T, class Form = AsIs<T>>(const char* key, T& field, Form form = {}) {
        field = form.load(store.value(storedKey(QLatin1String(key)), form.store(field)));
    });
}

void AppSettings::save()
{
    QSettings store;
    eachField([&store]<class T, class Form = AsIs<T>>(const char* key, T& field, Form form = {}) {
        store.setValue(storedKey(QLatin1String(key)), form.store(field));
    });
    store.sync();
    Q_EMIT changed();
}

QString Scramble::scramble(const QString& password)
{
    return QString::fromLatin1(xorWithKey(password.toUtf8()).toBase64());
}

QString Scramble::unscramble(const QString& stored)
{
    return QString::fromUtf8(xorWithKey(QByteArray::fromBase64(stored.toLatin1())));
}
