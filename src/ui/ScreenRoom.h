// The room that a screen has for a window.
#pragma once

#include <QWidget>

namespace velmora {

/// The part of the window's screen that it may fill without its frame, which a window manager adds,
/// reaching beyond it.
[[nodiscard]] QRect screenRoom(const QWidget &window);

/// Gives the window this size, or what its screen has room for.
void resizeOnScreen(QWidget &window, QSize wanted);

} // namespace velmora
