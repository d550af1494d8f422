#include "base/PictureFormat.h"

namespace velmora {
namespace {

bool isWebp(QByteArrayView bytes)
{
    return bytes.startsWith("RIFF") && bytes.size() >= 12 && bytes.sliced(8, 4) == "WEBP";
}

} // namespace

QByteArray pictureFormat(QByteArrayView bytes)
{
    if (bytes.startsWith("\xFF\xD8\xFF")) {
        return kJpegFormat.toByteArray();
    }
    if (bytes.startsWith("\x89PNG\r\n\x1A\n")) {
        return kPngFormat.toByteArray();
    }
    if (bytes.startsWith("GIF87a") || bytes.startsWith("GIF89a")) {
        return kGifFormat.toByteArray();
    }
    if (bytes.startsWith("BM")) {
        return kBmpFormat.toByteArray();
    }
    return isWebp(bytes) ? kWebpFormat.toByteArray() : QByteArray();
}

} // namespace velmora
