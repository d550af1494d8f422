// Puts windows above all others.
#pragma once

#include <QWidget>

namespace velmora {

enum class TopMost { Off, On };

/// Puts a window above all others, or back among normal windows; position and size stay.
void SetTopMost(QWidget &window, TopMost where);

} // namespace velmora
