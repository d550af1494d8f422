// Which images go into a film.
#include "tools/FilmRange.h"

#include "../browser/NameLists.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

std::vector<qsizetype> positions(const FilmPicks &picks)
{
    std::vector<qsizetype> found;
    for (qsizetype at = 0; at < picks.count(); ++at) {
        found.push_back(picks.position(at));
    }
    return found;
}

std::vector<qsizetype> between(const char *from, const char *to, FilmHours hours = {})
{
    static const ImageNames names =
        listOf({"20060306_2300000623.jpg", "20060307_0000000700.jpg", "20060307_0600000706.jpg",
                "20060307_1430000714.jpg", "20060307_1430590714.jpg", "20060307_2359590723.jpg",
                "20060308_0559590805.jpg", "20060308_2000000820.jpg"});
    const auto span = filmSpan(QString::fromLatin1(from), QString::fromLatin1(to));
    return span ? positions(filmPicks(names, *span, hours)) : std::vector<qsizetype>{-1};
}

using Positions = std::vector<qsizetype>;

TEST(FilmRange, OfADayIsTheWholeDay)
{
    EXPECT_EQ(between("2006-03-07", "2006-03-07"), (Positions{1, 2, 3, 4, 5}));
}

TEST(FilmRange, OfAMinuteIsTheWholeMinute)
{
    EXPECT_EQ(between("2006-03-07T14:30", "2006-03-07T14:30"), (Positions{3, 4}));
    EXPECT_EQ(between("2006-03-07 14:30:01", "2006-03-07 14:30:59"), (Positions{4}));
}

TEST(FilmRange, ThatEndsBeforeItBeginsIsEmpty)
{
    EXPECT_EQ(between("2006-03-08", "2006-03-07"), Positions());
}

TEST(FilmRange, KeepsToHoursOfEachDay)
{
    EXPECT_EQ(between("2006-03-06", "2006-03-08", {6, 20}), (Positions{2, 3, 4}));
    EXPECT_EQ(between("2006-03-06", "2006-03-08", {20, 6}), (Positions{0, 1, 5, 6, 7}));
}

TEST(FilmRange, RefusesWhatIsNoMoment)
{
    for (const char *const text :
         {"", "yesterday", "2006-02-30", "2006-03-07T25:00", "2006-03-07X14:30", "20060307",
          "2006-03-07T14:30:15.5", "2006-03-07T"}) {
        EXPECT_FALSE(filmSpan(QString::fromLatin1(text), QStringLiteral("2006-03-07"))) << text;
    }
}

TEST(FilmRange, ReadsHours)
{
    EXPECT_EQ(filmHours(QStringLiteral("6-20")), (FilmHours{6, 20}));
    EXPECT_EQ(filmHours(QStringLiteral("0-24")), FilmHours());
    for (const char *const text : {"", "6", "6-", "-6", "6-25", "24-6", "6-6", "a-b", "1-2-3"}) {
        EXPECT_FALSE(filmHours(QString::fromLatin1(text))) << text;
    }
}

TEST(FilmRange, IsThinnedEvenly)
{
    FilmPicks picks;
    picks.add(0, 4);
    picks.add(10, 16);
    picks.keepEvery(3);
    EXPECT_EQ(positions(picks), (Positions{0, 3, 12, 15}));
    picks.keepEvery(1);
    picks.keepAtMost(5);
    EXPECT_EQ(positions(picks), (Positions{0, 2, 10, 12, 14}));
    picks.keepAtMost(100);
    EXPECT_EQ(picks.count(), 5);
}

TEST(FilmRange, FillsTheSecondsThatAreWanted)
{
    FilmPicks many;
    many.add(0, 1000);
    EXPECT_EQ(fillSeconds(many, 10, {25, 1}, false).pictures, 25);
    EXPECT_EQ(many.count(), 250);
    FilmPicks few;
    few.add(0, 90);
    const FilmRate slow = fillSeconds(few, 30, {25, 1}, false);
    EXPECT_EQ(few.count(), 90);
    EXPECT_DOUBLE_EQ(90 / slow.perSecond(), 30);
    EXPECT_DOUBLE_EQ(fillSeconds(few, 30, {25, 1}, true).perSecond(), 25);
}

TEST(FilmForm, SlowsAGifToWhatViewersShow)
{
    const auto filters = [](FilmForm form, qint64 pictures) {
        const QStringList arguments =
            ffmpegArguments(form, QStringLiteral("gif"), {pictures, 1}, {64, 48}, {});
        return arguments.at(arguments.indexOf(QStringLiteral("-filter_complex")) + 1);
    };
    EXPECT_TRUE(filters(FilmForm::Gif, 60).startsWith(u"fps=50,"));
    EXPECT_FALSE(filters(FilmForm::Gif, 50).contains(u"fps="));
    EXPECT_FALSE(filters(FilmForm::Mp4, 60).contains(u"fps="));
}

} // namespace
} // namespace velmora::test
