// Notices on the desktop, through its service org.freedesktop.Notifications.
#pragma once

#include <QString>

namespace velmora {

/// Nobody waits for the service: a message goes out, and whatever becomes of it, nothing comes of
/// it here. Where there is no desktop bus, nothing happens.
class DesktopNotices
{
public:
    void show(const QString &text);

private:
    bool isLooked_ = false;
    bool isThere_ = false;
};

} // namespace velmora
