#include "ui/WrapLabel.h"

#include <QResizeEvent>

namespace velmora {

// Before it is shown it has no width of its own.
QSize WrapLabel::minimumSizeHint() const
{
    QSize least = QLabel::minimumSizeHint();
    if (isVisible() && !text().isEmpty()) {
        least.setHeight(heightForWidth(width()));
    }
    return least;
}

void WrapLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) {
        updateGeometry();
    }
}

} // namespace velmora
