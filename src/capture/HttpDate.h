// Dates of HTTP headers.
#pragma once

#include "base/Clock.h"

#include <QString>

#include <optional>

namespace velmora {

/// Converts the RFC 1123 form ("Tue, 15 Nov 1994 08:12:31 GMT") into a date. The fields are taken
/// by their place in the text, and the GMT time as it stands, without a shift to the local zone.
/// Nothing for a text of another form.
[[nodiscard]] std::optional<WallTime> CalculDate(const QString &header);

} // namespace velmora
