// Pictures for the tests: made by encoders, then altered byte by byte.
#pragma once

#include "support/Printers.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <QSize>

#include <array>
#include <ostream>

namespace velmora::test {

/// Top left, top right, bottom left, bottom right.
using Corners = std::array<Qt::GlobalColor, 4>;

inline constexpr Corners kCorners = {Qt::red, Qt::green, Qt::blue, Qt::white};

/// A picture of four plain quarters.
[[nodiscard]] QImage quarters(QSize size);

/// The colours closest to those in the middle of each quarter.
[[nodiscard]] Corners cornersOf(const QImage &image);

enum class Progressive { No, Yes };

/// format: as QImageWriter knows it.
[[nodiscard]] QByteArray encoded(const QImage &image, const char *format,
                                 Progressive progressive = Progressive::No);

/// quarters() as a JPEG in four inks, as image editors write it.
[[nodiscard]] QByteArray cmykJpeg(QSize size);

/// Two frames of one pixel, red and then green.
[[nodiscard]] QByteArray animatedGif();

/// One red frame of 3 by 2 pixels at 2, 1 of a screen of 8 by 6.
[[nodiscard]] QByteArray smallFrameGif();

/// A picture in 24 bits whose first line is the top one; with a header of that many bytes; with a
/// palette, run-length encoded line by line.
[[nodiscard]] QByteArray bmpFromTheTop(const QImage &image);
[[nodiscard]] QByteArray bmpWithHead(const QImage &image, quint32 headBytes);
[[nodiscard]] QByteArray runLengthBmp(const QImage &image);

/// The JPEG with an Exif segment that says how the camera was held, 1 to 8.
[[nodiscard]] QByteArray withOrientation(const QByteArray &jpeg, int orientation);

/// The JPEG or PNG with a different size in its header and no other change.
[[nodiscard]] QByteArray claiming(QByteArray picture, QSize size);

/// The picture as a PNG in seven passes of 24 bits.
[[nodiscard]] QByteArray pngInPasses(const QImage &image);

/// A chunk of a PNG with its checksum. name: four letters.
[[nodiscard]] QByteArray pngChunk(QByteArrayView name, const QByteArray &body);

} // namespace velmora::test

inline void PrintTo(const QSize &size, std::ostream *out)
{
    *out << size.width() << " x " << size.height();
}
