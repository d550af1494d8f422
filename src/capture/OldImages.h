// Finds and deletes the images of one camera folder that are older than a month.
#pragma once

#include "base/Clock.h"
#include "base/FolderFiles.h"

#include <QByteArray>

#include <optional>
#include <system_error>

namespace velmora {

/// Works in steps of some ten files: call lookSome() until it returns false, then, if the clock can
/// be trusted, deleteSome() likewise. Only files named like captured images are touched, and never
/// the newest of them, nor any once the newest has gone. The folder outlives this object.
class OldImages
{
public:
    /// local, utc: the clock's time. Names hold the dates given by the cameras, in UTC, and those
    /// of imported files, in local time.
    OldImages(const FolderFiles &folder, WallTime local, WallTime utc);

    bool lookSome();
    bool deleteSome();

    /// False when the folder could not be read to its end, so that the newest image is not known.
    [[nodiscard]] bool isComplete() const { return look_.isOpen() && !look_.hasFailed(); }

    /// False when the newest image is dated later than the clock: then the clock is wrong and
    /// nothing may be deleted by it.
    [[nodiscard]] bool isClockPlausible() const;

    /// Nothing if there is no image.
    [[nodiscard]] std::optional<WallTime> newest() const { return newest_; }

    [[nodiscard]] const QByteArray &newestName() const { return newestName_; }

    /// Images dated earlier are deleted.
    [[nodiscard]] WallTime limit() const { return limit_; }

    [[nodiscard]] int deleted() const { return deleted_; }

    [[nodiscard]] int failed() const { return failed_; }

    /// The error of the last failed deletion.
    [[nodiscard]] std::error_code error() const { return error_; }

private:
    void look(QByteArrayView name);
    void deleteIfOld(QByteArrayView name);

    const FolderFiles &folder_;
    WallTime now_;   // the later of both clocks
    WallTime limit_; // a month before the earlier one
    FolderScan look_;
    std::optional<FolderScan> sweep_;
    std::optional<WallTime> newest_;
    QByteArray newestName_;
    int deleted_ = 0;
    int failed_ = 0;
    std::error_code error_;
};

} // namespace velmora
