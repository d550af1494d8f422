#include "ui/TopMost.h"

namespace velmora {

void SetTopMost(QWidget &window, TopMost where)
{
    const bool wasVisible = window.isVisible();
    const QRect geometry = window.geometry();
    window.setWindowFlag(Qt::WindowStaysOnTopHint, where == TopMost::On); // hides the window
    window.setGeometry(geometry);
    window.setVisible(wasVisible);
}

} // namespace velmora
