// Files that come into being whole: written under a working name or none first, then given their
// own. At every instant, also under a kill or on a full disk, a path holds the whole old file, the
// whole new one, or nothing.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <span>
#include <system_error>

namespace velmora {

/// What became of a file to be stored.
enum class StoreOutcome {
    Stored,
    AlreadyThere, // a file of that name exists; it was left alone
    Failed
};

struct [[nodiscard]] StoreResult
{
    StoreOutcome outcome = StoreOutcome::Failed;
    std::error_code error; // set when outcome is Failed
};

/// What it means that a file appeared under its name, or why it did not.
StoreResult storeResult(std::error_code error);

/// Writes a new file and never replaces one.
/// workFolder: native path of a folder on the same file system, made when missing (one level).
/// target: native path of the file to be.
StoreResult storeNewFile(const QString &workFolder, const QString &target, QByteArrayView bytes);

/// Replaces a file by another text, or makes it, for its owner alone; a link is followed, the
/// permissions are kept. The file system writes the data out before the name changes, so a power
/// cut does not empty the file either.
[[nodiscard]] std::error_code replaceFile(const QString &path, QByteArrayView bytes);

/// The same by a text that comes in pieces, one behind the other.
[[nodiscard]] std::error_code replaceFile(const QString &path,
                                          std::span<const QByteArrayView> pieces);

} // namespace velmora
