// The camera table on screen: tab switches, the controls of a row, and what the capture shows.
#include "view/CameraPage.h"

#include "cameras/CamerasFixture.h"

#include <vector>

namespace velmora {
namespace {

using test::CamerasFixture;

class CameraPageTest : public CamerasFixture
{
protected:
    CameraPageTest()
    {
        QObject::connect(&page, &CameraPage::pageLoaded, &page, [this] { ++loads; });
        QObject::connect(&page, &CameraPage::picturesCleared, &page, [this] { ++clears; });
        QObject::connect(&page, &CameraPage::rowChanged, &page,
                         [this](int row) { changed.append(row); });
    }

    CameraPage page{table, storage, log, problems};
    int loads = 0;
    int clears = 0;
    QList<int> changed;
};

/// Settings text of a row without a camera, as a tab switch leaves it.
QByteArray clearedRow(int row)
{
    const QByteArray r = QByteArray::number(row);
    return "SB" + r + "=255\r\nBestTime" + r + "=00:00:00\r\nlNew" + r + "=0\r\nTimeLoad" + r +
           "=0\r\n";
}

TEST_F(CameraPageTest, StartsWithTheGroupShownLast)
{
    store("[Control]\r\nSelecteur=3\r\n[Liste3]\r\nLstAct=1\r\n");
    page.load();
    EXPECT_EQ(page.group(), 3);
    EXPECT_TRUE(page.isGroupActive());
    EXPECT_EQ(loads, 1);
}

TEST_F(CameraPageTest, StartsWithGroup0OnAFreshInstallation)
{
    page.load();
    EXPECT_EQ(page.group(), 0);
    EXPECT_FALSE(page.isGroupActive());
    EXPECT_FALSE(tree.exists(u"Velmora.ini")) << "rows are not loaded, and nothing is stored";
}

TEST_F(CameraPageTest, StartsWithGroup0WhenTheStoredOneDoesNotExist)
{
    for (const char *const group : {"10", "-1", "9.6", "abc"}) {
        SCOPED_TRACE(group);
        store(QByteArray("[Control]\r\nSelecteur=") + group + "\r\n");
        page.load();
        EXPECT_EQ(page.group(), 0);
    }
    EXPECT_EQ(shown, QStringList());
}

TEST_F(CameraPageTest, WarnsOfAGroupOutOfRangeAndStartsWithGroup0)
{
    store("[Control]\r\nSelecteur=70000\r\n");
    page.load();
    EXPECT_EQ(page.group(), 0);
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown.first().contains(QStringLiteral("[Control] Selecteur=70000")));
}

TEST_F(CameraPageTest, LoadsTheRowsOfTheGroup)
{
    store("[Liste2]\r\nlst0=a\r\nlst9=b\r\n"
          "[Groupe2]\r\nAutoDelai9=1\r\nEffM0=1\r\nBestTime9=00:10:00\r\nSB0=65280\r\nTimeLoad9="
          "3\r\nlNew0=12\r\n");
    page.Selecteur_Click(2, WindowState::Visible);
    EXPECT_EQ(page.group(), 2);
    EXPECT_EQ(page.row(0).url, QStringLiteral("a"));
    EXPECT_TRUE(page.row(0).deleteOld);
    EXPECT_EQ(page.row(0).lamp, LampColour::Green);
    EXPECT_EQ(page.row(0).newImages, 12);
    EXPECT_EQ(page.row(9).url, QStringLiteral("b"));
    EXPECT_TRUE(page.row(9).automatic);
    EXPECT_EQ(page.row(9).bestTime, (BestTime{0, 10, 0}));
    EXPECT_EQ(page.row(9).loadSeconds, 3);
}

TEST_F(CameraPageTest, BringsEmptyRowsToTheirState)
{
    page.Selecteur_Click(5, WindowState::Visible);
    QByteArray expected = "[Groupe5]\r\n";
    for (int row = 0; row < kRows; ++row) {
        expected += clearedRow(row);
        EXPECT_EQ(page.row(row).lamp, LampColour::Red);
        EXPECT_TRUE(page.row(row).bestTime.isUnknown());
        EXPECT_EQ(page.row(row).newImages, 0);
        EXPECT_EQ(page.row(row).loadSeconds, 0);
    }
    EXPECT_EQ(stored(), expected + "[Control]\r\nSelecteur=5\r\n");
}

TEST_F(CameraPageTest, KeepsTheOptionsOfAnEmptyRowAndTheCountersOfOthers)
{
    store("[Liste0]\r\nlst1=a\r\n[Groupe0]\r\nAutoDelai0=1\r\nEffM0=1\r\nlNew0=4\r\nlNew1=5\r\nSB1="
          "65280\r\n");
    page.Selecteur_Click(0, WindowState::Visible);
    EXPECT_TRUE(page.row(0).automatic);
    EXPECT_TRUE(page.row(0).deleteOld);
    EXPECT_EQ(setting(u"Groupe0", u"lNew0"), QStringLiteral("0"));
    EXPECT_EQ(setting(u"Groupe0", u"AutoDelai0"), QStringLiteral("1"));
    EXPECT_EQ(setting(u"Groupe0", u"lNew1"), QStringLiteral("5"));
    EXPECT_EQ(setting(u"Groupe0", u"SB1"), QStringLiteral("65280"));
}

TEST_F(CameraPageTest, TakesTheSwitchOfTheGroup)
{
    store("[Liste1]\r\nLstAct=1\r\n");
    page.Selecteur_Click(1, WindowState::Visible);
    EXPECT_TRUE(page.isGroupActive());
    page.Selecteur_Click(2, WindowState::Visible);
    EXPECT_FALSE(page.isGroupActive());
}

TEST_F(CameraPageTest, RemembersTheGroup)
{
    page.Selecteur_Click(7, WindowState::Visible);
    EXPECT_EQ(setting(u"Control", u"Selecteur"), QStringLiteral("7"));
}

TEST_F(CameraPageTest, ClearsThePicturesOnATabSwitch)
{
    page.Selecteur_Click(1, WindowState::Visible);
    EXPECT_EQ(loads, 1);
    EXPECT_EQ(clears, 1);
}

TEST_F(CameraPageTest, LogsATabSwitch)
{
    log.setOn(true);
    page.Selecteur_Click(1, WindowState::Hidden);
    EXPECT_EQ(tree.read(u"Velmora.log"), QByteArray("14:05:09 Interface Selecteur_Click\n"));
}

TEST_F(CameraPageTest, ChangesNothingWhileTheWindowIsHidden)
{
    store("[Liste4]\r\nlst0=a\r\nLstAct=1\r\n");
    const QByteArray before = stored();
    page.Selecteur_Click(4, WindowState::Hidden);
    EXPECT_EQ(page.group(), 0);
    EXPECT_EQ(page.row(0).url, QString());
    EXPECT_FALSE(page.isGroupActive());
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(loads + clears, 0);
}

struct MemoryRow
{
    const char *stored;
    int row;
};

TEST_F(CameraPageTest, MakesTheRememberedRowCurrent)
{
    const std::vector<MemoryRow> rows = {{"", 0},   {"0", 0},  {"7", 7},  {"9", 9},  {"10", 0},
                                         {"12", 2}, {"19", 9}, {"20", 0}, {"-3", 0}, {"x", 0}};
    for (const MemoryRow &row : rows) {
        SCOPED_TRACE(row.stored);
        store(QByteArray("[Control]\r\nMemSource6=") + row.stored + "\r\n");
        page.Selecteur_Click(6, WindowState::Visible);
        EXPECT_EQ(page.currentRow(), row.row);
    }
}

TEST_F(CameraPageTest, WarnsOnceOfStoredNumbersOutOfRangeAndGoesOn)
{
    store("[Liste0]\r\nlst0=a\r\nlst1=b\r\n[Groupe0]\r\nlNew0=3000000000\r\nTimeLoad0=6\r\nlNew1="
          "2\r\n");
    page.Selecteur_Click(0, WindowState::Visible);
    page.Selecteur_Click(0, WindowState::Visible);
    EXPECT_EQ(page.row(0).newImages, 0);
    EXPECT_EQ(page.row(0).loadSeconds, 6);
    EXPECT_EQ(page.row(1).newImages, 2);
    EXPECT_EQ(shown,
              QStringList{QStringLiteral(
                  "Overflow: [Groupe0] lNew0=3000000000 in the settings file is out of range")});
}

TEST_F(CameraPageTest, StoresTheBoxesOfARow)
{
    page.Selecteur_Click(3, WindowState::Visible);
    page.setAutomatic(4, true);
    page.setDeleteOld(5, true);
    EXPECT_EQ(setting(u"Groupe3", u"AutoDelai4"), QStringLiteral("1"));
    EXPECT_EQ(setting(u"Groupe3", u"EffM5"), QStringLiteral("1"));
    EXPECT_TRUE(page.row(4).automatic);
    EXPECT_TRUE(page.row(5).deleteOld);
    page.setAutomatic(4, false);
    page.setDeleteOld(5, false);
    EXPECT_EQ(setting(u"Groupe3", u"AutoDelai4"), QStringLiteral("0"));
    EXPECT_EQ(setting(u"Groupe3", u"EffM5"), QStringLiteral("0"));
}

TEST_F(CameraPageTest, ResetsTheBestTimeOfARow)
{
    store("[Liste0]\r\nlst2=a\r\n[Groupe0]\r\nBestTime2=00:10:00\r\n");
    page.load();
    page.Selecteur_Click(0, WindowState::Visible);
    page.resetBestTime(2);
    EXPECT_EQ(setting(u"Groupe0", u"BestTime2"), QStringLiteral("00:00:00"));
    EXPECT_TRUE(page.row(2).bestTime.isUnknown());
    EXPECT_EQ(changed, QList<int>{2});
}

TEST_F(CameraPageTest, StoresTheSwitchOfTheGroup)
{
    page.Selecteur_Click(8, WindowState::Visible);
    page.setGroupActive(true);
    EXPECT_EQ(setting(u"Liste8", u"LstAct"), QStringLiteral("1"));
    EXPECT_TRUE(page.isGroupActive());
    page.setGroupActive(false);
    EXPECT_EQ(setting(u"Liste8", u"LstAct"), QStringLiteral("0"));
}

TEST_F(CameraPageTest, ResetsTheNewImagesOfItsGroupAlone)
{
    store("[Liste1]\r\nlst0=a\r\nlst9=b\r\n"
          "[Groupe1]\r\nlNew0=4\r\nlNew9=5\r\nTimeLoad0=3\r\n[Groupe2]\r\nlNew0=6\r\n");
    page.load();
    page.Selecteur_Click(1, WindowState::Visible);
    page.RAZ();
    for (int row = 0; row < kRows; ++row) {
        EXPECT_EQ(setting(u"Groupe1", rowKey(u"lNew", row)), QStringLiteral("0"));
        EXPECT_EQ(page.row(row).newImages, 0);
    }
    EXPECT_EQ(changed, (QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(setting(u"Groupe1", u"TimeLoad0"), QStringLiteral("3"));
    EXPECT_EQ(setting(u"Groupe2", u"lNew0"), QStringLiteral("6"));
}

TEST_F(CameraPageTest, ShowsWhatTheCaptureLearnsOfACameraOnScreen)
{
    page.Selecteur_Click(2, WindowState::Visible);
    page.showLamp({2, 3}, LampColour::Yellow);
    page.showLoadSeconds({2, 4}, 6);
    page.showBestTime({2, 5}, {0, 10, 0});
    page.showNewImages({2, 6}, 8);
    EXPECT_EQ(page.row(3).lamp, LampColour::Yellow);
    EXPECT_EQ(page.row(4).loadSeconds, 6);
    EXPECT_EQ(page.row(5).bestTime, (BestTime{0, 10, 0}));
    EXPECT_EQ(page.row(6).newImages, 8);
    EXPECT_EQ(changed, (QList<int>{3, 4, 5, 6}));
}

TEST_F(CameraPageTest, ShowsNothingOfACameraOfAnotherGroup)
{
    page.Selecteur_Click(2, WindowState::Visible);
    page.showLoading({3, 1});
    page.showLamp({3, 1}, LampColour::Green);
    page.showLoadSeconds({3, 1}, 6);
    page.showBestTime({3, 1}, {0, 10, 0});
    page.showNewImages({3, 1}, 8);
    EXPECT_EQ(page.row(1).lamp, LampColour::Red);
    EXPECT_EQ(page.row(1).loadSeconds, 0);
    EXPECT_TRUE(page.row(1).bestTime.isUnknown());
    EXPECT_EQ(page.row(1).newImages, 0);
    EXPECT_EQ(page.currentRow(), 0);
    EXPECT_EQ(changed, QList<int>());
}

TEST_F(CameraPageTest, MakesALoadingRowOrangeAndCurrent)
{
    page.Selecteur_Click(2, WindowState::Visible);
    page.showLoading({2, 7});
    EXPECT_EQ(page.row(7).lamp, LampColour::Orange);
    EXPECT_EQ(page.currentRow(), 7);
}

TEST_F(CameraPageTest, OnlyAnotherAddressGivenElsewhereTakesTheRowsCameraAway)
{
    store("[Liste0]\r\nlst1=http://a/\r\n");
    page.load();
    page.Selecteur_Click(0, WindowState::Visible);
    int replaced = 0;
    QObject::connect(&page, &CameraPage::cameraReplaced, &page, [&replaced] { ++replaced; });
    page.fillSource(1, QStringLiteral("http://a/"));
    EXPECT_EQ(replaced, 0);
    page.fillSource(1, QStringLiteral("http://b/"));
    EXPECT_EQ(replaced, 1);
}

// Two commands at once: the second stores its camera while the rows are read for the first.
TEST_F(CameraPageTest, ReadsAllOfItsRowsOfOneStateOfTheSettings)
{
    store("[Groupe0]\r\nlNew9=99999999999\r\n");
    page.load();
    page.Selecteur_Click(0, WindowState::Visible);
    page.beginLive({0, 1}); // an address is being typed
    const SettingsFile other(tree.path());
    other.write(u"Groupe0", u"lNew9", u"88888888888");
    QObject::connect(&problems, &Problems::warned, &page,
                     [&other] { other.write(u"Liste0", u"lst1", u"http://b/"); });
    page.reread();
    ASSERT_EQ(table.url({0, 1}), QStringLiteral("http://b/"));
    page.reread();
    EXPECT_EQ(page.row(1).url, QStringLiteral("http://b/"));
    EXPECT_NE(page.row(1).lamp, LampColour::Orange);
}

} // namespace
} // namespace velmora
