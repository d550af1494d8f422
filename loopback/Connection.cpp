#include "loopback/Connection.h"

#include <QSslSocket>

#include <sys/socket.h>

namespace velmora::loopback {
namespace {

using namespace std::chrono_literals;

constexpr qsizetype kMaxHeadBytes = 8LL * 1024;
constexpr std::chrono::milliseconds kRequestLimit = 10s;
constexpr std::chrono::milliseconds kCloseLimit = 10s; // without a byte taken

Answer refusal(const QByteArray &status)
{
    return response(status, "Content-Type: text/plain\r\nConnection: close\r\n", status + '\n');
}

} // namespace

Connection::Connection(QTcpSocket *socket, const Answerer &answerer)
    : QObject(socket)
    , socket_(*socket)
    , answerer_(answerer)
{
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer); // the coarse one may be early by a twentieth
    connect(&timer_, &QTimer::timeout, this, [this] { (this->*next_)(); });
    connect(socket, &QTcpSocket::readyRead, this, &Connection::read);
    connect(socket, &QTcpSocket::bytesWritten, this, &Connection::goOn);
    connect(socket, &QTcpSocket::disconnected, &timer_, &QTimer::stop);
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    after(kRequestLimit, &Connection::refuseLateRequest);
}

void Connection::read()
{
    const QByteArray bytes = socket_.readAll();
    if (state_ != State::Reading) {
        return;
    }
    received_ += bytes;
    const QByteArray head = received_.left(kMaxHeadBytes).replace("\r\n", "\n");
    const qsizetype end = head.indexOf("\n\n");
    if (end >= 0) {
        const std::optional<Request> request = parsedRequest(head.first(end));
        answer(request ? answerer_(*request) : refusal("400 Bad Request"));
    } else if (received_.size() >= kMaxHeadBytes) {
        answer(refusal("431 Request Header Fields Too Large"));
    }
}

void Connection::refuseLateRequest()
{
    answer(refusal("408 Request Timeout"));
}

void Connection::answer(const Answer &answer)
{
    state_ = State::Answering;
    received_.clear();
    answer_ = answer;
    after(answer_.delay, &Connection::begin);
}

void Connection::begin()
{
    const bool isHeld = answer_.isHeld && answer_.isHeld();
    if (isHeld || answer_.turns-- > 0) {
        after(0ms, &Connection::begin);
    } else {
        sendPiece();
    }
}

void Connection::sendPiece()
{
    const qsizetype most = answer_.pieceBytes > 0 ? answer_.pieceBytes : answer_.bytes.size();
    socket_.write(answer_.bytes.mid(sentBytes_, most));
    sentBytes_ += most;
    if (sentBytes_ < answer_.bytes.size()) {
        after(answer_.pause, &Connection::sendPiece);
    } else {
        finish();
    }
}

void Connection::finish()
{
    if (!answer_.repeated.isEmpty()) {
        state_ = State::Repeating;
        socket_.write(answer_.repeated);
    } else if (answer_.atEnd == AtEnd::Close) {
        close();
    }
}

void Connection::goOn()
{
    if (state_ == State::Repeating && socket_.bytesToWrite() == 0) {
        socket_.write(answer_.repeated);
    } else if (state_ == State::Closing) {
        after(kCloseLimit, &Connection::abort);
        endSending();
    }
}

void Connection::close()
{
    state_ = State::Closing;
    after(kCloseLimit, &Connection::abort);
    endSending();
}

// Only this direction ends, and the client closes the other: what it still sends to a socket that
// is closed altogether comes back as a reset, and may cost it the answer. TLS has an end of its
// own.
void Connection::endSending()
{
    if (qobject_cast<QSslSocket *>(&socket_) != nullptr) {
        socket_.disconnectFromHost();
    } else if (socket_.bytesToWrite() == 0) {
        ::shutdown(static_cast<int>(socket_.socketDescriptor()), SHUT_WR);
    }
}

void Connection::abort()
{
    socket_.abort();
}

void Connection::after(std::chrono::milliseconds delay, Step step)
{
    next_ = step;
    timer_.start(delay);
}

} // namespace velmora::loopback
