// The HTML pages of the demonstration cameras.
#pragma once

#include <QByteArray>

namespace velmora::demo {

/// A list of the ten cameras with links; UTF-8.
[[nodiscard]] QByteArray indexPage();

/// What the missing camera sends: as long as a small picture, so that only its status shows that it
/// is not one.
[[nodiscard]] QByteArray missingCameraPage();

} // namespace velmora::demo
