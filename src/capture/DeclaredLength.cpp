#include "capture/DeclaredLength.h"

#include "base/Digits.h"

#include <algorithm>

namespace velmora {
namespace {

// As libcurl reads a length: a plus may precede it, and whatever follows does not matter.
QByteArray leadingDigits(const QByteArray &text)
{
    const auto begin = text.begin() + (text.startsWith('+') ? 1 : 0);
    const auto end = std::find_if_not(begin, text.end(), [](char c) { return isDigit(c); });
    return {begin, end - begin};
}

} // namespace

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
    const QByteArray digits = leadingDigits(first_);
    bool fits = false;
    const qint64 length = digits.toLongLong(&fits);
    return fits ? length > most : !digits.isEmpty();
}

} // namespace velmora
