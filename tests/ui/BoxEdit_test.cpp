// What a text box reports about the focus, the mouse and the Enter key.
#include "ui/BoxEdit.h"

#include "DroppedText.h"
#include "ui/ShrinkingArea.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace velmora {
namespace {

class BoxEditTest : public testing::Test
{
protected:
    BoxEditTest()
    {
        auto *const layout = new QHBoxLayout(&window_);
        layout->addWidget(&other_);
        layout->addWidget(&box_);
        window_.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
        other_.setFocus();
    }

    ~BoxEditTest() override
    {
        box_.setParent(nullptr);
        other_.setParent(nullptr);
    }

    static void bringUp(QWidget &window)
    {
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QWidget window_;
    QWidget another_;
    QLineEdit other_;
    BoxEdit box_;
};

TEST_F(BoxEditTest, TellsThatItWasEnteredAndLeft)
{
    const QSignalSpy entered(&box_, &BoxEdit::entered);
    const QSignalSpy left(&box_, &BoxEdit::left);
    QTest::keyClick(&other_, Qt::Key_Tab);
    EXPECT_EQ(entered.count(), 1);
    EXPECT_EQ(left.count(), 0);
    QTest::keyClick(&box_, Qt::Key_Tab);
    EXPECT_EQ(left.count(), 1);
}

// What is dropped is typed text: it has to be left to count.
TEST_F(BoxEditTest, IsEnteredByTextThatIsDropped)
{
    const QSignalSpy entered(&box_, &BoxEdit::entered);
    const QSignalSpy left(&box_, &BoxEdit::left);
    EXPECT_TRUE(test::dropText(box_, QStringLiteral("20")));
    EXPECT_EQ(entered.count(), 1);
    EXPECT_TRUE(box_.hasFocus());
    QTest::keyClick(&box_, Qt::Key_Tab);
    EXPECT_EQ(left.count(), 1);
}

TEST_F(BoxEditTest, LeavesItsWindowTheKeyThatWouldMoveTheCursorToTheEnd)
{
    QShortcut shortcut(Qt::CTRL | Qt::Key_E, &window_);
    const QSignalSpy pressed(&shortcut, &QShortcut::activated);
    box_.setFocus();
    QTest::keyClick(&box_, Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(pressed.count(), 1);
    box_.setText(QStringLiteral("some text"));
    QTest::keyClick(&box_, Qt::Key_Home);
    QTest::keyClick(&box_, Qt::Key_End);
    EXPECT_EQ(box_.cursorPosition(), 9);
}

TEST_F(BoxEditTest, TakesTheFirstLineOfAPastedText)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("\r\nhttp://cam/1.jpg\r\nand more"));
    box_.setFocus();
    const QSignalSpy changed(&box_, &QLineEdit::textChanged);
    QTest::keySequence(&box_, QKeySequence::Paste);
    EXPECT_EQ(box_.text(), QStringLiteral("http://cam/1.jpg"));
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.first().first().toString(), QStringLiteral("http://cam/1.jpg"));
}

TEST_F(BoxEditTest, IsNotLeftForItsOwnMenu)
{
    box_.setFocus();
    const QSignalSpy left(&box_, &BoxEdit::left);
    QFocusEvent toMenu(QEvent::FocusOut, Qt::PopupFocusReason);
    QCoreApplication::sendEvent(&box_, &toMenu);
    EXPECT_EQ(left.count(), 0);
}

TEST_F(BoxEditTest, IsSetAsideForAnotherWindowAndTakenUpAgain)
{
    box_.setFocus();
    const QSignalSpy left(&box_, &BoxEdit::left);
    const QSignalSpy aside(&box_, &BoxEdit::wasSetAside);
    const QSignalSpy entered(&box_, &BoxEdit::entered);
    const QSignalSpy again(&box_, &BoxEdit::takenUpAgain);
    bringUp(another_);
    EXPECT_EQ(aside.count(), 1);
    EXPECT_TRUE(box_.isInHand());
    bringUp(window_);
    EXPECT_EQ(again.count(), 1);
    EXPECT_EQ(entered.count(), 0);
    EXPECT_EQ(left.count(), 0);
}

TEST_F(BoxEditTest, IsLeftWhenTheFocusMovesOnBehindAnotherWindow)
{
    box_.setFocus();
    const QSignalSpy left(&box_, &BoxEdit::left);
    bringUp(another_);
    other_.setFocus(); // brings no event to the box
    EXPECT_EQ(left.count(), 0);
    bringUp(window_);
    EXPECT_EQ(left.count(), 1);
    EXPECT_FALSE(box_.isInHand());
}

TEST_F(BoxEditTest, IsLeftWhenTextIsDroppedOnAnotherBehindAnotherWindow)
{
    BoxEdit next;
    window_.layout()->addWidget(&next);
    box_.setFocus();
    const QSignalSpy left(&box_, &BoxEdit::left);
    bringUp(another_);
    test::dropText(next, QStringLiteral("a"));
    EXPECT_EQ(left.count(), 1);
    EXPECT_TRUE(next.isInHand());
    bringUp(window_);
    EXPECT_EQ(left.count(), 1);
    EXPECT_TRUE(next.hasFocus());
}

TEST_F(BoxEditTest, IsLeftOnceForEachTimeItWasEntered)
{
    const QSignalSpy left(&box_, &BoxEdit::left);
    box_.leave();
    EXPECT_EQ(left.count(), 0);
    box_.setFocus();
    box_.leave();
    other_.setFocus();
    EXPECT_EQ(left.count(), 1);
    box_.setFocus();
    bringUp(another_);
    box_.leave();
    bringUp(window_); // the cursor is still in the box
    EXPECT_TRUE(box_.isInHand());
    EXPECT_EQ(left.count(), 2);
}

TEST_F(BoxEditTest, IsSetAsideWhenItsWindowIsHidden)
{
    box_.setFocus();
    const QSignalSpy left(&box_, &BoxEdit::left);
    const QSignalSpy aside(&box_, &BoxEdit::wasSetAside);
    window_.hide();
    EXPECT_EQ(aside.count(), 1);
    EXPECT_EQ(left.count(), 0);
}

TEST_F(BoxEditTest, TellsBothEnterKeysAndNoOther)
{
    const QSignalSpy enter(&box_, &BoxEdit::enterPressed);
    QTest::keyClick(&box_, Qt::Key_Return);
    QTest::keyClick(&box_, Qt::Key_Enter);
    QTest::keyClick(&box_, Qt::Key_A);
    EXPECT_EQ(enter.count(), 2);
}

TEST_F(BoxEditTest, TellsClicksOfTheLeftButtonAlone)
{
    const QSignalSpy clicked(&box_, &BoxEdit::clicked);
    QTest::mouseClick(&box_, Qt::LeftButton);
    QTest::mouseClick(&box_, Qt::MiddleButton);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(BoxEditTest, IsEnteredAgainByTypingAfterItsEditingWasEnded)
{
    box_.setFocus();
    box_.leave();
    const QSignalSpy entered(&box_, &BoxEdit::entered);
    const QSignalSpy left(&box_, &BoxEdit::left);
    QTest::keyClicks(&box_, QStringLiteral("ab"));
    EXPECT_EQ(entered.count(), 1);
    other_.setFocus();
    EXPECT_EQ(left.count(), 1);
}

// Nor does what it stands in look for it.
TEST_F(BoxEditTest, SaysNothingWhenItIsDestroyedWithTheCursor)
{
    auto *const area = new ShrinkingArea(&window_);
    auto *const box = new BoxEdit;
    area->setWidget(box);
    area->show();
    box->setFocus();
    ASSERT_TRUE(box->hasFocus());
    const QSignalSpy left(box, &BoxEdit::left);
    const QSignalSpy aside(box, &BoxEdit::wasSetAside);
    delete area;
    EXPECT_EQ(left.count(), 0);
    EXPECT_EQ(aside.count(), 0);
}

} // namespace
} // namespace velmora
