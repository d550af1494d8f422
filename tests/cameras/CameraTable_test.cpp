// The camera table as the settings file holds it.
#include "cameras/CameraTable.h"

#include "cameras/CamerasFixture.h"
#include "cameras/ConfiguredCameras.h"

#include <vector>

namespace velmora {
namespace {

using test::CamerasFixture;

class CameraTableTest : public CamerasFixture
{
};

TEST_F(CameraTableTest, NamesSectionsAndKeysByNumbers)
{
    EXPECT_EQ(listSection(3), QStringLiteral("Liste3"));
    EXPECT_EQ(groupSection(0), QStringLiteral("Groupe0"));
    EXPECT_EQ(rowKey(u"AutoDelai", 7), QStringLiteral("AutoDelai7"));
}

TEST_F(CameraTableTest, ReadsTheAddressOfOneCamera)
{
    store("[Liste3]\r\nlst7=http://10.0.0.5/a.jpg\r\n[Liste7]\r\nlst3=other\r\n");
    EXPECT_EQ(table.url({3, 7}), QStringLiteral("http://10.0.0.5/a.jpg"));
    EXPECT_EQ(table.url({3, 6}), QString());
}

TEST_F(CameraTableTest, NamesTheFolderOfTheStoredAddress)
{
    store("[Liste0]\r\nlst0=ab/1.jpg\r\nlst1=ABCxyz\r\nlst2=a1\r\n");
    EXPECT_EQ(table.CameraFolderName({0, 0}), QStringLiteral("\\ab%2F%31%2Ejpg\\"));
    EXPECT_EQ(table.CameraFolderName({0, 1}), QStringLiteral("\\ABCxyz\\"));
    EXPECT_EQ(table.CameraFolderName({0, 2}), QStringLiteral("\\a%31\\"));
    EXPECT_EQ(table.CameraFolderName({0, 3}), QString());
}

TEST_F(CameraTableTest, NamesTheFolderOfALongAddressAsFarAsItIsRead)
{
    store("[Liste0]\r\nlst0=" + QByteArray(300, 'a') + "\r\n");
    EXPECT_EQ(table.CameraFolderName({0, 0}), u'\\' + QString(254, u'a') + u'\\');
}

struct SwitchRow
{
    const char *stored;
    bool active;
};

TEST_F(CameraTableTest, IsActiveForExactlyOne)
{
    const std::vector<SwitchRow> rows = {{"1", true},  {"1x", true},   {" 1", true},
                                         {"0", false}, {"2", false},   {"-1", false},
                                         {"", false},  {"yes", false}, {"0.6", false}};
    for (const SwitchRow &row : rows) {
        SCOPED_TRACE(row.stored);
        store(QByteArray("[Liste4]\r\nLstAct=") + row.stored + "\r\n");
        EXPECT_EQ(table.isGroupActive(4), row.active);
        EXPECT_EQ(CameraTable::isGroupActive(settings.snapshot(), 4), row.active);
    }
}

TEST_F(CameraTableTest, IsInactiveWithoutAFile)
{
    EXPECT_FALSE(table.isGroupActive(0));
}

TEST_F(CameraTableTest, ReadsARow)
{
    store("[Liste1]\r\nlst2=u\r\n"
          "[Groupe1]\r\nAutoDelai2=1\r\nEffM2=1\r\nBestTime2=01:02:03\r\nSB2=65280\r\nTimeLoad2="
          "4\r\nlNew2= 5 \r\n");
    const CameraRow row = table.row({1, 2});
    EXPECT_EQ(row.url, QStringLiteral("u"));
    EXPECT_TRUE(row.automatic);
    EXPECT_TRUE(row.deleteOld);
    EXPECT_EQ(row.bestTime, (BestTime{1, 2, 3}));
    EXPECT_EQ(row.lamp, LampColour::Green);
    EXPECT_EQ(row.loadSeconds, 4);
    EXPECT_EQ(row.newImages, 5);
}

TEST_F(CameraTableTest, ReadsDefaultsForARowThatWasNeverStored)
{
    const CameraRow row = table.row({9, 9});
    EXPECT_EQ(row.url, QString());
    EXPECT_FALSE(row.automatic);
    EXPECT_FALSE(row.deleteOld);
    EXPECT_TRUE(row.bestTime.isUnknown());
    EXPECT_EQ(row.lamp, LampColour::None);
    EXPECT_EQ(row.loadSeconds, 0);
    EXPECT_EQ(row.newImages, 0);
    EXPECT_FALSE(tree.exists(u"Velmora.ini"));
}

TEST_F(CameraTableTest, KeepsAnyLampColour)
{
    store("[Groupe0]\r\nSB0=12345\r\n");
    EXPECT_EQ(table.row({0, 0}).lamp, static_cast<LampColour>(12345));
}

TEST_F(CameraTableTest, WarnsOnceOfANumberOutOfRangeAndReadsTheOthers)
{
    store("[Groupe0]\r\nSB0=255\r\nTimeLoad0=99999999999\r\nlNew0=7\r\n");
    for (int i = 0; i < 2; ++i) {
        const CameraRow row = table.row({0, 0});
        EXPECT_EQ(row.lamp, LampColour::Red);
        EXPECT_EQ(row.loadSeconds, 0);
        EXPECT_EQ(row.newImages, 7);
    }
    EXPECT_EQ(shown, QStringList{QStringLiteral("Overflow: [Groupe0] TimeLoad0=99999999999 in the "
                                                "settings file is out of range")});
}

TEST_F(CameraTableTest, TellsTheSchedulerWhatItNeeds)
{
    store("[Liste0]\r\nlst1=u\r\n"
          "[Groupe0]\r\nAutoDelai1=1\r\nBestTime1=00:10:00\r\nLocalTime1=07/03/2006 14:05:09\r\n");
    const CameraSchedule schedule = CameraTable::schedule(settings.snapshot(), {0, 1});
    EXPECT_EQ(schedule.url, QStringLiteral("u"));
    EXPECT_TRUE(schedule.automatic);
    EXPECT_EQ(schedule.bestTime, (BestTime{0, 10, 0}));
    EXPECT_EQ(schedule.lastImage, QStringLiteral("07/03/2006 14:05:09"));
}

TEST_F(CameraTableTest, TellsTheImageStoreWhatItNeeds)
{
    store("[Groupe0]\r\nAutoDelai1=1\r\nBestTime1=00:10:00\r\nlNew1=7x\r\n"
          "LastModified1=07/03/2006 14:05:09\r\n");
    const CameraRecord record = table.record(settings.snapshot(), {0, 1});
    EXPECT_EQ(record.lastModified, QStringLiteral("07/03/2006 14:05:09"));
    EXPECT_EQ(record.bestTime, QStringLiteral("00:10:00"));
    EXPECT_DOUBLE_EQ(record.newImages, 7);
    EXPECT_TRUE(record.automatic);
}

TEST_F(CameraTableTest, TellsTheImageStoreOfARowThatWasNeverStored)
{
    const CameraRecord record = table.record(settings.snapshot(), {0, 1});
    EXPECT_EQ(record.lastModified, QString());
    EXPECT_EQ(record.bestTime, QString());
    EXPECT_EQ(record.newImages, 0);
    EXPECT_FALSE(record.automatic);
}

TEST_F(CameraTableTest, ListsTheCamerasThatHaveAnAddress)
{
    store("[Liste3]\r\nlst7=a\r\nlst2=\r\n[Liste0]\r\nlst9=b\r\n[Groupe1]\r\nSB1=255\r\n");
    EXPECT_EQ(configuredCameras(settings.snapshot()), (std::vector<CameraAddress>{{0, 9}, {3, 7}}));
}

TEST_F(CameraTableTest, StoresAtOnce)
{
    table.setUrl({2, 3}, u"http://10.0.0.5/");
    table.setValue(keys::kSB, {2, 3}, u"33023");
    table.setGroupActive(2, true);
    table.setGroupActive(4, false);
    EXPECT_EQ(stored(), QByteArray("[Liste2]\r\nlst3=http://10.0.0.5/\r\nLstAct=1\r\n"
                                   "[Groupe2]\r\nSB3=33023\r\n[Liste4]\r\nLstAct=0\r\n"));
}

TEST_F(CameraTableTest, ClearsTheCountersOfARowAndNothingElse)
{
    store("[Liste0]\r\nlst5=u\r\n"
          "[Groupe0]\r\nAutoDelai5=1\r\nEffM5=1\r\nSB5=65280\r\nBestTime5=01:00:00\r\nlNew5="
          "9\r\nTimeLoad5=3\r\nLastModified5=x\r\nlNew6=8\r\n");
    table.clearRow({0, 5});
    EXPECT_EQ(stored(),
              QByteArray("[Liste0]\r\nlst5=u\r\n"
                         "[Groupe0]\r\nAutoDelai5=1\r\nEffM5=1\r\nSB5=255\r\nBestTime5=00:00:"
                         "00\r\nlNew5=0\r\nTimeLoad5=0\r\nLastModified5=x\r\nlNew6=8\r\n"));
}

} // namespace
} // namespace velmora
