#include "station/journalfeed.h"

#include "archive/housekeeper.h"
#include "archive/recordinfo.h"
#include "archive/spacekeeper.h"
#include "engine/recorder.h"
#include "net/silencealert.h"
#include "settings/appsettings.h"
#include "settings/channel.h"
#include "settings/settingstext.h"
#include "station/alarmboard.h"
#include "station/alarmoutbox.h"
#include "station/archivecopy.h"
#include "station/filehasher.h"
#include "station/journal.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSysInfo>
#include <QTimeZone>

#include <utility>

namespace {

QString name(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

/// What the program changes by itself, again and again.
bool isJournalled(const QString& key)
{
    return !SettingsText::isSecret(key) && key != QLatin1String("output/serial") &&
           key != QLatin1String("state/geometry") && key != QLatin1String("updates/lastCheck");
}

QJsonObject settingsNow()
{
    QJsonObject object;
    for (const auto& [key, value] : AppSettings::instance().values()) {
        if (!isJournalled(key))
            continue;
        const QJsonValue stored = value.toJsonValue();
        const bool isText = !stored.isBool() && !stored.isDouble();
        object.insert(key, isText ? SettingsText::withoutSecrets(AppSettings::instance(), key) : stored);
    }
    return object;
}

} // namespace

JournalFeed::JournalFeed(Journal& journal, QObject* parent)
    : QObject(parent), m_journal(journal), m_hasher(new FileHasher(this))
{
    connect(m_hasher, &FileHasher::hashed, this, &JournalFeed::onHashed);
    connect(&journal, &Journal::unhashedFound, this, [this](const QStringList& files) {
        for (const QString& file : files)
            m_hasher->add(QDir(AppSettings::instance().outputFolder).filePath(file));
    });
}

void JournalFeed::watch(Recorder* recorder)
{
    m_recorder = recorder;
    connect(recorder, &Recorder::started, this, [this](const QString& reason) {
        writeRun(name("recording.started"), {{name("reason"), reason}});
    });
    connect(recorder, &Recorder::stopped, this, [this](const QString& reason) {
        writeRun(name("recording.stopped"), {{name("reason"), reason}});
    });
    connect(recorder, &Recorder::fileStarted, this, &JournalFeed::onFileStarted);
    connect(recorder, &Recorder::fileFinished, this, &JournalFeed::onFileFinished);
    connect(recorder, &Recorder::silenceDetected, this, [this](int seconds) {
        m_journal.write(name("silence.began"), {}, {{name("afterSeconds"), seconds}});
    });
    connect(recorder, &Recorder::audioRestored, this, [this] { m_journal.write(name("silence.ended"), {}); });
    connect(recorder, &Recorder::timeMadeUp, this, [this](qint64 ms) {
        m_journal.write(name("outage.madeUp"), tr("%1 s of an outage are made up by silence").arg(ms / 1000),
                        {{name("lengthMs"), ms}});
    });
}

void JournalFeed::watch(Housekeeper* housekeeper)
{
    connect(housekeeper, &Housekeeper::deleted, this,
            [this](const QString& path) { fileDeleted(path, name("retention")); });
}

void JournalFeed::watch(SpaceKeeper* keeper)
{
    connect(keeper, &SpaceKeeper::deleted, this, [this](const QString& path) { fileDeleted(path, name("space")); });
}

void JournalFeed::watch(ArchiveCopy* copy)
{
    connect(copy, &ArchiveCopy::copied, this, [this](const CopyEntry& entry) {
        m_journal.write(name("file.copied"), {},
                        {{name("file"), entry.file},
                         {name("copy"), entry.copy},
                         {name("bytes"), entry.bytes},
                         {name("sha256"), QString::fromLatin1(entry.sha256)}});
    });
    connect(copy, &ArchiveCopy::deleted, this, [this](const QString& copyName) {
        m_journal.write(name("copy.deleted"), {}, {{name("copy"), copyName}, {name("reason"), name("retention")}});
    });
}

void JournalFeed::watch(SilenceAlert* alert)
{
    connect(alert, &SilenceAlert::sending, this, [this] {
        m_journal.write(name("alarm.waiting"), {}, {{name("alarm"), name("silence")}});
    });
    connect(alert, &SilenceAlert::finished, this, [this](bool sent, const QString& answer) {
        m_journal.write(sent ? name("alarm.sent") : name("alarm.failed"), answer,
                        {{name("alarm"), name("silence")}, {name("way"), name("mail")}});
    });
}

void JournalFeed::watch(AlarmBoard* alarms)
{
    const auto alarmName = [](const Alarm& alarm) { return QLatin1String(AlarmRows[size_t(alarm.kind)].name); };
    connect(alarms, &AlarmBoard::raised, this, [this, alarmName](const Alarm& alarm) {
        m_journal.write(
            name("alarm.raised"), alarm.text,
            {{name("alarm"), alarmName(alarm)}, {name("sinceUtc"), alarm.at.toUTC().toString(Qt::ISODateWithMs)}});
    });
    connect(alarms, &AlarmBoard::over, this, [this, alarmName](const Alarm& alarm) {
        m_journal.write(name("alarm.over"), alarm.text,
                        {{name("alarm"), alarmName(alarm)}, {name("lengthMs"), alarm.durationMs}});
    });
}

void JournalFeed::watch(AlarmOutbox* outbox)
{
    connect(outbox, &AlarmOutbox::finished, this,
            [this](bool sent, const QString& way, int alarms, const QString& answer) {
                m_journal.write(sent ? name("alarm.sent") : name("alarm.failed"), answer,
                                {{name("way"), way}, {name("alarms"), alarms}});
            });
}

void JournalFeed::writeRun(const QString& event, const QJsonObject& fields)
{
    constexpr qsizetype HeldAtMost = 20; // more than one attempt has
    if (!m_holding)
        m_journal.write(event, {}, fields);
    else if (m_held.size() < HeldAtMost)
        m_held.append(JournalEntry::now(event, {}, fields));
}

void JournalFeed::keep()
{
    m_holding = false;
    for (const JournalEntry& entry : std::exchange(m_held, {}))
        m_journal.write(entry);
}

void JournalFeed::retried(int failures, const QDateTime& since)
{
    m_journal.write(name("recording.retried"), {},
                    {{name("failures"), failures}, {name("sinceUtc"), since.toUTC().toString(Qt::ISODateWithMs)}});
}

void JournalFeed::programStarted()
{
    m_journal.write(name("program.started"), {},
                    {{name("version"), QCoreApplication::applicationVersion()},
                     {name("channel"), Channel::name()},
                     {name("host"), QSysInfo::machineHostName()},
                     {name("system"), QSysInfo::prettyProductName()},
                     {name("zone"), QString::fromUtf8(QTimeZone::systemTimeZoneId())},
                     {name("pid"), QCoreApplication::applicationPid()}});
    settingsChanged();
    m_journal.findUnhashed();
}

void JournalFeed::programCrashed(const QString& reportPath)
{
    m_journal.write(name("program.crashed"), {}, {{name("report"), QFileInfo(reportPath).fileName()}});
}

void JournalFeed::programEnded()
{
    m_journal.write(name("program.ended"), {},
                    {{name("version"), QCoreApplication::applicationVersion()},
                     {name("zone"), QString::fromUtf8(QTimeZone::systemTimeZoneId())}});
}

void JournalFeed::wishChanged(const RecordingWish& wish)
{
    m_journal.write(wish.wanted ? name("recording.wanted") : name("recording.notWanted"), {}, {{name("by"), wish.by}});
}

/// A source may know the name of its device only when it delivers.
void JournalFeed::audioBegan()
{
    m_journal.write(
        name("device.taken"), {},
        {{name("backend"), AppSettings::instance().backend}, {name("source"), m_recorder->sourceDescription()}});
}

void JournalFeed::audioLost()
{
    m_journal.write(name("audio.none"), tr("No audio arrives from the source"),
                    {{name("source"), m_recorder->sourceDescription()}});
}

void JournalFeed::audioReturned(qint64 ms)
{
    m_journal.write(name("audio.again"), tr("Audio arrives again after %1 s").arg(ms / 1000), {{name("afterMs"), ms}});
}

void JournalFeed::clockSet(qint64 byMs)
{
    m_journal.write(name("clock.set"),
                    tr("The clock was set by %1 s, or the computer slept").arg(QLocale().toString(double(byMs) / 1000)),
                    {{name("byMs"), byMs}});
}

void JournalFeed::overloaded()
{
    m_journal.write(name("overload"), {});
}

void JournalFeed::paused(const QDateTime& until)
{
    QJsonObject fields;
    if (until.isValid())
        fields.insert(name("untilUtc"), until.toUTC().toString(Qt::ISODateWithMs));
    m_journal.write(name("recording.paused"), {}, fields);
}

void JournalFeed::resumed()
{
    m_journal.write(name("recording.resumed"), {});
}

void JournalFeed::fileDeleted(const QString& path, const QString& reason)
{
    m_journal.write(name("file.deleted"), {}, {{name("file"), QFileInfo(path).fileName()}, {name("reason"), reason}});
}

void JournalFeed::settingsChanged()
{
    const QJsonObject now = settingsNow();
    QJsonObject changed;
    for (auto value = now.begin(); value != now.end(); ++value) {
        if (m_settings.value(value.key()) != value.value())
            changed.insert(value.key(), value.value());
    }
    if (!changed.isEmpty())
        m_journal.write(m_settings.isEmpty() ? name("settings.loaded") : name("settings.changed"), {}, changed);
    m_settings = now;
}

void JournalFeed::onFileStarted(const QString& path)
{
    const AppSettings& settings = AppSettings::instance();
    writeRun(name("file.opened"), {{name("file"), QFileInfo(path).fileName()},
                                   {name("codec"), codecExtension(settings.codec)},
                                   {name("sampleRateHz"), settings.sampleRate},
                                   {name("channels"), settings.channels}});
}

void JournalFeed::onFileFinished(const RecordInfo& info)
{
    m_journal.write(name("file.closed"), {},
                    {{name("file"), info.fileName},
                     {name("startUtc"), info.start.toUTC().toString(Qt::ISODateWithMs)},
                     {name("lengthMs"), info.durationMs},
                     {name("bytes"), info.bytes}});
    m_hasher->add(info.filePath);
}

void JournalFeed::onHashed(const QString& path, qint64 bytes, const QByteArray& sha256)
{
    m_journal.write(name("file.hashed"), {},
                    {{name("file"), QFileInfo(path).fileName()},
                     {name("bytes"), bytes},
                     {name("sha256"), QString::fromLatin1(sha256)}});
}
