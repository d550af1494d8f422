// A large settings file is read once, yet every change to it is seen.
#include "base/ProfileCache.h"

#include "base/ProfileFile.h"
#include "support/RefusedCalls.h"
#include "support/TempTree.h"

#include <QFile>
#include <QTest>

#include <gtest/gtest.h>

#include <cerrno>

namespace velmora {
namespace {

using test::Call;
using test::RefusedCall;
using test::TempTree;

class ProfileCacheTest : public testing::Test
{
protected:
    [[nodiscard]] QString path() const { return tree.path(u"a.ini"); }

    void write(const QByteArray &value) const
    {
        tree.write(u"a.ini", "[s]\r\nk=" + value + "\r\n" + comments);
    }

    QByteArray value() { return cache.value("S", " K ", 255); }

    TempTree tree;
    ProfileCache cache{path()};
    QByteArray comments; // makes the file large
};

TEST_F(ProfileCacheTest, ReadsASmallFileAgainEachTime)
{
    EXPECT_EQ(value(), QByteArray());
    write("one");
    EXPECT_EQ(value(), QByteArray("one"));
    write("two");
    EXPECT_EQ(value(), QByteArray("two"));
    EXPECT_EQ(cache.text()->value("s", "k"), QByteArrayView("two"));
}

TEST_F(ProfileCacheTest, ParsesASmallFileOnlyWhenItsBytesHaveChanged)
{
    write("one");
    const auto first = cache.text();
    EXPECT_EQ(cache.text(), first);
    write("two");
    const auto second = cache.text();
    EXPECT_NE(second, first);
    EXPECT_EQ(second->value("s", "k"), QByteArrayView("two"));
    EXPECT_EQ(first->value("s", "k"), QByteArrayView("one"));
    ASSERT_TRUE(QFile::remove(path()));
    EXPECT_TRUE(cache.text()->bytes().isEmpty());
}

TEST_F(ProfileCacheTest, SeesEveryChangeOfALargeFile)
{
    comments = QByteArray(ProfileCache::kLargeBytes, ';');
    for (const char *const text : {"one", "two", "a longer one", "one"}) {
        write(text);
        EXPECT_EQ(value(), QByteArray(text));
        EXPECT_EQ(value(), QByteArray(text));
        EXPECT_EQ(cache.text()->value("s", "k"), QByteArrayView(text));
    }
    ASSERT_EQ(writeProfileValue(path(), "s", "k", QByteArrayView("two")), ProfileWrite::Written);
    EXPECT_EQ(value(), QByteArray("two"));
    ASSERT_TRUE(QFile::remove(path()));
    EXPECT_EQ(value(), QByteArray());
}

TEST_F(ProfileCacheTest, KeepsNoTextThatHasJustBeenWritten)
{
    comments = QByteArray(ProfileCache::kLargeBytes, ';');
    write("one");
    EXPECT_NE(cache.text(), cache.text());
}

TEST_F(ProfileCacheTest, CutsWhatItReadsToTheBuffer)
{
    write("12345");
    EXPECT_EQ(cache.value("s", "k", 4), QByteArray("123"));
    comments = QByteArray(ProfileCache::kLargeBytes, ';');
    write("12345");
    EXPECT_EQ(cache.value("s", "k", 4), QByteArray("123"));
}

TEST_F(ProfileCacheTest, HasWhatWasLastReadWhileTheFileCannotBeRead)
{
    write("one");
    EXPECT_EQ(value(), QByteArray("one"));
    {
        const RefusedCall refused(Call::Read, EIO);
        EXPECT_EQ(value(), QByteArray("one"));
        EXPECT_EQ(cache.text()->value("s", "k"), QByteArrayView("one"));
    }
    write("two");
    EXPECT_EQ(value(), QByteArray("two"));
    ASSERT_TRUE(QFile::remove(path()));
    EXPECT_EQ(value(), QByteArray()) << "one that is gone is no error";
}

TEST_F(ProfileCacheTest, HasWhatWasLastReadOfALargeFileToo)
{
    comments = QByteArray(ProfileCache::kLargeBytes, ';');
    write("one");
    EXPECT_EQ(value(), QByteArray("one"));
    write("a longer one");
    const RefusedCall refused(Call::Read, EIO);
    EXPECT_EQ(value(), QByteArray("one"));
    EXPECT_EQ(cache.text()->value("s", "k"), QByteArrayView("one"));
}

// Reading fails for a while after another program has changed a value to one of the same length.
TEST_F(ProfileCacheTest, ReadsALargeFileThatChangedOnceItCanBeReadAgain)
{
    comments = QByteArray(ProfileCache::kLargeBytes, ';');
    write("one");
    EXPECT_EQ(value(), QByteArray("one"));
    write("two");
    ASSERT_TRUE(QTest::qWaitFor([this] {
        const auto now = std::chrono::system_clock::now().time_since_epoch();
        return tellsChanges(fileStamp(path()).value(), now);
    }));
    {
        const RefusedCall refused(Call::Read, EIO);
        EXPECT_EQ(value(), QByteArray("one"));
        EXPECT_EQ(value(), QByteArray("one"));
    }
    EXPECT_EQ(value(), QByteArray("two"));
    EXPECT_EQ(cache.text()->value("s", "k"), QByteArrayView("two"));
}

TEST_F(ProfileCacheTest, HasNothingOfAFileThatCouldNeverBeRead)
{
    write("one");
    const RefusedCall refused(Call::Read, EIO);
    EXPECT_EQ(value(), QByteArray());
    EXPECT_TRUE(cache.text()->bytes().isEmpty());
}

TEST_F(ProfileCacheTest, KeepsALargeTextThatHasBeenAtRest)
{
    ProfileCache program(QFile::symLinkTarget(QStringLiteral("/proc/self/exe")));
    static_cast<void>(program.text());
    const std::shared_ptr<const ProfileText> first = program.text();
    EXPECT_GT(first->bytes().size(), ProfileCache::kLargeBytes);
    EXPECT_EQ(program.text(), first);
}

} // namespace
} // namespace velmora
