#include "start/SingleInstance.h"

#include "start/ProgramFolder.h"

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>
#include <QLocalSocket>
#include <QThread>

#include <sys/stat.h>
#include <utility>

namespace velmora {
namespace {

constexpr int kWaitMs = 2000;
constexpr mode_t kUserAlone = 0600;
constexpr unsigned long kLookAgainMs = 20;
constexpr qsizetype kLongestSocketPath = 90; // of the 107 bytes that the system allows

QString lockPath(const QString &programFolder)
{
    return programFolder + QStringLiteral("/Velmora.lock");
}

// A name in a folder that serves several program folders.
QString nameFor(const QString &programFolder)
{
    const QByteArray hash =
        QCryptographicHash::hash(programFolder.toUtf8(), QCryptographicHash::Sha1);
    return QStringLiteral("/velmora-") + QString::fromLatin1(hash.toHex().first(16));
}

// Empty where there is no folder for it.
QString fallbackPath(const QString &programFolder)
{
    const QString folder = runtimeFolder();
    return folder.isEmpty() ? QString() : folder + nameFor(programFolder) + QStringLiteral(".lock");
}

// Native path of the socket for calling the first one; empty where there is no place for it.
QString socketPath(const QString &programFolder)
{
    const QString folder = runtimeFolder();
    const QString path = folder + nameFor(programFolder);
    const bool fits = QFile::encodeName(path).size() <= kLongestSocketPath;
    return folder.isEmpty() || !fits ? QString() : path;
}

// The first one answers the call by hanging up.
bool callFirst(const QByteArray &socketPath)
{
    if (socketPath.isEmpty()) {
        return false;
    }
    QLocalSocket socket;
    socket.connectToServer(QFile::decodeName(socketPath));
    return socket.waitForConnected(kWaitMs) && (socket.state() == QLocalSocket::UnconnectedState ||
                                                socket.waitForDisconnected(kWaitMs));
}

} // namespace

SingleInstance::SingleInstance(QString programFolder)
    : folder_(std::move(programFolder))
{
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *const caller = server_.nextPendingConnection()) {
            connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
            caller->disconnectFromServer();
            Q_EMIT shown();
        }
    });
}

// One that is just starting or ending is asked again: by then it has its socket, or is gone.
Claim SingleInstance::claim(Front front)
{
    const QString socket = front == Front::Windows ? socketPath(folder_) : QString();
    QElapsedTimer waited;
    waited.start();
    while (takeLock(QFile::encodeName(socket)) == LockOutcome::HeldByAnother) {
        if (front == Front::None || holder_.note.isEmpty() || waited.hasExpired(kWaitMs)) {
            return Claim::Refused;
        }
        if (callFirst(holder_.note)) {
            return Claim::Called;
        }
        QThread::msleep(kLookAgainMs);
    }
    if (!socket.isEmpty()) {
        listen(socket);
    }
    return Claim::First;
}

LockOutcome SingleInstance::takeLock(const QByteArray &note)
{
    lock_ = std::make_unique<LockFile>(lockPath(folder_));
    LockAttempt attempt = lock_->take(note);
    if (attempt.outcome == LockOutcome::Impossible) {
        attempt = takeFallback(note, attempt.error);
    }
    holder_ = attempt.holder;
    return attempt.outcome;
}

LockAttempt SingleInstance::takeFallback(const QByteArray &note, std::error_code reason)
{
    trouble_ = QStringLiteral("The program folder %1 cannot be locked by the file Velmora.lock in "
                              "it (%2). The program runs, but its settings may not be kept there, "
                              "and others may run beside it.")
                   .arg(folder_, QString::fromStdString(reason.message()));
    const QString path = fallbackPath(folder_);
    if (path.isEmpty()) {
        return {};
    }
    lock_ = std::make_unique<LockFile>(path);
    return lock_->take(note);
}

// The lock is held, so an existing socket was left by a killed run.
void SingleInstance::listen(const QString &socket)
{
    QLocalServer::removeServer(socket);
    // if this fails, later starts are told that this process is running
    if (server_.listen(socket)) {
        ::chmod(QFile::encodeName(socket).constData(), kUserAlone);
    }
}

std::optional<pid_t> processOn(const QString &programFolder)
{
    std::optional<LockHolder> holder = lockHolder(lockPath(programFolder));
    if (!holder) {
        holder = lockHolder(fallbackPath(programFolder));
    }
    return holder ? std::optional(holder->process) : std::nullopt;
}

} // namespace velmora
