#include "ui/KeyboardFocus.h"

#include <QGuiApplication>
#include <QTimer>

namespace velmora {
KeyboardFocus::KeyboardFocus(std::chrono::milliseconds settling)
    : settling_(settling)
    , current_(QGuiApplication::focusWindow())
{
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &KeyboardFocus::windowChanged);
}

void KeyboardFocus::windowChanged(QWindow *window)
{
    before_ = current_;
    current_ = window;
    if (before_ != nullptr && current_ != nullptr) {
        QTimer::singleShot(settling_, this, &KeyboardFocus::check);
    }
}

void KeyboardFocus::check()
{
    const bool isAtMinimised =
        current_ != nullptr && current_->windowStates().testFlag(Qt::WindowMinimized);
    if (isAtMinimised && before_ != nullptr && before_->isExposed()) {
        before_->requestActivate();
    }
}

} // namespace velmora
