// Keys that act in a whole window.
#pragma once

#include <QKeySequence>

class QShortcut;
class QWidget;

namespace velmora {

/// Makes a shortcut of a window, or of a part of one, that acts once each time its keys are
/// pressed, however long they are held down. It belongs to its owner.
QShortcut &addKeys(QWidget &owner, const QKeySequence &keys);

/// Escape closes the window, unless it is still held down from closing what was in front.
void closeOnEscape(QWidget &window);

} // namespace velmora
