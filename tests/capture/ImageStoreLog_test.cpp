// What loading a camera reports: log lines, captions and colours, each in order.
#include "CaptureTest.h"

namespace velmora::test {
namespace {

constexpr CameraAddress kCamera{0, 3};
const QString kBegin = QStringLiteral("<-Interface ChargeFile->\n"
                                      "Load 0:3\n"
                                      "Test http://cam/0/3/picture.jpg\n");

class ChargeFileSays : public CaptureTest
{
protected:
    ChargeFileSays()
    {
        QObject::connect(&house_.page, &CameraPage::rowChanged, &house_, [this](int row) {
            const LampColour lamp = house_.page.row(row).lamp;
            ++rowChanges_;
            if (lamps_.isEmpty() || lamps_.last() != lamp) {
                lamps_.append(lamp);
            }
        });
    }

    QList<LampColour> lamps_;
    int rowChanges_ = 0;
};

TEST_F(ChargeFileSays, EachStepOfAStoreInTheLog)
{
    house_.log.setOn(true);
    add(kCamera);
    house_.load(kCamera);
    EXPECT_EQ(house_.logText(),
              kBegin + QStringLiteral("Best times 00:00:00 - \n"
                                      " Ecrit 20060307_1405090714.jpg 07/03/2006 14:05:09\r\n\n"
                                      "Ajout de 20060307_1405090714.jpg\n"));
}

TEST_F(ChargeFileSays, NoStoreOfAnImageThatIsNotNew)
{
    house_.log.setOn(true);
    add(kCamera);
    house_.putImage(kCamera, kImageName);
    house_.setValue(u"LastModified", kCamera, kLastModifiedStored);
    house_.setValue(u"BestTime", kCamera, QStringLiteral("00:00:00"));
    house_.load(kCamera);
    EXPECT_EQ(house_.logText(), kBegin + QStringLiteral("Best times 00:00:00 - 00:00:00\n"));
}

TEST_F(ChargeFileSays, NothingMoreOfAFailure)
{
    house_.log.setOn(true);
    add(kCamera, failedReply());
    house_.load(kCamera);
    EXPECT_EQ(house_.logText(), kBegin);
}

TEST_F(ChargeFileSays, NothingWhileTheLogIsOff)
{
    add(kCamera);
    house_.log.setOn(false);
    house_.load(kCamera);
    EXPECT_FALSE(house_.tree.exists(u"Velmora.log"));
}

TEST_F(ChargeFileSays, StepActivityAndTimeOfAStore)
{
    add(kCamera);
    house_.load(kCamera);
    EXPECT_EQ(house_.shown(Caption::Step),
              (QStringList{QStringLiteral("Load 0:3"), QString(), QStringLiteral("Wait")}));
    EXPECT_EQ(house_.shown(Caption::Activity),
              (QStringList{QStringLiteral("Test http://cam/0/3/picture.jpg"),
                           QStringLiteral("Ajout de 20060307_1405090714.jpg")}));
    EXPECT_EQ(house_.shown(Caption::LastStore), QStringList{QStringLiteral("14:05:09")});
    EXPECT_EQ(house_.shown(Caption::Trouble), QStringList());
}

TEST_F(ChargeFileSays, NoTimeForAnImageThatIsNotNew)
{
    add(kCamera, goodReply(QString()));
    house_.putImage(kCamera, kImageName);
    house_.load(kCamera);
    EXPECT_EQ(house_.shown(Caption::Step).last(), QStringLiteral("Wait"));
    EXPECT_EQ(house_.shown(Caption::Activity).size(), 1);
    EXPECT_EQ(house_.shown(Caption::LastStore), QStringList());
}

TEST_F(ChargeFileSays, AnEmptyStepAfterAFailure)
{
    add(kCamera, failedReply());
    house_.load(kCamera);
    EXPECT_EQ(house_.shown(Caption::Step), (QStringList{QStringLiteral("Load 0:3"), QString()}));
}

TEST_F(ChargeFileSays, YellowThenGreenForAGoodPicture)
{
    add(kCamera);
    house_.load(kCamera);
    EXPECT_EQ(lamps_, (QList<LampColour>{LampColour::None, LampColour::Yellow, LampColour::Green}));
}

TEST_F(ChargeFileSays, YellowThenGreenForAnImageThatIsNotNew)
{
    add(kCamera, goodReply(QString()));
    house_.putImage(kCamera, kImageName);
    house_.load(kCamera);
    EXPECT_EQ(lamps_, (QList<LampColour>{LampColour::None, LampColour::Yellow, LampColour::Green}));
}

TEST_F(ChargeFileSays, YellowThenRedForAPictureThatCannotBeStored)
{
    add(kCamera);
    house_.tree.write(u"drives/c/in/tmp", "in the way");
    house_.load(kCamera);
    EXPECT_EQ(lamps_, (QList<LampColour>{LampColour::None, LampColour::Yellow, LampColour::Red}));
}

TEST_F(ChargeFileSays, TheNewValuesOnTheRow)
{
    add(kCamera);
    house_.setValue(u"lNew", kCamera, QStringLiteral("6"));
    house_.setValue(u"LastModified", kCamera, QStringLiteral("07/03/2006 13:05:09"));
    house_.load(kCamera);
    EXPECT_EQ(house_.page.row(3).newImages, 7);
    EXPECT_EQ(house_.page.row(3).bestTime.text(), QStringLiteral("01:00:00"));
    EXPECT_EQ(house_.page.row(3).lamp, LampColour::Green);
}

TEST_F(ChargeFileSays, NothingOnThePageOfAnotherGroup)
{
    add({4, 3});
    house_.load({4, 3});
    EXPECT_EQ(rowChanges_, 0);
    EXPECT_EQ(house_.page.row(3).newImages, 0);
    EXPECT_EQ(house_.page.row(3).lamp, LampColour::None);
    EXPECT_EQ(house_.value(u"lNew", {4, 3}), QStringLiteral("1"));
    EXPECT_EQ(house_.value(u"SB", {4, 3}), kGreen);
}

TEST_F(ChargeFileSays, TheGroupAndRowOfTheCamera)
{
    add({7, 2});
    house_.load({7, 2});
    EXPECT_EQ(house_.shown(Caption::Step).value(0), QStringLiteral("Load 7:2"));
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("7:2")});
}

} // namespace
} // namespace velmora::test
