// Settings files on disk: what a write touches, and what it must never touch.
#include "base/ProfileFile.h"

#include "support/FileSizeLimit.h"
#include "support/RefusedCalls.h"
#include "support/TempTree.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace velmora {
namespace {

using test::Call;
using test::FileSizeLimit;
using test::RefusedCall;
using test::TempTree;

constexpr qsizetype kPageBytes = 4096;
constexpr time_t kLongAgo = 1000000000;
const QStringList kFileAndLock{QStringLiteral(".a.ini.lock"), QStringLiteral("a.ini")};

class ProfileFile : public testing::Test
{
protected:
    [[nodiscard]] QString path() const { return tree.path(u"a.ini"); }

    [[nodiscard]] QByteArray nativePath() const { return QFile::encodeName(path()); }

    [[nodiscard]] QByteArray text() const { return tree.read(u"a.ini"); }

    /// A file that was last written long ago.
    void begin(const QByteArray &bytes) const
    {
        tree.write(u"a.ini", bytes);
        const timespec times[2] = {{kLongAgo, 0}, {kLongAgo, 0}};
        ASSERT_EQ(::utimensat(AT_FDCWD, nativePath().constData(), times, 0), 0);
    }

    [[nodiscard]] struct stat info() const
    {
        struct stat now = {};
        EXPECT_EQ(::stat(nativePath().constData(), &now), 0);
        return now;
    }

    ProfileWrite write(const char *value) const
    {
        return writeProfileValue(path(), "s", "k", QByteArrayView(value));
    }

    [[nodiscard]] QByteArray value() const { return readProfileValue(path(), "s", "k", {}, 255); }

    TempTree tree;
};

/// A settings text with a value that begins at that offset.
QByteArray textWithValueAt(qsizetype offset, const QByteArray &value)
{
    const QByteArray head = "[s]\r\nk=";
    return ';' + QByteArray(offset - head.size() - 3, 'x') + "\r\n" + head + value + "\r\n";
}

TEST_F(ProfileFile, MakesAMissingFile)
{
    EXPECT_EQ(write("v"), ProfileWrite::Written);
    EXPECT_EQ(text(), QByteArray("[s]\r\nk=v\r\n"));
    EXPECT_EQ(tree.files(), kFileAndLock);
}

TEST_F(ProfileFile, MakesNoFileToTakeAKeyOut)
{
    EXPECT_EQ(writeProfileValue(path(), "s", "k", std::nullopt), ProfileWrite::Unchanged);
    EXPECT_FALSE(tree.exists(u"a.ini"));
}

TEST_F(ProfileFile, TakesAKeyOut)
{
    begin("[s]\r\na=1\r\nk=v\r\nb=2\r\n");
    EXPECT_EQ(writeProfileValue(path(), "s", "k", std::nullopt), ProfileWrite::Written);
    EXPECT_EQ(text(), QByteArray("[s]\r\na=1\r\nb=2\r\n"));
}

TEST_F(ProfileFile, TouchesNothingWhenTheValueIsTheSame)
{
    begin("[s]\r\nk=same\r\n");
    const struct stat before = info();
    EXPECT_EQ(write("same"), ProfileWrite::Unchanged);
    EXPECT_EQ(info().st_ino, before.st_ino);
    EXPECT_EQ(info().st_mtim.tv_sec, kLongAgo);
}

TEST_F(ProfileFile, WritesAValueOfTheSameLengthInPlace)
{
    begin("[s]\r\nk=12:00\r\n");
    const struct stat before = info();
    EXPECT_EQ(write("13:15"), ProfileWrite::Written);
    EXPECT_EQ(text(), QByteArray("[s]\r\nk=13:15\r\n"));
    EXPECT_EQ(info().st_ino, before.st_ino);
    EXPECT_NE(info().st_mtim.tv_sec, kLongAgo);
}

TEST_F(ProfileFile, PutsANewFileInPlaceForAValueOfAnotherLength)
{
    begin("[s]\r\nk=9\r\n");
    const struct stat before = info();
    EXPECT_EQ(write("10"), ProfileWrite::Written);
    EXPECT_EQ(text(), QByteArray("[s]\r\nk=10\r\n"));
    EXPECT_NE(info().st_ino, before.st_ino);
    EXPECT_EQ(tree.files(), kFileAndLock);
}

TEST_F(ProfileFile, PutsANewFileInPlaceForAValueAcrossTwoPages)
{
    for (qsizetype offset = kPageBytes - 4; offset < kPageBytes; ++offset) {
        SCOPED_TRACE(offset);
        begin(textWithValueAt(offset, "12345"));
        const struct stat before = info();
        EXPECT_EQ(write("abcde"), ProfileWrite::Written);
        EXPECT_EQ(text(), textWithValueAt(offset, "abcde"));
        EXPECT_NE(info().st_ino, before.st_ino);
    }
}

TEST_F(ProfileFile, AppendsInPlaceWithinAPage)
{
    begin("[s]\r\nj=1\r\n");
    const struct stat before = info();
    EXPECT_EQ(write("v"), ProfileWrite::Written);
    EXPECT_EQ(text(), QByteArray("[s]\r\nj=1\r\nk=v\r\n"));
    EXPECT_EQ(info().st_ino, before.st_ino);
}

TEST_F(ProfileFile, PutsANewFileInPlaceForALineThatEndsOnTheNextPage)
{
    const QByteArray before = textWithValueAt(kPageBytes - 5, "1"); // ends 2 bytes before the page
    begin(before);
    const struct stat file = info();
    EXPECT_EQ(writeProfileValue(path(), "s", "j", QByteArrayView("v")), ProfileWrite::Written);
    EXPECT_EQ(text(), before + "j=v\r\n");
    EXPECT_NE(info().st_ino, file.st_ino);
}

TEST_F(ProfileFile, WritesInPlaceUpToTheEdgesOfAPage)
{
    for (const qsizetype offset : {kPageBytes - 5, kPageBytes}) {
        SCOPED_TRACE(offset);
        begin(textWithValueAt(offset, "12345"));
        const struct stat before = info();
        EXPECT_EQ(write("abcde"), ProfileWrite::Written);
        EXPECT_EQ(text(), textWithValueAt(offset, "abcde"));
        EXPECT_EQ(info().st_ino, before.st_ino);
    }
}

TEST_F(ProfileFile, ReadsValuesAroundTheEdgeOfAPage)
{
    for (qsizetype offset = kPageBytes - 6; offset <= kPageBytes + 1; ++offset) {
        SCOPED_TRACE(offset);
        begin(textWithValueAt(offset, "12345"));
        EXPECT_EQ(value(), QByteArray("12345"));
    }
}

TEST_F(ProfileFile, KeepsAFileWithoutWritePermission)
{
    begin("[s]\r\nk=old\r\n");
    ASSERT_EQ(::chmod(nativePath().constData(), 0444), 0);
    for (const char *const value : {"new", "longer"}) {
        SCOPED_TRACE(value);
        EXPECT_EQ(write(value), ProfileWrite::Failed);
        EXPECT_EQ(text(), QByteArray("[s]\r\nk=old\r\n"));
    }
    EXPECT_EQ(info().st_mode & 07777, 0444U);
}

TEST_F(ProfileFile, KeepsThePermissions)
{
    begin("[s]\r\nk=old\r\n");
    ASSERT_EQ(::chmod(nativePath().constData(), 0600), 0);
    EXPECT_EQ(write("longer"), ProfileWrite::Written);
    EXPECT_EQ(info().st_mode & 07777, 0600U);
}

TEST_F(ProfileFile, FollowsALink)
{
    tree.write(u"real/real.ini", "[s]\r\nk=old\r\n");
    ASSERT_TRUE(QFile::link(tree.path(u"real/real.ini"), path()));
    EXPECT_EQ(write("longer"), ProfileWrite::Written);
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(tree.read(u"real/real.ini"), QByteArray("[s]\r\nk=longer\r\n"));
}

TEST_F(ProfileFile, MakesNoFolder)
{
    const QString lost = tree.path(u"missing/a.ini");
    EXPECT_EQ(writeProfileValue(lost, "s", "k", QByteArrayView("v")), ProfileWrite::Failed);
    EXPECT_FALSE(tree.exists(u"missing"));
    EXPECT_EQ(readProfileValue(lost, "s", "k", "d", 255), QByteArray("d"));
}

TEST_F(ProfileFile, LeavesAFolderOfThatNameAlone)
{
    tree.makeFolder(u"a.ini");
    EXPECT_EQ(readProfile(path()), std::nullopt);
    EXPECT_EQ(write("v"), ProfileWrite::Failed);
    EXPECT_TRUE(QFileInfo(path()).isDir());
}

TEST_F(ProfileFile, DoesNotWaitForAPipe)
{
    ASSERT_EQ(::mkfifo(nativePath().constData(), 0600), 0);
    EXPECT_EQ(readProfile(path()), std::nullopt);
    EXPECT_EQ(write("v"), ProfileWrite::Failed);
    EXPECT_TRUE(S_ISFIFO(info().st_mode));
}

TEST_F(ProfileFile, TakesAFileOfNulsForOneWithoutKeys)
{
    const QByteArray nuls(5000, '\0');
    begin(nuls);
    EXPECT_EQ(readProfileValue(path(), "s", "k", "d", 255), QByteArray("d"));
    EXPECT_EQ(write("v"), ProfileWrite::Written);
    EXPECT_EQ(text(), nuls + "\r\n[s]\r\nk=v\r\n");
    EXPECT_EQ(value(), QByteArray("v"));
}

TEST_F(ProfileFile, HandlesTenMegabytes)
{
    const QByteArray before = ";" + QByteArray(10 * 1024 * 1024, 'x') + "\r\n[s]\r\nk=";
    begin(before + "old\r\n");
    EXPECT_EQ(value(), QByteArray("old"));
    EXPECT_EQ(write("longer"), ProfileWrite::Written);
    EXPECT_TRUE(text() == before + "longer\r\n");
}

TEST_F(ProfileFile, KeepsTheOldTextWhenTheDiskIsFull)
{
    const QByteArray before = textWithValueAt(2000, "old");
    begin(before);
    const FileSizeLimit limit(1000);
    EXPECT_EQ(write("longer"), ProfileWrite::Failed);
    EXPECT_EQ(text(), before);
    EXPECT_EQ(tree.files(), kFileAndLock);
}

TEST_F(ProfileFile, KeepsTheOldTextWhenTheDiskFillsUpInTheMiddleOfANewLine)
{
    const QByteArray before = "[s]\r\nj=1\r\n";
    begin(before);
    const FileSizeLimit limit(static_cast<rlim_t>(before.size()) + 3);
    EXPECT_EQ(write("v"), ProfileWrite::Failed);
    EXPECT_EQ(text(), before);
}

TEST_F(ProfileFile, CutsWhatItReadsToTheBuffer)
{
    begin("[s]\r\nk=12345\r\n");
    EXPECT_EQ(readProfileValue(path(), "s", "k", {}, 6), QByteArray("12345"));
    EXPECT_EQ(readProfileValue(path(), "s", "k", {}, 5), QByteArray("1234"));
    EXPECT_EQ(readProfileValue(path(), "s", "k", {}, 1), QByteArray());
}

TEST_F(ProfileFile, TakesTheBlanksOffTheEndOfADefault)
{
    EXPECT_EQ(readProfileValue(path(), "s", "k", " d  ", 255), QByteArray(" d"));
    EXPECT_EQ(readProfileValue(path(), "s", "k", "default", 4), QByteArray("def"));
}

TEST_F(ProfileFile, PrefersAnEmptyValueToTheDefault)
{
    begin("[s]\r\nk=\r\n");
    EXPECT_EQ(readProfileValue(path(), "s", "k", "d", 255), QByteArray());
}

TEST_F(ProfileFile, WritesSeveralValuesOfTheSameLengthInPlace)
{
    begin("[s]\r\nj=1\r\nk=12:00\r\n[t]\r\nj=3\r\n");
    const struct stat before = info();
    const std::vector<ProfileValue> values{{"s", "k", "13:15"}, {"t", "j", "4"}, {"s", "j", "1"}};
    EXPECT_EQ(writeProfileValues(path(), values), ProfileWrite::Written);
    EXPECT_EQ(text(), QByteArray("[s]\r\nj=1\r\nk=13:15\r\n[t]\r\nj=4\r\n"));
    EXPECT_EQ(info().st_ino, before.st_ino);
}

TEST_F(ProfileFile, PutsOneNewFileInPlaceForSeveralValuesOfOtherLengths)
{
    begin("[s]\r\nj=1\r\nk=9\r\n");
    const struct stat before = info();
    const std::vector<ProfileValue> values{
        {"s", "k", "10"}, {"s", "j", "2"}, {"s", "new", "x"}, {"t", "a", "1"}, {"t", "b", "2"}};
    EXPECT_EQ(writeProfileValues(path(), values), ProfileWrite::Written);
    EXPECT_EQ(text(), QByteArray("[s]\r\nj=2\r\nk=10\r\nnew=x\r\n[t]\r\na=1\r\nb=2\r\n"));
    EXPECT_NE(info().st_ino, before.st_ino);
    EXPECT_EQ(tree.files(), kFileAndLock);
}

TEST_F(ProfileFile, WritesSeveralValuesOrNoneWhenTheDiskIsFull)
{
    const QByteArray before = textWithValueAt(2000, "old");
    begin(before);
    const FileSizeLimit limit(1000);
    const std::vector<ProfileValue> values{{"s", "k", "new"}, {"s", "j", "longer"}};
    EXPECT_EQ(writeProfileValues(path(), values), ProfileWrite::Failed);
    EXPECT_EQ(text(), before);
}

TEST_F(ProfileFile, TouchesNothingWhenSeveralValuesAreTheSame)
{
    begin("[s]\r\nj=1\r\nk=2\r\n");
    const std::vector<ProfileValue> values{{"s", "k", "2"}, {"s", "j", "1"}};
    EXPECT_EQ(writeProfileValues(path(), values), ProfileWrite::Unchanged);
    EXPECT_EQ(info().st_mtim.tv_sec, kLongAgo);
}

TEST_F(ProfileFile, MakesAMissingFileForSeveralValues)
{
    const std::vector<ProfileValue> values{{"s", "k", "2"}, {"s", "j", "1"}};
    EXPECT_EQ(writeProfileValues(path(), values), ProfileWrite::Written);
    EXPECT_EQ(text(), QByteArray("[s]\r\nk=2\r\nj=1\r\n"));
}

TEST(ChangeProfile, WritesManyValuesAtOnce)
{
    const test::TempTree tree;
    tree.write(u"a.ini", "[s]\r\na=1\r\n");
    const QString path = tree.path(u"a.ini");
    const ProfileWrite written =
        changeProfile(path, [](const QByteArray &text) { return text + "b=2\r\nc=3\r\n"; });
    EXPECT_EQ(written, ProfileWrite::Written);
    EXPECT_EQ(tree.read(u"a.ini"), "[s]\r\na=1\r\nb=2\r\nc=3\r\n");
    EXPECT_EQ(changeProfile(path, [](const QByteArray &text) { return text; }),
              ProfileWrite::Unchanged);
}

TEST(ChangeProfile, MakesAFileForItsUserAlone)
{
    const test::TempTree tree;
    const QString path = tree.path(u"new.ini");
    EXPECT_EQ(changeProfile(path, [](const QByteArray &) { return QByteArray("[s]\r\n"); }),
              ProfileWrite::Written);
    EXPECT_EQ(tree.read(u"new.ini"), "[s]\r\n");
}

TEST(ChangeProfile, LosesNothingThatOthersWriteMeanwhile)
{
    constexpr int kWriters = 4;
    constexpr int kValues = 50;
    const test::TempTree tree;
    const QString path = tree.path(u"a.ini");
    std::vector<std::thread> writers;
    for (int writer = 0; writer < kWriters; ++writer) {
        writers.emplace_back([&path, writer] {
            for (int value = 0; value < kValues; ++value) {
                const QByteArray key = QByteArray::number(writer) + '_' + QByteArray::number(value);
                if (value % 2 == 0) {
                    writeProfileValue(path, "s", key, QByteArrayView("x"));
                } else {
                    changeProfile(path,
                                  [&key](const QByteArray &text) { return text + key + "=x\r\n"; });
                }
            }
        });
    }
    for (std::thread &writer : writers) {
        writer.join();
    }
    EXPECT_EQ(tree.read(u"a.ini").count("=x\r\n"), kWriters * kValues);
}

// All holes, as a damaged file system shows it.
TEST_F(ProfileFile, IsNotReadWhenItIsFarTooLarge)
{
    begin("[s]\r\nk=1\r\n");
    ASSERT_EQ(::truncate(nativePath().constData(), off_t{1} << 42), 0);
    EXPECT_EQ(readProfile(path()), std::nullopt);
    EXPECT_FALSE(profileFault(path()));
    EXPECT_EQ(write("2"), ProfileWrite::Failed);
    EXPECT_EQ(info().st_size, off_t{1} << 42);
}

TEST_F(ProfileFile, IsEmptyWhenItIsMissing)
{
    EXPECT_TRUE(isProfileMissing(path()));
    EXPECT_EQ(readProfile(path()), QByteArray());
    EXPECT_FALSE(profileFault(path()));
}

// The disk that it leads to may be away: neither the template nor a new file may take its place.
TEST_F(ProfileFile, IsNotMissingWhereALinkLeadsNowhere)
{
    ASSERT_TRUE(QFile::link(QStringLiteral("away/a.ini"), path()));
    EXPECT_FALSE(isProfileMissing(path()));
    EXPECT_EQ(readProfile(path()), std::nullopt);
    EXPECT_EQ(profileFault(path()), std::errc::no_such_file_or_directory);
    EXPECT_EQ(write("2"), ProfileWrite::Failed);
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
}

TEST_F(ProfileFile, SaysWhyItCannotBeRead)
{
    begin("[s]\r\nk=1\r\n");
    const RefusedCall refused(Call::Read, EIO);
    EXPECT_EQ(readProfile(path()), std::nullopt);
    EXPECT_EQ(profileFault(path()), std::errc::io_error);
}

} // namespace
} // namespace velmora
