#include "base/Characters.h"

namespace velmora {
namespace {

constexpr unsigned kContinuationMask = 0xC0;
constexpr unsigned kContinuation = 0x80;

// Length of the character that this byte starts; 1 for a byte that starts none.
qsizetype announcedLength(char first)
{
    const auto byte = static_cast<unsigned char>(first);
    if (byte < 0xC2 || byte > 0xF4) {
        return 1;
    }
    return byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & kContinuationMask) == kContinuation;
}

} // namespace

qsizetype characterLength(QByteArrayView text, qsizetype at)
{
    const qsizetype length = announcedLength(text[at]);
    for (qsizetype i = 1; i < length; ++i) {
        if (at + i >= text.size() || !isContinuation(text[at + i])) {
            return 1;
        }
    }
    return length;
}

} // namespace velmora
