// The folder name of a camera: its address with everything but ASCII letters written as "%" and a
// code.
#pragma once

#include <QString>

namespace velmora {

/// "\" + encoded address + "\", or an empty text for an empty address. The code is the character's
/// Windows-1252 code in upper-case hexadecimal without leading zeros; the encoded text is cut to
/// 255 characters, as long as a file name can be. Throws OverflowError for an address of more than
/// 255 characters.
[[nodiscard]] QString encodeFolderName(QStringView url);

/// The reverse: "%" and the two characters behind it become a character. Codes below 16 are written
/// with one digit and therefore do not come back; that asymmetry is part of the form.
[[nodiscard]] QString DecodeFolderName(QStringView name);

} // namespace velmora
