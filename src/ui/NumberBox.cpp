#include "ui/NumberBox.h"

#include <QFocusEvent>
#include <QHideEvent>
#include <QLineEdit>
#include <QWheelEvent>

namespace velmora {

NumberBox::NumberBox(QWidget *parent)
    : QSpinBox(parent)
{
    setKeyboardTracking(false);
    setFocusPolicy(Qt::StrongFocus);
}

void NumberBox::focusOutEvent(QFocusEvent *event)
{
    const bool isSetAside =
        event->reason() == Qt::ActiveWindowFocusReason || event->reason() == Qt::PopupFocusReason;
    if (isSetAside) {
        lineEdit()->event(event); // the cursor stops blinking
        update();
    } else {
        QSpinBox::focusOutEvent(event);
    }
}

// A minimised window is not closed.
void NumberBox::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous()) {
        QSpinBox::hideEvent(event);
    }
}

void NumberBox::wheelEvent(QWheelEvent *event)
{
    if (hasFocus()) {
        QSpinBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}

} // namespace velmora
