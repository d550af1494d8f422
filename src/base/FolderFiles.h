// Questions about single files of a folder that is held open, so that each costs no walk along the
// folder's path.
#pragma once

#include "base/FolderScan.h"
#include "base/UniqueFd.h"

#include <QString>

#include <chrono>
#include <optional>
#include <system_error>

namespace velmora {

enum class FolderLinks { Followed, Refused };

/// What is known of a file by its name.
struct FileTime
{
    std::optional<std::chrono::nanoseconds> modified; // since 1970; none: there is no file
    bool isLink = false;                              // the time is that of what it leads to
};

class FolderFiles
{
public:
    /// path: native. Without a folder there it has no files. A link that stands at the path counts
    /// as a folder unless links are refused.
    explicit FolderFiles(const QString &path, FolderLinks links = FolderLinks::Followed);

    [[nodiscard]] bool isOpen() const { return static_cast<bool>(folder_); }

    /// A reading of this folder, whatever stands at its path by now.
    [[nodiscard]] FolderScan scan(std::size_t bufferBytes = FolderScan::kUsualBuffer) const;

    /// When a file, or the file that a link leads to, was modified. name: native bytes.
    [[nodiscard]] FileTime time(const char *name) const;

    /// Deletes a file of the folder. What is no file itself, a link too, stays, with an error.
    [[nodiscard]] std::error_code remove(const char *name) const;

private:
    UniqueFd folder_;
};

} // namespace velmora
