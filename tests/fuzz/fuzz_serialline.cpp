#include "triggers/seriallines.h"

#include <cstdlib>

/// Bytes of a serial port in pieces; the first byte is the size of a piece.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray input(reinterpret_cast<const char*>(data + 1), qsizetype(size) - 1);
    const qsizetype piece = data[0] + 1;
    SerialLines lines;
    for (qsizetype at = 0; at < input.size(); at += piece) {
        lines.append(input.mid(at, piece));
        while (const auto line = lines.next()) {
            if (line->contains(u'\n') || *line != line->trimmed())
                std::abort();
            serialCommand(*line, QStringLiteral("REC ON"), QStringLiteral("REC OFF"));
        }
    }
    return 0;
}
