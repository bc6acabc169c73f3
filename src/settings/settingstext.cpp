#include "settings/settingstext.h"

#include "settings/appsettings.h"
#include "settings/limits.h"
#include "settings/redacted.h"
#include "settings/settingsstore.h"

#include <QDir>
#include <QSettings>
#include <QUrl>

#include <algorithm>
#include <iterator>
#include <optional>

namespace {

/// What a key takes beyond its type.
struct Rule {
    const char* key;
    QStringList choices; ///< empty: no list
    double lowest = 0.0; ///< with highest: numbers only
    double highest = -1.0; ///< below lowest: no range
};

QStringList texts(const auto& numbers)
{
    QStringList list;
    for (const int number : numbers)
        list << QString::number(number);
    return list;
}

QStringList codecNames()
{
    QStringList names;
    for (const CodecRow& row : Codecs)
        names << QString::fromLatin1(row.extension);
    return names;
}

template <class Number>
Rule range(const char* key, Limits::Range<Number> limits)
{
    return {key, {}, double(limits.lowest), double(limits.highest)};
}

QList<Rule> allRules()
{
    QList<Rule> list{
        {"capture/backend", {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")}},
        range("capture/streamStall", Limits::StreamStallSeconds),
        range("levels/inputGainDb", Limits::InputGainDb),
        range("capture/firstChannel", Limits::FirstChannel),
        {"capture/channelCount", {QStringLiteral("1"), QStringLiteral("2")}},
        {"format/codec", codecNames()},
        {"format/sampleRate", texts(Limits::SampleRates)},
        {"format/bitrate", texts(Limits::Bitrates)},
        {"format/channels", {QStringLiteral("1"), QStringLiteral("2")}},
        range("format/vorbisQuality", Limits::VorbisQuality),
        range("output/serial", Limits::Serial),
        range("output/splitMinutes", Limits::SplitMinutes),
        range("housekeeping/days", Limits::HousekeepingDays),
        range("alerts/seconds", Limits::SilenceSeconds),
        range("alerts/thresholdDb", Limits::SilenceThresholdDb),
        range("alerts/smtpPort", Limits::Port),
        {"trigger/kind", {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}},
        {"trigger/baud", texts(Limits::BaudRates)},
        range("trigger/line", Limits::SerialLine),
        range("trigger/midiDevice", Limits::MidiDevice),
        range("trigger/midiChannel", Limits::MidiChannel),
        range("trigger/midiNumber", Limits::MidiNumber),
        range("trigger/holdSeconds", Limits::HoldSeconds),
        {"general/closeAction", {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")}},
        {"general/theme", {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")}},
        {"general/language", {QString(), QStringLiteral("en"), QStringLiteral("es")}},
        range("housekeeping/keepDays", Limits::HousekeepingDays),
        range("copy/days", Limits::HousekeepingDays),
        range("alarms/diskLowHours", Limits::DiskLowHours),
    };
    for (const AlarmRow& row : AlarmRows)
        list << range(row.delayKey, Limits::AlarmDelaySeconds);
    return list;
}

const QList<Rule>& rules()
{
    static const QList<Rule> list = allRules();
    return list;
}

/// Keys that the program keeps for itself.
bool isOwn(const QString& key)
{
    return key == QLatin1String("updates/lastCheck") || key == QLatin1String("state/geometry");
}

/// Names of devices come from outside and may hold any character; as text they are percent-encoded, so that nothing in
/// them means anything to a terminal or a shell.
bool isDeviceName(const QString& key)
{
    return key == QLatin1String("trigger/serialPort") || key == QLatin1String("trigger/midiDeviceName");
}

/// Web addresses whose path may be all that proves the right to use them.
bool isCapability(const QString& key)
{
    return key == QLatin1String("alarms/url") || key == QLatin1String("alarms/heartbeatUrl");
}

/// The text as a value of the type that the store holds, if it is one.
std::optional<QVariant> parsed(const QString& text, const QMetaType& type)
{
    bool ok = true;
    switch (type.id()) {
    case QMetaType::Bool: {
        const QString lower = text.toLower();
        const bool on = lower == QLatin1String("true") || lower == QLatin1String("1");
        ok = on || lower == QLatin1String("false") || lower == QLatin1String("0");
        return ok ? std::optional<QVariant>(on) : std::nullopt;
    }
    case QMetaType::Int: {
        const int number = text.toInt(&ok);
        return ok ? std::optional<QVariant>(number) : std::nullopt;
    }
    case QMetaType::Double: {
        const double number = text.toDouble(&ok);
        return ok ? std::optional<QVariant>(number) : std::nullopt;
    }
    case QMetaType::QByteArray:
        return QByteArray::fromPercentEncoding(text.toUtf8());
    default:
        return text;
    }
}

} // namespace

QStringList SettingsText::keys()
{
    QStringList list;
    for (const auto& [key, value] : AppSettings::instance().values()) {
        if (!isOwn(key))
            list << key;
    }
    return list;
}

bool SettingsText::isSecret(const QString& key)
{
    return key == QLatin1String("alerts/smtpPass");
}

QString SettingsText::value(const AppSettings& settings, const QString& key)
{
    const auto values = settings.values();
    const auto found = std::find_if(values.begin(), values.end(), [&](const auto& item) { return item.first == key; });
    if (found == values.end())
        return {};
    const QVariant& stored = found->second;
    if (stored.typeId() == QMetaType::QByteArray)
        return QString::fromLatin1(stored.toByteArray().toPercentEncoding());
    if (isDeviceName(key))
        return QString::fromLatin1(stored.toString().toUtf8().toPercentEncoding());
    return stored.toString();
}

QString SettingsText::withoutSecrets(const AppSettings& settings, const QString& key)
{
    static const QStringList addresses{QStringLiteral("capture/streamUrl"), QStringLiteral("updates/url")};
    if (isSecret(key))
        return {};
    if (isCapability(key))
        return Redacted::host(value(settings, key));
    return addresses.contains(key) ? Redacted::url(value(settings, key)) : value(settings, key);
}

QString SettingsText::setValue(AppSettings& settings, const QString& key, const QString& text)
{
    const auto values = settings.values();
    const auto found = std::find_if(values.begin(), values.end(), [&](const auto& item) { return item.first == key; });
    if (found == values.end() || isOwn(key))
        return tr("There is no setting \"%1\". The settings are listed by --get.").arg(key.left(100));
    if (text.size() > MaxValueLength)
        return tr("The value of %1 is too long.").arg(key);
    if (std::any_of(text.begin(), text.end(), [](QChar c) { return c.category() == QChar::Other_Control; }))
        return tr("The value of %1 must be one line of text.").arg(key);
    auto value = isSecret(key) ? std::optional<QVariant>(text) : parsed(text, found->second.metaType());
    if (isDeviceName(key))
        value = QUrl::fromPercentEncoding(text.toUtf8());
    if (!value)
        return tr("\"%1\" is no value for %2.").arg(text.left(100), key);

    const auto rule =
        std::find_if(rules().begin(), rules().end(), [&](const Rule& each) { return key == QLatin1String(each.key); });
    if (rule != rules().end()) {
        if (!rule->choices.isEmpty() && !rule->choices.contains(value->toString()))
            return tr("%1 takes one of: %2.").arg(key, rule->choices.join(QStringLiteral(", ")));
        const double number = value->toDouble();
        if (rule->lowest <= rule->highest && !(number >= rule->lowest && number <= rule->highest))
            return tr("%1 takes a number from %2 to %3.").arg(key).arg(rule->lowest).arg(rule->highest);
    }
    const bool mustBeFolder =
        key == QLatin1String("output/folder") || (key == QLatin1String("copy/folder") && !text.isEmpty());
    if (mustBeFolder && !QDir::isAbsolutePath(text))
        return tr("The folder must be an absolute path.");
    if (isCapability(key) && !text.isEmpty() && !QUrl(text).scheme().startsWith(QLatin1String("http")))
        return tr("The address must begin with http:// or https://.");
    if (key == QLatin1String("state/schedule") &&
        (text.size() != Schedule::Hours || text.count(u'0') + text.count(u'1') != Schedule::Hours))
        return tr("A schedule has %1 characters, 1 for each hour to record and 0 for the others, from Monday 00:00.")
            .arg(Schedule::Hours);
    settings.setValue(key, *value);
    return {};
}

QString SettingsText::setValues(AppSettings& settings, const QJsonObject& values)
{
    const auto before = settings.values();
    if (values.isEmpty())
        return tr("There is nothing to change.");
    for (auto value = values.begin(); value != values.end(); ++value) {
        QString error = value->isString() ? setValue(settings, value.key(), value->toString())
                                          : tr("The value of %1 must be one line of text.").arg(value.key().left(100));
        if (error.isEmpty())
            continue;
        for (const auto& [key, old] : before)
            settings.setValue(key, old);
        return error;
    }
    // The panel shows the label, and there is none for a device that was chosen by its identifier.
    if (values.contains(QLatin1String("capture/deviceId")) && !values.contains(QLatin1String("capture/deviceLabel")))
        settings.deviceLabel = QString::fromUtf8(settings.deviceId);
    settings.save();
    if (values.contains(QLatin1String("general/startWithSystem")))
        AppSettings::setStartWithSystem(settings.startWithSystem);
    if (!settings.isStored())
        return tr("The settings could not be stored: %1").arg(SettingsStore::open()->fileName());
    return {};
}
