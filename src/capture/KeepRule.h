// Whether a picture that came without a date is new, for a camera chosen so, and the date that it
// gets.
#pragma once

#include "cameras/KeepChoice.h"
#include "capture/NewImageRule.h"
#include "capture/PictureMark.h"

#include <optional>

namespace velmora {

/// What decides about a picture without a date.
struct UndatedPicture
{
    KeepChoice choice; // not Keep::Dated
    PictureMark mark;
    PictureMark stored; // of the one kept last; empty when nothing is remembered
};

/// New is what comes into an empty folder, and what differs as the choice asks for. Where looks
/// cannot be compared, the bytes decide.
[[nodiscard]] bool isNewUndated(const UndatedPicture &picture, FolderState folder);

/// The date of a new picture without a Last-Modified: the answer's own, when it lies within a day
/// of the clock and behind the date of the picture kept last (a camera's clock may stand still),
/// else the clock's; a second behind that picture's date where the clock has not gone beyond it.
/// All in universal time.
[[nodiscard]] WallTime undatedDate(const std::optional<WallTime> &answered,
                                   const std::optional<WallTime> &stored, WallTime universalNow);

} // namespace velmora
