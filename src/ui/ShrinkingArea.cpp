#include "ui/ShrinkingArea.h"

#include <QApplication>
#include <QEvent>
#include <QScrollBar>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kLeastLines = 6; // of text: a heading and two rows of boxes

} // namespace

ShrinkingArea::ShrinkingArea(QWidget *parent)
    : QScrollArea(parent)
{
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    setFocusPolicy(Qt::NoFocus);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget *, QWidget *now) { showFocus(now); });
}

// What it holds is destroyed later, and then loses the focus.
ShrinkingArea::~ShrinkingArea()
{
    qApp->disconnect(this);
}

// A press of the mouse shall not move what is under the pointer.
void ShrinkingArea::showFocus(QWidget *now)
{
    const bool isMine = now != nullptr && widget() != nullptr && widget()->isAncestorOf(now);
    if (isMine && QGuiApplication::mouseButtons() == Qt::NoButton) {
        ensureWidgetVisible(now);
    }
}

bool ShrinkingArea::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry(); // the content has another size
    }
    return QScrollArea::event(event);
}

QSize ShrinkingArea::sizeHint() const
{
    const int frame = 2 * frameWidth();
    return widget() == nullptr ? QScrollArea::sizeHint()
                               : widget()->sizeHint() + QSize(frame, frame);
}

QSize ShrinkingArea::minimumSizeHint() const
{
    if (widget() == nullptr) {
        return QScrollArea::minimumSizeHint();
    }
    const QSize content = widget()->minimumSizeHint();
    const int bar = verticalScrollBar()->sizeHint().width();
    const int frame = 2 * frameWidth();
    return {content.width() + bar + frame,
            std::min(content.height(), kLeastLines * fontMetrics().height()) + frame};
}

} // namespace velmora
