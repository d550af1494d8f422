// A camera's folder name: its address with everything but ASCII letters written as "%" and a code.
#pragma once

#include <QString>

namespace velmora {

class NativePaths;

/// Characters of an address at most: positions in it are held in a byte.
inline constexpr qsizetype kMaxUrlLength = 255;

/// "\" + encoded address + "\", or an empty text for an empty address. The code is the character's
/// Windows-1252 code in upper-case hexadecimal without leading zeros; the encoded text is cut to
/// 255 characters, the length limit of a file name. Throws OverflowError for an address of more
/// than 255 characters.
[[nodiscard]] QString encodeFolderName(QStringView url);

/// Text form of the folder of the camera at an address. storage: text form of the storage folder,
/// ending with "\". Throws as above.
[[nodiscard]] QString cameraFolderTextOf(const QString &storage, QStringView url);

/// The same as a native path; empty without such a drive, or for an address too long for a folder.
[[nodiscard]] QString cameraFolderOf(const NativePaths &paths, const QString &storage,
                                     QStringView url);

/// Turns a folder name back into text: "%" and the two characters after it become a character.
/// Codes below 16 are written with one digit and therefore do not come back; that asymmetry is part
/// of the format.
[[nodiscard]] QString DecodeFolderName(QStringView name);

} // namespace velmora
