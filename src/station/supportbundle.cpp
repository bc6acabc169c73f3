#include "station/supportbundle.h"

#include "process/ffmpeg.h"
#include "settings/appsettings.h"
#include "settings/channel.h"
#include "settings/settingstext.h"
#include "station/controlclient.h"
#include "station/devicelisting.h"
#include "station/station.h"
#include "station/zipwriter.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QSysInfo>

namespace {

QByteArray settingsText()
{
    const AppSettings& settings = AppSettings::instance();
    QString text;
    for (const QString& key : SettingsText::keys()) {
        if (!SettingsText::isSecret(key))
            text += key + u'=' + SettingsText::withoutSecrets(settings, key) + u'\n';
    }
    return text.toUtf8();
}

QByteArray versionsText()
{
    return QStringLiteral("Tidewell %1\nQt %2\nSystem %3, %4, kernel %5\nffmpeg %6\n")
        .arg(QCoreApplication::applicationVersion(), QString::fromLatin1(qVersion()), QSysInfo::prettyProductName(),
             QSysInfo::currentCpuArchitecture(), QSysInfo::kernelVersion(), ffmpegVersion())
        .toUtf8();
}

void addFiles(ZipWriter& zip, const QStringList& patterns, int atMost)
{
    const QDir folder(Station::journalFolder());
    const QFileInfoList files = folder.entryInfoList(patterns, QDir::Files, QDir::Name | QDir::Reversed);
    for (const QFileInfo& info : files.mid(0, atMost)) {
        QFile file(info.filePath());
        if (info.size() <= SupportBundle::MaxFileBytes && file.open(QIODevice::ReadOnly))
            zip.add(QStringLiteral("journal/") + info.fileName(), file.readAll());
    }
}

} // namespace

QString SupportBundle::write(const QString& path)
{
    if (const QFileInfo there(path); there.exists() && !there.isFile())
        return tr("%1 is no ordinary file.").arg(QDir::toNativeSeparators(path));
    ZipWriter zip(path);
    if (!zip.open())
        return tr("The file %1 cannot be written: %2").arg(QDir::toNativeSeparators(path), zip.errorString());
    zip.add(QStringLiteral("versions.txt"), versionsText());
    zip.add(QStringLiteral("settings.txt"), settingsText());
    zip.add(QStringLiteral("devices.txt"), DeviceListing::current().toUtf8());
    if (const auto answer =
            ControlClient::ask(Channel::name(), {{QStringLiteral("command"), QStringLiteral("status")}}))
        zip.add(QStringLiteral("status.json"), QJsonDocument(answer.answer).toJson());
    addFiles(zip, {QStringLiteral("*.jsonl")}, MaxJournalFiles);
    addFiles(zip, {QStringLiteral("crash*.txt")}, MaxJournalFiles);
    if (!zip.finish())
        return tr("The file %1 cannot be written: %2").arg(QDir::toNativeSeparators(path), zip.errorString());
    return {};
}
