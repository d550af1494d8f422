// A lock that ends with the process holding it, however that ends: an advisory lock on a file that
// only its holder may open.
#pragma once

#include "base/UniqueFd.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <sys/types.h>
#include <system_error>

namespace velmora {

/// The holder of a lock, as its file names it.
struct LockHolder
{
    pid_t process = 0; // 0 when the file does not say, or when its number is of another container
    QByteArray note;   // what the holder wants others to know; one line
};

enum class LockOutcome {
    Taken,
    HeldByAnother,
    Impossible // no lock can be had there at all
};

struct [[nodiscard]] LockAttempt
{
    LockOutcome outcome = LockOutcome::Impossible;
    LockHolder holder;     // when another holds it
    std::error_code error; // why it is impossible
};

class LockFile
{
public:
    /// path: native path of the lock file, which is made for this user alone (0600). A link, a pipe
    /// or a stranger's file in its place is never opened or waited for.
    explicit LockFile(const QString &path);
    Q_DISABLE_COPY_MOVE(LockFile)

    /// Releases the lock and removes its file.
    ~LockFile();

    /// Once the lock is taken, its file shows others this process's number and the note.
    LockAttempt take(const QByteArray &note);

private:
    QByteArray path_;
    std::optional<UniqueFd> file_; // open while the lock is held
};

/// The holder of that file's lock; nothing when it is free. Takes no lock, so it gets in no one's
/// way. Native path.
[[nodiscard]] std::optional<LockHolder> lockHolder(const QString &path);

} // namespace velmora
