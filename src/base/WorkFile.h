// A file being written. No one sees it under its own name before it is whole, no one mistakes it
// for another, and nothing of it remains when the program is killed.
#pragma once

#include "base/UniqueFd.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <sys/types.h>
#include <system_error>

namespace velmora {

/// Has no name at all where the file system supports that. Elsewhere it has a name that no other
/// file can have, and is locked as long as it lives: the lock ends with the process, even where
/// another process cannot see this one.
class WorkFile
{
public:
    enum class Naming {
        WhenWhole, // a working name only where one is needed
        AtOnce,    // a working name from the start
        Refused    // no working name: an error where one would be needed
    };

    static constexpr mode_t kUsualRights = 0666; // less the process's mask

    /// Opens an empty file. folder: native path of a folder on the target's file system.
    explicit WorkFile(const QByteArray &folder, mode_t rights = kUsualRights,
                      Naming naming = Naming::WhenWhole);

    /// The same; a missing folder is made (one level).
    [[nodiscard]] static WorkFile inMadeFolder(const QByteArray &folder,
                                               mode_t rights = kUsualRights,
                                               Naming naming = Naming::WhenWhole);
    WorkFile(WorkFile &&other) noexcept = default;
    WorkFile(const WorkFile &) = delete;
    WorkFile &operator=(const WorkFile &) = delete;
    WorkFile &operator=(WorkFile &&) = delete;

    /// A file that was never given its own name is deleted.
    ~WorkFile();

    /// Why there is no file; none when there is one.
    [[nodiscard]] std::error_code error() const { return error_; }

    /// False for a folder (native path) on another disk, where the file could appear only as a
    /// copy.
    [[nodiscard]] bool isOnDiskOf(const QByteArray &folder) const;

    /// Open for reading and writing.
    [[nodiscard]] int fd() const { return file_.get(); }

    /// True when the file has a working name.
    [[nodiscard]] bool hasName() const { return !path_.isEmpty(); }

    /// The open file, for one that needs no path any more; its working name goes.
    [[nodiscard]] UniqueFd takeFile();

    /// Writes at the end.
    [[nodiscard]] std::error_code write(QByteArrayView bytes) const;

    /// Gives the file its own path and never replaces anything: fails with `file_exists` then,
    /// after which another path may be tried. Where the file system cannot name a nameless file, or
    /// the path is on a different one, the bytes are copied first.
    [[nodiscard]] std::error_code appearAs(const QByteArray &target);

    /// Gives the file the path of another in its folder, replacing it.
    [[nodiscard]] std::error_code replace(const QByteArray &target);

private:
    void openNamed();
    void dropName();
    [[nodiscard]] std::error_code giveName(const QByteArray &target);
    [[nodiscard]] std::error_code copyTo(const WorkFile &copy) const;
    [[nodiscard]] std::error_code appearAsCopy(const QByteArray &folder, const QByteArray &target,
                                               Naming naming) const;
    [[nodiscard]] std::error_code nameAsWorkFile();

    QByteArray folder_;
    mode_t rights_;
    UniqueFd file_{-1};
    QByteArray path_; // the working name; empty if it has none
    std::error_code error_;
};

/// True for the errors of a file system that does not support files without a name.
[[nodiscard]] bool meansNoNamelessFiles(std::error_code error);

/// Deletes the working files in a folder (native path) that no one holds: those of killed runs, on
/// whatever machine or in whatever container they ran. On a file system that several machines may
/// share, those of other machines only when they are a day old.
void clearWorkFiles(const QString &folder);

} // namespace velmora
