// The camera rows of the main window while a command or a sheet has them read again.
#include "WindowHouse.h"

#include <QTabBar>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

class RowsReadAgain : public testing::Test
{
protected:
    QString text(const QString &label) { return house_.find<QLabel>(label).text(); }

    int lamp(const QString &name) { return house_.find<Lamp>(name).property("FillColor").toInt(); }

    WindowHouse house_;
};

// Another camera's sheet or a command has the rows read again, in the middle of the typing or
// later.
TEST_F(RowsReadAgain, LeaveAnAddressTooLongInItsBox)
{
    const QString tooLong(256, u'a');
    house_.retype(QStringLiteral("Source2"), tooLong);
    house_.house.engine.adoptSettings();
    house_.leaveBox();
    auto &box = house_.find<QLineEdit>(QStringLiteral("Source2"));
    EXPECT_EQ(box.text(), tooLong);
    house_.house.engine.adoptSettings();
    EXPECT_EQ(box.text(), tooLong);
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QString());
    house_.selectTab(0);
    EXPECT_EQ(box.text(), QString());
}

// A camera that is then typed into the row gets what its boxes say, not something unseen.
TEST_F(RowsReadAgain, KeepTheSwitchesOfARowWithoutAnAddress)
{
    house_.click(QStringLiteral("EffM4"));
    house_.click(QStringLiteral("AutoDelay4"));
    house_.house.engine.adoptSettings();
    EXPECT_TRUE(house_.find<QCheckBox>(QStringLiteral("EffM4")).isChecked());
    EXPECT_TRUE(house_.find<QCheckBox>(QStringLiteral("AutoDelay4")).isChecked());
    EXPECT_EQ(lamp(QStringLiteral("SB4")), 255);
}

// They are set to zero in the file at the next tab switch; an address typed before that goes on
// with what the file has.
TEST_F(RowsReadAgain, ShowTheStoredCountersOfAClearedRow)
{
    house_.house.addCamera({0, 4}, QStringLiteral("http://cam/e.png"));
    house_.house.setValue(u"lNew", {0, 4}, QStringLiteral("3"));
    house_.house.setValue(u"BestTime", {0, 4}, QStringLiteral("00:10:00"));
    house_.selectTab(0);
    house_.retype(QStringLiteral("Source4"), QString());
    house_.leaveBox();
    house_.house.engine.adoptSettings();
    EXPECT_EQ(lamp(QStringLiteral("SB4")), 255);
    EXPECT_EQ(text(QStringLiteral("lNew4")), QStringLiteral("3"));
    EXPECT_EQ(text(QStringLiteral("BestTime4")), QStringLiteral("00:10:00"));
    house_.selectTab(0);
    EXPECT_EQ(text(QStringLiteral("lNew4")), QStringLiteral("0"));
    EXPECT_EQ(house_.stored(u"Groupe0", u"lNew4"), QStringLiteral("0"));
}

TEST_F(RowsReadAgain, LetAClickDoWhatWasSeenAtThePress)
{
    const CameraAddress camera{0, 4};
    house_.house.addCamera(camera, QStringLiteral("http://cam/e.png"));
    house_.house.page.reread();
    auto &box = house_.find<QCheckBox>(QStringLiteral("AutoDelay4"));
    QTest::mousePress(&box, Qt::LeftButton, {}, {5, box.height() / 2});
    house_.house.table.setValue(keys::kAutoDelai, camera, u"1");
    house_.house.table.setValue(keys::kEffM, camera, u"1");
    house_.house.page.reread();
    EXPECT_TRUE(house_.find<QCheckBox>(QStringLiteral("EffM4")).isChecked());
    QTest::mouseRelease(&box, Qt::LeftButton, {}, {5, box.height() / 2});
    EXPECT_TRUE(box.isChecked());
    EXPECT_EQ(house_.stored(u"Groupe0", u"AutoDelai4"), QStringLiteral("1"));
}

TEST_F(RowsReadAgain, AreShownOnceAPressIsTakenBack)
{
    const CameraAddress camera{0, 4};
    house_.house.addCamera(camera, QStringLiteral("http://cam/e.png"));
    house_.house.page.reread();
    auto &box = house_.find<QCheckBox>(QStringLiteral("AutoDelay4"));
    QTest::mousePress(&box, Qt::LeftButton, {}, {5, box.height() / 2});
    house_.house.table.setValue(keys::kAutoDelai, camera, u"1");
    house_.house.page.reread();
    QTest::mouseMove(&box, {-50, -50});
    QTest::mouseRelease(&box, Qt::LeftButton, {}, {-50, -50});
    EXPECT_TRUE(box.isChecked());
    EXPECT_EQ(house_.stored(u"Groupe0", u"AutoDelai4"), QStringLiteral("1"));
}

TEST_F(RowsReadAgain, LetAPressChooseNothingForAnotherCamera)
{
    const CameraAddress camera{0, 4};
    house_.house.addCamera(camera, QStringLiteral("http://cam/e.png"));
    house_.house.page.reread();
    auto &box = house_.find<QCheckBox>(QStringLiteral("EffM4"));
    QTest::mousePress(&box, Qt::LeftButton, {}, {5, box.height() / 2});
    house_.house.addCamera(camera, QStringLiteral("http://cam/other.png"));
    house_.house.page.reread();
    QTest::mouseRelease(&box, Qt::LeftButton, {}, {5, box.height() / 2});
    EXPECT_FALSE(box.isChecked());
    EXPECT_EQ(house_.stored(u"Groupe0", u"EffM4"), QString());
    QTest::mouseClick(&box, Qt::LeftButton, {}, {5, box.height() / 2});
    EXPECT_EQ(house_.stored(u"Groupe0", u"EffM4"), QStringLiteral("1"));
}

// What stands in the box does not tell which camera the row has.
TEST_F(RowsReadAgain, LetAPressChooseNothingForAnotherCameraBehindARefusedAddress)
{
    const CameraAddress camera{0, 4};
    house_.house.addCamera(camera, QStringLiteral("http://cam/e.png"));
    house_.house.page.reread();
    house_.retype(QStringLiteral("Source4"), QString(256, u'a'));
    house_.leaveBox();
    auto &box = house_.find<QCheckBox>(QStringLiteral("EffM4"));
    QTest::mousePress(&box, Qt::LeftButton, {}, {5, box.height() / 2});
    house_.house.addCamera(camera, QStringLiteral("http://cam/other.png"));
    house_.house.page.reread();
    QTest::mouseRelease(&box, Qt::LeftButton, {}, {5, box.height() / 2});
    EXPECT_EQ(house_.stored(u"Groupe0", u"EffM4"), QString());
}

TEST_F(RowsReadAgain, LetAPressResetNoBestTimeOfAnotherCamera)
{
    const CameraAddress camera{0, 4};
    house_.house.addCamera(camera, QStringLiteral("http://cam/e.png"));
    house_.house.page.reread();
    auto &label = house_.find<QLabel>(QStringLiteral("BestTime4"));
    QTest::mousePress(&label, Qt::LeftButton);
    house_.house.addCamera(camera, QStringLiteral("http://cam/other.png"));
    house_.house.setValue(u"BestTime", camera, QStringLiteral("00:05:00"));
    house_.house.page.reread();
    QTest::mouseRelease(&label, Qt::LeftButton);
    EXPECT_EQ(house_.stored(u"Groupe0", u"BestTime4"), QStringLiteral("00:05:00"));
    QTest::mouseClick(&label, Qt::LeftButton);
    EXPECT_EQ(house_.stored(u"Groupe0", u"BestTime4"), QStringLiteral("00:00:00"));
}

// The same address typed over itself is no change of the row, but saving it in the sheet is one.
TEST_F(RowsReadAgain, GiveWayToAnAddressFromTheSheet)
{
    const CameraAddress camera{0, 2};
    const QString address = QStringLiteral("http://cam/a.jpg");
    house_.house.addCamera(camera, address);
    house_.selectTab(0);
    house_.retype(QStringLiteral("Source2"), address);
    house_.house.table.setUrl(camera, {}); // as a command that removes the camera
    house_.house.engine.adoptSettings();
    house_.window.fillAddress(camera, address);
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), address);
    EXPECT_EQ(house_.find<QLineEdit>(QStringLiteral("Source2")).text(), address);
}

// Neither row has a camera, so their addresses do not tell them apart. A tool can select a tab
// while a button is held.
TEST_F(RowsReadAgain, LetAPressChooseNothingInAnotherGroup)
{
    for (const QString &name :
         {QStringLiteral("EffM4"), QStringLiteral("AutoDelay4"), QStringLiteral("ActLst")}) {
        house_.selectTab(0);
        auto &box = house_.find<QCheckBox>(name);
        QTest::mousePress(&box, Qt::LeftButton, {}, {5, box.height() / 2});
        house_.find<QTabBar>(QStringLiteral("Selecteur")).setCurrentIndex(1);
        QTest::mouseRelease(&box, Qt::LeftButton, {}, {5, box.height() / 2});
        EXPECT_FALSE(box.isChecked()) << name.toStdString();
    }
    EXPECT_EQ(house_.stored(u"Groupe1", u"EffM4"), QString());
    EXPECT_EQ(house_.stored(u"Groupe1", u"AutoDelai4"), QString());
    EXPECT_EQ(house_.stored(u"Liste1", u"LstAct"), QString());
    house_.click(QStringLiteral("ActLst"));
    EXPECT_EQ(house_.stored(u"Liste1", u"LstAct"), QStringLiteral("1"));
}

TEST_F(RowsReadAgain, LetAPressResetNoBestTimeInAnotherGroup)
{
    for (const int group : {0, 1}) {
        house_.house.addCamera({group, 4}, QStringLiteral("http://cam/e.png"));
        house_.house.setValue(u"BestTime", {group, 4}, QStringLiteral("00:05:00"));
    }
    house_.selectTab(0);
    auto &label = house_.find<QLabel>(QStringLiteral("BestTime4"));
    QTest::mousePress(&label, Qt::LeftButton);
    house_.find<QTabBar>(QStringLiteral("Selecteur")).setCurrentIndex(1);
    QTest::mouseRelease(&label, Qt::LeftButton);
    EXPECT_EQ(house_.stored(u"Groupe1", u"BestTime4"), QStringLiteral("00:05:00"));
}

TEST_F(RowsReadAgain, LetAPressResetNoCountersOfAnotherGroup)
{
    house_.house.addCamera({1, 4}, QStringLiteral("http://cam/e.png"));
    house_.house.setValue(u"lNew", {1, 4}, QStringLiteral("7"));
    auto &button = house_.find<QWidget>(QStringLiteral("RAZ"));
    QTest::mousePress(&button, Qt::LeftButton);
    house_.find<QTabBar>(QStringLiteral("Selecteur")).setCurrentIndex(1);
    QTest::mouseRelease(&button, Qt::LeftButton);
    EXPECT_EQ(house_.stored(u"Groupe1", u"lNew4"), QStringLiteral("7"));
    house_.click(QStringLiteral("RAZ"));
    EXPECT_EQ(house_.stored(u"Groupe1", u"lNew4"), QStringLiteral("0"));
}

// As an aid for those who cannot type does.
TEST_F(RowsReadAgain, LeaveATextThatAToolHasPutIntoItsBox)
{
    const QString address = QStringLiteral("http://cam/e.png");
    auto &box = house_.find<QLineEdit>(QStringLiteral("Source4"));
    box.setText(address);
    house_.house.engine.adoptSettings();
    EXPECT_EQ(box.text(), address);
    house_.leaveBox();
    EXPECT_EQ(house_.stored(u"Liste0", u"lst4"), address);
}

/// The settings file is changed by hand, and the window does not hear of it.
class RowsChangedUnheard : public RowsReadAgain
{
protected:
    RowsChangedUnheard()
    {
        house_.house.addCamera(kCamera, QStringLiteral("http://cam/shown.png"));
        house_.selectTab(0);
        house_.house.table.setUrl(kCamera, kOther);
        house_.house.setValue(u"BestTime", kCamera, QStringLiteral("00:05:00"));
        house_.house.settings.write(u"Camera04", u"Name", u"Gate");
        house_.house.settings.write(u"Camera04", u"User", u"me");
    }

    QLineEdit &box() { return house_.find<QLineEdit>(QStringLiteral("Source4")); }

    static constexpr CameraAddress kCamera{0, 4};
    const QString kOther = QStringLiteral("http://cam/other.png");
};

// What deletes the images of one camera must not be ticked for another.
TEST_F(RowsChangedUnheard, ShowTheOtherCameraInsteadOfChoosingForIt)
{
    house_.click(QStringLiteral("EffM4"));
    EXPECT_EQ(house_.stored(u"Groupe0", u"EffM4"), QString());
    EXPECT_FALSE(house_.find<QCheckBox>(QStringLiteral("EffM4")).isChecked());
    EXPECT_EQ(box().text(), kOther);
    house_.click(QStringLiteral("EffM4"));
    EXPECT_EQ(house_.stored(u"Groupe0", u"EffM4"), QStringLiteral("1"));
}

TEST_F(RowsChangedUnheard, ShowTheOtherCameraInsteadOfResettingItsBestTime)
{
    house_.click(QStringLiteral("BestTime4"));
    EXPECT_EQ(house_.stored(u"Groupe0", u"BestTime4"), QStringLiteral("00:05:00"));
    EXPECT_EQ(text(QStringLiteral("BestTime4")), QStringLiteral("00:05:00"));
    EXPECT_EQ(box().text(), kOther);
}

TEST_F(RowsChangedUnheard, KeepTheOtherCameraWhenWhatWasTypedIsTakenBack)
{
    house_.type(QStringLiteral("Source4"), QStringLiteral("x"));
    QTest::keyClick(&box(), Qt::Key_Backspace);
    house_.leaveBox();
    EXPECT_EQ(house_.stored(u"Liste0", u"lst4"), kOther);
    EXPECT_EQ(box().text(), kOther);
}

TEST_F(RowsChangedUnheard, KeepNoLoginOfTheOtherCameraForWhatIsTyped)
{
    house_.type(QStringLiteral("Source4"), QStringLiteral("x"));
    house_.leaveBox();
    EXPECT_EQ(house_.stored(u"Liste0", u"lst4"), QStringLiteral("http://cam/shown.pngx"));
    EXPECT_EQ(house_.stored(u"Camera04", u"User"), QString());
    EXPECT_EQ(house_.stored(u"Camera04", u"Name"), QString());
}

TEST_F(RowsChangedUnheard, AreShownWholeWhenTheSameAddressIsTyped)
{
    house_.house.setValue(u"EffM", kCamera, QStringLiteral("1"));
    house_.retype(QStringLiteral("Source4"), kOther);
    house_.leaveBox();
    EXPECT_TRUE(house_.find<QCheckBox>(QStringLiteral("EffM4")).isChecked());
    EXPECT_EQ(text(QStringLiteral("BestTime4")), QStringLiteral("00:05:00"));
    EXPECT_EQ(house_.stored(u"Camera04", u"Name"), QStringLiteral("Gate"));
}

// It is deleted after a month like the one that was not seen.
TEST_F(RowsChangedUnheard, ShowWhatIsStoredForTheAddressThatIsTyped)
{
    house_.house.setValue(u"EffM", kCamera, QStringLiteral("1"));
    house_.type(QStringLiteral("Source4"), QStringLiteral("x"));
    house_.leaveBox();
    EXPECT_TRUE(house_.find<QCheckBox>(QStringLiteral("EffM4")).isChecked());
    EXPECT_EQ(box().text(), QStringLiteral("http://cam/shown.pngx"));
}

TEST_F(RowsChangedUnheard, KeepWhatASheetShowsBesideANewAddress)
{
    const QString moved = QStringLiteral("http://cam/moved.png");
    house_.window.fillAddress(kCamera, moved);
    EXPECT_EQ(house_.stored(u"Liste0", u"lst4"), moved);
    EXPECT_EQ(house_.stored(u"Camera04", u"Name"), QStringLiteral("Gate"));
}

} // namespace
} // namespace velmora::test
