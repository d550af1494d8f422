// The health of the cameras, under mouse and keys.
#include "ui/HealthWindow.h"

#include "WindowHouse.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTableView>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

constexpr int kCameras = 5;

class HealthWindowTest : public testing::Test
{
protected:
    HealthWindowTest()
    {
        for (int row = 0; row < kCameras; ++row) {
            house_.house.addCamera({0, row}, cameraUrl({0, row}));
        }
        house_.house.settings.write(u"Camera03", u"Name", u"Garage");
        book_.load();
        house_.house.finish();
        book_.addFailure({0, 3}, QStringLiteral("no answer"));
        window_.present();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    }

    template <typename Control>
    Control &find(const char *name)
    {
        return *window_.findChild<Control *>(QLatin1String(name));
    }

    QTableView &table() { return find<QTableView>("healthTable"); }

    [[nodiscard]] QString cell(int row, HealthTable::Column column)
    {
        return table().model()->index(row, column).data().toString();
    }

    WindowHouse house_;
    HealthBook book_{house_.house.table, house_.house.storage, house_.clock, house_.house.scope};
    OldestFirst oldest_{house_.house.table, house_.house.storage, house_.clock, house_.house.scope};
    HealthWatch watch_{house_.house.storage, house_.clock, book_, house_.house.scheduler, oldest_};
    HealthWindow window_{book_, watch_, house_.house.settings};
};

TEST_F(HealthWindowTest, ShowsTheWorstFirstWithTheKeyboardInTheTable)
{
    EXPECT_EQ(window_.objectName(), QStringLiteral("health"));
    EXPECT_EQ(table().model()->rowCount(), kCameras);
    EXPECT_EQ(cell(0, HealthTable::Camera), QStringLiteral("0:3 Garage"));
    EXPECT_EQ(cell(0, HealthTable::Failure), QStringLiteral("no answer"));
    EXPECT_EQ(table().currentIndex().row(), 0);
    EXPECT_EQ(window_.focusWidget(), &table());
}

TEST_F(HealthWindowTest, EnterGoesToTheCamera)
{
    QSignalSpy wanted(&window_, &HealthWindow::cameraWanted);
    QTest::keyClick(&table(), Qt::Key_Return);
    ASSERT_EQ(wanted.size(), 1);
    EXPECT_EQ(wanted.front().front().value<CameraAddress>(), (CameraAddress{0, 3}));
    QTest::keyClick(&table(), Qt::Key_Down);
    QTest::keyClick(&table(), Qt::Key_Enter);
    EXPECT_EQ(wanted.size(), 2);
}

TEST_F(HealthWindowTest, WhatIsTypedOverTheTableFiltersIt)
{
    QTest::keyClicks(&table(), QStringLiteral("g"));
    QTest::keyClicks(window_.focusWidget(), QStringLiteral("arage"));
    EXPECT_EQ(find<QLineEdit>("healthFilter").text(), QStringLiteral("garage"));
    ASSERT_EQ(table().model()->rowCount(), 1);
    QSignalSpy wanted(&window_, &HealthWindow::cameraWanted);
    QTest::keyClick(&find<QLineEdit>("healthFilter"), Qt::Key_Return);
    EXPECT_EQ(wanted.size(), 1);
}

TEST_F(HealthWindowTest, SortsByTheColumnThatIsClicked)
{
    QHeaderView &header = *table().horizontalHeader();
    const QPoint title(header.sectionViewportPosition(HealthTable::Camera) + 20, 5);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, title);
    const QString first = cell(0, HealthTable::Camera);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, title);
    EXPECT_EQ(first, cell(kCameras - 1, HealthTable::Camera));
    EXPECT_NE(first, cell(0, HealthTable::Camera));
}

TEST_F(HealthWindowTest, CopiesItsRowsAsText)
{
    QTest::keySequence(&table(), QKeySequence::Copy);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), kCameras);
    EXPECT_TRUE(lines.first().contains(QStringLiteral("0:3 Garage\t")));
    EXPECT_EQ(lines.first().count(u'\t'), HealthTable::kColumns - 1);
}

TEST_F(HealthWindowTest, RemembersWhatIsChosen)
{
    const HealthOptions options(house_.house.settings);
    EXPECT_TRUE(find<QCheckBox>("healthNotices").isChecked());
    for (const char *const name :
         {"healthNotices", "healthMail", "healthDelete", "healthStop", "healthNever"}) {
        QTest::keyClick(&find<QCheckBox>(name), Qt::Key_Space);
    }
    EXPECT_FALSE(options.isOn(HealthChoice::Notices));
    EXPECT_TRUE(options.isOn(HealthChoice::Mail));
    EXPECT_TRUE(options.isOn(HealthChoice::DeleteOldest));
    EXPECT_TRUE(options.isOn(HealthChoice::StopWhenFull));
    EXPECT_TRUE(options.isNever({0, 3}));
    EXPECT_FALSE(options.isNever({0, 2}));
}

TEST_F(HealthWindowTest, WritesNothingBecauseItIsOpened)
{
    EXPECT_EQ(house_.house.settings.read(u"Health", u"Notices"), QString());
    EXPECT_EQ(house_.house.settings.read(u"Health", u"DeleteOldest"), QString());
}

TEST_F(HealthWindowTest, ItsPartsHaveNamesThatPeopleUnderstand)
{
    for (const char *const name : {"healthFilter", "healthTable", "healthRoom", "healthNotices",
                                   "healthMail", "healthDelete", "healthStop", "healthNever"}) {
        EXPECT_FALSE(find<QWidget>(name).accessibleName().isEmpty()) << name;
    }
}

TEST_F(HealthWindowTest, EscapeClosesIt)
{
    QTest::keyClick(&window_, Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
}

} // namespace
} // namespace velmora::test
