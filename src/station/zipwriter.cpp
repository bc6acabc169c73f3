#include "station/zipwriter.h"

#include <QDateTime>
#include <QtEndian>

#include <array>

namespace {

constexpr quint16 Version = 20; // 2.0: deflate
constexpr quint16 Utf8Names = 1 << 11;
constexpr quint16 Deflated = 8;

template <class Integer>
void append(QByteArray& bytes, Integer value)
{
    const Integer little = qToLittleEndian(value);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

/// CRC-32 of ISO 3309, as ZIP wants it.
quint32 crc32(const QByteArray& bytes)
{
    static const auto table = [] {
        std::array<quint32, 256> entries{};
        for (quint32 i = 0; i < entries.size(); ++i) {
            quint32 value = i;
            for (int bit = 0; bit < 8; ++bit)
                value = (value & 1) ? 0xEDB88320U ^ (value >> 1) : value >> 1;
            entries[i] = value;
        }
        return entries;
    }();
    quint32 crc = ~0U;
    for (const char byte : bytes)
        crc = table[(crc ^ uchar(byte)) & 0xFF] ^ (crc >> 8);
    return ~crc;
}

/// Raw deflate data: qCompress() puts 4 bytes of length and 2 of zlib header before it, and 4 of checksum behind.
QByteArray deflated(const QByteArray& content)
{
    const QByteArray compressed = qCompress(content, 9);
    return compressed.size() > 10 ? compressed.mid(6, compressed.size() - 10)
                                  : QByteArray("\x03\x00", 2); // empty block
}

} // namespace

ZipWriter::ZipWriter(const QString& path) : m_file(path) {}

bool ZipWriter::open()
{
    return m_file.open(QIODevice::WriteOnly);
}

void ZipWriter::add(const QString& name, const QByteArray& content)
{
    const QByteArray utf8Name = name.toUtf8();
    const QByteArray data = deflated(content);
    const QDateTime now = QDateTime::currentDateTime();

    QByteArray common; // of the entry and of its place in the directory
    append(common, Version);
    append(common, Utf8Names);
    append(common, Deflated);
    append(common, quint16(now.time().hour() << 11 | now.time().minute() << 5 | now.time().second() / 2));
    append(common, quint16((now.date().year() - 1980) << 9 | now.date().month() << 5 | now.date().day()));
    append(common, crc32(content));
    append(common, quint32(data.size()));
    append(common, quint32(content.size()));
    append(common, quint16(utf8Name.size()));
    append(common, quint16(0)); // extra field

    append(m_directory, quint32(0x02014b50));
    append(m_directory, Version);
    m_directory += common;
    append(m_directory, quint16(0)); // comment
    append(m_directory, quint16(0)); // disk
    append(m_directory, quint16(0)); // internal attributes
    append(m_directory, quint32(0)); // external attributes
    append(m_directory, quint32(m_file.pos()));
    m_directory += utf8Name;
    ++m_entries;

    QByteArray header;
    append(header, quint32(0x04034b50));
    m_file.write(header + common + utf8Name + data);
}

bool ZipWriter::finish()
{
    const qint64 start = m_file.pos();
    m_file.write(m_directory);
    QByteArray end;
    append(end, quint32(0x06054b50));
    append(end, quint16(0));
    append(end, quint16(0));
    append(end, m_entries);
    append(end, m_entries);
    append(end, quint32(m_directory.size()));
    append(end, quint32(start));
    append(end, quint16(0)); // comment
    m_file.write(end);
    return m_file.flush() && m_file.commit();
}
