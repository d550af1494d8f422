#include "browser/LatestFile.h"

#include "base/NameOrder.h"

#include <utility>

namespace velmora {
namespace {

constexpr int kFilesAStep = 64;

} // namespace

LatestFile::LatestFile(const QString &folder, QByteArray names)
    : files_(folder)
    , names_(std::move(names))
{
}

bool LatestFile::lookAtSome()
{
    for (int i = 0; i < kFilesAStep && next_ < names_.size(); ++i) {
        const QByteArrayView name(names_.constData() + next_);
        lookAt(name);
        next_ += name.size() + 1;
    }
    return next_ < names_.size();
}

void LatestFile::lookAt(QByteArrayView name)
{
    const FileTime time = files_.time(name.data());
    sawLinks_ = sawLinks_ || time.isLink;
    if (!time.modified) {
        return;
    }
    const bool isLater = latest_.isEmpty() || *time.modified > latestTime_ ||
                         (*time.modified == latestTime_ && compareNames(name, latest_) < 0);
    if (isLater) {
        latest_ = name;
        latestTime_ = *time.modified;
    }
}

} // namespace velmora
