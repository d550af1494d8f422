// Reads a stored camera image at the size at which it is shown. The bytes come from cameras and
// disks that nobody vouches for: whatever they are, time and memory stay bounded.
#pragma once

#include "pictures/PictureWish.h"

#include <QByteArray>
#include <QImage>
#include <QString>

namespace velmora {

/// The picture in a file at the size at which it is shown; a null image when there is no picture in
/// it. path: native. Waits for nothing but the disk: what is no ordinary file holds no picture.
[[nodiscard]] QImage readPicture(const QString &path, const PictureWish &wish);

/// The picture in the bytes of a file: JPEG, PNG, GIF, BMP or WebP by its content; of an
/// animation the first image, where it lies on its screen. It stands upright (Exif orientation) and
/// comes in the form that is painted fastest, RGB32 or ARGB32_Premultiplied. Of a picture that
/// breaks off, what there is. A null image for any other file, one of which nothing can be read
/// too, and for a picture of more than 64 Mi pixels.
[[nodiscard]] QImage decodePicture(const QByteArray &bytes, const PictureWish &wish);

} // namespace velmora
