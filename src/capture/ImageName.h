// The file name of a captured image.
#pragma once

#include "base/Clock.h"

#include <QByteArrayView>
#include <QString>

namespace velmora {

/// The extension with its ".": the rest of the address from its last "." on. Where that could not
/// be part of a file name (http://10.0.0.5/snap), or there is no ".", it is that of the content's
/// type: as the picture's first bytes tell it, else as the server names it, else ".jpg". The same
/// goes for the end of a field that may not be shown, if it is not a picture's extension.
[[nodiscard]] QString imageExtension(const QString &url, QByteArrayView body,
                                     const QString &contentType);

/// Date and time of the image as "yyyyMMdd_HHmmss", day and hour of the download, extension; cut to
/// 23 characters, so the extension keeps three letters.
[[nodiscard]] QString imageName(WallTime image, WallTime download, const QString &extension);

} // namespace velmora
