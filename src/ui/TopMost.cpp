#include "ui/TopMost.h"

#include <QWindow>

namespace velmora {

void SetTopMost(QWidget &window, TopMost where)
{
    Qt::WindowFlags flags = window.windowFlags();
    flags.setFlag(Qt::WindowStaysOnTopHint, where == TopMost::On);
    window.overrideWindowFlags(flags); // setWindowFlags() would hide the window
    if (QWindow *const handle = window.windowHandle()) {
        handle->setFlags(flags);
    }
}

} // namespace velmora
