// How often a JPEG goes over its picture.
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
