#include "ui/ScreenRoom.h"

#include <QScreen>

namespace velmora {
namespace {

constexpr QMargins kFrame{8, 0, 8, 40}; // about what a window manager puts around a window

} // namespace

QRect screenRoom(const QWidget &window)
{
    return window.screen()->availableGeometry().marginsRemoved(kFrame);
}

void resizeOnScreen(QWidget &window, QSize wanted)
{
    window.resize(wanted.boundedTo(screenRoom(window).size()));
}

} // namespace velmora
