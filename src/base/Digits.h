// The ten digits of ASCII; Unicode has hundreds more, which no stored name or number contains.
#pragma once

#include <QChar>

#include <algorithm>

namespace velmora {

[[nodiscard]] constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

[[nodiscard]] constexpr bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// True for an empty text too. text: a view or string of either kind of character.
template <typename Text>
[[nodiscard]] constexpr bool areDigits(const Text &text)
{
    return std::ranges::all_of(text, [](auto c) { return isDigit(c); });
}

} // namespace velmora
