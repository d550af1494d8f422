// The lines that a pass writes into the log.
#include "CaptureTest.h"

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class PassLog : public CaptureTest
{
protected:
    PassLog() { house_.log.setOn(true); }

    /// Log lines of the scheduler itself, each with the blank line before it.
    [[nodiscard]] QStringList lines() const
    {
        QStringList own;
        const QStringList all = house_.logText().split(u'\n');
        for (qsizetype i = 1; i < all.size(); ++i) {
            if (all[i - 1] == QStringLiteral("\r")) {
                own.append(all[i]);
            }
        }
        return own;
    }
};

TEST_F(PassLog, BeginsEachLoadWithABlankLine)
{
    add({0, 3}, failedReply());
    house_.showGroup(0);
    house_.tick();
    EXPECT_TRUE(house_.logText().contains(QStringLiteral(
        "\r\nChargement de http://cam/0/3/picture.jpg 0:3\n<-Interface ChargeFile->\n")))
        << house_.logText().toStdString();
}

TEST_F(PassLog, ShowsTheRowOfTheGroupOnScreen)
{
    add({0, 3}, failedReply());
    add({2, 3}, failedReply());
    house_.showGroup(2);
    house_.tick();
    EXPECT_EQ(lines(),
              (QStringList{QStringLiteral("Chargement de http://cam/2/3/picture.jpg 0:3"),
                           QStringLiteral("Chargement de http://cam/2/3/picture.jpg 2:3")}));
}

TEST_F(PassLog, ShowsAnEmptyRowOfTheGroupOnScreen)
{
    add({2, 3}, failedReply());
    house_.showGroup(0);
    house_.tick();
    EXPECT_EQ(lines(), QStringList{QStringLiteral("Chargement de  2:3")});
}

TEST_F(PassLog, ShowsTheRowAsItStandsInTheBox)
{
    add({0, 3}, failedReply());
    house_.showGroup(0);
    house_.page.changeSource(3, QStringLiteral("http://half.typ"));
    house_.tick();
    EXPECT_EQ(lines(), QStringList{QStringLiteral("Chargement de http://half.typ 0:3")});
}

TEST_F(PassLog, KeepsThePercentCodesOfTheRowOnScreen)
{
    const QString url = QStringLiteral("http://cam/a%2Fb%3F%4c%1.jpg");
    house_.addCamera({0, 3}, url);
    source_.answer(url, failedReply());
    house_.showGroup(0);
    house_.tick();
    EXPECT_EQ(lines(),
              QStringList{QStringLiteral("Chargement de ") + url + QStringLiteral(" 0:3")});
}

TEST_F(PassLog, HidesTheCredentialsOfTheRowOnScreen)
{
    add({2, 3}, failedReply());
    house_.addCamera({0, 3}, QStringLiteral("http://me:pw@cam/a.jpg"));
    house_.table.setGroupActive(0, false);
    house_.showGroup(0);
    house_.tick();
    EXPECT_EQ(lines(), QStringList{QStringLiteral("Chargement de http://cam/a.jpg 2:3")});
}

TEST_F(PassLog, HidesALoginThatIsBeingTyped)
{
    add({0, 3}, failedReply());
    house_.showGroup(0);
    house_.page.changeSource(3, QStringLiteral("admin:Geheim7"));
    house_.tick();
    EXPECT_EQ(lines(), QStringList{QStringLiteral("Chargement de admin:*** 0:3")});
}

TEST_F(PassLog, TellsOfACameraThatIsDueInAutomaticMode)
{
    add({0, 3});
    house_.showGroup(0);
    house_.tick();
    house_.setValue(u"AutoDelai", {0, 3}, QStringLiteral("1"));
    house_.setValue(u"BestTime", {0, 3}, QStringLiteral("00:10:00"));
    clock_.advance(10min);
    house_.tick();
    EXPECT_EQ(lines().mid(1),
              (QStringList{QStringLiteral("Test true pour Auto http://cam/0/3/picture.jpg 0:3"),
                           QStringLiteral("Chargement de http://cam/0/3/picture.jpg 0:3")}));
}

TEST_F(PassLog, TellsOfNoAutomaticModeForAnEmptyFolder)
{
    add({0, 3}, failedReply());
    house_.showGroup(0);
    house_.tick();
    house_.setValue(u"AutoDelai", {0, 3}, QStringLiteral("1"));
    house_.setValue(u"BestTime", {0, 3}, QStringLiteral("10:00:00"));
    house_.setValue(u"LocalTime", {0, 3}, QStringLiteral("07/03/2006 14:05:09"));
    house_.tick();
    EXPECT_EQ(lines().mid(1),
              QStringList{QStringLiteral("Chargement de http://cam/0/3/picture.jpg 0:3")});
}

TEST_F(PassLog, IsSilentWhenNothingIsLoaded)
{
    house_.tick();
    house_.tick();
    EXPECT_EQ(house_.logText(), QString());
}

} // namespace
} // namespace velmora::test
