// Encrypted fetches: a certificate that nobody vouches for is refused.
#include "HttpExchange.h"
#include "support/LoopbackTls.h"

#include <QSslServer>
#include <QSslSocket>

namespace velmora::test {
namespace {

/// Gives everybody a picture, under a certificate of its own making.
class SelfSignedCamera
{
public:
    SelfSignedCamera()
    {
        server_.setSslConfiguration(selfSignedConfiguration());
        QObject::connect(&server_, &QTcpServer::pendingConnectionAvailable, &server_,
                         [this] { accept(); });
        EXPECT_TRUE(server_.listen(QHostAddress::LocalHost));
    }

    [[nodiscard]] QByteArray url() const
    {
        return "https://127.0.0.1:" + QByteArray::number(server_.serverPort()) + "/snap";
    }

private:
    void accept()
    {
        QTcpSocket *const socket = server_.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
            socket->readAll();
            socket->write(picture(5000).bytes);
            socket->disconnectFromHost();
        });
    }

    QSslServer server_;
};

using HttpClientTls = HttpExchange;

TEST_F(HttpClientTls, RefusesACertificateThatNobodyVouchesFor)
{
    const SelfSignedCamera camera;
    const HttpReply reply = fetch(camera.url());
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_TRUE(reply.failure.contains(QStringLiteral("certificate")))
        << reply.failure.toStdString();
}

TEST_F(HttpClientTls, RefusesItBehindARedirectToo)
{
    const SelfSignedCamera camera;
    camera_.answer("/old", redirect(camera.url()));
    const HttpReply reply = fetch(camera_.url("/old"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_TRUE(reply.failure.contains(QStringLiteral("certificate")))
        << reply.failure.toStdString();
}

TEST_F(HttpClientTls, FailsOnAServerThatDoesNotEncrypt)
{
    camera_.answer("/snap", picture(5000));
    const HttpRequest request{"https://" + camera_.host() + "/snap", HttpForm::AsWritten,
                              std::chrono::milliseconds{300}};
    EXPECT_EQ(fetch(request).outcome, FetchOutcome::Failed);
}

} // namespace
} // namespace velmora::test
