// The caption of an image.
#include "browser/ImageCaption.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(ImageCaption, TellsDateAndTimeOfTheName)
{
    EXPECT_EQ(imageCaption(QStringLiteral("20060307_1405090714.jpg")),
              QStringLiteral("07/03/2006 14:05:09"));
}

TEST(ImageCaption, TellsThoseOfTheOlderFormToo)
{
    EXPECT_EQ(imageCaption(QStringLiteral("20060307_140509.jpg")),
              QStringLiteral("07/03/2006 14:05:09"));
}

TEST(ImageCaption, IsTheDateForANameThatEndsBehindIt)
{
    EXPECT_EQ(imageCaption(QStringLiteral("20060307_140509")),
              QStringLiteral("07/03/2006 14:05:09"));
}

class OtherName : public testing::TestWithParam<const char *>
{
};

TEST_P(OtherName, StandsAsItIs)
{
    const QString name = QString::fromLatin1(GetParam());
    EXPECT_EQ(imageCaption(name), name);
}

INSTANTIATE_TEST_SUITE_P(Names, OtherName,
                         testing::Values("", "2", "20060307_14050", "20060307-140509.jpg",
                                         "20061307_140509.jpg", "20060307_240509.jpg",
                                         "20060307_1405xx.jpg", "2006 holiday at the sea.jpg"));

} // namespace
} // namespace velmora
