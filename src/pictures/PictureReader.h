// Reads a stored camera image at the size at which it is shown. The bytes come from untrusted
// cameras and disks: whatever they are, time and memory stay bounded.
#pragma once

#include "pictures/PictureWish.h"

#include <QByteArray>
#include <QImage>
#include <QString>

namespace velmora {

/// The picture in a file at the size at which it is shown; a null image if it holds none. path:
/// native. Waits for nothing but the disk: anything but an ordinary file counts as holding none.
[[nodiscard]] QImage readPicture(const QString &path, const PictureWish &wish);

/// The picture in the bytes of a file: JPEG, PNG, GIF, BMP or WebP by its content; of an animation
/// the first image, in its place on the screen. It is upright (by its Exif orientation) and in the
/// form that is painted fastest, RGB32 or ARGB32_Premultiplied. Of a truncated picture, the part
/// there is. A null image for any other file, for one of which nothing can be read, and for a
/// picture of more than 64 Mi pixels.
[[nodiscard]] QImage decodePicture(const QByteArray &bytes, const PictureWish &wish);

} // namespace velmora
