// The tabs of the camera groups.
#pragma once

#include <QTabBar>

namespace velmora {

/// Tabs that only a click or a key changes: the wheel, which turns by chance while a window is
/// scrolled, does nothing. A click on the tab that is selected already is told too.
class GroupTabs : public QTabBar
{
    Q_OBJECT

public:
    using QTabBar::QTabBar;

Q_SIGNALS:
    void currentClicked(int index);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
};

} // namespace velmora
