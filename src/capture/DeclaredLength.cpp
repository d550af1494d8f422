#include "capture/DeclaredLength.h"

#include "base/Digits.h"

namespace velmora {

bool DeclaredLength::take(QByteArrayView value)
{
    for (const QByteArray &part : value.toByteArray().split(',')) {
        const QByteArray length = part.trimmed();
        if (first_.isEmpty()) {
            first_ = length;
        } else if (!length.isEmpty() && length != first_) {
            return false;
        }
    }
    return true;
}

bool DeclaredLength::isAbove(qint64 most) const
{
    bool isNumber = false;
    const qint64 length = first_.toLongLong(&isNumber);
    return isNumber ? length > most : !first_.isEmpty() && areDigits(first_);
}

} // namespace velmora
