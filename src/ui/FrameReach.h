// Where the frame of a window may stand so that its title bar can be reached, as pure geometry.
#pragma once

#include <QList>
#include <QRect>

namespace velmora {

/// The corner of the frame: where it is, as long as enough of its title bar can be seen and
/// grasped; else the nearest place where it can. titleHeight: 0 while the window has no title bar
/// or none is known; then a piece of the window in sight is enough. screens: the room that each
/// leaves to windows, at least one.
[[nodiscard]] QPoint cornerInReach(const QRect &frame, int titleHeight,
                                   const QList<QRect> &screens);

} // namespace velmora
