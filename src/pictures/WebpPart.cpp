#include "pictures/WebpPart.h"

#include <QtEndian>

namespace velmora {

QByteArray filledWebp(const QByteArray &bytes)
{
    constexpr qsizetype kLengthAt = 4;
    constexpr qsizetype kLengthBytes = 4;
    constexpr qint64 kMostFilling = 16; // a few bytes cannot claim all memory
    if (bytes.size() < kLengthAt + kLengthBytes) {
        return bytes;
    }
    const qint64 whole =
        kLengthAt + kLengthBytes + qFromLittleEndian<quint32>(bytes.constData() + kLengthAt);
    const bool isPart = whole > bytes.size() && whole <= kMostFilling * bytes.size();
    return isPart ? bytes + QByteArray(whole - bytes.size(), '\0') : bytes;
}

} // namespace velmora
