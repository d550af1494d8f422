#include "ui/BoxEdit.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>

namespace velmora {

BoxEdit::BoxEdit(QWidget *parent)
    : QLineEdit(parent)
{
}

void BoxEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    if (event->reason() != Qt::PopupFocusReason) {
        Q_EMIT entered();
    }
}

void BoxEdit::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) {
        Q_EMIT left();
    }
}

void BoxEdit::mousePressEvent(QMouseEvent *event)
{
    QLineEdit::mousePressEvent(event);
    if (event->button() == Qt::LeftButton) {
        Q_EMIT clicked();
    }
}

void BoxEdit::keyPressEvent(QKeyEvent *event)
{
    QLineEdit::keyPressEvent(event);
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Q_EMIT enterPressed();
    }
}

} // namespace velmora
