// Queries about single files of a folder that is held open, so that none has to walk the folder's
// path again.
#pragma once

#include "base/FolderScan.h"
#include "base/UniqueFd.h"

#include <QString>

#include <chrono>
#include <optional>
#include <system_error>

namespace velmora {

enum class FolderLinks { Followed, Refused };

/// What is known about a file by its name.
struct FileTime
{
    std::optional<std::chrono::nanoseconds> modified; // since 1970; none if there is no file
    bool isLink = false;                              // the time is that of its target
};

class FolderFiles
{
public:
    /// path: native. A folder that is missing has no files. A link at the path counts as a folder
    /// unless links are refused.
    explicit FolderFiles(const QString &path, FolderLinks links = FolderLinks::Followed);

    [[nodiscard]] bool isOpen() const { return static_cast<bool>(folder_); }

    /// Scans this very folder, whatever its path now leads to.
    [[nodiscard]] FolderScan scan(std::size_t bufferBytes = FolderScan::kUsualBuffer) const;

    /// When a file, or a link's target, was modified. name: native bytes.
    [[nodiscard]] FileTime time(const char *name) const;

    /// True when both folders are on the same disk; false when that cannot be told.
    [[nodiscard]] bool isOnDiskOf(const FolderFiles &other) const;

    /// True while the folder has anything of that name.
    [[nodiscard]] bool has(const char *name) const;

    /// True for a file of the folder that has no other name, so that deleting it frees its room.
    [[nodiscard]] bool isOnlyName(const char *name) const;

    /// Deletes a file of the folder. Anything but a file, a link included, stays and gives an
    /// error.
    [[nodiscard]] std::error_code remove(const char *name) const;

private:
    UniqueFd folder_;
};

} // namespace velmora
