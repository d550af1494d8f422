#include "settings/Numbers.h"

#include <cmath>
#include <limits>

namespace velmora {
namespace {

template <typename Int>
Int toWhole(double number)
{
    const double rounded = std::nearbyint(number);
    if (!(rounded >= std::numeric_limits<Int>::min() &&
          rounded <= std::numeric_limits<Int>::max())) {
        throw OverflowError(QStringLiteral("The number %1 is out of range").arg(number));
    }
    return static_cast<Int>(rounded);
}

} // namespace

OverflowError::OverflowError(const QString &text)
    : std::runtime_error(text.toStdString())
{
}

qint16 toInt16(double number)
{
    return toWhole<qint16>(number);
}

qint32 toInt32(double number)
{
    return toWhole<qint32>(number);
}

} // namespace velmora
