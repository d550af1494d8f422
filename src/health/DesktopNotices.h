// Shows notices on the desktop, through its service org.freedesktop.Notifications.
#pragma once

#include "health/SessionBus.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

namespace velmora {

/// Nothing waits for the desktop: a message goes out when its bus takes it, and the outcome does
/// not matter here. The toolkit's own access to the bus waits for its first answer, which a hanging
/// bus never gives. The connection is kept, since some desktops remove a notice along with its
/// sender.
class DesktopNotices : public QObject
{
    Q_OBJECT

public:
    DesktopNotices();

    /// Does nothing where there is no bus.
    void show(const QString &text);

private:
    void listen();
    void sendWaiting();

    QLocalSocket socket_;
    QTimer patience_;
    QStringList waiting_;
    quint32 serial_ = 1;
    bool isTaken_ = false; // the bus has admitted us
};

} // namespace velmora
