// The tabs of the camera groups.
#pragma once

#include <QTabBar>

namespace velmora {

/// Tabs that only a click or a key changes: the wheel, which is easily turned while scrolling, does
/// nothing. A click on the tab already selected is reported too.
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
