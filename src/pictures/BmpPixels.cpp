#include "pictures/BmpPixels.h"

#include <QtEndian>

#include <algorithm>

namespace velmora {
namespace {

constexpr qsizetype kFileHeadBytes = 14;
constexpr qint64 kOldHeadBytes = 12;
constexpr qint64 kUsualHeadBytes = 40;
constexpr qsizetype kPixelsAt = 10; // where the file says that its pixels begin

} // namespace

bool holdsBmpPixels(QByteArrayView bytes)
{
    if (bytes.size() < kFileHeadBytes + kOldHeadBytes) {
        return false;
    }
    const qint64 headBytes = qFromLittleEndian<quint32>(bytes.data() + kFileHeadBytes);
    if (headBytes != kOldHeadBytes && headBytes < kUsualHeadBytes) {
        return false;
    }
    const qint64 given = qFromLittleEndian<quint32>(bytes.data() + kPixelsAt);
    return bytes.size() > std::max(given, kFileHeadBytes + headBytes);
}

} // namespace velmora
