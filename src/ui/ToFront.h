// Windows brought to the front.
#pragma once

class QWidget;

namespace velmora {

/// Shows a window in front of the others, with the keyboard; a minimised one is opened again, as
/// large as it was.
void bringToFront(QWidget &window);

} // namespace velmora
