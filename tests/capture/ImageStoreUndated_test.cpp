// A camera that sends no date: what is kept when such pictures are chosen, and when they are not.
#include "CaptureTest.h"
#include "cameras/CameraChoices.h"
#include "support/FileSizeLimit.h"

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr CameraAddress kCamera{0, 3};

class Undated : public CaptureTest
{
protected:
    Undated()
    {
        QObject::connect(&house_.store, &ImageStore::undatedNoticed, &house_,
                         [this](CameraAddress camera) { noticed_.append(cameraText(camera)); });
    }

    void choose(const KeepChoice &choice) const
    {
        const SettingsChange change = house_.settings.change(
            [&](SettingsDraft &draft) { setCameraKeep(draft, kCamera, choice); });
        ASSERT_EQ(change, SettingsChange::Made);
    }

    /// Loads a picture of that size, ten minutes after the last one.
    void load(qsizetype size, const QString &lastModified = {})
    {
        add(kCamera, goodReply(lastModified, size));
        house_.load(kCamera);
        clock_.advance(10min);
    }

    QStringList noticed_;
};

TEST_F(Undated, StoresAPictureThatDiffers)
{
    choose({Keep::Differing});
    load(2000);
    load(2000);
    load(3000);
    EXPECT_EQ(house_.images(kCamera), (QStringList{QStringLiteral("20060307_1405090714.jpg"),
                                                   QStringLiteral("20060307_1425090714.jpg")}));
    EXPECT_EQ(house_.value(u"lNew", kCamera), QStringLiteral("2"));
    EXPECT_EQ(house_.value(u"LastModified", kCamera), QStringLiteral("07/03/2006 14:25:09"));
    EXPECT_EQ(house_.value(u"SB", kCamera), kGreen);
}

// A long one goes to the disk as it comes; what is chosen meanwhile finds it lost.
TEST_F(Undated, FailsWithALongPictureThatTheDiskDidNotTake)
{
    house_.tree.write(u"in the way", "a file");
    ScriptedReply lost = goodReply({}, 300'000);
    lost.workFolder = house_.tree.path(u"in the way");
    lost.delay = 1s;
    load(2000);
    add(kCamera, lost);
    house_.beginLoad(kCamera);
    choose({Keep::Differing});
    clock_.advance(1s);
    EXPECT_EQ(house_.value(u"SB", kCamera), kRed);
    house_.setValue(u"SB", kCamera, kGreen);
    house_.beginLoad(kCamera);
    clock_.advance(1s);
    EXPECT_EQ(house_.value(u"SB", kCamera), kRed);
    EXPECT_EQ(house_.failed(), (QStringList{QStringLiteral("0:3"), QStringLiteral("0:3")}));
}

TEST_F(Undated, KnowsALongPictureAgainThatTheDiskDidNotTake)
{
    choose({Keep::Differing});
    load(300'000);
    house_.tree.write(u"in the way", "a file");
    ScriptedReply lost = goodReply({}, 300'000);
    lost.workFolder = house_.tree.path(u"in the way");
    add(kCamera, lost);
    house_.load(kCamera);
    EXPECT_EQ(house_.value(u"SB", kCamera), kGreen);
    EXPECT_EQ(house_.images(kCamera).size(), 1);
}

TEST_F(Undated, IsNamedInUniversalTime)
{
    clock_.setUtcOffset(1h);
    choose({Keep::Differing});
    load(2000);
    EXPECT_EQ(house_.images(kCamera), QStringList{QStringLiteral("20060307_1305090714.jpg")});
}

TEST_F(Undated, RemembersThePictureThroughARestart)
{
    choose({Keep::Differing});
    load(2000);
    EXPECT_EQ(house_.settings.read(u"Camera03", u"Digest").size(), 32);
    EXPECT_EQ(house_.settings.read(u"Camera03", u"Look"), QString());
    house_.settings.write(u"Camera03", u"Digest", QString(32, u'0'));
    load(2000);
    EXPECT_EQ(house_.images(kCamera).size(), 2);
}

TEST_F(Undated, MeasuresTheIntervalAsForOthers)
{
    choose({Keep::Differing});
    load(2000);
    load(3000);
    EXPECT_EQ(house_.value(u"BestTime", kCamera), QStringLiteral("00:10:00"));
}

TEST_F(Undated, GoesByTheDateOfAnAnswerThatHasOne)
{
    choose({Keep::Differing});
    load(2000, kLastModified);
    load(3000, kLastModified);
    EXPECT_EQ(house_.images(kCamera), QStringList{kImageName});
}

TEST_F(Undated, TriesAgainWhenItsNameIsTaken)
{
    choose({Keep::Differing});
    load(2000);
    load(3000);
    clock_.setLocal(kFakeStart); // set back: the name is that of the first picture
    load(4000);
    EXPECT_EQ(house_.images(kCamera).size(), 2);
    clock_.advance(1min); // later than the name of the second picture
    load(4000);
    EXPECT_EQ(house_.images(kCamera).size(), 3);
}

TEST_F(Undated, KeepsOneWhileNothingIsChosen)
{
    const QByteArray before = house_.tree.read(u"Velmora.ini");
    load(2000);
    load(3000);
    EXPECT_EQ(house_.images(kCamera), QStringList{QStringLiteral("18991230_0000000714.jpg")});
    EXPECT_FALSE(house_.tree.read(u"Velmora.ini").contains("[Camera"));
}

TEST_F(Undated, IsNoticedAtTheThirdPicture)
{
    load(2000);
    load(2000);
    EXPECT_EQ(noticed_, QStringList());
    load(2000);
    load(2000);
    EXPECT_EQ(noticed_, QStringList{QStringLiteral("0:3")});
}

TEST_F(Undated, IsNoticedAgainForAnotherCameraInTheRow)
{
    for (int i = 0; i < 4; ++i) {
        load(2000);
    }
    ASSERT_EQ(noticed_.size(), 1);
    const QString other = QStringLiteral("http://other/a.jpg");
    house_.addCamera(kCamera, other);
    source_.answer(other, goodReply({}, 2000));
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(noticed_.size(), i < 3 ? 1 : 2);
        house_.load(kCamera);
    }
}

TEST_F(Undated, TakesAHeaderThatIsNoDateForNone)
{
    choose({Keep::Differing});
    for (const qsizetype size : {2000, 3000, 3000, 4000}) {
        load(size, QStringLiteral("-1"));
    }
    EXPECT_EQ(house_.images(kCamera).size(), 3);
    EXPECT_TRUE(house_.images(kCamera).first().startsWith(u"20060307_"));
    choose({Keep::Dated});
    for (int i = 0; i < 3; ++i) {
        load(2000, QStringLiteral("-1"));
    }
    EXPECT_EQ(noticed_.size(), 1);
}

TEST_F(Undated, IsNotNoticedWhenItIsChosenOrDated)
{
    for (int i = 0; i < 4; ++i) {
        load(2000, kLastModified);
    }
    choose({Keep::Differing});
    for (int i = 0; i < 4; ++i) {
        load(2000);
    }
    EXPECT_EQ(noticed_, QStringList());
}

TEST_F(Undated, IsNotReadForACameraThatIsDated)
{
    load(2000);
    EXPECT_EQ(house_.settings.read(u"Camera03", u"Digest"), QString());
}

TEST_F(Undated, RemembersThePictureWithoutSettingsThatCanBeWritten)
{
    choose({Keep::Differing});
    add(kCamera);
    const QByteArray before = house_.tree.read(u"Velmora.ini");
    house_.tree.write(u"Velmora.ini", ';' + QByteArray(8000, 'x') + "\r\n" + before);
    {
        const FileSizeLimit limit(6000); // enough for pictures
        for (const qsizetype size : {2000, 2000, 3000, 3000}) {
            load(size);
        }
        ASSERT_EQ(house_.settings.read(u"Camera03", u"Digest"), QString());
        EXPECT_EQ(house_.images(kCamera).size(), 2);
    }
    load(4000);
    load(4000);
    EXPECT_EQ(house_.images(kCamera).size(), 3);
    EXPECT_EQ(house_.settings.read(u"Camera03", u"Digest").size(), 32);
}

} // namespace
} // namespace velmora::test
