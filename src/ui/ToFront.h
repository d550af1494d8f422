// Brings windows to the front.
#pragma once

class QWidget;

namespace velmora {

/// Shows a window in front of the others, with the keyboard focus; a minimised one is restored to
/// its former size.
void bringToFront(QWidget &window);

} // namespace velmora
