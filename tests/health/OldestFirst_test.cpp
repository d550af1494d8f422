// Making room on a disk: what is deleted first, and what never is.
#include "health/OldestFirst.h"

#include "HealthHouse.h"
#include "base/UniqueFd.h"
#include "support/BusyClock.h"
#include "support/RefusedCalls.h"

#include <QFile>

#include <array>
#include <fcntl.h>
#include <functional>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr qint64 kNeverEnough = std::numeric_limits<qint64>::max();
const QString kNewest = QStringLiteral("20060307_1405090714.jpg");
const QString kOld = QStringLiteral("20050101_0000000101.jpg");
const QString kOlder = QStringLiteral("20040101_0000000101.jpg");

class OldestFirstTest : public HealthTest
{
protected:
    OldestFirstTest()
    {
        HealthOptions(house_.settings).set(HealthChoice::DeleteOldest, true);
        for (const CameraAddress camera : {kOne, kTwo}) {
            add(camera);
            house_.putImage(camera, kNewest);
        }
    }

    void makeRoom(qint64 wanted = kNeverEnough)
    {
        oldest_.makeRoom(wanted, {kOne, kTwo});
        house_.finish();
    }

    // Each camera has one image that may go; something happens between the two deletions.
    void whenTheFirstHasGone(const std::function<void()> &happens)
    {
        house_.putImage(kOne, kOld);
        house_.putImage(kTwo, kOlder);
        BusyClock busy{clock_, 5ms};
        OldestFirst oldest{house_.table, house_.storage, busy, house_.scope};
        busy.setOnYield([&](int) {
            if (!house_.images(kTwo).contains(kOlder)) {
                happens();
            }
        });
        oldest.makeRoom(kNeverEnough, {kOne, kTwo});
        house_.finish();
        EXPECT_EQ(house_.images(kTwo), QStringList({kNewest}));
    }

    [[nodiscard]] QStringList went() const
    {
        QStringList names;
        if (house_.tree.exists(u"Velmora.deleted")) {
            const QString log = QString::fromUtf8(house_.tree.read(u"Velmora.deleted"));
            for (const QString &line : log.split(u'\n', Qt::SkipEmptyParts)) {
                names.append(line.section(u' ', -2));
            }
        }
        return names;
    }
};

TEST_F(OldestFirstTest, DeletesTheOldestOfAllCamerasFirstAndWritesThemDown)
{
    house_.putImage(kOne, kOld);
    house_.putImage(kTwo, kOlder);
    house_.putImage(kTwo, QStringLiteral("20060101_0000000101.jpg"));
    makeRoom();
    EXPECT_EQ(went(), QStringList({QStringLiteral("0:2 ") + kOlder, QStringLiteral("0:1 ") + kOld,
                                   QStringLiteral("0:2 20060101_0000000101.jpg")}));
    EXPECT_EQ(house_.images(kOne), QStringList({kNewest}));
    EXPECT_EQ(house_.images(kTwo), QStringList({kNewest}));
}

TEST_F(OldestFirstTest, WritesThemDownIntoAPipeWithoutKeepingItOpen)
{
    const QByteArray path = house_.tree.path(u"Velmora.deleted").toUtf8();
    ASSERT_EQ(::mkfifo(path.constData(), 0600), 0);
    const UniqueFd reader(::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    house_.putImage(kOne, kOld);
    house_.putImage(kTwo, kOlder);
    makeRoom();
    std::array<char, 1000> text{};
    const auto length = ::read(reader.get(), text.data(), text.size());
    EXPECT_EQ(QByteArray(text.data(), length).count('\n'), 2);
    EXPECT_EQ(::read(reader.get(), text.data(), text.size()), 0); // no writer is left
}

TEST_F(OldestFirstTest, DeletesNothingOfAFolderThatCannotBeReadToItsEnd)
{
    house_.putImage(kOne, kOld);
    house_.putImage(kTwo, kOlder);
    const RefusedCall failing(Call::ReadFolder, EIO, 1, 3); // in the second look at the first one
    makeRoom();
    EXPECT_EQ(went(), QStringList{QStringLiteral("0:2 ") + kOlder});
    EXPECT_EQ(house_.images(kOne), QStringList({kOld, kNewest}));
}

TEST_F(OldestFirstTest, DeletesNothingWhereThereIsRoom)
{
    house_.putImage(kOne, kOld);
    makeRoom(1);
    EXPECT_EQ(house_.images(kOne), QStringList({kOld, kNewest}));
}

TEST_F(OldestFirstTest, KeepsFilesOfAnotherNameForm)
{
    const QStringList others{
        QStringLiteral("18991230_0000000101.jpg"), QStringLiteral("20050101_000000.jpg"),
        QStringLiteral("20051301_0000000101.jpg"), QStringLiteral("notes.txt")};
    for (const QString &name : others) {
        house_.putImage(kOne, name);
    }
    makeRoom();
    EXPECT_EQ(house_.images(kOne).size(), others.size() + 1);
}

TEST_F(OldestFirstTest, FollowsNoLinkOfAFolder)
{
    house_.tree.write(QStringLiteral("elsewhere/") + kOld, "x");
    house_.tree.write(QStringLiteral("elsewhere/") + kNewest, "x");
    const QString folder = house_.tree.path(house_.folder(kTwo));
    QFile::remove(folder + u'/' + kNewest);
    QDir().rmdir(folder);
    QFile::link(house_.tree.path(u"elsewhere"), folder);
    makeRoom();
    EXPECT_TRUE(house_.tree.exists(QStringLiteral("elsewhere/") + kOld));
}

TEST_F(OldestFirstTest, KeepsAnImageWithASecondNameWhichWouldFreeNothing)
{
    house_.putImage(kOne, kOld);
    house_.putImage(kOne, kOlder);
    const QByteArray older =
        QFile::encodeName(house_.tree.path(house_.folder(kOne)) + u'/' + kOlder);
    const QByteArray second = QFile::encodeName(house_.tree.path(u"backup.jpg"));
    ASSERT_EQ(::link(older.constData(), second.constData()), 0);
    makeRoom();
    EXPECT_EQ(went(), QStringList({QStringLiteral("0:1 ") + kOld}));
    EXPECT_EQ(house_.images(kOne), QStringList({kOlder, kNewest}));
}

TEST_F(OldestFirstTest, DeletesNothingByAClockThatIsBehindTheImages)
{
    house_.putImage(kOne, kOld);
    clock_.setLocal(kFakeStart - 365 * 24h);
    makeRoom();
    EXPECT_EQ(house_.images(kOne), QStringList({kOld, kNewest}));
}

TEST_F(OldestFirstTest, TellsWhoseImagesWent)
{
    QList<CameraAddress> told;
    QObject::connect(&oldest_, &OldestFirst::imagesDeleted, &oldest_,
                     [&](CameraAddress camera) { told.append(camera); });
    house_.putImage(kTwo, kOld);
    makeRoom();
    EXPECT_EQ(told, QList<CameraAddress>({kTwo}));
}

TEST_F(OldestFirstTest, LooksAgainTenMinutesAfterItFoundNothing)
{
    makeRoom();
    house_.putImage(kOne, kOld);
    makeRoom();
    EXPECT_EQ(house_.images(kOne).size(), 2);
    clock_.advance(10min);
    makeRoom();
    EXPECT_EQ(house_.images(kOne), QStringList({kNewest}));
}

TEST_F(OldestFirstTest, DeletesNothingWhileTheStorageBoxIsEdited)
{
    house_.putImage(kOne, kOld);
    house_.storage.beginEdit();
    makeRoom();
    EXPECT_EQ(house_.images(kOne), QStringList({kOld, kNewest}));
    house_.storage.putInForce();
    makeRoom();
    EXPECT_EQ(house_.images(kOne), QStringList({kNewest}));
}

TEST_F(OldestFirstTest, EndsWhereItIsWhenTheStorageBoxIsEntered)
{
    house_.putImage(kOne, kOld);
    oldest_.makeRoom(kNeverEnough, {kOne, kTwo});
    house_.storage.beginEdit();
    house_.finish();
    EXPECT_EQ(house_.images(kOne), QStringList({kOld, kNewest}));
}

TEST_F(OldestFirstTest, DeletesNothingInTheFolderThatIsPutInForceMeanwhile)
{
    const QString other =
        QStringLiteral("drives/c/other/") + house_.folder(kOne).section(u'/', -1) + u'/';
    house_.tree.write(other + kOld, "mine");
    house_.tree.write(other + kNewest, "mine");
    house_.putImage(kOne, kOld);
    oldest_.makeRoom(kNeverEnough, {kOne});
    house_.storage.edit(QStringLiteral("C:\\other"));
    house_.storage.putInForce();
    house_.finish();
    EXPECT_TRUE(house_.tree.exists(other + kOld));
    EXPECT_EQ(house_.images(kOne), QStringList({kOld, kNewest}));
}

// With another address the row has another camera, whose images may have the same names.
TEST_F(OldestFirstTest, DeletesNothingOfTheCameraThatTakesTheRowMeanwhile)
{
    const QString folder = house_.folder(kOne);
    house_.putImage(kOne, kOlder);
    house_.putImage(kOne, kOld);
    BusyClock busy{clock_, 5ms};
    OldestFirst oldest{house_.table, house_.storage, busy, house_.scope};
    busy.setOnYield([&](int) {
        if (house_.tree.exists(folder + u'/' + kOlder) || house_.folder(kOne) != folder) {
            return;
        }
        house_.addCamera(kOne, QStringLiteral("http://other/a.jpg"));
        house_.putImage(kOne, kOld);
        house_.putImage(kOne, kNewest);
    });
    oldest.makeRoom(kNeverEnough, {kOne});
    house_.finish();
    EXPECT_NE(house_.folder(kOne), folder);
    EXPECT_EQ(house_.images(kOne), QStringList({kOld, kNewest}));
}

TEST_F(OldestFirstTest, WaitsForNoPipeInThePlaceOfItsList)
{
    const QByteArray pipe = QFile::encodeName(house_.tree.path(u"Velmora.deleted"));
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
    house_.putImage(kOne, kOld);
    makeRoom();
    EXPECT_EQ(house_.images(kOne), QStringList({kNewest}));
}

TEST_F(OldestFirstTest, StartsAnotherFileWhenTheListGetsLong)
{
    house_.tree.write(u"Velmora.deleted", QByteArray(1'000'001, 'x'));
    house_.putImage(kOne, kOld);
    makeRoom();
    EXPECT_EQ(went(), QStringList({QStringLiteral("0:1 ") + kOld}));
    EXPECT_TRUE(house_.tree.exists(u"Velmora.deleted.old"));
}

// Someone deletes it in the browser after the folder was looked through.
TEST_F(OldestFirstTest, KeepsWhatBecameTheNewestMeanwhile)
{
    whenTheFirstHasGone(
        [&] { QFile::remove(house_.tree.path(house_.folder(kOne) + u'/' + kNewest)); });
    EXPECT_EQ(house_.images(kOne), QStringList({kOld}));
}

TEST_F(OldestFirstTest, EndsWhereItIsWhenThatIsNoLongerChosen)
{
    whenTheFirstHasGone(
        [&] { HealthOptions(house_.settings).set(HealthChoice::DeleteOldest, false); });
    EXPECT_EQ(house_.images(kOne), QStringList({kOld, kNewest}));
}

// While it looks through a folder, which may be long, as well as while it deletes.
TEST_F(OldestFirstTest, EndsAtTheNextPauseWhereverItIs)
{
    for (int i = 0; i < 2000; ++i) {
        house_.putImage(kOne, QStringLiteral("20040101_%1.jpg").arg(i, 10, 10, QChar(u'0')));
    }
    const HealthOptions options(house_.settings);
    BusyClock busy{clock_, 5ms};
    OldestFirst oldest{house_.table, house_.storage, busy, house_.scope};
    for (int last = 1; last <= 10; ++last) {
        busy.setOnYield([&](int number) {
            if (number == last) {
                options.set(HealthChoice::DeleteOldest, false);
            }
        });
        options.set(HealthChoice::DeleteOldest, true);
        oldest.makeRoom(kNeverEnough, {kOne, kTwo});
        house_.finish();
        EXPECT_EQ(busy.takeYields(), last);
    }
    EXPECT_FALSE(went().isEmpty());
}

TEST_F(OldestFirstTest, EndsWhereItIsWhenTheProgramEnds)
{
    whenTheFirstHasGone([&] { house_.scope.requestStop(); });
    EXPECT_EQ(house_.images(kOne), QStringList({kOld, kNewest}));
}

// One in which someone had typed a digit too many.
TEST_F(OldestFirstTest, EndsWhereItIsWhenAnotherLimitIsChosen)
{
    HealthOptions(house_.settings).setLimitMegabytes(999'999'999);
    whenTheFirstHasGone([&] { HealthOptions(house_.settings).setLimitMegabytes(1); });
    EXPECT_EQ(house_.images(kOne), QStringList({kOld, kNewest}));
}

TEST_F(OldestFirstTest, DeletesNothingMoreByAClockThatIsSetBackMeanwhile)
{
    whenTheFirstHasGone([&] { clock_.setLocal(kFakeStart - 24h); });
    EXPECT_EQ(house_.images(kOne), QStringList({kOld, kNewest}));
}

} // namespace
} // namespace velmora::test
