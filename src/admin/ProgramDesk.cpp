#include "admin/ProgramDesk.h"

#include "cameras/CameraChoices.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <chrono>
#include <sys/socket.h>
#include <unistd.h>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 2s; // with a caller that sends nothing
constexpr qint64 kMostLine = 64;

// Since when each of them is late, in seconds since 1970.
QJsonObject lateCameras(const HealthBook &health)
{
    QJsonObject late;
    for (const CameraAddress camera : health.cameras()) {
        if (const auto since = health.camera(camera).lateSince) {
            late.insert(cameraText(camera), static_cast<qint64>(since->time_since_epoch().count()));
        }
    }
    return late;
}

} // namespace

QString deskName(const QString &programFolder)
{
    const QByteArray key = QByteArray::number(::getuid()) + ":desk:" + programFolder.toUtf8();
    return QStringLiteral("velmora-desk-") +
           QString::fromLatin1(QCryptographicHash::hash(key, QCryptographicHash::Sha1).toHex());
}

bool isOwnPeer(const QLocalSocket &socket)
{
    struct ucred peer = {};
    socklen_t size = sizeof peer;
    const auto fd = static_cast<int>(socket.socketDescriptor());
    return ::getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::getuid();
}

ProgramDesk::ProgramDesk(const QString &programFolder, const CameraTable &table, ImageStore &store)
    : name_(deskName(programFolder))
    , table_(table)
{
    connect(&store, &ImageStore::loadBegan, this, &ProgramDesk::takeBegin);
    connect(&store, &ImageStore::loaded, this, [this] { loading_.reset(); });
    connect(
        &store, &ImageStore::cameraFailed, this,
        [this](CameraAddress camera, const QString &reason) { asked_[camera].failure = reason; });
    connect(&store, &ImageStore::cameraAnswered, this,
            [this](CameraAddress camera) { asked_[camera].failure.clear(); });
    connect(&server_, &QLocalServer::newConnection, this, &ProgramDesk::receive);
}

void ProgramDesk::takeBegin(CameraAddress camera)
{
    loading_ = camera;
    Asked &asked = asked_[camera];
    const QString url = table_.url(camera);
    if (asked.url != url) {
        asked = {url, {}};
    }
}

void ProgramDesk::open()
{
    server_.setSocketOptions(QLocalServer::AbstractNamespaceOption);
    server_.listen(name_);
}

void ProgramDesk::receive()
{
    while (QLocalSocket *const caller = server_.nextPendingConnection()) {
        connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
        QTimer::singleShot(kPatience, caller, &QLocalSocket::abort);
        if (!isOwnPeer(*caller)) {
            caller->abort();
            continue;
        }
        connect(caller, &QLocalSocket::readyRead, this, [this, caller] { answer(*caller); });
    }
}

void ProgramDesk::answer(QLocalSocket &caller)
{
    if (!caller.canReadLine()) {
        if (caller.bytesAvailable() > kMostLine) {
            caller.abort();
        }
        return;
    }
    const QByteArray command = caller.readLine(kMostLine).trimmed();
    if (command == "changed") {
        Q_EMIT settingsChanged();
    }
    caller.write(report() + '\n');
    caller.disconnectFromServer();
}

QByteArray ProgramDesk::report() const
{
    QJsonObject failures;
    for (const auto &[camera, asked] : asked_) {
        if (!asked.failure.isEmpty() && asked.url == table_.url(camera)) {
            failures.insert(cameraText(camera), asked.failure);
        }
    }
    QJsonObject report{{QStringLiteral("failures"), failures}};
    if (health_ != nullptr && health_->isLoaded()) {
        report.insert(QStringLiteral("late"), lateCameras(*health_));
    }
    if (loading_) {
        report.insert(QStringLiteral("loading"), cameraText(*loading_));
    }
    return QJsonDocument(report).toJson(QJsonDocument::Compact);
}

} // namespace velmora
