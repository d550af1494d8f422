// Counts a camera's folder: how many images, their size, and when the latest arrived.
#pragma once

#include "base/Clock.h"
#include "base/FolderFiles.h"
#include "health/CameraHealth.h"

#include <QByteArray>

#include <map>
#include <set>
#include <utility>

namespace velmora {

/// Call countSome() until it returns false, then take(). The images of the newest day are counted
/// by the hour. The size is that of the latest images, extrapolated to all: asking for each would
/// keep the disk busy for minutes in a full folder.
class HealthCount
{
public:
    /// folder: native path.
    explicit HealthCount(const QString &folder);

    /// False when there is no such folder: it may be away.
    [[nodiscard]] bool isOpen() const { return scan_.isOpen(); }

    /// True when the folder could not be read to its end.
    [[nodiscard]] bool hasFailed() const { return scan_.hasFailed(); }

    bool countSome();

    [[nodiscard]] CameraHealth take();

private:
    void look(QByteArrayView name);
    void countHour(WallTime date);

    QString path_;
    FolderScan scan_;
    qint64 images_ = 0;
    std::map<WallTime, int> hours_; // by their start
    std::set<std::pair<WallTime, QByteArray>> latest_;
};

} // namespace velmora
