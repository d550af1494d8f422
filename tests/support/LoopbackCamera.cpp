#include "support/LoopbackCamera.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QSslServer>
#include <QTcpSocket>
#include <QTimer>

#include <stdexcept>

namespace velmora::test {
namespace {

constexpr int kManyConnections = 500;

CameraRequest parsed(const QByteArray &head)
{
    QList<QByteArray> lines = head.trimmed().split('\n');
    const QList<QByteArray> words = lines.takeFirst().trimmed().split(' ');
    CameraRequest request{words.value(0), words.value(1), words.value(2), {}};
    for (const QByteArray &line : lines) {
        const qsizetype colon = line.indexOf(':');
        request.headers.emplace_back(line.left(colon).trimmed(), line.mid(colon + 1).trimmed());
    }
    return request;
}

} // namespace

/// One client: reads its request, then sends the answer. Lives as long as the socket.
class LoopbackCamera::Connection : public QObject
{
public:
    Connection(QTcpSocket *socket, LoopbackCamera &camera)
        : QObject(socket)
        , socket_(*socket)
        , camera_(camera)
    {
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connect(socket, &QTcpSocket::readyRead, this, &Connection::read);
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::bytesWritten, this, &Connection::repeat);
        connect(&drip_, &QTimer::timeout, this, &Connection::sendByte);
        drip_.setTimerType(Qt::PreciseTimer);
        ++camera_.open_;
        camera_.mostAtOnce_ = std::max(camera_.mostAtOnce_, camera_.open_);
    }

    Q_DISABLE_COPY_MOVE(Connection)

    ~Connection() override { --camera_.open_; }

private:
    void read()
    {
        head_ += socket_.readAll();
        const qsizetype end = head_.indexOf("\r\n\r\n");
        if (end < 0) {
            return;
        }
        answer_ = camera_.take(parsed(head_.first(end)));
        head_.clear();
        held_.start();
        QTimer::singleShot(answer_.delay, this, &Connection::send);
    }

    void send()
    {
        if (answer_.turns-- > 0) {
            QTimer::singleShot(0, this, &Connection::send);
            return;
        }
        camera_.longestHeld_ =
            std::max(camera_.longestHeld_, std::chrono::milliseconds{held_.elapsed()});
        if (answer_.drip.count() > 0) {
            drip_.start(answer_.drip);
            return;
        }
        socket_.write(answer_.bytes);
        finish();
    }

    void sendByte()
    {
        socket_.write(answer_.bytes.first(1));
        answer_.bytes.remove(0, 1);
        if (answer_.bytes.isEmpty()) {
            drip_.stop();
            finish();
        }
    }

    void finish()
    {
        sent_ = true;
        if (!answer_.repeated.isEmpty()) {
            repeat();
        } else if (answer_.atEnd == AtEnd::Close) {
            socket_.disconnectFromHost();
        }
    }

    void repeat()
    {
        if (sent_ && !answer_.repeated.isEmpty() && socket_.bytesToWrite() == 0) {
            socket_.write(answer_.repeated);
        }
    }

    QTcpSocket &socket_;
    LoopbackCamera &camera_;
    QByteArray head_;
    CameraAnswer answer_;
    QTimer drip_;
    QElapsedTimer held_;
    bool sent_ = false;
};

QByteArray CameraRequest::header(QByteArrayView name) const
{
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0) {
            return value;
        }
    }
    return {};
}

LoopbackCamera::LoopbackCamera(std::unique_ptr<QTcpServer> server)
    : server_(std::move(server))
{
    server_->setListenBacklogSize(kManyConnections);
    server_->setMaxPendingConnections(kManyConnections);
    connect(server_.get(), &QTcpServer::pendingConnectionAvailable, this, &LoopbackCamera::accept);
    if (!server_->listen(QHostAddress::LocalHost)) {
        throw std::runtime_error("the loopback camera cannot listen");
    }
}

void LoopbackCamera::answer(const QByteArray &path, const CameraAnswer &answer)
{
    answers_.insert(path, answer);
}

QByteArray LoopbackCamera::host() const
{
    return "127.0.0.1:" + QByteArray::number(port());
}

QByteArray LoopbackCamera::url(const QByteArray &path, const QByteArray &userInfo) const
{
    const bool isEncrypted = qobject_cast<const QSslServer *>(server_.get()) != nullptr;
    return (isEncrypted ? "https://" : "http://") + userInfo + host() + path;
}

void LoopbackCamera::accept()
{
    while (QTcpSocket *const socket = server_->nextPendingConnection()) {
        new Connection(socket, *this); // the socket owns it
    }
}

CameraAnswer LoopbackCamera::take(const CameraRequest &request)
{
    requests_.append(request);
    const auto found = answers_.constFind(request.path);
    if (found == answers_.constEnd()) {
        return response("404 Not Found", "Content-Type: text/html\r\n", QByteArray(5000, 'n'));
    }
    const bool open = opens(found->lock, request.header("Authorization"), request.path);
    return open ? *found : askForUser(found->lock.kind);
}

QByteArray refusedUrl(const QByteArray &path)
{
    const LoopbackCamera gone;
    return gone.url(path);
}

} // namespace velmora::test
