#include "pictures/PngChunks.h"

#include <QByteArrayView>
#include <QtEndian>

#include <zlib.h>

namespace velmora {
namespace {

constexpr qsizetype kSignatureBytes = 8;
constexpr qsizetype kChunkHeadBytes = 8; // length, name
constexpr qsizetype kChecksumBytes = 4;

// A capital first letter means that the picture cannot be painted without the chunk.
bool isPainted(QByteArrayView chunk)
{
    const QByteArrayView name = chunk.sliced(4, 4);
    return (name.front() & 0x20) == 0 || name == "tRNS";
}

qsizetype bodyBytes(QByteArrayView chunk)
{
    return qsizetype{qFromBigEndian<quint32>(chunk.data())};
}

QByteArrayView firstChunk(QByteArrayView bytes)
{
    return bytes.first(qMin(kChunkHeadBytes + bodyBytes(bytes) + kChecksumBytes, bytes.size()));
}

quint32 checksum(QByteArrayView bytes)
{
    return static_cast<quint32>(::crc32_z(0, reinterpret_cast<const Bytef *>(bytes.data()),
                                          static_cast<std::size_t>(bytes.size())));
}

void appendNumber(QByteArray &bytes, quint32 number)
{
    const quint32 stored = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char *>(&stored), sizeof stored);
}

// The decoder reads in large pieces, and paints nothing of a piece that is shorter than its chunk
// says.
void appendData(QByteArray &painted, QByteArrayView chunk)
{
    const qsizetype whole = kChunkHeadBytes + bodyBytes(chunk);
    if (chunk.size() == whole + kChecksumBytes || chunk.sliced(4, 4) != "IDAT") {
        painted.append(chunk);
        return;
    }
    const QByteArrayView nameAndBody = chunk.first(qMin(whole, chunk.size())).sliced(4);
    appendNumber(painted, static_cast<quint32>(nameAndBody.size() - 4));
    painted.append(nameAndBody);
    appendNumber(painted, checksum(nameAndBody));
}

} // namespace

QByteArray paintedPngChunks(const QByteArray &bytes)
{
    QByteArray painted = bytes.first(kSignatureBytes);
    painted.reserve(bytes.size());
    QByteArrayView rest = QByteArrayView(bytes).sliced(kSignatureBytes);
    while (rest.size() >= kChunkHeadBytes) {
        const QByteArrayView chunk = firstChunk(rest);
        if (isPainted(chunk)) {
            appendData(painted, chunk);
        }
        rest = rest.sliced(chunk.size());
    }
    return painted;
}

} // namespace velmora
