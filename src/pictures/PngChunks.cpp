#include "pictures/PngChunks.h"

#include <QByteArrayView>
#include <QtEndian>

namespace velmora {
namespace {

constexpr qsizetype kSignatureBytes = 8;
constexpr qsizetype kChunkHeadBytes = 8; // length, name
constexpr qsizetype kChecksumBytes = 4;

// A capital first letter says that the picture cannot be painted without the chunk.
bool isPainted(QByteArrayView chunk)
{
    const QByteArrayView name = chunk.sliced(4, 4);
    return (name.front() & 0x20) == 0 || name == "tRNS";
}

QByteArrayView firstChunk(QByteArrayView bytes)
{
    const qsizetype whole =
        kChunkHeadBytes + qsizetype{qFromBigEndian<quint32>(bytes.data())} + kChecksumBytes;
    return bytes.first(qMin(whole, bytes.size()));
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
            painted.append(chunk);
        }
        rest = rest.sliced(chunk.size());
    }
    return painted;
}

} // namespace velmora
