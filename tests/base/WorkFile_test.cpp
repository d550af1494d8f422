// Files being written: nothing shows and nothing remains before they are whole, and no other run of
// the program mistakes them for its own or for left over.
#include "base/WorkFile.h"

#include "support/NativeFiles.h"
#include "support/RefusedCalls.h"
#include "support/TempTree.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <memory>
#include <sys/file.h>
#include <sys/wait.h>

namespace velmora::test {
namespace {

constexpr std::time_t kLongAgo = 1141740309;

/// The parameter is the error with which the file system refuses a file without a name.
class WorkFileTest : public testing::TestWithParam<int>
{
protected:
    WorkFileTest() { tree_.makeFolder(u"tmp"); }

    [[nodiscard]] QByteArray native(QStringView path) const
    {
        return QFile::encodeName(tree_.path(path));
    }

    TempTree tree_;
    RefusedCall refused_{Call::OpenNameless, GetParam()};
};

INSTANTIATE_TEST_SUITE_P(FileSystems, WorkFileTest, testing::Values(0, EOPNOTSUPP, EISDIR, EINVAL),
                         [](const auto &info) {
                             return info.param == 0            ? "KeepsNamelessFiles"
                                    : info.param == EOPNOTSUPP ? "RefusesThem"
                                    : info.param == EISDIR     ? "TakesThemForFolders"
                                                               : "KnowsNoSuchFlag";
                         });

TEST_P(WorkFileTest, AppearsWhole)
{
    WorkFile file(native(u"tmp"));
    EXPECT_FALSE(file.error());
    EXPECT_EQ(file.hasName(), GetParam() != 0);
    EXPECT_FALSE(file.write("pic"));
    EXPECT_FALSE(file.write("ture"));
    EXPECT_FALSE(tree_.exists(u"a.jpg"));
    EXPECT_FALSE(file.appearAs(native(u"a.jpg")));
    EXPECT_EQ(tree_.read(u"a.jpg"), "picture");
    EXPECT_EQ(tree_.files(u"tmp"), QStringList());
}

TEST_P(WorkFileTest, ReplacesNothingAndMayTryAnotherName)
{
    tree_.write(u"a.jpg", "old");
    WorkFile file(native(u"tmp"));
    EXPECT_FALSE(file.write("new"));
    EXPECT_EQ(file.appearAs(native(u"a.jpg")), std::errc::file_exists);
    EXPECT_EQ(tree_.read(u"a.jpg"), "old");
    EXPECT_FALSE(file.appearAs(native(u"b.jpg")));
    EXPECT_EQ(tree_.read(u"b.jpg"), "new");
}

TEST_P(WorkFileTest, LeavesNothingWithoutAName)
{
    {
        const WorkFile file(native(u"tmp"));
        EXPECT_FALSE(file.write("half"));
    }
    EXPECT_EQ(tree_.files(u"tmp"), QStringList());
}

TEST_P(WorkFileTest, HasAPlaceOfItsOwnEachTime)
{
    std::vector<WorkFile> files;
    for (int i = 0; i < 50; ++i) {
        files.emplace_back(native(u"tmp"));
        EXPECT_FALSE(files.back().error());
    }
    EXPECT_EQ(tree_.files(u"tmp").size(), GetParam() == 0 ? 0 : 50);
    files.clear();
    EXPECT_EQ(tree_.files(u"tmp"), QStringList());
}

TEST_P(WorkFileTest, IsNotClearedWhileItLives)
{
    WorkFile file(native(u"tmp"));
    EXPECT_FALSE(file.write("picture"));
    clearWorkFiles(tree_.path(u"tmp"));
    EXPECT_FALSE(file.appearAs(native(u"a.jpg")));
    EXPECT_EQ(tree_.read(u"a.jpg"), "picture");
}

// Another machine that shares the folder may take it for one that a killed run left.
TEST_P(WorkFileTest, AppearsAlsoWhenItsWorkingNameWasTakenAway)
{
    WorkFile file(native(u"tmp"), WorkFile::kUsualRights, WorkFile::Naming::AtOnce);
    EXPECT_FALSE(file.write("picture"));
    const QString name = QStringLiteral("tmp/") + tree_.files(u"tmp").first();
    ASSERT_TRUE(QFile::remove(tree_.path(name)));
    tree_.write(name, "another's");
    const UniqueFd other(::open(native(name).constData(), O_RDWR));
    ASSERT_EQ(::flock(other.get(), LOCK_EX), 0);
    EXPECT_FALSE(file.appearAs(native(u"a.jpg")));
    EXPECT_EQ(tree_.read(u"a.jpg"), "picture");
    EXPECT_EQ(tree_.read(name), "another's");
}

TEST_P(WorkFileTest, RemovesNoOtherFileOfItsWorkingName)
{
    QString name;
    {
        const WorkFile file(native(u"tmp"), WorkFile::kUsualRights, WorkFile::Naming::AtOnce);
        name = QStringLiteral("tmp/") + tree_.files(u"tmp").first();
        ASSERT_TRUE(QFile::remove(tree_.path(name)));
        tree_.write(name, "another's");
    }
    EXPECT_EQ(tree_.read(name), "another's");
}

// Makes a file and waits to be killed; prints "!" once it exists.
[[noreturn]] void holdAFile(const QByteArray &folder, int told)
{
    const WorkFile file(folder);
    static_cast<void>(file.write("half"));
    static_cast<void>(::write(told, "!", 1));
    for (;;) {
        ::pause();
    }
}

TEST_P(WorkFileTest, OfAnotherProcessIsClearedOnceThatIsKilled)
{
    int ends[2] = {-1, -1};
    ASSERT_EQ(::pipe(ends), 0);
    const UniqueFd read(ends[0]);
    const UniqueFd write(ends[1]);
    const pid_t child = ::fork();
    if (child == 0) {
        holdAFile(native(u"tmp"), write.get());
    }
    char byte = 0;
    EXPECT_EQ(::read(read.get(), &byte, 1), 1);
    clearWorkFiles(tree_.path(u"tmp"));
    EXPECT_EQ(tree_.files(u"tmp").size(), GetParam() == 0 ? 0 : 1) << "it is still alive";
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    clearWorkFiles(tree_.path(u"tmp"));
    EXPECT_EQ(tree_.files(u"tmp"), QStringList());
}

TEST_P(WorkFileTest, SaysThatTheFolderIsMissingAndMakesItWhenAsked)
{
    EXPECT_EQ(WorkFile(native(u"new")).error(), std::errc::no_such_file_or_directory);
    EXPECT_FALSE(tree_.exists(u"new"));
    EXPECT_FALSE(WorkFile::inMadeFolder(native(u"new")).error());
    EXPECT_TRUE(tree_.exists(u"new"));
    EXPECT_TRUE(WorkFile::inMadeFolder(native(u"two/levels")).error());
}

TEST_P(WorkFileTest, ReplacesAnotherInOneStep)
{
    tree_.write(u"tmp/film.mp4", "old");
    WorkFile file(native(u"tmp"));
    EXPECT_FALSE(file.write("new"));
    EXPECT_FALSE(file.replace(native(u"tmp/film.mp4")));
    EXPECT_EQ(tree_.read(u"tmp/film.mp4"), "new");
    EXPECT_EQ(tree_.files(u"tmp"), QStringList{QStringLiteral("film.mp4")});
}

TEST_P(WorkFileTest, LeavesNothingWhenItCannotReplace)
{
    tree_.makeFolder(u"tmp/film.mp4");
    {
        WorkFile file(native(u"tmp"));
        EXPECT_FALSE(file.write("new"));
        EXPECT_EQ(file.replace(native(u"tmp/film.mp4")), std::errc::is_a_directory);
    }
    EXPECT_EQ(tree_.files(u"tmp"), QStringList());
}

// The folder of a film, or of a camera on another disk, is cleared by nothing else.
TEST_P(WorkFileTest, ClearsWhatAKilledOneLeftInItsFolder)
{
    tree_.write(u"tmp/film.mp4", "old");
    {
        WorkFile first(native(u"tmp"), WorkFile::kUsualRights, WorkFile::Naming::AtOnce);
        ASSERT_EQ(tree_.files(u"tmp").size(), 2);
        const QString name = tree_.files(u"tmp").first();
        EXPECT_FALSE(first.replace(native(u"tmp/film.mp4")));
        tree_.write(QStringLiteral("tmp/") + name, "half"); // as a killed run would have left it
    }
    WorkFile file(native(u"tmp"));
    EXPECT_FALSE(file.write("new"));
    EXPECT_FALSE(file.replace(native(u"tmp/film.mp4")));
    EXPECT_EQ(tree_.read(u"tmp/film.mp4"), "new");
    EXPECT_EQ(tree_.files(u"tmp"), QStringList{QStringLiteral("film.mp4")});
}

TEST(WorkFileWithoutLinks, ReplacesAnotherByACopy)
{
    const TempTree tree;
    tree.write(u"film.mp4", "old");
    const RefusedCall link(Call::LinkOpened, EPERM);
    WorkFile file(QFile::encodeName(tree.path()));
    EXPECT_FALSE(file.write("new"));
    EXPECT_FALSE(file.replace(QFile::encodeName(tree.path(u"film.mp4"))));
    EXPECT_EQ(tree.read(u"film.mp4"), "new");
    EXPECT_EQ(tree.files(), QStringList{QStringLiteral("film.mp4")});
}

TEST_P(WorkFileTest, LeavesTheRightsToTheMask)
{
    const mode_t before = ::umask(027);
    WorkFile file(native(u"tmp"));
    ::umask(before);
    EXPECT_FALSE(file.appearAs(native(u"a.jpg")));
    struct stat info = {};
    ASSERT_EQ(::stat(native(u"a.jpg").constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0640U);
}

TEST(WorkFileWithoutLinks, IsCopiedUnderAWorkingNameFirst)
{
    for (const int error : {EPERM, EOPNOTSUPP, ENOSYS, EMLINK}) {
        const TempTree tree;
        const RefusedCall link(Call::LinkOpened, error);
        WorkFile file(QFile::encodeName(tree.path()));
        const QByteArray bytes = QByteArray("picture").repeated(100'000);
        EXPECT_FALSE(file.write(bytes));
        EXPECT_FALSE(file.appearAs(QFile::encodeName(tree.path(u"a.jpg")))) << error;
        EXPECT_EQ(tree.files(), QStringList{QStringLiteral("a.jpg")});
        EXPECT_EQ(tree.read(u"a.jpg"), bytes);
    }
}

// Network disks and memory cards know no files without a name.
TEST(WorkFileElsewhere, IsCopiedWhereTheOtherFileSystemKeepsNoNamelessFiles)
{
    for (const int linkError : {0, EPERM}) {
        const TempTree tree;
        WorkFile file(folderOnAnotherDisk(QFile::encodeName(tree.path())));
        EXPECT_FALSE(file.write("picture"));
        const RefusedCall nameless(Call::OpenNameless, EOPNOTSUPP);
        const RefusedCall link(Call::Link, linkError);
        EXPECT_FALSE(file.appearAs(QFile::encodeName(tree.path(u"a.jpg"))));
        EXPECT_EQ(tree.files(), QStringList{QStringLiteral("a.jpg")});
        EXPECT_EQ(tree.read(u"a.jpg"), "picture");
    }
}

TEST(WorkFileElsewhere, IsCopiedWhereTheOtherFileSystemNamesNoNamelessFiles)
{
    const TempTree tree;
    WorkFile file(folderOnAnotherDisk(QFile::encodeName(tree.path())), WorkFile::kUsualRights,
                  WorkFile::Naming::AtOnce);
    EXPECT_FALSE(file.write("picture"));
    const RefusedCall link(Call::LinkOpened, EPERM);
    EXPECT_FALSE(file.appearAs(QFile::encodeName(tree.path(u"a.jpg"))));
    EXPECT_EQ(tree.files(), QStringList{QStringLiteral("a.jpg")});
    EXPECT_EQ(tree.read(u"a.jpg"), "picture");
}

TEST(WorkFileElsewhere, IsCopiedToTheFileSystemOfItsName)
{
    const TempTree tree;
    WorkFile file(folderOnAnotherDisk(QFile::encodeName(tree.path())));
    EXPECT_FALSE(file.write("picture"));
    EXPECT_FALSE(file.appearAs(QFile::encodeName(tree.path(u"a.jpg"))));
    EXPECT_EQ(tree.read(u"a.jpg"), "picture");
    EXPECT_EQ(file.appearAs(QFile::encodeName(tree.path(u"a.jpg"))), std::errc::file_exists);
}

/// Working files with names, as on a file system that supports none without.
class ClearWorkFiles : public testing::Test
{
protected:
    void left(const QString &name, std::time_t when = kLongAgo) const
    {
        writeNative(QFile::encodeName(tree_.path(name)), "half", when);
    }

    TempTree tree_;
};

TEST_F(ClearWorkFiles, DeletesWhatNoOneHolds)
{
    left(QStringLiteral(".velmora-1-1.part")); // as the first process in a container once named it
    left(QStringLiteral(".velmora-%1-1.part").arg(::getpid()));
    left(QStringLiteral(".velmora-0123456789abcdef01234567.part"), std::time(nullptr));
    clearWorkFiles(tree_.path());
    EXPECT_EQ(tree_.files(), QStringList());
}

TEST_F(ClearWorkFiles, DeletesWhatMayOnlyBeRead)
{
    left(QStringLiteral(".velmora-1-1.part"));
    ASSERT_EQ(::chmod(QFile::encodeName(tree_.path(u".velmora-1-1.part")).constData(), 0444), 0);
    clearWorkFiles(tree_.path());
    EXPECT_EQ(tree_.files(), QStringList());
}

TEST_F(ClearWorkFiles, KeepsWhatIsLocked)
{
    left(QStringLiteral(".velmora-1-1.part"));
    const UniqueFd other(
        ::open(QFile::encodeName(tree_.path(u".velmora-1-1.part")).constData(), O_RDWR));
    ASSERT_EQ(::flock(other.get(), LOCK_EX), 0);
    clearWorkFiles(tree_.path());
    EXPECT_EQ(tree_.files().size(), 1);
}

TEST_F(ClearWorkFiles, GoesByTheAgeWhereThereAreNoLocks)
{
    left(QStringLiteral(".velmora-1-1.part"));
    left(QStringLiteral(".velmora-1-2.part"), std::time(nullptr));
    const RefusedCall refused(Call::Lock, ENOLCK);
    clearWorkFiles(tree_.path());
    EXPECT_EQ(tree_.files(), QStringList{QStringLiteral(".velmora-1-2.part")});
}

// There each machine may have locks of its own.
TEST_F(ClearWorkFiles, GoesByTheAgeForOtherMachinesOnASharedFileSystem)
{
    const QString others = QStringLiteral(".velmora-00000000-work.part");
    left(others, std::time(nullptr));
    {
        const RefusedCall shared(Call::StatFileSystem, EIO);
        clearWorkFiles(tree_.path());
        EXPECT_EQ(tree_.files(), QStringList{others});
    }
    clearWorkFiles(tree_.path());
    EXPECT_EQ(tree_.files(), QStringList()) << "on a disk of this machine it is a former start's";
    left(others);
    const RefusedCall shared(Call::StatFileSystem, EIO);
    clearWorkFiles(tree_.path());
    EXPECT_EQ(tree_.files(), QStringList());
}

TEST_F(ClearWorkFiles, KeepsFilesOfOtherNames)
{
    const QStringList others = {QStringLiteral(".velmora-4194305-1.jpg"),
                                QStringLiteral("Target.jpg"),
                                QStringLiteral("velmora-4194305-1.part")};
    for (const QString &name : others) {
        left(name);
    }
    clearWorkFiles(tree_.path());
    EXPECT_EQ(tree_.files(), others);
}

TEST_F(ClearWorkFiles, LeavesSubfoldersAlone)
{
    tree_.write(u"below/.velmora-4194305-1.part", "x");
    tree_.makeFolder(u".velmora-4194306-1.part");
    clearWorkFiles(tree_.path());
    EXPECT_TRUE(tree_.exists(u"below/.velmora-4194305-1.part"));
    EXPECT_TRUE(tree_.exists(u".velmora-4194306-1.part"));
}

TEST_F(ClearWorkFiles, FollowsNoLink)
{
    tree_.write(u"picture.jpg", "x");
    ASSERT_TRUE(QFile::link(tree_.path(u"picture.jpg"), tree_.path(u".velmora-1-1.part")));
    clearWorkFiles(tree_.path());
    EXPECT_TRUE(tree_.exists(u"picture.jpg"));
}

TEST_F(ClearWorkFiles, WaitsForNoPipe)
{
    const QByteArray pipe = QFile::encodeName(tree_.path(u".velmora-1-1.part"));
    ASSERT_EQ(::mkfifo(pipe.constData(), 0644), 0);
    clearWorkFiles(tree_.path());
    EXPECT_EQ(::access(pipe.constData(), F_OK), 0);
}

TEST_F(ClearWorkFiles, TakesAMissingFolder)
{
    clearWorkFiles(tree_.path(u"missing"));
    EXPECT_FALSE(tree_.exists(u"missing"));
}

} // namespace
} // namespace velmora::test
