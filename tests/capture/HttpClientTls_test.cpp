// Encrypted fetches: an untrusted certificate is refused.
#include "HttpExchange.h"
#include "support/LoopbackTls.h"

#include <QFile>
#include <QSslServer>

namespace velmora::test {
namespace {

std::unique_ptr<QTcpServer> encryptingServer()
{
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(selfSignedConfiguration());
    return server;
}

/// Its certificate is vouched for by no one else.
class SelfSignedCamera : public LoopbackCamera
{
public:
    SelfSignedCamera()
        : LoopbackCamera(encryptingServer())
    {
        answer("/snap", picture(5000));
    }

    [[nodiscard]] QByteArray url() const { return LoopbackCamera::url("/snap"); }
};

using HttpClientTls = HttpExchange;

TEST_F(HttpClientTls, RefusesACertificateThatNoOneVouchesFor)
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

/// Trusts the camera's certificate and no other.
class HttpClientTrusting : public HttpExchange
{
protected:
    HttpClientTrusting()
        : HttpExchange(AuthorityPlaces{selfSignedCertificate(), {}})
    {
    }

    SelfSignedCamera secure_;
};

TEST_F(HttpClientTrusting, TakesACertificateThatIsVouchedFor)
{
    const HttpReply reply = fetch(secure_.url());
    EXPECT_EQ(reply.body.whole(), jpeg(5000)) << reply.failure.toStdString();
}

TEST_F(HttpClientTrusting, TakesItBehindARedirectBeforeAnythingElseWasEncrypted)
{
    camera_.answer("/old", redirect(secure_.url()));
    for (int i = 0; i < 2; ++i) {
        const HttpReply reply = fetch(camera_.url("/old"));
        EXPECT_EQ(reply.body.whole(), jpeg(5000)) << reply.failure.toStdString();
    }
    EXPECT_EQ(camera_.requests().size(), 3) << "once more, to read the certificates in between";
}

TEST_F(HttpClientTrusting, TakesItInManyTransfersAtOnce)
{
    const HttpRequest request{secure_.url(), HttpForm::AsWritten, kAmpleLimit};
    for (const HttpReply &reply : fetchAll(std::vector<HttpRequest>(10, request))) {
        EXPECT_EQ(reply.body.whole(), jpeg(5000)) << reply.failure.toStdString();
    }
}

/// Trusts a file of certificates that may change.
class HttpClientChanging : public HttpExchange
{
protected:
    HttpClientChanging()
        : HttpExchange(AuthorityPlaces{QFile::encodeName(places().path(u"all.pem")), {}})
    {
    }

    // Outlives the client.
    static TempTree &places()
    {
        static TempTree tree;
        return tree;
    }

    SelfSignedCamera secure_;
};

TEST_F(HttpClientChanging, ReadsTheCertificatesAgainWhenTheirFileChanges)
{
    EXPECT_EQ(fetch(secure_.url()).outcome, FetchOutcome::Failed); // there is none yet
    QFile certificate(QFile::decodeName(selfSignedCertificate()));
    ASSERT_TRUE(certificate.open(QIODevice::ReadOnly));
    places().write(u"all.pem", "a word before\n-----BEGIN CERTIFICATE-----\nbroken\n"
                               "-----END CERTIFICATE-----\n" +
                                   certificate.readAll());
    EXPECT_EQ(fetch(secure_.url()).body.whole(), jpeg(5000));
}

} // namespace
} // namespace velmora::test
