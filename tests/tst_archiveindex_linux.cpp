#include "archive/archiveindex.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <sys/mount.h>

class TestArchiveIndexOnDisk : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void diskFull();
};

// The list first fits, then fails in the flush, and from 16 KB on in the write itself.
void TestArchiveIndexOnDisk::diskFull()
{
    const QTemporaryDir dir;
    const QByteArray folder = dir.path().toUtf8();
    if (mount("tmpfs", folder.constData(), "tmpfs", 0, "size=12k") != 0)
        QSKIP("This machine does not allow mounting a small file system.");
    const auto unmount = qScopeGuard([&] { umount2(folder.constData(), MNT_DETACH); });
    ArchiveIndex index;
    index.setFolder(dir.path());
    for (int i = 0; i < 300; ++i)
        index.addRecord({QString::number(i), {}, QDateTime::currentDateTime(), 1000, 1000, false});

    QFile file(dir.filePath("records.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const qsizetype saved = QJsonDocument::fromJson(file.readAll()).array().size();
    QVERIFY2(saved > 0 && saved < 300, QByteArray::number(saved));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), {"records.json"});
}

QTEST_GUILESS_MAIN(TestArchiveIndexOnDisk)
#include "tst_archiveindex_linux.moc"
