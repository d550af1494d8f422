#include "ui/ToFront.h"

#include <QWidget>

namespace velmora {

void bringToFront(QWidget &window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace velmora
