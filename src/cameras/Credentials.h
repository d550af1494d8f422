// Keeps user names and passwords in addresses from being seen.
#pragma once

#include <QString>

namespace velmora {

/// The address without user and password, for everything but the address box. Values of query
/// fields that are named like credentials are masked.
[[nodiscard]] QString withoutCredentials(const QString &url);

} // namespace velmora
