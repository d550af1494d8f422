// The look of a picture: its grey levels in a raster of a few cells, by which two pictures of a
// camera can be told to differ much or little.
#pragma once

#include "base/Clock.h"

#include <QByteArray>
#include <QCoro/QCoroTask>

namespace velmora {

/// The grey levels of 16 times 9 cells, line by line, Base64; empty for what is no picture, and for
/// one that could be decoded only with too much memory or time: a JPEG of several scans whose
/// coefficients take more than 40 MiB, another JPEG of more than 64 Mi pixels, any other picture of
/// more than 2 Mi. Events run in between, except while a picture that is no JPEG is decoded.
[[nodiscard]] QCoro::Task<QByteArray> lookOf(QByteArray picture, Clock *clock);

} // namespace velmora
