// Fuzzes what is read from pictures before they are decoded: format, scans, lengths and chunks,
// which decide whether the decoder gets to see the file at all.
#include "Require.h"
#include "base/PictureFormat.h"
#include "pictures/BmpPixels.h"
#include "pictures/JpegScans.h"
#include "pictures/PngChunks.h"

#include <cstddef>
#include <cstdint>

namespace velmora::fuzz {
namespace {

constexpr qsizetype kChecksumBytes = 4;
constexpr QByteArrayView kPngSignature("\x89PNG\r\n\x1a\n");

void checkPng(const QByteArray &bytes)
{
    const QByteArray painted = paintedPngChunks(kPngSignature.toByteArray() + bytes);
    require(painted.startsWith(kPngSignature), "it is still a PNG");
    require(painted.size() <= kPngSignature.size() + bytes.size() + kChecksumBytes,
            "chunks are left out, none made; data that are cut off get a checksum");
    require(paintedPngChunks(painted) == painted, "what is left is what is painted");
}

void check(const QByteArray &bytes)
{
    const QByteArray format = pictureFormat(bytes);
    require(pictureFormat(bytes + "more") == format || bytes.size() < 16,
            "the first bytes alone decide");
    const qint64 scans = countJpegScans(bytes);
    require(scans >= 0 && scans <= bytes.size(), "no more scans than bytes");
    if (holdsBmpPixels(bytes)) {
        require(holdsBmpPixels(bytes + "more"), "what stands behind the pixels does not count");
    }
    checkPng(bytes);
}

} // namespace
} // namespace velmora::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    velmora::fuzz::check(
        QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    return 0;
}
