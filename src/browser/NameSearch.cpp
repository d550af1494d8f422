#include "browser/NameSearch.h"

#include "browser/TypedDate.h"

#include <QStringList>

namespace velmora {

std::optional<SearchKeys> searchKeys(const QString &date, const QString &time)
{
    const std::optional<WallTime> day = typedDate(date);
    if (!day) {
        return std::nullopt;
    }
    const WallFields at = wallFields(*day);
    const QString dayKey = QStringLiteral("%1%2%3")
                               .arg(at.year, 4, 10, QLatin1Char('0'))
                               .arg(twoDigits(at.month), twoDigits(at.day));
    const QString moment = dayKey + u'_' + QString(time).remove(u':');
    return SearchKeys{moment.toUtf8(), dayKey.toUtf8()};
}

} // namespace velmora
