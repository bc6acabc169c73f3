#include "settings/scramble.h"

#include <QByteArray>

namespace {

QByteArray xorWithKey(QByteArray bytes)
{
    static const QByteArray key = QByteArrayLiteral("Marrowgate-Kq7Zp1");
    for (qsizetype i = 0; i < bytes.size(); ++i)
        bytes[i] = char(bytes.at(i) ^ key.at(i % key.size()));
    return bytes;
}

} // namespace

QString Scramble::scramble(const QString& password)
{
    return QString::fromLatin1(xorWithKey(password.toUtf8()).toBase64());
}

QString Scramble::unscramble(const QString& stored)
{
    return QString::fromUtf8(xorWithKey(QByteArray::fromBase64(stored.toLatin1())));
}
