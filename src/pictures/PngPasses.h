// A PNG whose points come in seven passes, from coarse to fine, so that a truncated one has
// scattered points.
#pragma once

#include <QByteArray>
#include <QImage>

namespace velmora {

/// bytes: begin with the signature of a PNG.
[[nodiscard]] bool comesInPasses(const QByteArray &bytes);

/// The picture with every missing point filled like its neighbour of an earlier pass. picture,
/// other: the same, read over two grounds that differ everywhere, so that a point is there where
/// both are alike.
[[nodiscard]] QImage withPassesFilled(QImage picture, const QImage &other);

} // namespace velmora
