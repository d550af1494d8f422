// Writes files so that they appear whole: first under a working name or none, then given their own.
// At every instant, even after a kill or on a full disk, a path holds the whole old file, the whole
// new one, or nothing.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <span>
#include <system_error>

namespace velmora {

/// What became of a file that was to be stored.
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

/// The result for a file that appeared under its name, or the reason why it did not.
StoreResult storeResult(std::error_code error);

/// Writes a new file and never replaces one. workFolder: native path of a folder on the same file
/// system, made when missing (one level). target: native path of the new file.
StoreResult storeNewFile(const QString &workFolder, const QString &target, QByteArrayView bytes);

/// Where a file appears that is to replace whatever is at a path: where a link leads.
struct ReplacedPlace
{
    QByteArray path;         // native
    std::error_code refusal; // what is there is not an ordinary file, or a link leads nowhere
};

[[nodiscard]] ReplacedPlace placeToReplace(const QString &path);

/// Replaces a file's text; a missing file is made for its owner alone, who is the folder's when
/// the administrator makes it. A link is followed; owner and permissions are kept. The file system
/// writes the data out before the name changes, so not even a power cut empties the file. What is
/// there and not an ordinary file, or a link that leads nowhere, is an error and stays.
[[nodiscard]] std::error_code replaceFile(const QString &path, QByteArrayView bytes);

/// The same with a text in several pieces, in order.
[[nodiscard]] std::error_code replaceFile(const QString &path,
                                          std::span<const QByteArrayView> pieces);

} // namespace velmora
