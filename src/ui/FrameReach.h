// Where a window's frame may be so that its title bar can be reached, as pure geometry.
#pragma once

#include <QList>
#include <QRect>

namespace velmora {

/// The frame's corner: unchanged as long as enough of its title bar can be seen and grabbed; else
/// the nearest place where it can. titleHeight: 0 while the window has no title bar or it is not
/// known; then it is enough to see part of the window. screens: the room on each that is available
/// to windows, at least one.
[[nodiscard]] QPoint cornerInReach(const QRect &frame, int titleHeight,
                                   const QList<QRect> &screens);

} // namespace velmora
