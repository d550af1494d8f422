// Fuzzes an HTTP answer as a whole: a loopback socket gives a client the input, in pieces as a
// network would, and whatever it is, the fetch ends within its bounds, with a picture or with a
// reason.
#include "Require.h"
#include "capture/HttpClient.h"
#include "loopback/Server.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTemporaryDir>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace velmora::fuzz {
namespace {

constexpr std::chrono::milliseconds kLimit{250};
constexpr int kMostRequests = 14;     // ten redirects, and the repeats that a user name may cause
constexpr qsizetype kMostPieces = 32; // of an answer, so that it is sent well within the limit

/// Sends every client the same bytes, in pieces of as many as the first byte says.
class Camera : public loopback::Server
{
public:
    Camera()
        : Server([this](const loopback::Request &) {
            ++requests_;
            return answer_;
        })
    {
        require(listen(0), "a port can be had");
    }

    void show(const QByteArray &answer)
    {
        const qsizetype piece = answer.isEmpty() ? 0 : static_cast<uchar>(answer.at(0));
        answer_.bytes = answer.mid(1);
        answer_.pieceBytes = piece == 0 ? 0 : std::max(piece, answer.size() / kMostPieces);
        requests_ = 0;
    }

    [[nodiscard]] int requests() const { return requests_; }

private:
    loopback::Answer answer_;
    int requests_ = 0;
};

/// Lives as long as the program.
struct Exchange
{
    QTemporaryDir folder;
    Camera camera;
    HttpClient client;
};

Exchange *exchange = nullptr;

QCoro::Task<> fetchInto(HttpRequest request, HttpReply &reply, QEventLoop &loop, bool &done)
{
    reply = co_await exchange->client.fetch(std::move(request), std::stop_token{});
    done = true;
    loop.quit();
}

HttpReply fetch(HttpForm form)
{
    HttpReply reply;
    QEventLoop loop;
    bool done = false;
    const HttpRequest request{exchange->camera.url("/a.jpg", "alice:s3cret@"), form, kLimit,
                              exchange->folder.path()};
    const QCoro::Task<> task = fetchInto(request, reply, loop, done);
    if (!done) {
        loop.exec();
    }
    return reply;
}

void check(const QByteArray &answer)
{
    for (const HttpForm form : {HttpForm::AsWritten, HttpForm::Http10}) {
        exchange->camera.show(answer);
        const HttpReply reply = fetch(form);
        require(reply.outcome != FetchOutcome::Stopped, "nobody gave it up");
        require((reply.outcome == FetchOutcome::Arrived) == reply.failure.isEmpty(),
                "a failure has a reason");
        require(!reply.failure.contains(QStringLiteral("s3cret")), "and no password in it");
        require(reply.body.size() <= answer.size(), "nothing is inflated");
        require(reply.body.whole().has_value(), "what has arrived can be read");
        require(exchange->camera.requests() <= kMostRequests, "redirects have an end");
    }
}

void quiet(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace
} // namespace velmora::fuzz

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qInstallMessageHandler(velmora::fuzz::quiet);
    static const QCoreApplication application(*argc, *argv);
    velmora::fuzz::exchange = new velmora::fuzz::Exchange; // freed with the process
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    velmora::fuzz::check(
        QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    return 0;
}
