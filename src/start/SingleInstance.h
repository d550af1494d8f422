// Allows one running program per program folder.
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
    None // it captures without windows
};

enum class Claim {
    First,  // the folder is this process's
    Called, // another process's, whose window comes to the front
    Refused // another process's
};

/// The first process to claim a folder gets it; later ones ask that one to come to the front, and
/// exit. The claim is a lock on the file Velmora.lock in the folder, so it ends with the process,
/// however that ends, and holds wherever the folder is seen from. Where the folder cannot hold a
/// lock (it is not writable, or someone else's file is in the way), one in the user's runtime
/// folder is used instead.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    /// programFolder: native path without links.
    explicit SingleInstance(QString programFolder);

    [[nodiscard]] Claim claim(Front front);

    /// The program is ending and has no window to show any more: a call is refused. The caller
    /// tries again for two seconds, and then starts or learns that the folder is in use.
    void stopAnswering() { server_.close(); }

    /// The process that has the folder, after a claim that was not the first; 0 when it does not
    /// say.
    [[nodiscard]] pid_t holder() const { return holder_.process; }

    /// A sentence for the user when the folder itself could not be locked, else empty.
    [[nodiscard]] const QString &trouble() const { return trouble_; }

Q_SIGNALS:
    /// The program was started again; the window is to come to the front.
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

/// The process running on a program folder (native path without links), 0 when it does not give its
/// number; nothing when there is none. Disturbs no one.
[[nodiscard]] std::optional<pid_t> processOn(const QString &programFolder);

} // namespace velmora
