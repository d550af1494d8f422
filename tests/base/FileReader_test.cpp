// Files are read whole or not at all, and one that never ends is not waited for.
#include "base/FileReader.h"

#include "base/UniqueFd.h"
#include "support/RefusedCalls.h"
#include "support/TempTree.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmora {
namespace {

using test::Call;
using test::RefusedCall;
using test::TempTree;

constexpr qint64 kMost = 1000;

class FileReader : public testing::Test
{
protected:
    [[nodiscard]] QString path() const { return tree.path(u"a"); }

    TempTree tree;
};

TEST_F(FileReader, GivesAllBytes)
{
    for (const QByteArray &bytes : {QByteArray(), QByteArray("text"), QByteArray(kMost, 'x')}) {
        tree.write(u"a", bytes);
        const WholeFile whole = readWholeFile(path(), kMost);
        EXPECT_EQ(whole.bytes, bytes);
        EXPECT_FALSE(whole.error);
    }
}

TEST_F(FileReader, FollowsALink)
{
    tree.write(u"b", "text");
    ASSERT_TRUE(QFile::link(tree.path(u"b"), path()));
    EXPECT_EQ(readWholeFile(path(), kMost).bytes, QByteArray("text"));
}

TEST_F(FileReader, RefusesMoreThanWanted)
{
    tree.write(u"a", QByteArray(kMost + 1, 'x'));
    EXPECT_EQ(readWholeFile(path(), kMost).bytes, std::nullopt);
    EXPECT_EQ(readWholeFile(path(), kMost).error, std::errc::file_too_large);
}

TEST_F(FileReader, SaysWhyThereIsNothing)
{
    EXPECT_EQ(readWholeFile(path(), kMost).error, std::errc::no_such_file_or_directory);
    EXPECT_TRUE(readWholeFile(tree.path(), kMost).error);
}

TEST_F(FileReader, ReadsAPipeToItsEnd)
{
    int ends[2] = {-1, -1};
    ASSERT_EQ(::pipe(ends), 0);
    const UniqueFd from(ends[0]);
    UniqueFd into(ends[1]);
    ASSERT_EQ(::write(into.get(), "first", 5), 5);
    const pid_t writer = ::fork();
    if (writer == 0) {
        ::_exit(::write(into.get(), "second", 6) == 6 ? 0 : 1);
    }
    into = UniqueFd(-1);
    EXPECT_EQ(readToEnd(from.get(), kMost).bytes, QByteArray("firstsecond"));
    EXPECT_EQ(::waitpid(writer, nullptr, 0), writer);
}

TEST_F(FileReader, ReadsNoMoreToTheEndThanWanted)
{
    const UniqueFd zeros(::open("/dev/zero", O_RDONLY | O_CLOEXEC));
    EXPECT_EQ(readToEnd(zeros.get(), 200'000).bytes, QByteArray(200'000, '\0'));
}

// An error in the middle must not pass for the end.
TEST_F(FileReader, GivesNothingAfterAnErrorOnTheWayToTheEnd)
{
    tree.write(u"a", "text");
    const UniqueFd file(::open(QFile::encodeName(path()).constData(), O_RDONLY | O_CLOEXEC));
    const RefusedCall refused(Call::Read, EIO);
    EXPECT_EQ(readToEnd(file.get(), kMost).bytes, std::nullopt);
    EXPECT_EQ(readToEnd(file.get(), kMost).error, std::errc::io_error);
}

TEST_F(FileReader, WaitsForNoPipe)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    EXPECT_EQ(readWholeFile(path(), kMost).error, std::errc::invalid_argument);
}

TEST_F(FileReader, RefusesADevice)
{
    for (const char *const device : {"/dev/zero", "/dev/null"}) {
        EXPECT_EQ(readWholeFile(QLatin1String(device), kMost).error, std::errc::invalid_argument);
    }
}

TEST_F(FileReader, RefusesAFileThatHoldsMoreThanItSays)
{
    const WholeFile whole = readWholeFile(QStringLiteral("/proc/self/status"), kMost);
    EXPECT_EQ(whole.bytes, std::nullopt);
    EXPECT_TRUE(whole.error);
}

} // namespace
} // namespace velmora
