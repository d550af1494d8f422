// Transfers under way before their camera's turn.
#include "capture/ReadAhead.h"

#include "CaptureTest.h"

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr CameraAddress kCamera{2, 5};

class ReadAheadTest : public testing::Test
{
protected:
    ReadAheadTest()
    {
        source_.answer(QStringLiteral("http://a"), delayedReply(1s));
        source_.answer(QStringLiteral("http://b"), delayedReply(2s));
    }

    ~ReadAheadTest() override
    {
        readAhead_.drop();
        clock_.advance(1s);
    }

    static HttpRequest request(const char *url) { return {url, HttpForm::AsWritten, 5s}; }

    void beginFetch(CameraAddress camera, const HttpRequest &request, HttpReply &reply)
    {
        scope_.launch(fetchInto(camera, request, reply));
        clock_.advance(0ms);
    }

    QCoro::Task<> fetchInto(CameraAddress camera, HttpRequest request, HttpReply &reply)
    {
        reply = co_await readAhead_.fetch(camera, request);
    }

    FakeClock clock_;
    ScriptedSource source_{clock_};
    TaskScope scope_{[](const QString &text) { ADD_FAILURE() << text.toStdString(); }};
    ReadAhead readAhead_{source_, scope_};
};

TEST_F(ReadAheadTest, StartsTheTransferAtOnce)
{
    readAhead_.begin(kCamera, request("http://a"));
    EXPECT_EQ(source_.requested(), QList<QByteArray>{"http://a"});
    EXPECT_EQ(source_.underWay(), 1);
}

TEST_F(ReadAheadTest, TakesTheTransferUnderWay)
{
    HttpReply reply;
    readAhead_.begin(kCamera, request("http://a"));
    clock_.advance(400ms);
    beginFetch(kCamera, request("http://a"), reply);
    clock_.advance(600ms);
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
    EXPECT_EQ(source_.requested().size(), 1);
}

TEST_F(ReadAheadTest, TakesATransferThatHasEndedAlready)
{
    HttpReply reply;
    readAhead_.begin(kCamera, request("http://a"));
    clock_.advance(10s);
    beginFetch(kCamera, request("http://a"), reply);
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
    EXPECT_EQ(reply.duration, 1s);
    EXPECT_EQ(source_.requested().size(), 1);
}

TEST_F(ReadAheadTest, StartsOneWhenNoneIsUnderWay)
{
    HttpReply reply;
    beginFetch(kCamera, request("http://a"), reply);
    clock_.advance(1s);
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
}

TEST_F(ReadAheadTest, StartsOverForAnotherAddress)
{
    HttpReply reply;
    readAhead_.begin(kCamera, request("http://a"));
    beginFetch(kCamera, request("http://b"), reply);
    clock_.advance(2s);
    EXPECT_EQ(reply.duration, 2s);
    EXPECT_EQ(source_.requested(), (QList<QByteArray>{"http://a", "http://b"}));
    EXPECT_EQ(source_.stopped(), QList<QByteArray>{"http://a"});
}

TEST_F(ReadAheadTest, StartsOverForAnotherForm)
{
    HttpReply reply;
    readAhead_.begin(kCamera, request("http://a"));
    beginFetch(kCamera, {"http://a", HttpForm::Http10, 5s}, reply);
    clock_.advance(1s);
    EXPECT_EQ(source_.requested().size(), 2);
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
}

TEST_F(ReadAheadTest, StartsOverOnceItsTransferWasTaken)
{
    HttpReply first;
    HttpReply second;
    readAhead_.begin(kCamera, request("http://a"));
    beginFetch(kCamera, request("http://a"), first);
    clock_.advance(1s);
    beginFetch(kCamera, request("http://a"), second);
    EXPECT_EQ(source_.requested().size(), 2);
    clock_.advance(1s);
    EXPECT_EQ(second.outcome, FetchOutcome::Arrived);
}

TEST_F(ReadAheadTest, GivesUpTheTransferThatAnotherReplaces)
{
    readAhead_.begin(kCamera, request("http://a"));
    readAhead_.begin(kCamera, request("http://b"));
    clock_.advance(0ms);
    EXPECT_EQ(source_.stopped(), QList<QByteArray>{"http://a"});
    EXPECT_EQ(source_.underWay(), 1);
}

TEST_F(ReadAheadTest, KeepsTheCamerasApart)
{
    HttpReply one;
    HttpReply two;
    readAhead_.begin({0, 1}, request("http://a"));
    readAhead_.begin({1, 0}, request("http://b"));
    beginFetch({1, 0}, request("http://b"), two);
    beginFetch({0, 1}, request("http://a"), one);
    clock_.advance(2s);
    EXPECT_EQ(one.duration, 1s);
    EXPECT_EQ(two.duration, 2s);
    EXPECT_EQ(source_.requested().size(), 2);
}

TEST_F(ReadAheadTest, DropsTransfersThatNoOneWaitsFor)
{
    readAhead_.begin({0, 0}, request("http://a"));
    readAhead_.begin({0, 1}, request("http://b"));
    readAhead_.drop();
    clock_.advance(0ms);
    EXPECT_EQ(source_.stopped().size(), 2);
    EXPECT_EQ(scope_.running(), 0);
}

TEST_F(ReadAheadTest, EndsAWaitingFetchByDropping)
{
    HttpReply reply;
    beginFetch(kCamera, request("http://a"), reply);
    readAhead_.drop();
    clock_.advance(0ms);
    EXPECT_EQ(reply.outcome, FetchOutcome::Stopped);
    EXPECT_EQ(scope_.running(), 0);
}

TEST_F(ReadAheadTest, StartsOverAfterADrop)
{
    HttpReply reply;
    readAhead_.begin(kCamera, request("http://a"));
    readAhead_.drop();
    beginFetch(kCamera, request("http://a"), reply);
    clock_.advance(1s);
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
    EXPECT_EQ(source_.requested().size(), 2);
}

} // namespace
} // namespace velmora::test
