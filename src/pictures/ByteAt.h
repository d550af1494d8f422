// Bytes of a picture as numbers.
#pragma once

#include <QByteArrayView>

namespace velmora {

/// at: below the number of bytes.
[[nodiscard]] inline unsigned char byteAt(QByteArrayView bytes, qsizetype at)
{
    return static_cast<unsigned char>(bytes[at]);
}

} // namespace velmora
