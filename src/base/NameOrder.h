// The order in which file names are listed.
#pragma once

#include <QByteArrayView>

#include <compare>

namespace velmora {

/// By the bytes of the names, ignoring the case of ASCII letters; names that differ in case alone
/// are ordered by their bytes, capitals first.
[[nodiscard]] std::strong_ordering compareNames(QByteArrayView a, QByteArrayView b);

/// Ignores the case of ASCII letters.
[[nodiscard]] bool nameBeginsWith(QByteArrayView name, QByteArrayView text);

} // namespace velmora
