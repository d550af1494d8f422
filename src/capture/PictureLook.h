// The look of a picture: its grey levels in a raster of a few cells, by which two pictures of a
// camera can be told to differ much or little.
#pragma once

#include "base/Clock.h"

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QString>

namespace velmora {

/// The grey levels of 16 times 9 cells, line by line, Base64. Empty for anything but a picture, and
/// for one that would take too much memory or time to decode: a JPEG of several scans whose
/// coefficients take more than 40 MiB, any other JPEG of more than 64 Mi pixels, any other picture
/// of more than 2 Mi. Events run in between, except while a picture other than a JPEG is decoded.
[[nodiscard]] QCoro::Task<QByteArray> lookOf(QByteArray picture, Clock *clock);

/// Why no picture other than a JPEG has a look: the program's library that decodes them cannot be
/// loaded. Empty when it can.
[[nodiscard]] QString lookFault();

} // namespace velmora
