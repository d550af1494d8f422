#include "pictures/JpegStream.h"

#include "pictures/ByteAt.h"

#include <cstring>

namespace velmora {
namespace {

constexpr unsigned char kMark = 0xff;
constexpr unsigned char kBegin = 0xd8;
constexpr unsigned char kEnd = 0xd9;
constexpr unsigned char kScan = 0xda;
constexpr unsigned char kExif = 0xe1;
constexpr qsizetype kFrameBytes = 8; // length, bits, height, width, components

int word(QByteArrayView bytes, qsizetype at)
{
    return byteAt(bytes, at) << 8 | byteAt(bytes, at + 1);
}

bool isRestart(unsigned char code)
{
    return code >= 0xd0 && code <= 0xd7;
}

// Frame headers are C0 to CF except for tables (C4), a reserved code (C8) and arithmetic coding's
// (CC).
bool isFrame(unsigned char code)
{
    return code >= 0xc0 && code <= 0xcf && code != 0xc4 && code != 0xc8 && code != 0xcc;
}

// After a scan's coefficients: the next 0xff that begins a marker; -1 when there is none.
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

/// Walks through a JPEG from marker to marker.
class MarkerWalk
{
public:
    explicit MarkerWalk(QByteArrayView bytes)
        : bytes_(bytes)
    {
    }

    std::optional<JpegStream> walk()
    {
        const bool isJpeg =
            bytes_.size() >= 4 && byteAt(bytes_, 0) == kMark && byteAt(bytes_, 1) == kBegin;
        at_ = isJpeg ? 2 : -1;
        while (isAtMarker()) {
            const unsigned char code = byteAt(bytes_, at_ + 1);
            if (code == kEnd) {
                stream_.bytes = at_ + 2;
                return hasScan_ && !stream_.size.isEmpty() ? std::optional(stream_) : std::nullopt;
            }
            if (code == kMark) {
                ++at_; // padding
            } else {
                takeSegment(code);
            }
        }
        return std::nullopt;
    }

private:
    [[nodiscard]] bool isAtMarker() const
    {
        return at_ >= 0 && at_ + 1 < bytes_.size() && byteAt(bytes_, at_) == kMark;
    }

    // Moves past it, and past the coefficients after a scan's header; ends the walk when it is cut
    // off.
    void takeSegment(unsigned char code)
    {
        const qsizetype length = at_ + 4 <= bytes_.size() ? word(bytes_, at_ + 2) : 0;
        if (length < 2 || at_ + 2 + length > bytes_.size()) {
            at_ = -1;
            return;
        }
        if (isFrame(code) && length >= kFrameBytes) {
            takeFrame(stream_, code, bytes_.sliced(at_ + 2, length));
        }
        stream_.isTagged = stream_.isTagged || code == kExif;
        hasScan_ = hasScan_ || code == kScan;
        at_ += 2 + length;
        at_ = code == kScan ? endOfScan(bytes_, at_) : at_;
    }

    QByteArrayView bytes_;
    JpegStream stream_;
    qsizetype at_ = -1; // of the current marker
    bool hasScan_ = false;
};

} // namespace

std::optional<JpegStream> jpegStream(QByteArrayView bytes)
{
    return MarkerWalk(bytes).walk();
}

// Segments that go on beyond the bytes may be followed by a frame. Between broken ones a decoder
// looks for the next marker.
bool mayHoldJpegFrame(QByteArrayView bytes)
{
    qsizetype at = 2;
    while (at + 4 <= bytes.size() && byteAt(bytes, at) == kMark) {
        const unsigned char code = byteAt(bytes, at + 1);
        if (isFrame(code)) {
            return true;
        }
        at += code == kMark ? 1 : 2 + word(bytes, at + 2);
    }
    bool isFound = at + 4 > bytes.size();
    for (; !isFound && at >= 0 && at + 1 < bytes.size();
         at = bytes.indexOf(static_cast<char>(kMark), at + 1)) {
        isFound = byteAt(bytes, at) == kMark && isFrame(byteAt(bytes, at + 1));
    }
    return isFound;
}

} // namespace velmora
