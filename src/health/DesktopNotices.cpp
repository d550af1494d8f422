#include "health/DesktopNotices.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QStringList>
#include <QVariantMap>

namespace velmora {
namespace {

constexpr int kUsualTime = -1; // that it stands, as the desktop has it

// Without an address the library would start a bus of its own.
bool hasBus()
{
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

} // namespace

void DesktopNotices::show(const QString &text)
{
    if (!isLooked_) {
        isLooked_ = true;
        isThere_ = hasBus() && QDBusConnection::sessionBus().isConnected();
    }
    if (!isThere_) {
        return;
    }
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.Notifications"),
        QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
    message << QStringLiteral("Velmora") << 0U << QStringLiteral("velmora")
            << QStringLiteral("Velmora") << text.toHtmlEscaped() << QStringList() << QVariantMap()
            << kUsualTime;
    QDBusConnection::sessionBus().send(message);
}

} // namespace velmora
