// The sliders of the first and last image and of the speed, and the two boxes for searching.
#include "tools/SlideshowTest.h"

namespace velmora::test {
namespace {

using SlideshowSliders = SlideshowTest;

struct StartMoved
{
    const char *name;
    int end;
    int value;
    PlayRange range;
};

class StartSlider : public SlideshowTest, public testing::WithParamInterface<StartMoved>
{
};

TEST_P(StartSlider, KeepsTheEndBehindTheStart)
{
    open(30);
    film_.sFin_Change(GetParam().end);
    film_.sDebut_Change(GetParam().value);
    EXPECT_EQ(face().range, GetParam().range);
}

INSTANTIATE_TEST_SUITE_P(Of30Files, StartSlider,
                         testing::Values(StartMoved{"BehindTheEnd", 5, 12, {12, 21}},
                                         StartMoved{"NearTheLastFile", 5, 25, {25, 25}},
                                         StartMoved{"LastThatSpreads", 5, 20, {20, 29}},
                                         StartMoved{"FirstThatDoesNot", 5, 21, {21, 21}},
                                         StartMoved{"BeforeTheEnd", 20, 12, {12, 20}},
                                         StartMoved{"AtTheEnd", 12, 12, {12, 12}},
                                         StartMoved{"JustBehindTheEnd", 11, 12, {12, 21}},
                                         StartMoved{"AtTheLastFile", 5, 30, {30, 30}},
                                         StartMoved{"BackToTheFirst", 5, 1, {1, 5}}),
                         [](const testing::TestParamInfo<StartMoved> &info) {
                             return info.param.name;
                         });

struct EndMoved
{
    const char *name;
    int start;
    int value;
    PlayRange range;
};

class EndSlider : public SlideshowTest, public testing::WithParamInterface<EndMoved>
{
};

TEST_P(EndSlider, KeepsTheStartBeforeTheEnd)
{
    open(30);
    film_.sDebut_Change(GetParam().start);
    film_.sFin_Change(GetParam().value);
    EXPECT_EQ(face().range, GetParam().range);
}

INSTANTIATE_TEST_SUITE_P(Of30Files, EndSlider,
                         testing::Values(EndMoved{"BeforeTheStart", 20, 15, {6, 15}},
                                         EndMoved{"NearTheFirstFile", 20, 4, {4, 4}},
                                         EndMoved{"LastThatDoesNotSpread", 20, 9, {9, 9}},
                                         EndMoved{"FirstThatSpreads", 20, 10, {1, 10}},
                                         EndMoved{"BehindTheStart", 20, 25, {20, 25}},
                                         EndMoved{"AtTheStart", 20, 20, {20, 20}},
                                         EndMoved{"JustBeforeTheStart", 20, 19, {10, 19}},
                                         EndMoved{"NothingToPlay", 20, 0, {0, 0}}),
                         [](const testing::TestParamInfo<EndMoved> &info) {
                             return info.param.name;
                         });

TEST_F(SlideshowSliders, CountTheFilesThatTheBrowserListsNow)
{
    open(30);
    film_.sFin_Change(5);
    house_.addImages({0, 1}, 50);
    film_.PauseCine_MouseDown();
    house_.show({0, 1});
    film_.sDebut_Change(25);
    EXPECT_EQ(face().range, (PlayRange{25, 34}));
}

TEST_F(SlideshowSliders, BringThePositionUpToTheStart)
{
    open(30);
    tick(3);
    film_.sDebut_Change(12);
    EXPECT_EQ(film_.current(), 12);
    EXPECT_EQ(face().Compte, QStringLiteral("12 / 30"));
    EXPECT_EQ(face().Compte0, QStringLiteral("1 / 19"));
}

TEST_F(SlideshowSliders, LeaveAPositionBehindTheStart)
{
    open(30);
    tick(14);
    film_.sDebut_Change(12);
    EXPECT_EQ(film_.current(), 15);
    EXPECT_EQ(face().Compte0, QStringLiteral("4 / 19"));
}

TEST_F(SlideshowSliders, BringAPositionBehindTheEndToTheStart)
{
    open(30);
    film_.sDebut_Change(3);
    tick(15);
    film_.sFin_Change(10);
    EXPECT_EQ(film_.current(), 3);
    EXPECT_EQ(face().Compte, QStringLiteral("3 / 10"));
    EXPECT_EQ(face().Compte0, QStringLiteral("1 / 8"));
}

TEST_F(SlideshowSliders, LeaveAPositionAtTheEnd)
{
    open(30);
    tick(9);
    film_.sFin_Change(10);
    EXPECT_EQ(film_.current(), 10);
}

TEST_F(SlideshowSliders, ShowTheDaysOfBothEnds)
{
    house_.store(u"Vitesse", u"1000");
    house_.addCamera(kCamera, {QStringLiteral("20060101_0000000100.jpg"),
                               QStringLiteral("20060202_0000000200.jpg"),
                               QStringLiteral("20060303_0000000300.jpg"),
                               QStringLiteral("20060404_0000000400.jpg")});
    house_.show(kCamera);
    pressFilm();
    film_.sDebut_Change(2);
    EXPECT_EQ(face().tDebut, QStringLiteral("20060202"));
    EXPECT_EQ(face().tFin, QStringLiteral("20060404"));
    film_.sFin_Change(3);
    EXPECT_EQ(face().tDebut, QStringLiteral("20060202"));
    EXPECT_EQ(face().tFin, QStringLiteral("20060303"));
}

TEST_F(SlideshowSliders, LeaveTheDaysForPositionsBelowOne)
{
    open(30);
    film_.sFin_Change(0);
    EXPECT_EQ(face().tDebut, QStringLiteral("20060307"));
    EXPECT_EQ(face().tFin, QStringLiteral("20060307"));
}

TEST_F(SlideshowSliders, ResumeAPausedShowByTheEnd)
{
    open(30);
    film_.PauseCine_MouseDown();
    film_.sFin_Change(20);
    EXPECT_TRUE(isRunning());
    EXPECT_EQ(face().PauseCine, QStringLiteral("Start"));
}

TEST_F(SlideshowSliders, ResumeAPausedShowByTheEndEvenForARangeOfOneImage)
{
    open(30);
    film_.sDebut_Change(20);
    film_.PauseCine_MouseDown();
    film_.sFin_Change(20);
    EXPECT_TRUE(isRunning());
}

TEST_F(SlideshowSliders, LeaveAPausedShowPausedByTheStart)
{
    open(30);
    film_.PauseCine_MouseDown();
    film_.sDebut_Change(20);
    EXPECT_FALSE(isRunning());
}

TEST_F(SlideshowSliders, StopAPlayingShowByAnEndAtItsStart)
{
    open(30);
    film_.sDebut_Change(20);
    film_.sFin_Change(20);
    EXPECT_FALSE(isRunning());
    EXPECT_EQ(face().PauseCine, QStringLiteral("Pause"));
}

TEST_F(SlideshowSliders, LetAShowThatStoppedItselfRunAgainByAnotherEnd)
{
    openAt(30, 20, 20);
    tick();
    ASSERT_FALSE(isRunning());
    film_.sFin_Change(25);
    EXPECT_TRUE(isRunning());
}

TEST_F(SlideshowSliders, LeaveThePicture)
{
    open(30);
    tick(5);
    film_.sDebut_Change(12);
    film_.sFin_Change(20);
    EXPECT_EQ(face().image.name, imageName(4));
}

TEST_F(SlideshowSliders, TellTheWindow)
{
    open(30);
    const QSignalSpy changes(&film_, &Slideshow::changed);
    film_.sDebut_Change(12);
    film_.sFin_Change(20);
    film_.vitesse_Change(30);
    EXPECT_EQ(changes.size(), 3);
}

TEST_F(SlideshowSliders, StoreEveryChangeOfTheSpeed)
{
    open(30);
    film_.vitesse_Change(500);
    EXPECT_EQ(house_.stored(u"Vitesse"), QStringLiteral("500"));
    EXPECT_EQ(face().vitesse, 500);
    film_.vitesse_Change(10);
    EXPECT_EQ(house_.stored(u"Vitesse"), QStringLiteral("10"));
}

class DaySearch : public SlideshowTest
{
protected:
    void SetUp() override
    {
        house_.addCamera(kCamera, {QStringLiteral("20060101_0000000100.jpg"),
                                   QStringLiteral("20060202_0000000200.jpg"),
                                   QStringLiteral("20060202_1111110211.jpg"),
                                   QStringLiteral("20060303_0000000300.jpg")});
        house_.show(kCamera);
    }

    [[nodiscard]] int selected() const { return house_.data.files.ListIndex(); }
};

TEST_F(DaySearch, SelectsTheFirstNameThatBeginsWithTheText)
{
    film_.find(QStringLiteral("20060202"));
    EXPECT_EQ(selected(), 1);
    EXPECT_EQ(house_.NbI(), QStringLiteral("2 / 4"));
}

TEST_F(DaySearch, SelectsByAPartOfTheDayOrMoreThanIt)
{
    film_.find(QStringLiteral("2006020"));
    EXPECT_EQ(selected(), 1);
    film_.find(QStringLiteral("20060202_11"));
    EXPECT_EQ(selected(), 2);
    film_.find(QStringLiteral("20060303_0000000300.jpg"));
    EXPECT_EQ(selected(), 3);
}

TEST_F(DaySearch, SearchesFromTheFirstEntryWhateverIsSelected)
{
    browser_.chooseFile(2);
    film_.find(QStringLiteral("20060202"));
    EXPECT_EQ(selected(), 1);
}

TEST_F(DaySearch, LeavesTheSelectionWhenNoNameBeginsSo)
{
    browser_.chooseFile(2);
    for (const char *const text : {"20060404", "0060202", "20060303_0000000300.jpgx", "3"}) {
        film_.find(QString::fromLatin1(text));
        EXPECT_EQ(selected(), 2) << text;
    }
}

TEST_F(DaySearch, SelectsTheFirstEntryForAnEmptyText)
{
    browser_.chooseFile(2);
    film_.find(QString());
    EXPECT_EQ(selected(), 0);
}

TEST_F(DaySearch, SelectsNothingForAnEmptyTextInAnEmptyList)
{
    house_.show({0, 5});
    film_.find(QString());
    EXPECT_EQ(selected(), -1);
}

} // namespace
} // namespace velmora::test
