// Where the desktop's message bus is, and whether it answers.
#pragma once

#include <QLocalSocket>
#include <QString>

#include <chrono>
#include <optional>

namespace velmora {

struct BusPlace
{
    QString name; // a socket's path, or its name where it has none
    QLocalSocket::SocketOption form = QLocalSocket::NoOptions;
};

/// The session bus of this user's desktop, as the environment tells; nothing where there is none,
/// or none that is a local socket.
[[nodiscard]] std::optional<BusPlace> sessionBus();

/// The same of an address list as D-Bus has it: "unix:path=/run/user/1000/bus,guid=…;…".
[[nodiscard]] std::optional<BusPlace> busPlace(const QByteArray &addresses);

/// Whether the bus takes a client in. Waits for it, at most so long; a bus that is not there counts
/// as one that answers, since nobody waits for it.
[[nodiscard]] bool answers(const BusPlace &place, std::chrono::milliseconds limit);

} // namespace velmora
