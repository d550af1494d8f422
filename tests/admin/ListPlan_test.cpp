// Where the cameras of a list would go.
#include "admin/ListPlan.h"

#include "cameras/CameraChoices.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

ListPlan plan(const QByteArray &list, const QByteArray &settings = {})
{
    return planList(readCameraList(list), SettingsSnapshot(settings));
}

QStringList places(const ListPlan &plan)
{
    QStringList texts;
    for (const PlannedCamera &planned : plan.cameras) {
        texts.append(planned.place ? cameraText(*planned.place) : QStringLiteral("-"));
    }
    return texts;
}

TEST(ListPlan, FillsFreeRowsInTheOrderOfTheTable)
{
    const ListPlan made = plan("http://a/\nhttp://b/\n", "[Liste0]\r\nlst0=x/\r\nlst2=y/\r\n");
    EXPECT_TRUE(made.isSound());
    EXPECT_EQ(places(made), (QStringList{QStringLiteral("0:1"), QStringLiteral("0:3")}));
}

TEST(ListPlan, LeavesPlacesThatTheListGivesToThoseThatAskForThem)
{
    const ListPlan made = plan("name,address,group,row\nA,http://a/,,\nB,http://b/,0,0\nC,"
                               "http://c/,4,\n");
    EXPECT_TRUE(made.isSound());
    EXPECT_EQ(places(made),
              (QStringList{QStringLiteral("0:1"), QStringLiteral("0:0"), QStringLiteral("4:0")}));
}

TEST(ListPlan, TellsDoublesAndStaysSound)
{
    const ListPlan made =
        plan("http://a/\nhttp://b/\nhttp://b/\n", "[Liste3]\r\nlst4=http://a/\r\n");
    EXPECT_TRUE(made.isSound());
    EXPECT_EQ(made.cameras[0].fate, Fate::Double);
    EXPECT_TRUE(made.cameras[0].remark.contains(QStringLiteral("3:4")));
    EXPECT_EQ(made.cameras[1].fate, Fate::Added);
    EXPECT_EQ(made.cameras[2].fate, Fate::Double);
}

TEST(ListPlan, IsNotSoundWithMoreCamerasThanRows)
{
    QByteArray list;
    for (int i = 0; i <= 100; ++i) {
        list += "http://cam/" + QByteArray::number(i) + '\n';
    }
    const ListPlan made = plan(list);
    EXPECT_FALSE(made.isSound());
    EXPECT_EQ(made.faults(), QStringLiteral("line 101: all hundred rows are taken"));
    EXPECT_EQ(made.cameras[99].place, (CameraAddress{9, 9}));
}

TEST(ListPlan, IsNotSoundWhenARowIsTaken)
{
    const ListPlan made =
        plan("name,address,group,row\nA,http://a/,0,0\nB,http://b/,0,0\nC,http://c/,,5\n",
             "[Liste1]\r\nlst0=z/\r\n");
    EXPECT_EQ(made.cameras[0].fate, Fate::Added);
    EXPECT_EQ(made.cameras[1].fate, Fate::Wrong);
    EXPECT_EQ(made.cameras[2].fate, Fate::Wrong);
    EXPECT_FALSE(made.isSound());
}

TEST(ListPlan, TellsTheFirstFaultsOnly)
{
    EXPECT_EQ(plan(QByteArray("nothing\n").repeated(50)).faults().count(u'\n'), 10);
}

TEST(ListPlan, StoresNothingOfAnEarlierCameraOfTheRow)
{
    SettingsDraft draft(
        "[Liste0]\r\nlst0=\r\n[Groupe0]\r\nEffM0=1\r\nLastModified0=x\r\nEffM1=1\r\n"
        "[Camera00]\r\nName=Old\r\nKeep=differing\r\n");
    storeCamera(draft, {0, 0}, QStringLiteral("http://new/"), QString());
    EXPECT_EQ(draft.bytes(),
              "[Liste0]\r\nlst0=http://new/\r\n[Groupe0]\r\nEffM1=1\r\n[Camera00]\r\n");
}

TEST(ListPlan, StoresACameraWithWhatWasChosenForARowThatNeverHadOne)
{
    SettingsDraft draft(
        "[Liste0]\r\nlst0=\r\n[Groupe0]\r\nEffM0=1\r\nAutoDelai0=1\r\nSB0=255\r\nTimeLoad0=0\r\n"
        "[Camera00]\r\nName=Mine\r\nKeep=differing\r\n");
    storeCamera(draft, {0, 0}, QStringLiteral("http://new/"), QString());
    EXPECT_EQ(
        draft.bytes(),
        "[Liste0]\r\nlst0=http://new/\r\n[Groupe0]\r\nEffM0=1\r\n"
        "AutoDelai0=1\r\nSB0=255\r\nTimeLoad0=0\r\n[Camera00]\r\nName=Mine\r\nKeep=differing\r\n");
}

} // namespace
} // namespace velmora
