#include "settings/appsettings.h"

#include "settings/autostart.h"
#include "settings/channel.h"
#include "settings/codectable.h"
#include "settings/scramble.h"
#include "settings/settingsstore.h"

#include <QDir>
#include <QSettings>

#include <type_traits>

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

} // namespace

/// Walks every key in the order of the store. Both directions use this list, so none can be read and not written.
template <class Self, class Field>
void AppSettings::eachField(Self& self, Field&& field)
{
    field("capture/backend", self.backend);
    field("capture/deviceId", self.deviceId);
    field("capture/deviceLabel", self.deviceLabel);
    field("capture/playbackId", self.playbackId);
    field("capture/asio", self.asio);
    field("capture/streamUrl", self.streamUrl);
    field("capture/streamReconnect", self.streamReconnect);
    field("capture/streamStall", self.streamStall);

    field("levels/inputGainDb", self.inputGainDb);
    field("levels/softLimit", self.softLimit);

    field("format/codec", self.codec, CodecName());
    field("format/sampleRate", self.sampleRate);
    field("format/bitrate", self.bitrate);
    field("format/channels", self.channels, MonoOrStereo());
    field("format/vorbisQuality", self.vorbisQuality);

    field("output/folder", self.outputFolder);
    field("output/template", self.fileTemplate);
    field("output/serial", self.fileSerial);
    field("output/splitMinutes", self.splitMinutes);
    field("output/alignToClock", self.alignToClock);

    field("housekeeping/enabled", self.housekeepingEnabled);
    field("housekeeping/days", self.housekeepingDays);

    field("alerts/silenceNotify", self.silenceNotify);
    field("alerts/email", self.alertEmail);
    field("alerts/subject", self.alertSubject);
    field("alerts/seconds", self.silenceSeconds);
    field("alerts/thresholdDb", self.silenceThresholdDb);
    field("alerts/smtpHost", self.smtpHost);
    field("alerts/smtpUser", self.smtpUser);
    field("alerts/smtpPass", self.smtpPass, Password());
    field("alerts/smtpPort", self.smtpPort);
    field("alerts/from", self.smtpFrom);
    field("alerts/tls", self.smtpTls);

    field("trigger/kind", self.triggerKind);
    field("trigger/serialPort", self.serialPort);
    field("trigger/baud", self.serialBaud);
    field("trigger/line", self.serialLine);
    field("trigger/invert", self.serialInvert);
    field("trigger/onCommand", self.onCommand);
    field("trigger/offCommand", self.offCommand);
    field("trigger/midiDevice", self.midiDevice);
    field("trigger/midiDeviceName", self.midiDeviceName);
    field("trigger/midiChannel", self.midiChannel);
    field("trigger/midiNumber", self.midiNumber);
    field("trigger/holdSeconds", self.holdSeconds);

    field("updates/url", self.updateUrl);
    field("updates/checkAtStartup", self.checkAtStartup);
    field("updates/lastCheck", self.lastCheck);
    field("updates/skippedVersion", self.skippedVersion);

    field("general/startWithSystem", self.startWithSystem);
    field("general/closeAction", self.closeAction);
    field("general/theme", self.theme, ThemeNumber());
    field("general/taskbarButton", self.taskbarButton);
    field("general/restartOnCrash", self.restartOnCrash);
    field("general/language", self.language);

    field("state/auto", self.autoMode);
    field("state/schedule", self.schedule, ScheduleText());
    field("state/geometry", self.geometry);

    field("capture/firstChannel", self.firstChannel);
    field("capture/channelCount", self.channelCount);

    field("housekeeping/deleteWhenFull", self.deleteWhenFull);
    field("housekeeping/keepDays", self.keepDays);

    field("copy/enabled", self.copyEnabled);
    field("copy/folder", self.copyFolder);
    field("copy/days", self.copyDays);

    for (const AlarmRow& row : AlarmRows) {
        auto& alarm = self.alarms[size_t(row.kind)];
        field(row.switchKey, alarm.enabled);
        field(row.delayKey, alarm.delaySeconds);
    }
    field("alarms/diskLowHours", self.diskLowHours);
    field("alarms/mail", self.alarmMail);
    field("alarms/url", self.alarmUrl);
    field("alarms/heartbeatUrl", self.heartbeatUrl);
}

AppSettings& AppSettings::instance()
{
    static AppSettings settings;
    return settings;
}

AppSettings::AppSettings()
    : outputFolder(QDir::toNativeSeparators(Channel::dataFolder() + QStringLiteral("/Log"))), schedule(everyHour())
{
    for (const AlarmRow& row : AlarmRows)
        alarms[size_t(row.kind)].delaySeconds = row.defaultDelaySeconds;
}

void AppSettings::load()
{
    const auto store = SettingsStore::open();
    eachField(
        *this, [&store]<class T, class Form = AsIs<T>>(const char* key, T& field, Form form = {}) {
            field = form.load(store->value(SettingsStore::storedKey(QLatin1String(key)), form.store(field)));
        });
}

void AppSettings::save()
{
    const auto store = SettingsStore::open();
    eachField(
        *this, [&store]<class T, class Form = AsIs<T>>(const char* key, const T& field, Form form = {}) {
            store->setValue(SettingsStore::storedKey(QLatin1String(key)), form.store(field));
        });
    store->sync();
    m_stored = store->status() == QSettings::NoError;
    Q_EMIT changed();
}

void AppSettings::saveSerial()
{
    SettingsStore::open()->setValue(SettingsStore::storedKey(QStringLiteral("output/serial")), fileSerial);
}

QList<std::pair<QString, QVariant>> AppSettings::values() const
{
    QList<std::pair<QString, QVariant>> list;
    eachField(
        *this, [&list]<class T, class Form = AsIs<T>>(const char* key, const T& field, Form form = {}) {
            if constexpr (std::is_same_v<Form, Password>)
                list.append({QString::fromLatin1(key), field});
            else
                list.append({QString::fromLatin1(key), form.store(field)});
        });
    return list;
}

void AppSettings::setValue(const QString& key, const QVariant& value)
{
    eachField(
        *this, [&]<class T, class Form = AsIs<T>>(const char* each, T& field, Form form = {}) {
            if (key != QLatin1String(each))
                return;
            if constexpr (std::is_same_v<Form, Password>)
                field = value.toString();
            else
                field = form.load(value);
        });
}

void AppSettings::setStartWithSystem(bool enable)
{
    Autostart::setEnabled(enable);
}
