// Gives a file another name, and never costs another file its life.
#pragma once

#include <QByteArray>

#include <system_error>

namespace velmora {

/// Renames within a file system. Paths are native bytes. A link is renamed itself, not what it
/// leads to. When something stands at `to`, both stay as they are and the error is `file_exists`.
[[nodiscard]] std::error_code renameFile(const QByteArray &from, const QByteArray &to);

} // namespace velmora
