// Case of letters in file names, by the rules of the program's home platform.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace velmora {

/// A name with every Windows-1252 letter in lower case, its length unchanged: names that fold to
/// the same are one name. name: UTF-8; other bytes stay as they are.
[[nodiscard]] QByteArray foldedName(QByteArrayView name);

} // namespace velmora
