// A camera's address in readable form.
#pragma once

#include <QString>

namespace velmora {

/// The address without credentials and without its "http://" or "https://", which does not help to
/// tell cameras apart. For labels, captions and messages.
[[nodiscard]] QString shownAddress(const QString &url);

} // namespace velmora
