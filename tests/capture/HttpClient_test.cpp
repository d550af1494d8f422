// A good exchange with a camera: what is sent, what comes back, and many at once.
#include "HttpExchange.h"
#include "capture/CameraUrl.h"
#include "support/RunTask.h"
#include "support/ScopedEnv.h"

#include <QEventLoop>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

using HttpClientTest = HttpExchange;

TEST_F(HttpClientTest, BringsPictureDateAndType)
{
    camera_.answer("/snap", picture(5000, "Last-Modified: Tue, 07 Mar 2006 14:05:09 GMT\r\n"));
    const HttpReply reply = fetch(camera_.url("/snap"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
    EXPECT_EQ(reply.body.whole(), jpeg(5000));
    EXPECT_EQ(reply.lastModified, QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"));
    EXPECT_EQ(reply.contentType, QStringLiteral("image/jpeg"));
    EXPECT_EQ(reply.failure, QString());
}

TEST_F(HttpClientTest, LeavesDateAndTypeEmptyWhenNoneIsSent)
{
    camera_.answer("/snap", pictureDeclared(10, 10));
    const HttpReply reply = fetch(camera_.url("/snap"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
    EXPECT_EQ(reply.lastModified, QString());
    EXPECT_EQ(reply.contentType, QString());
}

TEST_F(HttpClientTest, TakesAnEmptyOrBlankDateForNone)
{
    for (const QByteArray header : {"Last-Modified:\r\n", "Last-Modified: \r\n",
                                    "Last-Modified: \t  \r\n", "Last-Modified: \t\xA0 \r\n"}) {
        camera_.answer("/snap", picture(10, header));
        const HttpReply reply = fetch(camera_.url("/snap"));
        EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
        EXPECT_EQ(reply.lastModified, QString()) << header.toStdString();
    }
}

TEST_F(HttpClientTest, FindsTheDateWhateverTheCaseOfItsName)
{
    camera_.answer("/snap", picture(10, "LAST-modified: today\r\n"));
    EXPECT_EQ(fetch(camera_.url("/snap")).lastModified, QStringLiteral("today"));
}

TEST_F(HttpClientTest, AsksForThePathAsWritten)
{
    camera_.answer("/cgi/snap.cgi?res=2&q=%20x", picture(10));
    EXPECT_EQ(fetch(camera_.url("/cgi/snap.cgi?res=2&q=%20x")).outcome, FetchOutcome::Arrived);
    const CameraRequest request = onlyRequest();
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.target, "/cgi/snap.cgi?res=2&q=%20x");
    EXPECT_EQ(request.version, "HTTP/1.1");
    EXPECT_EQ(request.header("Host"), camera_.host());
    EXPECT_EQ(request.header("Authorization"), "");
}

TEST_F(HttpClientTest, LeavesTheDotsInAPathToTheServer)
{
    const QByteArray snap = "/cgi/../a/./snap";
    camera_.answer(snap, picture(10));
    EXPECT_EQ(fetch(camera_.url(snap)).outcome, FetchOutcome::Arrived);
    camera_.answer(snap + ".jpg", picture(10));
    EXPECT_EQ(fetch(camera_.url(snap + ".jpg"), HttpForm::Http10).outcome, FetchOutcome::Arrived);
}

TEST_F(HttpClientTest, AsksForJpgInTheOldForm)
{
    camera_.answer("/img/a.JPG", picture(10));
    const QString typed = QStringLiteral("https://%1/img/a.JPG").arg(QLatin1String(camera_.host()));
    EXPECT_EQ(fetch(requestFor(typed, kAmpleLimit)).outcome, FetchOutcome::Arrived);
    const CameraRequest request = onlyRequest();
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.target, "/img/a.JPG");
    EXPECT_EQ(request.version, "HTTP/1.0");
    EXPECT_EQ(request.header("Authorization"), "");
    EXPECT_EQ(request.header("Accept"), "");
}

TEST_F(HttpClientTest, AsksForJpgFreshFromTheServer)
{
    camera_.answer("/a.jpg", picture(10));
    fetch(camera_.url("/a.jpg"), HttpForm::Http10);
    EXPECT_EQ(onlyRequest().header("Pragma"), "no-cache");
}

TEST_F(HttpClientTest, TakesAnAddressWithoutScheme)
{
    camera_.answer("/snap", picture(10));
    EXPECT_EQ(fetch(camera_.host() + "/snap").outcome, FetchOutcome::Arrived);
}

TEST_F(HttpClientTest, GoesThroughTheProxyOfTheSystem)
{
    const ScopedEnv proxy("http_proxy", camera_.url({}));
    camera_.answer("http://cam.example/a.jpg", picture(10));
    EXPECT_EQ(fetch("http://cam.example/a.jpg", HttpForm::Http10).body.whole(), jpeg(10));
    EXPECT_EQ(onlyRequest().target, "http://cam.example/a.jpg");
}

TEST_F(HttpClientTest, TakesAnEmptyAnswer)
{
    camera_.answer("/snap", response("200 OK", {}, {}));
    const HttpReply reply = fetch(camera_.url("/snap"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
    EXPECT_TRUE(reply.body.isEmpty());
}

TEST_F(HttpClientTest, TakesAPictureThatEndsWithTheConnection)
{
    camera_.answer("/a.jpg", pictureWithoutLength(70000));
    EXPECT_EQ(fetch(camera_.url("/a.jpg"), HttpForm::Http10).body.whole(), jpeg(70000));
    EXPECT_EQ(fetch(camera_.url("/a.jpg")).body.whole(), jpeg(70000));
}

TEST_F(HttpClientTest, EndsAtTheDeclaredLengthWhenTheServerKeepsTheConnection)
{
    CameraAnswer answer = picture(3000);
    answer.atEnd = AtEnd::KeepOpen;
    camera_.answer("/snap", answer);
    const HttpReply reply = fetch(camera_.url("/snap"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
    EXPECT_EQ(reply.body.whole(), jpeg(3000));
}

TEST_F(HttpClientTest, CutsWhatGoesBeyondTheDeclaredLength)
{
    camera_.answer("/snap", pictureDeclared(3000, 2000));
    const HttpReply reply = fetch(camera_.url("/snap"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
    EXPECT_EQ(reply.body.whole(), jpeg(2000));
}

TEST_F(HttpClientTest, PutsChunksTogether)
{
    CameraAnswer answer;
    answer.bytes = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                   "4\r\n\xFF\xD8\xFF\xE0\r\n6\r\nxxxxxx\r\n0\r\n\r\n";
    camera_.answer("/snap", answer);
    EXPECT_EQ(fetch(camera_.url("/snap")).body.whole(), jpeg(10));
}

TEST_F(HttpClientTest, KeepsZeroBytesInThePicture)
{
    const QByteArray body("\xFF\xD8\0\r\n\r\n\0\xFF", 9);
    camera_.answer("/snap", response("200 OK", {}, body));
    EXPECT_EQ(fetch(camera_.url("/snap")).body.whole(), body);
}

TEST_F(HttpClientTest, MeasuresTheTransfer)
{
    constexpr std::chrono::milliseconds kDelay{120};
    camera_.answer("/snap", delayed(picture(10), kDelay));
    const auto began = std::chrono::steady_clock::now();
    const HttpReply reply = fetch(camera_.url("/snap"));
    EXPECT_GE(reply.duration, kDelay);
    EXPECT_LE(reply.duration, std::chrono::steady_clock::now() - began);
}

TEST_F(HttpClientTest, RunsAHundredFetchesAtOnce)
{
    std::vector<HttpRequest> requests;
    for (int i = 0; i < 100; ++i) {
        const QByteArray path = "/camera" + QByteArray::number(i);
        camera_.answer(path, inCompany(picture(1000 + i), 100));
        requests.push_back({camera_.url(path), HttpForm::AsWritten, kAmpleLimit});
    }
    const std::vector<HttpReply> replies = fetchAll(requests);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(replies.at(static_cast<std::size_t>(i)).body.size(), 1000 + i);
    }
    EXPECT_EQ(camera_.mostAtOnce(), 100);
}

TEST_F(HttpClientTest, KeepsTheEventLoopAlive)
{
    camera_.answer("/slow", afterTurns(picture(10), 1000));
    EXPECT_EQ(fetch(camera_.url("/slow")).outcome, FetchOutcome::Arrived);
}

TEST_F(HttpClientTest, LeavesNoConnectionOpen)
{
    CameraAnswer answer = picture(100);
    answer.atEnd = AtEnd::KeepOpen;
    camera_.answer("/snap", answer);
    fetch(camera_.url("/snap"));
    QEventLoop untilNoticed;
    LoopTurns loop;
    loop.then(1000, [&] { untilNoticed.quit(); });
    untilNoticed.exec();
    EXPECT_EQ(camera_.requests().size(), 1);
    EXPECT_EQ(camera_.openConnections(), 0);
}

} // namespace
} // namespace velmora::test
