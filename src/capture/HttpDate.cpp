#include "capture/HttpDate.h"

#include "base/DateText.h"

#include <array>

namespace velmora {
namespace {

constexpr qsizetype kDateAt = 5;
constexpr qsizetype kDateLength = 11;
constexpr qsizetype kTimeAt = 17;
constexpr qsizetype kTimeLength = 8;
constexpr std::array kMonthNames = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                    "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

} // namespace

std::optional<WallTime> CalculDate(const QString &header)
{
    const QString text = header.trimmed();
    QString date = text.mid(kDateAt, kDateLength) + u' ' + text.mid(kTimeAt, kTimeLength);
    for (std::size_t month = 0; month < kMonthNames.size(); ++month) {
        const QLatin1String name(kMonthNames[month]);
        if (date.contains(name)) {
            date.replace(u' ' + name + u' ', u'/' + twoDigits(static_cast<int>(month) + 1) + u'/');
        }
    }
    return dateFromText(date);
}

} // namespace velmora
