// Notices on the desktop, through its service org.freedesktop.Notifications.
#pragma once

#include "health/SessionBus.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

namespace velmora {

/// Nobody waits for the desktop: a message goes out when its bus takes it, and whatever becomes of
/// it, nothing comes of it here. The toolkit's own way to the bus waits for its first answer, which
/// a bus that hangs never gives. The connection is kept, since some desktops take a notice away
/// with the one who sent it.
class DesktopNotices : public QObject
{
    Q_OBJECT

public:
    DesktopNotices();

    /// Where there is no bus, nothing happens.
    void show(const QString &text);

private:
    void listen();
    void sendWaiting();

    QLocalSocket socket_;
    QTimer patience_;
    QStringList waiting_;
    quint32 serial_ = 1;
    bool isTaken_ = false; // the bus has let us in
};

} // namespace velmora
