#include "pictures/JpegStream.h"

#include <cstring>

namespace velmora {
namespace {

constexpr unsigned char kMark = 0xff;
constexpr unsigned char kBegin = 0xd8;
constexpr unsigned char kEnd = 0xd9;
constexpr unsigned char kScan = 0xda;
constexpr unsigned char kExif = 0xe1;
constexpr qsizetype kFrameBytes = 8; // length, bits, height, width, components

unsigned char byteAt(QByteArrayView bytes, qsizetype at)
{
    return static_cast<unsigned char>(bytes[at]);
}

int word(QByteArrayView bytes, qsizetype at)
{
    return byteAt(bytes, at) << 8 | byteAt(bytes, at + 1);
}

bool isRestart(unsigned char code)
{
    return code >= 0xd0 && code <= 0xd7;
}

// Frame headers are C0 to CF but for tables (C4), a reserved one (C8) and arithmetic coding's (CC).
bool isFrame(unsigned char code)
{
    return code >= 0xc0 && code <= 0xcf && code != 0xc4 && code != 0xc8 && code != 0xcc;
}

// Behind the coefficients of a scan: the next 0xff that begins a marker; -1 when there is none.
qsizetype endOfScan(QByteArrayView bytes, qsizetype at)
{
    while (at + 1 < bytes.size()) {
        const void *const found =
            std::memchr(bytes.data() + at, kMark, static_cast<std::size_t>(bytes.size() - at - 1));
        if (found == nullptr) {
            return -1;
        }
        at = static_cast<const char *>(found) - bytes.data();
        const unsigned char code = byteAt(bytes, at + 1);
        if (code == kMark) {
            ++at;
        } else if (code == 0 || isRestart(code)) {
            at += 2;
        } else {
            return at;
        }
    }
    return -1;
}

void takeFrame(JpegStream &stream, unsigned char code, QByteArrayView segment)
{
    const int components = byteAt(segment, 7);
    stream.size = {word(segment, 5), word(segment, 3)};
    stream.isPlain =
        code <= 0xc2 && byteAt(segment, 2) == 8 && (components == 1 || components == 3);
}

} // namespace

// NOLINTNEXTLINE(readability-function-cognitive-complexity): the steps of one format in their order
std::optional<JpegStream> jpegStream(QByteArrayView bytes)
{
    JpegStream stream;
    if (bytes.size() < 4 || byteAt(bytes, 0) != kMark || byteAt(bytes, 1) != kBegin) {
        return std::nullopt;
    }
    bool hasScan = false;
    qsizetype at = 2;
    while (at >= 0 && at + 1 < bytes.size() && byteAt(bytes, at) == kMark) {
        const unsigned char code = byteAt(bytes, at + 1);
        if (code == kMark) {
            ++at; // filling
            continue;
        }
        if (code == kEnd) {
            stream.bytes = at + 2;
            return hasScan && !stream.size.isEmpty() ? std::optional(stream) : std::nullopt;
        }
        const qsizetype length = at + 4 <= bytes.size() ? word(bytes, at + 2) : 0;
        if (length < 2 || at + 2 + length > bytes.size()) {
            return std::nullopt;
        }
        if (isFrame(code) && length >= kFrameBytes) {
            takeFrame(stream, code, bytes.sliced(at + 2, length));
        }
        stream.isTagged = stream.isTagged || code == kExif;
        hasScan = hasScan || code == kScan;
        at += 2 + length;
        at = code == kScan ? endOfScan(bytes, at) : at;
    }
    return std::nullopt;
}

} // namespace velmora
