// Characters in native names, which are usually UTF-8 but may be any bytes.
#pragma once

#include <QByteArrayView>

namespace velmora {

/// Bytes in the UTF-8 character at a position in the text; a byte that is not UTF-8 counts as a
/// character of its own.
[[nodiscard]] qsizetype characterLength(QByteArrayView text, qsizetype at);

} // namespace velmora
