// Pads a truncated WebP, so that the decoder shows the part that is there.
#pragma once

#include <QByteArray>

namespace velmora {

/// The bytes padded with zeros to the length that the file claims; the decoder makes a smooth area
/// of those. Unchanged when it is complete, or when less than a sixteenth is there.
[[nodiscard]] QByteArray filledWebp(const QByteArray &bytes);

} // namespace velmora
