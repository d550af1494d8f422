#include "app/DesktopSession.h"

#include <QEvent>
#include <QGuiApplication>
#include <QSessionManager>

namespace velmora {

DesktopSession::DesktopSession(const QString &folder)
{
    qApp->installEventFilter(this);
    const auto nameFolder = [folder](QSessionManager &session) {
        session.setRestartCommand(session.restartCommand()
                                  << QStringLiteral("--program-folder") << folder);
    };
    connect(qGuiApp, &QGuiApplication::saveStateRequest, this, nameFolder);
}

DesktopSession::~DesktopSession() = default;

bool DesktopSession::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != qApp || event->type() != QEvent::Quit) {
        return false;
    }
    Q_EMIT ended();
    return true;
}

} // namespace velmora
