// What clients of a camera server get, whether they keep to the rules or not.
#include "loopback/Server.h"

#include "support/Printers.h"

#include <QEventLoop>
#include <QTcpSocket>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

const QByteArray kRequest = "GET /a.jpg HTTP/1.0\r\n\r\n";

class LoopbackServer : public testing::Test
{
protected:
    LoopbackServer() { EXPECT_TRUE(server_.listen(0)); }

    /// Everything that the server sends to who sends it these bytes, until it closes.
    [[nodiscard]] QByteArray replyTo(const QByteArray &bytes) const
    {
        QTcpSocket socket;
        QEventLoop loop;
        QObject::connect(&socket, &QTcpSocket::disconnected, &loop, &QEventLoop::quit);
        QTimer::singleShot(30s, &loop, &QEventLoop::quit);
        socket.connectToHost(QStringLiteral("127.0.0.1"), server_.port());
        socket.write(bytes);
        loop.exec();
        return socket.readAll();
    }

    loopback::Answer answer_ = loopback::response("200 OK", "A: b\r\n", "picture");
    QList<loopback::Request> requests_;
    loopback::Server server_{[this](const loopback::Request &request) {
        requests_.append(request);
        return answer_;
    }};
};

TEST_F(LoopbackServer, SendsTheAnswerAndCloses)
{
    EXPECT_EQ(replyTo(kRequest), "HTTP/1.1 200 OK\r\nA: b\r\nContent-Length: 7\r\n\r\npicture");
    EXPECT_EQ(server_.mostAtOnce(), 1);
}

TEST_F(LoopbackServer, SendsAllPiecesInTheirOrder)
{
    const QByteArray whole = answer_.bytes;
    answer_.pieceBytes = 10;
    EXPECT_EQ(replyTo(kRequest), whole);
}

TEST_F(LoopbackServer, AnswersOneRequestForEachConnection)
{
    EXPECT_EQ(replyTo(kRequest + kRequest), answer_.bytes);
    EXPECT_EQ(requests_.size(), 1);
}

TEST_F(LoopbackServer, TakesLineFeedsAloneAsEndsOfLines)
{
    EXPECT_EQ(replyTo("GET /a.jpg HTTP/1.1\nHost: cam\nX-Last: z\n\n"), answer_.bytes);
    ASSERT_EQ(requests_.size(), 1);
    EXPECT_EQ(requests_.first().version, "HTTP/1.1");
    EXPECT_EQ(requests_.first().header("Host"), "cam");
    EXPECT_EQ(requests_.first().header("X-Last"), "z");
}

TEST_F(LoopbackServer, AnswersAClientThatGoesOnSending)
{
    answer_.bytes += QByteArray(1 << 20, 'a');
    EXPECT_EQ(replyTo(kRequest + QByteArray(1 << 26, 'x')).size(), answer_.bytes.size());
}

TEST_F(LoopbackServer, RefusesWhatIsNotARequest)
{
    EXPECT_TRUE(replyTo("nonsense\r\n\r\n").startsWith("HTTP/1.1 400 Bad Request\r\n"));
    EXPECT_TRUE(requests_.isEmpty());
}

TEST_F(LoopbackServer, RefusesAHeadThatIsTooLong)
{
    const QByteArray reply = replyTo("GET / HTTP/1.0\r\nX: " + QByteArray(8192, 'x'));
    EXPECT_TRUE(reply.startsWith("HTTP/1.1 431 Request Header Fields Too Large\r\n"));
    EXPECT_TRUE(requests_.isEmpty());
}

} // namespace
} // namespace velmora::test
