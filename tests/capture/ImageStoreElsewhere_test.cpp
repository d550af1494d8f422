// A long picture for a camera whose folder is on another disk than the working files: it is copied
// there in pieces, between which the program goes on living.
#include "CaptureTest.h"
#include "support/LoopTurns.h"
#include "support/NativeFiles.h"
#include "support/RefusedCalls.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <functional>

namespace velmora::test {
namespace {

constexpr CameraAddress kCamera{0, 3};
constexpr qsizetype kLongBytes = qsizetype{4} * 1024 * 1024;
constexpr int kPieces = 8;

class LongPictureElsewhere : public CaptureTest
{
protected:
    void SetUp() override { addPicture(kLastModified); }

    void addPicture(const QString &lastModified)
    {
        ASSERT_TRUE(elsewhere_.isValid());
        ScriptedReply reply = goodReply(lastModified, kLongBytes);
        reply.workFolder = elsewhere_.path();
        add(kCamera, reply);
    }

    /// Does this while the picture is being copied.
    void meanwhile(const std::function<void()> &change)
    {
        QObject::connect(&house_.store, &ImageStore::downloaded, &house_,
                         [this, change] { loop_.then(kPieces / 2, change); });
    }

    /// Turns of the event loop between the picture's arrival and the end of its load.
    int turnsOfLoad()
    {
        int turns = 0;
        QObject::connect(&house_.store, &ImageStore::downloaded, &house_,
                         [this] { loop_.restart(); });
        QObject::connect(&house_.store, &ImageStore::loaded, &house_,
                         [this, &turns] { turns = loop_.turns(); });
        house_.load(kCamera);
        QObject::disconnect(&house_.store, &ImageStore::loaded, &house_, nullptr);
        return turns;
    }

    LoopTurns loop_;
    QTemporaryDir elsewhere_{
        QFile::decodeName(folderOnAnotherDisk(QFile::encodeName(house_.tree.path()))) +
        QStringLiteral("/XXXXXX")};
};

TEST_F(LongPictureElsewhere, IsCopiedInPieces)
{
    EXPECT_GE(turnsOfLoad(), kPieces);
    EXPECT_EQ(house_.images(kCamera), QStringList{kImageName});
    EXPECT_EQ(house_.tree.read(house_.folder(kCamera) + u'/' + kImageName), jpeg(kLongBytes));
    EXPECT_TRUE(QDir(elsewhere_.path()).isEmpty());
}

TEST_F(LongPictureElsewhere, IsNotCopiedUnlessItIsNew)
{
    house_.load(kCamera);
    EXPECT_LT(turnsOfLoad(), kPieces);
    EXPECT_EQ(house_.images(kCamera), QStringList{kImageName});
}

TEST_F(LongPictureElsewhere, IsGivenUpWhenItsRowGetsAnotherAddress)
{
    meanwhile([this] { house_.addCamera(kCamera, QStringLiteral("http://other/picture.jpg")); });
    house_.load(kCamera);
    EXPECT_EQ(house_.stored() + house_.failed(), QStringList());
    EXPECT_EQ(house_.images(kCamera), QStringList());
}

TEST_F(LongPictureElsewhere, CountsFromWhatTheCounterIsAtItsEnd)
{
    house_.setValue(u"lNew", kCamera, QStringLiteral("7"));
    meanwhile([this] { house_.setValue(u"lNew", kCamera, QStringLiteral("0")); });
    house_.load(kCamera);
    EXPECT_EQ(house_.value(u"lNew", kCamera), QStringLiteral("1"));
}

TEST_F(LongPictureElsewhere, SaysWhyItCannotBeKeptThere)
{
    const RefusedCall unreadable(Call::ReadAt, EIO);
    house_.load(kCamera);
    EXPECT_EQ(house_.failed(), QStringList{QStringLiteral("0:3")});
    EXPECT_TRUE(house_.allTexts().join(u' ').contains(QStringLiteral("Input/output error")));
    EXPECT_EQ(house_.images(kCamera), QStringList());
    EXPECT_TRUE(QDir(elsewhere_.path()).isEmpty());
}

} // namespace
} // namespace velmora::test
