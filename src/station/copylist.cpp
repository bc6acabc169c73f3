#include "station/copylist.h"

#include "encode/durable.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace {

constexpr qint64 MaxLineBytes = 8192;
/// Lines about copies that are gone, beyond as many as there are copies.
constexpr qsizetype MaxStaleLines = 1000;

QByteArray line(const CopyEntry& entry)
{
    return QJsonDocument(QJsonObject{{QStringLiteral("file"), entry.file},
                                     {QStringLiteral("startSecs"), entry.startSecs},
                                     {QStringLiteral("copy"), entry.copy},
                                     {QStringLiteral("bytes"), entry.bytes},
                                     {QStringLiteral("sha256"), QString::fromLatin1(entry.sha256)},
                                     {QStringLiteral("ours"), entry.ours}})
               .toJson(QJsonDocument::Compact) +
           '\n';
}

} // namespace

QString CopyEntry::key(const QString& file, qint64 startSecs)
{
    return QString::number(startSecs) + u' ' + file;
}

bool CopyList::load()
{
    m_entries.clear();
    QFile file(m_path);
    if (!file.open(QIODevice::ReadWrite))
        return false;
    qsizetype lines = 0;
    while (!file.atEnd()) {
        const QJsonObject object = QJsonDocument::fromJson(file.readLine(MaxLineBytes)).object();
        ++lines;
        const auto text = [&object](const char* name) { return object.value(QLatin1String(name)).toString(); };
        const QString copy = text("copy");
        // A name with a folder in it would lead out of the copy's folder.
        if (copy.isEmpty() || copy.contains(u'/') || copy.contains(u'\\'))
            continue;
        if (object.value(QLatin1String("gone")).toBool())
            m_entries.remove(copy);
        else
            m_entries.insert(copy, {text("file"), qint64(object.value(QLatin1String("startSecs")).toDouble()), copy,
                                    qint64(object.value(QLatin1String("bytes")).toDouble()), text("sha256").toLatin1(),
                                    object.value(QLatin1String("ours")).toBool()});
    }
    if (file.error() != QFileDevice::NoError)
        return false;
    file.close();
    return lines <= 2 * m_entries.size() + MaxStaleLines || rewrite();
}

bool CopyList::rewrite() const
{
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    bool complete = true;
    for (const CopyEntry& entry : m_entries) {
        const QByteArray text = line(entry);
        complete = complete && file.write(text) == text.size();
    }
    if (!complete || !syncToDisk(file))
        file.cancelWriting();
    return file.commit();
}

bool CopyList::append(const QByteArray& text)
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Append |
                   QIODevice::Unbuffered)) // a folder that is away must not get a new list
        return false;
    // A line that a power cut or a full disk left half would swallow the next one.
    const qint64 size = file.size();
    char last = '\n';
    if (size > 0 && (!file.seek(size - 1) || file.read(&last, 1) != 1))
        return false;
    const QByteArray whole = last == '\n' ? text : '\n' + text;
    return file.write(whole) == whole.size() && syncToDisk(file);
}

bool CopyList::add(const CopyEntry& entry)
{
    if (!append(line(entry)))
        return false;
    m_entries.insert(entry.copy, entry);
    return true;
}

bool CopyList::remove(const QString& copy)
{
    m_entries.remove(copy);
    return append(QJsonDocument(QJsonObject{{QStringLiteral("copy"), copy}, {QStringLiteral("gone"), true}})
                      .toJson(QJsonDocument::Compact) +
                  '\n');
}
