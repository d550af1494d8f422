// Real image files as cameras store them, and flawed ones.
#pragma once

#include <QByteArray>
#include <QColor>
#include <QSize>
#include <QString>

class QWidget;

namespace velmora::test {

inline constexpr QSize kCameraSize{320, 240};

/// A picture of one colour as a file's bytes. format: "JPEG", "PNG"…
[[nodiscard]] QByteArray pictureBytes(const QColor &colour, QSize size = kCameraSize,
                                      const char *format = "JPEG");

/// A JPEG of small black and white squares, which turn grey when it is decoded at a smaller size.
[[nodiscard]] QByteArray finePicture(QSize size);

/// True when the middle of a control as painted holds both black and white.
[[nodiscard]] bool isSharp(QWidget &control);

/// A picture, left half red and right half blue, whose Exif data say that it lies on its side:
/// upright, red is above blue.
[[nodiscard]] QByteArray rotatedJpeg();

/// A JPEG in four inks, for print.
[[nodiscard]] QByteArray cmykJpeg();

/// "20060307_0000050714.jpg" for 5: the name of the image of that many seconds after midnight.
[[nodiscard]] QString storedName(int second);

} // namespace velmora::test
