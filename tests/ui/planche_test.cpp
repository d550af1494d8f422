// The browser's window: what it says of the capture, and where it leads.
#include "ui/planche.h"

#include "support/FakeClock.h"
#include "support/TempTree.h"

#include <QAbstractButton>
#include <QLabel>
#include <QListWidget>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

class PlancheTest : public testing::Test
{
protected:
    PlancheTest() { window_.show(); }

    QString text(const QString &label) { return window_.findChild<QLabel *>(label)->text(); }

    void click(const QString &button)
    {
        QTest::mouseClick(window_.findChild<QAbstractButton *>(button), Qt::LeftButton);
    }

    TempTree tree_;
    FakeClock clock_;
    SettingsFile settings_{tree_.path()};
    EventLog log_{tree_.path(), clock_};
    planche window_{settings_, log_};
};

TEST_F(PlancheTest, HasItsCaption)
{
    EXPECT_EQ(window_.windowTitle(), QStringLiteral("Kesh Camera"));
}

TEST_F(PlancheTest, CountsAndNamesStoredImages)
{
    window_.showStored({3, 4}, QStringLiteral("a.jpg"));
    window_.showStored({9, 0}, QStringLiteral("b.jpg"));
    EXPECT_EQ(text(QStringLiteral("NbCapt")), QStringLiteral("2"));
    EXPECT_EQ(text(QStringLiteral("Capt")), QStringLiteral("9:0"));
    auto *const list = window_.findChild<QListWidget *>();
    ASSERT_EQ(list->count(), 2);
    EXPECT_TRUE(list->item(0)->text().contains(QStringLiteral("b.jpg")));
}

TEST_F(PlancheTest, KeepsTheLastImagesOnly)
{
    for (int i = 0; i < 300; ++i) {
        window_.showStored({0, 0}, QString::number(i));
    }
    EXPECT_EQ(window_.findChild<QListWidget *>()->count(), 200);
    EXPECT_EQ(text(QStringLiteral("NbCapt")), QStringLiteral("300"));
}

TEST_F(PlancheTest, SaysWhatFailed)
{
    window_.showFailed({1, 2}, QStringLiteral("no answer"));
    EXPECT_TRUE(text(QStringLiteral("txtLog")).contains(QStringLiteral("1:2")));
    EXPECT_TRUE(text(QStringLiteral("txtLog")).contains(QStringLiteral("no answer")));
}

TEST_F(PlancheTest, SetupLeadsToTheMainWindow)
{
    const QSignalSpy setUp(&window_, &planche::setUpWanted);
    click(QStringLiteral("cSetUp"));
    EXPECT_EQ(setUp.count(), 1);
}

TEST_F(PlancheTest, MiniMinimises)
{
    click(QStringLiteral("Mini"));
    EXPECT_TRUE(window_.isMinimized());
}

TEST_F(PlancheTest, QuitAsksFirst)
{
    const QSignalSpy close(&window_, &planche::closeWanted);
    click(QStringLiteral("Quitter"));
    EXPECT_EQ(close.count(), 1);
    EXPECT_TRUE(window_.isVisible());
    EXPECT_EQ(settings_.read(u"Control", u"Planche.Top"), QString());
}

TEST_F(PlancheTest, StoresItsPlaceInTwipsWhenItCloses)
{
    window_.moveTo({330, 4485});
    log_.setOn(true);
    window_.allowClose();
    window_.close();
    EXPECT_EQ(settings_.read(u"Control", u"Planche.Top"), QStringLiteral("330"));
    EXPECT_EQ(settings_.read(u"Control", u"Planche.Left"), QStringLiteral("4485"));
    EXPECT_TRUE(tree_.read(u"Velmora.log").contains("Planche Form_Unload"));
}

} // namespace
} // namespace velmora::test
