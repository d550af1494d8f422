// Where a running program answers commands run beside it.
#pragma once

#include "capture/ImageStore.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>

#include <map>
#include <optional>

namespace velmora {

/// Name of a program folder's local socket (native path without links), in the kernel's own name
/// space.
[[nodiscard]] QString deskName(const QString &programFolder);

/// True when the process at the other end of a connection belongs to this user.
[[nodiscard]] bool isOwnPeer(const QLocalSocket &socket);

/// Learns that the settings were changed, and reports what this run knows about its cameras and the
/// settings do not. A command is one line: "changed" (answered once acted upon) or "status"; each
/// gets one line of JSON. Only processes of the same user are heard.
class ProgramDesk : public QObject
{
    Q_OBJECT

public:
    /// The store outlives the desk.
    ProgramDesk(const QString &programFolder, ImageStore &store);

    /// Starts answering; if that is not possible, commands do without.
    void open();

Q_SIGNALS:
    /// Another program has changed the settings file.
    void settingsChanged();

private:
    void receive();
    void answer(QLocalSocket &caller);
    [[nodiscard]] QByteArray report() const;

    QString name_;
    QLocalServer server_;
    std::map<CameraAddress, QString> failures_; // the last one of each camera
    std::optional<CameraAddress> loading_;
};

} // namespace velmora
