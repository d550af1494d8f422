// Remarks about a camera whose answer is no picture or is odd.
#include "capture/PictureRemark.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

const QString kOut = QStringLiteral("the camera is out");

class BareHost : public testing::TestWithParam<const char *>
{
};

TEST_P(BareHost, IsAnsweredWithWhatAnAddressLooksLike)
{
    const QString url = QString::fromLatin1(GetParam());
    EXPECT_TRUE(failureRemark(url, kOut).startsWith(kOut));
    EXPECT_TRUE(failureRemark(url, kOut).contains(u"/snapshot.jpg"));
    EXPECT_TRUE(contentRemark(url, "<html>", {}).startsWith(u"not a picture"));
    EXPECT_TRUE(contentRemark(url, "<html>", {}).contains(u"/snapshot.jpg"));
    EXPECT_EQ(contentRemark(url, "\xFF\xD8\xFF\xE0", {}), QString());
}

INSTANTIATE_TEST_SUITE_P(Addresses, BareHost,
                         testing::Values("10.0.0.5", "http://10.0.0.5", "HTTPS://cam/", "cam:8080",
                                         "http://me:pw@cam"));

class WholeAddress : public testing::TestWithParam<const char *>
{
};

TEST_P(WholeAddress, IsAnsweredWithTheReasonAlone)
{
    const QString url = QString::fromLatin1(GetParam());
    EXPECT_EQ(failureRemark(url, kOut), kOut);
    EXPECT_EQ(contentRemark(url, "<html>", {}), QStringLiteral("not a picture"));
}

INSTANTIATE_TEST_SUITE_P(Addresses, WholeAddress,
                         testing::Values("http://10.0.0.5/snapshot.jpg", "cam/snap", "cam/?a=1",
                                         "http://cam?snap", ""));

TEST(PictureRemark, NamesTheTypeOfWhatIsNoPicture)
{
    const QString url = QStringLiteral("http://cam/a.jpg");
    EXPECT_EQ(contentRemark(url, "<html>", QStringLiteral("text/html; charset=utf-8")),
              QStringLiteral("not a picture (text/html)"));
    EXPECT_EQ(contentRemark(url, "", QStringLiteral("text/\nplain")),
              QStringLiteral("not a picture (text/ plain)"));
    EXPECT_LT(contentRemark(url, "x", QString(5000, u'x')).size(), 100);
}

TEST(PictureRemark, KnowsAWebPageByWhatStandsBeforeItToo)
{
    for (const char *const head :
         {"\xEF\xBB\xBF<html>", "<?xml version=\"1.0\"?>\n<!DOCTYPE html>",
          "<!-- Copyright\n <b> -->\n<html>", "<script>location='/login'</script>", "<body>"}) {
        EXPECT_TRUE(webPageRemark(head).startsWith(u"not a picture: a web page")) << head;
    }
    EXPECT_EQ(webPageRemark("<?xml version=\"1.0\"?><svg>"), QString());
    EXPECT_EQ(webPageRemark("{\"error\": \"<html>\"}"), QString());
}

TEST(PictureRemark, NamesAWebPageByItsTitle)
{
    EXPECT_EQ(webPageRemark(" <!DOCTYPE HTML><title lang=en> A\npage </title>"),
              QStringLiteral("not a picture: a web page titled \"A page\""));
    EXPECT_EQ(webPageRemark("<html><title></title>"), QStringLiteral("not a picture: a web page"));
    EXPECT_EQ(webPageRemark("<HEAD>"), QStringLiteral("not a picture: a web page"));
    EXPECT_EQ(webPageRemark("\xFF\xD8\xFF<html>"), QString());
    EXPECT_EQ(webPageRemark({}), QString());
    EXPECT_LT(webPageRemark("<html><title>" + QByteArray(500, 'x') + "</title>").size(), 150);
}

TEST(PictureRemark, SaysThatNoDateComes)
{
    EXPECT_TRUE(dateRemark(ImageDates()).contains(u"no date"));
    EXPECT_EQ(dateRemark({{}, WallTime(), {}}), QString());
}

} // namespace
} // namespace velmora::test
