#include "capture/UndatedWatch.h"

namespace velmora {

bool UndatedWatch::addUndated(CameraAddress camera)
{
    int &seen = counts_[camera];
    seen += seen <= kEnough ? 1 : 0;
    return seen == kEnough;
}

void UndatedWatch::addDated(CameraAddress camera)
{
    int &seen = counts_[camera];
    seen = seen < kEnough ? 0 : seen;
}

} // namespace velmora
