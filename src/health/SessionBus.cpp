#include "health/SessionBus.h"

#include "health/BusMessage.h"

#include <QDeadlineTimer>
#include <QFile>

namespace velmora {
namespace {

constexpr QByteArrayView kUnix("unix:");

std::optional<BusPlace> placeOf(const QByteArray &address)
{
    const QList<QByteArray> entries = address.sliced(kUnix.size()).split(',');
    for (const QByteArray &entry : entries) {
        const qsizetype equals = entry.indexOf('=');
        const QByteArray key = entry.first(std::max<qsizetype>(0, equals));
        const QString value =
            QFile::decodeName(QByteArray::fromPercentEncoding(entry.sliced(equals + 1)));
        if (key == "path") {
            return BusPlace{value, QLocalSocket::NoOptions};
        }
        if (key == "abstract") {
            return BusPlace{value, QLocalSocket::AbstractNamespaceOption};
        }
    }
    return std::nullopt;
}

// Waits until the bus has sent more than before; false when it does not.
bool hears(QLocalSocket &socket, const QDeadlineTimer &deadline)
{
    const bool heard = socket.waitForReadyRead(static_cast<int>(deadline.remainingTime()));
    socket.readAll();
    return heard;
}

} // namespace

std::optional<BusPlace> busPlace(const QByteArray &addresses)
{
    const QList<QByteArray> list = addresses.split(';');
    for (const QByteArray &address : list) {
        if (address.startsWith(kUnix)) {
            if (const auto place = placeOf(address)) {
                return place;
            }
        }
    }
    return std::nullopt;
}

std::optional<BusPlace> sessionBus()
{
    const QByteArray addresses = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (!addresses.isEmpty()) {
        return busPlace(addresses);
    }
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    return QFile::exists(usual) ? std::optional(BusPlace{usual}) : std::nullopt;
}

bool answers(const BusPlace &place, std::chrono::milliseconds limit)
{
    const QDeadlineTimer deadline(limit);
    QLocalSocket socket;
    socket.setSocketOptions(place.form);
    socket.connectToServer(place.name);
    if (!socket.waitForConnected(static_cast<int>(deadline.remainingTime()))) {
        return !deadline.hasExpired();
    }
    socket.write(busLogin());
    if (!hears(socket, deadline)) {
        return false;
    }
    socket.write(busHello());
    return hears(socket, deadline);
}

} // namespace velmora
