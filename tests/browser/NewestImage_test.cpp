// The image that the group view shows for a camera.
#include "Reading.h"
#include "support/BusyClock.h"
#include "support/FakeClock.h"
#include "support/FolderChanges.h"
#include "support/TempTree.h"

#include <QByteArrayList>
#include <QDir>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace std::chrono_literals;

// Modified one second after another, in this order.
void makeInTurn(const QString &folder, const QByteArrayList &names)
{
    std::chrono::seconds time = 1'000'000s;
    for (const QByteArray &name : names) {
        test::makeFile(folder, name);
        test::setModified(folder + u'/' + QFile::decodeName(name), time);
        time += 1s;
    }
}

struct NewestRow
{
    const char *what;
    QByteArrayList names; // in the order of their modification
    QByteArray newest;
};

class NewestRule : public testing::TestWithParam<NewestRow>
{
};

TEST_P(NewestRule, Gives)
{
    const test::TempTree tree;
    test::FakeClock clock;
    makeInTurn(tree.path(), GetParam().names);
    EXPECT_EQ(test::Reading(clock).newestName(tree.path()), GetParam().newest);
}

const NewestRow kFound[] = {
    {"TheOnlyOne", {"20061005_1230450512.jpg"}, "20061005_1230450512.jpg"},
    {"TheNewestDays",
     {"20061005_1230450512.jpg", "20061006_1230450612.jpg", "20061004_1230450412.jpg"},
     "20061006_1230450612.jpg"},
    {"TheDaysLastModified",
     {"20061005_1230450512.jpg", "20061005_1100000511.jpg", "20061004_1230450412.jpg"},
     "20061005_1100000511.jpg"},
    {"OneWithoutADot", {"20061005_1.jpg", "20061005_1230450001jpg"}, "20061005_1230450001jpg"},
    {"OneOfAnotherForm", {"20061005_1.jpg", "20061005 beach.JPG"}, "20061005 beach.JPG"},
    {"OneThatIsADayAlone", {"20061005_1.jpg", "20061005"}, "20061005"},
    {"TheOlderForm", {"20061005_1230450512.jpg", "20061006_123045.jpg"}, "20061006_123045.jpg"},
    {"NamesThatBeginWith2Alone",
     {"20061005_1.jpg", "30061005_1.jpg", "IMG.jpg", "z20061009.jpg", "19991231_1.jpg"},
     "20061005_1.jpg"},
    {"AnotherMillennium", {"20061005_1.jpg", "29991231_1.jpg"}, "29991231_1.jpg"},
    {"LeapDay", {"20080228_1.jpg", "20080229_1.jpg"}, "20080229_1.jpg"},
    // A day written in a name with one digit or a blank: its files, or those of the days before.
    {"ADayWithABlank", {"20061005_1.jpg", "200610 5.jpg"}, "20061005_1.jpg"},
    {"ADayOfOneDigit", {"20061005_1.jpg", "20061005_2.jpg", "2006105"}, "20061005_2.jpg"},
    {"ADayBeforeOneOfOneDigit", {"20061004_1.jpg", "20061003_1.jpg", "2006105"}, "20061004_1.jpg"},
    {"TheHundredthDayBack", {"20060627_1.jpg", "2006105"}, "20060627_1.jpg"},
    {"NoNamesBetweenThatTellNoDay",
     {"20060929_1.jpg", "20060931_1.jpg", "2006099x.jpg", "2006101"},
     "20060929_1.jpg"},
    {"NoDaysAfterOneOfOneDigit", {"20061004_1.jpg", "20061006_1.jpg", "2006105"}, "20061004_1.jpg"},
};
INSTANTIATE_TEST_SUITE_P(Found, NewestRule, testing::ValuesIn(kFound),
                         [](const auto &row) { return row.param.what; });

const NewestRow kNone[] = {
    {"NoFiles", {}, ""},
    {"NoNameThatBeginsWith2", {"IMG_20061005.jpg", "30061005_1.jpg", "1", ".2"}, ""},
    {"AGreaterNameThatTellsNoDay", {"20061005_1.jpg", "2xyz.jpg"}, ""},
    {"AGreaterNameInCapitals", {"20061005_1.jpg", "2XYZ.jpg"}, ""},
    {"AGreaterShortName", {"20061005_1.jpg", "21"}, ""},
    {"ADayThatDoesNotExist", {"20061005_1.jpg", "29990231_1230450512.jpg"}, ""},
    {"AMonthThatDoesNotExist", {"20061005_1.jpg", "20061305_1.jpg"}, ""},
    {"AGreaterNameOfOtherLetters", {"20061005_1.jpg", "2\xC3\xA9t\xC3\xA9.jpg"}, ""},
    {"TheHundredAndFirstDayBack", {"20060626_1.jpg", "2006105"}, ""},
    {"NoFileOfTheDaysBack", {"2006105"}, ""},
    {"ADayBackThatIsWrittenOtherwise", {"200610 4.jpg", "2006105"}, ""},
};
INSTANTIATE_TEST_SUITE_P(None, NewestRule, testing::ValuesIn(kNone),
                         [](const auto &row) { return row.param.what; });

class NewestImageTest : public testing::Test
{
protected:
    // The newest image if these files vanish at the last turn before the end.
    QByteArray newestAfterLosing(const QByteArrayList &lost, int yieldsBefore)
    {
        clock.setOnYield([this, lost, yieldsBefore](int yield) {
            for (const QByteArray &name : yield == yieldsBefore ? lost : QByteArrayList()) {
                QFile::remove(tree.path(QString::fromLatin1(name)));
            }
        });
        clock.takeYields();
        return test::Reading(clock).newestName(tree.path());
    }

    void makeLatest(const QByteArray &name, std::chrono::seconds time) const
    {
        test::makeFile(tree.path(), name);
        test::setModified(tree.path(QString::fromLatin1(name)), time);
    }

    // The number of turns that the reading takes.
    int turns()
    {
        clock.takeYields();
        test::Reading(clock).newestName(tree.path());
        return clock.takeYields();
    }

    test::TempTree tree;
    test::FakeClock still_;
    test::BusyClock clock{still_, 10ms}; // work yields after each piece
    test::Reading reading{clock};
};

TEST_F(NewestImageTest, OfTheSameTimeTheFirstNameCounts)
{
    const QByteArrayList names = {"20061005_b.jpg", "20061005_A.jpg", "20061005_a.jpg",
                                  "20061005_c.jpg", "20061005_B.jpg"};
    for (const QByteArray &name : names) {
        test::makeFile(tree.path(), name);
        test::setModified(tree.path(QString::fromLatin1(name)), 1'000'000s);
    }
    EXPECT_EQ(reading.newestName(tree.path()), "20061005_A.jpg");
}

TEST_F(NewestImageTest, CountsFilesAndLinksToThemAlone)
{
    makeInTurn(tree.path(), {"20061005_1.jpg", "20061004_1.jpg"});
    tree.makeFolder(u"20061006_folder");
    ASSERT_TRUE(QFile::link(tree.path(u"missing"), tree.path(u"20061007_dangling")));
    EXPECT_EQ(reading.newestName(tree.path()), "20061005_1.jpg");
    tree.write(u"elsewhere/file", "x");
    ASSERT_TRUE(QFile::link(tree.path(u"elsewhere/file"), tree.path(u"20061008_link")));
    EXPECT_EQ(reading.newestName(tree.path()), "20061008_link");
}

TEST_F(NewestImageTest, AMissingFolderHasNone)
{
    EXPECT_EQ(reading.newestName(tree.path(u"missing")), "");
    EXPECT_EQ(reading.newestName(QString()), "");
}

TEST_F(NewestImageTest, AsksForTheFilesTimesAtEveryCall)
{
    makeInTurn(tree.path(), {"20061005_1.jpg", "20061005_2.jpg", "20061005_3.jpg"});
    reading.keptNames(tree.path());
    EXPECT_EQ(reading.newestName(tree.path()), "20061005_3.jpg");
    test::setModified(tree.path(u"20061005_1.jpg"), 2'000'000s);
    EXPECT_EQ(reading.newestName(tree.path()), "20061005_1.jpg");
    test::setModified(tree.path(u"20061005_2.jpg"), 3'000'000s);
    EXPECT_EQ(reading.newestName(tree.path()), "20061005_2.jpg");
}

TEST_F(NewestImageTest, LooksAtNoFileOfAFolderInWhichNothingHappened)
{
    test::makeImages(tree.path(), 1400); // a day
    reading.newestName(tree.path());
    clock.takeYields();
    EXPECT_EQ(reading.newestName(tree.path()), test::imageOfMinute(0));
    EXPECT_EQ(clock.takeYields(), 0);
    test::setModified(tree.path(QString::fromLatin1(test::imageOfMinute(7))), 1s);
    reading.newestName(tree.path());
    EXPECT_GT(clock.takeYields(), 0);
}

TEST_F(NewestImageTest, SeesWhatIsBehindALinkChange)
{
    makeInTurn(tree.path(), {"20061005_1.jpg"});
    tree.write(u"elsewhere/file", "x");
    test::setModified(tree.path(u"elsewhere/file"), 1s);
    ASSERT_TRUE(QFile::link(tree.path(u"elsewhere/file"), tree.path(u"20061005_link")));
    EXPECT_EQ(reading.newestName(tree.path()), "20061005_1.jpg");
    test::setModified(tree.path(u"elsewhere/file"), 2'000'000s);
    EXPECT_EQ(reading.newestName(tree.path()), "20061005_link");
}

TEST_F(NewestImageTest, SeesAnotherFolderTakeThePlaceOfOneAbove)
{
    const QString folder = tree.path(u"in/cam");
    tree.makeFolder(u"in/cam");
    tree.makeFolder(u"other/cam");
    test::makeFile(folder, "20061005_1.jpg");
    test::makeFile(tree.path(u"other/cam"), "20061007_1.jpg");
    EXPECT_EQ(reading.newestName(folder), "20061005_1.jpg");
    ASSERT_TRUE(QDir().rename(tree.path(u"in"), tree.path(u"before")));
    ASSERT_TRUE(QDir().rename(tree.path(u"other"), tree.path(u"in")));
    EXPECT_EQ(reading.newestName(folder), "20061007_1.jpg");
}

TEST_F(NewestImageTest, SeesFilesComeAndGo)
{
    makeInTurn(tree.path(), {"20061005_1.jpg"});
    reading.keptNames(tree.path());
    EXPECT_EQ(reading.newestName(tree.path()), "20061005_1.jpg");
    test::makeFile(tree.path(), "20061006_1.jpg");
    EXPECT_EQ(reading.newestName(tree.path()), "20061006_1.jpg");
    ASSERT_TRUE(QFile::remove(tree.path(u"20061006_1.jpg")));
    EXPECT_EQ(reading.newestName(tree.path()), "20061005_1.jpg");
}

TEST_F(NewestImageTest, AFileThatVanishedSinceTheScanDoesNotCount)
{
    makeInTurn(tree.path(), {"20061004_1.jpg", "20061005_1.jpg", "20061005_2.jpg"});
    const int scanned = turns();
    ASSERT_GE(scanned, 1);
    EXPECT_EQ(newestAfterLosing({"20061005_2.jpg"}, scanned), "20061005_1.jpg");
}

TEST_F(NewestImageTest, TheDayBeforeCountsWhenAllFilesOfTheDayVanished)
{
    makeInTurn(tree.path(), {"20060104_1.jpg", "20061005_1.jpg", "20061005_2.jpg"});
    const int scanned = turns();
    ASSERT_GE(scanned, 1);
    EXPECT_EQ(newestAfterLosing({"20061005_1.jpg", "20061005_2.jpg"}, scanned), "20060104_1.jpg");
}

TEST_F(NewestImageTest, ThereIsNoneWhenAllFilesVanished)
{
    makeInTurn(tree.path(), {"20061005_1.jpg", "20061005_2.jpg"});
    const int scanned = turns();
    ASSERT_GE(scanned, 1);
    EXPECT_EQ(newestAfterLosing({"20061005_1.jpg", "20061005_2.jpg"}, scanned), "");
}

TEST_F(NewestImageTest, LooksAtAllFilesOfAFullDay)
{
    test::makeImages(tree.path(), 1440);
    makeLatest("20060101_235900.jpg", 4'000'000'000s);
    EXPECT_EQ(reading.newestName(tree.path()), "20060101_235900.jpg");
    makeLatest("20060101_000000.jpg", 4'000'000'001s);
    EXPECT_EQ(reading.newestName(tree.path()), "20060101_000000.jpg");
}

} // namespace
} // namespace velmora
