// What can be shown of a truncated WebP.
#pragma once

#include <QByteArray>
#include <QImage>

namespace velmora {

/// Fewer bytes are there than the file claims.
[[nodiscard]] bool isPartOfWebp(const QByteArray &bytes);

/// The complete lines of a truncated picture of this size in pixels; the rest is empty. Null when
/// there is no complete line, or when it is animated.
[[nodiscard]] QImage linesOfWebp(const QByteArray &bytes, QSize size);

/// The bytes padded with zeros to the length that the file claims; the decoder of animated pictures
/// makes a smooth area of those. Unchanged when it is complete, or when less than a sixteenth is
/// there.
[[nodiscard]] QByteArray filledWebp(const QByteArray &bytes);

} // namespace velmora
