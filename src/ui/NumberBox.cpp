#include "ui/NumberBox.h"

#include "ui/WheelFocus.h"

#include <QFocusEvent>
#include <QHideEvent>
#include <QLineEdit>

namespace velmora {

NumberBox::NumberBox(QWidget *parent)
    : QSpinBox(parent)
{
    setKeyboardTracking(false);
    turnOnlyWithFocus(*this);
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

} // namespace velmora
