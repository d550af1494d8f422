// Finds and deletes the images of one camera folder that are older than a month.
#pragma once

#include "base/Clock.h"
#include "base/FolderFiles.h"

#include <QByteArray>

#include <optional>
#include <system_error>

namespace velmora {

/// Works in steps of some ten files: lookSome() until it is false, then, when the clock can be
/// trusted, deleteSome() until it is false. Only files named as captured images are touched, never
/// the newest of them. The folder outlives this object.
class OldImages
{
public:
    /// local, utc: the clock now. Names hold the dates that the cameras gave, in universal time,
    /// and those of imported files, in local time.
    OldImages(const FolderFiles &folder, WallTime local, WallTime utc);

    bool lookSome();
    bool deleteSome();

    /// False when the folder could not be read to its end, so that nobody knows the newest image.
    [[nodiscard]] bool isComplete() const { return look_.isOpen() && !look_.hasFailed(); }

    /// False when the newest image is of a later date than the clock shows: then the clock is wrong
    /// and nothing may be deleted by it.
    [[nodiscard]] bool isClockPlausible() const;

    /// Nothing without an image.
    [[nodiscard]] std::optional<WallTime> newest() const { return newest_; }

    /// Images of an earlier date are deleted.
    [[nodiscard]] WallTime limit() const { return limit_; }

    [[nodiscard]] int deleted() const { return deleted_; }

    [[nodiscard]] int failed() const { return failed_; }

    /// Why the last one that failed could not be deleted.
    [[nodiscard]] std::error_code error() const { return error_; }

private:
    void look(QByteArrayView name);
    void deleteIfOld(QByteArrayView name);

    const FolderFiles &folder_;
    WallTime now_;   // the later of both clocks
    WallTime limit_; // a month before the earlier
    FolderScan look_;
    std::optional<FolderScan> sweep_;
    std::optional<WallTime> newest_;
    QByteArray newestName_;
    int deleted_ = 0;
    int failed_ = 0;
    std::error_code error_;
};

} // namespace velmora
