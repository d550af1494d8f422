#include "ui/GroupTabs.h"

#include <QMouseEvent>
#include <QWheelEvent>

namespace velmora {

void GroupTabs::mousePressEvent(QMouseEvent *event)
{
    const int selected = currentIndex();
    QTabBar::mousePressEvent(event);
    if (event->button() == Qt::LeftButton && selected >= 0 &&
        tabAt(event->position().toPoint()) == selected) {
        Q_EMIT currentClicked(selected);
    }
}

void GroupTabs::wheelEvent(QWheelEvent *event)
{
    event->accept();
}

} // namespace velmora
