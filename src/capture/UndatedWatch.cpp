#include "capture/UndatedWatch.h"

namespace velmora {

bool UndatedWatch::undated(CameraAddress camera)
{
    int &seen = counts_[camera];
    seen += seen <= kEnough ? 1 : 0;
    return seen == kEnough;
}

void UndatedWatch::dated(CameraAddress camera)
{
    int &seen = counts_[camera];
    seen = seen < kEnough ? 0 : seen;
}

} // namespace velmora
