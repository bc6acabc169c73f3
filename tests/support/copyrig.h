#pragma once

#include "archive/archiveindex.h"
#include "settings/appsettings.h"
#include "station/archivecopy.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

/// Recordings, the folder of their second copy, and what copies them: with short waits and a clock that stands still.
struct CopyRig {
    CopyRig()
    {
        AppSettings& settings = AppSettings::instance();
        settings.copyEnabled = true;
        settings.copyFolder = QDir::toNativeSeparators(target);
        settings.copyDays = 365;
        QDir().mkpath(source);
        index.setFolder(source);
    }

    /// As at a start of the program.
    void start()
    {
        using namespace std::chrono_literals;
        copy = std::make_unique<ArchiveCopy>(&index, nullptr,
                                             ArchiveCopy::Environment{dir.filePath("memory"), "host.",
                                                                      [this] { return nowMs; }, 25ms, 50ms, 300ms,
                                                                      beforeCompare});
        QObject::connect(copy.get(), &ArchiveCopy::logMessage, copy.get(),
                         [this](const QString& text) { lines << text; });
        QObject::connect(copy.get(), &ArchiveCopy::errorOccurred, copy.get(),
                         [this](const QString& text) { errors << text; });
        QObject::connect(copy.get(), &ArchiveCopy::copied, copy.get(),
                         [this](const CopyEntry& entry) { copied << entry.copy; });
        copy->reload();
    }
    /// A recording that was closed this many hours ago.
    RecordInfo add(const QString& name, int hoursAgo, const QByteArray& content = "audio")
    {
        RecordInfo record{name, source + u'/' + name, QDateTime::fromMSecsSinceEpoch(nowMs - hoursAgo * 3'600'000LL),
                          1000, content.size(),       false};
        write(record.filePath, content);
        QFile file(record.filePath);
        if (!file.open(QIODevice::Append) || !file.setFileTime(record.start, QFileDevice::FileModificationTime))
            qFatal("%s keeps no time.", qPrintable(record.filePath));
        index.addRecord(record);
        return record;
    }
    /// What the copy's folder has, apart from the hidden one, by name.
    QStringList there() const { return QDir(target).entryList(QDir::Files, QDir::Name); }
    QByteArray content(const QString& name) const { return read(target + u'/' + name); }

    static QByteArray read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void write(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("%s cannot be written.", qPrintable(path));
    }

    const QTemporaryDir dir;
    const QString source = dir.filePath("recordings");
    QString target = dir.filePath("second");
    qint64 nowMs = QDateTime::currentMSecsSinceEpoch();
    std::function<void(const QString&)> beforeCompare;
    ArchiveIndex index;
    std::unique_ptr<ArchiveCopy> copy;
    QStringList lines, errors, copied;
};
