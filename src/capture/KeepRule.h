// Whether an undated picture is new, for a camera set to keep such pictures, and the date that it
// gets.
#pragma once

#include "cameras/KeepChoice.h"
#include "capture/NewImageRule.h"
#include "capture/PictureMark.h"

#include <optional>

namespace velmora {

/// What the decision about an undated picture depends on.
struct UndatedPicture
{
    KeepChoice choice; // not Keep::Dated
    PictureMark mark;
    PictureMark stored; // of the last one kept; empty when nothing is remembered
};

/// A picture is new if the folder is empty, or if it differs as the choice requires. Where looks
/// cannot be compared, the bytes decide.
[[nodiscard]] bool isNewUndated(const UndatedPicture &picture, FolderState folder);

/// The date of a new picture without a Last-Modified: the answer's own, if it is within a day of
/// the clock and later than that of the last picture kept (a camera's clock may stand still), else
/// the clock's; if the clock has not passed the last picture's date, one second after that. All in
/// UTC.
[[nodiscard]] WallTime undatedDate(const std::optional<WallTime> &answered,
                                   const std::optional<WallTime> &stored, WallTime universalNow);

} // namespace velmora
