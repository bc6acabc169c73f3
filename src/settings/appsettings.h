#pragma once

#include "settings/alarmkind.h"
#include "settings/choices.h"
#include "settings/codectable.h"
#include "settings/schedule.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <QVariant>

#include <array>
#include <utility>

/// Every setting of the program, as plain fields that everybody reads directly; the one place that knows the store.
/// Change fields, then call save(). User-interface thread only.
class AppSettings : public QObject {
    Q_OBJECT
public:
    /// The single object; holds the defaults until load() is called.
    static AppSettings& instance();

    /// Reads every key; a key that is missing leaves its field alone. Called once, before any window exists.
    void load();
    /// Writes every key, waits for the store to take them and emits changed(). Failures of the store are ignored.
    void save();
    /// Whether the store has taken the last save().
    bool isStored() const { return m_stored; }
    /// Writes the serial number alone: what else the store holds may have been edited since it was read.
    void saveSerial();

    /// Every key with its value as the store holds it, but the mail password in plain; in the order of the store.
    QList<std::pair<QString, QVariant>> values() const;
    /// Changes the field of this key to a value of that form. Neither saves nor checks; an unknown key changes nothing.
    void setValue(const QString& key, const QVariant& value);

    /// Writes or removes the entry that starts the program when the user logs on; leaves the field alone.
    static void setStartWithSystem(bool enable);

    // capture
    int backend = int(CaptureBackend::Loopback);
    QByteArray deviceId; ///< input device, as the multimedia framework names it; empty: the default device
    QString deviceLabel; ///< its display name
    QByteArray playbackId; ///< playback device whose mix is captured; empty: the default one
    bool asio = false; ///< reserved
    QString streamUrl; ///< internet stream
    bool streamReconnect = true;
    int streamStall = 15; ///< seconds without data after which a stream counts as stalled

    // levels
    double inputGainDb = 0.0;
    bool softLimit = true; ///< soft limiter after the gain

    // format
    int codec = Mp3; ///< Codec
    int sampleRate = 44100; ///< Hz
    int bitrate = 64; ///< kbit/s, lossy codecs
    int channels = 1; ///< 1 or 2
    int vorbisQuality = 3; ///< -1 to 10

    // output
    QString outputFolder; ///< native separators; by default "Log" in the application's data folder
    QString fileTemplate = QStringLiteral("%y%m%d-%hh%mm%ss");
    int fileSerial = 1; ///< 1 to 9999, inserted by the token %sn
    int splitMinutes = 60; ///< segment length; below 1: one file per recording
    bool alignToClock = true; ///< segments end on multiples of their length since midnight

    // housekeeping
    bool housekeepingEnabled = true;
    int housekeepingDays = 365;

    // alerts
    bool silenceNotify = false;
    QString alertEmail;
    QString alertSubject = QStringLiteral("Tidewell - Silence");
    int silenceSeconds = 10;
    double silenceThresholdDb = -60.0; ///< dBFS
    QString smtpHost;
    QString smtpUser;
    QString smtpPass; ///< plain in memory, scrambled in the store
    int smtpPort = 465;
    QString smtpFrom;
    bool smtpTls = true;

    // trigger
    int triggerKind = int(TriggerKind::None);
    QString serialPort;
    int serialBaud = 9600;
    int serialLine = 0;
    bool serialInvert = false;
    QString onCommand = QStringLiteral("REC ON");
    QString offCommand = QStringLiteral("REC OFF");
    int midiDevice = 0;
    QString midiDeviceName;
    int midiChannel = 0;
    int midiNumber = 60;
    int holdSeconds = 5; ///< run-on time after the trigger's release

    // updates
    QString updateUrl; ///< empty: the built-in address
    bool checkAtStartup = true;
    QDateTime lastCheck; ///< null: never
    QString skippedVersion;

    // general
    bool startWithSystem = false;
    int closeAction = int(CloseAction::Ask);
    int theme = Theme::FollowSystem;
    bool taskbarButton = true;
    bool restartOnCrash = false;
    QString language; ///< locale name; empty: the system's

    // state
    bool autoMode = true;
    Schedule schedule; ///< every hour on by default
    QByteArray geometry;

    // capture: which channels of the input device
    int firstChannel = 0; ///< its number, 1 to 64; anything else: all channels, as the device delivers them
    int channelCount = 2; ///< 1: firstChannel alone; anything else: firstChannel and the next one as a pair

    // housekeeping: what is deleted for want of space
    bool deleteWhenFull = false; ///< the oldest recordings go when the disk is full
    int keepDays = 42; ///< what is younger never goes for want of space

    // copy
    bool copyEnabled = false;
    QString copyFolder; ///< native separators; empty: no second copy
    int copyDays = 365; ///< retention of the copies

    // alarms
    std::array<AlarmSetting, AlarmCount> alarms; ///< by AlarmKind
    int diskLowHours = 72; ///< recording time left below which the disk counts as low
    bool alarmMail = false; ///< by the mail settings of the silence alert
    QString alarmUrl; ///< gets each alarm by HTTP POST; empty: none
    QString heartbeatUrl; ///< asked for once a minute while audio is written; empty: none

Q_SIGNALS:
    /// After every save().
    void changed();

private:
    AppSettings();

    bool m_stored = true;

    template <class Self, class Field>
    static void eachField(Self& self, Field&& field);
};
