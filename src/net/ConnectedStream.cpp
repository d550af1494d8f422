#include "net/ConnectedStream.h"

#include "base/OneShot.h"
#include "net/Curl.h"

#include <QTimer>

#include <algorithm>
#include <array>
#include <utility>

namespace velmora {
namespace {

constexpr std::size_t kPieceBytes = 16UL * 1024;

using End = std::optional<int>; // the code, or nothing when stopped

int activeSocket(CURL *easy)
{
    curl_socket_t socket = CURL_SOCKET_BAD;
    curl().easyGetinfo(easy, CURLINFO_ACTIVESOCKET, &socket);
    return socket;
}

} // namespace

ConnectedStream::ConnectedStream(void *easy, QDeadlineTimer limit, std::stop_token stop)
    : easy_(easy)
    , socket_(activeSocket(easy))
    , limit_(limit)
    , stop_(std::move(stop))
{
}

void ConnectedStream::hurry(std::chrono::milliseconds limit)
{
    limit_ = std::min(limit_, QDeadlineTimer(limit));
}

QCoro::Task<End> ConnectedStream::send(QByteArray bytes)
{
    End end = CURLE_OK;
    for (qsizetype sent = 0; sent < bytes.size() && end == CURLE_OK;) {
        std::size_t count = 0;
        const CURLcode code = curl().easySend(
            easy_, bytes.constData() + sent, static_cast<std::size_t>(bytes.size() - sent), &count);
        sent += static_cast<qsizetype>(count);
        if (code == CURLE_AGAIN) {
            end = co_await wait(QSocketNotifier::Write);
        } else if (code != CURLE_OK) {
            end = CURLE_SEND_ERROR;
        }
    }
    co_return end;
}

// What arrived earlier may already be in the encryption's own buffer, so try to read before waiting
// for the socket.
QCoro::Task<End> ConnectedStream::receive(QByteArray *into)
{
    std::array<char, kPieceBytes> piece{};
    for (;;) {
        std::size_t count = 0;
        const CURLcode code = curl().easyRecv(easy_, piece.data(), piece.size(), &count);
        if (code == CURLE_OK && count > 0) {
            into->append(piece.data(), static_cast<qsizetype>(count));
            co_return CURLE_OK;
        }
        if (code != CURLE_AGAIN) {
            co_return CURLE_RECV_ERROR;
        }
        const End end = co_await wait(QSocketNotifier::Read);
        if (end != CURLE_OK) {
            co_return end;
        }
    }
}

QCoro::Task<End> ConnectedStream::wait(QSocketNotifier::Type type)
{
    OneShot<End> ready;
    const QSocketNotifier notifier(socket_, type);
    QObject::connect(&notifier, &QSocketNotifier::activated, &notifier,
                     [&ready] { ready.set(CURLE_OK); });
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &timer,
                     [&ready] { ready.set(CURLE_OPERATION_TIMEDOUT); });
    timer.start(static_cast<int>(limit_.remainingTime()));
    const std::stop_callback onStop(stop_, [&ready] { ready.set(std::nullopt); });
    const End end = co_await ready;
    co_return end;
}

} // namespace velmora
