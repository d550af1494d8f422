// The case of letters in file names, by the rules of the program's home platform.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace velmora {

/// A name with every letter of Windows-1252 in lower case, as long as before: names that differ in
/// nothing else are one name. name: UTF-8; bytes that are none stay as they are.
[[nodiscard]] QByteArray foldedName(QByteArrayView name);

} // namespace velmora
