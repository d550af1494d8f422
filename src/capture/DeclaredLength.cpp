#include "capture/DeclaredLength.h"

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

} // namespace velmora
