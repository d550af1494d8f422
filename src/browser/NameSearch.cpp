#include "browser/NameSearch.h"

#include "base/DateText.h"

#include <QStringList>

#include <algorithm>

namespace velmora {
namespace {

constexpr qsizetype kYearDigits = 4;

QString dayFirst(QString date)
{
    date = date.trimmed().replace(u'-', u'/').replace(u'.', u'/');
    QStringList parts = date.split(u'/');
    if (parts.first().size() == kYearDigits) {
        std::ranges::reverse(parts);
    }
    return parts.join(u'/');
}

} // namespace

std::optional<SearchKeys> searchKeys(const QString &date, const QString &time)
{
    const std::optional<WallTime> day = dateFromText(dayFirst(date));
    if (!day) {
        return std::nullopt;
    }
    const WallFields at = wallFields(*day);
    const QString dayKey = QStringLiteral("%1%2%3")
                               .arg(at.year, kYearDigits, 10, QLatin1Char('0'))
                               .arg(twoDigits(at.month), twoDigits(at.day));
    const QString moment = dayKey + u'_' + QString(time).remove(u':');
    return SearchKeys{moment.toUtf8(), dayKey.toUtf8()};
}

} // namespace velmora
