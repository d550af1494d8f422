// The file name of a captured image.
#pragma once

#include "base/Clock.h"

#include <QByteArrayView>
#include <QString>

namespace velmora {

/// The extension, "." included: what stands in the address from its last "." on. Where that could
/// not stand in a file name (http://10.0.0.5/snap), or there is none, it is that of the content's
/// type, as the picture's first bytes tell it, or else the server's word for it, or else ".jpg"; so
/// too where it is the end of a field that may not be shown and no picture's extension.
[[nodiscard]] QString imageExtension(const QString &url, QByteArrayView body,
                                     const QString &contentType);

/// "yyyyMMdd_HHmmss" of the image, day and hour of the download, extension; cut to 23 characters,
/// so an extension keeps three letters.
[[nodiscard]] QString imageName(WallTime image, WallTime download, const QString &extension);

} // namespace velmora
