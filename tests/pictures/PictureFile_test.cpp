// A picture's file, and what distinguishes it from another.
#include "pictures/PictureFile.h"

#include "PictureMaker.h"
#include "pictures/PictureReader.h"
#include "support/TempTree.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <fcntl.h>

namespace velmora {
namespace {

using namespace test;
using namespace std::chrono_literals;

class PictureFileTest : public testing::Test
{
protected:
    PictureFileTest() { tree_.write(u"a.jpg", picture_); }

    [[nodiscard]] QString path() const { return tree_.path(u"a.jpg"); }

    void setModified(qint64 seconds, long nanoseconds) const
    {
        const timespec times[2] = {{0, UTIME_OMIT}, {seconds, nanoseconds}};
        ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(path()).constData(), times, 0), 0);
    }

    TempTree tree_;
    QByteArray picture_ = encoded(quarters({32, 32}), "jpg");
};

TEST_F(PictureFileTest, IsReadWhole)
{
    EXPECT_EQ(PictureFile(path()).read(), picture_);
}

TEST_F(PictureFileTest, IsFoundThroughALink)
{
    ASSERT_TRUE(QFile::link(path(), tree_.path(u"link.jpg")));
    EXPECT_EQ(PictureFile(tree_.path(u"link.jpg")).read(), picture_);
    EXPECT_EQ(fileStamp(tree_.path(u"link.jpg")), fileStamp(path()));
}

TEST_F(PictureFileTest, IsTheSameWhileNothingChanges)
{
    EXPECT_TRUE(fileStamp(path()).has_value());
    EXPECT_EQ(fileStamp(path()), fileStamp(path()));
    EXPECT_EQ(PictureFile(path()).stamp(), fileStamp(path()));
}

TEST_F(PictureFileTest, IsAnotherOneWhenReplaced)
{
    const auto before = fileStamp(path());
    tree_.write(u"b.jpg", picture_);
    ASSERT_EQ(::rename(QFile::encodeName(tree_.path(u"b.jpg")).constData(),
                       QFile::encodeName(path()).constData()),
              0);
    EXPECT_NE(fileStamp(path()), before);
}

TEST_F(PictureFileTest, IsAnotherOneWhenItGrows)
{
    const auto before = fileStamp(path());
    tree_.write(u"a.jpg", picture_ + "x");
    EXPECT_NE(fileStamp(path()), before);
}

TEST_F(PictureFileTest, IsAnotherOneANanosecondLater)
{
    setModified(1000, 5);
    const auto before = fileStamp(path());
    setModified(1000, 6);
    const auto after = fileStamp(path());
    ASSERT_TRUE(before && after);
    EXPECT_EQ(before->modified, 1000s + 5ns);
    EXPECT_EQ(after->modified, 1000s + 6ns);
    EXPECT_NE(after, before);
}

TEST_F(PictureFileTest, HasNoStampWhenThereIsNone)
{
    EXPECT_EQ(fileStamp(tree_.path(u"none.jpg")), std::nullopt);
    EXPECT_EQ(PictureFile(tree_.path(u"none.jpg")).stamp(), std::nullopt);
    EXPECT_EQ(PictureFile(tree_.path(u"none.jpg")).read(), QByteArray());
}

TEST_F(PictureFileTest, IsNoPipe)
{
    const QByteArray pipe = QFile::encodeName(tree_.path(u"pipe.jpg"));
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
    EXPECT_EQ(fileStamp(tree_.path(u"pipe.jpg")), std::nullopt);
    EXPECT_TRUE(readPicture(tree_.path(u"pipe.jpg"), {}).isNull());
}

TEST_F(PictureFileTest, IsNoFolderAndNoDevice)
{
    EXPECT_EQ(fileStamp(tree_.path()), std::nullopt);
    EXPECT_TRUE(readPicture(tree_.path(), {}).isNull());
    EXPECT_EQ(fileStamp(QStringLiteral("/dev/zero")), std::nullopt);
    EXPECT_TRUE(readPicture(QStringLiteral("/dev/zero"), {}).isNull());
}

TEST_F(PictureFileTest, IsNotReadWhenItBeginsLikeNoPicture)
{
    tree_.write(u"a.jpg", "text");
    EXPECT_EQ(PictureFile(path()).read(), QByteArray());
    tree_.write(u"a.jpg", "");
    EXPECT_EQ(PictureFile(path()).read(), QByteArray());
}

TEST_F(PictureFileTest, IsReadUpTo256Mebibytes)
{
    tree_.write(u"a.jpg", encoded(quarters({32, 32}), "png"));
    QFile file(path());
    ASSERT_TRUE(file.resize(PictureFile::kMaxBytes));
    EXPECT_EQ(PictureFile(path()).read().size(), PictureFile::kMaxBytes);
    ASSERT_TRUE(file.resize(PictureFile::kMaxBytes + 1));
    EXPECT_EQ(PictureFile(path()).read().size(), 0);
}

constexpr qsizetype kFlood = qsizetype{60} * 1024 * 1024;
constexpr qsizetype kLittle = qsizetype{4} * 1024 * 1024;

TEST_F(PictureFileTest, IsNotReadFarBeyondTheEndOfAJpeg)
{
    tree_.write(u"a.jpg", picture_ + QByteArray(kFlood, 'x'));
    EXPECT_LE(PictureFile(path()).read().size(), kLittle);
    EXPECT_EQ(cornersOf(readPicture(path(), {})), kCorners);
}

TEST_F(PictureFileTest, IsNotReadFarWithoutAFrameOfAJpeg)
{
    tree_.write(u"a.jpg", picture_.first(4) + QByteArray(kFlood, 'x'));
    EXPECT_LE(PictureFile(path()).read().size(), kLittle);
    EXPECT_TRUE(readPicture(path(), {}).isNull());
}

TEST_F(PictureFileTest, IsReadWholeWhenAJpegIsLong)
{
    const QByteArray comment = QByteArray("\xff\xfe\xff\xff", 4) + QByteArray(65533, 'x');
    const QByteArray bytes = picture_.first(2) + comment.repeated(100) + picture_.sliced(2);
    ASSERT_GT(bytes.size(), kLittle);
    tree_.write(u"a.jpg", bytes);
    EXPECT_EQ(PictureFile(path()).read(), bytes);
    EXPECT_EQ(cornersOf(readPicture(path(), {})), kCorners);
}

TEST_F(PictureFileTest, ThatIsCutWhileOpenGivesWhatIsLeft)
{
    const PictureFile file(path());
    ASSERT_TRUE(QFile(path()).resize(100));
    EXPECT_EQ(file.read(), picture_.first(100));
}

} // namespace
} // namespace velmora
