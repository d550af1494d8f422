// A camera's address as people read it.
#pragma once

#include <QString>

namespace velmora {

/// The address without its "http://" or "https://", which tells no two cameras apart, and without
/// credentials. For labels, captions and messages.
[[nodiscard]] QString shownAddress(const QString &url);

} // namespace velmora
