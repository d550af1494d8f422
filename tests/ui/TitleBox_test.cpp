// The start-up box and the closing box.
#include "ui/TitleBox.h"

#include "ui/TopMost.h"

#include <QLabel>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace velmora {
namespace {

template <typename Box>
class TitleBoxTest : public testing::Test
{
protected:
    TitleBoxTest() { box_.present(); }

    QString text(const QString &label) { return box_.template findChild<QLabel *>(label)->text(); }

    Box box_;
};

using Boxes = testing::Types<frmSplash, frmQuitte>;
TYPED_TEST_SUITE(TitleBoxTest, Boxes);

TYPED_TEST(TitleBoxTest, ShowsTitleAndVersion)
{
    EXPECT_EQ(this->text(QStringLiteral("lblProductName")), QStringLiteral("Velmora"));
    EXPECT_EQ(this->text(QStringLiteral("lblVersion")), QStringLiteral("Version 2.3.17"));
    EXPECT_TRUE(this->box_.isVisible());
}

TYPED_TEST(TitleBoxTest, AnyKeyClosesIt)
{
    const QSignalSpy dismissed(&this->box_, &TitleBox::dismissed);
    QTest::keyClick(&this->box_, Qt::Key_X);
    EXPECT_FALSE(this->box_.isVisible());
    EXPECT_EQ(dismissed.count(), 1);
}

TYPED_TEST(TitleBoxTest, AClickOnTheFrameClosesIt)
{
    const QSignalSpy dismissed(&this->box_, &TitleBox::dismissed);
    QTest::mouseClick(this->box_.template findChild<QWidget *>(QStringLiteral("Frame1")),
                      Qt::LeftButton);
    EXPECT_FALSE(this->box_.isVisible());
    EXPECT_EQ(dismissed.count(), 1);
}

TYPED_TEST(TitleBoxTest, AClickOnATextInTheFrameClosesIt)
{
    QWidget *const text = this->box_.template findChild<QWidget *>(QStringLiteral("lblVersion"));
    QTest::mouseClick(this->box_.windowHandle(), Qt::LeftButton, {},
                      text->mapTo(&this->box_, text->rect().center()));
    EXPECT_FALSE(this->box_.isVisible());
}

TYPED_TEST(TitleBoxTest, AKeyHeldSinceBeforeClosesNothing)
{
    QKeyEvent again(QEvent::KeyPress, Qt::Key_Q, Qt::ControlModifier, QStringLiteral("q"), true);
    QCoreApplication::sendEvent(&this->box_, &again);
    EXPECT_TRUE(this->box_.isVisible());
}

TEST(ClosingBox, SaysThatAPassIsBeingEndedAndWhatGivesItUp)
{
    frmQuitte box;
    box.present();
    const auto *const hint = box.findChild<QLabel *>(QStringLiteral("hint"));
    EXPECT_TRUE(hint->isVisible());
    EXPECT_TRUE(hint->text().contains(QStringLiteral("last pass")));
    EXPECT_TRUE(hint->text().contains(QStringLiteral("key")));
    EXPECT_TRUE(hint->text().contains(QStringLiteral("click")));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&box));
}

TEST(StartBox, SaysNothingElse)
{
    frmSplash box;
    box.present();
    EXPECT_FALSE(box.findChild<QLabel *>(QStringLiteral("hint"))->isVisible());
}

TEST(TitleBoxNames, AreThoseOfTheWindows)
{
    EXPECT_EQ(frmSplash().objectName(), QStringLiteral("frmSplash"));
    EXPECT_EQ(frmQuitte().objectName(), QStringLiteral("frmQuitte"));
}

TEST(SetTopMost, KeepsPlaceSizeAndVisibility)
{
    QWidget window;
    window.setGeometry(100, 120, 300, 200);
    window.show();
    SetTopMost(window, TopMost::On);
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.geometry(), QRect(100, 120, 300, 200));
    SetTopMost(window, TopMost::Off);
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(window.geometry(), QRect(100, 120, 300, 200));
}

} // namespace
} // namespace velmora
