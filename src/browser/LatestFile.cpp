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
    const auto modified = files_.modified(name.data());
    if (!modified) {
        return;
    }
    const bool isLater = latest_.isEmpty() || *modified > latestTime_ ||
                         (*modified == latestTime_ && compareNames(name, latest_) < 0);
    if (isLater) {
        latest_ = name;
        latestTime_ = *modified;
    }
}

} // namespace velmora
