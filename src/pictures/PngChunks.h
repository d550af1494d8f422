// Leaves out of a PNG what is not painted: texts and colour profiles may unpack to gigabytes, and a
// window shows none of them.
#pragma once

#include <QByteArray>

namespace velmora {

/// The file with its critical chunks and the transparency alone; data that break off make a shorter
/// chunk, any other chunk stays as it is. bytes: begin with the signature of a PNG.
[[nodiscard]] QByteArray paintedPngChunks(const QByteArray &bytes);

} // namespace velmora
