// Text in the ANSI code page (Windows-1252), in which the settings file and the camera folder names
// are written. The five bytes that the page leaves undefined stand for the control characters of
// the same number, so every byte string survives the conversion to text and back.
#pragma once

#include <QByteArray>
#include <QString>

namespace velmora {

/// Text as Windows-1252 bytes, one byte per UTF-16 unit; a character that the page lacks becomes
/// "?".
[[nodiscard]] QByteArray toAnsi(QStringView text);

/// Windows-1252 bytes as text.
[[nodiscard]] QString fromAnsi(QByteArrayView bytes);

/// True when converting the text to Windows-1252 loses no character.
[[nodiscard]] bool fitsAnsi(QStringView text);

} // namespace velmora
