#include "demo/CameraServer.h"

#include "demo/Connection.h"

#include <QHostAddress>
#include <QTcpSocket>

namespace velmora::demo {
namespace {

constexpr int kBacklog = 512; // a program that starts may ask a hundred cameras in one go

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
        // Out of file descriptors the server stops accepting; a client that leaves makes room
        // again.
        QObject::connect(connection, &QObject::destroyed, &server_, &QTcpServer::resumeAccepting);
    }
}

} // namespace velmora::demo
