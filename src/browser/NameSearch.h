// Searches for an image by date and time.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmora {

/// How the names of images from a time, and from a day, begin.
struct SearchKeys
{
    QByteArray moment; // "20061231_1430"
    QByteArray day;    // "20061231"

    bool operator==(const SearchKeys &) const = default;
};

/// Outcome of a search.
enum class SearchOutcome {
    Found,
    DayFound,        // no image of that time: the first of the day is selected
    NoImageOfTheDay, // the selection stays
    NoDate
};

/// The keys for a date as typed, in any usual form (see typedDate), and a time, whose ":"s are
/// dropped. Nothing when the date is not one.
[[nodiscard]] std::optional<SearchKeys> searchKeys(const QString &date, const QString &time);

} // namespace velmora
