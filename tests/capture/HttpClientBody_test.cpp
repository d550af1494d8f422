// Bodies too long for memory, and codings that would make them long.
#include "HttpExchange.h"

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr qsizetype kLongBytes = 3'000'000;

CameraAnswer withHeaders(const QByteArray &headers, const QByteArray &body)
{
    CameraAnswer answer;
    answer.bytes = "HTTP/1.1 200 OK\r\n" + headers + "\r\n" + body;
    return answer;
}

using HttpClientBody = HttpExchange;

TEST_F(HttpClientBody, GoesToTheWorkFolderWhenItIsLong)
{
    camera_.answer("/a.jpg", picture(kLongBytes));
    HttpReply reply = fetch(camera_.url("/a.jpg"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
    EXPECT_EQ(reply.body.whole(), jpeg(kLongBytes));
    EXPECT_EQ(reply.body.storeAs(QString(), tree_.path(u"a.jpg")).outcome, StoreOutcome::Stored);
    EXPECT_EQ(tree_.read(u"a.jpg"), jpeg(kLongBytes));
    EXPECT_EQ(tree_.files(), QStringList{QStringLiteral("a.jpg")});
}

// Longer than what stays in memory; its last bytes are fewer than are written at once.
TEST_F(HttpClientBody, InPiecesOfOneByteArrivesWhole)
{
    const QByteArray whole = jpeg(300'001);
    QByteArray pieces;
    for (const char byte : whole) {
        pieces += QByteArray("1\r\n") + byte + "\r\n";
    }
    camera_.answer("/a.jpg", withHeaders("Transfer-Encoding: chunked\r\n", pieces + "0\r\n\r\n"));
    const HttpReply reply = fetch(camera_.url("/a.jpg"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
    EXPECT_EQ(reply.body.whole(), whole);
}

TEST_F(HttpClientBody, OfAFailureIsNotKept)
{
    camera_.answer("/a.jpg", pictureDeclared(kLongBytes, kLongBytes + 1));
    const HttpReply reply = fetch(camera_.url("/a.jpg"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_TRUE(reply.body.isEmpty());
    EXPECT_EQ(tree_.files(), QStringList());
}

TEST_F(HttpClientBody, OfARefusalIsNotWaitedFor)
{
    CameraAnswer answer = response("404 Not Found", {}, QByteArray(5000, 'n'));
    answer.bytes.replace("Content-Length: 5000\r\n", "");
    answer.repeated = QByteArray(100'000, 'n');
    camera_.answer("/a.jpg", answer);
    const HttpReply reply = fetch(camera_.url("/a.jpg"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_FALSE(ranOutOfTime(reply));
    EXPECT_TRUE(reply.failure.contains(QStringLiteral("404"))) << reply.failure.toStdString();
}

class TwoLengths : public HttpExchange, public testing::WithParamInterface<QByteArray>
{
};

TEST_P(TwoLengths, EndWithAReasonThatSaysSo)
{
    for (const HttpForm form : {HttpForm::AsWritten, HttpForm::Http10}) {
        camera_.answer("/a.jpg", withHeaders(GetParam(), jpeg(20'000)));
        const HttpReply reply = fetch(camera_.url("/a.jpg"), form);
        EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
        EXPECT_EQ(reply.failure, QStringLiteral("the server gives two different lengths"));
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, TwoLengths,
    testing::Values(QByteArray("Content-Length: 20000\r\nContent-Length: 1200\r\n"),
                    QByteArray("Content-Length: 1200\r\nContent-Length: 20000\r\n"),
                    QByteArray("content-length:1200\r\nX: y\r\nCONTENT-LENGTH : 20000\r\n"),
                    QByteArray("Content-Length: 1200, 20000\r\n"),
                    QByteArray("Content-Length: 1200,1200\r\nContent-Length: 20000\r\n")));

TEST_F(HttpClientBody, OfALengthThatIsSaidTwiceArrives)
{
    camera_.answer("/a.jpg", withHeaders("Content-Length: 5000\r\nContent-Length: 5000, 5000\r\n",
                                         jpeg(5000)));
    EXPECT_EQ(fetch(camera_.url("/a.jpg")).body.whole(), jpeg(5000));
}

// Each answer has a length of its own.
TEST_F(HttpClientBody, BehindARedirectOfAnotherLengthArrives)
{
    camera_.answer("/moved", response("302 Found", "Location: /a.jpg\r\n", jpeg(3000)));
    camera_.answer("/a.jpg", picture(5000));
    EXPECT_EQ(fetch(camera_.url("/moved")).body.whole(), jpeg(5000));
    CameraAnswer small = picture(5000);
    small.bytes.replace("HTTP/", "http/");
    camera_.answer("/a.jpg", small);
    EXPECT_EQ(fetch(camera_.url("/moved")).body.whole(), jpeg(5000));
}

struct CodingRow
{
    const char *name;
    const char *value;
};

void PrintTo(const CodingRow &row, std::ostream *out)
{
    *out << row.value;
}

class TransferCoding : public HttpExchange, public testing::WithParamInterface<CodingRow>
{
};

TEST_P(TransferCoding, OtherThanInChunksIsRefused)
{
    const QByteArray coding = GetParam().value;
    for (const QByteArray name :
         {"Transfer-Encoding: ", "transfer-encoding:", "TRANSFER-ENCODING:\t"}) {
        camera_.answer("/a.jpg", withHeaders(name + coding + "\r\n", jpeg(5000)));
        const HttpReply reply = fetch(camera_.url("/a.jpg"));
        EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
        EXPECT_TRUE(reply.failure.contains(QStringLiteral("encodes")))
            << reply.failure.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Codings, TransferCoding,
                         testing::Values(CodingRow{"Gzip", "gzip"}, CodingRow{"Deflate", "deflate"},
                                         CodingRow{"Compress", "compress"},
                                         CodingRow{"Brotli", "br"}, CodingRow{"Zstd", "zstd"},
                                         CodingRow{"Identity", "identity"},
                                         CodingRow{"GzipInChunks", "gzip, chunked"},
                                         CodingRow{"ChunksInGzip", "chunked, gzip"},
                                         CodingRow{"ChunksInChunks", "chunked, chunked"}),
                         [](const auto &info) { return std::string(info.param.name); });

// libcurl looks at each line alone, and would hand over an encoded body as it is.
TEST_F(HttpClientBody, WhoseTransferCodingIsWrittenOddlyIsRefused)
{
    for (const QByteArray header :
         {"Transfer-Encoding:\r\n gzip", "Transfer-Encoding: \r\n\tgzip",
          "Transfer-Encoding: chunked,\r\n gzip", "Transfer-Encoding: chunked\r\n , gzip",
          "Transfer-Encoding:\r\n \r\n deflate", "Transfer-Encoding:\r\n chunked",
          "Transfer-Encoding : gzip", "Transfer-Encoding\t:chunked", "Transfer-Encoding: gzip\r\n ",
          "transfer-encoding:\n gzip"}) {
        for (const QByteArray &behind :
             {QByteArray(), QByteArray("Content-Type: image/jpeg\r\n")}) {
            camera_.answer("/a.jpg", withHeaders(header + "\r\n" + behind, jpeg(5000)));
            const HttpReply reply = fetch(camera_.url("/a.jpg"));
            EXPECT_EQ(reply.outcome, FetchOutcome::Failed) << header.toStdString();
            EXPECT_TRUE(reply.failure.contains(QStringLiteral("encodes")))
                << header.toStdString() << ": " << reply.failure.toStdString();
        }
    }
}

TEST_F(HttpClientBody, BehindAFoldedHeaderArrives)
{
    for (const QByteArray header :
         {"X-Folded: a\r\n b\r\n\tc\r\n", "X-Note:\r\n Transfer-Encoding: gzip\r\n",
          "Transfer-Encoding:\r\n \r\n"}) {
        camera_.answer("/a.jpg", withHeaders(header, jpeg(5000)));
        EXPECT_EQ(fetch(camera_.url("/a.jpg")).outcome, FetchOutcome::Arrived)
            << header.toStdString();
    }
}

TEST_F(HttpClientBody, InChunksIsTakenHoweverItIsSpelt)
{
    for (const QByteArray coding : {"chunked", "Chunked", " CHUNKED "}) {
        camera_.answer("/a.jpg", withHeaders("Transfer-Encoding:" + coding + "\r\n",
                                             "4\r\n\xFF\xD8\xFF\xE0\r\n0\r\n\r\n"));
        EXPECT_EQ(fetch(camera_.url("/a.jpg")).body.whole(), jpeg(4));
    }
}

TEST_F(HttpClientBody, IsNeverInflated)
{
    const QByteArray zeros =
        QByteArray::fromHex("1f8b08000000000000ff"); // the start of a gzip file
    for (const QByteArray coding : {"gzip", "deflate", "br", "zstd"}) {
        camera_.answer("/a.jpg", response("200 OK", "Content-Encoding: " + coding + "\r\n", zeros));
        EXPECT_EQ(fetch(camera_.url("/a.jpg")).body.whole(), zeros);
    }
}

TEST_F(HttpClientBody, IsAskedForInNoCoding)
{
    camera_.answer("/a.jpg", picture(10));
    fetch(camera_.url("/a.jpg"));
    EXPECT_EQ(onlyRequest().header("Accept-Encoding"), "");
    EXPECT_EQ(onlyRequest().header("TE"), "");
}

using EndlessHeaders = HttpExchange;

TEST_F(EndlessHeaders, EndEarlyWithAReasonThatSaysSo)
{
    CameraAnswer status;
    status.bytes = "HTTP/1.1 200 ";
    status.repeated = QByteArray(10'000, 'O');
    CameraAnswer early;
    early.repeated = QByteArray("HTTP/1.1 100 Continue\r\n\r\n").repeated(100);
    CameraAnswer many = picture(5000, QByteArray("A: b\r\n").repeated(2500));
    for (const CameraAnswer &answer :
         {endlessHeaders(), endlessHeaderLine(), status, early, many}) {
        camera_.answer("/a.jpg", answer);
        const HttpReply reply = fetch(camera_.url("/a.jpg"));
        EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
        EXPECT_EQ(reply.failure, QStringLiteral("the server sends headers without end"));
    }
}

CameraAnswer chunksWithTrailer(const QByteArray &begin, const QByteArray &repeated)
{
    CameraAnswer answer;
    answer.bytes =
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nabcd\r\n0\r\n" + begin;
    answer.repeated = repeated.repeated(20'000 / repeated.size());
    return answer;
}

TEST_F(EndlessHeaders, BehindABodyInChunksEndEarlyWithAReasonThatSaysSo)
{
    for (const CameraAnswer &answer : {chunksWithTrailer({}, "X-Trailer: x\r\n"),
                                       chunksWithTrailer("X: ", "x"), chunksWithTrailer({}, ":")}) {
        camera_.answer("/a.jpg", answer);
        const HttpReply reply = fetch(camera_.url("/a.jpg"));
        EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
        EXPECT_EQ(reply.failure, QStringLiteral("the server sends headers without end"));
    }
}

using HeadersThatAreNone = HttpExchange;

TEST_F(HeadersThatAreNone, EndWithAReasonThatSaysSo)
{
    camera_.answer("/a.jpg", chunksWithTrailer({}, "X\r\n"));
    EXPECT_EQ(fetch(camera_.url("/a.jpg")).failure,
              QStringLiteral("the server sends lines that are not headers"));
}

} // namespace
} // namespace velmora::test
