#include "base/DateText.h"

#include "base/Digits.h"

#include <QList>
#include <QStringBuilder>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

// Digits only: a sign or blank inside a field makes it no date.
std::optional<int> field(QStringView text, qsizetype maxDigits)
{
    const bool isNumber = !text.isEmpty() && text.size() <= maxDigits && areDigits(text);
    return isNumber ? std::optional(text.toInt()) : std::nullopt;
}

std::optional<WallTime> dayFromText(QStringView text)
{
    const QList<QStringView> parts = text.split(u'/');
    if (parts.size() != 3) {
        return std::nullopt;
    }
    const auto day = field(parts[0], 2);
    const auto month = field(parts[1], 2);
    const auto year = field(parts[2], 4);
    if (!day || !month || !year || *year < kFirstYear || *year > kLastYear) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year{*year},
                                           std::chrono::month{static_cast<unsigned>(*month)},
                                           std::chrono::day{static_cast<unsigned>(*day)}};
    return date.ok() ? std::optional<WallTime>(std::chrono::local_days{date}) : std::nullopt;
}

std::optional<std::chrono::seconds> timeOfDayFromText(QStringView text)
{
    const QList<QStringView> parts = text.split(u':');
    if (parts.size() < 2 || parts.size() > 3) {
        return std::nullopt;
    }
    const auto hour = field(parts[0], 2);
    const auto minute = field(parts[1], 2);
    const auto second = parts.size() == 3 ? field(parts[2], 2) : std::optional(0);
    if (!hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59) {
        return std::nullopt;
    }
    return *hour * 1h + *minute * 1min + *second * 1s;
}

QString yearText(int year)
{
    return QString::number(year).rightJustified(4, u'0');
}

} // namespace

WallFields wallFields(WallTime time)
{
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date{day};
    const std::chrono::hh_mm_ss clock{time - day};
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(clock.hours().count()),
            static_cast<int>(clock.minutes().count()),
            static_cast<int>(clock.seconds().count())};
}

QString twoDigits(int number)
{
    return QString::number(number).rightJustified(2, u'0');
}

QString dateText(WallTime time)
{
    return dayText(time) % u' ' % timeText(time);
}

QString dayText(WallTime time)
{
    const WallFields at = wallFields(time);
    return twoDigits(at.day) % u'/' % twoDigits(at.month) % u'/' % yearText(at.year);
}

QString isoDayText(WallTime time)
{
    const WallFields at = wallFields(time);
    return yearText(at.year) % u'-' % twoDigits(at.month) % u'-' % twoDigits(at.day);
}

QString timeText(WallTime time)
{
    const WallFields at = wallFields(time);
    return timeText(at.hour, at.minute, at.second);
}

QString timeText(int hours, int minutes, int seconds)
{
    return twoDigits(hours) % u':' % twoDigits(minutes) % u':' % twoDigits(seconds);
}

QString universalTimeText(WallTime time)
{
    return isoDayText(time) % u'T' % timeText(time) % u'Z';
}

std::optional<WallTime> dateFromText(QStringView text)
{
    const QList<QStringView> parts = text.split(u' ', Qt::SkipEmptyParts);
    if (parts.isEmpty() || parts.size() > 2) {
        return std::nullopt;
    }
    const auto day = dayFromText(parts[0]);
    const auto time = parts.size() == 2 ? timeOfDayFromText(parts[1]) : std::optional(0s);
    return day && time ? std::optional(*day + *time) : std::nullopt;
}

} // namespace velmora
