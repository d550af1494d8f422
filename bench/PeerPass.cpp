#include "PeerPass.h"

#include "Measures.h"
#include "base/UniqueFd.h"
#include "cameras/CameraAddress.h"

#include <QFile>
#include <QUrl>

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <utility>
#include <vector>

namespace velmora::bench {
namespace {

constexpr int kCameras = kGroups * kRows;
constexpr int kCurlLimitMs = 60000;
constexpr std::size_t kBufferBytes = 64U << 10U;

QStringList curlArguments(const Cameras &cameras, const QString &folder)
{
    QStringList arguments{QStringLiteral("-s"), QStringLiteral("--parallel"),
                          QStringLiteral("--parallel-max"), QString::number(kCameras),
                          QStringLiteral("--parallel-immediate")};
    for (int i = 0; i < kCameras; ++i) {
        arguments << QStringLiteral("-o") << QStringLiteral("%1/%2").arg(folder).arg(i)
                  << cameras.url(i / kRows, i % kRows);
    }
    return arguments;
}

// One picture on its way.
struct Fetch
{
    UniqueFd socket{-1};
    UniqueFd file{-1};
    QByteArray path;
    QByteArray request; // empty once it has been sent
};

Fetch connected(const Cameras &cameras, int camera, const QString &folder)
{
    const QUrl url(cameras.url(camera / kRows, camera % kRows));
    Fetch fetch;
    fetch.socket = UniqueFd(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    fetch.path = QFile::encodeName(QStringLiteral("%1/%2").arg(folder).arg(camera));
    fetch.request = "GET " + url.path().toLatin1() + " HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n";
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<in_port_t>(cameras.port()));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    static_cast<void>(::connect(fetch.socket.get(), reinterpret_cast<const sockaddr *>(&address),
                                sizeof address));
    return fetch;
}

// The server sends a header on its own or with the first bytes of the body, never in pieces.
std::string_view bodyOf(std::string_view received)
{
    constexpr std::string_view kEnd = "\r\n\r\n";
    const std::size_t end = received.starts_with("HTTP/") ? received.find(kEnd) : received.npos;
    return end == received.npos ? received : received.substr(end + kEnd.size());
}

bool ask(Fetch &fetch)
{
    const QByteArray request = std::exchange(fetch.request, {});
    return ::send(fetch.socket.get(), request.constData(), static_cast<std::size_t>(request.size()),
                  MSG_NOSIGNAL) == request.size();
}

bool store(Fetch &fetch, std::string_view body)
{
    if (!fetch.file) {
        fetch.file = UniqueFd(
            ::open(fetch.path.constData(), O_CREAT | O_WRONLY | O_TRUNC | O_CLOEXEC, 0644));
    }
    return ::write(fetch.file.get(), body.data(), body.size()) == static_cast<ssize_t>(body.size());
}

// False once the picture is complete.
bool advance(Fetch &fetch, std::vector<char> &buffer)
{
    if (!fetch.request.isEmpty()) {
        return ask(fetch);
    }
    const ssize_t got = ::recv(fetch.socket.get(), buffer.data(), buffer.size(), 0);
    return got > 0 && store(fetch, bodyOf({buffer.data(), static_cast<std::size_t>(got)}));
}

void serve(Fetch &fetch, pollfd &polled, std::vector<char> &buffer)
{
    polled.events = POLLIN;
    if (!advance(fetch, buffer)) {
        polled.fd = -1; // which poll() passes over
        fetch = Fetch();
    }
}

void fetchAll(std::vector<Fetch> fetches)
{
    std::vector<char> buffer(kBufferBytes);
    std::vector<pollfd> polled;
    for (const Fetch &fetch : fetches) {
        polled.push_back({fetch.socket.get(), POLLOUT, 0});
    }
    for (std::size_t left = fetches.size(); left > 0;) {
        ::poll(polled.data(), polled.size(), -1);
        for (std::size_t i = 0; i < polled.size(); ++i) {
            if (polled[i].fd >= 0 && polled[i].revents != 0) {
                serve(fetches[i], polled[i], buffer);
                left -= polled[i].fd < 0 ? 1 : 0;
            }
        }
    }
}

} // namespace

PeerPass curlPass(const Cameras &cameras, const QString &folder)
{
    const double before = childrenProcessorMs();
    const double ms = msOf([&] {
        QProcess curl;
        curl.start(QStringLiteral("curl"), curlArguments(cameras, folder));
        curl.waitForFinished(kCurlLimitMs);
    });
    return {ms, childrenProcessorMs() - before};
}

PeerPass plainPass(const Cameras &cameras, const QString &folder)
{
    const double before = processorMs();
    const double ms = msOf([&] {
        std::vector<Fetch> fetches;
        for (int camera = 0; camera < kCameras; ++camera) {
            fetches.push_back(connected(cameras, camera, folder));
        }
        fetchAll(std::move(fetches));
    });
    return {ms, processorMs() - before};
}

} // namespace velmora::bench
