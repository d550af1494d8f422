#include "ui/FramePlace.h"

#include "ui/FrameReach.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

namespace velmora {

FramePlace::FramePlace(QWidget &window)
    : QObject(&window)
    , window_(window)
{
    window_.installEventFilter(this);
}

QPoint FramePlace::reachable(const QRect &frame, int titleHeight) const
{
    QList<QRect> screens;
    for (const QScreen *const screen : QGuiApplication::screens()) {
        screens.append(screen->availableGeometry());
    }
    return screens.isEmpty() ? frame.topLeft() : cornerInReach(frame, titleHeight, screens);
}

// The toolkit's own move() includes the frame only before the window is created.
void FramePlace::moveTo(QPoint corner)
{
    const QPoint inSight = reachable({corner, window_.size()}, 0);
    window_.move(inSight);
    window_.winId(); // creates it
    window_.windowHandle()->setFramePosition(inSight);
    wanted_ = inSight;
}

QPoint FramePlace::corner() const
{
    if (!window_.isMaximized() && !window_.isFullScreen()) {
        return window_.frameGeometry().topLeft();
    }
    const QPoint frameToContents = window_.geometry().topLeft() - window_.frameGeometry().topLeft();
    return window_.normalGeometry().topLeft() - frameToContents;
}

bool FramePlace::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Paint:
    case QEvent::WindowActivate:
        if (wanted_) { // later, once the toolkit has handled the event itself
            QMetaObject::invokeMethod(this, &FramePlace::settle, Qt::QueuedConnection);
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void FramePlace::settle()
{
    if (!wanted_ || !window_.isVisible()) {
        return;
    }
    QWindow *const handle = window_.windowHandle();
    const QMargins frame = handle->frameMargins();
    if (frame.isNull()) {
        return;
    }
    // NOLINTNEXTLINE(bugprone-unchecked-optional-access): asked for just before
    const QPoint wanted = *std::exchange(wanted_, std::nullopt);
    const QRect whole(wanted, handle->frameGeometry().size());
    // a window that does not fit would be put elsewhere
    Q_EMIT framed({reachable(whole, frame.top()), whole.size()});
    const QSize fitted = window_.size().grownBy(frame);
    const QPoint corner = reachable({wanted, fitted}, frame.top());
    handle->setPosition(corner + QPoint(frame.left(), frame.top()));
}

} // namespace velmora
