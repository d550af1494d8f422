// Cameras on 127.0.0.1: takes clients, and gives each what one function answers to its request.
#pragma once

#include "loopback/Connection.h"

#include <QObject>
#include <QString>
#include <QTcpServer>

#include <memory>

namespace velmora::loopback {

/// Gives each client a connection of its own, with one answer, until it is destroyed. All run in
/// the event loop of whoever made it.
class Server : public QObject
{
public:
    /// answerer: called once for each request. A QSslServer makes them encrypted cameras.
    explicit Server(Answerer answerer,
                    std::unique_ptr<QTcpServer> listener = std::make_unique<QTcpServer>());

    /// Starts to listen. port: 0 for any free one. False when the port is not available; errorText
    /// says why.
    [[nodiscard]] bool listen(quint16 port);

    /// Why it does not listen, as a text of the system.
    [[nodiscard]] QString errorText() const { return listener_->errorString(); }

    /// Where it listens; 0 before listen().
    [[nodiscard]] quint16 port() const { return listener_->serverPort(); }

    /// "127.0.0.1:port".
    [[nodiscard]] QByteArray host() const;

    /// "http://127.0.0.1:port" + path, or "https://…"; userInfo precedes the host
    /// ("user:password@").
    [[nodiscard]] QByteArray url(const QByteArray &path, const QByteArray &userInfo = {}) const;

    /// Connections now open.
    [[nodiscard]] int openConnections() const { return open_; }

    /// The most connections that were open at the same time.
    [[nodiscard]] int mostAtOnce() const { return mostAtOnce_; }

private:
    void takeClients();
    void forgetClient();

    Answerer answerer_;
    int open_ = 0;
    int mostAtOnce_ = 0;
    std::unique_ptr<QTcpServer> listener_; // owns the connections, which use the others
};

} // namespace velmora::loopback
