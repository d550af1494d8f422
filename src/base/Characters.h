// Characters in native names, which are UTF-8 as a rule and any bytes in the worst case.
#pragma once

#include <QByteArrayView>

namespace velmora {

/// Bytes of the UTF-8 character that begins at a place of the text; a byte that is no UTF-8 counts
/// as a character of its own.
[[nodiscard]] qsizetype characterLength(QByteArrayView text, qsizetype at);

} // namespace velmora
