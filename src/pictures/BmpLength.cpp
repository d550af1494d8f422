#include "pictures/BmpLength.h"

#include <QtEndian>

#include <cstdlib>

namespace velmora {
namespace {

constexpr qsizetype kFileHeadBytes = 14;
constexpr qint64 kOldHeadBytes = 12;
constexpr qint64 kUsualHeadBytes = 40;
constexpr quint32 kPlain = 0;
constexpr quint32 kMasked = 3;
constexpr qint64 kPaletteBytes = 1024;

template <typename Number>
Number numberAt(QByteArrayView bytes, qsizetype at)
{
    return qFromLittleEndian<Number>(bytes.data() + at);
}

struct Layout
{
    qint64 width;
    qint64 height;
    qint64 bits; ///< of a pixel
    quint32 coding;
};

Layout oldLayout(QByteArrayView bytes)
{
    return {numberAt<quint16>(bytes, 18), numberAt<quint16>(bytes, 20),
            numberAt<quint16>(bytes, 24), kPlain};
}

// A negative height says that the first line is the upper one.
Layout usualLayout(QByteArrayView bytes)
{
    return {numberAt<qint32>(bytes, 18), std::abs(qint64{numberAt<qint32>(bytes, 22)}),
            numberAt<quint16>(bytes, 28), numberAt<quint32>(bytes, 30)};
}

// Divides, since the product may be beyond all numbers.
bool fits(const Layout &layout, qint64 bytes)
{
    const qint64 line = (layout.width * layout.bits + 31) / 32 * 4;
    return layout.height > 0 && bytes / layout.height >= line;
}

} // namespace

bool isWholeBmp(QByteArrayView bytes)
{
    if (bytes.size() < kFileHeadBytes + kOldHeadBytes) {
        return false;
    }
    const qint64 headBytes = numberAt<quint32>(bytes, kFileHeadBytes);
    const bool isOld = headBytes == kOldHeadBytes;
    if (!isOld && (headBytes < kUsualHeadBytes || bytes.size() < kFileHeadBytes + headBytes)) {
        return false;
    }
    const Layout layout = isOld ? oldLayout(bytes) : usualLayout(bytes);
    if (layout.width <= 0 || (layout.coding != kPlain && layout.coding != kMasked)) {
        return false;
    }
    const qint64 given = numberAt<quint32>(bytes, 10);
    const qint64 start = given > 0 ? given : kFileHeadBytes + headBytes + kPaletteBytes;
    return bytes.size() >= start && fits(layout, bytes.size() - start);
}

} // namespace velmora
