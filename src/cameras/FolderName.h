// A camera's folder name: its address with everything but ASCII letters written as "%" and a code.
#pragma once

#include <QString>

namespace velmora {

/// "\" + encoded address + "\", or an empty text for an empty address. The code is the character's
/// Windows-1252 code in upper-case hexadecimal without leading zeros; the encoded text is cut to
/// 255 characters, the length limit of a file name. Throws OverflowError for an address of more
/// than 255 characters.
[[nodiscard]] QString encodeFolderName(QStringView url);

/// Turns a folder name back into text: "%" and the two characters after it become a character.
/// Codes below 16 are written with one digit and therefore do not come back; that asymmetry is part
/// of the format.
[[nodiscard]] QString DecodeFolderName(QStringView name);

} // namespace velmora
