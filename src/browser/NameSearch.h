// The search of an image by date and time.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmora {

/// What image names begin with that were taken at a time, and on a day.
struct SearchKeys
{
    QByteArray moment; // "20061231_1430"
    QByteArray day;    // "20061231"

    bool operator==(const SearchKeys &) const = default;
};

/// What a search came to.
enum class SearchOutcome {
    Found,
    DayFound,        // no image of that time: the first of the day
    NoImageOfTheDay, // the selection stays
    NoDate
};

/// The keys of a date as typed, in any usual form (see typedDate), and a time, of which every ":"
/// is left out. Nothing when the date is none.
[[nodiscard]] std::optional<SearchKeys> searchKeys(const QString &date, const QString &time);

} // namespace velmora
