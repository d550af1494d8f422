// Tool tips whose text comes from outside: an address, a path, a message.
#pragma once

#include <QString>

class QWidget;

namespace velmora {

/// Shows the text literally. Text that looks like markup would otherwise be treated as such, and
/// could even load a picture.
void setPlainToolTip(QWidget &widget, const QString &text);

} // namespace velmora
