// Keys after a window was minimised in the moment in which it asked for them.
#include "ui/KeyboardFocus.h"

#include <QGuiApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <gtest/gtest.h>

#include <memory>

namespace velmora {
namespace {

using namespace std::chrono_literals;

/// A window in front with the keyboard focus, and another that asks for it while it is minimised:
/// like the real one, the tests' display grants every request.
class KeyboardFocusTest : public testing::Test
{
protected:
    KeyboardFocusTest()
    {
        other_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&other_));
        front_.show();
        front_.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&front_));
    }

    [[nodiscard]] QWindow *front() const { return front_.windowHandle(); }

    [[nodiscard]] QWindow *other() const { return other_.windowHandle(); }

    void ask()
    {
        other()->requestActivate();
        EXPECT_TRUE(QTest::qWaitFor([this] { return QGuiApplication::focusWindow() == other(); }));
    }

    // Timers that are due at once are served in the order in which they were set.
    static void waitForCheck()
    {
        bool isOver = false;
        QTimer::singleShot(0ms, qApp, [&isOver] { isOver = true; });
        EXPECT_TRUE(QTest::qWaitFor([&isOver] { return isOver; }));
        QCoreApplication::processEvents();
    }

    QWidget other_;
    QWidget front_;
};

TEST_F(KeyboardFocusTest, ComesBackFromAMinimisedWindow)
{
    const KeyboardFocus focus(0ms);
    other_.showMinimized();
    ask();
    waitForCheck();
    EXPECT_EQ(QGuiApplication::focusWindow(), front());
    EXPECT_TRUE(front_.isActiveWindow());
}

TEST_F(KeyboardFocusTest, StaysAtAWindowOnTheScreen)
{
    const KeyboardFocus focus(0ms);
    ask();
    waitForCheck();
    EXPECT_EQ(QGuiApplication::focusWindow(), other());
}

TEST_F(KeyboardFocusTest, StaysWhereItIsWhenTheWindowBeforeIsGone)
{
    const KeyboardFocus focus(0ms);
    auto before = std::make_unique<QWidget>();
    before->show();
    before->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(before.get()));
    other_.showMinimized();
    ask();
    before.reset();
    waitForCheck();
    EXPECT_EQ(QGuiApplication::focusWindow(), other());
}

} // namespace
} // namespace velmora
