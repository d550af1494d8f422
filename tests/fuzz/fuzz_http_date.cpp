// Fuzzes the date of an HTTP header: whatever a server sends is a date that can be written down
// again, or none.
#include "Require.h"
#include "base/DateText.h"
#include "capture/HttpDate.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace velmora::fuzz {
namespace {

constexpr std::array kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

QString headerText(WallTime time)
{
    const WallFields at = wallFields(time);
    return QStringLiteral("Xxx, %1 %2 %3 %4:%5:%6 GMT")
        .arg(twoDigits(at.day), QLatin1String(kMonths.at(static_cast<std::size_t>(at.month) - 1)))
        .arg(at.year, 4, 10, QLatin1Char('0'))
        .arg(twoDigits(at.hour), twoDigits(at.minute), twoDigits(at.second));
}

void check(const QString &header)
{
    const std::optional<WallTime> date = CalculDate(header);
    if (!date) {
        return;
    }
    require(CalculDate(headerText(*date)) == date, "a date is read back as it is written");
    require(CalculDate(header + QStringLiteral(" more")) == date || header.trimmed().size() < 25,
            "what stands behind the time does not count");
    require(dateFromText(dateText(*date)) == date, "a date survives the settings file");
}

} // namespace
} // namespace velmora::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    velmora::fuzz::check(
        QString::fromLatin1(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    return 0;
}
