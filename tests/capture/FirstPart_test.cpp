// The first whole part of an endless answer, however the camera writes it.
#include "capture/FirstPart.h"

#include "support/LoopbackCameraAnswers.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

const QByteArray kPicture = jpeg(5000) + "\r\n--";

struct Stream
{
    const char *name;
    QByteArray contentType;
    QByteArray bytes;
};

QByteArray part(const QByteArray &delimiter, const QByteArray &headers,
                const QByteArray &lineEnd = "\r\n")
{
    return delimiter + lineEnd + headers + lineEnd + kPicture;
}

QByteArray counted(const QByteArray &lineEnd = "\r\n")
{
    return "content-length: " + QByteArray::number(kPicture.size()) + lineEnd;
}

const QByteArray kType = "multipart/x-mixed-replace; boundary=";

class FirstPartOf : public testing::TestWithParam<Stream>
{
};

FirstPart::State feedAll(FirstPart &part, const QByteArray &bytes, qsizetype piece, ReplyBody &body)
{
    FirstPart::State state = FirstPart::State::Reading;
    for (qsizetype at = 0; at < bytes.size(); at += piece) {
        state = part.feed(QByteArrayView(bytes).sliced(at, qMin(piece, bytes.size() - at)), body);
    }
    return state;
}

TEST_P(FirstPartOf, IsWhole)
{
    for (const qsizetype piece :
         {qsizetype{1}, qsizetype{7}, qsizetype{1000}, qsizetype{100'000}}) {
        FirstPart first(GetParam().contentType);
        ReplyBody body({}, std::make_shared<BodyStock>());
        ASSERT_EQ(feedAll(first, GetParam().bytes, piece, body), FirstPart::State::Whole)
            << piece << first.fault().toStdString();
        EXPECT_EQ(body.whole(), kPicture);
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, FirstPartOf,
    testing::Values(
        Stream{"WithLength", kType + "cut", part("--cut", counted()) + "\r\n--cut\r\n"},
        Stream{"WithTheSameLengthTwice", kType + "cut", part("--cut", counted() + counted())},
        Stream{"WithoutLength", kType + "cut",
               part("--cut", "Content-Type: image/jpeg\r\n") + "\r\n--cut\r\n"},
        Stream{"Quoted", kType + "\"cut me\"", part("--cut me", "") + "\r\n--cut me\r\n"},
        Stream{"QuotedWithoutAnEnd", kType + "\"cut", part("--cut", counted())},
        Stream{"AnnouncedWithDashes", kType + "--cut", part("--cut", "") + "\r\n--cut\r\n"},
        Stream{"SentWithMoreDashes", kType + "--cut", part("----cut", "") + "\r\n----cut\r\n"},
        Stream{"SentWithoutDashes", kType + "cut", part("cut", counted())},
        Stream{"SentWithoutDashesOrLength", kType + "cut", part("cut", "") + "\r\ncut\r\n"},
        Stream{"SentWithOneDash", kType + "cut", part("-cut", "") + "\r\n-cut\r\n"},
        Stream{"Unannounced", "multipart/x-mixed-replace", part("--cut", "") + "\r\n--cut\r\n"},
        Stream{"ParameterBehind", kType + "cut; charset=x", part("--cut", counted())},
        Stream{"Preamble", kType + "cut", "hello\r\n\r\n" + part("--cut", counted())},
        Stream{"LineFeedsAlone", kType + "cut", part("--cut", counted("\n"), "\n")},
        Stream{"LineFeedsWithoutLength", kType + "cut", part("--cut", "", "\n") + "\n--cut\n"},
        Stream{"LastPart", kType + "cut", part("--cut", "") + "\r\n--cut--\r\n"},
        Stream{"OtherBoundaryBehindACountedPart", kType + "cut",
               part("--cut", counted()) + "\r\n--other\r\n"}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(FirstPart, TellsTheTypeOfThePart)
{
    FirstPart first(kType + "cut");
    ReplyBody body({}, std::make_shared<BodyStock>());
    EXPECT_EQ(first.feed(part("--cut", "Content-Type: image/png\r\n" + counted()), body),
              FirstPart::State::Whole);
    EXPECT_EQ(first.contentType(), QStringLiteral("image/png"));
}

TEST(FirstPart, CanBeEmpty)
{
    FirstPart first(kType + "cut");
    ReplyBody body({}, std::make_shared<BodyStock>());
    EXPECT_EQ(first.feed("--cut\r\nContent-Length: 0\r\n\r\n", body), FirstPart::State::Whole);
    EXPECT_TRUE(body.isEmpty());
}

TEST(FirstPart, IsKnownByTheAnswersType)
{
    EXPECT_TRUE(FirstPart::isAnnouncedBy("multipart/x-mixed-replace;boundary=a"));
    EXPECT_TRUE(FirstPart::isAnnouncedBy(" Multipart/X-Mixed-Replace"));
    EXPECT_FALSE(FirstPart::isAnnouncedBy("multipart/form-data; boundary=a"));
    EXPECT_FALSE(FirstPart::isAnnouncedBy("image/jpeg"));
    EXPECT_FALSE(FirstPart::isAnnouncedBy(""));
}

struct BadStream
{
    const char *name;
    QByteArray contentType;
    QByteArray bytes;
    qsizetype times; // sent again and again
};

class BadFirstPart : public testing::TestWithParam<BadStream>
{
};

TEST_P(BadFirstPart, IsBroken)
{
    FirstPart first(GetParam().contentType);
    ReplyBody body({}, std::make_shared<BodyStock>());
    FirstPart::State state = FirstPart::State::Reading;
    for (qsizetype i = 0; i < GetParam().times && state == FirstPart::State::Reading; ++i) {
        state = first.feed(GetParam().bytes, body);
    }
    EXPECT_EQ(state, FirstPart::State::Broken);
    EXPECT_FALSE(first.fault().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    All, BadFirstPart,
    testing::Values(BadStream{"LongPreamble", kType + "cut", QByteArray(1000, 'x') + "\r\n", 400},
                    BadStream{"PreambleWithoutLines", kType + "cut", QByteArray(1000, 'x'), 400},
                    BadStream{"EndlessHeaders", kType + "cut",
                              "--cut\r\nX: " + QByteArray(1000, 'y') + "\r\n", 400},
                    BadStream{"DeclaredTooLong", kType + "cut",
                              "--cut\r\nContent-Length: 99999999999\r\n\r\n", 1},
                    BadStream{"TwoLengths", kType + "cut",
                              "--cut\r\nContent-Length: 5000\r\nContent-Length: 1200\r\n\r\n", 1},
                    BadStream{"LongBoundary", kType + QByteArray(1000, 'b'), "x", 1},
                    BadStream{"NeitherLengthNorBoundary", "multipart/x-mixed-replace", "--\r\n\r\n",
                              1}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(FirstPart, NeedsMoreForADelimiterThatOnlyLooksLikeOne)
{
    FirstPart first(kType + "cut");
    ReplyBody body({}, std::make_shared<BodyStock>());
    const QByteArray inside = "a cut, --cut and\r\n-cut in a picture";
    EXPECT_EQ(first.feed("--cut\r\n\r\n" + inside, body), FirstPart::State::Reading);
    EXPECT_EQ(first.feed("\r\n--cut\r\n", body), FirstPart::State::Whole);
    EXPECT_EQ(body.whole(), inside);
}

} // namespace
} // namespace velmora::test
