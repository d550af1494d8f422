// A connection opened by libcurl, with its encryption, as a stream of bytes both ways.
#pragma once

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QDeadlineTimer>
#include <QSocketNotifier>

#include <optional>
#include <stop_token>

namespace velmora {

enum class StreamEnd {
    Closed, // by the other side, or broken
    TimedOut,
    Stopped
};

/// Waits only by way of the event loop.
class ConnectedStream
{
public:
    /// easy: connected by TransferLoop::connect(), outlives the stream. Whatever is unfinished at
    /// the limit is given up.
    ConnectedStream(void *easy, QDeadlineTimer limit, std::stop_token stop);

    /// Sends everything; returns the reason if it cannot.
    QCoro::Task<std::optional<StreamEnd>> send(QByteArray bytes);

    /// Appends what has arrived, waiting until something has; returns the reason if nothing more
    /// will. into: belongs to the caller, who waits.
    QCoro::Task<std::optional<StreamEnd>> receive(QByteArray *into);

    /// Shortens the remaining time.
    void hurry(std::chrono::milliseconds limit);

private:
    QCoro::Task<std::optional<StreamEnd>> wait(QSocketNotifier::Type type);

    void *easy_;
    int socket_ = -1;
    QDeadlineTimer limit_;
    std::stop_token stop_;
};

} // namespace velmora
