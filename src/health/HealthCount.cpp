#include "health/HealthCount.h"

#include "base/FilePath.h"
#include "capture/ImageAge.h"

#include <QFile>

#include <algorithm>
#include <sys/stat.h>

namespace velmora {
namespace {

constexpr std::size_t kLatest = 64;

qint64 bytesOf(const QByteArray &path)
{
    struct stat info = {};
    return ::stat(path.constData(), &info) == 0 ? info.st_size : 0;
}

} // namespace

HealthCount::HealthCount(const QString &folder)
    : path_(folder)
    , scan_(folder)
{
}

bool HealthCount::countSome()
{
    return scan_.readSome([this](QByteArrayView name) { look(name); });
}

void HealthCount::look(QByteArrayView name)
{
    if (!name.startsWith("20")) {
        return;
    }
    ++images_;
    const auto date = dateInName(name);
    if (date) {
        countHour(*date);
    }
    const bool isLate = date && (latest_.size() < kLatest || *date > latest_.begin()->first);
    if (isLate) {
        latest_.emplace(*date, name.toByteArray());
        if (latest_.size() > kLatest) {
            latest_.erase(latest_.begin());
        }
    }
}

// Keeps the latest hours only, as many as there are bars.
void HealthCount::countHour(WallTime date)
{
    const WallTime hour = std::chrono::floor<std::chrono::hours>(date);
    if (hours_.size() == kBars && hour < hours_.begin()->first) {
        return;
    }
    ++hours_[hour];
    if (hours_.size() > kBars) {
        hours_.erase(hours_.begin());
    }
}

CameraHealth HealthCount::take()
{
    CameraHealth camera;
    for (const auto &[date, name] : latest_) {
        const qint64 bytes = bytesOf(filePath(QFile::encodeName(path_), name));
        camera.addImage(Moment(date.time_since_epoch()), bytes);
    }
    const auto seen = std::max<qint64>(1, camera.images);
    for (const auto &[hour, images] : hours_) {
        camera.setHour(Moment(hour.time_since_epoch()), {images, camera.bytes * images / seen});
    }
    camera.bytes = camera.bytes * images_ / seen;
    camera.images = images_;
    return camera;
}

} // namespace velmora
