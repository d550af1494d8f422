// Text dragged from elsewhere onto a control.
#pragma once

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

namespace velmora::test {

/// Drops a text near the control's upper left corner; true when it was taken.
inline bool dropText(QWidget &control, const QString &text)
{
    QMimeData data;
    data.setText(text);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&control, &enter);
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&control, &drop);
    return drop.isAccepted();
}

} // namespace velmora::test
