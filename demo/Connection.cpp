#include "demo/Connection.h"

#include <sys/socket.h>

namespace velmora::demo {
namespace {

using namespace std::chrono_literals;

constexpr qsizetype kMaxHeadBytes = 8LL * 1024;
constexpr std::chrono::milliseconds kRequestLimit = 10s;
constexpr std::chrono::milliseconds kCloseLimit = 10s;
constexpr std::chrono::milliseconds kSlowPause = 2s;
constexpr std::chrono::milliseconds kDripInterval = 100ms;
constexpr qsizetype kDripPieces = 30;

} // namespace

Connection::Connection(QTcpSocket *socket, QObject *parent)
    : QObject(parent)
    , socket_(socket)
{
    socket_->setParent(this);
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer); // the coarse one may be early by a twentieth
    connect(&timer_, &QTimer::timeout, this, [this] { (this->*next_)(); });
    connect(socket_, &QTcpSocket::readyRead, this, &Connection::readBytes);
    connect(socket_, &QTcpSocket::bytesWritten, this, &Connection::endWhenWritten);
    connect(socket_, &QTcpSocket::disconnected, &timer_, &QTimer::stop);
    connect(socket_, &QTcpSocket::disconnected, this, &QObject::deleteLater);
    after(kRequestLimit, &Connection::refuseLateRequest);
}

void Connection::readBytes()
{
    const QByteArray bytes = socket_->readAll();
    if (state_ != State::Reading) {
        return;
    }
    received_ += bytes;
    const std::optional<qsizetype> length = headLength(received_.left(kMaxHeadBytes));
    if (length) {
        answer(answerTo(parseRequestHead(received_.left(*length)), QDateTime::currentDateTime()));
    } else if (received_.size() >= kMaxHeadBytes) {
        answer(errorAnswer(Status::HeaderTooLarge));
    }
}

void Connection::refuseLateRequest()
{
    answer(errorAnswer(Status::RequestTimeout));
}

void Connection::answer(const Answer &answer)
{
    state_ = State::Answering;
    timer_.stop();
    received_.clear();
    answer_ = answer;
    switch (answer_.delivery) {
    case Delivery::AtOnce:
        sendAll();
        break;
    case Delivery::Late:
        after(kSlowPause, &Connection::sendAll);
        break;
    case Delivery::Dripped:
        sendHeadAndDrip();
        break;
    case Delivery::Never:
        break;
    }
}

void Connection::sendAll()
{
    socket_->write(answer_.head + answer_.body);
    closeSoon();
}

void Connection::sendHeadAndDrip()
{
    socket_->write(answer_.head);
    sendPiece();
}

void Connection::sendPiece()
{
    const qsizetype pieceBytes = answer_.body.size() / kDripPieces + 1;
    socket_->write(answer_.body.mid(sentBytes_, pieceBytes));
    sentBytes_ += pieceBytes;
    if (sentBytes_ < answer_.body.size()) {
        after(kDripInterval, &Connection::sendPiece);
    } else {
        closeSoon();
    }
}

void Connection::closeSoon()
{
    state_ = State::Closing;
    after(kCloseLimit, &Connection::abort);
}

// Closes only the sending side: closing both while the client still sends would make the system
// discard what the client has not read yet.
void Connection::endWhenWritten()
{
    if (state_ == State::Closing && socket_->bytesToWrite() == 0) {
        ::shutdown(static_cast<int>(socket_->socketDescriptor()), SHUT_WR);
    }
}

void Connection::abort()
{
    socket_->abort();
}

void Connection::after(std::chrono::milliseconds delay, Step step)
{
    next_ = step;
    timer_.start(delay);
}

} // namespace velmora::demo
