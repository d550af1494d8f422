#include "cameras/BestTime.h"

#include "base/DateText.h"
#include "base/Digits.h"

#include <QList>

#include <algorithm>

namespace velmora {
namespace {

bool isTwoDigitNumber(QStringView text)
{
    return !text.isEmpty() && text.size() <= 2 && areDigits(text);
}

} // namespace

QString BestTime::text() const
{
    return timeText(hours, minutes, seconds);
}

BestTime bestTimeFromText(QStringView text)
{
    const QList<QStringView> parts = text.trimmed().split(u':');
    if (parts.size() != 3 || !std::ranges::all_of(parts, isTwoDigitNumber)) {
        return {};
    }
    const BestTime time{parts[0].toInt(), parts[1].toInt(), parts[2].toInt()};
    return time.minutes < 60 && time.seconds < 60 ? time : BestTime{};
}

} // namespace velmora
