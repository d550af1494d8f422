// The lists of folders: their contents, when a folder is read again, and when it is not.
#include "browser/FolderReader.h"

#include "NameLists.h"
#include "Reading.h"
#include "support/FakeClock.h"
#include "support/FolderChanges.h"
#include "support/RefusedCalls.h"
#include "support/TempTree.h"

#include <QDir>

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace velmora {
namespace {

using test::all;

const QByteArray kFirst = "20061005_1230450512.jpg";
const QByteArray kSecond = "20061005_1230460512.jpg";

class FolderReaderTest : public testing::Test
{
protected:
    FolderReaderTest() { tree.makeFolder(u"cam"); }

    [[nodiscard]] QString folder() const { return tree.path(u"cam"); }

    [[nodiscard]] QByteArrayList list() { return all(*reading.names(folder())); }

    void add(const QByteArray &name) const { test::makeFile(folder(), name); }

    test::TempTree tree;
    test::FakeClock clock;
    test::Reading reading{clock};
};

TEST_F(FolderReaderTest, ListsImagesInOrder)
{
    add(kSecond);
    add("readme.txt");
    add(kFirst);
    add("20 holiday.jpg");
    EXPECT_EQ(list(), QByteArrayList({"20 holiday.jpg", kFirst, kSecond}));
}

TEST_F(FolderReaderTest, ListsFilesAndLinksToThemAlone)
{
    add(kFirst);
    tree.makeFolder(u"cam/20061006_folder");
    ASSERT_EQ(::mkfifo(QFile::encodeName(tree.path(u"cam/20061007_pipe")).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(tree.path(u"missing"), tree.path(u"cam/20061008_dangling")));
    ASSERT_TRUE(QFile::link(tree.path(u"cam/20061006_folder"), tree.path(u"cam/20061009_link")));
    ASSERT_TRUE(QFile::link(QString::fromLatin1(kFirst), tree.path(u"cam/20061010_link")));
    EXPECT_EQ(list(), QByteArrayList({kFirst, "20061010_link"}));
}

TEST_F(FolderReaderTest, SaysThatItCouldNotReadToTheEndAndReadsAgain)
{
    add(kFirst);
    {
        const test::RefusedCall failing(test::Call::ReadFolder, EIO, 1, 1);
        const test::Names names = reading.names(folder());
        EXPECT_EQ(all(*names), QByteArrayList{kFirst});
        EXPECT_EQ(names->readError(), std::errc::io_error);
    }
    const test::Names again = reading.names(folder());
    EXPECT_EQ(all(*again), QByteArrayList{kFirst});
    EXPECT_FALSE(again->readError());
    EXPECT_FALSE(reading.names(tree.path(u"missing"))->readError());
}

TEST_F(FolderReaderTest, ListsNothingOfAMissingFolder)
{
    EXPECT_EQ(reading.names(tree.path(u"missing"))->count(), 0);
    EXPECT_EQ(reading.names(QString())->count(), 0);
    add(kFirst);
    EXPECT_EQ(reading.names(tree.path(u"cam/20061005_1230450512.jpg"))->count(), 0);
}

TEST_F(FolderReaderTest, FollowsALinkToAFolder)
{
    add(kFirst);
    ASSERT_TRUE(QFile::link(folder(), tree.path(u"link")));
    EXPECT_EQ(all(*reading.names(tree.path(u"link"))), QByteArrayList{kFirst});
}

TEST_F(FolderReaderTest, GivesTheSameListOfAnUnchangedFolder)
{
    add(kFirst);
    const test::Names kept = reading.keptNames(folder());
    EXPECT_EQ(all(*kept), QByteArrayList{kFirst});
    EXPECT_EQ(reading.names(folder()), kept);
}

TEST_F(FolderReaderTest, KeepsTheListsOfThreeFolders)
{
    for (const char16_t *const other : {u"b", u"c", u"d"}) {
        tree.makeFolder(other);
    }
    const test::Names kept = reading.keptNames(folder());
    reading.keptNames(tree.path(u"b"));
    reading.keptNames(tree.path(u"c"));
    EXPECT_EQ(reading.names(folder()), kept);
    reading.keptNames(tree.path(u"d"));
    const test::Names other = reading.keptNames(tree.path(u"b"));
    EXPECT_EQ(reading.names(folder()), kept);
    EXPECT_EQ(reading.names(tree.path(u"b")), other);
}

TEST_F(FolderReaderTest, ReadsAFolderAgainThatChangedAMomentBefore)
{
    // If the machine pauses between change and reading, the next change is tried.
    bool isReadAgain = false;
    for (int attempt = 0; attempt < 20 && !isReadAgain; ++attempt) {
        add(kFirst + QByteArray::number(attempt));
        const test::Names first = reading.names(folder());
        isReadAgain = reading.names(folder()) != first;
    }
    EXPECT_TRUE(isReadAgain);
}

TEST_F(FolderReaderTest, SeesEveryChangeAtOnce)
{
    for (int i = 0; i < 200; ++i) {
        add("2006_" + QByteArray::number(i));
        ASSERT_EQ(reading.names(folder())->count(), i + 1);
    }
}

TEST_F(FolderReaderTest, SeesAChangeOfAKeptFolder)
{
    add(kFirst);
    reading.keptNames(folder());
    add(kSecond);
    EXPECT_EQ(list(), QByteArrayList({kFirst, kSecond}));
    ASSERT_TRUE(QFile::remove(folder() + u'/' + QString::fromLatin1(kFirst)));
    EXPECT_EQ(list(), QByteArrayList{kSecond});
    ASSERT_TRUE(QFile::rename(folder() + u'/' + QString::fromLatin1(kSecond),
                              folder() + u'/' + QString::fromLatin1(kFirst)));
    EXPECT_EQ(list(), QByteArrayList{kFirst});
}

TEST_F(FolderReaderTest, SeesAnotherFolderInItsPlace)
{
    add(kFirst);
    tree.makeFolder(u"other");
    test::makeFile(tree.path(u"other"), kSecond);
    reading.keptNames(folder());
    reading.keptNames(tree.path(u"other"));
    ASSERT_TRUE(QDir().rename(folder(), tree.path(u"away")));
    ASSERT_TRUE(QDir().rename(tree.path(u"other"), folder()));
    EXPECT_EQ(list(), QByteArrayList{kSecond});
}

TEST_F(FolderReaderTest, SeesThatAFolderWentAwayAndCameBack)
{
    add(kFirst);
    reading.keptNames(folder());
    ASSERT_TRUE(QDir(folder()).removeRecursively());
    EXPECT_TRUE(list().isEmpty());
    tree.makeFolder(u"cam");
    EXPECT_TRUE(list().isEmpty());
    add(kSecond);
    EXPECT_EQ(list(), QByteArrayList{kSecond});
}

TEST_F(FolderReaderTest, ListsNothingWithoutTheRightToRead)
{
    add(kFirst);
    reading.keptNames(folder());
    test::setRights(tree.path(), 0755);
    test::setRights(folder(), 0);
    {
        const test::RightsOfNobody rights;
        EXPECT_TRUE(list().isEmpty());
        EXPECT_TRUE(reading.newestName(folder()).isEmpty());
    }
    test::setRights(folder(), 0755);
    EXPECT_EQ(list(), QByteArrayList{kFirst});
    EXPECT_EQ(reading.newestName(folder()), kFirst);
}

// As when too many files are open.
class NoMoreFiles
{
public:
    NoMoreFiles()
    {
        const int next = ::dup(0);
        ::close(next);
        test::check(::getrlimit(RLIMIT_NOFILE, &before_) == 0, "there is no limit");
        const rlimit limit{static_cast<rlim_t>(next), before_.rlim_max};
        test::check(::setrlimit(RLIMIT_NOFILE, &limit) == 0, "no limit was set");
    }

    Q_DISABLE_COPY_MOVE(NoMoreFiles)

    ~NoMoreFiles() { ::setrlimit(RLIMIT_NOFILE, &before_); }

private:
    rlimit before_ = {};
};

TEST_F(FolderReaderTest, KeepsNothingOfAFolderThatCouldNotBeOpened)
{
    add(kFirst);
    test::Reading(clock).keptNames(folder()); // so that its stamp can be trusted
    {
        const NoMoreFiles limit;
        EXPECT_TRUE(list().isEmpty());
        EXPECT_TRUE(reading.newestName(folder()).isEmpty());
    }
    EXPECT_EQ(list(), QByteArrayList{kFirst});
    EXPECT_EQ(reading.newestName(folder()), kFirst);
}

} // namespace
} // namespace velmora
