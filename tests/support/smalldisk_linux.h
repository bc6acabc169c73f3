#pragma once

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <sys/mount.h>

/// A small file system, for as long as the object lives. Mounting needs root.
class SmallDisk {
public:
    /// \param kind "tmpfs", or "ext4" in a file. \param megabytes its size.
    SmallDisk(const QByteArray& kind, int megabytes) : path(m_mountPoint.path())
    {
        const QByteArray target = path.toUtf8();
        if (kind == "tmpfs") {
            const QByteArray options = "size=" + QByteArray::number(megabytes) + 'm';
            mounted = mount("tmpfs", target.constData(), "tmpfs", 0, options.constData()) == 0;
        } else {
            const QString image = m_image.filePath(QStringLiteral("disk"));
            QFile file(image);
            const QString make = QStringLiteral("PATH=$PATH:/usr/sbin; mkfs.%1 -q %2 && mount -o loop %2 %3")
                                     .arg(QString::fromLatin1(kind), image, path);
            mounted = file.open(QIODevice::WriteOnly) && file.resize(megabytes * 1024LL * 1024) &&
                      QProcess::execute(QStringLiteral("sh"), {QStringLiteral("-c"), make}) == 0;
        }
    }
    ~SmallDisk() { umount2(path.toUtf8().constData(), MNT_DETACH); }
    Q_DISABLE_COPY_MOVE(SmallDisk)

private:
    const QTemporaryDir m_mountPoint;
    const QTemporaryDir m_image;

public:
    const QString path;
    bool mounted = false;
};
