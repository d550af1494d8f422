// What arrives of an answer, line by line and piece by piece, without a server.
#include "capture/AnswerIntake.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

constexpr bool kGood = true;

class AnswerIntakeTest : public testing::Test
{
protected:
    /// Takes the lines up to one that ends the transfer; true when none does.
    bool takeHead(const QList<QByteArray> &lines, bool isGood = kGood)
    {
        bool goesOn = true;
        for (qsizetype i = 0; i < lines.size() && goesOn; ++i) {
            goesOn = intake_.takeHeaderLine(lines[i] + "\r\n", isGood);
        }
        return goesOn;
    }

    QByteArray body() { return intake_.wholeBody().whole().value_or("unreadable"); }

    AnswerIntake intake_{ReplyBody()};
};

TEST_F(AnswerIntakeTest, HasTheBodyWholeWhateverTheSizeOfItsPieces)
{
    ASSERT_TRUE(takeHead({"HTTP/1.1 200 OK", "Content-Length: 20003", ""}));
    const QByteArray large(10'000, 'a');
    EXPECT_TRUE(intake_.takeBody("1", kGood));
    EXPECT_TRUE(intake_.takeBody(large, kGood));
    EXPECT_TRUE(intake_.takeBody("2", kGood));
    EXPECT_TRUE(intake_.takeBody(large, kGood));
    EXPECT_TRUE(intake_.takeBody("3", kGood));
    EXPECT_EQ(body(), "1" + large + "2" + large + "3");
}

TEST_F(AnswerIntakeTest, ReadsNothingOfThePageThatComesWithAnError)
{
    ASSERT_TRUE(takeHead({"HTTP/1.1 404 Not Found", ""}, !kGood));
    EXPECT_FALSE(intake_.takeBody("<html>", !kGood));
    EXPECT_EQ(intake_.refusal(), Refusal::Status);
    EXPECT_EQ(body(), QByteArray());
}

TEST_F(AnswerIntakeTest, RefusesOneByteMoreThanAPictureMayHave)
{
    const QByteArray piece(1024 * 1024, 'a');
    for (qint64 taken = 0; taken < AnswerIntake::kMaxBodyBytes; taken += piece.size()) {
        ASSERT_TRUE(intake_.takeBody(piece, kGood));
    }
    EXPECT_FALSE(intake_.takeBody("a", kGood));
    EXPECT_EQ(intake_.refusal(), Refusal::TooLong);
}

TEST_F(AnswerIntakeTest, RefusesHeadersWithoutEnd)
{
    const QList<QByteArray> lines(2000, "X: y");
    EXPECT_TRUE(takeHead(lines));
    EXPECT_FALSE(takeHead({"X: y"}));
    EXPECT_EQ(intake_.refusal(), Refusal::Headers);
}

TEST_F(AnswerIntakeTest, RefusesALongHead)
{
    EXPECT_TRUE(takeHead({QByteArray(127 * 1024, 'a')}));
    EXPECT_FALSE(takeHead({QByteArray(1024, 'a')}));
    EXPECT_EQ(intake_.refusal(), Refusal::Headers);
}

TEST_F(AnswerIntakeTest, JudgesAHeaderOnceItsLastLineIsThere)
{
    EXPECT_TRUE(takeHead({"Transfer-Encoding: chunked", " , gzip"}));
    EXPECT_FALSE(takeHead({"Date: today"}));
    EXPECT_EQ(intake_.refusal(), Refusal::Coding);
}

TEST_F(AnswerIntakeTest, TakesChunks)
{
    EXPECT_TRUE(takeHead({"transfer-encoding: Chunked", ""}));
}

TEST_F(AnswerIntakeTest, RefusesTwoLengths)
{
    EXPECT_FALSE(takeHead({"HTTP/1.1 200 OK", "Content-Length: 5", "Content-Length: 6", ""}));
    EXPECT_EQ(intake_.refusal(), Refusal::Lengths);
}

TEST_F(AnswerIntakeTest, ARedirectLeadsToALengthOfItsOwn)
{
    EXPECT_TRUE(takeHead({"HTTP/1.1 302 Found", "Content-Length: 5", ""}, !kGood));
    EXPECT_TRUE(takeHead({"HTTP/1.1 200 OK", "Content-Length: 6", ""}));
}

TEST_F(AnswerIntakeTest, ARedirectEndsTheStreamThatItsAnswerAnnounced)
{
    takeHead({"HTTP/1.1 302 Found", "Content-Type: multipart/x-mixed-replace", ""}, !kGood);
    EXPECT_TRUE(takeHead({"HTTP/1.1 200 OK", "Content-Type: image/jpeg", ""}));
    EXPECT_FALSE(intake_.stream().has_value());
}

TEST_F(AnswerIntakeTest, HasEnoughOnceTheFirstPictureOfAStreamIsWhole)
{
    ASSERT_TRUE(
        takeHead({"HTTP/1.1 200 OK", "Content-Type: multipart/x-mixed-replace; boundary=b", ""}));
    EXPECT_TRUE(intake_.takeBody("--b\r\nContent-Length: 4\r\n\r\npi", kGood));
    EXPECT_FALSE(intake_.takeBody("cs\r\n--b", kGood));
    EXPECT_EQ(intake_.refusal(), Refusal::Enough);
    EXPECT_EQ(body(), "pics");
}

TEST(RefusalText, SaysWhyAPictureWasRefused)
{
    for (const Refusal refusal :
         {Refusal::TooLong, Refusal::Headers, Refusal::Coding, Refusal::Lengths, Refusal::Memory}) {
        EXPECT_FALSE(refusalText(refusal).isEmpty());
    }
    for (const Refusal refusal :
         {Refusal::None, Refusal::Status, Refusal::Stream, Refusal::Enough}) {
        EXPECT_EQ(refusalText(refusal), QString()) << "the answer itself explains it";
    }
}

} // namespace
} // namespace velmora::test
