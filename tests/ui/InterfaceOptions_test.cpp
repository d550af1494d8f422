// The option boxes of the main window: tick length, time-out, log switch.
#include "WindowHouse.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

class InterfaceOptions : public testing::Test
{
protected:
    QString box(const QString &name) { return house_.find<QLineEdit>(name).text(); }

    WindowHouse house_;
};

TEST_F(InterfaceOptions, EveryKeystrokeInTheTimerBoxIsStored)
{
    house_.retype(QStringLiteral("tempo"), QStringLiteral("2"));
    EXPECT_EQ(house_.stored(u"Control", u"Tempo"), QStringLiteral("2"));
    house_.type(QStringLiteral("tempo"), QStringLiteral("5"));
    EXPECT_EQ(house_.stored(u"Control", u"Tempo"), QStringLiteral("25"));
}

TEST_F(InterfaceOptions, EveryKeystrokeInTheTimeoutBoxIsStored)
{
    house_.retype(QStringLiteral("TIO"), QStringLiteral("30"));
    EXPECT_EQ(house_.stored(u"Control", u"TIO"), QStringLiteral("30"));
}

TEST_F(InterfaceOptions, AValueSetByACommandWaitsForItsOwnBoxAlone)
{
    house_.click(QStringLiteral("tempo"));
    const QString before = box(QStringLiteral("tempo"));
    house_.house.settings.write(u"Control", u"Tempo", u"20");
    house_.house.settings.write(u"Control", u"TIO", u"30");
    house_.house.engine.adoptSettings();
    EXPECT_EQ(box(QStringLiteral("TIO")), QStringLiteral("30"));
    EXPECT_EQ(box(QStringLiteral("tempo")), before);
    house_.leaveBox();
    EXPECT_EQ(box(QStringLiteral("tempo")), QStringLiteral("20"));
}

TEST_F(InterfaceOptions, ATickPutsTheTimerBoxRight)
{
    const struct
    {
        const char *typed;
        const char *shown;
        int intervalMs;
    } rows[] = {{"0", "1", 1000},    {"", "1", 1000},    {"-5", "5", 5000},
                {"90", "60", 60000}, {"2.7", "2", 2700}, {"abc", "1", 1000}};

    for (const auto &row : rows) {
        SCOPED_TRACE(row.typed);
        house_.retype(QStringLiteral("tempo"), QLatin1String(row.typed));
        house_.leaveBox();
        house_.house.scheduler.RegleTempo();
        EXPECT_EQ(box(QStringLiteral("tempo")), QLatin1String(row.shown));
        EXPECT_EQ(house_.house.timer.interval(), row.intervalMs);
        EXPECT_EQ(house_.stored(u"Control", u"Tempo"), QLatin1String(row.shown));
    }
}

TEST_F(InterfaceOptions, ADownloadPutsTheTimeoutBoxRight)
{
    house_.retype(QStringLiteral("TIO"), QStringLiteral("-30"));
    house_.leaveBox();
    house_.house.options.normaliseTimeout();
    EXPECT_EQ(box(QStringLiteral("TIO")), QStringLiteral("30"));
    house_.retype(QStringLiteral("TIO"), QStringLiteral("2"));
    house_.leaveBox();
    house_.house.options.normaliseTimeout();
    EXPECT_EQ(box(QStringLiteral("TIO")), QStringLiteral("5"));
}

TEST_F(InterfaceOptions, StartUpShowsDefaultsWithoutStoringThem)
{
    house_.house.tree.write(u"Velmora.ini", "");
    house_.house.options.load();
    EXPECT_EQ(box(QStringLiteral("tempo")), QStringLiteral("1"));
    EXPECT_EQ(box(QStringLiteral("TIO")), QStringLiteral("5"));
    EXPECT_EQ(house_.house.tree.read(u"Velmora.ini"), QByteArray());
}

TEST_F(InterfaceOptions, TheDebugBoxSwitchesTheLogAndIsStored)
{
    house_.house.log.setOn(false);
    house_.house.page.load();
    ASSERT_FALSE(house_.find<QCheckBox>(QStringLiteral("cDebug")).isChecked());
    house_.click(QStringLiteral("cDebug"));
    EXPECT_TRUE(house_.house.log.isOn());
    EXPECT_EQ(house_.stored(u"Control", u"Debug"), QStringLiteral("1"));
    house_.click(QStringLiteral("cDebug"));
    EXPECT_FALSE(house_.house.log.isOn());
    EXPECT_EQ(house_.stored(u"Control", u"Debug"), QStringLiteral("0"));
}

// A command has done the same meanwhile: the click must not take it back.
TEST_F(InterfaceOptions, AClickSwitchesTheGroupAsWasSeenAtThePress)
{
    auto &box = house_.find<QCheckBox>(QStringLiteral("ActLst"));
    const QPoint at(5, box.height() / 2);
    ASSERT_FALSE(box.isChecked());
    QTest::mousePress(&box, Qt::LeftButton, {}, at);
    house_.house.table.setGroupActive(0, true);
    house_.house.engine.adoptSettings();
    QTest::mouseRelease(&box, Qt::LeftButton, {}, at);
    EXPECT_TRUE(box.isChecked());
    EXPECT_EQ(house_.stored(u"Liste0", u"LstAct"), QStringLiteral("1"));
}

TEST_F(InterfaceOptions, AClickSwitchesTheLogAsWasSeenAtThePress)
{
    auto &box = house_.find<QCheckBox>(QStringLiteral("cDebug"));
    const QPoint at(5, box.height() / 2);
    ASSERT_TRUE(box.isChecked());
    QTest::mousePress(&box, Qt::LeftButton, {}, at);
    keys::kDebug.write(house_.house.settings, false);
    house_.house.engine.adoptSettings();
    QTest::mouseRelease(&box, Qt::LeftButton, {}, at);
    EXPECT_FALSE(box.isChecked());
    EXPECT_FALSE(house_.house.log.isOn());
    EXPECT_EQ(house_.stored(u"Control", u"Debug"), QStringLiteral("0"));
}

TEST_F(InterfaceOptions, ASwitchWhosePressIsTakenBackShowsWhatIsStored)
{
    auto &box = house_.find<QCheckBox>(QStringLiteral("ActLst"));
    QTest::mousePress(&box, Qt::LeftButton, {}, {5, box.height() / 2});
    house_.house.table.setGroupActive(0, true);
    house_.house.engine.adoptSettings();
    QTest::mouseMove(&box, {-50, -50});
    QTest::mouseRelease(&box, Qt::LeftButton, {}, {-50, -50});
    EXPECT_TRUE(box.isChecked());
    EXPECT_EQ(house_.stored(u"Liste0", u"LstAct"), QStringLiteral("1"));
}

TEST_F(InterfaceOptions, ImportLogsItsClick)
{
    house_.click(QStringLiteral("Import"));
    EXPECT_TRUE(house_.house.logText().contains(QStringLiteral("Interface Import_Click")));
}

TEST_F(InterfaceOptions, ThirtyCanBeTypedOverAnEmptiedTimerBoxWhileTicksCome)
{
    house_.retype(QStringLiteral("tempo"), QString());
    house_.house.scheduler.RegleTempo();
    EXPECT_EQ(box(QStringLiteral("tempo")), QString());
    EXPECT_EQ(house_.house.timer.interval(), 1000);
    for (const char key : {'3', '0'}) {
        house_.type(QStringLiteral("tempo"), QString(QLatin1Char(key)));
        house_.house.scheduler.RegleTempo();
    }
    house_.leaveBox();
    EXPECT_EQ(box(QStringLiteral("tempo")), QStringLiteral("30"));
    EXPECT_EQ(house_.house.timer.interval(), 30000);
}

TEST_F(InterfaceOptions, ATimeOutCanBeTypedOverAnEmptiedBoxWhileDownloadsBegin)
{
    house_.retype(QStringLiteral("TIO"), QString());
    house_.house.options.normaliseTimeout();
    house_.type(QStringLiteral("TIO"), QStringLiteral("3"));
    house_.house.options.normaliseTimeout();
    house_.type(QStringLiteral("TIO"), QStringLiteral("0"));
    house_.leaveBox();
    EXPECT_EQ(box(QStringLiteral("TIO")), QStringLiteral("30"));
}

TEST_F(InterfaceOptions, EnterEndsTheTyping)
{
    house_.retype(QStringLiteral("tempo"), QStringLiteral("90"));
    house_.house.scheduler.RegleTempo();
    QTest::keyClick(&house_.find<QLineEdit>(QStringLiteral("tempo")), Qt::Key_Return);
    EXPECT_EQ(box(QStringLiteral("tempo")), QStringLiteral("60"));
}

TEST_F(InterfaceOptions, AnotherWindowDoesNotEndTheTyping)
{
    house_.retype(QStringLiteral("tempo"), QStringLiteral("90"));
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    house_.house.scheduler.RegleTempo();
    EXPECT_EQ(box(QStringLiteral("tempo")), QStringLiteral("90"));
}

} // namespace
} // namespace velmora::test
