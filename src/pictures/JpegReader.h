// Decodes an ordinary JPEG straight into an image as windows paint it. The toolkit's reader, which
// reads every other one, converts each line once more.
#pragma once

#include <QByteArrayView>
#include <QImage>
#include <QSize>

namespace velmora {

enum class JpegCare {
    Full, ///< as good as the decoder can
    Rough ///< faster, with a loss that is smaller than that of a reduction
};

/// The picture in RGB32, reduced by 1, 2, 4 or 8, without what is left over at the right and lower
/// edges when its size is divided. bytes: a JPEG of 8 bits in grey or three colours (see
/// jpegStream()). stored: its size; one that turns out to have a different size is not decoded. A
/// null image when it cannot be decoded.
[[nodiscard]] QImage readJpeg(QByteArrayView bytes, QSize stored, int divisor, JpegCare care);

} // namespace velmora
