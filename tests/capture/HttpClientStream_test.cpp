// Answers that are streams of pictures, and logins kept apart from the address.
#include "HttpExchange.h"

namespace velmora::test {
namespace {

CameraAnswer stream(const QByteArray &bytes, const QByteArray &repeated = {})
{
    CameraAnswer answer;
    answer.bytes =
        "HTTP/1.0 200 OK\r\nDate: Tue, 07 Mar 2006 13:05:00 GMT\r\nLast-Modified: Tue, 07 "
        "Mar 2006 13:00:00 GMT\r\nContent-Type: multipart/x-mixed-replace; "
        "boundary=\"cut\"\r\n\r\n" +
        bytes;
    answer.repeated = repeated;
    answer.atEnd = AtEnd::KeepOpen;
    return answer;
}

QByteArray part(const QByteArray &picture)
{
    return "--cut\r\nContent-Type: image/jpeg\r\nContent-Length: " +
           QByteArray::number(picture.size()) + "\r\n\r\n" + picture + "\r\n";
}

class HttpClientStream : public HttpExchange
{
};

TEST_F(HttpClientStream, GivesItsFirstPictureAndHangsUp)
{
    camera_.answer("/video", stream(part(jpeg(3000)) + part(jpeg(4000)), part(jpeg(5000))));
    const HttpReply reply = fetch(camera_.url("/video"));
    ASSERT_EQ(reply.outcome, FetchOutcome::Arrived) << reply.failure.toStdString();
    EXPECT_EQ(reply.body.whole(), jpeg(3000));
    EXPECT_EQ(reply.contentType, QStringLiteral("image/jpeg"));
}

// Some cameras declare the largest length they know for what does not end.
TEST_F(HttpClientStream, GivesItsFirstPictureWhateverLengthIsDeclaredForAll)
{
    for (const QByteArray length : {"67108865", "2147483647", "99999999999999999999"}) {
        CameraAnswer endless = stream(part(jpeg(3000)), part(jpeg(5000)));
        endless.bytes.replace("Date:", "Content-Length: " + length + "\r\nDate:");
        camera_.answer("/video", endless);
        const HttpReply reply = fetch(camera_.url("/video"));
        ASSERT_EQ(reply.outcome, FetchOutcome::Arrived) << reply.failure.toStdString();
        EXPECT_EQ(reply.body.whole(), jpeg(3000));
    }
}

TEST_F(HttpClientStream, HasNoDateButTheServersClock)
{
    camera_.answer("/video", stream(part(jpeg(3000))));
    const HttpReply reply = fetch(camera_.url("/video"));
    EXPECT_EQ(reply.lastModified, QString());
    EXPECT_EQ(reply.date, QStringLiteral("Tue, 07 Mar 2006 13:05:00 GMT"));
}

TEST_F(HttpClientStream, FailsWithoutABoundary)
{
    camera_.answer("/video", stream({}, QByteArray(1000, 'x') + "\r\n"));
    const HttpReply reply = fetch(camera_.url("/video"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_EQ(reply.failure, QStringLiteral("the stream does not come to a picture"));
}

TEST_F(HttpClientStream, FailsWhenItEndsWithinThePicture)
{
    CameraAnswer cut = stream("--cut\r\nContent-Length: 5000\r\n\r\n" + jpeg(3000));
    cut.atEnd = AtEnd::Close;
    camera_.answer("/video", cut);
    const HttpReply reply = fetch(camera_.url("/video"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_EQ(reply.failure, QStringLiteral("the stream ended within its first picture"));
}

TEST_F(HttpClientStream, DoesNotTakeTheStatusPageOfARefusal)
{
    CameraAnswer refused = stream(part(jpeg(3000)));
    refused.bytes.replace("200 OK", "404 Not Found");
    camera_.answer("/video", refused);
    EXPECT_EQ(fetch(camera_.url("/video")).outcome, FetchOutcome::Failed);
}

TEST_F(HttpClientStream, FollowsARedirectToAPicture)
{
    camera_.answer("/moved", redirect(camera_.url("/x.png"), "Content-Type: "
                                                             "multipart/x-mixed-replace\r\n"));
    camera_.answer("/x.png", picture(2000));
    EXPECT_EQ(fetch(camera_.url("/moved")).outcome, FetchOutcome::Arrived);
}

TEST_F(HttpClientStream, SendsALoginThatStandsApartOnlyWhenAsked)
{
    for (const LockKind kind : {LockKind::Basic, LockKind::Digest}) {
        CameraAnswer locked = picture(2000);
        locked.lock = {kind, "me", "p@ss:w"};
        camera_.answer("/x.png", locked);
        const qsizetype before = camera_.requests().size();
        HttpRequest request{camera_.url("/x.png"), HttpForm::AsWritten, kAmpleLimit};
        request.user = QStringLiteral("me");
        request.password = QStringLiteral("p@ss:w");
        EXPECT_EQ(fetch(request).outcome, FetchOutcome::Arrived);
        EXPECT_EQ(camera_.requests().at(before).header("Authorization"), QByteArray());
        request.password = QStringLiteral("wrong");
        EXPECT_EQ(fetch(request).outcome, FetchOutcome::Failed);
    }
}

} // namespace
} // namespace velmora::test
