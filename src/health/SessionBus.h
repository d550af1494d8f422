// Where the desktop's message bus is, and whether it answers.
#pragma once

#include <QLocalSocket>
#include <QString>

#include <chrono>
#include <optional>

namespace velmora {

struct BusPlace
{
    QString name; // the path of the socket, or its abstract name
    QLocalSocket::SocketOption form = QLocalSocket::NoOptions;
};

/// The session bus of this user's desktop, from the environment; nothing if there is none, or if it
/// is not a local socket.
[[nodiscard]] std::optional<BusPlace> sessionBus();

/// The same from an address list in the form of D-Bus: "unix:path=/run/user/1000/bus,guid=…;…".
[[nodiscard]] std::optional<BusPlace> busPlace(const QByteArray &addresses);

/// Whether the bus admits a client. Waits for it up to the limit; a bus that does not exist counts
/// as one that answers, since nothing waits for it.
[[nodiscard]] bool answers(const BusPlace &place, std::chrono::milliseconds limit);

} // namespace velmora
