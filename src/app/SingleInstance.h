// One running program per program folder.
#pragma once

#include "base/LockFile.h"

#include <QLocalServer>
#include <QObject>

#include <memory>
#include <optional>

namespace velmora {

/// What this process can bring to the front.
enum class Front {
    Windows,
    None // captures without windows
};

enum class Claim {
    First,  // the folder is this process's
    Called, // another one's, whose window comes to the front
    Refused // another one's
};

/// The first to claim a folder serves it; later ones ask it to come to the front and go. The claim
/// is a lock on the file Velmora.lock in the folder, so it ends with the process however that ends
/// and holds wherever the folder is seen from. Where no lock can be had in the folder (nothing may
/// be written there, somebody else's file is in the way), one in the user's runtime folder stands
/// in.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    /// programFolder: native path without links in it.
    explicit SingleInstance(QString programFolder);

    [[nodiscard]] Claim claim(Front front);

    /// The process that has the folder, after a claim that was not the first; 0 when it does not
    /// say.
    [[nodiscard]] pid_t holder() const { return holder_.process; }

    /// A sentence for the user when the folder itself could not be locked, else empty.
    [[nodiscard]] const QString &trouble() const { return trouble_; }

Q_SIGNALS:
    /// Another start was made; the window is to come to the front.
    void shown();

private:
    [[nodiscard]] LockOutcome takeLock(const QByteArray &note);
    [[nodiscard]] LockAttempt takeFallback(const QByteArray &note, std::error_code reason);
    void listen(const QString &socket);

    QString folder_;
    std::unique_ptr<LockFile> lock_;
    LockHolder holder_;
    QString trouble_;
    QLocalServer server_;
};

/// The process that runs on a program folder (native path without links in it), 0 when it does not
/// say its number; nothing when none runs. Disturbs nobody.
[[nodiscard]] std::optional<pid_t> processOn(const QString &programFolder);

} // namespace velmora
