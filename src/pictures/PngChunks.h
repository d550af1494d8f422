// Strips a PNG of what is not painted: texts and colour profiles may unpack to gigabytes, and a
// window shows none of them.
#pragma once

#include <QByteArray>

namespace velmora {

/// The file with only its critical chunks and its transparency; truncated data make a shorter
/// chunk, every other chunk is unchanged. bytes: begin with the signature of a PNG.
[[nodiscard]] QByteArray paintedPngChunks(const QByteArray &bytes);

} // namespace velmora
