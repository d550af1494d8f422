// A file in the making. Nobody sees it under its own name before it is whole, nobody takes it for
// another's, and nothing of it stays when the program is killed.
#pragma once

#include "base/UniqueFd.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <sys/types.h>
#include <system_error>

namespace velmora {

/// Has no name at all where the file system can keep such a file. Elsewhere it has one that no
/// other file can have, and is locked as long as it lives: the lock ends with the process, also
/// where another cannot see that process.
class WorkFile
{
public:
    enum class Naming {
        WhenWhole, // a working name only where there must be one
        AtOnce,    // a working name from the begin
        Refused    // no working name: an error where there must be one
    };

    static constexpr mode_t kUsualRights = 0666; // of which the process's mask takes its part

    /// Opens an empty file. folder: native path of a folder on the file system of the file to be.
    explicit WorkFile(const QByteArray &folder, mode_t rights = kUsualRights,
                      Naming naming = Naming::WhenWhole);

    /// The same; the folder is made when missing (one level).
    [[nodiscard]] static WorkFile inMadeFolder(const QByteArray &folder,
                                               mode_t rights = kUsualRights,
                                               Naming naming = Naming::WhenWhole);
    WorkFile(WorkFile &&other) noexcept = default;
    WorkFile(const WorkFile &) = delete;
    WorkFile &operator=(const WorkFile &) = delete;
    WorkFile &operator=(WorkFile &&) = delete;

    /// A file that was given no name of its own goes.
    ~WorkFile();

    /// Why there is no file; none when there is one.
    [[nodiscard]] std::error_code error() const { return error_; }

    /// Open for reading and writing.
    [[nodiscard]] int fd() const { return file_.get(); }

    /// True when the file stands under a working name.
    [[nodiscard]] bool hasName() const { return !path_.isEmpty(); }

    /// Writes at the end.
    [[nodiscard]] std::error_code write(QByteArrayView bytes) const;

    /// Gives the file its own path and never replaces anything: `file_exists` then, after which
    /// another path may be tried. Where the file system cannot name a nameless file, and where the
    /// path lies on another one, the bytes are copied first.
    [[nodiscard]] std::error_code appearAs(const QByteArray &target);

    /// Gives the file, made with a name, the path of another, which goes.
    [[nodiscard]] std::error_code replace(const QByteArray &target);

private:
    void openNamed();
    [[nodiscard]] std::error_code giveName(const QByteArray &target);
    [[nodiscard]] std::error_code appearAsCopy(const QByteArray &target, WorkFile copy) const;

    QByteArray folder_;
    mode_t rights_;
    UniqueFd file_{-1};
    QByteArray path_; // the working name; empty while there is none
    std::error_code error_;
};

/// True for what a file system answers that cannot keep a file without a name.
[[nodiscard]] bool meansNoNamelessFiles(std::error_code error);

/// Deletes the working files in a folder (native path) that nobody holds: those of killed runs,
/// whichever machine or container they ran in.
void clearWorkFiles(const QString &folder);

} // namespace velmora
