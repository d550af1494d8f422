// Cameras loaded one after another without a turn of the event loop: their values reach the
// settings file together.
#include "CaptureTest.h"
#include "cameras/CameraChoices.h"
#include "support/FileSizeLimit.h"

#include <memory>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class Gathering : public CaptureTest
{
protected:
    /// The camera's value in the file itself.
    [[nodiscard]] QString onDisk(QStringView word, CameraAddress camera) const
    {
        const SettingsValue there = CameraTable::valueToSet(RowKey{word}, camera, QString());
        return ReadINI(there.section, there.key, house_.settings.path());
    }

    const QList<CameraAddress> cameras_ = {{0, 0}, {0, 1}, {4, 5}};
};

TEST_F(Gathering, StoresTheValuesOfATurnTogetherAndShowsThemAtOnce)
{
    QStringList onDisk;
    QStringList read;
    QObject::connect(&house_.store, &ImageStore::imageStored, &house_, [&](CameraAddress camera) {
        onDisk.append(this->onDisk(u"lNew", camera));
        read.append(house_.value(u"lNew", camera));
    });
    for (const CameraAddress camera : cameras_) {
        add(camera);
    }
    house_.tick();
    EXPECT_EQ(onDisk, QStringList({QString(), QString(), QString()}));
    EXPECT_EQ(read, QStringList(3, QStringLiteral("1")));
    for (const CameraAddress camera : cameras_) {
        EXPECT_EQ(this->onDisk(u"lNew", camera), QStringLiteral("1"));
        EXPECT_EQ(this->onDisk(u"SB", camera), kGreen);
        EXPECT_EQ(this->onDisk(u"LastModified", camera), kLastModifiedStored);
    }
}

TEST_F(Gathering, HasStoredEverythingAtTheEndOfThePass)
{
    QString atEnd;
    QObject::connect(&house_.scheduler, &Scheduler::passEnded, &house_,
                     [&] { atEnd = onDisk(u"lNew", cameras_.last()); });
    for (const CameraAddress camera : cameras_) {
        add(camera);
    }
    house_.tick();
    EXPECT_EQ(atEnd, QStringLiteral("1"));
}

TEST_F(Gathering, DoesNotWaitForACameraThatIsSlow)
{
    add(cameras_[0]);
    add(cameras_[1], failedReply());
    add(cameras_[2], delayedReply(3s));
    house_.beginTick();
    clock_.advance(1s);
    EXPECT_EQ(onDisk(u"lNew", cameras_[0]), QStringLiteral("1"));
    EXPECT_EQ(onDisk(u"SB", cameras_[1]), kRed);
    EXPECT_EQ(onDisk(u"SB", cameras_[2]), QString());
    clock_.advance(3s);
    EXPECT_EQ(onDisk(u"lNew", cameras_[2]), QStringLiteral("1"));
}

TEST_F(Gathering, StoresBeforeALineOfTheLogTellsOfIt)
{
    house_.log.setOn(true);
    QString onDisk;
    QObject::connect(&house_.store, &ImageStore::imageStored, &house_,
                     [&](CameraAddress camera) { onDisk = this->onDisk(u"lNew", camera); });
    add(cameras_[0]);
    house_.tick();
    EXPECT_EQ(onDisk, QStringLiteral("1"));
}

TEST_F(Gathering, SaysWhenWhatWasToldIsStored)
{
    QStringList onDisk;
    QObject::connect(&house_.store, &ImageStore::settled, &house_,
                     [&] { onDisk.append(this->onDisk(u"lNew", cameras_[0])); });
    add(cameras_[0]);
    house_.tick();
    ASSERT_FALSE(onDisk.isEmpty());
    EXPECT_EQ(onDisk.first(), QStringLiteral("1"));
}

TEST_F(Gathering, KeepsAValueThatIsWrittenInTheSameTurn)
{
    QObject::connect(&house_.store, &ImageStore::imageStored, &house_, [&](CameraAddress camera) {
        house_.setValue(u"lNew", camera, QStringLiteral("0"));
    });
    add(cameras_[0]);
    house_.tick();
    EXPECT_EQ(onDisk(u"lNew", cameras_[0]), QStringLiteral("0"));
}

// As a command does while the program runs.
TEST_F(Gathering, GivesNothingToACameraThatTakesTheRowInTheSameTurn)
{
    const CameraAddress camera = cameras_[0];
    const SettingsFile otherProgram(house_.settings.programFolder());
    SettingsChange replaced = SettingsChange::Failed;
    QObject::connect(&house_.store, &ImageStore::imageStored, &house_, [&] {
        replaced = otherProgram.change([&](SettingsDraft &draft) {
            forgetRow(draft, camera);
            setUrl(draft, camera, u"http://other/b.jpg");
        });
    });
    add(camera);
    house_.tick();
    ASSERT_EQ(replaced, SettingsChange::Made);
    EXPECT_EQ(onDisk(u"lNew", camera), QString());
    EXPECT_EQ(onDisk(u"LastModified", camera), QString());
    EXPECT_EQ(onDisk(u"SB", camera), QString());
}

TEST_F(Gathering, LosesNothingWhenTheProgramEndsInTheSameTurn)
{
    CameraRequests requests(house_.settings, house_.storage, house_.options);
    ReadAhead transfers(source_, house_.scope);
    auto store = std::make_unique<ImageStore>(ImageStore::Uses{
        house_.table, house_.storage, requests, transfers, house_.log, house_.problems, clock_});
    store->gather();
    house_.setValue(u"lNew", cameras_[0], QStringLiteral("3"));
    EXPECT_EQ(onDisk(u"lNew", cameras_[0]), QString());
    store.reset();
    EXPECT_EQ(onDisk(u"lNew", cameras_[0]), QStringLiteral("3"));
}

TEST_F(Gathering, RemembersAPictureThatTheSettingsDidNotTake)
{
    const CameraAddress camera = cameras_[0];
    EXPECT_EQ(house_.settings.change(
                  [&](SettingsDraft &draft) { setCameraKeep(draft, camera, {Keep::Differing}); }),
              SettingsChange::Made);
    add(camera, goodReply({}, 2000));
    const QByteArray before = house_.tree.read(u"Velmora.ini");
    house_.tree.write(u"Velmora.ini", ';' + QByteArray(8000, 'x') + "\r\n" + before);
    const FileSizeLimit limit(6000); // enough for pictures
    for (int pass = 0; pass < 3; ++pass) {
        house_.scheduler.setTickCounter(59);
        house_.tick();
        clock_.advance(10min);
    }
    ASSERT_EQ(house_.settings.read(u"Camera00", u"Digest"), QString());
    EXPECT_EQ(house_.images(camera).size(), 1);
}

} // namespace
} // namespace velmora::test
