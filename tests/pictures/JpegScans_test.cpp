// How many scans a JPEG has.
#include "pictures/JpegScans.h"

#include "PictureMaker.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace test;

TEST(JpegScans, AreOneOfAPlainPicture)
{
    EXPECT_EQ(countJpegScans(encoded(quarters({64, 64}), "jpg")), 1);
}

TEST(JpegScans, AreOneThoughTheDataLooksLikeMore)
{
    EXPECT_EQ(countJpegScans(encoded(quarters({64, 64}), "jpg") + "\xFF\xDA\xFF\xDA"), 1);
    EXPECT_EQ(countJpegScans(withOrientation(encoded(quarters({64, 64}), "jpg"), 6)), 1);
}

// With one of three components in the first scan, more scans must follow.
TEST(JpegScans, AreSeveralOfAPictureInParts)
{
    QByteArray picture = encoded(quarters({64, 64}), "jpg");
    picture[picture.indexOf("\xFF\xDA") + 4] = 1;
    EXPECT_EQ(countJpegScans(picture + "\xFF\xDA\xFF\xDA"), 3);
}

TEST(JpegScans, AreCountedWhereTheHeaderIsUnusual)
{
    QByteArray picture = encoded(quarters({64, 64}), "jpg");
    picture.insert(2, "x");
    EXPECT_EQ(countJpegScans(picture + "\xFF\xDA"), 2);
}

// A marker without a length, after which the decoder goes on at once.
TEST(JpegScans, AreCountedWhereASegmentMayHideOthers)
{
    const QByteArray picture = encoded(quarters({64, 64}), "jpg");
    const QByteArray hidden = QByteArray("\xFF\x01\x00\x06\xFF\xDA\xFF\xDA", 8);
    EXPECT_EQ(countJpegScans(picture.first(2) + hidden + picture.sliced(2)), 3);
}

TEST(JpegScans, AreSeveralOfAProgressivePicture)
{
    EXPECT_EQ(countJpegScans(encoded(quarters({64, 64}), "jpg", Progressive::Yes)), 10);
}

TEST(JpegScans, AreNoneOfNothing)
{
    EXPECT_EQ(countJpegScans(QByteArrayView()), 0);
    EXPECT_EQ(countJpegScans(QByteArrayView("\xFF")), 0);
}

TEST(JpegScans, AreCountedUpToTheLastByte)
{
    EXPECT_EQ(countJpegScans(QByteArrayView("\xFF\xDA\xFF\xFF\xDA\xFF\xDA")), 3);
}

} // namespace
} // namespace velmora
