// A lock that ends with the process that holds it, however that ends: an advisory lock on a file
// that its holder alone may open.
#pragma once

#include "base/UniqueFd.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <sys/types.h>
#include <system_error>

namespace velmora {

/// Who holds a lock, as the file of it says.
struct LockHolder
{
    pid_t process = 0; // 0 when it does not say
    QByteArray note;   // what the holder wants others to know; one line
};

enum class LockOutcome {
    Taken,
    HeldByAnother,
    Impossible // no lock can be had there, by anybody
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
    /// path: native path of the lock's file, which is made for this user alone (0600). A link, a
    /// pipe or a file of a stranger in its place is never opened or waited for.
    explicit LockFile(const QString &path);
    Q_DISABLE_COPY_MOVE(LockFile)

    /// Gives the lock up and takes its file away.
    ~LockFile();

    /// Once it is taken, the file tells others this process and the note.
    LockAttempt take(const QByteArray &note);

private:
    QByteArray path_;
    std::optional<UniqueFd> file_; // open while the lock is held
};

/// Who holds the lock of that file; nothing when nobody does. Takes no lock, so that it disturbs
/// nobody. Native path.
[[nodiscard]] std::optional<LockHolder> lockHolder(const QString &path);

} // namespace velmora
