// Which pictures are remembered, and when they are decoded again.
#include "pictures/PictureCache.h"

#include "PictureMaker.h"
#include "support/RefusedCalls.h"
#include "support/TempTree.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cerrno>

namespace velmora {
namespace {

using namespace test;

constexpr PictureWish kWish = {{32, 32}, Fit::KeepShape};
constexpr qsizetype kPictureBytes = 32 * 32 * 4;
constexpr qsizetype kPlentyBytes = 100 * kPictureBytes;

class PictureCacheTest : public testing::Test
{
protected:
    QString add(const QString &name, QSize size = {32, 32}) const
    {
        tree_.write(name, encoded(quarters(size), "png"));
        return tree_.path(name);
    }

    TempTree tree_;
    PictureCache cache_{kPlentyBytes};
    QString path_ = add(QStringLiteral("a.png"));
};

TEST_F(PictureCacheTest, DecodesAPictureOnce)
{
    EXPECT_EQ(cornersOf(cache_.read(path_, kWish)), kCorners);
    EXPECT_EQ(cornersOf(cache_.read(path_, kWish)), kCorners);
    EXPECT_EQ(cache_.decodes(), 1);
}

TEST_F(PictureCacheTest, FindsOnlyWhatItRead)
{
    EXPECT_EQ(cache_.known(path_, kWish), std::nullopt);
    EXPECT_EQ(cache_.decodes(), 0);
    const QImage image = cache_.read(path_, kWish);
    EXPECT_EQ(cache_.known(path_, kWish), image);
    EXPECT_EQ(cache_.decodes(), 1);
}

TEST_F(PictureCacheTest, TellsWishesApart)
{
    static_cast<void>(cache_.read(path_, kWish));
    EXPECT_EQ(cache_.known(path_, {{32, 32}, Fit::Stretch}), std::nullopt);
    EXPECT_EQ(cache_.known(path_, {{32, 31}, Fit::KeepShape}), std::nullopt);
    EXPECT_EQ(cache_.known(path_, {{31, 32}, Fit::KeepShape}), std::nullopt);
}

TEST_F(PictureCacheTest, TellsPathsApart)
{
    static_cast<void>(cache_.read(path_, kWish));
    EXPECT_EQ(cache_.known(add(QStringLiteral("b.png")), kWish), std::nullopt);
}

TEST_F(PictureCacheTest, DecodesAReplacedFileAgain)
{
    static_cast<void>(cache_.read(path_, kWish));
    const QString other = add(QStringLiteral("b.png"), {16, 8});
    ASSERT_EQ(::rename(QFile::encodeName(other).constData(), QFile::encodeName(path_).constData()),
              0);
    EXPECT_EQ(cache_.known(path_, kWish), std::nullopt);
    EXPECT_EQ(cache_.read(path_, kWish).size(), QSize(16, 8));
    EXPECT_EQ(cache_.decodes(), 2);
}

TEST_F(PictureCacheTest, ForgetsAFileThatIsGone)
{
    static_cast<void>(cache_.read(path_, kWish));
    ASSERT_TRUE(QFile::remove(path_));
    EXPECT_EQ(cache_.known(path_, kWish), std::nullopt);
    EXPECT_TRUE(cache_.read(path_, kWish).isNull());
    EXPECT_EQ(cache_.decodes(), 1);
}

TEST_F(PictureCacheTest, RemembersThatAFileIsNoPicture)
{
    tree_.write(u"text.jpg", "no picture");
    const QString text = tree_.path(u"text.jpg");
    EXPECT_EQ(cache_.known(text, kWish), std::nullopt);
    EXPECT_TRUE(cache_.read(text, kWish).isNull());
    EXPECT_TRUE(cache_.read(text, kWish).isNull());
    EXPECT_EQ(cache_.known(text, kWish), QImage());
    EXPECT_EQ(cache_.decodes(), 1);
}

// An error says nothing about the picture, which has not changed when it can be read again.
TEST_F(PictureCacheTest, RemembersNothingOfAFileThatCouldNotBeRead)
{
    for (const int readings : {1, RefusedCall::kEachTime}) {
        const RefusedCall refused(Call::ReadAt, EIO, readings);
        EXPECT_TRUE(cache_.read(path_, kWish).isNull());
    }
    EXPECT_EQ(cornersOf(cache_.read(path_, kWish)), kCorners);
}

TEST_F(PictureCacheTest, ReadsAFileThatBecameAPicture)
{
    tree_.write(u"a.png", "no picture yet");
    EXPECT_TRUE(cache_.read(path_, kWish).isNull());
    add(QStringLiteral("a.png"));
    EXPECT_FALSE(cache_.read(path_, kWish).isNull());
}

TEST_F(PictureCacheTest, LetsTheLeastRecentlyUsedGoFirst)
{
    PictureCache cache(5 * kPictureBytes / 2); // two pictures including their overhead
    const QString b = add(QStringLiteral("b.png"));
    const QString c = add(QStringLiteral("c.png"));
    static_cast<void>(cache.read(path_, kWish));
    static_cast<void>(cache.read(b, kWish));
    static_cast<void>(cache.known(path_, kWish)); // b is now the least recently used
    static_cast<void>(cache.read(c, kWish));
    EXPECT_NE(cache.known(path_, kWish), std::nullopt);
    EXPECT_EQ(cache.known(b, kWish), std::nullopt);
    EXPECT_NE(cache.known(c, kWish), std::nullopt);
}

TEST_F(PictureCacheTest, GivesAPictureThatIsTooLargeToKeep)
{
    PictureCache cache(kPictureBytes);
    EXPECT_FALSE(cache.read(path_, kWish).isNull());
    EXPECT_EQ(cache.known(path_, kWish), std::nullopt);
}

TEST_F(PictureCacheTest, BoundsWhatItRemembersOfNoPictures)
{
    PictureCache cache(kPictureBytes);
    for (int i = 0; i < 100; ++i) {
        const QString name = QString::number(i);
        tree_.write(name, "text");
        static_cast<void>(cache.read(tree_.path(name), kWish));
    }
    EXPECT_EQ(cache.known(tree_.path(u"0"), kWish), std::nullopt);
    EXPECT_EQ(cache.known(tree_.path(u"99"), kWish), QImage());
}

} // namespace
} // namespace velmora
