// Files are read whole or not at all, and one that never ends is not waited for.
#include "base/FileReader.h"

#include "support/TempTree.h"

#include <QFile>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace velmora {
namespace {

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
