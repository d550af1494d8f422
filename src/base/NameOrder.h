// The order in which names of files are listed.
#pragma once

#include <QByteArrayView>

#include <compare>

namespace velmora {

/// By the bytes of the names, the case of ASCII letters ignored; names that differ in nothing else
/// are ordered by their bytes, capitals first.
[[nodiscard]] std::strong_ordering compareNames(QByteArrayView a, QByteArrayView b);

/// The case of ASCII letters is ignored.
[[nodiscard]] bool nameBeginsWith(QByteArrayView name, QByteArrayView text);

} // namespace velmora
