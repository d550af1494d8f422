// Numbers from the settings file, which must fit the type that a control or a counter takes.
#pragma once

#include <QString>

#include <stdexcept>

namespace velmora {

/// A number that does not fit: it is never clamped.
class OverflowError : public std::runtime_error
{
public:
    explicit OverflowError(const QString &text);
};

/// Rounded to the nearest whole number, halves to the even one. Throws OverflowError.
[[nodiscard]] qint16 toInt16(double number);
[[nodiscard]] qint32 toInt32(double number);

} // namespace velmora
