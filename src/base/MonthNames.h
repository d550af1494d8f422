// The months as HTTP and mail write them.
#pragma once

#include <array>

namespace velmora {

/// January first.
inline constexpr std::array kMonthNames = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                           "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

} // namespace velmora
