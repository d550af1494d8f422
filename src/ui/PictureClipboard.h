// Puts stored images on the clipboard.
#pragma once

#include <QString>

namespace velmora {

/// Copies the picture in a file (native path) at its own size. Only the file's bytes are kept: the
/// picture is decoded when it is pasted, even if the file is gone by then. If the file holds no
/// picture, the clipboard stays as it is.
void copyPicture(const QString &path);

} // namespace velmora
