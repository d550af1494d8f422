// The wheel over boxes that it turns.
#pragma once

class QWidget;

namespace velmora {

/// The wheel, which is easily turned while scrolling, changes the box only while it has the focus,
/// and does not give it the focus.
void turnOnlyWithFocus(QWidget &box);

/// The same for every drop-down and number of a window.
void turnBoxesOnlyWithFocus(const QWidget &window);

} // namespace velmora
