// Where a running program answers commands run beside it.
#pragma once

#include "capture/ImageStore.h"
#include "health/HealthBook.h"

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
    /// Table and store outlive the desk.
    ProgramDesk(const QString &programFolder, const CameraTable &table, ImageStore &store);

    /// Reports which cameras are late from now on; the file about them may be unwritable. health:
    /// outlives the desk, or is followed by null.
    void follow(const HealthBook *health) { health_ = health; }

    /// Starts answering; if that is not possible, commands do without.
    void open();

Q_SIGNALS:
    /// Another program has changed the settings file.
    void settingsChanged();

private:
    /// A row's last failure, and the address that failed: another is another camera.
    struct Asked
    {
        QString url;
        QString failure;
    };

    void takeBegin(CameraAddress camera);
    void receive();
    void answer(QLocalSocket &caller);
    [[nodiscard]] QByteArray report() const;

    QString name_;
    const CameraTable &table_;
    const HealthBook *health_ = nullptr;
    QLocalServer server_;
    std::map<CameraAddress, Asked> asked_;
    std::optional<CameraAddress> loading_;
};

} // namespace velmora
