// Counts a camera's folder: how many images, how large, and when the latest came.
#pragma once

#include "base/Clock.h"
#include "base/FolderFiles.h"
#include "health/CameraHealth.h"

#include <QByteArray>

#include <map>
#include <set>
#include <utility>

namespace velmora {

/// countSome() until it is false, then take(). The images of the newest day are counted by the
/// hour. The sizes are those of the latest images, taken for all of them: asking for each would
/// take the disk minutes in a full folder.
class HealthCount
{
public:
    /// folder: native path.
    explicit HealthCount(const QString &folder);

    bool countSome();

    [[nodiscard]] CameraHealth take();

private:
    void look(QByteArrayView name);
    void countHour(WallTime date);

    QString path_;
    FolderScan scan_;
    qint64 images_ = 0;
    std::map<WallTime, int> hours_; // by their begin
    std::set<std::pair<WallTime, QByteArray>> latest_;
};

} // namespace velmora
