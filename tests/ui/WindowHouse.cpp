#include "WindowHouse.h"

#include <QLineEdit>
#include <QTabBar>

#include <gtest/gtest.h>

namespace velmora::test {

WindowHouse::WindowHouse()
    : window({house.timer, house.table, house.storage, house.options, debugSwitch, house.log,
              house.view, opener})
{
    window.bringUp();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
}

WindowHouse::~WindowHouse()
{
    window.allowClose();
    window.close();
    house.scope.requestStop(); // fetches for the live view end before the view does
    clock.advance(std::chrono::seconds{1});
}

void WindowHouse::type(const QString &box, const QString &text)
{
    QTest::mouseClick(&find<QLineEdit>(box), Qt::LeftButton);
    QTest::keyClick(&find<QLineEdit>(box), Qt::Key_End);
    QTest::keyClicks(&find<QLineEdit>(box), text);
}

void WindowHouse::retype(const QString &box, const QString &text)
{
    QTest::mouseClick(&find<QLineEdit>(box), Qt::LeftButton);
    QTest::keyClick(&find<QLineEdit>(box), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&find<QLineEdit>(box), Qt::Key_Delete);
    QTest::keyClicks(&find<QLineEdit>(box), text);
}

void WindowHouse::click(const QString &control, Qt::KeyboardModifiers modifiers)
{
    auto &widget = find<QWidget>(control);
    const QPoint at = qobject_cast<QCheckBox *>(&widget) != nullptr ? QPoint(8, widget.height() / 2)
                                                                    : widget.rect().center();
    QTest::mouseClick(&widget, Qt::LeftButton, modifiers, at);
}

void WindowHouse::leaveBox()
{
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
}

void WindowHouse::selectTab(int group)
{
    auto &tabs = find<QTabBar>(QStringLiteral("Selecteur"));
    QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(group).center());
}

QString WindowHouse::stored(QStringView section, QStringView key) const
{
    return house.settings.read(section, key);
}

} // namespace velmora::test
