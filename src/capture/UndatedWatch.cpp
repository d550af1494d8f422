#include "capture/UndatedWatch.h"

namespace velmora {

bool UndatedWatch::addUndated(CameraAddress camera, const QString &address)
{
    Count &count = counts_[camera];
    if (count.address != address) {
        count = {address, 0};
    }
    count.seen += count.seen <= kEnough ? 1 : 0;
    return count.seen == kEnough;
}

void UndatedWatch::addDated(CameraAddress camera)
{
    int &seen = counts_[camera].seen;
    seen = seen < kEnough ? 0 : seen;
}

void UndatedWatch::forget(CameraAddress camera)
{
    counts_[camera] = {};
}

} // namespace velmora
