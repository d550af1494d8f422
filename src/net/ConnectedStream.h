// A connection opened by libcurl, with its encryption, as a stream of bytes both ways.
#pragma once

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QDeadlineTimer>
#include <QSocketNotifier>

#include <optional>
#include <stop_token>

namespace velmora {

/// Waits only by way of the event loop. Like a transfer, each step gives its code (CURLcode), or
/// nothing when a stop was requested.
class ConnectedStream
{
public:
    /// easy: connected by TransferLoop::connect(), outlives the stream. Whatever is unfinished at
    /// the limit is given up.
    ConnectedStream(void *easy, QDeadlineTimer limit, std::stop_token stop);

    /// Sends everything.
    QCoro::Task<std::optional<int>> send(QByteArray bytes);

    /// Appends what has arrived, waiting until something has. into: belongs to the caller, who
    /// waits.
    QCoro::Task<std::optional<int>> receive(QByteArray *into);

    /// Shortens the remaining time.
    void hurry(std::chrono::milliseconds limit);

private:
    QCoro::Task<std::optional<int>> wait(QSocketNotifier::Type type);

    void *easy_;
    int socket_ = -1;
    QDeadlineTimer limit_;
    std::stop_token stop_;
};

} // namespace velmora
