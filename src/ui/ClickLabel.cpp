#include "ui/ClickLabel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace velmora {

void holdSize(QLabel &label, const QString &widestText)
{
    constexpr int kRoom = 4;
    const QSize text = label.fontMetrics().size(Qt::TextSingleLine, widestText);
    label.setFixedSize(text + QSize(kRoom, kRoom));
}

bool isClickKey(const QKeyEvent &event)
{
    const int key = event.key();
    return !event.isAutoRepeat() &&
           (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter);
}

void paintFocus(QWidget &widget)
{
    if (!widget.hasFocus()) {
        return;
    }
    QStyleOptionFocusRect option;
    option.initFrom(&widget);
    option.backgroundColor = widget.palette().color(QPalette::Window);
    QPainter painter(&widget);
    widget.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, &widget);
}

ClickLabel::ClickLabel(QWidget *parent)
    : QLabel(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

void ClickLabel::mousePressEvent(QMouseEvent *event)
{
    QLabel::mousePressEvent(event);
    if (event->button() == Qt::LeftButton) {
        Q_EMIT pressed();
    }
}

void ClickLabel::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        Q_EMIT clicked();
    }
}

void ClickLabel::keyPressEvent(QKeyEvent *event)
{
    if (isClickKey(*event)) {
        Q_EMIT pressed();
        Q_EMIT clicked();
    } else {
        QLabel::keyPressEvent(event);
    }
}

void ClickLabel::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    paintFocus(*this);
}

} // namespace velmora
