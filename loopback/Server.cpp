#include "loopback/Server.h"

#include <QHostAddress>
#include <QSslServer>
#include <QTcpSocket>

#include <algorithm>

namespace velmora::loopback {
namespace {

constexpr int kBacklog = 512; // a program may ask a hundred cameras at once when it starts
// With the backlog well below the usual 1024 file descriptors: if none were left, Qt would spin.
constexpr int kMaxClients = 400;

} // namespace

Server::Server(Answerer answerer, std::unique_ptr<QTcpServer> listener)
    : answerer_(std::move(answerer))
    , listener_(std::move(listener))
{
    listener_->setListenBacklogSize(kBacklog);
    listener_->setMaxPendingConnections(kMaxClients);
    connect(listener_.get(), &QTcpServer::pendingConnectionAvailable, this, &Server::takeClients);
}

bool Server::listen(quint16 port)
{
    return listener_->listen(QHostAddress(QHostAddress::LocalHost), port);
}

QByteArray Server::host() const
{
    return "127.0.0.1:" + QByteArray::number(port());
}

QByteArray Server::url(const QByteArray &path, const QByteArray &userInfo) const
{
    const bool isEncrypted = qobject_cast<const QSslServer *>(listener_.get()) != nullptr;
    return (isEncrypted ? "https://" : "http://") + userInfo + host() + path;
}

void Server::takeClients()
{
    while (QTcpSocket *const socket = listener_->nextPendingConnection()) {
        new Connection(socket, answerer_); // the socket owns it
        connect(socket, &QObject::destroyed, listener_.get(), [this] { forgetClient(); });
        mostAtOnce_ = std::max(mostAtOnce_, ++open_);
    }
    if (open_ >= kMaxClients) {
        listener_->pauseAccepting();
    }
}

void Server::forgetClient()
{
    --open_;
    listener_->resumeAccepting();
}

} // namespace velmora::loopback
