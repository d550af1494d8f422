#include "ui/WrapLabel.h"

#include <QResizeEvent>

namespace velmora {
namespace {

constexpr int kMostOfAWord = 40; // letters

} // namespace

// Before it is shown it has no width of its own.
QSize WrapLabel::minimumSizeHint() const
{
    const int widest = kMostOfAWord * fontMetrics().averageCharWidth();
    QSize least = QLabel::minimumSizeHint().boundedTo({widest, QWIDGETSIZE_MAX});
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
