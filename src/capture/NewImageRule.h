// Whether a downloaded picture is a new image, and what its date tells of the camera's interval.
#pragma once

#include "base/Clock.h"

#include <QString>

#include <optional>

namespace velmora {

/// What is known of a picture that has arrived.
struct ImageDates
{
    QString header;                   // Last-Modified as sent, empty when there was none
    std::optional<WallTime> modified; // the header as a date, when it is one
    std::optional<WallTime> stored;   // Last-Modified of the image kept last
};

enum class FolderState { Empty, HoldsFiles };

/// New is what comes into an empty folder, header or not, and what has a Last-Modified that differs
/// from the stored one. A header that is no date differs from any date.
[[nodiscard]] bool isNewImage(const ImageDates &dates, FolderState folder);

/// The interval between the stored image and this one as "HH:MM:SS", the hours counting whole days
/// too; "00:00:00" for an interval below zero or from 100 hours on. Nothing when the picture has no
/// date.
[[nodiscard]] std::optional<QString> bestTimeCandidate(const ImageDates &dates);

/// A candidate replaces a stored best time that is unknown, and one behind which it does not sort
/// as text.
[[nodiscard]] bool replacesBestTime(const QString &candidate, const QString &stored);

} // namespace velmora
