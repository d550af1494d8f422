#include "app/SingleInstance.h"

#include <QCryptographicHash>
#include <QLocalSocket>

#include <unistd.h>

namespace velmora {
namespace {

constexpr int kWaitMs = 2000;

QString socketName(const QString &programFolder)
{
    const QByteArray key = QByteArray::number(::getuid()) + ':' + programFolder.toUtf8();
    return QStringLiteral("velmora-") +
           QString::fromLatin1(QCryptographicHash::hash(key, QCryptographicHash::Sha1).toHex());
}

} // namespace

SingleInstance::SingleInstance(const QString &programFolder)
    : name_(socketName(programFolder))
{
    server_.setSocketOptions(QLocalServer::AbstractNamespaceOption);
    connect(&server_, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *const caller = server_.nextPendingConnection()) {
            connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
            caller->disconnectFromServer();
            Q_EMIT shown();
        }
    });
}

bool SingleInstance::claim()
{
    if (server_.listen(name_)) {
        return true;
    }
    callFirst();
    return false;
}

// The answer to the call is that the first one hangs up.
void SingleInstance::callFirst() const
{
    QLocalSocket socket;
    socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    socket.connectToServer(name_);
    if (socket.waitForConnected(kWaitMs)) {
        socket.waitForDisconnected(kWaitMs);
    }
}

} // namespace velmora
