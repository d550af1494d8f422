#include "pictures/GifFrame.h"

#include "pictures/ByteAt.h"

#include <QtEndian>

namespace velmora {
namespace {

constexpr qsizetype kFlagsAt = 10;
constexpr qsizetype kHeadBytes = 13;
constexpr qsizetype kFrameBytes = 10;
constexpr unsigned kHasColours = 0x80;
constexpr unsigned kColourBits = 0x07;
constexpr char kExtension = 0x21;
constexpr char kFrame = 0x2C;

int numberAt(QByteArrayView bytes, qsizetype at)
{
    return qFromLittleEndian<quint16>(bytes.data() + at);
}

qsizetype behindHead(QByteArrayView bytes)
{
    const unsigned flags = byteAt(bytes, kFlagsAt);
    const qsizetype colours = (flags & kHasColours) != 0 ? 2 << (flags & kColourBits) : 0;
    return kHeadBytes + 3 * colours;
}

// An extension has a label and blocks, each preceded by its length, up to an empty one.
qsizetype behindExtension(QByteArrayView bytes, qsizetype at)
{
    at += 2;
    while (at < bytes.size() && bytes[at] != 0) {
        at += 1 + qsizetype{byteAt(bytes, at)};
    }
    return at + 1;
}

} // namespace

std::optional<QRect> firstGifFrame(QByteArrayView bytes)
{
    if (bytes.size() < kHeadBytes) {
        return std::nullopt;
    }
    qsizetype at = behindHead(bytes);
    while (at < bytes.size() && bytes[at] == kExtension) {
        at = behindExtension(bytes, at);
    }
    if (at + kFrameBytes > bytes.size() || bytes[at] != kFrame) {
        return std::nullopt;
    }
    return QRect(numberAt(bytes, at + 1), numberAt(bytes, at + 3), numberAt(bytes, at + 5),
                 numberAt(bytes, at + 7));
}

} // namespace velmora
