// Stored window positions: their keys, their caps, and what becomes of damaged ones.
#include "settings/WindowPlace.h"

#include "support/FakeClock.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

#include <vector>

namespace velmora {
namespace {

using test::FakeClock;
using test::TempTree;

struct PlaceRow
{
    const char *name;
    WindowPlace stored;
    WindowPlace read;
};

class WindowPlaceTest : public testing::Test
{
protected:
    WindowPlaceTest()
    {
        QObject::connect(&problems, &Problems::warned, &problems,
                         [this](const QString &text) { shown.append(text); });
    }

    TempTree tree;
    FakeClock clock;
    EventLog log{tree.path(), clock};
    Problems problems{log};
    SettingsFile settings{tree.path()};
    QStringList shown;
};

TEST_F(WindowPlaceTest, IsTheCornerWhenNothingIsStored)
{
    EXPECT_EQ(readPlace(settings, kBrowserPlace, problems), WindowPlace{});
    EXPECT_EQ(readPlace(settings, kSlideshowPlace, problems), WindowPlace{});
}

TEST_F(WindowPlaceTest, CapsThePlaceOfTheBrowser)
{
    const std::vector<PlaceRow> rows = {{"inside", {100, 200}, {100, 200}},
                                        {"at the caps", {330, 4485}, {330, 4485}},
                                        {"above the caps", {331, 4486}, {330, 4485}},
                                        {"below zero", {-50, -32768}, {-50, -32768}}};
    for (const PlaceRow &row : rows) {
        SCOPED_TRACE(row.name);
        writePlace(settings, kBrowserPlace, row.stored);
        EXPECT_EQ(readPlace(settings, kBrowserPlace, problems), row.read);
    }
}

TEST_F(WindowPlaceTest, CapsThePlaceOfTheSlideshow)
{
    writePlace(settings, kSlideshowPlace, {20000, 20000});
    EXPECT_EQ(readPlace(settings, kSlideshowPlace, problems), (WindowPlace{6225, 11175}));
}

// On the right one of two screens, for instance.
TEST_F(WindowPlaceTest, FartherThanCanBeStoredIsStoredAsTheFarthest)
{
    writePlace(settings, kBrowserPlace, {40000, 45000});
    EXPECT_EQ(readPlace(settings, kBrowserPlace, problems), (WindowPlace{330, 4485}));
    writePlace(settings, kBrowserPlace, {-40000, -45000});
    EXPECT_EQ(readPlace(settings, kBrowserPlace, problems), (WindowPlace{-32768, -32768}));
    EXPECT_EQ(shown, QStringList());
}

TEST_F(WindowPlaceTest, IsStoredUnderTheKeysOfItsWindow)
{
    writePlace(settings, kBrowserPlace, {1, 2});
    writePlace(settings, kSlideshowPlace, {3, 4});
    EXPECT_EQ(
        tree.read(u"Velmora.ini"),
        QByteArray(
            "[Control]\r\nPlanche.Top=1\r\nPlanche.Left=2\r\nfCine.Top=3\r\nfCine.left=4\r\n"));
}

TEST_F(WindowPlaceTest, IsKnownByCoordinateAndUncapped)
{
    EXPECT_EQ(storedTwips(settings, kSlideshowPlace.top), std::nullopt);
    tree.write(u"Velmora.ini", "[Control]\r\nfCine.Top=20000\r\nfCine.left=-99999\r\n");
    EXPECT_EQ(storedTwips(settings, kSlideshowPlace.top), 20000);
    EXPECT_EQ(storedTwips(settings, kSlideshowPlace.left), -32768);
    EXPECT_EQ(shown, QStringList());
}

TEST_F(WindowPlaceTest, WarnsOfANumberOutOfRangeAndTakesZero)
{
    tree.write(u"Velmora.ini", "[Control]\r\nPlanche.Top=40000\r\nPlanche.Left=7\r\n");
    EXPECT_EQ(readPlace(settings, kBrowserPlace, problems), (WindowPlace{0, 7}));
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown.first().contains(QStringLiteral("[Control] Planche.Top=40000")));
}

} // namespace
} // namespace velmora
