// The bounds of a transfer: time, size of body and headers, and a stop on request.
#include "HttpExchange.h"
#include "support/RunTask.h"

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr qint64 kMaxBytes = 64LL * 1024 * 1024;
constexpr int kFewTurns = 10;

QCoro::Task<> noteEnd(PictureSource &source, HttpRequest request, QString name, QStringList &ended)
{
    const HttpReply reply = co_await source.fetch(std::move(request), std::stop_token{});
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    ended.append(name);
}

class HttpClientLimits : public HttpExchange
{
protected:
    HttpReply fetchWithin(const QByteArray &path, std::chrono::milliseconds limit)
    {
        return fetch(HttpRequest{camera_.url(path), HttpForm::AsWritten, limit});
    }
};

TEST_F(HttpClientLimits, EndASilentServer)
{
    camera_.answer("/silent", silence());
    const HttpReply reply = fetchWithin("/silent", 100ms);
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_TRUE(ranOutOfTime(reply)) << reply.failure.toStdString();
}

TEST_F(HttpClientLimits, EndADrippingServer)
{
    camera_.answer("/drip", dripping(picture(5000), 5ms));
    const HttpReply reply = fetchWithin("/drip", 100ms);
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_TRUE(ranOutOfTime(reply)) << reply.failure.toStdString();
}

TEST_F(HttpClientLimits, EndEachFetchAtItsOwnLimit)
{
    camera_.answer("/silent", silence());
    QStringList ended;
    const auto note = [this, &ended](std::chrono::milliseconds limit,
                                     const QString &name) -> QCoro::Task<> {
        return noteEnd(client_, {camera_.url("/silent"), HttpForm::AsWritten, limit}, name, ended);
    };
    auto patient = note(150ms, QStringLiteral("patient"));
    const auto hasty = note(50ms, QStringLiteral("hasty"));
    const auto usual = note(100ms, QStringLiteral("usual"));
    runToEnd(std::move(patient));
    EXPECT_EQ(ended, (QStringList{QStringLiteral("hasty"), QStringLiteral("usual"),
                                  QStringLiteral("patient")}));
}

TEST_F(HttpClientLimits, CountAllRedirectsTogether)
{
    camera_.answer("/0", delayed(redirect("/1"), 100ms));
    camera_.answer("/1", delayed(redirect("/2"), 100ms));
    camera_.answer("/2", delayed(picture(10), 100ms));
    EXPECT_EQ(fetchWithin("/0", 200ms).outcome, FetchOutcome::Failed);
}

TEST_F(HttpClientLimits, LetASlowServerFinishInTime)
{
    camera_.answer("/drip", dripping(picture(20), 1ms));
    EXPECT_EQ(fetchWithin("/drip", kAmpleLimit).body.whole(), jpeg(20));
}

TEST_F(HttpClientLimits, RefuseADeclaredLengthAtOnce)
{
    CameraAnswer answer = pictureDeclared(5000, kMaxBytes + 1);
    answer.atEnd = AtEnd::KeepOpen;
    camera_.answer("/big", answer);
    const HttpReply reply = fetch(camera_.url("/big"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_FALSE(ranOutOfTime(reply));
}

TEST_F(HttpClientLimits, RefuseADeclaredLengthThatIsNoNumberAnyMoreAtOnce)
{
    const QByteArray length = "99999999999999999999";
    for (const QByteArray &line : {length + "\r\n", '+' + length + "\r\n", length + ";x\r\n",
                                   length + "\r\n\r\r\n", length + "\n\n"}) {
        CameraAnswer answer = picture(5000);
        answer.bytes.replace("Content-Length: 5000\r\n", "Content-Length: " + line);
        camera_.answer("/big", answer);
        const HttpReply reply = fetch(camera_.url("/big"));
        EXPECT_EQ(reply.outcome, FetchOutcome::Failed) << line.toStdString();
        EXPECT_EQ(reply.failure, QStringLiteral("the server sends more than a picture can have"));
    }
}

TEST_F(HttpClientLimits, TakeABodyOfTheLargestSize)
{
    CameraAnswer answer = pictureDeclared(0, kMaxBytes);
    answer.repeated = QByteArray(1024 * 1024, 'b');
    camera_.answer("/big", answer);
    const HttpReply reply = fetch(camera_.url("/big"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
    EXPECT_EQ(reply.body.size(), kMaxBytes);
}

TEST_F(HttpClientLimits, EndAnEndlessBody)
{
    camera_.answer("/endless", endlessBody());
    const HttpReply reply = fetch(camera_.url("/endless"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_LE(reply.body.size(), kMaxBytes);
    EXPECT_FALSE(ranOutOfTime(reply)) << "the time has ended it, not the size";
}

TEST_F(HttpClientLimits, EndEndlessHeaders)
{
    camera_.answer("/headers", endlessHeaders());
    const HttpReply reply = fetch(camera_.url("/headers"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_FALSE(ranOutOfTime(reply));
}

TEST_F(HttpClientLimits, EndAnEndlessHeaderLine)
{
    camera_.answer("/headers", endlessHeaderLine());
    const HttpReply reply = fetch(camera_.url("/headers"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_FALSE(ranOutOfTime(reply));
}

TEST_F(HttpClientLimits, AllowManyHeaders)
{
    camera_.answer("/headers",
                   picture(10, QByteArray("X-Padding: 0123456789abcdef\r\n").repeated(1000)));
    EXPECT_EQ(fetch(camera_.url("/headers")).body.whole(), jpeg(10));
}

QCoro::Task<> fetchUntilStop(PictureSource &source, HttpRequest request, std::stop_token stop,
                             HttpReply &reply)
{
    reply = co_await source.fetch(request, stop);
}

TEST_F(HttpClientLimits, EndAtOnceWhenAStopIsRequested)
{
    camera_.answer("/silent", silence());
    std::stop_source stop;
    HttpReply reply;
    LoopTurns loop;
    loop.then(1000, [&] {
        stop.request_stop();
        loop.restart();
    });
    runToEnd(fetchUntilStop(client_, {camera_.url("/silent"), HttpForm::AsWritten, kAmpleLimit},
                            stop.get_token(), reply));
    EXPECT_EQ(reply.outcome, FetchOutcome::Stopped);
    EXPECT_LE(loop.turns(), kFewTurns);
    EXPECT_EQ(camera_.requests().size(), 1);
}

TEST_F(HttpClientLimits, EndBeforeTheStartWhenAStopWasRequested)
{
    std::stop_source stop;
    stop.request_stop();
    HttpReply reply;
    runToEnd(fetchUntilStop(client_, {camera_.url("/a"), HttpForm::AsWritten, kAmpleLimit},
                            stop.get_token(), reply));
    EXPECT_EQ(reply.outcome, FetchOutcome::Stopped);
}

TEST_F(HttpClientLimits, StopOneFetchAlone)
{
    camera_.answer("/silent", silence());
    camera_.answer("/good", afterTurns(picture(10), 1000));
    std::stop_source stop;
    HttpReply stopped;
    const auto task =
        fetchUntilStop(client_, {camera_.url("/silent"), HttpForm::AsWritten, kAmpleLimit},
                       stop.get_token(), stopped);
    LoopTurns loop;
    loop.then(100, [&stop] { stop.request_stop(); });
    EXPECT_EQ(fetch(camera_.url("/good")).body.whole(), jpeg(10));
    EXPECT_TRUE(task.isReady());
    EXPECT_EQ(stopped.outcome, FetchOutcome::Stopped);
}

TEST_F(HttpClientLimits, IgnoreAStopAfterTheEnd)
{
    camera_.answer("/good", picture(10));
    std::stop_source stop;
    HttpReply reply;
    runToEnd(fetchUntilStop(client_, {camera_.url("/good"), HttpForm::AsWritten, kAmpleLimit},
                            stop.get_token(), reply));
    stop.request_stop();
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
    EXPECT_EQ(fetch(camera_.url("/good")).outcome, FetchOutcome::Arrived);
}

} // namespace
} // namespace velmora::test
