// The leading-number rule, by which every number in the settings and the option boxes is read.
#pragma once

#include <QStringView>

namespace velmora {

/// The number with which a text begins, 0 when there is none. Blanks, tabs and line feeds are
/// skipped everywhere ("1 5x" is 15); then come an optional sign, digits with at most one decimal
/// point, and an exponent ("12abc" is 12, "-.5" is -0.5, "2,7" is 2). A number too large for a
/// double is infinite.
[[nodiscard]] double leadingNumber(QStringView text);

} // namespace velmora
