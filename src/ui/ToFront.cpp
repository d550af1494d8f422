#include "ui/ToFront.h"

#include <QEvent>
#include <QObject>
#include <QWidget>
#include <QWindow>

namespace velmora {
namespace {

/// Lives until the window that it watches is on the screen.
class ExposeWatch final : public QObject
{
public:
    ExposeWatch(QWidget &window, QWidget &watched)
        : QObject(&window)
        , window_(window)
    {
        watched.windowHandle()->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Expose && static_cast<QWindow *>(watched)->isExposed()) {
            watched->removeEventFilter(this);
            bringToFront(window_);
            deleteLater();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget &window_;
};

} // namespace

void bringToFront(QWidget &window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

void bringBefore(QWidget &window, QWidget &other)
{
    bringToFront(window);
    if (other.windowHandle() != nullptr && !other.windowHandle()->isExposed()) {
        new ExposeWatch(window, other);
    }
}

} // namespace velmora
