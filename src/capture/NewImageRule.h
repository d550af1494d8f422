// Whether a downloaded picture is a new image, and what its date says about the camera's interval.
#pragma once

#include "base/Clock.h"

#include <QString>

#include <optional>

namespace velmora {

/// What is known about a picture that has arrived.
struct ImageDates
{
    QString header;                   // Last-Modified as sent, empty when there was none
    std::optional<WallTime> modified; // the header as a date, when it is one
    std::optional<WallTime> stored;   // Last-Modified of the last image kept
};

enum class FolderState { Empty, HoldsFiles };

/// A picture is new if the folder is empty, header or not, or if its Last-Modified differs from the
/// stored one. A header that is not a date differs from any date.
[[nodiscard]] bool isNewImage(const ImageDates &dates, FolderState folder);

/// The interval between the stored image and this one as "HH:MM:SS", the hours including whole
/// days; "00:00:00" for a negative interval or one of 100 hours or more. Nothing when the picture
/// has no date.
[[nodiscard]] std::optional<QString> bestTimeCandidate(const ImageDates &dates);

/// A candidate replaces a stored best time that is unknown or, compared as text, greater than it or
/// equal.
[[nodiscard]] bool replacesBestTime(const QString &candidate, const QString &stored);

} // namespace velmora
