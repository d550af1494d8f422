// What is known about the cameras, read back after a restart.
#include "health/HealthStore.h"

#include "support/RefusedCalls.h"
#include "support/TempTree.h"
#include "support/WithoutRootRights.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/stat.h>

namespace velmora {
namespace {

using namespace std::chrono_literals;
using test::Call;
using test::RefusedCall;
using test::TempTree;
using test::WithoutRootRights;

constexpr Moment kBegin{std::chrono::sys_days{std::chrono::year{2006} / 3 / 7}};
constexpr CameraAddress kOne{4, 2};
constexpr CameraAddress kOther{4, 1};

CameraHealths known()
{
    CameraHealths cameras;
    cameras[kOne].folder = QStringLiteral("/a/b");
    cameras[kOne].addImage(kBegin, 1000);
    return cameras;
}

TEST(HealthStore, ReadsWhatItWrote)
{
    const TempTree tree;
    saveHealth(tree.path(), known());
    const StoredHealth read = loadHealth(tree.path());
    EXPECT_EQ(read.state, HealthFile::Read);
    EXPECT_EQ(read.cameras[kOne].toJson(), known()[kOne].toJson());
    EXPECT_EQ(read.cameras[kOther].folder, QString());
}

TEST(HealthStore, HasNothingWhenTheFileIsMissing)
{
    const TempTree tree;
    EXPECT_EQ(loadHealth(tree.path()).state, HealthFile::Missing);
}

class DamagedHealthFile : public testing::TestWithParam<QByteArray>
{
};

TEST_P(DamagedHealthFile, CountsAsMissing)
{
    const TempTree tree;
    tree.write(u"Velmora.health", GetParam());
    EXPECT_EQ(loadHealth(tree.path()).state, HealthFile::Missing);
}

INSTANTIATE_TEST_SUITE_P(All, DamagedHealthFile,
                         testing::Values(QByteArray(), QByteArray("no such thing"),
                                         QByteArray("{\"version\":1,\"cameras\":[{\"fol"),
                                         QByteArray("[1,2,3]"), QByteArray("{\"version\":-1}"),
                                         QByteArray(100'000, '\0'), QByteArray(5'000'000, '[')));

TEST(HealthStore, LeavesOutWhatIsTooMuchOrOfAnotherType)
{
    const TempTree tree;
    QByteArray many = "{\"version\":1,\"cameras\":[7,\"x\",null";
    for (int i = 0; i < 500; ++i) {
        many += ",{}";
    }
    tree.write(u"Velmora.health", many + "]}");
    const StoredHealth read = loadHealth(tree.path());
    EXPECT_EQ(read.state, HealthFile::Read);
}

TEST(HealthStore, KnowsAFileOfANewerVersion)
{
    const TempTree tree;
    tree.write(u"Velmora.health", "{\"version\":2,\"cameras\":[]}");
    EXPECT_EQ(loadHealth(tree.path()).state, HealthFile::Newer);
}

TEST(HealthStore, ReadsAgainAfterAPassingError)
{
    const TempTree tree;
    saveHealth(tree.path(), known());
    const RefusedCall refused(Call::Read, EIO, 1);
    EXPECT_EQ(loadHealth(tree.path()).state, HealthFile::Read);
}

TEST(HealthStore, TellsAFileThatCannotBeReadFromAMissingOne)
{
    const TempTree tree;
    saveHealth(tree.path(), known());
    const RefusedCall refused(Call::Read, EIO);
    EXPECT_EQ(loadHealth(tree.path()).state, HealthFile::Unread);
}

TEST(HealthStore, WaitsForNoPipe)
{
    const TempTree tree;
    ASSERT_EQ(::mkfifo(QFile::encodeName(tree.path(u"Velmora.health")).constData(), 0600), 0);
    EXPECT_EQ(loadHealth(tree.path()).state, HealthFile::Foreign);
}

TEST(HealthStore, TakesAFolderForNoneOfItsOwn)
{
    const TempTree tree;
    tree.makeFolder(u"Velmora.health");
    EXPECT_EQ(loadHealth(tree.path()).state, HealthFile::Foreign);
}

TEST(HealthStore, TakesWhatIsBehindALinkForNoneOfItsOwn)
{
    for (const QByteArray &text : {QByteArray("a letter"), QByteArray(5'000'000, 'x')}) {
        const TempTree tree;
        tree.write(u"letter.txt", text);
        ASSERT_TRUE(QFile::link(tree.path(u"letter.txt"), tree.path(u"Velmora.health")));
        EXPECT_EQ(loadHealth(tree.path()).state, HealthFile::Foreign);
    }
}

TEST(HealthStore, FollowsALinkToAFileOfItsOwn)
{
    const TempTree tree;
    saveHealth(tree.path(), known());
    ASSERT_TRUE(QFile::rename(tree.path(u"Velmora.health"), tree.path(u"elsewhere")));
    ASSERT_TRUE(QFile::link(tree.path(u"elsewhere"), tree.path(u"Velmora.health")));
    EXPECT_EQ(loadHealth(tree.path()).state, HealthFile::Read);
    saveHealth(tree.path(), CameraHealths());
    EXPECT_FALSE(tree.read(u"elsewhere").contains("/a/b"));
}

TEST(HealthStore, FollowsALinkToAnEmptyFile)
{
    const TempTree tree;
    tree.write(u"elsewhere", {});
    ASSERT_TRUE(QFile::link(tree.path(u"elsewhere"), tree.path(u"Velmora.health")));
    EXPECT_EQ(loadHealth(tree.path()).state, HealthFile::Missing);
}

TEST(HealthStore, FollowsNoLinkThatLeadsNowhere)
{
    const TempTree tree;
    ASSERT_TRUE(QFile::link(tree.path(u"disk/elsewhere"), tree.path(u"Velmora.health")));
    saveHealth(tree.path(), known());
    EXPECT_TRUE(QFileInfo(tree.path(u"Velmora.health")).isSymLink());
}

TEST(HealthStore, KeepsTheOldFileWhereItMayNotWrite)
{
    const TempTree tree;
    saveHealth(tree.path(), CameraHealths());
    const QByteArray before = tree.read(u"Velmora.health");
    {
        const WithoutRootRights none;
        saveHealth(tree.path(), known());
    }
    EXPECT_EQ(tree.read(u"Velmora.health"), before);
}

} // namespace
} // namespace velmora
