#include "browser/TypedDate.h"

#include "base/Digits.h"

#include <QLocale>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kMonths = 12;
constexpr qsizetype kShortestMonth = 3;
constexpr qsizetype kYearDigits = 4;
constexpr qsizetype kCompactDigits = 8; // "20060307"
constexpr int kFirstOfLastCentury = 30; // from here on a two-digit year is one of the last century

bool isNumber(const QString &text)
{
    return !text.isEmpty() && areDigits(text);
}

QString withoutAccents(const QString &text)
{
    QString plain = text.normalized(QString::NormalizationForm_D).toLower();
    plain.removeIf([](QChar c) { return c.isMark(); });
    return plain;
}

// The month whose name, in either language, a word begins; 0 for none or several.
int monthOf(const QString &word)
{
    const QString wanted = withoutAccents(word);
    int found = 0;
    for (int month = 1; month <= kMonths && wanted.size() >= kShortestMonth; ++month) {
        for (const auto language : {QLocale::English, QLocale::French}) {
            if (withoutAccents(QLocale(language).monthName(month)).startsWith(wanted)) {
                found = found == 0 || found == month ? month : kMonths + 1;
            }
        }
    }
    return found > kMonths ? 0 : found;
}

QString fullYear(const QString &year)
{
    if (year.size() != 2 || !isNumber(year)) {
        return year;
    }
    return (year.toInt() < kFirstOfLastCentury ? QStringLiteral("20") : QStringLiteral("19")) +
           year;
}

// "20060307", or else "07032006".
std::optional<WallTime> compactDate(const QString &digits)
{
    const auto day = dateFromText(digits.last(2) + u'/' + digits.sliced(4, 2) + u'/' +
                                  digits.first(kYearDigits));
    return day ? day
               : dateFromText(digits.first(2) + u'/' + digits.sliced(2, 2) + u'/' +
                              digits.last(kYearDigits));
}

// Day, month and year, in whatever order they were given.
QStringList inOrder(QStringList parts)
{
    if (parts[0].size() == kYearDigits && isNumber(parts[0])) {
        std::ranges::reverse(parts);
    } else if (!isNumber(parts[0])) {
        parts.swapItemsAt(0, 1);
    }
    if (!isNumber(parts[1])) {
        parts[1] = QString::number(monthOf(parts[1]));
    }
    parts[2] = fullYear(parts[2]);
    return parts;
}

std::optional<WallTime> dateOf(const QString &text)
{
    static const QRegularExpression between(QStringLiteral("\\s*[-/.,]\\s*|\\s+"));
    const QStringList parts = text.split(between);
    if (parts.size() == 1 && text.size() == kCompactDigits && isNumber(text)) {
        return compactDate(text);
    }
    return parts.size() == 3 ? dateFromText(inOrder(parts).join(u'/')) : std::nullopt;
}

} // namespace

std::optional<WallTime> typedDate(const QString &text)
{
    static const QRegularExpression timeBehind(QStringLiteral("\\s+(\\d\\d?:\\d\\d?(:\\d\\d?)?)$"));
    const QString typed = text.trimmed();
    const QRegularExpressionMatch time = timeBehind.match(typed);
    if (!time.hasMatch()) {
        return dateOf(typed);
    }
    const bool isTime = dateFromText(QStringLiteral("1/1/2000 ") + time.captured(1)).has_value();
    return isTime ? dateOf(typed.first(time.capturedStart()).trimmed()) : std::nullopt;
}

} // namespace velmora
