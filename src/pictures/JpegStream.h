// Looks at a JPEG from its first marker to its last without decoding it: whether it is whole, how
// large, and how long.
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
    bool isTagged = false; // has Exif data, which may say that it is to be turned
};

/// Nothing for what is no JPEG, and for one that breaks off.
[[nodiscard]] std::optional<JpegStream> jpegStream(QByteArrayView bytes);

} // namespace velmora
