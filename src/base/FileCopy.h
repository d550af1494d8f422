// Copies a file in pieces, so that a long copy holds nothing up, and shows the copy under its name
// only when it is whole.
#pragma once

#include "base/FileWriter.h"
#include "base/UniqueFd.h"
#include "base/WorkFile.h"

#include <QByteArray>

#include <ctime>
#include <memory>
#include <system_error>

namespace velmora {

/// What the file systems on both sides turned out to support; kept from one copy to the next so
/// that nothing is tried twice.
struct CopyMeans
{
    QByteArray workFolder;    // native path, on the target's file system; made if missing
    bool clones = true;       // the copy shares the source's blocks
    bool copiesItself = true; // the system copies without passing the bytes through the program
    bool unnamedFiles = true; // the target can hold a file without a name, which vanishes on a kill
    std::unique_ptr<char[]> buffer;
};

/// One copy. Like one made by "cp", the new file has the source's permissions, less the process's
/// mask, and the date of the copy. Without finish() nothing of it remains.
class FileCopy
{
public:
    static constexpr qint64 kMostBytes = qint64{1} << 20;

    /// source: native path of an ordinary file or of a link to one; anything else is an error, and
    /// is never waited for. targetFolder: native path. means: outlives the copy.
    FileCopy(const QByteArray &source, const QByteArray &targetFolder, CopyMeans &means);
    Q_DISABLE_COPY_MOVE(FileCopy)
    ~FileCopy() = default;

    /// Copies up to mostBytes (at most kMostBytes) more; false when all are copied, or after an
    /// error. It is an error when the file has changed since its opening: it may still be being
    /// written, so no part of it can be taken for the whole.
    [[nodiscard]] bool copySome(qint64 mostBytes);

    /// The error so far, if any.
    [[nodiscard]] std::error_code error() const { return error_; }

    /// Gives the copy its path, in the target folder; never replaces anything. After AlreadyThere a
    /// different path may be tried.
    StoreResult finish(const QByteArray &target);

private:
    void openTarget(const QByteArray &folder, unsigned mode);
    [[nodiscard]] bool begin();
    [[nodiscard]] bool clone();
    void refuseWhatDoesNotFit();
    void refuseWhatHasChanged();
    [[nodiscard]] qint64 copyPiece(qint64 mostBytes);
    [[nodiscard]] qint64 copyThroughBuffer(qint64 mostBytes);

    CopyMeans &means_;
    UniqueFd source_;
    std::unique_ptr<WorkFile> target_;
    std::error_code error_;
    qint64 bytes_ = 0;       // size of the source; also 0 when the file system does not say
    timespec modified_ = {}; // time of its last change
    qint64 copied_ = 0;
    bool begun_ = false;
};

} // namespace velmora
