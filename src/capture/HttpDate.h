// Dates in HTTP headers.
#pragma once

#include "base/Clock.h"

#include <QString>

#include <optional>

namespace velmora {

/// Converts an HTTP date in its RFC 1123 form ("Tue, 15 Nov 1994 08:12:31 GMT"). The fields are
/// taken by their position in the text, and the GMT time as it is, without conversion to the local
/// zone. Nothing for a text of any other form.
[[nodiscard]] std::optional<WallTime> CalculDate(const QString &header);

} // namespace velmora
