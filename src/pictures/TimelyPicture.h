// A picture that is decoded in one go, unless the program would have to wait for it.
#pragma once

#include "pictures/PictureWish.h"

#include <QByteArray>
#include <QImage>

namespace velmora {

struct TimelyPicture
{
    QImage image; // null if it cannot be decoded, or would take too long
    QSize size;   // of the picture itself, in pixels; invalid when it is none
    bool isTooLarge = false;
};

/// bytes: as decodePicture() takes them. Too large is a JPEG of more than 100 million pixels in all
/// its scans, since each goes through the whole picture, and any other picture of more than 10
/// million, since only JPEG can be decoded at a smaller size.
[[nodiscard]] TimelyPicture decodeInTime(const QByteArray &bytes, const PictureWish &wish);

} // namespace velmora
