// Files that come into being whole: written under a working name first, then given their own. At
// every instant, also under a kill or on a full disk, a path holds the whole old file, the whole
// new one, or nothing.
#pragma once

#include <QByteArrayView>
#include <QString>

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

/// Writes a new file and never replaces one.
/// workFolder: native path of a folder on the same file system, made when missing (one level).
/// target: native path of the file to be.
StoreResult storeNewFile(const QString &workFolder, const QString &target, QByteArrayView bytes);

/// Replaces a file by another text, or makes it; a link is followed, the permissions are kept. The
/// file system writes the data out before the name changes, so a power cut does not empty the file
/// either.
[[nodiscard]] std::error_code replaceFile(const QString &path, QByteArrayView bytes);

/// Path of a new working file in a folder, a name that clearWorkFiles() knows. Native bytes.
[[nodiscard]] QByteArray workFileName(const QByteArray &folder);

/// Gives a file another path on its file system and never replaces one: file_exists then. Native
/// bytes.
[[nodiscard]] std::error_code renameToNew(const QByteArray &from, const QByteArray &to);

/// Deletes the working files that a killed run left in a folder (native path).
void clearWorkFiles(const QString &folder);

} // namespace velmora
