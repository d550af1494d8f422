// Copies of files: complete or absent, never over another, with nothing left behind.
#include "base/FileCopy.h"

#include "support/FileSizeLimit.h"
#include "support/RefusedCalls.h"
#include "support/TempTree.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora::test {
namespace {

// The means of copying that a file system may offer.
enum class Way { Everything, OwnBuffer, NameByPath, WorkFile };

CopyMeans meansOf(Way way, const TempTree &tree)
{
    CopyMeans means;
    means.workFolder = QFile::encodeName(tree.path(u"in/tmp"));
    means.copiesItself = way != Way::OwnBuffer;
    means.unnamedFiles = way != Way::WorkFile;
    return means;
}

class FileCopyWays : public testing::TestWithParam<Way>
{
protected:
    FileCopyWays() { tree_.makeFolder(u"in/camera"); }

    [[nodiscard]] QByteArray native(QStringView path) const
    {
        return QFile::encodeName(tree_.path(path));
    }

    // Copies from/name to in/camera/name.
    StoreResult copy(const QString &name, qint64 piece = FileCopy::kMostBytes)
    {
        FileCopy copy(native(QString(QStringLiteral("from/") + name)), native(u"in/camera"),
                      means_);
        for (int i = 0; i < 100'000 && copy.copySome(piece); ++i) {
            ++pieces_;
        }
        return copy.finish(native(QString(QStringLiteral("in/camera/") + name)));
    }

    // Ends a copy of a file that has changed since its beginning.
    void expectChanged(FileCopy &copy)
    {
        while (copy.copySome(1000)) {
        }
        const StoreResult result = copy.finish(native(u"in/camera/a.jpg"));
        EXPECT_EQ(result.outcome, StoreOutcome::Failed);
        EXPECT_EQ(result.error.message(), "the file changed while it was copied");
        EXPECT_FALSE(tree_.exists(u"in/camera/a.jpg"));
    }

    // Changes from/a.jpg when a part of it is copied.
    void expectChangedBy(const std::function<void()> &change)
    {
        FileCopy copy(native(u"from/a.jpg"), native(u"in/camera"), means_);
        ASSERT_TRUE(copy.copySome(1000));
        change();
        expectChanged(copy);
    }

    [[nodiscard]] QStringList left() const
    {
        return tree_.exists(u"in/tmp") ? tree_.files(u"in/tmp") : QStringList();
    }

    TempTree tree_;
    CopyMeans means_ = meansOf(GetParam(), tree_);
    RefusedCall byPath_{Call::LinkHandle, GetParam() == Way::NameByPath ? ENOENT : 0};
    int pieces_ = 0;
};

INSTANTIATE_TEST_SUITE_P(AllWays, FileCopyWays,
                         testing::Values(Way::Everything, Way::OwnBuffer, Way::NameByPath,
                                         Way::WorkFile));

TEST_P(FileCopyWays, BytesArriveAsTheyAre)
{
    const QByteArray bytes = QByteArray("\0\1\2picture\xff", 11).repeated(30'000);
    tree_.write(u"from/a.jpg", bytes);
    EXPECT_EQ(copy(QStringLiteral("a.jpg")).outcome, StoreOutcome::Stored);
    EXPECT_EQ(tree_.read(u"in/camera/a.jpg"), bytes);
    EXPECT_EQ(left(), QStringList());
}

TEST_P(FileCopyWays, AnEmptyFileIsCopiedToo)
{
    tree_.write(u"from/a.jpg", "");
    EXPECT_EQ(copy(QStringLiteral("a.jpg")).outcome, StoreOutcome::Stored);
    EXPECT_EQ(tree_.read(u"in/camera/a.jpg"), "");
}

TEST_P(FileCopyWays, PiecesAreNoLargerThanAskedFor)
{
    means_.clones = false;
    const QByteArray bytes(100'001, 'x');
    tree_.write(u"from/a.jpg", bytes);
    EXPECT_EQ(copy(QStringLiteral("a.jpg"), 1000).outcome, StoreOutcome::Stored);
    EXPECT_GE(pieces_, 100);
    EXPECT_EQ(tree_.read(u"in/camera/a.jpg"), bytes);
}

TEST_P(FileCopyWays, AnotherFileIsNeverReplaced)
{
    tree_.write(u"from/a.jpg", "new");
    tree_.write(u"in/camera/a.jpg", "old");
    EXPECT_EQ(copy(QStringLiteral("a.jpg")).outcome, StoreOutcome::AlreadyThere);
    EXPECT_EQ(tree_.read(u"in/camera/a.jpg"), "old");
    EXPECT_EQ(left(), QStringList());
}

TEST_P(FileCopyWays, ALinkThatLeadsNowhereIsNotReplacedEither)
{
    tree_.write(u"from/a.jpg", "new");
    ASSERT_EQ(::symlink("nowhere", native(u"in/camera/a.jpg").constData()), 0);
    EXPECT_EQ(copy(QStringLiteral("a.jpg")).outcome, StoreOutcome::AlreadyThere);
    EXPECT_FALSE(tree_.exists(u"in/camera/nowhere"));
}

TEST_P(FileCopyWays, AfterATakenNameAnotherMayBeTried)
{
    tree_.write(u"from/a.jpg", "new");
    tree_.write(u"in/camera/a.jpg", "old");
    FileCopy copy(native(u"from/a.jpg"), native(u"in/camera"), means_);
    while (copy.copySome(FileCopy::kMostBytes)) {
    }
    EXPECT_EQ(copy.finish(native(u"in/camera/a.jpg")).outcome, StoreOutcome::AlreadyThere);
    EXPECT_EQ(copy.finish(native(u"in/camera/b.jpg")).outcome, StoreOutcome::Stored);
    EXPECT_EQ(tree_.read(u"in/camera/b.jpg"), "new");
}

TEST_P(FileCopyWays, NothingShowsBeforeTheEndAndNothingStaysWithoutIt)
{
    means_.clones = false;
    tree_.write(u"from/a.jpg", QByteArray(5000, 'x'));
    {
        FileCopy copy(native(u"from/a.jpg"), native(u"in/camera"), means_);
        EXPECT_TRUE(copy.copySome(1000));
        EXPECT_EQ(tree_.files(u"in/camera"), QStringList());
    }
    EXPECT_EQ(tree_.files(u"in/camera"), QStringList());
    EXPECT_EQ(left(), QStringList());
}

TEST_P(FileCopyWays, AFullDiskLeavesNothing)
{
    means_.clones = false;
    tree_.write(u"from/a.jpg", QByteArray(200'000, 'x'));
    const FileSizeLimit full(100'000);
    const StoreResult result = copy(QStringLiteral("a.jpg"));
    EXPECT_EQ(result.outcome, StoreOutcome::Failed);
    EXPECT_EQ(result.error, std::errc::file_too_large);
    EXPECT_EQ(tree_.files(u"in/camera"), QStringList());
    EXPECT_EQ(left(), QStringList());
}

TEST_P(FileCopyWays, AFileLargerThanTheDiskIsRefusedBeforeItFillsIt)
{
    means_.clones = false;
    tree_.write(u"from/a.jpg", "");
    ASSERT_EQ(::truncate(native(u"from/a.jpg").constData(), off_t{1} << 42), 0); // all holes
    const StoreResult result = copy(QStringLiteral("a.jpg"));
    EXPECT_EQ(result.error, std::errc::no_space_on_device);
    EXPECT_EQ(pieces_, 0);
    EXPECT_EQ(left(), QStringList());
}

TEST_P(FileCopyWays, RightsAreTheSourcesWithinTheMaskAndTheDateIsNow)
{
    tree_.write(u"from/a.jpg", "x");
    const QByteArray source = native(u"from/a.jpg");
    ASSERT_EQ(::chmod(source.constData(), 04666), 0);
    const timespec old[] = {{1000, 0}, {1000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, source.constData(), old, 0), 0);
    const mode_t before = ::umask(027);
    EXPECT_EQ(copy(QStringLiteral("a.jpg")).outcome, StoreOutcome::Stored);
    ::umask(before);
    struct stat info = {};
    ASSERT_EQ(::stat(native(u"in/camera/a.jpg").constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0640U);
    EXPECT_GT(info.st_mtim.tv_sec, 1'000'000'000);
}

TEST_P(FileCopyWays, AFileThatMayOnlyBeReadIsCopiedAsOne)
{
    tree_.write(u"from/a.jpg", "from a disc");
    ASSERT_EQ(::chmod(native(u"from/a.jpg").constData(), 0444), 0);
    EXPECT_EQ(copy(QStringLiteral("a.jpg")).outcome, StoreOutcome::Stored);
    EXPECT_EQ(tree_.read(u"in/camera/a.jpg"), "from a disc");
}

TEST_P(FileCopyWays, OfALinkTheFileIsCopied)
{
    tree_.write(u"elsewhere.jpg", "far");
    tree_.makeFolder(u"from");
    ASSERT_EQ(::symlink("../elsewhere.jpg", native(u"from/a.jpg").constData()), 0);
    EXPECT_EQ(copy(QStringLiteral("a.jpg")).outcome, StoreOutcome::Stored);
    struct stat info = {};
    ASSERT_EQ(::lstat(native(u"in/camera/a.jpg").constData(), &info), 0);
    EXPECT_TRUE(S_ISREG(info.st_mode));
    EXPECT_EQ(tree_.read(u"in/camera/a.jpg"), "far");
}

TEST_P(FileCopyWays, APipeHoldsNothingUp)
{
    tree_.makeFolder(u"from");
    ASSERT_EQ(::mkfifo(native(u"from/a.jpg").constData(), 0644), 0);
    EXPECT_EQ(copy(QStringLiteral("a.jpg")).error, std::errc::invalid_argument);
    EXPECT_EQ(tree_.files(u"in/camera"), QStringList());
}

TEST_P(FileCopyWays, AFolderIsNoFile)
{
    tree_.makeFolder(u"from/a.jpg");
    EXPECT_EQ(copy(QStringLiteral("a.jpg")).outcome, StoreOutcome::Failed);
}

TEST_P(FileCopyWays, AMissingSourceFails)
{
    EXPECT_EQ(copy(QStringLiteral("a.jpg")).error, std::errc::no_such_file_or_directory);
}

TEST_P(FileCopyWays, AMissingTargetFolderFails)
{
    tree_.write(u"from/a.jpg", "x");
    ASSERT_EQ(::rmdir(native(u"in/camera").constData()), 0);
    EXPECT_EQ(copy(QStringLiteral("a.jpg")).error, std::errc::no_such_file_or_directory);
    EXPECT_FALSE(tree_.exists(u"in/camera"));
    EXPECT_EQ(left(), QStringList());
}

TEST_P(FileCopyWays, ANameThatIsTooLongFails)
{
    tree_.write(u"from/a.jpg", "x");
    FileCopy copy(native(u"from/a.jpg"), native(u"in/camera"), means_);
    while (copy.copySome(FileCopy::kMostBytes)) {
    }
    const QByteArray name = native(u"in/camera") + '/' + QByteArray(256, 'n');
    EXPECT_EQ(copy.finish(name).error, std::errc::filename_too_long);
}

// As of a camera that is still sending it.
TEST_P(FileCopyWays, AFileThatGrowsIsNotTakenForWhole)
{
    means_.clones = false;
    tree_.write(u"from/a.jpg", QByteArray(3000, 'x'));
    expectChangedBy([this] { tree_.write(u"from/a.jpg", QByteArray(9000, 'x')); });
}

TEST_P(FileCopyWays, AFileThatShrinksIsNotTakenForWhole)
{
    means_.clones = false;
    tree_.write(u"from/a.jpg", QByteArray(9000, 'x'));
    expectChangedBy([this] { ASSERT_EQ(::truncate(native(u"from/a.jpg").constData(), 3000), 0); });
}

TEST_P(FileCopyWays, AFileThatIsEmptiedIsNotTakenForWhole)
{
    means_.clones = false;
    tree_.write(u"from/a.jpg", QByteArray(9000, 'x'));
    expectChangedBy([this] { ASSERT_EQ(::truncate(native(u"from/a.jpg").constData(), 0), 0); });
}

TEST_P(FileCopyWays, AnEmptyFileThatIsFilledIsNotTakenForWhole)
{
    tree_.write(u"from/a.jpg", "");
    FileCopy copy(native(u"from/a.jpg"), native(u"in/camera"), means_);
    tree_.write(u"from/a.jpg", "x");
    expectChanged(copy);
}

TEST_P(FileCopyWays, AFileRewrittenInTheSameLengthIsNotTakenForWhole)
{
    means_.clones = false;
    tree_.write(u"from/a.jpg", QByteArray(9000, 'x'));
    expectChangedBy([this] {
        const std::array<timespec, 2> later{timespec{0, UTIME_OMIT}, timespec{2'000'000'000, 0}};
        ASSERT_EQ(::utimensat(AT_FDCWD, native(u"from/a.jpg").constData(), later.data(), 0), 0);
    });
}

TEST_P(FileCopyWays, AFileThatIsDeletedMeanwhileIsCopiedWhole)
{
    means_.clones = false;
    tree_.write(u"from/a.jpg", QByteArray(9000, 'x'));
    FileCopy copy(native(u"from/a.jpg"), native(u"in/camera"), means_);
    ASSERT_TRUE(copy.copySome(1000));
    ASSERT_TRUE(QFile::remove(tree_.path(u"from/a.jpg")));
    while (copy.copySome(1000)) {
    }
    EXPECT_EQ(copy.finish(native(u"in/camera/a.jpg")).outcome, StoreOutcome::Stored);
    EXPECT_EQ(tree_.read(u"in/camera/a.jpg").size(), 9000);
}

TEST_P(FileCopyWays, AFileOfTheSystemThatTellsNoSizeIsReadAllTheSame)
{
    FileCopy copy("/proc/self/status", native(u"in/camera"), means_);
    while (copy.copySome(FileCopy::kMostBytes)) {
    }
    EXPECT_EQ(copy.finish(native(u"in/camera/a.jpg")).outcome, StoreOutcome::Stored);
    EXPECT_TRUE(tree_.read(u"in/camera/a.jpg").startsWith("Name:"));
}

TEST(FileCopy, WhatAFileSystemCannotDoIsNotAskedForTwice)
{
    TempTree tree;
    tree.write(u"from/a.jpg", "x");
    CopyMeans means;
    means.workFolder = QFile::encodeName(tree.path(u"tmp"));
    FileCopy copy("/proc/self/status", QFile::encodeName(tree.path()), means);
    while (copy.copySome(FileCopy::kMostBytes)) {
    }
    EXPECT_FALSE(means.clones); // blocks are never shared with a file of the system
}

// A camera's folder may be a link to a network disk, which knows no files without a name.
TEST(FileCopy, ToAnotherDiskIsMadeThere)
{
    TempTree tree;
    tree.makeFolder(u"camera");
    tree.write(u"from/a.jpg", QByteArray(5000, 'x'));
    const QTemporaryDir elsewhere(QStringLiteral("/dev/shm/XXXXXX"));
    ASSERT_TRUE(elsewhere.isValid());
    CopyMeans means = meansOf(Way::WorkFile, tree);
    means.workFolder = QFile::encodeName(elsewhere.path());
    means.clones = false;
    FileCopy copy(QFile::encodeName(tree.path(u"from/a.jpg")),
                  QFile::encodeName(tree.path(u"camera")), means);
    ASSERT_TRUE(copy.copySome(1000));
    EXPECT_EQ(tree.files(u"camera").size(), 1) << "the working file";
    while (copy.copySome(1000)) {
    }
    EXPECT_EQ(copy.finish(QFile::encodeName(tree.path(u"camera/a.jpg"))).outcome,
              StoreOutcome::Stored);
    EXPECT_EQ(tree.files(u"camera"), QStringList{QStringLiteral("a.jpg")});
    EXPECT_TRUE(
        QDir(elsewhere.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST(FileCopy, AWorkFileThatIsInUseIsNotCleared)
{
    TempTree tree;
    tree.write(u"from/a.jpg", QByteArray(5000, 'x'));
    CopyMeans means = meansOf(Way::WorkFile, tree);
    means.workFolder = QFile::encodeName(tree.path(u"tmp"));
    means.clones = false;
    FileCopy copy(QFile::encodeName(tree.path(u"from/a.jpg")), QFile::encodeName(tree.path()),
                  means);
    ASSERT_TRUE(copy.copySome(1000));
    ASSERT_EQ(tree.files(u"tmp").size(), 1);
    clearWorkFiles(tree.path(u"tmp"));
    EXPECT_EQ(tree.files(u"tmp").size(), 1);
}

} // namespace
} // namespace velmora::test
