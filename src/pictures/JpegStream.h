// Examines a JPEG from its first marker to its last without decoding it: whether it is complete,
// its size, and its length.
#pragma once

#include <QByteArrayView>
#include <QSize>

#include <optional>

namespace velmora {

struct JpegStream
{
    QSize size;            // as stored
    qsizetype bytes = 0;   // from the first marker to the end of the picture
    bool isPlain = false;  // 8 bits, grey or three colours, baseline or progressive
    bool isTagged = false; // has Exif data, which may call for turning it
};

/// Nothing for anything but a JPEG, and for one that is cut off.
[[nodiscard]] std::optional<JpegStream> jpegStream(QByteArrayView bytes);

/// False for bytes in which no frame of a JPEG begins, so that nothing of them can be decoded.
[[nodiscard]] bool mayHoldJpegFrame(QByteArrayView bytes);

} // namespace velmora
