#include "health/DesktopNotices.h"

#include "health/BusMessage.h"

#include <utility>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 10s; // with a bus that does not admit us
constexpr qsizetype kMostWaiting = 20;
constexpr qint64 kMostUnread = qint64{64} * 1024; // by a bus that has stopped reading

} // namespace

DesktopNotices::DesktopNotices()
{
    patience_.setSingleShot(true);
    patience_.setInterval(kPatience);
    connect(&patience_, &QTimer::timeout, &socket_, &QLocalSocket::abort);
    connect(&socket_, &QLocalSocket::connected, this, [this] { socket_.write(busLogin()); });
    connect(&socket_, &QLocalSocket::readyRead, this, &DesktopNotices::listen);
    connect(&socket_, &QLocalSocket::disconnected, this, [this] { isTaken_ = false; });
}

void DesktopNotices::show(const QString &text)
{
    const auto bus = sessionBus();
    if (!bus) {
        return;
    }
    waiting_.append(text);
    if (waiting_.size() > kMostWaiting) {
        waiting_.removeFirst();
    }
    if (isTaken_) {
        sendWaiting();
    } else if (socket_.state() == QLocalSocket::UnconnectedState) {
        socket_.setSocketOptions(bus->form);
        patience_.start();
        socket_.connectToServer(bus->name);
    }
}

// The first line says whether we are admitted; nothing that follows is of use.
void DesktopNotices::listen()
{
    const QByteArray said = socket_.readAll();
    if (isTaken_) {
        return;
    }
    if (!said.startsWith("OK")) {
        socket_.abort();
        return;
    }
    patience_.stop();
    isTaken_ = true;
    serial_ = 1;
    socket_.write(busHello());
    sendWaiting();
}

void DesktopNotices::sendWaiting()
{
    const QStringList texts = std::exchange(waiting_, {});
    for (const QString &text : texts) {
        if (socket_.bytesToWrite() < kMostUnread) {
            socket_.write(busNotice(++serial_, text.toHtmlEscaped()));
        }
    }
}

} // namespace velmora
