// Brings windows to the front.
#pragma once

class QWidget;

namespace velmora {

/// Shows a window in front of the others, with the keyboard focus; a minimised one is restored to
/// its former size.
void bringToFront(QWidget &window);

/// The same, and once more when another window, shown at the same moment, is on the screen: some
/// window managers put that one in front, although it was shown first. Both live on until then.
void bringBefore(QWidget &window, QWidget &other);

} // namespace velmora
