// What a window that is hidden still takes of what was pressed before.
#include "ui/HiddenInput.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace velmora {
namespace {

class HiddenInputTest : public testing::Test
{
protected:
    HiddenInputTest()
    {
        auto *const layout = new QVBoxLayout(&window_);
        layout->addWidget(&button_);
        layout->addWidget(&box_);
        window_.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    }

    QWidget window_;
    QPushButton button_;
    QLineEdit box_;
    QSignalSpy clicked_{&button_, &QPushButton::clicked};
};

TEST_F(HiddenInputTest, IsStillTakenWithoutIt)
{
    window_.hide();
    QTest::mouseClick(&button_, Qt::LeftButton);
    QTest::keyClicks(&box_, QStringLiteral("a"));
    EXPECT_EQ(clicked_.size(), 1);
    EXPECT_EQ(box_.text(), QStringLiteral("a"));
}

TEST_F(HiddenInputTest, IsTakenByWindowsOnTheScreen)
{
    const HiddenInput none(nullptr);
    QTest::mouseClick(&button_, Qt::LeftButton);
    QTest::keyClicks(&box_, QStringLiteral("a"));
    button_.animateClick();
    EXPECT_TRUE(QTest::qWaitFor([this] { return clicked_.size() == 2; }));
    EXPECT_EQ(box_.text(), QStringLiteral("a"));
}

TEST_F(HiddenInputTest, IsNotTakenByAWindowThatIsHidden)
{
    const HiddenInput none(nullptr);
    button_.animateClick();
    window_.hide();
    QTest::mouseClick(&button_, Qt::LeftButton);
    QTest::keyClicks(&box_, QStringLiteral("a"));
    EXPECT_FALSE(QTest::qWaitFor([this] { return !clicked_.isEmpty(); }, 300));
    EXPECT_EQ(box_.text(), QString());
}

} // namespace
} // namespace velmora
