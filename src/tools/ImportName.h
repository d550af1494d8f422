// The names under which the import files images in a camera's folder: a name that is already a date
// and time stays, any other is replaced by one.
#pragma once

#include "base/Clock.h"

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace velmora {

/// Names are native bytes; positions count characters of UTF-8, where a byte that is not UTF-8
/// counts as one. A name stays when it begins with "2" and its first dot is its 20th character.
[[nodiscard]] bool needsImportName(QByteArrayView name);

/// "yyyyMMdd_HHmmss" of the file's creation, the number of collisions so far in four digits, ".",
/// and everything after the first dot of the name, or all of a name without a dot. Of a number
/// above 9999, the last four digits are used.
[[nodiscard]] QByteArray importName(QByteArrayView name, WallTime created, qint16 collisions);

/// The name to try when that one is taken: its first 15 characters, the number, and everything
/// after its 20th character. The 20th itself, usually the dot, is lost each time; tools that read
/// such folders rely on that. Nothing for a name of fewer than 20 characters.
[[nodiscard]] std::optional<QByteArray> nameAfterCollision(QByteArrayView name, qint16 collisions);

} // namespace velmora
