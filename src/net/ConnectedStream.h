// A connection that libcurl has opened, with its encryption, as bytes in both directions.
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

/// Nothing here waits but by the event loop.
class ConnectedStream
{
public:
    /// easy: connected by TransferLoop::connect(), outlives the stream. What is not done at the
    /// limit is given up.
    ConnectedStream(void *easy, QDeadlineTimer limit, std::stop_token stop);

    /// Sends all; says why when it cannot.
    QCoro::Task<std::optional<StreamEnd>> send(QByteArray bytes);

    /// Appends what has arrived to the bytes, waiting until something has; says why when nothing
    /// will. into: of the caller, which waits.
    QCoro::Task<std::optional<StreamEnd>> receive(QByteArray *into);

    /// Shortens the time that is left.
    void hurry(std::chrono::milliseconds limit);

private:
    QCoro::Task<std::optional<StreamEnd>> wait(QSocketNotifier::Type type);

    void *easy_;
    int socket_ = -1;
    QDeadlineTimer limit_;
    std::stop_token stop_;
};

} // namespace velmora
