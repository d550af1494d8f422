// Listens for the clients of the demonstration cameras. It is reachable from this machine only.
#pragma once

#include <QString>
#include <QTcpServer>

#include <optional>

namespace velmora::demo {

class CameraServer
{
public:
    CameraServer();

    /// Starts to listen on 127.0.0.1 and returns the port. port: 0 for any free one. Nothing when
    /// the port is not available; errorText says why.
    [[nodiscard]] std::optional<quint16> listen(quint16 port);

    [[nodiscard]] QString errorText() const { return server_.errorString(); }

private:
    void takeClients();
    void forgetClient();

    QTcpServer server_;
    int clients_ = 0;
};

} // namespace velmora::demo
