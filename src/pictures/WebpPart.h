// Fills up a WebP that breaks off, so that the decoder shows the part that is there.
#pragma once

#include <QByteArray>

namespace velmora {

/// The bytes with zeros behind them up to the length that the file gives itself; the decoder makes
/// a smooth area of those. As they are when all is there, or less than a sixteenth.
[[nodiscard]] QByteArray filledWebp(const QByteArray &bytes);

} // namespace velmora
