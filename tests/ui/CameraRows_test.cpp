// The ten camera rows of the main window: what a click or a key on each control stores and shows.
#include "WindowHouse.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTabBar>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

class CameraRows : public testing::Test
{
protected:
    QString text(const QString &label) { return house_.find<QLabel>(label).text(); }

    int lamp(const QString &name) { return house_.find<Lamp>(name).property("FillColor").toInt(); }

    WindowHouse house_;
};

// As on a screen of 600 lines, or of 1080 that are shown at twice the size.
TEST_F(CameraRows, ScrollInAWindowThatIsLowerThanAllOfThem)
{
    constexpr int kLow = 500;
    house_.window.resize(house_.window.width(), kLow);
    ASSERT_EQ(house_.window.height(), kLow);
    const auto isShown = [this](const QString &name) {
        auto &control = house_.find<QWidget>(name);
        return control.visibleRegion().boundingRect() == control.rect();
    };
    EXPECT_TRUE(isShown(QStringLiteral("lMessage")));
    EXPECT_TRUE(isShown(QStringLiteral("Cache")));
    EXPECT_TRUE(isShown(QStringLiteral("Source0")));
    EXPECT_FALSE(isShown(QStringLiteral("Source9")));
    house_.click(QStringLiteral("Source0"));
    for (int key = 0; key < 100 && !isShown(QStringLiteral("Source9")); ++key) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_TRUE(isShown(QStringLiteral("Source9")));
}

TEST_F(CameraRows, ScrollToTheOneThatGetsTheFocusFromOutside)
{
    house_.window.resize(house_.window.width(), 500);
    auto &bar = *house_.find<QScrollArea>(QStringLiteral("pageArea")).verticalScrollBar();
    bar.setValue(bar.maximum());
    house_.find<QWidget>(QStringLiteral("RAZ")).setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("Source0"));
    EXPECT_EQ(bar.value(), 0);
    house_.find<QWidget>(QStringLiteral("BoutonLien")).setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget()->visibleRegion().boundingRect(),
              QApplication::focusWidget()->rect());
}

TEST_F(CameraRows, StayUnderThePointerWhenTheyAreClicked)
{
    house_.window.resize(house_.window.width(), 500);
    auto &bar = *house_.find<QScrollArea>(QStringLiteral("pageArea")).verticalScrollBar();
    for (int row = 0; row < kRows && bar.value() == 0; ++row) {
        auto &box = house_.find<QCheckBox>(QStringLiteral("EffM%1").arg(row));
        if (!box.visibleRegion().isEmpty()) {
            QTest::mousePress(&box, Qt::LeftButton, {}, {5, 2});
            EXPECT_EQ(bar.value(), 0) << row;
            QTest::mouseRelease(&box, Qt::LeftButton, {}, {5, 2});
        }
    }
}

TEST_F(CameraRows, HaveNoScrollBarWhereThereIsRoom)
{
    const auto &area = house_.find<QScrollArea>(QStringLiteral("pageArea"));
    EXPECT_FALSE(area.verticalScrollBar()->isVisible());
    EXPECT_EQ(area.height(), area.sizeHint().height());
}

TEST_F(CameraRows, ShowTheStoredRowOfTheSelectedGroup)
{
    house_.house.addCamera({3, 7}, QStringLiteral("http://cam/a.jpg"));
    house_.house.setValue(u"AutoDelai", {3, 7}, QStringLiteral("1"));
    house_.house.setValue(u"EffM", {3, 7}, QStringLiteral("1"));
    house_.house.setValue(u"BestTime", {3, 7}, QStringLiteral("26:01:02"));
    house_.house.setValue(u"SB", {3, 7}, QStringLiteral("65280"));
    house_.house.setValue(u"TimeLoad", {3, 7}, QStringLiteral("4"));
    house_.house.setValue(u"lNew", {3, 7}, QStringLiteral(" 12 "));
    house_.selectTab(3);
    EXPECT_EQ(house_.find<QLineEdit>(QStringLiteral("Source7")).text(),
              QStringLiteral("http://cam/a.jpg"));
    EXPECT_TRUE(house_.find<QCheckBox>(QStringLiteral("AutoDelay7")).isChecked());
    EXPECT_TRUE(house_.find<QCheckBox>(QStringLiteral("EffM7")).isChecked());
    EXPECT_EQ(text(QStringLiteral("BestTime7")), QStringLiteral("26:01:02"));
    EXPECT_EQ(lamp(QStringLiteral("SB7")), 65280);
    EXPECT_EQ(text(QStringLiteral("TimeLoad7")), QStringLiteral("4"));
    EXPECT_EQ(text(QStringLiteral("lNew7")), QStringLiteral("12"));
    EXPECT_TRUE(house_.find<QCheckBox>(QStringLiteral("ActLst")).isChecked());
    EXPECT_EQ(house_.stored(u"Control", u"Selecteur"), QStringLiteral("3"));
}

TEST_F(CameraRows, OfAGroupNeverUsedAreTenRedLampsAndZeroedCounters)
{
    house_.selectTab(8);
    for (int row = 0; row < kRows; ++row) {
        EXPECT_EQ(lamp(QStringLiteral("SB%1").arg(row)), 255);
        EXPECT_EQ(house_.stored(u"Groupe8", rowKey(u"SB", row)), QStringLiteral("255"));
        EXPECT_EQ(house_.stored(u"Groupe8", rowKey(u"BestTime", row)), QStringLiteral("00:00:00"));
        EXPECT_EQ(house_.stored(u"Groupe8", rowKey(u"lNew", row)), QStringLiteral("0"));
        EXPECT_EQ(house_.stored(u"Groupe8", rowKey(u"TimeLoad", row)), QStringLiteral("0"));
    }
}

TEST_F(CameraRows, StoreTheirBoxesAtOnce)
{
    house_.selectTab(2);
    house_.click(QStringLiteral("AutoDelay4"));
    house_.click(QStringLiteral("EffM5"));
    house_.click(QStringLiteral("ActLst"));
    EXPECT_EQ(house_.stored(u"Groupe2", u"AutoDelai4"), QStringLiteral("1"));
    EXPECT_EQ(house_.stored(u"Groupe2", u"EffM5"), QStringLiteral("1"));
    EXPECT_EQ(house_.stored(u"Liste2", u"LstAct"), QStringLiteral("1"));
    house_.click(QStringLiteral("AutoDelay4"));
    house_.click(QStringLiteral("EffM5"));
    house_.click(QStringLiteral("ActLst"));
    EXPECT_EQ(house_.stored(u"Groupe2", u"AutoDelai4"), QStringLiteral("0"));
    EXPECT_EQ(house_.stored(u"Groupe2", u"EffM5"), QStringLiteral("0"));
    EXPECT_EQ(house_.stored(u"Liste2", u"LstAct"), QStringLiteral("0"));
}

TEST_F(CameraRows, SwitchingTabsWritesNoBoxOfTheNewGroup)
{
    house_.house.setValue(u"AutoDelai", {1, 0}, QStringLiteral("7"));
    house_.selectTab(1);
    house_.selectTab(0);
    EXPECT_EQ(house_.stored(u"Groupe1", u"AutoDelai0"), QStringLiteral("7"));
    EXPECT_EQ(house_.stored(u"Liste1", u"LstAct"), QString());
}

TEST_F(CameraRows, AClickOnTheRefreshTimeSetsItToZero)
{
    house_.house.setValue(u"BestTime", {0, 1}, QStringLiteral("00:05:00"));
    house_.selectTab(1);
    house_.selectTab(0);
    house_.house.addCamera({0, 1}, QStringLiteral("http://cam/b.jpg"));
    house_.house.setValue(u"BestTime", {0, 1}, QStringLiteral("00:05:00"));
    house_.selectTab(1);
    house_.selectTab(0);
    ASSERT_EQ(text(QStringLiteral("BestTime1")), QStringLiteral("00:05:00"));
    house_.click(QStringLiteral("BestTime1"));
    EXPECT_EQ(text(QStringLiteral("BestTime1")), QStringLiteral("00:00:00"));
    EXPECT_EQ(house_.stored(u"Groupe0", u"BestTime1"), QStringLiteral("00:00:00"));
}

TEST_F(CameraRows, TheRefreshTimeObeysTheKeyboardToo)
{
    house_.house.addCamera({0, 0}, QStringLiteral("http://cam/b.jpg"));
    house_.house.setValue(u"BestTime", {0, 0}, QStringLiteral("00:05:00"));
    house_.selectTab(0);
    QTest::keyClick(&house_.find<QLabel>(QStringLiteral("BestTime0")), Qt::Key_Space);
    EXPECT_EQ(house_.stored(u"Groupe0", u"BestTime0"), QStringLiteral("00:00:00"));
}

TEST_F(CameraRows, ResetZeroesTheNewImagesOfTheGroupOnScreenOnly)
{
    for (const CameraAddress camera :
         {CameraAddress{0, 0}, CameraAddress{0, 9}, CameraAddress{1, 0}}) {
        house_.house.addCamera(camera, QStringLiteral("http://cam/b.jpg"));
        house_.house.setValue(u"lNew", camera, QStringLiteral("5"));
        house_.house.setValue(u"TimeLoad", camera, QStringLiteral("3"));
    }
    house_.selectTab(1);
    house_.selectTab(0);
    house_.click(QStringLiteral("RAZ"));
    EXPECT_EQ(house_.stored(u"Groupe0", u"lNew0"), QStringLiteral("0"));
    EXPECT_EQ(house_.stored(u"Groupe0", u"lNew9"), QStringLiteral("0"));
    EXPECT_EQ(text(QStringLiteral("lNew9")), QStringLiteral("0"));
    EXPECT_EQ(house_.stored(u"Groupe1", u"lNew0"), QStringLiteral("5"));
    EXPECT_EQ(house_.stored(u"Groupe0", u"TimeLoad0"), QStringLiteral("3"));
}

TEST_F(CameraRows, TypingAndEnterStoreNoAddress)
{
    house_.type(QStringLiteral("Source2"), QStringLiteral("http://cam/c.jpg"));
    QTest::keyClick(&house_.find<QLineEdit>(QStringLiteral("Source2")), Qt::Key_Return);
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QString());
    EXPECT_EQ(house_.house.page.currentRow(), 2);
}

TEST_F(CameraRows, EnterShowsTheLivePictureLikeAClick)
{
    house_.house.addCamera({0, 2}, QStringLiteral("http://cam/c.jpg"));
    house_.house.showGroup(0);
    QStringList wanted;
    QObject::connect(&house_.house.page, &CameraPage::liveViewWanted, &house_.window,
                     [&wanted](CameraAddress, const QString &url) { wanted.append(url); });
    house_.click(QStringLiteral("Source2"));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Home, Qt::Key_F5}) {
        QTest::keyClick(&house_.find<QLineEdit>(QStringLiteral("Source2")), key);
    }
    EXPECT_EQ(wanted, QStringList(3, QStringLiteral("http://cam/c.jpg")));
}

TEST_F(CameraRows, LeavingTheBoxStoresTheAddress)
{
    house_.type(QStringLiteral("Source2"), QStringLiteral("http://cam/c.jpg"));
    house_.leaveBox();
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QStringLiteral("http://cam/c.jpg"));
}

TEST_F(CameraRows, TheFolderIsMadeFromTheAddressBeforeTheEdit)
{
    house_.type(QStringLiteral("Source2"), QStringLiteral("ab"));
    house_.leaveBox();
    EXPECT_FALSE(house_.house.tree.exists(u"drives/c/in/ab"));
    house_.type(QStringLiteral("Source2"), QStringLiteral("c"));
    house_.leaveBox();
    EXPECT_TRUE(house_.house.tree.exists(u"drives/c/in/ab"));
    EXPECT_FALSE(house_.house.tree.exists(u"drives/c/in/abc"));
}

TEST_F(CameraRows, AClickOnATabStoresTheAddressThatIsBeingTyped)
{
    house_.type(QStringLiteral("Source2"), QStringLiteral("http://cam/c.jpg"));
    house_.selectTab(5);
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QStringLiteral("http://cam/c.jpg"));
    EXPECT_EQ(house_.stored(u"Liste5", u"lst2"), QString());
}

TEST_F(CameraRows, ClosingTheWindowStoresTheAddressThatIsBeingTyped)
{
    house_.type(QStringLiteral("Source2"), QStringLiteral("http://cam/c.jpg"));
    house_.window.close();
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QStringLiteral("http://cam/c.jpg"));
}

TEST_F(CameraRows, AClearedAddressTurnsTheRowRedAtTheNextTabSwitch)
{
    house_.house.addCamera({0, 3}, QStringLiteral("x"));
    house_.house.setValue(u"SB", {0, 3}, QStringLiteral("65280"));
    house_.selectTab(1);
    house_.selectTab(0);
    house_.retype(QStringLiteral("Source3"), QString());
    house_.leaveBox();
    EXPECT_EQ(house_.stored(u"Liste0", u"lst3"), QString());
    EXPECT_EQ(lamp(QStringLiteral("SB3")), 33023);
    house_.selectTab(1);
    house_.selectTab(0);
    EXPECT_EQ(lamp(QStringLiteral("SB3")), 255);
}

TEST_F(CameraRows, AnAddressTooLongIsRefusedWithAMessage)
{
    const QSignalSpy warned(&house_.house.problems, &Problems::warned);
    house_.find<QLineEdit>(QStringLiteral("Source2")).setFocus();
    house_.find<QLineEdit>(QStringLiteral("Source2")).setText(QString(300, u'x'));
    house_.leaveBox();
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QString());
    ASSERT_EQ(warned.count(), 1);
    EXPECT_TRUE(warned.first().first().toString().contains(QStringLiteral("300")));
}

TEST_F(CameraRows, OddAddressesAreTakenAsTheyAre)
{
    const QStringList addresses{QStringLiteral("\"quoted\""), QStringLiteral("a;b#c=[d]"),
                                QStringLiteral("http://h/\u00e9t\u00e9.jpg"), QStringLiteral("<a")};
    for (int i = 0; i < addresses.size(); ++i) {
        auto &box = house_.find<QLineEdit>(QStringLiteral("Source%1").arg(i));
        box.setFocus();
        box.setText(addresses.at(i));
        house_.leaveBox();
    }
    EXPECT_TRUE(house_.house.tree.read(u"Velmora.ini").contains("lst0=\"quoted\"\r\n"));
    EXPECT_EQ(house_.stored(u"Liste0", u"lst1"), addresses.at(1));
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), addresses.at(2));
    EXPECT_EQ(house_.stored(u"Liste0", u"lst3"), addresses.at(3));
}

TEST_F(CameraRows, AnAddressOfBlanksLeavesTheRowEmpty)
{
    house_.type(QStringLiteral("Source2"), QStringLiteral("   "));
    house_.leaveBox();
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QString());
}

TEST_F(CameraRows, SaysWhichLettersTheFileCannotHold)
{
    const QSignalSpy warned(&house_.house.problems, &Problems::warned);
    house_.find<QLineEdit>(QStringLiteral("Source2")).setFocus();
    house_.find<QLineEdit>(QStringLiteral("Source2"))
        .setText(QStringLiteral("http://h/\u0436.jpg"));
    house_.leaveBox();
    EXPECT_EQ(warned.count(), 1);
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QStringLiteral("http://h/?.jpg"));
}

TEST_F(CameraRows, TheFolderLinkOpensTheFolderWhileTheStorageIsThere)
{
    house_.house.addCamera({0, 6}, QStringLiteral("a1"));
    house_.house.tree.makeFolder(house_.house.folder({0, 6}));
    house_.click(QStringLiteral("n6"));
    ASSERT_EQ(house_.opener.opened.size(), 1);
    EXPECT_EQ(house_.opener.opened.first(), house_.house.tree.path(u"drives/c/in/a%31"));
}

TEST_F(CameraRows, TheFolderLinkDoesNothingWithoutStorage)
{
    house_.retype(QStringLiteral("StRep"), QStringLiteral("C:\\none"));
    house_.click(QStringLiteral("n6"));
    EXPECT_TRUE(house_.opener.opened.isEmpty());
}

TEST_F(CameraRows, ACaptureIsShownWhenItsGroupIsOnScreen)
{
    house_.house.addCamera({0, 4}, QStringLiteral("http://cam/e.png"));
    house_.source.answer(
        QStringLiteral("http://cam/e.png"),
        {QByteArray(2000, 'x'), QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"), {}, {}, {}});
    house_.house.tick();
    EXPECT_EQ(lamp(QStringLiteral("SB4")), 65280);
    EXPECT_EQ(text(QStringLiteral("lNew4")), QStringLiteral("1"));
    EXPECT_EQ(text(QStringLiteral("lErr")), QStringLiteral("Wait"));
    EXPECT_EQ(text(QStringLiteral("lTest")), QStringLiteral("Ajout de 20060307_1405090714.png"));
    EXPECT_EQ(text(QStringLiteral("lHeure")), QStringLiteral("14:05:09"));
}

TEST_F(CameraRows, ACaptureLeavesTheAddressThatIsBeingTyped)
{
    house_.house.addCamera({0, 4}, QStringLiteral("http://cam/e.png"));
    house_.selectTab(1);
    house_.selectTab(0);
    house_.type(QStringLiteral("Source4"), QStringLiteral("?x=1"));
    house_.house.tick();
    EXPECT_EQ(house_.find<QLineEdit>(QStringLiteral("Source4")).text(),
              QStringLiteral("http://cam/e.png?x=1"));
}

TEST_F(CameraRows, ClosingTheWindowLeavesTheBoxOnce)
{
    house_.type(QStringLiteral("Source2"), QStringLiteral("ab"));
    house_.window.close();
    house_.window.allowClose();
    house_.window.close();
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QStringLiteral("ab"));
    EXPECT_FALSE(house_.house.tree.exists(u"drives/c/in/ab"));
}

TEST_F(CameraRows, AnotherWindowLeavesNoAddressBox)
{
    house_.type(QStringLiteral("Source2"), QStringLiteral("ab"));
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QString());
    house_.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.window));
    house_.leaveBox();
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QStringLiteral("ab"));
    EXPECT_FALSE(house_.house.tree.exists(u"drives/c/in/ab"));
}

TEST_F(CameraRows, ClosingBehindAnotherWindowStoresTheAddressThatIsBeingTyped)
{
    house_.type(QStringLiteral("Source2"), QStringLiteral("ab"));
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    house_.window.close();
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QStringLiteral("ab"));
}

TEST_F(CameraRows, TheWheelOverTheTabsDoesNothing)
{
    house_.type(QStringLiteral("Source2"), QStringLiteral("ab"));
    auto &tabs = house_.find<QTabBar>(QStringLiteral("Selecteur"));
    const QPointF at = tabs.tabRect(0).center();
    QWheelEvent turn(at, tabs.mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&tabs, &turn);
    EXPECT_EQ(tabs.currentIndex(), 0);
    EXPECT_EQ(house_.find<QLineEdit>(QStringLiteral("Source2")).text(), QStringLiteral("ab"));
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QString());
}

TEST_F(CameraRows, AClickOnTheCurrentTabReloadsItsPage)
{
    house_.house.addCamera({0, 3}, QStringLiteral("http://cam/by-hand.jpg"));
    house_.type(QStringLiteral("Source2"), QStringLiteral("ab"));
    house_.selectTab(0);
    EXPECT_EQ(house_.find<QLineEdit>(QStringLiteral("Source3")).text(),
              QStringLiteral("http://cam/by-hand.jpg"));
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QStringLiteral("ab"));
    EXPECT_EQ(house_.find<QLineEdit>(QStringLiteral("Source2")).text(), QStringLiteral("ab"));
}

TEST_F(CameraRows, ComingUpAgainLeavesTheBoxBeforeItsRowIsLoaded)
{
    house_.type(QStringLiteral("Source2"), QStringLiteral("ab"));
    house_.window.bringUp();
    EXPECT_EQ(house_.find<QLineEdit>(QStringLiteral("Source2")).text(), QStringLiteral("ab"));
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QStringLiteral("ab"));
    EXPECT_FALSE(house_.find<QLineEdit>(QStringLiteral("Source2")).hasFocus());
}

TEST_F(CameraRows, ATabChangedByAKeyOrAToolLeavesTheBoxFirst)
{
    house_.type(QStringLiteral("Source2"), QStringLiteral("ab"));
    house_.find<QTabBar>(QStringLiteral("Selecteur")).setCurrentIndex(4);
    EXPECT_EQ(house_.stored(u"Liste0", u"lst2"), QStringLiteral("ab"));
    EXPECT_EQ(house_.stored(u"Liste4", u"lst2"), QString());
}

TEST_F(CameraRows, APastedAddressComesWithoutTheBlanksAroundIt)
{
    house_.type(QStringLiteral("Source2"), QString());
    for (const QString &text :
         {QStringLiteral("  http://cam/1.jpg \t"), QStringLiteral("\r\n http://cam/1.jpg\n")}) {
        QGuiApplication::clipboard()->setText(text);
        auto &box = house_.find<QLineEdit>(QStringLiteral("Source2"));
        box.selectAll();
        QTest::keySequence(&box, QKeySequence::Paste);
        EXPECT_EQ(box.text(), QStringLiteral("http://cam/1.jpg"));
    }
}

} // namespace
} // namespace velmora::test
