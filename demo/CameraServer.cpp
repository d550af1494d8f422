#include "demo/CameraServer.h"

#include "demo/Connection.h"

#include <QHostAddress>
#include <QTcpSocket>

namespace velmora::demo {
namespace {

constexpr int kBacklog = 512; // a program may ask a hundred cameras at once when it starts
// With the backlog well below the usual 1024 file descriptors: if none were left, Qt would spin.
constexpr int kMaxClients = 400;

} // namespace

CameraServer::CameraServer()
{
    server_.setListenBacklogSize(kBacklog);
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { takeClients(); });
}

std::optional<quint16> CameraServer::listen(quint16 port)
{
    const bool listening = server_.listen(QHostAddress(QHostAddress::LocalHost), port);
    return listening ? std::optional(server_.serverPort()) : std::nullopt;
}

void CameraServer::takeClients()
{
    while (QTcpSocket *const socket = server_.nextPendingConnection()) {
        auto *const connection = new Connection(socket, &server_);
        QObject::connect(connection, &QObject::destroyed, &server_, [this] { forgetClient(); });
        ++clients_;
    }
    if (clients_ >= kMaxClients) {
        server_.pauseAccepting();
    }
}

void CameraServer::forgetClient()
{
    --clients_;
    server_.resumeAccepting();
}

} // namespace velmora::demo
