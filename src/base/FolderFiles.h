// Questions about single files of a folder that is held open, so that each costs no walk along the
// folder's path.
#pragma once

#include "base/UniqueFd.h"

#include <QString>

#include <chrono>
#include <optional>

namespace velmora {

class FolderFiles
{
public:
    /// path: native. Without a folder there it has no files.
    explicit FolderFiles(const QString &path);

    /// Modification time since 1970 of a file, or of the file that a link leads to; nothing when
    /// no file of this name is there. name: native bytes.
    [[nodiscard]] std::optional<std::chrono::nanoseconds> modified(const char *name) const;

private:
    UniqueFd folder_;
};

} // namespace velmora
