// Puts stored images on the clipboard.
#pragma once

#include <QString>

namespace velmora {

/// Copies the picture of a file (native path) in its own size. Only the file's bytes are kept: the
/// picture is decoded when somebody pastes it, also when the file is gone by then. Without a
/// picture in the file the clipboard stays as it is.
void copyPicture(const QString &path);

} // namespace velmora
