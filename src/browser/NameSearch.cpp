#include "browser/NameSearch.h"

#include "base/NameStamp.h"
#include "browser/TypedDate.h"

#include <QStringList>

namespace velmora {

std::optional<SearchKeys> searchKeys(const QString &date, const QString &time)
{
    const std::optional<WallTime> day = typedDate(date);
    if (!day) {
        return std::nullopt;
    }
    const QByteArray key = dayKey(*day);
    return SearchKeys{key + '_' + QString(time).remove(u':').toUtf8(), key};
}

} // namespace velmora
