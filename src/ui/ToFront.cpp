#include "ui/ToFront.h"

#include <QDialog>
#include <QEvent>
#include <QObject>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace velmora {
namespace {

// The window itself, or the dialog over it that is to be answered first.
QWidget &takerOfKeys(QWidget &window)
{
    const QList<QDialog *> dialogs = window.findChildren<QDialog *>();
    const auto found = std::ranges::find_if(
        dialogs, [](const QDialog *dialog) { return dialog->isVisible() && dialog->isModal(); });
    return found == dialogs.end() ? window : takerOfKeys(**found);
}

// The keyboard focus is asked for where it will be: given to a window that a dialog blocks, it is
// lost between the two, and keys do nothing until the dialog is clicked.
void putInFront(QWidget &window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    takerOfKeys(window).activateWindow();
}

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
            putInFront(window_);
            deleteLater();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget &window_;
};

// Does nothing when the other window is on the screen already.
void putInFrontOnceThereIs(QWidget &other, QWidget &window)
{
    if (other.windowHandle() != nullptr && !other.windowHandle()->isExposed()) {
        new ExposeWatch(window, other);
    }
}

} // namespace

// A window manager that is just bringing a minimised window back may leave the keyboard focus where
// it was.
void bringToFront(QWidget &window)
{
    const bool wasMinimised = window.isMinimized();
    putInFront(window);
    if (wasMinimised) {
        putInFrontOnceThereIs(window, window);
    }
}

void bringBefore(QWidget &window, QWidget &other)
{
    bringToFront(window);
    putInFrontOnceThereIs(other, window);
}

} // namespace velmora
