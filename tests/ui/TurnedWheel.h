// The wheel over a control.
#pragma once

#include <QApplication>
#include <QWheelEvent>
#include <QWidget>

namespace velmora::test {

/// Turns the wheel over the middle of a control, by one notch down, or up.
inline void turnWheel(QWidget &control, int notches = -1)
{
    const QPointF middle = control.rect().center();
    QWheelEvent wheel(middle, control.mapToGlobal(middle), {}, {0, notches * 120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&control, &wheel);
}

} // namespace velmora::test
